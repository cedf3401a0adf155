#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/collections/base64BinaryCol.h"
#include "QnXmlLib16/collections/booleanCol.h"
#include "QnXmlLib16/collections/dateCol.h"
#include "QnXmlLib16/collections/datetimeCol.h"
#include "QnXmlLib16/collections/dayCol.h"
#include "QnXmlLib16/collections/decimalCol.h"
#include "QnXmlLib16/collections/durationCol.h"
#include "QnXmlLib16/collections/hexBinaryCol.h"
#include "QnXmlLib16/collections/i1Col.h"
#include "QnXmlLib16/collections/i2Col.h"
#include "QnXmlLib16/collections/i4Col.h"
#include "QnXmlLib16/collections/i8Col.h"
#include "QnXmlLib16/collections/integerCol.h"
#include "QnXmlLib16/collections/monthCol.h"
#include "QnXmlLib16/collections/monthDayCol.h"
#include "QnXmlLib16/collections/r4Col.h"
#include "QnXmlLib16/collections/r8Col.h"
#include "QnXmlLib16/collections/stringCol.h"
#include "QnXmlLib16/collections/timeCol.h"
#include "QnXmlLib16/collections/ui1Col.h"
#include "QnXmlLib16/collections/ui2Col.h"
#include "QnXmlLib16/collections/ui4Col.h"
#include "QnXmlLib16/collections/ui8Col.h"
#include "QnXmlLib16/collections/yearCol.h"
#include "QnXmlLib16/collections/yearMonthCol.h"
#include "QnXmlLib16/support/SmartPtr.h"
#include "Recorders.h"

#include <gtest/gtest.h>

#include <limits>
#include <numeric>

using namespace QnXmlLib16;

namespace {

struct CFacets
{
    const char* pszMinInclusive = nullptr;
    long lMaxLength = -1;
    const char* pszFormat = nullptr;
    int iMinOccurs = 0;
    int iMaxOccurs = -1;
    CWhitespaceUtils::WhitespaceRule rule = CWhitespaceUtils::WhitespaceRule_Collapse;
};

template <class TCol, class TBase = TCol>
CSmartPtr<TBase> Make(const CFacets& facets = {})
{
    return new TCol("v", "urn:v", facets.iMinOccurs, facets.iMaxOccurs, nullptr, -1,
                    facets.lMaxLength, facets.pszMinInclusive, nullptr, nullptr, nullptr, -1, -1,
                    -1, facets.rule, facets.pszFormat);
}

std::string WrittenBy(const CXmlTypeCollection& col)
{
    CRecordingWriter writer;
    CXmlObjectBase::ToXml_Int(&col, &writer, false, "unused",
                              CSerializationContext::m_defaultContext, false);
    return writer.m_strLines;
}

struct CFamilyRow
{
    CSmartPtr<CXmlTypeCollection> (*fnMake)(const CFacets&);
    ItemType itemType;    // of the collection
    ItemType writtenType; // as the writer is told
    const char* pszText;
    const char* pszWritten;
    CFacets refusing;      // facets that refuse the text
    const char* pszBroken; // a text of no value, null where every text is one
};

template <class TCol>
CFamilyRow Row(ItemType itemType, const char* pszText, const char* pszWritten,
               const CFacets& refusing, const char* pszBroken, ItemType writtenType = it_none)
{
    return {&Make<TCol, CXmlTypeCollection>,
            itemType,
            writtenType == it_none ? itemType : writtenType,
            pszText,
            pszWritten,
            refusing,
            pszBroken};
}

CFacets AtLeast(const char* pszMinimum)
{
    CFacets facets;
    facets.pszMinInclusive = pszMinimum;
    return facets;
}

CFacets NoLonger(long lLength)
{
    CFacets facets;
    facets.lMaxLength = lLength;
    return facets;
}

const std::vector<CFamilyRow>& Family()
{
    static const std::vector<CFamilyRow> rows = {
        Row<ChexBinaryCol>(it_hexBinary, "0aff", "0AFF", NoLonger(1), "0g"),
        Row<Cbase64BinaryCol>(it_base64Binary, "aGk=", "aGk=", NoLonger(1), nullptr),
        Row<Ci1Col>(it_i1, "-128", "-128", AtLeast("-127"), "-129"),
        Row<Ci2Col>(it_i2, "-32768", "-32768", AtLeast("0"), "32768"),
        Row<Ci4Col>(it_i4, "9223372036854775807", "9223372036854775807", NoLonger(-1), "x"),
        Row<Ci4Col>(it_i4, "-9223372036854775808", "-9223372036854775808", AtLeast("0"), ""),
        Row<Ci8Col>(it_i8, "-5", "-5", AtLeast("-4"), "9223372036854775808"),
        Row<Cui1Col>(it_ui1, "255", "255", NoLonger(-1), "256"),
        Row<Cui1Col>(it_ui1, "1", "1", AtLeast("2"), "-1"),
        Row<Cui2Col>(it_ui2, "1", "1", AtLeast("2"), "65536"),
        Row<Cui4Col>(it_ui4, "1", "1", AtLeast("18446744073709551615"), "1.5"),
        Row<Cui8Col>(it_ui8, "1", "1", AtLeast("2"), "x"),
        Row<Cr4Col>(it_r4, "0.5", "0.5", AtLeast("1"), "x"),
        Row<Cr8Col>(it_r8, "1e300", "1e+300", AtLeast("INF"), "x"),
        Row<CdurationCol>(it_duration, "P1D", "P1D", AtLeast("P2D"), "1D"),
        Row<CyearMonthCol>(it_yearMonth, "2001-05", "2001-05", AtLeast("2001-06"), "2001-5",
                           it_datetime),
        Row<CmonthDayCol>(it_monthDay, "--05-09", "--05-09", AtLeast("--05-10"), "05-09",
                          it_datetime),
        Row<CyearCol>(it_year, "2001", "2001", AtLeast("2002"), "x"),
        Row<CmonthCol>(it_month, "--05", "--05", AtLeast("--06"), "5"),
        Row<CdayCol>(it_day, "---09", "---09", AtLeast("---10"), "9"),
        Row<CdateCol>(it_date, "2001-05-09", "2001-05-09", AtLeast("2001-05-10"), "2001-05-32",
                      it_datetime),
        Row<CdatetimeCol>(it_datetime, "2001-05-09T12:00:00", "2001-05-09T12:00:00",
                          AtLeast("2001-05-09T12:00:01"), "2001-05-09"),
        Row<CtimeCol>(it_time, "12:00:00", "12:00:00", AtLeast("12:00:01"), "12", it_datetime),
        Row<CstringCol>(it_string, "hello", "hello", NoLonger(4), nullptr),
        Row<CbooleanCol>(it_boolean, "1", "true", NoLonger(-1), "yes"),
        Row<CdecimalCol>(it_decimal, "1.50", "1.5", AtLeast("1.51"), "x"),
        Row<CintegerCol>(it_integer, "123456789012345678901", "123456789012345678901",
                         AtLeast("123456789012345678902"), "1.5x"),
    };
    return rows;
}

TEST(ValueCollection, EachTypeHasItsTextItsTypeCodeAndItsFacets)
{
    for (const CFamilyRow& row : Family()) {
        SCOPED_TRACE(testing::Message() << row.itemType << " " << row.pszText);
        const auto pCol = row.fnMake({});
        EXPECT_EQ(pCol->GetItemType(), row.itemType);
        EXPECT_EQ(WrittenBy(*pCol), "");
        pCol->AddFromString(row.pszText);
        const std::string strItem = "<v {urn:v}\n" + std::string(row.pszWritten) + " " +
                                    std::to_string(row.writtenType) + "\n>\n";
        EXPECT_EQ(WrittenBy(*pCol), strItem);

        if (row.pszBroken) {
            EXPECT_NE(FailureOf([&] { pCol->AddFromString(row.pszBroken); }), "none");
        }
        const auto pFaceted = row.fnMake(row.refusing);
        if (row.refusing.pszMinInclusive || row.refusing.lMaxLength >= 0) {
            EXPECT_EQ(FailureOf([&] {
                          pFaceted->AddFromString(row.pszText);
                      }).rfind("Qn: Invalid Value for v [", 0),
                      0u);
            EXPECT_EQ(pFaceted->GetCount(), 0);
        }
        EXPECT_EQ(pCol->GetCount(), 1);
        EXPECT_EQ(WrittenBy(*pCol), strItem);
    }
}

TEST(ValueCollection, ARunOfNamesakesIsReadAndAddsToWhatIsThere)
{
    for (const CFamilyRow& row : Family()) {
        SCOPED_TRACE(testing::Message() << row.itemType << " " << row.pszText);
        const auto pCol = row.fnMake({});
        const std::string strItem = "<v>\n " + std::string(row.pszText) + " </v>";
        const std::string strXml =
            "<r xmlns='urn:v'>" + strItem + strItem + "<w/>" + strItem + "</r>";
        pCol->FromXml(strXml.c_str(), CSerializationContext::m_defaultContext);
        EXPECT_EQ(pCol->GetCount(), 2);
        pCol->FromXml(strXml.c_str(), CSerializationContext::m_defaultContext);
        EXPECT_EQ(pCol->GetCount(), 4);
    }
}

TEST(ValueCollection, ReadingStopsAtTheFirstOtherElement)
{
    struct Row
    {
        const char* pszXml;
        bool bIgnoreNamespaces;
        int nRead;
    };
    const Row rows[] = {
        {"<r/>", false, 0},
        {"<r xmlns='urn:v'><w/><v>1</v></r>", false, 0},
        {"<r><v>1</v></r>", false, 0},
        {"<r><v>1</v></r>", true, 1},
        {"<r xmlns='urn:v'><v a='1'>1</v><v>2</v><x/></r>", false, 2},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszXml);
        const auto pCol = Make<Ci4Col>({nullptr, -1, nullptr, 0, 1}); // no bound is looked at
        CSerializationContext context;
        context.SetIgnoreNamespaces(row.bIgnoreNamespaces);
        pCol->FromXml(row.pszXml, context);
        EXPECT_EQ(pCol->GetCount(), row.nRead);
    }
    const auto pCol = Make<Ci4Col>();
    EXPECT_EQ(CXmlObjectBase::FromXml_Int(pCol.GetPtr(), nullptr, nullptr,
                                          CSerializationContext::m_defaultContext),
              nullptr);
    EXPECT_EQ(FailureOf([&] {
                  pCol->FromXml("<r xmlns='urn:v'><v>1</v><v>x</v><v>2</v></r>",
                                CSerializationContext::m_defaultContext);
              }),
              "Value: The value [x] can not be converted to a i4");
    EXPECT_EQ(pCol->GetCount(), 1) << "what came before the bad value stays";
}

TEST(ValueCollection, TheCountIsCheckedBeforeAnythingIsWritten)
{
    const auto pCol = Make<CstringCol>({nullptr, -1, nullptr, 2, 3});
    pCol->Add("one");
    CRecordingWriter writer;
    const auto Write = [&] {
        CXmlObjectBase::ToXml_Int(pCol.GetPtr(), &writer, false, "",
                                  CSerializationContext::m_defaultContext, false);
    };
    EXPECT_EQ(FailureOf(Write),
              "Validation: The Minimum number of [v] elements allowed in this collection is 2");
    EXPECT_EQ(writer.m_strLines, "");
    for (int n = 0; n < 3; ++n)
        pCol->Add("more"); // past the maximum, which is no matter yet
    EXPECT_EQ(FailureOf(Write),
              "Validation: The Maximum number of [v] elements allowed in this collection is 3");
    EXPECT_EQ(writer.m_strLines, "");
    pCol->Remove(0);
    EXPECT_EQ(FailureOf(Write), "none");
}

TEST(ValueCollection, TheFormatOfTheConstructorShapesFloatsAndDecimals)
{
    CFacets facets;
    facets.pszFormat = "%.2f";
    const auto pR4 = Make<Cr4Col>(facets);
    const auto pR8 = Make<Cr8Col>(facets);
    facets.pszFormat = "2";
    const auto pDecimal = Make<CdecimalCol>(facets);
    pR4->Add(0.5f);
    pR8->Add(-0.125);
    pDecimal->AddFromString("1.25");
    EXPECT_EQ(WrittenBy(*pR4), "<v {urn:v}\n0.50 11\n>\n");
    EXPECT_EQ(WrittenBy(*pR8), "<v {urn:v}\n-0.12 12\n>\n");
    EXPECT_EQ(WrittenBy(*pDecimal), "<v {urn:v}\n1.75 25\n>\n");
}

TEST(ValueCollection, TheWhitespaceRuleComesFirst)
{
    CFacets facets;
    facets.rule = CWhitespaceUtils::WhitespaceRule_Replace;
    const auto pCol = Make<CstringCol>(facets);
    pCol->AddFromString(" a\tb\n");
    EXPECT_EQ(pCol->Item(0), " a b ");
}

TEST(ValueCollection, ValuesGoInAndOutByPlace)
{
    const auto pCol = Make<CstringCol>();
    pCol->Add("b");
    pCol->AddAt(0, "a");
    pCol->AddAt(2, "d");
    pCol->AddAt(2, "c");
    std::string strAll;
    for (int n = 0; n < pCol->GetCount(); ++n)
        strAll += pCol->Item(n);
    EXPECT_EQ(strAll, "abcd");
    pCol->Item(0) += "changed";
    EXPECT_EQ(pCol->Item(0), "a") << "a copy";

    // Bits, which a vector packs.
    const auto pBits = Make<CbooleanCol>();
    pBits->Add(true);
    pBits->Add(false);
    pBits->AddAt(1, true);
    pBits->Remove(0);
    EXPECT_EQ(WrittenBy(*pBits), "<v {urn:v}\ntrue 24\n>\n<v {urn:v}\nfalse 24\n>\n");
}

TEST(ValueCollection, BytesAreShared)
{
    const auto pCol = Make<ChexBinaryCol>();
    const CBinaryData data("bytes");
    pCol->Add(data);
    pCol->Add(data);
    EXPECT_EQ(pCol->Item(1).GetData(), data.GetData());
    pCol->Remove(0);
    EXPECT_EQ(pCol->Item(0).GetData(), data.GetData());
}

TEST(ValueCollection, RemovalsAtBothEndsKeepTheOrder)
{
    // Removals in front leave slots behind that later ones use or close up.
    const auto pCol = Make<Ci4Col>();
    std::vector<long> vecModel;
    for (long n = 0; n < 200; ++n) {
        const int iPlace = static_cast<int>(n * 7 % (static_cast<long>(vecModel.size()) + 1));
        pCol->AddAt(iPlace, n);
        vecModel.insert(vecModel.begin() + iPlace, n);
        if (n % 3 != 0) {
            const int iRemove =
                n % 2 ? 0 : static_cast<int>(n % static_cast<long>(vecModel.size()));
            pCol->Remove(iRemove);
            vecModel.erase(vecModel.begin() + iRemove);
        }
        ASSERT_EQ(pCol->GetCount(), static_cast<int>(vecModel.size()));
        for (std::size_t i = 0; i < vecModel.size(); ++i)
            ASSERT_EQ(pCol->Item(static_cast<int>(i)), vecModel[i]) << n;
    }
}

TEST(ValueCollection, IndexesOutsideTheValuesAreRefused)
{
    const auto pCol = Make<Ci4Col>();
    EXPECT_EQ(FailureOf([&] { pCol->Item(0); }), "Param: Index 0 is out of range, use 0 - 0");
    pCol->Add(1);
    pCol->Add(2);
    EXPECT_EQ(FailureOf([&] { pCol->Item(-1); }), "Param: Index -1 is out of range, use 0 - 2");
    EXPECT_EQ(FailureOf([&] { pCol->Item(2); }), "Param: Index 2 is out of range, use 0 - 2");
    EXPECT_EQ(FailureOf([&] { pCol->Remove(2); }), "Param: Index 2 is out of range, use 0 - 2");
    EXPECT_EQ(FailureOf([&] { pCol->AddAt(3, 1); }), "Param: Index out of range");
    EXPECT_EQ(pCol->GetCount(), 2);
}

TEST(ValueCollection, ARefusedValueIsAnnouncedFirst)
{
    const auto pCol = Make<CstringCol>(NoLonger(3));
    CRecordingSink sink;
    pCol->AddEventListener(&sink);
    EXPECT_EQ(FailureOf([&] { pCol->AddAt(-1, "abc"); }), "Param: Index out of range");
    EXPECT_EQ(sink.TakeHeard(), "1 ");
    EXPECT_EQ(FailureOf([&] { pCol->Add("abcd"); }), "Qn: Invalid Value for v [abcd].");
    EXPECT_EQ(sink.TakeHeard(), "1 ");
    EXPECT_EQ(FailureOf([&] { pCol->AddAt(1, "abcd"); }), "Param: Index out of range")
        << "the index is looked at before the facets";
    EXPECT_EQ(pCol->GetCount(), 0);
}

TEST(ValueCollection, AListenerMayChangeTheValuesDuringAnAdd)
{
    class CClearer : public CRecordingSink
    {
    public:
        explicit CClearer(Ci4Col& col) : m_col(col) {}
        void OnEvent(CXmlObjectBase* pSender, MsgType message, void* pData) override
        {
            CRecordingSink::OnEvent(pSender, message, pData);
            if (message == MsgType_Add)
                m_col.Clear();
        }
        Ci4Col& m_col;
    };
    const auto pCol = Make<Ci4Col>();
    for (long n = 0; n < 4; ++n)
        pCol->Add(n);
    pCol->Remove(0); // leaves a slot behind, which Clear takes away
    CClearer sink(*pCol);
    pCol->AddEventListener(&sink);
    EXPECT_EQ(FailureOf([&] { pCol->AddAt(1, 6); }), "Param: Index out of range");
    pCol->AddAt(0, 7);
    ASSERT_EQ(pCol->GetCount(), 1);
    EXPECT_EQ(pCol->Item(0), 7);

    pCol->RemoveEventListener(&sink);
    for (long n = 0; n < 3; ++n)
        pCol->Add(n);
    pCol->Remove(0);
    pCol->AddEventListener(&sink);
    pCol->AddAt(0, 8);
    ASSERT_EQ(pCol->GetCount(), 1);
    EXPECT_EQ(pCol->Item(0), 8);
}

TEST(ValueCollection, AnAddCarriesOnePointerToTheValue)
{
    class CReader : public CRecordingSink
    {
    public:
        void OnEvent(CXmlObjectBase* pSender, MsgType message, void* pData) override
        {
            CRecordingSink::OnEvent(pSender, message, pData);
            if (pData)
                m_vecValues.push_back(*static_cast<long*>(pData));
        }
        std::vector<long> m_vecValues;
    };
    const auto pCol = Make<Ci4Col>();
    CReader sink;
    pCol->AddEventListener(&sink);
    pCol->Add(42);
    EXPECT_EQ(sink.TakeHeard(), "1 2 0 ");
    EXPECT_EQ(sink.m_vecValues, (std::vector<long>{42, 42}));
    EXPECT_EQ(sink.m_vecData[0], sink.m_vecData[1]);
    EXPECT_EQ(sink.m_pSender, pCol.GetPtr());
}

TEST(ValueCollection, RemovalNamesTheIndexInItsFirstEventOnly)
{
    const auto pCol = Make<Ci4Col>();
    for (long n = 0; n < 3; ++n)
        pCol->Add(n);
    CRecordingSink sink([&] { return pCol->GetCount(); });
    pCol->AddEventListener(&sink);
    pCol->Remove(2);
    EXPECT_EQ(sink.TakeHeard(), "3:2(3) 4:0(2) 0(2) ");
    pCol->Clear();
    EXPECT_EQ(sink.TakeHeard(), "3:0(2) 4:0(1) 0(1) 3:0(1) 4:0(0) 0(0) ");
    pCol->Clear();
    EXPECT_EQ(sink.TakeHeard(), "");
}

TEST(ValueCollection, ABadRemovalIsAnnouncedFirst)
{
    const auto pCol = Make<Ci4Col>();
    pCol->Add(1);
    CRecordingSink sink;
    pCol->AddEventListener(&sink);
    EXPECT_EQ(FailureOf([&] { pCol->Remove(1); }), "Param: Index 1 is out of range, use 0 - 1");
    EXPECT_EQ(sink.TakeHeard(), "3:1 ");
    EXPECT_EQ(pCol->GetCount(), 1);
}

TEST(ValueCollection, ClearGoesThroughAnOverriddenRemove)
{
    class CCountingCol : public Ci4Col
    {
    public:
        CCountingCol()
            : Ci4Col("v", "", 0, -1, "", -1, -1, "", "", "", "", -1, -1, -1,
                     CWhitespaceUtils::WhitespaceRule_None, "")
        {}
        void Remove(int iIndex) override
        {
            m_strRemoved += std::to_string(Item(iIndex)) + "@" + std::to_string(iIndex) + " ";
            Ci4Col::Remove(iIndex);
        }
        std::string m_strRemoved;
    };
    CCountingCol col;
    for (long n = 7; n < 10; ++n)
        col.Add(n);
    col.Clear();
    EXPECT_EQ(col.m_strRemoved, "7@0 8@0 9@0 ");
}

TEST(ValueCollection, ClearIsLinear)
{
    // A vector that closes the gap at each removal takes a quarter of an hour over this.
    const int nItems = 1000000;
    const auto pCol = Make<CstringCol>();
    for (int n = 0; n < nItems; ++n)
        pCol->Add("text");
    CRecordingSink sink;
    pCol->AddEventListener(&sink);
    pCol->Clear();
    EXPECT_EQ(sink.m_nHeard, 3 * nItems);
    EXPECT_EQ(pCol->GetCount(), 0);
}

TEST(DateCollection, AnotherKindIsRefusedBeforeAnyEvent)
{
    struct Row
    {
        CSmartPtr<CdatetimeBaseCol> pCol;
        DTType kind;
        const char* pszKind;
    };
    const Row rows[] = {
        {Make<CdatetimeCol, CdatetimeBaseCol>(), dt_dateTime, "dt_dateTime"},
        {Make<CdateCol, CdatetimeBaseCol>(), dt_date, "dt_date"},
        {Make<CyearMonthCol, CdatetimeBaseCol>(), dt_gYearMonth, "dt_gYearMonth"},
        {Make<CtimeCol, CdatetimeBaseCol>(), dt_time, "dt_time"},
        {Make<CmonthDayCol, CdatetimeBaseCol>(), dt_gMonthDay, "dt_gMonthDay"},
    };
    for (const Row& row : rows) {
        CRecordingSink sink;
        row.pCol->AddEventListener(&sink);
        for (int n = dt_yearZero; n <= dt_gMonthDay; ++n) {
            SCOPED_TRACE(testing::Message() << row.pszKind << " given " << n);
            const CDateTime value(static_cast<DTType>(n));
            if (n == row.kind) {
                row.pCol->Add(value);
                EXPECT_EQ(sink.TakeHeard(), "1 2 0 ");
                continue;
            }
            EXPECT_EQ(FailureOf([&] { row.pCol->AddAt(0, value); }),
                      std::string("Param: Dates added to this collection must be of type ") +
                          row.pszKind);
            EXPECT_EQ(sink.TakeHeard(), "");
        }
        EXPECT_EQ(row.pCol->GetCount(), 1);
        EXPECT_EQ(row.pCol->Item(0).GetType(), row.kind);
    }
}

TEST(DateCollection, FacetsComeBeforeTheEventAndTheIndexAfterIt)
{
    const auto pCol = Make<CdateCol>(AtLeast("2001-05-09"));
    CRecordingSink sink;
    pCol->AddEventListener(&sink);
    EXPECT_EQ(FailureOf([&] { pCol->AddAt(5, CDateTime(2001, 5, 8)); }),
              "Qn: Invalid Value for v [2001-05-08].");
    EXPECT_EQ(sink.TakeHeard(), "");
    EXPECT_EQ(FailureOf([&] { pCol->AddAt(1, CDateTime(2001, 5, 9)); }),
              "Param: Index out of range");
    EXPECT_EQ(sink.TakeHeard(), "1 ");
    pCol->Add(CDateTime(2001, 5, 9));
    sink.TakeHeard();
    EXPECT_EQ(FailureOf([&] { pCol->Remove(1); }), "Param: Index 1 is out of range, use 0 - 1");
    pCol->Remove(0);
    EXPECT_EQ(sink.TakeHeard(), "3:1 3:0 4:0 0 ");
    EXPECT_EQ(FailureOf([&] { pCol->Item(0); }), "Param: Index 0 is out of range, use 0 - 0");
}

TEST(DateCollection, EveryKindIsWrittenAsADateTime)
{
    // A final class says no more than its text; the type code is that of the base.
    class CShoutingCol : public CmonthDayCol
    {
    public:
        using CmonthDayCol::CmonthDayCol;
        std::string ItemToString(const CDateTime& value) const override
        {
            return CmonthDayCol::ItemToString(value) + "!";
        }
    };
    const auto pCol = Make<CShoutingCol>();
    pCol->AddFromString("--12-24");
    EXPECT_EQ(WrittenBy(*pCol), "<v {urn:v}\n--12-24! 20\n>\n");
}

} // namespace
