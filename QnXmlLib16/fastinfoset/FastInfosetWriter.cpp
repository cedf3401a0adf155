#include "QnXmlLib16/fastinfoset/FastInfosetWriter.h"

#include "QnXmlLib16/fastinfoset/FastInfosetBinaryData.h"
#include "QnXmlLib16/fastinfoset/FastInfosetContext.h"
#include "QnXmlLib16/fastinfoset/internal/FastInfosetFormat.h"
#include "QnXmlLib16/fastinfoset/internal/NameKey.h"
#include "QnXmlLib16/fastinfoset/internal/NumberOctets.h"
#include "QnXmlLib16/fastinfoset/internal/RestrictedAlphabet.h"
#include "QnXmlLib16/support/BinaryStream.h"
#include "QnXmlLib16/support/Encoder.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/xml/internal/PlainText.h"

#include <string_view>

namespace QnXmlLib16 {

namespace {

const std::string kTypeName = "type";
const std::string kNilName = "nil";
const std::string kTrue = "true";
const std::string kNoText;

const std::string kUnnamedVocabulary = "urn:qnxmllib16:vocabulary";

constexpr unsigned char kAttributesFollow = 0x40;
constexpr unsigned char kNamespacesFollow = 0x38;
constexpr unsigned char kNamespaceAttribute = 0xCC;
constexpr unsigned char kWithPrefix = 0x02;
constexpr unsigned char kWithNamespace = 0x01;
constexpr unsigned char kTerminator = 0xF0;
constexpr unsigned char kDoubleTerminator = 0xFF;
constexpr unsigned char kIndexBit1 = 0x80;
constexpr unsigned char kChunk = 0x80;
constexpr unsigned char kChunkIndex = 0x20;
constexpr unsigned char kAddChunk = 0x10;
constexpr unsigned char kAddValue = 0x40;

constexpr unsigned long kLastAlphabet = 2;
constexpr unsigned long kMaxInteger = 1048576;
constexpr unsigned long kMaxLength = 0x100000000;

struct Octets
{
    const unsigned char* pData;
    unsigned long ulLength;
};

const unsigned char* AsBytes(const char* p)
{
    return reinterpret_cast<const unsigned char*>(p);
}

// Whether a text has a character ahead of its terminator.
bool HasText(const std::string& str)
{
    return !str.empty() && str.front() != '\0';
}

void CheckName(const std::string& strName)
{
    if (!HasText(strName))
        throw CQnException("Failed to write FastInfoset. Empty name.");
}

void CheckInteger(unsigned long iValue, unsigned long iLeast)
{
    if (iValue < iLeast || iValue > kMaxInteger)
        throw CQnException("Failed to write FastInfoset. Integer out of range.");
}

void CheckLength(unsigned long ulLength)
{
    if (ulLength == 0 || ulLength > kMaxLength)
        throw CQnException("Failed to write FastInfoset. Invalid length of an octet string.");
}

// The text in UTF-8, up to its first zero byte. ASCII stands for itself in every code page that a
// locale can have, and stays where it is; data holds anything else.
Octets ToUtf8(const std::string& strText, CBinaryData& data)
{
    if (IsPlainText(strText.data(), strText.size()))
        return {AsBytes(strText.data()), strText.size()};
    data = CEncoder::LocalCodePageToUtf8Binary(strText.c_str());
    return {data.GetData(), data.GetLength()};
}

unsigned char Octet(unsigned long i)
{
    return static_cast<unsigned char>(i);
}

// Appends an integer in as many octets as asked for, high ones first.
void AppendNumber(CBinaryStream& stream, unsigned long iValue, unsigned int uOctets)
{
    while (uOctets-- > 0)
        stream.Append(Octet(iValue >> 8 * uOctets));
}

// What follows in the first octet of a length, by its band, and where the bands begin.
struct LengthForm
{
    unsigned char uTwoOctets;
    unsigned char uFiveOctets;
    unsigned long ulBand2;
    unsigned long ulBand3;
};

constexpr LengthForm kLengthBit2 = {0x40, 0x60, kLengthBit2Band2, kLengthBit2Band3};
constexpr LengthForm kLengthBit5 = {0x08, 0x0C, kLengthBit5Band2, kLengthBit5Band3};
constexpr LengthForm kLengthBit7 = {0x02, 0x03, kLengthBit7Band2, kLengthBit7Band3};

void AppendString(CBinaryStream& stream, const LengthForm& form, unsigned char uBits,
                  const Octets& text)
{
    CheckLength(text.ulLength);
    if (text.ulLength < form.ulBand2) {
        stream.Append(Octet(uBits | (text.ulLength - 1)));
    }
    else if (text.ulLength < form.ulBand3) {
        stream.Append(Octet(uBits | form.uTwoOctets));
        AppendNumber(stream, text.ulLength - form.ulBand2, 1);
    }
    else {
        stream.Append(Octet(uBits | form.uFiveOctets));
        AppendNumber(stream, text.ulLength - form.ulBand3, 4);
    }
    stream.Append(text.pData, text.ulLength);
}

} // namespace

// The two places that a qualified name can stand in.
struct CFastInfosetWriter::NameForm
{
    void (CFastInfosetWriter::*pfnIndex)(unsigned char, unsigned long);
    unsigned char uLiteral; // with the flags of prefix and namespace below it

    static const NameForm kBit2;
    static const NameForm kBit3;
};

const CFastInfosetWriter::NameForm CFastInfosetWriter::NameForm::kBit2 = {
    &CFastInfosetWriter::Integer1To2pw20Bit2, 0x78};
const CFastInfosetWriter::NameForm CFastInfosetWriter::NameForm::kBit3 = {
    &CFastInfosetWriter::Integer1To2pw20Bit3, 0x3C};

// The two places that a value can stand in: bit 3 for attribute values, bit 5 for chunks.
struct CFastInfosetWriter::ValueForm
{
    const LengthForm& length;
    unsigned char uAlphabet;
    unsigned char uAlgorithm;
    unsigned int uNumberShift; // of an alphabet's or algorithm's number in the second octet
    const char* pszUnknownKind;

    static const ValueForm kBit3;
    static const ValueForm kBit5;
};

// Deliberate: each text names the function of the length that would follow, and the one on UTF-16
// is the same for both. Pinned by FastInfosetWriter.SettingsThatNoFormHasAreRefused.
const CFastInfosetWriter::ValueForm CFastInfosetWriter::ValueForm::kBit3 = {
    kLengthBit5, 0x20, 0x30, 4,
    "Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit5."};
const CFastInfosetWriter::ValueForm CFastInfosetWriter::ValueForm::kBit5 = {
    kLengthBit7, 0x08, 0x0C, 2,
    "Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit7."};

// A value ahead of its way to the wire. The octets lie in the value's own text or in the scratch of
// the writer.
struct CFastInfosetWriter::EncodedValue
{
    int eKind = CFastInfosetContext::EncodingKind_Literal;
    unsigned long iIndex = 0;
    Octets octets{};
};

CFastInfosetWriter::CFastInfosetWriter(const CFastInfosetContext& context, CBinaryStream& stream)
    : CXmlWriter("CFastInfosetWriter"),
      m_stream(stream),
      m_context(context),
      m_pPending(nullptr, CContextFree{this}),
      m_pVocabulary(NewVocabulary(context)),
      m_pElementNames(std::make_unique<CNameCache>()),
      m_pAttributeNames(std::make_unique<CNameCache>())
{}

CFastInfosetWriter::~CFastInfosetWriter() = default;

void CFastInfosetWriter::WriteComment(const std::string& /*strText*/) {}

void CFastInfosetWriter::WritePI(const std::string& /*strText*/)
{
    WriteElement(false);
}

void CFastInfosetWriter::WriteInlineSchema(const std::string& /*strText*/) {}

void CFastInfosetWriter::WriteStartElement(const std::string& strName,
                                           const std::string& strNamespace)
{
    CheckName(strName);
    WriteElement(false);
    if (m_bPendingTerminator) {
        m_stream.Append(kTerminator);
        m_bPendingTerminator = false;
    }
    if (m_pContext) {
        ++m_pContext->m_iChildCount;
        EndAttributes(*m_pContext);
    }
    m_pPending = NewContext(strName, strNamespace);
}

void CFastInfosetWriter::WriteString(const std::string& strValue, ItemType eType,
                                     bool /*bIsDefault*/)
{
    WriteElement(false);
    EndAttributes(RequireContext());
    if (!strValue.empty())
        NonIdentifyingStringOrIndexBit3(kChunk, strValue, m_pVocabulary->m_mapCharacterChunks,
                                        m_context.GetElementMaxAddLength(), eType);
}

void CFastInfosetWriter::WriteEndElement()
{
    WriteElement(false);
    EndAttributes(RequireContext());
    if (m_bPendingTerminator)
        m_stream.Append(kDoubleTerminator);
    m_bPendingTerminator = !m_bPendingTerminator;
    PopContext();
}

void CFastInfosetWriter::WriteAttributeString(const std::string& strName,
                                              const std::string& strNamespace,
                                              const std::string& strValue, ItemType eType)
{
    CheckName(strName);
    WriteElement(true);
    CXmlWriterContext& context = RequireOpenStartTag();
    const std::string* pPrefix = &kNoText;
    if (!strNamespace.empty()) {
        bool bNew;
        pPrefix = &ObtainPrefix(context, strNamespace, bNew);
    }
    QualifiedNameOrIndex(NameForm::kBit2, m_pAttributeNames.get(), 0, *pPrefix, strNamespace,
                         strName, m_pVocabulary->m_mapAttributeNames);
    NonIdentifyingStringOrIndexBit1(strValue, m_pVocabulary->m_mapAttributeValues,
                                    m_context.GetAttributeMaxAddLength(), eType);
}

void CFastInfosetWriter::WriteAttributeType(const std::string& strNamespace,
                                            const std::string& strTypeName, ItemType eType)
{
    WriteElement(true);
    CXmlWriterContext& context = RequireOpenStartTag();
    if (strNamespace.empty() || strNamespace == context.GetDefaultNamespace()) {
        WriteAttributeString(kTypeName, XSI_NAMESPACE, strTypeName, eType);
        return;
    }
    bool bNew;
    const std::string& strPrefix = ObtainPrefix(context, strNamespace, bNew);
    QualifiedNameOrIndex(NameForm::kBit2, m_pAttributeNames.get(), 0, strPrefix,
                         bNew ? strNamespace : XSI_NAMESPACE, bNew ? strTypeName : kTypeName,
                         m_pVocabulary->m_mapAttributeNames);
    NonIdentifyingStringOrIndexBit1(strPrefix + ':' + strTypeName,
                                    m_pVocabulary->m_mapAttributeValues,
                                    m_context.GetAttributeMaxAddLength(), eType);
}

void CFastInfosetWriter::WriteAttributeNil()
{
    WriteElement(true);
    RequireOpenStartTag();
    WriteAttributeString(kNilName, XSI_NAMESPACE, kTrue, it_boolean);
}

void CFastInfosetWriter::WriteStartDocument(FInfoDecl eDeclaration)
{
    if (eDeclaration > FInfoDecl_None && eDeclaration <= FInfoDecl_Version11StandaloneNo) {
        const std::string_view declaration = FI_DECLARATION_LIST[eDeclaration - 1];
        m_stream.Append(AsBytes(declaration.data()), declaration.size());
    }
    m_stream.Append(kFastInfosetHeader, sizeof kFastInfosetHeader);
    if (!m_context.GetUseGeneratedVocabulary()) {
        m_stream.Append(Octet(0)); // no optional component
        return;
    }
    // An initial vocabulary, which consists of an external one.
    constexpr unsigned char kExternalVocabulary[] = {0x20, 0x10, 0x00};
    m_stream.Append(kExternalVocabulary, sizeof kExternalVocabulary);
    const std::string& strURI = m_context.GetExternalVocabularyURI();
    NonEmptyOctetUTF8StringBit2(0, HasText(strURI) ? strURI : kUnnamedVocabulary);
}

void CFastInfosetWriter::WriteEndDocument()
{
    m_stream.Append(m_bPendingTerminator ? kDoubleTerminator : kTerminator);
    m_bPendingTerminator = false;
}

void CFastInfosetWriter::WriteElement(bool bHasAttributes)
{
    if (!m_pPending)
        return;
    CXmlWriterContext& context = *m_pPending;
    unsigned char uBits = 0;
    if (bHasAttributes) {
        context.m_bHasAttributes = true;
        uBits = kAttributesFollow;
    }
    if (!m_pContext) {
        m_stream.Append(Octet(uBits | kNamespacesFollow));
        WriteNamespaces();
        uBits = 0; // the name begins an octet of its own
    }
    const std::string* pPrefix = &kNoText;
    if (!context.m_strNamespace.empty() &&
        !EqualText(context.m_strNamespace, context.GetDefaultNamespace())) {
        bool bNew;
        pPrefix = &ObtainPrefix(context, context.m_strNamespace, bNew);
    }
    QualifiedNameOrIndex(NameForm::kBit3, m_pElementNames.get(), uBits, *pPrefix,
                         context.m_strNamespace, context.m_strName,
                         m_pVocabulary->m_mapElementNames);
    m_pContext = m_pPending.release();
}

// The namespace attributes of the root and their end. A declaration of no namespace takes one away.
void CFastInfosetWriter::WriteNamespaces()
{
    const bool bHasDefault = HasText(m_strDefaultNamespace);
    if (bHasDefault) {
        m_stream.Append(Octet(kNamespaceAttribute | kWithNamespace));
        NamespaceString(m_strDefaultNamespace);
    }
    const std::string_view xmlNamespace(XML_NAMESPACE);
    for (const auto& [strUri, strPrefix] : m_mapNamespaces) {
        const bool bHasPrefix = HasText(strPrefix);
        if (std::string_view(strUri).substr(0, xmlNamespace.size()) == xmlNamespace ||
            (!bHasPrefix && bHasDefault))
            continue;
        m_stream.Append(Octet(kNamespaceAttribute | (bHasPrefix ? kWithPrefix : 0) |
                              (HasText(strUri) ? kWithNamespace : 0)));
        if (bHasPrefix)
            PrefixString(strPrefix);
        if (HasText(strUri))
            NamespaceString(strUri);
    }
    m_stream.Append(kTerminator);
}

void CFastInfosetWriter::PrefixString(const std::string& strPrefix)
{
    unsigned long iIndex = 0;
    if (m_pVocabulary->FindPrefixNameIndex(strPrefix, iIndex)) {
        Integer1To2pw20Bit2(kIndexBit1, iIndex);
        return;
    }
    NonEmptyOctetUTF8StringBit2(0, strPrefix);
    m_pVocabulary->AddPrefixName(strPrefix);
}

void CFastInfosetWriter::NamespaceString(const std::string& strNamespace)
{
    unsigned long iIndex = 0;
    if (m_pVocabulary->FindNamespaceNameIndex(strNamespace, iIndex)) {
        Integer1To2pw20Bit2(kIndexBit1, iIndex);
        return;
    }
    NonEmptyOctetUTF8StringBit2(0, strNamespace);
    m_pVocabulary->AddNamespaceName(strNamespace);
}

void CFastInfosetWriter::LocalNameString(const std::string& strLocalName)
{
    unsigned long iIndex = 0;
    if (m_pVocabulary->FindLocalNameIndex(strLocalName, iIndex)) {
        Integer1To2pw20Bit2(kIndexBit1, iIndex);
        return;
    }
    NonEmptyOctetUTF8StringBit2(0, strLocalName);
    m_pVocabulary->AddLocalName(strLocalName);
}

void CFastInfosetWriter::NonEmptyOctetStringBit5(unsigned char uBits, const unsigned char* pData,
                                                 unsigned long ulLength)
{
    AppendString(m_stream, kLengthBit5, uBits, {pData, ulLength});
}

void CFastInfosetWriter::NonEmptyOctetStringBit7(unsigned char uBits, const unsigned char* pData,
                                                 unsigned long ulLength)
{
    AppendString(m_stream, kLengthBit7, uBits, {pData, ulLength});
}

void CFastInfosetWriter::NonEmptyOctetUTF8StringBit2(unsigned char uBits,
                                                     const std::string& strText)
{
    CBinaryData data;
    AppendString(m_stream, kLengthBit2, uBits, ToUtf8(strText, data));
}

void CFastInfosetWriter::Integer1To2pw20Bit2(unsigned char uBits, unsigned long iValue)
{
    CheckInteger(iValue, 1);
    if (iValue < kIntegerBit2Band2)
        m_stream.Append(Octet(uBits | (iValue - 1)));
    else if (iValue < kIntegerBit2Band3)
        AppendNumber(m_stream, (uBits | 0x40ul) << 8 | (iValue - kIntegerBit2Band2), 2);
    else
        AppendNumber(m_stream, (uBits | 0x60ul) << 16 | (iValue - kIntegerBit2Band3), 3);
}

void CFastInfosetWriter::Integer0To2pw20Bit2(unsigned char uBits, unsigned long iValue)
{
    if (iValue == 0)
        m_stream.Append(Octet(uBits | 0x7F));
    else
        Integer1To2pw20Bit2(uBits, iValue);
}

void CFastInfosetWriter::Integer1To2pw20Bit3(unsigned char uBits, unsigned long iValue)
{
    CheckInteger(iValue, 1);
    if (iValue < kIntegerBit3Band2)
        m_stream.Append(Octet(uBits | (iValue - 1)));
    else if (iValue < kIntegerBit3Band3)
        AppendNumber(m_stream, (uBits | 0x20ul) << 8 | (iValue - kIntegerBit3Band2), 2);
    else if (iValue < kIntegerBit3Band4)
        AppendNumber(m_stream, (uBits | 0x28ul) << 16 | (iValue - kIntegerBit3Band3), 3);
    else
        AppendNumber(m_stream, (uBits | 0x30ul) << 24 | (iValue - (kIntegerBit3Band4 - 1)), 4);
}

void CFastInfosetWriter::Integer1To2pw20Bit4(unsigned char uBits, unsigned long iValue)
{
    CheckInteger(iValue, 1);
    if (iValue < kIntegerBit4Band2)
        m_stream.Append(Octet(uBits | (iValue - 1)));
    else if (iValue < kIntegerBit4Band3)
        AppendNumber(m_stream, (uBits | 0x10ul) << 8 | (iValue - kIntegerBit4Band2), 2);
    else if (iValue < kIntegerBit4Band4)
        AppendNumber(m_stream, (uBits | 0x14ul) << 16 | (iValue - kIntegerBit4Band3), 3);
    else
        AppendNumber(m_stream, (uBits | 0x18ul) << 24 | (iValue - kIntegerBit4Band4), 4);
}

void CFastInfosetWriter::QualifiedNameOrIndexBit2(unsigned char uBits, const std::string& strPrefix,
                                                  const std::string& strNamespace,
                                                  const std::string& strLocalName,
                                                  CFIVocabulary::CIndexMap& map)
{
    QualifiedNameOrIndex(NameForm::kBit2, nullptr, uBits, strPrefix, strNamespace, strLocalName,
                         map);
}

void CFastInfosetWriter::QualifiedNameOrIndexBit3(unsigned char uBits, const std::string& strPrefix,
                                                  const std::string& strNamespace,
                                                  const std::string& strLocalName,
                                                  CFIVocabulary::CIndexMap& map)
{
    QualifiedNameOrIndex(NameForm::kBit3, nullptr, uBits, strPrefix, strNamespace, strLocalName,
                         map);
}

// pCache belongs to the map; null for a map of the caller's.
void CFastInfosetWriter::QualifiedNameOrIndex(const NameForm& form, CNameCache* pCache,
                                              unsigned char uBits, const std::string& strPrefix,
                                              const std::string& strNamespace,
                                              const std::string& strLocalName,
                                              CFIVocabulary::CIndexMap& map)
{
    CNameCache::Row const* pNoRow = nullptr;
    CNameCache::Row const*& pRow = pCache ? pCache->Slot(strLocalName) : pNoRow;
    if (pRow && IsNameKey(pRow->first, strPrefix, strNamespace, strLocalName)) {
        (this->*form.pfnIndex)(uBits, pRow->second);
        return;
    }
    MakeNameKey(m_strKey, strPrefix, strNamespace, strLocalName);
    const auto it = map.find(m_strKey);
    if (it != map.end()) {
        pRow = &*it;
        (this->*form.pfnIndex)(uBits, it->second);
        return;
    }
    for (const std::string* pPart : {&strPrefix, &strNamespace})
        if (!pPart->empty())
            CheckName(*pPart);
    CheckName(strLocalName);
    // A prefix never goes without a namespace.
    unsigned char uFlags = 0;
    if (!strPrefix.empty())
        uFlags = kWithPrefix | kWithNamespace;
    else if (!strNamespace.empty())
        uFlags = kWithNamespace;
    m_stream.Append(Octet(uBits | form.uLiteral | uFlags));
    if (!strPrefix.empty())
        PrefixString(strPrefix);
    if (!strNamespace.empty())
        NamespaceString(strNamespace);
    LocalNameString(strLocalName);
    m_pVocabulary->AddValueToMap(m_strKey, map);
}

void CFastInfosetWriter::NonIdentifyingStringOrIndexBit1(const std::string& strValue,
                                                         CFIVocabulary::CIndexMap& map,
                                                         unsigned long iMaxAddLength,
                                                         ItemType eType)
{
    const bool bAdd = strValue.size() < iMaxAddLength;
    unsigned long iIndex = 0;
    if (!strValue.empty() && bAdd && m_pVocabulary->FindIndex(map, strValue, iIndex)) {
        Integer1To2pw20Bit2(kIndexBit1, iIndex);
        return;
    }
    EncodedValue value;
    if (!strValue.empty())
        value = Encode(ValueForm::kBit3, strValue, eType);
    if (value.octets.ulLength == 0) {
        Integer0To2pw20Bit2(kIndexBit1, 0);
        return;
    }
    WriteEncoded(ValueForm::kBit3, bAdd ? kAddValue : 0, value);
    if (bAdd)
        m_pVocabulary->AddValueToMap(strValue, map);
}

void CFastInfosetWriter::NonIdentifyingStringOrIndexBit3(unsigned char uBits,
                                                         const std::string& strValue,
                                                         CFIVocabulary::CIndexMap& map,
                                                         unsigned long iMaxAddLength,
                                                         ItemType eType)
{
    if (strValue.empty())
        return;
    const bool bAdd = strValue.size() < iMaxAddLength;
    unsigned long iIndex = 0;
    if (bAdd && m_pVocabulary->FindIndex(map, strValue, iIndex)) {
        Integer1To2pw20Bit4(Octet(uBits | kChunkIndex), iIndex);
        return;
    }
    const EncodedValue value = Encode(ValueForm::kBit5, strValue, eType);
    if (value.octets.ulLength == 0)
        return;
    WriteEncoded(ValueForm::kBit5, Octet(uBits | (bAdd ? kAddChunk : 0)), value);
    if (bAdd)
        m_pVocabulary->AddValueToMap(strValue, map);
}

void CFastInfosetWriter::EncodedCharacterStringBit3(unsigned char uBits,
                                                    const std::string& strValue, ItemType eType)
{
    WriteEncoded(ValueForm::kBit3, uBits, Encode(ValueForm::kBit3, strValue, eType));
}

void CFastInfosetWriter::EncodedCharacterStringBit5(unsigned char uBits,
                                                    const std::string& strValue, ItemType eType)
{
    WriteEncoded(ValueForm::kBit5, uBits, Encode(ValueForm::kBit5, strValue, eType));
}

// Nothing is written until the value is known to have a form.
CFastInfosetWriter::EncodedValue
CFastInfosetWriter::Encode(const ValueForm& form, const std::string& strValue, ItemType eType)
{
    const CFastInfosetContext::EncodedCharacterString& encoding =
        m_context.GetEncoding(static_cast<unsigned long>(eType));
    EncodedValue value;
    value.eKind = encoding.m_eKind;
    value.iIndex = encoding.m_iIndex;
    switch (value.eKind) {
    case CFastInfosetContext::EncodingKind_Literal:
        if (m_context.GetDefaultStringEncoding() == 1)
            throw CQnException("Failed to write FastInfoset. Unsupported Feature UTF16BE in "
                               "EncodedCharacterStringBit5.");
        value.octets = ToUtf8(strValue, m_data);
        return value;
    case CFastInfosetContext::EncodingKind_RestrictedAlphabet:
        m_strOctets.clear();
        PackText(value.iIndex, strValue.c_str(), m_strOctets);
        break;
    case CFastInfosetContext::EncodingKind_Algorithm:
        if (IsNumberAlgorithm(value.iIndex)) {
            m_strOctets.resize(kLargestNumber);
            m_strOctets.resize(EncodeNumber(value.iIndex, strValue.c_str(),
                                            reinterpret_cast<unsigned char*>(m_strOctets.data())));
            break;
        }
        if (value.iIndex < kAlgorithmHex || value.iIndex > kAlgorithmCData)
            throw CQnException(
                FormatString("Failed to write FastInfoset. Invalid Encoding Algorithm value [%d]",
                             static_cast<int>(value.iIndex)));
        m_data.SetAsEncodedString(value.iIndex, strValue.c_str());
        value.octets = {m_data.GetData(), m_data.GetLength()};
        return value;
    default:
        throw CQnException(form.pszUnknownKind);
    }
    value.octets = {AsBytes(m_strOctets.data()), m_strOctets.size()};
    return value;
}

void CFastInfosetWriter::WriteEncoded(const ValueForm& form, unsigned char uBits,
                                      const EncodedValue& value)
{
    if (value.eKind != CFastInfosetContext::EncodingKind_Literal) {
        CheckLength(value.octets.ulLength);
        m_stream.Append(
            Octet(uBits | (value.eKind == CFastInfosetContext::EncodingKind_RestrictedAlphabet
                               ? form.uAlphabet
                               : form.uAlgorithm)));
        uBits = Octet((value.iIndex - 1) << form.uNumberShift);
    }
    AppendString(m_stream, form.length, uBits, value.octets);
}

CBinaryData CFastInfosetWriter::AppendRestrictedAlphabetString(unsigned long iAlphabet,
                                                               const char* pszValue) const
{
    std::string strOctets;
    PackText(iAlphabet, pszValue ? pszValue : "", strOctets);
    CBinaryData data;
    data.SetBuffer(AsBytes(strOctets.data()), strOctets.size());
    return data;
}

void CFastInfosetWriter::PackText(unsigned long iAlphabet, const char* pszValue,
                                  std::string& strOctets) const
{
    if (iAlphabet < 1 || iAlphabet > kLastAlphabet)
        throw CQnException(
            FormatString("Failed to write FastInfoset. Invalid Restricted Alphabet value [%d]",
                         static_cast<int>(iAlphabet)));
    QnXmlLib16::PackText(m_pVocabulary->m_vecRestrictedAlphabets[iAlphabet - 1], pszValue,
                         strOctets);
}

CXmlWriter::CXmlWriterContext& CFastInfosetWriter::RequireContext() const
{
    if (!m_pContext)
        throw CQnException("Attributes must be added before elements");
    return *m_pContext;
}

// An element that went on the wire without the flag of attributes takes none any more, even where
// its start tag is open.
CXmlWriter::CXmlWriterContext& CFastInfosetWriter::RequireOpenStartTag() const
{
    CXmlWriterContext& context = RequireContext();
    if (!context.m_bStartTagOpen || !context.m_bHasAttributes)
        throw CQnException("Attributes must be added before elements");
    return context;
}

void CFastInfosetWriter::EndAttributes(CXmlWriterContext& context)
{
    if (!context.m_bStartTagOpen)
        return;
    context.m_bStartTagOpen = false;
    if (context.m_bHasAttributes)
        m_stream.Append(kTerminator);
}

} // namespace QnXmlLib16
