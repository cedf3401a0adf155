#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "tests/model/Failure.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>

using namespace QnXmlLib16;

namespace {

const char* const kInstance = "http://www.w3.org/2001/XMLSchema-instance";
const char* const kXmlns = "http://www.w3.org/2000/xmlns/";

CXmlElement* AddChild(CXmlElement& parent, const char* pszNamespace, const char* pszName)
{
    CXmlElement* pChild = parent.CreateNewChildElement();
    pChild->SetNamespace(pszNamespace);
    pChild->SetElementName(pszName);
    return pChild;
}

std::string ChildNames(const CXmlElement& parent)
{
    std::string strNames;
    for (const CXmlElement* p = parent.GetFirstElement(); p; p = p->GetNextSiblingElement())
        strNames += p->GetLocalName() + ";";
    return strNames;
}

} // namespace

TEST(TreeElements, StartEmptyAndKeepTheirNames)
{
    CXmlElement element(nullptr, nullptr);
    EXPECT_EQ(element.GetLocalName() + element.GetNamespaceURI() + element.GetText(), "");
    EXPECT_EQ(element.GetFirstElement(), nullptr);
    EXPECT_EQ(element.GetNextSiblingElement(), nullptr);
    EXPECT_TRUE(element.GetAttributes().empty());

    element.SetElementName("a");
    element.SetNamespace("urn:x");
    EXPECT_EQ(element.GetLocalName(), "a");
    element.SetElementName(element.GetNamespaceURI()); // own text as argument
    EXPECT_EQ(element.GetLocalName(), "urn:x");
    EXPECT_EQ(element.GetNamespaceURI(), "urn:x");
}

TEST(TreeElements, JoinTheirTexts)
{
    CXmlElement element(nullptr, nullptr);
    element.AppendText("one ");
    element.CreateNewChildElement()->AppendText("child");
    element.AppendText("two three", 3);
    element.AppendText("never", 0);
    element.AppendText("never", -1);
    element.AppendText(nullptr);
    element.AppendText(nullptr, 5);
    EXPECT_EQ(element.GetText(), "one two");
}

TEST(TreeElements, FindAttributesByLocalNameAndNamespace)
{
    CXmlElement element(nullptr, nullptr);
    element.AddAttribute("id", "in x", "urn:x");
    element.AddAttribute("id", "plain", "");
    element.AddAttribute("id", "second", "");
    element.AddAttribute("empty", "", "");

    EXPECT_EQ(element.GetAttribute("id", ""), "plain");
    EXPECT_EQ(element.GetAttribute("id", nullptr), "plain");
    EXPECT_EQ(element.GetAttribute(std::string("id"), std::string("urn:x")), "in x");
    const std::string& strMissing = element.GetAttribute("id", "urn:y");
    EXPECT_EQ(strMissing, "");
    EXPECT_EQ(&element.GetAttribute("ID", ""), &strMissing);
    EXPECT_EQ(&element.GetAttribute(nullptr, nullptr), &strMissing);
    EXPECT_EQ(element.GetAttribute("empty", ""), "");
    ASSERT_EQ(element.GetAttributes().size(), 4u);
    EXPECT_EQ(element.GetAttributes()[2]->GetValue(), "second");
}

TEST(TreeElements, GiveTheirLastChildAway)
{
    CXmlElement parent(nullptr, nullptr);
    EXPECT_EQ(parent.RemoveLastChildElement(), nullptr);
    for (const char* pszName : {"a", "b", "c"})
        AddChild(parent, "", pszName);

    std::unique_ptr<CXmlElement> pRemoved(parent.RemoveLastChildElement());
    EXPECT_EQ(pRemoved->GetLocalName(), "c");
    EXPECT_EQ(pRemoved->GetXPath(), "/c");
    EXPECT_EQ(ChildNames(parent), "a;b;");
    AddChild(parent, "", "d");
    EXPECT_EQ(ChildNames(parent), "a;b;d;");
    for (const char* pszLeft : {"a;b;", "a;", ""}) {
        pRemoved.reset(parent.RemoveLastChildElement());
        EXPECT_EQ(ChildNames(parent), pszLeft);
    }
    EXPECT_EQ(parent.RemoveLastChildElement(), nullptr);
    AddChild(parent, "", "e");
    EXPECT_EQ(ChildNames(parent), "e;");
}

TEST(TreeElements, OutliveTheirDocument)
{
    std::optional<CXmlDocument> document(std::in_place);
    std::vector<std::unique_ptr<CXmlElement>> vecRemoved;
    const auto load = [&] {
        document->LoadXml("<p:a xmlns:p='urn:p'><p:b>kept</p:b><p:b x='1'><p:c/></p:b></p:a>");
        vecRemoved.emplace_back(document->GetDocumentElement()->RemoveLastChildElement());
    };
    load();
    load(); // cleans up the first tree
    document->Cleanup();
    EXPECT_EQ(vecRemoved[0]->GetFirstElement()->GetXPath(), "/b/c"); // no prefixes any more
    vecRemoved.emplace_back(new CXmlElement(&*document, nullptr));
    document.reset();

    EXPECT_EQ(vecRemoved[2]->GetDocument(), nullptr);
    for (int i = 0; i < 2; ++i) {
        CXmlElement& element = *vecRemoved[static_cast<std::size_t>(i)];
        EXPECT_EQ(element.GetAttribute("x", ""), "1");
        AddChild(element, "urn:late", "d")->AddAttribute("y", "2", "");
        EXPECT_EQ(element.GetFirstElement()->GetNextSiblingElement()->GetXPath(), "/b/d");
    }
}

TEST(TreeNames, AreEmptyLocalOrPrefixed)
{
    CXmlDocument document;
    document.SetAlias("z", "urn:one");
    document.SetAlias("o", "urn:one"); // the first in byte order counts
    document.SetAlias("", "urn:default");
    struct Row
    {
        const char* pszNamespace;
        const char* pszQName;
    };
    const Row rows[] = {
        {"urn:one", "o:n"},
        {"urn:default", "n"},
        {"urn:unknown", "n"},
        {"", "n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszNamespace);
        CXmlElement element(&document, nullptr);
        element.SetElementName("n");
        element.SetNamespace(row.pszNamespace);
        EXPECT_EQ(element.GetQName(), row.pszQName);
        CXmlElement stray(nullptr, nullptr);
        stray.SetElementName("n");
        stray.SetNamespace(row.pszNamespace);
        EXPECT_EQ(stray.GetQName(), "n");
    }
}

TEST(TreePaths, CountTheChildrenOfTheSamePrefixedName)
{
    CXmlDocument document;
    document.SetAlias("p", "urn:p");
    CXmlElement* pRoot = document.AddDocElement("urn:p", "a");
    // The two unknown namespaces give one and the same prefixed name, as does the first literal
    // name with the second child.
    const char* const children[][3] = {
        {"urn:p", "only", "/p:a/p:only"},  {"urn:p", "b", "/p:a/p:b[1]"},
        {"", "p:b", "/p:a/p:b[2]"},        {"", "b", "/p:a/b[1]"},
        {"urn:unknown", "b", "/p:a/b[2]"}, {"urn:unknown2", "b", "/p:a/b[3]"},
        {"urn:p", "b", "/p:a/p:b[3]"},
    };
    for (const auto& child : children) {
        document.AddChildElement(child[0], child[1]);
        document.EndElement();
    }
    const CXmlElement* pChild = pRoot->GetFirstElement();
    for (const auto& child : children) {
        EXPECT_EQ(pChild->GetXPath(), child[2]);
        EXPECT_EQ("/p:a/" + pChild->GetNameWithPredicate(), child[2]);
        pChild = pChild->GetNextSiblingElement();
    }
    EXPECT_EQ(pRoot->GetXPath(), "/p:a");
    EXPECT_EQ(pRoot->GetNameWithPredicate(), "p:a");

    CXmlElement unlinked(&document, pRoot);
    unlinked.SetElementName("b");
    EXPECT_EQ(unlinked.GetXPath(), "/p:a/b");
}

TEST(TreePaths, ThePrefixOfAnAttributeStandsInFrontOfTheAtSign)
{
    CXmlDocument document;
    document.SetAlias("xsi", kInstance);
    CXmlElement* pRoot = document.AddDocElement("", "a");
    pRoot->AddAttribute("type", "t", kInstance);
    pRoot->AddAttribute("id", "1", "");
    pRoot->AddAttribute("id", "1", "urn:unknown");
    EXPECT_EQ(pRoot->GetAttributes()[0]->GetXPath(), "/a/xsi:@type");
    EXPECT_EQ(pRoot->GetAttributes()[1]->GetXPath(), "/a/@id");
    EXPECT_EQ(pRoot->GetAttributes()[2]->GetXPath(), "/a/@id");
    EXPECT_EQ(CXmlAttribute(nullptr, "id", "1", kInstance).GetXPath(), "@id");
}

TEST(TreeAttributes, KnowWhetherTheySpeakOfTheDocument)
{
    struct Row
    {
        const char* pszName;
        bool bNamespaceAttribute;
        bool bNil;
    };
    const Row rows[] = {
        {"xmlns", true, false},
        {"type", true, false},
        {"schemaLocation", true, false},
        {"noNamespaceSchemaLocation", true, false},
        {"nil", false, true},
        {"Type", false, false},
        {"", false, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszName);
        for (const char* pszNamespace : {kInstance, kXmlns}) {
            const CXmlAttribute attribute(nullptr, row.pszName, "v", pszNamespace);
            EXPECT_EQ(attribute.IsNamespaceAttribute(), row.bNamespaceAttribute);
            EXPECT_EQ(attribute.IsNilAttribute(), row.bNil);
        }
        for (const char* pszNamespace : {"", "urn:other"}) {
            const CXmlAttribute attribute(nullptr, row.pszName, "v", pszNamespace);
            EXPECT_FALSE(attribute.IsNamespaceAttribute());
            EXPECT_FALSE(attribute.IsNilAttribute());
        }
    }
}

TEST(TreeBuilding, RefusesWhatHasNoPlace)
{
    CXmlDocument document;
    const char* const pszNoneOpen = "No element is open.";
    using State = CQnInvalidStateException;
    Model::ExpectFailure<State>([&] { document.AddChildElement("", "a"); }, pszNoneOpen);
    Model::ExpectFailure<State>([&] { document.EndElement(); }, pszNoneOpen);
    EXPECT_EQ(document.GetInnermostElement(), nullptr);

    CXmlElement* pRoot = document.AddDocElement(nullptr, "a");
    Model::ExpectFailure<State>([&] { document.AddDocElement("", "b"); },
                                "The document has a document element already.");
    using Param = CQnInvalidParamException;
    Model::ExpectFailure<Param>([&] { document.AppendTextExcludingCR(nullptr, "x"); },
                                "The element is null.");
    Model::ExpectFailure<Param>([&] { document.AddElementAttribute(nullptr, "a", "b", ""); },
                                "The element is null.");
    document.AddElementAttribute(pRoot, "n", nullptr, nullptr);
    EXPECT_EQ(pRoot->GetAttributes()[0]->GetLocalName(), "n");
    EXPECT_EQ(document.GetInnermostElement(), pRoot);
    document.EndElement();
    EXPECT_EQ(document.GetInnermostElement(), nullptr);
    EXPECT_EQ(document.GetDocumentElement(), pRoot);
}

TEST(TreeBuilding, DropsCarriageReturnsUpToTheEndOrAZeroByte)
{
    struct Row
    {
        const char* pText;
        unsigned long nLength;
        const char* pszResult;
    };
    const Row rows[] = {
        {"a\r\nb", 4, "a\nb"}, {"\r\r", 2, ""},    {"a\rb\r", 4, "ab"}, {"abc", 2, "ab"},
        {"a\r\0b", 4, "a"},    {"abc", 99, "abc"}, {nullptr, 3, ""},
    };
    CXmlDocument document;
    CXmlElement* pRoot = document.AddDocElement("", "a");
    for (const Row& row : rows) {
        CXmlElement* pElement = pRoot->CreateNewChildElement();
        document.AppendTextExcludingCR(pElement, row.pText, row.nLength);
        EXPECT_EQ(pElement->GetText(), row.pszResult);
    }
    document.AppendTextExcludingCR(pRoot, "x\r\ny");
    EXPECT_EQ(pRoot->GetText(), "x\ny");

    const std::string strHalf(100, 'h');
    CXmlElement* pElement = pRoot->CreateNewChildElement();
    pElement->AppendText((strHalf + "\r" + strHalf).c_str());
    document.AppendTextExcludingCR(pElement, pElement->GetText().c_str()); // own text as argument
    EXPECT_EQ(pElement->GetText(), strHalf + "\r" + strHalf + strHalf + strHalf);
}
