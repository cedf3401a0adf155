#include "QnXmlLib16/collections/monthDayCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_DATE_COL(monthDay, dt_gMonthDay, it_monthDay)

} // namespace QnXmlLib16
