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
#include "tests/support/Text.h"

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

struct Trees
{
    CXmlDocument m_document;
    CSmartPtr<CElement> m_element{new CElement("")};
    CSmartPtr<CElementCol> m_items{new CElementCol("", "##any", "", 0, -1)};
};

struct Ships
{
    CSmartPtr<Model::CShip> m_ship = Model::MakeShip();
    CSmartPtr<Model::CShip> m_copy{new Model::CShip};
    CSerializationContext m_context;
};

struct Values
{
    CBinaryData m_data;
    CStringBuffer m_buffer;
    QnVariant m_value;
    CSmartPtr<CdecimalCol> m_decimals{new CdecimalCol("v", "", 0, -1, "", -1, -1, "", "", "", "",
                                                      -1, -1, -1,
                                                      CWhitespaceUtils::WhitespaceRule_None, "")};
};

} // namespace

TEST(OutOfMemory, LeavesNoLeakAndUsableTrees)
{
    FailEachAllocation<Trees>([](Trees& trees) {
        CXmlDocument& document = trees.m_document;
        document.LoadXmlStream(reinterpret_cast<const unsigned char*>(kXml), std::strlen(kXml));
        std::string strResult = document.GetDocumentElement()->GetFirstElement()->GetXPath();
        document.LoadXml(std::wstring(kXml, kXml + std::strlen(kXml)).c_str());
        trees.m_element->CopyXmlElement(document.GetDocumentElement());
        trees.m_element->GetAttributes()->Add("a", "1", "urn:a")->SetValue(kXml);
        trees.m_items->Clear();
        trees.m_items->Add(new CElement("a"));
        trees.m_items->Add("b", "")->GetAttributes()->Add(new CAttribute("c", "", ""));
        const CSmartPtr<CElement> pCopy(new CElement(trees.m_element.GetPtr(), ""));
        strResult += XmlOf(*pCopy);
        pCopy->FromXml(kXml);
        return strResult + XmlOf(*pCopy->Clone()) + XmlOf(*trees.m_items->Item(1)) +
               std::to_string(trees.m_items->GetCount());
    });
}

TEST(OutOfMemory, LeavesNoLeakAndUsableBoundObjects)
{
    FailEachAllocation<Ships>([](Ships& ships) {
        const CSerializationContext& context = ships.m_context;
        const CBinaryData zipped = ships.m_ship->ToXmlStream(
            true, true, XmlEncoding_UTF8, EOLType_CRLF, context, CompressionType_ZLib);
        ships.m_copy->FromXmlStream(zipped, context);
        std::string strResult = XmlOf(*ships.m_copy);
        context.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_NoNamespaces);
        ships.m_copy->FromJson(ships.m_ship->ToJson(true, EOLType_LF, context).c_str(), context);
        strResult += XmlOf(*ships.m_copy);
        ships.m_copy->FromXmlStream(
            ships.m_ship->ToFastInfosetStream(FInfoDecl_None, context, CompressionType_None),
            context);
        return strResult + XmlOf(*ships.m_copy);
    });
}

TEST(OutOfMemory, LeavesNoLeakAndUsableValues)
{
    FailEachAllocation<Values>([](Values& values) {
        values.m_data.SetBuffer("some bytes");
        const CBinaryData shared(values.m_data);
        values.m_data.Append(values.m_data);
        values.m_data.SetAsBase64(values.m_data.GetAsBase64().c_str());
        values.m_data.SetAsHexString(values.m_data.GetAsHexString().c_str());
        values.m_buffer.SetText(kXml);
        values.m_buffer.Append(kXml);
        values.m_buffer.SetText(values.m_buffer.GetText());
        values.m_value.SetString(kXml);
        QnVariant other;
        other.SetDecimal(CDecimal("12345678901234567890123456789.5"));
        other = values.m_value;
        values.m_decimals->Clear();
        for (const char* psz : {"1", "-12345678901234567890123456789.5"})
            values.m_decimals->Add(CDecimal(psz));
        return ToText(values.m_data) + ToText(shared) + values.m_buffer.GetText() +
               other.GetString() + values.m_decimals->Item(1).ToString();
    });
    FailEachAllocation<CSerializationContext>([](CSerializationContext& context) {
        context.GetNamespaceAliases().Add("p", "urn:a namespace not too short");
        context.GetAdditionalRootAttributes();
        context.GetJsonContext().SetRootElementName("a name that is not short");
        CSerializationContext copy(context);
        copy = context;
        const CQnValidationException inner(kXml, "/a path that is not short");
        const CQnException outer("the outer message, long", inner);
        const std::unique_ptr<CQnException> pClone(outer.Clone());
        return copy.GetNamespaceAliases().GetNamespaceAt(0) + pClone->GetFullMessage();
    });
}
