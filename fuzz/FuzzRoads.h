#pragma once

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/collections/Element.h"
#include "QnXmlLib16/fastinfoset/FInfoDecl.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "examples/gpx/model/GpxType.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

// What the fuzz targets share. A finding is whatever the sanitizers tell, an exception that is not
// promised, or an object that was read and does not come back from what it writes.

namespace Fuzz {

using namespace QnXmlLib16;

// Calls action, which may fail in the ways that the library promises for damaged input.
template <class TAction>
void Attempt(const TAction& action)
{
    try {
        action();
    }
    catch (const CQnException&) {
    }
    catch (const std::logic_error& e) { // a string in UTF-16
        if (std::strcmp(e.what(), "basic_string::_M_construct null not valid") != 0)
            throw;
    }
}

// Settings under which a reader goes on where it would fail else. No context ignores both unknown
// and missing elements.
inline CSerializationContext LaxContext(bool bUnknown)
{
    CSerializationContext context;
    if (bUnknown)
        context.SetIgnoreUnknownElements(true);
    else
        context.SetIgnoreMissingMandatoryElements(true);
    context.SetIgnoreUnknownAttributes(true);
    context.SetIgnoreMissingChoice(true);
    context.SetIgnoreInvalidCollectionCounts(true);
    context.SetIgnoreNamespaces(true);
    return context;
}

// Writes what was read in every form, and reads the binary one again.
inline void Write(const CXmlObjectBase& object, const CSerializationContext& context)
{
    Attempt([&] { object.ToXml(true, true, EOLType_LF, context); });
    Attempt([&] { object.ToJson(true, EOLType_LF, context); });
    Attempt([&] {
        const CBinaryData binary =
            object.ToFastInfosetStream(FInfoDecl_None, context, CompressionType_None);
        const CSmartPtr<CElement> pCopy = new CElement("any");
        pCopy->FromXmlStream(binary, context);
    });
}

// Gives read a wildcard element and a bound document, strictly and not, and writes what they hold.
template <class TRead>
void IntoObjects(const TRead& read)
{
    static const CSerializationContext strict;
    static const CSerializationContext unknown = LaxContext(true);
    static const CSerializationContext missing = LaxContext(false);
    for (const CSerializationContext* const pContext : {&strict, &unknown, &missing}) {
        const CSmartPtr<CElement> pElement = new CElement("any");
        Attempt([&] { read(*pElement, *pContext); });
        Write(*pElement, *pContext);
        const CSmartPtr<Gpx::CGpxType> pGpx = new Gpx::CGpxType;
        Attempt([&] { read(*pGpx, *pContext); });
        Write(*pGpx, *pContext);
    }
}

} // namespace Fuzz
