#pragma once

#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/values/ItemType.h"

#include <string>

namespace QnXmlLib16 {
class CSerializationContext;
class CXmlAttribute;
class CXmlGeneratedClass;
class CXmlObjectBase;
class CXmlWriter;
class QnVariant;
} // namespace QnXmlLib16

namespace QnXmlLib16Data {

// Describes one attribute of a generated class. Generated code makes one of a subclass for each
// attribute. Objects never change once built and may be shared by any number of threads.
class QNXML_API CAttributeInfo
{
public:
    // bOptional: the attribute may be absent. A null default is none.
    CAttributeInfo(const char* pszName, const char* pszNamespace, int nProperty, bool bOptional,
                   const char* pszDefault);
    CAttributeInfo(const CAttributeInfo&) = delete;
    CAttributeInfo& operator=(const CAttributeInfo&) = delete;
    virtual ~CAttributeInfo();

    // Writes the property's value into the element that is open, if there is something to write.
    virtual void AttributeToXml(const CSerializationContext& context,
                                const CXmlGeneratedClass* pObject, CXmlWriter* pWriter) const = 0;

    // True if the attribute is this entry's and was assigned to the property.
    virtual bool AttributeFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                                  CXmlAttribute* pAttribute) = 0;

    // Called once all attributes of an element were offered. bSeen tells whether this entry took
    // one. Throws CQnValidationException if it had to.
    virtual void Validate(const CSerializationContext& context, bool bSeen) const = 0;

    // Whether pAttribute, which may be null, goes by this entry's name, and by its namespace
    // unless the context ignores namespaces.
    bool IsThisAttribute(const CSerializationContext& context, CXmlAttribute* pAttribute) const;

    // The current value of the property; fails as InvokePropertyGet does.
    void ReadProperty(const CXmlGeneratedClass* pObject, QnVariant& value) const;

protected:
    // AccessProperty, with a CQnException from it wrapped into CQnValidationException "Failed to
    // get the property value for [%s]." or, with the attribute's path, "Failed to set the property
    // value.".
    void InvokePropertyGet(CXmlGeneratedClass* pObject, QnVariant& value) const;
    void InvokePropertySet(CXmlGeneratedClass* pObject, QnVariant& value,
                           const CXmlAttribute& attribute) const;

    // Bridges to the object's virtual operations. The object may not be null.
    static void ToXml_Int(const CXmlObjectBase* pObject, CXmlWriter* pWriter, bool bIsRoot,
                          const char* pszTargetNamespace, const CSerializationContext& context);
    static std::string GetTargetNamespace(const CXmlObjectBase* pObject);

    std::string m_strName;
    std::string m_strNamespace;
    int m_nProperty;
    bool m_bOptional;
    std::string m_strDefault;
};

} // namespace QnXmlLib16Data
