#include "QnXmlLib16/collections/AttributeCol.h"

#include "QnXmlLib16/binding/XmlObjectHelper.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlElement.h"

namespace QnXmlLib16 {

CAttributeCol::CAttributeCol(const char* pszNamespace, const char* pszRestriction,
                             const char* pszTargetNamespace)
    : CInstanceMonitor("CAttributeCol"),
      m_strRestriction(pszRestriction ? pszRestriction : ""),
      m_strTargetNamespace(pszTargetNamespace ? pszTargetNamespace : "")
{
    m_strNamespace = pszNamespace ? pszNamespace : "";
    const std::string strFirst = m_strRestriction.substr(0, m_strRestriction.find(' '));
    if (m_strNamespace.empty() && strFirst.size() >= 2 && strFirst[0] != '#' && strFirst[1] != '#')
        m_strNamespace = strFirst;
}

CAttributeCol::~CAttributeCol() = default;

// Deliberate: the default namespace, where CElementCol answers the target namespace. Pinned by
// ElementConstruction.NamespacesAreThoseOfTheElement.
std::string CAttributeCol::GetTargetNamespace() const
{
    return m_strNamespace;
}

CSmartPtr<CAttribute> CAttributeCol::Add(const char* pszName, const char* pszValue,
                                         const char* pszNamespace)
{
    CXmlObjectHelper::TestNamespace(pszNamespace ? pszNamespace : "", m_strRestriction,
                                    m_strTargetNamespace);
    const CSmartPtr<CAttribute> pAttribute(new CAttribute(pszName, pszValue, pszNamespace));
    AppendItem(pAttribute.GetPtr());
    return pAttribute;
}

CSmartPtr<CAttribute> CAttributeCol::Add(const char* pszName, const char* pszValue)
{
    return Add(pszName, pszValue, m_strNamespace.c_str());
}

CSmartPtr<CAttribute> CAttributeCol::Add(const char* pszName)
{
    return Add(pszName, "", m_strNamespace.c_str());
}

// Deliberate: an attribute of any namespace is let in here, past the restriction. Pinned by
// AttributeCollection.ReadyMadeAttributesPassUntested.
CSmartPtr<CAttribute> CAttributeCol::Add(CAttribute* pAttribute)
{
    AppendItem(pAttribute);
    return pAttribute;
}

CSmartPtr<CAttribute> CAttributeCol::Item(int iIndex) const
{
    return dynamic_cast<CAttribute*>(GetNodeAtIndex(iIndex)->GetItem());
}

CSmartPtr<CAttributeCol> CAttributeCol::Clone() const
{
    CSmartPtr<CAttributeCol> pClone(new CAttributeCol(
        m_strNamespace.c_str(), m_strRestriction.c_str(), m_strTargetNamespace.c_str()));
    for (const CNode* pNode = begin(); pNode; pNode = pNode->GetNext()) {
        if (const auto* pAttribute = dynamic_cast<const CAttribute*>(pNode->GetItem()))
            pClone->Add(pAttribute->Clone().GetPtr());
    }
    return pClone;
}

void CAttributeCol::ToXml_Int(CXmlWriter* pWriter, bool /*bIsRoot*/, const char* pszTargetNamespace,
                              const CSerializationContext& context, bool /*bOptionalChoice*/) const
{
    for (const CNode* pNode = begin(); pNode; pNode = pNode->GetNext()) {
        if (pNode->GetItem()) {
            CXmlObjectBase::ToXml_Int(pNode->GetItem()->GetBase(), pWriter, false,
                                      pszTargetNamespace, context, false);
        }
    }
}

CXmlElement* CAttributeCol::FromXml_Int(CXmlElement* pParent, CXmlElement* pCurrent,
                                        const CSerializationContext& /*context*/,
                                        bool /*bOptionalChoice*/)
{
    if (!pParent)
        throw CQnInvalidParamException("The element with the attributes may not be NULL");
    for (const CXmlAttribute* pAttribute : pParent->GetAttributes()) {
        if (!CXmlObjectHelper::IsNamespaceValid(pAttribute->GetNamespaceURI(), m_strRestriction,
                                                m_strTargetNamespace)) {
            throw CQnInvalidNamespaceException(
                FormatString("Invalid Attribute [%s]. The attributes namespace is Inappropriate.",
                             pAttribute->GetLocalName().c_str()),
                pParent->GetXPath());
        }
        Add(pAttribute->GetLocalName().c_str(), pAttribute->GetValue().c_str(),
            pAttribute->GetNamespaceURI().c_str());
    }
    return pCurrent;
}

} // namespace QnXmlLib16
