#pragma once

#include "QnXmlLib16/binding/ElementInfoBase.h"

namespace QnXmlLib16Data {

// Members of a choice. All are optional by themselves: that one of them be there is the rule of the
// group. Reading takes elements and answers true, or passes and answers false. Reading where the
// property holds nothing to read into, or a create function answers null, throws
// CQnInvalidParamException "The Property [%s] is mandatory, it may not be NULL".

class QNXML_API CElementInfoChoicePrimOpt : public CElementInfo
{
public:
    CElementInfoChoicePrimOpt(const char* pszName, const char* pszNamespace, int nProperty,
                              bool bNillable, ItemType itemType, const char* pszFormat,
                              CWhitespaceUtils::WhitespaceRule whitespace,
                              const CPrimitiveRestrictions& restrictions, const char* pszDefault);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
};

class QNXML_API CElementInfoChoiceEnumOpt : public CElementInfo
{
public:
    CElementInfoChoiceEnumOpt(const char* pszName, const char* pszNamespace, int nProperty,
                              bool bNillable, const char* (*fnEnumToString)(int),
                              int (*fnStringToEnum)(const char*), const char* pszDefault);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
};

// A new child, assigned before it is read, since the setter is what selects the member. One without
// an element of its own that reads nothing is taken back.
class QNXML_API CElementInfoChoiceClsOpt : public CElementInfo
{
public:
    CElementInfoChoiceClsOpt(const char* pszName, const char* pszNamespace, int nProperty,
                             XmlElementType childType, CreateFunction fnCreate, int nClassId);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
    void PseudoChildAttributeToXml(const CSerializationContext& context,
                                   const CXmlGeneratedClass* pObject,
                                   CXmlWriter* pWriter) const override;

protected:
    XmlElementType m_elementType;
    CreateFunction m_fnCreate;
    int m_nClassId;
};

// What fnCreateFromElement answers is assigned at once, null too.
class QNXML_API CElementInfoChoiceAbsClsOpt : public CElementInfo
{
public:
    CElementInfoChoiceAbsClsOpt(const char* pszName, const char* pszNamespace, int nProperty,
                                XmlElementType childType,
                                CreateFromElementFunction fnCreateFromElement);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
    void PseudoChildAttributeToXml(const CSerializationContext& context,
                                   const CXmlGeneratedClass* pObject,
                                   CXmlWriter* pWriter) const override;

protected:
    XmlElementType m_elementType;
    CreateFromElementFunction m_fnCreateFromElement;
};

// A new CElement, assigned once it has been read.
class QNXML_API CElementInfoChoiceUntpdOpt : public CElementInfo
{
public:
    CElementInfoChoiceUntpdOpt(const char* pszName, const char* pszNamespace, int nProperty,
                               const char* pszAnyNamespaces, const char* pszTargetNamespace);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;

protected:
    std::string m_strAnyNamespaces;
    std::string m_strTargetNamespace;
};

// Reads as many elements as the collection takes, then checks the bounds. They are not checked
// before writing.
class QNXML_API CElementInfoChoiceCol : public CElementInfo
{
public:
    CElementInfoChoiceCol(const char* pszName, const char* pszNamespace, int nProperty);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
};

// Items of one primitive type, or texts of an enumeration.
class QNXML_API CElementInfoChoicePrimCol : public CElementInfoChoiceCol
{
public:
    CElementInfoChoicePrimCol(const char* pszName, const char* pszNamespace, int nProperty);
    ~CElementInfoChoicePrimCol() override;
};

class QNXML_API CElementInfoChoiceEnumCol : public CElementInfoChoiceCol
{
public:
    CElementInfoChoiceEnumCol(const char* pszName, const char* pszNamespace, int nProperty);
    ~CElementInfoChoiceEnumCol() override;
};

// Items of a generated class; childType is the type of the item's class.
class QNXML_API CElementInfoChoiceClsCol : public CElementInfoChoiceCol
{
public:
    CElementInfoChoiceClsCol(const char* pszName, const char* pszNamespace, int nProperty,
                             XmlElementType childType);

    void PseudoChildAttributeToXml(const CSerializationContext& context,
                                   const CXmlGeneratedClass* pObject,
                                   CXmlWriter* pWriter) const override;

protected:
    XmlElementType m_elementType;
};

class QNXML_API CElementInfoChoiceAbsClsCol : public CElementInfoChoiceCol
{
public:
    CElementInfoChoiceAbsClsCol(const char* pszName, const char* pszNamespace, int nProperty,
                                XmlElementType childType);

    void PseudoChildAttributeToXml(const CSerializationContext& context,
                                   const CXmlGeneratedClass* pObject,
                                   CXmlWriter* pWriter) const override;

protected:
    XmlElementType m_elementType;
};

// A CElementCol. Unless the name is "AnyElement", elements of that name only are taken, in the
// namespace of the first one.
class QNXML_API CElementInfoChoiceUntpdCol : public CElementInfoChoiceCol
{
public:
    CElementInfoChoiceUntpdCol(const char* pszName, const char* pszNamespace, int nProperty);

    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
};

} // namespace QnXmlLib16Data
