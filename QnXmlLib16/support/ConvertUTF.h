#pragma once

#include "QnXmlLib16/support/Export.h"

// The transformation formats of the Unicode standard (UTF-8 as in RFC 3629), over plain ranges:
// first unit and the unit past the last.
//
// Each conversion returns the count of units written, and stops early at malformed input (UTF-8:
// what IsLegalUTF8 refuses or what the end cuts off; UTF-16: an unpaired surrogate; UTF-32: a
// surrogate code point) and at a character that the target can't take whole. With a null target
// nothing is written and the result is the length that the output needs, 0 for malformed input.
// A UTF-32 unit above 0x10FFFF becomes U+FFFD.

namespace QnXmlLib16 {

QNXML_API unsigned long ConvertUTF32toUTF16(const unsigned int* pSource,
                                            const unsigned int* pSourceEnd, unsigned short* pTarget,
                                            unsigned short* pTargetEnd);
QNXML_API unsigned long ConvertUTF16toUTF32(const unsigned short* pSource,
                                            const unsigned short* pSourceEnd, unsigned int* pTarget,
                                            unsigned int* pTargetEnd);
QNXML_API unsigned long ConvertUTF16toUTF8(const unsigned short* pSource,
                                           const unsigned short* pSourceEnd, unsigned char* pTarget,
                                           unsigned char* pTargetEnd);
QNXML_API unsigned long ConvertUTF8toUTF16(const unsigned char* pSource,
                                           const unsigned char* pSourceEnd, unsigned short* pTarget,
                                           unsigned short* pTargetEnd);
QNXML_API unsigned long ConvertUTF32toUTF8(const unsigned int* pSource,
                                           const unsigned int* pSourceEnd, unsigned char* pTarget,
                                           unsigned char* pTargetEnd);
QNXML_API unsigned long ConvertUTF8toUTF32(const unsigned char* pSource,
                                           const unsigned char* pSourceEnd, unsigned int* pTarget,
                                           unsigned int* pTargetEnd);

// Whether iLength bytes (1 to 4) form one legal UTF-8 sequence: no overlong form, no surrogate,
// nothing above U+10FFFF.
QNXML_API bool IsLegalUTF8(const unsigned char* pSource, int iLength);

// Whether the range begins with one whole legal sequence; what follows it does not matter.
QNXML_API bool IsLegalUTF8Sequence(const unsigned char* pSource, const unsigned char* pSourceEnd);

} // namespace QnXmlLib16
