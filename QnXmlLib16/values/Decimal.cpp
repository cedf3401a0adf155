#include "QnXmlLib16/values/Decimal.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/validation/WhitespaceUtils.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace QnXmlLib16 {

namespace {

constexpr int kQuotientDigits = 32; // of the fraction of a quotient, before it is rounded
constexpr int kMaxExponent = 100000;
constexpr std::size_t kMaxText = 1023; // characters of a printed number with a fraction

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

const char* SkipDigits(const char* p)
{
    while (IsDigit(*p)) {
        ++p;
    }
    return p;
}

bool IsExponentLetter(char c)
{
    return c == 'e' || c == 'E';
}

[[noreturn]] void ThrowInvalidChar(const char* pszText, const char* pszPlace)
{
    throw CQnInvalidValueException(FormatString(
        "The string representing a Decimal, contained an invalid char at position %d [%s].",
        static_cast<int>(pszPlace - pszText), pszText));
}

// Order as numbers: the two zeros are equal and neither is below the other.
int Order(const CBigInteger& a, const CBigInteger& b)
{
    if (a == b) {
        return 0;
    }
    return a < b ? -1 : 1;
}

} // namespace

const int CDecimal::m_maxDivider = 30;

CDecimal::CDecimal() : m_nFractionalDivider(1) {}

CDecimal::CDecimal(int nValue) : m_integerPart(nValue), m_nFractionalDivider(1) {}

// Deliberate: cut to 32 bits, as CBigInteger(long). Pinned by DecimalBuilding.FromNumbers.
CDecimal::CDecimal(long nValue) : m_integerPart(nValue), m_nFractionalDivider(1) {}

CDecimal::CDecimal(long long nValue) : m_integerPart(nValue), m_nFractionalDivider(1) {}

CDecimal::CDecimal(double dValue) : m_nFractionalDivider(1)
{
    // What printf gives for "%.13f\n" with a point, whatever the locale; the line feed shows in the
    // message about an infinity or a NaN.
    char szText[1024];
    char* pEnd =
        std::to_chars(szText, szText + sizeof szText - 2, dValue, std::chars_format::fixed, 13).ptr;
    *pEnd++ = '\n';
    *pEnd = '\0';
    Read(szText);
}

CDecimal::CDecimal(const char* pszText) : m_nFractionalDivider(1)
{
    Read(pszText);
}

CDecimal::CDecimal(const CBigInteger& value) : m_integerPart(value), m_nFractionalDivider(1) {}

CDecimal::CDecimal(const CBigInteger& integerPart, const CBigInteger& fractionPart, int nDivider)
    : m_integerPart(integerPart), m_fractionPart(fractionPart), m_nFractionalDivider(nDivider)
{}

CDecimal::~CDecimal() = default;

CDecimal& CDecimal::operator=(const CDecimal& other)
{
    if (!other.m_integerPart.IsInPlace() || !other.m_fractionPart.IsInPlace()) {
        return *this = CDecimal(other);
    }
    m_integerPart = other.m_integerPart;
    m_fractionPart = other.m_fractionPart;
    m_nFractionalDivider = other.m_nFractionalDivider;
    return *this;
}

void CDecimal::Parse(const char* pszText)
{
    *this = CDecimal(pszText);
}

void CDecimal::Read(const char* pszText)
{
    if (pszText == nullptr) {
        pszText = "";
    }
    // Nearly all texts are an optional sign, digits and an optional fraction, and need no copy.
    const bool bMinus = *pszText == '-';
    const char* const pInteger = pszText + (bMinus ? 1 : 0);
    const char* const pIntegerEnd = SkipDigits(pInteger);
    const char* const pFraction = pIntegerEnd + (*pIntegerEnd == '.' ? 1 : 0);
    const char* const pFractionEnd = SkipDigits(pFraction);
    if (*pFractionEnd == '\0') {
        SetParts(bMinus, {pInteger, static_cast<std::size_t>(pIntegerEnd - pInteger)},
                 {pFraction, static_cast<std::size_t>(pFractionEnd - pFraction)});
        Rationalise();
        LimitFraction();
        return;
    }

    std::string strInteger;
    std::string strFraction;
    bool bNegative = false;
    const char* p = pszText;
    // Deliberate: signs and white space count anywhere before the point, so that "1-2" is -12 and
    // "1 000" is 1000. Pinned by DecimalText.Parses.
    for (; *p != '\0' && *p != '.' && !IsExponentLetter(*p); ++p) {
        if (IsDigit(*p)) {
            strInteger.push_back(*p);
        }
        else if (*p == '-' || *p == '+') {
            bNegative = *p == '-';
        }
        else if (!CWhitespaceUtils::IsWhiteSpace(*p)) {
            ThrowInvalidChar(pszText, p);
        }
    }
    if (*p == '.') {
        for (++p; *p != '\0' && !IsExponentLetter(*p); ++p) {
            if (IsDigit(*p)) {
                strFraction.push_back(*p);
            }
            else if (!CWhitespaceUtils::IsWhiteSpace(*p)) {
                ThrowInvalidChar(pszText, p);
            }
        }
    }
    bool bHasExponent = false;
    bool bNegativeExponent = false;
    int nExponent = 0;
    if (*p != '\0') {
        for (++p; CWhitespaceUtils::IsWhiteSpace(*p) || *p == '-' || *p == '+'; ++p) {
            bNegativeExponent = *p == '-' || (bNegativeExponent && *p != '+');
        }
        for (; *p != '\0'; ++p) {
            if (!IsDigit(*p)) {
                ThrowInvalidChar(pszText, p);
            }
            bHasExponent = true;
            if (nExponent <= kMaxExponent) {
                nExponent = nExponent * 10 + (*p - '0');
            }
        }
    }
    if (nExponent > kMaxExponent) {
        throw CQnInvalidValueException(
            FormatString("The exponent of the Decimal is to large [%s].", pszText));
    }

    SetParts(bNegative, strInteger, strFraction);
    if (bHasExponent) {
        const CDecimal power(CBigInteger::Pow10(static_cast<unsigned int>(nExponent)));
        *this = bNegativeExponent ? *this / power : *this * power;
    }
    Rationalise();
    LimitFraction();
}

std::string CDecimal::ToString() const
{
    if (m_fractionPart.IsZero()) {
        return m_integerPart.ToString();
    }
    // Deliberate: the text is cut at 1023 characters, in the integer part if that is so long, and
    // then shows a smaller number. A text without a fraction is never cut.
    // Pinned by DecimalText.ATextWithAFractionIsCutAt1023Characters.
    std::string strText(m_integerPart.m_number.nSign == -1 ? "-" : "");
    m_integerPart.AppendDigits(strText);
    strText.push_back('.');
    AppendFraction(strText);
    if (strText.size() > kMaxText) {
        strText.resize(kMaxText);
    }
    return strText;
}

std::string CDecimal::ToString(int nDigits) const
{
    // Deliberate: what is added before the cut is a half for every nDigits, and not a 5 behind the last
    // wanted digit, so that 1.25 gives "1.7" for one digit and "1.75" for two.
    // Pinned by DecimalText.FixedDigitsAddAHalfAndCut.
    const bool bNegative = m_integerPart.m_number.nSign == -1;
    CDecimal sum(CBigInteger(), CBigInteger(5), 1);
    if (bNegative) {
        sum.Negate();
    }
    sum += *this;

    std::string strFraction;
    sum.AppendFraction(strFraction);
    const auto nWanted = static_cast<std::size_t>(std::max(0, nDigits));
    strFraction.resize(std::min({strFraction.size(), kMaxText, nWanted}));
    std::string strText(sum.m_integerPart.m_number.nSign == -1 ? "-" : "");
    sum.m_integerPart.AppendDigits(strText);
    strText.push_back('.');
    return strText + strFraction;
}

double CDecimal::ToDouble() const
{
    if (!m_integerPart.IsDoubleRange()) {
        throw CQnOverFlowException("The Decimal value if to large to fit into a Double");
    }
    const std::string strText = ToString();
    double dValue = 0;
    // Reads with a point, whatever the locale. A fraction too small for a double gives 0.
    std::from_chars(strText.data(), strText.data() + strText.size(), dValue);
    return dValue;
}

long CDecimal::ToLong() const
{
    // Deliberate: the bounds are those of 32 bits, narrower than long.
    // Pinned by DecimalConversions.LongLongCutsWhereLongRounds.
    const CBigInteger value = ToBigInteger();
    if (!value.IsInt32()) {
        throw CQnOverFlowException("The Decimal value if to large to fit into a LONG");
    }
    return static_cast<long>(value.ToInt64());
}

long long CDecimal::ToLongLong() const
{
    // Deliberate: rounded to one fraction digit and then cut there, and a carry out of that digit
    // is not passed on. So 1.96 gives 1, where ToLong gives 2.
    // Pinned by DecimalConversions.LongLongCutsWhereLongRounds.
    CDecimal rounded(*this);
    rounded.ChangeFractionalDivider(1);
    if (!rounded.m_integerPart.IsInt64()) {
        throw CQnOverFlowException("The Decimal value if to large to fit into a LONGLONG");
    }
    return rounded.m_integerPart.ToInt64();
}

CBigInteger CDecimal::ToBigInteger() const
{
    CDecimal rounded(*this);
    rounded.ChangeFractionalDivider(0);
    return std::move(rounded.m_integerPart);
}

void CDecimal::Negate()
{
    m_integerPart.Negate();
    m_fractionPart.Negate();
}

CDecimal CDecimal::GetNegative() const
{
    CDecimal result(*this);
    result.Negate();
    return result;
}

void CDecimal::Rationalise()
{
    std::size_t nZeros = 0;
    if (m_fractionPart.IsZero()) {
        nZeros = static_cast<std::size_t>(std::max(1, m_nFractionalDivider) - 1);
    }
    else {
        while (m_fractionPart.GetLow()[nZeros] == 0) {
            ++nZeros;
        }
        if (nZeros != 0) {
            m_fractionPart.DropLowDigits(nZeros);
        }
    }
    if (nZeros != 0 && m_fractionPart.IsZero()) {
        m_fractionPart.m_number.nSign = 1; // as every quotient of 0
    }
    // Deliberate: a full fraction, 10 with a divider of 1, goes down to 1 with a divider of 0.
    // Pinned by DecimalRounding.ACarryIntoAFullFractionIsNotPassedOn.
    m_nFractionalDivider -= static_cast<int>(nZeros);
}

void CDecimal::ChangeFractionalDivider(int nDivider)
{
    nDivider = std::max(0, nDivider);
    if (m_nFractionalDivider <= nDivider) {
        if (!m_fractionPart.IsZero()) {
            const long long nMore = static_cast<long long>(nDivider) - m_nFractionalDivider;
            m_fractionPart.AddLowZeros(static_cast<std::size_t>(nMore));
        }
        m_nFractionalDivider = nDivider;
        return;
    }

    // The lowest digits go. What they are worth is above a half if the first of them is above 5, or
    // is 5 with anything but zeros behind it; digits that the divider counts but the fraction lacks
    // are zeros in front.
    const auto nDropped = static_cast<std::size_t>(m_nFractionalDivider - nDivider);
    bool bCarry = false;
    if (nDropped <= m_fractionPart.GetDigitCount()) {
        const char* const pLow = m_fractionPart.GetLow();
        const char* const pFirst = pLow + (nDropped - 1);
        bCarry = *pFirst > 5 ||
                 (*pFirst == 5 && std::any_of(pLow, pFirst, [](char n) { return n != 0; }));
    }
    const CBigInteger carry(bCarry ? m_fractionPart.m_number.nSign : 0);
    if (m_fractionPart.IsZero()) {
        m_fractionPart.m_number.nSign = 1; // as every quotient of 0
    }
    m_fractionPart.DropLowDigits(nDropped);
    m_nFractionalDivider = nDivider;
    if (!bCarry) {
        return;
    }
    if (nDivider == 0) {
        m_integerPart += carry;
        return;
    }
    // Deliberate: a carry that fills the fraction stays in it. 0.96 to one digit holds 10 with a
    // divider of 1 and prints "0.10".
    // Pinned by DecimalRounding.ACarryIntoAFullFractionIsNotPassedOn.
    m_fractionPart += carry;
    AlignSigns(CBigInteger::Pow10(static_cast<unsigned int>(nDivider)));
}

int CDecimal::Normalize(CDecimal& a, CDecimal& b)
{
    const int nDivider = std::max({a.m_nFractionalDivider, b.m_nFractionalDivider, 0});
    a.ChangeFractionalDivider(nDivider);
    b.ChangeFractionalDivider(nDivider);
    return nDivider;
}

CDecimal CDecimal::operator+(const CDecimal& right)
{
    CDecimal sum(*this);
    CDecimal other(right);
    const int nDivider = Normalize(sum, other);
    const CBigInteger unit = CBigInteger::Pow10(static_cast<unsigned int>(nDivider));
    sum.m_fractionPart += other.m_fractionPart;
    sum.m_integerPart += other.m_integerPart;
    if (CBigInteger::CompareMagnitudes(sum.m_fractionPart, unit) >= 0) {
        sum.m_integerPart += sum.m_fractionPart / unit;
        sum.m_fractionPart %= unit;
        if (sum.m_fractionPart.IsZero()) {
            sum.m_fractionPart.Abs();
        }
    }
    sum.AlignSigns(unit);
    sum.Rationalise();
    return sum;
}

CDecimal CDecimal::operator-(const CDecimal& right)
{
    return *this + right.GetNegative();
}

CDecimal CDecimal::operator*(const CDecimal& right)
{
    CDecimal a(*this);
    CDecimal b(right);
    const int nDivider = Normalize(a, b);
    const CBigInteger unit = CBigInteger::Pow10(static_cast<unsigned int>(nDivider));
    const CBigInteger square = CBigInteger::Pow10(2 * static_cast<unsigned int>(nDivider));
    const CBigInteger total =
        a.m_integerPart * b.m_integerPart * square + b.m_integerPart * a.m_fractionPart * unit +
        b.m_fractionPart * a.m_integerPart * unit + a.m_fractionPart * b.m_fractionPart;
    CDecimal product(total / square, total % square, 2 * nDivider);
    product.Rationalise();
    product.LimitFraction();
    return product;
}

CDecimal CDecimal::operator/(const CDecimal& right)
{
    CDecimal a(*this);
    CDecimal b(right);
    const int nDivider = Normalize(a, b);
    const CBigInteger unit = CBigInteger::Pow10(static_cast<unsigned int>(nDivider));
    const CBigInteger scale = CBigInteger::Pow10(kQuotientDigits);
    const CBigInteger total = (unit * a.m_integerPart + a.m_fractionPart) * scale /
                              (unit * b.m_integerPart + b.m_fractionPart);
    CDecimal quotient(total / scale, total % scale, kQuotientDigits);
    quotient.Rationalise();
    quotient.LimitFraction();
    return quotient;
}

CDecimal& CDecimal::operator+=(const CDecimal& right)
{
    return *this = *this + right;
}

CDecimal& CDecimal::operator-=(const CDecimal& right)
{
    return *this = *this - right;
}

CDecimal& CDecimal::operator*=(const CDecimal& right)
{
    return *this = *this * right;
}

CDecimal& CDecimal::operator/=(const CDecimal& right)
{
    return *this = *this / right;
}

CDecimal& CDecimal::operator++()
{
    return *this += CDecimal(1);
}

CDecimal CDecimal::operator++(int)
{
    CDecimal old(*this);
    ++*this;
    return old;
}

CDecimal& CDecimal::operator--()
{
    return *this -= CDecimal(1);
}

CDecimal CDecimal::operator--(int)
{
    CDecimal old(*this);
    --*this;
    return old;
}

bool CDecimal::operator==(const CDecimal& right) const
{
    return Compare(*this, right) == 0;
}

bool CDecimal::operator!=(const CDecimal& right) const
{
    return Compare(*this, right) != 0;
}

bool CDecimal::operator<(const CDecimal& right) const
{
    return Compare(*this, right) < 0;
}

bool CDecimal::operator>(const CDecimal& right) const
{
    return Compare(*this, right) > 0;
}

bool CDecimal::operator<=(const CDecimal& right) const
{
    return Compare(*this, right) <= 0;
}

bool CDecimal::operator>=(const CDecimal& right) const
{
    return Compare(*this, right) >= 0;
}

int CDecimal::Compare(const CDecimal& a, const CDecimal& b)
{
    if (const int nOrder = Order(a.m_integerPart, b.m_integerPart)) {
        return nOrder;
    }
    if (a.m_nFractionalDivider == b.m_nFractionalDivider) {
        return Order(a.m_fractionPart, b.m_fractionPart);
    }
    CDecimal left(a);
    CDecimal right(b);
    Normalize(left, right);
    return Order(left.m_fractionPart, right.m_fractionPart);
}

void CDecimal::AlignSigns(const CBigInteger& unit)
{
    const CBigInteger one(1);
    if (m_integerPart.Signum() > 0 && m_fractionPart.Signum() < 0) {
        m_fractionPart += unit;
        m_integerPart -= one;
    }
    if (m_integerPart.Signum() < 0 && m_fractionPart.Signum() > 0) {
        m_fractionPart -= unit;
        m_integerPart += one;
    }
    if (m_integerPart.IsZero()) {
        m_integerPart.m_number.nSign = m_fractionPart.m_number.nSign;
    }
}

void CDecimal::SetParts(bool bNegative, std::string_view integer, std::string_view fraction)
{
    m_integerPart.SetDigitText(integer.data(), integer.size());
    m_fractionPart.SetDigitText(fraction.data(), fraction.size());
    m_integerPart.m_number.nSign = CBigInteger::SignOf(bNegative);
    m_fractionPart.m_number.nSign = m_integerPart.m_number.nSign;
    m_nFractionalDivider = std::max(1, static_cast<int>(fraction.size()));
}

void CDecimal::LimitFraction()
{
    if (m_nFractionalDivider > m_maxDivider) {
        ChangeFractionalDivider(m_maxDivider);
    }
}

void CDecimal::AppendFraction(std::string& strText) const
{
    const std::size_t nWidth = static_cast<std::size_t>(std::max(0, m_nFractionalDivider));
    const std::size_t nDigits = m_fractionPart.GetDigitCount();
    if (nWidth > nDigits) {
        // No text shows more than that many zeros.
        strText.append(std::min(nWidth - nDigits, kMaxText), '0');
    }
    m_fractionPart.AppendDigits(strText);
}

} // namespace QnXmlLib16
