#pragma once

#include "QnXmlLib16/collections/XmlCollectionBase.h"
#include "QnXmlLib16/support/SmartPtr.h"

#include <memory>
#include <utility>

namespace QnXmlLib16 {

// One place in the list of a CXmlCollection, which alone makes and frees it. A pointer to a node
// is good until its item is removed.
class QNXML_API CNode
{
public:
    // Null where a null item was added. Still counted by the node: copy it into a CSmartPtr to
    // keep it beyond the next change of the collection.
    CXmlObjectBase* GetItem() const noexcept { return m_pItem.GetPtr(); }

    // Null at the ends of the list.
    CNode* GetNext() const noexcept { return m_pNext; }
    CNode* GetPrevious() const noexcept { return m_pPrevious; }

    CNode(const CNode&) = delete;
    CNode& operator=(const CNode&) = delete;

private:
    friend class CXmlCollection;
    friend struct std::default_delete<CNode>;

    explicit CNode(CSmartPtr<CXmlObjectBase> pItem) : m_pItem(std::move(pItem)) {}
    ~CNode() = default;

    CSmartPtr<CXmlObjectBase> m_pItem;
    CNode* m_pNext = nullptr;
    CNode* m_pPrevious = nullptr;
};

// A collection of objects: generated classes, or the wildcard content of CElement and CAttribute.
// It holds one counted reference on each item from insertion to removal. A null item is stored,
// counted, and passed over by everything that walks the items.
//
// A dying collection gives its references back without any event. Items of items, however deep,
// go one after the other, not one inside the other: depth costs no stack.
class QNXML_API CXmlCollection : public CXmlCollectionBase
{
public:
    CXmlCollection();

    // See CXmlCollectionBase.
    CXmlCollection(const char* pszElementName, const char* pszNamespace, int iMinOccurs,
                   int iMaxOccurs);

    CXmlCollection(const CXmlCollection&) = delete;
    CXmlCollection& operator=(const CXmlCollection&) = delete;
    ~CXmlCollection() override;

    int GetCount() const override;
    void Clear() override;

    // Throws CQnInvalidParamException "Index %d is out of range, use 0 - %d" for a place outside
    // the list, before any event.
    void Remove(int iIndex) override;

protected:
    // Has each item write its attributes.
    void AttributesToXml_Int(CXmlWriter* pWriter,
                             const CSerializationContext& context) const override;

    // Each tells the listeners of the item, links it, and tells them of the completion and of the
    // change. An item that no one else counts lives from here on until it is removed; when the add
    // fails ahead of the link, through a listener for one, such an item dies.
    void AppendItem(CXmlObjectBase* pItem);
    void PrependItem(CXmlObjectBase* pItem);

    // iIndex from 0 to the count; anything else throws CQnInvalidParamException "Index out of
    // range" before any event and leaves the item to the caller.
    void AddItemAt(int iIndex, CXmlObjectBase* pItem);

    // Behind or in front of an item of this list. Without one, AddAfterItem prepends and
    // AddBeforeItem appends. One that is not in the list throws as GetNodeForItem() does, after
    // the listeners have heard of an add that then never completes; the collection is unchanged,
    // and pItem dies if no one else holds it.
    void AddAfterItem(const CXmlObjectBase* pExisting, CXmlObjectBase* pItem);
    void AddBeforeItem(const CXmlObjectBase* pExisting, CXmlObjectBase* pItem);

    // Throws CQnInvalidParamException "Index %d is out of range, use 0 - %d". Going through all
    // places in either direction costs constant time each.
    CNode* GetNodeAtIndex(int iIndex) const;

    // Finds by identity, never by content. Throws CQnInvalidParamException "The object was not
    // found in the collection".
    CNode* GetNodeForItem(const CXmlObjectBase* pItem) const;

    // pNode must be a node of this list; null throws as a missing item does. Both remove events
    // come without an index.
    void RemoveNode(CNode* pNode);

    // Null when empty.
    CNode* GetHeadNode() const noexcept { return m_pHead; }

private:
    // Makes the node, which counts the item, and tells the listeners of it.
    std::unique_ptr<CNode> BeginAdd(CXmlObjectBase* pItem);
    // Links the node in front of pNext, or last where that is null, and tells the listeners.
    void CompleteAdd(CNode* pNext, std::unique_ptr<CNode> pNode);

    // Puts a new node in front of pNext, or last where that is null.
    void LinkBefore(CNode* pNext, CNode* pNode) noexcept;
    void Unlink(CNode* pNode) noexcept;

    // Invariant: m_pHead and m_pTail are both null or both set, and m_iCount nodes lie between
    // them, ends included (RemoveNode counts down only once the item is released). Each node
    // holds exactly one reference on its item.
    CNode* m_pHead = nullptr;
    CNode* m_pTail = nullptr;
    int m_iCount = 0;

    // The place that was looked up last, where the next look-up starts; null if there is none.
    mutable int m_iLastIndex = 0;
    mutable CNode* m_pLastNode = nullptr;
};

} // namespace QnXmlLib16
