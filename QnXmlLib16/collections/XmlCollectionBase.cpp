#include "QnXmlLib16/collections/XmlCollectionBase.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"

#include <algorithm>

namespace QnXmlLib16 {

CXmlCollectionBase::CXmlCollectionBase() = default;

CXmlCollectionBase::CXmlCollectionBase(const char* pszElementName, const char* pszNamespace,
                                       int iMinOccurs, int iMaxOccurs)
    : m_strNamespace(pszNamespace ? pszNamespace : ""),
      m_iMinOccurs(iMinOccurs),
      m_iMaxOccurs(iMaxOccurs)
{
    SetElementName(pszElementName);
}

CXmlCollectionBase::~CXmlCollectionBase() = default;

CXmlObjectBase* CXmlCollectionBase::GetBase()
{
    return this;
}

std::string CXmlCollectionBase::GetTargetNamespace() const
{
    throw CQnException("CXmlCollectionBase::GetTargetNamespace Should not be used from within a "
                       "Collection (program logic error)");
}

std::string CXmlCollectionBase::GetNamespace() const
{
    return m_strNamespace;
}

void CXmlCollectionBase::ValidateCount(const CSerializationContext& context) const
{
    if (context.GetIgnoreInvalidCollectionCounts())
        return;
    const int iCount = GetCount();
    if (m_iMaxOccurs != -1 && m_iMaxOccurs < iCount) {
        throw CQnValidationException(
            FormatString("The Maximum number of [%s] elements allowed in this collection is %d",
                         m_strElementName.c_str(), m_iMaxOccurs),
            "");
    }
    if (iCount < m_iMinOccurs) {
        throw CQnValidationException(
            FormatString("The Minimum number of [%s] elements allowed in this collection is %d",
                         m_strElementName.c_str(), m_iMinOccurs),
            "");
    }
}

bool CXmlCollectionBase::IsValidCount(const CSerializationContext& context) const
{
    if (context.GetIgnoreInvalidCollectionCounts())
        return true;
    const int iCount = GetCount();
    if (m_iMaxOccurs != -1 && m_iMaxOccurs < iCount)
        return false;
    return iCount >= m_iMinOccurs;
}

void CXmlCollectionBase::AddEventListener(IEventSink* pListener)
{
    if (!pListener)
        throw CQnInvalidParamException("The event listener may not be NULL");
    m_vecEventListeners.push_back(pListener);
}

void CXmlCollectionBase::RemoveEventListener(IEventSink* pListener)
{
    m_vecEventListeners.erase(
        std::remove(m_vecEventListeners.begin(), m_vecEventListeners.end(), pListener),
        m_vecEventListeners.end());
}

void CXmlCollectionBase::FireOnCollectionChange()
{
    for (IEventSink* pListener : m_vecEventListeners)
        FireOnCollectionChangeEvent(pListener, this);
}

void CXmlCollectionBase::FireOnCollectionAdd(void* pItem)
{
    for (IEventSink* pListener : m_vecEventListeners)
        FireOnCollectionAddEvent(pListener, this, pItem);
}

void CXmlCollectionBase::FireOnCollectionAddComplete(void* pItem)
{
    for (IEventSink* pListener : m_vecEventListeners)
        FireOnCollectionAddCompleteEvent(pListener, this, pItem);
}

void CXmlCollectionBase::FireOnCollectionRemove(int iIndex)
{
    for (IEventSink* pListener : m_vecEventListeners)
        FireOnCollectionRemoveEvent(pListener, this, iIndex);
}

void CXmlCollectionBase::FireOnCollectionRemoveComplete(int iIndex)
{
    for (IEventSink* pListener : m_vecEventListeners)
        FireOnCollectionRemoveCompleteEvent(pListener, this, iIndex);
}

} // namespace QnXmlLib16
