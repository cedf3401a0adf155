#pragma once

#include "QnXmlLib16/support/Export.h"

#include <string>

namespace QnXmlLib16 {

// Whether the whole of `value` matches an XML Schema pattern (XML Schema Part 2, appendix F).
// `pattern` is in UTF-8, `value` in the local code page and cut at its first NUL.
//
// The schema's dialect is turned into that of the matching engine by plain replacement of \i, \I,
// \c, \C and the first four block names; everything else reaches the engine as it stands. So \i
// and \c know ASCII letters only, these escapes mean something else inside a character class, and
// class subtraction is not understood. ^ and $ work as anchors.
//
// A pattern that the engine refuses fails with CQnException "Invalid Regular Expression: %s
// Error: '%s'", which names the value and not the pattern. A match that the engine gives up, for
// want of memory or after too many steps, counts as none, and so does a value of 2 GiB and more.
// Nothing is kept between calls: each one compiles the pattern. A match keeps to the stack that
// its thread has left, whatever the value's length; compiling takes 1 KB for each level of nested
// parentheses, of which the engine allows 250. May run on any thread.
QNXML_API bool TestRegEx(std::string pattern, std::string value);

} // namespace QnXmlLib16
