#pragma once

#include "QnXmlLib16/collections/XmlTypeCollection.h"
#include "QnXmlLib16/values/DateTime.h"

#include <cstddef>
#include <string>
#include <vector>

namespace QnXmlLib16 {

// A repeating element of one of the five kinds of date and time that CDateTime holds whole. A
// final class says which kind, and its facet check and text.
//
// Other than in the collections of other values, a value is checked before the listeners hear of
// it, and an index after that.
class QNXML_API CdatetimeBaseCol : public CXmlTypeCollection
{
public:
    CdatetimeBaseCol(ItemType itemType, const char* pszElementName, const char* pszNamespace,
                     int iMinOccurs, int iMaxOccurs, const char* pszPattern, long lMinLength,
                     long lMaxLength, const char* pszMinInclusive, const char* pszMaxInclusive,
                     const char* pszMinExclusive, const char* pszMaxExclusive, long lLength,
                     long lTotalDigits, long lFractionDigits,
                     CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* pszFormat);
    ~CdatetimeBaseCol() override;

    int GetCount() const override;
    void Clear() override;
    void Remove(int iIndex) override;

    virtual void Add(const CDateTime& value);
    virtual void AddAt(int iIndex, const CDateTime& value) = 0;
    virtual CDateTime Item(int iIndex) const;

    // The lexical form of a value of this collection.
    virtual std::string ItemToString(const CDateTime& value) const = 0;

protected:
    void ToXml_Int(CXmlWriter* pWriter, bool bIsRoot, const char* pszTargetNamespace,
                   const CSerializationContext& context, bool bOptionalChoice) const override;

    // Inserts a value that has been checked.
    void BaseAddAt(int iIndex, const CDateTime& value);

private:
    // The values are those from m_nFirst on; see ValueColSteps.h.
    std::vector<CDateTime> m_vecItems;
    std::size_t m_nFirst = 0;
};

} // namespace QnXmlLib16
