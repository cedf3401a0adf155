#include "tests/model/Entries.h"

#include "QnXmlLib16/binding/ElementInfoAll.h"
#include "QnXmlLib16/binding/ElementInfoChoice.h"
#include "QnXmlLib16/binding/ElementInfoSeq.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

constexpr auto kSequence = XmlElementGroupType_Sequence;

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
    const CTables pair(
        kSequence, kPseudo,
        {Prim<CElementInfoSeqPrimMnd>("b", 0), Prim<CElementInfoSeqPrimMnd>("c", 1)});
    const CTables held(kSequence, kReal,
                       {new CElementInfoSeqClsMnd("g", "", 0, kPseudo, MakeSheet, 0, false),
                        Prim<CElementInfoSeqPrimOpt>("z", 1)},
                       {}, {HeldSheet(0, pair)});
    ExpectReads(held, {
                          {"u", "<x/><x/><b>1</b><x/><x/><c>2</c><z>3</z>", "0:{0:1 1:2} 1:3"},
                          {"u", "<b>1</b><x/><b>2</b><x/><c>3</c>", "0:{0:1 1:3}"},
                          // A group that began and did not end leaves nothing.
                          {"u", "<x/><b>1</b><x/><x/><z>3</z>", ""},
                          {"u", "<x/><b>1</b><x/><b>2</b>", ""},
                          {"u", "<c>1</c><x/><b>2</b><x/>", ""},
                      });

    // Each attempt starts with an empty collection, so one too many at first is none too many
    // later.
    const CTables bounded(
        kSequence, kPseudo,
        {new CElementInfoSeqPrimCol("b", "", 0), Prim<CElementInfoSeqPrimMnd>("c", 1)}, {},
        {HeldItems(0, [] { return MakeTexts("b", 2, 2); })});
    const CTables boundedOwner(
        kSequence, kReal, {new CElementInfoSeqClsMnd("g", "", 0, kPseudo, MakeSheet, 0, false)}, {},
        {HeldSheet(0, bounded)});
    ExpectReads(boundedOwner, {
                                  {"u", "<x/><b>1</b><x/><b>2</b><x/><c>3</c>", "0:{0:[1|2] 1:3}"},
                                  {"u", "<b>1</b><b>2</b><b>3</b><c>4</c>", "0:{0:[2|3] 1:4}"},
                                  {"u", "<b>1</b><c>4</c>", ""},
                              });

    // A child group that may be missing keeps what its last attempt has read.
    const CTables keeping(kSequence, kPseudo,
                          {new CElementInfoSeqClsMnd("g", "", 0, kPseudo, MakeSheet, 0, false),
                           Prim<CElementInfoSeqPrimOpt>("z", 1)},
                          {}, {HeldSheet(0, pair)});
    const CTables keepingOwner(
        XmlElementGroupType_Choice, kReal,
        {new CElementInfoChoiceClsOpt("k", "", 0, kPseudo, MakeSheet, keeping.GetClassId())});
    ExpectReads(keepingOwner, {
                                  {"u", "<x/><x/><z>1</z><x/><b>2</b>", "0:{0:{0:2} 1:1}"},
                                  {"u", "<x/><b>1</b><x/><z>2</z>", "0:{1:2}"},
                              });

    // Two groups share the search for nothing but their own members.
    const CTables first(
        kSequence, kPseudo,
        {Prim<CElementInfoSeqPrimMnd>("b", 0), Prim<CElementInfoSeqPrimMnd>("c", 1)});
    const CTables second(
        kSequence, kPseudo,
        {Prim<CElementInfoSeqPrimMnd>("b", 0), Prim<CElementInfoSeqPrimMnd>("d", 1)});
    const CTables choice(
        XmlElementGroupType_Choice, kReal,
        {new CElementInfoChoiceClsOpt("f", "", 0, kPseudo, MakeSheet, first.GetClassId()),
         new CElementInfoChoiceClsOpt("s", "", 1, kPseudo, MakeSheet, second.GetClassId()),
         Prim<CElementInfoChoicePrimOpt>("z", 2)});
    ExpectReads(choice, {
                            {"u", "<x/><b>1</b><x/><d>2</d>", "1:{0:1 1:2}"},
                            {"u", "<x/><b>1</b><x/><c>2</c>", "0:{0:1 1:2}"},
                            {"u", "<x/><b>1</b><x/><z>2</z>", "2:2"},
                            {"u", "<x/><d>1</d><b>2</b>", ""},
                        });
}

TEST(UnknownElements, OfADocumentAreForgottenWithIt)
{
    const CTables pair(
        kSequence, kPseudo,
        {Prim<CElementInfoSeqPrimMnd>("b", 0), Prim<CElementInfoSeqPrimMnd>("c", 1)});
    const CTables owner(kSequence, kReal,
                        {Prim<CElementInfoSeqPrimMnd>("a", 0),
                         new CElementInfoSeqClsMnd("g", "", 1, kPseudo, MakeSheet, 0, false)},
                        {}, {HeldSheet(1, pair)});
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
    const CTables one(kSequence, kPseudo, {Prim<CElementInfoSeqPrimMnd>("b", 0)});
    const CTables child(kSequence, kPseudo,
                        {new CElementInfoSeqClsMnd("b", "", 0, kReal, MakeSheet, 0, false)}, {},
                        {HeldSheet(0, Vice())});
    const CTables abstract(kSequence, kPseudo,
                           {new CElementInfoSeqAbsClsMnd("b", "", 0, kReal, MakeTool)});
    const CTables items(kSequence, kPseudo, {new CElementInfoSeqPrimCol("b", "", 0)}, {},
                        {HeldItems(0, [] { return MakeTexts("b", 1); })});
    const CTables open(kSequence, kPseudo,
                       {Prim<CElementInfoSeqPrimMnd>("x", 0),
                        new CElementInfoSeqPrimCol("y", "", 1),
                        Prim<CElementInfoSeqPrimMnd>("b", 2)},
                       {}, {HeldItems(1, [] { return MakeTexts("y"); })});
    const CTables optional(
        kSequence, kPseudo,
        {Prim<CElementInfoSeqPrimOpt>("x", 0), Prim<CElementInfoSeqPrimMnd>("b", 1)});
    const CTables nested(kSequence, kPseudo,
                         {new CElementInfoSeqClsMnd("g", "", 0, kPseudo, MakeSheet, 0, true)}, {},
                         {HeldSheet(0, one)});
    const CTables twice(kSequence, kPseudo,
                        {new CElementInfoSeqClsMnd("g", "", 0, kPseudo, MakeSheet, 0, true)}, {},
                        {HeldSheet(0, nested)});
    const int nCount = 100000;
    const std::string strUnknown = Repeat("<x/>", nCount);
    for (const CTables* const pGroup :
         {&one, &child, &abstract, &items, &open, &optional, &nested, &twice}) {
        const CTables held(kSequence, kReal,
                           {new CElementInfoSeqClsMnd("g", "", 0, kPseudo, MakeSheet, 0, false)},
                           {}, {HeldSheet(0, *pGroup)});
        EXPECT_EQ(Read(held, strUnknown, "u"), "");
        const CTables chosen(
            XmlElementGroupType_Choice, kReal,
            {new CElementInfoChoiceClsOpt("g", "", 0, kPseudo, MakeSheet, pGroup->GetClassId())});
        EXPECT_EQ(Read(chosen, strUnknown, "u"), "");
        const CTables collected(kSequence, kReal, {new CElementInfoSeqClsCol("g", "", 0, kPseudo)},
                                {}, {HeldItems(0, [pGroup] {
                                    return new CSheetCol(
                                        "", 0, -1, kPseudo, [pGroup](CXmlElement*) {
                                            return CSmartPtr<CSheet>(new CSheet(*pGroup, ""));
                                        });
                                })});
        EXPECT_EQ(Read(collected, strUnknown, "u"), "");
    }
    // What follows an attempt that failed late is not read once for each sibling in front of it.
    const CTables late(kSequence, kPseudo,
                       {Prim<CElementInfoSeqPrimMnd>("a", 0),
                        new CElementInfoSeqPrimCol("y", "", 1),
                        Prim<CElementInfoSeqPrimMnd>("b", 2)},
                       {}, {HeldItems(1, [] { return MakeTexts("y"); })});
    const CTables held(kSequence, kReal,
                       {new CElementInfoSeqClsMnd("g", "", 0, kPseudo, MakeSheet, 0, false)}, {},
                       {HeldSheet(0, late)});
    EXPECT_EQ(Read(held, strUnknown + "<a/>" + Repeat("<y/>", nCount), "u"), "");
}
