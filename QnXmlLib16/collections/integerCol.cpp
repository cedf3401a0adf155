#include "QnXmlLib16/collections/integerCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(integer, CBigInteger, it_integer)

} // namespace QnXmlLib16
