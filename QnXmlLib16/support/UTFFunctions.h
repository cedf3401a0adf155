#pragma once

#include "QnXmlLib16/support/Export.h"

// The conversions of ConvertUTF.h between wchar_t (UTF-32 on this target), UTF-16 and UTF-8, with
// lengths in units in place of end pointers. Results, a null target and malformed input are as
// there.

namespace QnXmlLib16 {

QNXML_API unsigned long UnicodeToUTF8(const wchar_t* pSource, unsigned long ulSourceLength,
                                      unsigned char* pTarget, unsigned long ulTargetLength);
QNXML_API unsigned long UTF8ToUnicode(const unsigned char* pSource, unsigned long ulSourceLength,
                                      wchar_t* pTarget, unsigned long ulTargetLength);
QNXML_API unsigned long UnicodeToUTF16(const wchar_t* pSource, unsigned long ulSourceLength,
                                       unsigned short* pTarget, unsigned long ulTargetLength);
QNXML_API unsigned long UTF16ToUnicode(const unsigned short* pSource, unsigned long ulSourceLength,
                                       wchar_t* pTarget, unsigned long ulTargetLength);

// Whether one of iLength characters is above 127.
QNXML_API bool DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(const wchar_t* pText,
                                                                  int iLength);

// Whether one of ulLength bytes has its top bit set.
QNXML_API bool DoesUTF8StrContainAnyCharsLargerThanOneByte(const unsigned char* pText,
                                                           unsigned long ulLength);

} // namespace QnXmlLib16
