#include "tests/model/Failure.h"
#include "tests/model/Probe.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/collections/stringCol.h"
#include "QnXmlLib16/values/QnVariant.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"

#include <gtest/gtest.h>
#include <sstream>

using namespace QnXmlLib16;
using Model::CProbe;
using Model::CScriptInfo;
using Model::ExpectFailure;

namespace {

constexpr XmlElementType kReal = XmlElementType_Element;
constexpr XmlElementType kPseudo = XmlElementType_PseudoElement;
constexpr auto kOther = static_cast<XmlElementType>(2);

// A document with one empty child for each word.
std::string Document(const std::string& strChildren)
{
    std::istringstream words(strChildren);
    std::string strXml = "<probe>";
    for (std::string strWord; words >> strWord;)
        strXml += "<" + strWord + "/>";
    return strXml + "</probe>";
}

std::string NameOf(const CXmlElement* pElement)
{
    return pElement ? pElement->GetLocalName() : "";
}

std::string LeftOver(const std::string& strName)
{
    return "Failed read all the elements held within the element [probe]. The unexpected element "
           "[" +
           strName + "] remains un processed";
}

CSerializationContext Context(bool bIgnoreUnknown)
{
    CSerializationContext context;
    context.SetIgnoreUnknownElements(bIgnoreUnknown);
    return context;
}

} // namespace

TEST(SequenceReading, WalksTheTableAgainstTheChildren)
{
    struct Row
    {
        const char* table;
        const char* children;
        XmlElementType type;
        bool ignoreUnknown;
        const char* taken;
        const char* rest;     // the first child that was not consumed
        const char* leftOver; // the child that the failure names
    };
    const Row rows[] = {
        {"o:a o:b", "a b", kReal, false, "a b ", "", nullptr},
        {"o:a o:b", "b", kReal, false, "b ", "", nullptr},
        {"o:a o:b", "b a", kReal, false, "b ", "", "a"},
        {"o:a o:b", "a a", kReal, false, "a ", "", "a"},
        {"o:a", "a x", kPseudo, false, "a ", "x", nullptr},
        {"o:a", "a x", kPseudo, true, "a ", "x", nullptr},
        // An entry that does not match undoes the group, or skips one element.
        {"t:a", "x", kReal, false, "", "x", nullptr},
        {"o:a t:b", "a x", kPseudo, false, "a ", "a", nullptr},
        {"o:a t:b", "a x y b z", kPseudo, true, "a b ", "z", nullptr},
        {"o:a t:b", "a x y", kPseudo, true, "a ", "a", nullptr},
        {"t:a o:b", "x y a b", kReal, true, "a b ", "", nullptr},
        // Behind the table, one element at a time is skipped for the last entry alone.
        {"o:a c:b", "a b x b b y b", kReal, true, "a b b b b ", "", nullptr},
        {"o:a o:b", "x a", kReal, true, "", "", nullptr},
        {"o:a o:b", "x b", kReal, true, "b ", "", nullptr},
        {"t:a t:b", "a b x b", kReal, true, "a b b ", "", nullptr},
        // An empty table.
        {"", "", kReal, false, "", "", nullptr},
        {"", "x", kReal, false, "", "", "x"},
        {"", "x y", kReal, true, "", "", nullptr},
        {"", "x", kPseudo, true, "", "x", nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.table) + " | " + row.children);
        CXmlDocument document;
        document.LoadXml(Document(row.children).c_str());
        CXmlElement* const pRoot = document.GetDocumentElement();
        CProbe probe(XmlElementGroupType_Sequence);
        probe.AddElements(row.table);
        const auto read = [&] {
            return probe.ProcessElementSeqFromXml(Context(row.ignoreUnknown), pRoot,
                                                  pRoot->GetFirstElement(), row.type);
        };
        if (row.leftOver)
            ExpectFailure<CQnValidationException>(read, LeftOver(row.leftOver), "/probe");
        else
            EXPECT_EQ(NameOf(read()), row.rest);
        EXPECT_EQ(probe.m_strTaken, row.taken);
    }
}

TEST(AllReading, TakesTheChildrenInAnyOrderAndValidatesAfterwards)
{
    struct Row
    {
        const char* table;
        const char* children;
        XmlElementType type;
        bool ignoreUnknown;
        const char* taken;
        const char* rest;
        const char* leftOver;
        const char* missing; // the mandatory element that the failure names
    };
    const Row rows[] = {
        {"m:a m:b t:c", "c a b", kReal, false, "c a b ", "", nullptr, nullptr},
        {"m:a t:b", "a", kReal, false, "a ", "", nullptr, nullptr},
        {"m:a t:b", "b", kReal, false, "b ", "", nullptr, "a"},
        {"m:a t:b", "", kReal, false, "", "", nullptr, "a"},
        {"m:a t:b", "b", kPseudo, false, "b ", "b", nullptr, nullptr},
        {"m:a t:b", "b a x", kPseudo, false, "b a ", "x", nullptr, nullptr},
        // An entry that has read is not asked again.
        {"t:a", "a a", kReal, false, "a ", "", "a", nullptr},
        // What is left over under the relaxation stays unread: nothing is skipped.
        {"t:a t:b", "a x b", kReal, true, "a ", "x", nullptr, nullptr},
        {"t:a t:b", "x a", kReal, false, "", "", "x", nullptr},
        {"", "", kReal, false, "", "", nullptr, nullptr},
        {"", "x", kReal, false, "", "", "x", nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.table) + " | " + row.children);
        CXmlDocument document;
        document.LoadXml(Document(row.children).c_str());
        CXmlElement* const pRoot = document.GetDocumentElement();
        CProbe probe(XmlElementGroupType_All);
        probe.AddElements(row.table);
        const auto read = [&] {
            return probe.ProcessElementAllFromXml(Context(row.ignoreUnknown), pRoot,
                                                  pRoot->GetFirstElement(), row.type);
        };
        if (row.leftOver)
            ExpectFailure<CQnValidationException>(read, LeftOver(row.leftOver), "/probe");
        else if (row.missing)
            ExpectFailure<CQnValidationException>(
                read, std::string("Failed to find the mandatory element [") + row.missing + "].");
        else
            EXPECT_EQ(NameOf(read()), row.rest);
        EXPECT_EQ(probe.m_strTaken, row.taken);
    }
}

TEST(AllReading, AnEntryWithoutValidationEndsTheReadInItsFailure)
{
    CXmlDocument document;
    document.LoadXml(Document("a a").c_str());
    CXmlElement* const pRoot = document.GetDocumentElement();
    CProbe probe(XmlElementGroupType_All);
    probe.AddElements("c:a");
    ExpectFailure<CQnException>(
        [&] {
            probe.ProcessElementAllFromXml(Context(false), pRoot, pRoot->GetFirstElement(), kReal);
        },
        "Not implemented, should never be called");
    EXPECT_EQ(probe.m_strTaken, "a a ");
}

TEST(AllReading, KeepsAFlagForEachOfManyEntries)
{
    std::string strTable;
    std::string strChildren;
    for (int i = 0; i < 70; ++i) {
        strTable += "m:e" + std::to_string(i) + " ";
        strChildren = "e" + std::to_string(i) + " " + strChildren;
    }
    CXmlDocument document;
    document.LoadXml(Document(strChildren).c_str());
    CXmlElement* const pRoot = document.GetDocumentElement();
    CProbe probe(XmlElementGroupType_All);
    probe.AddElements(strTable);
    EXPECT_EQ(
        probe.ProcessElementAllFromXml(Context(false), pRoot, pRoot->GetFirstElement(), kReal),
        nullptr);
    EXPECT_EQ(probe.m_strTaken, strChildren);
}

TEST(ChoiceReading, ReadsExactlyOneMember)
{
    const std::string strEmpty =
        "No child elements within the element [probe] were populated. The element represents a "
        "choice, so one and only one element should be populated";
    struct Row
    {
        const char* table;
        const char* children;
        XmlElementType type;
        bool ignoreUnknown;
        bool optionalChoice;
        const char* taken;
        const char* rest;
        const char* failure; // "empty", or the child that is left over
    };
    const Row rows[] = {
        {"t:a t:b", "b", kReal, false, false, "b ", "", nullptr},
        {"t:a t:a", "a", kReal, false, false, "a ", "", nullptr}, // the first hit wins
        {"t:a t:b", "a b", kReal, false, false, "a ", "", "b"},
        {"t:a t:b", "a b", kReal, true, false, "a ", "b", nullptr},
        {"t:a t:b", "a b", kPseudo, false, false, "a ", "b", nullptr},
        {"t:a t:b", "a x", kOther, true, false, "a ", "x", nullptr},
        // Nothing matches.
        {"t:a", "", kReal, false, false, "", "", "empty"},
        {"t:a", "x", kReal, false, false, "", "", "empty"},
        {"t:a", "x y", kReal, true, false, "", "", "empty"},
        {"", "", kReal, false, false, "", "", "empty"},
        {"t:a", "", kReal, false, true, "", "", nullptr},
        {"t:a", "x", kReal, false, true, "", "", "x"},
        {"t:a", "x", kReal, true, true, "", "", nullptr},
        {"t:a", "x", kPseudo, false, false, "", "x", nullptr},
        {"t:a", "x", kPseudo, true, false, "", "x", nullptr},
        {"t:a", "x", kPseudo, true, true, "", "x", nullptr},
        {"t:a", "x", kOther, true, false, "", "x", nullptr},
        // Unknown elements in front are skipped in a real element only.
        {"t:a", "x y a z", kReal, true, false, "a ", "z", nullptr},
        {"t:a", "x a", kPseudo, true, false, "", "x", nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.table) + " | " + row.children);
        CXmlDocument document;
        document.LoadXml(Document(row.children).c_str());
        CXmlElement* const pRoot = document.GetDocumentElement();
        CProbe probe(XmlElementGroupType_Choice);
        probe.AddElements(row.table);
        const auto read = [&] {
            return probe.ProcessElementChoiceFromXml(Context(row.ignoreUnknown), pRoot,
                                                     pRoot->GetFirstElement(), row.type,
                                                     row.optionalChoice);
        };
        if (!row.failure)
            EXPECT_EQ(NameOf(read()), row.rest);
        else
            ExpectFailure<CQnValidationException>(
                read, row.failure == std::string("empty") ? strEmpty : LeftOver(row.failure),
                "/probe");
        EXPECT_EQ(probe.m_strTaken, row.taken);
    }
}

TEST(ChoiceReading, AnEntryThatMovedTheCursorInVainIsUndoneWhereUnknownElementsAreIgnored)
{
    for (const bool bIgnoreUnknown : {false, true}) {
        CXmlDocument document;
        document.LoadXml(Document("x y").c_str());
        CXmlElement* const pRoot = document.GetDocumentElement();
        CProbe probe(XmlElementGroupType_Choice);
        probe.AddElement(std::make_unique<CScriptInfo>("x")).m_read = [](CXmlElement*& pCursor) {
            pCursor = pCursor->GetNextSiblingElement();
            return false;
        };
        EXPECT_EQ(NameOf(probe.ProcessElementChoiceFromXml(
                      Context(bIgnoreUnknown), pRoot, pRoot->GetFirstElement(), kPseudo, false)),
                  bIgnoreUnknown ? "x" : "y");
    }
}

TEST(EmptyChoice, IsAllowedWhereAMemberOrTheContextSaysSo)
{
    const auto read = [](CProbe& probe, const CSerializationContext& context) {
        CXmlDocument document;
        document.LoadXml("<probe/>");
        return probe.ProcessElementChoiceFromXml(context, document.GetDocumentElement(), nullptr,
                                                 kReal, false);
    };
    const CSerializationContext strict;

    CProbe optional(XmlElementGroupType_Choice);
    optional.AddElements("t:a t:b");
    EXPECT_FALSE(optional.DoesElementContainOptionalElements());
    EXPECT_THROW(read(optional, strict), CQnValidationException);
    optional.AddElement(std::make_unique<CScriptInfo>("c")).MakeChoiceOptional();
    EXPECT_TRUE(optional.DoesElementContainOptionalElements());

    CSerializationContext lax;
    lax.SetIgnoreMissingChoice(true);
    CProbe plain(XmlElementGroupType_Choice);
    plain.AddElements("t:a");
    EXPECT_EQ(read(plain, lax), nullptr);

    // A collection decides by its lower bound, which is read out of the property.
    CProbe collection(XmlElementGroupType_Choice);
    collection.AddElement(std::make_unique<CScriptInfo>("c")).MakeChoiceCollection(5);
    CSmartPtr<CXmlCollectionBase> pCollection;
    collection.m_access = [&](int nProperty, bool bRead, QnVariant& value) {
        EXPECT_EQ(nProperty, 5);
        EXPECT_TRUE(bRead);
        value.SetXmlCollection(pCollection.GetPtr());
    };
    EXPECT_FALSE(collection.DoesElementContainOptionalElements()); // null counts as not optional
    for (const int iMinOccurs : {0, 1}) {
        pCollection = CSmartPtr<CXmlCollectionBase>(
            new CstringCol("c", "", iMinOccurs, -1, nullptr, -1, -1, nullptr, nullptr, nullptr,
                           nullptr, -1, -1, -1, CWhitespaceUtils::WhitespaceRule_None, nullptr));
        EXPECT_EQ(collection.DoesElementContainOptionalElements(), iMinOccurs == 0);
    }
}

TEST(ElementTable, IsSearchedByName)
{
    CXmlDocument document;
    document.LoadXml("<probe><b/><n:b xmlns:n='urn:n'/><c/></probe>");
    CXmlElement* const pB = document.GetDocumentElement()->GetFirstElement();
    CXmlElement* const pOtherB = pB->GetNextSiblingElement();
    CProbe probe(XmlElementGroupType_Sequence);
    EXPECT_EQ(probe.GetClassElementInfoCount(), 0);
    probe.AddElements("o:a o:b");
    EXPECT_EQ(probe.GetClassElementInfoCount(), 2);

    CSerializationContext context;
    EXPECT_TRUE(probe.IsElementInList(context, pB));
    EXPECT_FALSE(probe.IsElementInList(context, pOtherB));
    EXPECT_FALSE(probe.IsElementInList(context, pOtherB->GetNextSiblingElement()));
    EXPECT_FALSE(probe.IsElementInList(context, nullptr));
    context.SetIgnoreNamespaces(true);
    EXPECT_TRUE(probe.IsElementInList(context, pOtherB));
}
