#include "QnXmlLib16/fastinfoset/internal/RestrictedAlphabet.h"

#include "QnXmlLib16/support/Exceptions.h"

namespace QnXmlLib16 {

namespace {

constexpr unsigned int kFill = 0xF; // the low half of the last octet, when no character is left

bool IsAlphabet(std::string_view alphabet)
{
    return alphabet.size() >= kLeastAlphabet && alphabet.size() <= kLargestAlphabet;
}

unsigned int Position(std::string_view alphabet, char c)
{
    const std::size_t nPosition = alphabet.find(c);
    if (nPosition == std::string_view::npos)
        throw CQnException(
            "Failed to write FastInfoset. Invalid character not found for Restricted Alphabet.");
    return static_cast<unsigned int>(nPosition);
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

unsigned int AlphabetWidth(std::size_t nSize)
{
    unsigned int uWidth = 3;
    while (std::size_t{1} << uWidth <= nSize)
        ++uWidth;
    return uWidth;
}

void PackText(std::string_view alphabet, std::string_view text, std::string& strOctets)
{
    if (!IsAlphabet(alphabet))
        throw CQnException("Failed to write FastInfoset. Invalid Restricted Alphabet. Alphabet "
                           "must contain between 2 and 2^20 characters.");
    switch (AlphabetWidth(alphabet.size())) {
    case 4:
        for (std::size_t n = 0; n < text.size(); n += 2) {
            const unsigned int uHigh = Position(alphabet, text[n]);
            const unsigned int uLow = n + 1 < text.size() ? Position(alphabet, text[n + 1]) : kFill;
            strOctets += static_cast<char>(uHigh << 4 | uLow);
        }
        return;
    case 8:
        for (const char c : text)
            strOctets += static_cast<char>(Position(alphabet, c));
        return;
    }
    throw CQnException(
        "Failed to write FastInfoset. Unsupported Feature in AppendRestrictedAlphabetString.");
}

bool UnpackText(std::string_view alphabet, const unsigned char* pOctets, std::size_t nLength,
                std::string& strText)
{
    if (!IsAlphabet(alphabet))
        throw CQnException("Failed to parse FastInfoset. Invalid Encoding of Restricted Alphabet. "
                           "Alphabet must contain between 2 and 2^20 characters.");
    const unsigned int uWidth = alphabet.size() > 3 ? AlphabetWidth(alphabet.size()) : 2;
    // The end of a text takes no more than the rest of an octet: in whole octets nothing ends it,
    // and in halves only a low one does.
    const unsigned int uEnd = (1u << uWidth) - 1;
    const std::size_t nCount = nLength * 8 / uWidth;
    CBitReader reader(pOctets, uWidth);
    for (std::size_t n = 0; n < nCount; ++n) {
        const unsigned int uPosition = reader.GetBits();
        const bool bMayEnd = uWidth == 8 ? false : uWidth != 4 || n % 2 != 0;
        if (uPosition == uEnd && bMayEnd)
            return true;
        if (uPosition >= alphabet.size())
            return false;
        strText += alphabet[uPosition];
    }
    return true;
}

} // namespace QnXmlLib16
