#pragma once

#include "QnXmlLib16/support/Export.h"

#include <string>

namespace QnXmlLib16 {

class CXmlElement;

// What a generated class factory needs to choose the concrete class of an abstract element: the
// type that the document names in the type attribute of the XML Schema instance namespace (XML
// Schema Part 1, 2.6.1). Both throw CQnInvalidParamException for null.
class QNXML_API CClassfactoryBase
{
public:
    virtual ~CClassfactoryBase();

    // The local part of the type's name; empty when the element names no type.
    static std::string GetElementType(CXmlElement* pElement);

    // The namespace bound to the prefix of the type's name. Without a prefix, or with one that is
    // not bound, the namespace of the element itself, not the default namespace in scope.
    static std::string GetElementTypeNamespaceUri(CXmlElement* pElement);
};

} // namespace QnXmlLib16
