#include "QnXmlLib16/support/BinaryStream.h"
#include "QnXmlLib16/support/TextStream.h"

#include "tests/model/Failure.h"
#include "tests/support/Scoped.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using Model::ExpectFailure;

namespace {

std::string ToText(const CBinaryData& data)
{
    return std::string(reinterpret_cast<const char*>(data.GetData()), data.GetLength());
}

std::string FileFailure(const char* pszPath)
{
    return "Failed to write data to the file [" + std::string(pszPath) + "].";
}

const std::string kFlushFailure = "Failed to write data to the file";
const std::string kWideA("A\0\0\0", 4);

} // namespace

TEST(TextStream, GivesItsTextOutInItsEncoding)
{
    CTextStream stream(XmlEncoding_UTF8);
    stream.Append('A');
    stream.Append("bc");
    stream.Append(std::string("d"));
    stream.Append("efgh", 2);
    stream.Append(static_cast<const char*>(nullptr));
    EXPECT_EQ(stream.GetLength(), 6u);
    EXPECT_STREQ(stream.GetText(), "Abcdef");
    EXPECT_EQ(ToText(stream.GetEncodedStream()), "Abcdef");
    stream.Flush();
    stream.Close();
    EXPECT_EQ(stream.GetLength(), 6u);
    stream.Open();
    EXPECT_EQ(stream.GetLength(), 0u);

    for (const XmlEncoding e : {XmlEncoding_UTF16, XmlEncoding_Wide}) {
        CTextStream wide("Named", e);
        wide.Append('A');
        EXPECT_EQ(wide.GetEncoding(), e);
        EXPECT_EQ(ToText(wide.GetEncodedStream()), kWideA);
    }
}

TEST(TextStream, WithoutAKnownEncodingCannotBeEncoded)
{
    const char* pszWords = "Unknown Encoding, select UTF-8 (contact our support team)";
    EXPECT_EQ(CTextStream().GetEncoding(), XmlEncoding_None);
    ExpectFailure<CQnException>([] { CTextStream().GetEncodedStream(); }, pszWords);
    ExpectFailure<CQnException>([] { CTextStream(static_cast<XmlEncoding>(4)).GetEncodedStream(); },
                                pszWords);
}

TEST(FileTextStream, WritesItsMarkOnly)
{
    const Scoped::File file;
    for (const XmlEncoding e :
         {XmlEncoding_None, XmlEncoding_UTF8, XmlEncoding_UTF16, XmlEncoding_Wide}) {
        CFileTextStream stream(file.Path(), e);
        stream.Close(); // nothing open, no text
        stream.Open();
        stream.Open(); // closes the first file
        stream.Flush();
        stream.Close();
        EXPECT_EQ(file.Content(), e >= XmlEncoding_UTF16 ? "\xff\xfe" : "");
    }
}

TEST(FileTextStream, TheFirstFlushWithTextFails)
{
    const Scoped::File file;
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

TEST(FileTextStream, TellsWhatDoesNotReachTheFile)
{
    for (const char* pszPath : {"", "/tmp", "/nowhere/file"}) {
        SCOPED_TRACE(pszPath);
        ExpectFailure<CQnException>([&] { CFileTextStream(pszPath, XmlEncoding_UTF8).Open(); },
                                    FileFailure(pszPath));
    }
    ExpectFailure<CQnException>([] { CFileTextStream(nullptr, XmlEncoding_UTF8).Open(); },
                                FileFailure(""));
    CFileTextStream full("/dev/full", XmlEncoding_UTF16);
    full.Open();
    ExpectFailure<CQnException>([&] { full.Close(); }, kFlushFailure);
    full.Open();
    ExpectFailure<CQnException>([&] { full.Open(); }, FileFailure("/dev/full"));
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
    EXPECT_EQ(CBinaryStream().GetBinaryStream(), CBinaryData());
    EXPECT_EQ(ToText(CBinaryStream("Named", data).GetBinaryStream()), "ab");
}

TEST(FileBinaryStream, WritesItsMarkAndItsBytes)
{
    const Scoped::File file;
    CBinaryData data("line\nline\r\n");
    for (const XmlEncoding e :
         {XmlEncoding_None, XmlEncoding_UTF8, XmlEncoding_UTF16, XmlEncoding_Wide}) {
        CFileBinaryStream stream(file.Path(), e, data);
        stream.ToFile();
        EXPECT_EQ(file.Content(),
                  (e >= XmlEncoding_UTF16 ? "\xff\xfe" : "") + std::string("line\nline\r\n"));
    }
    CTextStream text(XmlEncoding_UTF16);
    text.Append('A');
    CBinaryData wide = text.GetEncodedStream();
    CFileBinaryStream(file.Path(), XmlEncoding_UTF16, wide).ToFile();
    EXPECT_EQ(file.Content(), "\xff\xfe" + kWideA);
}

TEST(FileBinaryStream, EmptyDataIsAFailure)
{
    const Scoped::File file;
    ExpectFailure<CQnException>([&] { CFileBinaryStream(file.Path(), XmlEncoding_UTF16).ToFile(); },
                                FileFailure(file.Path()));
    EXPECT_EQ(file.Content(), "\xff\xfe");
}

TEST(FileBinaryStream, TellsWhatDoesNotReachTheFile)
{
    CBinaryData small("a few bytes show up when the file is closed");
    CBinaryData large(std::string(1 << 20, 'x').c_str());
    for (CBinaryData* pData : {&small, &large}) {
        for (const char* pszPath : {"/dev/full", "/tmp", "/nowhere/file", ""}) {
            SCOPED_TRACE(pszPath);
            ExpectFailure<CQnException>(
                [&] { CFileBinaryStream(pszPath, XmlEncoding_UTF8, *pData).ToFile(); },
                FileFailure(pszPath));
        }
    }
}
