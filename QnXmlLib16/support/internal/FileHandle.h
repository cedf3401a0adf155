#pragma once

#include "QnXmlLib16/support/SettingTypes.h"

#include <cstdio>
#include <memory>

namespace QnXmlLib16 {

struct FileCloser
{
    void operator()(FILE* pFile) const { std::fclose(pFile); }
};

// Owns an open file. A file that was written is closed by hand: a full disk may show only then.
using FileHandle = std::unique_ptr<FILE, FileCloser>;

// Deliberate: the wide encodings get the two bytes FF FE although their units have four; all other
// encodings get nothing. False if the bytes could not be written. Pinned by
// FileBinaryStream.WritesItsMarkAndItsBytes.
inline bool WriteByteOrderMark(FILE* pFile, XmlEncoding eEncoding)
{
    static constexpr unsigned char kMark[] = {0xFF, 0xFE};
    if (eEncoding != XmlEncoding_UTF16 && eEncoding != XmlEncoding_Wide)
        return true;
    return std::fwrite(kMark, 1, sizeof kMark, pFile) == sizeof kMark;
}

} // namespace QnXmlLib16
