#include "tests/model/Entries.h"

#include "QnXmlLib16/binding/AttributeInfo.h"
#include "QnXmlLib16/binding/ElementInfoAll.h"
#include "QnXmlLib16/binding/ElementInfoChoice.h"
#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "QnXmlLib16/collections/Element.h"
#include "QnXmlLib16/support/Exceptions.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

CAttributeInfo* Attribute()
{
    return new CAttributeInfoPrimitive("id", "", 20, true, it_i4, nullptr,
                                       CWhitespaceUtils::WhitespaceRule_None, {}, nullptr);
}

// Three classes with members of each kind, and a document for each.
struct Case
{
    const CTables& tables;
    std::string xml;
};

std::vector<Case> Cases()
{
    static const CTables sequence(
        XmlElementGroupType_Sequence, kReal,
        {Prim<CElementInfoSeqPrimMnd>("a", 0), Enum<CElementInfoSeqEnumOpt>("b", 1),
         new CElementInfoSeqClsMnd("c", "", 2, kReal, MakeSheet, 0, false),
         new CElementInfoSeqClsOpt("d", "", 3, kPseudo, MakeSheet, Span().GetClassId()),
         new CElementInfoSeqAbsClsMnd("tool", "", 4, kReal, MakeTool),
         new CElementInfoSeqUntpdOpt("e", "", 5, "##any", ""),
         new CElementInfoSeqPrimCol("f", "", 6), new CElementInfoSeqClsCol("g", "", 7, kReal),
         new CElementInfoSeqUntpdCol("h", "", 8)},
        {Attribute()},
        {HeldSheet(2, Vice(), "c"), HeldItems(6, [] { return MakeTexts("f"); }),
         HeldItems(7, [] { return MakeVices("g"); }), HeldItems(8, MakeWildcards)});
    static const CTables all(
        XmlElementGroupType_All, kReal,
        {Prim<CElementInfoAllPrimMnd>("a", 0), Enum<CElementInfoAllEnumOpt>("b", 1),
         new CElementInfoAllClsMnd("c", "", 2, kReal, MakeSheet, 0, true),
         new CElementInfoAllClsOpt("d", "", 3, kPseudo, MakeSheet, Span().GetClassId()),
         new CElementInfoAllAbsClsOpt("tool", "", 4, kReal, MakeTool),
         new CElementInfoAllUntpdOpt("e", "", 5, "##any", "")},
        {Attribute()}, {HeldSheet(2, Vice(), "c")});
    static const CTables choice(
        XmlElementGroupType_Choice, kReal,
        {new CElementInfoChoiceClsOpt("s", "", 1, kPseudo, MakeSheet, Span().GetClassId()),
         new CElementInfoChoiceAbsClsOpt("tool", "", 2, kReal, MakeTool),
         new CElementInfoChoiceClsCol("g", "", 3, kReal)},
        {Attribute()}, {HeldItems(3, [] { return MakeVices("g"); })});
    const std::string strShared = "<a>1</a><b>raw</b><c><jaw>1</jaw></c><from>1</from>" +
                                  ToolXml("tool", "Saw", "<teeth>1</teeth>") + "<e><x/></e>";
    return {{sequence, strShared + "<f>1</f><f>2</f><g><jaw>1</jaw></g><h>1</h>"},
            {all, strShared},
            {choice, ToolXml("tool", "Hammer", "<weight>1</weight>")},
            {choice, "<g><jaw>1</jaw></g><g><jaw>2</jaw></g>"}};
}

struct Foreign
{};

} // namespace

TEST(Interruptions, AtAnyAccessLeaveNoLeakAndAReusableObject)
{
    const int nAlive = CSheet::s_nAlive;
    for (const Case& test : Cases()) {
        SCOPED_TRACE(test.xml);
        const std::string strDocument = "<r id='7'>" + test.xml + "</r>";
        const CSmartPtr<CSheet> pSheet(new CSheet(test.tables));
        pSheet->FromXml(strDocument.c_str(), CSerializationContext());
        const std::string strDump = pSheet->Dump();
        const std::string strXml = pSheet->ToXml(false, false, EOLType_LF, CSerializationContext());
        for (const bool bForeign : {false, true}) {
            for (const bool bReading : {true, false}) {
                int nThrowAt = 0;
                int nDone = 0;
                bool bThrown = true;
                for (; bThrown; ++nThrowAt) {
                    nDone = 0;
                    pSheet->m_before = [&](int, bool) {
                        if (nDone++ != nThrowAt)
                            return;
                        if (bForeign)
                            throw Foreign();
                        throw CQnInvalidStateException("not now");
                    };
                    bThrown = true;
                    try {
                        if (bReading)
                            pSheet->FromXml(strDocument.c_str(), CSerializationContext());
                        else
                            pSheet->ToXml(false, false, EOLType_LF, CSerializationContext());
                        bThrown = false;
                    }
                    catch (const Foreign&) {
                        EXPECT_TRUE(bForeign);
                    }
                    catch (const CQnException& e) {
                        EXPECT_FALSE(bForeign);
                        EXPECT_NE(e.GetFullMessage().find("not now"), std::string::npos);
                    }
                }
                EXPECT_GE(nThrowAt, 3);
                pSheet->m_before = nullptr;
                pSheet->FromXml(strDocument.c_str(), CSerializationContext());
                EXPECT_EQ(pSheet->Dump(), strDump);
                EXPECT_EQ(pSheet->ToXml(false, false, EOLType_LF, CSerializationContext()), strXml);
            }
        }
    }
    EXPECT_EQ(CSheet::s_nAlive, nAlive);
}

TEST(Interruptions, ByAPropertyTellItsPlaceOrItsName)
{
    const CTables tables(
        XmlElementGroupType_Sequence, kReal,
        {Prim<CElementInfoSeqPrimMnd>("a", 0), Enum<CElementInfoSeqEnumMnd>("b", 1),
         new CElementInfoSeqClsOpt("c", "", 2, kReal, MakeSheet, Vice().GetClassId()),
         new CElementInfoSeqClsOpt("d", "", 3, kPseudo, MakeSheet, Span().GetClassId()),
         new CElementInfoSeqUntpdOpt("AnyElement", "", 4, "##any", "")},
        {Attribute()});
    const std::string strDocument = "<r id='1'><a>1</a><b>raw</b><c><jaw>1</jaw></c><from>1</from>"
                                    "<e/></r>";
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    struct Row
    {
        int property;
        const char* path;
        const char* name;
        const char* wrap; // of what the attributes fail with
    };
    const char* const pszAttributes = "CQnException: Failed to convert attributes to XML < ";
    const Row rows[] = {{20, "/r/@id", "id", pszAttributes},
                        {0, "/r/a", "a", ""},
                        {1, "/r/b", "b", ""},
                        {2, "/r/c", "c", ""},
                        {3, "/r/from", "d", pszAttributes}, // lifted from the pseudo child
                        {4, "/r/e", "AnyElement", ""}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        pSheet->FromXml(strDocument.c_str(), CSerializationContext());
        pSheet->m_before = [&](int nProperty, bool) {
            if (nProperty == row.property)
                throw CQnInvalidStateException("not now");
        };
        EXPECT_EQ(Write(*pSheet),
                  "CQnValidationException: Failed to convert the element [r] to XML < " +
                      std::string(row.wrap) +
                      "CQnValidationException: Failed to get the property value for [" + row.name +
                      "]. < CQnInvalidStateException: not now");
        EXPECT_EQ(Failure([&] { pSheet->FromXml(strDocument.c_str(), CSerializationContext()); }),
                  "CQnException: Failed to set the property value. @" + std::string(row.path) +
                      " < CQnInvalidStateException: not now");
        pSheet->m_before = nullptr;
    }
}

TEST(Interruptions, ByAListenerEndTheRead)
{
    class CThrower : public IEventSink
    {
    public:
        CXmlObjectBase* GetBase() override { return nullptr; }
        void OnEvent(CXmlObjectBase*, MsgType, void*) override
        {
            throw CQnInvalidStateException("full");
        }
    };
    CThrower thrower;
    for (CElementInfo* const pMember :
         {static_cast<CElementInfo*>(new CElementInfoSeqPrimCol("a", "", 0)),
          static_cast<CElementInfo*>(new CElementInfoSeqUntpdCol("a", "", 0)),
          static_cast<CElementInfo*>(new CElementInfoSeqClsCol("a", "", 0, kReal))}) {
        const bool bClass = dynamic_cast<CElementInfoSeqClsCol*>(pMember) != nullptr;
        const bool bTexts = dynamic_cast<CElementInfoSeqPrimCol*>(pMember) != nullptr;
        bool bListens = true;
        const CTables tables(XmlElementGroupType_Sequence, kReal, {pMember}, {},
                             {HeldItems(0, [&]() -> CXmlCollectionBase* {
                                 CXmlCollectionBase* const pItems = bTexts   ? MakeTexts("a")
                                                                    : bClass ? MakeVices("a")
                                                                             : MakeWildcards();
                                 if (bListens)
                                     pItems->AddEventListener(&thrower);
                                 return pItems;
                             })});
        const CSmartPtr<CSheet> pSheet(new CSheet(tables));
        const std::string strXml = "<a><jaw>1</jaw></a><a><jaw>2</jaw></a>";
        EXPECT_EQ(Read(*pSheet, strXml), "CQnValidationException: Failed to process the element. "
                                         "@/r < CQnInvalidStateException: full");
        EXPECT_EQ(pSheet->Dump(), "");
        bListens = false;
        EXPECT_EQ(Read(*pSheet, strXml).substr(0, 3), "0:[");
    }
}

TEST(Interruptions, ByACreateFunctionPassAsTheyAre)
{
    const std::string strFailure = "CQnValidationException: Failed to process the element. @/r < "
                                   "CQnInvalidStateException: out of stock";
    const auto outOfStock = [](int, const char*) -> CSmartPtr<CXmlObjectBase> {
        throw CQnInvalidStateException("out of stock");
    };
    struct Row
    {
        XmlElementGroupType group;
        CElementInfo* member;
    };
    const Row rows[] = {
        {XmlElementGroupType_Sequence, new CElementInfoSeqClsOpt("a", "", 0, kReal, outOfStock, 0)},
        {XmlElementGroupType_Sequence,
         new CElementInfoSeqClsOpt("a", "", 0, kPseudo, outOfStock, 0)},
        {XmlElementGroupType_Sequence, new CElementInfoSeqAbsClsMnd("a", "", 0, kReal, MakeTool)},
        {XmlElementGroupType_Sequence, new CElementInfoSeqAbsClsOpt("a", "", 0, kReal, MakeTool)},
        {XmlElementGroupType_All, new CElementInfoAllClsOpt("a", "", 0, kReal, outOfStock, 0)},
        {XmlElementGroupType_All, new CElementInfoAllAbsClsMnd("a", "", 0, kReal, MakeTool, 0)},
        {XmlElementGroupType_Choice,
         new CElementInfoChoiceClsOpt("a", "", 0, kReal, outOfStock, 0)},
        {XmlElementGroupType_Choice, new CElementInfoChoiceAbsClsOpt("a", "", 0, kReal, MakeTool)},
    };
    for (const Row& row : rows) {
        const CTables tables(row.group, kReal, {row.member});
        const CSmartPtr<CSheet> pSheet(new CSheet(tables));
        EXPECT_EQ(Read(*pSheet, ToolXml("a", "Drill", "")), strFailure);
        EXPECT_EQ(pSheet->Dump(), "");
    }
}

TEST(FailedReads, TellTheInnermostPlaceOnceAndKeepWhatWasRead)
{
    const CTables tables(
        XmlElementGroupType_Sequence, kReal,
        {Prim<CElementInfoSeqPrimMnd>("a", 0),
         new CElementInfoSeqClsOpt("vice", "", 1, kReal, MakeSheet, Vice().GetClassId())});
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    EXPECT_EQ(Read(*pSheet, "<a>1</a><vice><jaw>wide</jaw></vice>").substr(0, 80),
              "CQnException: Failed to process the element. @/r/vice < CQnInvalidValueException");
    // A new child is assigned once it has been read.
    EXPECT_EQ(pSheet->Dump(), "0:1");
    EXPECT_EQ(Read(*pSheet, "<a>1</a><vice no='x'><jaw>1</jaw></vice>").substr(0, 80),
              "CQnException: Failed to process the element. @/r/vice < CQnInvalidValueException");
    EXPECT_EQ(Read(*pSheet, "<a>2</a><vice><jaw>1</jaw></vice>"), "0:2 1:{1:1}");
}
