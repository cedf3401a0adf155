// The part of CBigInteger that stands above CDecimal: texts with a point or an exponent, and the
// constants made from them.

#include "QnXmlLib16/values/BigInteger.h"
#include "QnXmlLib16/values/Decimal.h"

#include <cstring>

namespace QnXmlLib16 {

// Built before every object of ordinary priority in this library or a program that holds it, and by
// the loader before all that depends on the library: an initialiser anywhere may use them.
#define QNXML_FIRST __attribute__((init_priority(101)))

QNXML_FIRST const CBigInteger CBigInteger::MAX_LONG{CDecimal("2147483647")};
QNXML_FIRST const CBigInteger CBigInteger::MIN_LONG{CDecimal("-2147483648")};
QNXML_FIRST const CBigInteger CBigInteger::MAX_LONGLONG{CDecimal("9223372036854775807")};
QNXML_FIRST const CBigInteger CBigInteger::MIN_LONGLONG{CDecimal("-9223372036854775808")};
QNXML_FIRST const CBigInteger CBigInteger::MAX_DOUBLE{CDecimal("1.7E+308")};
QNXML_FIRST const CBigInteger CBigInteger::MIN_DOUBLE{CDecimal("-1.7E+308")};

#undef QNXML_FIRST

CBigInteger::CBigInteger(const char* pszText)
{
    Parse(pszText);
}

CBigInteger::CBigInteger(const CDecimal& value) : CBigInteger(value.ToBigInteger()) {}

void CBigInteger::Parse(const char* pszText)
{
    if (pszText == nullptr) {
        pszText = "";
    }
    const std::size_t nLength = std::strspn(pszText, " \t\n\r+-0123456789");
    if (pszText[nLength] != '\0') {
        *this = CBigInteger(CDecimal(pszText));
        return;
    }
    const char* pFirst = pszText;
    const char* pEnd = pszText + nLength;
    while (pFirst != pEnd && *pFirst == ' ') {
        ++pFirst;
    }
    while (pEnd != pFirst && pEnd[-1] == ' ') {
        --pEnd;
    }
    // Deliberate: what stands in front of the last run of digits is not looked at, but for a "-" at
    // the very start. So "1-2" is 2, "-1 2" is -2, and "12-" or a number with a line feed behind it
    // is 0. Pinned by BigIntegerText.TheDigitsAtTheEndAreTheValue.
    const signed char nSign = SignOf(pFirst != pEnd && *pFirst == '-');
    const char* pDigits = pEnd;
    while (pDigits != pFirst && pDigits[-1] >= '0' && pDigits[-1] <= '9') {
        --pDigits;
    }
    SetDigitText(pDigits, static_cast<std::size_t>(pEnd - pDigits));
    m_number.nSign = nSign;
}

} // namespace QnXmlLib16
