#include "SpineInfo.h"

#include "QnXmlLib16/binding/XmlObjectBase.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/values/QnVariant.h"
#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "QnXmlLib16/xml/XmlWriter.h"

using namespace QnXmlLib16;

namespace Model {

CValueInfo::CValueInfo(const char* pszName, const char* pszNamespace, int nProperty, ItemType type,
                       bool bMandatory, bool bNillable, const char* pszDefault,
                       const CPrimitiveRestrictions& restrictions)
    : CElementInfo(pszName, pszNamespace, nProperty, bNillable, type, nullptr,
                   CWhitespaceUtils::WhitespaceRule_Collapse, restrictions, pszDefault),
      m_bMandatory(bMandatory)
{}

bool CValueInfo::ElementToXml(const CSerializationContext& context,
                              const CXmlGeneratedClass* pObject, CXmlWriter* pWriter) const
{
    const bool bWritten = ElementToXmlPrim(context, pObject, pWriter);
    if (m_bMandatory && !bWritten)
        throw CQnInvalidParamException("The Property [" + m_strName +
                                       "] is mandatory, it may not be NULL");
    return bWritten;
}

bool CValueInfo::ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                                CXmlElement* pParent, CXmlElement** ppCursor, const char*,
                                XmlElementType ownerType)
{
    if (IsThisElement(context, *ppCursor)) {
        ElementFromXmlPrim(context, pObject, ppCursor);
        return true;
    }
    if (m_bMandatory && ownerType == XmlElementType_Element)
        throw CQnValidationException(
            "Failed to find the required child element [" + m_strName + "].", pParent->GetXPath());
    return !m_bMandatory;
}

CChildInfo::CChildInfo(const char* pszName, const char* pszNamespace, int nProperty,
                       XmlElementType childType)
    : CElementInfo(pszName, pszNamespace, nProperty), m_childType(childType)
{}

bool CChildInfo::ElementToXml(const CSerializationContext& context,
                              const CXmlGeneratedClass* pObject, CXmlWriter* pWriter) const
{
    return ElementToXmlCls(context, pObject, pWriter, false);
}

bool CChildInfo::ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                                CXmlElement* pParent, CXmlElement** ppCursor, const char*,
                                XmlElementType)
{
    QnVariant value;
    ReadProperty(pObject, value);
    if (m_childType != XmlElementType_Element) {
        *ppCursor = FromXml_Int(value.PeekXmlObject(), pParent, *ppCursor, context, false);
    }
    else if (IsThisElement(context, *ppCursor)) {
        FromXml_Int(value.PeekXmlObject(), *ppCursor, (*ppCursor)->GetFirstElement(), context,
                    false);
        *ppCursor = (*ppCursor)->GetNextSiblingElement();
    }
    return true;
}

void CChildInfo::PseudoChildAttributeToXml(const CSerializationContext& context,
                                           const CXmlGeneratedClass* pObject,
                                           CXmlWriter* pWriter) const
{
    if (m_childType != XmlElementType_PseudoElement)
        return;
    QnVariant value;
    ReadProperty(pObject, value);
    AttributesToXml_Int(value.PeekXmlObject(), pWriter, context);
}

CValueAttributeInfo::CValueAttributeInfo(const char* pszName, const char* pszNamespace,
                                         int nProperty, bool bOptional, ItemType type)
    : CAttributeInfo(pszName, pszNamespace, nProperty, bOptional, nullptr), m_type(type)
{}

void CValueAttributeInfo::AttributeToXml(const CSerializationContext&,
                                         const CXmlGeneratedClass* pObject,
                                         CXmlWriter* pWriter) const
{
    QnVariant value;
    ReadProperty(pObject, value);
    if (!m_bOptional || value.IsValid())
        pWriter->WriteAttributeString(m_strName, m_strNamespace, value.ToString(nullptr), m_type);
}

bool CValueAttributeInfo::AttributeFromXml(const CSerializationContext& context,
                                           CXmlGeneratedClass* pObject, CXmlAttribute* pAttribute)
{
    if (!IsThisAttribute(context, pAttribute))
        return false;
    QnVariant value;
    value.FromString(pAttribute->GetValue(), m_type, CWhitespaceUtils::WhitespaceRule_Collapse);
    InvokePropertySet(pObject, value, *pAttribute);
    return true;
}

void CValueAttributeInfo::Validate(const CSerializationContext&, bool bSeen) const
{
    if (!m_bOptional && !bSeen)
        throw CQnValidationException("Failed to find the required Attribute [" + m_strName + "].",
                                     "");
}

} // namespace Model
