#pragma once

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/SettingTypes.h"
#include "QnXmlLib16/support/TextStream.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

// What the writers of text share.

namespace QnXmlLib16 {

// A stream that holds this many characters behind a whole item is asked to flush.
constexpr unsigned long kFlushLength = 4096;

inline void Put(CTextStream& stream, std::string_view text)
{
    stream.Append(text.data(), text.size());
}

// Levels of indentation that are appended in one piece.
constexpr long kIndentRun = 32;

inline std::string MakeIndentRun(const std::string& strIndentChars)
{
    std::string strRun;
    for (long i = 0; i < kIndentRun; ++i)
        strRun += strIndentChars;
    return strRun;
}

// run is the result of MakeIndentRun.
inline void PutIndent(CTextStream& stream, std::string_view run, long iDepth)
{
    for (; iDepth > kIndentRun; iDepth -= kIndentRun)
        Put(stream, run);
    if (iDepth > 0)
        Put(stream, run.substr(0, run.size() / kIndentRun * static_cast<std::size_t>(iDepth)));
}

inline std::string_view LineEnd(EOLType eEOLType)
{
    switch (eEOLType) {
    case EOLType_CRLF:
        return "\r\n";
    case EOLType_LF:
        return "\n";
    }
    throw CQnException("Invalid EOL type.");
}

inline bool BeginsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

// Eight bytes of a text at a time. The tests below are exact on whether any byte meets them, not
// on which one.
constexpr std::uint64_t kEachByte = ~std::uint64_t(0) / 255;

inline std::uint64_t LoadEight(const char* p)
{
    std::uint64_t x;
    std::memcpy(&x, p, sizeof x);
    return x;
}

// Four bytes here and four there, which may overlap.
inline std::uint64_t LoadTwiceFour(const char* p, const char* q)
{
    std::uint32_t x;
    std::uint32_t y;
    std::memcpy(&x, p, sizeof x);
    std::memcpy(&y, q, sizeof y);
    return static_cast<std::uint64_t>(y) << 32 | x;
}

// Non-zero where a byte of x lies below uLimit, which is 128 at most.
constexpr std::uint64_t AnyBelow(std::uint64_t x, std::uint64_t uLimit)
{
    return (x - kEachByte * uLimit) & ~x & (kEachByte << 7);
}

// Non-zero where a byte of x is c, the bits of uIgnored, which c has, left aside.
constexpr std::uint64_t AnyEqual(std::uint64_t x, std::uint64_t c, std::uint64_t uIgnored)
{
    return AnyBelow((x | kEachByte * uIgnored) ^ kEachByte * c, 1);
}

} // namespace QnXmlLib16
