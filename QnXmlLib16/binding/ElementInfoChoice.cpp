#include "QnXmlLib16/binding/ElementInfoChoice.h"

#include "QnXmlLib16/binding/internal/ElementInfoSteps.h"

namespace QnXmlLib16Data {

CElementInfoChoicePrimOpt::CElementInfoChoicePrimOpt(const char* pszName, const char* pszNamespace,
                                                     int nProperty, bool bNillable,
                                                     ItemType itemType, const char* pszFormat,
                                                     CWhitespaceUtils::WhitespaceRule whitespace,
                                                     const CPrimitiveRestrictions& restrictions,
                                                     const char* pszDefault)
    : CElementInfo(pszName, pszNamespace, nProperty, bNillable, itemType, pszFormat, whitespace,
                   restrictions, pszDefault)
{
    m_trait = Trait::ChoiceOptional;
}

bool CElementInfoChoicePrimOpt::ElementToXml(const CSerializationContext& context,
                                             const CXmlGeneratedClass* pObject,
                                             CXmlWriter* pWriter) const
{
    return ElementToXmlPrim(context, pObject, pWriter);
}

bool CElementInfoChoicePrimOpt::ElementFromXml(const CSerializationContext& context,
                                               CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                               CXmlElement** ppCursor, const char* pszNamespace,
                                               XmlElementType ownerType)
{
    return Steps::Value(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                        Steps::kPrim);
}

CElementInfoChoiceEnumOpt::CElementInfoChoiceEnumOpt(const char* pszName, const char* pszNamespace,
                                                     int nProperty, bool bNillable,
                                                     const char* (*fnEnumToString)(int),
                                                     int (*fnStringToEnum)(const char*),
                                                     const char* pszDefault)
    : CElementInfo(pszName, pszNamespace, nProperty, bNillable, fnEnumToString, fnStringToEnum,
                   pszDefault)
{
    m_trait = Trait::ChoiceOptional;
}

bool CElementInfoChoiceEnumOpt::ElementToXml(const CSerializationContext& context,
                                             const CXmlGeneratedClass* pObject,
                                             CXmlWriter* pWriter) const
{
    return ElementToXmlEnum(context, pObject, pWriter, m_fnEnumToString);
}

bool CElementInfoChoiceEnumOpt::ElementFromXml(const CSerializationContext& context,
                                               CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                               CXmlElement** ppCursor, const char* pszNamespace,
                                               XmlElementType ownerType)
{
    return Steps::Value(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                        Steps::kEnum);
}

CElementInfoChoiceClsOpt::CElementInfoChoiceClsOpt(const char* pszName, const char* pszNamespace,
                                                   int nProperty, XmlElementType childType,
                                                   CreateFunction fnCreate, int nClassId)
    : CElementInfo(pszName, pszNamespace, nProperty),
      m_elementType(childType),
      m_fnCreate(fnCreate),
      m_nClassId(nClassId)
{
    m_trait = Trait::ChoiceOptional;
}

bool CElementInfoChoiceClsOpt::ElementToXml(const CSerializationContext& context,
                                            const CXmlGeneratedClass* pObject,
                                            CXmlWriter* pWriter) const
{
    return ElementToXmlCls(context, pObject, pWriter, true);
}

bool CElementInfoChoiceClsOpt::ElementFromXml(const CSerializationContext& context,
                                              CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                              CXmlElement** ppCursor, const char* pszNamespace,
                                              XmlElementType ownerType)
{
    return Steps::SelectedChild(*this,
                                {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                                m_elementType, Steps::Maker(m_fnCreate, m_nClassId), true);
}

void CElementInfoChoiceClsOpt::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* pObject,
                                                         CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoChoiceAbsClsOpt::CElementInfoChoiceAbsClsOpt(
    const char* pszName, const char* pszNamespace, int nProperty, XmlElementType childType,
    CreateFromElementFunction fnCreateFromElement)
    : CElementInfo(pszName, pszNamespace, nProperty),
      m_elementType(childType),
      m_fnCreateFromElement(fnCreateFromElement)
{
    m_trait = Trait::ChoiceOptional;
}

bool CElementInfoChoiceAbsClsOpt::ElementToXml(const CSerializationContext& context,
                                               const CXmlGeneratedClass* pObject,
                                               CXmlWriter* pWriter) const
{
    return ElementToXmlCls(context, pObject, pWriter, false);
}

bool CElementInfoChoiceAbsClsOpt::ElementFromXml(const CSerializationContext& context,
                                                 CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                                 CXmlElement** ppCursor, const char* pszNamespace,
                                                 XmlElementType ownerType)
{
    return Steps::SelectedChild(*this,
                                {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                                XmlElementType_Element, Steps::Maker(m_fnCreateFromElement), false);
}

void CElementInfoChoiceAbsClsOpt::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                            const CXmlGeneratedClass* pObject,
                                                            CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoChoiceUntpdOpt::CElementInfoChoiceUntpdOpt(const char* pszName,
                                                       const char* pszNamespace, int nProperty,
                                                       const char* pszAnyNamespaces,
                                                       const char* pszTargetNamespace)
    : CElementInfo(pszName, pszNamespace, nProperty),
      m_strAnyNamespaces(pszAnyNamespaces ? pszAnyNamespaces : ""),
      m_strTargetNamespace(pszTargetNamespace ? pszTargetNamespace : "")
{
    m_trait = Trait::ChoiceOptional;
}

bool CElementInfoChoiceUntpdOpt::ElementToXml(const CSerializationContext& context,
                                              const CXmlGeneratedClass* pObject,
                                              CXmlWriter* pWriter) const
{
    return ElementToXmlCls(context, pObject, pWriter, false);
}

bool CElementInfoChoiceUntpdOpt::ElementFromXml(const CSerializationContext& context,
                                                CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                                CXmlElement** ppCursor, const char* pszNamespace,
                                                XmlElementType ownerType)
{
    return Steps::NewWildcard(*this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType},
                              m_strAnyNamespaces, m_strTargetNamespace);
}

CElementInfoChoiceCol::CElementInfoChoiceCol(const char* pszName, const char* pszNamespace,
                                             int nProperty)
    : CElementInfo(pszName, pszNamespace, nProperty)
{}

bool CElementInfoChoiceCol::ElementToXml(const CSerializationContext& context,
                                         const CXmlGeneratedClass* pObject,
                                         CXmlWriter* pWriter) const
{
    // Deliberate: no count is checked here, unlike in the other groups; an empty collection writes
    // nothing though its lower bound be above 0, and leaves the choice to the next member. Pinned
    // by Collections.AreHeldToTheirBounds.
    return ElementToXmlCol(context, pObject, pWriter);
}

bool CElementInfoChoiceCol::ElementFromXml(const CSerializationContext& context,
                                           CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                           CXmlElement** ppCursor, const char* pszNamespace,
                                           XmlElementType ownerType)
{
    return Steps::CollectionInChoice(
        *this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType}, Steps::ReadItems);
}

CElementInfoChoicePrimCol::CElementInfoChoicePrimCol(const char* pszName, const char* pszNamespace,
                                                     int nProperty)
    : CElementInfoChoiceCol(pszName, pszNamespace, nProperty)
{
    m_trait = Trait::ChoiceCollection;
}

CElementInfoChoicePrimCol::~CElementInfoChoicePrimCol() = default;

CElementInfoChoiceEnumCol::CElementInfoChoiceEnumCol(const char* pszName, const char* pszNamespace,
                                                     int nProperty)
    : CElementInfoChoiceCol(pszName, pszNamespace, nProperty)
{
    m_trait = Trait::ChoiceCollection;
}

CElementInfoChoiceEnumCol::~CElementInfoChoiceEnumCol() = default;

CElementInfoChoiceClsCol::CElementInfoChoiceClsCol(const char* pszName, const char* pszNamespace,
                                                   int nProperty, XmlElementType childType)
    : CElementInfoChoiceCol(pszName, pszNamespace, nProperty), m_elementType(childType)
{
    m_trait = Trait::ChoiceCollection;
}

void CElementInfoChoiceClsCol::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                         const CXmlGeneratedClass* pObject,
                                                         CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoChoiceAbsClsCol::CElementInfoChoiceAbsClsCol(const char* pszName,
                                                         const char* pszNamespace, int nProperty,
                                                         XmlElementType childType)
    : CElementInfoChoiceCol(pszName, pszNamespace, nProperty), m_elementType(childType)
{
    m_trait = Trait::ChoiceCollection;
}

void CElementInfoChoiceAbsClsCol::PseudoChildAttributeToXml(const CSerializationContext& context,
                                                            const CXmlGeneratedClass* pObject,
                                                            CXmlWriter* pWriter) const
{
    Steps::WritePseudoAttributes(*this, m_elementType, context, pObject, pWriter);
}

CElementInfoChoiceUntpdCol::CElementInfoChoiceUntpdCol(const char* pszName,
                                                       const char* pszNamespace, int nProperty)
    : CElementInfoChoiceCol(pszName, pszNamespace, nProperty)
{
    m_trait = Trait::ChoiceCollection;
}

bool CElementInfoChoiceUntpdCol::ElementFromXml(const CSerializationContext& context,
                                                CXmlGeneratedClass* pObject, CXmlElement* pParent,
                                                CXmlElement** ppCursor, const char* pszNamespace,
                                                XmlElementType ownerType)
{
    return Steps::CollectionInChoice(
        *this, {context, pObject, pParent, ppCursor, pszNamespace, ownerType}, Steps::ReadElements);
}

} // namespace QnXmlLib16Data
