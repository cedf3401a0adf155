#pragma once

#include "QnXmlLib16/collections/XmlTypeCollection.h"
#include "QnXmlLib16/support/InstanceMonitor.h"
#include "QnXmlLib16/values/Decimal.h"

#include <cstddef>
#include <vector>

namespace QnXmlLib16 {

// Decimals of any length. The format of the constructor is the number of fraction digits to write;
// empty gives as many as the value has.
class QNXML_API CdecimalCol : public CXmlTypeCollection, public CInstanceMonitor
{
public:
    CdecimalCol(const char* pszElementName, const char* pszNamespace, int iMinOccurs,
                int iMaxOccurs, const char* pszPattern, long lMinLength, long lMaxLength,
                const char* pszMinInclusive, const char* pszMaxInclusive,
                const char* pszMinExclusive, const char* pszMaxExclusive, long lLength,
                long lTotalDigits, long lFractionDigits,
                CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* pszFormat);
    ~CdecimalCol() override;

    int GetCount() const override;
    void Clear() override;
    void Remove(int iIndex) override;
    void AddFromString(std::string strText) override;

    CDecimal Item(int iIndex) const;
    void AddAt(int iIndex, const CDecimal& value);
    void Add(const CDecimal& value);

protected:
    void ToXml_Int(CXmlWriter* pWriter, bool bIsRoot, const char* pszTargetNamespace,
                   const CSerializationContext& context, bool bOptionalChoice) const override;

private:
    // The values are those from m_nFirst on; see ValueColSteps.h.
    std::vector<CDecimal> m_vecItems;
    std::size_t m_nFirst = 0;
};

} // namespace QnXmlLib16
