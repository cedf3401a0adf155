#pragma once

#include "QnXmlLib16/support/Export.h"

#include <string>

namespace QnXmlLib16 {

// Base 64 (RFC 4648, standard alphabet) over whole buffers. One thread at a time.
class QNXML_API CBase64
{
public:
    CBase64();
    virtual ~CBase64();

    // Padded with "=" to a multiple of four characters, no line breaks. Null data gives an empty
    // text.
    std::string Encode(const unsigned char* pData, int iLength);

    // Decodes into pOut, which has room for strlen(pszText) + 1 bytes, and returns the count of
    // bytes. Any character outside the alphabet drops all that was decoded: 0.
    // Deliberate: lenient otherwise, so a damaged text may decode. Blanks, tabs, line ends and
    // "=" are skipped wherever they stand, missing padding is no fault, left-over bits are
    // dropped, and a byte above 0x7F counts as its low seven bits. Pinned by
    // Base64.DecodesLeniently.
    unsigned long Decode(const char* pszText, unsigned char* pOut);

private:
    // The next iBits bits (at most 8) of the input; fewer at its end, *piBitsRead tells.
    unsigned int Read(int iBits, int* piBitsRead, int& iPosition);
    // Takes in iBits bits; stores a byte at pOut[iPosition++] once eight are held.
    void Write(unsigned int uBits, int iBits, unsigned char* pOut, int& iPosition);

    static constexpr char m_sBase64Alphabet[65] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    static constexpr int m_nMask[9] = {0, 1, 3, 7, 15, 31, 63, 127, 255}; // by count of bits

    int m_iInputLength = 0;
    int m_iBitsHeld = 0;                   // bits in the accumulator not yet given out
    unsigned long long m_uAccumulator = 0; // the lowest m_iBitsHeld bits count
    const unsigned char* m_pInput = nullptr;
};

} // namespace QnXmlLib16
