#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "tests/collections/Recorders.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

using namespace QnXmlLib16;

namespace {

const char* const kInstance = "http://www.w3.org/2001/XMLSchema-instance";

CXmlElement* AddChild(CXmlElement& parent, const char* pszNamespace, const char* pszName)
{
    CXmlElement* pChild = parent.CreateNewChildElement();
    pChild->SetNamespace(pszNamespace);
    pChild->SetElementName(pszName);
    return pChild;
}

} // namespace

TEST(TreeElements, JoinTheirTexts)
{
    CXmlElement element(nullptr, nullptr);
    element.AppendText("one ");
    element.CreateNewChildElement()->AppendText("child");
    element.AppendText("two three", 3);
    for (const int iLength : {0, -1})
        element.AppendText("never", iLength);
    element.AppendText(nullptr);
    element.AppendText(nullptr, 5);
    EXPECT_EQ(element.GetText(), "one two");
    element.SetNamespace("urn:x");
    element.SetElementName(element.GetNamespaceURI()); // own text as argument
    EXPECT_EQ(element.GetLocalName() + element.GetNamespaceURI(), "urn:xurn:x");
}

TEST(TreeElements, FindAttributesByLocalNameAndNamespace)
{
    CXmlElement element(nullptr, nullptr);
    element.AddAttribute("id", "in x", "urn:x");
    element.AddAttribute("id", "plain", "");
    element.AddAttribute("id", "second", "");
    EXPECT_EQ(element.GetAttribute("id", ""), "plain");
    EXPECT_EQ(element.GetAttribute("id", nullptr), "plain");
    EXPECT_EQ(element.GetAttribute(std::string("id"), std::string("urn:x")), "in x");
    const std::string& strMissing = element.GetAttribute("id", "urn:y");
    EXPECT_EQ(strMissing, "");
    EXPECT_EQ(&element.GetAttribute("ID", ""), &strMissing);
    EXPECT_EQ(&element.GetAttribute(nullptr, nullptr), &strMissing);
}

TEST(TreeElements, OutliveTheirDocument)
{
    std::optional<CXmlDocument> document(std::in_place);
    std::vector<std::unique_ptr<CXmlElement>> vecRemoved;
    for (int i = 0; i < 2; ++i) { // the second load cleans up the first tree
        document->LoadXml("<p:a xmlns:p='urn:p'><p:b>kept</p:b><p:b x='1'><p:c/></p:b></p:a>");
        vecRemoved.emplace_back(document->GetDocumentElement()->RemoveLastChildElement());
    }
    document->Cleanup();
    EXPECT_EQ(vecRemoved[0]->GetFirstElement()->RemoveLastChildElement(), nullptr);
    EXPECT_EQ(vecRemoved[0]->GetFirstElement()->GetXPath(), "/b/c"); // no prefixes any more
    document.reset();
    for (const auto& pElement : vecRemoved) {
        EXPECT_EQ(pElement->GetDocument(), nullptr);
        EXPECT_EQ(pElement->GetAttribute("x", ""), "1");
        AddChild(*pElement, "urn:late", "d")->AddAttribute("y", "2", "");
        EXPECT_EQ(pElement->GetFirstElement()->GetNextSiblingElement()->GetXPath(), "/b/d");
    }
}

TEST(TreePaths, CountTheChildrenOfTheSamePrefixedName)
{
    CXmlDocument document;
    document.SetAlias("z", "urn:p");
    document.SetAlias("p", "urn:p"); // the first in byte order counts
    document.SetAlias("", "urn:default");
    CXmlElement* pRoot = document.AddDocElement("urn:p", "a");
    // The namespaces without a prefix give one and the same name, as does the first literal name
    // with the second child.
    const char* const children[][3] = {
        {"urn:p", "only", "/p:a/p:only"},  {"urn:p", "b", "/p:a/p:b[1]"},
        {"", "p:b", "/p:a/p:b[2]"},        {"", "b", "/p:a/b[1]"},
        {"urn:unknown", "b", "/p:a/b[2]"}, {"urn:default", "b", "/p:a/b[3]"},
        {"urn:p", "b", "/p:a/p:b[3]"},
    };
    for (const auto& child : children)
        AddChild(*pRoot, child[0], child[1]);
    const CXmlElement* pChild = pRoot->GetFirstElement();
    for (const auto& child : children) {
        EXPECT_EQ(pChild->GetXPath(), child[2]);
        EXPECT_EQ("/p:a/" + pChild->GetNameWithPredicate(), child[2]);
        pChild = pChild->GetNextSiblingElement();
    }
    EXPECT_EQ(pRoot->GetNameWithPredicate(), "p:a");
    CXmlElement unlinked(&document, pRoot);
    unlinked.SetElementName("b");
    EXPECT_EQ(unlinked.GetXPath(), "/p:a/b");
    CXmlElement stray(nullptr, nullptr);
    stray.SetElementName("b");
    stray.SetNamespace("urn:p");
    EXPECT_EQ(stray.GetQName(), "b");
}

TEST(TreePaths, ThePrefixOfAnAttributeStandsInFrontOfTheAtSign)
{
    CXmlDocument document;
    document.SetAlias("xsi", kInstance);
    CXmlElement* pRoot = document.AddDocElement("", "a");
    for (const char* pszNamespace : {kInstance, "", "urn:unknown"})
        pRoot->AddAttribute("id", "1", pszNamespace);
    EXPECT_EQ(pRoot->GetAttributes()[0]->GetXPath(), "/a/xsi:@id");
    EXPECT_EQ(pRoot->GetAttributes()[1]->GetXPath(), "/a/@id");
    EXPECT_EQ(pRoot->GetAttributes()[2]->GetXPath(), "/a/@id");
    EXPECT_EQ(CXmlAttribute(nullptr, "id", "1", kInstance).GetXPath(), "@id");
}

TEST(TreeAttributes, KnowWhetherTheySpeakOfTheDocument)
{
    for (const std::string strName :
         {"xmlns", "type", "schemaLocation", "noNamespaceSchemaLocation", "nil", "Type", ""}) {
        const bool bOther = strName == "nil" || strName == "Type" || strName.empty();
        for (const std::string strNamespace :
             {kInstance, "http://www.w3.org/2000/xmlns/", "", "urn:other"}) {
            SCOPED_TRACE(strName + " " + strNamespace);
            const bool bTold = strNamespace.find("http") == 0;
            const CXmlAttribute attribute(nullptr, strName.c_str(), "v", strNamespace.c_str());
            EXPECT_EQ(attribute.IsNamespaceAttribute(), bTold && !bOther);
            EXPECT_EQ(attribute.IsNilAttribute(), bTold && strName == "nil");
        }
    }
}

TEST(TreeBuilding, RefusesWhatHasNoPlace)
{
    CXmlDocument document;
    const std::string strNoneOpen = "State: No element is open.";
    EXPECT_EQ(FailureOf([&] { document.AddChildElement("", "a"); }), strNoneOpen);
    EXPECT_EQ(FailureOf([&] { document.EndElement(); }), strNoneOpen);
    CXmlElement* pRoot = document.AddDocElement(nullptr, "a");
    EXPECT_EQ(FailureOf([&] { document.AddDocElement("", "b"); }),
              "State: The document has a document element already.");
    EXPECT_EQ(FailureOf([&] { document.AppendTextExcludingCR(nullptr, "x"); }),
              "Param: The element is null.");
    EXPECT_EQ(FailureOf([&] { document.AddElementAttribute(nullptr, "a", "b", ""); }),
              "Param: The element is null.");
    document.AddElementAttribute(pRoot, "n", nullptr, nullptr);
    EXPECT_EQ(pRoot->GetAttributes()[0]->GetXPath(), "/a/@n");
    EXPECT_EQ(document.GetInnermostElement(), pRoot);
    document.EndElement();
    EXPECT_EQ(document.GetInnermostElement(), nullptr);
    EXPECT_EQ(document.GetDocumentElement(), pRoot);
}

TEST(TreeBuilding, DropsCarriageReturnsUpToTheEndOrAZeroByte)
{
    const struct
    {
        const char* pText;
        unsigned long nLength;
        const char* pszResult;
    } rows[] = {{"a\r\nb\r", 5, "a\nb"}, {"abc", 2, "ab"}, {"a\r\0b", 4, "a"}, {nullptr, 3, ""}};
    CXmlDocument document;
    CXmlElement* pRoot = document.AddDocElement("", "a");
    for (const auto& row : rows) {
        CXmlElement* pElement = pRoot->CreateNewChildElement();
        document.AppendTextExcludingCR(pElement, row.pText, row.nLength);
        EXPECT_EQ(pElement->GetText(), row.pszResult);
    }
    const std::string strHalf(100, 'h');
    pRoot->AppendText((strHalf + "\r" + strHalf).c_str());
    document.AppendTextExcludingCR(pRoot, pRoot->GetText().c_str()); // own text as argument
    EXPECT_EQ(pRoot->GetText(), strHalf + "\r" + strHalf + strHalf + strHalf);
}
