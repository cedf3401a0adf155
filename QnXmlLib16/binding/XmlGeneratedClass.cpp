#include "QnXmlLib16/binding/XmlGeneratedClass.h"

#include "QnXmlLib16/binding/AttributeInfo.h"
#include "QnXmlLib16/binding/ElementInfo.h"
#include "QnXmlLib16/binding/ParentElementInfo.h"
#include "QnXmlLib16/collections/XmlCollectionBase.h"
#include "QnXmlLib16/values/QnVariant.h"

using QnXmlLib16Data::CAttributeInfo;
using QnXmlLib16Data::CElementInfo;
using QnXmlLib16Data::CParentElementInfo;

namespace QnXmlLib16 {

namespace {

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

} // namespace

// Ready before the static objects of other sources, which may build their tables at once.
__attribute__((init_priority(101))) CQNCriticalSection CXmlGeneratedClass::m_csInit;

CXmlGeneratedClass::CXmlGeneratedClass() = default;
CXmlGeneratedClass::~CXmlGeneratedClass() = default;

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
    int iCount = 0;
    for (CElementInfo** ppEntry = GetClassElementInfo(); *ppEntry; ++ppEntry)
        ++iCount;
    return iCount;
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

void CXmlGeneratedClass::ReadProperty(int nProperty, QnVariant& value) const
{
    const_cast<CXmlGeneratedClass*>(this)->AccessProperty(nProperty, true, value);
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
