#include "QnXmlLib16/collections/ui8Col.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(ui8, unsigned long long, it_ui8)

} // namespace QnXmlLib16
