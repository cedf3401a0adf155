#include "QnXmlLib16/collections/i8Col.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(i8, long long, it_i8)

} // namespace QnXmlLib16
