#pragma once

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

// Bytes that a UTF-8 sequence with this first byte takes; 1 for a byte that starts none.
constexpr int SequenceLength(unsigned char uFirst)
{
    return uFirst < 0xC0 ? 1 : uFirst < 0xE0 ? 2 : uFirst < 0xF0 ? 3 : 4;
}

// Whether iLength bytes form one legal sequence.
inline bool IsLegal(const unsigned char* p, int iLength)
{
    const unsigned char uFirst = p[0];
    if (iLength == 1)
        return uFirst < 0x80;
    // C0 and C1 start nothing but overlong forms; nothing starts with F5 or above.
    if (uFirst < 0xC2 || uFirst > 0xF4 || SequenceLength(uFirst) != iLength)
        return false;
    for (int i = 1; i < iLength; ++i) {
        if ((p[i] & 0xC0) != 0x80)
            return false;
    }
    switch (uFirst) {
    case 0xE0:
        return p[1] >= 0xA0; // below: overlong
    case 0xED:
        return p[1] < 0xA0; // from there: surrogates
    case 0xF0:
        return p[1] >= 0x90; // below: overlong
    case 0xF4:
        return p[1] < 0x90; // from there: above U+10FFFF
    default:
        return true;
    }
}

// Whether the range, which is not empty, begins with one whole legal sequence.
inline bool StartsLegal(const unsigned char* p, const unsigned char* pEnd)
{
    const int iLength = SequenceLength(*p);
    return pEnd - p >= iLength && IsLegal(p, iLength);
}

// Readers: take one character off the front of the range, which is not empty, into uCodePoint;
// false for malformed input.

inline bool ReadUTF8(const unsigned char*& p, const unsigned char* pEnd, unsigned int& uCodePoint)
{
    if (*p < 0x80) {
        uCodePoint = *p++;
        return true;
    }
    if (!StartsLegal(p, pEnd))
        return false;
    const int iLength = SequenceLength(*p);
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
