#include "QnXmlLib16/collections/booleanCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(boolean, bool, it_boolean)

} // namespace QnXmlLib16
