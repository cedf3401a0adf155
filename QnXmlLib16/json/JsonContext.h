#pragma once

#include "QnXmlLib16/support/Export.h"

#include <string>

namespace QnXmlLib16 {

// How much of the XML form the JSON text keeps.
enum JsonRoundTrip : int
{
    JsonRoundTrip_None = 0,         // attributes and text beside them have bare keys; no namespaces
    JsonRoundTrip_NoNamespaces = 1, // "@name" for an attribute and "#text" for text; no namespaces
    JsonRoundTrip_Full = 2          // as 1, with declarations, prefixes and the type attribute
};

// The JSON settings of a CSerializationContext.
class QNXML_API CJsonContext
{
public:
    CJsonContext();
    CJsonContext(const CJsonContext&) = default;
    CJsonContext& operator=(const CJsonContext&) = default;
    virtual ~CJsonContext();

    // JsonRoundTrip_Full at the start. Any other value acts as JsonRoundTrip_NoNamespaces.
    JsonRoundTrip GetSupportRoundtrip() const;
    void SetSupportRoundtrip(JsonRoundTrip eRoundTrip);

    // The name that JSON input is read under, for documents without a root key of their own.
    // Empty, as at the start: the document's only key names the root.
    const std::string& GetRootElementName() const;
    void SetRootElementName(const char* pszName);

    // Whether JSON input may hold comments; true at the start. Deliberate: the setter bears the
    // getter's name, and the argument tells them apart.
    bool GetAllowComments() const;
    void GetAllowComments(bool bAllow);

private:
    JsonRoundTrip m_eRoundTrip = JsonRoundTrip_Full;
    std::string m_strRootElementName;
    bool m_bAllowComments = true;
};

} // namespace QnXmlLib16
