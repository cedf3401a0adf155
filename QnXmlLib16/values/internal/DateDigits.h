#pragma once

#include <charconv>
#include <cstring>

// The digits of dates and durations, read and written in place: no locale, no allocation.
namespace QnXmlLib16 {
namespace DateDigits {

inline bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Reads exactly two digits. Stops at the first character that is none, so a terminator in either
// place is never passed.
inline bool ReadTwo(const char* text, int& value)
{
    if (!IsDigit(text[0]) || !IsDigit(text[1]))
        return false;
    value = (text[0] - '0') * 10 + (text[1] - '0');
    return true;
}

// The writers return the place behind what they wrote. The caller's buffer has room for 20 digits
// more than the width.
inline char* PutNumber(char* out, unsigned long long value)
{
    return std::to_chars(out, out + 20, value).ptr;
}

// Digits of value, with zeros in front up to width; a longer value is written in full.
inline char* PutPadded(char* out, unsigned int value, int width)
{
    char digits[10];
    const int count = static_cast<int>(std::to_chars(digits, digits + 10, value).ptr - digits);
    for (int i = count; i < width; ++i)
        *out++ = '0';
    std::memcpy(out, digits, static_cast<std::size_t>(count));
    return out + count;
}

inline char* PutTwo(char* out, unsigned int value)
{
    if (value > 99)
        return PutPadded(out, value, 2);
    out[0] = static_cast<char>('0' + value / 10);
    out[1] = static_cast<char>('0' + value % 10);
    return out + 2;
}

// The text of ToFracString: groups of three digits up to the last one that is not 0, and that one
// without its trailing zeros.
inline char* PutFraction(char* out, unsigned int milli, unsigned int micro, unsigned int nano)
{
    if (milli == 0 && micro == 0 && nano == 0)
        return out;
    *out++ = '.';
    out = PutPadded(out, milli, 3);
    if (micro != 0 || nano != 0)
        out = PutPadded(out, micro, 3);
    if (nano != 0)
        out = PutPadded(out, nano, 3);
    while (out[-1] == '0')
        --out;
    return out;
}

} // namespace DateDigits
} // namespace QnXmlLib16
