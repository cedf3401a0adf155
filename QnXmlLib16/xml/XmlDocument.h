#pragma once

#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/support/InstanceMonitor.h"
#include "QnXmlLib16/support/SettingTypes.h"
#include "QnXmlLib16/support/SmartPtr.h"

#include <map>
#include <string>
#include <vector>

namespace QnXmlLib16 {

class CBinaryData;
class CSerializationContext;
class CXmlElement;
class CXmlName;
class CXmlNodeStore;

// Takes a document from text, bytes or a file and turns it into a tree of elements. It also keeps
// the table of the namespace prefixes of the input.
//
// The document owns the tree and its copy of the input; both live until the next load, Cleanup or
// the destructor. A load that fails leaves what was built until then, and the document can be
// loaded again. One document belongs to one thread.
class QNXML_API CXmlDocument : public CInstanceMonitor
{
public:
    // Called with every element that is complete, innermost first. A true answer removes the
    // element from its parent and deletes it, so that a large document passes through in bounded
    // memory; for the document element the answer is ignored. An exception ends the load and
    // leaves the load operation as itself. The callback must not load or clean up the document.
    using ElementDoneFunction = bool (*)(CXmlElement*);

    // Without a context the document uses CSerializationContext::m_defaultContext. The context is
    // not owned and must outlive the document, which takes the schema type from it at once and
    // asks it for the treatment of CDATA sections at each load.
    CXmlDocument();
    explicit CXmlDocument(const CSerializationContext& context);
    explicit CXmlDocument(ElementDoneFunction pfnElementDone);
    CXmlDocument(ElementDoneFunction pfnElementDone, const CSerializationContext& context);
    CXmlDocument(const CXmlDocument&) = delete;
    CXmlDocument& operator=(const CXmlDocument&) = delete;
    ~CXmlDocument() override;

    // Gives up the tree, the input and the prefixes. Every load begins with it.
    virtual void Cleanup();

    // The state of a new document; takes the schema type from the context again.
    void Init();

    // Every load fails with CQnException. The words for damaged XML text are those of Expat,
    // followed by " at line " and the line number. Files and streams may hold XML text (XML 1.0) or
    // Fast Infoset (ITU-T X.891), plain, under gzip or under zlib, which the data tell; a string
    // is XML text.

    // From a file. "Failed to open the file [%s].", "Failed to get the
    // size of the file [%s] Error [0]" for anything but a regular file, "Failed to read the
    // contents of the file [%s] Error [%n]" for an empty file too.
    void Load(const char* pszPath);

    // From XML text as it stands in the string, in the encoding that it declares.
    // "XML String is empty!"
    void LoadXml(const char* pszXml);

    // As above from wide text. Only the lower 16 bits of each character are used, so a character
    // above U+FFFF arrives as another one. An encoding that the text declares must be UTF-16.
    void LoadXml(const wchar_t* pszXml);

    // From nLength bytes. "XML Stream is empty!"
    void LoadXmlStream(const unsigned char* pData, unsigned long nLength);

    // JSON (RFC 8259) does not fill the tree: each of these returns the document as XML text in
    // UTF-8, as CJsonTextReader::ConvertJsonToXml makes it with this document's context, for a
    // load of its own. They fail as that function does, with "JSON String is empty!" and "JSON
    // Stream is empty!", and with the words of Load for files. Files and streams may be
    // compressed, are UTF-8 and may begin with a byte order mark; a string is in the local code
    // page. The wide form takes the characters as bytes and fails for every object and array.
    CBinaryData LoadJsonFile(const char* pszPath);
    CBinaryData LoadJson(const char* pszJson);
    CBinaryData LoadJson(const wchar_t* pszJson);
    CBinaryData LoadJsonStream(const unsigned char* pData, unsigned long nLength);

    // Null before a load.
    CXmlElement* GetDocumentElement() const { return m_pDocumentElement; }

    // The table of prefixes is flat: a declaration holds for the whole document, and a prefix that
    // is declared twice keeps its last URI. The default namespace has the empty prefix.

    // The URI of a prefix, or an empty text.
    std::string LookupNamespaceFromAlias(const char* pszAlias) const;

    // The first prefix in byte order that stands for the URI, or an empty text.
    std::string LookupAliasFromNamespace(const char* pszNamespace) const;

    // For the parsers. Names, namespaces and values are in the local code page.

    const unsigned char* GetBuffer() const { return m_pBuffer; }
    unsigned long GetBufferLength() const { return m_iBufferLength; }

    // Both open the new element: it is the innermost one until EndElement. They fail with
    // CQnInvalidStateException if there is a document element already, or no element is open.
    CXmlElement* AddDocElement(const char* pszNamespace, const char* pszName);
    CXmlElement* AddChildElement(const char* pszNamespace, const char* pszName);

    // Closes the innermost element and shows it to the element-done function. Fails with
    // CQnInvalidStateException if no element is open.
    void EndElement();

    // The innermost open element, null if none is open.
    CXmlElement* GetInnermostElement() const;

    void AddElementAttribute(CXmlElement* pElement, const char* pszName, const char* pszValue,
                             const char* pszNamespace);

    // Appends the text up to its first zero byte, or nLength bytes, without its carriage returns.
    void AppendTextExcludingCR(CXmlElement* pElement, const char* pszText);
    void AppendTextExcludingCR(CXmlElement* pElement, const char* pText, unsigned long nLength);

    // Enters a prefix, replacing what it stood for.
    void SetAlias(const char* pszPrefix, const char* pszNamespace);

protected:
    // As LoadXml, LoadXmlStream and LoadJson, but for the copy: the text, which must not lie in
    // this document, is parsed where it lies, unless it is compressed, and must not change
    // meanwhile. The document is left without a buffer.
    void LoadXmlInPlace(const char* pszXml);
    void LoadXmlStreamInPlace(const unsigned char* pData, unsigned long nLength);
    CBinaryData LoadJsonInPlace(const char* pszJson);

    // Replaces the buffer by nLength bytes from array new; takes them over.
    void SetBuffer(unsigned char* pBuffer, unsigned long nLength);

private:
    friend class CExpatReader;
    friend class CFastInfosetReader;
    friend class CXmlElement;

    class CLentBuffer;

    static void DropCR(std::string& strText, std::size_t nFrom);

    CXmlElement* AddDocElement(const CXmlName* pName);
    CXmlElement* AddChildElement(const CXmlName* pName);
    CBinaryData ConvertJson(const char* pText, unsigned long nLength);
    void StoreFile(const char* pszPath);
    void StoreCopy(const void* pData, unsigned long nLength, const char* pszIfEmpty);
    void Parse();
    void ParsePlain();
    void ParseText();
    CBinaryData ParseJson();

    CXmlElement* m_pDocumentElement = nullptr;   // owned
    std::vector<CXmlElement*> m_vecElementStack; // the open elements, innermost last
    std::map<std::string, std::string> m_mapAliases;
    unsigned char* m_pBuffer = nullptr; // owned, from array new
    unsigned long m_iBufferLength = 0;
    bool m_bLentBuffer = false; // somebody else's, which costs this document no memory
    SchemaType m_eSchemaType = SchemaType_Default;
    ElementDoneFunction m_pfnElementDone = nullptr;
    const CSerializationContext* m_pContext; // not owned
    CSmartPtr<CXmlNodeStore> m_pStore;       // never null
};

} // namespace QnXmlLib16
