#include "QnXmlLib16/xml/XmlAttribute.h"

#include "QnXmlLib16/xml/internal/XmlNodeStore.h"

namespace QnXmlLib16 {

static_assert(sizeof(CXmlAttribute) < CXmlNodeStore::kLargestNode);

CXmlAttribute::CXmlAttribute(const CXmlElement* pElement, const std::string& strName,
                             const std::string& strValue, const std::string& strNamespace)
    : CInstanceMonitor("CXmlAttribute"),
      m_pElement(pElement),
      m_pName(new CXmlName(strName, new CXmlNamespace(strNamespace))),
      m_strValue(strValue)
{}

CXmlAttribute::CXmlAttribute(const CXmlElement* pElement, const CXmlName* pName, const char* pValue,
                             std::size_t nLength)
    : CInstanceMonitor("CXmlAttribute"),
      m_pElement(pElement),
      m_pName(pName),
      m_strValue(pValue, nLength)
{}

CXmlAttribute::~CXmlAttribute() = default;

const std::string& CXmlAttribute::GetNamespaceURI() const
{
    return m_pName->GetNamespaceURI();
}

const std::string& CXmlAttribute::GetLocalName() const
{
    return m_pName->GetLocalName();
}

bool CXmlAttribute::IsNamespaceAttribute() const
{
    return m_pName->IsNamespaceAttribute();
}

bool CXmlAttribute::IsNilAttribute() const
{
    return m_pName->IsNilAttribute();
}

void* CXmlAttribute::operator new(std::size_t nSize)
{
    return CXmlNodeStore::NewNode(nSize);
}

void* CXmlAttribute::operator new(std::size_t nSize, CXmlNodeStore* pStore)
{
    return CXmlNodeStore::NewNode(nSize, pStore);
}

void CXmlAttribute::operator delete(void* pObject) noexcept
{
    CXmlNodeStore::FreeNode(pObject, sizeof(CXmlAttribute));
}

void CXmlAttribute::operator delete(void* pObject, CXmlNodeStore*) noexcept
{
    CXmlNodeStore::FreeNode(pObject, sizeof(CXmlAttribute));
}

} // namespace QnXmlLib16
