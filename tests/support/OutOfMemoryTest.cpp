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
#include <functional>
#include <memory>
#include <new>

using namespace QnXmlLib16;

namespace {

thread_local long t_nUntilFailure = -1; // allocations that still succeed; below 0: all do
thread_local long t_nLive = 0;          // blocks made and not freed by this thread

void* Allocate(std::size_t nBytes) noexcept
{
    if (t_nUntilFailure == 0)
        return nullptr;
    if (t_nUntilFailure > 0)
        --t_nUntilFailure;
    void* pBlock = std::malloc(nBytes ? nBytes : 1);
    t_nLive += pBlock ? 1 : 0;
    return pBlock;
}

void* AllocateOrThrow(std::size_t nBytes)
{
    void* pBlock = Allocate(nBytes);
    return pBlock ? pBlock : throw std::bad_alloc();
}

void Free(void* pBlock) noexcept
{
    t_nLive -= pBlock ? 1 : 0;
    std::free(pBlock);
}

} // namespace

// The whole test program allocates through these.
void* operator new(std::size_t nBytes)
{
    return AllocateOrThrow(nBytes);
}
void* operator new[](std::size_t nBytes)
{
    return AllocateOrThrow(nBytes);
}
void* operator new(std::size_t nBytes, const std::nothrow_t&) noexcept
{
    return Allocate(nBytes);
}
void* operator new[](std::size_t nBytes, const std::nothrow_t&) noexcept
{
    return Allocate(nBytes);
}
void operator delete(void* pBlock) noexcept
{
    Free(pBlock);
}
void operator delete[](void* pBlock) noexcept
{
    Free(pBlock);
}
void operator delete(void* pBlock, std::size_t) noexcept
{
    Free(pBlock);
}
void operator delete[](void* pBlock, std::size_t) noexcept
{
    Free(pBlock);
}
void operator delete(void* pBlock, const std::nothrow_t&) noexcept
{
    Free(pBlock);
}
void operator delete[](void* pBlock, const std::nothrow_t&) noexcept
{
    Free(pBlock);
}

namespace {

// An operation on an object that it owns; the result tells whether the object is in order.
using Operation = std::function<std::string()>;

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

// The parameter is a name and the maker of an operation with its object.
struct Road
{
    const char* pszName;
    std::function<Operation()> fnMake;
};

void PrintTo(const Road& road, std::ostream* pStream)
{
    *pStream << road.pszName;
}

class OutOfMemory : public testing::TestWithParam<Road>
{};

} // namespace

TEST_P(OutOfMemory, AnywhereLeavesNoLeakAndAUsableObject)
{
    const std::string strExpected = GetParam().fnMake()();
    bool bFailed = true;
    long nAllocations = 0;
    for (; bFailed && !HasFailure(); ++nAllocations) {
        const long nLiveBefore = t_nLive;
        {
            const Operation operation = GetParam().fnMake();
            std::string strResult;
            t_nUntilFailure = nAllocations;
            try {
                strResult = operation();
                bFailed = false;
            }
            catch (const std::bad_alloc&) {
            }
            t_nUntilFailure = -1;
            if (bFailed)
                strResult = operation();
            EXPECT_EQ(strResult, strExpected) << "after failure " << nAllocations;
        }
        EXPECT_EQ(t_nLive, nLiveBefore) << "after failure " << nAllocations;
    }
    EXPECT_GT(nAllocations, 2) << "no allocation was seen to fail";
}

INSTANTIATE_TEST_SUITE_P(
    , OutOfMemory,
    testing::Values(
        Road{"DocumentFromBytes",
             [] {
                 const auto pDocument = std::make_shared<CXmlDocument>();
                 return [pDocument] {
                     pDocument->LoadXmlStream(reinterpret_cast<const unsigned char*>(kXml),
                                              std::strlen(kXml));
                     const CXmlElement* p = pDocument->GetDocumentElement();
                     return p->GetFirstElement()->GetXPath() + p->GetText() +
                            pDocument->LookupNamespaceFromAlias("p");
                 };
             }},
        Road{"DocumentFromWideText",
             [] {
                 const auto pDocument = std::make_shared<CXmlDocument>();
                 return [pDocument] {
                     pDocument->LoadXml(std::wstring(kXml, kXml + std::strlen(kXml)).c_str());
                     return pDocument->GetDocumentElement()->GetText();
                 };
             }},
        Road{"ElementCopied",
             [] {
                 const auto pDocument = std::make_shared<CXmlDocument>();
                 pDocument->LoadXml(kXml);
                 const CSmartPtr<CElement> pElement(new CElement(""));
                 return [pDocument, pElement] {
                     pElement->CopyXmlElement(pDocument->GetDocumentElement());
                     return XmlOf(*pElement);
                 };
             }},
        Road{"ElementRead",
             [] {
                 return [] {
                     const CSmartPtr<CElement> pElement(new CElement(""));
                     pElement->FromXml(kXml);
                     return XmlOf(*pElement->Clone());
                 };
             }},
        Road{"ElementBuilt",
             [] {
                 return [] {
                     const CSmartPtr<CElement> pElement(new CElement("root", "urn:root"));
                     pElement->GetAttributes()->Add("a", "1", "urn:a")->SetValue(kXml);
                     pElement->GetElements()->Add("child")->SetText(kXml);
                     const CSmartPtr<CElement> pCopy(new CElement(pElement.GetPtr(), ""));
                     return XmlOf(*pCopy);
                 };
             }},
        Road{"ItemsAdded",
             [] {
                 const CSmartPtr<CElementCol> pCol(new CElementCol("", "##any", "", 0, -1));
                 return [pCol] {
                     pCol->Clear();
                     pCol->Add(new CElement("a"));
                     pCol->Add("b", "")->GetAttributes()->Add(new CAttribute("c", "", ""));
                     return XmlOf(*pCol->Item(1)) + std::to_string(pCol->GetCount());
                 };
             }},
        Road{"ObjectRead",
             [] {
                 const std::string strXml = XmlOf(*Model::MakeShip());
                 const CSmartPtr<Model::CShip> pShip(new Model::CShip);
                 return [pShip, strXml] {
                     pShip->FromXml(strXml.c_str(), CSerializationContext::m_defaultContext);
                     return XmlOf(*pShip);
                 };
             }},
        Road{"ObjectWritten",
             [] {
                 const CSmartPtr<Model::CShip> pShip = Model::MakeShip();
                 return [pShip] {
                     return TextOf(pShip->ToXmlStream(true, true, XmlEncoding_UTF8, EOLType_CRLF,
                                                      CSerializationContext::m_defaultContext,
                                                      CompressionType_ZLib));
                 };
             }},
        Road{"ObjectThroughJson",
             [] {
                 const CSmartPtr<Model::CShip> pShip = Model::MakeShip();
                 const CSmartPtr<Model::CShip> pCopy(new Model::CShip);
                 const auto pContext = std::make_shared<CSerializationContext>();
                 pContext->GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_NoNamespaces);
                 return [pShip, pCopy, pContext] {
                     pCopy->FromJson(pShip->ToJson(true, EOLType_LF, *pContext).c_str(), *pContext);
                     return XmlOf(*pCopy);
                 };
             }},
        Road{"ObjectThroughFastInfoset",
             [] {
                 const CSmartPtr<Model::CShip> pShip = Model::MakeShip();
                 const CSmartPtr<Model::CShip> pCopy(new Model::CShip);
                 return [pShip, pCopy] {
                     const CSerializationContext& context = CSerializationContext::m_defaultContext;
                     pCopy->FromXmlStream(
                         pShip->ToFastInfosetStream(FInfoDecl_None, context, CompressionType_None),
                         context);
                     return XmlOf(*pCopy);
                 };
             }},
        Road{"ValuesCollected",
             [] {
                 const CSmartPtr<CdecimalCol> pCol(
                     new CdecimalCol("v", "", 0, -1, "", -1, -1, "", "", "", "", -1, -1, -1,
                                     CWhitespaceUtils::WhitespaceRule_None, ""));
                 return [pCol] {
                     pCol->Clear();
                     for (const char* psz : {"1", "2.50", "-12345678901234567890123456789.5"})
                         pCol->Add(CDecimal(psz));
                     return pCol->Item(0).ToString() + pCol->Item(2).ToString();
                 };
             }},
        Road{"BinaryDataChanged",
             [] {
                 const auto pData = std::make_shared<CBinaryData>();
                 return [pData] {
                     pData->SetBuffer("some bytes");
                     const CBinaryData shared(*pData);
                     pData->Append(*pData);
                     pData->SetAsBase64(pData->GetAsBase64().c_str());
                     pData->SetAsHexString(pData->GetAsHexString().c_str());
                     return TextOf(*pData) + TextOf(shared);
                 };
             }},
        Road{"StringBufferFilled",
             [] {
                 const auto pBuffer = std::make_shared<CStringBuffer>(16);
                 return [pBuffer] {
                     pBuffer->SetText(kXml);
                     pBuffer->Append(kXml);
                     pBuffer->SetText(pBuffer->GetText());
                     return std::string(pBuffer->GetText());
                 };
             }},
        Road{"VariantAssigned",
             [] {
                 const auto pValue = std::make_shared<QnVariant>();
                 return [pValue] {
                     pValue->SetString(kXml);
                     QnVariant other;
                     other.SetDecimal(CDecimal("12345678901234567890123456789.5"));
                     other = *pValue;
                     return other.GetString();
                 };
             }},
        Road{"ContextCopied",
             [] {
                 const auto pContext = std::make_shared<CSerializationContext>();
                 return [pContext] {
                     pContext->GetNamespaceAliases().Add("p", "urn:a namespace not too short");
                     pContext->GetAdditionalRootAttributes();
                     pContext->GetJsonContext().SetRootElementName("a name that is not short");
                     CSerializationContext copy(*pContext);
                     copy = *pContext;
                     return copy.GetNamespaceAliases().GetNamespaceAt(0);
                 };
             }},
        Road{"ExceptionChained",
             [] {
                 return [] {
                     const CQnValidationException inner(kXml, "/a path that is not short");
                     const CQnException outer("the outer message, long", inner);
                     const std::unique_ptr<CQnException> pClone(outer.Clone());
                     return pClone->GetFullMessage();
                 };
             }}),
    [](const testing::TestParamInfo<Road>& row) { return row.param.pszName; });
