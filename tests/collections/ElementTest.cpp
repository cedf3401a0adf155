#include "QnXmlLib16/xml/XmlDocument.h"
#include "Recorders.h"
#include "tests/support/SmallStack.h"

#include <memory>

using namespace QnXmlLib16;

namespace {

using ElementPtr = CSmartPtr<CElement>;

const CSerializationContext& Defaults()
{
    return CSerializationContext::m_defaultContext;
}

std::string XmlOf(const CElement& element, bool bFormat = false)
{
    return element.ToXml(false, bFormat, EOLType_LF, Defaults());
}

// The element that a document makes through CopyXmlElement.
ElementPtr Copied(const char* pszXml, SchemaType schemaType = SchemaType_Default)
{
    CSerializationContext context;
    context.SetSchemaType(schemaType);
    CXmlDocument document(context);
    document.LoadXml(pszXml);
    ElementPtr pElement(new CElement("x"));
    pElement->CopyXmlElement(document.GetDocumentElement());
    return pElement;
}

// Its own namespace and its target namespace.
std::string NamespacesOf(const CXmlObjectBase& object)
{
    return object.GetNamespace() + " " + object.GetTargetNamespace();
}

TEST(ElementConstruction, NamespacesAreThoseOfTheElement)
{
    // The collections come to be when they are first asked for, which must not show.
    const ElementPtr pElement(new CElement("e", "urn:a", "##other", "urn:target"));
    pElement->SetNamespace("urn:b");
    EXPECT_EQ(NamespacesOf(*pElement), "urn:b urn:b");
    EXPECT_EQ(NamespacesOf(*pElement->GetElements()), "urn:target urn:target");
    EXPECT_EQ(NamespacesOf(*pElement->GetAttributes()), "urn:a urn:a");
    EXPECT_EQ(pElement->GetElements()->Add("c")->GetNamespace(), "urn:a");

    const ElementPtr pCopied = Copied("<e xmlns='urn:a'/>");
    EXPECT_EQ(pCopied->GetAttributes()->GetNamespace(), "");
    EXPECT_EQ(pCopied->GetElements()->Add("c")->GetNamespace(), "##any");
    EXPECT_EQ(pCopied->Clone()->GetElements()->Add("c")->GetNamespace(), "##any");
}

TEST(ElementConstruction, RefusesWhatHasNoPlace)
{
    const auto FailureWith = [](auto... args) {
        return FailureOf([=] { ElementPtr pElement(new CElement(args...)); });
    };
    const char* const pszNull = nullptr;
    EXPECT_EQ(FailureWith(pszNull, pszNull), "Namespace: Element Name must have a value");
    EXPECT_EQ(FailureWith("e", pszNull), "Namespace: Namespace Restriction must have a value");
    EXPECT_EQ(FailureWith("e", "a", "##any", pszNull),
              "Namespace: Target Namespace must have a value");
    EXPECT_EQ(FailureWith("e", "##other"), "Namespace: Invalid Namespace [##other].");
    for (const char* pszNamespace : {"##Any", "", "urn:a urn:b"})
        EXPECT_EQ(FailureWith("e", pszNamespace), "none");
    EXPECT_EQ(FailureWith(static_cast<CXmlObjectBase*>(nullptr), ""),
              "Param: The object to copy may not be NULL");
}

TEST(ElementRestrictions, AnElementOutsideIsThrownByPointer)
{
    const auto FailureWith = [](CElement& element, const char* pszRestriction,
                                const char* pszTarget) {
        std::unique_ptr<CQnInvalidNamespaceException> pByPointer;
        const std::string strByValue = FailureOf([&] {
            try {
                element.SetNamespaceRestrictions(pszRestriction, pszTarget);
            }
            catch (CQnInvalidNamespaceException* pException) {
                pByPointer.reset(pException);
            }
        });
        return pByPointer ? pByPointer->GetMessage() : strByValue;
    };
    const ElementPtr pElement =
        Copied("<r xmlns='urn:t'><a><b x:at='' xmlns:x='urn:x'/></a><c><o xmlns='urn:o'/></c></r>");
    EXPECT_EQ(FailureWith(*pElement, "##other", "urn:t"),
              "The namespace r in the class urn:t is invalid against restriction ##other");
    for (int n = 0; n < 2; ++n) { // the attribute in a record, then in its collection
        EXPECT_EQ(FailureWith(*pElement, "##targetNamespace", "urn:t"),
                  "Namespace: Invalid namespace [urn:x]. The namespace must be one of "
                  "[##targetNamespace] where the target namespace is [urn:t].");
        pElement->GetElements()->Item(0)->GetElements()->Item(0)->GetAttributes();
    }
    pElement->GetElements()->Item(0)->GetElements()->Item(0)->GetAttributes()->Clear();
    EXPECT_EQ(FailureWith(*pElement, "##targetNamespace", "urn:t"),
              "The namespace o in the class urn:o is invalid against restriction "
              "##targetNamespace");
    EXPECT_EQ(FailureWith(*pElement, nullptr, nullptr),
              "The namespace r in the class urn:t is invalid against restriction ");
}

TEST(ElementWriting, ChildrenComeBeforeTheText)
{
    const ElementPtr pElement = Copied("<r a='1' n:b='2' xmlns:n='urn:n'>one<c/>two<d>x</d></r>");
    const std::string strAttributes = "@a {} 1 23\n@b {urn:n} 2 23\n";
    const std::string strElements = "<c {}\n 23\n>\n<d {}\nx 23\n>\n";
    EXPECT_EQ(RecordedBy(*pElement), "<r {}\n" + strAttributes + strElements + "onetwo 23\n>\n");
    EXPECT_EQ(RecordedBy(*pElement->GetElements()), strElements);
    EXPECT_EQ(RecordedBy(*pElement->GetAttributes()), strAttributes);
}

TEST(ElementWriting, NoItemIsPassedOver)
{
    const ElementPtr pElement(new CElement("r"));
    pElement->GetAttributes()->Add(static_cast<CAttribute*>(nullptr));
    pElement->GetElements()->Add(static_cast<CElement*>(nullptr));
    EXPECT_EQ(XmlOf(*pElement), "<r/>");
    EXPECT_EQ(pElement->Clone()->GetElements()->GetCount(), 0);
}

TEST(ElementWriting, ADefaultNamespaceTakesARoadOfItsOwn)
{
    const ElementPtr pElement =
        Copied("<r a='1'><n xmlns='urn:n' b='2'><c/>text</n></r>", SchemaType_NoNamespaces);
    const ElementPtr pInner = pElement->GetElements()->Item(0);
    EXPECT_EQ(pInner->GetDefaultNamespace(), "urn:n");
    EXPECT_EQ(pInner->GetAttributes()->GetCount(), 2);
    pInner->GetElements()->Item(0)->SetNamespace("urn:n");
    EXPECT_EQ(XmlOf(*pElement), "<r a=\"1\"><n xmlns=\"urn:n\"><c/>text</n></r>");
    EXPECT_EQ(pElement->ToXml(false, true, EOLType_CRLF, Defaults()),
              "<r a=\"1\">\r\n<n xmlns=\"urn:n\">\r\n\t<c/>\r\ntext</n>\r\n\r\n</r>\r\n");
    EXPECT_EQ(FailureOf([&] { RecordedBy(*pElement); }),
              "State: An Element with a default namespace can only be written as XML text");
    EXPECT_EQ(pInner->Clone()->GetDefaultNamespace(), "");
}

TEST(ElementReading, InheritedEntriesReadTheFirstChild)
{
    const ElementPtr pElement(new CElement("old"));
    pElement->FromXml("<r a='1'><c b='2'><d/></c><e/></r>", Defaults());
    EXPECT_EQ(XmlOf(*pElement), "<c b=\"2\"><d/></c>");
    pElement->FromXml("<r/>", Defaults());
    EXPECT_EQ(pElement->GetName(), "c") << "no first child, nothing changes";

    // Its own takes the whole document, and adds to what is there but for name and text.
    pElement->SetText("old");
    pElement->FromXml("<r xmlns='urn:r' a='1'><c>x</c></r>");
    EXPECT_EQ(XmlOf(*pElement),
              "<AA:r xmlns:AA=\"urn:r\" b=\"2\" a=\"1\"><d/><AA:c>x</AA:c></AA:r>");
    EXPECT_NE(FailureOf([&] { pElement->FromXml("<a><b></a>"); }), "none");
    EXPECT_EQ(pElement->GetName(), "r");
}

TEST(ElementReading, CopyXmlElementReplaces)
{
    const ElementPtr pElement = Copied("<r a='1'><c/></r>");
    CRecordingSink sink;
    pElement->GetElements()->AddEventListener(&sink);
    CXmlDocument document;
    document.LoadXml("<s b='2'><d><f/></d><e/></s>");
    pElement->CopyXmlElement(document.GetDocumentElement());
    EXPECT_EQ(XmlOf(*pElement), "<s b=\"2\"><d><f/></d><e/></s>");
    EXPECT_EQ(sink.TakeHeard(), "3:null(1) 4:null(0) 0(0) 1(0) 2(1) 0(1) 1(1) 2(2) 0(2) ");
    EXPECT_EQ(FailureOf([&] { pElement->CopyXmlElement(nullptr); }),
              "Param: The element to copy may not be NULL");
}

TEST(ElementReading, ACloneIsDeepAndNeedsAFittingNamespace)
{
    const ElementPtr pElement = Copied("<r a='1'>t<c b='2'>u<d/></c><e/></r>");
    const ElementPtr pClone = pElement->Clone();
    EXPECT_EQ(XmlOf(*pClone), XmlOf(*pElement));
    pClone->GetElements()->Item(0)->SetText(nullptr); // stands for ""
    pClone->GetElements()->Item(0)->GetElements()->Item(0)->SetName("x");
    pClone->GetAttributes()->Item(0)->SetValue(nullptr);
    EXPECT_EQ(XmlOf(*pClone), "<r a=\"\"><c b=\"2\"><x/></c><e/>t</r>");
    EXPECT_EQ(XmlOf(*pElement), "<r a=\"1\"><c b=\"2\"><d/>u</c><e/>t</r>");

    pElement->GetElements()->Add(new CElement("o", "urn:o"));
    pElement->GetElements()->Item(2)->SetNamespace("urn:elsewhere");
    EXPECT_EQ(FailureOf([&] { pElement->Clone(); }),
              "Namespace: Invalid namespace [urn:elsewhere]. The namespace must be one of [urn:o] "
              "where the target namespace is [].");
}

TEST(ElementCollection, KeepsTheRestrictionAnyAndNoBounds)
{
    const CSmartPtr<CElementCol> pCol(new CElementCol("urn:t", "##targetNamespace", "urn:t", 2, 1));
    EXPECT_TRUE(pCol->IsValidCount(Defaults()));
    pCol->Add("a", "urn:elsewhere");
    pCol->Add(new CElement("b"));
    pCol->Add("c");
    pCol->FromXml("<r><d xmlns='urn:d'/><e/></r>", Defaults());
    EXPECT_EQ(RecordedBy(*pCol), "<a {urn:elsewhere}\n 23\n>\n<b {}\n 23\n>\n<c {urn:t}\n 23\n>\n"
                                 "<d {urn:d}\n 23\n>\n<e {}\n 23\n>\n");
    EXPECT_EQ(RecordedBy(*pCol->Clone()), RecordedBy(*pCol));
    EXPECT_EQ(FailureOf([&] { pCol->Item(5); }), "Param: Index 5 is out of range, use 0 - 5");
}

TEST(ElementCollection, AKeywordServesAsDefaultNamespace)
{
    const char* const pszNone = "State: A Namespace has not been set for this Collection";
    const char* const rows[][4] = {
        // namespace, restriction, target namespace, and the namespace of what is added
        {"", "##other", "urn:t", "##other"},
        {"urn:a", "##any", "", "urn:a"},
        {"", "urn:a", "", pszNone},
        {nullptr, nullptr, nullptr, pszNone}};
    for (const auto& row : rows) {
        const CSmartPtr<CElementCol> pCol(new CElementCol(row[0], row[1], row[2], 0, -1));
        std::string strAdded;
        const std::string strFailure =
            FailureOf([&] { strAdded = pCol->Add("e")->GetNamespace(); });
        EXPECT_EQ(strFailure == "none" ? strAdded : strFailure, row[3]);
    }
}

TEST(AttributeCollection, TakesTheFirstTokenAsDefaultNamespace)
{
    const char* const rows[][3] = {
        // namespace, restriction, default namespace
        {"", "urn:a urn:b", "urn:a"}, {"urn:x", "urn:a", "urn:x"}, {"", "a", ""}, {"", "ab", "ab"},
        {"", " urn:a", ""},           {"", "xx##any", "xx##any"}};
    for (const auto& row : rows) {
        const CSmartPtr<CAttributeCol> pCol(new CAttributeCol(row[0], row[1], ""));
        EXPECT_EQ(pCol->GetNamespace(), row[2]);
        EXPECT_EQ(pCol->Clone()->GetTargetNamespace(), row[2]);
    }
}

TEST(AttributeCollection, ReadyMadeAttributesPassUntested)
{
    const CSmartPtr<CAttributeCol> pCol(new CAttributeCol("", "urn:a", ""));
    EXPECT_EQ(FailureOf([&] { pCol->Add("n", "v", "urn:b"); }),
              "Namespace: Invalid namespace [urn:b]. The namespace must be one of [urn:a] where "
              "the target namespace is [].");
    pCol->Add(new CAttribute("n", "v", "urn:b"));
    pCol->Add("m", "w");
    pCol->Add("l");
    pCol->Add("k", nullptr, nullptr);
    EXPECT_EQ(RecordedBy(*pCol), "@n {urn:b} v 23\n@m {urn:a} w 23\n@l {urn:a}  23\n@k {}  23\n");
    EXPECT_EQ(RecordedBy(*pCol->Clone()), RecordedBy(*pCol));
    pCol->Item(0)->SetNamespace(nullptr); // stands for ""
    EXPECT_EQ(RecordedBy(*pCol->Item(0)), "@n {} v 23\n");
    pCol->Clone()->Item(1)->SetValue("changed");
    EXPECT_EQ(pCol->Item(1)->GetValue(), "w");
    EXPECT_EQ(FailureOf([&] { pCol->Item(0)->FromXml("<r/>", Defaults()); }),
              "Qn: This should be done by the collection");
}

TEST(AttributeCollection, ReadingAddsUntilOneIsOutside)
{
    const CSmartPtr<CAttributeCol> pCol(new CAttributeCol("", "##local", ""));
    pCol->FromXml("<r a='1'><c b='2'/></r>", Defaults());
    EXPECT_EQ(
        FailureOf([&] { pCol->FromXml("<r b='2' n:c='3' d='4' xmlns:n='urn:n'/>", Defaults()); }),
        "Namespace: Invalid Attribute [c]. The attributes namespace is Inappropriate.\n"
        "Path: /r");
    EXPECT_EQ(RecordedBy(*pCol), "@a {} 1 23\n@b {} 2 23\n");
}

// The element nested in itself.
std::string Nested(const std::string& strStartTag, int nDepth)
{
    std::string strXml;
    for (int n = 0; n < nDepth; ++n)
        strXml += strStartTag;
    for (int n = 0; n < nDepth; ++n)
        strXml += "</a>";
    return strXml.replace(strXml.find("></a>"), 5, "/>");
}

TEST(ElementDepth, CostsNoStack)
{
    RunOnSmallStack([] {
        const std::string strXml = Nested("<a>", 200000);
        CXmlDocument document;
        document.LoadXml(strXml.c_str());
        CXmlElement* pInnermost = document.GetDocumentElement();
        while (pInnermost->GetFirstElement())
            pInnermost = pInnermost->GetFirstElement();
        EXPECT_EQ(pInnermost->GetXPath().size(), 2 * 200000u);

        ElementPtr pElement = Copied(strXml.c_str());
        EXPECT_TRUE(XmlOf(*pElement) == strXml);
        pElement->SetNamespaceRestrictions("##local", "");
        const ElementPtr pClone = pElement->Clone();
        pElement.Reset();
        EXPECT_TRUE(XmlOf(*pClone) == strXml);
        pClone->GetElements()->Clear();
        pClone->FromXml(strXml.c_str());
        EXPECT_TRUE(XmlOf(*pClone) == strXml);

        // Copied at each level, the text takes ten seconds.
        const std::string strDefaults = Nested("<a xmlns=\"urn:a\">", 50000);
        EXPECT_EQ(XmlOf(*Copied(strDefaults.c_str(), SchemaType_NoNamespaces)).size(),
                  strDefaults.size());
    });
}

} // namespace
