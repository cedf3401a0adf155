#pragma once

#include <cstddef>
#include <string>

// The encoding algorithms 3 to 8 of ITU-T X.891, those of numbers and booleans, over plain memory.

namespace QnXmlLib16 {

constexpr unsigned long kAlgorithmHex = 1;
constexpr unsigned long kAlgorithmBase64 = 2;
constexpr unsigned long kAlgorithmShort = 3;
constexpr unsigned long kAlgorithmInt = 4;
constexpr unsigned long kAlgorithmLong = 5;
constexpr unsigned long kAlgorithmBoolean = 6;
constexpr unsigned long kAlgorithmFloat = 7;
constexpr unsigned long kAlgorithmDouble = 8;
constexpr unsigned long kAlgorithmUuid = 9;
constexpr unsigned long kAlgorithmCData = 10;

constexpr std::size_t kLargestNumber = 8; // octets of one item

constexpr bool IsNumberAlgorithm(unsigned long iAlgorithm)
{
    return iAlgorithm >= kAlgorithmShort && iAlgorithm <= kAlgorithmDouble;
}

// Puts one value into pOctets, which has room for the largest, and returns the count of octets.
// Fails as the conversion of the text does.
std::size_t EncodeNumber(unsigned long iAlgorithm, const char* pszText, unsigned char* pOctets);

// The text of nLength octets, which are not none. Fails as CFastInfosetBinaryData::GetAsString.
std::string DecodeNumbers(unsigned long iAlgorithm, const unsigned char* pOctets,
                          std::size_t nLength);

} // namespace QnXmlLib16
