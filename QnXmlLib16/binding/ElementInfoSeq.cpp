#include "QnXmlLib16/binding/ElementInfoSeq.h"

#include "QnXmlLib16/binding/internal/ElementInfoSteps.h"

namespace QnXmlLib16Data {

CElementInfoSeqPrimMnd::CElementInfoSeqPrimMnd(const char* pszName, const char* pszNamespace,
                                               int nProperty, bool bNillable, ItemType itemType,
                                               const char* pszFormat,
                                               CWhitespaceUtils::WhitespaceRule whitespace,
                                               const CPrimitiveRestrictions& restrictions,
                                               const char* pszDefault)
    : CElementInfo(pszName, pszNamespace, nProperty, bNillable, itemType, pszFormat, whitespace,
                   restrictions, pszDefault)
{}

bool CElementInfoSeqPrimMnd::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* pObject,
                                          CXmlWriter* pWriter) const
{
    return Steps::Mandatory(*this, ElementToXmlPrim(context, pObject, pWriter));
}

bool CElementInfoSeqPrimMnd::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                            CXmlElement** ppCursor, const char* pszNamespace,
                                            XmlElementType ownerType)
{
    return Steps::MandatoryValueInSequence(
        *this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType}, Steps::kPrim);
}

CElementInfoSeqPrimOpt::CElementInfoSeqPrimOpt(const char* pszName, const char* pszNamespace,
                                               int nProperty, bool bNillable, ItemType itemType,
                                               const char* pszFormat,
                                               CWhitespaceUtils::WhitespaceRule whitespace,
                                               const CPrimitiveRestrictions& restrictions,
                                               const char* pszDefault)
    : CElementInfo(pszName, pszNamespace, nProperty, bNillable, itemType, pszFormat, whitespace,
                   restrictions, pszDefault)
{}

bool CElementInfoSeqPrimOpt::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* pObject,
                                          CXmlWriter* pWriter) const
{
    return ElementToXmlPrim(context, pObject, pWriter);
}

bool CElementInfoSeqPrimOpt::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                            CXmlElement** ppCursor, const char* pszNamespace,
                                            XmlElementType ownerType)
{
    Steps::Value(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                 Steps::kPrim);
    return true;
}

CElementInfoSeqEnumMnd::CElementInfoSeqEnumMnd(const char* pszName, const char* pszNamespace,
                                               int nProperty, bool bNillable,
                                               const char* (*fnEnumToString)(int),
                                               int (*fnStringToEnum)(const char*),
                                               const char* pszDefault)
    : CElementInfo(pszName, pszNamespace, nProperty, bNillable, fnEnumToString, fnStringToEnum,
                   pszDefault)
{}

bool CElementInfoSeqEnumMnd::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* pObject,
                                          CXmlWriter* pWriter) const
{
    return Steps::Mandatory(*this, ElementToXmlEnum(context, pObject, pWriter, m_fnEnumToString));
}

bool CElementInfoSeqEnumMnd::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                            CXmlElement** ppCursor, const char* pszNamespace,
                                            XmlElementType ownerType)
{
    return Steps::MandatoryValueInSequence(
        *this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType}, Steps::kEnum);
}

CElementInfoSeqEnumOpt::CElementInfoSeqEnumOpt(const char* pszName, const char* pszNamespace,
                                               int nProperty, bool bNillable,
                                               const char* (*fnEnumToString)(int),
                                               int (*fnStringToEnum)(const char*),
                                               const char* pszDefault)
    : CElementInfo(pszName, pszNamespace, nProperty, bNillable, fnEnumToString, fnStringToEnum,
                   pszDefault)
{}

bool CElementInfoSeqEnumOpt::ElementToXml(const CSerializationContext& context,
                                          const CXmlGeneratedClass* pObject,
                                          CXmlWriter* pWriter) const
{
    return ElementToXmlEnum(context, pObject, pWriter, m_fnEnumToString);
}

bool CElementInfoSeqEnumOpt::ElementFromXml(const CSerializationContext& context,
                                            CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                            CXmlElement** ppCursor, const char* pszNamespace,
                                            XmlElementType ownerType)
{
    Steps::Value(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                 Steps::kEnum);
    return true;
}

CElementInfoSeqClsMnd::CElementInfoSeqClsMnd(const char* pszName, const char* pszNamespace,
                                             int nProperty, XmlElementType childType,
                                             CreateFunction fnCreate, int nClassId,
                                             bool bRequiredContent)
    : CElementInfo(pszName, pszNamespace, nProperty),
      m_elementType(childType),
      m_bRequiredContent(bRequiredContent),
      m_fnCreate(fnCreate),
      m_nClassId(nClassId)
{
    if (m_elementType != XmlElementType_Element)
        m_trait = Trait::HeldGroup;
}

bool CElementInfoSeqClsMnd::ElementToXml(const CSerializationContext& context,
                                         const CXmlGeneratedClass* pObject,
                                         CXmlWriter* pWriter) const
{
    return Steps::Mandatory(*this, ElementToXmlCls(context, pObject, pWriter, false));
}

bool CElementInfoSeqClsMnd::ElementFromXml(const CSerializationContext& context,
                                           CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                           CXmlElement** ppCursor, const char* pszNamespace,
                                           XmlElementType ownerType)
{
    return Steps::HeldChildInSequence(
        *this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType}, m_elementType,
        m_bRequiredContent);
}

void CElementInfoSeqClsMnd::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                      const CXmlGeneratedClass* pObject,
                                                      CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoSeqClsOpt::CElementInfoSeqClsOpt(const char* pszName, const char* pszNamespace,
                                             int nProperty, XmlElementType childType,
                                             CreateFunction fnCreate, int nClassId)
    : CElementInfo(pszName, pszNamespace, nProperty),
      m_elementType(childType),
      m_fnCreate(fnCreate),
      m_nClassId(nClassId)
{}

bool CElementInfoSeqClsOpt::ElementToXml(const CSerializationContext& context,
                                         const CXmlGeneratedClass* pObject,
                                         CXmlWriter* pWriter) const
{
    return ElementToXmlCls(context, pObject, pWriter, false);
}

bool CElementInfoSeqClsOpt::ElementFromXml(const CSerializationContext& context,
                                           CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                           CXmlElement** ppCursor, const char* pszNamespace,
                                           XmlElementType ownerType)
{
    Steps::NewChild(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                    m_elementType, Steps::Maker(m_fnCreate, m_nClassId));
    return true;
}

void CElementInfoSeqClsOpt::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                      const CXmlGeneratedClass* pObject,
                                                      CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoSeqAbsClsMnd::CElementInfoSeqAbsClsMnd(const char* pszName, const char* pszNamespace,
                                                   int nProperty, XmlElementType childType,
                                                   CreateFromElementFunction fnCreateFromElement)
    : CElementInfo(pszName, pszNamespace, nProperty),
      m_elementType(childType),
      m_fnCreateFromElement(fnCreateFromElement)
{}

bool CElementInfoSeqAbsClsMnd::ElementToXml(const CSerializationContext& context,
                                            const CXmlGeneratedClass* pObject,
                                            CXmlWriter* pWriter) const
{
    return Steps::Mandatory(*this, ElementToXmlCls(context, pObject, pWriter, false));
}

bool CElementInfoSeqAbsClsMnd::ElementFromXml(const CSerializationContext& context,
                                              CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                              CXmlElement** ppCursor, const char* pszNamespace,
                                              XmlElementType ownerType)
{
    return Steps::SubstituteInSequence(
        *this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
        Steps::Maker(m_fnCreateFromElement));
}

void CElementInfoSeqAbsClsMnd::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* pObject,
                                                         CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoSeqAbsClsOpt::CElementInfoSeqAbsClsOpt(const char* pszName, const char* pszNamespace,
                                                   int nProperty, XmlElementType childType,
                                                   CreateFromElementFunction fnCreateFromElement)
    : CElementInfo(pszName, pszNamespace, nProperty),
      m_elementType(childType),
      m_fnCreateFromElement(fnCreateFromElement)
{}

bool CElementInfoSeqAbsClsOpt::ElementToXml(const CSerializationContext& context,
                                            const CXmlGeneratedClass* pObject,
                                            CXmlWriter* pWriter) const
{
    return ElementToXmlCls(context, pObject, pWriter, false);
}

bool CElementInfoSeqAbsClsOpt::ElementFromXml(const CSerializationContext& context,
                                              CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                              CXmlElement** ppCursor, const char* pszNamespace,
                                              XmlElementType ownerType)
{
    Steps::NewChild(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                    XmlElementType_Element, Steps::Maker(m_fnCreateFromElement));
    return true;
}

void CElementInfoSeqAbsClsOpt::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* pObject,
                                                         CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoSeqUntpdMnd::CElementInfoSeqUntpdMnd(const char* pszName, const char* pszNamespace,
                                                 int nProperty, const char* pszAnyNamespaces,
                                                 const char* pszTargetNamespace)
    : CElementInfo(pszName, pszNamespace, nProperty),
      m_strAnyNamespaces(pszAnyNamespaces ? pszAnyNamespaces : ""),
      m_strTargetNamespace(pszTargetNamespace ? pszTargetNamespace : "")
{}

bool CElementInfoSeqUntpdMnd::ElementToXml(const CSerializationContext& context,
                                           const CXmlGeneratedClass* pObject,
                                           CXmlWriter* pWriter) const
{
    return Steps::Mandatory(*this, ElementToXmlCls(context, pObject, pWriter, false));
}

bool CElementInfoSeqUntpdMnd::ElementFromXml(const CSerializationContext& context,
                                             CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                             CXmlElement** ppCursor, const char* pszNamespace,
                                             XmlElementType ownerType)
{
    return Steps::HeldWildcardInSequence(
        *this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType});
}

CElementInfoSeqUntpdOpt::CElementInfoSeqUntpdOpt(const char* pszName, const char* pszNamespace,
                                                 int nProperty, const char* pszAnyNamespaces,
                                                 const char* pszTargetNamespace)
    : CElementInfo(pszName, pszNamespace, nProperty),
      m_strAnyNamespaces(pszAnyNamespaces ? pszAnyNamespaces : ""),
      m_strTargetNamespace(pszTargetNamespace ? pszTargetNamespace : "")
{}

bool CElementInfoSeqUntpdOpt::ElementToXml(const CSerializationContext& context,
                                           const CXmlGeneratedClass* pObject,
                                           CXmlWriter* pWriter) const
{
    return ElementToXmlCls(context, pObject, pWriter, false);
}

bool CElementInfoSeqUntpdOpt::ElementFromXml(const CSerializationContext& context,
                                             CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                             CXmlElement** ppCursor, const char* pszNamespace,
                                             XmlElementType ownerType)
{
    Steps::NewWildcard(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                       m_strAnyNamespaces, m_strTargetNamespace);
    return true;
}

CElementInfoSeqCol::CElementInfoSeqCol(const char* pszName, const char* pszNamespace, int nProperty)
    : CElementInfo(pszName, pszNamespace, nProperty)
{}

bool CElementInfoSeqCol::ElementToXml(const CSerializationContext& context,
                                      const CXmlGeneratedClass* pObject, CXmlWriter* pWriter) const
{
    return Steps::WriteCheckedCollection(*this, context, pObject, pWriter);
}

bool CElementInfoSeqCol::ElementFromXml(const CSerializationContext& context,
                                        CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                        CXmlElement** ppCursor, const char* pszNamespace,
                                        XmlElementType ownerType)
{
    return Steps::CollectionInSequence(
        *this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType}, Steps::ReadItems);
}

CElementInfoSeqPrimCol::CElementInfoSeqPrimCol(const char* pszName, const char* pszNamespace,
                                               int nProperty)
    : CElementInfoSeqCol(pszName, pszNamespace, nProperty)
{}

CElementInfoSeqPrimCol::~CElementInfoSeqPrimCol() = default;

CElementInfoSeqEnumCol::CElementInfoSeqEnumCol(const char* pszName, const char* pszNamespace,
                                               int nProperty)
    : CElementInfoSeqCol(pszName, pszNamespace, nProperty)
{}

CElementInfoSeqEnumCol::~CElementInfoSeqEnumCol() = default;

CElementInfoSeqClsCol::CElementInfoSeqClsCol(const char* pszName, const char* pszNamespace,
                                             int nProperty, XmlElementType childType)
    : CElementInfoSeqCol(pszName, pszNamespace, nProperty), m_elementType(childType)
{}

void CElementInfoSeqClsCol::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                      const CXmlGeneratedClass* pObject,
                                                      CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoSeqAbsClsCol::CElementInfoSeqAbsClsCol(const char* pszName, const char* pszNamespace,
                                                   int nProperty, XmlElementType childType)
    : CElementInfoSeqCol(pszName, pszNamespace, nProperty), m_elementType(childType)
{}

void CElementInfoSeqAbsClsCol::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* pObject,
                                                         CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoSeqUntpdCol::CElementInfoSeqUntpdCol(const char* pszName, const char* pszNamespace,
                                                 int nProperty)
    : CElementInfoSeqCol(pszName, pszNamespace, nProperty)
{}

bool CElementInfoSeqUntpdCol::ElementFromXml(const CSerializationContext& context,
                                             CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                             CXmlElement** ppCursor, const char* pszNamespace,
                                             XmlElementType ownerType)
{
    return Steps::CollectionInSequence(
        *this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType}, Steps::ReadElements);
}

} // namespace QnXmlLib16Data
