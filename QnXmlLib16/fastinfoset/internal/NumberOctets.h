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

constexpr bool IsNumberAlgorithm(unsigned long iAlgorithm)
{
    return iAlgorithm >= kAlgorithmShort && iAlgorithm <= kAlgorithmDouble;
}

// Replaces what strOctets held by one value. Fails as the conversion of the text does, and leaves
// strOctets as it was then.
void EncodeNumber(unsigned long iAlgorithm, const char* pszText, std::string& strOctets);

// The text of nLength octets, which are not none. Fails as CFastInfosetBinaryData::GetAsString.
std::string DecodeNumbers(unsigned long iAlgorithm, const unsigned char* pOctets,
                          std::size_t nLength);

} // namespace QnXmlLib16
