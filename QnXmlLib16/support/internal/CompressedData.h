#pragma once

#include <cstddef>

namespace QnXmlLib16 {

// False where the first byte shows that data can be neither gzip (RFC 1952), which begins with 1F,
// nor zlib (RFC 1950), whose first byte names deflate by 8 in its low half.
inline bool MayBeCompressed(const unsigned char* pData, std::size_t nLength)
{
    return nLength > 0 && (pData[0] == 0x1F || (pData[0] & 0x0F) == 8);
}

} // namespace QnXmlLib16
