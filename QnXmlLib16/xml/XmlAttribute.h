#pragma once

#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/support/InstanceMonitor.h"
#include "QnXmlLib16/support/SmartPtr.h"

#include <cstddef>
#include <string>

namespace QnXmlLib16 {

class CXmlElement;
class CXmlName;
class CXmlNodeStore;

// An attribute of the input tree: a name, a namespace URI and a value, none of which changes.
// The element that it was added to owns it. All texts are in the local code page.
// One tree belongs to one thread.
class QNXML_API CXmlAttribute : public CInstanceMonitor
{
public:
    // pElement is not owned and may be null, for an attribute outside any tree. The attribute is
    // not linked into the element; CXmlElement::AddAttribute does both.
    CXmlAttribute(const CXmlElement* pElement, const std::string& strName,
                  const std::string& strValue, const std::string& strNamespace);
    CXmlAttribute(const CXmlAttribute&) = delete;
    CXmlAttribute& operator=(const CXmlAttribute&) = delete;
    ~CXmlAttribute() override;

    // The namespace URI, empty for an attribute without a prefix.
    const std::string& GetNamespaceURI() const;
    const std::string& GetLocalName() const;
    const std::string& GetValue() const { return m_strValue; }

    // The place of the attribute for messages, such as "/a:order/b:item[3]/@id". A prefix stands
    // in front of the at sign: "/a/xsi:@type". The cost grows with the element's depth and with
    // the number of children of every ancestor.
    std::string GetXPath() const;

    // True for "xmlns", "type", "schemaLocation" and "noNamespaceSchemaLocation" in the XML Schema
    // instance namespace or the xmlns namespace: what speaks of the document and is no data.
    bool IsNamespaceAttribute() const;

    // True for "nil" in one of these two namespaces.
    bool IsNilAttribute() const;

    // Attributes that a tree makes lie in the memory of their document; `new` and `delete` work
    // alike for both kinds.
    static void* operator new(std::size_t nSize);
    static void operator delete(void* pObject) noexcept;

private:
    friend class CXmlElement;

    // Shares the name; pValue has nLength bytes.
    CXmlAttribute(const CXmlElement* pElement, const CXmlName* pName, const char* pValue,
                  std::size_t nLength);

    static void* operator new(std::size_t nSize, CXmlNodeStore* pStore);
    static void operator delete(void* pObject, CXmlNodeStore* pStore) noexcept;

    const CXmlElement* m_pElement;
    CSmartPtr<const CXmlName> m_pName; // never null
    std::string m_strValue;
};

} // namespace QnXmlLib16
