#include "QnXmlLib16/binding/XmlObjectHelper.h"

#include "tests/model/Failure.h"

#include "QnXmlLib16/binding/ClassfactoryBase.h"
#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using Model::ExpectFailure;

TEST(NamespaceRestriction, LiteralTokensGoByTheWholeList)
{
    struct Row
    {
        const char* ns;
        const char* list;
        const char* target;
        bool valid;
    };
    const Row rows[] = {
        {"urn:a", "##any", "", true},
        {"", "##any", "urn:t", true},
        {"urn:a", "##any ##local", "", true},
        {"urn:a", "##other", "urn:t", true},
        {"urn:t", "##other", "urn:t", false},
        {"", "##other", "urn:t", true},
        {"", "##other", "", false},
        {"urn:a", "##other", "", true},
        {"", "##local", "urn:t", true},
        {"urn:t", "##local", "urn:t", false},
        {"urn:t", "##targetNamespace", "urn:t", true},
        {"", "##targetNamespace", "urn:t", false},
        {"", "##local ##targetNamespace", "urn:t", true},
        {"urn:t", "##local ##targetNamespace", "urn:t", true},
        {"urn:a", "##local ##targetNamespace", "urn:t", false},
        // Literal tokens.
        {"urn:a", "urn:a", "", true},
        {"urn:b", "urn:a", "", false},
        {"urn:a", "urn:a urn:b", "", false},
        {"urn:b", "urn:a urn:b", "", false},
        {"urn:a urn:b", "urn:a urn:b", "", true},
        {"", "urn:a", "urn:t", true},
        {"urn:t", "urn:a ##targetNamespace", "urn:t", true},
        {"urn:a", "##ANY", "", false},
        // Empty tokens are literal ones.
        {"", "", "", true},
        {"urn:a", "", "", false},
        {"", "##targetNamespace ", "urn:t", true},
        {"", "##targetNamespace  ##targetNamespace", "urn:t", true},
        {"urn:a", "##targetNamespace  ##any", "urn:t", true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.ns) + " | " + row.list + " | " + row.target);
        EXPECT_EQ(CXmlObjectHelper::IsNamespaceValid(row.ns, row.list, row.target), row.valid);
        const auto test = [&] { CXmlObjectHelper::TestNamespace(row.ns, row.list, row.target); };
        if (row.valid)
            test();
        else
            ExpectFailure<CQnInvalidNamespaceException>(
                test, std::string("Invalid namespace [") + row.ns +
                          "]. The namespace must be one of [" + row.list +
                          "] where the target namespace is [" + row.target + "].");
    }
}

TEST(ElementName, MatchesByNamespaceUnlessTheContextIgnoresThem)
{
    CXmlDocument document;
    document.LoadXml("<p:a xmlns:p='urn:a'/>");
    const CXmlElement* const pElement = document.GetDocumentElement();

    CSerializationContext strict;
    CSerializationContext ignoring;
    ignoring.SetIgnoreNamespaces(true);
    CSerializationContext without;
    without.SetSchemaType(SchemaType_NoNamespaces);
    struct Row
    {
        const CSerializationContext& context;
        const char* name;
        const char* ns;
        bool match;
    };
    const Row rows[] = {
        {strict, "a", "urn:a", true}, {strict, "a", "urn:b", false}, {strict, "b", "urn:a", false},
        {ignoring, "a", "", true},    {ignoring, "b", "", false},    {without, "a", "urn:b", true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.name) + " " + row.ns);
        EXPECT_EQ(CXmlObjectHelper::DoesElementNameMatch(row.context, pElement, row.name, row.ns),
                  row.match);
    }
    ExpectFailure<CQnInvalidParamException>(
        [&] { CXmlObjectHelper::DoesElementNameMatch(strict, nullptr, "a", ""); },
        "The element may not be NULL");
}

TEST(ClassFactory, ReadsTheTypeThatTheDocumentNames)
{
    struct Row
    {
        const char* attributes;
        const char* type;
        const char* ns;
    };
    const Row rows[] = {
        {"xsi:type='t:Round'", "Round", "urn:types"},
        {"xsi:type='Round'", "Round", "urn:e"}, // not the default namespace in scope
        {"xsi:type='u:Round'", "Round", "urn:e"},
        {"xsi:type='t:a:b'", "a:b", "urn:types"},
        {"xsi:type='t:'", "", "urn:types"},
        {"xsi:type=''", "", "urn:e"},
        {"type='t:Round'", "", "urn:e"},
        {"", "", "urn:e"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.attributes);
        CXmlDocument document;
        document.LoadXml((std::string("<e:shape xmlns:e='urn:e' xmlns='urn:default' "
                                      "xmlns:t='urn:types' "
                                      "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' ") +
                          row.attributes + "/>")
                             .c_str());
        CXmlElement* const pElement = document.GetDocumentElement();
        EXPECT_EQ(CClassfactoryBase::GetElementType(pElement), row.type);
        EXPECT_EQ(CClassfactoryBase::GetElementTypeNamespaceUri(pElement), row.ns);
    }

    CXmlElement loose(nullptr, nullptr);
    loose.AddAttribute("type", "t:Round", "http://www.w3.org/2001/XMLSchema-instance");
    EXPECT_EQ(CClassfactoryBase::GetElementTypeNamespaceUri(&loose), "");
    ExpectFailure<CQnInvalidParamException>([] { CClassfactoryBase::GetElementType(nullptr); },
                                            "The element may not be NULL");
}
