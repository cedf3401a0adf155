#pragma once

#include "QnXmlLib16/collections/XmlTypeCollection.h"
#include "QnXmlLib16/support/InstanceMonitor.h"
#include "QnXmlLib16/values/DateTimeSpan.h"

#include <cstddef>
#include <vector>

namespace QnXmlLib16 {

// Durations, as in P1Y2M3DT4H5M6S.
class QNXML_API CdurationCol : public CXmlTypeCollection, public CInstanceMonitor
{
public:
    CdurationCol(const char* pszElementName, const char* pszNamespace, int iMinOccurs,
                 int iMaxOccurs, const char* pszPattern, long lMinLength, long lMaxLength,
                 const char* pszMinInclusive, const char* pszMaxInclusive,
                 const char* pszMinExclusive, const char* pszMaxExclusive, long lLength,
                 long lTotalDigits, long lFractionDigits,
                 CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* pszFormat);
    ~CdurationCol() override;

    int GetCount() const override;
    void Clear() override;
    void Remove(int iIndex) override;
    void AddFromString(std::string strText) override;

    CDateTimeSpan Item(int iIndex) const;
    void AddAt(int iIndex, const CDateTimeSpan& value);
    void Add(const CDateTimeSpan& value);

protected:
    void ToXml_Int(CXmlWriter* pWriter, bool bIsRoot, const char* pszTargetNamespace,
                   const CSerializationContext& context, bool bOptionalChoice) const override;

private:
    // The values are those from m_nFirst on; see ValueColSteps.h.
    std::vector<CDateTimeSpan> m_vecItems;
    std::size_t m_nFirst = 0;
};

} // namespace QnXmlLib16
