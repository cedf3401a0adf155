#pragma once

#include "QnXmlLib16/support/Export.h"

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

namespace QnXmlLib16 {

class CDecimal;

// A whole number of any length: the value of xs:integer and its derived types (XML Schema Part 2,
// 3.3.13), and the arithmetic base of CDecimal.
//
// The number is kept in decimal, one digit per byte, so that text converts by copying and the
// cost falls on arithmetic: addition and comparison are linear in the digits, multiplication,
// division and root at most quadratic. Zero may carry either sign; the operators say where that
// shows.
//
// A value: copies share nothing. One object, one thread at a time; the constants may be read by
// all. A value that was moved from may only be assigned or destroyed.
//
// Every failure is a CQnInvalidValueException, and leaves the operands as they were.
//
// The conversions in both directions are implicit, so that an operator with a built-in number on
// one side is ambiguous to the compiler: write a + CBigInteger(1).
class QNXML_API CBigInteger
{
public:
    // A digit is a number from 0 to 9, not a character; the least significant one comes first.
    using Digits = std::vector<char>;

    // The 32-bit bounds, also where long has 64 bits.
    static const CBigInteger MAX_LONG; // 2147483647
    static const CBigInteger MIN_LONG; // -2147483648

    static const CBigInteger MAX_LONGLONG; // 9223372036854775807
    static const CBigInteger MIN_LONGLONG; // -9223372036854775808

    // 17 followed by 307 zeros and its negative: a little inside the limits of double.
    static const CBigInteger MAX_DOUBLE;
    static const CBigInteger MIN_DOUBLE;

    CBigInteger() noexcept : m_number() {} // 0
    CBigInteger(int nValue);
    // The two long forms keep the low 32 bits of the magnitude only.
    CBigInteger(long nValue);
    CBigInteger(long long nValue);
    CBigInteger(unsigned long nValue);
    CBigInteger(unsigned long long nValue);
    // Rounds to the nearest whole number, a half towards zero. Below 2^52 that is exact; from there
    // on the last digits are those of ceil(x - 0.5) and division by ten in double. A NaN gives 0; an
    // infinity fails with "ERROR: Infinite value.".
    CBigInteger(double dValue);
    CBigInteger(const char* pszText);   // as Parse
    CBigInteger(const CDecimal& value); // rounds as CDecimal::ToBigInteger
    CBigInteger(const CBigInteger& other) : m_number(other.m_number)
    {
        if (!IsInPlace())
            CopyBlock();
    }
    CBigInteger(CBigInteger&& other) noexcept : m_number(other.m_number)
    {
        if (!IsInPlace())
            other.m_number = Number();
    }
    CBigInteger& operator=(const CBigInteger& other)
    {
        if (!IsInPlace() || !other.IsInPlace())
            return *this = CBigInteger(other);
        m_number = other.m_number;
        return *this;
    }
    CBigInteger& operator=(CBigInteger&& other) noexcept
    {
        const Number number = m_number;
        m_number = other.m_number;
        other.m_number = number;
        return *this;
    }
    virtual ~CBigInteger();

    // Replaces the value by the one that a text stands for. A text of digits, signs and white space
    // gives the digits at its end, up to the first other character from there, with the sign of its
    // first character: "1 2" is 2, "12-" is 0; blanks at both ends don't count, an empty text is 0.
    // Any other text is read as a CDecimal and rounded: "12.6" is 13. Fails as CDecimal::Parse.
    void Parse(const char* pszText);

    // Digits without leading zeros, "-" in front of a negative value; "0" for either zero.
    std::string ToString() const;

    void Abs();
    CBigInteger GetAbs() const;
    void Negate();
    CBigInteger GetNegative() const;
    // Negates this object and returns it.
    CBigInteger& operator-();

    bool IsZero() const;
    // The number of decimal digits of the magnitude; 1 for zero.
    std::size_t GetDigitCount() const noexcept
    {
        return IsInPlace() ? m_number.nInPlace : GetBlock().nCount;
    }

    // The two zeros are equal, yet the negative one is below the positive one.
    bool operator==(const CBigInteger& right) const;
    bool operator!=(const CBigInteger& right) const;
    bool operator<(const CBigInteger& right) const;
    bool operator>(const CBigInteger& right) const;
    bool operator<=(const CBigInteger& right) const;
    bool operator>=(const CBigInteger& right) const;

    // Division truncates towards zero, and a remainder has the sign of the dividend. A divisor of
    // zero fails in all four of / % /= %=, a negative divisor in % /= %=:
    // "ERROR: Overflow in operator/.", "ERROR: Overflow in operator%.",
    // "ERROR: Overflow in operator /=.", "ERROR: Overflow in operator%=.".
    CBigInteger operator+(const CBigInteger& right) const;
    CBigInteger operator-(const CBigInteger& right) const;
    CBigInteger operator*(const CBigInteger& right) const;
    CBigInteger operator/(const CBigInteger& right) const;
    CBigInteger operator%(const CBigInteger& right) const;
    CBigInteger& operator+=(const CBigInteger& right);
    CBigInteger& operator-=(const CBigInteger& right);
    CBigInteger& operator*=(const CBigInteger& right);
    CBigInteger& operator/=(const CBigInteger& right);
    CBigInteger& operator%=(const CBigInteger& right);

    // Fails with "ERROR: Value out of bound of LONGLONG." outside 64 bits.
    operator long long() const;
    // Fails with "ERROR: Value out of bound of int." outside 32 bits.
    operator int() const;

    // 10 to the power nExponent.
    static CBigInteger Pow10(unsigned int nExponent);

    // The whole part of the root. A negative value and -0 fail with
    // "ERROR: Negative Number in function SquareRoot().", +0 with "ERROR: Overflow in operator/.".
    CBigInteger SquareRoot() const;

    // Workers on magnitudes. A result may be the same object as an argument.

    // Takes zeros off the top; an empty vector becomes the digit 0.
    static void Clean(Digits& vecDigits);
    // -1, 0 or 1. Both sides are clean.
    static int Compare(const Digits& vecA, const Digits& vecB);
    // The number of digits, 1 for an empty vector.
    static std::size_t Position(const Digits& vecDigits);
    static void Add(const Digits& vecA, const Digits& vecB, Digits& vecOut);
    // vecA is not smaller than vecB.
    static void Subtract(const Digits& vecA, const Digits& vecB, Digits& vecOut);
    static void Multiply(const Digits& vecA, char nDigit, Digits& vecOut);
    static void Multiply(const Digits& vecA, const Digits& vecB, Digits& vecOut);
    // Multiplies by 10 to the power nCount; a count below 1 changes nothing.
    static void ShiftLeft(Digits& vecDigits, int nCount);
    static void Pow10(unsigned int nExponent, Digits& vecDigits);
    // The two results are two objects. A zero divisor fails with "ERROR: Overflow in operator/.".
    static void Divide(const Digits& vecA, const Digits& vecB, Digits& vecQuotient,
                       Digits& vecRemainder);
    // Reads digits from the end of the text and stops at the first other character. No digit there
    // leaves the vector empty; zeros at the top stay.
    static void Build(const std::string& strText, Digits& vecDigits);
    static void Build(unsigned int nValue, Digits& vecDigits);
    static void BuildDWORDLONG(unsigned long long nValue, Digits& vecDigits);
    // Of a value not below 0, rounded as in the constructor; a NaN leaves the vector empty.
    static void BuildDouble(double dValue, Digits& vecDigits);

private:
    friend class CDecimal;

    CBigInteger(int nSign, const Digits& vecDigits);

    static signed char SignOf(bool bNegative) { return bNegative ? -1 : 1; }

    // The digits as they lie in memory, the lowest first.
    const char* GetLow() const noexcept
    {
        return IsInPlace() ? m_number.acDigits : GetBlock().pDigits;
    }
    const char* GetEnd() const noexcept { return GetLow() + GetDigitCount(); }
    // Takes over nCount digits less the zeros at the top. They may be a part of this object's own.
    void SetDigits(const char* pLow, std::size_t nCount);
    void SetDigits(const Digits& vecDigits) { SetDigits(vecDigits.data(), vecDigits.size()); }
    // The same from characters, the highest first.
    void SetDigitText(const char* pText, std::size_t nCount);
    // Multiplies by 10 to the power nCount, and divides by it; nCount may be beyond the digits.
    void AddLowZeros(std::size_t nCount);
    void DropLowDigits(std::size_t nCount);
    // The block of digits anew, for a copy whose fields were copied already.
    void CopyBlock();
    void FreeBlock() noexcept;

    // The operators behind their refusals: a zero dividend gives +0; else a zero quotient has the sign
    // of any quotient and a zero remainder that of the dividend.
    CBigInteger Quotient(const CBigInteger& right) const;
    CBigInteger Remainder(const CBigInteger& right) const;
    static int CompareMagnitudes(const CBigInteger& a, const CBigInteger& b); // -1, 0 or 1
    int Signum() const;                            // -1, 0 or 1; 0 for either zero
    void AppendDigits(std::string& strText) const; // of the magnitude, from the top
    // Whether the value lies within the bounds of nLength digits that begin as told and go on with
    // zeros. Bounds are tested so, that no conversion needs an object built at load.
    bool IsWithin(const char* pszMaxTop, const char* pszMinTop, std::size_t nLength) const;
    bool IsInt32() const;
    bool IsInt64() const;
    bool IsDoubleRange() const; // MIN_DOUBLE to MAX_DOUBLE
    // Requires IsInt64().
    long long ToInt64() const;
    // Adds right with its sign multiplied by nRightSign.
    void AddSigned(const CBigInteger& right, int nRightSign);

    // The description of a block of digits.
    struct Block
    {
        char* pDigits; // owned
        unsigned int nCount;
    };

    static constexpr unsigned char kInPlace = 14;
    static constexpr unsigned char kOnHeap = 255;

    // At least one digit; the top one is not 0 unless the value is the single digit 0. The numbers
    // of most documents are short, and an allocation for each would cost more than all else: up to
    // kInPlace digits lie in the object, more of them in a block whose description lies there.
    struct Number
    {
        alignas(char*) char acDigits[kInPlace] = {};
        unsigned char nInPlace = 1; // how many digits lie in acDigits, or kOnHeap
        signed char nSign = 1;      // 1 or -1
    };

    bool IsInPlace() const noexcept { return m_number.nInPlace != kOnHeap; }
    Block GetBlock() const noexcept
    {
        Block block;
        std::memcpy(&block.pDigits, m_number.acDigits, sizeof block.pDigits);
        std::memcpy(&block.nCount, m_number.acDigits + sizeof block.pDigits, sizeof block.nCount);
        return block;
    }

    Number m_number;
};

} // namespace QnXmlLib16
