#pragma once

#include "QnXmlLib16/support/Export.h"

#include <string>

namespace QnXmlLib16 {

// The whiteSpace facet of XML Schema Part 2, section 4.3.6: what becomes of blanks and line ends
// before a text is parsed. Only the four bytes of IsWhiteSpace() count, and bytes are looked at
// one by one, so text in any encoding that keeps ASCII apart passes through. Static functions
// without state.
class QNXML_API CWhitespaceUtils
{
public:
    enum WhitespaceRule : int
    {
        WhitespaceRule_None = 0,     // the text as it is
        WhitespaceRule_Preserve = 1, // line ends become line feeds
        WhitespaceRule_Replace = 2,  // line ends and tabs become spaces
        WhitespaceRule_Collapse = 3  // runs of white space become one space, the ends are trimmed
    };

    CWhitespaceUtils() = delete;

    // Throws CQnException "Unknown WhitespaceRule" for any other number.
    static std::string ApplyRule(WhitespaceRule rule, const std::string& text);

    // The same without a copy where the rule changes nothing: the result is `text` itself or
    // `buffer`, which is overwritten only in the second case. `buffer` must not be `text`.
    static const std::string& ApplyRule(WhitespaceRule rule, const std::string& text,
                                        std::string& buffer);

    // CR LF and a lone CR become one LF. A text without a CR is returned whole; any other one
    // ends at its first NUL.
    static std::string Preserve(const std::string& text);

    // The same on counted bytes, where the result always ends at the first NUL. A length below 1
    // gives the empty text.
    static std::string Preserve(const char* text, int length);

    // CR LF, a lone CR, LF and TAB become one space each. A text without them is returned whole;
    // any other one ends at its first NUL.
    static std::string Replace(const std::string& text);

    // The result ends at the first NUL.
    static std::string Collapse(const std::string& text);

    // Space, tab, carriage return and line feed.
    static bool IsWhiteSpace(char c) noexcept
    {
        return c == ' ' || c == '\t' || c == '\r' || c == '\n';
    }
};

} // namespace QnXmlLib16
