#pragma once

#include "QnXmlLib16/support/Export.h"

#include <string>

namespace QnXmlLib16 {

// Decides whether this process may use the library. A product that licenses its bound classes
// puts a gate of its own in front of them; the built-in one admits everything, prints nothing and
// asks for no comment.
// Operations may be called from any thread that uses the library.
class QNXML_API ILicenceGate
{
public:
    ILicenceGate() = default;
    ILicenceGate(const ILicenceGate&) = delete;
    ILicenceGate& operator=(const ILicenceGate&) = delete;
    virtual ~ILicenceGate();

    // Asked at the start of each To... and From... operation, before anything else happens.
    // Refuses by throwing a CQnException, which leaves that operation as it is.
    virtual void Consult() = 0;

    // Told of the first bound object constructed in the process: the place for a notice. What it
    // throws is swallowed, since a construction never fails on the gate's account.
    virtual void FirstObject() = 0;

    // The comment to put ahead of the root element of XML and JSON text; empty for none. Asked
    // once for each document that is written.
    virtual std::string GetHeaderComment() = 0;
};

// The gate in force, one for the process.
class QNXML_API CLicenceGate
{
public:
    CLicenceGate() = delete;

    // The gate is not owned and must stay alive until another one is set; null restores the
    // built-in gate. To be set before any work starts.
    static void SetGate(ILicenceGate* pGate) noexcept;

    // Never null.
    static ILicenceGate* GetGate() noexcept;
};

} // namespace QnXmlLib16
