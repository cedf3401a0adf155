#include "QnXmlLib16/binding/ElementInfoChoice.h"

#include "tests/model/Entries.h"

#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "QnXmlLib16/collections/Element.h"
#include "QnXmlLib16/support/Exceptions.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

constexpr auto kChoice = XmlElementGroupType_Choice;

// Members of every class of the family; numbers are those of the properties.
const CTables& Pick()
{
    static const CTables tables(
        kChoice, kReal,
        {Prim<CElementInfoChoicePrimOpt>("name", 0), Enum<CElementInfoChoiceEnumOpt>("finish", 1),
         new CElementInfoChoiceClsOpt("vice", "", 2, kReal, MakeSheet, Vice().GetClassId()),
         new CElementInfoChoiceClsOpt("span", "", 3, kPseudo, MakeSheet, Span().GetClassId()),
         new CElementInfoChoiceAbsClsOpt("tool", "", 4, kReal, MakeTool),
         new CElementInfoChoiceUntpdOpt("memo", "", 5, "##local", ""),
         new CElementInfoChoicePrimCol("nail", "", 6), new CElementInfoChoiceEnumCol("hue", "", 7),
         new CElementInfoChoiceClsCol("clamp", "", 8, kReal),
         new CElementInfoChoiceAbsClsCol("part", "", 9, kReal),
         new CElementInfoChoiceUntpdCol("scrap", "", 10),
         new CElementInfoChoiceUntpdCol("AnyElement", "", 11)},
        {},
        {HeldItems(6, [] { return MakeTexts("nail", 2, 3); }),
         HeldItems(7, [] { return MakeTexts("hue"); }),
         HeldItems(8, [] { return MakeVices("clamp"); }),
         HeldItems(9, [] { return MakeTools("part"); }), HeldItems(10, MakeWildcards),
         HeldItems(11, MakeWildcards)});
    return tables;
}

std::string Wrapped(const std::string& strCause)
{
    return "CQnValidationException: Failed to process the element. @/r < " + strCause;
}

constexpr char kNonePopulated[] =
    "CQnException: No child elements within the element [r] were populated. The element represents "
    "a choice, so one and only one element should be populated @/r";
constexpr char kNoneSet[] =
    "CQnValidationException: Failed to convert the element [r] to XML < CQnValidationException: "
    "This element is a choice, and as such must have at one (and only one) valid item, currently "
    "there are none set";

} // namespace

TEST(ChoiceMetadata, EveryClassReadsWhatItWrites)
{
    struct Row
    {
        std::string xml;
        const char* dump;
    };
    const Row rows[] = {
        {"<name>oak</name>", "0:oak"},
        {"<finish>oiled</finish>", "1:1"},
        {"<vice no=\"1\"><jaw>2</jaw></vice>", "2:{0:1 1:2}"},
        {"<from>1</from><to>2</to>", "3:{0:1 1:2}"},
        {ToolXml("tool", "Saw", "<teeth>3</teeth>"), "4:{0:3}"},
        {"<memo>m</memo>", "5:<memo>m</memo>"},
        {"<nail>1</nail><nail>2</nail>", "6:[1|2]"},
        {"<hue>red</hue>", "7:[red]"},
        {"<clamp><jaw>3</jaw></clamp><clamp><jaw>4</jaw></clamp>", "8:[{1:3}|{1:4}]"},
        {ToolXml("part", "Saw", "<teeth>1</teeth>") +
             ToolXml("part", "Hammer", "<weight>2</weight>"),
         "9:[{0:1}|{0:2}]"},
        {"<scrap>1</scrap><scrap>2</scrap>", "10:[<scrap>1</scrap>|<scrap>2</scrap>]"},
        {"<x/><y/>", "11:[<x/>|<y/>]"},
    };
    const CSmartPtr<CSheet> pPick(new CSheet(Pick()));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.xml);
        EXPECT_EQ(Read(*pPick, row.xml), row.dump);
        EXPECT_EQ(Write(*pPick), row.xml);
    }
}

TEST(ChoiceMetadata, ASecondMemberIsLeftOver)
{
    ExpectReads(Pick(), {
                            {"", "<name>oak</name><finish>raw</finish>", LeftOver("finish")},
                            {"", "<name>oak</name><name>oak</name>", LeftOver("name")},
                            {"u", "<name>oak</name><finish>raw</finish>", "0:oak"},
                            {"", "<scrap>1</scrap><x/>", LeftOver("x")},
                        });
}

TEST(ChoiceMetadata, AnyOptionalMemberAllowsNone)
{
    CElementInfo* const optional[] = {
        Prim<CElementInfoChoicePrimOpt>("a", 0), Enum<CElementInfoChoiceEnumOpt>("a", 0),
        new CElementInfoChoiceClsOpt("a", "", 0, kReal, MakeSheet, Vice().GetClassId()),
        new CElementInfoChoiceAbsClsOpt("a", "", 0, kReal, MakeTool),
        new CElementInfoChoiceUntpdOpt("a", "", 0, "##any", "")};
    for (CElementInfo* const pMember : optional) {
        const CTables tables(kChoice, kReal, {pMember});
        EXPECT_EQ(Read(tables, ""), "");
        const CSmartPtr<CSheet> pSheet(new CSheet(tables));
        EXPECT_EQ(Write(*pSheet), "");
    }
    // Collections allow it if their lower bound does.
    struct Row
    {
        CElementInfo* member;
        std::function<CXmlCollectionBase*(int)> make;
    };
    const auto texts = [](int iMin) { return MakeTexts("a", iMin); };
    const Row rows[] = {
        {new CElementInfoChoicePrimCol("a", "", 0), texts},
        {new CElementInfoChoiceEnumCol("a", "", 0), texts},
        {new CElementInfoChoiceClsCol("a", "", 0, kReal), [](int i) { return MakeVices("a", i); }},
        {new CElementInfoChoiceAbsClsCol("a", "", 0, kReal),
         [](int i) { return MakeTools("a", i); }},
    };
    for (const Row& row : rows) {
        int iMin = 0;
        const CTables tables(kChoice, kReal, {row.member}, {},
                             {HeldItems(0, [&] { return row.make(iMin); })});
        ExpectReads(tables, {{"", "", ""}, {"u", "<x/>", ""}});
        EXPECT_EQ(Write(*CSmartPtr<CSheet>(new CSheet(tables))), "");
        iMin = 1;
        ExpectReads(tables, {{"", "", kNonePopulated},
                             {"", "<x/>", kNonePopulated},
                             {"u", "<x/>", kNonePopulated},
                             {"x", "", ""},
                             {"x", "<x/>", LeftOver("x")}});
        const CSmartPtr<CSheet> pSheet(new CSheet(tables));
        EXPECT_EQ(Write(*pSheet), kNoneSet);
        EXPECT_EQ(Write(*pSheet, "x"), "");
    }
    const CTables untyped(kChoice, kReal, {new CElementInfoChoiceUntpdCol("a", "", 0)}, {},
                          {HeldItems(0, MakeWildcards)});
    EXPECT_EQ(Read(untyped, ""), "");
}

TEST(ChoiceMetadata, ANestedChoiceReachedThroughAChoiceMayBeEmpty)
{
    const CTables inner(kChoice, kReal, {new CElementInfoChoicePrimCol("a", "", 0)}, {},
                        {HeldItems(0, [] { return MakeTexts("a", 1); })});
    const CTables byChoice(
        kChoice, kReal,
        {new CElementInfoChoiceClsOpt("c", "", 0, kReal, MakeSheet, inner.GetClassId())});
    const CTables bySequence(
        XmlElementGroupType_Sequence, kReal,
        {new CElementInfoSeqClsOpt("c", "", 0, kReal, MakeSheet, inner.GetClassId())});
    const CSmartPtr<CSheet> pSheet(new CSheet(byChoice));
    EXPECT_EQ(Read(*pSheet, "<c/>"), "");
    EXPECT_EQ(Write(*pSheet), "<c/>");
    EXPECT_EQ(Read(bySequence, "<c/>"),
              "CQnException: No child elements within the element [c] were populated. The element "
              "represents a choice, so one and only one element should be populated @/r/c");
}

TEST(ChoiceMetadata, ACollectionIsHeldToItsBoundsOnReading)
{
    const std::string strTooFew =
        "CQnValidationException: The Minimum number of [nail] elements allowed in this collection "
        "is 2";
    ExpectReads(Pick(), {
                            {"", "<nail>1</nail>", Wrapped(strTooFew)},
                            {"c", "<nail>1</nail>", "6:[1]"},
                        });
    // A pseudo owner leaves what it can't use to others.
    const CTables group(kChoice, kPseudo, {new CElementInfoChoicePrimCol("nail", "", 0)}, {},
                        {HeldItems(0, [] { return MakeTexts("nail", 2, 3); })});
    const CTables owner(
        XmlElementGroupType_Sequence, kReal,
        {new CElementInfoSeqClsOpt("g", "", 0, kPseudo, MakeSheet, group.GetClassId()),
         Prim<CElementInfoSeqPrimOpt>("nail", 1)});
    ExpectReads(owner, {
                           {"", "<nail>1</nail>", "1:1"},
                           {"", "<nail>1</nail><nail>2</nail>", "0:{0:[1|2]}"},
                           {"c", "<nail>1</nail>", "0:{0:[1]}"},
                       });
    // Writing leaves the count to the collection.
    const CSmartPtr<CSheet> pPick(new CSheet(Pick()));
    static_cast<CstringCol*>(pPick->m_values[6].PeekXmlCollection())->Add("1");
    EXPECT_EQ(Write(*pPick),
              "CQnValidationException: Failed to convert the element [r] to XML < " + strTooFew);
}

namespace {

// What happens to a property that a choice member reads into: "set", "set null", "get".
std::string Accesses(const CTables& tables, const std::string& strChildren)
{
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    std::string strLog;
    pSheet->m_before = [&](int, bool bRead) {
        strLog += std::string(strLog.empty() ? "" : ", ") + (bRead ? "get" : "set");
    };
    const std::string strResult = Read(*pSheet, strChildren);
    pSheet->m_before = nullptr;
    return strLog + " -> " + strResult;
}

} // namespace

TEST(ChoiceMetadata, AChildIsAssignedBeforeItIsRead)
{
    const CTables real(
        kChoice, kReal,
        {new CElementInfoChoiceClsOpt("a", "", 0, kReal, MakeSheet, Vice().GetClassId())});
    EXPECT_EQ(Accesses(real, "<a><jaw>1</jaw></a>"), "set -> 0:{1:1}");
    const CSmartPtr<CSheet> pSheet(new CSheet(real));
    EXPECT_EQ(Read(*pSheet, "<a no='5'/>"),
              "CQnException: Failed to find the required child element [jaw]. @/r/a");
    EXPECT_EQ(pSheet->Dump(), "0:{0:5}");

    // A pseudo child that reads nothing is taken back.
    const CTables pseudo(
        kChoice, kReal,
        {new CElementInfoChoiceClsOpt("g", "", 0, kPseudo, MakeSheet, Span().GetClassId()),
         Prim<CElementInfoChoicePrimOpt>("a", 1)});
    EXPECT_EQ(Accesses(pseudo, "<from>1</from>"), "set -> 0:{0:1}");
    EXPECT_EQ(Accesses(pseudo, "<a>1</a>"), "set, set, set -> 1:1");
    EXPECT_EQ(Accesses(pseudo, ""), " -> ");

    // What a create function answers is assigned, also if it is nothing.
    const CTables abstract(kChoice, kReal,
                           {new CElementInfoChoiceAbsClsOpt("a", "", 0, kReal, MakeTool)});
    EXPECT_EQ(Accesses(abstract, ToolXml("a", "Saw", "<teeth>1</teeth>")), "set -> 0:{0:1}");
    EXPECT_EQ(Accesses(abstract, "<a/>"), "set -> " + LeftOver("a"));

    // A wildcard is assigned once it has been read.
    const CTables wildcard(kChoice, kReal,
                           {new CElementInfoChoiceUntpdOpt("a", "", 0, "##local", "")});
    EXPECT_EQ(Accesses(wildcard, "<a/>"), "set -> 0:<a/>");
    EXPECT_EQ(Accesses(wildcard, "<a xmlns='urn:x'/>"), " -> " + LeftOver("a"));
}

TEST(ChoiceMetadata, ReadingNeedsSomethingToReadInto)
{
    const auto makeNothing = [](int, const char*) { return CSmartPtr<CXmlObjectBase>(); };
    CElementInfo* const members[] = {
        new CElementInfoChoiceClsOpt("a", "", 0, kReal, makeNothing, 0),
        new CElementInfoChoiceClsOpt("a", "", 0, kPseudo, makeNothing, 0),
        new CElementInfoChoiceClsCol("a", "", 0, kReal)};
    for (CElementInfo* const pMember : members) {
        const CTables tables(kChoice, kReal, {pMember});
        EXPECT_EQ(Read(tables, "<a/>"),
                  Wrapped("CQnInvalidParamException: The Property [a] is mandatory, it may not be "
                          "NULL"));
    }
}
