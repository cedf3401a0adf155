#include "QnXmlLib16/validation/RegEx.h"

#include "QnXmlLib16/support/Encoder.h"
#include "tests/values/DateFailure.h"

#include <gtest/gtest.h>

#include <chrono>
#include <pthread.h>

using namespace QnXmlLib16;

namespace {

using std::string_literals::operator""s;

TEST(RegEx, TheWholeTextHasToMatch)
{
    const struct
    {
        const char* pattern;
        std::string value;
        bool matches;
    } rows[] = {
        {R"(\d{3})", "123", true},
        {R"(\d{3})", "1234", false},
        {R"(\d{3})", "12", false},
        {"a|b", "a", true},
        {"a|b", "b", true},
        {"a|b", "ab", false},
        {"abc", "abc\n", false}, // $ alone would let the line feed pass
        {"", "", true},
        {"", "a", false},
        {"a*", "", true},
        {R"(\\i)", "\\i", true}, // an escaped backslash and a letter
        {R"(\\i)", "a", false},
        {R"(\\\i)", "\\a", true},
        {R"(\i\c*)", "xs:element", true},
        {R"(\i\c*)", "1a", false},
        {R"(\I)", "1", true},
        {R"(\I)", "a", false},
        {R"(\I)", ":", true},
        {R"(\c+)", "a.-:_1", true},
        {R"(\c)", " ", false},
        {R"(\C)", " ", true},
        {R"(\C)", "-", false},
        {R"(\p{IsBasicLatin}+)", "abc", true},
        {R"(\p{Lu}\p{L}*)", "Abc", true},
        {R"(\p{Lu}\p{L}*)", "abc", false},
        {"^a$", "a", true},            // anchors, not letters
        {"[a-z-[aeiou]]", "b", false}, // no class subtraction: a class, then a bracket
        {"[a-z-[aeiou]]", "b]", true},
        {R"([\p{IsBasicLatin}x])", "[]", false},
        {"a)|(b", "b", true}, // what stands around the pattern is text as well
        {"a", "a\0b"s, true}, // a NUL ends the value
        {"\x01", "\\", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.pattern) + " on " + row.value);
        EXPECT_EQ(TestRegEx(row.pattern, row.value), row.matches);
    }
}

TEST(RegEx, BytesAboveAsciiFollowTheLocaleOfTheProcess)
{
    EXPECT_TRUE(TestRegEx("\\?\\?", "\xC3\xA9")); // the "C" locale knows neither byte
    EXPECT_FALSE(TestRegEx(R"(\i\c*)", "\xC3\xA9"
                                       "1"));
    ASCIIOnly(true);
    EXPECT_TRUE(TestRegEx(".", "\xC3\xA9"));
    EXPECT_TRUE(TestRegEx(R"(\p{IsLatin-1Supplement})", "\xC3\xA9"));
    EXPECT_TRUE(TestRegEx(R"(\p{IsLatinExtended-A})", "\xC4\x80"));
    EXPECT_FALSE(TestRegEx(R"(\p{IsLatinExtended-A})", "\xC3\xA9"));
    EXPECT_FALSE(TestRegEx(R"(\i\c*)", "\xC3\xA9"));
    EXPECT_FALSE(TestRegEx(".*", "\xC3")); // not UTF-8
    ASCIIOnly(false);
}

TEST(RegEx, AnInvalidPatternNamesTheValue)
{
    EXPECT_EQ(FailureOf<CQnException>([] { TestRegEx("(", "the value"); }),
              "Invalid Regular Expression: the value Error: 'missing )'");
}

TEST(RegEx, SomeSchemaFormsAreRefusedAfterTranslation)
{
    for (const char* pattern : {R"(\p{IsLatinExtended-B})", R"([\i])", R"([\I])", R"([\C])",
                                R"([\i-[:]][\c-[:]]*)", R"(\p{IsGreek})", "\xC3", "*"}) {
        SCOPED_TRACE(pattern);
        EXPECT_EQ(FailureOf<CQnException>([=] { TestRegEx(pattern, "v"); }).substr(0, 37),
                  "Invalid Regular Expression: v Error: ");
    }
}

struct Job
{
    const char* pattern;
    std::string value;
    bool matches;
};

void* RunJobs(void* p)
{
    for (const Job& job : *static_cast<const std::vector<Job>*>(p))
        EXPECT_EQ(TestRegEx(job.pattern, job.value), job.matches) << job.pattern;
    return nullptr;
}

// The engine's plain recursion needs 500 bytes a step or more.
TEST(RegEx, LongValuesNeedNoStack)
{
    const std::string letters(1000000, 'a');
    std::vector<Job> jobs = {
        {R"(\c*)", letters, true},
        {R"(\i\c*)", letters, true},
        {"(a|b)*", letters, true},
        {"(a|b)*", letters + "c", false},
        {"((a|b)|c|d|e)*x", letters, false},
        {R"(\d+)", std::string(1000000, '7'), true},
        {"(a|b)*", std::string(300, 'b'), true},
        {R"(\c*)", std::string(8500, 'a'), true},
    };
    RunJobs(&jobs);

    for (const std::size_t size : {64 * 1024, 256 * 1024}) {
        pthread_attr_t attr;
        pthread_attr_init(&attr);
        ASSERT_EQ(pthread_attr_setstacksize(&attr, size), 0);
        pthread_t thread;
        ASSERT_EQ(pthread_create(&thread, &attr, RunJobs, &jobs), 0);
        pthread_join(thread, nullptr);
        pthread_attr_destroy(&attr);
    }
}

TEST(RegEx, AMatchThatTakesTooManyStepsIsNone)
{
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(TestRegEx("(a+)+", std::string(40, 'a') + "b"));
    EXPECT_FALSE(TestRegEx("(a|aa)+", std::string(5000, 'a') + "b"));
    EXPECT_FALSE(TestRegEx("(a?){60}a{60}", std::string(60, 'a')));
    EXPECT_FALSE(TestRegEx(".*.*.*=.*", std::string(20000, 'a')));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST(RegEx, PatternsNestAsDeepAsTheEngineTakesThem)
{
    const auto nested = [](int n) { return std::string(n, '(') + "a" + std::string(n, ')'); };
    EXPECT_TRUE(TestRegEx(nested(200), "a"));
    EXPECT_EQ(FailureOf<CQnException>([&] { TestRegEx(nested(100000), "v"); }).substr(0, 37),
              "Invalid Regular Expression: v Error: ");
}

} // namespace
