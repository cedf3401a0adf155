#include "Recorders.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;

namespace {

struct CFacets
{
    const char* pszMinInclusive = nullptr;
    long lMaxLength = -1;
    const char* pszFormat = nullptr;
    int iMinOccurs = 0;
    int iMaxOccurs = -1;
};

template <class TCol>
CSmartPtr<TCol>
Make(const CFacets& facets = {},
     CWhitespaceUtils::WhitespaceRule rule = CWhitespaceUtils::WhitespaceRule_Collapse)
{
    return new TCol("v", "urn:v", facets.iMinOccurs, facets.iMaxOccurs, nullptr, -1,
                    facets.lMaxLength, facets.pszMinInclusive, nullptr, nullptr, nullptr, -1, -1,
                    -1, rule, facets.pszFormat);
}

template <class TCol>
CSmartPtr<CXmlTypeCollection> Any(const CFacets& facets)
{
    return Make<TCol>(facets);
}

// That each type reads what it writes is tested where classes hold the collections.
TEST(ValueCollection, EachTypeHasItsTypeCodeAndItsFacets)
{
    struct Row
    {
        CSmartPtr<CXmlTypeCollection> (*fnMake)(const CFacets&);
        ItemType itemType; // of the collection
        const char* pszText;
        CFacets refusing; // facets that refuse the text
    };
    const Row rows[] = {
        {Any<ChexBinaryCol>, it_hexBinary, "0AFF", {nullptr, 1}},
        {Any<Cbase64BinaryCol>, it_base64Binary, "aGk=", {nullptr, 1}},
        {Any<Ci1Col>, it_i1, "-128", {"-127"}},
        {Any<Ci2Col>, it_i2, "-32768", {"0"}},
        {Any<Ci4Col>, it_i4, "-9223372036854775808", {"0"}},
        {Any<Ci8Col>, it_i8, "-5", {"-4"}},
        {Any<Cui1Col>, it_ui1, "254", {"255"}},
        {Any<Cui2Col>, it_ui2, "1", {"2"}},
        {Any<Cui4Col>, it_ui4, "1", {"4294967296"}},
        {Any<Cui8Col>, it_ui8, "1", {"2"}},
        {Any<Cr4Col>, it_r4, "0.5", {"1"}},
        {Any<Cr8Col>, it_r8, "1e+300", {"INF"}},
        {Any<CdurationCol>, it_duration, "P1D", {"P2D"}},
        {Any<CyearMonthCol>, it_yearMonth, "2001-05", {"2001-06"}},
        {Any<CmonthDayCol>, it_monthDay, "--05-09", {"--05-10"}},
        {Any<CyearCol>, it_year, "2001", {"2002"}},
        {Any<CmonthCol>, it_month, "--05", {"--06"}},
        {Any<CdayCol>, it_day, "---09", {"---10"}},
        {Any<CdateCol>, it_date, "2001-05-09", {"2001-05-10"}},
        {Any<CdatetimeCol>, it_datetime, "2001-05-09T12:00:00", {"2001-05-09T12:00:01"}},
        {Any<CtimeCol>, it_time, "12:00:00", {"12:00:01"}},
        {Any<CstringCol>, it_string, "hello", {nullptr, 4}},
        {Any<CbooleanCol>, it_boolean, "true", {}},
        {Any<CdecimalCol>, it_decimal, "1.5", {"1.51"}},
        {Any<CintegerCol>, it_integer, "12345678901234567890123", {"12345678901234567890124"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.itemType << " " << row.pszText);
        const auto pCol = row.fnMake({});
        EXPECT_EQ(pCol->GetItemType(), row.itemType);
        pCol->AddFromString(row.pszText);
        const bool bDate = dynamic_cast<const CdatetimeBaseCol*>(pCol.GetPtr());
        const int iWritten = bDate ? it_datetime : row.itemType;
        EXPECT_EQ(RecordedBy(*pCol), "<v {urn:v}\n" + std::string(row.pszText) + " " +
                                         std::to_string(iWritten) + "\n>\n");
        const std::string strFailure =
            FailureOf([&] { row.fnMake(row.refusing)->AddFromString(row.pszText); });
        EXPECT_EQ(strFailure.rfind("Qn: Invalid Value for v [", 0) == 0,
                  row.itemType != it_boolean);
    }
}

TEST(ValueCollection, ReadingAddsAndStopsAtTheFirstOtherElement)
{
    const auto pCol = Make<Ci4Col>({nullptr, -1, nullptr, 0, 1}); // no bound is looked at
    CSerializationContext context;
    const auto CountAfter = [&](const char* pszXml) {
        pCol->FromXml(pszXml, context);
        return pCol->GetCount();
    };
    EXPECT_EQ(CountAfter("<r xmlns='urn:v'><v a='1'>1</v><v>2</v><x/><v>3</v></r>"), 2);
    EXPECT_EQ(CountAfter("<r xmlns='urn:v'><w/><v>3</v></r>"), 2);
    EXPECT_EQ(CountAfter("<r><v>3</v></r>"), 2);
    context.SetIgnoreNamespaces(true);
    EXPECT_EQ(CountAfter("<r><v>3</v></r>"), 3);
    EXPECT_EQ(FailureOf([&] { CountAfter("<r><v>4</v><v>x</v></r>"); }),
              "Value: The value [x] can not be converted to a i4");
    EXPECT_EQ(pCol->GetCount(), 4) << "what came before the bad value stays";
}

TEST(ValueCollection, TheCountIsCheckedBeforeAnythingIsWritten)
{
    const auto FailureWith = [](int iMinOccurs, int iMaxOccurs) {
        const auto pCol = Make<CstringCol>({nullptr, -1, nullptr, iMinOccurs, iMaxOccurs});
        for (int n = 0; n < 3; ++n)
            pCol->Add("text");
        return FailureOf([&] { RecordedBy(*pCol); });
    };
    const std::string strTooMany =
        "Validation: The Maximum number of [v] elements allowed in this collection is ";
    EXPECT_EQ(FailureWith(3, 3), "none");
    EXPECT_EQ(FailureWith(0, -2), strTooMany + "-2");
    EXPECT_EQ(FailureWith(4, 2), strTooMany + "2"); // which is tested first
    EXPECT_EQ(FailureWith(4, -1),
              "Validation: The Minimum number of [v] elements allowed in this collection is 4");
    EXPECT_EQ(FailureOf([] { Make<Ci4Col>()->GetTargetNamespace(); }),
              "Qn: CXmlCollectionBase::GetTargetNamespace Should not be used from within a "
              "Collection (program logic error)");
}

TEST(ValueCollection, TheConstructorChoosesFormatAndWhitespaceRule)
{
    const auto Written = [](const auto& pCol, const char* pszText) {
        pCol->AddFromString(pszText);
        return RecordedBy(*pCol);
    };
    EXPECT_EQ(Written(Make<Cr4Col>({nullptr, -1, "%.2f"}), "0.5"), "<v {urn:v}\n0.50 11\n>\n");
    EXPECT_EQ(Written(Make<Cr8Col>({nullptr, -1, "%.2f"}), "-.125"), "<v {urn:v}\n-0.12 12\n>\n");
    EXPECT_EQ(Written(Make<CdecimalCol>({nullptr, -1, "2"}), "1.25"), "<v {urn:v}\n1.75 25\n>\n");
    const auto pReplacing = Make<CstringCol>({}, CWhitespaceUtils::WhitespaceRule_Replace);
    EXPECT_EQ(Written(pReplacing, " a\tb\n"), "<v {urn:v}\n a b  23\n>\n");
}

TEST(ValueCollection, ValuesGoInAndOutByPlace)
{
    // Removals in front leave slots behind that later ones use or close up.
    const auto pCol = Make<Ci4Col>();
    std::vector<long> vecModel;
    for (long n = 0; n < 200; ++n) {
        const int iPlace = static_cast<int>(n * 7 % (pCol->GetCount() + 1));
        pCol->AddAt(iPlace, n);
        vecModel.insert(vecModel.begin() + iPlace, n);
        if (n % 3 != 0) {
            const int iRemove = n % 2 ? 0 : static_cast<int>(n % pCol->GetCount());
            pCol->Remove(iRemove);
            vecModel.erase(vecModel.begin() + iRemove);
        }
        std::vector<long> vecItems;
        for (int i = 0; i < pCol->GetCount(); ++i)
            vecItems.push_back(pCol->Item(i));
        ASSERT_EQ(vecItems, vecModel) << n;
    }
}

TEST(ValueCollection, WhatIsRefusedIsAnnouncedFirst)
{
    CRecordingSink sink;
    const auto FailureAndEvents = [&](auto call) {
        const std::string strFailure = FailureOf(call);
        return strFailure + " after " + sink.TakeHeard();
    };
    const auto pCol = Make<CstringCol>({nullptr, 3});
    pCol->Add("one");
    pCol->AddEventListener(&sink);
    // The index is looked at before the facets.
    for (const int iPlace : {-1, 2})
        EXPECT_EQ(FailureAndEvents([&] { pCol->AddAt(iPlace, "abcd"); }),
                  "Param: Index out of range after 1(1) ");
    EXPECT_EQ(FailureAndEvents([&] { pCol->Add("abcd"); }),
              "Qn: Invalid Value for v [abcd]. after 1(1) ");
    EXPECT_EQ(FailureAndEvents([&] { pCol->Remove(1); }),
              "Param: Index 1 is out of range, use 0 - 1 after 3:1(1) ");
    EXPECT_EQ(FailureAndEvents([&] { pCol->Remove(-1); }),
              "Param: Index -1 is out of range, use 0 - 1 after 3:null(1) ");
    EXPECT_EQ(FailureOf([&] { pCol->Item(1); }), "Param: Index 1 is out of range, use 0 - 1");

    // Dates are tested before; only their index comes after the event.
    const auto pDates = Make<CdateCol>({"2001-05-09"});
    pDates->AddEventListener(&sink);
    EXPECT_EQ(FailureAndEvents([&] { pDates->AddAt(5, CDateTime(2001, 5, 8)); }),
              "Qn: Invalid Value for v [2001-05-08]. after ");
    EXPECT_EQ(FailureAndEvents([&] { pDates->AddAt(1, CDateTime(2001, 5, 9)); }),
              "Param: Index out of range after 1(0) ");
}

TEST(ValueCollection, ListenersHearEachStepInOrder)
{
    const auto pCol = Make<Ci4Col>();
    CRecordingSink sink;
    pCol->Add(1);
    pCol->AddEventListener(&sink);
    pCol->Add(42);
    EXPECT_EQ(sink.TakeHeard(), "1(1) 2(2) 0(2) ");
    EXPECT_EQ(sink.m_vecData[0], sink.m_vecData[1]) << "one pointer to the value";
    pCol->Add(3);
    sink.TakeHeard();
    pCol->Remove(2);
    EXPECT_EQ(sink.TakeHeard(), "3:2(3) 4:0(2) 0(2) ") << "the first event alone names the index";
    pCol->Clear();
    EXPECT_EQ(sink.TakeHeard(), "3:0(2) 4:0(1) 0(1) 3:0(1) 4:0(0) 0(0) ");
    pCol->Clear();
    EXPECT_EQ(sink.TakeHeard(), "");
}

TEST(ValueCollection, AListenerMayChangeTheValuesDuringAnAdd)
{
    class CClearer : public CRecordingSink
    {
        void OnEvent(CXmlObjectBase* pSender, MsgType message, void*) override
        {
            if (message == MsgType_Add)
                dynamic_cast<CXmlCollectionBase&>(*pSender).Clear();
        }
    } sink;
    for (const int iPlace : {0, 1}) {
        const auto pCol = Make<Ci4Col>();
        for (long n = 0; n < 4; ++n)
            pCol->Add(n);
        pCol->Remove(0); // leaves a slot behind, which Clear takes away
        pCol->AddEventListener(&sink);
        EXPECT_EQ(FailureOf([&] { pCol->AddAt(iPlace, 7); }),
                  iPlace == 0 ? "none" : "Param: Index out of range");
        EXPECT_EQ(RecordedBy(*pCol), iPlace == 0 ? "<v {urn:v}\n7 5\n>\n" : "");
    }
}

TEST(ValueCollection, ClearIsLinear)
{
    // A vector that closes the gap at each removal takes a quarter of an hour over this.
    const int nItems = 1000000;
    const auto pCol = Make<CstringCol>();
    for (int n = 0; n < nItems; ++n)
        pCol->Add("text");
    pCol->Clear();
    EXPECT_EQ(pCol->GetCount(), 0);
}

template <class TCol>
void ExpectDatesOfOneKind(DTType kind, const std::string& strKind)
{
    const auto pCol = Make<TCol>();
    CRecordingSink sink;
    pCol->AddEventListener(&sink);
    const std::string strFailure = "Param: Dates added to this collection must be of type ";
    for (int n = dt_yearZero; n <= dt_gMonthDay; ++n)
        EXPECT_EQ(FailureOf([&] { pCol->AddAt(0, CDateTime(static_cast<DTType>(n))); }),
                  n == kind ? "none" : strFailure + strKind);
    EXPECT_EQ(sink.TakeHeard(), "1(0) 2(1) 0(1) ") << strKind << ", the others before any event";
    EXPECT_EQ(pCol->Item(0).GetType(), kind);
    pCol->Remove(0);
    EXPECT_EQ(sink.TakeHeard(), "3:0(1) 4:0(0) 0(0) ");
    EXPECT_EQ(pCol->GetCount(), 0);
}

TEST(ValueCollection, DatesAreOfOneKind)
{
    ExpectDatesOfOneKind<CdatetimeCol>(dt_dateTime, "dt_dateTime");
    ExpectDatesOfOneKind<CdateCol>(dt_date, "dt_date");
    ExpectDatesOfOneKind<CyearMonthCol>(dt_gYearMonth, "dt_gYearMonth");
    ExpectDatesOfOneKind<CtimeCol>(dt_time, "dt_time");
    ExpectDatesOfOneKind<CmonthDayCol>(dt_gMonthDay, "dt_gMonthDay");
}

} // namespace
