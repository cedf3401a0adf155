#include "QnXmlLib16/validation/WhitespaceUtils.h"

#include "tests/values/DateFailure.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;

namespace {

using W = CWhitespaceUtils;
using std::string_literals::operator""s;

TEST(WhitespaceUtils, EachRuleByExample)
{
    const struct
    {
        std::string text;
        std::string preserved;
        std::string replaced;
        std::string collapsed;
    } rows[] = {
        {"", "", "", ""},
        {"   ", "   ", "   ", ""},
        {"a", "a", "a", "a"},
        {"a b", "a b", "a b", "a b"},
        {"a  b", "a  b", "a  b", "a b"},
        {" a", " a", " a", "a"},
        {"a ", "a ", "a ", "a"},
        {"a\tb", "a\tb", "a b", "a b"},
        {"a\nb", "a\nb", "a b", "a b"},
        {"a\r\nb\rc\nd", "a\nb\nc\nd", "a b c d", "a b c d"},
        {"\r\r\n\n", "\n\n\n", "   ", ""},
        {"  a \t\r\n b  ", "  a \t\n b  ", "  a    b  ", "a b"},
        {"\xC2\xA0\v\f\x01", "\xC2\xA0\v\f\x01", "\xC2\xA0\v\f\x01", "\xC2\xA0\v\f\x01"},
        // A NUL ends what a rule has changed, wherever the change stands.
        {"a\0b"s, "a\0b"s, "a\0b"s, "a"},
        {"a\0\r"s, "a", "a", "a"},
        {"a\0\t"s, "a\0\t"s, "a", "a"},
        {"a \0b"s, "a \0b"s, "a \0b"s, "a "},
        {"\r\0"s, "\n", " ", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.text));
        EXPECT_EQ(W::ApplyRule(W::WhitespaceRule_None, row.text), row.text);
        EXPECT_EQ(W::Preserve(row.text), row.preserved);
        EXPECT_EQ(W::Replace(row.text), row.replaced);
        EXPECT_EQ(W::Collapse(row.text), row.collapsed);
        const std::string* const expected[] = {&row.text, &row.preserved, &row.replaced,
                                               &row.collapsed};
        for (int i = 0; i < 4; ++i) {
            std::string buffer = "kept";
            const auto rule = static_cast<W::WhitespaceRule>(i);
            const std::string& result = W::ApplyRule(rule, row.text, buffer);
            EXPECT_EQ(result, *expected[i]);
            EXPECT_EQ(W::ApplyRule(rule, row.text), *expected[i]);
            EXPECT_TRUE(&result == (row.text == *expected[i] ? &row.text : &buffer));
        }
    }
}

TEST(WhitespaceUtils, PreserveOnCountedBytes)
{
    EXPECT_EQ(W::Preserve("a\r\nb", 2), "a\n");
    EXPECT_EQ(W::Preserve("a\0b", 3), "a");
    EXPECT_EQ(W::Preserve("abc", 0), "");
    EXPECT_EQ(W::Preserve("abc", -1), "");
    EXPECT_EQ(W::Preserve(nullptr, 3), "");
}

TEST(WhitespaceUtils, AnUnknownRuleFails)
{
    for (int i : {-1, 4}) {
        EXPECT_EQ(
            FailureOf<CQnException>([i] { W::ApplyRule(static_cast<W::WhitespaceRule>(i), "a"); }),
            "Unknown WhitespaceRule");
    }
}

} // namespace
