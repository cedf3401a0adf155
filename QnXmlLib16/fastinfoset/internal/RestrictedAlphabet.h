#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Text as positions in a restricted alphabet (ITU-T X.891): each takes as many bits as the size of
// the alphabet asks for, high bits first, and what is left of the last octet is filled with ones.

namespace QnXmlLib16 {

constexpr std::size_t kLeastAlphabet = 2;
constexpr std::size_t kLargestAlphabet = 1048576;

// The least width from 3 bits up that numbers the positions and keeps the value of all ones free.
unsigned int AlphabetWidth(std::size_t nSize);

// Appends the positions of the text to strOctets. Knows widths of 4 and 8 bits; an alphabet of 2
// or 3 characters counts as one of 3 bits here. Fails in the words of the writer.
void PackText(std::string_view alphabet, std::string_view text, std::string& strOctets);

// Appends the text of the positions to strText; a position of all ones ends it. False for a
// position that is not in the alphabet. An alphabet of 2 or 3 characters takes 2 bits. Fails in the
// words of the reader for an alphabet of a bad size.
bool UnpackText(std::string_view alphabet, const unsigned char* pOctets, std::size_t nLength,
                std::string& strText);

} // namespace QnXmlLib16
