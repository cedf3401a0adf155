#include "QnXmlLib16/support/UTFFunctions.h"

#include "QnXmlLib16/support/internal/UtfSteps.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace QnXmlLib16 {

using namespace UtfSteps;

static_assert(sizeof(wchar_t) == 4, "a wchar_t holds one code point on this target");

unsigned long UnicodeToUTF8(const wchar_t* pSource, unsigned long ulSourceLength,
                            unsigned char* pTarget, unsigned long ulTargetLength)
{
    return Convert(pSource, pSource + ulSourceLength, pTarget, ulTargetLength, ReadUTF32<wchar_t>,
                   PutUTF8);
}

unsigned long UTF8ToUnicode(const unsigned char* pSource, unsigned long ulSourceLength,
                            wchar_t* pTarget, unsigned long ulTargetLength)
{
    return Convert(pSource, pSource + ulSourceLength, pTarget, ulTargetLength, ReadUTF8,
                   PutUTF32<wchar_t>);
}

unsigned long UnicodeToUTF16(const wchar_t* pSource, unsigned long ulSourceLength,
                             unsigned short* pTarget, unsigned long ulTargetLength)
{
    return Convert(pSource, pSource + ulSourceLength, pTarget, ulTargetLength, ReadUTF32<wchar_t>,
                   PutUTF16);
}

unsigned long UTF16ToUnicode(const unsigned short* pSource, unsigned long ulSourceLength,
                             wchar_t* pTarget, unsigned long ulTargetLength)
{
    return Convert(pSource, pSource + ulSourceLength, pTarget, ulTargetLength, ReadUTF16,
                   PutUTF32<wchar_t>);
}

bool DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(const wchar_t* pText, int iLength)
{
    return std::any_of(pText, pText + std::max(iLength, 0),
                       [](wchar_t c) { return static_cast<unsigned int>(c) > 127; });
}

bool DoesUTF8StrContainAnyCharsLargerThanOneByte(const unsigned char* pText, unsigned long ulLength)
{
    constexpr std::uint64_t kTopBits = 0x8080808080808080u;
    for (; ulLength >= sizeof kTopBits; pText += sizeof kTopBits, ulLength -= sizeof kTopBits) {
        std::uint64_t uWord;
        std::memcpy(&uWord, pText, sizeof uWord);
        if (uWord & kTopBits)
            return true;
    }
    return std::any_of(pText, pText + ulLength, [](unsigned char c) { return c >= 0x80; });
}

} // namespace QnXmlLib16
