// What the members of each group make of elements that are missing, unknown or out of place.

#include "tests/model/Entries.h"

#include "QnXmlLib16/QnXmlLib16.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

constexpr auto kSeq = XmlElementGroupType_Sequence;
constexpr auto kAll = XmlElementGroupType_All;
constexpr auto kChoice = XmlElementGroupType_Choice;

const std::string kNotRead = "CQnValidationException: Failed to process the element. @/r < ";
const std::string kNotWritten =
    "CQnValidationException: Failed to convert the element [r] to XML < ";

std::string NotFound(const char* pszName)
{
    return std::string("CQnException: Failed to find the required child element [") + pszName +
           "]. @/r";
}

CElementInfo* Mnd(const char* pszName, int nProperty)
{
    return Prim<CElementInfoSeqPrimMnd>(pszName, nProperty);
}

CElementInfo* Opt(const char* pszName, int nProperty)
{
    return Prim<CElementInfoSeqPrimOpt>(pszName, nProperty);
}

CElementInfo* Items(const char* pszName, int nProperty)
{
    return new CElementInfoSeqPrimCol(pszName, "", nProperty);
}

CHeld HeldTexts(int nProperty, const char* pszName, int iMin = 0, int iMax = -1)
{
    return HeldItems(nProperty, [=] { return MakeTexts(pszName, iMin, iMax); });
}

// Pseudo children g: one that the property holds, and new ones.
CElementInfo* Held(int nProperty, bool bRequired = false)
{
    return new CElementInfoSeqClsMnd("g", "", nProperty, kPseudo, MakeSheet, 0, bRequired);
}

CElementInfo* New(int nProperty, const CTables& tables)
{
    return new CElementInfoSeqClsOpt("g", "", nProperty, kPseudo, MakeSheet, tables.GetClassId());
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

const std::string kSaw = ToolXml("tool", "Saw", "<teeth>2</teeth>");

} // namespace

TEST(SequenceReading, AMandatoryMemberIsFoundMissedOrPassedOver)
{
    const CTables tables(kSeq, kReal,
                         {Mnd("a", 0), Enum<CElementInfoSeqEnumMnd>("b", 1),
                          new CElementInfoSeqClsMnd("c", "", 2, kReal, MakeSheet, 0, false),
                          Opt("d", 3)},
                         {}, {HeldSheet(2, Vice())});
    const std::string strC = "<c><jaw>1</jaw></c>";
    ExpectReads(
        tables,
        {
            {"", "<b>raw</b>" + strC, NotFound("a")},
            {"", "<a>1</a><b>raw</b><d>x</d>", NotFound("c")},
            // Missing members are passed over at once; nothing is skipped.
            {"m", "<d>x</d>", "3:x"},
            {"m", "<x/><a>1</a>", LeftOver("x")},
            // What stands in front of them is skipped; they still have to be there.
            {"u", "<x/><a>1</a><y/><b>raw</b><d/>" + strC + "<d>x</d>", "0:1 1:0 2:{1:1} 3:x"},
            {"u", "<a>1</a><x/>" + strC, NotFound("b")},
            // An optional member skips nothing, but the last one is asked again.
            {"u", "<a>1</a><b>raw</b>" + strC + "<x/><d>x</d>", "0:1 1:0 2:{1:1} 3:x"},
        });
    // So is a mandatory one, which then has to be there again.
    ExpectReads(CTables(kSeq, kReal, {Mnd("a", 0)}),
                {{"u", "<a>1</a><x/>", "0:1"}, {"u", "<a>1</a><x/><x/>", NotFound("a")}});
}

TEST(SequenceReading, APseudoChildReadsOutOfTheElementAroundIt)
{
    const CTables optional(kSeq, kReal, {New(0, Span()), Opt("z", 1)});
    const CTables any(kSeq, kReal, {Held(0), Opt("z", 1)}, {}, {HeldSheet(0, Span())});
    const CTables required(kSeq, kReal, {Held(0, true), Opt("z", 1)}, {}, {HeldSheet(0, Span())});
    for (const CTables* const pTables : {&optional, &any, &required}) {
        ExpectReads(*pTables, {{"", "<from>1</from><to>3</to><z>2</z>", "0:{0:1 1:3} 1:2"},
                               {"u", "<x/><from>1</from><z>2</z>", "0:{0:1} 1:2"}});
    }
    ExpectReads(optional, {{"", "<z>2</z>", "1:2"}, {"u", "<z>2</z>", "1:2"}});
    ExpectReads(any, {{"", "<z>2</z>", "1:2"},
                      {"", "<to>3</to>", LeftOver("to")},
                      // Every element is skipped in search of the group, known ones too.
                      {"u", "<z>2</z>", ""},
                      {"u", "<z>2</z><from>1</from><z>3</z>", "0:{0:1} 1:3"}});
    for (const char* const pszFlags : {"", "m", "u"})
        EXPECT_EQ(Read(required, "<z>2</z>", pszFlags), NotFound("g"));
}

TEST(SequenceReading, AGroupThatDoesNotMatchGivesItsPlaceBack)
{
    // Members that a pseudo owner can't do without, each in front of an optional one.
    const auto expect = [](CElementInfo* pMember, const std::vector<CHeld>& held,
                           std::initializer_list<ReadRow> rows) {
        const CTables group(kSeq, kPseudo, {Opt("o", 0), pMember, Opt("p", 2)}, {}, held);
        const CTables owner(kSeq, kReal, {New(0, group), Opt("o", 1)});
        ExpectReads(owner, rows);
    };
    expect(Mnd("a", 1), {},
           {{"", "<o>1</o><a>2</a><p>3</p>", "0:{0:1 1:2 2:3}"},
            {"m", "<o>1</o>", "1:1"},
            {"u", "<o>1</o><x/>", "1:1"}});
    expect(new CElementInfoSeqClsMnd("a", "", 1, kReal, MakeSheet, 0, false),
           {HeldSheet(1, Vice())},
           {{"", "<o>1</o>", "1:1"}, {"u", "<o>1</o><x/><a><jaw>2</jaw></a>", "0:{0:1 1:{1:2}}"}});
    expect(Held(1, true), {HeldSheet(1, Span())},
           {{"", "<o>1</o>", "1:1"},
            {"u", "<o>1</o><x/><from>2</from>", "0:{0:1 1:{0:2}}"},
            {"u", "<o>1</o><x/><y/>", "1:1"}});
    // One that need not have content is no reason to give up.
    expect(Held(1, false), {HeldSheet(1, Span())}, {{"", "<o>1</o>", "0:{0:1}"}});
    expect(new CElementInfoSeqAbsClsMnd("tool", "", 1, kReal, MakeTool), {},
           {{"", "<o>1</o>", "1:1"}, {"u", "<o>1</o><tool/><x/>" + kSaw, "0:{0:1 1:{0:2}}"}});
    expect(new CElementInfoSeqUntpdMnd("a", "urn:w", 1, "##any", ""), {HeldObject(1, MakeWildcard)},
           {{"", "<o>1</o><x/>", LeftOver("x")}, {"", "<o>1</o>", NotFound("a")}});
    expect(Items("a", 1), {HeldTexts(1, "a", 2, 3)},
           {{"", "<o>1</o><a>2</a>", LeftOver("a")},
            {"c", "<o>1</o><a>2</a>", "0:{0:1 1:[2]}"},
            {"u", "<o>1</o><a>2</a><x/><a>3</a>", "0:{0:1 1:[2|3]}"}});

    const CTables all(kAll, kPseudo,
                      {Prim<CElementInfoAllPrimMnd>("a", 0), Prim<CElementInfoAllPrimOpt>("o", 1)});
    ExpectReads(CTables(kSeq, kReal, {New(0, all), Opt("o", 1)}),
                {{"", "<o>1</o><a>2</a>", "0:{0:2 1:1}"}, {"", "<o>1</o>", "1:1"}});
}

TEST(SequenceReading, AWildcardGoesByItsNameAndItsRestriction)
{
    const CTables named(kSeq, kReal, {new CElementInfoSeqUntpdMnd("a", "urn:w", 0, "", "")}, {},
                        {HeldObject(0, [] { return new CElement("a", "", "##local", ""); })});
    const std::string strRefused =
        "CQnException: Failed to find the required element from namespace [urn:w]. @/r";
    ExpectReads(named, {{"m", "", NotFound("a")},
                        {"u", "<b/><a/>", strRefused},
                        {"n", "<a xmlns='urn:x'/>", strRefused}});
    const CTables items(
        kSeq, kReal,
        {new CElementInfoSeqUntpdCol("a", "", 0), new CElementInfoSeqUntpdCol("AnyElement", "", 1)},
        {}, {HeldItems(0, MakeWildcards), HeldItems(1, MakeWildcards)});
    ExpectReads(items, {{"", "<a>1</a><a/><b/><a/>", "0:[<a>1</a>|<a/>] 1:[<b/>|<a/>]"},
                        {"", "<a xmlns='urn:x'/><a/>", "0:[<AA:a xmlns:AA=\"urn:x\"/>] 1:[<a/>]"}});
    const CTables wrong(kSeq, kReal, {new CElementInfoSeqUntpdCol("a", "", 0)}, {},
                        {HeldTexts(0, "a", 0, -1)});
    ExpectReads(wrong,
                {{"", "<a/>",
                  kNotRead + "CQnException: Serialization Data Error : The collection should "
                             "be a CElementCol, it was not!"}});
}

TEST(SequenceFailures, AnAbstractChildIsRelaxedByNothing)
{
    const CTables tables(kSeq, kReal,
                         {new CElementInfoSeqAbsClsMnd("tool", "", 0, kReal, MakeTool)});
    const std::string strFailure =
        "CQnException: Failed to find a suitable substitution element for [tool]. @/r";
    ExpectReads(tables, {{"m", "", strFailure},
                         {"u", "<x/>" + kSaw, strFailure},
                         {"", ToolXml("tool", "Axe", ""), strFailure}});
    ExpectReads(
        CTables(kSeq, kReal, {new CElementInfoSeqAbsClsOpt("tool", "", 0, kReal, MakeTool)}),
        {{"", "<tool/>", LeftOver("tool")}});
}

TEST(SequenceFailures, AnOptionalWildcardFailsForItsOwnDefaultNamespace)
{
    // Its default namespace is none, as that of the owner is not empty, and none is the target
    // namespace that "##other" refuses.
    CTables tables(kSeq, kReal,
                   {new CElementInfoSeqUntpdOpt("a", "", 0, "##other", ""), Opt("z", 1)});
    ExpectReads(tables, {{"", "<z>1</z>", "1:1"}});
    tables.m_strNamespace = "urn:n";
    ExpectReads(tables, {{"", "<z>1</z>",
                          kNotRead + "CQnInvalidNamespaceException: Invalid namespace []. The "
                                     "namespace must be one of [##other] where the target "
                                     "namespace is []."},
                         {"", "", ""}});
}

TEST(SequenceReading, OfNothingTakesNothing)
{
    ExpectReads(CTables(kSeq, kReal, {}), {{"", "<x/>", LeftOver("x")}, {"u", "<x/><y/>", ""}});
    const CTables group(kSeq, kPseudo, {});
    ExpectReads(CTables(kSeq, kReal, {New(0, group), Opt("z", 1)}), {{"u", "<z>1</z>", "1:1"}});
}

TEST(AllGroup, ReadsEachMemberOnce)
{
    ExpectReads(CTables(kAll, kReal,
                        {Prim<CElementInfoAllPrimOpt>("a", 0),
                         new CElementInfoAllAbsClsOpt("tool", "", 1, kReal, MakeTool),
                         new CElementInfoAllUntpdOpt("b", "", 2, "##local", "")}),
                {{"", "<a>1</a><a>2</a>", LeftOver("a")},
                 // What stops a pass leaves all behind it unread.
                 {"u", "<a>1</a><x/><b/>", "0:1"},
                 // An element that no class is found for is nobody's.
                 {"", "<tool/>", LeftOver("tool")},
                 {"", "<b xmlns='urn:x'/>", LeftOver("b")}});
    // More members than there are flags on the stack, met from the last to the first.
    std::vector<CElementInfo*> members;
    std::string strXml;
    for (int i = 0; i < 70; ++i) {
        const std::string strName = "m" + std::to_string(i);
        members.push_back(Prim<CElementInfoAllPrimMnd>(strName.c_str(), i));
        strXml.insert(0, "<" + strName + ">1</" + strName + ">");
    }
    const std::string strDump = Read(CTables(kAll, kReal, members), strXml);
    EXPECT_EQ(std::count(strDump.begin(), strDump.end(), ':'), 70) << strDump;
}

TEST(ChoiceReading, ReadsTheFirstMemberThatMatches)
{
    const CTables tables(kChoice, kReal,
                         {Prim<CElementInfoChoicePrimOpt>("a", 0),
                          Prim<CElementInfoChoicePrimOpt>("a", 1),
                          Prim<CElementInfoChoicePrimOpt>("b", 2)});
    ExpectReads(tables, {{"", "<a>1</a>", "0:1"},
                         {"", "<a>1</a><b>2</b>", LeftOver("b")},
                         {"u", "<a>1</a><b>2</b>", "0:1"},
                         {"u", "<x/><y/><b>2</b><z/>", "2:2"}});
    const CTables group(kChoice, kPseudo, {Prim<CElementInfoChoicePrimOpt>("a", 0)});
    ExpectReads(CTables(kSeq, kReal, {New(0, group), Opt("z", 1)}),
                {{"", "<z>2</z>", "1:2"}, {"u", "<z>2</z><a>1</a>", "1:2"}});
    // It is the first to be written too.
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    pSheet->m_values[1].SetString("2");
    pSheet->m_values[2].SetString("3");
    EXPECT_EQ(WriteChildren(*pSheet), "<a>2</a>");
}

TEST(Collections, AreHeldToTheirBounds)
{
    const std::string strTooFew = "CQnValidationException: The Minimum number of [a] elements "
                                  "allowed in this collection is 1";
    const std::string strTooMany = "CQnValidationException: The Maximum number of [a] elements "
                                   "allowed in this collection is 2";
    const std::string strNone =
        "CQnException: No child elements within the element [r] were populated. The element "
        "represents a choice, so one and only one element should be populated @/r";
    const std::string strNoneSet =
        "CQnValidationException: This element is a choice, and as such must have at one (and only "
        "one) valid item, currently there are none set";
    const std::string strThree = "<a>1</a><a>2</a><a>3</a>";
    const std::vector<CHeld> held = {HeldTexts(0, "a", 1, 2)};
    const CTables sequence(kSeq, kReal, {Items("a", 0)}, {}, held);
    const CTables all(kAll, kReal, {new CElementInfoAllPrimCol("a", "", 0)}, {}, held);
    const CTables choice(kChoice, kReal, {new CElementInfoChoicePrimCol("a", "", 0)}, {}, held);
    ExpectReads(sequence, {{"", "", kNotRead + strTooFew},
                           {"", strThree, kNotRead + strTooMany},
                           {"c", strThree, "0:[1|2|3]"}});
    ExpectReads(choice, {{"", "", strNone},
                         {"u", "<x/>", strNone},
                         {"x", "<x/>", LeftOver("x")},
                         {"", strThree, kNotRead + strTooMany},
                         {"c", strThree, "0:[1|2|3]"}});
    for (const CTables* const pTables : {&sequence, &all, &choice}) {
        const CSmartPtr<CSheet> pSheet(new CSheet(*pTables));
        EXPECT_EQ(WriteChildren(*pSheet),
                  kNotWritten + (pTables == &choice ? strNoneSet : strTooFew));
        EXPECT_EQ(WriteChildren(*pSheet, "cx"), "");
        Read(*pSheet, strThree, "c");
        EXPECT_EQ(WriteChildren(*pSheet), kNotWritten + strTooMany);
        EXPECT_EQ(WriteChildren(*pSheet, "c"), strThree);
    }
    // A pseudo owner leaves what it can't use to others.
    const CTables group(kChoice, kPseudo, {new CElementInfoChoicePrimCol("a", "", 0)}, {},
                        {HeldTexts(0, "a", 2, 3)});
    ExpectReads(CTables(kSeq, kReal, {New(0, group), Opt("a", 1)}),
                {{"", "<a>1</a>", "1:1"},
                 {"", "<a>1</a><a>2</a>", "0:{0:[1|2]}"},
                 {"c", "<a>1</a>", "0:{0:[1]}"}});
}

TEST(ChoiceMetadata, ANestedChoiceReachedThroughAChoiceMayBeEmpty)
{
    const CTables inner(kChoice, kReal, {new CElementInfoChoicePrimCol("a", "", 0)}, {},
                        {HeldTexts(0, "a", 1, -1)});
    const int nId = inner.GetClassId();
    const CTables byChoice(kChoice, kReal,
                           {new CElementInfoChoiceClsOpt("c", "", 0, kReal, MakeSheet, nId)});
    const CTables bySequence(kSeq, kReal,
                             {new CElementInfoSeqClsOpt("c", "", 0, kReal, MakeSheet, nId)});
    const CSmartPtr<CSheet> pSheet(new CSheet(byChoice));
    EXPECT_EQ(Read(*pSheet, "<c/>"), "");
    EXPECT_EQ(WriteChildren(*pSheet), "<c/>");
    EXPECT_EQ(Read(bySequence, "<c/>"),
              "CQnException: No child elements within the element [c] were populated. The element "
              "represents a choice, so one and only one element should be populated @/r/c");
}

TEST(ChoiceMetadata, AChildIsAssignedBeforeItIsRead)
{
    // What happens to the property, and the result.
    const auto accesses = [](CElementInfo* pMember, const std::string& strXml) {
        const CTables tables(kChoice, kReal, {pMember, Prim<CElementInfoChoicePrimOpt>("z", 1)});
        const CSmartPtr<CSheet> pSheet(new CSheet(tables));
        std::string strLog;
        pSheet->m_before = [&](int, bool bRead) { strLog += bRead ? "get " : "set "; };
        const std::string strResult = Read(*pSheet, strXml);
        pSheet->m_before = nullptr;
        return strLog + "-> " + strResult;
    };
    const auto child = [](const CTables& tables, XmlElementType type) {
        return new CElementInfoChoiceClsOpt("a", "", 0, type, MakeSheet, tables.GetClassId());
    };
    EXPECT_EQ(accesses(child(Vice(), kReal), "<a><jaw>1</jaw></a>"), "set -> 0:{1:1}");
    const CTables tables(kChoice, kReal, {child(Vice(), kReal)});
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    EXPECT_EQ(Read(*pSheet, "<a no='5'/>"),
              "CQnException: Failed to find the required child element [jaw]. @/r/a");
    EXPECT_EQ(pSheet->Dump(), "0:{0:5}");

    // A pseudo child that reads nothing is taken back.
    EXPECT_EQ(accesses(child(Span(), kPseudo), "<z>1</z>"), "set set set -> 1:1");

    // What a create function answers is assigned, also if it is nothing.
    EXPECT_EQ(accesses(new CElementInfoChoiceAbsClsOpt("tool", "", 0, kReal, MakeTool), "<tool/>"),
              "set -> " + LeftOver("tool"));
    // A wildcard is assigned once it has been read.
    EXPECT_EQ(
        accesses(new CElementInfoChoiceUntpdOpt("a", "", 0, "##local", ""), "<a xmlns='urn:x'/>"),
        "-> " + LeftOver("a"));
}

TEST(UnknownElements, AreSkippedInFrontOfAGroupWithoutChangingWhatItReads)
{
    const CTables pair(kSeq, kPseudo, {Mnd("b", 0), Mnd("c", 1)});
    ExpectReads(CTables(kSeq, kReal, {Held(0), Opt("z", 1)}, {}, {HeldSheet(0, pair)}),
                {{"u", "<x/><x/><b>1</b><x/><x/><c>2</c><z>3</z>", "0:{0:1 1:2} 1:3"},
                 {"u", "<b>1</b><x/><b>2</b><x/><c>3</c>", "0:{0:1 1:3}"},
                 // A group that began and did not end leaves nothing.
                 {"u", "<x/><b>1</b><x/><x/><z>3</z>", ""}});

    // Each attempt starts with an empty collection, so one too many at first is none too many
    // later.
    const CTables bounded(kSeq, kPseudo, {Items("b", 0), Mnd("c", 1)}, {},
                          {HeldTexts(0, "b", 2, 2)});
    ExpectReads(CTables(kSeq, kReal, {Held(0)}, {}, {HeldSheet(0, bounded)}),
                {{"u", "<b>1</b><b>2</b><b>3</b><c>4</c>", "0:{0:[2|3] 1:4}"}});

    // A child group that may be missing keeps what its last attempt has read.
    const CTables keeping(kSeq, kPseudo, {Held(0), Opt("z", 1)}, {}, {HeldSheet(0, pair)});
    ExpectReads(CTables(kChoice, kReal, {Selected(0, keeping)}),
                {{"u", "<x/><x/><z>1</z><x/><b>2</b>", "0:{0:{0:2} 1:1}"},
                 {"u", "<x/><b>1</b><x/><z>2</z>", "0:{1:2}"}});

    // Two groups share the search for nothing but their own members.
    const CTables other(kSeq, kPseudo, {Mnd("b", 0), Mnd("d", 1)});
    ExpectReads(
        CTables(kChoice, kReal,
                {Selected(0, pair), Selected(1, other), Prim<CElementInfoChoicePrimOpt>("z", 2)}),
        {{"u", "<x/><b>1</b><x/><d>2</d>", "1:{0:1 1:2}"},
         {"u", "<x/><b>1</b><x/><z>2</z>", "2:2"}});
}

TEST(UnknownElements, OfADocumentAreForgottenWithIt)
{
    const CTables pair(kSeq, kPseudo, {Mnd("b", 0), Mnd("c", 1)});
    const CTables owner(kSeq, kReal, {Mnd("a", 0), Held(1)}, {}, {HeldSheet(1, pair)});
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
    const CTables one(kSeq, kPseudo, {Mnd("b", 0)});
    const CTables child(kSeq, kPseudo,
                        {new CElementInfoSeqClsMnd("b", "", 0, kReal, MakeSheet, 0, false)}, {},
                        {HeldSheet(0, Vice())});
    const CTables abstract(kSeq, kPseudo,
                           {new CElementInfoSeqAbsClsMnd("b", "", 0, kReal, MakeTool)});
    const CTables items(kSeq, kPseudo, {Items("b", 0)}, {}, {HeldTexts(0, "b", 1)});
    const CTables open(kSeq, kPseudo, {Mnd("x", 0), Items("y", 1), Mnd("b", 2)}, {},
                       {HeldTexts(1, "y")});
    const CTables optional(kSeq, kPseudo, {Opt("x", 0), Mnd("b", 1)});
    const CTables nested(kSeq, kPseudo, {Held(0, true)}, {}, {HeldSheet(0, one)});
    const CTables twice(kSeq, kPseudo, {Held(0, true)}, {}, {HeldSheet(0, nested)});
    const int nCount = 100000;
    const std::string strUnknown = Repeat("<x/>", nCount);
    const auto readHeld = [](const CTables& group, const std::string& strXml) {
        return Read(CTables(kSeq, kReal, {Held(0)}, {}, {HeldSheet(0, group)}), strXml, "u");
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
        const CTables collected(kSeq, kReal, {new CElementInfoSeqClsCol("g", "", 0, kPseudo)}, {},
                                {HeldItems(0, makeItems)});
        EXPECT_EQ(Read(collected, strUnknown, "u"), "");
    }
    // What follows an attempt that failed late is not read once for each sibling in front of it.
    const CTables late(kSeq, kPseudo, {Mnd("a", 0), Items("y", 1), Mnd("b", 2)}, {},
                       {HeldTexts(1, "y")});
    EXPECT_EQ(readHeld(late, strUnknown + "<a/>" + Repeat("<y/>", nCount)), "");
    // Nor is anything forgotten where one class stands at two places, or inside itself.
    const CTables beside(kSeq, kPseudo, {Held(0, true), Held(1, true), Mnd("c", 2)}, {},
                         {HeldSheet(0, one), HeldSheet(1, one)});
    const int nInside = beside.GetClassId() + 1;
    const CTables inside(kSeq, kPseudo,
                         {Mnd("b", 0),
                          new CElementInfoSeqClsOpt("g", "", 1, kPseudo, MakeSheet, nInside),
                          Mnd("c", 2)});
    EXPECT_EQ(inside.GetClassId(), nInside);
    for (const std::string& strXml :
         {strUnknown + "<b/><x/><b/>", Repeat("<x/><b/>", 100) + strUnknown}) {
        EXPECT_EQ(readHeld(beside, strXml), "");
        EXPECT_EQ(readHeld(inside, strXml), "");
        EXPECT_EQ(Read(CTables(kChoice, kReal, {Selected(0, inside)}), strXml, "xu"), "");
    }
}
