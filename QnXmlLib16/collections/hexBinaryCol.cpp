#include "QnXmlLib16/collections/hexBinaryCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(hexBinary, CBinaryData, it_hexBinary)

} // namespace QnXmlLib16
