#include "QnXmlLib16/values/BigInteger.h"

#include "QnXmlLib16/support/Exceptions.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace QnXmlLib16 {

namespace {

using Digits = CBigInteger::Digits;

// Multiplication and division work on limbs of nine digits, least significant first, without zeros
// at the top: an eightieth of the products that single digits take, and sixteen products of two limbs
// fit into 64 bits.
using Limbs = std::vector<std::uint32_t>;
constexpr std::uint64_t kLimbBase = 1000000000;
constexpr std::size_t kLimbDigits = 9;

// A run of digits inside a vector.
struct Run
{
    const char* pFirst;
    const char* pEnd;

    std::size_t Length() const { return static_cast<std::size_t>(pEnd - pFirst); }
};

Run RunOf(const Digits& vecDigits)
{
    return {vecDigits.data(), vecDigits.data() + vecDigits.size()};
}

// The digits of a magnitude without zeros at the top: none for zero.
Run SignificantDigits(Run run)
{
    while (run.pEnd != run.pFirst && run.pEnd[-1] == 0) {
        --run.pEnd;
    }
    return run;
}

// Powers of ten are what decimals multiply and divide by. Taken off as zeros, they cost no more
// than a copy.
std::size_t CountLowZeros(const Run& run)
{
    const char* pDigit = run.pFirst;
    while (pDigit != run.pEnd && *pDigit == 0) {
        ++pDigit;
    }
    return static_cast<std::size_t>(pDigit - run.pFirst);
}

Limbs ToLimbs(const Run& run)
{
    Limbs limbs((run.Length() + kLimbDigits - 1) / kLimbDigits);
    const char* pLow = run.pFirst;
    for (std::uint32_t& nLimb : limbs) {
        const char* pDigit = pLow + std::min<std::ptrdiff_t>(kLimbDigits, run.pEnd - pLow);
        std::uint32_t nValue = 0;
        while (pDigit != pLow) {
            nValue = nValue * 10 + static_cast<std::uint32_t>(*--pDigit);
        }
        nLimb = nValue;
        pLow += std::min<std::ptrdiff_t>(kLimbDigits, run.pEnd - pLow);
    }
    return limbs;
}

void AppendLimbs(const Limbs& limbs, Digits& vecDigits)
{
    vecDigits.reserve(vecDigits.size() + limbs.size() * kLimbDigits);
    for (std::uint32_t nLimb : limbs) {
        for (std::size_t i = 0; i < kLimbDigits; ++i) {
            vecDigits.push_back(static_cast<char>(nLimb % 10));
            nLimb /= 10;
        }
    }
}

// Column by column: the division that carries is due once for as many products as 64 bits hold.
Limbs MultiplyLimbs(const Limbs& a, const Limbs& b)
{
    constexpr std::size_t kProducts = 16;
    Limbs product(a.size() + b.size());
    std::uint64_t nCarry = 0;
    for (std::size_t nColumn = 0; nColumn < product.size(); ++nColumn) {
        std::size_t i = nColumn < b.size() ? 0 : nColumn - b.size() + 1;
        const std::size_t nEnd = std::min(nColumn + 1, a.size());
        std::uint64_t nSum = nCarry % kLimbBase;
        nCarry /= kLimbBase;
        while (i < nEnd) {
            for (const std::size_t nStop = std::min(nEnd, i + kProducts); i < nStop; ++i) {
                nSum += static_cast<std::uint64_t>(a[i]) * b[nColumn - i];
            }
            nCarry += nSum / kLimbBase;
            nSum %= kLimbBase;
        }
        product[nColumn] = static_cast<std::uint32_t>(nSum);
    }
    return product;
}

// Multiplies in place and returns the limb that is carried out of the top.
std::uint32_t MultiplyByLimb(Limbs& limbs, std::uint32_t nFactor)
{
    std::uint64_t nCarry = 0;
    for (std::uint32_t& nLimb : limbs) {
        nCarry += static_cast<std::uint64_t>(nLimb) * nFactor;
        nLimb = static_cast<std::uint32_t>(nCarry % kLimbBase);
        nCarry /= kLimbBase;
    }
    return static_cast<std::uint32_t>(nCarry);
}

// Divides in place and returns the remainder.
std::uint32_t DivideByLimb(Limbs& limbs, std::uint32_t nDivisor)
{
    std::uint64_t nRemainder = 0;
    for (std::size_t i = limbs.size(); i-- > 0;) {
        nRemainder = nRemainder * kLimbBase + limbs[i];
        limbs[i] = static_cast<std::uint32_t>(nRemainder / nDivisor);
        nRemainder %= nDivisor;
    }
    return static_cast<std::uint32_t>(nRemainder);
}

// Subtracts nFactor times the divisor from the limbs of the dividend that begin at pLow, one more
// than the divisor has. False if the result came out one divisor below zero; the limbs then hold
// it plus a power of the base, which AddBack takes out again.
bool SubtractMultiple(std::uint32_t* pLow, const Limbs& divisor, std::uint64_t nFactor)
{
    std::uint64_t nBorrow = 0;
    for (std::size_t i = 0; i < divisor.size(); ++i) {
        nBorrow += nFactor * divisor[i];
        const std::uint64_t nTake = nBorrow % kLimbBase;
        nBorrow /= kLimbBase;
        if (pLow[i] < nTake) {
            pLow[i] += static_cast<std::uint32_t>(kLimbBase);
            ++nBorrow;
        }
        pLow[i] -= static_cast<std::uint32_t>(nTake);
    }
    std::uint32_t& nTop = pLow[divisor.size()];
    const bool bFits = nTop >= nBorrow;
    nTop = static_cast<std::uint32_t>(nTop + (bFits ? 0 : kLimbBase) - nBorrow);
    return bFits;
}

void AddBack(std::uint32_t* pLow, const Limbs& divisor)
{
    std::uint32_t nCarry = 0;
    for (std::size_t i = 0; i < divisor.size(); ++i) {
        nCarry += pLow[i] + divisor[i];
        const bool bOver = nCarry >= kLimbBase;
        pLow[i] = nCarry - (bOver ? static_cast<std::uint32_t>(kLimbBase) : 0);
        nCarry = bOver ? 1 : 0;
    }
    pLow[divisor.size()] = 0;
}

// Long division (Knuth, The Art of Computer Programming, volume 2, algorithm D). The dividend
// becomes the remainder; the quotient is returned. The divisor has no zero limb at the top.
Limbs DivideLimbs(Limbs& dividend, Limbs divisor)
{
    if (divisor.size() == 1) {
        Limbs quotient = std::move(dividend);
        dividend.assign(1, DivideByLimb(quotient, divisor[0]));
        return quotient;
    }
    // With the divisor's top limb at least half the base, a quotient limb that is guessed from the
    // two top limbs is at most one too large.
    const std::size_t n = divisor.size();
    const auto nScale = static_cast<std::uint32_t>(kLimbBase / (divisor.back() + 1ULL));
    MultiplyByLimb(divisor, nScale);
    dividend.push_back(MultiplyByLimb(dividend, nScale));

    Limbs quotient(dividend.size() - n);
    for (std::size_t j = quotient.size(); j-- > 0;) {
        std::uint32_t* const pLow = dividend.data() + j;
        const std::uint64_t nTop = pLow[n] * kLimbBase + pLow[n - 1];
        std::uint64_t nGuess = nTop / divisor[n - 1];
        std::uint64_t nRest = nTop % divisor[n - 1];
        while (nRest < kLimbBase &&
               (nGuess >= kLimbBase || nGuess * divisor[n - 2] > nRest * kLimbBase + pLow[n - 2])) {
            --nGuess;
            nRest += divisor[n - 1];
        }
        if (!SubtractMultiple(pLow, divisor, nGuess)) {
            --nGuess;
            AddBack(pLow, divisor);
        }
        quotient[j] = static_cast<std::uint32_t>(nGuess);
    }
    dividend.resize(n);
    DivideByLimb(dividend, nScale);
    return quotient;
}

int CompareRuns(const Run& a, const Run& b)
{
    if (a.Length() != b.Length()) {
        return a.Length() < b.Length() ? -1 : 1;
    }
    for (std::size_t i = a.Length(); i-- > 0;) {
        if (a.pFirst[i] != b.pFirst[i]) {
            return a.pFirst[i] < b.pFirst[i] ? -1 : 1;
        }
    }
    return 0;
}

Digits AddRuns(Run longer, Run shorter)
{
    if (longer.Length() < shorter.Length()) {
        std::swap(longer, shorter);
    }
    Digits vecSum;
    vecSum.reserve(longer.Length() + 1);
    char nCarry = 0;
    for (std::size_t i = 0; i < longer.Length(); ++i) {
        const int nSum = longer.pFirst[i] + (i < shorter.Length() ? shorter.pFirst[i] : 0) + nCarry;
        nCarry = nSum > 9 ? 1 : 0;
        vecSum.push_back(static_cast<char>(nSum - 10 * nCarry));
    }
    if (nCarry != 0) {
        vecSum.push_back(1);
    }
    return vecSum;
}

// a is not smaller than b.
Digits SubtractRuns(const Run& a, const Run& b)
{
    Digits vecDifference(a.pFirst, a.pEnd);
    char nBorrow = 0;
    for (std::size_t i = 0; i < a.Length() && (i < b.Length() || nBorrow != 0); ++i) {
        const int nDigit = a.pFirst[i] - (i < b.Length() ? b.pFirst[i] : 0) - nBorrow;
        nBorrow = nDigit < 0 ? 1 : 0;
        vecDifference[i] = static_cast<char>(nDigit + 10 * nBorrow);
    }
    CBigInteger::Clean(vecDifference);
    return vecDifference;
}

Digits MultiplyRuns(Run a, Run b)
{
    a = SignificantDigits(a);
    b = SignificantDigits(b);
    if (a.Length() == 0 || b.Length() == 0) {
        return Digits(1, 0);
    }
    const std::size_t nZerosA = CountLowZeros(a);
    const std::size_t nZerosB = CountLowZeros(b);
    a.pFirst += nZerosA;
    b.pFirst += nZerosB;
    Digits vecProduct(nZerosA + nZerosB, 0);
    if (a.Length() == 1) {
        std::swap(a, b);
    }
    if (b.Length() == 1 && *b.pFirst == 1) {
        vecProduct.insert(vecProduct.end(), a.pFirst, a.pEnd);
    }
    else {
        AppendLimbs(MultiplyLimbs(ToLimbs(a), ToLimbs(b)), vecProduct);
        CBigInteger::Clean(vecProduct);
    }
    return vecProduct;
}

struct Division
{
    Digits vecQuotient;
    Digits vecRemainder;
};

Division DivideRuns(Run a, Run b)
{
    a = SignificantDigits(a);
    b = SignificantDigits(b);
    if (b.Length() == 0) {
        throw CQnInvalidValueException("ERROR: Overflow in operator/.");
    }
    Division result;
    if (a.Length() < b.Length()) {
        result.vecRemainder.assign(a.pFirst, a.pEnd);
    }
    else {
        // As many low digits of the dividend as the divisor has low zeros pass to the remainder.
        const std::size_t nZeros = CountLowZeros(b);
        b.pFirst += nZeros;
        const Run top = {a.pFirst + nZeros, a.pEnd};
        result.vecRemainder.assign(a.pFirst, top.pFirst);
        if (b.Length() == 1 && *b.pFirst == 1) {
            result.vecQuotient.assign(top.pFirst, top.pEnd);
        }
        else {
            Limbs remainder = ToLimbs(top);
            AppendLimbs(DivideLimbs(remainder, ToLimbs(b)), result.vecQuotient);
            AppendLimbs(remainder, result.vecRemainder);
        }
    }
    CBigInteger::Clean(result.vecQuotient);
    CBigInteger::Clean(result.vecRemainder);
    return result;
}

Digits DigitsOf(unsigned long long nValue)
{
    Digits vecDigits;
    CBigInteger::BuildDWORDLONG(nValue, vecDigits);
    return vecDigits;
}

} // namespace

CBigInteger::CBigInteger(int nValue)
{
    m_number.nSign = SignOf(nValue < 0);
    const auto nBits = static_cast<unsigned int>(nValue);
    SetDigits(DigitsOf(nValue < 0 ? 0U - nBits : nBits));
}

// Deliberate: a long keeps its sign and the low 32 bits of its magnitude, so that 4294967297 gives 1
// and -4294967296 a negative zero. The long long forms are exact.
// Pinned by BigIntegerBuilding.CutsLongsAndRoundsDoubles.
CBigInteger::CBigInteger(long nValue)
{
    m_number.nSign = SignOf(nValue < 0);
    const auto nBits = static_cast<unsigned long>(nValue);
    SetDigits(DigitsOf(static_cast<unsigned int>(nValue < 0 ? 0UL - nBits : nBits)));
}

CBigInteger::CBigInteger(long long nValue)
{
    m_number.nSign = SignOf(nValue < 0);
    const auto nBits = static_cast<unsigned long long>(nValue);
    SetDigits(DigitsOf(nValue < 0 ? 0ULL - nBits : nBits));
}

// Deliberate: cut to 32 bits, as the signed form. Pinned by
// BigIntegerBuilding.CutsLongsAndRoundsDoubles.
CBigInteger::CBigInteger(unsigned long nValue)
{
    SetDigits(DigitsOf(static_cast<unsigned int>(nValue)));
}

CBigInteger::CBigInteger(unsigned long long nValue)
{
    SetDigits(DigitsOf(nValue));
}

CBigInteger::CBigInteger(double dValue)
{
    m_number.nSign = SignOf(dValue < 0);
    Digits vecDigits;
    BuildDouble(std::fabs(dValue), vecDigits);
    SetDigits(vecDigits);
}

CBigInteger::CBigInteger(int nSign, const Digits& vecDigits)
{
    m_number.nSign = SignOf(nSign < 0);
    SetDigits(vecDigits);
}

CBigInteger::~CBigInteger()
{
    FreeBlock();
}

void CBigInteger::SetDigits(const char* pLow, std::size_t nCount)
{
    while (nCount > 1 && pLow[nCount - 1] == 0) {
        --nCount;
    }
    if (nCount > UINT_MAX) {
        throw std::length_error("CBigInteger");
    }
    char acDigits[kInPlace] = {};
    if (nCount > kInPlace) {
        const Block block = {new char[nCount], static_cast<unsigned int>(nCount)};
        std::memcpy(block.pDigits, pLow, nCount);
        std::memcpy(acDigits, &block.pDigits, sizeof block.pDigits);
        std::memcpy(acDigits + sizeof block.pDigits, &block.nCount, sizeof block.nCount);
    }
    else {
        std::copy(pLow, pLow + nCount, acDigits);
    }
    FreeBlock();
    std::memcpy(m_number.acDigits, acDigits, sizeof m_number.acDigits);
    m_number.nInPlace =
        nCount > kInPlace ? kOnHeap : static_cast<unsigned char>(nCount == 0 ? 1 : nCount);
}

void CBigInteger::SetDigitText(const char* pText, std::size_t nCount)
{
    for (; nCount > 1 && *pText == '0'; --nCount) {
        ++pText;
    }
    if (nCount <= kInPlace) {
        FreeBlock();
        m_number.acDigits[0] = 0;
        m_number.nInPlace = static_cast<unsigned char>(nCount == 0 ? 1 : nCount);
        for (std::size_t i = 0; i < nCount; ++i) {
            m_number.acDigits[nCount - 1 - i] = static_cast<char>(pText[i] - '0');
        }
        return;
    }
    Digits vecDigits(nCount);
    for (std::size_t i = 0; i < nCount; ++i) {
        vecDigits[nCount - 1 - i] = static_cast<char>(pText[i] - '0');
    }
    SetDigits(vecDigits);
}

void CBigInteger::AddLowZeros(std::size_t nCount)
{
    Digits vecShifted(nCount + GetDigitCount(), 0);
    std::copy(GetLow(), GetEnd(), vecShifted.begin() + static_cast<std::ptrdiff_t>(nCount));
    SetDigits(vecShifted);
}

void CBigInteger::DropLowDigits(std::size_t nCount)
{
    nCount = std::min(nCount, GetDigitCount());
    SetDigits(GetLow() + nCount, GetDigitCount() - nCount);
}

void CBigInteger::CopyBlock()
{
    const Block block = GetBlock();
    m_number.nInPlace = 1; // the block is another's
    SetDigits(block.pDigits, block.nCount);
}

void CBigInteger::FreeBlock() noexcept
{
    if (!IsInPlace()) {
        delete[] GetBlock().pDigits;
    }
}

std::string CBigInteger::ToString() const
{
    if (IsZero()) {
        return "0";
    }
    std::string strText;
    strText.reserve(GetDigitCount() + 1);
    if (m_number.nSign == -1) {
        strText.push_back('-');
    }
    AppendDigits(strText);
    return strText;
}

void CBigInteger::Abs()
{
    m_number.nSign = 1;
}

CBigInteger CBigInteger::GetAbs() const
{
    CBigInteger result(*this);
    result.Abs();
    return result;
}

void CBigInteger::Negate()
{
    m_number.nSign = SignOf(m_number.nSign == 1);
}

CBigInteger CBigInteger::GetNegative() const
{
    CBigInteger result(*this);
    result.Negate();
    return result;
}

// Deliberate: the unary minus changes its operand, so that b = -a negates a as well; GetNegative
// doesn't. Pinned by BigIntegerSigns.NegativeZeroIsEqualToZeroAndBelowIt.
CBigInteger& CBigInteger::operator-()
{
    Negate();
    return *this;
}

bool CBigInteger::IsZero() const
{
    return m_number.nInPlace == 1 && m_number.acDigits[0] == 0;
}

bool CBigInteger::operator==(const CBigInteger& right) const
{
    return CompareMagnitudes(*this, right) == 0 &&
           (IsZero() || m_number.nSign == right.m_number.nSign);
}

bool CBigInteger::operator!=(const CBigInteger& right) const
{
    return !(*this == right);
}

bool CBigInteger::operator<(const CBigInteger& right) const
{
    // Deliberate: different signs decide without a look at the digits. So -0 is below +0, although
    // the two are equal. Pinned by BigIntegerSigns.NegativeZeroIsEqualToZeroAndBelowIt.
    if (m_number.nSign != right.m_number.nSign) {
        return m_number.nSign == -1;
    }
    return CompareMagnitudes(*this, right) == -m_number.nSign;
}

bool CBigInteger::operator>(const CBigInteger& right) const
{
    return right < *this;
}

bool CBigInteger::operator<=(const CBigInteger& right) const
{
    return !(*this > right);
}

bool CBigInteger::operator>=(const CBigInteger& right) const
{
    return !(*this < right);
}

CBigInteger CBigInteger::operator+(const CBigInteger& right) const
{
    CBigInteger result(*this);
    result.AddSigned(right, 1);
    return result;
}

CBigInteger CBigInteger::operator-(const CBigInteger& right) const
{
    CBigInteger result(*this);
    result.AddSigned(right, -1);
    return result;
}

CBigInteger CBigInteger::operator*(const CBigInteger& right) const
{
    // Deliberate: a zero product takes the product of the signs too, and so may be a negative zero;
    // decimals keep the sign of -0.5 there. Pinned by
    // BigIntegerSigns.NegativeZeroIsEqualToZeroAndBelowIt.
    return CBigInteger(m_number.nSign * right.m_number.nSign,
                       MultiplyRuns({GetLow(), GetEnd()}, {right.GetLow(), right.GetEnd()}));
}

CBigInteger CBigInteger::operator/(const CBigInteger& right) const
{
    if (right.IsZero()) {
        throw CQnInvalidValueException("ERROR: Overflow in operator/.");
    }
    return Quotient(right);
}

// Deliberate: / takes negative divisors, while %, /= and %= refuse them as they refuse zero.
// Pinned by BigIntegerDivision.OnlyTheSlashTakesNegativeDivisors.
CBigInteger CBigInteger::operator%(const CBigInteger& right) const
{
    if (right.IsZero() || right.m_number.nSign == -1) {
        throw CQnInvalidValueException("ERROR: Overflow in operator%.");
    }
    return Remainder(right);
}

CBigInteger& CBigInteger::operator+=(const CBigInteger& right)
{
    AddSigned(right, 1);
    return *this;
}

CBigInteger& CBigInteger::operator-=(const CBigInteger& right)
{
    AddSigned(right, -1);
    return *this;
}

CBigInteger& CBigInteger::operator*=(const CBigInteger& right)
{
    return *this = *this * right;
}

CBigInteger& CBigInteger::operator/=(const CBigInteger& right)
{
    if (right.IsZero() || right.m_number.nSign == -1) {
        throw CQnInvalidValueException("ERROR: Overflow in operator /=.");
    }
    return *this = Quotient(right);
}

CBigInteger& CBigInteger::operator%=(const CBigInteger& right)
{
    if (right.IsZero() || right.m_number.nSign == -1) {
        throw CQnInvalidValueException("ERROR: Overflow in operator%=.");
    }
    return *this = Remainder(right);
}

CBigInteger::operator long long() const
{
    if (!IsInt64()) {
        throw CQnInvalidValueException("ERROR: Value out of bound of LONGLONG.");
    }
    return ToInt64();
}

CBigInteger::operator int() const
{
    if (!IsInt32()) {
        throw CQnInvalidValueException("ERROR: Value out of bound of int.");
    }
    return static_cast<int>(ToInt64());
}

CBigInteger CBigInteger::Pow10(unsigned int nExponent)
{
    Digits vecDigits;
    Pow10(nExponent, vecDigits);
    return CBigInteger(1, vecDigits);
}

CBigInteger CBigInteger::SquareRoot() const
{
    if (*this < CBigInteger()) {
        throw CQnInvalidValueException("ERROR: Negative Number in function SquareRoot().");
    }
    // Newton's iteration falls from any start at or above the root until it has the whole part. A
    // long value starts from the root of its upper digits, so that a step or two are enough and
    // the whole costs no more than a few divisions.
    constexpr std::size_t kShort = 16;
    const std::size_t nDigits = GetDigitCount();
    CBigInteger x;
    if (nDigits <= kShort) {
        x = Pow10(static_cast<unsigned int>((nDigits + 1) / 2));
    }
    else {
        const auto nDropped = static_cast<unsigned int>(nDigits / 4);
        const CBigInteger top = Quotient(Pow10(2 * nDropped));
        x = (top.SquareRoot() + CBigInteger(1)) * Pow10(nDropped);
    }
    // Deliberate: the root of 0 brings x down to 0, and the division by it fails.
    // Pinned by BigIntegerDivision.OnlyTheSlashTakesNegativeDivisors.
    const CBigInteger two(2);
    CBigInteger previous;
    do {
        previous = std::move(x);
        x = (previous + *this / previous) / two;
    } while (x < previous);
    return previous;
}

void CBigInteger::Clean(Digits& vecDigits)
{
    while (vecDigits.size() > 1 && vecDigits.back() == 0) {
        vecDigits.pop_back();
    }
    if (vecDigits.empty()) {
        vecDigits.push_back(0);
    }
}

int CBigInteger::Compare(const Digits& vecA, const Digits& vecB)
{
    return CompareRuns(RunOf(vecA), RunOf(vecB));
}

std::size_t CBigInteger::Position(const Digits& vecDigits)
{
    return vecDigits.empty() ? 1 : vecDigits.size();
}

void CBigInteger::Add(const Digits& vecA, const Digits& vecB, Digits& vecOut)
{
    vecOut = AddRuns(RunOf(vecA), RunOf(vecB));
}

void CBigInteger::Subtract(const Digits& vecA, const Digits& vecB, Digits& vecOut)
{
    vecOut = SubtractRuns(RunOf(vecA), RunOf(vecB));
}

void CBigInteger::Multiply(const Digits& vecA, char nDigit, Digits& vecOut)
{
    if (nDigit == 0) {
        vecOut.assign(1, 0);
        return;
    }
    Digits vecProduct;
    vecProduct.reserve(vecA.size() + 1);
    int nCarry = 0;
    for (const char nFactor : vecA) {
        nCarry += nFactor * nDigit;
        vecProduct.push_back(static_cast<char>(nCarry % 10));
        nCarry /= 10;
    }
    if (nCarry != 0) {
        vecProduct.push_back(static_cast<char>(nCarry));
    }
    vecOut = std::move(vecProduct);
}

void CBigInteger::Multiply(const Digits& vecA, const Digits& vecB, Digits& vecOut)
{
    vecOut = MultiplyRuns(RunOf(vecA), RunOf(vecB));
}

void CBigInteger::ShiftLeft(Digits& vecDigits, int nCount)
{
    if (nCount > 0 && SignificantDigits(RunOf(vecDigits)).Length() != 0) {
        vecDigits.insert(vecDigits.begin(), static_cast<std::size_t>(nCount), 0);
    }
}

void CBigInteger::Pow10(unsigned int nExponent, Digits& vecDigits)
{
    Digits vecPower(static_cast<std::size_t>(nExponent) + 1, 0);
    vecPower.back() = 1;
    vecDigits = std::move(vecPower);
}

void CBigInteger::Divide(const Digits& vecA, const Digits& vecB, Digits& vecQuotient,
                         Digits& vecRemainder)
{
    Division result = DivideRuns(RunOf(vecA), RunOf(vecB));
    vecQuotient = std::move(result.vecQuotient);
    vecRemainder = std::move(result.vecRemainder);
}

void CBigInteger::Build(const std::string& strText, Digits& vecDigits)
{
    auto it = strText.rbegin();
    while (it != strText.rend() && *it >= '0' && *it <= '9') {
        ++it;
    }
    Digits vecRead(strText.rbegin(), it);
    for (char& nDigit : vecRead) {
        nDigit = static_cast<char>(nDigit - '0');
    }
    vecDigits = std::move(vecRead);
}

void CBigInteger::Build(unsigned int nValue, Digits& vecDigits)
{
    BuildDWORDLONG(nValue, vecDigits);
}

void CBigInteger::BuildDWORDLONG(unsigned long long nValue, Digits& vecDigits)
{
    vecDigits.clear();
    do {
        vecDigits.push_back(static_cast<char>(nValue % 10));
        nValue /= 10;
    } while (nValue != 0);
}

void CBigInteger::BuildDouble(double dValue, Digits& vecDigits)
{
    if (std::isinf(dValue)) {
        throw CQnInvalidValueException("ERROR: Infinite value.");
    }
    vecDigits.clear();
    if (std::isnan(dValue)) {
        return;
    }
    // Deliberate: both steps are taken in double. From 2^52 on the half that is taken off makes odd
    // values even, and beyond 2^53 the digits of repeated division are not the exact expansion.
    // Pinned by BigIntegerBuilding.CutsLongsAndRoundsDoubles.
    double dRest = std::ceil(dValue - 0.5);
    do {
        vecDigits.push_back(dRest > 0 ? static_cast<char>(std::fmod(dRest, 10)) : 0);
        dRest = std::trunc(dRest / 10);
    } while (dRest > 0);
}

CBigInteger CBigInteger::Quotient(const CBigInteger& right) const
{
    if (IsZero()) {
        return CBigInteger();
    }
    // Deliberate: 1 / -2 is a negative zero, 0 / -2 is not.
    // Pinned by BigIntegerSigns.NegativeZeroIsEqualToZeroAndBelowIt.
    return CBigInteger(
        m_number.nSign * right.m_number.nSign,
        DivideRuns({GetLow(), GetEnd()}, {right.GetLow(), right.GetEnd()}).vecQuotient);
}

CBigInteger CBigInteger::Remainder(const CBigInteger& right) const
{
    if (IsZero()) {
        return CBigInteger();
    }
    return CBigInteger(
        m_number.nSign,
        DivideRuns({GetLow(), GetEnd()}, {right.GetLow(), right.GetEnd()}).vecRemainder);
}

int CBigInteger::CompareMagnitudes(const CBigInteger& a, const CBigInteger& b)
{
    return CompareRuns({a.GetLow(), a.GetEnd()}, {b.GetLow(), b.GetEnd()});
}

int CBigInteger::Signum() const
{
    return IsZero() ? 0 : m_number.nSign;
}

void CBigInteger::AppendDigits(std::string& strText) const
{
    char acText[64];
    std::size_t nText = 0;
    for (const char *const pLow = GetLow(), *p = GetEnd(); p != pLow;) {
        acText[nText++] = static_cast<char>('0' + *--p);
        if (nText == sizeof acText || p == pLow) {
            strText.append(acText, nText);
            nText = 0;
        }
    }
}

bool CBigInteger::IsWithin(const char* pszMaxTop, const char* pszMinTop, std::size_t nLength) const
{
    if (GetDigitCount() != nLength) {
        return GetDigitCount() < nLength;
    }
    const char* pszTop = m_number.nSign == -1 ? pszMinTop : pszMaxTop;
    for (const char* p = GetEnd(); p != GetLow();) {
        const int nBound = *pszTop != '\0' ? *pszTop++ - '0' : 0;
        if (*--p != nBound) {
            return *p < nBound;
        }
    }
    return true;
}

bool CBigInteger::IsInt32() const
{
    return IsWithin("2147483647", "2147483648", 10);
}

bool CBigInteger::IsInt64() const
{
    return IsWithin("9223372036854775807", "9223372036854775808", 19);
}

bool CBigInteger::IsDoubleRange() const
{
    return IsWithin("17", "17", 309);
}

long long CBigInteger::ToInt64() const
{
    // Summed on the side of its sign, so that the minimum fits.
    long long nValue = 0;
    for (const char* p = GetEnd(); p != GetLow();) {
        nValue = nValue * 10 + m_number.nSign * *--p;
    }
    return nValue;
}

void CBigInteger::AddSigned(const CBigInteger& right, int nRightSign)
{
    const int nSign = right.m_number.nSign * nRightSign;
    const Run own = {GetLow(), GetEnd()};
    const Run other = {right.GetLow(), right.GetEnd()};
    if (m_number.nSign == nSign) {
        SetDigits(AddRuns(own, other));
        return;
    }
    const int nOrder = CompareRuns(own, other);
    if (nOrder < 0) {
        SetDigits(SubtractRuns(other, own));
        m_number.nSign = SignOf(nSign < 0);
    }
    else {
        SetDigits(SubtractRuns(own, other));
        m_number.nSign = nOrder == 0 ? SignOf(false) : m_number.nSign;
    }
}

} // namespace QnXmlLib16
