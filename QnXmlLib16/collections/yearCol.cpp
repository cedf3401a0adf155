#include "QnXmlLib16/collections/yearCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(year, unsigned short, it_year)

} // namespace QnXmlLib16
