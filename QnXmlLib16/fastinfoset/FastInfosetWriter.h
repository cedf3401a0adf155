#pragma once

#include "QnXmlLib16/fastinfoset/FIVocabulary.h"
#include "QnXmlLib16/fastinfoset/FInfoDecl.h"
#include "QnXmlLib16/fastinfoset/FastInfosetBinaryData.h"
#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/xml/XmlWriter.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string>

namespace QnXmlLib16 {

class CBinaryStream;
class CFastInfosetContext;
class CAlphabetPacker;
class CNameCache;

// Writes a Fast Infoset document (ITU-T X.891) into a CBinaryStream, in one forward pass. Two
// things are held back: an element, until it is known whether an attribute follows, and the end of
// an element, until it is known whether another end follows, since two ends share an octet.
//
// Namespaces are declared on the root element only, from what was set before it. A namespace that
// turns up later gets a prefix that stands in the names and is declared nowhere. Comments,
// processing instructions and inline schemas are dropped.
//
// All failures are CQnException, and leave the stream with what was written before. An attribute
// behind the start tag, and an attribute, a string or an end with no element open:
// "Attributes must be added before elements". An empty element or attribute name: "Failed to write
// FastInfoset. Empty name.". The others begin with "Failed to write FastInfoset." too, or are
// those of the value that its encoding can't hold.
class QNXML_API CFastInfosetWriter : public CXmlWriter
{
public:
    // Neither argument is owned; both must outlive the writer. The vocabulary is a copy of the
    // context's where that says so, else an empty one; it lives and dies with the writer.
    CFastInfosetWriter(const CFastInfosetContext& context, CBinaryStream& stream);
    ~CFastInfosetWriter() override;

    void WriteComment(const std::string& strText) override;      // does nothing
    void WritePI(const std::string& strText) override;           // ends the start tag at hand
    void WriteInlineSchema(const std::string& strText) override; // does nothing
    void WriteStartElement(const std::string& strName, const std::string& strNamespace) override;

    // Deliberate: text behind a child element lands inside that child, whose end is still held
    // back. Text belongs ahead of the children. Pinned by
    // FastInfosetWriter.TextBehindAChildLandsInTheChild.
    void WriteString(const std::string& strValue, ItemType eType, bool bIsDefault) override;
    void WriteEndElement() override;
    void WriteAttributeString(const std::string& strName, const std::string& strNamespace,
                              const std::string& strValue, ItemType eType) override;

    // Deliberate: where the namespace of the type has no prefix yet, the attribute is named after
    // the type, and later ones of the namespace are named "type", with the prefix of the type's
    // namespace. Pinned by FastInfosetWriter.TheTypeAttributeHasThreeForms.
    void WriteAttributeType(const std::string& strNamespace, const std::string& strTypeName,
                            ItemType eType) override;
    void WriteAttributeNil() override;

    // The XML declaration if any, the identification, and the name of the vocabulary if it is a
    // generated one. A number that is no FInfoDecl writes no declaration.
    void WriteStartDocument(FInfoDecl eDeclaration);

    // Ends the root element, if that is held back, and the document.
    void WriteEndDocument();

    // Puts the held back start of an element on the wire; nothing when there is none.
    void WriteElement(bool bHasAttributes);

    // The forms of X.891. uBits are the bits of the first octet that are decided already; "Bit2"
    // and so on tell where the form starts in it, 1 being the highest bit. Lengths count octets,
    // from 1 to 2^32.

    void NonEmptyOctetStringBit5(unsigned char uBits, const unsigned char* pData,
                                 unsigned long ulLength);
    void NonEmptyOctetStringBit7(unsigned char uBits, const unsigned char* pData,
                                 unsigned long ulLength);
    // From the local code page.
    void NonEmptyOctetUTF8StringBit2(unsigned char uBits, const std::string& strText);

    void Integer1To2pw20Bit2(unsigned char uBits, unsigned long iValue);
    void Integer0To2pw20Bit2(unsigned char uBits, unsigned long iValue);
    // Deliberate: values above 526368 go out one too high, which other readers and this system's
    // own take for the next one. Pinned by FastInfosetWriter.IntegersFollowTheirBands.
    void Integer1To2pw20Bit3(unsigned char uBits, unsigned long iValue);
    void Integer1To2pw20Bit4(unsigned char uBits, unsigned long iValue);

    // The index of a name that the map holds, else the name, which then enters the map.
    void QualifiedNameOrIndexBit2(unsigned char uBits, const std::string& strPrefix,
                                  const std::string& strNamespace, const std::string& strLocalName,
                                  CFIVocabulary::CTextMap& map);
    void QualifiedNameOrIndexBit3(unsigned char uBits, const std::string& strPrefix,
                                  const std::string& strNamespace, const std::string& strLocalName,
                                  CFIVocabulary::CTextMap& map);

    // An attribute value and a character chunk. A value of fewer than iMaxAddLength bytes goes by
    // its index in the map, or enters it. A value without octets is the empty attribute value or
    // no chunk at all.
    void NonIdentifyingStringOrIndexBit1(const std::string& strValue, CFIVocabulary::CTextMap& map,
                                         unsigned long iMaxAddLength, ItemType eType);
    void NonIdentifyingStringOrIndexBit3(unsigned char uBits, const std::string& strValue,
                                         CFIVocabulary::CTextMap& map, unsigned long iMaxAddLength,
                                         ItemType eType);

    // A value, not empty, in the encoding that the context has for its type.
    void EncodedCharacterStringBit3(unsigned char uBits, const std::string& strValue,
                                    ItemType eType);
    void EncodedCharacterStringBit5(unsigned char uBits, const std::string& strValue,
                                    ItemType eType);

    // The octets of a text in a restricted alphabet of the vocabulary, 1 or 2.
    CBinaryData AppendRestrictedAlphabetString(unsigned long iAlphabet, const char* pszValue);

private:
    struct NameForm;
    struct ValueForm;

    CXmlWriterContext& RequireContext() const;
    CXmlWriterContext& RequireOpenStartTag() const;
    void EndAttributes(CXmlWriterContext& context);
    void WriteNamespaces();
    void PrefixString(const std::string& strPrefix);
    void NamespaceString(const std::string& strNamespace);
    void LocalNameString(const std::string& strLocalName);
    void LiteralName(const NameForm& form, unsigned char uBits, const std::string& strPrefix,
                     const std::string& strNamespace, const std::string& strLocalName);
    void AttributeValue(const std::string& strValue, ItemType eType);
    bool WriteValue(const ValueForm& form, unsigned char uBits, const std::string& strValue,
                    ItemType eType);
    const CAlphabetPacker& ObtainPacker(unsigned long iAlphabet);

    CBinaryStream& m_stream;              // not owned
    const CFastInfosetContext& m_context; // not owned
    ContextPtr m_pPending;                // started and not yet on the wire
    bool m_bPendingTerminator = false;    // the end of an element is held back
    std::unique_ptr<CFIVocabulary> m_pVocabulary;
    std::unique_ptr<CNameCache> m_pElementNames; // of the vocabulary's map, as the next
    std::unique_ptr<CNameCache> m_pAttributeNames;
    std::array<std::unique_ptr<const CAlphabetPacker>, 2> m_apPackers; // null until needed
    std::string m_strKey;                                              // scratch; keeps its memory
    std::string m_strOctets;                                           // scratch; keeps its memory
    CFastInfosetBinaryData m_data; // scratch: the last value that needed a conversion
};

} // namespace QnXmlLib16
