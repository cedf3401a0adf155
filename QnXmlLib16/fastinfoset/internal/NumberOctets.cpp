#include "QnXmlLib16/fastinfoset/internal/NumberOctets.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/values/Conversions.h"

#include <cstdint>
#include <cstring>

namespace QnXmlLib16 {

namespace {

constexpr CWhitespaceUtils::WhitespaceRule kAsIs = CWhitespaceUtils::WhitespaceRule_None;

void Store(std::uint64_t uValue, std::size_t nOctets, std::string& strOctets)
{
    strOctets.resize(nOctets);
    for (std::size_t n = nOctets; n-- > 0; uValue >>= 8)
        strOctets[n] = static_cast<char>(uValue);
}

std::uint64_t Load(const unsigned char* pOctets, std::size_t nOctets)
{
    std::uint64_t uValue = 0;
    for (std::size_t n = 0; n < nOctets; ++n)
        uValue = uValue << 8 | pOctets[n];
    return uValue;
}

// The bits of a value as another type of the same size.
template <class TTo, class TFrom>
TTo Bits(TFrom value)
{
    static_assert(sizeof(TTo) == sizeof(TFrom), "the two types differ in size");
    TTo result;
    std::memcpy(&result, &value, sizeof result);
    return result;
}

std::string ShortText(std::uint64_t uValue)
{
    return CConversions::i2ToString(Bits<std::int16_t>(static_cast<std::uint16_t>(uValue)));
}

// Deliberate: the 32 bits count as unsigned, so a negative value that was written comes back as one
// above 2147483647; shorts and longs keep their sign. Pinned by
// EncodedData.AValueHasTheOctetsOfItsAlgorithm.
std::string IntText(std::uint64_t uValue)
{
    return CConversions::i4ToString(static_cast<long>(uValue));
}

std::string LongText(std::uint64_t uValue)
{
    return CConversions::i8ToString(Bits<long long>(uValue));
}

std::string FloatText(std::uint64_t uValue)
{
    return CConversions::r4ToString(Bits<float>(static_cast<std::uint32_t>(uValue)));
}

std::string DoubleText(std::uint64_t uValue)
{
    return CConversions::r8ToString(Bits<double>(uValue));
}

std::string DecodeItems(const unsigned char* pOctets, std::size_t nLength, std::size_t nOctets,
                        std::string (*pfnText)(std::uint64_t), const char* pszIfBroken)
{
    if (nLength % nOctets != 0)
        throw CQnException(pszIfBroken);
    std::string strText = pfnText(Load(pOctets, nOctets));
    for (std::size_t n = nOctets; n < nLength; n += nOctets) {
        strText += ' ';
        strText += pfnText(Load(pOctets + n, nOctets));
    }
    return strText;
}

// Deliberate: the items of one octet are set side by side, and a blank separates the octets. A
// reader of several booleans has to take them apart by their letters. Pinned by
// EncodedData.AValueHasTheOctetsOfItsAlgorithm.
std::string DecodeBooleans(const unsigned char* pOctets, std::size_t nLength)
{
    const unsigned int uUnused = pOctets[0] >> 4;
    std::string strText;
    for (std::size_t n = 0; n < nLength; ++n) {
        const unsigned int uBits = n == 0 ? 4 : 8;
        const unsigned int uLeftOut = n + 1 == nLength ? uUnused : 0;
        if (uLeftOut > uBits)
            return std::string();
        if (n != 0 && uLeftOut < uBits)
            strText += ' ';
        for (unsigned int u = uBits; u > uLeftOut; --u)
            strText += CConversions::booleanToString((pOctets[n] >> (u - 1) & 1) != 0);
    }
    return strText;
}

} // namespace

void EncodeNumber(unsigned long iAlgorithm, const char* pszText, std::string& strOctets)
{
    const std::string strText(pszText);
    switch (iAlgorithm) {
    case kAlgorithmShort:
        return Store(static_cast<std::uint64_t>(CConversions::i2FromString(strText, kAsIs)), 2,
                     strOctets);
    case kAlgorithmInt:
        return Store(static_cast<std::uint64_t>(CConversions::i4FromString(strText, kAsIs)), 4,
                     strOctets);
    case kAlgorithmLong:
        return Store(static_cast<std::uint64_t>(CConversions::i8FromString(strText, kAsIs)), 8,
                     strOctets);
    case kAlgorithmBoolean:
        // The count of unused bits, 3, in the high half; then the value and three times 0.
        return Store(CConversions::booleanFromString(strText, kAsIs) ? 0x38 : 0x30, 1, strOctets);
    case kAlgorithmFloat:
        return Store(Bits<std::uint32_t>(CConversions::r4FromString(strText, kAsIs)), 4, strOctets);
    case kAlgorithmDouble:
        return Store(Bits<std::uint64_t>(CConversions::r8FromString(strText, kAsIs)), 8, strOctets);
    }
    throw CQnException("Unknown byte encoding.");
}

std::string DecodeNumbers(unsigned long iAlgorithm, const unsigned char* pOctets,
                          std::size_t nLength)
{
    switch (iAlgorithm) {
    case kAlgorithmShort:
        return DecodeItems(pOctets, nLength, 2, ShortText,
                           "Invalid value for SHORT byte encoding.");
    case kAlgorithmInt:
        return DecodeItems(pOctets, nLength, 4, IntText, "Invalid value for INT byte encoding.");
    case kAlgorithmLong:
        return DecodeItems(pOctets, nLength, 8, LongText, "Invalid value for LONG byte encoding.");
    case kAlgorithmBoolean:
        return DecodeBooleans(pOctets, nLength);
    case kAlgorithmFloat:
        return DecodeItems(pOctets, nLength, 4, FloatText,
                           "Invalid value for FLOAT byte encoding.");
    case kAlgorithmDouble:
        return DecodeItems(pOctets, nLength, 8, DoubleText,
                           "Invalid value for DOUBLE byte encoding.");
    }
    throw CQnException("Unknown byte encoding.");
}

} // namespace QnXmlLib16
