#include "QnXmlLib16/collections/ui1Col.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(ui1, unsigned char, it_ui1)

} // namespace QnXmlLib16
