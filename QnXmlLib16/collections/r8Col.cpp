#include "QnXmlLib16/collections/r8Col.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_FORMATTED_VALUE_COL(r8, double, it_r8)

} // namespace QnXmlLib16
