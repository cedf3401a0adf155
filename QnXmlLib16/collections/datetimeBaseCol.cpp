#include "QnXmlLib16/collections/datetimeBaseCol.h"

#include "QnXmlLib16/collections/internal/ValueColSteps.h"

namespace QnXmlLib16 {

CdatetimeBaseCol::CdatetimeBaseCol(ItemType itemType, const char* pszElementName,
                                   const char* pszNamespace, int iMinOccurs, int iMaxOccurs,
                                   const char* pszPattern, long lMinLength, long lMaxLength,
                                   const char* pszMinInclusive, const char* pszMaxInclusive,
                                   const char* pszMinExclusive, const char* pszMaxExclusive,
                                   long lLength, long lTotalDigits, long lFractionDigits,
                                   CWhitespaceUtils::WhitespaceRule whitespaceRule,
                                   const char* pszFormat)
    : CXmlTypeCollection(itemType, pszElementName, pszNamespace, iMinOccurs, iMaxOccurs, pszPattern,
                         lMinLength, lMaxLength, pszMinInclusive, pszMaxInclusive, pszMinExclusive,
                         pszMaxExclusive, lLength, lTotalDigits, lFractionDigits, whitespaceRule,
                         pszFormat)
{}

CdatetimeBaseCol::~CdatetimeBaseCol() = default;

int CdatetimeBaseCol::GetCount() const
{
    return ValueColSteps::Count(m_vecItems, m_nFirst);
}

void CdatetimeBaseCol::Clear()
{
    ValueColSteps::Clear(*this);
}

void CdatetimeBaseCol::Remove(int iIndex)
{
    ValueColSteps::RemoveAt(*this, m_vecItems, m_nFirst, iIndex);
}

void CdatetimeBaseCol::Add(const CDateTime& value)
{
    AddAt(GetCount(), value);
}

CDateTime CdatetimeBaseCol::Item(int iIndex) const
{
    return ValueColSteps::ItemAt(m_vecItems, m_nFirst, iIndex);
}

// Deliberate: every kind reaches the writer as a dateTime, with the text of its own form. Pinned
// by ValueCollection.EachTypeHasItsTypeCodeAndItsFacets.
void CdatetimeBaseCol::ToXml_Int(CXmlWriter* pWriter, bool /*bIsRoot*/,
                                 const char* /*pszTargetNamespace*/,
                                 const CSerializationContext& context,
                                 bool /*bOptionalChoice*/) const
{
    ValueColSteps::Write(*this, m_vecItems, m_nFirst, m_strElementName, m_strNamespace, *pWriter,
                         context, it_datetime,
                         [this](const CDateTime& value) { return ItemToString(value); });
}

// Deliberate: kind and facets have been checked before any listener hears of the value; only the
// index comes after. Pinned by ValueCollection.WhatIsRefusedIsAnnouncedFirst.
void CdatetimeBaseCol::BaseAddAt(int iIndex, const CDateTime& value)
{
    ValueColSteps::InsertAt(*this, m_vecItems, m_nFirst, iIndex, value, [](const CDateTime&) {});
}

} // namespace QnXmlLib16
