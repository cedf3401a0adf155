#include "QnXmlLib16/collections/monthCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(month, unsigned char, it_month)

} // namespace QnXmlLib16
