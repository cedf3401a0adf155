#pragma once

#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/support/InstanceMonitor.h"
#include "QnXmlLib16/values/ItemType.h"

#include <map>
#include <memory>
#include <string>

namespace QnXmlLib16 {

// The one output interface. The binding layer calls the same operations in the same order
// whatever the format; this class owns what the formats share, the stack of open elements and the
// namespace scope of each, and a concrete writer owns everything that touches bytes.
//
// Order of calls: Open; the options of the concrete writer; WriteStartDocument where a header is
// wanted; comments and instructions; AddNamespace and SetDefaultNamespace for the document;
// WriteStartElement, attributes, WriteInlineSchema (root only), content, WriteEndElement;
// WriteEndDocument where the format has one; Close.
//
// A writer serves one thread. It owns its contexts and never its stream.
class QNXML_API CXmlWriter : public CInstanceMonitor
{
public:
    // Keyed by namespace URI; the value is the prefix.
    using NamespaceMap = std::map<std::string, std::string>;

    // http://www.w3.org/XML/1998/namespace, bound to "xml" in every document.
    static const char* const XML_NAMESPACE;

    // Where an element stands relative to a repeating child element.
    enum ContextState : int
    {
        ContextState_None = 0,           // no collection; the state of a new element
        ContextState_BeforeItems = 1,    // the items of a collection come next
        ContextState_CollectionOpen = 2, // the writer has opened the collection (JSON only)
        ContextState_AfterItems = 3      // the last item has been written
    };

    // One open element, linked to the element around it.
    //
    // A context either inherits the namespace scope of its parent or owns one. It passes from the
    // first state to the second on its first write to the scope, and never back, so a declaration
    // reaches neither siblings nor parents.
    //
    // Contexts live on the heap. Deleting one deletes the contexts it still has as m_pParent,
    // without recursion; an element that ends clears m_pParent first.
    class QNXML_API CXmlWriterContext : public CInstanceMonitor
    {
    public:
        // An element inside pParent. CQnInvalidParamException for a null parent.
        CXmlWriterContext(const std::string& strName, const std::string& strNamespace,
                          CXmlWriterContext* pParent);

        // A root element, which owns a scope made of the default namespace and a copy of the map.
        // pParent is kept, and null for a root.
        CXmlWriterContext(const std::string& strName, const std::string& strNamespace,
                          const std::string& strDefaultNamespace, const NamespaceMap& mapNamespaces,
                          CXmlWriterContext* pParent);

        CXmlWriterContext(const CXmlWriterContext&) = delete;
        CXmlWriterContext& operator=(const CXmlWriterContext&) = delete;
        ~CXmlWriterContext() override;

        // The default namespace and the declarations of the scope in force; their owner is
        // reached in constant time from any depth. Both references hold until the owning element
        // ends; the text of the first changes with SetDefaultNamespace.
        const std::string& GetDefaultNamespace() const
        {
            return ScopeOwner().m_strDefaultNamespace;
        }
        const NamespaceMap& GetNamespaceMap() const;

        // Changes the scope of this element and of those opened inside it from now on.
        void SetDefaultNamespace(const std::string& strNamespace);

        // Binds the namespace to the prefix, in place of an older binding, in the scope of this
        // element and of those opened inside it. Writes no declaration.
        void SetNamespaceMapValue(const std::string& strNamespace, const std::string& strPrefix);

        // The prefix of a namespace in the scope in force. A namespace without a row gets one
        // with an empty prefix, in the scope of whichever element owns it, even when called on an
        // inheriting context: test with FindPrefix, or GetNamespaceMap and find, first.
        const std::string& GetNamespaceMapValue(const std::string& strNamespace);
        const std::string& GetNamespaceMapValue(const char* pszNamespace);

        // The prefix of a namespace in the scope in force, null for an unknown one. Adds no row.
        // The pointer holds until the element that owns the scope ends.
        const std::string* FindPrefix(const std::string& strNamespace) const;

        unsigned long m_iChildCount = 0; // child elements started; kept by the concrete writer
        bool m_bStartTagOpen = true;     // attributes are still allowed
        long m_iDepth = 0;               // 0 for a root, else one more than the parent
        std::string m_strNamespace;
        std::string m_strName;
        CXmlWriterContext* m_pParent;  // owned; null for a root
        bool m_bHasAttributes = false; // used by CFastInfosetWriter only
        ContextState m_eState = ContextState_None;
        std::string m_strDefaultNamespace; // holds news only where m_bInheritsScope is false
        // The scope's declarations; rows are added and rebound, and none is taken out. Where the
        // scope is inherited: those in force when the element was opened.
        NamespaceMap* m_pNamespaceMap = nullptr;
        // Invariant: exactly one of the two is set, and m_bOwnsMap says who frees the map.
        bool m_bInheritsScope = true;
        bool m_bOwnsMap = false;

    private:
        friend class CXmlWriter;

        // The context whose scope is in force here.
        CXmlWriterContext& ScopeOwner() const
        {
            return m_bInheritsScope && m_pRoot->m_bWalkScopes ? WalkToScopeOwner() : *m_pScopeOwner;
        }
        CXmlWriterContext& WalkToScopeOwner() const;
        void InheritFrom(CXmlWriterContext& parent);
        void OwnScope();
        void Park() noexcept;

        // Invariant: m_pScopeOwner is this context or the nearest one outside it that owns its
        // scope, unless an element with open children took a scope of its own after they were
        // opened. m_bWalkScopes of the root context records that, and the look-up then goes up
        // step by step.
        CXmlWriterContext* m_pScopeOwner;
        CXmlWriterContext* m_pOuter; // as m_pParent, yet kept until the end; in a spare, the next
        CXmlWriterContext* m_pRoot;
        // Contexts inside this one. One that dies with delete stays counted, since this one may
        // be gone by then; the look-up is then slower than it must be, and right.
        unsigned long m_iOpenChildren = 0;
        bool m_bWalkScopes = false;
        bool m_bRecyclable = false; // made by NewContext
        // The row that FindPrefix met last in this scope: the same name tends to come again.
        mutable const NamespaceMap::value_type* m_pLastRow = nullptr;
        std::unique_ptr<NamespaceMap> m_pSpareMap; // of an earlier use, for the next own scope
        NamespaceMap::node_type m_spareRow;
    };

    CXmlWriter(const CXmlWriter&) = delete;
    CXmlWriter& operator=(const CXmlWriter&) = delete;
    ~CXmlWriter() override;

    // Does nothing here. A concrete writer calls it, then opens its stream.
    virtual void Open();

    // CQnException "An Element has not been closed." while one is open; the writer can still be
    // destroyed. A concrete writer closes its stream first, so the text is there all the same.
    virtual void Close();

    // Sets the default namespace of the innermost element's scope, or of the document when none
    // is open. Nothing is written: a declaration is put out with the root's start tag, for what
    // was set before it.
    virtual void SetDefaultNamespace(const std::string& strNamespace);

    // Binds a prefix in the innermost element's scope, or in the document's when none is open. A
    // second prefix for a namespace replaces the first. Writes nothing, as SetDefaultNamespace.
    virtual void AddNamespace(const std::string& strPrefix, const std::string& strNamespace);

    virtual void WriteComment(const std::string& strText) = 0;

    // strText is the whole instruction as it is to appear, "<?" and "?>" included.
    virtual void WritePI(const std::string& strText) = 0;

    // Extra text for the start tag of the root element, after its attributes.
    virtual void WriteInlineSchema(const std::string& strText) = 0;

    virtual void WriteStartElement(const std::string& strName, const std::string& strNamespace) = 0;

    // Text of the innermost element. bIsDefault: the value is the schema's default for this
    // element, which a writer may leave out.
    virtual void WriteString(const std::string& strValue, ItemType eType, bool bIsDefault) = 0;

    virtual void WriteEndElement() = 0;

    // Refused, in the concrete writer's own way, once the element has content.
    virtual void WriteAttributeString(const std::string& strName, const std::string& strNamespace,
                                      const std::string& strValue, ItemType eType) = 0;

    // The "type" attribute in the XML Schema instance namespace; the value is strTypeName,
    // qualified for strNamespace.
    virtual void WriteAttributeType(const std::string& strNamespace, const std::string& strTypeName,
                                    ItemType eType) = 0;

    // The "nil" attribute in the XML Schema instance namespace, with the value "true".
    virtual void WriteAttributeNil() = 0;

    // Marks where the innermost element stands relative to a collection; nothing when none is
    // open.
    void SetContextState(ContextState eState);

    // The first of "AA", "AB" ... that is no prefix of the map. The search starts over each time,
    // so a prefix is unique in the scope passed in, not in the document. Past "ZZ" the first
    // character runs on to 0xFF; then CQnException "No namespace prefix is left.".
    static std::string GetUniquePrefix(const NamespaceMap& mapNamespaces);

    // Two characters, 'A' + i / 26 and 'A' + i % 26, each cut to a byte.
    static std::string NsIntToString(int i);

protected:
    // http://www.w3.org/2001/XMLSchema-instance
    static const std::string XSI_NAMESPACE;

    // Gives a context that is on no stack back to its writer.
    struct QNXML_API CContextFree
    {
        CXmlWriter* m_pWriter;
        void operator()(CXmlWriterContext* pContext) const noexcept;
    };
    using ContextPtr = std::unique_ptr<CXmlWriterContext, CContextFree>;

    explicit CXmlWriter(const char* pszClassName);

    // The context of an element that is about to start: a child of m_pContext, or a root with the
    // document's default namespace and declarations. Memory of ended elements is used again, so
    // the steady state allocates nothing. The caller writes the start of the tag and then moves
    // the context into m_pContext, since until then a null m_pContext marks the root element.
    ContextPtr NewContext(const std::string& strName, const std::string& strNamespace);

    // Ends the innermost element, which must exist.
    void PopContext() noexcept;

    // The prefix of a namespace in scope; one without a row is bound to a unique prefix in the
    // context's own scope, and bNew is set. The reference holds as that of FindPrefix.
    static const std::string& ObtainPrefix(CXmlWriterContext& context,
                                           const std::string& strNamespace, bool& bNew);

    std::string m_strDefaultNamespace;       // of the document, set before its root
    CXmlWriterContext* m_pContext = nullptr; // innermost open element, owned; null: none is open
    NamespaceMap m_mapNamespaces;            // of the document, set before its root
    CXmlWriterContext* m_pSpares = nullptr;  // ended contexts, linked by m_pOuter, owned
};

} // namespace QnXmlLib16
