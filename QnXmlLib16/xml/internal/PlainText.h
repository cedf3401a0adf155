#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace QnXmlLib16 {

// Whether a text enters the tree byte for byte, whatever the locale: ASCII without carriage returns
// and zero bytes, which is most text of most documents. Eight bytes at a time; a byte of them that
// is none of these leaves its top bit set.
inline bool IsPlainText(const char* pText, std::size_t nLength)
{
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    constexpr std::uint64_t kTopBits = 0x8080808080808080;
    const auto suspects = [](std::uint64_t bytes) {
        const std::uint64_t returns = bytes ^ (kOnes * '\r');
        return bytes | ((returns - kOnes) & ~returns) | ((bytes - kOnes) & ~bytes);
    };
    if (nLength < 4) {
        const auto isPlain = [](char c) { return static_cast<signed char>(c) > 0 && c != '\r'; };
        return nLength == 0 ||
               (isPlain(pText[0]) && isPlain(pText[nLength / 2]) && isPlain(pText[nLength - 1]));
    }
    if (nLength < 8) {
        std::uint32_t first;
        std::uint32_t last;
        std::memcpy(&first, pText, sizeof first);
        std::memcpy(&last, pText + nLength - sizeof last, sizeof last);
        return (suspects(std::uint64_t{last} << 32 | first) & kTopBits) == 0;
    }
    const auto load = [](const char* p) {
        std::uint64_t bytes;
        std::memcpy(&bytes, p, sizeof bytes);
        return bytes;
    };
    const char* const pLast = pText + nLength - 8;
    std::uint64_t found = suspects(load(pLast));
    for (; pText < pLast; pText += 8)
        found |= suspects(load(pText));
    return (found & kTopBits) == 0;
}

} // namespace QnXmlLib16
