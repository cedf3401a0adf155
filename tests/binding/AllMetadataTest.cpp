#include "QnXmlLib16/binding/ElementInfoAll.h"

#include "tests/model/Entries.h"

#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "QnXmlLib16/collections/Element.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

constexpr auto kAll = XmlElementGroupType_All;
constexpr auto kOther = static_cast<XmlElementType>(2);

// Members of every class of the family but the collections; numbers are those of the properties.
const CTables& Kit()
{
    static const CTables tables(
        kAll, kReal,
        {Prim<CElementInfoAllPrimMnd>("name", 0), Prim<CElementInfoAllPrimOpt>("length", 1, it_i4),
         Enum<CElementInfoAllEnumMnd>("finish", 2), Enum<CElementInfoAllEnumOpt>("inside", 3),
         new CElementInfoAllClsMnd("vice", "", 4, kReal, MakeSheet, 0, true),
         new CElementInfoAllClsMnd("span", "", 5, kPseudo, MakeSheet, 0, false),
         new CElementInfoAllClsOpt("spare", "", 6, kReal, MakeSheet, Vice().GetClassId()),
         new CElementInfoAllAbsClsMnd("tool", "", 7, kReal, MakeTool, 0),
         new CElementInfoAllAbsClsOpt("second", "", 8, kReal, MakeTool),
         new CElementInfoAllUntpdMnd("note", "", 9, "##any", ""),
         new CElementInfoAllUntpdOpt("memo", "", 10, "##any", "")},
        {}, {HeldSheet(4, Vice(), "vice"), HeldSheet(5, Span()), HeldObject(9, MakeWildcard)});
    return tables;
}

std::string NotFound(const std::string& strName)
{
    return "CQnValidationException: Failed to process the element. @/r < CQnValidationException: "
           "Failed to find the mandatory element [" +
           strName + "].";
}

} // namespace

TEST(AllMetadata, EveryClassReadsWhatItWritesInAnyOrder)
{
    const std::string parts[] = {"<name>oak</name>",
                                 "<length>180</length>",
                                 "<finish>oiled</finish>",
                                 "<inside>raw</inside>",
                                 "<vice no=\"1\"><jaw>150</jaw></vice>",
                                 "<from>1</from><to>2</to>",
                                 "<spare><jaw>9</jaw></spare>",
                                 ToolXml("tool", "Hammer", "<weight>1.5</weight>"),
                                 ToolXml("second", "Saw", "<teeth>40</teeth>"),
                                 "<note>n</note>",
                                 "<memo>m</memo>"};
    const std::string strDump = "0:oak 1:180 2:1 3:0 4:{0:1 1:150} 5:{0:1 1:2} 6:{1:9} 7:{0:1.5} "
                                "8:{0:40} 9:<note>n</note> 10:<memo>m</memo>";
    std::string strForward;
    std::string strBackward;
    for (const std::string& strPart : parts) {
        strForward += strPart;
        strBackward.insert(0, strPart);
    }
    for (const std::string& strXml : {strForward, strBackward}) {
        const CSmartPtr<CSheet> pKit(new CSheet(Kit()));
        EXPECT_EQ(Read(*pKit, strXml), strDump);
        EXPECT_EQ(Write(*pKit), strForward);
    }
}

TEST(AllGroup, AMandatoryMemberIsMissedOnceAllElementsAreRead)
{
    struct Row
    {
        CElementInfo* member;
        std::vector<CHeld> held;
        std::string xml;
        bool mayBeMissing;
    };
    const CHeld vice = HeldSheet(0, Vice());
    const CHeld span = HeldSheet(0, Span());
    const CHeld wildcard = HeldObject(0, MakeWildcard);
    const Row rows[] = {
        {Prim<CElementInfoAllPrimMnd>("a", 0), {}, "<a>1</a>", false},
        {Prim<CElementInfoAllPrimOpt>("a", 0), {}, "<a>1</a>", true},
        {Enum<CElementInfoAllEnumMnd>("a", 0), {}, "<a>raw</a>", false},
        {Enum<CElementInfoAllEnumOpt>("a", 0), {}, "<a>raw</a>", true},
        {new CElementInfoAllClsMnd("a", "", 0, kReal, MakeSheet, 0, true),
         {vice},
         "<a><jaw>1</jaw></a>",
         false},
        {new CElementInfoAllClsMnd("a", "", 0, kReal, MakeSheet, 0, false),
         {vice},
         "<a><jaw>1</jaw></a>",
         true},
        {new CElementInfoAllClsMnd("a", "", 0, kPseudo, MakeSheet, 0, false),
         {span},
         "<from>1</from>",
         false},
        {new CElementInfoAllClsMnd("a", "", 0, kOther, MakeSheet, 0, false),
         {span},
         "<from>1</from>",
         true},
        {new CElementInfoAllClsMnd("a", "", 0, kOther, MakeSheet, 0, true),
         {span},
         "<from>1</from>",
         false},
        {new CElementInfoAllClsOpt("a", "", 0, kReal, MakeSheet, Vice().GetClassId()),
         {},
         "<a><jaw>1</jaw></a>",
         true},
        {new CElementInfoAllClsOpt("a", "", 0, kPseudo, MakeSheet, Span().GetClassId()),
         {},
         "<from>1</from>",
         true},
        {new CElementInfoAllAbsClsMnd("a", "", 0, kReal, MakeTool, 0),
         {},
         ToolXml("a", "Saw", "<teeth>1</teeth>"),
         false},
        {new CElementInfoAllAbsClsOpt("a", "", 0, kReal, MakeTool),
         {},
         ToolXml("a", "Saw", "<teeth>1</teeth>"),
         true},
        {new CElementInfoAllUntpdMnd("a", "", 0, "##any", ""), {wildcard}, "<a/>", false},
        {new CElementInfoAllUntpdOpt("a", "", 0, "##any", ""), {}, "<a/>", true},
    };
    int nRow = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(nRow++);
        const CTables real(kAll, kReal, {row.member, Prim<CElementInfoAllPrimOpt>("z", 1)}, {},
                           row.held);
        EXPECT_NE(Read(real, row.xml + "<z>2</z>").find("1:2"), std::string::npos);
        EXPECT_EQ(Read(real, "<z>2</z>").find("1:2"), row.mayBeMissing ? 0 : std::string::npos);
        for (const char* pszFlags : {"", "m", "u"}) {
            if (!row.mayBeMissing) {
                EXPECT_EQ(Read(real, "<z>2</z>", pszFlags), NotFound("a")) << pszFlags;
            }
        }
    }
}

TEST(AllGroup, GivesItsPlaceBackInAPseudoElementThatMissesAMember)
{
    const CTables group(
        kAll, kPseudo,
        {Prim<CElementInfoAllPrimMnd>("a", 0), Prim<CElementInfoAllPrimOpt>("b", 1)});
    const CTables owner(
        XmlElementGroupType_Sequence, kReal,
        {new CElementInfoSeqClsOpt("g", "", 0, kPseudo, MakeSheet, group.GetClassId()),
         Prim<CElementInfoSeqPrimOpt>("b", 1)});
    ExpectReads(owner, {
                           {"", "<b>1</b><a>2</a>", "0:{0:2 1:1}"},
                           {"", "<a>2</a>", "0:{0:2}"},
                           {"", "<b>1</b>", "1:1"},
                       });
}

TEST(AllGroup, ReadsEachMemberOnce)
{
    ExpectReads(CTables(kAll, kReal,
                        {Prim<CElementInfoAllPrimOpt>("a", 0),
                         new CElementInfoAllAbsClsOpt("tool", "", 1, kReal, MakeTool),
                         new CElementInfoAllUntpdOpt("b", "", 2, "##local", "")}),
                {
                    {"", "<a>1</a><a>2</a>", LeftOver("a")},
                    // What stops a pass leaves all behind it unread.
                    {"u", "<a>1</a><x/><b/>", "0:1"},
                    // An element that no class is found for is nobody's.
                    {"", "<tool/>", LeftOver("tool")},
                    {"", "<b xmlns='urn:x'/>", LeftOver("b")},
                    {"", "", ""},
                });
}

TEST(AllGroup, ACollectionEndsEveryRead)
{
    const CTables tables(
        kAll, kReal,
        {new CElementInfoAllPrimCol("a", "", 0), new CElementInfoAllEnumCol("b", "", 1),
         new CElementInfoAllClsCol("c", "", 2, kPseudo),
         new CElementInfoAllAbsClsCol("d", "", 3, kReal), new CElementInfoAllUntpdCol("e", "", 4)},
        {},
        {HeldItems(0, [] { return MakeTexts("a", 0, 3); }),
         HeldItems(1, [] { return MakeTexts("b"); }), HeldItems(2, [] { return MakeSpans(""); }),
         HeldItems(3, [] { return MakeTools("d"); }), HeldItems(4, MakeWildcards)});
    const std::string strXml = "<a>1</a><a>2</a><b>3</b><from>4</from>" +
                               ToolXml("d", "Saw", "<teeth>5</teeth>") + "<e>6</e><f/>";
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    EXPECT_EQ(Read(*pSheet, strXml),
              "CQnValidationException: Failed to process the element. @/r < CQnException: Not "
              "implemented, should never be called");
    EXPECT_EQ(pSheet->Dump(), "0:[1|2] 1:[3] 2:[{0:4}] 3:[{0:5}] 4:[<e>6</e>|<f/>]");
    EXPECT_EQ(Write(*pSheet), strXml);
    for (int i = 0; i < 2; ++i)
        static_cast<CstringCol*>(pSheet->m_values[0].PeekXmlCollection())->Add("x");
    EXPECT_EQ(Write(*pSheet), "CQnValidationException: Failed to convert the element [r] to XML < "
                              "CQnValidationException: The Maximum number of [a] elements allowed "
                              "in this collection is 3");
    // It is the group's only collection that fails, and an earlier member fails first.
    const CTables mixed(
        kAll, kReal, {Prim<CElementInfoAllPrimMnd>("a", 0), new CElementInfoAllPrimCol("b", "", 1)},
        {}, {HeldItems(1, [] { return MakeTexts("b"); })});
    EXPECT_EQ(Read(mixed, "<b/>"), NotFound("a"));
}

TEST(AllGroup, AMandatoryMemberCannotBeWrittenEmpty)
{
    CElementInfo* const members[] = {
        Prim<CElementInfoAllPrimMnd>("a", 0), Enum<CElementInfoAllEnumMnd>("a", 0),
        new CElementInfoAllClsMnd("a", "", 0, kReal, MakeSheet, 0, false),
        new CElementInfoAllAbsClsMnd("a", "", 0, kReal, MakeTool, 0),
        new CElementInfoAllUntpdMnd("a", "", 0, "##any", "")};
    for (CElementInfo* const pMember : members) {
        const CTables tables(kAll, kReal, {pMember});
        const CSmartPtr<CSheet> pSheet(new CSheet(tables));
        EXPECT_EQ(Write(*pSheet),
                  "CQnValidationException: Failed to convert the element [r] to XML < "
                  "CQnInvalidParamException: The Property [a] is mandatory, it may not be NULL");
    }
}

TEST(AllGroup, ReadingNeedsSomethingToReadInto)
{
    const auto makeNothing = [](int, const char*) { return CSmartPtr<CXmlObjectBase>(); };
    CElementInfo* const members[] = {
        new CElementInfoAllClsMnd("a", "", 0, kReal, MakeSheet, 0, false),
        new CElementInfoAllClsMnd("a", "", 0, kPseudo, MakeSheet, 0, false),
        new CElementInfoAllClsOpt("a", "", 0, kReal, makeNothing, 0),
        new CElementInfoAllUntpdMnd("a", "", 0, "##any", ""),
        new CElementInfoAllClsCol("a", "", 0, kReal)};
    for (CElementInfo* const pMember : members) {
        const CTables tables(kAll, kReal, {pMember});
        EXPECT_EQ(Read(tables, "<a/>"),
                  "CQnValidationException: Failed to process the element. @/r < "
                  "CQnInvalidParamException: The Property [a] is mandatory, it may not be NULL");
    }
}
