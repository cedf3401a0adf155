#include "QnXmlLib16/support/BinaryStream.h"
#include "QnXmlLib16/support/TextStream.h"

#include "tests/model/Failure.h"
#include "tests/support/Scoped.h"
#include "tests/support/Text.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using Model::ExpectFailure;

namespace {

constexpr XmlEncoding kEncodings[] = {XmlEncoding_None, XmlEncoding_UTF8, XmlEncoding_UTF16,
                                      XmlEncoding_Wide};

std::string FileFailure(const char* pszPath)
{
    return "Failed to write data to the file [" + std::string(pszPath) + "].";
}

const std::string kFlushFailure = "Failed to write data to the file";

} // namespace

TEST(TextStream, GivesItsTextOutInItsEncoding)
{
    const char* pszUnknown = "Unknown Encoding, select UTF-8 (contact our support team)";
    for (const XmlEncoding e : kEncodings) {
        CTextStream stream("Named", e);
        stream.Append('A');
        stream.Append("bc");
        stream.Append(std::string("d"));
        stream.Append("efgh", 2);
        stream.Append(static_cast<const char*>(nullptr));
        stream.Flush();
        stream.Close();
        EXPECT_STREQ(stream.GetText(), "Abcdef");
        if (e == XmlEncoding_None)
            ExpectFailure<CQnException>([&] { stream.GetEncodedStream(); }, pszUnknown);
        else
            EXPECT_EQ(ToText(stream.GetEncodedStream()),
                      e == XmlEncoding_UTF8
                          ? "Abcdef"
                          : std::string("A\0\0\0b\0\0\0c\0\0\0d\0\0\0e\0\0\0f\0\0\0", 24));
        stream.Open();
        EXPECT_EQ(stream.GetLength(), 0u);
    }
    ExpectFailure<CQnException>([] { CTextStream(static_cast<XmlEncoding>(4)).GetEncodedStream(); },
                                pszUnknown);
}

TEST(FileTextStream, TheFirstFlushWithTextFails)
{
    const Scoped::File file;
    for (const XmlEncoding e : kEncodings) { // without a text the mark is all there is
        CFileTextStream stream(file.Path(), e);
        stream.Close(); // nothing open, no text
        stream.Open();
        stream.Open(); // closes the first file
        stream.Flush();
        stream.Close();
        EXPECT_EQ(file.Content(), e >= XmlEncoding_UTF16 ? "\xff\xfe" : "");
    }
    CFileTextStream stream(file.Path(), XmlEncoding_UTF8);
    stream.Append("lost");
    stream.Open(); // empties the buffer
    EXPECT_EQ(stream.GetLength(), 0u);
    for (const bool bByClose : {false, true}) {
        stream.Append("text");
        ExpectFailure<CQnException>([&] { bByClose ? stream.Close() : stream.Flush(); },
                                    kFlushFailure);
        EXPECT_EQ(stream.GetLength(), 0u); // emptied ahead of the failure
    }
    stream.Append("no file is open");
    ExpectFailure<CQnException>([&] { stream.Flush(); }, kFlushFailure);
    EXPECT_NO_THROW(stream.Close());
    EXPECT_EQ(file.Content(), "");
}

TEST(FileStreams, TellWhatDoesNotReachTheFile)
{
    CBinaryData small("a few bytes show up when the file is closed");
    CBinaryData large(std::string(1 << 20, 'x').c_str());
    for (const char* pszPath : {"", "/tmp", "/nowhere/file", "/dev/full"}) {
        SCOPED_TRACE(pszPath);
        for (CBinaryData* pData : {&small, &large})
            ExpectFailure<CQnException>(
                [&] { CFileBinaryStream(pszPath, XmlEncoding_UTF8, *pData).ToFile(); },
                FileFailure(pszPath));
        CFileTextStream stream(pszPath, XmlEncoding_UTF16);
        if (std::string(pszPath) == "/dev/full") { // opened, and full when it is closed
            stream.Open();
            ExpectFailure<CQnException>([&] { stream.Close(); }, kFlushFailure);
            stream.Open();
        }
        ExpectFailure<CQnException>([&] { stream.Open(); }, FileFailure(pszPath));
    }
    ExpectFailure<CQnException>([] { CFileTextStream(nullptr, XmlEncoding_UTF8).Open(); },
                                FileFailure(""));
}

TEST(BinaryStream, CollectsBytes)
{
    CBinaryData data("ab");
    CBinaryStream stream(data);
    stream.Append(static_cast<unsigned char>('c'));
    stream.Append(CBinaryData("de"));
    stream.Append(reinterpret_cast<const unsigned char*>("fg"), 2);
    EXPECT_EQ(ToText(stream.GetBinaryStream()), "abcdefg");
    EXPECT_EQ(ToText(data), "ab");
}

TEST(FileBinaryStream, WritesItsMarkAndItsBytes)
{
    const Scoped::File file;
    CBinaryData data("line\nline\r\n");
    for (const XmlEncoding e : kEncodings) {
        const std::string strMark = e >= XmlEncoding_UTF16 ? "\xff\xfe" : "";
        CFileBinaryStream(file.Path(), e, data).ToFile();
        EXPECT_EQ(file.Content(), strMark + "line\nline\r\n");
        // Empty data is a failure.
        ExpectFailure<CQnException>([&] { CFileBinaryStream(file.Path(), e).ToFile(); },
                                    FileFailure(file.Path()));
        EXPECT_EQ(file.Content(), strMark);
    }
}
