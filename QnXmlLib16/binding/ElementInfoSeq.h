#pragma once

#include "QnXmlLib16/binding/ElementInfoBase.h"

namespace QnXmlLib16Data {

// Members of a sequence. In an owner with an element of its own, a mandatory member that is not found
// throws CQnValidationException with the path of that element: "Failed to find the required child
// element [%s].", "Failed to find a suitable substitution element for [%s]." or "Failed to find the
// required element from namespace [%s].". A mandatory member whose property is empty throws
// CQnInvalidParamException "The Property [%s] is mandatory, it may not be NULL" on writing, and so
// does reading where the property holds nothing to read into, or a create function answers null.

class QNXML_API CElementInfoSeqPrimMnd : public CElementInfo
{
public:
    CElementInfoSeqPrimMnd(const char* pszName, const char* pszNamespace, int nProperty,
                           bool bNillable, ItemType itemType, const char* pszFormat,
                           CWhitespaceUtils::WhitespaceRule whitespace,
                           const CPrimitiveRestrictions& restrictions, const char* pszDefault);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
};

class QNXML_API CElementInfoSeqPrimOpt : public CElementInfo
{
public:
    CElementInfoSeqPrimOpt(const char* pszName, const char* pszNamespace, int nProperty,
                           bool bNillable, ItemType itemType, const char* pszFormat,
                           CWhitespaceUtils::WhitespaceRule whitespace,
                           const CPrimitiveRestrictions& restrictions, const char* pszDefault);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
};

class QNXML_API CElementInfoSeqEnumMnd : public CElementInfo
{
public:
    CElementInfoSeqEnumMnd(const char* pszName, const char* pszNamespace, int nProperty,
                           bool bNillable, const char* (*fnEnumToString)(int),
                           int (*fnStringToEnum)(const char*), const char* pszDefault);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
};

class QNXML_API CElementInfoSeqEnumOpt : public CElementInfo
{
public:
    CElementInfoSeqEnumOpt(const char* pszName, const char* pszNamespace, int nProperty,
                           bool bNillable, const char* (*fnEnumToString)(int),
                           int (*fnStringToEnum)(const char*), const char* pszDefault);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
};

// The child exists already: it is read in place, and fnCreate is not called. childType is the type
// of the child's class; for a pseudo child, bRequiredContent tells whether it must read something.
class QNXML_API CElementInfoSeqClsMnd : public CElementInfo
{
public:
    CElementInfoSeqClsMnd(const char* pszName, const char* pszNamespace, int nProperty,
                          XmlElementType childType, CreateFunction fnCreate, int nClassId,
                          bool bRequiredContent);

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
    bool m_bRequiredContent;
    CreateFunction m_fnCreate;
    int m_nClassId;
};

// A new child for each read, assigned once it has been read: a failure leaves the property as it
// was.
class QNXML_API CElementInfoSeqClsOpt : public CElementInfo
{
public:
    CElementInfoSeqClsOpt(const char* pszName, const char* pszNamespace, int nProperty,
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

// Fails where no element is found or fnCreateFromElement has no class for it, whatever the context
// ignores.
class QNXML_API CElementInfoSeqAbsClsMnd : public CElementInfo
{
public:
    CElementInfoSeqAbsClsMnd(const char* pszName, const char* pszNamespace, int nProperty,
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

// An element that fnCreateFromElement has no class for is left where it is.
class QNXML_API CElementInfoSeqAbsClsOpt : public CElementInfo
{
public:
    CElementInfoSeqAbsClsOpt(const char* pszName, const char* pszNamespace, int nProperty,
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

// Reads into the CElement of the property. Any name will do if the entry's is "AnyElement".
class QNXML_API CElementInfoSeqUntpdMnd : public CElementInfo
{
public:
    CElementInfoSeqUntpdMnd(const char* pszName, const char* pszNamespace, int nProperty,
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

// A new CElement for each read.
class QNXML_API CElementInfoSeqUntpdOpt : public CElementInfo
{
public:
    CElementInfoSeqUntpdOpt(const char* pszName, const char* pszNamespace, int nProperty,
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

// Reads as many elements as the collection takes. Its bounds are checked, reading and writing.
class QNXML_API CElementInfoSeqCol : public CElementInfo
{
public:
    CElementInfoSeqCol(const char* pszName, const char* pszNamespace, int nProperty);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
};

// Items of one primitive type, or texts of an enumeration.
class QNXML_API CElementInfoSeqPrimCol : public CElementInfoSeqCol
{
public:
    CElementInfoSeqPrimCol(const char* pszName, const char* pszNamespace, int nProperty);
    ~CElementInfoSeqPrimCol() override;
};

class QNXML_API CElementInfoSeqEnumCol : public CElementInfoSeqCol
{
public:
    CElementInfoSeqEnumCol(const char* pszName, const char* pszNamespace, int nProperty);
    ~CElementInfoSeqEnumCol() override;
};

// Items of a generated class; childType is the type of the item's class.
class QNXML_API CElementInfoSeqClsCol : public CElementInfoSeqCol
{
public:
    CElementInfoSeqClsCol(const char* pszName, const char* pszNamespace, int nProperty,
                          XmlElementType childType);

    void PseudoChildAttributeToXml(const CSerializationContext& context,
                                   const CXmlGeneratedClass* pObject,
                                   CXmlWriter* pWriter) const override;

protected:
    XmlElementType m_elementType;
};

class QNXML_API CElementInfoSeqAbsClsCol : public CElementInfoSeqCol
{
public:
    CElementInfoSeqAbsClsCol(const char* pszName, const char* pszNamespace, int nProperty,
                             XmlElementType childType);

    void PseudoChildAttributeToXml(const CSerializationContext& context,
                                   const CXmlGeneratedClass* pObject,
                                   CXmlWriter* pWriter) const override;

protected:
    XmlElementType m_elementType;
};

// A CElementCol. Unless the name is "AnyElement", elements of that name only are taken, in the
// namespace of the first one.
class QNXML_API CElementInfoSeqUntpdCol : public CElementInfoSeqCol
{
public:
    CElementInfoSeqUntpdCol(const char* pszName, const char* pszNamespace, int nProperty);

    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
};

} // namespace QnXmlLib16Data
