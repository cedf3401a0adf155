#include "QnXmlLib16/binding/XmlObjectHelper.h"

#include "QnXmlLib16/validation/PrimitiveRestrictions.h"
#include "QnXmlLib16/values/DateTime.h"
#include "tests/support/Scoped.h"
#include "tests/values/TypedText.h"
#include "tests/values/ValueTools.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

using namespace QnXmlLib16;

namespace {

// "ok", or how the message goes on behind "Invalid Value for name ".
std::string Check(const QnVariant& value, ItemType type, const CPrimitiveRestrictions& facets)
{
    const std::string words = "Invalid Value for name ";
    const std::string failure = FailureOf<CQnException>(
        [&] { CXmlObjectHelper::CheckRestriction("name", value, type, facets); });
    if (failure == "no failure")
        return "ok";
    return failure.compare(0, words.size(), words) == 0 ? failure.substr(words.size()) : failure;
}

// The same of "type value facet=bound ...", where the value may be empty.
std::string CheckText(const char* text)
{
    std::istringstream in(text);
    std::string type, given, facet;
    std::getline(in, type, ' ');
    std::getline(in, given, ' ');
    std::map<std::string, std::string> facets;
    while (std::getline(in, facet, '=') && std::getline(in, facets[facet], ' ')) {
    }
    const auto bound = [&facets](const char* name) { return facets[name].c_str(); };
    const auto number = [&](const char* name) {
        return facets[name].empty() ? -1 : std::stol(bound(name));
    };
    const CPrimitiveRestrictions restrictions(
        bound("pattern"), number("minLength"), number("maxLength"), bound("minInclusive"),
        bound("maxInclusive"), bound("minExclusive"), bound("maxExclusive"), number("length"),
        number("totalDigits"), number("fractionDigits"));
    QnVariant value;
    value.FromString(given, TypeNamed(type), CWhitespaceUtils::WhitespaceRule_None);
    return Check(value, TypeNamed(type), restrictions);
}

} // namespace

TEST(Restrictions, BoundsOfIntegers)
{
    ExpectEach(
        CheckText,
        {"i4 1 minInclusive=1 -> ok", "i4 0 minInclusive=1 -> [0]", "i4 7 maxInclusive=7 -> ok",
         "i4 8 maxInclusive=7 -> [8]", "i4 8 minExclusive=7 -> ok", "i4 7 minExclusive=7 -> [7]",
         "i4 6 maxExclusive=7 -> ok", "i4 7 maxExclusive=7 -> [7]",
         "ui2 40001 maxInclusive=40000 -> [40001]", "month --07 maxInclusive=--06 -> [7]",
         "day ---01 minExclusive=---01 -> [1]", "integer -3 minInclusive=-3 -> ok",
         "integer -4 minInclusive=-3 -> [-4].", "boolean true totalDigits=0 maxExclusive=0 -> ok"});
    // The message holds the low 32 bits of a long.
    ExpectEach(CheckText, {"i4 4294967298 maxInclusive=1 -> [2]",
                           "ui4 18446744073709551615 maxInclusive=1 -> [-1]",
                           "i8 4294967298 maxInclusive=1 -> [4294967298].",
                           "ui8 18446744073709551615 maxInclusive=1 -> [18446744073709551615]."});
}

TEST(Restrictions, TotalDigitsCountTheMinusSign)
{
    ExpectEach(CheckText, {"i4 99 totalDigits=2 -> ok", "i4 100 totalDigits=2 -> [100]",
                           "i4 -99 totalDigits=2 -> [-99]", "i4 -99 totalDigits=3 -> ok",
                           "ui8 1 totalDigits=0 -> [1].",
                           "integer -1234567890 totalDigits=10 -> [-1234567890].",
                           "year 1999 totalDigits=1 -> ok"});

    // Those of decimals count by part.
    ExpectEach(CheckText, {"decimal -12.034 totalDigits=5 fractionDigits=3 -> ok",
                           "decimal -12.034 totalDigits=4 -> [-12.034].",
                           "decimal -12.034 fractionDigits=2 -> [-12.034].",
                           "decimal 100 totalDigits=3 fractionDigits=0 -> ok",
                           "decimal 0.50 totalDigits=1 fractionDigits=1 -> ok",
                           "decimal 0.05 totalDigits=1 -> [0.05].", "decimal 0 totalDigits=0 -> ok",
                           "decimal -3 minInclusive=-3 maxInclusive=-3 -> ok",
                           "decimal 0.5 minExclusive=0.5 -> [0.5].",
                           "decimal 0.5 maxExclusive=0.50 -> [0.5]."});
}

TEST(Restrictions, ANaNBreaksEveryBound)
{
    for (const std::string type : {"r4", "r8"}) {
        for (const std::string bound : {"minInclusive=-INF", "maxInclusive=INF", "minExclusive=0",
                                        "maxExclusive=INF", "minInclusive=NaN"})
            ExpectEach(CheckText, {type + " NaN " + bound + " -> [nan]"});
    }
    ExpectEach(CheckText,
               {"r8 NaN -> ok", "r8 1 maxInclusive=NaN -> [1.000000]",
                "r4 0.5 maxExclusive=0.5 -> [0.500000]", "r8 INF maxInclusive=INF -> ok"});
}

TEST(Restrictions, DatesAndDurationsAreComparedPartially)
{
    ExpectEach(CheckText, {"date 2001-05-09 minInclusive=2001-05-09 maxInclusive=2001-05-09 -> ok",
                           "date 2001-05-08 minInclusive=2001-05-09 -> [2001-05-08].",
                           "date 2001-05-10 maxInclusive=2001-05-09 -> [2001-05-10].",
                           "date 2001-05-09 minExclusive=2001-05-09 -> [2001-05-09].",
                           "date 2001-05-09 maxExclusive=2001-05-09 -> [2001-05-09].",
                           "time 10:00:00 minExclusive=11:00:00 -> [10:00:00].",
                           "yearMonth 2001-05 maxInclusive=2001-04 -> [2001-05].",
                           "monthDay --05-09 minExclusive=--05-09 -> [--05-09].",
                           "datetime 2001-05-09T10:00:00 minExclusive=2001-05-09T10:00:01 -> "
                           "[2001-05-09T10:00:00].",
                           "duration P1M minInclusive=P32D -> [P1M].",
                           "duration PT60M maxExclusive=PT1H -> [PT60M]."});
    // No bound refuses what it is not comparable to.
    for (const std::string facet : {"minInclusive", "maxInclusive", "minExclusive", "maxExclusive"})
        ExpectEach(CheckText,
                   {"duration P1M " + facet + "=P30D -> ok",
                    "datetime 2001-05-09T10:00:00Z " + facet + "=2001-05-09T20:00:00 -> ok"});
    const CPrimitiveRestrictions after("", -1, -1, "2001-05", "", "", "", -1, -1, -1);
    const CDateTime unset(dt_gYearMonth);
    EXPECT_EQ(FailureOf<CQnException>(
                  [&] { CXmlObjectHelper::CheckRestrictionFormonthYear("n", unset, after); }),
              "Invalid Value for n [Error: Date Not Set].");
}

TEST(Restrictions, LengthsCountBytes)
{
    ExpectEach(CheckText,
               {"string abc minLength=3 maxLength=3 length=3 -> ok",
                "string abc minLength=4 -> [abc].", "string abc maxLength=2 -> [abc].",
                "string abc length=2 -> [abc].", "string  minLength=0 maxLength=0 length=0 -> ok",
                "string  minLength=1 -> [].", "string \xC3\xA9 maxLength=1 -> [\xC3\xA9].",
                "hexBinary 0AFF minLength=2 maxLength=2 length=2 -> ok",
                "hexBinary 0AFF minLength=3 -> [0AFF].", "base64Binary AQID maxLength=2 -> [AQID].",
                "base64Binary AQID length=4 -> [AQID].", "i4 12345 maxLength=1 -> ok"});
}

TEST(Restrictions, PatternsAreTestedLast)
{
    const std::string badPattern = "Invalid Regular Expression: ";
    ExpectEach(CheckText, {"string ab pattern=[a-z]+ -> ok", "string a1 pattern=[a-z]+ -> [a1].",
                           "string a minLength=2 pattern=( -> [a].",
                           "string ab minLength=2 pattern=( -> " + badPattern +
                               "ab Error: 'missing )'\nInvalid Value for name [ab].",
                           // Both are in the code page of the process: "?" under the "C" one.
                           "string \xC3\xA9 pattern=\xC3\xA9 -> " + badPattern +
                               "\xC3\xA9 Error: 'unrecognized character after (? or (?-'\n"
                               "Invalid Value for name [\xC3\xA9]."});
    const Scoped::AsciiOnly asciiOnly;
    ExpectEach(CheckText, {"string \xC3\xA9 pattern=\xC3\xA9 -> ok"});
}

TEST(Restrictions, AFacetFailureIsTheRootClass)
{
    const CPrimitiveRestrictions facets("", 1, -1, " -1\n", "", "", "", -1, -1, -1);
    EXPECT_EQ(FailureOf<CQnException>(
                  [&] { CXmlObjectHelper::CheckRestrictionFori4(nullptr, -2, facets); }),
              "Invalid Value for  [-2]");
    // A bound that can't be read is found at the check.
    EXPECT_EQ(FailureOf([&] { CXmlObjectHelper::CheckRestrictionForui1("name", 0, facets); }),
              "The value [ -1\n] is to large to fit in a ui1");
    // A variant without a value of the type's form counts as an empty one.
    QnVariant nil;
    nil.SetString("abc");
    nil.SetNil();
    EXPECT_EQ(Check(nil, it_string, facets), "[].");

    // The type asked for decides.
    QnVariant value;
    value.SetI4(1);
    for (const int type : {-1, 0, 27, static_cast<int>(it_char)})
        EXPECT_EQ(FailureOf([&] {
                      CXmlObjectHelper::CheckRestriction("name", value, ItemType(type), {});
                  }),
                  "Unknown type [i4].");
    value.SetXmlObject(nullptr);
    EXPECT_EQ(Check(value, it_xmlObject, {}), "Invalid Type 27");
}
