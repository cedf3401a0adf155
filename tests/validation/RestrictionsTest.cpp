#include "QnXmlLib16/binding/XmlObjectHelper.h"

#include "QnXmlLib16/support/Encoder.h"
#include "QnXmlLib16/validation/PrimitiveRestrictions.h"
#include "QnXmlLib16/values/BigInteger.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/values/DateTime.h"
#include "QnXmlLib16/values/DateTimeSpan.h"
#include "QnXmlLib16/values/Decimal.h"
#include "QnXmlLib16/values/QnVariant.h"
#include "tests/values/DateFailure.h"

#include <gtest/gtest.h>

#include <clocale>

using namespace QnXmlLib16;

namespace {

constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;

// The bounds in the order in which they are tested, and the number of digits.
struct Bounds
{
    const char* minInclusive = nullptr;
    const char* maxInclusive = nullptr;
    const char* minExclusive = nullptr;
    const char* maxExclusive = nullptr;
    long totalDigits = -1;
    long fractionDigits = -1;
};

CPrimitiveRestrictions Make(const Bounds& bounds)
{
    return {nullptr,
            -1,
            -1,
            bounds.minInclusive,
            bounds.maxInclusive,
            bounds.minExclusive,
            bounds.maxExclusive,
            -1,
            bounds.totalDigits,
            bounds.fractionDigits};
}

CPrimitiveRestrictions Lengths(long min, long max, long exact, const char* pattern = nullptr)
{
    return {pattern, min, max, nullptr, nullptr, nullptr, nullptr, exact, -1, -1};
}

// "ok", or the words of a failure of the root class.
std::string Check(ItemType type, const std::string& text, const CPrimitiveRestrictions& facets)
{
    QnVariant value;
    value.FromString(text, type, kNone);
    const std::string failure = FailureOf<CQnException>(
        [&] { CXmlObjectHelper::CheckRestriction("name", value, type, facets); });
    return failure == "no failure" ? "ok" : failure;
}

TEST(Restrictions, BoundsOfIntegers)
{
    const struct
    {
        ItemType type;
        Bounds bounds;
        const char* value;
        const char* result;
    } rows[] = {
        {it_i4, {"1"}, "1", "ok"},
        {it_i4, {"1"}, "0", "Invalid Value for name [0]"},
        {it_i4, {" 1\n"}, "0", "Invalid Value for name [0]"},
        {it_i4, {nullptr, "7"}, "7", "ok"},
        {it_i4, {nullptr, "7"}, "8", "Invalid Value for name [8]"},
        {it_i4, {nullptr, nullptr, "7"}, "8", "ok"},
        {it_i4, {nullptr, nullptr, "7"}, "7", "Invalid Value for name [7]"},
        {it_i4, {nullptr, nullptr, nullptr, "7"}, "6", "ok"},
        {it_i4, {nullptr, nullptr, nullptr, "7"}, "7", "Invalid Value for name [7]"},
        // The message holds the low 32 bits.
        {it_i4, {nullptr, "1"}, "4294967298", "Invalid Value for name [2]"},
        {it_ui4, {nullptr, "1"}, "18446744073709551615", "Invalid Value for name [-1]"},
        {it_i8, {nullptr, "1"}, "4294967298", "Invalid Value for name [4294967298]."},
        {it_ui8,
         {nullptr, "1"},
         "18446744073709551615",
         "Invalid Value for name [18446744073709551615]."},
        {it_i1, {"-5", "5"}, "-128", "Invalid Value for name [-128]"},
        {it_i2, {"-5", "5"}, "-5", "ok"},
        {it_ui1, {"100"}, "200", "ok"},
        {it_ui2, {nullptr, "40000"}, "40001", "Invalid Value for name [40001]"},
        {it_year, {"1990"}, "1989", "Invalid Value for name [1989]"},
        {it_month, {nullptr, "--06"}, "--07", "Invalid Value for name [7]"},
        {it_day, {nullptr, nullptr, "---01"}, "---01", "Invalid Value for name [1]"},
        {it_integer, {"-3"}, "-3", "ok"},
        {it_integer, {"-3"}, "-4", "Invalid Value for name [-4]."},
        {it_integer,
         {nullptr, "100000000000000000000"},
         "100000000000000000001",
         "Invalid Value for name [100000000000000000001]."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.value) + " gives " + row.result);
        EXPECT_EQ(Check(row.type, row.value, Make(row.bounds)), row.result);
    }
}

TEST(Restrictions, TotalDigitsCountTheMinusSign)
{
    const struct
    {
        ItemType type;
        long digits;
        const char* value;
        const char* result;
    } rows[] = {
        {it_i4, 2, "99", "ok"},
        {it_i4, 2, "100", "Invalid Value for name [100]"},
        {it_i4, 2, "-99", "Invalid Value for name [-99]"},
        {it_i4, 3, "-99", "ok"},
        {it_ui8, 0, "1", "Invalid Value for name [1]."},
        {it_i1, 2, "-10", "Invalid Value for name [-10]"},
        {it_integer, 20, "-12345678901234567890",
         "Invalid Value for name [-12345678901234567890]."},
        {it_r8, 1, "12.5", "ok"}, // not read
        {it_year, 1, "1999", "ok"},
        {it_boolean, 0, "true", "ok"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        Bounds bounds;
        bounds.totalDigits = row.digits;
        EXPECT_EQ(Check(row.type, row.value, Make(bounds)), row.result);
    }
}

TEST(Restrictions, DecimalsCountTheirDigitsByPart)
{
    const struct
    {
        const char* value;
        int integerLen;
        int fractionLen;
    } lengths[] = {
        {"0", 0, 0},   {"0.5", 0, 1},   {"-0.05", 0, 2},   {"1.50", 1, 1},
        {"100", 3, 0}, {"0.005", 0, 3}, {"-12.034", 2, 3}, {"0.0", 0, 0},
    };
    for (const auto& row : lengths) {
        SCOPED_TRACE(row.value);
        const CDecimal value(row.value);
        EXPECT_EQ(CXmlObjectHelper::GetDecimalIntegerPartLen(value), row.integerLen);
        EXPECT_EQ(CXmlObjectHelper::GetDecimalFractionPartLen(value), row.fractionLen);
        // One digit fewer than there are fails, in total and behind the point.
        const long total = row.integerLen + row.fractionLen;
        const std::string refused = "Invalid Value for name [" + value.ToString() + "].";
        const Bounds exact{nullptr, nullptr, nullptr, nullptr, total, row.fractionLen};
        EXPECT_EQ(Check(it_decimal, row.value, Make(exact)), "ok");
        if (total > 0) {
            const Bounds tight{nullptr, nullptr, nullptr, nullptr, total - 1, -1};
            EXPECT_EQ(Check(it_decimal, row.value, Make(tight)), refused);
        }
        if (row.fractionLen > 0) {
            const Bounds tight{nullptr, nullptr, nullptr, nullptr, -1, row.fractionLen - 1};
            EXPECT_EQ(Check(it_decimal, row.value, Make(tight)), refused);
        }
    }
    EXPECT_EQ(Check(it_decimal, "-3", Make({"-3", "-3"})), "ok");
    EXPECT_EQ(Check(it_decimal, "-3.1", Make({"-3"})), "Invalid Value for name [-3.1].");
    EXPECT_EQ(Check(it_decimal, "0.5", Make({nullptr, nullptr, "0.5"})),
              "Invalid Value for name [0.5].");
    EXPECT_EQ(Check(it_decimal, "0.5", Make({nullptr, nullptr, nullptr, "0.50"})),
              "Invalid Value for name [0.5].");
}

TEST(Restrictions, ANaNBreaksEveryBound)
{
    const CPrimitiveRestrictions bounds[] = {
        Make({"-INF"}), Make({nullptr, "INF"}), Make({nullptr, nullptr, "0"}),
        Make({nullptr, nullptr, nullptr, "INF"}), Make({"NaN"})};
    for (const CPrimitiveRestrictions& facets : bounds) {
        EXPECT_EQ(Check(it_r8, "NaN", facets).substr(0, 22), "Invalid Value for name");
        EXPECT_EQ(Check(it_r4, "NaN", facets).substr(0, 22), "Invalid Value for name");
    }
    EXPECT_EQ(Check(it_r8, "NaN", CPrimitiveRestrictions()), "ok");
    EXPECT_EQ(Check(it_r8, "1", Make({nullptr, "NaN"})), "Invalid Value for name [1.000000]");
    EXPECT_EQ(Check(it_r4, "0.5", Make({nullptr, nullptr, nullptr, "0.5"})),
              "Invalid Value for name [0.500000]");
    EXPECT_EQ(Check(it_r8, "INF", Make({nullptr, "INF"})), "ok");

    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    if (std::setlocale(LC_NUMERIC, "de_DE.utf8") != nullptr) {
        EXPECT_EQ(Check(it_r8, "0.5", Make({"0.75"})), "Invalid Value for name [0.500000]");
        EXPECT_EQ(Check(it_r8, "0.5", Make({"0.25", "0.75"})), "ok");
        std::setlocale(LC_NUMERIC, before.c_str());
    }
}

TEST(Restrictions, DatesAndDurationsAreComparedPartially)
{
    // Each bound in turn, which is 0: minInclusive, to 3: maxExclusive.
    const struct
    {
        ItemType type;
        const char* value;
        const char* bound;
        bool passes[4];
    } rows[] = {
        {it_date, "2001-05-09", "2001-05-09", {true, true, false, false}},
        {it_date, "2001-05-08", "2001-05-09", {false, true, false, true}},
        {it_date, "2001-05-10", "2001-05-09", {true, false, true, false}},
        {it_datetime, "2001-05-09T10:00:00Z", "2001-05-09T20:00:00", {true, true, true, true}},
        {it_datetime, "2001-05-09T10:00:00Z", "2001-05-10T20:00:00", {false, true, false, true}},
        {it_time, "10:00:00", "11:00:00", {false, true, false, true}},
        {it_yearMonth, "2001-05", "2001-04", {true, false, true, false}},
        {it_monthDay, "--05-09", "--05-09", {true, true, false, false}},
        {it_duration, "P1M", "P30D", {true, true, true, true}},
        {it_duration, "P1M", "P32D", {false, true, false, true}},
        {it_duration, "PT60M", "PT1H", {true, true, false, false}},
    };
    for (const auto& row : rows) {
        for (int i = 0; i < 4; ++i) {
            SCOPED_TRACE(std::string(row.value) + " against " + row.bound + " as bound " +
                         std::to_string(i));
            const char* bounds[4] = {};
            bounds[i] = row.bound;
            EXPECT_EQ(
                Check(row.type, row.value, Make({bounds[0], bounds[1], bounds[2], bounds[3]})),
                row.passes[i] ? "ok" : std::string("Invalid Value for name [") + row.value + "].");
        }
    }
    const CDateTime yearMonth(dt_gYearMonth);
    EXPECT_EQ(FailureOf<CQnException>([&] {
                  CXmlObjectHelper::CheckRestrictionFormonthYear("n", yearMonth, Make({"2001-05"}));
              }),
              "Invalid Value for n [Error: Date Not Set].");
}

TEST(Restrictions, LengthsCountBytes)
{
    const struct
    {
        ItemType type;
        const char* value;
        long min, max, exact;
        bool passes;
    } rows[] = {
        {it_string, "abc", 3, 3, 3, true},
        {it_string, "abc", 4, -1, -1, false},
        {it_string, "abc", -1, 2, -1, false},
        {it_string, "abc", -1, -1, 2, false},
        {it_string, "", 0, 0, 0, true},
        {it_string, "\xC3\xA9", -1, 1, -1, false},
        {it_hexBinary, "0AFF", 2, 2, 2, true},
        {it_hexBinary, "0AFF", 3, -1, -1, false},
        {it_base64Binary, "AQID", -1, 2, -1, false},
        {it_base64Binary, "AQID", -1, -1, 4, false},
        {it_i4, "12345", -1, 1, 1, true}, // not read
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(Check(row.type, row.value, Lengths(row.min, row.max, row.exact)),
                  row.passes ? "ok" : std::string("Invalid Value for name [") + row.value + "].");
    }
}

TEST(Restrictions, PatternsAreTestedLast)
{
    const CPrimitiveRestrictions facets = Lengths(2, -1, -1, "[a-z]+");
    EXPECT_EQ(Check(it_string, "ab", facets), "ok");
    EXPECT_EQ(Check(it_string, "a1", facets), "Invalid Value for name [a1].");
    EXPECT_EQ(Check(it_string, "a", Lengths(2, -1, -1, "(")), "Invalid Value for name [a].");
    EXPECT_EQ(Check(it_string, "ab", Lengths(2, -1, -1, "(")),
              "Invalid Regular Expression: ab Error: 'missing )'\nInvalid Value for name [ab].");
    // Both the pattern and the value are in the code page of the process: "?" under the "C" one.
    EXPECT_EQ(Check(it_string, "\xC3\xA9", Lengths(-1, -1, -1, "\xC3\xA9")),
              "Invalid Regular Expression: \xC3\xA9 Error: 'unrecognized character after (? or "
              "(?-'\n"
              "Invalid Value for name [\xC3\xA9].");
    ASCIIOnly(true);
    EXPECT_EQ(Check(it_string, "\xC3\xA9", Lengths(-1, -1, -1, "\xC3\xA9")), "ok");
    ASCIIOnly(false);
}

TEST(Restrictions, AFacetFailureIsTheRootClass)
{
    const CPrimitiveRestrictions facets = Make({"-1"});
    EXPECT_EQ(FailureOf<CQnException>(
                  [&] { CXmlObjectHelper::CheckRestrictionFori4(nullptr, -2, facets); }),
              "Invalid Value for  [-2]");
    // A bound that can't be read is found at the check.
    EXPECT_EQ(FailureOf<CQnInvalidValueException>(
                  [&] { CXmlObjectHelper::CheckRestrictionForui1("name", 0, facets); }),
              "The value [-1] is to large to fit in a ui1");
}

TEST(Restrictions, TheTypeAskedForDecides)
{
    const CPrimitiveRestrictions none;
    const auto failure = [&](const QnVariant& value, int type) {
        return FailureOf<CQnInvalidValueException>([&] {
            CXmlObjectHelper::CheckRestriction("name", value, static_cast<ItemType>(type), none);
        });
    };
    QnVariant value;
    value.SetChar('a');
    EXPECT_EQ(failure(value, it_char), "Unknown type [char].");
    value.SetI4(1);
    for (int type : {-1, 0, 22, 27, 28, 29})
        EXPECT_EQ(failure(value, type), "Unknown type [i4].");
    value.SetXmlObject(nullptr);
    EXPECT_EQ(FailureOf<CQnException>(
                  [&] { CXmlObjectHelper::CheckRestriction("name", value, it_xmlObject, none); }),
              "Invalid Type 27");

    // A variant without a value of that form counts as an empty one.
    QnVariant nil;
    nil.SetString("abc");
    nil.SetNil();
    EXPECT_EQ(FailureOf<CQnException>([&] {
                  CXmlObjectHelper::CheckRestriction("name", nil, it_string, Lengths(1, -1, -1));
              }),
              "Invalid Value for name [].");
    EXPECT_EQ(failure(nil, it_decimal), "no failure");
}

TEST(Restrictions, ARecordKeepsItsFacetsThroughCopies)
{
    const CPrimitiveRestrictions facets("p", 1, 2, "3", "4", "5", "6", 7, 8, 9);
    CPrimitiveRestrictions copy;
    EXPECT_EQ(copy.GetMinLength(), -1);
    EXPECT_EQ(copy.GetFractionDigits(), -1);
    copy = facets;
    EXPECT_EQ(copy.GetPattern(), "p");
    EXPECT_EQ(copy.GetMinLength(), 1);
    EXPECT_EQ(copy.GetMaxLength(), 2);
    EXPECT_EQ(copy.GetMinInclusive(), "3");
    EXPECT_EQ(copy.GetMaxInclusive(), "4");
    EXPECT_EQ(copy.GetMinExclusive(), "5");
    EXPECT_EQ(copy.GetMaxExclusive(), "6");
    EXPECT_EQ(copy.GetLength(), 7);
    EXPECT_EQ(copy.GetTotalDigits(), 8);
    EXPECT_EQ(copy.GetFractionDigits(), 9);
}

} // namespace
