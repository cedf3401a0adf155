#pragma once

#include "QnXmlLib16/fastinfoset/FIVocabulary.h"
#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/support/InstanceMonitor.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace QnXmlLib16 {

class CFastInfosetContext;
class CXmlDocument;
class CXmlElement;
class CXmlName;

// Parses the Fast Infoset document (ITU-T X.891) in the buffer of a CXmlDocument into the tree of
// that document. Elements, attributes, namespace prefixes and character data arrive; all else is
// read over, a vocabulary carried in the document included, so that its indexes are refused.
//
// A reader serves one Parse. Its stack does not grow with the depth of the document, and memory is
// taken for what has been read only: indexes of values and inside names may stand for 64 MiB of
// text, or for 256 times the size of the document if that is more.
class QNXML_API CFastInfosetReader : public CInstanceMonitor
{
public:
    // Neither argument is owned; both must outlive the reader. The vocabulary is a copy of the
    // context's, taken here, where that says so, else an empty one.
    CFastInfosetReader(const CFastInfosetContext& context, CXmlDocument& document);
    CFastInfosetReader(const CFastInfosetReader&) = delete;
    CFastInfosetReader& operator=(const CFastInfosetReader&) = delete;
    ~CFastInfosetReader() override;

    // False, and nothing has happened, if the bytes are no Fast Infoset: they have to begin with
    // the identification, or with one of the nine declarations of the standard and the
    // identification, and there has to be a byte more. What follows the root element is not read.
    //
    // A damaged document fails with CQnException, "Failed to parse FastInfoset." and the reason, or
    // in the words of CFastInfosetBinaryData; one with a UTF-16 string with the std::logic_error of
    // CEncoder::Utf16ToLocalCodePage. The tree built until then stays with the document.
    bool Parse();

private:
    // What a production has met.
    enum EForm : int
    {
        Form_Literal = 0, // the text is in m_text
        Form_Index = 1    // the index is in m_iIndex
    };

    using QNames = std::vector<CFIVocabulary::CQNameParts>;
    using Strings = std::vector<std::string>;

    // An entry of a name table as the tree has it.
    struct TreeName
    {
        const CXmlName* pName = nullptr; // owned by the document; null: not met yet
        std::size_t nAttributes = 0;     // of the last element of that name
    };
    using TreeNames = std::vector<TreeName>;

    void Cleanup();
    [[noreturn]] void Fail(const char* pszMessage);
    [[noreturn]] void FailIndex();

    const unsigned char* Move(std::size_t n);
    unsigned char NextOctet() { return *Move(1); }
    unsigned long NextNumber(std::size_t nOctets);

    bool ReadHeader();
    bool CheckHeader();
    bool CheckDeclaration(std::string_view declaration);
    void ReadOptionalData();
    void AdditionalData();
    void InitialVocabulary();
    void ExternalVocabulary();
    void RestrictedAlphabets();
    void EncodingAlogrithms();
    void Prefixes();
    void NamespaceNames();
    void LocalNames();
    void OtherNCNames();
    void OtherURIs();
    void AttributeValues();
    void ContentCharacterChunks();
    void OtherStrings();
    void ElementNameSurrogates();
    void AttributeNameSurrogates();
    void Notations();
    void UnparsedEntities();
    void CharacterEncodingScheme();
    void Standalone();
    void Version();

    void ReadChildren();
    void ProcessingInstruction();
    void Comment();
    void DocumentTypeDeclarationBit7();
    void NotationBit7();
    void UnparsedEntityBit8();
    void UnexpandedEntityReferenceBit7();
    void ElementBit2();
    void StartElement();
    void NamespaceAttributeBit7();
    void AtrributeBit2(CXmlElement* pElement);
    void CharacterChunk(CXmlElement* pElement);

    EForm QualifiedNameOrIndexBit2(QNames& vec);
    EForm QualifiedNameOrIndexBit3(QNames& vec);
    void ReadQName(QNames& vec);
    unsigned long ReadNamePart(Strings& vec, std::string& strPart);
    const CXmlName* LookUpName();
    TreeName& ObtainTreeName(EForm eForm, const QNames& vec, TreeNames& names);

    EForm IdentifyingStringOrIndex();
    EForm NonIdentifyingStringOrIndexBit1();
    EForm NonIdentifyingStringOrIndexBit3();
    void EncodedCharacterStringBit3();
    void EncodedCharacterStringBit5();
    void NonEmptyOctetUTF8String(std::size_t nLength);
    void NonEmptyOctetUTF16BEString(std::size_t nLength);
    void NonEmptyOctetRestrictedAlphabetString(std::size_t nLength, unsigned long iAlphabet);
    void NonEmptyOctetEncryptedString(std::size_t nLength, unsigned long iAlgorithm);

    std::size_t LengthOfSequence();
    std::size_t NonEmptyOctetStringBit2Length();
    std::size_t NonEmptyOctetStringBit5Length();
    std::size_t NonEmptyOctetStringBit7Length();
    unsigned long Integer1To2pw20Bit2();
    unsigned long Integer0To2pw20Bit2();
    unsigned long Integer1To2pw20Bit3();
    unsigned long Integer1To2pw20Bit4();

    const std::string& Entry(const Strings& vec);
    const std::string& CountedEntry(const Strings& vec);
    std::string_view ValueEntry(const Strings& vec);

    const CFastInfosetContext& m_context; // not owned
    CXmlDocument& m_document;             // not owned
    const unsigned char* m_pNext = nullptr;
    const unsigned char* m_pEnd = nullptr;
    const unsigned char* m_pCurrent = nullptr; // the octet that the last Move began with
    std::string m_strPrefix; // of the last name or namespace attribute, as the next
    std::string m_strNamespace;
    std::string m_strLocalName;
    std::string_view m_text;     // the last string: bytes of the buffer, of a table or m_strText
    std::string m_strText;       // scratch; keeps its memory
    unsigned long m_iIndex = 0;  // the last index
    bool m_bAddToTable = false;  // of the last string
    bool m_bPlain = false;       // the tree takes m_text as it is
    std::size_t m_nExpanded = 0; // bytes of values that were taken from the tables
    TreeNames m_vecElementNames; // parallel to the element names table
    TreeNames m_vecAttributeNames;
    TreeName m_strayName;                         // the last one that its full table has not taken
    std::unique_ptr<CFIVocabulary> m_pVocabulary; // null unless a document is being parsed
};

} // namespace QnXmlLib16
