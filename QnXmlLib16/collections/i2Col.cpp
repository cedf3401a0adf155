#include "QnXmlLib16/collections/i2Col.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(i2, short, it_i2)

} // namespace QnXmlLib16
