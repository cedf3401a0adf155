#include "QnXmlLib16/collections/Element.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "Recorders.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>

using namespace QnXmlLib16;

namespace {

using ElementPtr = CSmartPtr<CElement>;

const CSerializationContext& Defaults()
{
    return CSerializationContext::m_defaultContext;
}

std::string XmlOf(const CElement& element)
{
    return element.ToXml(false, false, EOLType_LF, Defaults());
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

std::string RecordedBy(const CXmlObjectBase& object)
{
    CRecordingWriter writer;
    CXmlObjectBase::ToXml_Int(&object, &writer, false, "", Defaults(), false);
    return writer.m_strLines;
}

TEST(ElementConstruction, ByNameAloneWelcomesEverything)
{
    const ElementPtr pElement(new CElement("e"));
    EXPECT_EQ(pElement->GetName(), "e");
    EXPECT_EQ(pElement->GetNamespace(), "");
    EXPECT_EQ(pElement->GetText(), "");
    EXPECT_EQ(pElement->GetDefaultNamespace(), "");
    EXPECT_EQ(pElement->GetElementName(), "") << "the name of the root class is another one";
    EXPECT_EQ(pElement->GetAttributes()->GetCount(), 0);
    EXPECT_EQ(pElement->GetElements()->GetCount(), 0);
    EXPECT_EQ(pElement->GetElements(), pElement->GetElements());
    pElement->FromXml("<a xmlns='urn:any'/>");
    EXPECT_EQ(pElement->GetNamespace(), "urn:any");
}

TEST(ElementConstruction, NamespacesAreThoseOfTheElement)
{
    const ElementPtr pElement(new CElement("e", "urn:a", "##other", "urn:target"));
    EXPECT_EQ(pElement->GetNamespace(), "urn:a");
    EXPECT_EQ(pElement->GetTargetNamespace(), "urn:a");
    EXPECT_EQ(pElement->GetElements()->GetNamespace(), "urn:target");
    EXPECT_EQ(pElement->GetElements()->GetTargetNamespace(), "urn:target");
    EXPECT_EQ(pElement->GetAttributes()->GetNamespace(), "urn:a");
    EXPECT_EQ(pElement->GetAttributes()->GetTargetNamespace(), "urn:a");
}

TEST(ElementConstruction, RefusesWhatHasNoPlace)
{
    struct Row
    {
        std::function<void()> fnMake;
        const char* pszFailure;
    };
    const auto Make = [](auto... args) {
        return [=] { ElementPtr pElement(new CElement(args...)); };
    };
    const char* const pszNull = nullptr;
    CXmlObjectBase* const pNoObject = nullptr;
    const Row rows[] = {
        {Make(pszNull), "Namespace: Element Name must have a value"},
        {Make(pszNull, "a", pszNull, pszNull), "Namespace: Element Name must have a value"},
        {Make("e", "a", pszNull, pszNull), "Namespace: Namespace Restriction must have a value"},
        {Make("e", "a", "##any", pszNull), "Namespace: Target Namespace must have a value"},
        {Make("e", pszNull), "Namespace: Namespace Restriction must have a value"},
        {Make("e", "##any"), "Namespace: Invalid Namespace [##any]."},
        {Make("e", "##other"), "Namespace: Invalid Namespace [##other]."},
        {Make("e", "##local"), "Namespace: Invalid Namespace [##local]."},
        {Make("e", "##targetNamespace"), "Namespace: Invalid Namespace [##targetNamespace]."},
        {Make("e", "##Any"), "none"},
        {Make("e", ""), "none"},
        {Make("e", pszNull, "##any", ""), "none"},
        {Make("e", "urn:a urn:b"), "none"},
        {Make("e", "urn:a", "##other", "urn:a"),
         "Namespace: Invalid namespace [urn:a]. The namespace must be one of [##other] where the "
         "target namespace is [urn:a]."},
        {Make(pNoObject, ""), "Param: The object to copy may not be NULL"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(FailureOf(row.fnMake), row.pszFailure);
}

TEST(ElementConstruction, InitStartsAfreshOrChangesNothing)
{
    const ElementPtr pElement(new CElement("e", "urn:a"));
    pElement->SetText("text");
    pElement->GetElements()->Add("child");
    const CSmartPtr<CElementCol> pOld = pElement->GetElements();
    EXPECT_NE(FailureOf([&] { pElement->Init("n", "urn:b", "##local", ""); }), "none");
    EXPECT_EQ(XmlOf(*pElement), "<AA:e xmlns:AA=\"urn:a\"><AA:child/>text</AA:e>");

    pElement->Init(pElement->GetName().c_str(), "", "##any", "");
    EXPECT_EQ(XmlOf(*pElement), "<e>text</e>");
    EXPECT_EQ(pOld->GetCount(), 1);
}

TEST(ElementConstruction, CollectionsKeepTheNamespaceOfInit)
{
    // They come to be when they are first asked for, which must not show.
    const ElementPtr pElement(new CElement("e", "urn:a"));
    pElement->SetNamespace("urn:b");
    EXPECT_EQ(pElement->GetAttributes()->GetNamespace(), "urn:a");
    EXPECT_EQ(pElement->GetElements()->Add("c")->GetNamespace(), "urn:a");
    const ElementPtr pCopied = Copied("<e xmlns='urn:a'/>");
    EXPECT_EQ(pCopied->GetAttributes()->GetNamespace(), "");
    EXPECT_EQ(pCopied->GetElements()->Add("c")->GetNamespace(), "##any");
    EXPECT_EQ(pCopied->Clone()->GetElements()->Add("c")->GetNamespace(), "##any");
    const ElementPtr pRead(new CElement("x", "urn:a", "##any", "urn:t"));
    pRead->FromXml("<e><c xmlns='urn:c'/></e>");
    const ElementPtr pChild = pRead->GetElements()->Item(0);
    EXPECT_EQ(pChild->GetElements()->Add("c")->GetNamespace(), "urn:c");
    EXPECT_EQ(pChild->GetElements()->GetTargetNamespace(), "urn:t");
}

TEST(ElementConstruction, TakesTheXmlOfAnyObject)
{
    const ElementPtr pSource = Copied("<r xmlns='urn:r' a='1'><c>text</c></r>");
    const ElementPtr pPlain(new CElement(pSource.GetPtr(), nullptr));
    EXPECT_EQ(RecordedBy(*pPlain), RecordedBy(*pSource));
    EXPECT_EQ(pPlain->GetDefaultNamespace(), "");

    const ElementPtr pDefault(new CElement(pSource.GetPtr(), "urn:r"));
    EXPECT_EQ(pDefault->GetDefaultNamespace(), "urn:r");
    EXPECT_EQ(pDefault->GetAttributes()->GetCount(), 1);
    EXPECT_EQ(pSource->AddRef(), 2) << "the source is not kept";
    pSource->Release();
}

TEST(ElementRestrictions, AnElementOutsideIsThrownByPointer)
{
    const auto FailureByPointer = [](CElement& element, const char* pszRestriction,
                                     const char* pszTarget) {
        try {
            element.SetNamespaceRestrictions(pszRestriction, pszTarget);
        }
        catch (CQnInvalidNamespaceException* pException) {
            const std::unique_ptr<CQnInvalidNamespaceException> pOwned(pException);
            return "pointer: " + pOwned->GetMessage();
        }
        catch (const CQnInvalidNamespaceException& e) {
            return "value: " + e.GetMessage();
        }
        return std::string("none");
    };
    const ElementPtr pElement =
        Copied("<r xmlns='urn:t'><a><b x:at='' xmlns:x='urn:x'/></a><c><o xmlns='urn:o'/></c></r>");
    pElement->SetElementName("unused");
    EXPECT_EQ(FailureByPointer(*pElement, "##any", ""), "none");
    EXPECT_EQ(FailureByPointer(*pElement, "##other", "urn:t"),
              "pointer: The namespace r in the class urn:t is invalid against restriction ##other");
    EXPECT_EQ(FailureByPointer(*pElement, "##targetNamespace", "urn:t"),
              "value: Invalid namespace [urn:x]. The namespace must be one of "
              "[##targetNamespace] where the target namespace is [urn:t].");
    pElement->GetElements()->Item(0)->GetElements()->Item(0)->GetAttributes()->Clear();
    EXPECT_EQ(FailureByPointer(*pElement, "##targetNamespace", "urn:t"),
              "pointer: The namespace o in the class urn:o is invalid against restriction "
              "##targetNamespace");
    EXPECT_EQ(FailureByPointer(*pElement, "##other", "urn:o"),
              "pointer: The namespace o in the class urn:o is invalid against restriction "
              "##other");
    EXPECT_EQ(FailureByPointer(*pElement, nullptr, nullptr),
              "pointer: The namespace r in the class urn:t is invalid against restriction ");

    const ElementPtr pHeld(new CElement("e", "urn:e"));
    pHeld->SetNamespaceRestrictions("urn:e", "");
    pHeld->FromXml("<e xmlns='urn:e'/>");
    EXPECT_EQ(FailureOf([&] { pHeld->FromXml("<o xmlns='urn:o'/>"); }), "none");
    EXPECT_EQ(pHeld->GetName(), "e") << "the check stores nothing, the restriction of Init holds";
}

TEST(ElementWriting, ChildrenComeBeforeTheText)
{
    const ElementPtr pElement = Copied("<r a='1' n:b='2' xmlns:n='urn:n'>one<c/>two<d>x</d></r>");
    EXPECT_EQ(RecordedBy(*pElement), "<r {}\n@a {} 1 23\n@b {urn:n} 2 23\n<c {}\n 23\n>\n"
                                     "<d {}\nx 23\n>\nonetwo 23\n>\n");
    EXPECT_EQ(RecordedBy(*pElement->GetElements()), "<c {}\n 23\n>\n<d {}\nx 23\n>\n");
    EXPECT_EQ(RecordedBy(*pElement->GetAttributes()), "@a {} 1 23\n@b {urn:n} 2 23\n");
}

TEST(ElementWriting, DerivedItemsWriteThemselves)
{
    class CComment : public CElement
    {
    public:
        CComment() : CElement("unused") {}

    protected:
        void ToXml_Int(CXmlWriter* pWriter, bool bIsRoot, const char* pszTargetNamespace,
                       const CSerializationContext&, bool bOptionalChoice) const override
        {
            pWriter->WriteString(pszTargetNamespace, it_string, bIsRoot || bOptionalChoice);
        }
    };
    class CFlag : public CAttribute
    {
    public:
        CFlag() : CAttribute("unused", "", "") {}

    protected:
        void ToXml_Int(CXmlWriter* pWriter, bool, const char*, const CSerializationContext&,
                       bool) const override
        {
            pWriter->WriteAttributeString("flag", "", "on", it_boolean);
        }
    };
    const ElementPtr pElement(new CElement("r"));
    pElement->GetAttributes()->Add(new CFlag);
    pElement->GetAttributes()->Add(static_cast<CAttribute*>(nullptr));
    const ElementPtr pInner = pElement->GetElements()->Add("in", "");
    pInner->GetElements()->Add(new CComment);
    pInner->GetElements()->Add(static_cast<CElement*>(nullptr));
    CRecordingWriter writer;
    CXmlObjectBase::ToXml_Int(pElement.GetPtr(), &writer, true, "name", Defaults(), true);
    EXPECT_EQ(writer.m_strLines, "<r {}\n@flag {} on 24\n<in {}\nname 23\n 23\n>\n 23\n>\n");
    EXPECT_FALSE(pInner->GetElements()->Item(1));
    EXPECT_FALSE(pElement->GetAttributes()->Item(1));
    EXPECT_EQ(pElement->Clone()->GetElements()->Item(0)->GetElements()->GetCount(), 1)
        << "clones are made of elements only";
}

TEST(ElementWriting, ADefaultNamespaceTakesARoadOfItsOwn)
{
    const ElementPtr pElement =
        Copied("<r a='1'><n xmlns='urn:n' b='2'><c/>text</n></r>", SchemaType_NoNamespaces);
    const ElementPtr pInner = pElement->GetElements()->Item(0);
    EXPECT_EQ(pInner->GetDefaultNamespace(), "urn:n");
    EXPECT_EQ(pInner->GetAttributes()->GetCount(), 2);
    EXPECT_EQ(XmlOf(*pElement), "<r a=\"1\"><n xmlns=\"urn:n\"><c/>text</n></r>");
    pInner->GetElements()->Item(0)->SetNamespace("urn:n");
    EXPECT_EQ(pElement->ToXml(false, true, EOLType_CRLF, Defaults()),
              "<r a=\"1\">\r\n<n xmlns=\"urn:n\">\r\n\t<c/>\r\ntext</n>\r\n\r\n</r>\r\n");
    const ElementPtr pNested = Copied("<r><n xmlns='urn:n'>t<m xmlns='urn:m'><c/></m>u<d/></n></r>",
                                      SchemaType_NoNamespaces);
    EXPECT_EQ(pNested->ToXml(false, true, EOLType_LF, Defaults()),
              "<r>\n<n xmlns=\"urn:n\">\n<m xmlns=\"urn:m\">\n\t<c/>\n</m>\n\n\t<d/>\ntu</n>\n"
              "\n</r>\n");
    EXPECT_EQ(FailureOf([&] { RecordedBy(*pElement); }),
              "State: An Element with a default namespace can only be written as XML text");
    EXPECT_EQ(pInner->Clone()->GetDefaultNamespace(), "");
}

TEST(ElementReading, AWholeDocumentComesInThroughFromXml)
{
    const ElementPtr pElement(new CElement("old"));
    pElement->SetText("old");
    const char* const pszXml = "<r xmlns='urn:r' a='1'><c>x</c>text</r>";
    pElement->FromXml(pszXml);
    EXPECT_EQ(RecordedBy(*pElement), "<r {urn:r}\n@a {} 1 23\n<c {urn:r}\nx 23\n>\ntext 23\n>\n");
    pElement->FromXml("<s b='2'><d/></s>"); // adds, but for name, namespace and text
    EXPECT_EQ(RecordedBy(*pElement), "<s {}\n@a {} 1 23\n@b {} 2 23\n<c {urn:r}\nx 23\n>\n"
                                     "<d {}\n 23\n>\n 23\n>\n");
    EXPECT_EQ(FailureOf([&] { pElement->FromXml(nullptr); }), "Qn: XML String is empty!");
    EXPECT_NE(FailureOf([&] { pElement->FromXml("<a><b></a>"); }), "none");
    EXPECT_EQ(pElement->GetName(), "s");
}

TEST(ElementReading, InheritedEntriesReadTheFirstChild)
{
    const ElementPtr pElement(new CElement("old"));
    pElement->FromXml("<r a='1'><c b='2'><d/></c><e/></r>", Defaults());
    EXPECT_EQ(RecordedBy(*pElement), "<c {}\n@b {} 2 23\n<d {}\n 23\n>\n 23\n>\n");
    pElement->FromXml("<r/>", Defaults());
    EXPECT_EQ(pElement->GetName(), "c") << "no first child, nothing changes";
    CElement& base = *pElement;
    EXPECT_EQ(CXmlObjectBase::FromXml_Int(&base, nullptr, nullptr, Defaults()), nullptr);
}

TEST(ElementReading, CopyXmlElementReplaces)
{
    const ElementPtr pElement = Copied("<r a='1'><c/></r>");
    CRecordingSink sink;
    pElement->GetElements()->AddEventListener(&sink);
    CXmlDocument document;
    document.LoadXml("<s xmlns='urn:s' b='2'><d><f/></d><e/></s>");
    pElement->CopyXmlElement(document.GetDocumentElement());
    EXPECT_EQ(RecordedBy(*pElement), "<s {urn:s}\n@b {} 2 23\n<d {urn:s}\n<f {urn:s}\n 23\n>\n"
                                     " 23\n>\n<e {urn:s}\n 23\n>\n 23\n>\n");
    EXPECT_EQ(sink.TakeHeard(), "3:null 4:null 0 1 2 0 1 2 0 ");
    EXPECT_EQ(FailureOf([&] { pElement->CopyXmlElement(nullptr); }),
              "Param: The element to copy may not be NULL");
}

TEST(ElementReading, ARefusedElementIsLeftToTheCaller)
{
    CXmlDocument document;
    document.LoadXml("<r><a xmlns='urn:a'/><b/></r>");
    CXmlElement* const pRoot = document.GetDocumentElement();
    CXmlElement* const pA = pRoot->GetFirstElement();
    CXmlElement* const pB = pA->GetNextSiblingElement();
    const ElementPtr pElement(new CElement("e", "urn:x", "urn:x", ""));
    EXPECT_EQ(CXmlObjectBase::FromXml_Int(pElement.GetPtr(), pRoot, pA, Defaults()), pA);
    EXPECT_EQ(pElement->GetName(), "e");
    EXPECT_EQ(CXmlObjectBase::FromXml_Int(pElement.GetPtr(), pRoot, pB, Defaults()), nullptr);
    EXPECT_EQ(pElement->GetName(), "b") << "a list with a URI admits the empty namespace too";
}

TEST(ElementReading, SettersTakeNullAsEmpty)
{
    const ElementPtr pElement(new CElement("e", "urn:e"));
    pElement->SetText("t");
    pElement->SetName(nullptr);
    pElement->SetText(nullptr);
    pElement->SetNamespace(nullptr);
    EXPECT_EQ(pElement->GetName() + pElement->GetText() + pElement->GetNamespace(), "");
    const CSmartPtr<CAttribute> pAttribute(new CAttribute("n", nullptr, "urn:n"));
    pAttribute->SetValue("v");
    EXPECT_EQ(RecordedBy(*pAttribute->Clone()), "@n {urn:n} v 23\n");
    pAttribute->SetName("m");
    pAttribute->SetNamespace(nullptr);
    EXPECT_EQ(RecordedBy(*pAttribute), "@m {} v 23\n");
    EXPECT_EQ(FailureOf([&] { pAttribute->FromXml("<r/>", Defaults()); }),
              "Qn: This should be done by the collection");
}

TEST(ElementReading, ACloneIsDeepAndNeedsAFittingNamespace)
{
    const ElementPtr pElement = Copied("<r xmlns='urn:r' a='1'>t<c b='2'>u<d/></c><e/></r>");
    const ElementPtr pClone = pElement->Clone();
    const std::string strBefore = RecordedBy(*pElement);
    EXPECT_EQ(RecordedBy(*pClone), strBefore);
    pClone->GetElements()->Item(0)->GetElements()->Item(0)->SetName("changed");
    pClone->GetAttributes()->Item(0)->SetValue("changed");
    EXPECT_EQ(RecordedBy(*pElement), strBefore);

    const ElementPtr pOutside(new CElement("o", "urn:o"));
    pElement->GetElements()->Add(pOutside.GetPtr());
    pOutside->SetNamespace("urn:elsewhere");
    const std::string strFailure =
        "Namespace: Invalid namespace [urn:elsewhere]. The namespace must be one of [urn:o] where "
        "the target namespace is [].";
    EXPECT_EQ(FailureOf([&] { pElement->Clone(); }), strFailure);
    EXPECT_EQ(FailureOf([&] { pElement->GetElements()->Clone(); }), strFailure);
}

TEST(ElementCollection, KeepsTheRestrictionAnyAndNoBounds)
{
    const CSmartPtr<CElementCol> pCol(new CElementCol("urn:t", "##targetNamespace", "urn:t", 2, 1));
    EXPECT_TRUE(pCol->IsValidCount(Defaults()));
    EXPECT_EQ(pCol->GetElementName(), "");
    pCol->Add("a", "urn:elsewhere");
    pCol->Add(new CElement("b"));
    pCol->Add("c");
    pCol->FromXml("<r><d xmlns='urn:d'/><e/></r>", Defaults());
    EXPECT_EQ(RecordedBy(*pCol), "<a {urn:elsewhere}\n 23\n>\n<b {}\n 23\n>\n<c {urn:t}\n 23\n>\n"
                                 "<d {urn:d}\n 23\n>\n<e {}\n 23\n>\n");
    EXPECT_EQ(RecordedBy(*pCol->Clone()), RecordedBy(*pCol));
    EXPECT_EQ(pCol->Item(1)->GetName(), "b");
    EXPECT_EQ(FailureOf([&] { pCol->Item(5); }), "Param: Index 5 is out of range, use 0 - 5");
    EXPECT_EQ(FailureOf([&] { new CElementCol("urn:a", "##targetNamespace", "urn:t", 0, -1); }),
              "Namespace: Invalid namespace [urn:a]. The namespace must be one of "
              "[##targetNamespace] where the target namespace is [urn:t].");
    std::string strNames;
    for (CNode* p = pCol->begin(); p != pCol->end(); p = p->GetNext())
        strNames += static_cast<CElement*>(p->GetItem())->GetName();
    EXPECT_EQ(strNames, "abcde");
}

TEST(ElementCollection, AKeywordServesAsDefaultNamespace)
{
    struct Row
    {
        const char *pszNamespace, *pszRestriction, *pszTarget, *pszAdded;
    };
    const char* const pszNone = "State: A Namespace has not been set for this Collection";
    const Row rows[] = {
        {"", "##other", "urn:t", "##other"},  {"", "##any", "", "##any"}, {"", "##", "", "##"},
        {"urn:a", "##any", "", "urn:a"},      {"", "urn:a", "", pszNone}, {"", "#", "", pszNone},
        {nullptr, nullptr, nullptr, pszNone},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszRestriction ? row.pszRestriction : "null");
        const CSmartPtr<CElementCol> pCol(
            new CElementCol(row.pszNamespace, row.pszRestriction, row.pszTarget, 0, -1));
        std::string strAdded;
        const std::string strFailure =
            FailureOf([&] { strAdded = pCol->Add("e")->GetNamespace(); });
        EXPECT_EQ(strFailure == "none" ? strAdded : strFailure, row.pszAdded);
    }
}

TEST(ElementCollection, LockedReadingTakesOneNameOnly)
{
    CXmlDocument document;
    document.LoadXml("<r xmlns='urn:r'><a x='1'><b/></a><a/><a xmlns='urn:o'/><a/></r>");
    CXmlElement* const pRoot = document.GetDocumentElement();
    const CSmartPtr<CElementCol> pCol(new CElementCol("", "##any", "urn:t", 0, -1));
    CXmlElement* pNext = pCol->FromXmlLockElementName_Int(
        "a", "urn:r", pRoot, pRoot->GetFirstElement(), Defaults(), false);
    ASSERT_TRUE(pNext);
    EXPECT_EQ(pNext->GetNamespaceURI(), "urn:o");
    EXPECT_EQ(RecordedBy(*pCol), "<a {urn:r}\n@x {} 1 23\n<b {urn:r}\n 23\n>\n 23\n>\n"
                                 "<a {urn:r}\n 23\n>\n");
    EXPECT_EQ(pCol->FromXmlLockElementName_Int("b", pNext->GetNamespaceURI(), pRoot, pNext,
                                               Defaults(), false),
              pNext);
    EXPECT_EQ(pCol->FromXmlLockElementName_Int("a", "urn:r", pRoot, nullptr, Defaults(), false),
              nullptr);
    pNext = pNext->GetNextSiblingElement();
    EXPECT_EQ(pCol->FromXmlLockElementName_Int("a", "urn:r", pRoot, pNext, Defaults(), false),
              nullptr);
    EXPECT_EQ(pCol->GetCount(), 3);
}

TEST(AttributeCollection, TakesTheFirstTokenAsDefaultNamespace)
{
    struct Row
    {
        const char *pszNamespace, *pszRestriction, *pszDefault;
    };
    const Row rows[] = {
        {"", "urn:a urn:b", "urn:a"},
        {"", "urn:a", "urn:a"},
        {"urn:x", "urn:a", "urn:x"},
        {"", "##any urn:a", ""},
        {"", "a", ""},
        {"", "ab", "ab"},
        {"", "a#b", ""},
        {"", " urn:a", ""},
        {nullptr, nullptr, ""},
        {"", "x##any", ""},
        {"", "xx##any", "xx##any"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszRestriction ? row.pszRestriction : "null");
        const CSmartPtr<CAttributeCol> pCol(
            new CAttributeCol(row.pszNamespace, row.pszRestriction, ""));
        EXPECT_EQ(pCol->GetNamespace(), row.pszDefault);
        EXPECT_EQ(pCol->GetTargetNamespace(), row.pszDefault);
        EXPECT_EQ(pCol->Clone()->GetNamespace(), row.pszDefault);
    }
}

TEST(AttributeCollection, ReadyMadeAttributesPassUntested)
{
    const CSmartPtr<CAttributeCol> pCol(new CAttributeCol("", "urn:a", ""));
    const std::string strFailure = "Namespace: Invalid namespace [urn:b]. The namespace must be "
                                   "one of [urn:a] where the target namespace is [].";
    EXPECT_EQ(FailureOf([&] { pCol->Add("n", "v", "urn:b"); }), strFailure);
    EXPECT_EQ(pCol->GetCount(), 0);
    pCol->Add(new CAttribute("n", "v", "urn:b"));
    pCol->Add("m", "w");
    pCol->Add("l");
    pCol->Add("k", nullptr, nullptr);
    EXPECT_EQ(RecordedBy(*pCol), "@n {urn:b} v 23\n@m {urn:a} w 23\n@l {urn:a}  23\n@k {}  23\n");
    EXPECT_EQ(RecordedBy(*pCol->Clone()), RecordedBy(*pCol));
    EXPECT_EQ(pCol->Item(1)->GetValue(), "w");
    pCol->Clone()->Item(1)->SetValue("changed");
    EXPECT_EQ(pCol->Item(1)->GetValue(), "w");
    EXPECT_EQ(FailureOf([&] { pCol->Item(-1); }), "Param: Index -1 is out of range, use 0 - 4");

    const CSmartPtr<CAttributeCol> pTwo(new CAttributeCol("", "urn:a urn:b", ""));
    EXPECT_NE(FailureOf([&] { pTwo->Add("n"); }), "none") << "a list of two admits neither";
}

TEST(AttributeCollection, ReadingAddsUntilOneIsOutside)
{
    const CSmartPtr<CAttributeCol> pCol(new CAttributeCol("", "##local", ""));
    pCol->FromXml("<r a='1'><c b='2'/></r>", Defaults());
    EXPECT_EQ(RecordedBy(*pCol), "@a {} 1 23\n");
    EXPECT_EQ(
        FailureOf([&] { pCol->FromXml("<r b='2' n:c='3' d='4' xmlns:n='urn:n'/>", Defaults()); }),
        "Namespace: Invalid Attribute [c]. The attributes namespace is Inappropriate.\n"
        "Path: /r");
    EXPECT_EQ(RecordedBy(*pCol), "@a {} 1 23\n@b {} 2 23\n");
    EXPECT_EQ(FailureOf([&] {
                  CXmlObjectBase::FromXml_Int(pCol.GetPtr(), nullptr, nullptr, Defaults());
              }),
              "Param: The element with the attributes may not be NULL");
}

void RunOnSmallStack(void (*fnRun)())
{
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, 512 * 1024), 0);
    pthread_t thread;
    ASSERT_EQ(pthread_create(
                  &thread, &attributes,
                  [](void* pRun) -> void* {
                      reinterpret_cast<void (*)()>(pRun)();
                      return nullptr;
                  },
                  reinterpret_cast<void*>(fnRun)),
              0);
    pthread_attr_destroy(&attributes);
    pthread_join(thread, nullptr);
}

TEST(ElementDepth, CostsNoStack)
{
    RunOnSmallStack([] {
        const int nDepth = 200000;
        std::string strXml;
        for (int n = 0; n < nDepth; ++n)
            strXml += "<a>";
        for (int n = 0; n < nDepth; ++n)
            strXml += "</a>";
        std::string strWritten = strXml;
        strWritten.replace(strWritten.find("<a></a>"), 7, "<a/>");

        ElementPtr pElement = Copied(strXml.c_str());
        EXPECT_TRUE(XmlOf(*pElement) == strWritten);
        pElement->SetNamespaceRestrictions("##local", "");
        ElementPtr pClone = pElement->Clone();
        pElement.Reset();
        EXPECT_TRUE(XmlOf(*pClone) == strWritten);
        pClone->GetElements()->Clear();
        EXPECT_EQ(XmlOf(*pClone), "<a/>");
        pClone->FromXml(strXml.c_str());
        EXPECT_TRUE(XmlOf(*pClone) == strWritten);
    });
}

TEST(ElementDepth, DefaultNamespacesNestToo)
{
    RunOnSmallStack([] {
        const int nDepth = 50000; // copied at each level, the text takes ten seconds
        std::string strXml;
        for (int n = 0; n < nDepth; ++n)
            strXml += "<a xmlns=\"urn:a\">";
        for (int n = 0; n < nDepth; ++n)
            strXml += "</a>";
        const std::string strWritten = XmlOf(*Copied(strXml.c_str(), SchemaType_NoNamespaces));
        EXPECT_EQ(strWritten.size(), strXml.size() - 3);
    });
}

} // namespace
