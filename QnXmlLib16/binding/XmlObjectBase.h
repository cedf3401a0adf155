#pragma once

#include "QnXmlLib16/binding/EventSink.h"
#include "QnXmlLib16/fastinfoset/FInfoDecl.h"
#include "QnXmlLib16/support/Encoder.h" // ASCIIOnly, the third of the process-wide switches
#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/support/SettingTypes.h"
#include "QnXmlLib16/support/SmartPtr.h"

#include <atomic>
#include <string>

namespace QnXmlLib16Data {
class CElementInfo;
}

namespace QnXmlLib16 {

class CElement;
class CSerializationContext;
class CXmlCollectionBase;
class CXmlElement;
class CXmlWriter;

// While true, ToXmlFile and ToJsonFile without compression write into the file as they serialise
// instead of collecting the document in memory first: less memory, but a failure half way leaves
// a truncated file. Process-wide and unguarded; false at start; to be set before any work starts.
QNXML_API void AsyncToXmlFile(bool bEnable);

// Accepted for symmetry, has no effect: input is always read whole.
QNXML_API void AsyncFromXmlFile(bool bEnable);

// The root of all that can be bound to an XML element, and the public door of the library: each
// To... operation turns the object tree into a document, each From... operation reads a document
// into it.
//
// Ownership: objects are counted. The count starts at 0, so whoever receives a new object takes a
// reference, best through CSmartPtr; the object deletes itself when Release brings the count
// to 0. Objects can't be copied.
//
// Threads: AddRef and Release may be called from any thread. All else about one object belongs to
// one thread at a time; distinct objects may be used concurrently.
//
// Failure: all operations report through CQnException and its family. The licence gate is asked
// before each To... and From... operation and may refuse with a CQnException. A failed read
// leaves the object partly filled; it can be read into again and released.
class QNXML_API CXmlObjectBase : public IEventSink
{
public:
    CXmlObjectBase(const CXmlObjectBase&) = delete;
    CXmlObjectBase& operator=(const CXmlObjectBase&) = delete;

    // Hears nothing. A class that wants the events of a collection overrides this.
    void OnEvent(CXmlObjectBase* pSender, MsgType message, void* pData) override;

    // Writes this object as the root of a document into the file pszPath, which is replaced.
    // With the default setting the document is complete in memory before the file is opened.
    // A byte order mark of the encodings 2 and 3 stands ahead of the bytes, of compressed ones too,
    // which no reader takes back then: compress with encoding 1.
    // Throws CQnException "ZLIB Compression only available for To Stream methods." for
    // CompressionType_ZLib, before anything else; fails as ToXmlStream does, and as
    // CFileBinaryStream and CFileTextStream do.
    virtual void ToXmlFile(const char* pszPath, bool bIncludeDocHeader, bool bFormat,
                           XmlEncoding encoding, EOLType eol, const CSerializationContext& context,
                           CompressionType compression) const;

    // As ToXmlFile, in the form of ToFastInfosetStream: always by way of memory, and without a
    // mark.
    virtual void ToFastInfosetFile(const char* pszPath, FInfoDecl declaration,
                                   const CSerializationContext& context,
                                   CompressionType compression) const;

    // As ToXmlFile, in the form of ToJsonStream; by way of memory there is no mark.
    virtual void ToJsonFile(const char* pszPath, bool bFormat, XmlEncoding encoding, EOLType eol,
                            const CSerializationContext& context,
                            CompressionType compression) const;

    // Returns this object as an XML document in the local code page. bIncludeDocHeader adds the
    // XML declaration; bFormat breaks lines with eol and indents with the context's IndentChars.
    // Throws CQnValidationException "Failed to convert the element [%s] to XML", one for each
    // object level around the failure, the innermost telling its cause.
    virtual std::string ToXml(bool bIncludeDocHeader, bool bFormat, EOLType eol,
                              const CSerializationContext& context) const;

    // Returns this object as a JSON document in the local code page.
    virtual std::string ToJson(bool bFormat, EOLType eol,
                               const CSerializationContext& context) const;

    // Returns this object as an XML document in the given encoding, compressed if asked to.
    virtual CBinaryData ToXmlStream(bool bIncludeDocHeader, bool bFormat, XmlEncoding encoding,
                                    EOLType eol, const CSerializationContext& context,
                                    CompressionType compression) const;

    // Returns this object as a Fast Infoset document (ITU-T X.891).
    virtual CBinaryData ToFastInfosetStream(FInfoDecl declaration,
                                            const CSerializationContext& context,
                                            CompressionType compression) const;

    // Returns this object as a JSON document in the given encoding.
    virtual CBinaryData ToJsonStream(bool bFormat, XmlEncoding encoding, EOLType eol,
                                     const CSerializationContext& context,
                                     CompressionType compression) const;

    // Reads the file, XML text or Fast Infoset, plain or compressed, into this object.
    virtual void FromXmlFile(const char* pszPath, const CSerializationContext& context);

    // Reads a JSON file. See FromJson.
    virtual void FromJsonFile(const char* pszPath, const CSerializationContext& context);

    // Reads a zero-terminated XML document into this object.
    // Throws CQnException for text that is not well-formed; what the document's content breaks is
    // told with the path of the element or attribute. A failure with a path arrives as a plain
    // CQnException, whatever its class was where it arose.
    virtual void FromXml(const char* pszXml, const CSerializationContext& context);
    virtual void FromXml(const wchar_t* pszXml, const CSerializationContext& context);

    // Reads a zero-terminated JSON document, which takes the road over XML. Unless the context's
    // round trip value is 2, the context's IgnoreNamespaces is true during the call and is put
    // back afterwards, in spite of its const.
    // Throws CQnException "Error converting JSON to XML:\n%s", with the intermediate text, around
    // what the XML road reports.
    virtual void FromJson(const char* pszJson, const CSerializationContext& context);
    virtual void FromJson(const wchar_t* pszJson, const CSerializationContext& context);

    // Reads nLength bytes of an XML or Fast Infoset document, plain or compressed. The bytes stay
    // the caller's and are not changed.
    virtual void FromXmlStream(unsigned char* pData, unsigned long nLength,
                               const CSerializationContext& context);
    virtual void FromXmlStream(const CBinaryData& data, const CSerializationContext& context);

    // Reads nLength bytes of a JSON document.
    virtual void FromJsonStream(unsigned char* pData, unsigned long nLength,
                                const CSerializationContext& context);
    virtual void FromJsonStream(const CBinaryData& data, const CSerializationContext& context);

    // Reads an element of a loaded document, as if it were the document element. The tree is not
    // changed and not kept. Throws CQnInvalidParamException for null.
    virtual void FromXmlElement(const CXmlElement* pElement, const CSerializationContext& context);

    // Reads wildcard content, by way of text that is written with the default context, never with
    // the caller's. Throws CQnInvalidParamException for null.
    virtual void FromXmlElement(const CElement* pElement, const CSerializationContext& context);

    virtual ~CXmlObjectBase();

    // The namespace in which this object's own element is written when it is the document root.
    virtual std::string GetTargetNamespace() const = 0;

    // The namespace handed to the metadata of this object's child elements.
    virtual std::string GetNamespace() const = 0;

protected:
    CXmlObjectBase();

    // Writes the attributes of this object into the element that is open. Empty here.
    virtual void AttributesToXml_Int(CXmlWriter* pWriter,
                                     const CSerializationContext& context) const;

    // Writes the object. pszTargetNamespace is the namespace of its own element; bOptionalChoice
    // lets an object that is a choice be empty.
    virtual void ToXml_Int(CXmlWriter* pWriter, bool bIsRoot, const char* pszTargetNamespace,
                           const CSerializationContext& context, bool bOptionalChoice) const = 0;

    // Reads the object. pElement is the element that it stands for (its parent's where it has none
    // of its own), pCursor the first child element that nobody has taken yet. Returns the first
    // child that this object did not take, null when none is left.
    virtual CXmlElement* FromXml_Int(CXmlElement* pElement, CXmlElement* pCursor,
                                     const CSerializationContext& context,
                                     bool bOptionalChoice) = 0;

public:
    // Both return the new count. A count that Release takes below 0, on an object that was never
    // given a reference, destroys nothing.
    long long AddRef() noexcept { return m_nRefCount.fetch_add(1, std::memory_order_relaxed) + 1; }
    long long Release();

    // The name under which the object serialises; empty until it is set or read from a document.
    std::string GetElementName() const { return m_strElementName; }
    void SetElementName(const char* pszName);

    using IEventSink::GetBase;
    const CXmlObjectBase* GetBase() const { return const_cast<CXmlObjectBase*>(this)->GetBase(); }

    // Bridges to the virtual operations of the same names, for classes outside the hierarchy. A
    // null object throws CQnInvalidParamException. FromXml_Int passes false for bOptionalChoice.
    static void ToXml_Int(const CXmlObjectBase* pObject, CXmlWriter* pWriter, bool bIsRoot,
                          const char* pszTargetNamespace, const CSerializationContext& context,
                          bool bOptionalChoice);
    static void AttributesToXml_Int(const CXmlObjectBase* pObject, CXmlWriter* pWriter,
                                    const CSerializationContext& context);
    static CXmlElement* FromXml_Int(CXmlObjectBase* pObject, CXmlElement* pElement,
                                    CXmlElement* pCursor, const CSerializationContext& context);

    // Each tells pSink of one step of a change to pCollection, unless the sink does not override
    // OnEvent. An iIndex of -1 reaches the sink as null data.
    static void FireOnCollectionChangeEvent(IEventSink* pSink, CXmlCollectionBase* pCollection);
    static void FireOnCollectionAddEvent(IEventSink* pSink, CXmlCollectionBase* pCollection,
                                         void* pItem);
    static void FireOnCollectionAddCompleteEvent(IEventSink* pSink, CXmlCollectionBase* pCollection,
                                                 void* pItem);
    static void FireOnCollectionRemoveEvent(IEventSink* pSink, CXmlCollectionBase* pCollection,
                                            int iIndex);
    static void FireOnCollectionRemoveCompleteEvent(IEventSink* pSink,
                                                    CXmlCollectionBase* pCollection, int iIndex);

    // The rule of a choice, one member set at a time, for the setters of generated classes.
    // strSelected is where the class remembers the name of the selected member, empty for none.
    // They throw CQnInvalidStateException when another member than the selected one is set, and
    // then leave strSelected as it was.

    // A member that holds an object is about to be set to pValue, which may be null.
    static void Choice_SelectElement(const char* pszName, CXmlObjectBase* pValue,
                                     std::string& strSelected);
    // The collection of a member now holds nCount items.
    static void Choice_CollectionChanged(const char* pszName, long nCount,
                                         std::string& strSelected);
    // A member that holds a value becomes valid or invalid. Making it valid needs the selection
    // to be its own already.
    static void Choice_SetElementValid(bool bValid, const char* pszName, std::string& strSelected);
    // Reads a collection member of a choice from pCursor on, unless nCount says that a member was
    // read before. If it took elements, the cursor moves, its bounds are checked and nCount grows
    // by one. Throws CQnInvalidParamException for a null collection.
    static void Choice_Read_Collection(CXmlCollectionBase* pCollection, CXmlElement* pElement,
                                       CXmlElement*& pCursor, long& nCount,
                                       const CSerializationContext& context);

    // Checks for the setters of generated classes; both throw CQnInvalidParamException.
    static void Throw_IfPropertyIsNull(CXmlObjectBase* pValue, const char* pszName);
    // Null passes.
    static void Throw_IfElementNameDiffers(CXmlObjectBase* pValue, const char* pszName);

    // The tests of CXmlObjectHelper, on texts.
    static void TestNamespace(const char* pszNamespace, const char* pszNamespaces,
                              const char* pszTargetNamespace);
    static bool IsNamespaceValid(const char* pszNamespace, const char* pszNamespaces,
                                 const char* pszTargetNamespace);
    static bool DoesElementNameMatch(const CSerializationContext& context,
                                     const CXmlElement* pElement, const char* pszName,
                                     const char* pszNamespace);

protected:
    std::string m_strElementName;

private:
    // Reaches FromXml_Int with its flag, which the public bridge leaves out.
    friend class QnXmlLib16Data::CElementInfo;

    void FromJson_Int(const CBinaryData& xml, const CSerializationContext& context);

    std::atomic<long long> m_nRefCount{0};
};

} // namespace QnXmlLib16
