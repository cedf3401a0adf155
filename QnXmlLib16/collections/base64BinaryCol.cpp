#include "QnXmlLib16/collections/base64BinaryCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(base64Binary, CBinaryData, it_base64Binary)

} // namespace QnXmlLib16
