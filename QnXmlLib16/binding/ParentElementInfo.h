#pragma once

#include "QnXmlLib16/binding/ElementTypes.h"
#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/values/ItemType.h"

#include <atomic>
#include <string>
#include <typeinfo>

namespace QnXmlLib16 {
class CXmlGeneratedClass;
}

namespace QnXmlLib16Data {

// The record of one generated class, built once by generated code, shared by all instances and
// threads, and destroyed by CXmlGeneratedClass::CleanMetaData. Never changes once built.
class QNXML_API CParentElementInfo
{
public:
    // Null for pszValueFormat counts as empty, as for the names.
    CParentElementInfo(XmlElementGroupType groupType, XmlElementType elementType,
                       const char* pszName, const char* pszNamespace, bool bStrictAttributes,
                       bool bWriteType, int nValueProperty, ItemType valueType,
                       const char* pszValueFormat, bool bRawValue);
    CParentElementInfo(const CParentElementInfo&) = delete;
    CParentElementInfo& operator=(const CParentElementInfo&) = delete;
    virtual ~CParentElementInfo();

    const XmlElementGroupType m_groupType;
    // XmlElementType_Element: the class has an element of its own. Any other value: its content
    // belongs to the parent's element.
    const XmlElementType m_elementType;
    // Name and namespace of the schema type, as the type attribute tells them.
    const std::string m_strName;
    const std::string m_strNamespace;
    // Whether an attribute that no entry of the attribute table takes is a failure. Otherwise it
    // is dropped.
    const bool m_bStrictAttributes;
    // Whether the class may write the type attribute of the XML Schema instance namespace.
    const bool m_bWriteType;
    // Property number of the simple content; -1 for none.
    const int m_nValueProperty;
    // Type of the simple content; it_none for none.
    const ItemType m_valueType;
    // Format that the simple content is written with.
    const std::string m_strValueFormat;
    // Whether simple content is read as a plain string, whatever m_valueType says.
    const bool m_bRawValue;

private:
    friend class QnXmlLib16::CXmlGeneratedClass;

    // The last dynamic type that used this record and was found not to be nillable. A cross-cast
    // that fails walks the whole hierarchy, and runs for each object read or written.
    mutable std::atomic<const std::type_info*> m_pNotNillable{nullptr};
};

} // namespace QnXmlLib16Data
