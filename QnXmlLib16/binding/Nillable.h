#pragma once

#include "QnXmlLib16/support/Export.h"

namespace QnXmlLib16 {

// Implemented beside CXmlGeneratedClass by classes whose element may carry the nil attribute of
// the XML Schema instance namespace (XML Schema Part 1, 2.6.2). The library finds the interface by
// a cross-cast, so the base must be public and unambiguous.
class QNXML_API INillable
{
public:
    // A nil object writes its attributes, the nil attribute and no content, and reads none.
    virtual bool IsNil() = 0;
    virtual void SetNil(bool bNil) = 0;

protected:
    INillable() = default;
    INillable(const INillable&) = default;
    INillable& operator=(const INillable&) = default;
    ~INillable() = default;
};

} // namespace QnXmlLib16
