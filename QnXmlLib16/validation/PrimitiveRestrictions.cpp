#include "QnXmlLib16/validation/PrimitiveRestrictions.h"

#include "QnXmlLib16/support/internal/TextOrEmpty.h"

namespace QnXmlLib16 {

CPrimitiveRestrictions::CPrimitiveRestrictions() = default;

CPrimitiveRestrictions::CPrimitiveRestrictions(const char* pszPattern, long lMinLength,
                                               long lMaxLength, const char* pszMinInclusive,
                                               const char* pszMaxInclusive,
                                               const char* pszMinExclusive,
                                               const char* pszMaxExclusive, long lLength,
                                               long lTotalDigits, long lFractionDigits)
    : m_strPattern(OrEmpty(pszPattern)),
      m_lMinLength(lMinLength),
      m_lMaxLength(lMaxLength),
      m_strMinInclusive(OrEmpty(pszMinInclusive)),
      m_strMaxInclusive(OrEmpty(pszMaxInclusive)),
      m_strMinExclusive(OrEmpty(pszMinExclusive)),
      m_strMaxExclusive(OrEmpty(pszMaxExclusive)),
      m_lLength(lLength),
      m_lTotalDigits(lTotalDigits),
      m_lFractionDigits(lFractionDigits)
{}

CPrimitiveRestrictions::CPrimitiveRestrictions(const CPrimitiveRestrictions&) = default;
CPrimitiveRestrictions::CPrimitiveRestrictions(CPrimitiveRestrictions&&) noexcept = default;
CPrimitiveRestrictions& CPrimitiveRestrictions::operator=(const CPrimitiveRestrictions&) = default;
CPrimitiveRestrictions&
CPrimitiveRestrictions::operator=(CPrimitiveRestrictions&&) noexcept = default;
CPrimitiveRestrictions::~CPrimitiveRestrictions() = default;

} // namespace QnXmlLib16
