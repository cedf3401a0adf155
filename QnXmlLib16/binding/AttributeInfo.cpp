#include "QnXmlLib16/binding/AttributeInfo.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/binding/XmlGeneratedClass.h"
#include "QnXmlLib16/binding/XmlObjectHelper.h"
#include "QnXmlLib16/collections/AttributeCol.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/values/QnVariant.h"
#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlWriter.h"

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

bool CAttributeInfo::ReadValue(const CXmlGeneratedClass* pObject, QnVariant& value) const
{
    ReadProperty(pObject, value);
    if (value.IsNil())
        value = QnVariant();
    return !m_bOptional || value.IsValid();
}

bool CAttributeInfo::IsLeftOut(const CSerializationContext& context,
                               const std::string& strText) const
{
    return m_bOptional && !m_strDefault.empty() && context.GetNoOptionalAttributeDefaultOutput() &&
           m_strDefault == strText;
}

void CAttributeInfo::ValidateSeen(bool bSeen) const
{
    // Deliberate: no setting of the context lets a mandatory attribute be missing. Pinned by
    // AttributeReading.ARequiredAttributeIsMissedWhateverTheContext.
    if (!m_bOptional && !bSeen) {
        throw CQnValidationException(
            FormatString("Failed to find the required Attribute [%s].", m_strName.c_str()), "");
    }
}

CAttributeInfoPrimitive::CAttributeInfoPrimitive(const char* pszName, const char* pszNamespace,
                                                 int nProperty, bool bOptional, ItemType itemType,
                                                 const char* pszFormat,
                                                 CWhitespaceUtils::WhitespaceRule whitespace,
                                                 const CPrimitiveRestrictions& restrictions,
                                                 const char* pszDefault)
    : CAttributeInfo(pszName, pszNamespace, nProperty, bOptional, pszDefault),
      m_restrictions(restrictions),
      m_itemType(itemType),
      m_strFormat(pszFormat ? pszFormat : ""),
      m_whitespace(whitespace)
{}

void CAttributeInfoPrimitive::AttributeToXml(const CSerializationContext& context,
                                             const CXmlGeneratedClass* pObject,
                                             CXmlWriter* pWriter) const
{
    QnVariant value;
    if (!ReadValue(pObject, value))
        return;
    // A text is written as it stands.
    if (const std::string* const pText =
            value.GetItemType() == it_string ? value.PeekString() : nullptr)
        WriteValue(context, value, *pText, pWriter);
    else
        WriteValue(context, value, value.ToString(m_strFormat.c_str()), pWriter);
}

void CAttributeInfoPrimitive::WriteValue(const CSerializationContext& context,
                                         const QnVariant& value, const std::string& strText,
                                         CXmlWriter* pWriter) const
{
    if (IsLeftOut(context, strText))
        return;
    CXmlObjectHelper::CheckRestriction(m_strName.c_str(), value, m_itemType, m_restrictions);
    pWriter->WriteAttributeString(m_strName, m_strNamespace, strText, m_itemType);
}

bool CAttributeInfoPrimitive::AttributeFromXml(const CSerializationContext&,
                                               CXmlGeneratedClass* pObject,
                                               CXmlAttribute* pAttribute)
{
    // Deliberate: unlike an enumeration, a typed attribute is not taken from a foreign namespace
    // where the context ignores namespaces. Pinned by
    // AttributeReading.OnlyEnumerationsIgnoreNamespaces.
    if (pAttribute->GetLocalName() != m_strName || pAttribute->GetNamespaceURI() != m_strNamespace)
        return false;
    QnVariant value;
    value.FromString(pAttribute->GetValue(), m_itemType, m_whitespace);
    InvokePropertySet(pObject, value, *pAttribute);
    return true;
}

void CAttributeInfoPrimitive::Validate(const CSerializationContext&, bool bSeen) const
{
    ValidateSeen(bSeen);
}

CAttributeInfoEnum::CAttributeInfoEnum(const char* pszName, const char* pszNamespace, int nProperty,
                                       bool bOptional, const char* (*fnEnumToString)(int),
                                       int (*fnStringToEnum)(const char*), const char* pszDefault)
    : CAttributeInfo(pszName, pszNamespace, nProperty, bOptional, pszDefault),
      m_fnStringToEnum(fnStringToEnum),
      m_fnEnumToString(fnEnumToString)
{}

void CAttributeInfoEnum::AttributeToXml(const CSerializationContext& context,
                                        const CXmlGeneratedClass* pObject,
                                        CXmlWriter* pWriter) const
{
    QnVariant value;
    if (!ReadValue(pObject, value))
        return;
    const char* const pszText = m_fnEnumToString(static_cast<int>(value.GetI4()));
    // Deliberate: a value without a text is left out though the attribute be mandatory. Pinned by
    // AttributeWriting.LeavesOutWhatIsAbsentOrADefaultOrHasNoText.
    if (!pszText)
        return;
    const std::string strText = pszText;
    if (!IsLeftOut(context, strText))
        pWriter->WriteAttributeString(m_strName, m_strNamespace, strText, it_string);
}

bool CAttributeInfoEnum::AttributeFromXml(const CSerializationContext& context,
                                          CXmlGeneratedClass* pObject, CXmlAttribute* pAttribute)
{
    if (!IsThisAttribute(context, pAttribute))
        return false;
    QnVariant value;
    value.SetI4(m_fnStringToEnum(pAttribute->GetValue().c_str()));
    InvokePropertySet(pObject, value, *pAttribute);
    return true;
}

void CAttributeInfoEnum::Validate(const CSerializationContext&, bool bSeen) const
{
    ValidateSeen(bSeen);
}

CAttributeInfoAny::CAttributeInfoAny(const char* pszName, const char* pszNamespace, int nProperty,
                                     bool bOptional, const char* pszDefault,
                                     const char* pszAnyNamespaces, const char* pszTargetNamespace)
    : CAttributeInfo(pszName, pszNamespace, nProperty, bOptional, pszDefault),
      m_strAnyNamespaces(pszAnyNamespaces ? pszAnyNamespaces : ""),
      m_strTargetNamespace(pszTargetNamespace ? pszTargetNamespace : "")
{}

void CAttributeInfoAny::AttributeToXml(const CSerializationContext& context,
                                       const CXmlGeneratedClass* pObject, CXmlWriter* pWriter) const
{
    QnVariant value;
    ReadProperty(pObject, value);
    if (const CXmlCollectionBase* const pCollection = value.PeekXmlCollection())
        ToXml_Int(pCollection, pWriter, false, GetTargetNamespace(pObject).c_str(), context);
}

bool CAttributeInfoAny::AttributeFromXml(const CSerializationContext&, CXmlGeneratedClass* pObject,
                                         CXmlAttribute* pAttribute)
{
    if (!CXmlObjectHelper::IsNamespaceValid(pAttribute->GetNamespaceURI(), m_strAnyNamespaces,
                                            m_strTargetNamespace))
        return false;
    QnVariant value;
    ReadProperty(pObject, value);
    CAttributeCol* const pAttributes = dynamic_cast<CAttributeCol*>(value.PeekXmlCollection());
    if (!pAttributes) {
        throw CQnException(
            "Serialization Data Error : The collection should be a CAttributeCol, it was not!");
    }
    pAttributes->Add(pAttribute->GetLocalName().c_str(), pAttribute->GetValue().c_str(),
                     pAttribute->GetNamespaceURI().c_str());
    return true;
}

void CAttributeInfoAny::Validate(const CSerializationContext&, bool) const {}

} // namespace QnXmlLib16Data
