#include "QnXmlLib16/collections/r4Col.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_FORMATTED_VALUE_COL(r4, float, it_r4)

} // namespace QnXmlLib16
