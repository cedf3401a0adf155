#include "examples/gpx/model/WptType.h"

#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "examples/gpx/model/ExtensionsType.h"
#include "examples/gpx/model/GpxClassFactory.h"
#include "examples/gpx/model/LinkType.h"

using namespace GeneratedSupport;
using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Gpx {

namespace {

CLinkTypeCol* NewLinks()
{
    return new CLinkTypeCol("link", kNamespace, 0, -1);
}

} // namespace

const CWptType::CMetaData& CWptType::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(DescribeSequence("wptType"));
        table.Add(OptionalElement("ele", Property_Ele, DecimalType()));
        table.Add(OptionalElement("time", Property_Time, DateTimeType()));
        table.Add(OptionalElement("magvar", Property_Magvar, DegreesType()));
        table.Add(OptionalElement("geoidheight", Property_Geoidheight, DecimalType()));
        table.Add(OptionalElement("name", Property_Name, StringType()));
        table.Add(OptionalElement("cmt", Property_Cmt, StringType()));
        table.Add(OptionalElement("desc", Property_Desc, StringType()));
        table.Add(OptionalElement("src", Property_Src, StringType()));
        table.Add(
            new CElementInfoSeqClsCol("link", kNamespace, Property_Link, XmlElementType_Element));
        table.Add(OptionalElement("sym", Property_Sym, StringType()));
        table.Add(OptionalElement("type", Property_Type, StringType()));
        table.Add(new CElementInfoSeqEnumOpt("fix", kNamespace, Property_Fix, false,
                                             FixTypeToString, FixTypeFromString, nullptr));
        table.Add(OptionalElement("sat", Property_Sat, NonNegativeIntegerType()));
        table.Add(OptionalElement("hdop", Property_Hdop, DecimalType()));
        table.Add(OptionalElement("vdop", Property_Vdop, DecimalType()));
        table.Add(OptionalElement("pdop", Property_Pdop, DecimalType()));
        table.Add(OptionalElement("ageofdgpsdata", Property_Ageofdgpsdata, DecimalType()));
        table.Add(OptionalElement("dgpsid", Property_Dgpsid, DgpsStationType()));
        table.Add(new CElementInfoSeqClsOpt("extensions", kNamespace, Property_Extensions,
                                            XmlElementType_Element, CGpxClassFactory::Create,
                                            CGpxClassFactory::Class_ExtensionsType));
        table.Add(RequiredAttribute("lat", Property_Lat, LatitudeType()));
        table.Add(RequiredAttribute("lon", Property_Lon, LongitudeType()));
    });
    return data;
}

CWptType::CWptType()
{
    SetElementName("wpt");
}

CWptType::~CWptType() = default;

template <class T>
const std::optional<T>& CWptType::GetDetail(std::optional<T> CDetails::*pMember) const
{
    static const std::optional<T> none;
    return m_pDetails ? (*m_pDetails).*pMember : none;
}

template <class T>
void CWptType::SetDetail(std::optional<T> CDetails::*pMember, std::optional<T> value)
{
    if (!m_pDetails && value)
        m_pDetails = std::make_unique<CDetails>();
    if (m_pDetails)
        (*m_pDetails).*pMember = std::move(value);
}

const std::optional<CDecimal>& CWptType::GetMagvar() const
{
    return GetDetail(&CDetails::m_magvar);
}

void CWptType::SetMagvar(std::optional<CDecimal> value)
{
    SetDetail(&CDetails::m_magvar, std::move(value));
}

const std::optional<CDecimal>& CWptType::GetGeoidheight() const
{
    return GetDetail(&CDetails::m_geoidheight);
}

void CWptType::SetGeoidheight(std::optional<CDecimal> value)
{
    SetDetail(&CDetails::m_geoidheight, std::move(value));
}

const std::optional<std::string>& CWptType::GetName() const
{
    return GetDetail(&CDetails::m_name);
}

void CWptType::SetName(std::optional<std::string> value)
{
    SetDetail(&CDetails::m_name, std::move(value));
}

const std::optional<std::string>& CWptType::GetCmt() const
{
    return GetDetail(&CDetails::m_cmt);
}

void CWptType::SetCmt(std::optional<std::string> value)
{
    SetDetail(&CDetails::m_cmt, std::move(value));
}

const std::optional<std::string>& CWptType::GetDesc() const
{
    return GetDetail(&CDetails::m_desc);
}

void CWptType::SetDesc(std::optional<std::string> value)
{
    SetDetail(&CDetails::m_desc, std::move(value));
}

const std::optional<std::string>& CWptType::GetSrc() const
{
    return GetDetail(&CDetails::m_src);
}

void CWptType::SetSrc(std::optional<std::string> value)
{
    SetDetail(&CDetails::m_src, std::move(value));
}

const std::optional<std::string>& CWptType::GetSym() const
{
    return GetDetail(&CDetails::m_sym);
}

void CWptType::SetSym(std::optional<std::string> value)
{
    SetDetail(&CDetails::m_sym, std::move(value));
}

const std::optional<std::string>& CWptType::GetType() const
{
    return GetDetail(&CDetails::m_type);
}

void CWptType::SetType(std::optional<std::string> value)
{
    SetDetail(&CDetails::m_type, std::move(value));
}

const std::optional<FixType>& CWptType::GetFix() const
{
    return GetDetail(&CDetails::m_fix);
}

void CWptType::SetFix(std::optional<FixType> value)
{
    SetDetail(&CDetails::m_fix, std::move(value));
}

const std::optional<CBigInteger>& CWptType::GetSat() const
{
    return GetDetail(&CDetails::m_sat);
}

void CWptType::SetSat(std::optional<CBigInteger> value)
{
    SetDetail(&CDetails::m_sat, std::move(value));
}

const std::optional<CDecimal>& CWptType::GetHdop() const
{
    return GetDetail(&CDetails::m_hdop);
}

void CWptType::SetHdop(std::optional<CDecimal> value)
{
    SetDetail(&CDetails::m_hdop, std::move(value));
}

const std::optional<CDecimal>& CWptType::GetVdop() const
{
    return GetDetail(&CDetails::m_vdop);
}

void CWptType::SetVdop(std::optional<CDecimal> value)
{
    SetDetail(&CDetails::m_vdop, std::move(value));
}

const std::optional<CDecimal>& CWptType::GetPdop() const
{
    return GetDetail(&CDetails::m_pdop);
}

void CWptType::SetPdop(std::optional<CDecimal> value)
{
    SetDetail(&CDetails::m_pdop, std::move(value));
}

const std::optional<CDecimal>& CWptType::GetAgeofdgpsdata() const
{
    return GetDetail(&CDetails::m_ageofdgpsdata);
}

void CWptType::SetAgeofdgpsdata(std::optional<CDecimal> value)
{
    SetDetail(&CDetails::m_ageofdgpsdata, std::move(value));
}

const std::optional<CBigInteger>& CWptType::GetDgpsid() const
{
    return GetDetail(&CDetails::m_dgpsid);
}

void CWptType::SetDgpsid(std::optional<CBigInteger> value)
{
    SetDetail(&CDetails::m_dgpsid, std::move(value));
}

CSmartPtr<CExtensionsType> CWptType::GetExtensions() const
{
    return m_pExtensions;
}

void CWptType::SetExtensions(CExtensionsType* pValue)
{
    Throw_IfElementNameDiffers(pValue, "extensions");
    m_pExtensions = pValue;
}

CSmartPtr<CLinkTypeCol> CWptType::GetLink()
{
    if (!m_link.Peek())
        m_link.Offer(NewLinks());
    return static_cast<CLinkTypeCol*>(m_link.Peek());
}

void CWptType::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Ele:
        return Access(bRead, value, m_ele);
    case Property_Time:
        return Access(bRead, value, m_time);
    case Property_Link:
        return value.SetXmlCollection(GetLink().GetPtr());
    case Property_Extensions:
        return bRead ? value.SetXmlObject(m_pExtensions.GetPtr())
                     : SetExtensions(GetObjectOf<CExtensionsType>(value));
    case Property_Lat:
        return Access(bRead, value, m_lat);
    case Property_Lon:
        return Access(bRead, value, m_lon);
    default:
        return AccessDetail(nProperty, bRead, value);
    }
}

void CWptType::AccessDetail(int nProperty, bool bRead, QnVariant& value)
{
    if (!m_pDetails && (bRead || !value.IsValid()))
        return value.SetInvalid();
    if (!m_pDetails)
        m_pDetails = std::make_unique<CDetails>();
    switch (nProperty) {
    case Property_Magvar:
        return Access(bRead, value, m_pDetails->m_magvar);
    case Property_Geoidheight:
        return Access(bRead, value, m_pDetails->m_geoidheight);
    case Property_Name:
        return Access(bRead, value, m_pDetails->m_name);
    case Property_Cmt:
        return Access(bRead, value, m_pDetails->m_cmt);
    case Property_Desc:
        return Access(bRead, value, m_pDetails->m_desc);
    case Property_Src:
        return Access(bRead, value, m_pDetails->m_src);
    case Property_Sym:
        return Access(bRead, value, m_pDetails->m_sym);
    case Property_Type:
        return Access(bRead, value, m_pDetails->m_type);
    case Property_Fix:
        return Access(bRead, value, m_pDetails->m_fix);
    case Property_Sat:
        return Access(bRead, value, m_pDetails->m_sat);
    case Property_Hdop:
        return Access(bRead, value, m_pDetails->m_hdop);
    case Property_Vdop:
        return Access(bRead, value, m_pDetails->m_vdop);
    case Property_Pdop:
        return Access(bRead, value, m_pDetails->m_pdop);
    case Property_Ageofdgpsdata:
        return Access(bRead, value, m_pDetails->m_ageofdgpsdata);
    case Property_Dgpsid:
        return Access(bRead, value, m_pDetails->m_dgpsid);
    default:
        return ThrowUnknownProperty(nProperty);
    }
}

void CWptType::Init()
{
    m_lat = CDecimal();
    m_lon = CDecimal();
    m_ele.reset();
    m_time.reset();
    m_pExtensions.Reset();
    m_link.Clear();
    m_pDetails.reset();
}

CSmartPtr<CWptType> CWptTypeCol::Add()
{
    const CSmartPtr<CWptType> pItem = new CWptType;
    pItem->SetElementName(m_strElementName.c_str());
    Add(pItem.GetPtr());
    return pItem;
}

void CWptTypeCol::Add(CWptType* pItem)
{
    Append(pItem);
}

CSmartPtr<CWptType> CWptTypeCol::Item(int iIndex) const
{
    return static_cast<CWptType*>(GetNodeAtIndex(iIndex)->GetItem());
}

CSmartPtr<CXmlObjectBase> CWptTypeCol::CreateItem() const
{
    return new CWptType;
}

void CWptTypeCol::Prepare(CXmlObjectBase* pItem) const
{
    if (pItem)
        m_links.LendTo(static_cast<CWptType*>(pItem)->m_link, NewLinks);
    else
        m_links.TakeBack();
}

} // namespace Gpx
