#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

// Hash, comparison and copies of texts that are short as a rule, inline.

namespace QnXmlLib16 {

template <class TUnit>
TUnit LoadUnit(const char* p)
{
    TUnit unit;
    std::memcpy(&unit, p, sizeof unit);
    return unit;
}

// As memcpy, without a call for up to 16 bytes.
inline void CopyBytes(char* pTo, const char* pFrom, std::size_t nLength)
{
    if (nLength > 16) {
        std::memcpy(pTo, pFrom, nLength);
    }
    else if (nLength >= 8) {
        const std::uint64_t uLast = LoadUnit<std::uint64_t>(pFrom + nLength - 8);
        std::memcpy(pTo, pFrom, 8);
        std::memcpy(pTo + nLength - 8, &uLast, 8);
    }
    else if (nLength >= 4) {
        const std::uint32_t uLast = LoadUnit<std::uint32_t>(pFrom + nLength - 4);
        std::memcpy(pTo, pFrom, 4);
        std::memcpy(pTo + nLength - 4, &uLast, 4);
    }
    else if (nLength > 0) {
        const char cLast = pFrom[nLength - 1];
        const char cMiddle = pFrom[nLength / 2];
        pTo[0] = pFrom[0];
        pTo[nLength / 2] = cMiddle;
        pTo[nLength - 1] = cLast;
    }
}

// As memcmp == 0, without a call for up to 16 bytes.
inline bool EqualBytes(const char* p, const char* q, std::size_t nLength)
{
    if (nLength > 16)
        return std::memcmp(p, q, nLength) == 0;
    if (nLength >= 8) {
        const std::size_t nLast = nLength - 8;
        return LoadUnit<std::uint64_t>(p) == LoadUnit<std::uint64_t>(q) &&
               LoadUnit<std::uint64_t>(p + nLast) == LoadUnit<std::uint64_t>(q + nLast);
    }
    if (nLength >= 4) {
        const std::size_t nLast = nLength - 4;
        return LoadUnit<std::uint32_t>(p) == LoadUnit<std::uint32_t>(q) &&
               LoadUnit<std::uint32_t>(p + nLast) == LoadUnit<std::uint32_t>(q + nLast);
    }
    return nLength == 0 ||
           (p[0] == q[0] && p[nLength / 2] == q[nLength / 2] && p[nLength - 1] == q[nLength - 1]);
}

inline bool EqualText(std::string_view text, std::string_view other)
{
    return text.size() == other.size() && EqualBytes(text.data(), other.data(), text.size());
}

// A hash that can't be foreseen without the seed, so that texts can't be made to collide.
inline std::uint64_t HashText(std::string_view text, std::uint64_t uSeed)
{
    constexpr std::uint64_t kOdd1 = 0x9E3779B97F4A7C15; // bits of the golden ratio
    constexpr std::uint64_t kOdd2 = 0xC2B2AE3D27D4EB4F;
    // The two halves of the full product, folded.
    const auto mix = [](std::uint64_t a, std::uint64_t b) {
        const unsigned __int128 product = static_cast<unsigned __int128>(a) * b;
        return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
    };
    const char* p = text.data();
    std::size_t nLeft = text.size();
    std::uint64_t uHash = uSeed ^ nLeft;
    for (; nLeft > 16; p += 16, nLeft -= 16)
        uHash = mix(LoadUnit<std::uint64_t>(p) ^ kOdd1 ^ uHash,
                    LoadUnit<std::uint64_t>(p + 8) ^ kOdd2 ^ uSeed);
    std::uint64_t uFirst = 0;
    std::uint64_t uLast = 0;
    if (nLeft >= 8) {
        uFirst = LoadUnit<std::uint64_t>(p);
        uLast = LoadUnit<std::uint64_t>(p + nLeft - 8);
    }
    else if (nLeft >= 4) {
        uFirst = LoadUnit<std::uint32_t>(p);
        uLast = LoadUnit<std::uint32_t>(p + nLeft - 4);
    }
    else if (nLeft > 0) {
        uFirst = static_cast<unsigned char>(p[0]);
        uLast = static_cast<std::uint64_t>(static_cast<unsigned char>(p[nLeft / 2])) << 8 |
                static_cast<unsigned char>(p[nLeft - 1]);
    }
    return mix(uFirst ^ kOdd1 ^ uHash, uLast ^ kOdd2 ^ uSeed);
}

} // namespace QnXmlLib16
