#include "QnXmlLib16/binding/XmlObjectBase.h"

#include "QnXmlLib16/collections/XmlCollectionBase.h"
#include "QnXmlLib16/support/Exceptions.h"

namespace QnXmlLib16 {

namespace {

CXmlCollectionBase& Require(CXmlCollectionBase* pCollection)
{
    if (!pCollection)
        throw CQnInvalidParamException("The collection may not be NULL");
    return *pCollection;
}

// Whether the sink overrides the empty OnEvent of CXmlObjectBase. The function that a virtual call
// would reach can be asked for with g++ only; elsewhere every sink is called.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpmf-conversions"
bool Hears(IEventSink* pSink)
{
    using Code = void (*)();
    return reinterpret_cast<Code>(pSink->*(&IEventSink::OnEvent)) !=
           reinterpret_cast<Code>(&CXmlObjectBase::OnEvent);
}
#pragma GCC diagnostic pop
#else
bool Hears(IEventSink*)
{
    return true;
}
#endif

void Fire(IEventSink* pSink, CXmlCollectionBase* pCollection, IEventSink::MsgType message,
          void* pData)
{
    if (!pSink)
        throw CQnInvalidParamException("The event listener may not be NULL");
    CXmlObjectBase* const pSender = Require(pCollection).GetBase();
    if (Hears(pSink))
        pSink->OnEvent(pSender, message, pData);
}

} // namespace

void CXmlObjectBase::FireOnCollectionChangeEvent(IEventSink* pSink, CXmlCollectionBase* pCollection)
{
    Fire(pSink, pCollection, MsgType_CollectionChanged, nullptr);
}

void CXmlObjectBase::FireOnCollectionAddEvent(IEventSink* pSink, CXmlCollectionBase* pCollection,
                                              void* pItem)
{
    Fire(pSink, pCollection, MsgType_Add, pItem);
}

void CXmlObjectBase::FireOnCollectionAddCompleteEvent(IEventSink* pSink,
                                                      CXmlCollectionBase* pCollection, void* pItem)
{
    Fire(pSink, pCollection, MsgType_AddComplete, pItem);
}

void CXmlObjectBase::FireOnCollectionRemoveEvent(IEventSink* pSink, CXmlCollectionBase* pCollection,
                                                 int iIndex)
{
    Fire(pSink, pCollection, MsgType_Remove, iIndex == -1 ? nullptr : &iIndex);
}

void CXmlObjectBase::FireOnCollectionRemoveCompleteEvent(IEventSink* pSink,
                                                         CXmlCollectionBase* pCollection,
                                                         int iIndex)
{
    Fire(pSink, pCollection, MsgType_RemoveComplete, iIndex == -1 ? nullptr : &iIndex);
}

void CXmlObjectBase::Choice_Read_Collection(CXmlCollectionBase* pCollection, CXmlElement* pElement,
                                            CXmlElement*& pCursor, long& nCount,
                                            const CSerializationContext& context)
{
    if (nCount > 0)
        return;
    CXmlElement* const pNext = FromXml_Int(&Require(pCollection), pElement, pCursor, context);
    if (pNext == pCursor)
        return;
    pCursor = pNext;
    pCollection->ValidateCount(context);
    ++nCount;
}

} // namespace QnXmlLib16
