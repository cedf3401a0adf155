#pragma once

#include "QnXmlLib16/binding/AttributeInfo.h"
#include "QnXmlLib16/binding/ElementInfo.h"

// The least metadata that a bound class can do with: one class for values, one for child objects,
// one for attributes. Each takes the road of its full counterparts through the shared readers and
// writers.
namespace Model {

// A value in a sequence, mandatory or optional.
class CValueInfo : public QnXmlLib16Data::CElementInfo
{
public:
    CValueInfo(const char* pszName, const char* pszNamespace, int nProperty,
               QnXmlLib16::ItemType type, bool bMandatory, bool bNillable = false,
               const char* pszDefault = nullptr,
               const QnXmlLib16::CPrimitiveRestrictions& restrictions = {});

    bool ElementToXml(const QnXmlLib16::CSerializationContext& context,
                      const QnXmlLib16::CXmlGeneratedClass* pObject,
                      QnXmlLib16::CXmlWriter* pWriter) const override;
    bool ElementFromXml(const QnXmlLib16::CSerializationContext& context,
                        QnXmlLib16::CXmlGeneratedClass* pObject, QnXmlLib16::CXmlElement* pParent,
                        QnXmlLib16::CXmlElement** ppCursor, const char* pszNamespace,
                        QnXmlLib16::XmlElementType ownerType) override;

private:
    bool m_bMandatory;
};

// An object that the property always holds, with an element of its own or as a pseudo child.
class CChildInfo : public QnXmlLib16Data::CElementInfo
{
public:
    CChildInfo(const char* pszName, const char* pszNamespace, int nProperty,
               QnXmlLib16::XmlElementType childType);

    bool ElementToXml(const QnXmlLib16::CSerializationContext& context,
                      const QnXmlLib16::CXmlGeneratedClass* pObject,
                      QnXmlLib16::CXmlWriter* pWriter) const override;
    bool ElementFromXml(const QnXmlLib16::CSerializationContext& context,
                        QnXmlLib16::CXmlGeneratedClass* pObject, QnXmlLib16::CXmlElement* pParent,
                        QnXmlLib16::CXmlElement** ppCursor, const char* pszNamespace,
                        QnXmlLib16::XmlElementType ownerType) override;
    void PseudoChildAttributeToXml(const QnXmlLib16::CSerializationContext& context,
                                   const QnXmlLib16::CXmlGeneratedClass* pObject,
                                   QnXmlLib16::CXmlWriter* pWriter) const override;

private:
    QnXmlLib16::XmlElementType m_childType;
};

class CValueAttributeInfo : public QnXmlLib16Data::CAttributeInfo
{
public:
    CValueAttributeInfo(const char* pszName, const char* pszNamespace, int nProperty,
                        bool bOptional, QnXmlLib16::ItemType type);

    void AttributeToXml(const QnXmlLib16::CSerializationContext& context,
                        const QnXmlLib16::CXmlGeneratedClass* pObject,
                        QnXmlLib16::CXmlWriter* pWriter) const override;
    bool AttributeFromXml(const QnXmlLib16::CSerializationContext& context,
                          QnXmlLib16::CXmlGeneratedClass* pObject,
                          QnXmlLib16::CXmlAttribute* pAttribute) override;
    void Validate(const QnXmlLib16::CSerializationContext& context, bool bSeen) const override;

private:
    QnXmlLib16::ItemType m_type;
};

} // namespace Model
