// What the members of each group make of elements that are missing, unknown or out of place.

#include "tests/model/Entries.h"

#include "QnXmlLib16/binding/ElementInfoAll.h"
#include "QnXmlLib16/binding/ElementInfoChoice.h"
#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "QnXmlLib16/collections/Element.h"

#include <gtest/gtest.h>
#include <memory>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

constexpr auto kSequence = XmlElementGroupType_Sequence;
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

CElementInfo* Group(const char* pszName, int nProperty, const CTables& tables)
{
    return new CElementInfoSeqClsOpt(pszName, "", nProperty, kPseudo, MakeSheet,
                                     tables.GetClassId());
}

CElementInfo* HeldGroup(const char* pszName, int nProperty, bool bRequired)
{
    return new CElementInfoSeqClsMnd(pszName, "", nProperty, kPseudo, MakeSheet, 0, bRequired);
}

CHeld HeldTexts(int nProperty, const char* pszName, int iMin, int iMax)
{
    return HeldItems(nProperty, [=] { return MakeTexts(pszName, iMin, iMax); });
}

const std::string kSaw = ToolXml("tool", "Saw", "<teeth>2</teeth>");

} // namespace

TEST(SequenceReading, AMandatoryMemberIsFoundMissedOrPassedOver)
{
    const CTables tables(kSequence, kReal,
                         {Prim<CElementInfoSeqPrimMnd>("a", 0, it_i4),
                          Enum<CElementInfoSeqEnumMnd>("b", 1),
                          new CElementInfoSeqClsMnd("c", "", 2, kReal, MakeSheet, 0, false),
                          Prim<CElementInfoSeqPrimOpt>("d", 3)},
                         {}, {HeldSheet(2, Vice())});
    const std::string strC = "<c><jaw>1</jaw></c>";
    ExpectReads(
        tables,
        {
            {"", "<b>raw</b>" + strC, NotFound("a")},
            {"", "<a>1</a>" + strC, NotFound("b")},
            {"", "<a>1</a><b>raw</b><d>x</d>", NotFound("c")},
            // Missing members are passed over at once; nothing is skipped.
            {"m", strC, "2:{1:1}"},
            {"m", "<d>x</d>", "3:x"},
            {"m", "<x/><a>1</a>", LeftOver("x")},
            // What stands in front of them is skipped; they still have to be there.
            {"u", "<x/><a>1</a><y/><b>raw</b><d/>" + strC + "<d>x</d>", "0:1 1:0 2:{1:1} 3:x"},
            {"u", "<a>1</a><x/>" + strC, NotFound("b")},
            // An optional member skips nothing, but the last one is asked again.
            {"u", "<a>1</a><b>raw</b>" + strC + "<x/><d>x</d>", "0:1 1:0 2:{1:1} 3:x"},
        });
    // So is a mandatory one, which then has to be there again.
    ExpectReads(CTables(kSequence, kReal, {Prim<CElementInfoSeqPrimMnd>("a", 0)}),
                {{"u", "<a>1</a><x/>", "0:1"},
                 {"u", "<a>1</a><x/><a>2</a>", "0:2"},
                 {"u", "<a>1</a><x/><x/>", NotFound("a")}});
}

TEST(SequenceReading, APseudoChildReadsOutOfTheElementAroundIt)
{
    const auto owner = [](CElementInfo* pMember) {
        return std::make_unique<CTables>(
            kSequence, kReal,
            std::vector<CElementInfo*>{pMember, Prim<CElementInfoSeqPrimOpt>("z", 1)},
            std::vector<CAttributeInfo*>{}, std::vector{HeldSheet(0, Span())});
    };
    const auto pOptional = owner(Group("g", 0, Span()));
    const auto pAny = owner(HeldGroup("g", 0, false));
    const auto pRequired = owner(HeldGroup("g", 0, true));
    for (const CTables* const pTables : {pOptional.get(), pAny.get(), pRequired.get()}) {
        ExpectReads(*pTables, {{"", "<from>1</from><to>3</to><z>2</z>", "0:{0:1 1:3} 1:2"},
                               {"u", "<x/><from>1</from><z>2</z>", "0:{0:1} 1:2"}});
    }
    ExpectReads(*pOptional, {{"", "<z>2</z>", "1:2"}, {"u", "<z>2</z>", "1:2"}});
    ExpectReads(*pAny, {{"", "<z>2</z>", "1:2"},
                        {"", "<to>3</to>", LeftOver("to")},
                        // Every element is skipped in search of the group, known ones too.
                        {"u", "<z>2</z>", ""},
                        {"u", "<z>2</z><from>1</from><z>3</z>", "0:{0:1} 1:3"}});
    for (const char* const pszFlags : {"", "m", "u"})
        EXPECT_EQ(Read(*pRequired, "<z>2</z>", pszFlags), NotFound("g"));
}

TEST(SequenceReading, AGroupThatDoesNotMatchGivesItsPlaceBack)
{
    // Members that a pseudo owner can't do without, each in front of an optional one.
    const auto expect = [](CElementInfo* pMember, const std::vector<CHeld>& held,
                           std::initializer_list<ReadRow> rows) {
        const CTables group(
            kSequence, kPseudo,
            {Prim<CElementInfoSeqPrimOpt>("o", 0), pMember, Prim<CElementInfoSeqPrimOpt>("p", 2)},
            {}, held);
        const CTables owner(kSequence, kReal,
                            {Group("g", 0, group), Prim<CElementInfoSeqPrimOpt>("o", 1)});
        ExpectReads(owner, rows);
    };
    expect(Prim<CElementInfoSeqPrimMnd>("a", 1), {},
           {{"", "<o>1</o><a>2</a><p>3</p>", "0:{0:1 1:2 2:3}"},
            {"", "<o>1</o><p>3</p>", LeftOver("p")},
            {"m", "<o>1</o>", "1:1"},
            {"u", "<o>1</o><x/><a>2</a>", "0:{0:1 1:2}"},
            {"u", "<o>1</o><x/>", "1:1"}});
    expect(Enum<CElementInfoSeqEnumMnd>("a", 1), {},
           {{"", "<o>1</o><a>raw</a>", "0:{0:1 1:0}"}, {"", "<o>1</o>", "1:1"}});
    expect(new CElementInfoSeqClsMnd("a", "", 1, kReal, MakeSheet, 0, false),
           {HeldSheet(1, Vice())},
           {{"", "<o>1</o>", "1:1"}, {"u", "<o>1</o><x/><a><jaw>2</jaw></a>", "0:{0:1 1:{1:2}}"}});
    expect(HeldGroup("a", 1, true), {HeldSheet(1, Span())},
           {{"", "<o>1</o>", "1:1"},
            {"u", "<o>1</o><x/><from>2</from>", "0:{0:1 1:{0:2}}"},
            {"u", "<o>1</o><x/><y/>", "1:1"}});
    // One that need not have content is no reason to give up.
    expect(HeldGroup("a", 1, false), {HeldSheet(1, Span())}, {{"", "<o>1</o>", "0:{0:1}"}});
    expect(new CElementInfoSeqAbsClsMnd("tool", "", 1, kReal, MakeTool), {},
           {{"", "<o>1</o><tool/>", LeftOver("tool")},
            {"", "<o>1</o>", "1:1"},
            {"u", "<o>1</o><tool/><x/>" + kSaw, "0:{0:1 1:{0:2}}"}});
    expect(new CElementInfoSeqUntpdMnd("a", "urn:w", 1, "##any", ""), {HeldObject(1, MakeWildcard)},
           {{"", "<o>1</o><a>2</a>", "0:{0:1 1:<a>2</a>}"},
            {"", "<o>1</o><x/>", LeftOver("x")},
            {"", "<o>1</o>", NotFound("a")}});
    expect(new CElementInfoSeqPrimCol("a", "", 1), {HeldTexts(1, "a", 2, 3)},
           {{"", "<o>1</o><a>2</a>", LeftOver("a")},
            {"c", "<o>1</o><a>2</a>", "0:{0:1 1:[2]}"},
            {"u", "<o>1</o><a>2</a><x/><a>3</a>", "0:{0:1 1:[2|3]}"}});

    const CTables all(kAll, kPseudo,
                      {Prim<CElementInfoAllPrimMnd>("a", 0), Prim<CElementInfoAllPrimOpt>("o", 1)});
    ExpectReads(
        CTables(kSequence, kReal, {Group("g", 0, all), Prim<CElementInfoSeqPrimOpt>("o", 1)}),
        {{"", "<o>1</o><a>2</a>", "0:{0:2 1:1}"}, {"", "<o>1</o>", "1:1"}});
}

TEST(SequenceReading, AWildcardGoesByItsNameAndItsRestriction)
{
    const CTables named(kSequence, kReal, {new CElementInfoSeqUntpdMnd("a", "urn:w", 0, "", "")},
                        {}, {HeldObject(0, [] { return new CElement("a", "", "##local", ""); })});
    const std::string strRefused =
        "CQnException: Failed to find the required element from namespace [urn:w]. @/r";
    ExpectReads(named, {{"", "<a>1</a>", "0:<a>1</a>"},
                        {"m", "", NotFound("a")},
                        {"u", "<b/><a/>", strRefused},
                        {"n", "<a xmlns='urn:x'/>", strRefused}});
    const CTables optional(kSequence, kReal,
                           {new CElementInfoSeqUntpdOpt("a", "", 0, "##local", ""),
                            new CElementInfoSeqUntpdOpt("AnyElement", "", 1, "##other", "urn:t")});
    ExpectReads(optional,
                {{"", "<a>1</a><b xmlns='urn:x'/>", "0:<a>1</a> 1:<AA:b xmlns:AA=\"urn:x\"/>"},
                 {"", "<b/>", "1:<b/>"},
                 {"", "<b xmlns='urn:t'/>", LeftOver("b")}});
    const CTables items(
        kSequence, kReal,
        {new CElementInfoSeqUntpdCol("a", "", 0), new CElementInfoSeqUntpdCol("AnyElement", "", 1)},
        {}, {HeldItems(0, MakeWildcards), HeldItems(1, MakeWildcards)});
    ExpectReads(items, {{"", "<a>1</a><a/><b/><a/>", "0:[<a>1</a>|<a/>] 1:[<b/>|<a/>]"},
                        {"", "<a xmlns='urn:x'/><a/>", "0:[<AA:a xmlns:AA=\"urn:x\"/>] 1:[<a/>]"}});
    const CTables wrong(kSequence, kReal, {new CElementInfoSeqUntpdCol("a", "", 0)}, {},
                        {HeldTexts(0, "a", 0, -1)});
    ExpectReads(wrong,
                {{"", "<a/>",
                  kNotRead + "CQnException: Serialization Data Error : The collection should "
                             "be a CElementCol, it was not!"}});
}

TEST(SequenceFailures, AnAbstractChildIsRelaxedByNothing)
{
    const CTables tables(kSequence, kReal,
                         {new CElementInfoSeqAbsClsMnd("tool", "", 0, kReal, MakeTool)});
    const std::string strFailure =
        "CQnException: Failed to find a suitable substitution element for [tool]. @/r";
    ExpectReads(tables, {{"", kSaw, "0:{0:2}"},
                         {"m", "", strFailure},
                         {"u", "<x/>" + kSaw, strFailure},
                         {"", "<tool/>", strFailure},
                         {"", ToolXml("tool", "Axe", ""), strFailure}});
    ExpectReads(
        CTables(kSequence, kReal, {new CElementInfoSeqAbsClsOpt("tool", "", 0, kReal, MakeTool)}),
        {{"", "<tool/>", LeftOver("tool")}});
}

TEST(SequenceFailures, AnOptionalWildcardFailsForItsOwnDefaultNamespace)
{
    // Its default namespace is none, as that of the owner is not empty, and none is the target
    // namespace that "##other" refuses.
    CTables tables(kSequence, kReal,
                   {new CElementInfoSeqUntpdOpt("a", "", 0, "##other", ""),
                    Prim<CElementInfoSeqPrimOpt>("z", 1)});
    ExpectReads(tables, {{"", "<z>1</z>", "1:1"}});
    tables.m_strNamespace = "urn:n";
    ExpectReads(tables, {{"", "<z>1</z>",
                          kNotRead + "CQnInvalidNamespaceException: Invalid namespace []. The "
                                     "namespace must be one of [##other] where the target "
                                     "namespace is []."},
                         {"", "", ""}});
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
}

TEST(Collections, AreHeldToTheirBounds)
{
    const std::string strTooFew = "CQnValidationException: The Minimum number of [a] elements "
                                  "allowed in this collection is 1";
    const std::string strTooMany = "CQnValidationException: The Maximum number of [a] elements "
                                   "allowed in this collection is 2";
    const std::string strNotImplemented =
        kNotRead + "CQnException: Not implemented, should never be called";
    const std::string strNonePopulated =
        "CQnException: No child elements within the element [r] were populated. The element "
        "represents a choice, so one and only one element should be populated @/r";
    const std::string strNoneSet =
        kNotWritten + "CQnValidationException: This element is a choice, and as such must have at "
                      "one (and only one) valid item, currently there are none set";
    const std::string strThree = "<a>1</a><a>2</a><a>3</a>";
    struct Row
    {
        XmlElementGroupType group;
        CElementInfo* member;
        std::string none;  // the failure of a read without items
        std::string three; // with too many
        std::string lax;   // the same where the context takes any count
        std::string written;
    };
    const Row rows[] = {
        {kSequence, new CElementInfoSeqPrimCol("a", "", 0), kNotRead + strTooFew,
         kNotRead + strTooMany, "0:[1|2|3]", kNotWritten + strTooFew},
        {kAll, new CElementInfoAllPrimCol("a", "", 0), strNotImplemented, strNotImplemented,
         strNotImplemented, kNotWritten + strTooFew},
        {kChoice, new CElementInfoChoicePrimCol("a", "", 0), strNonePopulated,
         kNotRead + strTooMany, "0:[1|2|3]", strNoneSet},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.group);
        const CTables tables(row.group, kReal, {row.member}, {}, {HeldTexts(0, "a", 1, 2)});
        const CSmartPtr<CSheet> pSheet(new CSheet(tables));
        EXPECT_EQ(Write(*pSheet), row.written);
        EXPECT_EQ(Write(*pSheet, "cx"), "");
        EXPECT_EQ(Read(*pSheet, ""), row.none);
        EXPECT_EQ(Read(*pSheet, strThree), row.three);
        EXPECT_EQ(Read(*pSheet, strThree, "c"), row.lax);
        EXPECT_EQ(Write(*pSheet), kNotWritten + strTooMany);
        EXPECT_EQ(Write(*pSheet, "c"), strThree);
        if (row.group == kChoice)
            ExpectReads(tables,
                        {{"u", "<x/>", row.none}, {"x", "", ""}, {"x", "<x/>", LeftOver("x")}});
    }
    // A pseudo owner leaves what it can't use to others.
    const CTables group(kChoice, kPseudo, {new CElementInfoChoicePrimCol("a", "", 0)}, {},
                        {HeldTexts(0, "a", 2, 3)});
    ExpectReads(
        CTables(kSequence, kReal, {Group("g", 0, group), Prim<CElementInfoSeqPrimOpt>("a", 1)}),
        {{"", "<a>1</a>", "1:1"},
         {"", "<a>1</a><a>2</a>", "0:{0:[1|2]}"},
         {"c", "<a>1</a>", "0:{0:[1]}"}});
}

TEST(ChoiceMetadata, WritesTheFirstMemberThatHasSomething)
{
    const CTables tables(kChoice, kReal,
                         {Prim<CElementInfoChoicePrimOpt>("a", 0),
                          Prim<CElementInfoChoicePrimOpt>("b", 1),
                          Prim<CElementInfoChoicePrimOpt>("c", 2)});
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    pSheet->m_values[1].SetString("2");
    pSheet->m_values[2].SetString("3");
    EXPECT_EQ(Write(*pSheet), "<b>2</b>");
}

TEST(ChoiceMetadata, ANestedChoiceReachedThroughAChoiceMayBeEmpty)
{
    const CTables inner(kChoice, kReal, {new CElementInfoChoicePrimCol("a", "", 0)}, {},
                        {HeldTexts(0, "a", 1, -1)});
    const CTables byChoice(
        kChoice, kReal,
        {new CElementInfoChoiceClsOpt("c", "", 0, kReal, MakeSheet, inner.GetClassId())});
    const CTables bySequence(
        kSequence, kReal,
        {new CElementInfoSeqClsOpt("c", "", 0, kReal, MakeSheet, inner.GetClassId())});
    const CSmartPtr<CSheet> pSheet(new CSheet(byChoice));
    EXPECT_EQ(Read(*pSheet, "<c/>"), "");
    EXPECT_EQ(Write(*pSheet), "<c/>");
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
    EXPECT_EQ(accesses(child(Span(), kPseudo), "<from>1</from>"), "set -> 0:{0:1}");
    EXPECT_EQ(accesses(child(Span(), kPseudo), "<z>1</z>"), "set set set -> 1:1");
    EXPECT_EQ(accesses(child(Span(), kPseudo), ""), "-> ");

    // What a create function answers is assigned, also if it is nothing.
    const auto tool = [] {
        return new CElementInfoChoiceAbsClsOpt("tool", "", 0, kReal, MakeTool);
    };
    EXPECT_EQ(accesses(tool(), kSaw), "set -> 0:{0:2}");
    EXPECT_EQ(accesses(tool(), "<tool/>"), "set -> " + LeftOver("tool"));

    // A wildcard is assigned once it has been read.
    const auto wildcard = [] { return new CElementInfoChoiceUntpdOpt("a", "", 0, "##local", ""); };
    EXPECT_EQ(accesses(wildcard(), "<a/>"), "set -> 0:<a/>");
    EXPECT_EQ(accesses(wildcard(), "<a xmlns='urn:x'/>"), "-> " + LeftOver("a"));
}
