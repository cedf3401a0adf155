#include "QnXmlLib16/support/BinaryStream.h"
#include "QnXmlLib16/support/TextStream.h"

#include "tests/model/Failure.h"
#include "tests/support/Scoped.h"
#include "tests/support/Text.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using Model::ExpectFailure;

namespace {

std::string FileFailure(const char* pszPath)
{
    return "Failed to write data to the file [" + std::string(pszPath) + "].";
}

const std::string kFlushFailure = "Failed to write data to the file";

} // namespace

TEST(TextStream, TakesEveryFormOfText)
{
    CTextStream stream("Named", XmlEncoding_UTF8);
    stream.Append('A');
    stream.Append("bc");
    stream.Append(std::string("d"));
    stream.Append("efgh", 2);
    stream.Append(static_cast<const char*>(nullptr));
    stream.Close();
    EXPECT_STREQ(stream.GetText(), "Abcdef");
    EXPECT_EQ(ToText(stream.GetEncodedStream()), "Abcdef");
    stream.Open();
    EXPECT_EQ(stream.GetLength(), 0u);
}

TEST(FileTextStream, TheFirstFlushWithTextFails)
{
    const Scoped::File file;
    CFileTextStream stream(file.Path(), XmlEncoding_UTF8);
    stream.Append("lost");
    stream.Open(); // empties the buffer
    stream.Open(); // closes the first file
    stream.Flush();
    for (const bool bByClose : {false, true}) {
        stream.Append("text");
        ExpectFailure<CQnException>([&] { bByClose ? stream.Close() : stream.Flush(); },
                                    kFlushFailure);
        EXPECT_EQ(stream.GetLength(), 0u); // emptied ahead of the failure
    }
    stream.Append("no file is open");
    ExpectFailure<CQnException>([&] { stream.Flush(); }, kFlushFailure);
    EXPECT_NO_THROW(stream.Close());
}

TEST(FileStreams, TellWhatDoesNotReachTheFile)
{
    CBinaryData small("a few bytes show up when the file is closed");
    CBinaryData large(std::string(1 << 20, 'x').c_str());
    for (const char* pszPath : {"", "/tmp", "/dev/full"}) {
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
}

TEST(FileBinaryStream, WritesItsMarkAndItsBytes)
{
    const Scoped::File file;
    CBinaryData data("line\nline\r\n");
    for (const XmlEncoding e : {XmlEncoding_None, XmlEncoding_UTF16}) {
        const std::string strMark = e == XmlEncoding_UTF16 ? "\xff\xfe" : "";
        CFileBinaryStream(file.Path(), e, data).ToFile();
        EXPECT_EQ(file.Content(), strMark + "line\nline\r\n");
        // Empty data is a failure.
        ExpectFailure<CQnException>([&] { CFileBinaryStream(file.Path(), e).ToFile(); },
                                    FileFailure(file.Path()));
        EXPECT_EQ(file.Content(), strMark);
    }
}
