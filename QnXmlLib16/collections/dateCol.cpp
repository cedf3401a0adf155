#include "QnXmlLib16/collections/dateCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_DATE_COL(date, dt_date, it_date)

} // namespace QnXmlLib16
