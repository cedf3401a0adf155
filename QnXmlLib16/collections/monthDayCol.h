#pragma once

#include "QnXmlLib16/collections/datetimeBaseCol.h"
#include "QnXmlLib16/support/InstanceMonitor.h"

namespace QnXmlLib16 {

// Days of any year, of the kind dt_gMonthDay, as in --05-09.
class QNXML_API CmonthDayCol : public CdatetimeBaseCol, public CInstanceMonitor
{
public:
    CmonthDayCol(const char* pszElementName, const char* pszNamespace, int iMinOccurs,
                 int iMaxOccurs, const char* pszPattern, long lMinLength, long lMaxLength,
                 const char* pszMinInclusive, const char* pszMaxInclusive,
                 const char* pszMinExclusive, const char* pszMaxExclusive, long lLength,
                 long lTotalDigits, long lFractionDigits,
                 CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* pszFormat);
    ~CmonthDayCol() override;

    void AddFromString(std::string strText) override;
    // Throws CQnInvalidParamException for a value of another kind.
    void AddAt(int iIndex, const CDateTime& value) override;
    std::string ItemToString(const CDateTime& value) const override;
};

} // namespace QnXmlLib16
