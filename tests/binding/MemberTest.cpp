// Every class of the element metadata goes through the same trials.

#include "tests/model/Entries.h"

#include "QnXmlLib16/QnXmlLib16.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

constexpr auto kSeq = XmlElementGroupType_Sequence;
constexpr auto kAll = XmlElementGroupType_All;
constexpr auto kChoice = XmlElementGroupType_Choice;
constexpr auto kOther = static_cast<XmlElementType>(2);

const std::string kNotRead = "CQnValidationException: Failed to process the element. @/r < ";
const std::string kNotWritten =
    "CQnValidationException: Failed to convert the element [r] to XML < ";
const std::string kEmptyProperty =
    "CQnInvalidParamException: The Property [a] is mandatory, it may not be NULL";

// Arguments of the entries.
constexpr int kViceId = 0;
constexpr int kSpanId = 1;
constexpr char kAny[] = "##any";
constexpr char kNone[] = "";

// What the create function of the entries does.
enum class Creation
{
    Works,
    GivesNull,
    Throws
} s_creation = Creation::Works;

CSmartPtr<CXmlObjectBase> Create(int nClassId, const char* pszName)
{
    if (s_creation == Creation::Throws)
        throw CQnInvalidStateException("out of stock");
    if (s_creation == Creation::GivesNull)
        return {};
    return CSmartPtr<CSheet>(new CSheet(nClassId == kViceId ? Vice() : Span(), pszName));
}

// What an element and a property hold, with @ for the name of the member.
struct Content
{
    std::string xml;
    std::string dump;
    CHeld (*hold)(int nProperty, const char* pszName) = nullptr; // of one that has to be there
};

template <auto make>
CHeld Items(int nProperty, const char* pszName)
{
    return HeldItems(nProperty,
                     [strName = std::string(pszName)] { return make(strName.c_str(), 0, -1); });
}

const Content kNumber = {"<@>7</@>", "7"};
const Content kFinish = {"<@>oiled</@>", "1"};
const Content kVice = {"<@ no=\"1\"><jaw>2</jaw></@>", "{0:1 1:2}"};
const Content kHeldVice = {kVice.xml, kVice.dump,
                           [](int n, const char* psz) { return HeldSheet(n, Vice(), psz); }};
const Content kSpan = {"<from>1</from><to>2</to>", "{0:1 1:2}"};
const Content kHeldSpan = {kSpan.xml, kSpan.dump,
                           [](int n, const char*) { return HeldSheet(n, Span()); }};
const Content kHeldOther = kHeldSpan;
const Content kTool = {ToolXml("@", "Saw", "<teeth>3</teeth>"), "{0:3}"};
const Content kWild = {"<@ b=\"1\">x</@>", "<@ b=\"1\">x</@>"};
const Content kHeldWild = {kWild.xml, kWild.dump,
                           [](int n, const char*) { return HeldObject(n, MakeWildcard); }};
const Content kTexts = {"<@>1</@><@>2</@>", "[1|2]", Items<MakeTexts>};
const Content kVices = {kVice.xml + "<@><jaw>3</jaw></@>", "[{0:1 1:2}|{1:3}]", Items<MakeVices>};
const Content kSpans = {kSpan.xml + "<from>3</from>", "[{0:1 1:2}|{0:3}]", Items<MakeSpans>};
const Content kTools = {kTool.xml + ToolXml("@", "Hammer", "<weight>1.5</weight>"),
                        "[{0:3}|{0:1.5}]", Items<MakeTools>};
const Content kWilds = {"<@>1</@><@/>", "[<@>1</@>|<@/>]",
                        [](int n, const char*) { return HeldItems(n, MakeWildcards); }};

using Maker = CElementInfo* (*)(const char* pszName, int nProperty);

template <class T>
CElementInfo* Number(const char* pszName, int nProperty)
{
    return Prim<T>(pszName, nProperty, it_i4);
}

template <class T>
CElementInfo* Finish(const char* pszName, int nProperty)
{
    return Enum<T>(pszName, nProperty);
}

// Any other entry, with what its constructor takes behind the property.
template <class T, auto... arguments>
CElementInfo* New(const char* pszName, int nProperty)
{
    return new T(pszName, "", nProperty, arguments...);
}

// What reading without the member fails with.
const std::string kNotFound = "CQnException: Failed to find the required child element [a]. @/r";
const std::string kNoSubstitute =
    "CQnException: Failed to find a suitable substitution element for [a]. @/r";
const std::string kMissed =
    kNotRead + "CQnValidationException: Failed to find the mandatory element [a].";
// Ends every read of an all group with a collection.
const std::string kNotImplemented =
    kNotRead + "CQnException: Not implemented, should never be called";

struct Member
{
    XmlElementGroupType group;
    bool mandatory; // cannot be written empty
    Maker make;
    const Content& content;
    std::string missing = ""; // the failure of a read without it
    bool relaxed = false;     // not where the context lets mandatory elements be missing
};

const Member kMembers[] = {
    {kSeq, true, Number<CElementInfoSeqPrimMnd>, kNumber, kNotFound, true},
    {kSeq, false, Number<CElementInfoSeqPrimOpt>, kNumber},
    {kSeq, true, Finish<CElementInfoSeqEnumMnd>, kFinish, kNotFound, true},
    {kSeq, false, Finish<CElementInfoSeqEnumOpt>, kFinish},
    {kSeq, true, New<CElementInfoSeqClsMnd, kReal, Create, kViceId, false>, kHeldVice, kNotFound,
     true},
    {kSeq, true, New<CElementInfoSeqClsMnd, kPseudo, Create, kSpanId, false>, kHeldSpan},
    {kSeq, true, New<CElementInfoSeqClsMnd, kPseudo, Create, kSpanId, true>, kHeldSpan, kNotFound},
    {kSeq, false, New<CElementInfoSeqClsOpt, kReal, Create, kViceId>, kVice},
    {kSeq, false, New<CElementInfoSeqClsOpt, kPseudo, Create, kSpanId>, kSpan},
    {kSeq, true, New<CElementInfoSeqAbsClsMnd, kReal, MakeTool>, kTool, kNoSubstitute},
    {kSeq, false, New<CElementInfoSeqAbsClsOpt, kReal, MakeTool>, kTool},
    {kSeq, true, New<CElementInfoSeqUntpdMnd, kAny, kNone>, kHeldWild, kNotFound},
    {kSeq, false, New<CElementInfoSeqUntpdOpt, kAny, kNone>, kWild},
    {kSeq, false, New<CElementInfoSeqPrimCol>, kTexts},
    {kSeq, false, New<CElementInfoSeqEnumCol>, kTexts},
    {kSeq, false, New<CElementInfoSeqClsCol, kReal>, kVices},
    {kSeq, false, New<CElementInfoSeqClsCol, kPseudo>, kSpans},
    {kSeq, false, New<CElementInfoSeqAbsClsCol, kReal>, kTools},
    {kSeq, false, New<CElementInfoSeqUntpdCol>, kWilds},

    {kAll, true, Number<CElementInfoAllPrimMnd>, kNumber, kMissed},
    {kAll, false, Number<CElementInfoAllPrimOpt>, kNumber},
    {kAll, true, Finish<CElementInfoAllEnumMnd>, kFinish, kMissed},
    {kAll, false, Finish<CElementInfoAllEnumOpt>, kFinish},
    {kAll, true, New<CElementInfoAllClsMnd, kReal, Create, kViceId, true>, kHeldVice, kMissed},
    {kAll, true, New<CElementInfoAllClsMnd, kReal, Create, kViceId, false>, kHeldVice},
    {kAll, true, New<CElementInfoAllClsMnd, kPseudo, Create, kSpanId, false>, kHeldSpan, kMissed},
    {kAll, true, New<CElementInfoAllClsMnd, kOther, Create, kSpanId, false>, kHeldOther},
    {kAll, true, New<CElementInfoAllClsMnd, kOther, Create, kSpanId, true>, kHeldOther, kMissed},
    {kAll, false, New<CElementInfoAllClsOpt, kReal, Create, kViceId>, kVice},
    {kAll, false, New<CElementInfoAllClsOpt, kPseudo, Create, kSpanId>, kSpan},
    {kAll, true, New<CElementInfoAllAbsClsMnd, kReal, MakeTool, 0>, kTool, kMissed},
    {kAll, false, New<CElementInfoAllAbsClsOpt, kReal, MakeTool>, kTool},
    {kAll, true, New<CElementInfoAllUntpdMnd, kAny, kNone>, kHeldWild, kMissed},
    {kAll, false, New<CElementInfoAllUntpdOpt, kAny, kNone>, kWild},
    {kAll, false, New<CElementInfoAllPrimCol>, kTexts, kNotImplemented},
    {kAll, false, New<CElementInfoAllEnumCol>, kTexts, kNotImplemented},
    {kAll, false, New<CElementInfoAllClsCol, kReal>, kVices, kNotImplemented},
    {kAll, false, New<CElementInfoAllClsCol, kPseudo>, kSpans, kNotImplemented},
    {kAll, false, New<CElementInfoAllAbsClsCol, kReal>, kTools, kNotImplemented},
    {kAll, false, New<CElementInfoAllUntpdCol>, kWilds, kNotImplemented},

    {kChoice, false, Number<CElementInfoChoicePrimOpt>, kNumber},
    {kChoice, false, Finish<CElementInfoChoiceEnumOpt>, kFinish},
    {kChoice, false, New<CElementInfoChoiceClsOpt, kReal, Create, kViceId>, kVice},
    {kChoice, false, New<CElementInfoChoiceClsOpt, kPseudo, Create, kSpanId>, kSpan},
    {kChoice, false, New<CElementInfoChoiceAbsClsOpt, kReal, MakeTool>, kTool},
    {kChoice, false, New<CElementInfoChoiceUntpdOpt, kAny, kNone>, kWild},
    {kChoice, false, New<CElementInfoChoicePrimCol>, kTexts},
    {kChoice, false, New<CElementInfoChoiceEnumCol>, kTexts},
    {kChoice, false, New<CElementInfoChoiceClsCol, kReal>, kVices},
    {kChoice, false, New<CElementInfoChoiceClsCol, kPseudo>, kSpans},
    {kChoice, false, New<CElementInfoChoiceAbsClsCol, kReal>, kTools},
    {kChoice, false, New<CElementInfoChoiceUntpdCol>, kWilds},
};

// Whether the child has the attributes of the element around it.
bool IsPseudo(const Member& member)
{
    return &member.content == &kSpan || &member.content == &kHeldSpan || &member.content == &kSpans;
}

// Whether the member takes elements of any name: wildcards of an all group look at none.
bool TakesAll(const Member& member)
{
    return member.group == kAll && &member.content == &kWilds;
}

// Whether the member makes its object by Create().
bool IsCreated(const Member& member)
{
    return &member.content == &kVice || &member.content == &kSpan;
}

std::string Named(std::string strText, const std::string& strName)
{
    for (std::size_t n; (n = strText.find('@')) != std::string::npos;)
        strText.replace(n, 1, strName);
    return strText;
}

// A bound class with a member a, property 0, and an optional number z, property 1.
class CPair
{
public:
    explicit CPair(const Member& member, bool bHolds = true)
        : m_tables(member.group, kReal, {member.make("a", 0), MakeZ(member.group)}, {},
                   bHolds && member.content.hold ? std::vector{member.content.hold(0, "a")}
                                                 : std::vector<CHeld>{}),
          m_trace(__FILE__, __LINE__, "member " + std::to_string(&member - kMembers)),
          m_strXml(Named(member.content.xml, "a")),
          m_strDump("0:" + Named(member.content.dump, "a")),
          m_pSheet(new CSheet(m_tables))
    {}

    const CTables m_tables;
    const testing::ScopedTrace m_trace;
    const std::string m_strXml;
    const std::string m_strDump;
    const CSmartPtr<CSheet> m_pSheet;

private:
    static CElementInfo* MakeZ(XmlElementGroupType group)
    {
        return group == kSeq   ? Number<CElementInfoSeqPrimOpt>("z", 1)
               : group == kAll ? Number<CElementInfoAllPrimOpt>("z", 1)
                               : Number<CElementInfoChoicePrimOpt>("z", 1);
    }
};

} // namespace

TEST(EveryMember, ReadsWhatItWrites)
{
    for (const Member& member : kMembers) {
        const CPair pair(member);
        CSheet& sheet = *pair.m_pSheet;
        const bool bEndsRead = member.missing == kNotImplemented;
        const auto expect = [&](const std::string& strXml, const std::string& strDump) {
            EXPECT_EQ(Read(sheet, strXml), bEndsRead ? kNotImplemented : strDump);
            EXPECT_EQ(sheet.Dump(), strDump);
        };
        const std::string strZ = "<z>5</z>";
        if (member.group != kChoice && !TakesAll(member))
            expect(pair.m_strXml + strZ, pair.m_strDump + " 1:5");
        if (member.group == kAll && !TakesAll(member)) {
            expect(strZ + pair.m_strXml, pair.m_strDump + " 1:5");
            EXPECT_EQ(WriteChildren(sheet), pair.m_strXml + strZ);
        }
        expect(pair.m_strXml, pair.m_strDump);
        EXPECT_EQ(WriteChildren(sheet), pair.m_strXml);
        EXPECT_EQ(Read(sheet, pair.m_strXml + "<x xmlns='urn:x'/>"),
                  bEndsRead ? kNotImplemented : LeftOver("x"));
    }
}

TEST(EveryMember, IsMissedOrMayBeAbsent)
{
    for (const Member& member : kMembers) {
        const CPair pair(member);
        for (const char* const pszFlags : {"", "u", "m", "x"}) {
            const bool bRelaxed = member.relaxed && *pszFlags == 'm';
            EXPECT_EQ(Read(pair.m_tables, "", pszFlags), bRelaxed ? "" : member.missing);
        }
        // An all group reads what there is before it misses anything.
        if (!TakesAll(member) && (member.group == kAll || member.missing.empty())) {
            EXPECT_EQ(Read(*pair.m_pSheet, "<z>5</z>"),
                      member.missing.empty() ? "1:5" : member.missing);
            EXPECT_NE(pair.m_pSheet->Dump().find("1:5"), std::string::npos);
        }
        const CPair empty(member, false);
        for (const char* const pszFlags : {"x", "xm"})
            EXPECT_EQ(WriteChildren(*empty.m_pSheet, pszFlags),
                      member.mandatory ? kNotWritten + kEmptyProperty : "");
    }
}

TEST(EveryMember, ThatReadsIntoAnObjectNeedsOne)
{
    s_creation = Creation::GivesNull;
    for (const Member& member : kMembers) {
        const CPair empty(member, false);
        const bool bNeedsOne = IsCreated(member) || member.content.hold;
        EXPECT_EQ(Read(*empty.m_pSheet, empty.m_strXml),
                  bNeedsOne ? kNotRead + kEmptyProperty : empty.m_strDump);
    }
    s_creation = Creation::Works;
}

TEST(EveryMember, PassesOnWhatItsCreateFunctionThrows)
{
    s_creation = Creation::Throws;
    for (const Member& member : kMembers) {
        if (!IsCreated(member) && &member.content != &kTool)
            continue;
        const CPair pair(member);
        EXPECT_EQ(
            Read(*pair.m_pSheet, IsCreated(member) ? pair.m_strXml : ToolXml("a", "Drill", "")),
            kNotRead + "CQnInvalidStateException: out of stock");
        EXPECT_EQ(pair.m_pSheet->Dump(), "");
    }
    s_creation = Creation::Works;
}

TEST(EveryMember, LiftsTheAttributesOfAPseudoChild)
{
    const std::string strXml = "<r unit=\"mm\"><from>1</from></r>";
    for (const Member& member : kMembers) {
        if (!IsPseudo(member))
            continue;
        const CPair pair(member);
        Failure([&] { pair.m_pSheet->FromXml(strXml.c_str(), MakeContext("a")); });
        EXPECT_EQ(ToText(*pair.m_pSheet), strXml);
    }
}

// By an exception of the family or a foreign one, in reading and in writing.
TEST(Interruptions, AtAnyAccessLeaveNoLeakAndAReusableObject)
{
    struct Foreign
    {};
    const int nAlive = CSheet::s_nAlive;
    for (const Member& member : kMembers) {
        const CPair pair(member);
        CSheet& sheet = *pair.m_pSheet;
        for (int i = 0; i < 4 && member.missing != kNotImplemented; ++i) {
            const bool bForeign = i % 2 == 1;
            bool bThrown = true;
            int nAccess = 0;
            for (; bThrown; ++nAccess) {
                EXPECT_EQ(Read(sheet, pair.m_strXml), pair.m_strDump);
                sheet.m_before = [nLeft = nAccess, bForeign](int, bool) mutable {
                    if (nLeft-- != 0)
                        return;
                    if (bForeign)
                        throw Foreign();
                    throw CQnInvalidStateException("not now");
                };
                try {
                    const std::string strResult =
                        i < 2 ? Read(sheet, pair.m_strXml) : WriteChildren(sheet);
                    bThrown = strResult.find("not now") != std::string::npos;
                }
                catch (const Foreign&) {
                }
                sheet.m_before = nullptr;
            }
            EXPECT_GE(nAccess, 2);
            EXPECT_EQ(WriteChildren(sheet), pair.m_strXml);
        }
    }
    EXPECT_EQ(CSheet::s_nAlive, nAlive);
}

TEST(Interruptions, ByAPropertyTellItsPlaceOrItsName)
{
    const std::string strNotNow = " < CQnInvalidStateException: not now";
    const std::string strNotGot =
        "CQnValidationException: Failed to get the property value for [a]." + strNotNow;
    const std::string strAttributes = "CQnException: Failed to convert attributes to XML < ";
    for (const Member& member : kMembers) {
        const CPair pair(member);
        CSheet& sheet = *pair.m_pSheet;
        sheet.m_before = [](int, bool) { throw CQnInvalidStateException("not now"); };
        EXPECT_EQ(WriteChildren(sheet),
                  kNotWritten + (IsPseudo(member) ? strAttributes : "") + strNotGot);
        EXPECT_EQ(Read(sheet, pair.m_strXml),
                  member.content.hold
                      ? kNotRead + strNotGot
                      : "CQnException: Failed to set the property value. @/r/" +
                            std::string(IsPseudo(member) ? "from" : "a") + strNotNow);
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
    for (const Member& member : kMembers) {
        const CPair pair(member);
        if (!pair.m_pSheet->m_values[0].PeekXmlCollection() || member.group == kAll)
            continue;
        bool bListens = true;
        const auto hold = [&](QnVariant& value) {
            member.content.hold(0, "a").hold(value);
            if (bListens)
                value.PeekXmlCollection()->AddEventListener(&thrower);
        };
        const CTables tables(member.group, kReal, {member.make("a", 0)}, {}, {{0, hold}});
        const CSmartPtr<CSheet> pSheet(new CSheet(tables));
        EXPECT_EQ(Read(*pSheet, pair.m_strXml), kNotRead + "CQnInvalidStateException: full");
        EXPECT_EQ(pSheet->Dump(), "");
        bListens = false;
        EXPECT_EQ(Read(*pSheet, pair.m_strXml), pair.m_strDump);
    }
}

TEST(FailedReads, TellTheInnermostPlaceOnceAndKeepWhatWasRead)
{
    const CTables tables(kSeq, kReal,
                         {Number<CElementInfoSeqPrimMnd>("a", 0),
                          New<CElementInfoSeqClsOpt, kReal, Create, kViceId>("vice", 1)});
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    const std::string strFailure =
        "CQnException: Failed to process the element. @/r/vice < CQnInvalidValueException";
    const auto read = [&](const char* pszXml) {
        return Read(*pSheet, pszXml).substr(0, strFailure.size());
    };
    EXPECT_EQ(read("<a>1</a><vice><jaw>wide</jaw></vice>"), strFailure);
    EXPECT_EQ(pSheet->Dump(), "0:1"); // a new child is assigned once it has been read
    EXPECT_EQ(read("<a>1</a><vice no='x'><jaw>1</jaw></vice>"), strFailure);
    EXPECT_EQ(read("<a>2</a><vice><jaw>1</jaw></vice>"), "0:2 1:{1:1}");
}
