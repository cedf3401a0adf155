#pragma once

#include "QnXmlLib16/binding/AttributeInfo.h"
#include "QnXmlLib16/values/QnVariant.h"
#include "QnXmlLib16/xml/XmlAttribute.h"

namespace Model {

inline constexpr auto kCollapse = QnXmlLib16::CWhitespaceUtils::WhitespaceRule_Collapse;

// An attribute without facets. Heeds IgnoreNamespaces, as the library's own do for enumerations alone.
class CValueAttributeInfo : public QnXmlLib16Data::CAttributeInfoPrimitive
{
public:
    CValueAttributeInfo(const char* pszName, const char* pszNamespace, int nProperty,
                        bool bOptional, QnXmlLib16::ItemType type)
        : CAttributeInfoPrimitive(pszName, pszNamespace, nProperty, bOptional, type, nullptr,
                                  kCollapse, {}, nullptr)
    {}

    bool AttributeFromXml(const QnXmlLib16::CSerializationContext& context,
                          QnXmlLib16::CXmlGeneratedClass* pObject,
                          QnXmlLib16::CXmlAttribute* pAttribute) override
    {
        if (!IsThisAttribute(context, pAttribute))
            return false;
        QnXmlLib16::QnVariant value;
        value.FromString(pAttribute->GetValue(), m_itemType, kCollapse);
        InvokePropertySet(pObject, value, *pAttribute);
        return true;
    }
};

} // namespace Model
