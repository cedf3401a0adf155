#pragma once

#include "QnXmlLib16/collections/AttributeCol.h"
#include "QnXmlLib16/collections/XmlCollection.h"

#include <memory>
#include <string>
#include <vector>

namespace QnXmlLib16 {

class CElementCol;

// One element of wildcard content, and with it everything below: a tree of names, namespaces,
// texts and attributes without a schema. Children know nothing of their parent. The tree dies
// with the last reference on its root; trees of any depth are copied, cloned, written and
// destroyed without deep recursion.
//
// Reading. FromXmlElement() and the other inherited entries stand for the content of an element
// that is there already: of a document they read the first child of the root, and they add its
// attributes and children to those that the object has. A whole document comes in through
// FromXml(pszXml), which adds likewise, or through CXmlDocument and CopyXmlElement(), which
// clears first.
//
// Writing puts the children in front of the text, whatever their order was in a document.
class QNXML_API CElement : public CXmlObjectBase, public CInstanceMonitor
{
public:
    // No namespace, and every child and attribute welcome.
    explicit CElement(const char* pszName);

    // The namespace is also the restriction that reading holds the element to. One of the four
    // keywords throws CQnInvalidNamespaceException "Invalid Namespace [%s].".
    CElement(const char* pszName, const char* pszNamespace);

    // As Init().
    CElement(const char* pszName, const char* pszNamespace, const char* pszRestriction,
             const char* pszTargetNamespace);

    // The XML form of any object, with pszDefaultNamespace (null or empty: none) as the default
    // namespace of the context that it is written with and of this element. pObject is neither
    // changed nor kept; null throws CQnInvalidParamException.
    CElement(CXmlObjectBase* pObject, const char* pszDefaultNamespace);

    CElement(const CElement&) = delete;
    CElement& operator=(const CElement&) = delete;
    ~CElement() override;

    // Names the element and gives it new, empty collections; text and default namespace stay.
    // pszRestriction is one of "##any", "##other", "##local", "##targetNamespace" or a list of
    // namespaces. Throws CQnInvalidNamespaceException, and changes nothing, for a null name,
    // restriction or target namespace and for a namespace that the restriction refuses.
    void Init(const char* pszName, const char* pszNamespace, const char* pszRestriction,
              const char* pszTargetNamespace);

    using CXmlObjectBase::GetBase;
    CXmlObjectBase* GetBase() override;

    // Both answer the namespace of the element, not the target namespace of its restriction.
    std::string GetTargetNamespace() const override;
    std::string GetNamespace() const override;

    // A deep copy of everything but the default namespace, and without listeners. Throws
    // CQnInvalidNamespaceException where an element has been given a namespace that its own
    // restriction refuses.
    CSmartPtr<CElement> Clone() const;

    // Replaces name, namespace, text, attributes and children by copies of those of the source,
    // which may have any namespaces. An attribute of the name "xmlns", as documents read without
    // namespaces have, also sets the default namespace. Null throws CQnInvalidParamException.
    void CopyXmlElement(CXmlElement* pSource);

    // Tests the namespaces of the element, its attributes and all descendants against the
    // restriction, which is not stored. What an attribute breaks is thrown as
    // CQnInvalidNamespaceException by value.
    //
    // Deliberate: an element that breaks it throws a CQnInvalidNamespaceException* from the heap,
    // which only a catch by pointer sees and whose catcher owns it. Pinned by
    // ElementRestrictions.AnElementOutsideIsThrownByPointer.
    void SetNamespaceRestrictions(const char* pszRestriction, const char* pszTargetNamespace);

    using CXmlObjectBase::FromXml;

    // Reads the root element of the text into this one, with the default context. Throws what
    // parsing throws, and does nothing for a root whose namespace the restriction refuses. Name,
    // namespace and text are replaced; attributes and children are added to those that are there.
    void FromXml(const char* pszXml);

    // The local name. It is apart from the element name of CXmlObjectBase, which is not used. The
    // reference holds until name or namespace change.
    const std::string& GetName() const noexcept;
    void SetName(const char* pszName);
    const std::string& GetText() const noexcept { return m_strText; }
    void SetText(const char* pszText);
    // Not tested against any restriction.
    void SetNamespace(const char* pszNamespace);
    // An element that has one is written with it in force, by a CXmlTextWriter only, and without
    // its attributes. Empty for none.
    const std::string& GetDefaultNamespace() const noexcept;

    // Never null; the same collections until the next Init().
    CSmartPtr<CAttributeCol> GetAttributes() const;
    CSmartPtr<CElementCol> GetElements() const;

    // Called by the setters before they change anything; these do nothing.
    void FireOnChangeName(const char* pszName);
    void FireOnChangeNamespace(const char* pszNamespace);
    void FireOnChangeText(const char* pszText);

protected:
    void ToXml_Int(CXmlWriter* pWriter, bool bIsRoot, const char* pszTargetNamespace,
                   const CSerializationContext& context, bool bOptionalChoice) const override;

    // Reads pCurrent, pParent is not looked at. Returns pCurrent when it is null or its namespace
    // is refused, else its next sibling.
    CXmlElement* FromXml_Int(CXmlElement* pParent, CXmlElement* pCurrent,
                             const CSerializationContext& context, bool bOptionalChoice) override;

private:
    friend class CElementCol;

    // The steps that go through whole trees; they make and read elements field by field.
    struct QNXML_PRIVATE Tree;
    // A local name with its namespace, shared by all elements and attributes that a document or a
    // clone gives the same.
    struct QNXML_PRIVATE Name;
    // What Init() was given but for the name; shared likewise.
    struct QNXML_PRIVATE Rules;
    // An attribute that nobody has asked for.
    struct QNXML_PRIVATE AttributeRecord;
    using SharedText = std::shared_ptr<const std::string>;

    // Without a name: whoever calls it gives it one.
    CElement();

    const Rules& GetRules() const noexcept;
    const std::string& GetNamespaceText() const noexcept;
    void SetFullName(std::string strName, std::string strNamespace);

    // Reads pCurrent and its following siblings into the collection: all that it admits or, with a
    // name, those of exactly that name and namespace. Returns the first other one, or null.
    static CXmlElement* ReadSiblings(CElementCol& col, CXmlElement* pCurrent,
                                     const std::string* pName, const std::string* pNamespace);

    CAttributeCol& Attributes() const;
    CElementCol& Elements() const;

    std::shared_ptr<const Name> m_pName; // never null once constructed
    std::string m_strText;
    std::shared_ptr<const Rules> m_pRules; // null: those of CElement(pszName)
    // Null until first asked for: most elements are leaves, and an empty collection of the rules
    // does what a missing one does. Attributes that came from a document wait in m_vecRecords,
    // which is empty once m_pAttributes is set.
    mutable CSmartPtr<CAttributeCol> m_pAttributes;
    mutable std::vector<AttributeRecord> m_vecRecords;
    mutable CSmartPtr<CElementCol> m_pElements;
    SharedText m_pDefaultNamespace; // null: empty
};

// The child elements of wildcard content.
//
// Deliberate: whatever restriction is asked for, the collection keeps "##any" and takes every
// element; bounds are ignored and stay 0 and unbounded. Pinned by
// ElementCollection.KeepsTheRestrictionAnyAndNoBounds.
class QNXML_API CElementCol : public CXmlCollection, public CInstanceMonitor
{
public:
    // pszNamespace is the default namespace of new elements. Throws CQnInvalidNamespaceException
    // when the restriction refuses it. Where it is empty and the restriction is a keyword, the
    // keyword itself is the default namespace.
    CElementCol(const char* pszNamespace, const char* pszRestriction,
                const char* pszTargetNamespace, int iMinOccurs, int iMaxOccurs);
    ~CElementCol() override;

    // Both answer the target namespace.
    std::string GetTargetNamespace() const override;
    std::string GetNamespace() const override;

    CSmartPtr<CElement> Add(const char* pszName, const char* pszNamespace);

    // In the default namespace. Throws CQnInvalidStateException "A Namespace has not been set for
    // this Collection" when that is empty.
    CSmartPtr<CElement> Add(const char* pszName);

    // Shares the element. An element must not be added below itself.
    CSmartPtr<CElement> Add(CElement* pElement);

    // Null for a null item. Throws CQnInvalidParamException "Index %d is out of range, use 0 -
    // %d".
    CSmartPtr<CElement> Item(int iIndex) const;

    // A new collection of the same rules, with clones of the elements and no listeners. Throws as
    // CElement::Clone().
    CSmartPtr<CElementCol> Clone() const;

    // for (CNode* p = col.begin(); p != col.end(); p = p->GetNext())
    CNode* begin() const noexcept { return GetHeadNode(); }
    CNode* end() const noexcept { return nullptr; }

protected:
    void ToXml_Int(CXmlWriter* pWriter, bool bIsRoot, const char* pszTargetNamespace,
                   const CSerializationContext& context, bool bOptionalChoice) const override;

    // Adds pCurrent and its following siblings to the elements that are there. Returns the first
    // one that the restriction refuses, or null.
    CXmlElement* FromXml_Int(CXmlElement* pParent, CXmlElement* pCurrent,
                             const CSerializationContext& context, bool bOptionalChoice) override;

public:
    // Adds pCurrent and its following siblings while local name and namespace are exactly those
    // given. Returns the first other one, or null.
    virtual CXmlElement* FromXmlLockElementName_Int(const std::string& strName,
                                                    const std::string& strNamespace,
                                                    CXmlElement* pParent, CXmlElement* pCurrent,
                                                    const CSerializationContext& context,
                                                    bool bOptionalChoice);

private:
    friend class CElement;

    std::string m_strRestriction;
    std::string m_strDefaultNamespace;
    std::string m_strTargetNamespace;
};

} // namespace QnXmlLib16
