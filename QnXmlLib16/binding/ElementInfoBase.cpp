#include "QnXmlLib16/binding/ElementInfoBase.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/binding/XmlGeneratedClass.h"
#include "QnXmlLib16/binding/XmlObjectHelper.h"
#include "QnXmlLib16/collections/XmlCollectionBase.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/support/internal/TextOrEmpty.h"
#include "QnXmlLib16/values/QnVariant.h"
#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "QnXmlLib16/xml/XmlWriter.h"

#include <string_view>
#include <strings.h>

namespace QnXmlLib16Data {

CElementInfo::CElementInfo(const char* pszName, const char* pszNamespace, int nProperty)
    : m_strName(OrEmpty(pszName)), m_strNamespace(OrEmpty(pszNamespace)), m_nProperty(nProperty)
{}

CElementInfo::CElementInfo(const char* pszName, const char* pszNamespace, int nProperty,
                           bool bNillable, const char* (*fnEnumToString)(int),
                           int (*fnStringToEnum)(const char*), const char* pszDefault)
    : m_strName(OrEmpty(pszName)),
      m_strNamespace(OrEmpty(pszNamespace)),
      m_nProperty(nProperty),
      m_strDefault(OrEmpty(pszDefault)),
      m_bNillable(bNillable),
      m_fnEnumToString(fnEnumToString),
      m_fnStringToEnum(fnStringToEnum)
{}

CElementInfo::CElementInfo(const char* pszName, const char* pszNamespace, int nProperty,
                           bool bNillable, ItemType itemType, const char* pszFormat,
                           CWhitespaceUtils::WhitespaceRule whitespace,
                           const CPrimitiveRestrictions& restrictions, const char* pszDefault)
    : m_strName(OrEmpty(pszName)),
      m_strNamespace(OrEmpty(pszNamespace)),
      m_nProperty(nProperty),
      m_restrictions(restrictions),
      m_itemType(itemType),
      m_strFormat(OrEmpty(pszFormat)),
      m_whitespace(whitespace),
      m_strDefault(OrEmpty(pszDefault)),
      m_bNillable(bNillable),
      m_bIsPrimitive(true)
{}

CElementInfo::~CElementInfo() = default;

bool CElementInfo::Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool,
                            bool) const
{
    throw CQnException("Not implemented, should never be called");
}

void CElementInfo::PseudoChildAttributeToXml(const CSerializationContext&,
                                             const CXmlGeneratedClass*, CXmlWriter*) const
{}

bool CElementInfo::IsThisElement(const CSerializationContext& context,
                                 const CXmlElement* pElement) const
{
    return pElement && pElement->GetLocalName() == m_strName &&
           (context.GetIgnoreNamespaces() || pElement->GetNamespaceURI() == m_strNamespace);
}

void CElementInfo::ReadProperty(const CXmlGeneratedClass* pObject, QnVariant& value) const
{
    InvokePropertyGet(const_cast<CXmlGeneratedClass*>(pObject), value);
}

void CElementInfo::InvokePropertyGet(CXmlGeneratedClass* pObject, QnVariant& value) const
{
    try {
        pObject->AccessProperty(m_nProperty, true, value);
    }
    catch (const CQnException& e) {
        ThrowNotRead(e);
    }
}

void CElementInfo::InvokePropertySet(CXmlGeneratedClass* pObject, QnVariant& value,
                                     const CXmlElement& element) const
{
    try {
        pObject->AccessProperty(m_nProperty, false, value);
    }
    catch (const CQnException& e) {
        throw CQnValidationException("Failed to set the property value.", element.GetXPath(), e);
    }
}

// Apart, so that the way without a failure is short enough to be part of its callers.
void CElementInfo::ThrowNotRead(const CQnException& e) const
{
    throw CQnValidationException(
        FormatString("Failed to get the property value for [%s].", m_strName.c_str()), "", e);
}

void CElementInfo::CheckRestriction(const QnVariant& value) const
{
    if (!m_bIsPrimitive)
        throw CQnException("Cannot CheckRestriction for type: " + value.GetType());
    CXmlObjectHelper::CheckRestriction(m_strName.c_str(), value, m_itemType, m_restrictions);
}

CXmlElement* CElementInfo::FromXml_Int(CXmlObjectBase* pObject, CXmlElement* pElement,
                                       CXmlElement* pCursor, const CSerializationContext& context,
                                       bool bOptionalChoice)
{
    return pObject->FromXml_Int(pElement, pCursor, context, bOptionalChoice);
}

void CElementInfo::AttributesToXml_Int(const CXmlObjectBase* pObject, CXmlWriter* pWriter,
                                       const CSerializationContext& context)
{
    CXmlObjectBase::AttributesToXml_Int(pObject, pWriter, context);
}

std::string CElementInfo::GetAnyDefaultNamespace(const char* pszNamespaces,
                                                 const char* pszNamespace,
                                                 const char* pszTargetNamespace)
{
    std::string_view strToken = OrEmpty(pszNamespaces);
    if (strToken.substr(0, 2) == "##")
        strToken = strToken.substr(0, strToken.find(' '));
    if (strToken == "##any")
        return OrEmpty(pszNamespace);
    // Deliberate: "##other" gives a namespace of this name to an owner that has none, and no
    // namespace to any other owner, though that is what its restriction refuses. Pinned by
    // WildcardNamespace.GoesByTheFirstTokenIfThatIsAKeyword.
    if (strToken == "##other")
        return *OrEmpty(pszNamespace) == '\0' ? "DefaultNamespace" : "";
    if (strToken == "##targetNamespace")
        return OrEmpty(pszTargetNamespace);
    return {};
}

bool CElementInfo::ElementToXmlPrim(const CSerializationContext&, const CXmlGeneratedClass* pObject,
                                    CXmlWriter* pWriter) const
{
    QnVariant value;
    ReadProperty(pObject, value);
    if (!value.IsValid())
        return false;
    if (value.IsNil()) {
        WriteNil(pWriter);
        return true;
    }
    // A text is written as it stands.
    if (const std::string* const pText =
            value.GetItemType() == it_string ? value.PeekString() : nullptr)
        WriteValue(value, *pText, pWriter);
    else
        WriteValue(value, value.ToString(m_strFormat.c_str()), pWriter);
    return true;
}

void CElementInfo::WriteValue(const QnVariant& value, const std::string& strText,
                              CXmlWriter* pWriter) const
{
    const bool bIsDefault = !m_strDefault.empty() && m_strDefault == strText;
    // Deliberate: the schema's default is not held to the facets. Pinned by
    // PrimitiveElement.AValueEqualToTheDefaultIsNotChecked.
    if (!bIsDefault)
        CheckRestriction(value);
    pWriter->WriteStartElement(m_strName, m_strNamespace);
    pWriter->WriteString(strText, m_itemType, bIsDefault);
    pWriter->WriteEndElement();
}

void CElementInfo::WriteNil(CXmlWriter* pWriter) const
{
    pWriter->WriteStartElement(m_strName, m_strNamespace);
    pWriter->WriteAttributeNil();
    pWriter->WriteEndElement();
}

bool CElementInfo::ElementToXmlEnum(const CSerializationContext&, const CXmlGeneratedClass* pObject,
                                    CXmlWriter* pWriter, const char* (*fnEnumToString)(int)) const
{
    QnVariant value;
    ReadProperty(pObject, value);
    if (!value.IsValid())
        return false;
    if (value.IsNil()) {
        WriteNil(pWriter);
        return true;
    }
    const std::string strText = OrEmpty(fnEnumToString(static_cast<int>(value.GetI4())));
    pWriter->WriteStartElement(m_strName, m_strNamespace);
    pWriter->WriteString(strText, it_string, !m_strDefault.empty() && m_strDefault == strText);
    pWriter->WriteEndElement();
    return true;
}

bool CElementInfo::ElementToXmlCls(const CSerializationContext& context,
                                   const CXmlGeneratedClass* pObject, CXmlWriter* pWriter,
                                   bool bOptionalChoice) const
{
    QnVariant value;
    ReadProperty(pObject, value);
    const CXmlObjectBase* const pChild = value.PeekXmlObject();
    if (!pChild)
        return false;
    CXmlObjectBase::ToXml_Int(pChild, pWriter, false, m_strNamespace.c_str(), context,
                              bOptionalChoice);
    return true;
}

bool CElementInfo::ElementToXmlCol(const CSerializationContext& context,
                                   const CXmlGeneratedClass* pObject, CXmlWriter* pWriter) const
{
    QnVariant value;
    ReadProperty(pObject, value);
    const CXmlCollectionBase* const pCollection = value.PeekXmlCollection();
    return pCollection && WriteItems(*pCollection, context, pWriter);
}

bool CElementInfo::WriteItems(const CXmlCollectionBase& collection,
                              const CSerializationContext& context, CXmlWriter* pWriter) const
{
    if (collection.GetCount() <= 0)
        return false;
    pWriter->SetContextState(CXmlWriter::ContextState_BeforeItems);
    CXmlObjectBase::ToXml_Int(collection.GetBase(), pWriter, false, m_strNamespace.c_str(), context,
                              false);
    pWriter->SetContextState(CXmlWriter::ContextState_AfterItems);
    return true;
}

bool CElementInfo::ReadNil(const CSerializationContext& context, const CXmlElement& element) const
{
    bool bNil = false;
    for (const CXmlAttribute* const pAttribute : element.GetAttributes()) {
        // Deliberate: neither a namespace declaration nor a type attribute is an exception here,
        // a primitive element takes nil and nothing else. Pinned by
        // PrimitiveElement.TakesNoAttributeButNil.
        if (!pAttribute->IsNilAttribute()) {
            if (!context.GetIgnoreUnknownAttributes())
                throw CQnValidationException("Unexpected Attribute found.", pAttribute->GetXPath());
            continue;
        }
        const char* const pszValue = pAttribute->GetValue().c_str();
        if (strcasecmp(pszValue, "false") == 0 || strcasecmp(pszValue, "0") == 0) {
            bNil = false;
            continue;
        }
        if (!m_bNillable) {
            throw CQnValidationException("Invalid use of 'nil' attribute in non-nillable element.",
                                         element.GetXPath());
        }
        if (strcasecmp(pszValue, "true") != 0 && strcasecmp(pszValue, "1") != 0) {
            throw CQnValidationException(
                FormatString("Unexpected Value [%s] for 'nil' Attribute found.", pszValue),
                pAttribute->GetXPath());
        }
        bNil = true;
    }
    return bNil;
}

void CElementInfo::ElementFromXmlPrim(const CSerializationContext& context,
                                      CXmlGeneratedClass* pObject, CXmlElement** ppCursor) const
{
    const CXmlElement& element = **ppCursor;
    // Deliberate: a nil element leaves the property as Init made it; it does not become nil.
    // Pinned by PrimitiveElement.ANilElementLeavesThePropertyAsItIs.
    if (!ReadNil(context, element)) {
        const std::string& strText = element.GetText();
        QnVariant value;
        value.FromString(strText.empty() ? m_strDefault : strText, m_itemType, m_whitespace);
        InvokePropertySet(pObject, value, element);
    }
    *ppCursor = element.GetNextSiblingElement();
}

void CElementInfo::ElementFromXmlEnum(const CSerializationContext& context,
                                      CXmlGeneratedClass* pObject, CXmlElement** ppCursor) const
{
    const CXmlElement& element = **ppCursor;
    // A nil element leaves the property as it is, as for a primitive.
    if (!ReadNil(context, element)) {
        const std::string& strText = element.GetText();
        QnVariant value;
        value.SetI4(m_fnStringToEnum((strText.empty() ? m_strDefault : strText).c_str()));
        InvokePropertySet(pObject, value, element);
    }
    *ppCursor = element.GetNextSiblingElement();
}

} // namespace QnXmlLib16Data
