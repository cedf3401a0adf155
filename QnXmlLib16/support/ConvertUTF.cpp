#include "QnXmlLib16/support/ConvertUTF.h"

#include "QnXmlLib16/support/internal/UtfSteps.h"

namespace QnXmlLib16 {

using namespace UtfSteps;

namespace {

template <class TUnit>
unsigned long LengthOf(const TUnit* pTarget, const TUnit* pTargetEnd)
{
    return pTarget ? static_cast<unsigned long>(pTargetEnd - pTarget) : 0;
}

} // namespace

unsigned long ConvertUTF32toUTF16(const unsigned int* pSource, const unsigned int* pSourceEnd,
                                  unsigned short* pTarget, unsigned short* pTargetEnd)
{
    return Convert(pSource, pSourceEnd, pTarget, LengthOf(pTarget, pTargetEnd),
                   ReadUTF32<unsigned int>, PutUTF16);
}

unsigned long ConvertUTF16toUTF32(const unsigned short* pSource, const unsigned short* pSourceEnd,
                                  unsigned int* pTarget, unsigned int* pTargetEnd)
{
    return Convert(pSource, pSourceEnd, pTarget, LengthOf(pTarget, pTargetEnd), ReadUTF16,
                   PutUTF32<unsigned int>);
}

unsigned long ConvertUTF16toUTF8(const unsigned short* pSource, const unsigned short* pSourceEnd,
                                 unsigned char* pTarget, unsigned char* pTargetEnd)
{
    return Convert(pSource, pSourceEnd, pTarget, LengthOf(pTarget, pTargetEnd), ReadUTF16, PutUTF8);
}

unsigned long ConvertUTF8toUTF16(const unsigned char* pSource, const unsigned char* pSourceEnd,
                                 unsigned short* pTarget, unsigned short* pTargetEnd)
{
    return Convert(pSource, pSourceEnd, pTarget, LengthOf(pTarget, pTargetEnd), ReadUTF8, PutUTF16);
}

unsigned long ConvertUTF32toUTF8(const unsigned int* pSource, const unsigned int* pSourceEnd,
                                 unsigned char* pTarget, unsigned char* pTargetEnd)
{
    return Convert(pSource, pSourceEnd, pTarget, LengthOf(pTarget, pTargetEnd),
                   ReadUTF32<unsigned int>, PutUTF8);
}

unsigned long ConvertUTF8toUTF32(const unsigned char* pSource, const unsigned char* pSourceEnd,
                                 unsigned int* pTarget, unsigned int* pTargetEnd)
{
    return Convert(pSource, pSourceEnd, pTarget, LengthOf(pTarget, pTargetEnd), ReadUTF8,
                   PutUTF32<unsigned int>);
}

bool IsLegalUTF8(const unsigned char* pSource, int iLength)
{
    return iLength >= 1 && LegalLength(pSource, pSource + iLength) == iLength;
}

bool IsLegalUTF8Sequence(const unsigned char* pSource, const unsigned char* pSourceEnd)
{
    return pSource != pSourceEnd && LegalLength(pSource, pSourceEnd) != 0;
}

} // namespace QnXmlLib16
