// Bound classes for GPX 1.1 (the schema of the namespace below), in the form that a generator gives
// to them: one class a complex type, one function a simple type, one collection a repeating type.
#pragma once

#include "examples/common/GeneratedSupport.h"

namespace Gpx {

inline constexpr const char* kNamespace = "http://www.topografix.com/GPX/1/1";

// Base of the classes of this schema.
class CGpxClass : public GeneratedSupport::CBoundClass
{
public:
    std::string GetTargetNamespace() const override { return kNamespace; }
    std::string GetNamespace() const override { return kNamespace; }

protected:
    // The record that all classes of this schema have but for the name: a sequence with an element
    // of its own, no attributes beyond those described, no simple content.
    static QnXmlLib16Data::CParentElementInfo* DescribeSequence(const char* pszType);

    // Throws CQnInvalidParamException: the class has no property of that number.
    [[noreturn]] static void ThrowUnknownProperty(int nProperty);
};

} // namespace Gpx
