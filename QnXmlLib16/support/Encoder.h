#pragma once

#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/values/BinaryData.h"

#include <cstddef>
#include <string>

namespace QnXmlLib16 {

// Turns the conversions of CEncoder between UTF-8 and the local code page off (true) or on
// (false, at the start); bytes then pass unchanged. Process-wide and not guarded: to be set
// before any work starts.
QNXML_API void ASCIIOnly(bool bASCIIOnly);

// Conversions at the edges of the library. Text inside is in the local code page: the multibyte
// encoding of the process's C locale, as wcrtomb and mbrtowc see it. The library never sets a
// locale; under the default "C" locale every character above 0x7F becomes "?" on its way in.
class QNXML_API CEncoder
{
public:
    // UTF-8 (RFC 3629) to the local code page. The text ends at its first zero character and
    // ahead of the first malformed sequence; a character that the code page lacks becomes "?".
    // iLength counts bytes; the forms without it go to the terminator. The buffers that a caller
    // may lend (sizes in units) are never too small and hold nothing of use afterwards: the text
    // is made in place.
    static std::string Utf8ToLocalCodePage(const unsigned char* pText, int iLength,
                                           wchar_t* pWideBuffer, unsigned long ulWideSize,
                                           char* pOutBuffer, unsigned long ulOutSize);
    static std::string Utf8ToLocalCodePage(const char* pszText, wchar_t* pWideBuffer,
                                           unsigned long ulWideSize, char* pOutBuffer,
                                           unsigned long ulOutSize);
    static std::string Utf8ToLocalCodePage(const unsigned char* pText, int iLength);
    static std::string Utf8ToLocalCodePage(const char* pszText);

    // The same conversion into a text that is there, which keeps its memory, and appended to
    // one. pText does not lie in strTarget.
    static void AssignUtf8(std::string& strTarget, const char* pText, std::size_t uLength);
    static void AppendUtf8(std::string& strTarget, const char* pText, std::size_t uLength);

    // Local code page to UTF-8; a byte that starts no whole character of the code page becomes
    // "?". The bytes are followed by a terminator that their length does not count.
    static CBinaryData LocalCodePageToUtf8Binary(const char* pszText);

    // Local code page to wide characters, 4 bytes each in native order, without terminator and
    // whatever ASCIIOnly says.
    static CBinaryData LocalCodePageToUnicodeBinary(const char* pszText);

    // Wide text to UTF-8. Text with a surrogate code point is malformed and gives empty data.
    // The bytes are followed by a terminator that their length does not count.
    static CBinaryData UnicodeToUtf8Binary(const wchar_t* pszText);

    // Not supported on this platform: always throws std::logic_error "basic_string::_M_construct
    // null not valid".
    [[noreturn]] static std::string Utf16ToLocalCodePage(const unsigned char* pText, int iLength);
};

} // namespace QnXmlLib16
