#include "QnXmlLib16/binding/AttributeInfo.h"
#include "QnXmlLib16/binding/ElementInfoBase.h"
#include "QnXmlLib16/binding/Nillable.h"
#include "QnXmlLib16/binding/ParentElementInfo.h"
#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/binding/XmlGeneratedClass.h"
#include "QnXmlLib16/binding/internal/SiblingScan.h"
#include "QnXmlLib16/collections/AttributeCol.h"
#include "QnXmlLib16/collections/XmlCollectionBase.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/support/internal/StackLeft.h"
#include "QnXmlLib16/values/QnVariant.h"
#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "QnXmlLib16/xml/XmlWriter.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <strings.h>
#include <typeinfo>

using QnXmlLib16Data::CAttributeInfo;
using QnXmlLib16Data::CElementInfo;
using QnXmlLib16Data::CParentElementInfo;

namespace QnXmlLib16 {

namespace {

template <class TInfo>
std::size_t CountEntries(TInfo** ppTable)
{
    std::size_t nCount = 0;
    while (ppTable[nCount])
        ++nCount;
    return nCount;
}

template <class TInfo>
void DestroyTable(TInfo**& ppTable)
{
    if (!ppTable)
        return;
    for (TInfo** ppEntry = ppTable; *ppEntry; ++ppEntry) {
        delete *ppEntry;
        *ppEntry = nullptr;
    }
    delete[] ppTable;
    ppTable = nullptr;
}

// One flag for each entry of a table, all false; on the stack unless the table is a long one.
class CFlags
{
public:
    explicit CFlags(std::size_t nCount)
    {
        if (nCount > kOnStack) {
            m_pHeap = std::make_unique<bool[]>(nCount);
            m_pFlags = m_pHeap.get();
        }
    }
    CFlags(const CFlags&) = delete;
    CFlags& operator=(const CFlags&) = delete;

    bool& operator[](std::size_t i) { return m_pFlags[i]; }

private:
    static constexpr std::size_t kOnStack = 32;

    bool m_stack[kOnStack] = {};
    std::unique_ptr<bool[]> m_pHeap;
    bool* m_pFlags = m_stack;
};

[[noreturn]] void ThrowElementLeftOver(const CXmlElement& element, const CXmlElement& leftOver)
{
    // Deliberate spelling: callers match on message texts.
    throw CQnValidationException(
        FormatString("Failed read all the elements held within the element [%s]. The unexpected "
                     "element [%s] remains un processed",
                     element.GetLocalName().c_str(), leftOver.GetLocalName().c_str()),
        element.GetXPath());
}

// How deep the objects of a recursive type nest is up to whoever sent the document.
void RequireStack()
{
    const std::size_t uLeft = StackLeft();
    if (uLeft != 0 && uLeft < kStackReserve)
        throw CQnValidationException("The elements are nested too deep for the stack.", "");
}

bool ParseNil(const CXmlAttribute& attribute)
{
    const char* const pszValue = attribute.GetValue().c_str();
    if (strcasecmp(pszValue, "true") == 0 || strcasecmp(pszValue, "1") == 0)
        return true;
    if (strcasecmp(pszValue, "false") == 0 || strcasecmp(pszValue, "0") == 0)
        return false;
    throw CQnValidationException(
        FormatString("Unexpected Value [%s] for 'nil' Attribute found.", pszValue),
        attribute.GetXPath());
}

// Asks an entry of a sequence where unknown elements are ignored: at one sibling after the other.
// bMaySkip: it need not be asked at siblings that it is known to refuse.
bool AskAndSkip(CElementInfo& entry, bool bMaySkip, const CSerializationContext& context,
                CXmlGeneratedClass* pObject, CXmlElement* pElement, CXmlElement*& pCursor,
                const char* pszNamespace, XmlElementType elementType)
{
    const bool bInGroup = elementType != XmlElementType_Element;
    const CXmlElement* const pFirst = pCursor;
    bool bHasTaken = false;
    for (;;) {
        if (bInGroup && bMaySkip && !bHasTaken)
            pCursor = CSiblingScan::SkipRefused(entry, pCursor);
        CXmlElement* const pAsked = pCursor;
        CSiblingScan::ForgetLastMismatch();
        const bool bDone =
            entry.ElementFromXml(context, pObject, pElement, &pCursor, pszNamespace, elementType);
        if (!bHasTaken && (bDone || pCursor != pAsked || !pCursor)) {
            bHasTaken = true;
            if (bInGroup && pAsked != pFirst)
                CSiblingScan::NoteRefused(entry, pFirst, pAsked);
        }
        if (bDone || !pCursor)
            return bDone;
        pCursor =
            pCursor == pAsked ? CSiblingScan::NextToAsk(pAsked) : pCursor->GetNextSiblingElement();
    }
}

} // namespace

INillable* CXmlGeneratedClass::FindNillable(const CParentElementInfo& info)
{
    const std::type_info& type = typeid(*this);
    if (info.m_pNotNillable.load(std::memory_order_relaxed) == &type)
        return nullptr;
    INillable* const pNillable = dynamic_cast<INillable*>(this);
    if (!pNillable)
        info.m_pNotNillable.store(&type, std::memory_order_relaxed);
    return pNillable;
}

void CXmlGeneratedClass::WriteRootDeclarations(CXmlWriter& writer,
                                               const CSerializationContext& context) const
{
    for (const std::string& strInstruction : context.GetProcessingInstructions())
        writer.WritePI(strInstruction);
    const CNamespaceAliasMap& aliases = context.GetNamespaceAliases();
    for (int i = 0; i < aliases.GetNamespaceCount(); ++i) {
        const std::string strNamespace = aliases.GetNamespaceAt(i);
        writer.AddNamespace(aliases.GetAliasFromNamespace(strNamespace.c_str()), strNamespace);
    }
    const std::string strDefaultNamespace = context.GetDefaultNamespaceURI();
    if (!strDefaultNamespace.empty())
        writer.SetDefaultNamespace(strDefaultNamespace);
}

void CXmlGeneratedClass::ToXml_Int(CXmlWriter* pWriter, bool bIsRoot,
                                   const char* pszTargetNamespace,
                                   const CSerializationContext& context, bool bOptionalChoice) const
{
    try {
        const CParentElementInfo& info = *GetClassInfo();
        const bool bHasElement = info.m_elementType == XmlElementType_Element;
        if (bHasElement) {
            if (bIsRoot)
                WriteRootDeclarations(*pWriter, context);
            const char* const pszNamespace = pszTargetNamespace ? pszTargetNamespace : "";
            // Mostly the namespace of the type itself, which need not be built anew.
            if (info.m_strNamespace == pszNamespace)
                pWriter->WriteStartElement(m_strElementName, info.m_strNamespace);
            else
                pWriter->WriteStartElement(m_strElementName, pszNamespace);
            if (bIsRoot) {
                const CSmartPtr<CAttributeCol> pAttributes = context.GetAdditionalRootAttributes();
                CXmlObjectBase::ToXml_Int(pAttributes.GetPtr(), pWriter, false, pszNamespace,
                                          context, bOptionalChoice);
            }
            AttributesToXml_Int(pWriter, context);
            if (bIsRoot) {
                const std::string strSchema = context.GetInLineSchema();
                if (!strSchema.empty())
                    pWriter->WriteInlineSchema(strSchema);
            }
        }

        INillable* const pNillable = const_cast<CXmlGeneratedClass*>(this)->FindNillable(info);
        if (pNillable && pNillable->IsNil()) {
            pWriter->WriteAttributeNil();
            if (bHasElement)
                pWriter->WriteEndElement();
            return;
        }

        switch (info.m_groupType) {
        case XmlElementGroupType_Sequence:
            ProcessElementSeqToXml(context, GetClassElementInfo(), pWriter);
            break;
        case XmlElementGroupType_Choice:
            ProcessElementChoiceToXml(context, GetClassElementInfo(), pWriter, bOptionalChoice);
            break;
        case XmlElementGroupType_All:
            ProcessElementAllToXml(context, GetClassElementInfo(), pWriter);
            break;
        default:
            throw CQnException("Unknown XML Group Type");
        }

        if (info.m_nValueProperty != -1 && info.m_valueType != it_none) {
            QnVariant value;
            ReadProperty(info.m_nValueProperty, value);
            if (value.IsNil())
                pWriter->WriteAttributeNil();
            else
                pWriter->WriteString(value.ToString(info.m_strValueFormat.c_str()),
                                     info.m_valueType, false);
        }

        if (bHasElement)
            pWriter->WriteEndElement();
    }
    catch (const CQnException& e) {
        throw CQnValidationException(
            FormatString("Failed to convert the element [%s] to XML", m_strElementName.c_str()), "",
            e);
    }
}

void CXmlGeneratedClass::AttributesToXml_Int(CXmlWriter* pWriter,
                                             const CSerializationContext& context) const
{
    try {
        const CParentElementInfo& info = *GetClassInfo();
        if (context.GetWriteTypeAttribute() && info.m_bWriteType &&
            info.m_strName != m_strElementName)
            pWriter->WriteAttributeType(info.m_strNamespace, info.m_strName, it_string);
        ProcessAttributesToXml(context, GetClassElementInfo(), GetClassAttributeInfo(), pWriter);
    }
    catch (const CQnException& e) {
        throw CQnException("Failed to convert attributes to XML", e);
    }
}

void CXmlGeneratedClass::ProcessAttributesToXml(const CSerializationContext& context,
                                                CElementInfo** ppElements,
                                                CAttributeInfo** ppAttributes,
                                                CXmlWriter* pWriter) const
{
    for (; *ppAttributes; ++ppAttributes)
        (*ppAttributes)->AttributeToXml(context, this, pWriter);
    for (; *ppElements; ++ppElements)
        (*ppElements)->PseudoChildAttributeToXml(context, this, pWriter);
}

void CXmlGeneratedClass::ProcessElementSeqToXml(const CSerializationContext& context,
                                                CElementInfo** ppElements,
                                                CXmlWriter* pWriter) const
{
    ProcessElementAllToXml(context, ppElements, pWriter);
}

void CXmlGeneratedClass::ProcessElementAllToXml(const CSerializationContext& context,
                                                CElementInfo** ppElements,
                                                CXmlWriter* pWriter) const
{
    for (; *ppElements; ++ppElements)
        (*ppElements)->ElementToXml(context, this, pWriter);
}

void CXmlGeneratedClass::ProcessElementChoiceToXml(const CSerializationContext& context,
                                                   CElementInfo** ppElements, CXmlWriter* pWriter,
                                                   bool bOptionalChoice) const
{
    for (; *ppElements; ++ppElements) {
        if ((*ppElements)->ElementToXml(context, this, pWriter))
            return;
    }
    if (DoesElementContainOptionalElements() || bOptionalChoice || context.GetIgnoreMissingChoice())
        return;
    // Deliberate spelling: callers match on message texts.
    throw CQnValidationException("This element is a choice, and as such must have at one (and only "
                                 "one) valid item, currently there are none set",
                                 "");
}

CXmlElement* CXmlGeneratedClass::FromXml_Int(CXmlElement* pElement, CXmlElement* pCursor,
                                             const CSerializationContext& context,
                                             bool bOptionalChoice)
{
    Init();
    try {
        RequireStack();
        const CParentElementInfo& info = *GetClassInfo();
        const bool bHasElement = info.m_elementType == XmlElementType_Element;
        if (bHasElement)
            m_strElementName = pElement->GetLocalName();
        std::optional<CSiblingScan> scan;
        std::optional<CSiblingScan::CGroup> group;
        if (context.GetIgnoreUnknownElements()) {
            if (bHasElement)
                scan.emplace(pCursor);
            else
                group.emplace();
        }
        ProcessAttributesFromXml(context, pElement, info.m_bStrictAttributes);

        INillable* const pNillable = FindNillable(info);
        if (pNillable && pNillable->IsNil())
            return pCursor;

        switch (info.m_groupType) {
        case XmlElementGroupType_Sequence:
            pCursor = ProcessElementSeqFromXml(context, pElement, pCursor, info.m_elementType);
            break;
        case XmlElementGroupType_Choice:
            pCursor = ProcessElementChoiceFromXml(context, pElement, pCursor, info.m_elementType,
                                                  bOptionalChoice);
            break;
        case XmlElementGroupType_All:
            pCursor = ProcessElementAllFromXml(context, pElement, pCursor, info.m_elementType);
            break;
        default:
            // Deliberate: not the words of the writing side. Callers match on message texts.
            throw CQnException("Unknown Group Type");
        }

        if (info.m_nValueProperty != -1 && info.m_valueType != it_none) {
            QnVariant value;
            if (info.m_bRawValue)
                value.SetString(pElement->GetText());
            else
                value.FromString(pElement->GetText(), info.m_valueType,
                                 CWhitespaceUtils::WhitespaceRule_None);
            AccessProperty(info.m_nValueProperty, false, value);
        }
        return pCursor;
    }
    catch (const CQnException& e) {
        // Deliberate: an exception that tells its place goes on as a plain CQnException, whatever
        // its class was. Pinned by ReadFailures.AnExceptionWithAPathLosesItsClass.
        if (!e.GetPath().empty())
            throw CQnException(e);
        throw CQnValidationException("Failed to process the element.", pElement->GetXPath(), e);
    }
}

void CXmlGeneratedClass::ProcessAttributesFromXml(const CSerializationContext& context,
                                                  CXmlElement* pElement, bool bStrict)
{
    CAttributeInfo** const ppEntries = GetClassAttributeInfo();
    const std::size_t nEntries = CountEntries(ppEntries);
    CFlags seen(nEntries);

    for (CXmlAttribute* const pAttribute : pElement->GetAttributes()) {
        if (pAttribute->IsNamespaceAttribute())
            continue;
        if (pAttribute->IsNilAttribute()) {
            INillable* const pNillable = dynamic_cast<INillable*>(this);
            if (!pNillable) {
                throw CQnValidationException(
                    "Invalid use of 'nil' attribute in non-nillable element.",
                    pElement->GetXPath());
            }
            pNillable->SetNil(ParseNil(*pAttribute));
            continue;
        }
        std::size_t i = 0;
        while (i < nEntries && !ppEntries[i]->AttributeFromXml(context, this, pAttribute))
            ++i;
        if (i < nEntries)
            seen[i] = true;
        else if (bStrict && !context.GetIgnoreUnknownAttributes())
            throw CQnValidationException("Unexpected Attribute found.", pAttribute->GetXPath());
    }

    for (std::size_t i = 0; i < nEntries; ++i)
        ppEntries[i]->Validate(context, seen[i]);
}

CXmlElement* CXmlGeneratedClass::ProcessElementSeqFromXml(const CSerializationContext& context,
                                                          CXmlElement* pElement,
                                                          CXmlElement* pCursor,
                                                          XmlElementType elementType)
{
    CXmlElement* const pStart = pCursor;
    CElementInfo** const ppEntries = GetClassElementInfo();
    const std::string strNamespace = GetNamespace();
    const bool bIgnoresUnknown = context.GetIgnoreUnknownElements();
    const bool bSkipsInGroup = bIgnoresUnknown && elementType != XmlElementType_Element;
    const bool bIsDropped = bSkipsInGroup && CSiblingScan::CGroup::IsDropped();
    if (bIsDropped && *ppEntries && CSiblingScan::IsMismatch(**ppEntries, pStart))
        return pStart;

    for (std::size_t i = 0;;) {
        for (; ppEntries[i]; ++i) {
            CElementInfo& entry = *ppEntries[i];
            // A child group that is refused keeps what it has read, unless all is dropped.
            const bool bDone =
                bIgnoresUnknown
                    ? AskAndSkip(
                          entry, bIsDropped || entry.m_trait != CElementInfo::Trait::HeldGroup,
                          context, this, pElement, pCursor, strNamespace.c_str(), elementType)
                    : entry.ElementFromXml(context, this, pElement, &pCursor, strNamespace.c_str(),
                                           elementType);
            if (bDone)
                continue;
            if (bSkipsInGroup)
                CSiblingScan::NoteMismatch(**ppEntries, pStart);
            return pStart;
        }
        if (elementType != XmlElementType_Element || !pCursor)
            return pCursor;
        if (!bIgnoresUnknown)
            ThrowElementLeftOver(*pElement, *pCursor);
        // Skips one element and asks the last entry alone once more, so that a collection at the
        // end goes on behind an unknown element. A mandatory last entry looks for a second element
        // then and fails without one.
        pCursor = pCursor->GetNextSiblingElement();
        if (!pCursor)
            return nullptr;
        if (i > 0)
            --i;
    }
}

CXmlElement* CXmlGeneratedClass::ProcessElementAllFromXml(const CSerializationContext& context,
                                                          CXmlElement* pElement,
                                                          CXmlElement* pCursor,
                                                          XmlElementType elementType)
{
    CXmlElement* const pStart = pCursor;
    CElementInfo** const ppEntries = GetClassElementInfo();
    const std::size_t nEntries = CountEntries(ppEntries);
    const std::string strNamespace = GetNamespace();
    CFlags read(nEntries);

    while (pCursor) {
        const CXmlElement* const pBefore = pCursor;
        for (std::size_t i = 0; i < nEntries; ++i) {
            if (!read[i])
                read[i] = ppEntries[i]->ElementFromXml(context, this, pElement, &pCursor,
                                                       strNamespace.c_str(), elementType);
        }
        if (pCursor == pBefore)
            break;
    }

    const bool bHasElement = elementType == XmlElementType_Element;
    for (std::size_t i = 0; i < nEntries; ++i) {
        if (!ppEntries[i]->Validate(context, this, read[i], bHasElement))
            return pStart;
    }
    if (bHasElement && pCursor && !context.GetIgnoreUnknownElements())
        ThrowElementLeftOver(*pElement, *pCursor);
    return pCursor;
}

CXmlElement* CXmlGeneratedClass::ProcessElementChoiceFromXml(const CSerializationContext& context,
                                                             CXmlElement* pElement,
                                                             CXmlElement* pCursor,
                                                             XmlElementType elementType,
                                                             bool bOptionalChoice)
{
    CXmlElement* const pStart = pCursor;
    CElementInfo** const ppEntries = GetClassElementInfo();
    const std::string strNamespace = GetNamespace();
    const bool bIgnoreUnknown = context.GetIgnoreUnknownElements();
    const bool bHasElement = elementType == XmlElementType_Element;

    bool bFound = false;
    for (;;) {
        for (CElementInfo** ppEntry = ppEntries; *ppEntry && !bFound; ++ppEntry)
            bFound = (*ppEntry)->ElementFromXml(context, this, pElement, &pCursor,
                                                strNamespace.c_str(), elementType);
        if (bFound || !bHasElement || !bIgnoreUnknown || !pCursor)
            break;
        pCursor = pCursor->GetNextSiblingElement();
        if (!pCursor)
            break;
    }

    if (!bFound && !bOptionalChoice) {
        if (!bHasElement) {
            // A group that did not match gives its place back where unknown elements are skipped.
            return elementType == XmlElementType_PseudoElement && bIgnoreUnknown ? pStart : pCursor;
        }
        if (!DoesElementContainOptionalElements() && !context.GetIgnoreMissingChoice()) {
            throw CQnValidationException(
                FormatString("No child elements within the element [%s] were populated. The "
                             "element represents a choice, so one and only one element should be "
                             "populated",
                             pElement->GetLocalName().c_str()),
                pElement->GetXPath());
        }
    }
    if (bHasElement && pCursor && !bIgnoreUnknown)
        ThrowElementLeftOver(*pElement, *pCursor);
    return pCursor;
}

bool CXmlGeneratedClass::IsElementInList(const CSerializationContext& context,
                                         CXmlElement* pElement) const
{
    for (CElementInfo** ppEntry = GetClassElementInfo(); *ppEntry; ++ppEntry) {
        if ((*ppEntry)->IsThisElement(context, pElement))
            return true;
    }
    return false;
}

int CXmlGeneratedClass::GetClassElementInfoCount() const
{
    return static_cast<int>(CountEntries(GetClassElementInfo()));
}

bool CXmlGeneratedClass::DoesElementContainOptionalElements() const
{
    for (CElementInfo** ppEntry = GetClassElementInfo(); *ppEntry; ++ppEntry) {
        const CElementInfo& entry = **ppEntry;
        if (entry.m_trait == CElementInfo::Trait::ChoiceOptional)
            return true;
        if (entry.m_trait == CElementInfo::Trait::ChoiceCollection) {
            QnVariant value;
            entry.ReadProperty(this, value);
            const CXmlCollectionBase* const pCollection = value.PeekXmlCollection();
            if (pCollection && pCollection->GetMinOccurs() == 0)
                return true;
        }
    }
    return false;
}

void CXmlGeneratedClass::CleanMetaData(CParentElementInfo*& pInfo, CElementInfo**& ppElements,
                                       CAttributeInfo**& ppAttributes)
{
    delete pInfo;
    pInfo = nullptr;
    DestroyTable(ppElements);
    DestroyTable(ppAttributes);
}

} // namespace QnXmlLib16
