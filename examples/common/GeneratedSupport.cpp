#include "examples/common/GeneratedSupport.h"

#include "QnXmlLib16/binding/XmlObjectHelper.h"
#include "QnXmlLib16/xml/XmlElement.h"

#include <utility>

using namespace QnXmlLib16;
using QnXmlLib16Data::CAttributeInfo;
using QnXmlLib16Data::CElementInfo;
using QnXmlLib16Data::CParentElementInfo;

namespace GeneratedSupport {

namespace {

// Puts an entry in front of the null that ends the table; a table is built once and is short.
template <class TInfo>
void AddEntry(TInfo**& ppTable, TInfo* pEntry)
{
    std::unique_ptr<TInfo> pOwned(pEntry);
    size_t nCount = 0;
    while (ppTable[nCount])
        ++nCount;
    TInfo** const ppNew = new TInfo* [nCount + 2] {};
    for (size_t i = 0; i < nCount; ++i)
        ppNew[i] = ppTable[i];
    ppNew[nCount] = pOwned.release();
    delete[] ppTable;
    ppTable = ppNew;
}

} // namespace

CBoundClass::CMetaData::CMetaData(void (*fnDescribe)(CMetaData&))
{
    const CQNCriticalSectionGuard guard(m_csInit);
    try {
        m_ppElements = new CElementInfo* [1] { nullptr };
        m_ppAttributes = new CAttributeInfo* [1] { nullptr };
        fnDescribe(*this);
    }
    catch (...) {
        CleanMetaData(m_pInfo, m_ppElements, m_ppAttributes);
        throw;
    }
}

CBoundClass::CMetaData::~CMetaData()
{
    CleanMetaData(m_pInfo, m_ppElements, m_ppAttributes);
}

void CBoundClass::CMetaData::SetClass(CParentElementInfo* pInfo)
{
    m_pInfo = pInfo;
}

void CBoundClass::CMetaData::Add(CElementInfo* pElement)
{
    AddEntry(m_ppElements, pElement);
}

void CBoundClass::CMetaData::Add(CAttributeInfo* pAttribute)
{
    AddEntry(m_ppAttributes, pAttribute);
}

CParentElementInfo* CBoundClass::GetClassInfo() const
{
    return GetMetaData().m_pInfo;
}

CElementInfo** CBoundClass::GetClassElementInfo() const
{
    return GetMetaData().m_ppElements;
}

CAttributeInfo** CBoundClass::GetClassAttributeInfo() const
{
    return GetMetaData().m_ppAttributes;
}

CBoundCol::~CBoundCol()
{
    if (m_pHolder)
        m_pHolder->m_pCol = nullptr;
}

void CBoundCol::Append(CXmlObjectBase* pItem)
{
    Throw_IfPropertyIsNull(pItem, m_strElementName.c_str());
    Throw_IfElementNameDiffers(pItem, m_strElementName.c_str());
    Join();
    AppendItem(pItem);
}

// From here on the holder counts the collection.
void CBoundCol::Join()
{
    if (std::exchange(m_pHolder, nullptr))
        AddRef();
}

void CBoundCol::ToXml_Int(CXmlWriter* pWriter, bool, const char*,
                          const CSerializationContext& context, bool) const
{
    ValidateCount(context);
    for (const CNode* p = begin(); p != end(); p = p->GetNext()) {
        if (const CXmlObjectBase* const pItem = p->GetItem())
            CXmlObjectBase::ToXml_Int(pItem, pWriter, false, m_strNamespace.c_str(), context,
                                      false);
    }
}

CXmlElement* CBoundCol::FromXml_Int(CXmlElement*, CXmlElement* pCurrent,
                                    const CSerializationContext& context, bool)
{
    for (; pCurrent && CXmlObjectHelper::DoesElementNameMatch(context, pCurrent, m_strElementName,
                                                              m_strNamespace);
         pCurrent = pCurrent->GetNextSiblingElement()) {
        const CSmartPtr<CXmlObjectBase> pItem = CreateItem();
        CXmlObjectBase::FromXml_Int(pItem.GetPtr(), pCurrent, pCurrent->GetFirstElement(), context);
        Join();
        AppendItem(pItem.GetPtr());
    }
    return pCurrent;
}

void CColHolder::Offer(CBoundCol* pCol)
{
    Reset();
    pCol->m_pHolder = this;
    m_pCol = pCol;
}

void CColHolder::Reset()
{
    CBoundCol* const pCol = std::exchange(m_pCol, nullptr);
    if (pCol && !std::exchange(pCol->m_pHolder, nullptr))
        pCol->Release();
}

} // namespace GeneratedSupport
