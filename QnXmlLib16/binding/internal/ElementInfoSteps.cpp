#include "QnXmlLib16/binding/internal/ElementInfoSteps.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/binding/internal/SiblingScan.h"
#include "QnXmlLib16/collections/Element.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/values/QnVariant.h"
#include "QnXmlLib16/xml/XmlElement.h"

namespace QnXmlLib16Data {

CSmartPtr<CXmlObjectBase> CElementInfo::Steps::Maker::Make(const CElementInfo& info,
                                                           CXmlElement* pElement) const
{
    if (m_fnCreateFromElement)
        return m_fnCreateFromElement(pElement);
    CSmartPtr<CXmlObjectBase> pChild = m_fnCreate(m_nClassId, info.m_strName.c_str());
    if (!pChild)
        ThrowEmptyProperty(info);
    return pChild;
}

CXmlElement* CElementInfo::Steps::ReadItems(const CElementInfo&, const ReadCall& call,
                                            CXmlCollectionBase& collection)
{
    const CSiblingScan::CDropping dropping; // an item that takes nothing is no item
    return FromXml_Int(&collection, call.pParent, *call.ppCursor, call.context, false);
}

CXmlElement* CElementInfo::Steps::ReadElements(const CElementInfo& info, const ReadCall& call,
                                               CXmlCollectionBase& collection)
{
    if (info.m_strName == "AnyElement")
        return ReadItems(info, call, collection);
    CElementCol* const pElements = dynamic_cast<CElementCol*>(&collection);
    if (!pElements) {
        throw CQnException(
            "Serialization Data Error : The collection should be a CElementCol, it was not!");
    }
    CXmlElement* const pFirst = *call.ppCursor;
    return pElements->FromXmlLockElementName_Int(info.m_strName,
                                                 pFirst ? pFirst->GetNamespaceURI() : std::string(),
                                                 call.pParent, pFirst, call.context, false);
}

bool CElementInfo::Steps::MandatoryValueInSequence(const CElementInfo& info, const ReadCall& call,
                                                   ValueReader read)
{
    const bool bHasElement = call.ownerType == XmlElementType_Element;
    if (!(bHasElement ? SeekMandatory(info, call) : SeekInGroup(info, call)))
        return bHasElement;
    (info.*read)(call.context, call.pObject, call.ppCursor);
    return true;
}

bool CElementInfo::Steps::HeldChildInSequence(const CElementInfo& info, const ReadCall& call,
                                              XmlElementType childType, bool bRequiredContent)
{
    const bool bHasElement = call.ownerType == XmlElementType_Element;
    if (childType == XmlElementType_Element) {
        if (!bHasElement)
            return HeldChild(info, call, childType);
        if (SeekMandatory(info, call))
            HeldChild(info, call, childType);
        return true;
    }
    const bool bAtEnd = *call.ppCursor == nullptr;
    if ((!bAtEnd || !bRequiredContent) && HeldChild(info, call, childType))
        return true;
    // Deliberate: required content is demanded even where the context lets mandatory elements be
    // missing or skips unknown ones. Pinned by
    // SequenceReading.APseudoChildReadsOutOfTheElementAroundIt.
    if (bRequiredContent && bHasElement)
        ThrowNotFound(info, call);
    // Where unknown elements are ignored, the sequence skips one and asks again.
    return !bRequiredContent &&
           (bAtEnd || !bHasElement || !call.context.GetIgnoreUnknownElements());
}

bool CElementInfo::Steps::HeldChild(const CElementInfo& info, const ReadCall& call,
                                    XmlElementType childType)
{
    const bool bOwnElement = childType == XmlElementType_Element;
    if (bOwnElement && !info.IsThisElement(call.context, *call.ppCursor))
        return false;
    QnVariant value;
    info.ReadProperty(call.pObject, value);
    CXmlObjectBase& child = HeldObject(info, value);
    if (bOwnElement) {
        ReadChildElement(child, call, false);
        return true;
    }
    CXmlElement* const pNext =
        FromXml_Int(&child, call.pParent, *call.ppCursor, call.context, false);
    const bool bRead = pNext != *call.ppCursor;
    *call.ppCursor = pNext;
    return bRead;
}

bool CElementInfo::Steps::SubstituteInSequence(const CElementInfo& info, const ReadCall& call,
                                               const Maker& maker)
{
    if (NewChild(info, call, XmlElementType_Element, maker))
        return true;
    // Deliberate: no setting of the context lets an abstract child be missing, or skips what
    // stands in front of it. Pinned by SequenceFailures.AnAbstractChildIsRelaxedByNothing.
    if (call.ownerType == XmlElementType_Element) {
        throw CQnValidationException(
            FormatString("Failed to find a suitable substitution element for [%s].",
                         info.m_strName.c_str()),
            call.pParent->GetXPath());
    }
    return false;
}

bool CElementInfo::Steps::NewChild(const CElementInfo& info, const ReadCall& call,
                                   XmlElementType childType, const Maker& maker)
{
    const bool bOwnElement = childType == XmlElementType_Element;
    CXmlElement* const pElement = *call.ppCursor;
    if (!pElement || (bOwnElement && !info.IsThisElement(call.context, pElement)))
        return false;
    const CSmartPtr<CXmlObjectBase> pChild = maker.Make(info, pElement);
    if (!pChild)
        return false;
    CXmlElement* pNext = nullptr;
    if (bOwnElement) {
        ReadChildElement(*pChild, call, false);
        pNext = *call.ppCursor;
    }
    else {
        const CSiblingScan::CDropping dropping;
        pNext = FromXml_Int(pChild.GetPtr(), call.pParent, pElement, call.context, false);
        if (pNext == pElement)
            return false;
    }
    Assign(info, call, pChild.GetPtr(), *pElement);
    *call.ppCursor = pNext;
    return true;
}

bool CElementInfo::Steps::SelectedChild(const CElementInfo& info, const ReadCall& call,
                                        XmlElementType childType, const Maker& maker,
                                        bool bOptionalChoice)
{
    const bool bOwnElement = childType == XmlElementType_Element;
    CXmlElement* const pElement = *call.ppCursor;
    if (!pElement || (bOwnElement && !info.IsThisElement(call.context, pElement)))
        return false;
    // Deliberate: assigned before it is looked at, so that a setter sees null where the element
    // stands for no class. Pinned by ChoiceMetadata.AChildIsAssignedBeforeItIsRead.
    const CSmartPtr<CXmlObjectBase> pChild = maker.Make(info, pElement);
    Assign(info, call, pChild.GetPtr(), *pElement);
    if (!pChild)
        return false;
    if (bOwnElement) {
        ReadChildElement(*pChild, call, bOptionalChoice);
        return true;
    }
    const CSiblingScan::CDropping dropping;
    CXmlElement* const pNext =
        FromXml_Int(pChild.GetPtr(), call.pParent, pElement, call.context, false);
    if (pNext == pElement) {
        Assign(info, call, nullptr, *pElement);
        return false;
    }
    *call.ppCursor = pNext;
    return true;
}

bool CElementInfo::Steps::HeldWildcardInSequence(const CElementInfo& info, const ReadCall& call)
{
    // Deliberate: fails in a pseudo element too, whose other members would merely not match. Pinned
    // by SequenceReading.AGroupThatDoesNotMatchGivesItsPlaceBack.
    if (!*call.ppCursor)
        ThrowNotFound(info, call);
    if (HeldWildcard(info, call))
        return true;
    if (call.ownerType == XmlElementType_Element) {
        throw CQnValidationException(
            FormatString("Failed to find the required element from namespace [%s].",
                         info.m_strNamespace.c_str()),
            call.pParent->GetXPath());
    }
    return false;
}

bool CElementInfo::Steps::HeldWildcard(const CElementInfo& info, const ReadCall& call)
{
    CXmlElement* const pElement = *call.ppCursor;
    if (!pElement)
        return false;
    QnVariant value;
    info.ReadProperty(call.pObject, value);
    if (!AdmitsName(info, *pElement))
        return false;
    *call.ppCursor =
        FromXml_Int(&HeldObject(info, value), call.pParent, pElement, call.context, false);
    return *call.ppCursor != pElement;
}

bool CElementInfo::Steps::NewWildcard(const CElementInfo& info, const ReadCall& call,
                                      const std::string& strAnyNamespaces,
                                      const std::string& strTargetNamespace)
{
    CXmlElement* const pElement = *call.ppCursor;
    if (!pElement)
        return false;
    // Deliberate: made for any element, so that a default namespace which the restriction refuses
    // fails the read though the element be another's. Pinned by
    // SequenceFailures.AnOptionalWildcardFailsForItsOwnDefaultNamespace.
    const std::string strDefaultNamespace = GetAnyDefaultNamespace(
        strAnyNamespaces.c_str(), call.pszNamespace, strTargetNamespace.c_str());
    const CSmartPtr<CElement> pChild =
        new CElement(info.m_strName.c_str(), strDefaultNamespace.c_str(), strAnyNamespaces.c_str(),
                     strTargetNamespace.c_str());
    if (!AdmitsName(info, *pElement))
        return false;
    CXmlElement* const pNext =
        FromXml_Int(pChild.GetPtr(), call.pParent, pElement, call.context, false);
    if (pNext == pElement)
        return false;
    Assign(info, call, pChild.GetPtr(), *pElement);
    *call.ppCursor = pNext;
    return true;
}

bool CElementInfo::Steps::CollectionInSequence(const CElementInfo& info, const ReadCall& call,
                                               ItemReader read)
{
    QnVariant value;
    info.ReadProperty(call.pObject, value);
    CXmlCollectionBase& collection = HeldCollection(info, value);
    *call.ppCursor = read(info, call, collection);
    if (call.ownerType != XmlElementType_Element)
        return collection.IsValidCount(call.context);
    collection.ValidateCount(call.context);
    return true;
}

bool CElementInfo::Steps::CollectionInAll(const CElementInfo& info, const ReadCall& call)
{
    QnVariant value;
    info.ReadProperty(call.pObject, value);
    *call.ppCursor = ReadItems(info, call, HeldCollection(info, value));
    return false;
}

bool CElementInfo::Steps::CollectionInChoice(const CElementInfo& info, const ReadCall& call,
                                             ItemReader read)
{
    QnVariant value;
    info.ReadProperty(call.pObject, value);
    CXmlCollectionBase& collection = HeldCollection(info, value);
    CXmlElement* const pNext = read(info, call, collection);
    if (pNext == *call.ppCursor)
        return false;
    if (call.ownerType != XmlElementType_Element) {
        if (!collection.IsValidCount(call.context))
            return false;
        *call.ppCursor = pNext;
        return true;
    }
    *call.ppCursor = pNext;
    collection.ValidateCount(call.context);
    return true;
}

bool CElementInfo::Steps::ValidateMandatory(const CElementInfo& info, bool bWasRead,
                                            bool bIsRealElement)
{
    if (bWasRead || !bIsRealElement)
        return bWasRead;
    // Deliberate: no setting of the context lets a member of an all group be missing. Pinned by
    // EveryMember.IsMissedOrMayBeAbsent.
    throw CQnValidationException(
        FormatString("Failed to find the mandatory element [%s].", info.m_strName.c_str()), "");
}

bool CElementInfo::Steps::Mandatory(const CElementInfo& info, bool bWritten)
{
    if (!bWritten)
        ThrowEmptyProperty(info);
    return true;
}

bool CElementInfo::Steps::WriteCheckedCollection(const CElementInfo& info,
                                                 const CSerializationContext& context,
                                                 const CXmlGeneratedClass* pObject,
                                                 CXmlWriter* pWriter)
{
    QnVariant value;
    info.ReadProperty(pObject, value);
    const CXmlCollectionBase* const pCollection = value.PeekXmlCollection();
    if (!pCollection)
        return false;
    if (!context.GetIgnoreInvalidCollectionCounts())
        pCollection->ValidateCount(context);
    return info.WriteItems(*pCollection, context, pWriter);
}

void CElementInfo::Steps::WritePseudoAttributes(const CElementInfo& info, XmlElementType childType,
                                                const CSerializationContext& context,
                                                const CXmlGeneratedClass* pObject,
                                                CXmlWriter* pWriter)
{
    if (childType != XmlElementType_PseudoElement)
        return;
    QnVariant value;
    info.ReadProperty(pObject, value);
    const CXmlObjectBase* pChild = value.PeekXmlObject();
    if (!pChild)
        pChild = value.PeekXmlCollection();
    if (pChild)
        AttributesToXml_Int(pChild, pWriter, context);
}

// Moves the cursor to the element of a mandatory member, whose owner has an element of its own.
// False if the context lets it be missing.
bool CElementInfo::Steps::SeekMandatory(const CElementInfo& info, const ReadCall& call)
{
    while (!info.IsThisElement(call.context, *call.ppCursor)) {
        if (call.context.GetIgnoreMissingMandatoryElements())
            return false;
        if (!*call.ppCursor || !call.context.GetIgnoreUnknownElements())
            ThrowNotFound(info, call);
        *call.ppCursor = (*call.ppCursor)->GetNextSiblingElement();
    }
    return true;
}

// The same for a member whose owner is a pseudo element. False if it is not found.
bool CElementInfo::Steps::SeekInGroup(const CElementInfo& info, const ReadCall& call)
{
    if (info.IsThisElement(call.context, *call.ppCursor))
        return true;
    if (!*call.ppCursor || !call.context.GetIgnoreUnknownElements())
        return false;
    const CXmlElement* const pFrom = *call.ppCursor;
    do
        *call.ppCursor = CSiblingScan::SkipRefused(info, (*call.ppCursor)->GetNextSiblingElement());
    while (*call.ppCursor && !info.IsThisElement(call.context, *call.ppCursor));
    CSiblingScan::NoteRefused(info, pFrom, *call.ppCursor);
    return *call.ppCursor != nullptr;
}

// The child reads the element at the cursor, which then moves on.
void CElementInfo::Steps::ReadChildElement(CXmlObjectBase& child, const ReadCall& call,
                                           bool bOptionalChoice)
{
    CXmlElement* const pElement = *call.ppCursor;
    FromXml_Int(&child, pElement, pElement->GetFirstElement(), call.context, bOptionalChoice);
    *call.ppCursor = pElement->GetNextSiblingElement();
}

void CElementInfo::Steps::Assign(const CElementInfo& info, const ReadCall& call,
                                 CXmlObjectBase* pChild, const CXmlElement& element)
{
    QnVariant value;
    value.SetXmlObject(pChild);
    info.InvokePropertySet(call.pObject, value, element);
}

CXmlObjectBase& CElementInfo::Steps::HeldObject(const CElementInfo& info, const QnVariant& value)
{
    CXmlObjectBase* const pObject = value.PeekXmlObject();
    if (!pObject)
        ThrowEmptyProperty(info);
    return *pObject;
}

CXmlCollectionBase& CElementInfo::Steps::HeldCollection(const CElementInfo& info,
                                                        const QnVariant& value)
{
    CXmlCollectionBase* const pCollection = value.PeekXmlCollection();
    if (!pCollection)
        ThrowEmptyProperty(info);
    return *pCollection;
}

bool CElementInfo::Steps::AdmitsName(const CElementInfo& info, const CXmlElement& element)
{
    return info.m_strName == "AnyElement" || element.GetLocalName() == info.m_strName;
}

void CElementInfo::Steps::ThrowEmptyProperty(const CElementInfo& info)
{
    throw CQnInvalidParamException(
        FormatString("The Property [%s] is mandatory, it may not be NULL", info.m_strName.c_str()));
}

void CElementInfo::Steps::ThrowNotFound(const CElementInfo& info, const ReadCall& call)
{
    throw CQnValidationException(
        FormatString("Failed to find the required child element [%s].", info.m_strName.c_str()),
        call.pParent->GetXPath());
}

} // namespace QnXmlLib16Data
