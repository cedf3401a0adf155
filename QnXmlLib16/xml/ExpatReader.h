#pragma once

#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/support/InstanceMonitor.h"

#include <cstddef>
#include <exception>
#include <memory>
#include <string>
#include <vector>

struct XML_ParserStruct;

namespace QnXmlLib16 {

class CXmlDocument;
class CXmlElement;
class CXmlName;
class CXmlNameTable;

// Runs Expat over the buffer of a document and fills its tree. A reader serves one parse; it must
// not outlive its document.
//
// The Fn... operations are Expat's callbacks, with the reader as user data. No exception leaves
// them: it is kept, the parser is stopped, and Parse throws it.
class QNXML_API CExpatReader : public CInstanceMonitor
{
public:
    explicit CExpatReader(CXmlDocument& document);
    CExpatReader(const CExpatReader&) = delete;
    CExpatReader& operator=(const CExpatReader&) = delete;
    ~CExpatReader() override;

    // Makes the parser: with namespace processing unless the document's schema type is
    // SchemaType_NoNamespaces, with markers for CDATA sections unless the context strips them.
    void CreateParser();

    // Parses the whole buffer, which is the end of the input if bFinal says so. Fails with
    // CQnException, Expat's words followed by " at line %d", or with what a callback threw; the
    // parser is freed then, and after a final success too.
    void Parse(bool bFinal);

    // Frees the parser.
    void Cleanup();

    // The number of bytes handed to Expat in one call, which copies them and can't take more than
    // INT_MAX. It doubles while a token is larger than that. At least 1; the default is 32 KiB
    // for documents below 1 MiB that hold a copy of the input, and 512 MiB for others.
    void SetPieceSize(std::size_t nBytes);

    static void FnStartElement(void* pUserData, const char* pszName, const char** ppszAttributes);
    static void FnEndElement(void* pUserData, const char* pszName);
    static void FnText(void* pUserData, const char* pText, int iLength);
    static void FnStartNamespace(void* pUserData, const char* pszPrefix, const char* pszUri);
    static void FnEndNamespace(void* pUserData, const char* pszPrefix);
    static void FnStartCDATA(void* pUserData);
    static void FnEndCDATA(void* pUserData);

private:
    struct QNXML_PRIVATE ParserFree
    {
        void operator()(XML_ParserStruct* pParser) const;
    };

    void StartElement(const char* pszName, const char** ppszAttributes);
    void EndElement();
    void Text(const char* pText, std::size_t nLength);
    void FindTextStarts();
    void MoveInnermostText();
    const CXmlName* LookUpName(const char* pszName);
    const std::string& ToLocalCodePage(const char* pText, std::size_t nLength);
    void KeepException() noexcept;

    CXmlDocument* m_pDocument;
    std::unique_ptr<XML_ParserStruct, ParserFree> m_parser;
    std::unique_ptr<CXmlNameTable> m_pNames; // by the names that Expat gives
    std::string m_strScratch;                // the last converted text; keeps its capacity
    // While Expat runs, the first m_nOpenTexts bytes are the texts of the open elements, from the
    // document element inwards, with the place where each begins: an element whose text comes in
    // many parts, between its children, takes memory for it once.
    std::string m_strOpenTexts;
    std::size_t m_nOpenTexts = 0;
    std::vector<std::size_t> m_vecTextStarts;
    bool m_bCollectsTexts = false;
    std::exception_ptr m_pFailure; // what a callback threw; no callback acts after it
    std::size_t m_nPieceSize;
};

} // namespace QnXmlLib16
