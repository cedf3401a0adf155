#include "QnXmlLib16/collections/dayCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(day, unsigned char, it_day)

} // namespace QnXmlLib16
