#include "QnXmlLib16/binding/AttributeInfo.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/binding/XmlGeneratedClass.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/xml/XmlAttribute.h"

namespace QnXmlLib16Data {

CAttributeInfo::CAttributeInfo(const char* pszName, const char* pszNamespace, int nProperty,
                               bool bOptional, const char* pszDefault)
    : m_strName(pszName ? pszName : ""),
      m_strNamespace(pszNamespace ? pszNamespace : ""),
      m_nProperty(nProperty),
      m_bOptional(bOptional),
      m_strDefault(pszDefault ? pszDefault : "")
{}

CAttributeInfo::~CAttributeInfo() = default;

bool CAttributeInfo::IsThisAttribute(const CSerializationContext& context,
                                     CXmlAttribute* pAttribute) const
{
    return pAttribute && pAttribute->GetLocalName() == m_strName &&
           (context.GetIgnoreNamespaces() || pAttribute->GetNamespaceURI() == m_strNamespace);
}

void CAttributeInfo::ReadProperty(const CXmlGeneratedClass* pObject, QnVariant& value) const
{
    InvokePropertyGet(const_cast<CXmlGeneratedClass*>(pObject), value);
}

void CAttributeInfo::InvokePropertyGet(CXmlGeneratedClass* pObject, QnVariant& value) const
{
    try {
        pObject->AccessProperty(m_nProperty, true, value);
    }
    catch (const CQnException& e) {
        throw CQnValidationException(
            FormatString("Failed to get the property value for [%s].", m_strName.c_str()), "", e);
    }
}

void CAttributeInfo::InvokePropertySet(CXmlGeneratedClass* pObject, QnVariant& value,
                                       const CXmlAttribute& attribute) const
{
    try {
        pObject->AccessProperty(m_nProperty, false, value);
    }
    catch (const CQnException& e) {
        throw CQnValidationException("Failed to set the property value.", attribute.GetXPath(), e);
    }
}

void CAttributeInfo::ToXml_Int(const CXmlObjectBase* pObject, CXmlWriter* pWriter, bool bIsRoot,
                               const char* pszTargetNamespace, const CSerializationContext& context)
{
    CXmlObjectBase::ToXml_Int(pObject, pWriter, bIsRoot, pszTargetNamespace, context, false);
}

std::string CAttributeInfo::GetTargetNamespace(const CXmlObjectBase* pObject)
{
    return pObject->GetTargetNamespace();
}

} // namespace QnXmlLib16Data
