#include "QnXmlLib16/collections/i1Col.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(i1, char, it_i1)

} // namespace QnXmlLib16
