#pragma once

#include "QnXmlLib16/support/Export.h"

namespace QnXmlLib16 {

// Empty base of most classes that are not values: the one place where live instances could be
// counted. Nothing is counted, and the class has no data, so deriving costs a vtable pointer.
class QNXML_API CInstanceMonitor
{
public:
    // pszClassName is the name an instance would be counted under. It is not kept.
    explicit CInstanceMonitor(const char* /*pszClassName*/) noexcept {}
    CInstanceMonitor(const CInstanceMonitor&) = default;
    CInstanceMonitor& operator=(const CInstanceMonitor&) = default;
    virtual ~CInstanceMonitor() = default;
};

} // namespace QnXmlLib16
