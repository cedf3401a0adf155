// The upper half of CXmlElement and CXmlAttribute: what they ask their document.

#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "QnXmlLib16/xml/internal/XmlNodeStore.h"

#include <map>
#include <utility>

namespace QnXmlLib16 {

namespace {

std::string GetPrefix(const CXmlDocument* pDocument, const std::string& strNamespace)
{
    return pDocument && !strNamespace.empty()
               ? pDocument->LookupAliasFromNamespace(strNamespace.c_str())
               : std::string();
}

} // namespace

// Builds paths; keeps the prefixed name of each name that it meets, so that a path costs one look
// at each child of every ancestor.
class QNXML_PRIVATE CXmlPathBuilder
{
public:
    const std::string& GetQName(const CXmlElement& element);
    void AppendNameWithPredicate(std::string& strPath, const CXmlElement& element);
    void AppendPath(std::string& strPath, const CXmlElement& element);

private:
    using CKey = std::pair<const CXmlDocument*, const CXmlName*>;
    std::map<CKey, std::string> m_mapQNames;
};

const std::string& CXmlPathBuilder::GetQName(const CXmlElement& element)
{
    const auto [it, bNew] =
        m_mapQNames.try_emplace({element.GetDocument(), element.m_pName.GetPtr()});
    if (bNew)
        it->second = element.GetQName();
    return it->second;
}

void CXmlPathBuilder::AppendNameWithPredicate(std::string& strPath, const CXmlElement& element)
{
    const std::string& strQName = GetQName(element);
    strPath += strQName;
    if (!element.m_pParent)
        return;
    long iPosition = 0;
    long iCount = 0;
    for (const CXmlElement* pChild = element.m_pParent->GetFirstElement(); pChild;
         pChild = pChild->GetNextSiblingElement()) {
        const bool bSameName =
            pChild == &element ||
            (pChild->m_pName == element.m_pName && pChild->m_pStore == element.m_pStore) ||
            GetQName(*pChild) == strQName;
        iCount += bSameName;
        if (pChild == &element)
            iPosition = iCount;
    }
    if (iPosition != 0 && iCount > 1)
        strPath.append("[").append(std::to_string(iPosition)).append("]");
}

void CXmlPathBuilder::AppendPath(std::string& strPath, const CXmlElement& element)
{
    std::vector<const CXmlElement*> vecSteps;
    for (const CXmlElement* pStep = &element; pStep; pStep = pStep->m_pParent)
        vecSteps.push_back(pStep);
    for (auto it = vecSteps.rbegin(); it != vecSteps.rend(); ++it) {
        strPath += '/';
        AppendNameWithPredicate(strPath, **it);
    }
}

CXmlElement::CXmlElement(const CXmlDocument* pDocument, const CXmlElement* pParent)
    : CXmlElement(pDocument ? pDocument->m_pStore.GetPtr() : nullptr, pParent, nullptr)
{}

std::string CXmlElement::GetQName() const
{
    std::string strName = GetPrefix(GetDocument(), GetNamespaceURI());
    if (!strName.empty())
        strName += ':';
    return strName += GetLocalName();
}

std::string CXmlElement::GetNameWithPredicate() const
{
    std::string strName;
    CXmlPathBuilder().AppendNameWithPredicate(strName, *this);
    return strName;
}

std::string CXmlElement::GetXPath() const
{
    std::string strPath;
    CXmlPathBuilder().AppendPath(strPath, *this);
    return strPath;
}

std::string CXmlAttribute::GetXPath() const
{
    std::string strPath;
    if (m_pElement) {
        strPath = m_pElement->GetXPath() += '/';
        // Deliberate: the prefix stands in front of the at sign, "/a/xsi:@type". Callers match on
        // this form. Pinned by TreePaths.ThePrefixOfAnAttributeStandsInFrontOfTheAtSign.
        const std::string strPrefix = GetPrefix(m_pElement->GetDocument(), GetNamespaceURI());
        if (!strPrefix.empty())
            strPath.append(strPrefix).append(":");
    }
    return strPath.append("@").append(GetLocalName());
}

} // namespace QnXmlLib16
