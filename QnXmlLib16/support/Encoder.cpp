#include "QnXmlLib16/support/Encoder.h"

#include "QnXmlLib16/support/UTFFunctions.h"
#include "QnXmlLib16/support/internal/UtfSteps.h"

#include <atomic>
#include <climits>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <langinfo.h>
#include <memory>
#include <stdexcept>

namespace QnXmlLib16 {

namespace {

std::atomic<bool> ASCII_ONLY{false};

bool IsAsciiOnly()
{
    return ASCII_ONLY.load(std::memory_order_relaxed);
}

// In such a locale wcrtomb and mbrtowc map legal UTF-8 to itself.
bool IsLocaleUtf8()
{
    return std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0;
}

const unsigned char* AsBytes(const char* p)
{
    return reinterpret_cast<const unsigned char*>(p);
}

// The end of the run of bytes 0x01 to 0x7F at the front of the range. These stand for themselves
// in every code page that a locale can have.
const unsigned char* SkipAscii(const unsigned char* p, const unsigned char* pEnd)
{
    constexpr std::uint64_t kOnes = 0x0101010101010101u;
    constexpr std::uint64_t kTopBits = 0x8080808080808080u;
    while (pEnd - p >= static_cast<std::ptrdiff_t>(2 * sizeof(std::uint64_t))) {
        std::uint64_t auWords[2];
        std::memcpy(auWords, p, sizeof auWords);
        // Subtracting 1 sets the top bit of a byte 0; a byte above it can only be set wrongly if
        // there is such a byte below.
        if (((auWords[0] | (auWords[0] - kOnes)) | (auWords[1] | (auWords[1] - kOnes))) & kTopBits)
            break;
        p += sizeof auWords;
    }
    while (p != pEnd && *p != 0 && *p < 0x80)
        ++p;
    return p;
}

// The end of the run of legal UTF-8 without a byte 0 at the front of the range.
const unsigned char* SkipLegalUtf8(const unsigned char* p, const unsigned char* pEnd)
{
    while (p != pEnd && *p != 0) {
        if (*p < 0x80) {
            p = SkipAscii(p, pEnd);
            continue;
        }
        const int iLength = UtfSteps::LegalLength(p, pEnd);
        if (iLength == 0)
            break;
        p += iLength;
    }
    return p;
}

void AppendBytes(std::string& strTarget, const unsigned char* p, const unsigned char* pEnd)
{
    strTarget.append(reinterpret_cast<const char*>(p), static_cast<std::size_t>(pEnd - p));
}

// A range of legal UTF-8, written character by character as the locale has it.
void AppendInLocale(std::string& strTarget, const unsigned char* p, const unsigned char* pEnd)
{
    char acCharacter[MB_LEN_MAX];
    std::mbstate_t state{};
    while (p != pEnd) {
        const unsigned char* pAsciiEnd = SkipAscii(p, pEnd);
        AppendBytes(strTarget, p, pAsciiEnd);
        p = pAsciiEnd;
        unsigned int uCodePoint = 0;
        if (p == pEnd || !UtfSteps::ReadUTF8(p, pEnd, uCodePoint))
            return;
        const std::size_t uBytes =
            std::wcrtomb(acCharacter, static_cast<wchar_t>(uCodePoint), &state);
        if (uBytes == static_cast<std::size_t>(-1)) {
            strTarget += '?';
            state = std::mbstate_t{};
        }
        else {
            strTarget.append(acCharacter, uBytes);
        }
    }
}

using WideText = std::unique_ptr<wchar_t[]>;

// The text as wide characters with a terminator; *puCount takes their count.
WideText LocalCodePageToWide(const char* pszText, std::size_t* puCount)
{
    const std::size_t uLength = std::strlen(pszText);
    WideText pResult(new wchar_t[uLength + 1]);
    wchar_t* pOut = pResult.get();
    const char* const pEnd = pszText + uLength;
    std::mbstate_t state{};
    while (pszText != pEnd) {
        if (static_cast<unsigned char>(*pszText) < 0x80) {
            *pOut++ = static_cast<wchar_t>(*pszText++);
            continue;
        }
        const std::size_t uBytes =
            std::mbrtowc(pOut, pszText, static_cast<std::size_t>(pEnd - pszText), &state);
        // -1 and -2, rejected and incomplete, are the two largest values.
        if (uBytes >= static_cast<std::size_t>(-2)) {
            *pOut = L'?';
            state = std::mbstate_t{};
            ++pszText;
        }
        else {
            pszText += uBytes;
        }
        ++pOut;
    }
    *pOut = L'\0';
    *puCount = static_cast<std::size_t>(pOut - pResult.get());
    return pResult;
}

// A block of uLength bytes with a terminator behind them.
std::unique_ptr<unsigned char[]> MakeBlock(std::size_t uLength)
{
    std::unique_ptr<unsigned char[]> pBlock(new unsigned char[uLength + 1]);
    pBlock[uLength] = 0;
    return pBlock;
}

CBinaryData CopyBytes(const void* pBytes, std::size_t uLength)
{
    std::unique_ptr<unsigned char[]> pBlock = MakeBlock(uLength);
    std::memcpy(pBlock.get(), pBytes, uLength);
    return CBinaryData(pBlock.release(), uLength, true);
}

} // namespace

void ASCIIOnly(bool bASCIIOnly)
{
    ASCII_ONLY.store(bASCIIOnly, std::memory_order_relaxed);
}

std::string CEncoder::Utf8ToLocalCodePage(const unsigned char* pText, int iLength, wchar_t*,
                                          unsigned long, char*, unsigned long)
{
    return Utf8ToLocalCodePage(pText, iLength);
}

std::string CEncoder::Utf8ToLocalCodePage(const char* pszText, wchar_t*, unsigned long, char*,
                                          unsigned long)
{
    return Utf8ToLocalCodePage(pszText);
}

std::string CEncoder::Utf8ToLocalCodePage(const unsigned char* pText, int iLength)
{
    std::string strResult;
    if (pText && iLength > 0)
        AppendUtf8(strResult, reinterpret_cast<const char*>(pText),
                   static_cast<std::size_t>(iLength));
    return strResult;
}

std::string CEncoder::Utf8ToLocalCodePage(const char* pszText)
{
    std::string strResult;
    if (pszText)
        AppendUtf8(strResult, pszText, std::strlen(pszText));
    return strResult;
}

void CEncoder::AssignUtf8(std::string& strTarget, const char* pText, std::size_t uLength)
{
    strTarget.clear();
    AppendUtf8(strTarget, pText, uLength);
}

void CEncoder::AppendUtf8(std::string& strTarget, const char* pText, std::size_t uLength)
{
    if (uLength == 0)
        return;
    if (IsAsciiOnly()) {
        strTarget.append(pText, uLength);
        return;
    }
    const unsigned char* p = AsBytes(pText);
    const unsigned char* const pEnd = p + uLength;
    const unsigned char* const pAsciiEnd = SkipAscii(p, pEnd);
    if (pAsciiEnd == pEnd || *pAsciiEnd == 0) {
        AppendBytes(strTarget, p, pAsciiEnd);
        return;
    }
    const unsigned char* const pLegalEnd = SkipLegalUtf8(pAsciiEnd, pEnd);
    if (IsLocaleUtf8())
        AppendBytes(strTarget, p, pLegalEnd);
    else
        AppendInLocale(strTarget, p, pLegalEnd);
}

CBinaryData CEncoder::LocalCodePageToUtf8Binary(const char* pszText)
{
    const std::size_t uLength = pszText ? std::strlen(pszText) : 0;
    if (uLength == 0)
        return CBinaryData();
    const unsigned char* const pEnd = AsBytes(pszText) + uLength;
    const unsigned char* const pAsciiEnd = SkipAscii(AsBytes(pszText), pEnd);
    if (pAsciiEnd == pEnd || IsAsciiOnly() ||
        (IsLocaleUtf8() && SkipLegalUtf8(pAsciiEnd, pEnd) == pEnd))
        return CopyBytes(pszText, uLength);
    std::size_t uCount = 0;
    const WideText pWide = LocalCodePageToWide(pszText, &uCount);
    return UnicodeToUtf8Binary(pWide.get());
}

CBinaryData CEncoder::LocalCodePageToUnicodeBinary(const char* pszText)
{
    if (!pszText || *pszText == '\0')
        return CBinaryData();
    std::size_t uCount = 0;
    const WideText pWide = LocalCodePageToWide(pszText, &uCount);
    return CopyBytes(pWide.get(), uCount * sizeof(wchar_t));
}

CBinaryData CEncoder::UnicodeToUtf8Binary(const wchar_t* pszText)
{
    const std::size_t uLength = pszText ? std::wcslen(pszText) : 0;
    const unsigned long ulBytes = UnicodeToUTF8(pszText, uLength, nullptr, 0);
    std::unique_ptr<unsigned char[]> pBlock = MakeBlock(ulBytes);
    UnicodeToUTF8(pszText, ulBytes == 0 ? 0 : uLength, pBlock.get(), ulBytes);
    return CBinaryData(pBlock.release(), ulBytes, true);
}

std::string CEncoder::Utf16ToLocalCodePage(const unsigned char*, int)
{
    // Deliberate: documents with UTF-16 strings fail here, with this class and these words.
    // Pinned by Encoder.Utf16IsRefused.
    throw std::logic_error("basic_string::_M_construct null not valid");
}

} // namespace QnXmlLib16
