#include "QnXmlLib16/values/Base64.h"

#include <array>
#include <cstddef>
#include <cstring>

namespace QnXmlLib16 {

namespace {

constexpr int kStop = -2; // no character of the encoding
constexpr int kSkip = -1;

// Indexed by the low seven bits of a character: the top bit does not count.
constexpr std::array<signed char, 128> MakeDecodeTable(const char* pAlphabet)
{
    std::array<signed char, 128> table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = kStop;
    for (int i = 0; i < 64; ++i)
        table[static_cast<unsigned char>(pAlphabet[i])] = static_cast<signed char>(i);
    for (const char c : {'\t', '\n', '\r', ' ', '='})
        table[static_cast<unsigned char>(c)] = kSkip;
    return table;
}

} // namespace

CBase64::CBase64() = default;
CBase64::~CBase64() = default;

std::string CBase64::Encode(const unsigned char* pData, int iLength)
{
    if (!pData || iLength <= 0)
        return std::string();
    m_pInput = pData;
    m_iInputLength = iLength;
    m_iBitsHeld = 0;
    m_uAccumulator = 0;

    const std::size_t uGroups = (static_cast<std::size_t>(iLength) * 8 + 5) / 6;
    std::string strResult((uGroups + 3) / 4 * 4, '=');
    int iPosition = 0;
    for (std::size_t i = 0; i < uGroups; ++i) {
        int iBitsRead = 0;
        const unsigned int uBits = Read(6, &iBitsRead, iPosition);
        strResult[i] = m_sBase64Alphabet[uBits << (6 - iBitsRead)];
    }
    return strResult;
}

unsigned long CBase64::Decode(const char* pszText, unsigned char* pOut)
{
    static constexpr std::array<signed char, 128> kTable = MakeDecodeTable(m_sBase64Alphabet);

    if (!pOut || !pszText || *pszText == '\0')
        return 0;
    m_iBitsHeld = 0;
    m_uAccumulator = 0;
    std::memset(pOut, 0, std::strlen(pszText) + 1);

    unsigned long ulCount = 0;
    for (; *pszText != '\0'; ++pszText) {
        const int iValue = kTable[static_cast<unsigned char>(*pszText) & 0x7F];
        if (iValue == kStop)
            return 0;
        if (iValue == kSkip)
            continue;
        int iWritten = 0;
        Write(static_cast<unsigned int>(iValue), 6, pOut + ulCount, iWritten);
        ulCount += static_cast<unsigned long>(iWritten);
    }
    return ulCount;
}

unsigned int CBase64::Read(int iBits, int* piBitsRead, int& iPosition)
{
    while (m_iBitsHeld < iBits && iPosition < m_iInputLength) {
        m_uAccumulator = m_uAccumulator << 8 | m_pInput[iPosition++];
        m_iBitsHeld += 8;
    }
    const int iTaken = m_iBitsHeld < iBits ? m_iBitsHeld : iBits;
    m_iBitsHeld -= iTaken;
    *piBitsRead = iTaken;
    return static_cast<unsigned int>(m_uAccumulator >> m_iBitsHeld) &
           static_cast<unsigned int>(m_nMask[iTaken]);
}

void CBase64::Write(unsigned int uBits, int iBits, unsigned char* pOut, int& iPosition)
{
    m_uAccumulator = m_uAccumulator << iBits | (uBits & static_cast<unsigned int>(m_nMask[iBits]));
    m_iBitsHeld += iBits;
    while (m_iBitsHeld >= 8) {
        m_iBitsHeld -= 8;
        pOut[iPosition++] = static_cast<unsigned char>(m_uAccumulator >> m_iBitsHeld);
    }
}

} // namespace QnXmlLib16
