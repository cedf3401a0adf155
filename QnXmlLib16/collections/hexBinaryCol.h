#pragma once

#include "QnXmlLib16/collections/XmlTypeCollection.h"
#include "QnXmlLib16/support/InstanceMonitor.h"
#include "QnXmlLib16/values/BinaryData.h"

#include <cstddef>
#include <vector>

namespace QnXmlLib16 {

// Bytes in the hexBinary form of XML Schema Part 2. A value shares its bytes with the one that
// was added, until either is changed.
class QNXML_API ChexBinaryCol : public CXmlTypeCollection, public CInstanceMonitor
{
public:
    ChexBinaryCol(const char* pszElementName, const char* pszNamespace, int iMinOccurs,
                  int iMaxOccurs, const char* pszPattern, long lMinLength, long lMaxLength,
                  const char* pszMinInclusive, const char* pszMaxInclusive,
                  const char* pszMinExclusive, const char* pszMaxExclusive, long lLength,
                  long lTotalDigits, long lFractionDigits,
                  CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* pszFormat);
    ~ChexBinaryCol() override;

    int GetCount() const override;
    void Clear() override;
    void Remove(int iIndex) override;
    void AddFromString(std::string strText) override;

    CBinaryData Item(int iIndex) const;
    void AddAt(int iIndex, const CBinaryData& value);
    void Add(const CBinaryData& value);

protected:
    void ToXml_Int(CXmlWriter* pWriter, bool bIsRoot, const char* pszTargetNamespace,
                   const CSerializationContext& context, bool bOptionalChoice) const override;

private:
    // The values are those from m_nFirst on; see ValueColSteps.h.
    std::vector<CBinaryData> m_vecItems;
    std::size_t m_nFirst = 0;
};

} // namespace QnXmlLib16
