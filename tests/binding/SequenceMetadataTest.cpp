#include "QnXmlLib16/binding/ElementInfoSeq.h"

#include "tests/model/Entries.h"

#include "QnXmlLib16/collections/Element.h"
#include "QnXmlLib16/support/Exceptions.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

constexpr auto kSequence = XmlElementGroupType_Sequence;

// Members of every class of the family; numbers are those of the properties.
const CTables& Bench()
{
    static const CTables tables(
        kSequence, kReal,
        {Prim<CElementInfoSeqPrimMnd>("name", 0), Prim<CElementInfoSeqPrimOpt>("length", 1, it_i4),
         Enum<CElementInfoSeqEnumMnd>("finish", 2), Enum<CElementInfoSeqEnumOpt>("inside", 3),
         new CElementInfoSeqClsMnd("vice", "", 4, kReal, MakeSheet, 0, false),
         new CElementInfoSeqClsMnd("span", "", 5, kPseudo, MakeSheet, 0, true),
         new CElementInfoSeqClsOpt("spare", "", 6, kReal, MakeSheet, Vice().GetClassId()),
         new CElementInfoSeqAbsClsMnd("tool", "", 7, kReal, MakeTool),
         new CElementInfoSeqAbsClsOpt("second", "", 8, kReal, MakeTool),
         new CElementInfoSeqUntpdMnd("AnyElement", "", 9, "##any", ""),
         new CElementInfoSeqUntpdOpt("memo", "", 10, "##any", ""),
         new CElementInfoSeqPrimCol("nail", "", 11), new CElementInfoSeqEnumCol("colour", "", 12),
         new CElementInfoSeqClsCol("clamp", "", 13, kReal),
         new CElementInfoSeqAbsClsCol("part", "", 14, kReal),
         new CElementInfoSeqUntpdCol("scrap", "", 15),
         new CElementInfoSeqClsCol("spans", "", 16, kPseudo),
         new CElementInfoSeqUntpdCol("AnyElement", "", 17)},
        {},
        {HeldSheet(4, Vice(), "vice"), HeldSheet(5, Span()), HeldObject(9, MakeWildcard),
         HeldItems(11, [] { return MakeTexts("nail"); }),
         HeldItems(12, [] { return MakeTexts("colour"); }),
         HeldItems(13, [] { return MakeVices("clamp"); }),
         HeldItems(14, [] { return MakeTools("part"); }), HeldItems(15, MakeWildcards),
         HeldItems(16, [] { return MakeSpans(""); }), HeldItems(17, MakeWildcards)});
    return tables;
}

std::string BenchXml()
{
    return "<name>oak</name><length>180</length><finish>oiled</finish><inside>raw</inside>"
           "<vice no=\"1\"><jaw>150</jaw></vice><from>1</from><to>2</to>"
           "<spare><jaw>9</jaw></spare>" +
           ToolXml("tool", "Hammer", "<weight>1.5</weight>") +
           ToolXml("second", "Saw", "<teeth>40</teeth>") +
           "<x a=\"1\">any</x><memo>m</memo><nail>n1</nail><nail>n2</nail><colour>red</colour>"
           "<clamp no=\"3\"><jaw>3</jaw></clamp><clamp><jaw>4</jaw></clamp>" +
           ToolXml("part", "Saw", "<teeth>1</teeth>") +
           ToolXml("part", "Hammer", "<weight>2</weight>") +
           "<scrap>s1</scrap><scrap>s2</scrap><from>5</from><from>6</from><to>7</to><rest/>";
}

} // namespace

TEST(SequenceMetadata, EveryClassReadsWhatItWrites)
{
    const CSmartPtr<CSheet> pBench(new CSheet(Bench()));
    EXPECT_EQ(Read(*pBench, BenchXml()),
              "0:oak 1:180 2:1 3:0 4:{0:1 1:150} 5:{0:1 1:2} 6:{1:9} 7:{0:1.5} 8:{0:40} "
              "9:<x a=\"1\">any</x> 10:<memo>m</memo> 11:[n1|n2] 12:[red] 13:[{0:3 1:3}|{1:4}] "
              "14:[{0:1}|{0:2}] 15:[<scrap>s1</scrap>|<scrap>s2</scrap>] 16:[{0:5}|{0:6 1:7}] "
              "17:[<rest/>]");
    EXPECT_EQ(Write(*pBench), BenchXml());
}

TEST(SequenceMetadata, OptionalMembersAndCollectionsMayBeAbsent)
{
    const std::string strLeast =
        "<name>oak</name><finish>raw</finish><vice><jaw>1</jaw></vice><from>1</from>" +
        ToolXml("tool", "Saw", "<teeth>4</teeth>") + "<any/>";
    const CSmartPtr<CSheet> pBench(new CSheet(Bench()));
    EXPECT_EQ(Read(*pBench, strLeast), "0:oak 2:0 4:{1:1} 5:{0:1} 7:{0:4} 9:<any/>");
    EXPECT_EQ(Write(*pBench), strLeast);
}

namespace {

std::string NotFound(const std::string& strName)
{
    return "CQnException: Failed to find the required child element [" + strName + "]. @/r";
}

constexpr char kNoSubstitute[] =
    "CQnException: Failed to find a suitable substitution element for [tool]. @/r";

} // namespace

TEST(SequenceReading, AMandatoryMemberIsFoundMissedOrPassedOver)
{
    const CTables values(kSequence, kReal,
                         {Prim<CElementInfoSeqPrimMnd>("a", 0, it_i4),
                          Enum<CElementInfoSeqEnumMnd>("b", 1),
                          new CElementInfoSeqClsMnd("c", "", 2, kReal, MakeSheet, 0, false),
                          Prim<CElementInfoSeqPrimOpt>("d", 3)},
                         {}, {HeldSheet(2, Vice())});
    const std::string strC = "<c><jaw>1</jaw></c>";
    ExpectReads(
        values,
        {
            {"", "<a>1</a><b>raw</b>" + strC, "0:1 1:0 2:{1:1}"},
            {"", "", NotFound("a")},
            {"", "<b>raw</b>" + strC, NotFound("a")},
            {"", "<a>1</a>" + strC, NotFound("b")},
            {"", "<a>1</a><b>raw</b><d>x</d>", NotFound("c")},
            // Missing members are passed over at once; nothing is skipped.
            {"m", strC, "2:{1:1}"},
            {"m", "<d>x</d>", "3:x"},
            {"m", "<x/><a>1</a>", LeftOver("x")},
            // What stands in front of them is skipped; they still have to be there.
            {"u", "<x/><a>1</a><y/><b>raw</b><d/>" + strC + "<d>x</d>", "0:1 1:0 2:{1:1} 3:x"},
            {"u", "<x/><b>raw</b>" + strC, NotFound("a")},
            {"u", "<a>1</a><x/>" + strC, NotFound("b")},
            // An optional member skips nothing, but the last one is asked again.
            {"u", "<a>1</a><b>raw</b>" + strC + "<x/><d>x</d>", "0:1 1:0 2:{1:1} 3:x"},
        });
}

TEST(SequenceReading, AMandatoryLastMemberIsLookedForAgainBehindAnUnknownElement)
{
    const CTables tables(kSequence, kReal, {Prim<CElementInfoSeqPrimMnd>("a", 0)});
    ExpectReads(tables, {
                            {"u", "<a>1</a>", "0:1"},
                            {"u", "<a>1</a><x/>", "0:1"},
                            {"u", "<a>1</a><x/><a>2</a>", "0:2"},
                            {"u", "<a>1</a><x/><x/>", NotFound("a")},
                        });
}

TEST(SequenceReading, APseudoChildReadsOutOfTheElementAroundIt)
{
    const CTables any(kSequence, kReal,
                      {new CElementInfoSeqClsMnd("g", "", 0, kPseudo, MakeSheet, 0, false),
                       Prim<CElementInfoSeqPrimOpt>("z", 1)},
                      {}, {HeldSheet(0, Span())});
    const CTables required(kSequence, kReal,
                           {new CElementInfoSeqClsMnd("g", "", 0, kPseudo, MakeSheet, 0, true),
                            Prim<CElementInfoSeqPrimOpt>("z", 1)},
                           {}, {HeldSheet(0, Span())});
    const CTables optional(
        kSequence, kReal,
        {new CElementInfoSeqClsOpt("g", "", 0, kPseudo, MakeSheet, Span().GetClassId()),
         Prim<CElementInfoSeqPrimOpt>("z", 1)});
    const ReadRow rows[] = {
        {"", "<from>1</from><z>2</z>", "0:{0:1} 1:2"},
        {"", "<from>1</from><to>3</to><z>2</z>", "0:{0:1 1:3} 1:2"},
        {"u", "<x/><from>1</from><z>2</z>", "0:{0:1} 1:2"},
    };
    for (const ReadRow& row : rows) {
        ExpectReads(any, {row});
        ExpectReads(required, {row});
        ExpectReads(optional, {row});
    }
    ExpectReads(any, {
                         {"", "<z>2</z>", "1:2"},
                         {"", "", ""},
                         {"", "<to>3</to>", LeftOver("to")},
                         // Every element is skipped in search of the group, known ones too.
                         {"u", "<z>2</z>", ""},
                         {"u", "<z>2</z><from>1</from><z>3</z>", "0:{0:1} 1:3"},
                     });
    ExpectReads(required, {
                              {"", "<z>2</z>", NotFound("g")},
                              {"", "", NotFound("g")},
                              {"m", "<z>2</z>", NotFound("g")},
                              {"u", "<z>2</z>", NotFound("g")},
                          });
    ExpectReads(optional, {
                              {"", "<z>2</z>", "1:2"},
                              {"", "", ""},
                              {"u", "<z>2</z>", "1:2"},
                          });
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
        const CTables owner(
            kSequence, kReal,
            {new CElementInfoSeqClsOpt("g", "", 0, kPseudo, MakeSheet, group.GetClassId()),
             Prim<CElementInfoSeqPrimOpt>("o", 1)});
        ExpectReads(owner, rows);
    };
    expect(Prim<CElementInfoSeqPrimMnd>("a", 1), {},
           {{"", "<o>1</o><a>2</a><p>3</p>", "0:{0:1 1:2 2:3}"},
            {"", "<o>1</o><p>3</p>", LeftOver("p")},
            {"", "<o>1</o>", "1:1"},
            {"m", "<o>1</o>", "1:1"},
            {"u", "<o>1</o><x/><a>2</a>", "0:{0:1 1:2}"},
            {"u", "<o>1</o><x/>", "1:1"}});
    expect(Enum<CElementInfoSeqEnumMnd>("a", 1), {},
           {{"", "<o>1</o><a>raw</a>", "0:{0:1 1:0}"}, {"", "<o>1</o>", "1:1"}});
    expect(new CElementInfoSeqClsMnd("a", "", 1, kReal, MakeSheet, 0, false),
           {HeldSheet(1, Vice())},
           {{"", "<o>1</o><a><jaw>2</jaw></a>", "0:{0:1 1:{1:2}}"},
            {"", "<o>1</o>", "1:1"},
            {"u", "<o>1</o><x/><a><jaw>2</jaw></a>", "0:{0:1 1:{1:2}}"}});
    expect(new CElementInfoSeqClsMnd("a", "", 1, kPseudo, MakeSheet, 0, true),
           {HeldSheet(1, Span())},
           {{"", "<o>1</o><from>2</from>", "0:{0:1 1:{0:2}}"},
            {"", "<o>1</o>", "1:1"},
            {"u", "<o>1</o><x/><from>2</from>", "0:{0:1 1:{0:2}}"},
            {"u", "<o>1</o><x/><y/>", "1:1"}});
    // One that need not have content is no reason to give up.
    expect(new CElementInfoSeqClsMnd("a", "", 1, kPseudo, MakeSheet, 0, false),
           {HeldSheet(1, Span())}, {{"", "<o>1</o>", "0:{0:1}"}});
    expect(new CElementInfoSeqAbsClsMnd("tool", "", 1, kReal, MakeTool), {},
           {{"", "<o>1</o>" + ToolXml("tool", "Saw", "<teeth>2</teeth>"), "0:{0:1 1:{0:2}}"},
            {"", "<o>1</o><tool/>", LeftOver("tool")},
            {"", "<o>1</o>", "1:1"},
            {"u", "<o>1</o><tool/><x/>" + ToolXml("tool", "Saw", "<teeth>2</teeth>"),
             "0:{0:1 1:{0:2}}"}});
    expect(new CElementInfoSeqUntpdMnd("a", "urn:w", 1, "##any", ""), {HeldObject(1, MakeWildcard)},
           {{"", "<o>1</o><a>2</a>", "0:{0:1 1:<a>2</a>}"},
            {"", "<o>1</o><x/>", LeftOver("x")},
            {"", "<o>1</o>", NotFound("a")}});
    expect(new CElementInfoSeqPrimCol("a", "", 1),
           {HeldItems(1, [] { return MakeTexts("a", 2, 3); })},
           {{"", "<o>1</o><a>2</a><a>3</a>", "0:{0:1 1:[2|3]}"},
            {"", "<o>1</o><a>2</a>", LeftOver("a")},
            {"c", "<o>1</o><a>2</a>", "0:{0:1 1:[2]}"},
            {"u", "<o>1</o><a>2</a><x/><a>3</a>", "0:{0:1 1:[2|3]}"}});
}

TEST(SequenceReading, AWildcardGoesByItsNameAndItsRestriction)
{
    const CTables named(kSequence, kReal, {new CElementInfoSeqUntpdMnd("a", "urn:w", 0, "", "")},
                        {}, {HeldObject(0, [] { return new CElement("a", "", "##local", ""); })});
    const std::string strRefused =
        "CQnException: Failed to find the required element from namespace [urn:w]. @/r";
    ExpectReads(named, {
                           {"", "<a>1</a>", "0:<a>1</a>"},
                           {"", "", NotFound("a")},
                           {"m", "", NotFound("a")},
                           {"", "<b/>", strRefused},
                           {"u", "<b/><a/>", strRefused},
                           {"n", "<a xmlns='urn:x'/>", strRefused},
                       });
    const CTables optional(kSequence, kReal,
                           {new CElementInfoSeqUntpdOpt("a", "", 0, "##local", ""),
                            new CElementInfoSeqUntpdOpt("AnyElement", "", 1, "##other", "urn:t")});
    ExpectReads(optional,
                {
                    {"", "<a>1</a><b xmlns='urn:x'/>", "0:<a>1</a> 1:<AA:b xmlns:AA=\"urn:x\"/>"},
                    {"", "<b/>", "1:<b/>"},
                    {"", "<b xmlns='urn:t'/>", LeftOver("b")},
                    {"", "", ""},
                });
    const CTables collection(
        kSequence, kReal,
        {new CElementInfoSeqUntpdCol("a", "", 0), new CElementInfoSeqUntpdCol("AnyElement", "", 1)},
        {}, {HeldItems(0, MakeWildcards), HeldItems(1, MakeWildcards)});
    ExpectReads(collection,
                {
                    {"", "<a>1</a><a/><b/><a/>", "0:[<a>1</a>|<a/>] 1:[<b/>|<a/>]"},
                    {"", "<a xmlns='urn:x'/><a/>", "0:[<AA:a xmlns:AA=\"urn:x\"/>] 1:[<a/>]"},
                    {"", "", ""},
                });
}

TEST(SequenceFailures, AnAbstractChildIsRelaxedByNothing)
{
    const CTables tables(kSequence, kReal,
                         {new CElementInfoSeqAbsClsMnd("tool", "", 0, kReal, MakeTool)});
    const std::string strTool = ToolXml("tool", "Saw", "<teeth>2</teeth>");
    ExpectReads(tables, {
                            {"", strTool, "0:{0:2}"},
                            {"", "", kNoSubstitute},
                            {"m", "", kNoSubstitute},
                            {"u", "<x/>" + strTool, kNoSubstitute},
                            {"", "<tool/>", kNoSubstitute},
                            {"", ToolXml("tool", "Axe", ""), kNoSubstitute},
                        });
    const CTables optional(kSequence, kReal,
                           {new CElementInfoSeqAbsClsOpt("tool", "", 0, kReal, MakeTool)});
    ExpectReads(optional, {
                              {"", strTool, "0:{0:2}"},
                              {"", "", ""},
                              {"", "<tool/>", LeftOver("tool")},
                          });
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
                          "CQnValidationException: Failed to process the element. @/r < "
                          "CQnInvalidNamespaceException: Invalid namespace []. The namespace must "
                          "be one of [##other] where the target namespace is []."},
                         {"", "", ""}});
}

TEST(SequenceFailures, CollectionsAreHeldToTheirBounds)
{
    const CTables tables(kSequence, kReal, {new CElementInfoSeqPrimCol("a", "", 0)}, {},
                         {HeldItems(0, [] { return MakeTexts("a", 1, 2); })});
    const std::string strWrap = "CQnValidationException: Failed to process the element. @/r < "
                                "CQnValidationException: ";
    const std::string strTooFew =
        "The Minimum number of [a] elements allowed in this collection is 1";
    const std::string strTooMany =
        "The Maximum number of [a] elements allowed in this collection is 2";
    ExpectReads(tables, {
                            {"", "<a/>", "0:[]"},
                            {"", "", strWrap + strTooFew},
                            {"", "<a/><a/><a/>", strWrap + strTooMany},
                            {"c", "", ""},
                            {"c", "<a>1</a><a>2</a><a>3</a>", "0:[1|2|3]"},
                        });
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    EXPECT_EQ(Write(*pSheet), "CQnValidationException: Failed to convert the element [r] to XML < "
                              "CQnValidationException: " +
                                  strTooFew);
    EXPECT_EQ(Write(*pSheet, "c"), "");
}

TEST(SequenceFailures, AMandatoryMemberCannotBeWrittenEmpty)
{
    const auto failure = [](CElementInfo* pMember) {
        const CTables tables(kSequence, kReal, {pMember});
        const CSmartPtr<CSheet> pSheet(new CSheet(tables));
        return Write(*pSheet);
    };
    CElementInfo* const members[] = {
        Prim<CElementInfoSeqPrimMnd>("a", 0), Enum<CElementInfoSeqEnumMnd>("a", 0),
        new CElementInfoSeqClsMnd("a", "", 0, kReal, MakeSheet, 0, false),
        new CElementInfoSeqAbsClsMnd("a", "", 0, kReal, MakeTool),
        new CElementInfoSeqUntpdMnd("a", "", 0, "##any", "")};
    for (CElementInfo* const pMember : members) {
        EXPECT_EQ(failure(pMember),
                  "CQnValidationException: Failed to convert the element [r] to XML < "
                  "CQnInvalidParamException: The Property [a] is mandatory, it may not be NULL");
    }
    CElementInfo* const others[] = {Prim<CElementInfoSeqPrimOpt>("a", 0),
                                    Enum<CElementInfoSeqEnumOpt>("a", 0),
                                    new CElementInfoSeqClsOpt("a", "", 0, kReal, MakeSheet, 0),
                                    new CElementInfoSeqAbsClsOpt("a", "", 0, kReal, MakeTool),
                                    new CElementInfoSeqUntpdOpt("a", "", 0, "##any", ""),
                                    new CElementInfoSeqPrimCol("a", "", 0),
                                    new CElementInfoSeqClsCol("a", "", 0, kPseudo)};
    for (CElementInfo* const pMember : others)
        EXPECT_EQ(failure(pMember), "");
}

TEST(SequenceFailures, ReadingNeedsSomethingToReadInto)
{
    const std::string strFailure =
        "CQnValidationException: Failed to process the element. @/r < "
        "CQnInvalidParamException: The Property [a] is mandatory, it may not be NULL";
    const auto makeNothing = [](int, const char*) { return CSmartPtr<CXmlObjectBase>(); };
    CElementInfo* const members[] = {
        new CElementInfoSeqClsMnd("a", "", 0, kReal, MakeSheet, 0, false),
        new CElementInfoSeqClsMnd("a", "", 0, kPseudo, MakeSheet, 0, true),
        new CElementInfoSeqClsOpt("a", "", 0, kReal, makeNothing, 0),
        new CElementInfoSeqClsOpt("a", "", 0, kPseudo, makeNothing, 0),
        new CElementInfoSeqUntpdMnd("a", "", 0, "##any", ""),
        new CElementInfoSeqClsCol("a", "", 0, kReal),
        new CElementInfoSeqUntpdCol("a", "", 0)};
    for (CElementInfo* const pMember : members) {
        const CTables tables(kSequence, kReal, {pMember});
        EXPECT_EQ(Read(tables, "<a/>"), strFailure);
    }
    const CTables wrong(kSequence, kReal, {new CElementInfoSeqUntpdCol("a", "", 0)}, {},
                        {HeldItems(0, [] { return MakeTexts("a"); })});
    EXPECT_EQ(Read(wrong, "<a/>"),
              "CQnValidationException: Failed to process the element. @/r < CQnException: "
              "Serialization Data Error : The collection should be a CElementCol, it was not!");
}

TEST(PseudoChildAttributes, AreWrittenIntoTheElementAroundThem)
{
    const CTables tables(
        kSequence, kReal,
        {new CElementInfoSeqClsMnd("g", "", 0, kPseudo, MakeSheet, 0, false),
         new CElementInfoSeqClsOpt("v", "", 1, kReal, MakeSheet, Vice().GetClassId()),
         new CElementInfoSeqAbsClsMnd("h", "", 2, kPseudo, MakeTool),
         new CElementInfoSeqClsCol("i", "", 3, kPseudo),
         // Any other type lifts none.
         new CElementInfoSeqClsOpt("j", "", 4, static_cast<XmlElementType>(2), MakeSheet,
                                   Span().GetClassId())},
        {}, {HeldSheet(0, Span()), HeldItems(3, [] { return MakeSpans(""); })});
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    const auto makeSpan = [](int nFrom, const char* pszUnit) {
        const CSmartPtr<CSheet> pSpan(new CSheet(Span(), ""));
        pSpan->m_values[0].SetI4(nFrom);
        pSpan->m_values[2].SetString(pszUnit);
        return pSpan;
    };
    pSheet->m_values[0].SetXmlObject(makeSpan(1, "mm").GetPtr());
    pSheet->m_values[2].SetXmlObject(makeSpan(2, "cm").GetPtr());
    static_cast<CSheetCol*>(pSheet->m_values[3].PeekXmlCollection())
        ->Add(makeSpan(3, "km").GetPtr());
    pSheet->m_values[4].SetXmlObject(makeSpan(4, "ft").GetPtr());
    EXPECT_EQ(pSheet->ToXml(false, false, EOLType_LF, CSerializationContext()),
              "<r unit=\"mm\" unit=\"cm\" unit=\"km\"><from>1</from><from>2</from><from>3</from>"
              "<from>4</from></r>");
    // They come back where neither class is strict, and the optional ones only with elements.
    const CSmartPtr<CSheet> pRead(new CSheet(tables));
    EXPECT_EQ(Failure([&] {
                  pRead->FromXml("<r unit='mm'><from>1</from></r>", CSerializationContext());
              }),
              "CQnException: Unexpected Attribute found. @/r/@unit");
}
