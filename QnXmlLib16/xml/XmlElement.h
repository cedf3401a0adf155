#pragma once

#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/support/InstanceMonitor.h"
#include "QnXmlLib16/support/SmartPtr.h"

#include <cstddef>
#include <string>
#include <vector>

namespace QnXmlLib16 {

class CXmlAttribute;
class CXmlDocument;
class CXmlName;
class CXmlNodeStore;

// An element of the input tree that stands between the parsers and the bound objects. It keeps
// child elements, attributes and one text; comments, processing instructions and the order of
// text and children are not kept.
//
// An element owns its children and attributes; the document owns the document element. All texts
// are in the local code page. One tree belongs to one thread, and so does what was removed from
// it, since its nodes share the memory of their document. A removed element may outlive the
// document; its names then print without prefixes.
//
// No operation recurses: the depth of a tree is bounded by memory only.
class QNXML_API CXmlElement : public CInstanceMonitor
{
public:
    // An element without name, text, attributes and children. Neither argument is owned and both
    // may be null; pDocument supplies the prefixes of GetQName. The element isn't linked into
    // pParent, which CreateNewChildElement does.
    CXmlElement(const CXmlDocument* pDocument, const CXmlElement* pParent);
    CXmlElement(const CXmlElement&) = delete;
    CXmlElement& operator=(const CXmlElement&) = delete;
    ~CXmlElement() override;

    // A new last child of the same document; this element owns it.
    CXmlElement* CreateNewChildElement();

    void SetElementName(const std::string& strLocalName);
    void SetNamespace(const std::string& strNamespace); // a URI, empty for none

    // The walk over the children, in document order; null at the end.
    CXmlElement* GetFirstElement() const { return m_pFirstChild; }
    CXmlElement* GetNextSiblingElement() const { return m_pNextSibling; }

    // The document of the element, null if it has none or if that has died.
    const CXmlDocument* GetDocument() const;

    const std::string& GetNamespaceURI() const;
    const std::string& GetLocalName() const;

    // All character data directly inside the element, joined, whatever children stood in between.
    const std::string& GetText() const { return m_strText; }

    // The local name with the prefix that the document knows for its namespace: "a:order". The
    // bare local name where there is no document, no namespace, no prefix, or where the namespace
    // is the default one.
    std::string GetQName() const;

    // GetQName, followed by the 1-based position among the equally named children of the parent,
    // as in "b:item[3]". The only one of its name and an element without parent get no position.
    std::string GetNameWithPredicate() const;

    // The place of the element for messages: "/a:order/b:item[3]". The cost grows with the depth
    // and with the number of children of every ancestor.
    std::string GetXPath() const;

    // In document order; the element owns them.
    const std::vector<CXmlAttribute*>& GetAttributes() const { return m_vecAttributes; }

    // The value of the first attribute with exactly this local name and namespace. With none the
    // result is a reference to one and the same empty text, so that a missing attribute and one
    // with an empty value can't be told apart. Null counts as empty text.
    const std::string& GetAttribute(const std::string& strName,
                                    const std::string& strNamespace) const;
    const std::string& GetAttribute(const char* pszName, const char* pszNamespace) const;

    // Appends an attribute; there is no check for a second one of the same name.
    void AddAttribute(const std::string& strName, const std::string& strValue,
                      const std::string& strNamespace);

    // Appends iLength bytes, or a terminated text. Null and lengths below 1 append nothing. Small
    // pieces cost amortised constant time a byte.
    void AppendText(const char* pText, int iLength);
    void AppendText(const char* pszText);

    // Takes the last child off the list, in constant time, and hands it to the caller, who deletes
    // it; null if there are no children. The result is the root of a tree of its own.
    CXmlElement* RemoveLastChildElement();

    // Elements that a document makes lie in its memory, which is used again after `delete`; `new`
    // and `delete` work alike for both kinds.
    static void* operator new(std::size_t nSize);
    static void operator delete(void* pObject) noexcept;

private:
    friend class CExpatReader;
    friend class CFastInfosetReader;
    friend class CXmlDocument;
    friend class CXmlPathBuilder;

    // pStore may be null; pName is never null and is shared.
    CXmlElement(CXmlNodeStore* pStore, const CXmlElement* pParent, const CXmlName* pName);

    static void* operator new(std::size_t nSize, CXmlNodeStore* pStore);
    static void operator delete(void* pObject, CXmlNodeStore* pStore) noexcept;

    CXmlElement* CreateNewChildElement(const CXmlName* pName);
    void AddAttribute(const CXmlName* pName, const char* pValue, std::size_t nLength);
    void DeleteChildren() noexcept;

    // Invariant: the children of an element are linked by m_pNextSibling from m_pFirstChild on,
    // and back by m_pPrevSibling, except that m_pPrevSibling of the first child is the last child.
    // So one pointer a node serves both as the tail of the list and for taking the tail off.
    // Both are null in an element that is in no list.
    CSmartPtr<CXmlNodeStore> m_pStore; // null without document
    const CXmlElement* m_pParent;
    CXmlElement* m_pNextSibling = nullptr;
    CXmlElement* m_pPrevSibling = nullptr;
    CXmlElement* m_pFirstChild = nullptr;
    CSmartPtr<const CXmlName> m_pName; // never null
    std::vector<CXmlAttribute*> m_vecAttributes;
    std::string m_strText;
};

} // namespace QnXmlLib16
