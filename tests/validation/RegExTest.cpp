#include "QnXmlLib16/validation/RegEx.h"

#include "tests/support/Scoped.h"
#include "tests/support/SmallStack.h"
#include "tests/values/ValueTools.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;

namespace {

std::string PatternFailure(const std::string& pattern, const std::string& value)
{
    return FailureOf<CQnException>([&] { TestRegEx(pattern, value); });
}

} // namespace

TEST(RegEx, TheWholeTextHasToMatch)
{
    const auto match = [](const std::string& text) {
        const std::size_t on = text.find(" on ");
        return TestRegEx(text.substr(0, on), text.substr(on + 4)) ? "yes" : "no";
    };
    ExpectEach(match, {R"(\d{3} on 123 -> yes)", R"(\d{3} on 1234 -> no)", "a|b on b -> yes",
                       "a|b on ab -> no", " on  -> yes", " on a -> no",
                       // $ alone would let the line feed pass
                       "abc on abc\n -> no",
                       // an escaped backslash and a letter
                       R"(\\i on \i -> yes)", R"(\\\i on \a -> yes)", "\x01 on \\ -> yes"});
    ExpectEach(match, {R"(\i\c* on xs:element -> yes)", R"(\i\c* on 1a -> no)", R"(\I on 1 -> yes)",
                       R"(\I on : -> yes)", R"(\c+ on a.-:_1 -> yes)", R"(\C on   -> yes)",
                       R"(\C on - -> no)", R"(\p{IsBasicLatin}+ on abc -> yes)",
                       R"(\p{Lu}\p{L}* on Abc -> yes)", R"(\p{Lu}\p{L}* on abc -> no)"});
    // Anchors are no letters, there is no class subtraction, and what stands around the pattern is
    // text as well.
    ExpectEach(match, {"^a$ on a -> yes", "[a-z-[aeiou]] on b -> no", "[a-z-[aeiou]] on b] -> yes",
                       "a)|(b on b -> yes"});
    EXPECT_TRUE(TestRegEx("a", std::string("a\0b", 3))); // a NUL ends the value
}

TEST(RegEx, BytesAboveAsciiFollowTheLocaleOfTheProcess)
{
    EXPECT_TRUE(TestRegEx("\\?\\?", "\xC3\xA9")); // the "C" locale knows neither byte
    const Scoped::AsciiOnly asciiOnly;
    EXPECT_TRUE(TestRegEx(".", "\xC3\xA9"));
    EXPECT_TRUE(TestRegEx(R"(\p{IsLatin-1Supplement})", "\xC3\xA9"));
    EXPECT_TRUE(TestRegEx(R"(\p{IsLatinExtended-A})", "\xC4\x80"));
    EXPECT_FALSE(TestRegEx(R"(\p{IsLatinExtended-A})", "\xC3\xA9"));
    EXPECT_FALSE(TestRegEx(R"(\i\c*)", "\xC3\xA9"));
    EXPECT_FALSE(TestRegEx(".*", "\xC3")); // not UTF-8
}

TEST(RegEx, SomeSchemaFormsAreRefusedAfterTranslation)
{
    // The words name the value, not the pattern.
    EXPECT_EQ(PatternFailure("(", "the value"),
              "Invalid Regular Expression: the value Error: 'missing )'");
    for (const char* pattern : {R"(\p{IsLatinExtended-B})", R"([\i])", R"([\I])", R"([\C])",
                                R"([\i-[:]][\c-[:]]*)", R"(\p{IsGreek})", "\xC3", "*"})
        EXPECT_EQ(PatternFailure(pattern, "v").substr(0, 37),
                  "Invalid Regular Expression: v Error: ")
            << pattern;

    // Patterns nest as deep as the engine takes them.
    const auto nested = [](int n) { return std::string(n, '(') + "a" + std::string(n, ')'); };
    EXPECT_TRUE(TestRegEx(nested(200), "a"));
    EXPECT_EQ(PatternFailure(nested(100000), "v").substr(0, 37),
              "Invalid Regular Expression: v Error: ");
}

// The engine's plain recursion needs 500 bytes a step or more.
TEST(RegEx, LongValuesNeedNoStack)
{
    const auto match = [] {
        const std::string letters(1000000, 'a');
        EXPECT_TRUE(TestRegEx(R"(\i\c*)", letters));
        EXPECT_TRUE(TestRegEx("(a|b)*", letters));
        EXPECT_FALSE(TestRegEx("(a|b)*", letters + "c"));
        EXPECT_FALSE(TestRegEx("((a|b)|c|d|e)*x", letters));
        EXPECT_TRUE(TestRegEx("(a|b)*", std::string(300, 'b')));
        EXPECT_TRUE(TestRegEx(R"(\c*)", std::string(8500, 'a')));
    };
    match();
    RunOnSmallStack(match, 64 * 1024);
    RunOnSmallStack(match, 256 * 1024);
}

TEST(RegEx, AMatchThatTakesTooManyStepsIsNone)
{
    EXPECT_LT(MillisecondsOf([] {
                  EXPECT_FALSE(TestRegEx("(a+)+", std::string(40, 'a') + "b"));
                  EXPECT_FALSE(TestRegEx("(a|aa)+", std::string(5000, 'a') + "b"));
                  EXPECT_FALSE(TestRegEx("(a?){60}a{60}", std::string(60, 'a')));
                  EXPECT_FALSE(TestRegEx(".*.*.*=.*", std::string(20000, 'a')));
              }),
              20000);
}
