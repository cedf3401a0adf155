#include "QnXmlLib16/json/JsonTextWriter.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/support/TextStream.h"
#include "QnXmlLib16/xml/internal/TextOutput.h"

#include <string_view>
#include <utility>

namespace QnXmlLib16 {

namespace {

const std::string kXmlns = "xmlns";
const std::string kTypeName = "type";

// What doesn't pass as it is: the control characters but backspace, tab and form feed.
bool IsStop(char c)
{
    return static_cast<unsigned char>(c) < 0x20 && c != '\b' && c != '\t' && c != '\f';
}

const char* FindStop(const char* p, const char* pEnd)
{
    while (pEnd - p >= 8 && AnyBelow(LoadEight(p), 0x20) == 0)
        p += 8;
    while (p != pEnd && !IsStop(*p))
        ++p;
    return p;
}

bool IsBare(ItemType eType)
{
    return (eType >= it_i1 && eType <= it_r8) || eType == it_boolean || eType == it_decimal ||
           eType == it_integer;
}

// Deliberate: the message bears the name that needs the prefix, not the namespace. Pinned by
// JsonWriterNamespaces.NeedAPrefixBelowTheRoot.
[[noreturn]] void ThrowUnknownNamespace(const std::string& strName)
{
    throw CQnException(FormatString("Unknown Namespace: %s.", strName.c_str()));
}

} // namespace

inline void CJsonTextWriter::FlushWhenDue()
{
    if (m_pStream->GetLength() >= kFlushLength)
        m_pStream->Flush();
}

CJsonTextWriter::CJsonTextWriter(CTextStream& stream)
    : CXmlWriter("CJsonTextWriter"),
      m_strIndentChars("\t"),
      m_strEOL("\n"),
      m_eEOLType(EOLType_LF),
      m_eRoundTrip(JsonRoundTrip_Full),
      m_bFormat(true),
      m_pStream(&stream),
      m_bValuePending(false),
      m_strLineRun(m_strEOL + MakeIndentRun(m_strIndentChars))
{}

CJsonTextWriter::~CJsonTextWriter() = default;

void CJsonTextWriter::Open()
{
    CXmlWriter::Open();
    m_pStream->Open();
}

void CJsonTextWriter::Close()
{
    m_pStream->Close();
    CXmlWriter::Close();
}

void CJsonTextWriter::WriteComment(const std::string& strText)
{
    Put(*m_pStream, "/* ");
    PadAndAppend(strText);
    Put(*m_pStream, " */");
    Put(*m_pStream, m_strEOL);
    FlushWhenDue();
}

void CJsonTextWriter::WritePI(const std::string& /*strText*/) {}

void CJsonTextWriter::WriteInlineSchema(const std::string& /*strText*/) {}

void CJsonTextWriter::WriteStartElement(const std::string& strName, const std::string& strNamespace)
{
    const bool bRoot = !m_pContext;
    // Items of an array that is open go without a key.
    const bool bKey = bRoot || m_pContext->m_eState != ContextState_CollectionOpen;
    if (!bRoot)
        WriteOpenBrackets(*m_pContext);
    ContextPtr pContext = NewContext(strName, strNamespace);
    if (bRoot) {
        pContext->m_iDepth = 1; // inside the braces of the document
        if (m_bFormat)
            m_pStream->Append(m_strIndentChars);
    }
    if (m_eRoundTrip != JsonRoundTrip_Full || !bKey) {
        if (bKey)
            WriteKey(false, nullptr, strName);
        m_bValuePending = true;
    }
    else {
        if (strNamespace.empty() || strNamespace == pContext->GetDefaultNamespace()) {
            WriteKey(false, nullptr, strName);
            m_bValuePending = true;
        }
        else {
            if (!bRoot && !pContext->FindPrefix(strNamespace))
                ThrowUnknownNamespace(strName);
            bool bNew;
            const std::string& strPrefix = ObtainPrefix(*pContext, strNamespace, bNew);
            WriteKey(false, &strPrefix, strName);
            m_bValuePending = true;
            if (bNew)
                WriteDeclaration(*pContext, &strPrefix, strNamespace);
        }
        if (bRoot) {
            if (!m_strDefaultNamespace.empty())
                WriteDeclaration(*pContext, nullptr, m_strDefaultNamespace);
            for (const auto& [strUri, strPrefix] : m_mapNamespaces) {
                if (!BeginsWith(strUri, XML_NAMESPACE))
                    WriteDeclaration(*pContext, &strPrefix, strUri);
            }
        }
    }
    FlushWhenDue();
    m_pContext = pContext.release();
}

void CJsonTextWriter::WriteString(const std::string& strValue, ItemType eType, bool /*bIsDefault*/)
{
    const CXmlWriterContext& context = RequireContext();
    if (!m_bValuePending) {
        m_pStream->Append(',');
        WriteLine(context.m_iDepth + 1);
        Put(*m_pStream, m_eRoundTrip == JsonRoundTrip_None ? "\"\": " : "\"#text\": ");
    }
    WriteValue(strValue, eType);
    FlushWhenDue();
}

void CJsonTextWriter::WriteEndElement()
{
    CXmlWriterContext& context = RequireContext();
    if (context.m_eState == ContextState_AfterItems) {
        // Deliberate: the bracket closes here even if no item has opened one, which is so where
        // all items are plain values, and members behind the items stand inside it. Pinned by
        // JsonWriterCollections.TheBracketClosesWithTheElementAround.
        context.m_eState = ContextState_None;
        WriteLine(context.m_iDepth);
        if (m_bFormat)
            DecrementIndents(&context);
        m_pStream->Append(']');
    }
    // Deliberate: an element without content leaves its key with nothing behind it. Pinned by
    // JsonWriterElements.ContentDecidesBetweenAValueAndAnObject.
    if (!m_bValuePending) {
        WriteLine(context.m_iDepth);
        m_pStream->Append('}');
    }
    FlushWhenDue();
    PopContext();
    m_bValuePending = false;
}

void CJsonTextWriter::WriteAttributeString(const std::string& strName,
                                           const std::string& strNamespace,
                                           const std::string& strValue, ItemType eType)
{
    CXmlWriterContext& context = RequireContext();
    WriteOpenBrackets(context);
    const std::string* pPrefix = nullptr;
    if (!strNamespace.empty() && m_eRoundTrip == JsonRoundTrip_Full) {
        pPrefix = context.FindPrefix(strNamespace);
        if (!pPrefix)
            ThrowUnknownNamespace(strName);
    }
    WriteKey(m_eRoundTrip != JsonRoundTrip_None, pPrefix, strName);
    WriteValue(strValue, eType);
    m_bValuePending = false;
    FlushWhenDue();
}

void CJsonTextWriter::WriteAttributeType(const std::string& strNamespace,
                                         const std::string& strTypeName, ItemType eType)
{
    if (m_eRoundTrip != JsonRoundTrip_Full)
        return;
    const CXmlWriterContext& context = RequireContext();
    if (strNamespace.empty() || strNamespace == context.GetDefaultNamespace()) {
        WriteAttributeString(kTypeName, XSI_NAMESPACE, strTypeName, eType);
        return;
    }
    const std::string* pPrefix = context.FindPrefix(strNamespace);
    if (!pPrefix)
        ThrowUnknownNamespace(strTypeName);
    WriteAttributeString(kTypeName, XSI_NAMESPACE, *pPrefix + ':' + strTypeName, eType);
}

void CJsonTextWriter::WriteAttributeNil() {}

bool CJsonTextWriter::GetFormat() const
{
    return m_bFormat;
}

void CJsonTextWriter::SetFormat(bool bFormat)
{
    m_bFormat = bFormat;
}

EOLType CJsonTextWriter::GetEOLType() const
{
    return m_eEOLType;
}

void CJsonTextWriter::SetEOLType(EOLType eEOLType)
{
    std::string strEOL(LineEnd(eEOLType));
    m_strLineRun = strEOL + MakeIndentRun(m_strIndentChars);
    m_strEOL = std::move(strEOL);
    m_eEOLType = eEOLType;
}

JsonRoundTrip CJsonTextWriter::GetSupportRoundtrip() const
{
    return m_eRoundTrip;
}

void CJsonTextWriter::SetSupportRoundtrip(JsonRoundTrip eRoundTrip)
{
    m_eRoundTrip = eRoundTrip;
}

const std::string& CJsonTextWriter::GetIndentChars() const
{
    return m_strIndentChars;
}

void CJsonTextWriter::SetIndentChars(const char* pszIndentChars)
{
    std::string strIndentChars = pszIndentChars ? pszIndentChars : "";
    m_strLineRun = m_strEOL + MakeIndentRun(strIndentChars);
    m_strIndentChars = std::move(strIndentChars);
}

void CJsonTextWriter::WriteStartDocument()
{
    m_pStream->Append('{');
    WriteLine(0);
    FlushWhenDue();
}

void CJsonTextWriter::WriteEndDocument()
{
    WriteLine(0);
    m_pStream->Append('}');
    FlushWhenDue();
}

CXmlWriter::CXmlWriterContext& CJsonTextWriter::RequireContext() const
{
    if (!m_pContext)
        throw CQnException("Attributes must be added before elements");
    return *m_pContext;
}

// A line end and the indent of the next line; nothing unless the text is formatted.
void CJsonTextWriter::WriteLine(long iDepth)
{
    if (!m_bFormat)
        return;
    const std::string_view run = m_strLineRun;
    const std::size_t uEOL = m_strEOL.size();
    if (iDepth <= kIndentRun) {
        const std::size_t uIndent = m_strIndentChars.size() * static_cast<std::size_t>(iDepth);
        Put(*m_pStream, run.substr(0, uEOL + uIndent));
    }
    else {
        Put(*m_pStream, m_strEOL);
        PutIndent(*m_pStream, run.substr(uEOL), iDepth);
    }
}

void CJsonTextWriter::PadAndAppend(const std::string& strText)
{
    constexpr char kHex[] = "0123456789ABCDEF";
    const char* p = strText.data();
    const char* const pEnd = p + strText.size();
    for (;; ++p) {
        // Deliberate: quotation marks and backslashes pass as they are, so a text that holds one
        // comes out as malformed JSON. Pinned by JsonWriterEscapes.OnlyControlCharactersChange.
        const char* const pRun = p;
        p = FindStop(p, pEnd);
        m_pStream->Append(pRun, static_cast<std::size_t>(p - pRun));
        if (p == pEnd || *p == '\0')
            return;
        if (*p == '\n') {
            Put(*m_pStream, LineEnd(m_eEOLType));
        }
        else if (*p != '\r') { // a carriage return is dropped
            Put(*m_pStream, "\\u00");
            m_pStream->Append(kHex[*p >> 4]);
            m_pStream->Append(kHex[*p & 0xF]);
        }
    }
}

void CJsonTextWriter::WriteValue(const std::string& strValue, ItemType eType)
{
    if (IsBare(eType)) {
        m_pStream->Append(strValue);
        return;
    }
    m_pStream->Append('"');
    PadAndAppend(strValue);
    m_pStream->Append('"');
}

// bMarked: with the "@" of an attribute. pPrefix may be null: the name stands alone.
void CJsonTextWriter::WriteKey(bool bMarked, const std::string* pPrefix, const std::string& strName)
{
    m_pStream->Append('"');
    if (bMarked)
        m_pStream->Append('@');
    if (pPrefix) {
        m_pStream->Append(*pPrefix);
        m_pStream->Append(':');
    }
    m_pStream->Append(strName);
    Put(*m_pStream, "\": ");
}

// A member of the element that is about to open. pPrefix is null for the default namespace.
void CJsonTextWriter::WriteDeclaration(CXmlWriterContext& context, const std::string* pPrefix,
                                       const std::string& strNamespace)
{
    WriteOpenBrackets(context);
    if (pPrefix)
        WriteKey(true, &kXmlns, *pPrefix);
    else
        WriteKey(true, nullptr, kXmlns);
    m_pStream->Append('"');
    m_pStream->Append(strNamespace);
    m_pStream->Append('"');
    m_bValuePending = false;
}

// Items of an array stand a level deeper than their depth says; the whole stack follows, so that
// what closes around them fits.
void CJsonTextWriter::IncrementIndents(CXmlWriterContext* pContext)
{
    for (; pContext; pContext = pContext->m_pParent)
        ++pContext->m_iDepth;
}

void CJsonTextWriter::DecrementIndents(CXmlWriterContext* pContext)
{
    for (; pContext; pContext = pContext->m_pParent) {
        if (pContext->m_iDepth > 1)
            --pContext->m_iDepth;
    }
}

// Makes room for the next member of the object of the context.
void CJsonTextWriter::WriteOpenBrackets(CXmlWriterContext& context)
{
    if (!m_bValuePending) {
        m_pStream->Append(',');
    }
    else {
        CXmlWriterContext* pParent = context.m_pParent;
        if (pParent && pParent->m_eState == ContextState_BeforeItems) {
            pParent->m_eState = ContextState_CollectionOpen;
            m_pStream->Append('[');
            if (m_bFormat) {
                IncrementIndents(&context);
                WriteLine(context.m_iDepth);
            }
        }
        m_pStream->Append('{');
    }
    WriteLine(context.m_iDepth + 1);
}

} // namespace QnXmlLib16
