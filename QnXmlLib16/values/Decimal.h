#pragma once

#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/values/BigInteger.h"

#include <string>
#include <string_view>

namespace QnXmlLib16 {

// The value of xs:decimal (XML Schema Part 2, 3.2.3): exact, in base ten, with an integer part of
// any length and, after parsing, multiplying and dividing, at most 30 fraction digits.
//
// A value: copies share nothing. One object, one thread at a time. A value that was moved from may
// only be assigned or destroyed.
//
// A failure leaves the object and the operands as they were.
class QNXML_API CDecimal
{
public:
    CDecimal(); // 0
    CDecimal(int nValue);
    CDecimal(long nValue); // keeps the low 32 bits of the magnitude only, as CBigInteger(long)
    CDecimal(long long nValue);
    // Up to thirteen fraction digits. Fails as Parse on a value that is not finite.
    CDecimal(double dValue);
    CDecimal(const char* pszText); // as Parse
    CDecimal(const CBigInteger& value);
    // integerPart + fractionPart / 10^nDivider, stored as they are: both parts carry the sign of
    // the number, and nDivider is how many digits the fraction has, at least 1.
    CDecimal(const CBigInteger& integerPart, const CBigInteger& fractionPart, int nDivider);
    CDecimal(const CDecimal& other) = default;
    CDecimal(CDecimal&& other) noexcept = default;
    CDecimal& operator=(const CDecimal& other);
    CDecimal& operator=(CDecimal&& other) noexcept = default;
    virtual ~CDecimal();

    // Replaces the value by the one that a text stands for: digits with at most one point and an
    // exponent ("1.7E+308"). White space may stand anywhere up to the first digit of the exponent,
    // signs before the point and before the digits of the exponent; the last sign of each place
    // wins. An empty text is 0. More than 30 fraction digits are rounded, a half towards zero.
    //
    // Throws CQnInvalidValueException: "The string representing a Decimal, contained an invalid
    // char at position %d [%s]." with the position from 0 and the whole text; and, for an exponent
    // above 100000 or below -100000, "The exponent of the Decimal is to large [%s].".
    void Parse(const char* pszText);

    // Without trailing zeros as long as the fraction has none, and without a point if there is no
    // fraction. A text with a fraction is cut at 1023 characters.
    std::string ToString() const;
    // The value moved away from zero by a half, cut to nDigits fraction digits; fewer where the
    // fraction ends before. This is not rounding to nDigits digits: 1.25 gives "1.7" for 1 and
    // "1.75" for 2. With 0 or less the text ends in the point.
    std::string ToString(int nDigits) const;

    // Throws CQnOverFlowException "The Decimal value if to large to fit into a Double" outside
    // CBigInteger::MIN_DOUBLE to MAX_DOUBLE.
    double ToDouble() const;
    // Rounded to a whole number, a half towards zero. Throws CQnOverFlowException "The Decimal value
    // if to large to fit into a LONG" outside 32 bits.
    long ToLong() const;
    // Rounded to one fraction digit and then cut: 1.96 gives 1. Throws CQnOverFlowException "The
    // Decimal value if to large to fit into a LONGLONG" outside 64 bits.
    long long ToLongLong() const;
    // Rounded to a whole number, a half towards zero.
    CBigInteger ToBigInteger() const;

    void Negate();
    CDecimal GetNegative() const;

    // Removes trailing zeros of the fraction; one digit stays.
    void Rationalise();
    // Brings the fraction to nDivider digits: with zeros, or by rounding, a half towards zero. Time
    // and room grow with the digits asked for.
    void ChangeFractionalDivider(int nDivider);
    // Raises the smaller divider to the larger, and returns it.
    static int Normalize(CDecimal& a, CDecimal& b);

    // + and - are exact. * and / are rounded to 30 fraction digits, / after a cut at 32; a zero
    // divisor throws CQnInvalidValueException "ERROR: Overflow in operator/.". The binary forms
    // change nothing, yet are not const: a const left side is copied first.
    CDecimal operator+(const CDecimal& right);
    CDecimal operator-(const CDecimal& right);
    CDecimal operator*(const CDecimal& right);
    CDecimal operator/(const CDecimal& right);
    CDecimal& operator+=(const CDecimal& right);
    CDecimal& operator-=(const CDecimal& right);
    CDecimal& operator*=(const CDecimal& right);
    CDecimal& operator/=(const CDecimal& right);
    CDecimal& operator++();
    CDecimal operator++(int);
    CDecimal& operator--();
    CDecimal operator--(int);

    bool operator==(const CDecimal& right) const;
    bool operator!=(const CDecimal& right) const;
    bool operator<(const CDecimal& right) const;
    bool operator>(const CDecimal& right) const;
    bool operator<=(const CDecimal& right) const;
    bool operator>=(const CDecimal& right) const;

    // The three fields, as the constructor with three arguments takes them.
    const CBigInteger& GetIntegerPart() const { return m_integerPart; }
    const CBigInteger& GetFractionPart() const { return m_fractionPart; }
    int GetFractionalDivider() const { return m_nFractionalDivider; }

    // The most fraction digits that Parse, * and / leave: 30.
    static const int m_maxDivider;

private:
    static int Compare(const CDecimal& a, const CDecimal& b); // -1, 0 or 1
    // Gives both parts the same sign by moving one unit of the integer part, and a zero integer
    // part that of the fraction. unit is 10^divider.
    void AlignSigns(const CBigInteger& unit);
    // Parse of a value that was just made; half changed where it throws.
    void Read(const char* pszText);
    // Takes the digits of both parts, the highest first.
    void SetParts(bool bNegative, std::string_view integer, std::string_view fraction);
    void LimitFraction();
    // Appends the digits of the fraction with its leading zeros, but not more than 1023 of these.
    void AppendFraction(std::string& strText) const;

    // The parts carry the same sign and are negated together, so that -0.5 is -0 and -5 over 10:
    // texts take their sign from the integer part. A fraction of 0 has a divider of 1.
    CBigInteger m_integerPart;
    CBigInteger m_fractionPart;
    // How many digits the fraction has; its leading zeros live here: 0.05 is 5 with a divider of 2.
    int m_nFractionalDivider;
};

} // namespace QnXmlLib16
