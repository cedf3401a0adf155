#include "examples/gpx/model/BoundsType.h"

#include "examples/gpx/model/SimpleTypes.h"

using namespace GeneratedSupport;
using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Gpx {

const CBoundsType::CMetaData& CBoundsType::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(DescribeSequence("boundsType"));
        table.Add(RequiredAttribute("minlat", Property_Minlat, LatitudeType()));
        table.Add(RequiredAttribute("minlon", Property_Minlon, LongitudeType()));
        table.Add(RequiredAttribute("maxlat", Property_Maxlat, LatitudeType()));
        table.Add(RequiredAttribute("maxlon", Property_Maxlon, LongitudeType()));
    });
    return data;
}

CBoundsType::CBoundsType()
{
    SetElementName("bounds");
}

CBoundsType::~CBoundsType() = default;

void CBoundsType::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Minlat:
        return Access(bRead, value, m_minlat);
    case Property_Minlon:
        return Access(bRead, value, m_minlon);
    case Property_Maxlat:
        return Access(bRead, value, m_maxlat);
    case Property_Maxlon:
        return Access(bRead, value, m_maxlon);
    default:
        return ThrowUnknownProperty(nProperty);
    }
}

void CBoundsType::Init()
{
    m_minlat = CDecimal();
    m_minlon = CDecimal();
    m_maxlat = CDecimal();
    m_maxlon = CDecimal();
}

} // namespace Gpx
