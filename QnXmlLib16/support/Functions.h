#pragma once

#include "QnXmlLib16/support/Export.h"

#include <cstdarg>
#include <cstdio>
#include <string>

// The library's own build holds its formats against their arguments. A caller may pass what the
// walk below defines and the compiler would warn of, such as nullptr for a text.
#ifdef QNXML_CHECK_FORMATS
#define QNXML_PRINTF(iFormat, iFirst) __attribute__((format(printf, iFormat, iFirst)))
#else
#define QNXML_PRINTF(iFormat, iFirst)
#endif

// Free functions that the whole library builds on. None keeps state; all are re-entrant.

namespace QnXmlLib16 {

// printf-style text. The size of the result is worked out from the format ahead of printing, by
// a walk that knows these conversions: s S c C d i u x X o p e g G f n, the flags # + - blank 0,
// "*" as width or precision, and ONE size prefix out of h, l, I64, F, L, N. Text that does not
// fit the size found is cut, never overrun: "%lld" and "%zu" come out cut short, as the second
// "l" and the "z" are no prefixes here. A null text prints what vsnprintf prints for it.
// Numbers bear a point whatever LC_NUMERIC says. A null format gives an empty text.
QNXML_API std::string FormatString(const char* pszFormat, ...) QNXML_PRINTF(1, 2);

// As FormatString. The caller's list is left untouched by the walk and consumed by the print.
QNXML_API std::string FormatV(const char* pszFormat, va_list args) QNXML_PRINTF(1, 0);

// Replaces every occurrence in place, and what the replacements make up anew as well: "ab" by
// "b" turns "aab" into "b". A strReplace that contains strFind makes one pass from the left
// instead. An empty strFind changes nothing.
QNXML_API void FindReplace(std::string& strText, const std::string& strFind,
                           const std::string& strReplace);
QNXML_API void FindReplace(std::wstring& strText, const std::wstring& strFind,
                           const std::wstring& strReplace);

// Decimal digits, zeros in front up to uWidth characters; a minus sign counts as one of them.
QNXML_API std::string PadZero(int iValue, unsigned char uWidth);

// Takes zeros off the end, never the first character: "100" gives "1", "000" gives "0".
// Deliberate spelling: callers link against this name.
QNXML_API std::string TrimTrainingZeros(std::string strText);

// The fraction of a second, each argument 0 to 999: a point and up to nine digits without
// trailing zeros, or an empty text if all three are 0.
QNXML_API std::string ToFracString(unsigned short uMilli, unsigned short uMicro,
                                   unsigned short uNano);

// Gregorian rule, negative years by the same arithmetic (-4 is a leap year).
QNXML_API bool IsLeapYear(int iYear);

// The quotient rounded down, computed in single precision: exact only while the value fits the
// 24 bits of a float's mantissa. A quotient that no int holds, a division by 0 included, gives
// the least int.
QNXML_API int GetQuotient(long long iValue, int iDivisor);

// iValue - iDivisor * GetQuotient(iValue, iDivisor), the product taken modulo 2^32. So the result
// leaves the range 0 to iDivisor - 1 where the quotient is not exact: -13 for 1000000007 and 60.
QNXML_API long long GetModulo(long long iValue, int iDivisor);

// Wide text in the multibyte encoding of the process's locale; a character that the locale
// can't express becomes "?".
QNXML_API std::string UnicodeToMultiByte(const wchar_t* pszText);

// Upper-cases in place by toupper, so by the process's locale; returns pszText, null included.
QNXML_API char* strupr(char* pszText);

// Length of a file in bytes, its position restored; -1 if a step fails, and for all but regular
// files: a directory opens for reading, and seeking in it yields no length.
QNXML_API long _filelength(FILE* pFile);

} // namespace QnXmlLib16
