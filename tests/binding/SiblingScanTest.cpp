#include "tests/model/Entries.h"

#include "QnXmlLib16/binding/ElementInfoChoice.h"
#include "QnXmlLib16/binding/ElementInfoSeq.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

constexpr auto kSequence = XmlElementGroupType_Sequence;
constexpr auto kChoice = XmlElementGroupType_Choice;

CElementInfo* Mnd(const char* pszName, int nProperty)
{
    return Prim<CElementInfoSeqPrimMnd>(pszName, nProperty);
}

CElementInfo* Items(const char* pszName, int nProperty)
{
    return new CElementInfoSeqPrimCol(pszName, "", nProperty);
}

CHeld HeldTexts(int nProperty, const char* pszName, int iMin = 0, int iMax = -1)
{
    return HeldItems(nProperty, [=] { return MakeTexts(pszName, iMin, iMax); });
}

// A pseudo child that the property holds.
CElementInfo* Group(int nProperty, bool bRequired = false)
{
    return new CElementInfoSeqClsMnd("g", "", nProperty, kPseudo, MakeSheet, 0, bRequired);
}

CElementInfo* Selected(int nProperty, const CTables& tables)
{
    return new CElementInfoChoiceClsOpt("g", "", nProperty, kPseudo, MakeSheet,
                                        tables.GetClassId());
}

std::string Repeat(const char* psz, int nTimes)
{
    std::string strText;
    for (int i = 0; i < nTimes; ++i)
        strText += psz;
    return strText;
}

} // namespace

TEST(UnknownElements, AreSkippedInFrontOfAGroupWithoutChangingWhatItReads)
{
    const CTables pair(kSequence, kPseudo, {Mnd("b", 0), Mnd("c", 1)});
    ExpectReads(CTables(kSequence, kReal, {Group(0), Prim<CElementInfoSeqPrimOpt>("z", 1)}, {},
                        {HeldSheet(0, pair)}),
                {{"u", "<x/><x/><b>1</b><x/><x/><c>2</c><z>3</z>", "0:{0:1 1:2} 1:3"},
                 {"u", "<b>1</b><x/><b>2</b><x/><c>3</c>", "0:{0:1 1:3}"},
                 // A group that began and did not end leaves nothing.
                 {"u", "<x/><b>1</b><x/><x/><z>3</z>", ""},
                 {"u", "<x/><b>1</b><x/><b>2</b>", ""},
                 {"u", "<c>1</c><x/><b>2</b><x/>", ""}});

    // Each attempt starts with an empty collection, so one too many at first is none too many
    // later.
    const CTables bounded(kSequence, kPseudo, {Items("b", 0), Mnd("c", 1)}, {},
                          {HeldTexts(0, "b", 2, 2)});
    ExpectReads(CTables(kSequence, kReal, {Group(0)}, {}, {HeldSheet(0, bounded)}),
                {{"u", "<x/><b>1</b><x/><b>2</b><x/><c>3</c>", "0:{0:[1|2] 1:3}"},
                 {"u", "<b>1</b><b>2</b><b>3</b><c>4</c>", "0:{0:[2|3] 1:4}"},
                 {"u", "<b>1</b><c>4</c>", ""}});

    // A child group that may be missing keeps what its last attempt has read.
    const CTables keeping(kSequence, kPseudo, {Group(0), Prim<CElementInfoSeqPrimOpt>("z", 1)}, {},
                          {HeldSheet(0, pair)});
    ExpectReads(CTables(kChoice, kReal, {Selected(0, keeping)}),
                {{"u", "<x/><x/><z>1</z><x/><b>2</b>", "0:{0:{0:2} 1:1}"},
                 {"u", "<x/><b>1</b><x/><z>2</z>", "0:{1:2}"}});

    // Two groups share the search for nothing but their own members.
    const CTables other(kSequence, kPseudo, {Mnd("b", 0), Mnd("d", 1)});
    ExpectReads(
        CTables(kChoice, kReal,
                {Selected(0, pair), Selected(1, other), Prim<CElementInfoChoicePrimOpt>("z", 2)}),
        {{"u", "<x/><b>1</b><x/><d>2</d>", "1:{0:1 1:2}"},
         {"u", "<x/><b>1</b><x/><c>2</c>", "0:{0:1 1:2}"},
         {"u", "<x/><b>1</b><x/><z>2</z>", "2:2"},
         {"u", "<x/><d>1</d><b>2</b>", ""}});
}

TEST(UnknownElements, OfADocumentAreForgottenWithIt)
{
    const CTables pair(kSequence, kPseudo, {Mnd("b", 0), Mnd("c", 1)});
    const CTables owner(kSequence, kReal, {Mnd("a", 0), Group(1)}, {}, {HeldSheet(1, pair)});
    const CSmartPtr<CSheet> pOwner(new CSheet(owner));
    std::string strInner;
    pOwner->m_before = [&](int nProperty, bool) {
        if (nProperty == 0)
            strInner = Read(pair, "<x/><b>1</b><x/><c>2</c>", "u");
    };
    EXPECT_EQ(Read(*pOwner, "<a>0</a><x/><b>3</b><x/><c>4</c>", "u"), "0:0 1:{0:3 1:4}");
    EXPECT_EQ(strInner, "0:1 1:2");
}

// Hundreds of thousands of siblings: seconds if all were gone through once, days if once per
// sibling.
TEST(UnknownElements, CostTheSameEachInFrontOfAnyGroup)
{
    const CTables one(kSequence, kPseudo, {Mnd("b", 0)});
    const CTables child(kSequence, kPseudo,
                        {new CElementInfoSeqClsMnd("b", "", 0, kReal, MakeSheet, 0, false)}, {},
                        {HeldSheet(0, Vice())});
    const CTables abstract(kSequence, kPseudo,
                           {new CElementInfoSeqAbsClsMnd("b", "", 0, kReal, MakeTool)});
    const CTables items(kSequence, kPseudo, {Items("b", 0)}, {}, {HeldTexts(0, "b", 1)});
    const CTables open(kSequence, kPseudo, {Mnd("x", 0), Items("y", 1), Mnd("b", 2)}, {},
                       {HeldTexts(1, "y")});
    const CTables optional(kSequence, kPseudo, {Prim<CElementInfoSeqPrimOpt>("x", 0), Mnd("b", 1)});
    const CTables nested(kSequence, kPseudo, {Group(0, true)}, {}, {HeldSheet(0, one)});
    const CTables twice(kSequence, kPseudo, {Group(0, true)}, {}, {HeldSheet(0, nested)});
    const int nCount = 100000;
    const std::string strUnknown = Repeat("<x/>", nCount);
    const auto readHeld = [](const CTables& group, const std::string& strXml) {
        return Read(CTables(kSequence, kReal, {Group(0)}, {}, {HeldSheet(0, group)}), strXml, "u");
    };
    for (const CTables* const pGroup :
         {&one, &child, &abstract, &items, &open, &optional, &nested, &twice}) {
        EXPECT_EQ(readHeld(*pGroup, strUnknown), "");
        EXPECT_EQ(Read(CTables(kChoice, kReal, {Selected(0, *pGroup)}), strUnknown, "u"), "");
        const auto makeItems = [pGroup] {
            return new CSheetCol("", 0, -1, kPseudo, [pGroup](CXmlElement*) {
                return CSmartPtr<CSheet>(new CSheet(*pGroup, ""));
            });
        };
        const CTables collected(kSequence, kReal, {new CElementInfoSeqClsCol("g", "", 0, kPseudo)},
                                {}, {HeldItems(0, makeItems)});
        EXPECT_EQ(Read(collected, strUnknown, "u"), "");
    }
    // What follows an attempt that failed late is not read once for each sibling in front of it.
    const CTables late(kSequence, kPseudo, {Mnd("a", 0), Items("y", 1), Mnd("b", 2)}, {},
                       {HeldTexts(1, "y")});
    EXPECT_EQ(readHeld(late, strUnknown + "<a/>" + Repeat("<y/>", nCount)), "");
}
