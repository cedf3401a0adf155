#include "Ship.h"

#include "Entries.h"

#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "QnXmlLib16/support/Exceptions.h"

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Model {

namespace {

CParentElementInfo* Record(const char* pszName, XmlElementType elementType, bool bStrict,
                           int nValueProperty = -1, ItemType valueType = it_none)
{
    return new CParentElementInfo(XmlElementGroupType_Sequence, elementType, pszName,
                                  kShipNamespace, bStrict, elementType == kReal, nValueProperty,
                                  valueType, nullptr, false);
}

template <class TInfo>
TInfo* Member(const char* pszName, int nProperty, bool bNillable = false, ItemType type = it_string,
              const char* pszDefault = nullptr)
{
    return new TInfo(pszName, kShipNamespace, nProperty, bNillable, type, nullptr, kCollapse, {},
                     pszDefault);
}

template <class TChild>
CSmartPtr<CXmlObjectBase> Create(int, const char*)
{
    return CSmartPtr<TChild>(new TChild);
}

const CTables& LogTables()
{
    static CTables tables(Record("LogType", kReal, true, 1, it_i4), {},
                          {Attribute("by", 0, true, it_string)},
                          {{1, [](QnVariant& value) { value.SetI4(0); }}});
    tables.m_strNamespace = kShipNamespace;
    return tables;
}

const CTables& CrewTables()
{
    static CTables tables(
        Record("CrewGroup", kPseudo, false),
        {Member<CElementInfoSeqPrimMnd>("captain", 1), Member<CElementInfoSeqPrimOpt>("mate", 2)},
        {Attribute("watch", 0, true, it_string)});
    tables.m_strNamespace = kShipNamespace;
    return tables;
}

const CTables& ShipTables()
{
    static CTables tables(
        Record("ShipType", kReal, false),
        {Member<CElementInfoSeqPrimMnd>("name", 2),
         Member<CElementInfoSeqPrimOpt>("tons", 3, true, it_i4, "100"),
         new CElementInfoSeqClsMnd("crew", kShipNamespace, 4, kPseudo, Create<CCrewGroup>, 0,
                                   false),
         new CElementInfoSeqClsOpt("log", kShipNamespace, 5, kReal, Create<CLog>, 0)},
        {Attribute("id", 0, false, it_i4), Attribute("flag", 1, true, it_string)},
        {{0, [](QnVariant& value) { value.SetI4(0); }},
         HeldObject(4, [] { return new CCrewGroup; }),
         HeldObject(5, [] { return new CLog; })});
    tables.m_strNamespace = kShipNamespace;
    return tables;
}

} // namespace

CLog::CLog() : CSheet(LogTables(), "log") {}

void CLog::Init()
{
    CSheet::Init();
    m_bNil = false;
}

CCrewGroup::CCrewGroup() : CSheet(CrewTables(), "") {}

CShip::CShip() : CSheet(ShipTables(), "ship") {}

void CShip::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    if (!bRead && nProperty == 0 && value.GetI4() < 0)
        throw CQnInvalidParamException("An id is never negative");
    CSheet::AccessProperty(nProperty, bRead, value);
}

CSmartPtr<CShip> MakeShip()
{
    CSmartPtr<CShip> pShip(new CShip);
    pShip->m_id.SetI4(7);
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
