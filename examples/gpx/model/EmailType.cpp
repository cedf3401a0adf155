#include "examples/gpx/model/EmailType.h"

#include "examples/gpx/model/SimpleTypes.h"

using namespace GeneratedSupport;
using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Gpx {

const CEmailType::CMetaData& CEmailType::GetMetaData() const
{
    static const CMetaData data([](CMetaData& table) {
        table.SetClass(DescribeSequence("emailType"));
        table.Add(RequiredAttribute("id", Property_Id, StringType()));
        table.Add(RequiredAttribute("domain", Property_Domain, StringType()));
    });
    return data;
}

CEmailType::CEmailType()
{
    SetElementName("email");
}

CEmailType::~CEmailType() = default;

void CEmailType::AccessProperty(int nProperty, bool bRead, QnVariant& value)
{
    switch (nProperty) {
    case Property_Id:
        return Access(bRead, value, m_strId);
    case Property_Domain:
        return Access(bRead, value, m_strDomain);
    default:
        return ThrowUnknownProperty(nProperty);
    }
}

void CEmailType::Init()
{
    m_strId.clear();
    m_strDomain.clear();
}

} // namespace Gpx
