#include "tests/model/Sheet.h"
#include "tests/model/Ship.h"

#include "QnXmlLib16/QnXmlLib16.h"

#include <array>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

using namespace QnXmlLib16;
using Model::CLog;
using Model::Failure;

TEST(ReferenceCount, DestroysAtZeroWhicheverThreadLetsGo)
{
    const int nAlive = Model::CSheet::s_nAlive;
    {
        // Never referenced: the count goes below 0 and nothing is destroyed.
        CLog unheld;
        EXPECT_EQ(unheld.Release(), -1);
        EXPECT_EQ(Model::CSheet::s_nAlive, nAlive + 1);
    }
    CLog* const pObject = new CLog;
    EXPECT_EQ(pObject->AddRef(), 1);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([pObject] {
            for (int j = 0; j < 10000; ++j)
                const CSmartPtr<CLog> pCopy(pObject);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(Model::CSheet::s_nAlive, nAlive + 1);
    EXPECT_EQ(pObject->Release(), 0);
    EXPECT_EQ(Model::CSheet::s_nAlive, nAlive);
}

TEST(ObjectBase, BridgesAndSettersRefuseNoObject)
{
    const CSerializationContext context;
    const std::string strWords = "CQnInvalidParamException: The object may not be NULL";
    EXPECT_EQ(
        Failure([&] { CXmlObjectBase::ToXml_Int(nullptr, nullptr, true, "", context, false); }),
        strWords);
    EXPECT_EQ(Failure([&] { CXmlObjectBase::AttributesToXml_Int(nullptr, nullptr, context); }),
              strWords);
    EXPECT_EQ(Failure([&] { CXmlObjectBase::FromXml_Int(nullptr, nullptr, nullptr, context); }),
              strWords);
    EXPECT_EQ(Failure([] { CXmlObjectBase::Throw_IfPropertyIsNull(nullptr, "P"); }),
              "CQnInvalidParamException: The Property [P] is mandatory, it may node be NULL");
    EXPECT_EQ(Failure([&] { CXmlObjectBase::DoesElementNameMatch(context, nullptr, "a", ""); }),
              "CQnInvalidParamException: The element may not be NULL");
    // A name is that of the base, which may be another object.
    class CWrapper : public CLog
    {
    public:
        using CLog::GetBase;
        CXmlObjectBase* GetBase() override { return m_pWrapped.GetPtr(); }
        CSmartPtr<CLog> m_pWrapped{new CLog};
    };
    const CSmartPtr<CWrapper> pWrapper(new CWrapper);
    pWrapper->SetElementName(nullptr);
    CXmlObjectBase::Throw_IfElementNameDiffers(pWrapper.GetPtr(), "log");
    CXmlObjectBase::Throw_IfElementNameDiffers(nullptr, "log");
    EXPECT_EQ(Failure([&] { CXmlObjectBase::Throw_IfElementNameDiffers(pWrapper.GetPtr(), "w"); }),
              "CQnInvalidParamException: This property requires an element with the name w the "
              "element being set has the element name log");
}

TEST(Choice, IsSelectedByWhatAMemberIsSetTo)
{
    const CSmartPtr<CLog> pObject(new CLog);
    const auto set = [&](char cKind, const char* pszName, long nValue, std::string& strSelected) {
        if (cKind == 'o')
            CXmlObjectBase::Choice_SelectElement(pszName, nValue ? pObject.GetPtr() : nullptr,
                                                 strSelected);
        else if (cKind == 'c')
            CXmlObjectBase::Choice_CollectionChanged(pszName, nValue, strSelected);
        else
            CXmlObjectBase::Choice_SetElementValid(nValue != 0, pszName, strSelected);
    };
    struct Row
    {
        char kind; // o: an object, or null for 0; c: a collection with so many items; v: validity
        const char* name;
        long value;
        const char* before; // the member that is selected
        const char* after;  // null: it fails
    };
    const Row rows[] = {
        {'o', "a", 1, "", "a"},  {'o', "a", 0, "", "a"},      {'o', "a", 0, "a", ""},
        {'o', "b", 0, "a", "a"}, {'o', "b", 1, "a", nullptr}, {'o', nullptr, 0, "a", "a"},
        {'c', "a", 1, "", "a"},  {'c', "a", 0, "", ""},       {'c', "a", -1, "", ""},
        {'c', "a", 0, "a", ""},  {'c', "b", 0, "a", "a"},     {'c', "b", -1, "a", nullptr},
        {'v', "a", 0, "b", ""},  {'v', "a", 1, "a", "a"},     {'v', "a", 1, "b", nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.kind << row.value << row.before);
        std::string strSelected = row.before;
        const std::string strName =
            row.kind == 'v' ? row.before : "[" + std::string(row.before) + "]";
        const std::string strIsSet =
            "CQnInvalidStateException: The Property " + strName +
            " is already set. Only one element within this class bay be set at a time";
        EXPECT_EQ(Failure([&] { set(row.kind, row.name, row.value, strSelected); }),
                  row.after ? "" : strIsSet);
        EXPECT_EQ(strSelected, row.after ? row.after : row.before);
    }
}

TEST(Choice, ReadsOneCollectionAndChecksItsBounds)
{
    const CSerializationContext context;
    CXmlDocument document;
    document.LoadXml("<r><s>1</s><s>2</s><t/></r>");
    CXmlElement* const pRoot = document.GetDocumentElement();
    CXmlElement* pCursor = pRoot->GetFirstElement();
    long nCount = 0;
    const auto read = [&](CXmlCollectionBase* pItems) {
        CXmlObjectBase::Choice_Read_Collection(pItems, pRoot, pCursor, nCount, context);
    };
    const CSmartPtr<CstringCol> pStrings(Model::MakeTexts("s"));
    read(pStrings.GetPtr());
    EXPECT_EQ(pStrings->GetCount(), 2);
    EXPECT_EQ(nCount, 1);
    read(nullptr); // a member was read before: it is not asked at all
    EXPECT_EQ(pCursor->GetLocalName(), "t");

    // Nothing was read: no count, no check of the bounds.
    nCount = 0;
    const CSmartPtr<CstringCol> pBounded(Model::MakeTexts("s", 1, 1));
    read(pBounded.GetPtr());
    EXPECT_EQ(nCount, 0);
    pCursor = pRoot->GetFirstElement();
    EXPECT_EQ(Failure([&] { read(pBounded.GetPtr()); }),
              "CQnValidationException: The Maximum number of [s] elements allowed in this "
              "collection is 1");
    EXPECT_EQ(pCursor->GetLocalName(), "t");
    EXPECT_EQ(Failure([&] { read(nullptr); }),
              "CQnInvalidParamException: The collection may not be NULL");
}

TEST(NamespaceRestriction, LiteralTokensGoByTheWholeList)
{
    // A namespace, the list and the target namespace. Keywords, literal tokens, and empty tokens,
    // which are literal ones.
    const std::array<const char*, 3> admitted[] = {
        {"a", "##any", ""},
        {"", "##other", "t"},
        {nullptr, "##local", nullptr},
        {"t", "##targetNamespace", "t"},
        {"a", "a", ""},
        {"a b", "a b", ""},
        {"", "a", "t"},
        {"t", "a ##targetNamespace", "t"},
        {"", "", ""},
        {"a", "##targetNamespace  ##any", "t"},
    };
    for (const auto& [pszNamespace, pszList, pszTarget] : admitted) {
        EXPECT_TRUE(CXmlObjectBase::IsNamespaceValid(pszNamespace, pszList, pszTarget)) << pszList;
        CXmlObjectBase::TestNamespace(pszNamespace, pszList, pszTarget);
    }
    const std::array<std::string, 3> refused[] = {
        {"t", "##other", "t"}, {"a", "##local ##targetNamespace", "t"},
        {"b", "a", ""},        {"a", "a b", ""},
        {"a", "##ANY", ""},
    };
    for (const auto& [strNamespace, strList, strTarget] : refused) {
        const auto test = [&, ns = strNamespace, list = strList, target = strTarget] {
            CXmlObjectBase::TestNamespace(ns.c_str(), list.c_str(), target.c_str());
        };
        EXPECT_EQ(Failure(test), "CQnInvalidNamespaceException: Invalid namespace [" +
                                     strNamespace + "]. The namespace must be one of [" + strList +
                                     "] where the target namespace is [" + strTarget + "].");
    }
}

TEST(ClassFactory, ReadsTheTypeThatTheDocumentNames)
{
    // Attributes, the type, and its namespace.
    const std::array<const char*, 3> rows[] = {
        {"xsi:type='t:Round'", "Round", "urn:types"},
        {"xsi:type='Round'", "Round", "urn:e"}, // not the default in scope
        {"xsi:type='t:a:b'", "a:b", "urn:types"},
        {"type='t:Round'", "", "urn:e"},
    };
    const std::string strStart = "<e:shape xmlns:e='urn:e' xmlns='urn:d' xmlns:t='urn:types' "
                                 "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' ";
    for (const auto& [pszAttributes, pszType, pszNamespace] : rows) {
        CXmlDocument document;
        document.LoadXml((strStart + pszAttributes + "/>").c_str());
        CXmlElement* const pElement = document.GetDocumentElement();
        EXPECT_EQ(CClassfactoryBase::GetElementType(pElement), pszType);
        EXPECT_EQ(CClassfactoryBase::GetElementTypeNamespaceUri(pElement), pszNamespace);
    }
    CXmlElement loose(nullptr, nullptr);
    loose.AddAttribute("type", "t:Round", "http://www.w3.org/2001/XMLSchema-instance");
    EXPECT_EQ(CClassfactoryBase::GetElementTypeNamespaceUri(&loose), "");
}
