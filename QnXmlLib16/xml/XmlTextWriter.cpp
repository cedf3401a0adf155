#include "QnXmlLib16/xml/XmlTextWriter.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/TextStream.h"
#include "QnXmlLib16/xml/internal/TextOutput.h"

#include <array>
#include <string_view>
#include <utility>

namespace QnXmlLib16 {

namespace {

constexpr std::string_view kCData = "<![CDATA[";

const std::string kTypeName = "type";
const std::string kNilName = "nil";
const std::string kTrue = "true";

// Who stops at a byte, which doesn't pass as it is there or, the zero byte, ends the text.
// Deliberate: a tab passes in attributes, where a reader makes a blank of it, and so do the control
// characters that XML has no room for. Pinned by TextWriterEscapes.DifferBetweenContentAndAttributes.
enum EStop : unsigned char
{
    kInAttribute = 1,
    kInContent = 2,
    kInLineFeedContent = 4 // with the line end a line feed is
};

constexpr std::array<unsigned char, 256> MakeStops()
{
    std::array<unsigned char, 256> stops{};
    for (const unsigned char c : {'\0', '\r', '&', '<', '>'})
        stops[c] = kInAttribute | kInContent | kInLineFeedContent;
    stops['\n'] = kInAttribute | kInContent;
    stops['"'] = kInAttribute;
    return stops;
}
constexpr std::array<unsigned char, 256> kStops = MakeStops();

// Whether one of eight bytes may be a stop for anyone. Stops that differ in one bit share a test.
bool MayBeStop(std::uint64_t x)
{
    return (AnyBelow(x, '\r' + 1) | AnyEqual(x, '&', '"' ^ '&') | AnyEqual(x, '>', '<' ^ '>')) != 0;
}

// Whether a text may hold a stop. Yes costs a look at each byte, and is said of any text too short
// for a block.
bool MayHoldStop(const char* p, std::size_t uLength)
{
    if (uLength < 4)
        return true;
    if (uLength < 8)
        return MayBeStop(LoadTwiceFour(p, p + uLength - 4));
    const char* const pLast = p + uLength - 8;
    for (; p < pLast; p += 8) {
        if (MayBeStop(LoadEight(p)))
            return true;
    }
    return MayBeStop(LoadEight(pLast));
}

} // namespace

inline void CXmlTextWriter::FlushWhenDue()
{
    if (m_pStream->GetLength() >= kFlushLength)
        m_pStream->Flush();
}

CXmlTextWriter::CXmlTextWriter(CTextStream& stream)
    : CXmlWriter("CXmlTextWriter"),
      m_bWriteDefaultElementValues(false),
      m_strIndentChars("\t"),
      m_strEOL("\n"),
      m_eEOLType(EOLType_LF),
      m_bFormat(true),
      m_pStream(&stream),
      m_strIndentRun(MakeIndentRun(m_strIndentChars))
{}

CXmlTextWriter::~CXmlTextWriter() = default;

void CXmlTextWriter::Open()
{
    CXmlWriter::Open();
    m_pStream->Open();
}

void CXmlTextWriter::Close()
{
    m_pStream->Close();
    CXmlWriter::Close();
}

// Deliberate: between an element's start and its content a comment lands inside the start tag, as
// only elements and text finish that. Pinned by TextWriterElements.TagsFollowTheContent.
void CXmlTextWriter::WriteComment(const std::string& strText)
{
    Put(*m_pStream, "<!--");
    PadAndAppend(strText, false);
    Put(*m_pStream, "-->");
    Put(*m_pStream, m_strEOL);
    FlushWhenDue();
}

// Deliberate: an empty line follows, formatted or not. Pinned by
// TextWriterHeader.InstructionsAndSchemasStandAsGiven.
void CXmlTextWriter::WritePI(const std::string& strText)
{
    m_pStream->Append(strText);
    Put(*m_pStream, m_strEOL);
    Put(*m_pStream, m_strEOL);
    FlushWhenDue();
}

void CXmlTextWriter::WriteInlineSchema(const std::string& strText)
{
    m_pStream->Append(' ');
    Put(*m_pStream, m_strEOL);
    m_pStream->Append(strText);
    Put(*m_pStream, m_strEOL);
    FlushWhenDue();
}

void CXmlTextWriter::WriteStartElement(const std::string& strName, const std::string& strNamespace)
{
    CloseParentElm();
    ContextPtr pContext = NewContext(strName, strNamespace);
    if (m_bFormat)
        WriteIndent(pContext->m_iDepth);
    m_pStream->Append('<');
    if (strNamespace.empty() || strNamespace == pContext->GetDefaultNamespace()) {
        m_pStream->Append(strName);
    }
    else {
        bool bNew;
        const std::string& strPrefix = ObtainPrefix(*pContext, strNamespace, bNew);
        m_pStream->Append(strPrefix);
        m_pStream->Append(':');
        m_pStream->Append(strName);
        if (bNew) {
            m_pStream->Append(' ');
            WriteDeclaration(strPrefix, strNamespace);
        }
    }
    if (!m_pContext) {
        if (!m_strDefaultNamespace.empty()) {
            Put(*m_pStream, " xmlns=\"");
            m_pStream->Append(m_strDefaultNamespace);
            m_pStream->Append('"');
        }
        for (const auto& [strUri, strPrefix] : m_mapNamespaces) {
            // Deliberate: a namespace that only begins like that of "xml" isn't declared either.
            // Pinned by TextWriterNamespaces.AreDeclaredByTheRootOrWhereAPrefixIsMade.
            if (BeginsWith(strUri, XML_NAMESPACE))
                continue;
            m_pStream->Append(' ');
            WriteDeclaration(strPrefix, strUri);
        }
    }
    FlushWhenDue();
    m_pContext = pContext.release();
}

void CXmlTextWriter::WriteString(const std::string& strValue, ItemType /*eType*/, bool bIsDefault)
{
    if (strValue.empty() || (bIsDefault && !m_bWriteDefaultElementValues))
        return;
    CXmlWriterContext& context = RequireContext();
    if (context.m_bStartTagOpen) {
        m_pStream->Append('>');
        context.m_bStartTagOpen = false;
    }
    if (BeginsWith(strValue, kCData))
        m_pStream->Append(strValue);
    else
        PadAndAppend(strValue, false);
    FlushWhenDue();
}

void CXmlTextWriter::WriteEndElement()
{
    CXmlWriterContext& context = RequireContext();
    if (context.m_bStartTagOpen) {
        Put(*m_pStream, "/>");
    }
    else {
        if (m_bFormat && context.m_iChildCount != 0 && context.m_iDepth > 0)
            WriteIndent(context.m_iDepth);
        Put(*m_pStream, "</");
        // Deliberate: the prefix is that of the scope as it is now. Where SetDefaultNamespace or
        // AddNamespace changed it since the start tag, the tags differ. Pinned by
        // TextWriterNamespaces.AreDeclaredByTheRootOrWhereAPrefixIsMade.
        const std::string& strNamespace = context.m_strNamespace;
        if (!strNamespace.empty() && strNamespace != context.GetDefaultNamespace()) {
            m_pStream->Append(context.GetNamespaceMapValue(strNamespace));
            m_pStream->Append(':');
        }
        m_pStream->Append(context.m_strName);
        m_pStream->Append('>');
    }
    if (m_bFormat)
        Put(*m_pStream, m_strEOL);
    FlushWhenDue();
    PopContext();
}

void CXmlTextWriter::WriteAttributeString(const std::string& strName,
                                          const std::string& strNamespace,
                                          const std::string& strValue, ItemType /*eType*/)
{
    CXmlWriterContext& context = RequireOpenStartTag();
    m_pStream->Append(' ');
    // Deliberate: an attribute never goes by the default namespace, which in XML doesn't reach
    // attributes. Pinned by TextWriterNamespaces.AreDeclaredByTheRootOrWhereAPrefixIsMade.
    if (!strNamespace.empty()) {
        bool bNew;
        const std::string& strPrefix = ObtainPrefix(context, strNamespace, bNew);
        if (bNew) {
            WriteDeclaration(strPrefix, strNamespace);
            m_pStream->Append(' ');
        }
        m_pStream->Append(strPrefix);
        m_pStream->Append(':');
    }
    m_pStream->Append(strName);
    Put(*m_pStream, "=\"");
    PadAndAppend(strValue, true);
    m_pStream->Append('"');
    FlushWhenDue();
}

void CXmlTextWriter::WriteAttributeType(const std::string& strNamespace,
                                        const std::string& strTypeName, ItemType eType)
{
    CXmlWriterContext& context = RequireOpenStartTag();
    if (strNamespace.empty() || strNamespace == context.GetDefaultNamespace()) {
        WriteAttributeString(kTypeName, XSI_NAMESPACE, strTypeName, eType);
        return;
    }
    bool bNew;
    const std::string& strPrefix = ObtainPrefix(context, strNamespace, bNew);
    if (bNew) {
        // Deliberate: a blank on each side, so that the attribute has two before it. Pinned by
        // TextWriterSchemaInstance.TypeAndNilAreAttributesOfItsNamespace.
        m_pStream->Append(' ');
        WriteDeclaration(strPrefix, strNamespace);
        m_pStream->Append(' ');
    }
    WriteAttributeString(kTypeName, XSI_NAMESPACE, strPrefix + ':' + strTypeName, eType);
}

void CXmlTextWriter::WriteAttributeNil()
{
    RequireOpenStartTag();
    WriteAttributeString(kNilName, XSI_NAMESPACE, kTrue, it_boolean);
}

bool CXmlTextWriter::GetFormat() const
{
    return m_bFormat;
}

void CXmlTextWriter::SetFormat(bool bFormat)
{
    m_bFormat = bFormat;
}

EOLType CXmlTextWriter::GetEOLType() const
{
    return m_eEOLType;
}

void CXmlTextWriter::SetEOLType(EOLType eEOLType)
{
    m_strEOL = LineEnd(eEOLType);
    m_eEOLType = eEOLType;
}

const std::string& CXmlTextWriter::GetIndentChars() const
{
    return m_strIndentChars;
}

void CXmlTextWriter::SetIndentChars(const char* pszIndentChars)
{
    std::string strIndentChars = pszIndentChars ? pszIndentChars : "";
    m_strIndentRun = MakeIndentRun(strIndentChars);
    m_strIndentChars = std::move(strIndentChars);
}

bool CXmlTextWriter::GetWriteDefaultElementValues() const
{
    return m_bWriteDefaultElementValues;
}

void CXmlTextWriter::SetWriteDefaultElementValues(bool bWrite)
{
    m_bWriteDefaultElementValues = bWrite;
}

void CXmlTextWriter::WriteStartDocument()
{
    Put(*m_pStream, "<?xml version=\"1.0\"");
    if (m_pStream->GetEncoding() == XmlEncoding_UTF8)
        Put(*m_pStream, " encoding=\"UTF-8\"");
    else if (m_pStream->GetEncoding() == XmlEncoding_UTF16)
        Put(*m_pStream, " encoding=\"UTF-16\"");
    Put(*m_pStream, "?>");
    Put(*m_pStream, m_strEOL);
    FlushWhenDue();
}

void CXmlTextWriter::WriteHeaderDirective(const std::string& strText)
{
    // Deliberate: behind the root no element is open either, so a late directive passes. Pinned
    // by TextWriterHeader.InstructionsAndSchemasStandAsGiven.
    if (m_pContext)
        throw CQnException("Headed directives must appear before an Element has been added.");
    m_pStream->Append(strText);
    Put(*m_pStream, m_strEOL);
    FlushWhenDue();
}

void CXmlTextWriter::WriteRawElement(const std::string& strText)
{
    m_pStream->Append(strText);
    if (m_bFormat)
        Put(*m_pStream, m_strEOL);
}

void CXmlTextWriter::CloseParentElm()
{
    if (!m_pContext)
        return;
    ++m_pContext->m_iChildCount;
    if (!m_pContext->m_bStartTagOpen)
        return;
    m_pContext->m_bStartTagOpen = false;
    m_pStream->Append('>');
    if (m_bFormat)
        Put(*m_pStream, m_strEOL);
}

CXmlWriter::CXmlWriterContext& CXmlTextWriter::RequireContext() const
{
    if (!m_pContext)
        throw CQnException("Attributes must be added before elements");
    return *m_pContext;
}

CXmlWriter::CXmlWriterContext& CXmlTextWriter::RequireOpenStartTag() const
{
    CXmlWriterContext& context = RequireContext();
    if (!context.m_bStartTagOpen)
        throw CQnException("Attributes must be added before elements");
    return context;
}

// Deliberate: the namespace is put out as it stands, and one with a "<", "&" or quotation mark
// makes malformed XML. Pinned by TextWriterNamespaces.AreDeclaredByTheRootOrWhereAPrefixIsMade.
void CXmlTextWriter::WriteDeclaration(const std::string& strPrefix, const std::string& strNamespace)
{
    Put(*m_pStream, "xmlns:");
    m_pStream->Append(strPrefix);
    Put(*m_pStream, "=\"");
    m_pStream->Append(strNamespace);
    m_pStream->Append('"');
}

void CXmlTextWriter::WriteIndent(long iDepth)
{
    PutIndent(*m_pStream, m_strIndentRun, iDepth);
}

void CXmlTextWriter::PadAndAppend(const std::string& strText, bool bAttribute)
{
    const char* p = strText.data();
    const char* const pEnd = p + strText.size();
    if (!MayHoldStop(p, strText.size())) {
        m_pStream->Append(p, strText.size());
        return;
    }
    const EStop eStop = bAttribute                 ? kInAttribute
                        : m_eEOLType == EOLType_LF ? kInLineFeedContent
                                                   : kInContent;
    for (;; ++p) {
        const char* const pRun = p;
        while (p != pEnd && (kStops[static_cast<unsigned char>(*p)] & eStop) == 0)
            ++p;
        m_pStream->Append(pRun, static_cast<std::size_t>(p - pRun));
        if (p == pEnd || *p == '\0')
            return;
        switch (*p) {
        case '\n':
            Put(*m_pStream, bAttribute ? std::string_view("&#xA;") : LineEnd(m_eEOLType));
            break;
        case '\r':
            // Deliberate: dropped in attributes too, so that line ends take one form. Pinned by
            // TextWriterEscapes.DifferBetweenContentAndAttributes.
            break;
        case '"':
            Put(*m_pStream, "&quot;");
            break;
        case '&':
            Put(*m_pStream, "&amp;");
            break;
        case '<':
            Put(*m_pStream, "&lt;");
            break;
        case '>':
            Put(*m_pStream, "&gt;");
            break;
        }
    }
}

} // namespace QnXmlLib16
