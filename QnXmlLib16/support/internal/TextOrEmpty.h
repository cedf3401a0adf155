#pragma once

namespace QnXmlLib16 {

// A null text counts as the empty one wherever the library takes a const char*.
inline const char* OrEmpty(const char* pszText)
{
    return pszText ? pszText : "";
}

} // namespace QnXmlLib16
