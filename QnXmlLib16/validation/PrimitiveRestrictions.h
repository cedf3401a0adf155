#pragma once

#include "QnXmlLib16/support/Export.h"

#include <string>

namespace QnXmlLib16 {

// The facets that a schema puts on a simple type (XML Schema Part 2, section 4.3), but for the
// enumeration and the white space. It is a record: CXmlObjectHelper::CheckRestriction does the
// work, and parses the bounds anew at each check. A const record may be read by many threads.
//
// A text facet is absent when empty, a number when negative. The bounds are schema text in the
// lexical form of the value's own type, so a bad one shows up at the first check.
//
// The pattern is in the local code page, like all text of the library: under the "C" locale its
// bytes above ASCII become "?" before it is compiled. An application with such patterns sets a
// UTF-8 locale or calls ASCIIOnly(true).
class QNXML_API CPrimitiveRestrictions
{
public:
    CPrimitiveRestrictions(); // no facet

    // Null texts count as empty.
    CPrimitiveRestrictions(const char* pszPattern, long lMinLength, long lMaxLength,
                           const char* pszMinInclusive, const char* pszMaxInclusive,
                           const char* pszMinExclusive, const char* pszMaxExclusive, long lLength,
                           long lTotalDigits, long lFractionDigits);

    CPrimitiveRestrictions(const CPrimitiveRestrictions&);
    CPrimitiveRestrictions(CPrimitiveRestrictions&&) noexcept;
    CPrimitiveRestrictions& operator=(const CPrimitiveRestrictions&);
    CPrimitiveRestrictions& operator=(CPrimitiveRestrictions&&) noexcept;
    virtual ~CPrimitiveRestrictions();

    // An XML Schema regular expression; see TestRegEx for what is understood.
    const std::string& GetPattern() const noexcept { return m_strPattern; }

    // Lengths count bytes: of the text as it is held, of the decoded data for binary types.
    long GetMinLength() const noexcept { return m_lMinLength; }
    long GetMaxLength() const noexcept { return m_lMaxLength; }
    long GetLength() const noexcept { return m_lLength; }

    const std::string& GetMinInclusive() const noexcept { return m_strMinInclusive; }
    const std::string& GetMaxInclusive() const noexcept { return m_strMaxInclusive; }
    const std::string& GetMinExclusive() const noexcept { return m_strMinExclusive; }
    const std::string& GetMaxExclusive() const noexcept { return m_strMaxExclusive; }

    long GetTotalDigits() const noexcept { return m_lTotalDigits; }
    long GetFractionDigits() const noexcept { return m_lFractionDigits; }

private:
    std::string m_strPattern;
    long m_lMinLength = -1;
    long m_lMaxLength = -1;
    std::string m_strMinInclusive;
    std::string m_strMaxInclusive;
    std::string m_strMinExclusive;
    std::string m_strMaxExclusive;
    long m_lLength = -1;
    long m_lTotalDigits = -1;
    long m_lFractionDigits = -1;
};

} // namespace QnXmlLib16

namespace QnXmlLib16Data {
using QnXmlLib16::CPrimitiveRestrictions;
}
