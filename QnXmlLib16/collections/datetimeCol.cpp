#include "QnXmlLib16/collections/datetimeCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_DATE_COL(datetime, dt_dateTime, it_datetime)

} // namespace QnXmlLib16
