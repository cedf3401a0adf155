#pragma once

#include "QnXmlLib16/fastinfoset/FIVocabulary.h"
#include "QnXmlLib16/support/Export.h"

#include <string>

namespace QnXmlLib16 {

// The settings for Fast Infoset (ITU-T X.891) in a CSerializationContext. A value: copies share
// nothing. One thread at a time while it is changed.
class QNXML_API CFastInfosetContext
{
public:
    // How a value goes on the wire.
    enum EncodingKind : int
    {
        EncodingKind_Literal = 0,            // UTF-8 text; the index is not used
        EncodingKind_RestrictedAlphabet = 1, // index 1 numeric, 2 date and time
        EncodingKind_Algorithm = 2           // index 1 to 10, see CFastInfosetBinaryData
    };

    struct EncodedCharacterString
    {
        int m_eKind; // an EncodingKind; a writer refuses any other number
        unsigned long m_iIndex;
    };

    // All values as UTF-8 text, those shorter than 6 bytes entered in the vocabulary, which starts
    // with what X.891 builds in.
    CFastInfosetContext();
    CFastInfosetContext(const CFastInfosetContext&) = default;
    CFastInfosetContext& operator=(const CFastInfosetContext&) = default;
    virtual ~CFastInfosetContext();

    // 0, UTF-8. A writer refuses 1, UTF-16BE.
    unsigned char GetDefaultStringEncoding() const { return m_uDefaultStringEncoding; }

    // The encoding of the values of an ItemType, 0 to 28; iItemType is not checked. Whoever writes
    // an encoding other than a literal has to write values that it can hold: another one fails,
    // and that ends the document.
    const EncodedCharacterString& GetEncoding(unsigned long iItemType) const
    {
        return m_aEncodings[iItemType];
    }
    void SetEncoding(unsigned long iItemType, EncodedCharacterString encoding)
    {
        m_aEncodings[iItemType] = encoding;
    }

    // The encodings that make a document small: binary forms for numbers, booleans and bytes,
    // restricted alphabets for dates, times, decimals and integers. Durations become text; texts
    // keep the encoding that is set.
    //
    // Deliberate: `ui8` values above the range of a signed 64-bit number can't be written then, and
    // negative `i4` values come back as large positive ones. Nor can dates and times with a fraction
    // of a second or an offset east of UTC: their alphabet has no point and no plus sign. Pinned by
    // FastInfosetBinding.WhatASuggestedEncodingCanNotHoldIsChangedOrRefused.
    void SetSuggestedValues();

    // A value enters the vocabulary of the document if it is shorter than this many bytes in the
    // local code page; 6 at the start, 0 for never.
    unsigned long GetAttributeMaxAddLength() const { return m_iAttributeMaxAddLength; }
    void SetAttributeMaxAddLength(unsigned long iLength) { m_iAttributeMaxAddLength = iLength; }
    unsigned long GetElementMaxAddLength() const { return m_iElementMaxAddLength; }
    void SetElementMaxAddLength(unsigned long iLength) { m_iElementMaxAddLength = iLength; }

    // Whether each writer and reader starts from a copy of GetVocabulary() instead of an empty
    // vocabulary; false at the start. The entries don't travel with the document and nothing
    // checks them: both sides have to make the same ones in the same order.
    bool GetUseGeneratedVocabulary() const { return m_bUseGeneratedVocabulary; }
    void SetUseGeneratedVocabulary(bool bUse) { m_bUseGeneratedVocabulary = bUse; }

    // Owned by this context. What a document adds to its copy doesn't come back here.
    CFIVocabulary* GetVocabulary() { return &m_vocabulary; }
    const CFIVocabulary* GetVocabulary() const { return &m_vocabulary; }

    // The name of the vocabulary in the document header, written with a generated vocabulary only;
    // empty for a fixed one. Readers don't compare it.
    const std::string& GetExternalVocabularyURI() const { return m_strExternalVocabularyURI; }
    void SetExternalVocabularyURI(const std::string& strURI)
    {
        m_strExternalVocabularyURI = strURI;
    }

protected:
    unsigned char m_uDefaultStringEncoding; // only a derived context can change it

private:
    static constexpr unsigned long kItemTypes = 29;

    EncodedCharacterString m_aEncodings[kItemTypes];
    unsigned long m_iAttributeMaxAddLength;
    unsigned long m_iElementMaxAddLength;
    bool m_bUseGeneratedVocabulary;
    CFIVocabulary m_vocabulary;
    std::string m_strExternalVocabularyURI;
};

} // namespace QnXmlLib16
