#include "QnXmlLib16/json/JsonTextReader.h"

#include "QnXmlLib16/support/Exceptions.h"

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
    void ReadName(const std::string& strName) override { m_strEvents += "n(" + strName + ")"; }
    void ReadString(const std::string& strValue) override { m_strEvents += "s(" + strValue + ")"; }
    void ReadNumber(const std::string& strNumber) override
    {
        m_strEvents += "d(" + strNumber + ")";
    }
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

// The failure of a text; "none" where it reads.
std::string FailureOf(const std::string& strText)
{
    try {
        CJsonTextReader(strText).Read();
    }
    catch (const CQnValidationException& e) {
        return e.GetMessage();
    }
    return "none";
}

std::string Repeat(const std::string& strText, int iTimes)
{
    std::string strResult;
    for (int i = 0; i < iTimes; ++i)
        strResult += strText;
    return strResult;
}

std::string Nested(int iArrays, const std::string& strInside = "")
{
    return Repeat("[", iArrays) + strInside + Repeat("]", iArrays);
}

} // namespace

TEST(JsonReading, ReportsWhatItReadsInTheOrderOfTheText)
{
    struct Row
    {
        std::string strText;
        const char* pszEvents;
    };
    const Row rows[] = {
        {"", "<>"},
        {" \t\r\n", "<>"},
        {"{}", "<{}>"},
        {"[ ]", "<[]>"},
        {"{\"a\" : 1 , \"b\":[true,false,null, \"x\" ]}", "<{n(a)d(1)n(b)[truefalsenulls(x)]}>"},
        {"[{\"a\":{}},[[]]]", "<[{n(a){}}[[]]]>"},
        {"-0.5e+10 ", "<d(-0.5e+10)>"},
        {"1234567890123456789012345678901234567890.0E-1",
         "<d(1234567890123456789012345678901234567890.0E-1)>"},
        {"0", "<d(0)>"},
        {"\"\"", "<s()>"},
        {"\"\\\"\\\\\\/\\b\\f\\n\\r\\t\"", "<s(\"\\/\b\f\n\r\t)>"},
        {"\"\x01\x7F\xC3\xA9\r\t\"", "<s(\x01\x7F\xC3\xA9\r\t)>"},
        {"1 garbage", "<d(1)>"},
        {"{} }", "<{}>"},
        {"012", "<d(0)>"}, // the number ends behind its leading zero
        {std::string("[\"a\0b\",{\"c\0d\":1}]", 18), "<[s(a){n(c)d(1)}]>"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(EventsOf(row.strText), row.pszEvents) << row.strText;
}

TEST(JsonReading, AUnicodeEscapeGivesOneHexDigit)
{
    struct Row
    {
        const char* pszText;
        const char* pszValue;
    };
    const Row rows[] = {
        {"\"\\u0041\"", "3"},  {"\"\\uA041\"", "4"},         {"\"\\ufb01x\"", "6x"},
        {"\"\\u z\"}\"", "2"}, {"\"\\ud83d\\ude00\"", "66"}, {"\"\\u\xFF\n\n\n\"", "F"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(EventsOf(row.pszText), std::string("<s(") + row.pszValue + ")>") << row.pszText;
}

TEST(JsonReading, LineFeedsAreNoCharacters)
{
    EXPECT_EQ(EventsOf("\"a\nb\n\""), "<s(ab)>");
    EXPECT_EQ(EventsOf("1\n2"), "<d(12)>");
    EXPECT_EQ(EventsOf("-\n1\n.\n5\ne\n-\n3"), "<d(-1.5e-3)>");
    EXPECT_EQ(EventsOf("\"\\\nn\""), "<s(\n)>");
    // Taken four at a time they are: bytes like any other, and no lines.
    EXPECT_EQ(FailureOf("nu\nl"), "Expected 'NULL' at line 1, position 4.\nPath: $");
}

TEST(JsonReading, CommentsCountAsSpace)
{
    const char* const apszTexts[] = {
        "// c\n1", "1 //",        "/**/1",       "/* x\n * / */ /***/ // y\n1 ",
        "/*//*/1", "1 /* no end", "1 // no end", "/*/ */1",
    };
    for (const char* pszText : apszTexts)
        EXPECT_EQ(EventsOf(pszText), "<d(1)>") << pszText;
    EXPECT_EQ(EventsOf("{//\n\"a\"/**/:/**/[/**/]/**/,/**/\"b\":\"//\"/**/}"),
              "<{n(a)[]n(b)s(//)}>");
    EXPECT_EQ(EventsOf("/* only"), "<>");
    EXPECT_EQ(EventsOf(Repeat("/**/", 100000) + Repeat("//\n", 100000) + "1"), "<d(1)>");
}

TEST(JsonReading, CanBeRunAgainAndWithoutAHandler)
{
    const std::string strText = "{\"a\":[1,{\"b\":x}]}";
    CJsonTextReader reader(strText);
    std::string strFirst;
    for (int i = 0; i < 2; ++i) {
        try {
            reader.Read();
            ADD_FAILURE();
        }
        catch (const CQnValidationException& e) {
            if (i == 0)
                strFirst = e.GetMessage();
            EXPECT_EQ(e.GetMessage(), strFirst);
        }
    }
    reader.SetJsonReaderHandler(nullptr);
    EXPECT_THROW(reader.Read(), CQnValidationException);
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
}

TEST(JsonFailures, NameTheLineAndThePosition)
{
    struct Row
    {
        std::string strText;
        const char* pszMessage; // the path "$" follows
    };
    const Row rows[] = {
        {"x", "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found 'x' at "
              "line 1, position 1."},
        {"\n\n  ]", "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found "
                    "']' at line 3, position 3."},
        {"[1,]", "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found ']' "
                 "at line 1, position 4."},
        {std::string("\0", 1),
         "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found '"},
        {"/", "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found '/' at "
              "line 1, position 1."},
        {"/*\n\n*/ /1",
         "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or 'null', found '/' at line "
         "3, position 4."},
        {"// c\n/* d */ x", "Expected Value '{', '[', '\"', '0-9', '-', 'true', 'false' or "
                            "'null', found 'x' at line 2, position 9."},
        {"{", "Unexpected End of File. Expected Object terminator character '}}' at line 1, "
              "position 1."},
        {"{ /* no end\n", "Unexpected End of File. Expected Object terminator character '}}' at "
                          "line 2, position 0."},
        {"{1", "Expected quotation mark character '\"' before Name, found '1' at line 1, position "
               "2."},
        {"{\"", "Unexpected End of File. Expected string value at line 1, position 2."},
        {"\"a", "Unexpected End of File. Expected string value at line 1, position 2."},
        {"\"\\", "Unexpected End of File. Expected string value at line 1, position 2."},
        {"\"\\x\"", "Invalid Escape Character 'x' at line 1, position 3."},
        {"\"\\u123",
         "Unexpected End of File. Expected 4 hexadecimal digits'\\uxxxx' at line 1, position 6."},
        {"[", "Unexpected End of File. Expected Array terminator character ']' at line 1, position "
              "1."},
        {"[1", "Unexpected End of File. Expected Array terminator character ']' at line 1, "
               "position 2."},
        {"[1,", "Unexpected End of File. Expected Array terminator character ']' at line 1, "
                "position 3."},
        {"[1 2]", "Expected Array separator character ',', found '2' at line 1, position 4."},
        {"[1/**/]", "Expected Array separator character ',', found '/' at line 1, position 3."},
        {"[012]", "Expected Array separator character ',', found '1' at line 1, position 3."},
        {"-", "Unexpected End of File. Expected a number at line 1, position 1."},
        {"-x", "Expected a digit '0' to '9', found 'x' at line 1, position 2."},
        {"1.", "Unexpected End of File. Expected a digit '0' to '9' at line 1, position 2."},
        {"1.x", "Expected a digit '0' to '9', found 'x' at line 1, position 3."},
        {"1e", "Unexpected End of File. Expected '+', '-' or a number at line 1, position 2."},
        {"1e+", "Unexpected End of File. Expected a number at line 1, position 3."},
        {"1ex", "Unexpected End of File. Expected a digit '0' to '9' at line 1, position 3."},
        {"nul", "Unexpected End of File. Expected value 'NULL' at line 1, position 3."},
        {"nulL", "Expected 'NULL' at line 1, position 4."},
        {"tru", "Unexpected End of File. Expected value 'true' at line 1, position 3."},
        {"tRue", "Expected 'true' at line 1, position 4."},
        {"fals", "Unexpected End of File. Expected value 'false' at line 1, position 4."},
        {"falsE", "Expected 'false' at line 1, position 5."},
    };
    for (const Row& row : rows)
        EXPECT_EQ(FailureOf(row.strText), row.pszMessage + std::string("\nPath: $")) << row.strText;
}

TEST(JsonFailures, NameTheMemberInThePath)
{
    struct Row
    {
        const char* pszText;
        const char* pszMessage;
    };
    const Row rows[] = {
        {"{\"a\"", "Unexpected End of File. Expected Object Name/Value separator character ':' at "
                   "line 1, position 4.\nPath: $.a"},
        {"{\"a\"1", "Expected Object Name/Value separator character ':', found '1' at line 1, "
                    "position 5.\nPath: $.a"},
        {"{\"a\":", "Unexpected End of File. Expected Object Value at line 1, position 5.\n"
                    "Path: $.a"},
        {"{\"a\":1", "Unexpected End of File. Expected Object terminator character '}' at line 1, "
                     "position 6.\nPath: $.a"},
        {"{\"a\":1,", "Unexpected End of File. Expected Object terminator character '}' at line "
                      "1, position 7.\nPath: $.a"},
        {"{\"a\":1]", "Expected Object separator character ',', found ']' at line 1, position 7.\n"
                      "Path: $.a"},
        {"{\"a\":1,}", "Expected quotation mark character '\"' before Name, found '}' at line 1, "
                       "position 8.\nPath: $.a"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(FailureOf(row.pszText), row.pszMessage) << row.pszText;
}

TEST(JsonFailures, ComeAtTheHundredAndFirstLevel)
{
    const std::string strTooDeep = "JSON exceeded depth limit at line 1, position 101.\nPath: $";
    EXPECT_EQ(FailureOf(Nested(100)), "none");
    EXPECT_EQ(FailureOf(Nested(99, "1")), "none");
    EXPECT_EQ(FailureOf(Nested(101)), strTooDeep);
    EXPECT_EQ(FailureOf(Nested(100, "1")), strTooDeep);
    EXPECT_EQ(FailureOf(std::string(1 << 20, '[')), strTooDeep);
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
