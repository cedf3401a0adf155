#include "QnXmlLib16/collections/XmlTypeCollection.h"

#include "QnXmlLib16/binding/XmlObjectHelper.h"
#include "QnXmlLib16/xml/XmlElement.h"

namespace QnXmlLib16 {

CXmlTypeCollection::CXmlTypeCollection(ItemType itemType, const char* pszElementName,
                                       const char* pszNamespace, int iMinOccurs, int iMaxOccurs,
                                       const char* pszPattern, long lMinLength, long lMaxLength,
                                       const char* pszMinInclusive, const char* pszMaxInclusive,
                                       const char* pszMinExclusive, const char* pszMaxExclusive,
                                       long lLength, long lTotalDigits, long lFractionDigits,
                                       CWhitespaceUtils::WhitespaceRule whitespaceRule,
                                       const char* pszFormat)
    : CXmlCollectionBase(pszElementName, pszNamespace, iMinOccurs, iMaxOccurs),
      m_restrictions(pszPattern, lMinLength, lMaxLength, pszMinInclusive, pszMaxInclusive,
                     pszMinExclusive, pszMaxExclusive, lLength, lTotalDigits, lFractionDigits),
      m_itemType(itemType),
      m_whitespaceRule(whitespaceRule),
      m_strFormat(pszFormat ? pszFormat : "")
{}

CXmlTypeCollection::~CXmlTypeCollection() = default;

// Deliberate: nothing is cleared and no count is checked here, so reading twice holds twice the
// values, and one too many shows up when the count is asked for. Pinned by
// ValueCollection.ReadingAddsAndStopsAtTheFirstOtherElement.
CXmlElement* CXmlTypeCollection::FromXml_Int(CXmlElement* /*pParent*/, CXmlElement* pCurrent,
                                             const CSerializationContext& context,
                                             bool /*bOptionalChoice*/)
{
    while (pCurrent && CXmlObjectHelper::DoesElementNameMatch(context, pCurrent, m_strElementName,
                                                              m_strNamespace)) {
        AddFromString(pCurrent->GetText());
        pCurrent = pCurrent->GetNextSiblingElement();
    }
    return pCurrent;
}

} // namespace QnXmlLib16
