#include "QnXmlLib16/xml/ExpatReader.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/support/Encoder.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/support/internal/ShortText.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "QnXmlLib16/xml/internal/PlainText.h"
#include "QnXmlLib16/xml/internal/XmlNodeStore.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>
#include <utility>

#include <expat.h>

namespace QnXmlLib16 {

namespace {

constexpr char kSeparator = '|'; // between the URI and the local name; no name holds it
// Behind each piece but the last one Expat counts the lines of it once more, which costs more time
// than its copy of the whole input: a large document goes in at once, from 1 GiB on, where Expat
// has no room for a piece, in parts. In a small one the time is short and the copy weighs more,
// unless it is the only one, as the document has lent its buffer.
constexpr std::size_t kSmallDocument = std::size_t{1} << 20;
constexpr std::size_t kSmallPieceSize = std::size_t{32} << 10;
constexpr std::size_t kLargePieceSize = std::size_t{512} << 20;
constexpr std::size_t kLargestPieceSize = INT_MAX;
constexpr std::size_t kLongestKeptName = 1024;

CExpatReader* Reader(void* pUserData)
{
    return static_cast<CExpatReader*>(pUserData);
}

} // namespace

void CExpatReader::ParserFree::operator()(XML_ParserStruct* pParser) const
{
    XML_ParserFree(pParser);
}

CExpatReader::CExpatReader(CXmlDocument& document)
    : CInstanceMonitor("CExpatReader"),
      m_pDocument(&document),
      m_pNames(new CXmlNameTable),
      m_nPieceSize(document.GetBufferLength() < kSmallDocument && !document.m_bLentBuffer
                       ? kSmallPieceSize
                       : kLargePieceSize)
{}

CExpatReader::~CExpatReader() = default;

void CExpatReader::SetPieceSize(std::size_t nBytes)
{
    m_nPieceSize = std::clamp<std::size_t>(nBytes, 1, kLargestPieceSize);
}

void CExpatReader::CreateParser()
{
    m_parser.reset(m_pDocument->m_eSchemaType == SchemaType_NoNamespaces
                       ? XML_ParserCreate(nullptr)
                       : XML_ParserCreateNS(nullptr, kSeparator));
    if (!m_parser)
        throw std::bad_alloc();
    XML_Parser parser = m_parser.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, FnStartElement, FnEndElement);
    XML_SetNamespaceDeclHandler(parser, FnStartNamespace, FnEndNamespace);
    XML_SetCharacterDataHandler(parser, FnText);
    if (!m_pDocument->m_pContext->GetStripCDATA())
        XML_SetCdataSectionHandler(parser, FnStartCDATA, FnEndCDATA);
}

void CExpatReader::Parse(bool bFinal)
{
    XML_Parser parser = m_parser.get();
    const char* pNext = reinterpret_cast<const char*>(m_pDocument->GetBuffer());
    std::size_t nLeft = m_pDocument->GetBufferLength();
    std::size_t nPiece = m_nPieceSize;
    XML_Status status;
    m_bCollectsTexts = true;
    // In pieces, since XML_Parse takes an int and would cut a larger length without a word. Events
    // come as from a single call, but that a text may arrive in more parts.
    do {
        const std::size_t nBytes = std::min(nLeft, nPiece);
        const XML_Index before = XML_GetCurrentByteIndex(parser);
        nLeft -= nBytes;
        status = XML_Parse(parser, pNext, static_cast<int>(nBytes), bFinal && nLeft == 0);
        pNext += nBytes;
        // Expat scans an unfinished token again with every piece; larger pieces keep the sum of
        // that linear.
        nPiece = XML_GetCurrentByteIndex(parser) == before ? std::min(2 * nPiece, kLargestPieceSize)
                                                           : m_nPieceSize;
    } while (status == XML_STATUS_OK && nLeft > 0);

    // Elements are open behind a failure, and where the input goes on.
    m_bCollectsTexts = false;
    while (!m_vecTextStarts.empty()) {
        MoveInnermostText();
        m_vecTextStarts.pop_back();
    }
    if (m_pFailure) {
        Cleanup();
        std::rethrow_exception(std::exchange(m_pFailure, nullptr));
    }
    if (status != XML_STATUS_OK) {
        const std::string strMessage =
            FormatString("%s at line %lu", XML_ErrorString(XML_GetErrorCode(parser)),
                         XML_GetCurrentLineNumber(parser));
        Cleanup();
        throw CQnException(strMessage);
    }
    if (bFinal)
        Cleanup();
}

void CExpatReader::Cleanup()
{
    m_parser.reset();
}

// Expat may still deliver an event or two after it was stopped; every callback looks for a kept
// exception first.
void CExpatReader::KeepException() noexcept
{
    m_pFailure = std::current_exception();
    XML_StopParser(m_parser.get(), XML_FALSE);
}

const std::string& CExpatReader::ToLocalCodePage(const char* pText, std::size_t nLength)
{
    CEncoder::AssignUtf8(m_strScratch, pText, nLength);
    return m_strScratch;
}

// A name that was seen before costs neither a conversion nor memory.
const CXmlName* CExpatReader::LookUpName(const char* pszName)
{
    if (const CXmlName* pKnown = m_pNames->Find(pszName))
        return pKnown;
    const std::string_view key(pszName);
    const std::size_t nBar = key.find(kSeparator);
    std::string strNamespace;
    if (nBar != std::string_view::npos)
        strNamespace = ToLocalCodePage(pszName, nBar);
    const std::size_t nLocal = nBar == std::string_view::npos ? 0 : nBar + 1;
    const std::string& strLocal = ToLocalCodePage(pszName + nLocal, key.size() - nLocal);
    const CXmlName* pName = m_pDocument->m_pStore->GetName(strLocal, strNamespace);
    // Expat spells the namespace out in every name: with a long one, many names would take much
    // more memory than the document.
    if (key.size() <= kLongestKeptName)
        m_pNames->Add(key, pName);
    return pName;
}

// The text of an element that was opened since begins at the end of the others. The element-done
// function may open and close elements too, but meets no text that is not in its element yet.
inline void CExpatReader::FindTextStarts()
{
    const std::size_t nOpen = m_pDocument->m_vecElementStack.size();
    if (m_vecTextStarts.size() + 1 == nOpen)
        m_vecTextStarts.push_back(m_nOpenTexts);
    else if (m_vecTextStarts.size() != nOpen)
        m_vecTextStarts.resize(nOpen, m_nOpenTexts);
}

void CExpatReader::StartElement(const char* pszName, const char** ppszAttributes)
{
    // The function that is shown the new element once it is done may look at those around it.
    if (m_pDocument->m_pfnElementDone && m_bCollectsTexts) {
        FindTextStarts();
        MoveInnermostText();
    }
    const CXmlName* pName = LookUpName(pszName);
    CXmlElement* pElement = m_pDocument->GetDocumentElement() ? m_pDocument->AddChildElement(pName)
                                                              : m_pDocument->AddDocElement(pName);
    if (m_bCollectsTexts)
        FindTextStarts();
    const char** ppszEnd = ppszAttributes;
    while (*ppszEnd)
        ppszEnd += 2;
    pElement->m_vecAttributes.reserve(static_cast<std::size_t>(ppszEnd - ppszAttributes) / 2);
    for (; ppszAttributes != ppszEnd; ppszAttributes += 2) {
        const CXmlName* pAttributeName = LookUpName(ppszAttributes[0]);
        const char* pValue = ppszAttributes[1];
        std::size_t nLength = std::strlen(pValue);
        if (!IsPlainText(pValue, nLength)) {
            const std::string& strValue = ToLocalCodePage(pValue, nLength);
            pValue = strValue.data();
            nLength = strValue.size();
        }
        pElement->AddAttribute(pAttributeName, pValue, nLength);
    }
}

void CExpatReader::EndElement()
{
    if (m_bCollectsTexts) {
        FindTextStarts();
        MoveInnermostText();
        if (!m_vecTextStarts.empty())
            m_vecTextStarts.pop_back();
    }
    m_pDocument->EndElement();
}

void CExpatReader::Text(const char* pText, std::size_t nLength)
{
    if (m_pDocument->m_vecElementStack.empty())
        throw CQnInvalidStateException("No element is open.");
    if (!IsPlainText(pText, nLength)) {
        ToLocalCodePage(pText, nLength);
        CXmlDocument::DropCR(m_strScratch, 0);
        pText = m_strScratch.data();
        nLength = strnlen(pText, m_strScratch.size());
    }
    if (!m_bCollectsTexts) {
        m_pDocument->GetInnermostElement()->m_strText.append(pText, nLength);
        return;
    }
    FindTextStarts();
    if (nLength > m_strOpenTexts.size() - m_nOpenTexts)
        m_strOpenTexts.resize(2 * m_strOpenTexts.size() + nLength);
    CopyBytes(m_strOpenTexts.data() + m_nOpenTexts, pText, nLength);
    m_nOpenTexts += nLength;
}

void CExpatReader::MoveInnermostText()
{
    if (m_vecTextStarts.empty())
        return;
    const std::size_t nStart = m_vecTextStarts.back();
    const std::size_t nLength = m_nOpenTexts - nStart;
    if (nLength == 0)
        return;
    // A new text takes the memory that it needs, where one that grows takes up to twice that.
    const char* const pText = m_strOpenTexts.data() + nStart;
    std::string& strText = m_pDocument->m_vecElementStack[m_vecTextStarts.size() - 1]->m_strText;
    if (strText.empty())
        strText = std::string(pText, nLength);
    else
        strText.append(pText, nLength);
    m_nOpenTexts = nStart;
}

void CExpatReader::FnStartElement(void* pUserData, const char* pszName, const char** ppszAttributes)
{
    CExpatReader* pReader = Reader(pUserData);
    if (pReader->m_pFailure)
        return;
    try {
        pReader->StartElement(pszName, ppszAttributes);
    }
    catch (...) {
        pReader->KeepException();
    }
}

void CExpatReader::FnEndElement(void* pUserData, const char* /*pszName*/)
{
    CExpatReader* pReader = Reader(pUserData);
    if (pReader->m_pFailure)
        return;
    try {
        pReader->EndElement();
    }
    catch (...) {
        pReader->KeepException();
    }
}

void CExpatReader::FnText(void* pUserData, const char* pText, int iLength)
{
    CExpatReader* pReader = Reader(pUserData);
    if (pReader->m_pFailure || iLength <= 0)
        return;
    try {
        pReader->Text(pText, static_cast<std::size_t>(iLength));
    }
    catch (...) {
        pReader->KeepException();
    }
}

void CExpatReader::FnStartNamespace(void* pUserData, const char* pszPrefix, const char* pszUri)
{
    CExpatReader* pReader = Reader(pUserData);
    if (pReader->m_pFailure)
        return;
    try {
        const std::string strPrefix(
            pszPrefix ? pReader->ToLocalCodePage(pszPrefix, std::strlen(pszPrefix)) : "");
        const std::string& strUri =
            pReader->ToLocalCodePage(pszUri ? pszUri : "", pszUri ? std::strlen(pszUri) : 0);
        pReader->m_pDocument->SetAlias(strPrefix.c_str(), strUri.c_str());
    }
    catch (...) {
        pReader->KeepException();
    }
}

void CExpatReader::FnEndNamespace(void* /*pUserData*/, const char* /*pszPrefix*/) {}

void CExpatReader::FnStartCDATA(void* pUserData)
{
    constexpr char kMarker[] = "<![CDATA[";
    FnText(pUserData, kMarker, sizeof kMarker - 1);
}

void CExpatReader::FnEndCDATA(void* pUserData)
{
    constexpr char kMarker[] = "]]>";
    FnText(pUserData, kMarker, sizeof kMarker - 1);
}

} // namespace QnXmlLib16
