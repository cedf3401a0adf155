#pragma once

#include "QnXmlLib16/collections/XmlCollectionBase.h"
#include "QnXmlLib16/validation/PrimitiveRestrictions.h"
#include "QnXmlLib16/validation/WhitespaceUtils.h"
#include "QnXmlLib16/values/ItemType.h"

#include <string>

namespace QnXmlLib16 {

// A repeating element of a schema value type: what the typed collections share but for the values
// themselves, which each of them holds by value.
//
// Each typed collection offers, besides the operations of its bases:
//   AddAt(index, value)  Puts a copy of the value at that index, 0 to the count. Listeners hear of
//                        it before anything is looked at; then an index outside throws
//                        CQnInvalidParamException "Index out of range", and a value that breaks a
//                        facet throws as CXmlObjectHelper::CheckRestriction does. Nothing has
//                        changed then, and no completion is told.
//   Add(value)           AddAt(GetCount(), value). A maximum is no obstacle.
//   Item(index)          A copy of the value. An index outside throws CQnInvalidParamException
//                        "Index %d is out of range, use 0 - %d", whose second number is the count.
//   Remove(index)        Listeners hear of the index even where it is outside, which throws as
//                        Item() does; the event of the completion carries the index 0 always.
// Clear() takes linear time and calls Remove(0) for each value, also where that is overridden.
//
// Written, each value is an element of the collection's name and namespace, in the lexical form of
// its type; the bounds on the count are checked first.
class QNXML_API CXmlTypeCollection : public CXmlCollectionBase
{
public:
    // The facets as CPrimitiveRestrictions takes them, then the rule that is applied to a text
    // before it is parsed, then the format that the floating point and decimal collections print
    // with (null or empty: the default form).
    CXmlTypeCollection(ItemType itemType, const char* pszElementName, const char* pszNamespace,
                       int iMinOccurs, int iMaxOccurs, const char* pszPattern, long lMinLength,
                       long lMaxLength, const char* pszMinInclusive, const char* pszMaxInclusive,
                       const char* pszMinExclusive, const char* pszMaxExclusive, long lLength,
                       long lTotalDigits, long lFractionDigits,
                       CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* pszFormat);
    ~CXmlTypeCollection() override;

    // Parses the text after the whitespace rule and adds the value. Throws what the type's parser
    // and the facet check throw; nothing is added then.
    virtual void AddFromString(std::string strText) = 0;

    const CPrimitiveRestrictions& GetRestrictions() const noexcept { return m_restrictions; }
    ItemType GetItemType() const noexcept { return m_itemType; }
    CWhitespaceUtils::WhitespaceRule GetWhitespaceRule() const noexcept { return m_whitespaceRule; }
    const std::string& GetFormat() const noexcept { return m_strFormat; }

protected:
    // Adds the texts of pCurrent and its following siblings while their name matches, and returns
    // the first element that does not, or null. Adds to what is there; no count is checked, and
    // no attribute is looked at. A refused value leaves those before it in place.
    CXmlElement* FromXml_Int(CXmlElement* pParent, CXmlElement* pCurrent,
                             const CSerializationContext& context, bool bOptionalChoice) override;

    CPrimitiveRestrictions m_restrictions;
    ItemType m_itemType;
    CWhitespaceUtils::WhitespaceRule m_whitespaceRule;
    std::string m_strFormat;
};

} // namespace QnXmlLib16
