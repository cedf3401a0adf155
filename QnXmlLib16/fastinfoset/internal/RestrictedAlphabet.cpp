#include "QnXmlLib16/fastinfoset/internal/RestrictedAlphabet.h"

#include "QnXmlLib16/support/Exceptions.h"

namespace QnXmlLib16 {

namespace {

constexpr unsigned int kFill = 0xF; // the low half of the last octet, when no character is left

bool IsAlphabet(std::string_view alphabet)
{
    return alphabet.size() >= kLeastAlphabet && alphabet.size() <= kLargestAlphabet;
}

// The least width from 3 bits up that numbers the positions and keeps the value of all ones free.
unsigned int AlphabetWidth(std::size_t nSize)
{
    unsigned int uWidth = 3;
    while (std::size_t{1} << uWidth <= nSize)
        ++uWidth;
    return uWidth;
}

bool UnpackHalves(std::string_view alphabet, const unsigned char* pOctets, std::size_t nLength,
                  std::string& strText)
{
    strText.resize(2 * nLength);
    char* pText = strText.data();
    for (std::size_t n = 0; n < nLength; ++n) {
        const unsigned int uHigh = pOctets[n] >> 4;
        const unsigned int uLow = pOctets[n] & 0xF;
        if (uHigh >= alphabet.size())
            return false;
        *pText++ = alphabet[uHigh];
        if (uLow == kFill)
            break;
        if (uLow >= alphabet.size())
            return false;
        *pText++ = alphabet[uLow];
    }
    strText.resize(static_cast<std::size_t>(pText - strText.data()));
    return true;
}

// Takes values of a fixed width off a range, high bits first.
class CBitReader
{
public:
    CBitReader(const unsigned char* pOctets, unsigned int uWidth)
        : m_pNext(pOctets), m_uWidth(uWidth)
    {}

    unsigned int GetBits()
    {
        for (; m_uHeld < m_uWidth; m_uHeld += 8)
            m_uBits = m_uBits << 8 | *m_pNext++;
        m_uHeld -= m_uWidth;
        return m_uBits >> m_uHeld & ((1u << m_uWidth) - 1);
    }

private:
    const unsigned char* m_pNext;
    unsigned int m_uWidth;    // 21 at most, so that no bit is lost off the top
    unsigned int m_uHeld = 0; // bits of m_uBits that are not given out yet, the lowest ones
    unsigned int m_uBits = 0;
};

} // namespace

CAlphabetPacker::CAlphabetPacker(std::string_view alphabet)
{
    if (!IsAlphabet(alphabet))
        throw CQnException("Failed to write FastInfoset. Invalid Restricted Alphabet. Alphabet "
                           "must contain between 2 and 2^20 characters.");
    const unsigned int uWidth = AlphabetWidth(alphabet.size());
    if (uWidth != 4 && uWidth != 8)
        throw CQnException(
            "Failed to write FastInfoset. Unsupported Feature in AppendRestrictedAlphabetString.");
    m_bHalves = uWidth == 4;
    m_auPositions.fill(kNowhere);
    for (std::size_t n = alphabet.size(); n-- > 0;)
        m_auPositions[static_cast<unsigned char>(alphabet[n])] = static_cast<unsigned char>(n);
}

void CAlphabetPacker::Pack(std::string_view text, std::string& strOctets) const
{
    const auto position = [this](char c) {
        return static_cast<unsigned int>(m_auPositions[static_cast<unsigned char>(c)]);
    };
    strOctets.resize(m_bHalves ? (text.size() + 1) / 2 : text.size());
    char* pOctet = strOctets.data();
    bool bStrange = false;
    if (!m_bHalves) {
        for (const char c : text) {
            bStrange |= position(c) == kNowhere;
            *pOctet++ = static_cast<char>(position(c));
        }
    }
    else {
        unsigned int uAll = 0; // a position that fits a half has no high bits
        const std::size_t nPairs = text.size() / 2 * 2;
        for (std::size_t n = 0; n < nPairs; n += 2) {
            const unsigned int uHigh = position(text[n]);
            const unsigned int uLow = position(text[n + 1]);
            uAll |= uHigh | uLow;
            *pOctet++ = static_cast<char>(uHigh << 4 | uLow);
        }
        if (nPairs < text.size()) {
            uAll |= position(text.back());
            *pOctet = static_cast<char>(position(text.back()) << 4 | kFill);
        }
        bStrange = uAll > kFill;
    }
    if (bStrange)
        throw CQnException(
            "Failed to write FastInfoset. Invalid character not found for Restricted Alphabet.");
}

bool UnpackText(std::string_view alphabet, const unsigned char* pOctets, std::size_t nLength,
                std::string& strText)
{
    if (!IsAlphabet(alphabet))
        throw CQnException("Failed to parse FastInfoset. Invalid Encoding of Restricted Alphabet. "
                           "Alphabet must contain between 2 and 2^20 characters.");
    const unsigned int uWidth = alphabet.size() > 3 ? AlphabetWidth(alphabet.size()) : 2;
    if (uWidth == 4)
        return UnpackHalves(alphabet, pOctets, nLength, strText);
    strText.clear();
    const unsigned int uEnd = (1u << uWidth) - 1;
    CBitReader reader(pOctets, uWidth);
    for (std::size_t n = nLength * 8 / uWidth; n > 0; --n) {
        const unsigned int uPosition = reader.GetBits();
        // In whole octets there is nothing left over that an end could fill.
        if (uPosition == uEnd && uWidth != 8)
            break;
        if (uPosition >= alphabet.size())
            return false;
        strText += alphabet[uPosition];
    }
    return true;
}

} // namespace QnXmlLib16
