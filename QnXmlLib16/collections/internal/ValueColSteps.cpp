#include "QnXmlLib16/collections/internal/ValueColSteps.h"

#include "QnXmlLib16/support/Functions.h"

namespace QnXmlLib16 {

// Deliberate: the second number is the count, not the last index. Pinned by
// ValueCollection.WhatIsRefusedIsAnnouncedFirst.
void ValueColSteps::ThrowBadItemIndex(int iIndex, int iCount)
{
    throw CQnInvalidParamException(
        FormatString("Index %d is out of range, use 0 - %d", iIndex, iCount));
}

void ValueColSteps::ThrowBadInsertIndex()
{
    throw CQnInvalidParamException("Index out of range");
}

} // namespace QnXmlLib16
