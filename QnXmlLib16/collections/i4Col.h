#pragma once

#include "QnXmlLib16/collections/XmlTypeCollection.h"
#include "QnXmlLib16/support/InstanceMonitor.h"

#include <cstddef>
#include <vector>

namespace QnXmlLib16 {

// Signed integers. The name is no bit width: 64 bits on this target.
class QNXML_API Ci4Col : public CXmlTypeCollection, public CInstanceMonitor
{
public:
    Ci4Col(const char* pszElementName, const char* pszNamespace, int iMinOccurs, int iMaxOccurs,
           const char* pszPattern, long lMinLength, long lMaxLength, const char* pszMinInclusive,
           const char* pszMaxInclusive, const char* pszMinExclusive, const char* pszMaxExclusive,
           long lLength, long lTotalDigits, long lFractionDigits,
           CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* pszFormat);
    ~Ci4Col() override;

    int GetCount() const override;
    void Clear() override;
    void Remove(int iIndex) override;
    void AddFromString(std::string strText) override;

    long Item(int iIndex) const;
    void AddAt(int iIndex, long value);
    void Add(long value);

protected:
    void ToXml_Int(CXmlWriter* pWriter, bool bIsRoot, const char* pszTargetNamespace,
                   const CSerializationContext& context, bool bOptionalChoice) const override;

private:
    // The values are those from m_nFirst on; see ValueColSteps.h.
    std::vector<long> m_vecItems;
    std::size_t m_nFirst = 0;
};

} // namespace QnXmlLib16
