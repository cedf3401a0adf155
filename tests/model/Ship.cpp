#include "Ship.h"

#include "SpineInfo.h"

#include "QnXmlLib16/binding/ParentElementInfo.h"
#include "QnXmlLib16/support/Exceptions.h"

using namespace QnXmlLib16;
using QnXmlLib16Data::CAttributeInfo;
using QnXmlLib16Data::CElementInfo;
using QnXmlLib16Data::CParentElementInfo;

namespace Model {

namespace {

void Access(bool bRead, QnVariant& value, QnVariant& member)
{
    if (bRead)
        value = member;
    else
        member = value;
}

} // namespace

struct CLog::MetaData
{
    MetaData()
    {
        const CQNCriticalSectionGuard guard(m_csInit);
        pInfo = new CParentElementInfo(XmlElementGroupType_Sequence, XmlElementType_Element,
                                       "LogType", kShipNamespace, true, true, Property_Value, it_i4,
                                       nullptr, false);
        ppElements = new CElementInfo* [1] { nullptr };
        ppAttributes = new CAttributeInfo* [2] {
            new CValueAttributeInfo("by", "", Property_By, true, it_string), nullptr
        };
    }
    ~MetaData() { CleanMetaData(pInfo, ppElements, ppAttributes); }

    CParentElementInfo* pInfo;
    CElementInfo** ppElements;
    CAttributeInfo** ppAttributes;
};

const CLog::MetaData& CLog::GetMetaData()
{
    static MetaData data;
    return data;
}

CLog::CLog()
{
    SetElementName("log");
    Init();
}

CLog::~CLog() = default;

CXmlObjectBase* CLog::GetBase()
{
    return this;
}

std::string CLog::GetTargetNamespace() const
{
    return kShipNamespace;
}

std::string CLog::GetNamespace() const
{
    return kShipNamespace;
}

void CLog::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    Access(bRead, value, nProperty == Property_By ? m_by : m_value);
}

CParentElementInfo* CLog::GetClassInfo() const
{
    return GetMetaData().pInfo;
}

CElementInfo** CLog::GetClassElementInfo() const
{
    return GetMetaData().ppElements;
}

CAttributeInfo** CLog::GetClassAttributeInfo() const
{
    return GetMetaData().ppAttributes;
}

void CLog::Init()
{
    m_by.SetInvalid();
    m_value.SetI4(0);
    m_bNil = false;
}

bool CLog::IsNil()
{
    return m_bNil;
}

void CLog::SetNil(bool bNil)
{
    m_bNil = bNil;
}

struct CCrewGroup::MetaData
{
    MetaData()
    {
        const CQNCriticalSectionGuard guard(m_csInit);
        pInfo = new CParentElementInfo(XmlElementGroupType_Sequence, XmlElementType_PseudoElement,
                                       "CrewGroup", kShipNamespace, false, false, -1, it_none,
                                       nullptr, false);
        ppElements = new CElementInfo* [3] {
            new CValueInfo("captain", kShipNamespace, Property_Captain, it_string, true),
                new CValueInfo("mate", kShipNamespace, Property_Mate, it_string, false), nullptr
        };
        ppAttributes = new CAttributeInfo* [2] {
            new CValueAttributeInfo("watch", "", Property_Watch, true, it_string), nullptr
        };
    }
    ~MetaData() { CleanMetaData(pInfo, ppElements, ppAttributes); }

    CParentElementInfo* pInfo;
    CElementInfo** ppElements;
    CAttributeInfo** ppAttributes;
};

const CCrewGroup::MetaData& CCrewGroup::GetMetaData()
{
    static MetaData data;
    return data;
}

CCrewGroup::CCrewGroup() = default;
CCrewGroup::~CCrewGroup() = default;

CXmlObjectBase* CCrewGroup::GetBase()
{
    return this;
}

std::string CCrewGroup::GetTargetNamespace() const
{
    return kShipNamespace;
}

std::string CCrewGroup::GetNamespace() const
{
    return kShipNamespace;
}

void CCrewGroup::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Watch:
        return Access(bRead, value, m_watch);
    case Property_Captain:
        return Access(bRead, value, m_captain);
    default:
        return Access(bRead, value, m_mate);
    }
}

CParentElementInfo* CCrewGroup::GetClassInfo() const
{
    return GetMetaData().pInfo;
}

CElementInfo** CCrewGroup::GetClassElementInfo() const
{
    return GetMetaData().ppElements;
}

CAttributeInfo** CCrewGroup::GetClassAttributeInfo() const
{
    return GetMetaData().ppAttributes;
}

void CCrewGroup::Init()
{
    m_watch.SetInvalid();
    m_captain.SetInvalid();
    m_mate.SetInvalid();
}

struct CShip::MetaData
{
    MetaData()
    {
        const CQNCriticalSectionGuard guard(m_csInit);
        pInfo =
            new CParentElementInfo(XmlElementGroupType_Sequence, XmlElementType_Element, "ShipType",
                                   kShipNamespace, false, true, -1, it_none, nullptr, false);
        ppElements = new CElementInfo* [5] {
            new CValueInfo("name", kShipNamespace, Property_Name, it_string, true, false, nullptr,
                           CPrimitiveRestrictions(nullptr, -1, 20, nullptr, nullptr, nullptr,
                                                  nullptr, -1, -1, -1)),
                new CValueInfo("tons", kShipNamespace, Property_Tons, it_i4, false, true, "100",
                               CPrimitiveRestrictions(nullptr, -1, -1, "500", nullptr, nullptr,
                                                      nullptr, -1, -1, -1)),
                new CChildInfo("crew", kShipNamespace, Property_Crew, XmlElementType_PseudoElement),
                new CChildInfo("log", kShipNamespace, Property_Log, XmlElementType_Element), nullptr
        };
        ppAttributes = new CAttributeInfo* [3] {
            new CValueAttributeInfo("id", "", Property_Id, false, it_i4),
                new CValueAttributeInfo("flag", "", Property_Flag, true, it_string), nullptr
        };
    }
    ~MetaData() { CleanMetaData(pInfo, ppElements, ppAttributes); }

    CParentElementInfo* pInfo;
    CElementInfo** ppElements;
    CAttributeInfo** ppAttributes;
};

const CShip::MetaData& CShip::GetMetaData()
{
    static MetaData data;
    return data;
}

CShip::CShip() : m_crew(new CCrewGroup), m_log(new CLog)
{
    SetElementName("ship");
    Init();
}

CShip::~CShip() = default;

CXmlObjectBase* CShip::GetBase()
{
    return this;
}

std::string CShip::GetTargetNamespace() const
{
    return kShipNamespace;
}

std::string CShip::GetNamespace() const
{
    return kShipNamespace;
}

void CShip::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Id:
        return bRead ? void(value = m_id) : SetId(value);
    case Property_Flag:
        return Access(bRead, value, m_flag);
    case Property_Name:
        return Access(bRead, value, m_name);
    case Property_Tons:
        return Access(bRead, value, m_tons);
    case Property_Crew:
        return value.SetXmlObject(m_crew.GetPtr());
    default:
        return value.SetXmlObject(m_log.GetPtr());
    }
}

CParentElementInfo* CShip::GetClassInfo() const
{
    return GetMetaData().pInfo;
}

CElementInfo** CShip::GetClassElementInfo() const
{
    return GetMetaData().ppElements;
}

CAttributeInfo** CShip::GetClassAttributeInfo() const
{
    return GetMetaData().ppAttributes;
}

void CShip::Init()
{
    m_id.SetI4(0);
    m_flag.SetInvalid();
    m_name.SetInvalid();
    m_tons.SetInvalid();
    m_crew->Init();
    m_log->Init();
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
