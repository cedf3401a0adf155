#include "examples/gpx/model/GpxClass.h"

using namespace QnXmlLib16;
using QnXmlLib16Data::CParentElementInfo;

namespace Gpx {

CParentElementInfo* CGpxClass::DescribeSequence(const char* pszType)
{
    return new CParentElementInfo(XmlElementGroupType_Sequence, XmlElementType_Element, pszType,
                                  kNamespace, true, false, -1, it_none, nullptr, false);
}

void CGpxClass::ThrowUnknownProperty(int nProperty)
{
    throw CQnInvalidParamException("There is no property " + std::to_string(nProperty));
}

} // namespace Gpx
