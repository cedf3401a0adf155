#include "Ship.h"

#include "SpineInfo.h"

#include "QnXmlLib16/binding/ElementInfoSeq.h"

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Model {

namespace {

enum Property : int
{
    Property_By,
    Property_Value,
    Property_Watch,
    Property_Captain,
    Property_Mate,
    Property_Id,
    Property_Flag,
    Property_Name,
    Property_Tons,
    Property_Crew,
    Property_Log
};

const CPrimitiveRestrictions kNoFacets;
const CPrimitiveRestrictions kUpTo20Characters(nullptr, -1, 20, nullptr, nullptr, nullptr, nullptr,
                                               -1, -1, -1);
const CPrimitiveRestrictions kFrom500(nullptr, -1, -1, "500", nullptr, nullptr, nullptr, -1, -1,
                                      -1);

void Access(bool bRead, QnVariant& value, QnVariant& member)
{
    if (bRead)
        value = member;
    else
        member = value;
}

template <class TChild>
void Access(bool bRead, QnVariant& value, CSmartPtr<TChild>& member)
{
    if (bRead)
        value.SetXmlObject(member.GetPtr());
    else
        member = GeneratedSupport::GetObjectOf<TChild>(value);
}

template <class TChild>
CSmartPtr<CXmlObjectBase> Create(int, const char*)
{
    return CSmartPtr<TChild>(new TChild);
}

} // namespace

CLog::CLog()
{
    SetElementName("log");
    CLog::Init();
}

const CLog::CMetaData& CLog::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(new CParentElementInfo(XmlElementGroupType_Sequence, XmlElementType_Element,
                                              "LogType", kShipNamespace, true, true, Property_Value,
                                              it_i4, nullptr, false));
        table.Add(new CValueAttributeInfo("by", "", Property_By, true, it_string));
    });
    return data;
}

void CLog::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    Access(bRead, value, nProperty == Property_By ? m_by : m_value);
}

void CLog::Init()
{
    m_by.SetInvalid();
    m_value.SetI4(0);
    m_bNil = false;
}

const CCrewGroup::CMetaData& CCrewGroup::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(new CParentElementInfo(
            XmlElementGroupType_Sequence, XmlElementType_PseudoElement, "CrewGroup", kShipNamespace,
            false, false, -1, it_none, nullptr, false));
        table.Add(new CElementInfoSeqPrimMnd("captain", kShipNamespace, Property_Captain, false,
                                             it_string, nullptr, kCollapse, kNoFacets, nullptr));
        table.Add(new CElementInfoSeqPrimOpt("mate", kShipNamespace, Property_Mate, false,
                                             it_string, nullptr, kCollapse, kNoFacets, nullptr));
        table.Add(new CValueAttributeInfo("watch", "", Property_Watch, true, it_string));
    });
    return data;
}

void CCrewGroup::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    Access(bRead, value,
           nProperty == Property_Watch     ? m_watch
           : nProperty == Property_Captain ? m_captain
                                           : m_mate);
}

void CCrewGroup::Init()
{
    m_watch.SetInvalid();
    m_captain.SetInvalid();
    m_mate.SetInvalid();
}

CShip::CShip()
{
    SetElementName("ship");
    CShip::Init();
}

const CShip::CMetaData& CShip::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(new CParentElementInfo(XmlElementGroupType_Sequence, XmlElementType_Element,
                                              "ShipType", kShipNamespace, false, true, -1, it_none,
                                              nullptr, false));
        table.Add(new CElementInfoSeqPrimMnd("name", kShipNamespace, Property_Name, false,
                                             it_string, nullptr, kCollapse, kUpTo20Characters,
                                             nullptr));
        table.Add(new CElementInfoSeqPrimOpt("tons", kShipNamespace, Property_Tons, true, it_i4,
                                             nullptr, kCollapse, kFrom500, "100"));
        table.Add(new CElementInfoSeqClsMnd("crew", kShipNamespace, Property_Crew,
                                            XmlElementType_PseudoElement, Create<CCrewGroup>, 0,
                                            false));
        table.Add(new CElementInfoSeqClsOpt("log", kShipNamespace, Property_Log,
                                            XmlElementType_Element, Create<CLog>, 0));
        table.Add(new CValueAttributeInfo("id", "", Property_Id, false, it_i4));
        table.Add(new CValueAttributeInfo("flag", "", Property_Flag, true, it_string));
    });
    return data;
}

void CShip::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Id:
        return bRead ? void(value = m_id) : SetId(value);
    case Property_Crew:
        return Access(bRead, value, m_crew);
    case Property_Log:
        return Access(bRead, value, m_log);
    default:
        return Access(bRead, value,
                      nProperty == Property_Flag   ? m_flag
                      : nProperty == Property_Name ? m_name
                                                   : m_tons);
    }
}

void CShip::Init()
{
    m_id.SetI4(0);
    m_flag.SetInvalid();
    m_name.SetInvalid();
    m_tons.SetInvalid();
    m_crew = new CCrewGroup;
    m_log = new CLog;
}

void CShip::SetId(const QnVariant& id)
{
    if (id.GetI4() < 0)
        throw CQnInvalidParamException("An id is never negative");
    m_id = id;
}

CSmartPtr<CShip> MakeShip()
{
    CSmartPtr<CShip> pShip(new CShip);
    QnVariant id;
    id.SetI4(7);
    pShip->SetId(id);
    pShip->m_flag.SetString("NL");
    pShip->m_name.SetString("Halve Maen");
    pShip->m_tons.SetI4(600);
    pShip->m_crew->m_watch.SetString("first");
    pShip->m_crew->m_captain.SetString("Hudson");
    pShip->m_crew->m_mate.SetString("Juet");
    pShip->m_log->m_by.SetString("Juet");
    pShip->m_log->m_value.SetI4(42);
    return pShip;
}

} // namespace Model
