#include "examples/gpx/model/CopyrightType.h"

#include "examples/gpx/model/SimpleTypes.h"

using namespace GeneratedSupport;
using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Gpx {

const CCopyrightType::CMetaData& CCopyrightType::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(DescribeSequence("copyrightType"));
        table.Add(RequiredAttribute("author", Property_Author, StringType()));
        table.Add(OptionalElement("year", Property_Year, GYearType()));
        table.Add(OptionalElement("license", Property_License, AnyUriType()));
    });
    return data;
}

CCopyrightType::CCopyrightType()
{
    SetElementName("copyright");
}

CCopyrightType::~CCopyrightType() = default;

void CCopyrightType::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Author:
        return Access(bRead, value, m_strAuthor);
    case Property_Year:
        return Access(bRead, value, m_year);
    case Property_License:
        return Access(bRead, value, m_license);
    default:
        return ThrowUnknownProperty(nProperty);
    }
}

void CCopyrightType::Init()
{
    m_strAuthor.clear();
    m_year.reset();
    m_license.reset();
}

} // namespace Gpx
