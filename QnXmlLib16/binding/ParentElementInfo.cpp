#include "QnXmlLib16/binding/ParentElementInfo.h"

namespace QnXmlLib16Data {

CParentElementInfo::CParentElementInfo(XmlElementGroupType groupType, XmlElementType elementType,
                                       const char* pszName, const char* pszNamespace,
                                       bool bStrictAttributes, bool bWriteType, int nValueProperty,
                                       ItemType valueType, const char* pszValueFormat,
                                       bool bRawValue)
    : m_groupType(groupType),
      m_elementType(elementType),
      m_strName(pszName ? pszName : ""),
      m_strNamespace(pszNamespace ? pszNamespace : ""),
      m_bStrictAttributes(bStrictAttributes),
      m_bWriteType(bWriteType),
      m_nValueProperty(nValueProperty),
      m_valueType(valueType),
      m_strValueFormat(pszValueFormat ? pszValueFormat : ""),
      m_bRawValue(bRawValue)
{}

CParentElementInfo::~CParentElementInfo() = default;

} // namespace QnXmlLib16Data
