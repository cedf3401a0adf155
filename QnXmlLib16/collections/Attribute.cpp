#include "QnXmlLib16/collections/Attribute.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/xml/XmlWriter.h"

namespace QnXmlLib16 {

CAttribute::CAttribute(const char* pszName, const char* pszValue, const char* pszNamespace)
    : CInstanceMonitor("CAttribute"),
      m_strName(pszName ? pszName : ""),
      m_strValue(pszValue ? pszValue : ""),
      m_strNamespace(pszNamespace ? pszNamespace : "")
{}

CAttribute::~CAttribute() = default;

CXmlObjectBase* CAttribute::GetBase()
{
    return this;
}

std::string CAttribute::GetTargetNamespace() const
{
    return m_strNamespace;
}

std::string CAttribute::GetNamespace() const
{
    return m_strNamespace;
}

CSmartPtr<CAttribute> CAttribute::Clone() const
{
    return new CAttribute(m_strName.c_str(), m_strValue.c_str(), m_strNamespace.c_str());
}

void CAttribute::SetName(const char* pszName)
{
    FireOnChangeName(pszName);
    m_strName = pszName ? pszName : "";
}

void CAttribute::SetValue(const char* pszValue)
{
    m_strValue = pszValue ? pszValue : "";
}

void CAttribute::SetNamespace(const char* pszNamespace)
{
    FireOnChangeNamespace(pszNamespace);
    m_strNamespace = pszNamespace ? pszNamespace : "";
}

void CAttribute::FireOnChangeName(const char* /*pszName*/) {}

void CAttribute::FireOnChangeNamespace(const char* /*pszNamespace*/) {}

void CAttribute::ToXml_Int(CXmlWriter* pWriter, bool /*bIsRoot*/,
                           const char* /*pszTargetNamespace*/,
                           const CSerializationContext& /*context*/, bool /*bOptionalChoice*/) const
{
    pWriter->WriteAttributeString(m_strName, m_strNamespace, m_strValue, it_string);
}

CXmlElement* CAttribute::FromXml_Int(CXmlElement* /*pParent*/, CXmlElement* /*pCurrent*/,
                                     const CSerializationContext& /*context*/,
                                     bool /*bOptionalChoice*/)
{
    throw CQnException("This should be done by the collection");
}

} // namespace QnXmlLib16
