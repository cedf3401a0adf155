#include "QnXmlLib16/validation/WhitespaceUtils.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using W = CWhitespaceUtils;
using std::string_literals::operator""s;

TEST(WhitespaceUtils, EachRuleByExample)
{
    // As given, preserved, replaced and collapsed: by the number of the rule.
    const std::string rows[][4] = {
        {"", "", "", ""},
        {"   ", "   ", "   ", ""},
        {"a b", "a b", "a b", "a b"},
        {"a  b", "a  b", "a  b", "a b"},
        {"a\r\nb\rc\nd", "a\nb\nc\nd", "a b c d", "a b c d"},
        {"  a \t\r\n b  ", "  a \t\n b  ", "  a    b  ", "a b"},
        {"\xC2\xA0\v\f\x01", "\xC2\xA0\v\f\x01", "\xC2\xA0\v\f\x01", "\xC2\xA0\v\f\x01"},
        // A NUL ends what a rule has changed, wherever the change stands.
        {"a\0b"s, "a\0b"s, "a\0b"s, "a"},
        {"a\0\r"s, "a", "a", "a"},
        {"a\0\t"s, "a\0\t"s, "a", "a"},
        {"a \0b"s, "a \0b"s, "a \0b"s, "a "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row[0]));
        EXPECT_EQ(W::Preserve(row[0]), row[W::WhitespaceRule_Preserve]);
        EXPECT_EQ(W::Replace(row[0]), row[W::WhitespaceRule_Replace]);
        EXPECT_EQ(W::Collapse(row[0]), row[W::WhitespaceRule_Collapse]);
        for (int rule = 0; rule < 4; ++rule) {
            std::string buffer = "kept";
            const std::string& result = W::ApplyRule(W::WhitespaceRule(rule), row[0], buffer);
            EXPECT_EQ(result, row[rule]);
            EXPECT_EQ(&result, row[0] == row[rule] ? &row[0] : &buffer); // copied for a change only
        }
    }
}

TEST(WhitespaceUtils, PreserveOnCountedBytes)
{
    EXPECT_EQ(W::Preserve("a\r\nb", 2), "a\n");
    EXPECT_EQ(W::Preserve("a\0b", 3) + W::Preserve("abc", -1) + W::Preserve(nullptr, 3), "a");
}
