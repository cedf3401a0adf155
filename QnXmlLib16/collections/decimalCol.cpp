#include "QnXmlLib16/collections/decimalCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_FORMATTED_VALUE_COL(decimal, CDecimal, it_decimal)

} // namespace QnXmlLib16
