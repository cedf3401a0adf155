#pragma once

#include "QnXmlLib16/binding/XmlObjectBase.h"
#include "QnXmlLib16/support/InstanceMonitor.h"
#include "QnXmlLib16/support/SmartPtr.h"

#include <string>

namespace QnXmlLib16 {

// One attribute of wildcard content: a name, a value and a namespace, none of them checked.
// Attributes are read by their collection; reading one by itself is refused.
class QNXML_API CAttribute : public CXmlObjectBase, public CInstanceMonitor
{
public:
    CAttribute(const char* pszName, const char* pszValue, const char* pszNamespace);
    ~CAttribute() override;

    using CXmlObjectBase::GetBase;
    CXmlObjectBase* GetBase() override;

    // Both answer the namespace of the attribute.
    std::string GetTargetNamespace() const override;
    std::string GetNamespace() const override;

    CSmartPtr<CAttribute> Clone() const;

    // The local name.
    const std::string& GetName() const noexcept { return m_strName; }
    void SetName(const char* pszName);
    const std::string& GetValue() const noexcept { return m_strValue; }
    void SetValue(const char* pszValue);
    // Not tested against the restriction of the collection that the attribute is in.
    void SetNamespace(const char* pszNamespace);

    // Called by the setters before they change anything; these do nothing.
    void FireOnChangeName(const char* pszName);
    void FireOnChangeNamespace(const char* pszNamespace);

protected:
    void ToXml_Int(CXmlWriter* pWriter, bool bIsRoot, const char* pszTargetNamespace,
                   const CSerializationContext& context, bool bOptionalChoice) const override;

    // Throws CQnException "This should be done by the collection".
    CXmlElement* FromXml_Int(CXmlElement* pParent, CXmlElement* pCurrent,
                             const CSerializationContext& context, bool bOptionalChoice) override;

private:
    std::string m_strName;
    std::string m_strValue;
    std::string m_strNamespace;
};

} // namespace QnXmlLib16
