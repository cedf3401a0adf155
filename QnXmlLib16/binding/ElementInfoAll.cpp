#include "QnXmlLib16/binding/ElementInfoAll.h"

#include "QnXmlLib16/binding/internal/ElementInfoSteps.h"

namespace QnXmlLib16Data {

CElementInfoAllPrimMnd::CElementInfoAllPrimMnd(const char* pszName, const char* pszNamespace,
                                               int nProperty, bool bNillable, ItemType itemType,
                                               const char* pszFormat,
                                               CWhitespaceUtils::WhitespaceRule whitespace,
                                               const CPrimitiveRestrictions& restrictions,
                                               const char* pszDefault)
    : CElementInfo(pszName, pszNamespace, nProperty, bNillable, itemType, pszFormat, whitespace,
                   restrictions, pszDefault)
{}

bool CElementInfoAllPrimMnd::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* pObject,
                                          CXmlWriter* pWriter) const
{
    return Steps::Mandatory(*this, ElementToXmlPrim(context, pObject, pWriter));
}

bool CElementInfoAllPrimMnd::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                            CXmlElement** ppCursor, const char* pszNamespace,
                                            XmlElementType ownerType)
{
    return Steps::Value(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                        Steps::kPrim);
}

bool CElementInfoAllPrimMnd::Validate(const CSerializationContext&, const CXmlGeneratedClass*,
                                      bool bWasRead, bool bIsRealElement) const
{
    return Steps::ValidateMandatory(*this, bWasRead, bIsRealElement);
}

CElementInfoAllPrimOpt::CElementInfoAllPrimOpt(const char* pszName, const char* pszNamespace,
                                               int nProperty, bool bNillable, ItemType itemType,
                                               const char* pszFormat,
                                               CWhitespaceUtils::WhitespaceRule whitespace,
                                               const CPrimitiveRestrictions& restrictions,
                                               const char* pszDefault)
    : CElementInfo(pszName, pszNamespace, nProperty, bNillable, itemType, pszFormat, whitespace,
                   restrictions, pszDefault)
{}

bool CElementInfoAllPrimOpt::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* pObject,
                                          CXmlWriter* pWriter) const
{
    return ElementToXmlPrim(context, pObject, pWriter);
}

bool CElementInfoAllPrimOpt::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                            CXmlElement** ppCursor, const char* pszNamespace,
                                            XmlElementType ownerType)
{
    return Steps::Value(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                        Steps::kPrim);
}

bool CElementInfoAllPrimOpt::Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool,
                                      bool) const
{
    return true;
}

CElementInfoAllEnumMnd::CElementInfoAllEnumMnd(const char* pszName, const char* pszNamespace,
                                               int nProperty, bool bNillable,
                                               const char* (*fnEnumToString)(int),
                                               int (*fnStringToEnum)(const char*),
                                               const char* pszDefault)
    : CElementInfo(pszName, pszNamespace, nProperty, bNillable, fnEnumToString, fnStringToEnum,
                   pszDefault)
{}

bool CElementInfoAllEnumMnd::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* pObject,
                                          CXmlWriter* pWriter) const
{
    return Steps::Mandatory(*this, ElementToXmlEnum(context, pObject, pWriter, m_fnEnumToString));
}

bool CElementInfoAllEnumMnd::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                            CXmlElement** ppCursor, const char* pszNamespace,
                                            XmlElementType ownerType)
{
    return Steps::Value(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                        Steps::kEnum);
}

bool CElementInfoAllEnumMnd::Validate(const CSerializationContext&, const CXmlGeneratedClass*,
                                      bool bWasRead, bool bIsRealElement) const
{
    return Steps::ValidateMandatory(*this, bWasRead, bIsRealElement);
}

CElementInfoAllEnumOpt::CElementInfoAllEnumOpt(const char* pszName, const char* pszNamespace,
                                               int nProperty, bool bNillable,
                                               const char* (*fnEnumToString)(int),
                                               int (*fnStringToEnum)(const char*),
                                               const char* pszDefault)
    : CElementInfo(pszName, pszNamespace, nProperty, bNillable, fnEnumToString, fnStringToEnum,
                   pszDefault)
{}

bool CElementInfoAllEnumOpt::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* pObject,
                                          CXmlWriter* pWriter) const
{
    return ElementToXmlEnum(context, pObject, pWriter, m_fnEnumToString);
}

bool CElementInfoAllEnumOpt::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                            CXmlElement** ppCursor, const char* pszNamespace,
                                            XmlElementType ownerType)
{
    return Steps::Value(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                        Steps::kEnum);
}

bool CElementInfoAllEnumOpt::Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool,
                                      bool) const
{
    return true;
}

CElementInfoAllClsMnd::CElementInfoAllClsMnd(const char* pszName, const char* pszNamespace,
                                             int nProperty, XmlElementType childType,
                                             CreateFunction fnCreate, int nClassId,
                                             bool bRequiredContent)
    : CElementInfo(pszName, pszNamespace, nProperty),
      m_elementType(childType),
      m_fnCreate(fnCreate),
      m_nClassId(nClassId),
      m_bRequiredContent(bRequiredContent)
{}

bool CElementInfoAllClsMnd::ElementToXml(const CSerializationContext& context,
                                         const CXmlGeneratedClass* pObject,
                                         CXmlWriter* pWriter) const
{
    return Steps::Mandatory(*this, ElementToXmlCls(context, pObject, pWriter, false));
}

bool CElementInfoAllClsMnd::ElementFromXml(const CSerializationContext& context,
                                           CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                           CXmlElement** ppCursor, const char* pszNamespace,
                                           XmlElementType ownerType)
{
    return Steps::HeldChild(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                            m_elementType);
}

bool CElementInfoAllClsMnd::Validate(const CSerializationContext&, const CXmlGeneratedClass*,
                                     bool bWasRead, bool bIsRealElement) const
{
    const bool bMayBeMissing = m_elementType != XmlElementType_PseudoElement && !m_bRequiredContent;
    return (bMayBeMissing && bIsRealElement) ||
           Steps::ValidateMandatory(*this, bWasRead, bIsRealElement);
}

void CElementInfoAllClsMnd::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                      const CXmlGeneratedClass* pObject,
                                                      CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoAllClsOpt::CElementInfoAllClsOpt(const char* pszName, const char* pszNamespace,
                                             int nProperty, XmlElementType childType,
                                             CreateFunction fnCreate, int nClassId)
    : CElementInfo(pszName, pszNamespace, nProperty),
      m_elementType(childType),
      m_fnCreate(fnCreate),
      m_nClassId(nClassId)
{}

bool CElementInfoAllClsOpt::ElementToXml(const CSerializationContext& context,
                                         const CXmlGeneratedClass* pObject,
                                         CXmlWriter* pWriter) const
{
    return ElementToXmlCls(context, pObject, pWriter, false);
}

bool CElementInfoAllClsOpt::ElementFromXml(const CSerializationContext& context,
                                           CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                           CXmlElement** ppCursor, const char* pszNamespace,
                                           XmlElementType ownerType)
{
    return Steps::NewChild(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                           m_elementType, Steps::Maker(m_fnCreate, m_nClassId));
}

bool CElementInfoAllClsOpt::Validate(const CSerializationContext&, const CXmlGeneratedClass*, bool,
                                     bool) const
{
    return true;
}

void CElementInfoAllClsOpt::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                      const CXmlGeneratedClass* pObject,
                                                      CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoAllAbsClsMnd::CElementInfoAllAbsClsMnd(const char* pszName, const char* pszNamespace,
                                                   int nProperty, XmlElementType childType,
                                                   CreateFromElementFunction fnCreateFromElement,
                                                   int)
    : CElementInfo(pszName, pszNamespace, nProperty),
      m_elementType(childType),
      m_fnCreateFromElement(fnCreateFromElement)
{}

bool CElementInfoAllAbsClsMnd::ElementToXml(const CSerializationContext& context,
                                            const CXmlGeneratedClass* pObject,
                                            CXmlWriter* pWriter) const
{
    return Steps::Mandatory(*this, ElementToXmlCls(context, pObject, pWriter, false));
}

bool CElementInfoAllAbsClsMnd::ElementFromXml(const CSerializationContext& context,
                                              CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                              CXmlElement** ppCursor, const char* pszNamespace,
                                              XmlElementType ownerType)
{
    return Steps::NewChild(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                           m_elementType, Steps::Maker(m_fnCreateFromElement));
}

bool CElementInfoAllAbsClsMnd::Validate(const CSerializationContext&, const CXmlGeneratedClass*,
                                        bool bWasRead, bool bIsRealElement) const
{
    return Steps::ValidateMandatory(*this, bWasRead, bIsRealElement);
}

void CElementInfoAllAbsClsMnd::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* pObject,
                                                         CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoAllAbsClsOpt::CElementInfoAllAbsClsOpt(const char* pszName, const char* pszNamespace,
                                                   int nProperty, XmlElementType childType,
                                                   CreateFromElementFunction fnCreateFromElement)
    : CElementInfo(pszName, pszNamespace, nProperty),
      m_elementType(childType),
      m_fnCreateFromElement(fnCreateFromElement)
{}

bool CElementInfoAllAbsClsOpt::ElementToXml(const CSerializationContext& context,
                                            const CXmlGeneratedClass* pObject,
                                            CXmlWriter* pWriter) const
{
    return ElementToXmlCls(context, pObject, pWriter, false);
}

bool CElementInfoAllAbsClsOpt::ElementFromXml(const CSerializationContext& context,
                                              CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                              CXmlElement** ppCursor, const char* pszNamespace,
                                              XmlElementType ownerType)
{
    return Steps::NewChild(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                           m_elementType, Steps::Maker(m_fnCreateFromElement));
}

bool CElementInfoAllAbsClsOpt::Validate(const CSerializationContext&, const CXmlGeneratedClass*,
                                        bool, bool) const
{
    return true;
}

void CElementInfoAllAbsClsOpt::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* pObject,
                                                         CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoAllUntpdMnd::CElementInfoAllUntpdMnd(const char* pszName, const char* pszNamespace,
                                                 int nProperty, const char* pszAnyNamespaces,
                                                 const char* pszTargetNamespace)
    : CElementInfo(pszName, pszNamespace, nProperty),
      m_strAnyNamespaces(pszAnyNamespaces ? pszAnyNamespaces : ""),
      m_strTargetNamespace(pszTargetNamespace ? pszTargetNamespace : "")
{}

bool CElementInfoAllUntpdMnd::ElementToXml(const CSerializationContext& context,
                                           const CXmlGeneratedClass* pObject,
                                           CXmlWriter* pWriter) const
{
    return Steps::Mandatory(*this, ElementToXmlCls(context, pObject, pWriter, false));
}

bool CElementInfoAllUntpdMnd::ElementFromXml(const CSerializationContext& context,
                                             CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                             CXmlElement** ppCursor, const char* pszNamespace,
                                             XmlElementType ownerType)
{
    return Steps::HeldWildcard(*this,
                               {context, pObject, pParent, ppCursor, pszNamespace, ownerType});
}

bool CElementInfoAllUntpdMnd::Validate(const CSerializationContext&, const CXmlGeneratedClass*,
                                       bool bWasRead, bool bIsRealElement) const
{
    return Steps::ValidateMandatory(*this, bWasRead, bIsRealElement);
}

CElementInfoAllUntpdOpt::CElementInfoAllUntpdOpt(const char* pszName, const char* pszNamespace,
                                                 int nProperty, const char* pszAnyNamespaces,
                                                 const char* pszTargetNamespace)
    : CElementInfo(pszName, pszNamespace, nProperty),
      m_strAnyNamespaces(pszAnyNamespaces ? pszAnyNamespaces : ""),
      m_strTargetNamespace(pszTargetNamespace ? pszTargetNamespace : "")
{}

bool CElementInfoAllUntpdOpt::ElementToXml(const CSerializationContext& context,
                                           const CXmlGeneratedClass* pObject,
                                           CXmlWriter* pWriter) const
{
    return ElementToXmlCls(context, pObject, pWriter, false);
}

bool CElementInfoAllUntpdOpt::ElementFromXml(const CSerializationContext& context,
                                             CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                             CXmlElement** ppCursor, const char* pszNamespace,
                                             XmlElementType ownerType)
{
    return Steps::NewWildcard(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                              m_strAnyNamespaces, m_strTargetNamespace);
}

bool CElementInfoAllUntpdOpt::Validate(const CSerializationContext&, const CXmlGeneratedClass*,
                                       bool, bool) const
{
    return true;
}

CElementInfoAllCol::CElementInfoAllCol(const char* pszName, const char* pszNamespace, int nProperty)
    : CElementInfo(pszName, pszNamespace, nProperty)
{}

bool CElementInfoAllCol::ElementToXml(const CSerializationContext& context,
                                      const CXmlGeneratedClass* pObject, CXmlWriter* pWriter) const
{
    return Steps::WriteCheckedCollection(*this, context, pObject, pWriter);
}

bool CElementInfoAllCol::ElementFromXml(const CSerializationContext& context,
                                        CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                        CXmlElement** ppCursor, const char* pszNamespace,
                                        XmlElementType ownerType)
{
    return Steps::CollectionInAll(*this,
                                  {context, pObject, pParent, ppCursor, pszNamespace, ownerType});
}

CElementInfoAllPrimCol::CElementInfoAllPrimCol(const char* pszName, const char* pszNamespace,
                                               int nProperty)
    : CElementInfoAllCol(pszName, pszNamespace, nProperty)
{}

CElementInfoAllPrimCol::~CElementInfoAllPrimCol() = default;

CElementInfoAllEnumCol::CElementInfoAllEnumCol(const char* pszName, const char* pszNamespace,
                                               int nProperty)
    : CElementInfoAllCol(pszName, pszNamespace, nProperty)
{}

CElementInfoAllEnumCol::~CElementInfoAllEnumCol() = default;

CElementInfoAllClsCol::CElementInfoAllClsCol(const char* pszName, const char* pszNamespace,
                                             int nProperty, XmlElementType childType)
    : CElementInfoAllCol(pszName, pszNamespace, nProperty), m_elementType(childType)
{}

void CElementInfoAllClsCol::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                      const CXmlGeneratedClass* pObject,
                                                      CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoAllAbsClsCol::CElementInfoAllAbsClsCol(const char* pszName, const char* pszNamespace,
                                                   int nProperty, XmlElementType childType)
    : CElementInfoAllCol(pszName, pszNamespace, nProperty), m_elementType(childType)
{}

void CElementInfoAllAbsClsCol::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* pObject,
                                                         CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoAllUntpdCol::CElementInfoAllUntpdCol(const char* pszName, const char* pszNamespace,
                                                 int nProperty)
    : CElementInfoAllCol(pszName, pszNamespace, nProperty)
{}

CElementInfoAllUntpdCol::~CElementInfoAllUntpdCol() = default;

} // namespace QnXmlLib16Data
