#pragma once

#include "QnXmlLib16/collections/Attribute.h"
#include "QnXmlLib16/collections/XmlCollection.h"

#include <string>

namespace QnXmlLib16 {

// The attributes of wildcard content. The restriction says which namespaces may be added by name
// or read: "##any", "##other", "##local", "##targetNamespace" or a list, see
// CXmlObjectHelper::IsNamespaceValid.
class QNXML_API CAttributeCol : public CXmlCollection, public CInstanceMonitor
{
public:
    // pszNamespace is the default namespace of new attributes. Where it is empty and the first
    // token of the restriction is no keyword, that token is.
    CAttributeCol(const char* pszNamespace, const char* pszRestriction,
                  const char* pszTargetNamespace);
    ~CAttributeCol() override;

    // The default namespace, as GetNamespace() answers it too.
    std::string GetTargetNamespace() const override;

    // Each throws CQnInvalidNamespaceException for a namespace that the restriction refuses. The
    // shorter forms take the default namespace and an empty value.
    CSmartPtr<CAttribute> Add(const char* pszName, const char* pszValue, const char* pszNamespace);
    CSmartPtr<CAttribute> Add(const char* pszName, const char* pszValue);
    CSmartPtr<CAttribute> Add(const char* pszName);

    // Shares the attribute; its namespace is not tested.
    CSmartPtr<CAttribute> Add(CAttribute* pAttribute);

    // Null for a null item. Throws CQnInvalidParamException "Index %d is out of range, use 0 -
    // %d".
    CSmartPtr<CAttribute> Item(int iIndex) const;

    // A new collection of the same rules, with clones of the attributes and no listeners.
    CSmartPtr<CAttributeCol> Clone() const;

    // for (CNode* p = col.begin(); p != col.end(); p = p->GetNext())
    CNode* begin() const noexcept { return GetHeadNode(); }
    CNode* end() const noexcept { return nullptr; }

protected:
    // Writes the attributes into the start tag that is open. No count is checked.
    void ToXml_Int(CXmlWriter* pWriter, bool bIsRoot, const char* pszTargetNamespace,
                   const CSerializationContext& context, bool bOptionalChoice) const override;

    // Adds the attributes of pParent to those that are there and returns pCurrent. The first one
    // outside the restriction throws CQnInvalidNamespaceException; those before it stay.
    CXmlElement* FromXml_Int(CXmlElement* pParent, CXmlElement* pCurrent,
                             const CSerializationContext& context, bool bOptionalChoice) override;

private:
    std::string m_strRestriction;
    std::string m_strTargetNamespace;
};

} // namespace QnXmlLib16
