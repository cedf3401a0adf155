#include "QnXmlLib16/collections/stringCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

// The value is written and checked where it lies, without the copies that the general functions
// take.
QNXML_DEFINE_VALUE_COL_WITH(string, std::string, it_string,
                            CXmlObjectHelper::CheckStringRestriction,
                            [](const std::string& strValue) -> const std::string& {
                                return strValue;
                            })

} // namespace QnXmlLib16
