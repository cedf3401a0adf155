#include "QnXmlLib16/collections/ui4Col.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(ui4, unsigned long, it_ui4)

} // namespace QnXmlLib16
