#include "QnXmlLib16/xml/XmlAttribute.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "tests/collections/Recorders.h"
#include "tests/xml/TreeLine.h"

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

TEST(TreeElements, AreBuiltByHandToo)
{
    CXmlElement element(nullptr, nullptr);
    element.SetElementName("a");
    element.AppendText("one ");
    AddChild(element, "urn:b", "b")->AppendText("child");
    element.AppendText("two three", 3);
    element.AppendText("never", 0);
    element.AppendText(nullptr);
    element.AddAttribute("id", "plain", "");
    element.AddAttribute("id", "in x", "urn:x");
    EXPECT_EQ(TreeLine(element), "a[id='plain'][{urn:x}id='in x'] 'one two' ({urn:b}b 'child')");
    EXPECT_EQ(element.GetAttribute("id", nullptr), "plain");
    EXPECT_EQ(element.GetAttribute(std::string("id"), std::string("urn:x")), "in x");
    EXPECT_EQ(&element.GetAttribute("id", "urn:y"), &element.GetAttribute("none", ""));

    CXmlDocument document;
    document.AddElementAttribute(document.AddDocElement("", "r"), "id", nullptr, "urn:x");
    EXPECT_EQ(TreeLine(*document.GetDocumentElement()), "r[{urn:x}id='']");
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
    document.AddDocElement(nullptr, "a");
    EXPECT_EQ(FailureOf([&] { document.AddDocElement("", "b"); }),
              "State: The document has a document element already.");
    EXPECT_EQ(FailureOf([&] { document.AppendTextExcludingCR(nullptr, "x"); }),
              "Param: The element is null.");
    EXPECT_EQ(FailureOf([&] { document.AddElementAttribute(nullptr, "a", "b", ""); }),
              "Param: The element is null.");
}
