#pragma once

#include "QnXmlLib16/binding/ClassfactoryBase.h"
#include "QnXmlLib16/support/SmartPtr.h"

namespace QnXmlLib16 {
class CXmlObjectBase;
}

namespace Gpx {

// Makes the optional children of the classes, from the numbers in their tables.
class CGpxClassFactory : public QnXmlLib16::CClassfactoryBase
{
public:
    enum Class : int
    {
        Class_MetadataType,
        Class_PersonType,
        Class_EmailType,
        Class_LinkType,
        Class_CopyrightType,
        Class_BoundsType,
        Class_ExtensionsType
    };

    // Null for a number that is no class. The object gets the element name.
    static QnXmlLib16::CSmartPtr<QnXmlLib16::CXmlObjectBase> Create(int nClass,
                                                                    const char* pszElementName);
};

} // namespace Gpx
