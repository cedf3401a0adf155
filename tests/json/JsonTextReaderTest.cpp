#include "QnXmlLib16/json/JsonTextReader.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "tests/json/Rows.h"
#include "tests/support/Text.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace QnXmlLib16;

namespace {

// Turns events into a line: names as n(..), texts as s(..), numbers as d(..).
class CRecordingHandler : public IJsonReaderHandler
{
public:
    void ReadStartDocument() override { m_strEvents = "<"; }
    void ReadEndDocument() override { m_strEvents += ">"; }
    void ReadName(const std::string& str) override { m_strEvents += "n(" + str + ")"; }
    void ReadString(const std::string& str) override { m_strEvents += "s(" + str + ")"; }
    void ReadNumber(const std::string& str) override { m_strEvents += "d(" + str + ")"; }
    void ReadStartObject() override { m_strEvents += "{"; }
    void ReadEndObject() override { m_strEvents += "}"; }
    void ReadStartArray() override { m_strEvents += "["; }
    void ReadEndArray() override { m_strEvents += "]"; }
    void ReadBool(bool bValue) override { m_strEvents += bValue ? "true" : "false"; }
    void ReadNull() override { m_strEvents += "null"; }

    std::string m_strEvents;
};

std::string EventsOf(const std::string& strText)
{
    CRecordingHandler handler;
    CJsonTextReader reader(strText);
    reader.SetJsonReaderHandler(&handler);
    reader.Read();
    return handler.m_strEvents;
}

// Each row is a text and its events.
void Check(const char* pszRows)
{
    for (const auto& [strText, strEvents] : Rows(pszRows))
        EXPECT_EQ(EventsOf(strText), strEvents) << strText;
}

// The failure of a text, "none" where it reads; its reader meets the same one again.
std::string FailureOf(const std::string& strText)
{
    CJsonTextReader reader(strText);
    std::string astrFound[2] = {"none", "none"};
    for (std::string& strFound : astrFound) {
        try {
            reader.Read();
        }
        catch (const CQnValidationException& e) {
            strFound = e.GetMessage();
        }
    }
    EXPECT_EQ(astrFound[0], astrFound[1]);
    return astrFound[0];
}

// From "line position path message", VALUE and EOF standing for the beginnings that most share.
std::string FailureText(const std::string& strShort)
{
    std::istringstream words(strShort);
    std::string strLine, strPosition, strPath, strStart, strRest;
    words >> strLine >> strPosition >> strPath >> strStart;
    std::getline(words, strRest);
    if (strStart == "VALUE,")
        strStart = "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null',";
    if (strStart == "EOF")
        strStart = "Unexpected End of File. Expected";
    return strStart + strRest + " at line " + strLine + ", position " + strPosition +
           ".\nPath: " + strPath;
}

} // namespace

TEST(JsonReading, ReportsWhatItReadsInTheOrderOfTheText)
{
    Check(R"(
 => <>
{} => <{}>
{"a" : 1 , "b":[true,false,null, "x" ]} => <{n(a)d(1)n(b)[truefalsenulls(x)]}>
[{"a":{}},[[]]] => <[{n(a){}}[[]]]>
-0.5e+10  => <d(-0.5e+10)>
1234567890123456789012345678901234567890.0E-1 => <d(1234567890123456789012345678901234567890.0E-1)>
"\"\\\/" => <s("\/)>
1 garbage => <d(1)>
012 => <d(0)>)");
    EXPECT_EQ(EventsOf(" \t\r\n"), "<>");
    EXPECT_EQ(EventsOf("\"\\b\\f\\n\\r\\t\x01\x7F\xC3\xA9\r\t\""),
              "<s(\b\f\n\r\t\x01\x7F\xC3\xA9\r\t)>");
    EXPECT_EQ(EventsOf(std::string("[\"a\0b\",{\"c\0d\":1}]", 18)), "<[s(a){n(c)d(1)}]>");
}

TEST(JsonReading, AUnicodeEscapeGivesOneHexDigit)
{
    Check(R"(
"\u0041" => <s(3)>
"\ufb01x" => <s(6x)>
"\u z"}" => <s(2)>
"\ud83d\ude00" => <s(66)>)");
    EXPECT_EQ(EventsOf("\"\\u\xFF\n\n\n\""), "<s(F)>");
}

TEST(JsonReading, LineFeedsAreNoCharacters)
{
    EXPECT_EQ(EventsOf("\"a\nb\n\""), "<s(ab)>");
    EXPECT_EQ(EventsOf("-\n1\n.\n5\ne\n-\n3"), "<d(-1.5e-3)>");
    EXPECT_EQ(EventsOf("\"\\\nn\""), "<s(\n)>");
    // Taken four at a time they are: bytes like any other, and no lines.
    EXPECT_EQ(FailureOf("nu\nl"), "Expected 'NULL' at line 1, position 4.\nPath: $");
}

TEST(JsonReading, CommentsCountAsSpace)
{
    for (const char* pszText : {"// c\n1", "1 //", "/**/1", "/* x\n * / */ /***/ // y\n1 ",
                                "/*//*/1", "1 /* no end", "/*/ */1"})
        EXPECT_EQ(EventsOf(pszText), "<d(1)>") << pszText;
    EXPECT_EQ(EventsOf("{//\n\"a\"/**/:/**/[/**/]/**/,/**/\"b\":\"//\"/**/}"),
              "<{n(a)[]n(b)s(//)}>");
    EXPECT_EQ(EventsOf(Repeated("/**/", 100000) + Repeated("//\n", 100000) + "1"), "<d(1)>");
}

TEST(JsonReading, LetsTheExceptionOfAHandlerThrough)
{
    class CRefusing : public CRecordingHandler
    {
        void ReadNull() override { throw std::runtime_error("refused"); }
    };
    const std::string strText = "[null]";
    CRefusing handler;
    CJsonTextReader reader(strText);
    reader.SetJsonReaderHandler(&handler);
    EXPECT_THROW(reader.Read(), std::runtime_error);
    reader.SetJsonReaderHandler(nullptr);
    reader.Read();
    EXPECT_EQ(handler.m_strEvents, "<[");
}

TEST(JsonFailures, NameTheLineAndThePosition)
{
    // Line, position and path stand in front of the message.
    for (const auto& [strText, strExpected] : Rows(R"(
x => 1 1 $ VALUE, found 'x'
{ => 1 1 $ EOF Object terminator character '}}'
{1 => 1 2 $ Expected quotation mark character '"' before Name, found '1'
"a => 1 2 $ EOF string value
"\x" => 1 3 $ Invalid Escape Character 'x'
"\u123 => 1 6 $ EOF 4 hexadecimal digits'\uxxxx'
[ => 1 1 $ EOF Array terminator character ']'
[012] => 1 3 $ Expected Array separator character ',', found '1'
- => 1 1 $ EOF a number
1. => 1 2 $ EOF a digit '0' to '9'
1.x => 1 3 $ Expected a digit '0' to '9', found 'x'
1e => 1 2 $ EOF '+', '-' or a number
1ex => 1 3 $ EOF a digit '0' to '9'
nul => 1 3 $ EOF value 'NULL'
nulL => 1 4 $ Expected 'NULL'
tru => 1 3 $ EOF value 'true'
tRue => 1 4 $ Expected 'true'
fals => 1 4 $ EOF value 'false'
falsE => 1 5 $ Expected 'false'
{"a" => 1 4 $.a EOF Object Name/Value separator character ':'
{"a"1 => 1 5 $.a Expected Object Name/Value separator character ':', found '1'
{"a": => 1 5 $.a EOF Object Value
{"a":1 => 1 6 $.a EOF Object terminator character '}'
{"a":1] => 1 7 $.a Expected Object separator character ',', found ']'
{"a":1,} => 1 8 $.a Expected quotation mark character '"' before Name, found '}'
{"a":{"b":{"d":1},"c":x => 1 23 $.c.a VALUE, found 'x'
{"a":{"b":1},x => 1 14 $ Expected quotation mark character '"' before Name, found 'x'
{"a":[{"c":1}],"b":x => 1 20 $.b VALUE, found 'x')"))
        EXPECT_EQ(FailureOf(strText), FailureText(strExpected)) << strText;

    EXPECT_EQ(FailureOf("\n\n  ]"), FailureText("3 3 $ VALUE, found ']'"));
    EXPECT_EQ(FailureOf("/*\n\n*/ /1"), FailureText("3 4 $ VALUE, found '/'"));
    EXPECT_EQ(FailureOf("{ /* no end\n"),
              FailureText("2 0 $ EOF Object terminator character '}}'"));
    // A quoted zero byte ends the message; the path follows.
    const std::string strWhole = FailureText("1 1 $ VALUE, found '");
    EXPECT_EQ(FailureOf(std::string(1, '\0')),
              strWhole.substr(0, strWhole.find(" at")) + "\nPath: $");
}

TEST(JsonFailures, NameTheInnermostMemberFirstAndItemsByTheirIndexAsAByte)
{
    for (int i = 0; i < 3; ++i) {
        const std::string strIndex = "[" + std::string(1, static_cast<char>(i)) + "]";
        const std::string strFailure =
            FailureOf("{\"a\":[" + Repeated("{\"c\":1},", i) + "{\"b\":x");
        EXPECT_EQ(strFailure.substr(strFailure.find("$")), "$.b.a" + strIndex);
    }
    // An array in an array has no name to give on.
    const std::string strFailure = FailureOf("{\"a\":[[{x");
    EXPECT_EQ(strFailure.substr(strFailure.find("$")), std::string("$.[\0]", 5));
}

TEST(JsonFailures, ComeAtTheHundredAndFirstLevel)
{
    const std::string strTooDeep = "JSON exceeded depth limit at line 1, position 101.\nPath: $";
    EXPECT_EQ(FailureOf(Repeated("[", 100) + Repeated("]", 100)), "none");
    EXPECT_EQ(FailureOf(Repeated("[", 1 << 20)), strTooDeep);
}

TEST(JsonFailures, MeetEveryTruncationOfADocument)
{
    const std::string strText =
        "{\"a\":[true,{\"b\":\"\\u00e9\\n\"},[-1.5e-3,null]],/* c */\"\xC3\xA9\":{\"d\":false}}";
    ASSERT_EQ(FailureOf(strText), "none");
    for (std::size_t u = 1; u < strText.size(); ++u) {
        const bool bLoneSlash = strText[u - 1] == '/' && strText[u] == '*';
        const char* const pszStart = bLoneSlash ? "Expected " : "Unexpected End of File. ";
        EXPECT_EQ(FailureOf(strText.substr(0, u)).rfind(pszStart, 0), 0u) << u;
        for (const char c : {'\0', '\xFF', '\\'}) {
            std::string strDamaged = strText;
            strDamaged[u] = c;
            FailureOf(strDamaged);
        }
    }
}
