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

// The calls of Prepare around one run through the items.
class CBoundCol::CPreparations
{
public:
    explicit CPreparations(const CBoundCol& col) : m_col(col) {}
    CPreparations(const CPreparations&) = delete;
    CPreparations& operator=(const CPreparations&) = delete;
    ~CPreparations() { m_col.Prepare(nullptr); }

    void For(CXmlObjectBase* pItem) const { m_col.Prepare(pItem); }

private:
    const CBoundCol& m_col;
};

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

void CBoundCol::Prepare(CXmlObjectBase*) const {}

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
    const CPreparations preparations(*this);
    for (const CNode* p = begin(); p != end(); p = p->GetNext()) {
        CXmlObjectBase* const pItem = p->GetItem();
        if (!pItem)
            continue;
        preparations.For(pItem);
        CXmlObjectBase::ToXml_Int(pItem, pWriter, false, m_strNamespace.c_str(), context, false);
    }
}

CXmlElement* CBoundCol::FromXml_Int(CXmlElement*, CXmlElement* pCurrent,
                                    const CSerializationContext& context, bool)
{
    const CPreparations preparations(*this);
    for (; pCurrent && CXmlObjectHelper::DoesElementNameMatch(context, pCurrent, m_strElementName,
                                                              m_strNamespace);
         pCurrent = pCurrent->GetNextSiblingElement()) {
        const CSmartPtr<CXmlObjectBase> pItem = CreateItem();
        preparations.For(pItem.GetPtr());
        CXmlObjectBase::FromXml_Int(pItem.GetPtr(), pCurrent, pCurrent->GetFirstElement(), context);
        Join();
        AppendItem(pItem.GetPtr());
    }
    return pCurrent;
}

CColHolder::~CColHolder()
{
    if (!m_pCol)
        return;
    if (m_pCol->m_pHolder)
        m_pCol->m_pHolder = nullptr;
    else
        m_pCol->Release();
}

void CColHolder::Offer(CBoundCol* pCol)
{
    Clear();
    if (m_pCol)
        m_pCol->m_pHolder = nullptr;
    if (pCol->m_pHolder)
        pCol->m_pHolder->m_pCol = nullptr;
    pCol->m_pHolder = this;
    m_pCol = pCol;
}

void CColHolder::Clear()
{
    if (m_pCol && !m_pCol->m_pHolder)
        std::exchange(m_pCol, nullptr)->Release();
}

// On offer still, and in no hands but these.
bool CColLender::IsFree() const
{
    if (!m_pCol || !m_pCol->m_pHolder)
        return false;
    const bool bShared = m_pCol->AddRef() > 2;
    m_pCol->Release();
    return !bShared;
}

} // namespace GeneratedSupport
