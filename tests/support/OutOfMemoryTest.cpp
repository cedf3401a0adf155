// Every allocation of an operation fails once: nothing may leak, and what was being worked on can
// be used again.
#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/collections/Element.h"
#include "QnXmlLib16/collections/decimalCol.h"
#include "QnXmlLib16/fastinfoset/FInfoDecl.h"
#include "QnXmlLib16/json/JsonContext.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/StringBuffer.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/values/QnVariant.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"
#include "tests/model/Ship.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

using namespace QnXmlLib16;

namespace {

thread_local long t_nUntilFailure = -1; // allocations that still succeed; below 0: all do
thread_local long t_nLive = 0;          // blocks made and not freed by this thread

} // namespace

// The whole test program allocates through these: all other forms go by them.
void* operator new(std::size_t nBytes)
{
    if (t_nUntilFailure == 0)
        throw std::bad_alloc();
    if (t_nUntilFailure > 0)
        --t_nUntilFailure;
    void* pBlock = std::malloc(nBytes ? nBytes : 1);
    if (!pBlock)
        throw std::bad_alloc();
    ++t_nLive;
    return pBlock;
}
void operator delete(void* pBlock) noexcept
{
    t_nLive -= pBlock ? 1 : 0;
    std::free(pBlock);
}
void operator delete(void* pBlock, std::size_t) noexcept
{
    operator delete(pBlock);
}

namespace {

std::string XmlOf(const CXmlObjectBase& object)
{
    return object.ToXml(true, true, EOLType_LF, CSerializationContext::m_defaultContext);
}

std::string TextOf(const CBinaryData& data)
{
    return std::string(reinterpret_cast<const char*>(data.GetData()), data.GetLength());
}

const char* const kXml =
    "<?xml version='1.0'?><p:a xmlns:p='urn:a namespace that is not short' xmlns='urn:d'>"
    "<b p:one='a value that is longer than a few bytes' two='2'>text &lt; text</b>"
    "<c xmlns='urn:c'><![CDATA[section]]><d/><d>deep and long enough to be kept outside</d></c>"
    "tail</p:a>";

// Runs the operation on new objects, with each allocation failing once. What the operation gives
// tells whether the object is in order; after a failure it is run again.
template <class TObject>
void FailEachAllocation(std::string (*pfnOperation)(TObject&))
{
    TObject whole;
    const std::string strExpected = pfnOperation(whole);
    bool bFailed = true;
    long nAllocations = 0;
    for (; bFailed && !testing::Test::HasFailure(); ++nAllocations) {
        const long nLiveBefore = t_nLive;
        {
            TObject object;
            std::string strResult;
            t_nUntilFailure = nAllocations;
            try {
                strResult = pfnOperation(object);
                bFailed = false;
            }
            catch (const std::bad_alloc&) {
            }
            t_nUntilFailure = -1;
            if (bFailed)
                strResult = pfnOperation(object);
            EXPECT_EQ(strResult, strExpected) << "after failure " << nAllocations;
        }
        EXPECT_EQ(t_nLive, nLiveBefore) << "after failure " << nAllocations;
    }
    EXPECT_GT(nAllocations, 2) << "no allocation was seen to fail";
}

// Where an operation makes all its objects itself.
struct Nothing
{};

struct Ships
{
    CSmartPtr<Model::CShip> m_ship = Model::MakeShip();
    CSmartPtr<Model::CShip> m_copy{new Model::CShip};
    CSerializationContext m_context;
};

struct Elements
{
    CSmartPtr<CElement> m_element{new CElement("")};
    CSmartPtr<CElementCol> m_items{new CElementCol("", "##any", "", 0, -1)};
    CSmartPtr<CdecimalCol> m_values{new CdecimalCol("v", "", 0, -1, "", -1, -1, "", "", "", "", -1,
                                                    -1, -1, CWhitespaceUtils::WhitespaceRule_None,
                                                    "")};
};

} // namespace

TEST(OutOfMemory, LeavesNoLeakAndAUsableDocument)
{
    FailEachAllocation<CXmlDocument>([](CXmlDocument& document) {
        document.LoadXmlStream(reinterpret_cast<const unsigned char*>(kXml), std::strlen(kXml));
        const CXmlElement* p = document.GetDocumentElement();
        const std::string strPath = p->GetFirstElement()->GetXPath();
        document.LoadXml(std::wstring(kXml, kXml + std::strlen(kXml)).c_str());
        return strPath + document.GetDocumentElement()->GetText() +
               document.LookupNamespaceFromAlias("p");
    });
}

TEST(OutOfMemory, LeavesNoLeakAndUsableElements)
{
    FailEachAllocation<Elements>([](Elements& elements) {
        CXmlDocument document;
        document.LoadXml(kXml);
        elements.m_element->CopyXmlElement(document.GetDocumentElement());
        return XmlOf(*elements.m_element);
    });
    FailEachAllocation<Nothing>([](Nothing&) {
        const CSmartPtr<CElement> pElement(new CElement("root", "urn:root"));
        pElement->FromXml(kXml);
        pElement->GetAttributes()->Add("a", "1", "urn:a")->SetValue(kXml);
        pElement->GetElements()->Add("child")->SetText(kXml);
        const CSmartPtr<CElement> pCopy(new CElement(pElement.GetPtr(), ""));
        return XmlOf(*pCopy) + XmlOf(*pElement->Clone());
    });
    FailEachAllocation<Elements>([](Elements& elements) {
        CElementCol& items = *elements.m_items;
        items.Clear();
        items.Add(new CElement("a"));
        items.Add("b", "")->GetAttributes()->Add(new CAttribute("c", "", ""));
        return XmlOf(*items.Item(1)) + std::to_string(items.GetCount());
    });
    FailEachAllocation<Elements>([](Elements& elements) {
        CdecimalCol& values = *elements.m_values;
        values.Clear();
        for (const char* psz : {"1", "2.50", "-12345678901234567890123456789.5"})
            values.Add(CDecimal(psz));
        return values.Item(0).ToString() + values.Item(2).ToString();
    });
}

TEST(OutOfMemory, LeavesNoLeakAndUsableBoundObjects)
{
    FailEachAllocation<Ships>([](Ships& ships) {
        ships.m_copy->FromXml(XmlOf(*ships.m_ship).c_str(), ships.m_context);
        return XmlOf(*ships.m_copy);
    });
    FailEachAllocation<Ships>([](Ships& ships) {
        return TextOf(ships.m_ship->ToXmlStream(true, true, XmlEncoding_UTF8, EOLType_CRLF,
                                                ships.m_context, CompressionType_ZLib));
    });
    FailEachAllocation<Ships>([](Ships& ships) {
        ships.m_context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_NoNamespaces);
        const std::string strJson = ships.m_ship->ToJson(true, EOLType_LF, ships.m_context);
        ships.m_copy->FromJson(strJson.c_str(), ships.m_context);
        return XmlOf(*ships.m_copy);
    });
    FailEachAllocation<Ships>([](Ships& ships) {
        ships.m_copy->FromXmlStream(ships.m_ship->ToFastInfosetStream(
                                        FInfoDecl_None, ships.m_context, CompressionType_None),
                                    ships.m_context);
        return XmlOf(*ships.m_copy);
    });
}

TEST(OutOfMemory, LeavesNoLeakAndUsableValues)
{
    FailEachAllocation<CBinaryData>([](CBinaryData& data) {
        data.SetBuffer("some bytes");
        const CBinaryData shared(data);
        data.Append(data);
        data.SetAsBase64(data.GetAsBase64().c_str());
        data.SetAsHexString(data.GetAsHexString().c_str());
        return TextOf(data) + TextOf(shared);
    });
    FailEachAllocation<CStringBuffer>([](CStringBuffer& buffer) {
        buffer.SetText(kXml);
        buffer.Append(kXml);
        buffer.SetText(buffer.GetText());
        return std::string(buffer.GetText());
    });
    FailEachAllocation<QnVariant>([](QnVariant& value) {
        value.SetString(kXml);
        QnVariant other;
        other.SetDecimal(CDecimal("12345678901234567890123456789.5"));
        other = value;
        return other.GetString();
    });
    FailEachAllocation<CSerializationContext>([](CSerializationContext& context) {
        context.GetNamespaceAliases().Add("p", "urn:a namespace not too short");
        context.GetAdditionalRootAttributes();
        context.GetJsonContext().SetRootElementName("a name that is not short");
        CSerializationContext copy(context);
        copy = context;
        return copy.GetNamespaceAliases().GetNamespaceAt(0);
    });
    FailEachAllocation<Nothing>([](Nothing&) {
        const CQnValidationException inner(kXml, "/a path that is not short");
        const CQnException outer("the outer message, long", inner);
        const std::unique_ptr<CQnException> pClone(outer.Clone());
        return pClone->GetFullMessage();
    });
}
