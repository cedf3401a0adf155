#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

// Text as positions in a restricted alphabet (ITU-T X.891): each takes as many bits as the size of
// the alphabet asks for, high bits first, and what is left of the last octet is filled with ones.

namespace QnXmlLib16 {

constexpr std::size_t kLeastAlphabet = 2;
constexpr std::size_t kLargestAlphabet = 1048576;

// Turns text into positions. Knows widths of 4 and 8 bits; an alphabet of 2 or 3 characters counts
// as one of 3 bits here.
class CAlphabetPacker
{
public:
    // Fails in the words of the writer for an alphabet of a bad size or width.
    explicit CAlphabetPacker(std::string_view alphabet);

    // Replaces what strOctets held. Fails for a character that is not in the alphabet.
    void Pack(std::string_view text, std::string& strOctets) const;

private:
    static constexpr unsigned char kNowhere = 0xFF;

    bool m_bHalves;                               // 4 bits
    std::array<unsigned char, 256> m_auPositions; // by character
};

// Replaces what strText held by the text of the positions; a position of all ones ends it. False
// for a position that is not in the alphabet. An alphabet of 2 or 3 characters takes 2 bits. Fails
// in the words of the reader for an alphabet of a bad size.
bool UnpackText(std::string_view alphabet, const unsigned char* pOctets, std::size_t nLength,
                std::string& strText);

} // namespace QnXmlLib16
