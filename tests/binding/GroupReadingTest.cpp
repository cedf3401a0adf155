// How the three groups walk their tables, whatever the entries are.

#include "tests/model/Probe.h"
#include "tests/model/Sheet.h"

#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"

#include <gtest/gtest.h>
#include <sstream>

using namespace QnXmlLib16;
using namespace Model;

namespace {

constexpr auto kSeq = XmlElementGroupType_Sequence;
constexpr auto kAll = XmlElementGroupType_All;
constexpr auto kChoice = XmlElementGroupType_Choice;
constexpr auto kOther = static_cast<XmlElementType>(2);

// Opens the reading of a child to the tests.
class CGroup : public CProbe
{
public:
    using CProbe::CProbe;
    using CProbe::FromXml_Int;
};

// Reads <r> with an empty child for each word: the first child that was not consumed, or the
// failure. Flags are u for ignoring unknown elements and o for a choice that may be empty.
std::string Rest(CGroup& group, const std::string& strChildren, const std::string& strFlags)
{
    std::istringstream words(strChildren);
    std::string strXml = "<r>";
    for (std::string strWord; words >> strWord;)
        strXml += "<" + strWord + "/>";
    CXmlDocument document;
    document.LoadXml((strXml + "</r>").c_str());
    CXmlElement* const pRoot = document.GetDocumentElement();
    const CXmlElement* pRest = nullptr;
    const bool bOptional = strFlags == "o" || strFlags == "uo";
    const CSerializationContext context = MakeContext(strFlags[0] == 'u' ? "u" : "");
    const std::string strFailure = Failure(
        [&] { pRest = group.FromXml_Int(pRoot, pRoot->GetFirstElement(), context, bOptional); });
    return pRest ? pRest->GetLocalName() : strFailure;
}

} // namespace

TEST(GroupReading, WalksTheTableAgainstTheChildren)
{
    const std::string strMissed = "CQnValidationException: Failed to process the element. @/r < "
                                  "CQnValidationException: Failed to find the mandatory element "
                                  "[a].";
    const std::string strNone =
        "CQnException: No child elements within the element [r] were populated. The element "
        "represents a choice, so one and only one element should be populated @/r";
    // More entries than there are flags on the stack, met from the last to the first.
    std::string strMany;
    std::string strManyChildren;
    for (int i = 0; i < 70; ++i) {
        const std::string strName = "e" + std::to_string(i) + " ";
        strMany += "m:" + strName;
        strManyChildren.insert(0, strName);
    }
    struct Row
    {
        XmlElementGroupType group;
        XmlElementType type;
        std::string table; // as AddElements takes it
        std::string children;
        const char* flags;
        std::string taken;  // by the entries, in this order
        std::string result; // of Rest
    };
    const Row rows[] = {
        {kSeq, kReal, "o:a o:b", "a b", "", "a b ", ""},
        {kSeq, kReal, "o:a o:b", "b a", "", "b ", LeftOver("a")},
        {kSeq, kPseudo, "o:a", "a x", "u", "a ", "x"},
        // An entry that does not match undoes the group, or skips one element.
        {kSeq, kReal, "t:a", "x", "", "", "x"},
        {kSeq, kPseudo, "o:a t:b", "a x", "", "a ", "a"},
        {kSeq, kPseudo, "o:a t:b", "a x y b z", "u", "a b ", "z"},
        {kSeq, kPseudo, "o:a t:b", "a x y", "u", "a ", "a"},
        {kSeq, kReal, "t:a o:b", "x y a b", "u", "a b ", ""},
        // Behind the table, one element at a time is skipped for the last entry alone.
        {kSeq, kReal, "o:a c:b", "a b x b b y b", "u", "a b b b b ", ""},
        {kSeq, kReal, "o:a o:b", "x a", "u", "", ""},
        {kSeq, kReal, "t:a t:b", "a b x b", "u", "a b b ", ""},
        {kSeq, kReal, "", "x", "", "", LeftOver("x")},
        {kSeq, kReal, "", "x y", "u", "", ""},
        {kSeq, kPseudo, "", "x", "u", "", "x"},

        {kAll, kReal, "m:a m:b t:c", "c a b", "", "c a b ", ""},
        {kAll, kReal, "m:a t:b", "b", "", "b ", strMissed},
        {kAll, kReal, "m:a t:b", "", "", "", strMissed},
        {kAll, kPseudo, "m:a t:b", "b", "", "b ", "b"},
        {kAll, kPseudo, "m:a t:b", "b a x", "", "b a ", "x"},
        // An entry that has read is not asked again.
        {kAll, kReal, "t:a", "a a", "", "a ", LeftOver("a")},
        // What is left over under the relaxation stays unread: nothing is skipped.
        {kAll, kReal, "t:a t:b", "a x b", "u", "a ", "x"},
        {kAll, kReal, "", "x", "", "", LeftOver("x")},
        {kAll, kReal, strMany, strManyChildren, "", strManyChildren, ""},

        {kChoice, kReal, "t:a t:a", "a", "", "a ", ""}, // the first hit wins
        {kChoice, kReal, "t:a t:b", "a b", "", "a ", LeftOver("b")},
        {kChoice, kReal, "t:a t:b", "a b", "u", "a ", "b"},
        {kChoice, kPseudo, "t:a t:b", "a b", "", "a ", "b"},
        {kChoice, kOther, "t:a t:b", "a x", "u", "a ", "x"},
        // Nothing matches.
        {kChoice, kReal, "t:a", "", "", "", strNone},
        {kChoice, kReal, "t:a", "x", "", "", strNone},
        {kChoice, kReal, "t:a", "x y", "u", "", strNone},
        {kChoice, kReal, "t:a", "", "o", "", ""},
        {kChoice, kReal, "t:a", "x", "o", "", LeftOver("x")},
        {kChoice, kReal, "t:a", "x", "uo", "", ""},
        {kChoice, kPseudo, "t:a", "x", "", "", "x"},
        {kChoice, kOther, "t:a", "x", "u", "", "x"},
        // Unknown elements in front are skipped in a real element only.
        {kChoice, kReal, "t:a", "x y a z", "u", "a ", "z"},
        {kChoice, kPseudo, "t:a", "x a", "u", "", "x"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.table + " | " + row.children + " | " + row.flags);
        CGroup group(row.group, row.type);
        group.AddElements(row.table);
        EXPECT_EQ(Rest(group, row.children, row.flags), row.result);
        EXPECT_EQ(group.m_strTaken, row.taken);
    }
}

TEST(GroupReading, AnEntryThatMovedTheCursorInVainIsUndoneWhereUnknownElementsAreIgnored)
{
    CGroup group(kChoice, kPseudo);
    group.AddElement(std::make_unique<CScriptInfo>("x")).m_read = [](CXmlElement*& pCursor) {
        pCursor = pCursor->GetNextSiblingElement();
        return false;
    };
    EXPECT_EQ(Rest(group, "x y", ""), "y");
    EXPECT_EQ(Rest(group, "x y", "u"), "x");
}

TEST(ElementTable, IsSearchedByName)
{
    CXmlDocument document;
    document.LoadXml("<probe><b/><b xmlns='urn:n'/><c/></probe>");
    CXmlElement* const pB = document.GetDocumentElement()->GetFirstElement();
    CXmlElement* const pOtherB = pB->GetNextSiblingElement();
    CProbe probe(XmlElementGroupType_Sequence);
    probe.AddElements("o:a o:b");
    EXPECT_EQ(probe.GetClassElementInfoCount(), 2);
    CSerializationContext context;
    EXPECT_TRUE(probe.IsElementInList(context, pB));
    for (CXmlElement* const pOther : {pOtherB, pOtherB->GetNextSiblingElement()})
        EXPECT_FALSE(probe.IsElementInList(context, pOther));
    context.SetIgnoreNamespaces(true);
    EXPECT_TRUE(probe.IsElementInList(context, pOtherB));
}
