#include "QnXmlLib16/xml/XmlDocument.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "QnXmlLib16/xml/internal/XmlNodeStore.h"

#include <algorithm>
#include <cstring>

namespace QnXmlLib16 {

namespace {

const char* Text(const char* psz)
{
    return psz ? psz : "";
}

} // namespace

CXmlDocument::CXmlDocument() : CXmlDocument(nullptr, CSerializationContext::m_defaultContext) {}

CXmlDocument::CXmlDocument(const CSerializationContext& context) : CXmlDocument(nullptr, context) {}

CXmlDocument::CXmlDocument(ElementDoneFunction pfnElementDone)
    : CXmlDocument(pfnElementDone, CSerializationContext::m_defaultContext)
{}

CXmlDocument::CXmlDocument(ElementDoneFunction pfnElementDone, const CSerializationContext& context)
    : CInstanceMonitor("CXmlDocument"),
      m_pfnElementDone(pfnElementDone),
      m_pContext(&context),
      m_pStore(new CXmlNodeStore(this))
{
    Init();
}

CXmlDocument::~CXmlDocument()
{
    CXmlDocument::Cleanup();
    m_pStore->ForgetDocument();
}

void CXmlDocument::Init()
{
    CXmlDocument::Cleanup();
    m_eSchemaType = m_pContext->GetSchemaType();
}

void CXmlDocument::Cleanup()
{
    m_vecElementStack.clear();
    delete m_pDocumentElement;
    m_pDocumentElement = nullptr;
    delete[] m_pBuffer;
    m_pBuffer = nullptr;
    m_iBufferLength = 0;
    m_mapAliases.clear();
    m_pStore->Trim();
}

void CXmlDocument::SetBuffer(unsigned char* pBuffer, unsigned long nLength)
{
    delete[] m_pBuffer;
    m_pBuffer = pBuffer;
    m_iBufferLength = nLength;
}

std::string CXmlDocument::LookupNamespaceFromAlias(const char* pszAlias) const
{
    const auto it = m_mapAliases.find(Text(pszAlias));
    return it == m_mapAliases.end() ? std::string() : it->second;
}

std::string CXmlDocument::LookupAliasFromNamespace(const char* pszNamespace) const
{
    const char* pszWanted = Text(pszNamespace);
    const auto it = std::find_if(m_mapAliases.begin(), m_mapAliases.end(),
                                 [=](const auto& row) { return row.second == pszWanted; });
    return it == m_mapAliases.end() ? std::string() : it->first;
}

void CXmlDocument::SetAlias(const char* pszPrefix, const char* pszNamespace)
{
    m_mapAliases[Text(pszPrefix)] = Text(pszNamespace);
}

CXmlElement* CXmlDocument::AddDocElement(const char* pszNamespace, const char* pszName)
{
    return AddDocElement(m_pStore->GetName(Text(pszName), Text(pszNamespace)));
}

CXmlElement* CXmlDocument::AddChildElement(const char* pszNamespace, const char* pszName)
{
    return AddChildElement(m_pStore->GetName(Text(pszName), Text(pszNamespace)));
}

CXmlElement* CXmlDocument::AddDocElement(const CXmlName* pName)
{
    if (m_pDocumentElement)
        throw CQnInvalidStateException("The document has a document element already.");
    m_pDocumentElement = new (m_pStore.GetPtr()) CXmlElement(m_pStore.GetPtr(), nullptr, pName);
    m_vecElementStack.push_back(m_pDocumentElement);
    return m_pDocumentElement;
}

CXmlElement* CXmlDocument::AddChildElement(const CXmlName* pName)
{
    if (m_vecElementStack.empty())
        throw CQnInvalidStateException("No element is open.");
    CXmlElement* pElement = m_vecElementStack.back()->CreateNewChildElement(pName);
    m_vecElementStack.push_back(pElement);
    return pElement;
}

void CXmlDocument::EndElement()
{
    CXmlElement* pElement = GetInnermostElement();
    if (!pElement)
        throw CQnInvalidStateException("No element is open.");
    m_vecElementStack.pop_back();
    if (m_pfnElementDone && m_pfnElementDone(pElement) && !m_vecElementStack.empty())
        delete m_vecElementStack.back()->RemoveLastChildElement();
}

CXmlElement* CXmlDocument::GetInnermostElement() const
{
    return m_vecElementStack.empty() ? nullptr : m_vecElementStack.back();
}

void CXmlDocument::AddElementAttribute(CXmlElement* pElement, const char* pszName,
                                       const char* pszValue, const char* pszNamespace)
{
    if (!pElement)
        throw CQnInvalidParamException("The element is null.");
    const char* pszText = Text(pszValue);
    pElement->AddAttribute(m_pStore->GetName(Text(pszName), Text(pszNamespace)), pszText,
                           std::strlen(pszText));
}

void CXmlDocument::AppendTextExcludingCR(CXmlElement* pElement, const char* pszText)
{
    AppendTextExcludingCR(pElement, pszText, 0xFFFFFFFF);
}

void CXmlDocument::AppendTextExcludingCR(CXmlElement* pElement, const char* pText,
                                         unsigned long nLength)
{
    if (!pElement)
        throw CQnInvalidParamException("The element is null.");
    // Appended whole first, since the text may lie in the element's own.
    std::string& strText = pElement->m_strText;
    const std::size_t nBefore = strText.size();
    strText.append(Text(pText), strnlen(Text(pText), nLength));
    DropCR(strText, nBefore);
}

void CXmlDocument::DropCR(std::string& strText, std::size_t nFrom)
{
    // Deliberate: every carriage return is dropped, one that came as a character reference too.
    // Pinned by DocumentLoad.CarriageReturnsAreDropped.
    if (std::memchr(strText.data() + nFrom, '\r', strText.size() - nFrom)) {
        const auto itFrom = strText.begin() + static_cast<std::ptrdiff_t>(nFrom);
        strText.erase(std::remove(itFrom, strText.end(), '\r'), strText.end());
    }
}

} // namespace QnXmlLib16
