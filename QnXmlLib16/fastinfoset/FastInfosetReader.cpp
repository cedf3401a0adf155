#include "QnXmlLib16/fastinfoset/FastInfosetReader.h"

#include "QnXmlLib16/fastinfoset/FastInfosetBinaryData.h"
#include "QnXmlLib16/fastinfoset/FastInfosetContext.h"
#include "QnXmlLib16/fastinfoset/internal/FastInfosetFormat.h"
#include "QnXmlLib16/fastinfoset/internal/NumberOctets.h"
#include "QnXmlLib16/fastinfoset/internal/RestrictedAlphabet.h"
#include "QnXmlLib16/support/Encoder.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "QnXmlLib16/xml/internal/PlainText.h"
#include "QnXmlLib16/xml/internal/XmlNodeStore.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace QnXmlLib16 {

namespace {

// Flags of optional components.
constexpr unsigned int kAdditionalData = 0x40;
constexpr unsigned int kInitialVocabulary = 0x20;
constexpr unsigned int kNotations = 0x10;
constexpr unsigned int kUnparsedEntities = 0x08;
constexpr unsigned int kCharacterEncodingScheme = 0x04;
constexpr unsigned int kStandalone = 0x02;
constexpr unsigned int kVersion = 0x01;

// First octets of items, and the bits that they are told by.
constexpr unsigned int kTerminator = 0xF0;
constexpr unsigned int kDoubleTerminator = 0xFF;
constexpr unsigned int kProcessingInstruction = 0xE1;
constexpr unsigned int kComment = 0xE2;
constexpr unsigned int kTopSixBits = 0xFC;
constexpr unsigned int kTopSevenBits = 0xFE;
constexpr unsigned int kDocumentType = 0xC4;
constexpr unsigned int kEntityReference = 0xC8;
constexpr unsigned int kNamespaceAttribute = 0xCC;
constexpr unsigned int kNotation = 0xC0;
constexpr unsigned int kUnparsedEntity = 0xD0;
constexpr unsigned int kFirstNoElement = 0x80;
constexpr unsigned int kFirstNoChunk = 0xC0;
constexpr unsigned int kAttributesFollow = 0x40;

// Flags below a first octet: the first and the second optional part.
constexpr unsigned int kFirstPart = 0x02;
constexpr unsigned int kSecondPart = 0x01;

constexpr unsigned int kIndexBit1 = 0x80;

// A few octets of indexes can stand for any amount of text. What the tables add to a document is
// bounded by this factor of its size, and small documents by this many bytes.
constexpr std::size_t kMaxExpansion = 256;
constexpr std::size_t kFreeExpansion = std::size_t{64} << 20;

// Elements tend to have as many attributes as the last one of their name; room is made for this
// many at most, so that one element can't make all others large.
constexpr std::size_t kMaxReserve = 16;

constexpr unsigned long kTwentyBits = (1ul << 20) - 1;

// What the tree takes of a text, as it takes terminated texts.
std::string_view UpToZero(std::string_view text)
{
    return text.substr(0, text.find('\0'));
}

} // namespace

CFastInfosetReader::CFastInfosetReader(const CFastInfosetContext& context, CXmlDocument& document)
    : CInstanceMonitor("CFastInfosetReader"),
      m_context(context),
      m_document(document),
      // What is built in waits for a document; what the context holds may change until then.
      m_pVocabulary(context.GetUseGeneratedVocabulary() ? NewVocabulary(context) : nullptr)
{}

CFastInfosetReader::~CFastInfosetReader()
{
    Cleanup();
}

void CFastInfosetReader::Cleanup()
{
    m_pVocabulary.reset();
    m_pNext = m_pEnd = m_pCurrent = nullptr;
    m_text = {};
}

void CFastInfosetReader::Fail(const char* pszMessage)
{
    Cleanup();
    throw CQnException(pszMessage);
}

void CFastInfosetReader::FailIndex()
{
    Fail("Failed to parse FastInfoset. Index out of range.");
}

bool CFastInfosetReader::Parse()
{
    m_pNext = m_document.GetBuffer();
    m_pEnd = m_pNext + m_document.GetBufferLength();
    m_pCurrent = m_pNext;
    if (!ReadHeader())
        return false;
    if (!m_pVocabulary)
        m_pVocabulary = NewVocabulary(m_context);
    m_vecElementNames.assign(m_pVocabulary->m_tabElementNames.m_vecNames.size(), TreeName());
    m_vecAttributeNames.assign(m_pVocabulary->m_tabAttributeNames.m_vecNames.size(), TreeName());
    m_nExpanded = 0;
    ReadOptionalData();
    ReadChildren();
    return true;
}

const unsigned char* CFastInfosetReader::Move(std::size_t n)
{
    if (static_cast<std::size_t>(m_pEnd - m_pNext) < n)
        Fail("Failed to parse FastInfoset. Unexpected End of File.");
    m_pCurrent = m_pNext;
    m_pNext += n;
    return m_pCurrent;
}

unsigned long CFastInfosetReader::NextNumber(std::size_t nOctets)
{
    const unsigned char* p = Move(nOctets);
    unsigned long iNumber = 0;
    for (std::size_t n = 0; n < nOctets; ++n)
        iNumber = iNumber << 8 | p[n];
    return iNumber;
}

// ---- Header ----

bool CFastInfosetReader::ReadHeader()
{
    if (CheckHeader())
        return true;
    return std::any_of(std::begin(FI_DECLARATION_LIST), std::end(FI_DECLARATION_LIST),
                       [this](std::string_view text) { return CheckDeclaration(text); }) &&
           CheckHeader();
}

bool CFastInfosetReader::CheckHeader()
{
    if (static_cast<std::size_t>(m_pEnd - m_pNext) <= sizeof kFastInfosetHeader ||
        std::memcmp(m_pNext, kFastInfosetHeader, sizeof kFastInfosetHeader) != 0)
        return false;
    Move(sizeof kFastInfosetHeader);
    return true;
}

bool CFastInfosetReader::CheckDeclaration(std::string_view declaration)
{
    if (static_cast<std::size_t>(m_pEnd - m_pNext) <= declaration.size() ||
        std::memcmp(m_pNext, declaration.data(), declaration.size()) != 0)
        return false;
    Move(declaration.size());
    return true;
}

void CFastInfosetReader::ReadOptionalData()
{
    const unsigned int uComponents = NextOctet();
    if (uComponents & kAdditionalData)
        AdditionalData();
    if (uComponents & kInitialVocabulary)
        InitialVocabulary();
    if (uComponents & kNotations)
        Notations();
    if (uComponents & kUnparsedEntities)
        UnparsedEntities();
    if (uComponents & kCharacterEncodingScheme)
        CharacterEncodingScheme();
    if (uComponents & kStandalone)
        Standalone();
    if (uComponents & kVersion)
        Version();
}

// Deliberate, here and below: a new length of the sequence is read ahead of each item, and nothing
// that is read enters a table. A document of another encoder that carries a vocabulary is misread
// or refused for its indexes; vocabularies belong into the context. Pinned by
// FastInfosetHeader.SequencesReadALengthAheadOfEachItem.

// The first length is taken from the octet at hand, which belongs to that of the sequence.
void CFastInfosetReader::AdditionalData()
{
    for (std::size_t n = 0; n < LengthOfSequence(); ++n) {
        Move(NonEmptyOctetStringBit2Length());
        Move(NonEmptyOctetStringBit2Length());
    }
}

void CFastInfosetReader::InitialVocabulary()
{
    const unsigned int uFirst = NextOctet();
    const unsigned int uSecond = NextOctet();
    if (uFirst & 0x10)
        ExternalVocabulary();
    if (uFirst & 0x08)
        RestrictedAlphabets();
    if (uFirst & 0x04)
        EncodingAlogrithms();
    if (uFirst & 0x02)
        Prefixes();
    if (uFirst & 0x01)
        NamespaceNames();
    if (uSecond & 0x80)
        LocalNames();
    if (uSecond & 0x40)
        OtherNCNames();
    if (uSecond & 0x20)
        OtherURIs();
    if (uSecond & 0x10)
        AttributeValues();
    if (uSecond & 0x08)
        ContentCharacterChunks();
    if (uSecond & 0x04)
        OtherStrings();
    if (uSecond & 0x02)
        ElementNameSurrogates();
    if (uSecond & 0x01)
        AttributeNameSurrogates();
}

void CFastInfosetReader::ExternalVocabulary()
{
    Move(1);
    Move(NonEmptyOctetStringBit2Length());
}

void CFastInfosetReader::RestrictedAlphabets()
{
    for (std::size_t n = 0; n < LengthOfSequence(); ++n) {
        Move(1);
        Move(NonEmptyOctetStringBit2Length());
    }
}

void CFastInfosetReader::EncodingAlogrithms()
{
    RestrictedAlphabets();
}

void CFastInfosetReader::Prefixes()
{
    RestrictedAlphabets();
}

void CFastInfosetReader::NamespaceNames()
{
    RestrictedAlphabets();
}

void CFastInfosetReader::LocalNames()
{
    RestrictedAlphabets();
}

void CFastInfosetReader::OtherNCNames()
{
    RestrictedAlphabets();
}

void CFastInfosetReader::OtherURIs()
{
    RestrictedAlphabets();
}

// A value begins in the octet at hand, which belongs to the length of the sequence.
void CFastInfosetReader::AttributeValues()
{
    for (std::size_t n = 0; n < LengthOfSequence(); ++n)
        EncodedCharacterStringBit3();
}

void CFastInfosetReader::ContentCharacterChunks()
{
    AttributeValues();
}

void CFastInfosetReader::OtherStrings()
{
    AttributeValues();
}

void CFastInfosetReader::ElementNameSurrogates()
{
    for (std::size_t n = 0; n < LengthOfSequence(); ++n)
        NonIdentifyingStringOrIndexBit1();
}

void CFastInfosetReader::AttributeNameSurrogates()
{
    ElementNameSurrogates();
}

// The octet that is no item any more is taken for the terminator, here and in the loops below.
void CFastInfosetReader::Notations()
{
    while ((NextOctet() & kTopSixBits) == kNotation)
        NotationBit7();
}

void CFastInfosetReader::UnparsedEntities()
{
    while ((NextOctet() & kTopSevenBits) == kUnparsedEntity)
        UnparsedEntityBit8();
}

void CFastInfosetReader::CharacterEncodingScheme()
{
    ExternalVocabulary();
}

void CFastInfosetReader::Standalone()
{
    Move(1);
}

void CFastInfosetReader::Version()
{
    NonIdentifyingStringOrIndexBit1();
}

// ---- Children of the document ----

void CFastInfosetReader::ReadChildren()
{
    for (;;) {
        const unsigned int uOctet = NextOctet();
        if (uOctet < kFirstNoElement) {
            ElementBit2();
            return;
        }
        if (uOctet == kTerminator || uOctet == kDoubleTerminator)
            Fail("Failed to parse FastInfoset. No element found.");
        if (uOctet == kProcessingInstruction)
            ProcessingInstruction();
        else if (uOctet == kComment)
            Comment();
        else if ((uOctet & kTopSixBits) == kDocumentType)
            DocumentTypeDeclarationBit7();
        // Deliberate: any other octet is passed over, and what belongs to it is read as children.
        // Pinned by FastInfosetReader.AnUnknownOctetIsSkippedInTheDocumentAndRefusedInAnElement.
    }
}

void CFastInfosetReader::ProcessingInstruction()
{
    IdentifyingStringOrIndex();
    NonIdentifyingStringOrIndexBit1();
}

void CFastInfosetReader::Comment()
{
    NonIdentifyingStringOrIndexBit1();
}

// With the processing instructions inside it and its terminator.
void CFastInfosetReader::DocumentTypeDeclarationBit7()
{
    const unsigned int uFlags = *m_pCurrent;
    if (uFlags & kFirstPart)
        IdentifyingStringOrIndex();
    if (uFlags & kSecondPart)
        IdentifyingStringOrIndex();
    while (NextOctet() == kProcessingInstruction)
        ProcessingInstruction();
}

void CFastInfosetReader::NotationBit7()
{
    UnexpandedEntityReferenceBit7();
}

void CFastInfosetReader::UnparsedEntityBit8()
{
    const unsigned int uFlags = *m_pCurrent;
    IdentifyingStringOrIndex();
    IdentifyingStringOrIndex();
    if (uFlags & kSecondPart)
        IdentifyingStringOrIndex();
    IdentifyingStringOrIndex();
}

void CFastInfosetReader::UnexpandedEntityReferenceBit7()
{
    const unsigned int uFlags = *m_pCurrent;
    IdentifyingStringOrIndex();
    if (uFlags & kFirstPart)
        IdentifyingStringOrIndex();
    if (uFlags & kSecondPart)
        IdentifyingStringOrIndex();
}

// ---- Elements ----

// One element with all inside it.
void CFastInfosetReader::ElementBit2()
{
    std::vector<CXmlElement*>& vecStack = m_document.m_vecElementStack;
    const std::size_t nOutside = vecStack.size();
    StartElement();
    while (vecStack.size() > nOutside) {
        const unsigned int uOctet = NextOctet();
        if (uOctet < kFirstNoElement) {
            StartElement();
        }
        else if (uOctet < kFirstNoChunk) {
            CharacterChunk(vecStack.back());
        }
        else if (uOctet == kTerminator) {
            vecStack.pop_back();
        }
        else if (uOctet == kDoubleTerminator) {
            // Behind the end of the outermost element the second half ends the document.
            vecStack.pop_back();
            if (vecStack.size() > nOutside)
                vecStack.pop_back();
        }
        else if (uOctet == kProcessingInstruction) {
            ProcessingInstruction();
        }
        else if (uOctet == kComment) {
            Comment();
        }
        else if ((uOctet & kTopSixBits) == kEntityReference) {
            UnexpandedEntityReferenceBit7();
        }
        else {
            Fail("Failed to parse FastInfoset. Invalid Encoding of Element type.");
        }
    }
}

// Opens an element, with its namespaces, name and attributes. One that ends with its attributes is
// closed again.
void CFastInfosetReader::StartElement()
{
    const unsigned int uFirst = *m_pCurrent;
    if ((uFirst >> 2 & 0xF) == 0xE) {
        while ((NextOctet() & kTopSixBits) == kNamespaceAttribute)
            NamespaceAttributeBit7();
        Move(1);
    }
    QNames& vecNames = m_pVocabulary->m_tabElementNames.m_vecNames;
    TreeName& name =
        ObtainTreeName(QualifiedNameOrIndexBit3(vecNames), vecNames, m_vecElementNames);
    CXmlElement* pElement = m_document.GetDocumentElement() ? m_document.AddChildElement(name.pName)
                                                            : m_document.AddDocElement(name.pName);
    if (!(uFirst & kAttributesFollow))
        return;
    pElement->m_vecAttributes.reserve(name.nAttributes);
    while (NextOctet() < kFirstNoElement)
        AtrributeBit2(pElement);
    name.nAttributes = std::min(pElement->m_vecAttributes.size(), kMaxReserve);
    if (*m_pCurrent == kDoubleTerminator)
        m_document.m_vecElementStack.pop_back();
}

void CFastInfosetReader::NamespaceAttributeBit7()
{
    const unsigned int uFlags = *m_pCurrent;
    m_strPrefix.clear();
    m_strNamespace.clear();
    if (uFlags & kFirstPart)
        ReadNamePart(m_pVocabulary->m_tabPrefixNames.m_vecStrings, m_strPrefix);
    if (uFlags & kSecondPart)
        ReadNamePart(m_pVocabulary->m_tabNamespaceNames.m_vecStrings, m_strNamespace);
    m_document.SetAlias(m_strPrefix.c_str(), m_strNamespace.c_str());
}

void CFastInfosetReader::AtrributeBit2(CXmlElement* pElement)
{
    QNames& vecNames = m_pVocabulary->m_tabAttributeNames.m_vecNames;
    const CXmlName* pName =
        ObtainTreeName(QualifiedNameOrIndexBit2(vecNames), vecNames, m_vecAttributeNames).pName;
    Strings& vecValues = m_pVocabulary->m_tabAttributeValues.m_vecStrings;
    if (NonIdentifyingStringOrIndexBit1() == Form_Index)
        m_text = m_iIndex == 0 ? std::string_view("") : ValueEntry(vecValues);
    else if (m_bAddToTable)
        vecValues.emplace_back(m_text);
    pElement->AddAttribute(pName, m_text.data(),
                           m_bPlain ? m_text.size() : UpToZero(m_text).size());
}

void CFastInfosetReader::CharacterChunk(CXmlElement* pElement)
{
    Strings& vecChunks = m_pVocabulary->m_tabCharacterChunks.m_vecStrings;
    if (NonIdentifyingStringOrIndexBit3() == Form_Index)
        m_text = ValueEntry(vecChunks);
    else if (m_bAddToTable)
        vecChunks.emplace_back(m_text);
    if (m_bPlain)
        pElement->m_strText.append(m_text);
    else
        m_document.AppendTextExcludingCR(pElement, m_text.data(), m_text.size());
}

// ---- Names ----

CFastInfosetReader::EForm CFastInfosetReader::QualifiedNameOrIndexBit2(QNames& vec)
{
    if ((*m_pCurrent & 0x78) == 0x78) {
        ReadQName(vec);
        return Form_Literal;
    }
    m_iIndex = Integer1To2pw20Bit2();
    return Form_Index;
}

CFastInfosetReader::EForm CFastInfosetReader::QualifiedNameOrIndexBit3(QNames& vec)
{
    if ((*m_pCurrent & 0x3C) == 0x3C) {
        ReadQName(vec);
        return Form_Literal;
    }
    m_iIndex = Integer1To2pw20Bit3();
    return Form_Index;
}

void CFastInfosetReader::ReadQName(QNames& vec)
{
    const unsigned int uFlags = *m_pCurrent;
    const bool bHasPrefix = (uFlags & kFirstPart) != 0;
    const bool bHasNamespace = (uFlags & kSecondPart) != 0;
    if (bHasPrefix && !bHasNamespace)
        Fail("Failed to parse FastInfoset. Invalid QName type Prefix without Namespace.");
    CFIVocabulary& vocabulary = *m_pVocabulary;
    m_strPrefix.clear();
    m_strNamespace.clear();
    unsigned long iPrefix = 0;
    if (bHasPrefix)
        iPrefix = ReadNamePart(vocabulary.m_tabPrefixNames.m_vecStrings, m_strPrefix);
    unsigned long iNamespace = 0;
    if (bHasNamespace)
        iNamespace = ReadNamePart(vocabulary.m_tabNamespaceNames.m_vecStrings, m_strNamespace);
    const unsigned long iLocalName =
        ReadNamePart(vocabulary.m_tabLocalNames.m_vecStrings, m_strLocalName);
    vocabulary.AddQNameToVector(iPrefix, iNamespace, iLocalName, vec);
}

// The text of a part goes into strPart; the result is its index in the table.
unsigned long CFastInfosetReader::ReadNamePart(Strings& vec, std::string& strPart)
{
    if (IdentifyingStringOrIndex() == Form_Index) {
        strPart = CountedEntry(vec);
        return m_iIndex;
    }
    strPart.assign(m_text);
    vec.push_back(strPart);
    return vec.size();
}

// The name that was just read. Invariant between calls: names is as long as vec; a literal has made
// that longer, unless it is full.
CFastInfosetReader::TreeName& CFastInfosetReader::ObtainTreeName(EForm eForm, const QNames& vec,
                                                                 TreeNames& names)
{
    if (eForm == Form_Literal) {
        const bool bEntered = names.size() < vec.size();
        if (bEntered)
            names.emplace_back();
        TreeName& name = bEntered ? names.back() : m_strayName;
        name = TreeName();
        name.pName = LookUpName();
        return name;
    }
    if (m_iIndex > vec.size())
        FailIndex();
    TreeName& name = names[m_iIndex - 1];
    if (!name.pName) {
        // From the vocabulary that the document started with.
        const CFIVocabulary::CQNameParts& parts = vec[m_iIndex - 1];
        m_iIndex = parts.m_iLocalName;
        m_strLocalName = Entry(m_pVocabulary->m_tabLocalNames.m_vecStrings);
        m_iIndex = parts.m_iNamespace;
        m_strNamespace.clear();
        if (m_iIndex != 0)
            m_strNamespace = Entry(m_pVocabulary->m_tabNamespaceNames.m_vecStrings);
        name.pName = LookUpName();
    }
    return name;
}

// The name of the tree for the parts that were read last.
const CXmlName* CFastInfosetReader::LookUpName()
{
    return m_document.m_pStore->GetName(UpToZero(m_strLocalName), UpToZero(m_strNamespace));
}

// The entry that m_iIndex names.
const std::string& CFastInfosetReader::Entry(const Strings& vec)
{
    if (m_iIndex < 1 || m_iIndex > vec.size())
        FailIndex();
    return vec[m_iIndex - 1];
}

// The same for an entry that is copied: a few octets may stand for a long text.
const std::string& CFastInfosetReader::CountedEntry(const Strings& vec)
{
    const std::string& strEntry = Entry(vec);
    m_nExpanded += strEntry.size();
    if (m_nExpanded > kFreeExpansion && m_nExpanded / kMaxExpansion > m_document.GetBufferLength())
        Fail("Failed to parse FastInfoset. The indexes stand for too much text.");
    return strEntry;
}

std::string_view CFastInfosetReader::ValueEntry(const Strings& vec)
{
    m_bPlain = false;
    return CountedEntry(vec);
}

// ---- Strings ----

CFastInfosetReader::EForm CFastInfosetReader::IdentifyingStringOrIndex()
{
    if (NextOctet() & kIndexBit1) {
        m_iIndex = Integer1To2pw20Bit2();
        return Form_Index;
    }
    NonEmptyOctetUTF8String(NonEmptyOctetStringBit2Length());
    return Form_Literal;
}

CFastInfosetReader::EForm CFastInfosetReader::NonIdentifyingStringOrIndexBit1()
{
    const unsigned int uFirst = NextOctet();
    if (uFirst & kIndexBit1) {
        m_iIndex = Integer0To2pw20Bit2();
        return Form_Index;
    }
    m_bAddToTable = (uFirst & 0x40) != 0;
    EncodedCharacterStringBit3();
    return Form_Literal;
}

CFastInfosetReader::EForm CFastInfosetReader::NonIdentifyingStringOrIndexBit3()
{
    const unsigned int uFirst = *m_pCurrent;
    if (uFirst & 0x20) {
        m_iIndex = Integer1To2pw20Bit4();
        return Form_Index;
    }
    m_bAddToTable = (uFirst & 0x10) != 0;
    EncodedCharacterStringBit5();
    return Form_Literal;
}

void CFastInfosetReader::EncodedCharacterStringBit3()
{
    const unsigned int uFirst = *m_pCurrent;
    switch (uFirst & 0x30) {
    case 0x00:
        return NonEmptyOctetUTF8String(NonEmptyOctetStringBit5Length());
    case 0x10:
        return NonEmptyOctetUTF16BEString(NonEmptyOctetStringBit5Length());
    }
    const unsigned long iNumber = ((uFirst & 0x0Ful) << 4 | NextOctet() >> 4) + 1;
    const std::size_t nLength = NonEmptyOctetStringBit5Length();
    if ((uFirst & 0x30) == 0x20)
        NonEmptyOctetRestrictedAlphabetString(nLength, iNumber);
    else
        NonEmptyOctetEncryptedString(nLength, iNumber);
}

void CFastInfosetReader::EncodedCharacterStringBit5()
{
    const unsigned int uFirst = *m_pCurrent;
    switch (uFirst & 0x0C) {
    case 0x00:
        return NonEmptyOctetUTF8String(NonEmptyOctetStringBit7Length());
    case 0x04:
        return NonEmptyOctetUTF16BEString(NonEmptyOctetStringBit7Length());
    }
    const unsigned long iNumber = ((uFirst & 0x03ul) << 6 | NextOctet() >> 2) + 1;
    const std::size_t nLength = NonEmptyOctetStringBit7Length();
    if ((uFirst & 0x0C) == 0x08)
        NonEmptyOctetRestrictedAlphabetString(nLength, iNumber);
    else
        NonEmptyOctetEncryptedString(nLength, iNumber);
}

void CFastInfosetReader::NonEmptyOctetUTF8String(std::size_t nLength)
{
    const char* pText = reinterpret_cast<const char*>(Move(nLength));
    m_bPlain = IsPlainText(pText, nLength);
    if (m_bPlain) {
        m_text = std::string_view(pText, nLength);
        return;
    }
    CEncoder::AssignUtf8(m_strText, pText, nLength);
    m_text = m_strText;
}

void CFastInfosetReader::NonEmptyOctetUTF16BEString(std::size_t nLength)
{
    const unsigned char* pText = Move(nLength);
    CEncoder::Utf16ToLocalCodePage(pText,
                                   static_cast<int>(std::min<std::size_t>(nLength, INT_MAX)));
}

void CFastInfosetReader::NonEmptyOctetRestrictedAlphabetString(std::size_t nLength,
                                                               unsigned long iAlphabet)
{
    const unsigned char* pOctets = Move(nLength);
    const Strings& vecAlphabets = m_pVocabulary->m_vecRestrictedAlphabets;
    m_strText.clear();
    if (iAlphabet > vecAlphabets.size() ||
        !UnpackText(vecAlphabets[iAlphabet - 1], pOctets, nLength, m_strText))
        FailIndex();
    m_text = m_strText;
    m_bPlain = false;
}

void CFastInfosetReader::NonEmptyOctetEncryptedString(std::size_t nLength, unsigned long iAlgorithm)
{
    if (iAlgorithm == kAlgorithmCData)
        return NonEmptyOctetUTF8String(nLength);
    const unsigned char* pOctets = Move(nLength);
    if (IsNumberAlgorithm(iAlgorithm))
        m_strText = DecodeNumbers(iAlgorithm, pOctets, nLength);
    else
        m_strText = CFastInfosetBinaryData(const_cast<unsigned char*>(pOctets), nLength, false)
                        .GetAsString(iAlgorithm);
    m_text = m_strText;
    m_bPlain = false;
}

// ---- Lengths and integers, from the current octet on ----

std::size_t CFastInfosetReader::LengthOfSequence()
{
    const unsigned int uFirst = NextOctet();
    if (uFirst < 0x80)
        return uFirst + 1;
    return ((uFirst & 0x0Ful) << 16 | NextNumber(2)) + 129;
}

std::size_t CFastInfosetReader::NonEmptyOctetStringBit2Length()
{
    const unsigned int uForm = *m_pCurrent & 0x7F;
    if (uForm < 0x40)
        return uForm + 1;
    if (uForm == 0x40)
        return NextNumber(1) + kLengthBit2Band2;
    if (uForm == 0x60)
        return NextNumber(4) + kLengthBit2Band3;
    Fail("Failed to parse FastInfoset. Invalid NonEmptyOctetString type  on the second bit of an "
         "octet.");
}

std::size_t CFastInfosetReader::NonEmptyOctetStringBit5Length()
{
    const unsigned int uForm = *m_pCurrent & 0x0F;
    if (uForm < 0x08)
        return uForm + 1;
    if (uForm == 0x08)
        return NextNumber(1) + kLengthBit5Band2;
    if (uForm == 0x0C)
        return NextNumber(4) + kLengthBit5Band3;
    Fail("Failed to parse FastInfoset. Invalid NonEmptyOctetString type  on the fifth bit of an "
         "octet.");
}

std::size_t CFastInfosetReader::NonEmptyOctetStringBit7Length()
{
    const unsigned int uForm = *m_pCurrent & 0x03;
    if (uForm < 0x02)
        return uForm + 1;
    return uForm == 0x02 ? NextNumber(1) + kLengthBit7Band2 : NextNumber(4) + kLengthBit7Band3;
}

// All 1 is no integer here, as 70 to 7E aren't.
unsigned long CFastInfosetReader::Integer1To2pw20Bit2()
{
    const unsigned int uForm = *m_pCurrent & 0x7F;
    if (uForm < 0x40)
        return uForm + 1;
    if (uForm < 0x60)
        return ((uForm & 0x1Ful) << 8 | NextNumber(1)) + kIntegerBit2Band2;
    if (uForm < 0x70)
        return ((uForm & 0x0Ful) << 16 | NextNumber(2)) + kIntegerBit2Band3;
    Fail("Failed to parse FastInfoset. Invalid Encoding of integers 1 To 2^20 type  on the second "
         "bit of an octet.");
}

unsigned long CFastInfosetReader::Integer0To2pw20Bit2()
{
    const unsigned int uForm = *m_pCurrent & 0x7F;
    if (uForm == 0x7F)
        return 0;
    if (uForm >= 0x70)
        Fail("Failed to parse FastInfoset. Invalid Encoding of integers 0 To 2^20 type  on the "
             "second bit of an octet.");
    return Integer1To2pw20Bit2();
}

unsigned long CFastInfosetReader::Integer1To2pw20Bit3()
{
    const unsigned int uForm = *m_pCurrent & 0x3F;
    if (uForm < 0x20)
        return uForm + 1;
    if (uForm < 0x28)
        return ((uForm & 0x07ul) << 8 | NextNumber(1)) + kIntegerBit3Band2;
    if (uForm < 0x30)
        return ((uForm & 0x07ul) << 16 | NextNumber(2)) + kIntegerBit3Band3;
    if (uForm == 0x30) {
        const unsigned long iValue = NextNumber(3);
        if (iValue <= kTwentyBits)
            return iValue + kIntegerBit3Band4;
    }
    Fail("Failed to parse FastInfoset. Invalid Encoding of integers 1 To 2^20 type  on the third "
         "bit of an octet.");
}

unsigned long CFastInfosetReader::Integer1To2pw20Bit4()
{
    const unsigned int uForm = *m_pCurrent & 0x1F;
    if (uForm < 0x10)
        return uForm + 1;
    if (uForm < 0x14)
        return ((uForm & 0x03ul) << 8 | NextNumber(1)) + kIntegerBit4Band2;
    if (uForm < 0x18)
        return ((uForm & 0x03ul) << 16 | NextNumber(2)) + kIntegerBit4Band3;
    if (uForm == 0x18) {
        const unsigned long iValue = NextNumber(3);
        if (iValue <= kTwentyBits)
            return iValue + kIntegerBit4Band4;
    }
    Fail("Failed to parse FastInfoset. Invalid Encoding of integers 1 To 2^20 type  on the fourth "
         "bit of an octet.");
}

} // namespace QnXmlLib16
