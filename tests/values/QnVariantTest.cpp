#include "QnXmlLib16/values/QnVariant.h"

#include "QnXmlLib16/collections/stringCol.h"
#include "QnXmlLib16/values/BigInteger.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/values/DateTime.h"
#include "QnXmlLib16/values/DateTimeSpan.h"
#include "QnXmlLib16/values/Decimal.h"
#include "tests/model/Ship.h"
#include "tests/values/TypedText.h"
#include "tests/values/ValueTools.h"

#include <gtest/gtest.h>

#include <utility>

using namespace QnXmlLib16;

namespace {

constexpr auto kNone = CWhitespaceUtils::WhitespaceRule_None;

// Holds a variant, as a generated class does.
struct CHolder : Model::CLog
{
    QnVariant m_value;
};

std::string Print(const QnVariant& value)
{
    return ResultOf<CQnException>([&] { return value.ToString(nullptr); });
}

std::string NoText(int type)
{
    return "Invalid Type " + std::to_string(type) + " to convert to string";
}

// How many references there are to an object or a collection.
template <class T>
int CountReferences(T* pCounted)
{
    pCounted->AddRef();
    return pCounted->Release();
}

} // namespace

TEST(QnVariant, EveryPrimitiveGoesThroughTextCopyMoveAndNil)
{
    // Of "type text"; gives what a nil value is printed as, "-" if it has no text.
    const auto goThrough = [](const std::string& typed) {
        const std::string name = typed.substr(0, typed.find(' '));
        const std::string text = typed.substr(name.size() + 1);
        const ItemType type = TypeNamed(name);
        QnVariant value, assigned;
        value.SetString("of another type before");
        value.FromString(text, type, kNone);
        EXPECT_EQ(value.GetItemType(), type);
        EXPECT_EQ(value.GetType(), name);
        QnVariant copy(value);
        assigned.SetDecimal(CDecimal(1));
        assigned = copy;
        QnVariant moved(std::move(copy));
        copy.SetInteger(CBigInteger(1));
        copy = std::move(moved);
        EXPECT_FALSE(moved.IsValid());
        EXPECT_EQ(Print(value) + Print(assigned) + Print(copy), text + text + text);

        value.SetNil();
        assigned = value;
        EXPECT_TRUE(value.IsNil() && assigned.IsNil());
        EXPECT_EQ(assigned.GetItemType(), type);
        const std::string nilText = Print(value);
        EXPECT_EQ(Print(assigned), nilText);
        return nilText == NoText(type) ? "-" : nilText;
    };
    ExpectEach(goThrough, {"i1 -128 -> 0", "i2 -32768 -> 0", "i4 -9223372036854775808 -> 0",
                           "i8 9223372036854775807 -> 0", "ui1 255 -> 0", "ui2 65535 -> 0",
                           "ui4 18446744073709551615 -> 0", "ui8 18446744073709551615 -> 0",
                           "r4 0.1 -> 0", "r8 -1e-300 -> 0", "year 2001 -> 0", "month --05 -> --00",
                           "day ---09 -> ---00", "char x -> ", "boolean true -> false"});
    ExpectEach(goThrough,
               {"hexBinary 0AFF -> -", "base64Binary AQID -> -", "duration P1Y2M3DT4H5M6.789S -> -",
                "yearMonth 2001-05 -> -", "monthDay --05-09 -> -", "date 2001-05-09Z -> -",
                "datetime 2001-05-09T10:11:12.5+02:00 -> -", "time 10:11:12 -> -",
                "string a text that is too long to be held in place -> -", "decimal -12.5 -> -",
                "integer -123456789012345678901234567890 -> -"});
}

TEST(QnVariant, SettersGiveTheirOwnType)
{
    QnVariant v;
    const auto check = [&v](const char* type, auto set, auto get, const auto& value) {
        (v.*set)(value);
        EXPECT_EQ((v.*get)(), value);
        EXPECT_EQ(v.GetType(), type);
    };
    using V = QnVariant;
    const CDateTime date(2001, 5, 9);
    check("hexBinary", &V::SetHexBinary, &V::GetHexBinary, CBinaryData("bytes"));
    check("base64Binary", &V::SetBase64Binary, &V::GetBase64Binary, CBinaryData("bytes"));
    check("duration", &V::SetDuration, &V::GetDuration, CDateTimeSpan(1, 2, 3));
    check("yearMonth", &V::SetYearMonth, &V::GetMonthDay, date); // the same form
    check("monthDay", &V::SetMonthDay, &V::GetDate, date);
    check("date", &V::SetDate, &V::GetDateTime, date);
    check("datetime", &V::SetDateTime, &V::GetTime, date);
    check("time", &V::SetTime, &V::GetYearMonth, date);
    check("integer", &V::SetInteger, &V::GetInteger, CBigInteger("15"));
}

TEST(QnVariant, AskingForAnotherFormGivesAnEmptyValueAndAFailureLeavesTheValue)
{
    QnVariant v;
    v.SetI4(-1);
    EXPECT_EQ(v.GetUI1(), 255);
    EXPECT_TRUE(v.GetBoolean());
    EXPECT_EQ(v.GetDate().GetType(), dt_yearZero);
    EXPECT_TRUE(v.GetString().empty() && !v.GetXmlObject());
    v.SetString("kept");
    EXPECT_THROW(v.FromString("abc", it_i4, kNone), CQnInvalidValueException);
    for (const int type : {-1, 0, 27})
        EXPECT_EQ(FailureOf<CQnException>([&] { v.FromString("1", ItemType(type), kNone); }),
                  NoText(type));
    EXPECT_EQ(v.ToString("the format reaches floats and decimals only"), "kept");
    v.SetR4(1.5F);
    EXPECT_EQ(v.ToString("%.3f"), "1.500");
    v.SetDecimal(CDecimal("1.25"));
    EXPECT_EQ(v.ToString("1"), "1.7");
}

TEST(QnVariant, WithoutATypeThereIsNoTextAndTheNilFlagStays)
{
    QnVariant none, object, collection;
    object.SetXmlObject(nullptr);
    collection.SetXmlCollection(nullptr);
    for (const QnVariant* v : {&none, &object, &collection}) {
        const int type = v->GetItemType();
        EXPECT_EQ(v->IsValid(), type != it_none);
        EXPECT_EQ(Print(*v), NoText(type));
        EXPECT_EQ(FailureOf<CQnException>([&] { v->GetType(); }),
                  "Invalid Type " + std::to_string(type));
    }

    QnVariant v, copy;
    v.SetNil();
    v.Clear();
    EXPECT_TRUE(v.IsNil() && v.IsValid());
    v.SetString("stored, and still nil");
    EXPECT_EQ(v.GetString(), "stored, and still nil");
    copy = v;
    EXPECT_TRUE(v.IsNil() && copy.IsNil() && !copy.PeekString());
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
    // A setter may be given a part of the variant's own value.
    v.SetString("text");
    v.SetString(*v.PeekString());
    EXPECT_EQ(Print(v), "text");
    v.SetXmlObject(new CHolder);
    v.SetXmlObject(v.PeekXmlObject());
    EXPECT_EQ(CountReferences(v.PeekXmlObject()), 1);
}

TEST(QnVariant, ObjectsAndCollectionsAreShared)
{
    QnVariant v;
    auto* const pObject = new CHolder;
    v.SetXmlObject(pObject);
    {
        const QnVariant copy(v);
        EXPECT_EQ(copy.GetXmlObject().GetPtr(), pObject);
        EXPECT_EQ(CountReferences(pObject), 2);
    }
    EXPECT_EQ(CountReferences(pObject), 1);
    // The source of an assignment may die with the value that it replaces.
    pObject->m_value.SetString("from within");
    v = pObject->m_value;
    EXPECT_EQ(Print(v), "from within");

    const CSmartPtr<CstringCol> pCol(
        new CstringCol("c", "", 0, -1, "", -1, -1, "", "", "", "", -1, -1, -1, kNone, nullptr));
    v.SetXmlCollection(pCol.GetPtr());
    const QnVariant copy(v);
    QnVariant moved(std::move(v));
    EXPECT_EQ(moved.GetXmlCollection().GetPtr(), pCol.GetPtr());
    EXPECT_EQ(CountReferences(pCol.GetPtr()), 3);
    moved.SetNil();
    EXPECT_TRUE(!moved.GetXmlCollection() && moved.GetItemType() == it_xmlCollection);
    EXPECT_EQ(CountReferences(pCol.GetPtr()), 2);
}
