#include "tests/model/Entries.h"

#include "QnXmlLib16/QnXmlLib16.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

// A collection of one type in a bound class, and two of its values in canonical form.
struct Kind
{
    const char* name;
    CXmlCollectionBase* (*make)(const char* pszName, const char* pszPattern);
    const char* first;
    const char* second;
};

template <class TCol>
CXmlCollectionBase* Make(const char* pszName, const char* pszPattern)
{
    return new TCol(pszName, "", 0, 2, pszPattern, -1, -1, nullptr, nullptr, nullptr, nullptr, -1,
                    -1, -1, CWhitespaceUtils::WhitespaceRule_Collapse, nullptr);
}

const Kind kKinds[] = {
    {"hexBinary", Make<ChexBinaryCol>, "0AFF", "00"},
    {"base64Binary", Make<Cbase64BinaryCol>, "aGk=", "AAEC"},
    {"i1", Make<Ci1Col>, "-128", "127"},
    {"i2", Make<Ci2Col>, "-32768", "32767"},
    {"i4", Make<Ci4Col>, "-5", "9223372036854775807"},
    {"i8", Make<Ci8Col>, "-5", "9223372036854775807"},
    {"ui1", Make<Cui1Col>, "0", "255"},
    {"ui2", Make<Cui2Col>, "0", "65535"},
    {"ui4", Make<Cui4Col>, "1", "18446744073709551615"},
    {"ui8", Make<Cui8Col>, "1", "18446744073709551615"},
    {"r4", Make<Cr4Col>, "0.5", "-2"},
    {"r8", Make<Cr8Col>, "0.1", "-2"},
    {"duration", Make<CdurationCol>, "P1Y2M", "-PT3S"},
    {"yearMonth", Make<CyearMonthCol>, "2001-05", "2002-06"},
    {"monthDay", Make<CmonthDayCol>, "--05-09", "--12-31"},
    {"year", Make<CyearCol>, "2001", "1999"},
    {"month", Make<CmonthCol>, "--05", "--12"},
    {"day", Make<CdayCol>, "---09", "---31"},
    {"date", Make<CdateCol>, "2001-05-09", "1999-12-31"},
    {"datetime", Make<CdatetimeCol>, "2001-05-09T12:30:00", "1999-12-31T23:59:59Z"},
    {"time", Make<CtimeCol>, "12:30:00", "23:59:59.5"},
    {"string", Make<CstringCol>, "a b", "&lt;"},
    {"boolean", Make<CbooleanCol>, "true", "false"},
    {"decimal", Make<CdecimalCol>, "1.5", "-0.001"},
    {"integer", Make<CintegerCol>, "123456789012345678901234567890", "-1"},
};

std::string Item(const Kind& kind, const char* pszText)
{
    return "<" + std::string(kind.name) + ">" + pszText + "</" + kind.name + ">";
}

} // namespace

TEST(ValueCollectionMetadata, EveryTypeReadsWhatItWritesAndFailsAtTheItemsParent)
{
    const std::string strWrap = "CQnValidationException: Failed to process the element. @/r < ";
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.name);
        const CTables tables(XmlElementGroupType_Sequence, kReal,
                             {new CElementInfoSeqPrimCol(kind.name, "", 0)}, {},
                             {HeldItems(0, [&kind] { return kind.make(kind.name, "[^~]*"); })});
        const CSmartPtr<CSheet> pSheet(new CSheet(tables));
        const std::string strGood = Item(kind, kind.first);
        const std::string strBoth = strGood + Item(kind, kind.second);
        EXPECT_EQ(Read(*pSheet, strBoth + strGood),
                  strWrap + "CQnValidationException: The Maximum number of [" + kind.name +
                      "] elements allowed in this collection is 2");
        if (std::string(kind.name) != "base64Binary") { // which takes any text
            EXPECT_EQ(Read(*pSheet, strGood + Item(kind, "~")).find(strWrap), 0u);
            EXPECT_EQ(WriteChildren(*pSheet), strGood);
        }
        Read(*pSheet, strBoth);
        EXPECT_EQ(WriteChildren(*pSheet), strBoth);
        EXPECT_EQ(Read(*pSheet, ""), "");
        EXPECT_EQ(WriteChildren(*pSheet), "");
    }
}
