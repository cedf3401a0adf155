#include "QnXmlLib16/collections/timeCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_DATE_COL(time, dt_time, it_time)

} // namespace QnXmlLib16
