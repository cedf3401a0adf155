#include "QnXmlLib16/collections/XmlCollection.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"

#include <memory>
#include <utility>

namespace QnXmlLib16 {

CXmlCollection::CXmlCollection() = default;

CXmlCollection::CXmlCollection(const char* pszElementName, const char* pszNamespace, int iMinOccurs,
                               int iMaxOccurs)
    : CXmlCollectionBase(pszElementName, pszNamespace, iMinOccurs, iMaxOccurs)
{}

// Releasing an item may destroy another collection, and so on down to the leaves of a tree of any
// depth. So only the outermost destructor of a thread releases; those that run inside it hand
// their nodes over to its list, in front, which keeps the order of a recursive destruction but
// for each item now outliving its children's collection.
CXmlCollection::~CXmlCollection()
{
    static thread_local CNode** t_ppPending = nullptr;

    if (!m_pHead)
        return;
    if (t_ppPending) {
        m_pTail->m_pNext = *t_ppPending;
        *t_ppPending = m_pHead;
        return;
    }
    CNode* pPending = m_pHead;
    t_ppPending = &pPending;
    while (pPending) {
        const std::unique_ptr<CNode> pNode(pPending);
        pPending = pNode->m_pNext;
        pNode->m_pItem.Reset();
    }
    t_ppPending = nullptr;
}

int CXmlCollection::GetCount() const
{
    return m_iCount;
}

void CXmlCollection::Clear()
{
    while (m_iCount > 0)
        Remove(0);
}

void CXmlCollection::Remove(int iIndex)
{
    RemoveNode(GetNodeAtIndex(iIndex));
}

void CXmlCollection::AttributesToXml_Int(CXmlWriter* pWriter,
                                         const CSerializationContext& context) const
{
    for (const CNode* pNode = m_pHead; pNode; pNode = pNode->GetNext()) {
        if (pNode->GetItem())
            CXmlObjectBase::AttributesToXml_Int(pNode->GetItem()->GetBase(), pWriter, context);
    }
}

void CXmlCollection::AppendItem(CXmlObjectBase* pItem)
{
    CompleteAdd(nullptr, BeginAdd(pItem));
}

void CXmlCollection::PrependItem(CXmlObjectBase* pItem)
{
    std::unique_ptr<CNode> pNode = BeginAdd(pItem);
    CompleteAdd(m_pHead, std::move(pNode));
}

void CXmlCollection::AddItemAt(int iIndex, CXmlObjectBase* pItem)
{
    if (iIndex < 0 || iIndex > m_iCount)
        throw CQnInvalidParamException("Index out of range");
    if (iIndex == m_iCount) {
        AppendItem(pItem);
        return;
    }
    std::unique_ptr<CNode> pNode = BeginAdd(pItem);
    CompleteAdd(GetNodeAtIndex(iIndex), std::move(pNode));
}

// Deliberate: without an item to go by, AddAfterItem puts the new one first and AddBeforeItem puts
// it last. Pinned by ObjectCollection.NewItemsGoBesideTheItemNamed.
void CXmlCollection::AddAfterItem(const CXmlObjectBase* pExisting, CXmlObjectBase* pItem)
{
    if (!pExisting) {
        PrependItem(pItem);
        return;
    }
    // Deliberate: the listeners hear of an add before the search, and of no completion when that
    // fails. Pinned by ObjectCollection.AnAddBesideAStrangerNeverCompletes.
    std::unique_ptr<CNode> pNode = BeginAdd(pItem);
    CompleteAdd(GetNodeForItem(pExisting)->m_pNext, std::move(pNode));
}

void CXmlCollection::AddBeforeItem(const CXmlObjectBase* pExisting, CXmlObjectBase* pItem)
{
    if (!pExisting) {
        AppendItem(pItem);
        return;
    }
    std::unique_ptr<CNode> pNode = BeginAdd(pItem);
    CompleteAdd(GetNodeForItem(pExisting), std::move(pNode));
}

// The node comes ahead of the event: a listener may take a reference and give it back without
// being the one who destroys the item.
std::unique_ptr<CNode> CXmlCollection::BeginAdd(CXmlObjectBase* pItem)
{
    CSmartPtr<CXmlObjectBase> pHeld(pItem);
    std::unique_ptr<CNode> pNode(new CNode(std::move(pHeld)));
    FireOnCollectionAdd(pItem);
    return pNode;
}

void CXmlCollection::CompleteAdd(CNode* pNext, std::unique_ptr<CNode> pNode)
{
    CXmlObjectBase* const pItem = pNode->GetItem();
    LinkBefore(pNext, pNode.release());
    FireOnCollectionAddComplete(pItem);
    FireOnCollectionChange();
}

CNode* CXmlCollection::GetNodeAtIndex(int iIndex) const
{
    if (iIndex >= 0 && iIndex < m_iCount) {
        if (!m_pLastNode || iIndex < m_iLastIndex / 2) {
            m_pLastNode = m_pHead;
            m_iLastIndex = 0;
        }
        for (; m_pLastNode && m_iLastIndex < iIndex; ++m_iLastIndex)
            m_pLastNode = m_pLastNode->m_pNext;
        for (; m_pLastNode && m_iLastIndex > iIndex; --m_iLastIndex)
            m_pLastNode = m_pLastNode->m_pPrevious;
        // Null only for an item that asks from its destructor, while the count still includes it.
        if (m_pLastNode)
            return m_pLastNode;
    }
    // Deliberate: the second number is the count, not the last place. Pinned by
    // ObjectCollection.PlacesOutsideTheListAreRefused.
    throw CQnInvalidParamException(
        FormatString("Index %d is out of range, use 0 - %d", iIndex, m_iCount));
}

CNode* CXmlCollection::GetNodeForItem(const CXmlObjectBase* pItem) const
{
    if (pItem) {
        for (CNode* pNode = m_pHead; pNode; pNode = pNode->m_pNext) {
            const CXmlObjectBase* pStored = pNode->GetItem();
            if (pStored && pStored->GetBase() == pItem->GetBase())
                return pNode;
        }
    }
    throw CQnInvalidParamException("The object was not found in the collection");
}

void CXmlCollection::RemoveNode(CNode* pNode)
{
    if (!pNode)
        throw CQnInvalidParamException("The object was not found in the collection");
    // Deliberate: list removals never tell the place; listeners of both remove events get null
    // data. Pinned by ObjectCollection.ListenersHearEachStepInOrder.
    FireOnCollectionRemove(-1);
    Unlink(pNode);
    delete pNode;
    --m_iCount;
    FireOnCollectionRemoveComplete(-1);
    FireOnCollectionChange();
}

void CXmlCollection::LinkBefore(CNode* pNext, CNode* pNode) noexcept
{
    CNode* const pPrevious = pNext ? pNext->m_pPrevious : m_pTail;
    pNode->m_pNext = pNext;
    pNode->m_pPrevious = pPrevious;
    (pPrevious ? pPrevious->m_pNext : m_pHead) = pNode;
    (pNext ? pNext->m_pPrevious : m_pTail) = pNode;
    ++m_iCount;
    if (pNext)
        m_pLastNode = nullptr;
}

void CXmlCollection::Unlink(CNode* pNode) noexcept
{
    (pNode->m_pPrevious ? pNode->m_pPrevious->m_pNext : m_pHead) = pNode->m_pNext;
    (pNode->m_pNext ? pNode->m_pNext->m_pPrevious : m_pTail) = pNode->m_pPrevious;
    m_pLastNode = nullptr;
}

} // namespace QnXmlLib16
