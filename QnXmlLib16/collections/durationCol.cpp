#include "QnXmlLib16/collections/durationCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

QNXML_DEFINE_VALUE_COL(duration, CDateTimeSpan, it_duration)

} // namespace QnXmlLib16
