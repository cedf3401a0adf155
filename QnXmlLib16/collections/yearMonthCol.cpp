#include "QnXmlLib16/collections/yearMonthCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_DATE_COL(yearMonth, dt_gYearMonth, it_yearMonth)

} // namespace QnXmlLib16
