#include "QnXmlLib16/values/QnVariant.h"

#include "QnXmlLib16/binding/XmlObjectBase.h"
#include "QnXmlLib16/collections/stringCol.h"
#include "QnXmlLib16/values/BigInteger.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/values/DateTime.h"
#include "QnXmlLib16/values/DateTimeSpan.h"
#include "QnXmlLib16/values/Decimal.h"
#include "tests/values/DateFailure.h"

#include <gtest/gtest.h>

#include <utility>

using namespace QnXmlLib16;

namespace {

constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;
constexpr auto kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;

// Holds a variant, as a generated class may, and counts its like.
class CHolder : public CXmlObjectBase
{
public:
    CHolder() { ++s_nAlive; }
    ~CHolder() override { --s_nAlive; }

    using CXmlObjectBase::GetBase;
    CXmlObjectBase* GetBase() override { return this; }
    std::string GetTargetNamespace() const override { return {}; }
    std::string GetNamespace() const override { return {}; }

    QnVariant m_value;
    static int s_nAlive;

protected:
    void ToXml_Int(CXmlWriter*, bool, const char*, const CSerializationContext&,
                   bool) const override
    {}
    CXmlElement* FromXml_Int(CXmlElement*, CXmlElement*, const CSerializationContext&,
                             bool) override
    {
        return nullptr;
    }
};

int CHolder::s_nAlive = 0;

std::string Print(const QnVariant& value)
{
    std::string text;
    const std::string failure = FailureOf<CQnException>([&] { text = value.ToString(nullptr); });
    return failure == "no failure" ? text : failure;
}

const struct Row
{
    ItemType type;
    const char* name;
    const char* text;
    const char* nilText; // null: there is none
} kRows[] = {
    {it_hexBinary, "hexBinary", "0AFF", nullptr},
    {it_base64Binary, "base64Binary", "AQID", nullptr},
    {it_i1, "i1", "-128", "0"},
    {it_i2, "i2", "-32768", "0"},
    {it_i4, "i4", "-9223372036854775808", "0"},
    {it_i8, "i8", "9223372036854775807", "0"},
    {it_ui1, "ui1", "255", "0"},
    {it_ui2, "ui2", "65535", "0"},
    {it_ui4, "ui4", "18446744073709551615", "0"},
    {it_ui8, "ui8", "18446744073709551615", "0"},
    {it_r4, "r4", "0.1", "0"},
    {it_r8, "r8", "-1e-300", "0"},
    {it_duration, "duration", "P1Y2M3DT4H5M6.789S", nullptr},
    {it_yearMonth, "yearMonth", "2001-05", nullptr},
    {it_monthDay, "monthDay", "--05-09", nullptr},
    {it_year, "year", "2001", "0"},
    {it_month, "month", "--05", "--00"},
    {it_day, "day", "---09", "---00"},
    {it_date, "date", "2001-05-09Z", nullptr},
    {it_datetime, "datetime", "2001-05-09T10:11:12.5+02:00", nullptr},
    {it_time, "time", "10:11:12", nullptr},
    {it_char, "char", "x", ""},
    {it_string, "string", "a text that is too long to be held in place", nullptr},
    {it_boolean, "boolean", "true", "false"},
    {it_decimal, "decimal", "-12.5", nullptr},
    {it_integer, "integer", "-123456789012345678901234567890", nullptr},
};

TEST(QnVariant, EveryPrimitiveGoesThroughTextCopyMoveAndNil)
{
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        QnVariant value;
        value.SetString("of another type before");
        value.FromString(row.text, row.type, kNone);
        EXPECT_EQ(value.GetItemType(), row.type);
        EXPECT_EQ(value.GetType(), row.name);
        EXPECT_EQ(Print(value), row.text);
        EXPECT_TRUE(value.IsValid());
        EXPECT_FALSE(value.IsNil());

        QnVariant copy(value);
        QnVariant assigned;
        assigned.SetDecimal(CDecimal(1));
        assigned = copy;
        QnVariant moved(std::move(copy));
        EXPECT_FALSE(copy.IsValid());
        copy.SetInteger(CBigInteger(1));
        copy = std::move(moved);
        EXPECT_FALSE(moved.IsValid());
        EXPECT_EQ(Print(value), row.text);
        EXPECT_EQ(Print(assigned), row.text);
        EXPECT_EQ(Print(copy), row.text);

        value.SetNil();
        EXPECT_TRUE(value.IsNil());
        EXPECT_EQ(value.GetType(), row.name);
        const std::string nilText =
            row.nilText ? row.nilText
                        : "Invalid Type " + std::to_string(row.type) + " to convert to string";
        EXPECT_EQ(Print(value), nilText);
        assigned = value;
        EXPECT_TRUE(assigned.IsNil());
        EXPECT_EQ(assigned.GetItemType(), row.type);
        EXPECT_EQ(Print(assigned), nilText);

        value.FromString(row.text, row.type, kNone);
        EXPECT_FALSE(value.IsNil());
        value.SetNil();
        value.Clear();
        EXPECT_FALSE(value.IsNil());
        EXPECT_FALSE(value.IsValid());
    }
}

TEST(QnVariant, GettersGiveWhatSettersTook)
{
    QnVariant v;
#define EXPECT_ROUND(Name, value)                                                                  \
    v.Set##Name(value);                                                                            \
    EXPECT_EQ(v.Get##Name(), value)
    EXPECT_ROUND(I1, static_cast<char>(-7));
    EXPECT_ROUND(I2, static_cast<short>(-700));
    EXPECT_ROUND(I4, -7000000000L);
    EXPECT_ROUND(I8, -7000000000LL);
    EXPECT_ROUND(UI1, static_cast<unsigned char>(200));
    EXPECT_ROUND(UI2, static_cast<unsigned short>(60000));
    EXPECT_ROUND(UI4, 7000000000UL);
    EXPECT_ROUND(UI8, ~0ULL);
    EXPECT_ROUND(R4, 0.1F);
    EXPECT_ROUND(R8, 0.1);
    EXPECT_ROUND(Year, static_cast<unsigned short>(65535));
    EXPECT_ROUND(Month, static_cast<unsigned char>(12));
    EXPECT_ROUND(Day, static_cast<unsigned char>(31));
    EXPECT_ROUND(Char, '\xE9');
    EXPECT_ROUND(Boolean, true);
    EXPECT_ROUND(String, std::string("a\0b", 3));
    EXPECT_ROUND(HexBinary, CBinaryData("bytes"));
    EXPECT_ROUND(Base64Binary, CBinaryData("bytes"));
    EXPECT_ROUND(Duration, CDateTimeSpan(1, 2, 3));
    EXPECT_ROUND(YearMonth, CDateTime(2001, 5, 9));
    EXPECT_ROUND(MonthDay, CDateTime(2001, 5, 9));
    EXPECT_ROUND(Date, CDateTime(2001, 5, 9));
    EXPECT_ROUND(DateTime, CDateTime(2001, 5, 9));
    EXPECT_ROUND(Time, CDateTime(2001, 5, 9));
    EXPECT_ROUND(Decimal, CDecimal("1.5"));
    EXPECT_ROUND(Integer, CBigInteger("15"));
#undef EXPECT_ROUND
}

TEST(QnVariant, AskingForAnotherFormGivesAnEmptyValue)
{
    QnVariant v;
    v.SetDate(CDateTime(2001, 5, 9));
    EXPECT_EQ(v.GetTime(), CDateTime(2001, 5, 9)); // the same form
    EXPECT_EQ(v.GetString(), "");
    EXPECT_EQ(v.GetI8(), 0);
    EXPECT_EQ(v.GetDecimal(), CDecimal(0));
    EXPECT_EQ(v.GetHexBinary().GetLength(), 0u);
    EXPECT_FALSE(v.GetXmlObject());
    v.SetI4(-1);
    EXPECT_EQ(v.GetUI1(), 255);
    EXPECT_TRUE(v.GetBoolean());
    EXPECT_EQ(v.GetDate().GetType(), dt_yearZero);
    EXPECT_EQ(v.PeekString(), nullptr);
    v.SetString("s");
    v.SetNil();
    EXPECT_EQ(v.GetString(), "");
    EXPECT_EQ(v.PeekString(), nullptr);
}

TEST(QnVariant, AFailureLeavesTheValue)
{
    QnVariant v;
    v.SetString("kept");
    EXPECT_EQ(FailureOf<CQnInvalidValueException>([&] { v.FromString("abc", it_i4, kNone); }),
              "The value [abc] can not be converted to a i4");
    for (int type : {-1, 0, 27, 28, 29}) {
        EXPECT_EQ(
            FailureOf<CQnException>([&] { v.FromString("1", static_cast<ItemType>(type), kNone); }),
            "Invalid Type " + std::to_string(type) + " to convert to string");
    }
    EXPECT_EQ(v.GetString(), "kept");
    v.FromString("  a  b ", it_string, kCollapse);
    EXPECT_EQ(v.GetString(), "a b");
}

TEST(QnVariant, TheFormatReachesFloatsAndDecimals)
{
    QnVariant v;
    v.SetR4(1.5F);
    EXPECT_EQ(v.ToString("%.3f"), "1.500");
    v.SetR8(1.5);
    EXPECT_EQ(v.ToString("%.1e"), "1.5e+00");
    v.SetDecimal(CDecimal("1.25"));
    EXPECT_EQ(v.ToString("1"), CDecimal("1.25").ToString(1));
    v.SetI4(15);
    EXPECT_EQ(v.ToString("%.3f"), "15");
    v.SetDate(CDateTime(2001, 5, 9));
    EXPECT_EQ(v.ToString("G"), "2001-05-09");
}

TEST(QnVariant, WithoutATypeThereIsNoText)
{
    QnVariant v;
    EXPECT_FALSE(v.IsValid());
    EXPECT_EQ(v.GetItemType(), it_none);
    EXPECT_EQ(Print(v), "Invalid Type 0 to convert to string");
    EXPECT_EQ(FailureOf<CQnException>([&] { v.GetType(); }), "Invalid Type 0");
    v.SetXmlObject(nullptr);
    EXPECT_TRUE(v.IsValid());
    EXPECT_EQ(Print(v), "Invalid Type 27 to convert to string");
    EXPECT_EQ(FailureOf<CQnException>([&] { v.GetType(); }), "Invalid Type 27");
    v.SetXmlCollection(nullptr);
    EXPECT_FALSE(v.GetXmlCollection());
    EXPECT_EQ(FailureOf<CQnException>([&] { v.GetType(); }), "Invalid Type 28");
    v.SetInvalid();
    EXPECT_FALSE(v.IsValid());
}

TEST(QnVariant, WithoutATypeTheNilFlagStays)
{
    QnVariant v;
    v.SetNil();
    EXPECT_TRUE(v.IsNil());
    EXPECT_TRUE(v.IsValid());
    v.Clear();
    EXPECT_TRUE(v.IsNil());
    QnVariant copy;
    copy.SetI4(1);
    copy = v;
    EXPECT_TRUE(copy.IsNil());
    EXPECT_EQ(copy.GetItemType(), it_none);

    v.SetString("stored, and still nil");
    EXPECT_TRUE(v.IsNil());
    EXPECT_EQ(v.GetString(), "stored, and still nil");
    copy = v;
    EXPECT_TRUE(copy.IsNil());
    EXPECT_EQ(copy.PeekString(), nullptr);
    v.SetI4(1);
    EXPECT_FALSE(v.IsNil());
}

TEST(QnVariant, AssigningToItselfLosesTheValue)
{
    QnVariant v;
    const QnVariant& self = v;
    v.SetString("gone");
    v = self;
    EXPECT_FALSE(v.IsValid());
    v.SetNil();
    v = self;
    EXPECT_TRUE(v.IsNil());
}

TEST(QnVariant, ASetterMayBeGivenTheVariantsOwnValue)
{
    QnVariant v;
    v.SetDecimal(CDecimal("1.5"));
    v.SetDecimal(*v.PeekDecimal());
    EXPECT_EQ(Print(v), "1.5");
    v.SetDate(CDateTime(2001, 5, 9));
    v.SetTime(*v.PeekDateTime());
    EXPECT_EQ(Print(v), "2001-05-09");
    v.SetString("text");
    v.SetString(*v.PeekString());
    EXPECT_EQ(Print(v), "text");
    v.SetXmlObject(new CHolder);
    v.SetXmlObject(v.PeekXmlObject());
    EXPECT_EQ(CHolder::s_nAlive, 1);
    v.Clear();
    EXPECT_EQ(CHolder::s_nAlive, 0);
}

TEST(QnVariant, ObjectsAndCollectionsAreShared)
{
    QnVariant v;
    auto* const pObject = new CHolder;
    v.SetXmlObject(pObject);
    {
        QnVariant copy(v);
        EXPECT_EQ(copy.GetXmlObject().GetPtr(), pObject);
        EXPECT_EQ(pObject->AddRef(), 3);
        pObject->Release();
        EXPECT_FALSE(copy.GetXmlCollection());
    }
    EXPECT_EQ(pObject->AddRef(), 2);
    pObject->Release();

    // The source of an assignment may die with the value that it replaces.
    pObject->m_value.SetString("from within");
    v = pObject->m_value;
    EXPECT_EQ(Print(v), "from within");
    EXPECT_EQ(CHolder::s_nAlive, 0);

    const CSmartPtr<CstringCol> pCol(
        new CstringCol("c", "", 0, -1, "", -1, -1, "", "", "", "", -1, -1, -1, kNone, nullptr));
    v.SetXmlCollection(pCol.GetPtr());
    QnVariant moved(std::move(v));
    EXPECT_EQ(moved.GetXmlCollection().GetPtr(), pCol.GetPtr());
    EXPECT_EQ(pCol->AddRef(), 3);
    pCol->Release();
    moved.SetNil();
    EXPECT_FALSE(moved.GetXmlCollection());
    EXPECT_EQ(moved.GetItemType(), it_xmlCollection);
    EXPECT_EQ(pCol->AddRef(), 2);
    pCol->Release();
}

} // namespace
