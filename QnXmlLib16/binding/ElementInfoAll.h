#pragma once

#include "QnXmlLib16/binding/ElementInfoBase.h"

namespace QnXmlLib16Data {

// Members of an all group. Reading takes an element or passes; nothing fails for want of one until
// Validate(), which throws CQnValidationException "Failed to find the mandatory element [%s]." where
// the owner has an element of its own. A mandatory member whose property is empty throws
// CQnInvalidParamException "The Property [%s] is mandatory, it may not be NULL" on writing, and so
// does reading where the property holds nothing to read into, or a create function answers null.

class QNXML_API CElementInfoAllPrimMnd : public CElementInfo
{
public:
    CElementInfoAllPrimMnd(const char* pszName, const char* pszNamespace, int nProperty,
                           bool bNillable, ItemType itemType, const char* pszFormat,
                           CWhitespaceUtils::WhitespaceRule whitespace,
                           const CPrimitiveRestrictions& restrictions, const char* pszDefault);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
    bool Validate(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                  bool bWasRead, bool bIsRealElement) const override;
};

class QNXML_API CElementInfoAllPrimOpt : public CElementInfo
{
public:
    CElementInfoAllPrimOpt(const char* pszName, const char* pszNamespace, int nProperty,
                           bool bNillable, ItemType itemType, const char* pszFormat,
                           CWhitespaceUtils::WhitespaceRule whitespace,
                           const CPrimitiveRestrictions& restrictions, const char* pszDefault);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
    bool Validate(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                  bool bWasRead, bool bIsRealElement) const override;
};

class QNXML_API CElementInfoAllEnumMnd : public CElementInfo
{
public:
    CElementInfoAllEnumMnd(const char* pszName, const char* pszNamespace, int nProperty,
                           bool bNillable, const char* (*fnEnumToString)(int),
                           int (*fnStringToEnum)(const char*), const char* pszDefault);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
    bool Validate(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                  bool bWasRead, bool bIsRealElement) const override;
};

class QNXML_API CElementInfoAllEnumOpt : public CElementInfo
{
public:
    CElementInfoAllEnumOpt(const char* pszName, const char* pszNamespace, int nProperty,
                           bool bNillable, const char* (*fnEnumToString)(int),
                           int (*fnStringToEnum)(const char*), const char* pszDefault);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
    bool Validate(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                  bool bWasRead, bool bIsRealElement) const override;
};

// The child exists already: it is read in place, and fnCreate is not called. A pseudo child may be
// missing unless its type is XmlElementType_PseudoElement or bRequiredContent is set; so may a
// child with an element of its own unless bRequiredContent is set.
class QNXML_API CElementInfoAllClsMnd : public CElementInfo
{
public:
    CElementInfoAllClsMnd(const char* pszName, const char* pszNamespace, int nProperty,
                          XmlElementType childType, CreateFunction fnCreate, int nClassId,
                          bool bRequiredContent);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
    bool Validate(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                  bool bWasRead, bool bIsRealElement) const override;
    void PseudoChildAttributeToXml(const CSerializationContext& context,
                                   const CXmlGeneratedClass* pObject,
                                   CXmlWriter* pWriter) const override;

protected:
    XmlElementType m_elementType;
    CreateFunction m_fnCreate;
    int m_nClassId;
    bool m_bRequiredContent;
};

// A new child, assigned once it has been read.
class QNXML_API CElementInfoAllClsOpt : public CElementInfo
{
public:
    CElementInfoAllClsOpt(const char* pszName, const char* pszNamespace, int nProperty,
                          XmlElementType childType, CreateFunction fnCreate, int nClassId);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
    bool Validate(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                  bool bWasRead, bool bIsRealElement) const override;
    void PseudoChildAttributeToXml(const CSerializationContext& context,
                                   const CXmlGeneratedClass* pObject,
                                   CXmlWriter* pWriter) const override;

protected:
    XmlElementType m_elementType;
    CreateFunction m_fnCreate;
    int m_nClassId;
};

// The last argument is there for generated code and has no effect.
class QNXML_API CElementInfoAllAbsClsMnd : public CElementInfo
{
public:
    CElementInfoAllAbsClsMnd(const char* pszName, const char* pszNamespace, int nProperty,
                             XmlElementType childType,
                             CreateFromElementFunction fnCreateFromElement, int nUnused);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
    bool Validate(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                  bool bWasRead, bool bIsRealElement) const override;
    void PseudoChildAttributeToXml(const CSerializationContext& context,
                                   const CXmlGeneratedClass* pObject,
                                   CXmlWriter* pWriter) const override;

protected:
    XmlElementType m_elementType;
    CreateFromElementFunction m_fnCreateFromElement;
};

class QNXML_API CElementInfoAllAbsClsOpt : public CElementInfo
{
public:
    CElementInfoAllAbsClsOpt(const char* pszName, const char* pszNamespace, int nProperty,
                             XmlElementType childType,
                             CreateFromElementFunction fnCreateFromElement);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
    bool Validate(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                  bool bWasRead, bool bIsRealElement) const override;
    void PseudoChildAttributeToXml(const CSerializationContext& context,
                                   const CXmlGeneratedClass* pObject,
                                   CXmlWriter* pWriter) const override;

protected:
    XmlElementType m_elementType;
    CreateFromElementFunction m_fnCreateFromElement;
};

// Reads into the CElement of the property. Any name will do if the entry's is "AnyElement".
class QNXML_API CElementInfoAllUntpdMnd : public CElementInfo
{
public:
    CElementInfoAllUntpdMnd(const char* pszName, const char* pszNamespace, int nProperty,
                            const char* pszAnyNamespaces, const char* pszTargetNamespace);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
    bool Validate(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                  bool bWasRead, bool bIsRealElement) const override;

protected:
    std::string m_strAnyNamespaces;
    std::string m_strTargetNamespace;
};

// A new CElement.
class QNXML_API CElementInfoAllUntpdOpt : public CElementInfo
{
public:
    CElementInfoAllUntpdOpt(const char* pszName, const char* pszNamespace, int nProperty,
                            const char* pszAnyNamespaces, const char* pszTargetNamespace);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
    bool Validate(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                  bool bWasRead, bool bIsRealElement) const override;

protected:
    std::string m_strAnyNamespaces;
    std::string m_strTargetNamespace;
};

// Deliberate: a class with a collection in an all group can be written, and reading it fails once
// the elements are read, with CQnException "Not implemented, should never be called": this has no
// Validate() of its own. Pinned by EveryMember.ReadsWhatItWrites.
class QNXML_API CElementInfoAllCol : public CElementInfo
{
public:
    CElementInfoAllCol(const char* pszName, const char* pszNamespace, int nProperty);

    bool ElementToXml(const CSerializationContext& context, const CXmlGeneratedClass* pObject,
                      CXmlWriter* pWriter) const override;
    bool ElementFromXml(const CSerializationContext& context, CXmlGeneratedClass* pObject,
                        CXmlElement* pParent, CXmlElement** ppCursor, const char* pszNamespace,
                        XmlElementType ownerType) override;
};

// Items of one primitive type, or texts of an enumeration.
class QNXML_API CElementInfoAllPrimCol : public CElementInfoAllCol
{
public:
    CElementInfoAllPrimCol(const char* pszName, const char* pszNamespace, int nProperty);
    ~CElementInfoAllPrimCol() override;
};

class QNXML_API CElementInfoAllEnumCol : public CElementInfoAllCol
{
public:
    CElementInfoAllEnumCol(const char* pszName, const char* pszNamespace, int nProperty);
    ~CElementInfoAllEnumCol() override;
};

// Items of a generated class; childType is the type of the item's class.
class QNXML_API CElementInfoAllClsCol : public CElementInfoAllCol
{
public:
    CElementInfoAllClsCol(const char* pszName, const char* pszNamespace, int nProperty,
                          XmlElementType childType);

    void PseudoChildAttributeToXml(const CSerializationContext& context,
                                   const CXmlGeneratedClass* pObject,
                                   CXmlWriter* pWriter) const override;

protected:
    XmlElementType m_elementType;
};

class QNXML_API CElementInfoAllAbsClsCol : public CElementInfoAllCol
{
public:
    CElementInfoAllAbsClsCol(const char* pszName, const char* pszNamespace, int nProperty,
                             XmlElementType childType);

    void PseudoChildAttributeToXml(const CSerializationContext& context,
                                   const CXmlGeneratedClass* pObject,
                                   CXmlWriter* pWriter) const override;

protected:
    XmlElementType m_elementType;
};

// A CElementCol, which takes elements of any name.
class QNXML_API CElementInfoAllUntpdCol : public CElementInfoAllCol
{
public:
    CElementInfoAllUntpdCol(const char* pszName, const char* pszNamespace, int nProperty);
    ~CElementInfoAllUntpdCol() override;
};

} // namespace QnXmlLib16Data
