#include "QnXmlLib16/collections/ElementCol.h"

#include "QnXmlLib16/binding/XmlObjectHelper.h"
#include "QnXmlLib16/support/Exceptions.h"

namespace QnXmlLib16 {

CElementCol::CElementCol(const char* pszNamespace, const char* pszRestriction,
                         const char* pszTargetNamespace, int /*iMinOccurs*/, int /*iMaxOccurs*/)
    : CInstanceMonitor("CElementCol"),
      m_strRestriction("##any"),
      m_strDefaultNamespace(pszNamespace ? pszNamespace : ""),
      m_strTargetNamespace(pszTargetNamespace ? pszTargetNamespace : "")
{
    const std::string strRestriction(pszRestriction ? pszRestriction : "");
    CXmlObjectHelper::TestNamespace(m_strDefaultNamespace, strRestriction, m_strTargetNamespace);
    // Deliberate: the keyword as it stands becomes the namespace of elements that are added by
    // name alone. Pinned by ElementCollection.AKeywordServesAsDefaultNamespace.
    if (m_strDefaultNamespace.empty() && strRestriction.compare(0, 2, "##") == 0)
        m_strDefaultNamespace = strRestriction;
}

CElementCol::~CElementCol() = default;

// Deliberate: the namespace of new elements is not told, both answer the target namespace. Pinned
// by ElementConstruction.NamespacesAreThoseOfTheElement.
std::string CElementCol::GetTargetNamespace() const
{
    return m_strTargetNamespace;
}

std::string CElementCol::GetNamespace() const
{
    return m_strTargetNamespace;
}

CSmartPtr<CElement> CElementCol::Add(const char* pszName, const char* pszNamespace)
{
    CXmlObjectHelper::TestNamespace(pszNamespace ? pszNamespace : "", m_strRestriction,
                                    m_strTargetNamespace);
    const CSmartPtr<CElement> pElement(new CElement(pszName, pszNamespace, m_strRestriction.c_str(),
                                                    m_strTargetNamespace.c_str()));
    AppendItem(pElement.GetPtr());
    return pElement;
}

CSmartPtr<CElement> CElementCol::Add(const char* pszName)
{
    if (m_strDefaultNamespace.empty())
        throw CQnInvalidStateException("A Namespace has not been set for this Collection");
    const CSmartPtr<CElement> pElement(new CElement(pszName, m_strDefaultNamespace.c_str(),
                                                    m_strRestriction.c_str(),
                                                    m_strTargetNamespace.c_str()));
    AppendItem(pElement.GetPtr());
    return pElement;
}

CSmartPtr<CElement> CElementCol::Add(CElement* pElement)
{
    if (pElement) {
        CXmlObjectHelper::TestNamespace(pElement->GetNamespace(), m_strRestriction,
                                        m_strTargetNamespace);
    }
    AppendItem(pElement);
    return pElement;
}

CSmartPtr<CElement> CElementCol::Item(int iIndex) const
{
    return dynamic_cast<CElement*>(GetNodeAtIndex(iIndex)->GetItem());
}

CSmartPtr<CElementCol> CElementCol::Clone() const
{
    CSmartPtr<CElementCol> pClone(
        new CElementCol(m_strDefaultNamespace.c_str(), m_strRestriction.c_str(),
                        m_strTargetNamespace.c_str(), m_iMinOccurs, m_iMaxOccurs));
    for (const CNode* pNode = begin(); pNode; pNode = pNode->GetNext()) {
        if (const auto* pElement = dynamic_cast<const CElement*>(pNode->GetItem()))
            pClone->Add(pElement->Clone().GetPtr());
    }
    return pClone;
}

void CElementCol::ToXml_Int(CXmlWriter* pWriter, bool /*bIsRoot*/, const char* pszTargetNamespace,
                            const CSerializationContext& context, bool /*bOptionalChoice*/) const
{
    ValidateCount(context);
    for (const CNode* pNode = begin(); pNode; pNode = pNode->GetNext()) {
        if (pNode->GetItem()) {
            CXmlObjectBase::ToXml_Int(pNode->GetItem()->GetBase(), pWriter, false,
                                      pszTargetNamespace, context, false);
        }
    }
}

CXmlElement* CElementCol::FromXml_Int(CXmlElement* /*pParent*/, CXmlElement* pCurrent,
                                      const CSerializationContext& /*context*/,
                                      bool /*bOptionalChoice*/)
{
    return CElement::ReadSiblings(*this, pCurrent, nullptr, nullptr);
}

CXmlElement* CElementCol::FromXmlLockElementName_Int(
    const std::string& strName, const std::string& strNamespace, CXmlElement* /*pParent*/,
    CXmlElement* pCurrent, const CSerializationContext& /*context*/, bool /*bOptionalChoice*/)
{
    return CElement::ReadSiblings(*this, pCurrent, &strName, &strNamespace);
}

} // namespace QnXmlLib16
