#include "QnXmlLib16/binding/XmlObjectHelper.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/xml/XmlElement.h"

#include <string_view>

namespace QnXmlLib16 {

bool CXmlObjectHelper::IsNamespaceValid(const std::string& ns, const std::string& namespaces,
                                        const std::string& targetNamespace)
{
    std::string_view strRest = namespaces;
    for (;;) {
        // Each blank ends a token, so two blanks in a row have an empty one between them.
        const std::string_view::size_type iBlank = strRest.find(' ');
        const std::string_view strToken = strRest.substr(0, iBlank);
        bool bAdmits = false;
        if (strToken == "##any")
            bAdmits = true;
        else if (strToken == "##other")
            bAdmits = ns != targetNamespace;
        else if (strToken == "##local")
            bAdmits = ns.empty();
        else if (strToken == "##targetNamespace")
            bAdmits = ns == targetNamespace;
        else
            // Deliberate: a literal token is compared through the whole list, so a list of two
            // URIs admits neither, and the empty namespace is admitted by any literal token.
            // Pinned by NamespaceRestriction.LiteralTokensGoByTheWholeList.
            bAdmits = ns.empty() || ns == namespaces;
        if (bAdmits)
            return true;
        if (iBlank == std::string_view::npos)
            return false;
        strRest.remove_prefix(iBlank + 1);
    }
}

void CXmlObjectHelper::TestNamespace(const std::string& ns, const std::string& namespaces,
                                     const std::string& targetNamespace)
{
    if (!IsNamespaceValid(ns, namespaces, targetNamespace))
        throw CQnInvalidNamespaceException(
            FormatString("Invalid namespace [%s]. The namespace must be one of [%s] where the "
                         "target namespace is [%s].",
                         ns.c_str(), namespaces.c_str(), targetNamespace.c_str()),
            "");
}

bool CXmlObjectHelper::DoesElementNameMatch(const CSerializationContext& context,
                                            const CXmlElement* pElement, const std::string& name,
                                            const std::string& ns)
{
    if (!pElement)
        throw CQnInvalidParamException("The element may not be NULL");
    // GetIgnoreNamespaces() is true for SchemaType_NoNamespaces as well.
    return pElement->GetLocalName() == name &&
           (context.GetIgnoreNamespaces() || pElement->GetNamespaceURI() == ns);
}

} // namespace QnXmlLib16
