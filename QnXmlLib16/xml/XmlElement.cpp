#include "QnXmlLib16/xml/XmlElement.h"

#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/internal/XmlNodeStore.h"

#include <memory>
#include <string_view>

namespace QnXmlLib16 {

static_assert(sizeof(CXmlElement) < CXmlNodeStore::kLargestNode);

namespace {

CSmartPtr<const CXmlName> MakeName(CXmlNodeStore* pStore, std::string_view localName,
                                   std::string_view namespaceURI)
{
    return pStore ? pStore->GetName(localName, namespaceURI)
                  : new CXmlName(localName, new CXmlNamespace(namespaceURI));
}

std::string_view View(const char* psz)
{
    return psz ? psz : "";
}

const std::string& FindAttribute(const std::vector<CXmlAttribute*>& vecAttributes,
                                 std::string_view name, std::string_view namespaceURI)
{
    static const std::string emptyString;
    for (const CXmlAttribute* pAttribute : vecAttributes)
        if (pAttribute->GetLocalName() == name && pAttribute->GetNamespaceURI() == namespaceURI)
            return pAttribute->GetValue();
    return emptyString;
}

} // namespace

CXmlElement::CXmlElement(CXmlNodeStore* pStore, const CXmlElement* pParent, const CXmlName* pName)
    : CInstanceMonitor("CXmlElement"),
      m_pStore(pStore),
      m_pParent(pParent),
      m_pName(pName ? CSmartPtr<const CXmlName>(pName) : MakeName(pStore, "", ""))
{}

CXmlElement::~CXmlElement()
{
    DeleteChildren();
    for (const CXmlAttribute* pAttribute : m_vecAttributes)
        delete pAttribute;
}

// In document order, descendants ahead of their ancestors. Each child that has children of its own
// puts them in front of itself, so that what is deleted never has any.
void CXmlElement::DeleteChildren() noexcept
{
    CXmlElement* pNext = m_pFirstChild;
    while (pNext) {
        if (CXmlElement* pFirst = pNext->m_pFirstChild) {
            pNext->m_pFirstChild = nullptr;
            pFirst->m_pPrevSibling->m_pNextSibling = pNext;
            pNext = pFirst;
        }
        else {
            const CXmlElement* pDone = pNext;
            pNext = pDone->m_pNextSibling;
            delete pDone;
        }
    }
}

CXmlElement* CXmlElement::CreateNewChildElement()
{
    return CreateNewChildElement(nullptr);
}

CXmlElement* CXmlElement::CreateNewChildElement(const CXmlName* pName)
{
    CXmlNodeStore* pStore = m_pStore.GetPtr();
    CXmlElement* pChild = pStore ? new (pStore) CXmlElement(pStore, this, pName)
                                 : new CXmlElement(pStore, this, pName);
    if (!m_pFirstChild) {
        m_pFirstChild = pChild;
    }
    else {
        CXmlElement* pLast = m_pFirstChild->m_pPrevSibling;
        pLast->m_pNextSibling = pChild;
        pChild->m_pPrevSibling = pLast;
    }
    m_pFirstChild->m_pPrevSibling = pChild;
    return pChild;
}

CXmlElement* CXmlElement::RemoveLastChildElement()
{
    if (!m_pFirstChild)
        return nullptr;
    CXmlElement* pLast = m_pFirstChild->m_pPrevSibling;
    if (pLast == m_pFirstChild) {
        m_pFirstChild = nullptr;
    }
    else {
        m_pFirstChild->m_pPrevSibling = pLast->m_pPrevSibling;
        pLast->m_pPrevSibling->m_pNextSibling = nullptr;
    }
    pLast->m_pPrevSibling = nullptr;
    pLast->m_pParent = nullptr;
    return pLast;
}

void CXmlElement::SetElementName(const std::string& strLocalName)
{
    m_pName = MakeName(m_pStore.GetPtr(), strLocalName, GetNamespaceURI());
}

void CXmlElement::SetNamespace(const std::string& strNamespace)
{
    m_pName = MakeName(m_pStore.GetPtr(), GetLocalName(), strNamespace);
}

const CXmlDocument* CXmlElement::GetDocument() const
{
    return m_pStore ? m_pStore->GetDocument() : nullptr;
}

const std::string& CXmlElement::GetNamespaceURI() const
{
    return m_pName->GetNamespaceURI();
}

const std::string& CXmlElement::GetLocalName() const
{
    return m_pName->GetLocalName();
}

const std::string& CXmlElement::GetAttribute(const std::string& strName,
                                             const std::string& strNamespace) const
{
    return FindAttribute(m_vecAttributes, strName, strNamespace);
}

const std::string& CXmlElement::GetAttribute(const char* pszName, const char* pszNamespace) const
{
    return FindAttribute(m_vecAttributes, View(pszName), View(pszNamespace));
}

void CXmlElement::AddAttribute(const std::string& strName, const std::string& strValue,
                               const std::string& strNamespace)
{
    const CSmartPtr<const CXmlName> pName = MakeName(m_pStore.GetPtr(), strName, strNamespace);
    AddAttribute(pName.GetPtr(), strValue.data(), strValue.size());
}

void CXmlElement::AddAttribute(const CXmlName* pName, const char* pValue, std::size_t nLength)
{
    CXmlNodeStore* pStore = m_pStore.GetPtr();
    std::unique_ptr<CXmlAttribute> pAttribute(
        pStore ? new (pStore) CXmlAttribute(this, pName, pValue, nLength)
               : new CXmlAttribute(this, pName, pValue, nLength));
    m_vecAttributes.push_back(pAttribute.get());
    pAttribute.release();
}

void CXmlElement::AppendText(const char* pText, int iLength)
{
    if (pText && iLength > 0)
        m_strText.append(pText, static_cast<std::size_t>(iLength));
}

void CXmlElement::AppendText(const char* pszText)
{
    m_strText.append(View(pszText));
}

void* CXmlElement::operator new(std::size_t nSize)
{
    return CXmlNodeStore::NewNode(nSize);
}

void* CXmlElement::operator new(std::size_t nSize, CXmlNodeStore* pStore)
{
    return CXmlNodeStore::NewNode(nSize, pStore);
}

void CXmlElement::operator delete(void* pObject) noexcept
{
    CXmlNodeStore::FreeNode(pObject, sizeof(CXmlElement));
}

void CXmlElement::operator delete(void* pObject, CXmlNodeStore*) noexcept
{
    CXmlNodeStore::FreeNode(pObject, sizeof(CXmlElement));
}

} // namespace QnXmlLib16
