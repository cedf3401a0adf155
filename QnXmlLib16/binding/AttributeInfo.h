#pragma once

#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/validation/PrimitiveRestrictions.h"
#include "QnXmlLib16/validation/WhitespaceUtils.h"
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

protected:
    // What the attributes with a value of their own share.

    // Whether there is something to write. A nil value counts as none, and comes back as none; one
    // that is mandatory is for the conversion to refuse.
    bool ReadValue(const CXmlGeneratedClass* pObject, QnVariant& value) const;
    // Whether the context leaves out an optional attribute of this text, its default.
    bool IsLeftOut(const CSerializationContext& context, const std::string& strText) const;
    void ValidateSeen(bool bSeen) const;

    std::string m_strName;
    std::string m_strNamespace;
    int m_nProperty;
    bool m_bOptional;
    std::string m_strDefault;
};

// An attribute with a typed value. Its facets are checked on writing only, and reading compares
// the namespace even if the context ignores namespaces.
class QNXML_API CAttributeInfoPrimitive : public CAttributeInfo
{
public:
    // A null format is none.
    CAttributeInfoPrimitive(const char* pszName, const char* pszNamespace, int nProperty,
                            bool bOptional, ItemType itemType, const char* pszFormat,
                            CWhitespaceUtils::WhitespaceRule whitespace,
                            const CPrimitiveRestrictions& restrictions, const char* pszDefault);

    void AttributeToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                        CXmlWriter* pWriter) const override;
    bool AttributeFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                          CXmlAttribute* pAttribute) override;
    // "Failed to find the required Attribute [%s]."
    void Validate(const CSerializationContext& context, bool bSeen) const override;

protected:
    CPrimitiveRestrictions m_restrictions;
    ItemType m_itemType;
    std::string m_strFormat;
    CWhitespaceUtils::WhitespaceRule m_whitespace;

private:
    // The value with this text, checked unless it is left out.
    void WriteValue(const CSerializationContext& context, const QnVariant& value,
                    const std::string& strText, CXmlWriter* pWriter) const;
};

// An attribute with the text of an enumeration. A value that fnEnumToString answers null for is
// not written, though the attribute be mandatory.
class QNXML_API CAttributeInfoEnum : public CAttributeInfo
{
public:
    CAttributeInfoEnum(const char* pszName, const char* pszNamespace, int nProperty, bool bOptional,
                       const char* (*fnEnumToString)(int), int (*fnStringToEnum)(const char*),
                       const char* pszDefault);

    void AttributeToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                        CXmlWriter* pWriter) const override;
    bool AttributeFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                          CXmlAttribute* pAttribute) override;
    // "Failed to find the required Attribute [%s]."
    void Validate(const CSerializationContext& context, bool bSeen) const override;

protected:
    int (*m_fnStringToEnum)(const char*);
    const char* (*m_fnEnumToString)(int);
};

// Wildcard attributes: every attribute whose namespace the list admits goes into the property's
// CAttributeCol. Typed entries win if they come first in the table.
class QNXML_API CAttributeInfoAny : public CAttributeInfo
{
public:
    // pszAnyNamespaces is a restriction as CXmlObjectHelper::IsNamespaceValid takes it.
    CAttributeInfoAny(const char* pszName, const char* pszNamespace, int nProperty, bool bOptional,
                      const char* pszDefault, const char* pszAnyNamespaces,
                      const char* pszTargetNamespace);

    void AttributeToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                        CXmlWriter* pWriter) const override;
    // Throws CQnException "Serialization Data Error : The collection should be a CAttributeCol, it
    // was not!" if the property holds anything else, and CQnInvalidNamespaceException for an
    // attribute that the list admits and the collection's own restriction does not.
    bool AttributeFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                          CXmlAttribute* pAttribute) override;
    // Nothing is ever missing.
    void Validate(const CSerializationContext& context, bool bSeen) const override;

protected:
    std::string m_strAnyNamespaces;
    std::string m_strTargetNamespace;
};

} // namespace QnXmlLib16Data
