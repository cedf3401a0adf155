#include "examples/gpx/model/PtType.h"

#include "examples/gpx/model/SimpleTypes.h"

using namespace GeneratedSupport;
using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Gpx {

const CPtType::CMetaData& CPtType::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(DescribeSequence("ptType"));
        table.Add(RequiredAttribute("lat", Property_Lat, LatitudeType()));
        table.Add(RequiredAttribute("lon", Property_Lon, LongitudeType()));
        table.Add(OptionalElement("ele", Property_Ele, DecimalType()));
        table.Add(OptionalElement("time", Property_Time, DateTimeType()));
    });
    return data;
}

CPtType::CPtType()
{
    SetElementName("pt");
}

CPtType::~CPtType() = default;

void CPtType::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Lat:
        return Access(bRead, value, m_lat);
    case Property_Lon:
        return Access(bRead, value, m_lon);
    case Property_Ele:
        return Access(bRead, value, m_ele);
    case Property_Time:
        return Access(bRead, value, m_time);
    default:
        return ThrowUnknownProperty(nProperty);
    }
}

void CPtType::Init()
{
    m_lat = CDecimal();
    m_lon = CDecimal();
    m_ele.reset();
    m_time.reset();
}

CSmartPtr<CPtType> CPtTypeCol::Add()
{
    const CSmartPtr<CPtType> pItem = new CPtType;
    pItem->SetElementName(m_strElementName.c_str());
    Add(pItem.GetPtr());
    return pItem;
}

void CPtTypeCol::Add(CPtType* pItem)
{
    Append(pItem);
}

CSmartPtr<CPtType> CPtTypeCol::Item(int iIndex) const
{
    return static_cast<CPtType*>(GetNodeAtIndex(iIndex)->GetItem());
}

CSmartPtr<CXmlObjectBase> CPtTypeCol::CreateItem() const
{
    return new CPtType;
}

} // namespace Gpx
