#include "QnXmlLib16/collections/ui2Col.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(ui2, unsigned short, it_ui2)

} // namespace QnXmlLib16
