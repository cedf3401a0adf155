#pragma once

#include <cstddef>

// The steps behind the UTF conversions: one reader and one writer for each form, and the loop that
// joins them. Templates over the unit, so that wchar_t runs are read and written as what they are.

namespace QnXmlLib16 {
namespace UtfSteps {

constexpr unsigned int kReplacement = 0xFFFD;
constexpr unsigned int kLastCodePoint = 0x10FFFF;

constexpr bool IsHighSurrogate(unsigned int u)
{
    return u >= 0xD800 && u <= 0xDBFF;
}

constexpr bool IsLowSurrogate(unsigned int u)
{
    return u >= 0xDC00 && u <= 0xDFFF;
}

constexpr bool IsContinuation(unsigned char u)
{
    return (u & 0xC0) == 0x80;
}

// The length of the legal UTF-8 sequence at the front of the range, which is not empty; 0 if there
// is none or the end cuts it off.
inline int LegalLength(const unsigned char* p, const unsigned char* pEnd)
{
    const unsigned char u = *p;
    if (u < 0x80)
        return 1;
    if (u < 0xC2) // a continuation byte, or nothing but overlong forms
        return 0;
    const std::ptrdiff_t iRoom = pEnd - p;
    if (u < 0xE0)
        return iRoom >= 2 && IsContinuation(p[1]) ? 2 : 0;
    if (u < 0xF0) {
        if (iRoom < 3 || !IsContinuation(p[1]) || !IsContinuation(p[2]))
            return 0;
        const bool bOverlong = u == 0xE0 && p[1] < 0xA0;
        const bool bSurrogate = u == 0xED && p[1] >= 0xA0;
        return bOverlong || bSurrogate ? 0 : 3;
    }
    if (u > 0xF4 || iRoom < 4 || !IsContinuation(p[1]) || !IsContinuation(p[2]) ||
        !IsContinuation(p[3]))
        return 0;
    const bool bOverlong = u == 0xF0 && p[1] < 0x90;
    const bool bBeyondLast = u == 0xF4 && p[1] >= 0x90;
    return bOverlong || bBeyondLast ? 0 : 4;
}

// Readers: take one character off the front of the range, which is not empty, into uCodePoint;
// false for malformed input.

inline bool ReadUTF8(const unsigned char*& p, const unsigned char* pEnd, unsigned int& uCodePoint)
{
    if (*p < 0x80) {
        uCodePoint = *p++;
        return true;
    }
    const int iLength = LegalLength(p, pEnd);
    if (iLength == 0)
        return false;
    unsigned int u = *p & (0x7Fu >> iLength);
    for (int i = 1; i < iLength; ++i)
        u = (u << 6) | (p[i] & 0x3Fu);
    uCodePoint = u;
    p += iLength;
    return true;
}

inline bool ReadUTF16(const unsigned short*& p, const unsigned short* pEnd,
                      unsigned int& uCodePoint)
{
    const unsigned int uFirst = *p;
    if (IsLowSurrogate(uFirst))
        return false;
    if (!IsHighSurrogate(uFirst)) {
        uCodePoint = uFirst;
        ++p;
        return true;
    }
    if (pEnd - p < 2 || !IsLowSurrogate(p[1]))
        return false;
    uCodePoint = 0x10000 + ((uFirst - 0xD800) << 10) + (p[1] - 0xDC00u);
    p += 2;
    return true;
}

// TUnit: unsigned int or wchar_t.
template <class TUnit>
bool ReadUTF32(const TUnit*& p, const TUnit*, unsigned int& uCodePoint)
{
    const unsigned int u = static_cast<unsigned int>(*p);
    if (IsHighSurrogate(u) || IsLowSurrogate(u))
        return false;
    uCodePoint = u <= kLastCodePoint ? u : kReplacement;
    ++p;
    return true;
}

// Writers: the count of units of one code point; written to p if that many fit.

inline unsigned long PutUTF8(unsigned int u, unsigned char* p, unsigned long ulRoom)
{
    const unsigned long ulLength = u < 0x80 ? 1 : u < 0x800 ? 2 : u < 0x10000 ? 3 : 4;
    if (ulLength > ulRoom)
        return ulLength;
    if (ulLength == 1) {
        *p = static_cast<unsigned char>(u);
        return 1;
    }
    for (unsigned long i = ulLength - 1; i > 0; --i, u >>= 6)
        p[i] = static_cast<unsigned char>(0x80 | (u & 0x3F));
    *p = static_cast<unsigned char>((0xF00 >> ulLength) | u);
    return ulLength;
}

inline unsigned long PutUTF16(unsigned int u, unsigned short* p, unsigned long ulRoom)
{
    const unsigned long ulLength = u < 0x10000 ? 1 : 2;
    if (ulLength > ulRoom)
        return ulLength;
    if (ulLength == 1) {
        *p = static_cast<unsigned short>(u);
    }
    else {
        p[0] = static_cast<unsigned short>(0xD800 + ((u - 0x10000) >> 10));
        p[1] = static_cast<unsigned short>(0xDC00 + ((u - 0x10000) & 0x3FF));
    }
    return ulLength;
}

template <class TUnit>
unsigned long PutUTF32(unsigned int u, TUnit* p, unsigned long ulRoom)
{
    if (ulRoom >= 1)
        *p = static_cast<TUnit>(u);
    return 1;
}

// A null target counts.
template <class TSource, class TTarget>
unsigned long Convert(const TSource* pSource, const TSource* pSourceEnd, TTarget* pTarget,
                      unsigned long ulTargetLength,
                      bool (*pfnRead)(const TSource*&, const TSource*, unsigned int&),
                      unsigned long (*pfnPut)(unsigned int, TTarget*, unsigned long))
{
    unsigned long ulCount = 0;
    unsigned int uCodePoint = 0;
    while (pSource != pSourceEnd) {
        if (!pfnRead(pSource, pSourceEnd, uCodePoint))
            return pTarget ? ulCount : 0;
        const unsigned long ulRoom = pTarget ? ulTargetLength - ulCount : 0;
        const unsigned long ulUnits = pfnPut(uCodePoint, pTarget + (pTarget ? ulCount : 0), ulRoom);
        if (pTarget && ulUnits > ulRoom)
            return ulCount;
        ulCount += ulUnits;
    }
    return ulCount;
}

} // namespace UtfSteps
} // namespace QnXmlLib16
