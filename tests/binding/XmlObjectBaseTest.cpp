#include "QnXmlLib16/binding/XmlObjectBase.h"

#include "tests/model/Failure.h"
#include "tests/model/Ship.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/collections/AttributeCol.h"
#include "QnXmlLib16/collections/Element.h"
#include "QnXmlLib16/collections/stringCol.h"
#include "QnXmlLib16/xml/XmlDocument.h"
#include "QnXmlLib16/xml/XmlElement.h"

#include <functional>
#include <gtest/gtest.h>
#include <thread>
#include <utility>
#include <vector>

using namespace QnXmlLib16;
using Model::CLog;
using Model::ExpectFailure;

namespace {

class CMortal : public CLog
{
public:
    explicit CMortal(int& nDeaths) : m_nDeaths(nDeaths) {}
    ~CMortal() override { ++m_nDeaths; }

private:
    int& m_nDeaths;
};

// Hears events, and remembers the last one.
class CListener : public CLog
{
public:
    void OnEvent(CXmlObjectBase* pSender, MsgType message, void* pData) override
    {
        ++m_nEvents;
        m_pSender = pSender;
        m_message = message;
        m_pData = pData;
        m_iIndex = pData && message >= MsgType_Remove ? *static_cast<int*>(pData) : -1;
    }

    int m_nEvents = 0;
    CXmlObjectBase* m_pSender = nullptr;
    MsgType m_message{};
    void* m_pData = nullptr;
    int m_iIndex = -1;
};

CSmartPtr<CstringCol> MakeStrings(int iMinOccurs, int iMaxOccurs)
{
    return CSmartPtr<CstringCol>(new CstringCol("s", "", iMinOccurs, iMaxOccurs, nullptr, -1, -1,
                                                nullptr, nullptr, nullptr, nullptr, -1, -1, -1,
                                                CWhitespaceUtils::WhitespaceRule_None, nullptr));
}

} // namespace

TEST(ReferenceCount, StartsAtZeroAndDestroysAtZero)
{
    int nDeaths = 0;
    CMortal* const pObject = new CMortal(nDeaths);
    EXPECT_EQ(pObject->AddRef(), 1);
    EXPECT_EQ(pObject->AddRef(), 2);
    EXPECT_EQ(pObject->Release(), 1);
    EXPECT_EQ(nDeaths, 0);
    EXPECT_EQ(pObject->Release(), 0);
    EXPECT_EQ(nDeaths, 1);
    {
        // Never referenced: the count goes below 0 and nothing is destroyed.
        CMortal unheld(nDeaths);
        EXPECT_EQ(unheld.Release(), -1);
        EXPECT_EQ(nDeaths, 1);
    }
}

TEST(ReferenceCount, IsSharedByThreads)
{
    int nDeaths = 0;
    CSmartPtr<CMortal> pObject(new CMortal(nDeaths));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([pObject] {
            for (int j = 0; j < 10000; ++j)
                CSmartPtr<CMortal>{pObject};
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    threads.clear();
    EXPECT_EQ(pObject->AddRef(), 2);
    pObject->Release();
    EXPECT_EQ(nDeaths, 0);
    pObject.Reset();
    EXPECT_EQ(nDeaths, 1);
}

TEST(ObjectBase, HasANameAndABase)
{
    const CSmartPtr<CLog> pLog(new CLog);
    EXPECT_EQ(pLog->GetElementName(), "log");
    pLog->SetElementName(nullptr);
    EXPECT_EQ(pLog->GetElementName(), "");
    const CXmlObjectBase& base = *pLog;
    EXPECT_EQ(base.GetBase(), pLog.GetPtr());
}

TEST(ObjectBase, BridgesRefuseNoObject)
{
    const CSerializationContext context;
    const std::string strWords = "The object may not be NULL";
    ExpectFailure<CQnInvalidParamException>(
        [&] { CXmlObjectBase::ToXml_Int(nullptr, nullptr, true, "", context, false); }, strWords);
    ExpectFailure<CQnInvalidParamException>(
        [&] { CXmlObjectBase::AttributesToXml_Int(nullptr, nullptr, context); }, strWords);
    ExpectFailure<CQnInvalidParamException>(
        [&] { CXmlObjectBase::FromXml_Int(nullptr, nullptr, nullptr, context); }, strWords);
}

TEST(Choice, AnObjectMemberIsSelectedBySettingIt)
{
    const std::string strIsSet =
        "The Property [a] is already set. Only one element within this class bay be set at a time";
    struct Row
    {
        const char* name;
        bool null;
        const char* before;
        const char* after; // null: it fails
    };
    const Row rows[] = {
        {"a", false, "", "a"},     {"a", true, "", "a"},  {"a", false, "a", "a"},
        {"a", true, "a", ""},      {"b", true, "a", "a"}, {"b", false, "a", nullptr},
        {nullptr, true, "a", "a"}, {"", false, "", ""},
    };
    const CSmartPtr<CLog> pValue(new CLog);
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message()
                     << (row.name ? row.name : "null") << row.null << row.before);
        std::string strSelected = row.before;
        const auto select = [&] {
            CXmlObjectBase::Choice_SelectElement(row.name, row.null ? nullptr : pValue.GetPtr(),
                                                 strSelected);
        };
        if (row.after)
            select();
        else
            ExpectFailure<CQnInvalidStateException>(select, strIsSet);
        EXPECT_EQ(strSelected, row.after ? row.after : row.before);
    }
}

TEST(Choice, ACollectionIsSelectedByItsFirstItem)
{
    struct Row
    {
        const char* name;
        long count;
        const char* before;
        const char* after; // null: it fails
    };
    const Row rows[] = {
        {"a", 1, "", "a"}, {"a", 0, "", ""},   {"a", -1, "", ""},      {"a", 2, "a", "a"},
        {"a", 0, "a", ""}, {"b", 0, "a", "a"}, {"b", 1, "a", nullptr}, {"b", -1, "a", nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.name << row.count << row.before);
        std::string strSelected = row.before;
        const auto change = [&] {
            CXmlObjectBase::Choice_CollectionChanged(row.name, row.count, strSelected);
        };
        if (row.after)
            change();
        else
            ExpectFailure<CQnInvalidStateException>(
                change, "The Property [a] is already set. Only one element within this class bay "
                        "be set at a time");
        EXPECT_EQ(strSelected, row.after ? row.after : row.before);
    }
}

TEST(Choice, AValueMemberIsMadeValidOnlyWhereItIsSelectedAlready)
{
    struct Row
    {
        bool valid;
        const char* before;
        const char* after; // null: it fails
    };
    const Row rows[] = {
        {false, "", ""},  {false, "a", ""},     {false, "b", ""},
        {true, "a", "a"}, {true, "b", nullptr}, {true, "", nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.valid << row.before);
        std::string strSelected = row.before;
        const auto set = [&] {
            CXmlObjectBase::Choice_SetElementValid(row.valid, "a", strSelected);
        };
        if (row.after)
            set();
        else
            ExpectFailure<CQnInvalidStateException>(
                set,
                std::string("The Property ") + row.before +
                    " is already set. Only one element within this class bay be set at a time");
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

    const CSmartPtr<CstringCol> pStrings = MakeStrings(0, -1);
    CXmlObjectBase::Choice_Read_Collection(pStrings.GetPtr(), pRoot, pCursor, nCount, context);
    EXPECT_EQ(pStrings->GetCount(), 2);
    EXPECT_EQ(pCursor->GetLocalName(), "t");
    EXPECT_EQ(nCount, 1);

    // A member was read before: the collection is not asked at all.
    pCursor = pRoot->GetFirstElement();
    CXmlObjectBase::Choice_Read_Collection(nullptr, pRoot, pCursor, nCount, context);
    EXPECT_EQ(pCursor, pRoot->GetFirstElement());

    // Nothing was read: no count, no check of the bounds.
    nCount = 0;
    pCursor = nullptr;
    const CSmartPtr<CstringCol> pBounded = MakeStrings(1, 1);
    CXmlObjectBase::Choice_Read_Collection(pBounded.GetPtr(), pRoot, pCursor, nCount, context);
    EXPECT_EQ(nCount, 0);

    pCursor = pRoot->GetFirstElement();
    ExpectFailure<CQnValidationException>(
        [&] {
            CXmlObjectBase::Choice_Read_Collection(pBounded.GetPtr(), pRoot, pCursor, nCount,
                                                   context);
        },
        "The Maximum number of [s] elements allowed in this collection is 1");
    EXPECT_EQ(pCursor->GetLocalName(), "t");
    EXPECT_EQ(nCount, 0);

    ExpectFailure<CQnInvalidParamException>(
        [&] { CXmlObjectBase::Choice_Read_Collection(nullptr, pRoot, pCursor, nCount, context); },
        "The collection may not be NULL");
}

TEST(SetterChecks, RefuseNullAndForeignElementNames)
{
    const CSmartPtr<CLog> pLog(new CLog);
    CXmlObjectBase::Throw_IfPropertyIsNull(pLog.GetPtr(), "P");
    ExpectFailure<CQnInvalidParamException>(
        [] { CXmlObjectBase::Throw_IfPropertyIsNull(nullptr, "P"); },
        "The Property [P] is mandatory, it may node be NULL");

    CXmlObjectBase::Throw_IfElementNameDiffers(nullptr, "log");
    CXmlObjectBase::Throw_IfElementNameDiffers(pLog.GetPtr(), "log");
    ExpectFailure<CQnInvalidParamException>(
        [&] { CXmlObjectBase::Throw_IfElementNameDiffers(pLog.GetPtr(), "entry"); },
        "This property requires an element with the name entry the element being set has the "
        "element name log");
}

TEST(SetterChecks, LookAtTheNameOfTheBase)
{
    // Stands for another object, as a sink that wraps one does.
    class CWrapper : public CLog
    {
    public:
        using CLog::GetBase;
        CXmlObjectBase* GetBase() override { return m_pWrapped.GetPtr(); }
        CSmartPtr<CLog> m_pWrapped{new CLog};
    };
    const CSmartPtr<CWrapper> pWrapper(new CWrapper);
    pWrapper->SetElementName("wrapper");
    CXmlObjectBase::Throw_IfElementNameDiffers(pWrapper.GetPtr(), "log");
}

TEST(Events, ReachASinkThatOverridesOnEvent)
{
    const CSmartPtr<CstringCol> pStrings = MakeStrings(0, -1);
    const CSmartPtr<CListener> pListener(new CListener);
    IEventSink* const pSink = pListener.GetPtr();
    int iItem = 0;

    struct Row
    {
        std::function<void()> fire;
        IEventSink::MsgType message;
        void* data; // of the messages that carry an item
        int index;  // of the others
    };
    const Row rows[] = {
        {[&] { CXmlObjectBase::FireOnCollectionChangeEvent(pSink, pStrings.GetPtr()); },
         IEventSink::MsgType_CollectionChanged, nullptr, -1},
        {[&] { CXmlObjectBase::FireOnCollectionAddEvent(pSink, pStrings.GetPtr(), &iItem); },
         IEventSink::MsgType_Add, &iItem, -1},
        {[&] {
             CXmlObjectBase::FireOnCollectionAddCompleteEvent(pSink, pStrings.GetPtr(), &iItem);
         },
         IEventSink::MsgType_AddComplete, &iItem, -1},
        {[&] { CXmlObjectBase::FireOnCollectionRemoveEvent(pSink, pStrings.GetPtr(), 3); },
         IEventSink::MsgType_Remove, nullptr, 3},
        {[&] { CXmlObjectBase::FireOnCollectionRemoveEvent(pSink, pStrings.GetPtr(), -1); },
         IEventSink::MsgType_Remove, nullptr, -1},
        {[&] { CXmlObjectBase::FireOnCollectionRemoveCompleteEvent(pSink, pStrings.GetPtr(), 0); },
         IEventSink::MsgType_RemoveComplete, nullptr, 0},
        {[&] { CXmlObjectBase::FireOnCollectionRemoveCompleteEvent(pSink, pStrings.GetPtr(), -1); },
         IEventSink::MsgType_RemoveComplete, nullptr, -1},
    };
    int nEvents = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(nEvents);
        row.fire();
        EXPECT_EQ(pListener->m_nEvents, ++nEvents);
        EXPECT_EQ(pListener->m_pSender, pStrings.GetPtr());
        EXPECT_EQ(pListener->m_message, row.message);
        EXPECT_EQ(pListener->m_iIndex, row.index);
        if (row.data)
            EXPECT_EQ(pListener->m_pData, row.data);
        else
            EXPECT_EQ(pListener->m_pData == nullptr, row.index == -1);
    }

    const CSmartPtr<CLog> pDeaf(new CLog);
    CXmlObjectBase::FireOnCollectionChangeEvent(pDeaf.GetPtr(), pStrings.GetPtr());
    ExpectFailure<CQnInvalidParamException>(
        [&] { CXmlObjectBase::FireOnCollectionChangeEvent(pSink, nullptr); },
        "The collection may not be NULL");
}

TEST(NamespaceTests, TakeTextsOnTheObjectBaseToo)
{
    EXPECT_TRUE(CXmlObjectBase::IsNamespaceValid("urn:a", "##other", "urn:b"));
    EXPECT_TRUE(CXmlObjectBase::IsNamespaceValid(nullptr, "##local", nullptr));
    CXmlObjectBase::TestNamespace("urn:a", "urn:a", "");
    ExpectFailure<CQnInvalidNamespaceException>(
        [] { CXmlObjectBase::TestNamespace("urn:a", "##other", "urn:a"); },
        "Invalid namespace [urn:a]. The namespace must be one of [##other] where the target "
        "namespace is [urn:a].");

    CXmlDocument document;
    document.LoadXml("<a xmlns='urn:a'/>");
    const CSerializationContext context;
    EXPECT_TRUE(
        CXmlObjectBase::DoesElementNameMatch(context, document.GetDocumentElement(), "a", "urn:a"));
    EXPECT_FALSE(
        CXmlObjectBase::DoesElementNameMatch(context, document.GetDocumentElement(), "a", nullptr));
}
