#include "QnXmlLib16/collections/i4Col.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(i4, long, it_i4)

} // namespace QnXmlLib16
