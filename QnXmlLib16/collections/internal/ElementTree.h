#pragma once

#include "QnXmlLib16/collections/Element.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace QnXmlLib16 {

class CXmlWriter;

struct CElement::Rules
{
    std::string m_strRestriction;
    std::string m_strTargetNamespace;
    // What the collections were given as their namespace; the element's own may have changed.
    std::string m_strCollectionNamespace;
};

// Walks over whole trees of elements, each with a stack of its own in place of recursion.
struct CElement::Tree
{
    class Builder;

    static CSmartPtr<CElement> Clone(const CElement& source);

    // Writes the element and all below. An item of a derived class is left to its own ToXml_Int,
    // which is given pszTargetNamespace.
    static void Write(const CElement& element, CXmlWriter& writer, const char* pszTargetNamespace,
                      const CSerializationContext& context);

private:
    struct CloneFrame;
    struct DefaultScope;
    struct WriteFrame;

    static CSmartPtr<CElement> CloneWithoutChildren(const CElement& source);
    static WriteFrame Open(const CElement& element, CXmlWriter& writer,
                           const char* pszTargetNamespace, const CSerializationContext& context);
    static void Close(WriteFrame& frame);
};

// Turns elements of a document into new trees of CElement. Serves one document, whose namespaces
// it shares between the elements.
//
// New elements have the restriction "##any", so nothing that is put into them needs a test, and no
// listeners, so no event is heard from within.
class CElement::Tree::Builder
{
public:
    // For CopyXmlElement: the collections know no namespace, and an attribute "xmlns" sets the
    // default namespace.
    Builder() = default;

    // For FromXml_Int: the collections of an element know its namespace and the target namespace.
    explicit Builder(const std::string& strTargetNamespace)
        : m_pTargetNamespace(&strTargetNamespace)
    {}

    CSmartPtr<CElement> Build(const CXmlElement& source);

    SharedText ShareNamespace(const std::string& strNamespace)
    {
        return Know(strNamespace).m_pText;
    }

private:
    struct Known
    {
        SharedText m_pText;
        std::shared_ptr<const Rules> m_pRules;
    };

    struct Frame
    {
        CElementCol* m_pChildren;
        const CXmlElement* m_pNext;
    };

    CSmartPtr<CElement> BuildWithoutChildren(const CXmlElement& source);
    const Known& Know(const std::string& strNamespace);

    const std::string* m_pTargetNamespace = nullptr; // not owned; null for CopyXmlElement
    std::unordered_map<std::string, Known> m_mapKnown;
    const std::pair<const std::string, Known>* m_pLast = nullptr; // asked for last, in the map
    std::vector<Frame> m_vecStack;                                // empty between calls
};

} // namespace QnXmlLib16
