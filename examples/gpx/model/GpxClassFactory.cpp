#include "examples/gpx/model/GpxClassFactory.h"

#include "examples/gpx/model/BoundsType.h"
#include "examples/gpx/model/CopyrightType.h"
#include "examples/gpx/model/EmailType.h"
#include "examples/gpx/model/ExtensionsType.h"
#include "examples/gpx/model/LinkType.h"
#include "examples/gpx/model/MetadataType.h"
#include "examples/gpx/model/PersonType.h"

using namespace QnXmlLib16;

namespace Gpx {

namespace {

CXmlObjectBase* New(int nClass)
{
    switch (nClass) {
    case CGpxClassFactory::Class_MetadataType:
        return new CMetadataType;
    case CGpxClassFactory::Class_PersonType:
        return new CPersonType;
    case CGpxClassFactory::Class_EmailType:
        return new CEmailType;
    case CGpxClassFactory::Class_LinkType:
        return new CLinkType;
    case CGpxClassFactory::Class_CopyrightType:
        return new CCopyrightType;
    case CGpxClassFactory::Class_BoundsType:
        return new CBoundsType;
    case CGpxClassFactory::Class_ExtensionsType:
        return new CExtensionsType;
    default:
        return nullptr;
    }
}

} // namespace

CSmartPtr<CXmlObjectBase> CGpxClassFactory::Create(int nClass, const char* pszElementName)
{
    const CSmartPtr<CXmlObjectBase> pObject = New(nClass);
    if (pObject)
        pObject->SetElementName(pszElementName);
    return pObject;
}

} // namespace Gpx
