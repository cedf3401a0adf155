#include "QnXmlLib16/validation/WhitespaceUtils.h"

#include "QnXmlLib16/support/Exceptions.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace QnXmlLib16 {

namespace {

// Texts that a rule has changed end at their first NUL, wherever the change was.
void CutAtNul(std::string& text)
{
    const std::size_t pos = text.find('\0');
    if (pos != std::string::npos)
        text.resize(pos);
}

// Writes one cLineEnd for CR LF, CR and LF, and cTab for a tab.
void RewriteInto(const char* pszText, std::size_t length, char cLineEnd, char cTab,
                 std::string& out)
{
    out.resize(length);
    char* pOut = out.data();
    const char* const pEnd = pszText + length;
    for (const char* p = pszText; p != pEnd; ++p) {
        switch (*p) {
        case '\r':
            if (p + 1 != pEnd && p[1] == '\n')
                ++p;
            *pOut++ = cLineEnd;
            break;
        case '\n':
            *pOut++ = cLineEnd;
            break;
        case '\t':
            *pOut++ = cTab;
            break;
        default:
            *pOut++ = *p;
        }
    }
    out.resize(static_cast<std::size_t>(pOut - out.data()));
    CutAtNul(out);
}

void CollapseInto(const std::string& text, std::string& out)
{
    out.resize(text.size());
    char* pOut = out.data();
    bool bAfterWhiteSpace = true;
    for (const char c : text) {
        if (!CWhitespaceUtils::IsWhiteSpace(c)) {
            *pOut++ = c;
            bAfterWhiteSpace = false;
        }
        else if (!bAfterWhiteSpace) {
            *pOut++ = ' ';
            bAfterWhiteSpace = true;
        }
    }
    if (bAfterWhiteSpace && pOut != out.data())
        --pOut;
    out.resize(static_cast<std::size_t>(pOut - out.data()));
    CutAtNul(out);
}

// Whether no byte is a blank or below it, eight bytes at a time; beyond ASCII it may say no.
bool IsVisibleAscii(const std::string& text)
{
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    constexpr std::uint64_t kTopBits = 0x8080808080808080;
    const char* const pText = text.data();
    std::uint64_t found = 0; // top bits of the bytes that are below 0x21 or above 0x7F
    std::size_t i = 0;
    for (; i + 8 <= text.size(); i += 8) {
        std::uint64_t bytes;
        std::memcpy(&bytes, pText + i, sizeof bytes);
        found |= (bytes - kOnes * 0x21) | bytes;
    }
    for (; i < text.size(); ++i)
        found |= static_cast<signed char>(pText[i]) <= ' ' ? kTopBits : 0;
    return (found & kTopBits) == 0;
}

bool IsCollapsed(const std::string& text)
{
    if (IsVisibleAscii(text))
        return true;
    bool bAfterWhiteSpace = true;
    for (const char c : text) {
        if (static_cast<unsigned char>(c) > ' ') {
            bAfterWhiteSpace = false;
            continue;
        }
        if (c == '\0' || c == '\t' || c == '\r' || c == '\n' || (c == ' ' && bAfterWhiteSpace))
            return false;
        bAfterWhiteSpace = c == ' ';
    }
    return text.empty() || !bAfterWhiteSpace;
}

bool IsPreserved(const std::string& text)
{
    return std::memchr(text.data(), '\r', text.size()) == nullptr;
}

bool IsReplaced(const std::string& text)
{
    for (const char c : text) {
        if (c == '\r' || c == '\n' || c == '\t')
            return false;
    }
    return true;
}

} // namespace

std::string CWhitespaceUtils::ApplyRule(WhitespaceRule rule, const std::string& text)
{
    std::string buffer;
    const std::string& result = ApplyRule(rule, text, buffer);
    if (&result == &buffer)
        return buffer;
    return text;
}

const std::string& CWhitespaceUtils::ApplyRule(WhitespaceRule rule, const std::string& text,
                                               std::string& buffer)
{
    switch (rule) {
    case WhitespaceRule_None:
        return text;
    case WhitespaceRule_Preserve:
        if (IsPreserved(text))
            return text;
        RewriteInto(text.data(), text.size(), '\n', '\t', buffer);
        return buffer;
    case WhitespaceRule_Replace:
        if (IsReplaced(text))
            return text;
        RewriteInto(text.data(), text.size(), ' ', ' ', buffer);
        return buffer;
    case WhitespaceRule_Collapse:
        if (IsCollapsed(text))
            return text;
        CollapseInto(text, buffer);
        return buffer;
    }
    throw CQnException("Unknown WhitespaceRule");
}

std::string CWhitespaceUtils::Preserve(const std::string& text)
{
    return ApplyRule(WhitespaceRule_Preserve, text);
}

std::string CWhitespaceUtils::Preserve(const char* text, int length)
{
    std::string result;
    if (text != nullptr && length > 0)
        RewriteInto(text, static_cast<std::size_t>(length), '\n', '\t', result);
    return result;
}

std::string CWhitespaceUtils::Replace(const std::string& text)
{
    return ApplyRule(WhitespaceRule_Replace, text);
}

std::string CWhitespaceUtils::Collapse(const std::string& text)
{
    return ApplyRule(WhitespaceRule_Collapse, text);
}

} // namespace QnXmlLib16
