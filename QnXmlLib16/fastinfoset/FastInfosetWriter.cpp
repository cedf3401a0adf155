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

#include <cstring>
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

constexpr unsigned long kMaxInteger = 1048576;
constexpr unsigned long kMaxLength = 0x100000000;

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

void CheckLength(unsigned long ulLength)
{
    if (ulLength == 0 || ulLength > kMaxLength)
        throw CQnException("Failed to write FastInfoset. Invalid length of an octet string.");
}

struct Octets
{
    const unsigned char* pData = nullptr;
    unsigned long ulLength = 0;

    void Set(const std::string& str)
    {
        pData = AsBytes(str.data());
        ulLength = str.size();
    }
    void Set(const CBinaryData& data)
    {
        pData = data.GetData();
        ulLength = data.GetLength();
    }
};

// The text in UTF-8, up to its first zero byte. ASCII stands for itself in every code page that a
// locale can have, and stays where it is; data holds anything else.
void ToUtf8(const std::string& strText, CBinaryData& data, Octets& octets)
{
    if (IsPlainText(strText.data(), strText.size())) {
        octets.Set(strText);
        return;
    }
    data = CEncoder::LocalCodePageToUtf8Binary(strText.c_str());
    octets.Set(data);
}

unsigned char Octet(unsigned long i)
{
    return static_cast<unsigned char>(i);
}

// What follows in the first octet of an integer, by its band, where the bands begin, and what is
// taken off in the last one. On bit 2 there is no fourth band.
struct IntegerForm
{
    unsigned char uTwoOctets;
    unsigned char uThreeOctets;
    unsigned char uFourOctets;
    unsigned long iBand2;
    unsigned long iBand3;
    unsigned long iBand4;
    unsigned long iBase4;
};

constexpr unsigned long kNoBand = kMaxInteger + 1;

constexpr IntegerForm kIntegerBit2 = {0x40,    0x60, 0, kIntegerBit2Band2, kIntegerBit2Band3,
                                      kNoBand, 0};
constexpr IntegerForm kIntegerBit3 = {0x20,
                                      0x28,
                                      0x30,
                                      kIntegerBit3Band2,
                                      kIntegerBit3Band3,
                                      kIntegerBit3Band4,
                                      kIntegerBit3Band4 - 1};
constexpr IntegerForm kIntegerBit4 = {
    0x10, 0x14, 0x18, kIntegerBit4Band2, kIntegerBit4Band3, kIntegerBit4Band4, kIntegerBit4Band4};

void AppendLargeInteger(CBinaryStream& stream, const IntegerForm& form, unsigned char uBits,
                        unsigned long iValue)
{
    if (iValue == 0 || iValue > kMaxInteger)
        throw CQnException("Failed to write FastInfoset. Integer out of range.");
    int iOctets = 2;
    unsigned long iOut = iValue - form.iBand2;
    unsigned char uForm = form.uTwoOctets;
    if (iValue >= form.iBand4) {
        iOctets = 4;
        iOut = iValue - form.iBase4;
        uForm = form.uFourOctets;
    }
    else if (iValue >= form.iBand3) {
        iOctets = 3;
        iOut = iValue - form.iBand3;
        uForm = form.uThreeOctets;
    }
    const int iFirstShift = 8 * (iOctets - 1);
    stream.Append(Octet(uBits | uForm | iOut >> iFirstShift));
    for (int iShift = iFirstShift - 8; iShift >= 0; iShift -= 8)
        stream.Append(Octet(iOut >> iShift));
}

inline void AppendInteger(CBinaryStream& stream, const IntegerForm& form, unsigned char uBits,
                          unsigned long iValue)
{
    if (iValue - 1 < form.iBand2 - 1)
        stream.Append(Octet(uBits | (iValue - 1)));
    else
        AppendLargeInteger(stream, form, uBits, iValue);
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

// A string with its length, behind uLead where bLead. A short one goes into the stream at once.
inline void AppendString(CBinaryStream& stream, const LengthForm& form, bool bLead,
                         unsigned char uLead, unsigned char uBits, const Octets& text)
{
    CheckLength(text.ulLength);
    unsigned char auOctets[64];
    unsigned char* p = auOctets;
    if (bLead)
        *p++ = uLead;
    if (text.ulLength < form.ulBand2) {
        *p++ = Octet(uBits | (text.ulLength - 1));
    }
    else if (text.ulLength < form.ulBand3) {
        *p++ = Octet(uBits | form.uTwoOctets);
        *p++ = Octet(text.ulLength - form.ulBand2);
    }
    else {
        *p++ = Octet(uBits | form.uFiveOctets);
        for (int iShift = 24; iShift >= 0; iShift -= 8)
            *p++ = Octet((text.ulLength - form.ulBand3) >> iShift);
    }
    const unsigned long ulHead = static_cast<unsigned long>(p - auOctets);
    if (text.ulLength <= sizeof auOctets - ulHead) {
        std::memcpy(p, text.pData, text.ulLength);
        stream.Append(auOctets, ulHead + text.ulLength);
    }
    else {
        stream.Append(auOctets, ulHead);
        stream.Append(text.pData, text.ulLength);
    }
}

inline bool IsKnown(unsigned long iIndex, const CFIVocabulary::CIndexMap& map,
                    const std::string& strPrefix, const std::string& strNamespace,
                    const std::string& strLocalName)
{
    return iIndex != 0 && IsNameKey(map.GetKey(iIndex), strPrefix, strNamespace, strLocalName);
}

} // namespace

// The two places that a qualified name can stand in.
struct CFastInfosetWriter::NameForm
{
    const IntegerForm& index;
    unsigned char uLiteral; // with the flags of prefix and namespace below it

    // Leaves the key of the name in the writer's m_strKey.
    template <class TMap>
    void Write(CFastInfosetWriter& writer, unsigned char uBits, const std::string& strPrefix,
               const std::string& strNamespace, const std::string& strLocalName, TMap& map) const
    {
        MakeNameKey(writer.m_strKey, strPrefix, strNamespace, strLocalName);
        unsigned long iIndex = 0;
        if (writer.m_pVocabulary->FindIndex(map, writer.m_strKey, iIndex)) {
            AppendInteger(writer.m_stream, index, uBits, iIndex);
            return;
        }
        writer.LiteralName(*this, uBits, strPrefix, strNamespace, strLocalName);
        writer.m_pVocabulary->AddValueToMap(writer.m_strKey, map);
    }

    static const NameForm kBit2;
    static const NameForm kBit3;
};

const CFastInfosetWriter::NameForm CFastInfosetWriter::NameForm::kBit2 = {kIntegerBit2, 0x78};
const CFastInfosetWriter::NameForm CFastInfosetWriter::NameForm::kBit3 = {kIntegerBit3, 0x3C};

// The two places that a value can stand in: bit 3 for attribute values, bit 5 for chunks.
struct CFastInfosetWriter::ValueForm
{
    const LengthForm& length;
    const IntegerForm& index;
    unsigned char uIndex;
    unsigned char uAdd;
    unsigned char uAlphabet;
    unsigned char uAlgorithm;
    unsigned int uNumberShift; // of an alphabet's or algorithm's number in the second octet
    const char* pszUnknownKind;

    // False, and nothing has happened, for a value without octets.
    template <class TMap>
    bool Write(CFastInfosetWriter& writer, unsigned char uBits, const std::string& strValue,
               TMap& map, unsigned long iMaxAddLength, ItemType eType) const
    {
        const bool bAdd = !strValue.empty() && strValue.size() < iMaxAddLength;
        unsigned long iIndex = 0;
        if (bAdd && writer.m_pVocabulary->FindIndex(map, strValue, iIndex)) {
            AppendInteger(writer.m_stream, index, Octet(uBits | uIndex), iIndex);
            return true;
        }
        if (!writer.WriteValue(*this, Octet(uBits | (bAdd ? uAdd : 0)), strValue, eType))
            return false;
        if (bAdd)
            writer.m_pVocabulary->AddValueToMap(strValue, map);
        return true;
    }

    static const ValueForm kBit3;
    static const ValueForm kBit5;
};

// Deliberate: each text names the function of the length that would follow, and the one on UTF-16
// is the same for both. Pinned by FastInfosetWriter.SettingsThatNoFormHasAreRefused.
const CFastInfosetWriter::ValueForm CFastInfosetWriter::ValueForm::kBit3 = {
    kLengthBit5, kIntegerBit2,
    kIndexBit1,  kAddValue,
    0x20,        0x30,
    4,           "Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit5."};
const CFastInfosetWriter::ValueForm CFastInfosetWriter::ValueForm::kBit5 = {
    kLengthBit7, kIntegerBit4,
    kChunkIndex, kAddChunk,
    0x08,        0x0C,
    2,           "Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit7."};

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
    if (m_pPending)
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
    if (m_pPending)
        WriteElement(false);
    EndAttributes(RequireContext());
    ValueForm::kBit5.Write(*this, kChunk, strValue, m_pVocabulary->m_mapCharacterChunks,
                           m_context.GetElementMaxAddLength(), eType);
}

void CFastInfosetWriter::WriteEndElement()
{
    if (m_pPending)
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
    CFIVocabulary::CIndexMap& map = m_pVocabulary->m_mapAttributeNames;
    unsigned long& iKnown = m_pAttributeNames->Slot(strName);
    if (IsKnown(iKnown, map, *pPrefix, strNamespace, strName)) {
        AppendInteger(m_stream, kIntegerBit2, 0, iKnown);
    }
    else {
        NameForm::kBit2.Write(*this, 0, *pPrefix, strNamespace, strName, map);
        iKnown = map.Find(m_strKey);
    }
    AttributeValue(strValue, eType);
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
    NameForm::kBit2.Write(*this, 0, strPrefix, bNew ? strNamespace : XSI_NAMESPACE,
                          bNew ? strTypeName : kTypeName, m_pVocabulary->m_mapAttributeNames);
    AttributeValue(strPrefix + ':' + strTypeName, eType);
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
    CFIVocabulary::CIndexMap& map = m_pVocabulary->m_mapElementNames;
    unsigned long& iKnown = m_pElementNames->Slot(context.m_strName);
    if (IsKnown(iKnown, map, *pPrefix, context.m_strNamespace, context.m_strName)) {
        AppendInteger(m_stream, kIntegerBit3, uBits, iKnown);
    }
    else {
        NameForm::kBit3.Write(*this, uBits, *pPrefix, context.m_strNamespace, context.m_strName,
                              map);
        iKnown = map.Find(m_strKey);
    }
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
        AppendInteger(m_stream, kIntegerBit2, kIndexBit1, iIndex);
        return;
    }
    NonEmptyOctetUTF8StringBit2(0, strPrefix);
    m_pVocabulary->AddPrefixName(strPrefix);
}

void CFastInfosetWriter::NamespaceString(const std::string& strNamespace)
{
    unsigned long iIndex = 0;
    if (m_pVocabulary->FindNamespaceNameIndex(strNamespace, iIndex)) {
        AppendInteger(m_stream, kIntegerBit2, kIndexBit1, iIndex);
        return;
    }
    NonEmptyOctetUTF8StringBit2(0, strNamespace);
    m_pVocabulary->AddNamespaceName(strNamespace);
}

void CFastInfosetWriter::LocalNameString(const std::string& strLocalName)
{
    unsigned long iIndex = 0;
    if (m_pVocabulary->FindLocalNameIndex(strLocalName, iIndex)) {
        AppendInteger(m_stream, kIntegerBit2, kIndexBit1, iIndex);
        return;
    }
    NonEmptyOctetUTF8StringBit2(0, strLocalName);
    m_pVocabulary->AddLocalName(strLocalName);
}

void CFastInfosetWriter::NonEmptyOctetStringBit5(unsigned char uBits, const unsigned char* pData,
                                                 unsigned long ulLength)
{
    AppendString(m_stream, kLengthBit5, false, 0, uBits, {pData, ulLength});
}

void CFastInfosetWriter::NonEmptyOctetStringBit7(unsigned char uBits, const unsigned char* pData,
                                                 unsigned long ulLength)
{
    AppendString(m_stream, kLengthBit7, false, 0, uBits, {pData, ulLength});
}

void CFastInfosetWriter::NonEmptyOctetUTF8StringBit2(unsigned char uBits,
                                                     const std::string& strText)
{
    CBinaryData data;
    Octets octets;
    ToUtf8(strText, data, octets);
    AppendString(m_stream, kLengthBit2, false, 0, uBits, octets);
}

void CFastInfosetWriter::Integer1To2pw20Bit2(unsigned char uBits, unsigned long iValue)
{
    AppendInteger(m_stream, kIntegerBit2, uBits, iValue);
}

void CFastInfosetWriter::Integer0To2pw20Bit2(unsigned char uBits, unsigned long iValue)
{
    if (iValue == 0)
        m_stream.Append(Octet(uBits | 0x7F));
    else
        AppendInteger(m_stream, kIntegerBit2, uBits, iValue);
}

void CFastInfosetWriter::Integer1To2pw20Bit3(unsigned char uBits, unsigned long iValue)
{
    AppendInteger(m_stream, kIntegerBit3, uBits, iValue);
}

void CFastInfosetWriter::Integer1To2pw20Bit4(unsigned char uBits, unsigned long iValue)
{
    AppendInteger(m_stream, kIntegerBit4, uBits, iValue);
}

void CFastInfosetWriter::QualifiedNameOrIndexBit2(unsigned char uBits, const std::string& strPrefix,
                                                  const std::string& strNamespace,
                                                  const std::string& strLocalName,
                                                  CFIVocabulary::CTextMap& map)
{
    NameForm::kBit2.Write(*this, uBits, strPrefix, strNamespace, strLocalName, map);
}

void CFastInfosetWriter::QualifiedNameOrIndexBit3(unsigned char uBits, const std::string& strPrefix,
                                                  const std::string& strNamespace,
                                                  const std::string& strLocalName,
                                                  CFIVocabulary::CTextMap& map)
{
    NameForm::kBit3.Write(*this, uBits, strPrefix, strNamespace, strLocalName, map);
}

void CFastInfosetWriter::LiteralName(const NameForm& form, unsigned char uBits,
                                     const std::string& strPrefix, const std::string& strNamespace,
                                     const std::string& strLocalName)
{
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
}

void CFastInfosetWriter::NonIdentifyingStringOrIndexBit1(const std::string& strValue,
                                                         CFIVocabulary::CTextMap& map,
                                                         unsigned long iMaxAddLength,
                                                         ItemType eType)
{
    if (!ValueForm::kBit3.Write(*this, 0, strValue, map, iMaxAddLength, eType))
        Integer0To2pw20Bit2(kIndexBit1, 0);
}

void CFastInfosetWriter::NonIdentifyingStringOrIndexBit3(unsigned char uBits,
                                                         const std::string& strValue,
                                                         CFIVocabulary::CTextMap& map,
                                                         unsigned long iMaxAddLength,
                                                         ItemType eType)
{
    ValueForm::kBit5.Write(*this, uBits, strValue, map, iMaxAddLength, eType);
}

void CFastInfosetWriter::AttributeValue(const std::string& strValue, ItemType eType)
{
    if (!ValueForm::kBit3.Write(*this, 0, strValue, m_pVocabulary->m_mapAttributeValues,
                                m_context.GetAttributeMaxAddLength(), eType))
        Integer0To2pw20Bit2(kIndexBit1, 0);
}

void CFastInfosetWriter::EncodedCharacterStringBit3(unsigned char uBits,
                                                    const std::string& strValue, ItemType eType)
{
    if (!WriteValue(ValueForm::kBit3, uBits, strValue, eType))
        CheckLength(0);
}

void CFastInfosetWriter::EncodedCharacterStringBit5(unsigned char uBits,
                                                    const std::string& strValue, ItemType eType)
{
    if (!WriteValue(ValueForm::kBit5, uBits, strValue, eType))
        CheckLength(0);
}

// False, and nothing has happened, for a value without octets. Nothing is written either until the
// value is known to have a form.
bool CFastInfosetWriter::WriteValue(const ValueForm& form, unsigned char uBits,
                                    const std::string& strValue, ItemType eType)
{
    if (strValue.empty())
        return false;
    const CFastInfosetContext::EncodedCharacterString& encoding =
        m_context.GetEncoding(static_cast<unsigned long>(eType));
    const unsigned long iIndex = encoding.m_iIndex;
    Octets octets;
    unsigned char uKind = form.uAlgorithm;
    switch (encoding.m_eKind) {
    case CFastInfosetContext::EncodingKind_Literal:
        if (m_context.GetDefaultStringEncoding() == 1)
            throw CQnException("Failed to write FastInfoset. Unsupported Feature UTF16BE in "
                               "EncodedCharacterStringBit5.");
        ToUtf8(strValue, m_data, octets);
        if (octets.ulLength == 0)
            return false;
        AppendString(m_stream, form.length, false, 0, uBits, octets);
        return true;
    case CFastInfosetContext::EncodingKind_RestrictedAlphabet:
        ObtainPacker(iIndex).Pack(strValue.c_str(), m_strOctets);
        octets.Set(m_strOctets);
        uKind = form.uAlphabet;
        break;
    case CFastInfosetContext::EncodingKind_Algorithm:
        if (iIndex < kAlgorithmHex || iIndex > kAlgorithmCData)
            throw CQnException(
                FormatString("Failed to write FastInfoset. Invalid Encoding Algorithm value [%d]",
                             static_cast<int>(iIndex)));
        if (IsNumberAlgorithm(iIndex)) {
            EncodeNumber(iIndex, strValue.c_str(), m_strOctets);
            octets.Set(m_strOctets);
        }
        else {
            m_data.SetAsEncodedString(iIndex, strValue.c_str());
            octets.Set(m_data);
        }
        break;
    default:
        throw CQnException(form.pszUnknownKind);
    }
    if (octets.ulLength == 0)
        return false;
    AppendString(m_stream, form.length, true, Octet(uBits | uKind),
                 Octet((iIndex - 1) << form.uNumberShift), octets);
    return true;
}

CBinaryData CFastInfosetWriter::AppendRestrictedAlphabetString(unsigned long iAlphabet,
                                                               const char* pszValue)
{
    ObtainPacker(iAlphabet).Pack(pszValue ? pszValue : "", m_strOctets);
    CBinaryData data;
    data.SetBuffer(AsBytes(m_strOctets.data()), m_strOctets.size());
    return data;
}

const CAlphabetPacker& CFastInfosetWriter::ObtainPacker(unsigned long iAlphabet)
{
    if (iAlphabet < 1 || iAlphabet > m_apPackers.size())
        throw CQnException(
            FormatString("Failed to write FastInfoset. Invalid Restricted Alphabet value [%d]",
                         static_cast<int>(iAlphabet)));
    std::unique_ptr<const CAlphabetPacker>& pPacker = m_apPackers[iAlphabet - 1];
    if (!pPacker)
        pPacker = std::make_unique<CAlphabetPacker>(
            m_pVocabulary->m_vecRestrictedAlphabets[iAlphabet - 1]);
    return *pPacker;
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
