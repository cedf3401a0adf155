#include "Recorders.h"

#include <gtest/gtest.h>

#include <functional>

using namespace QnXmlLib16;

namespace {

CAttribute* Thing(const std::string& strName = "")
{
    return new CAttribute(strName.c_str(), "", "");
}

bool IsHeldOnce(CAttribute& thing)
{
    const bool bOnce = thing.AddRef() == 2;
    thing.Release();
    return bOnce;
}

class CThingCol : public CAttributeCol
{
public:
    CThingCol() : CAttributeCol("", "##any", "") {}

    using CXmlCollection::AddAfterItem;
    using CXmlCollection::AddBeforeItem;
    using CXmlCollection::AddItemAt;
    using CXmlCollection::AppendItem;
    using CXmlCollection::GetNodeAtIndex;
    using CXmlCollection::GetNodeForItem;
    using CXmlCollection::PrependItem;
    using CXmlCollection::RemoveNode;

    // The names forward, and a "!" if the list read backward is not its mirror.
    std::string Names() const
    {
        const auto NameOf = [](const CNode& node) {
            return node.GetItem() ? static_cast<CAttribute*>(node.GetItem())->GetName() : "-";
        };
        std::string strForward;
        std::string strBackward;
        const CNode* pTail = nullptr;
        for (const CNode* p = begin(); p; pTail = p, p = p->GetNext())
            strForward += NameOf(*p);
        for (const CNode* p = pTail; p; p = p->GetPrevious())
            strBackward = NameOf(*p) + strBackward;
        return strForward + (strForward == strBackward ? "" : "!");
    }
};

TEST(ObjectCollection, ListenersHearEachStepInOrder)
{
    CThingCol col;
    CRecordingSink twice;
    CRecordingSink once;
    for (CRecordingSink* pSink : {&twice, &once, &twice})
        col.AddEventListener(pSink);
    const CSmartPtr<CAttribute> pThing(Thing("a"));
    CXmlObjectBase* const pItem = pThing.GetPtr();
    col.AppendItem(pItem);
    EXPECT_EQ(once.m_vecData, (std::vector<void*>{pItem, pItem, nullptr}));
    EXPECT_EQ(once.TakeHeard(), "1(0) 2(1) 0(1) ");
    EXPECT_EQ(twice.TakeHeard(), "1(0) 1(0) 2(1) 2(1) 0(1) 0(1) ");
    col.RemoveEventListener(&twice);

    const std::function<void()> adds[] = {
        [&] { col.PrependItem(pItem); }, [&] { col.AddItemAt(0, pItem); },
        [&] { col.AddItemAt(1, pItem); }, [&] { col.AddAfterItem(pItem, pItem); },
        [&] { col.AddBeforeItem(pItem, pItem); }};
    for (const auto& add : adds) {
        col.Clear();
        col.AppendItem(pItem);
        once.TakeHeard();
        add();
        EXPECT_EQ(once.TakeHeard(), "1(1) 2(2) 0(2) ");
    }
    col.Remove(1);
    EXPECT_EQ(once.TakeHeard(), "3:null(2) 4:null(1) 0(1) ");
    col.Clear();
    EXPECT_EQ(once.TakeHeard(), "3:null(1) 4:null(0) 0(0) ");
    col.Clear();
    EXPECT_EQ(once.TakeHeard() + twice.TakeHeard(), "");
    EXPECT_EQ(FailureOf([&] { col.AddEventListener(nullptr); }),
              "Param: The event listener may not be NULL");
}

TEST(ObjectCollection, NewItemsGoBesideTheItemNamed)
{
    CThingCol col;
    CAttribute* const pB = Thing("b");
    col.AppendItem(pB);
    col.PrependItem(nullptr); // stored, and passed over by every walk
    col.AddAfterItem(pB, Thing("c"));
    col.AddBeforeItem(pB, Thing("A"));
    EXPECT_EQ(col.Names(), "-Abc");
    col.AddAfterItem(nullptr, Thing("0"));
    col.AddBeforeItem(nullptr, Thing("z"));
    EXPECT_EQ(col.Names(), "0-Abcz");
    col.RemoveNode(col.GetNodeForItem(pB));
    EXPECT_EQ(col.Names(), "0-Acz");
    EXPECT_EQ(RecordedBy(col), "@0 {}  23\n@A {}  23\n@c {}  23\n@z {}  23\n");
}

TEST(ObjectCollection, AnAddBesideAStrangerNeverCompletes)
{
    CThingCol col;
    col.AppendItem(Thing("a"));
    CRecordingSink sink;
    col.AddEventListener(&sink);
    const CSmartPtr<CAttribute> pStranger(Thing("a"));
    const CSmartPtr<CAttribute> pNew(Thing());
    const std::function<void()> calls[] = {
        [&] { col.AddAfterItem(pStranger.GetPtr(), pNew.GetPtr()); },
        [&] { col.AddBeforeItem(pStranger.GetPtr(), pNew.GetPtr()); },
        [&] { col.GetNodeForItem(nullptr); }, [&] { col.RemoveNode(nullptr); }};
    for (const auto& call : calls)
        EXPECT_EQ(FailureOf(call), "Param: The object was not found in the collection");
    EXPECT_EQ(sink.TakeHeard(), "1(1) 1(1) ");
    EXPECT_EQ(col.Names(), "a");
    EXPECT_TRUE(IsHeldOnce(*pNew)) << "the failed node gave its reference back";
}

TEST(ObjectCollection, AListenerMayRefuseAnItemAndCountIt)
{
    class CRefusingSink : public CRecordingSink
    {
    public:
        void OnEvent(CXmlObjectBase* pSender, MsgType, void* pData) override
        {
            CSmartPtr<CXmlObjectBase>{static_cast<CXmlObjectBase*>(pData)}.Reset();
            if (static_cast<CXmlCollection*>(pSender)->GetCount() == 1)
                throw CQnException("Refused.");
        }
    } sink;
    CThingCol col;
    col.AppendItem(Thing("a"));
    col.AddEventListener(&sink);
    EXPECT_EQ(FailureOf([&] { col.AppendItem(Thing()); }), "Qn: Refused.");
    EXPECT_EQ(FailureOf([&] { col.AddItemAt(0, Thing()); }), "Qn: Refused.");
    EXPECT_EQ(col.Names(), "a");
}

TEST(ObjectCollection, PlacesOutsideTheListAreRefused)
{
    CThingCol col;
    CRecordingSink sink;
    EXPECT_EQ(FailureOf([&] { col.Remove(0); }), "Param: Index 0 is out of range, use 0 - 0");
    col.AppendItem(Thing());
    col.AddEventListener(&sink);
    EXPECT_EQ(FailureOf([&] { col.Remove(-1); }), "Param: Index -1 is out of range, use 0 - 1");
    EXPECT_EQ(FailureOf([&] { col.Item(1); }), "Param: Index 1 is out of range, use 0 - 1");
    for (const int iPlace : {-1, 2})
        EXPECT_EQ(FailureOf([&] { col.AddItemAt(iPlace, nullptr); }), "Param: Index out of range");
    EXPECT_EQ(sink.TakeHeard(), "");
    EXPECT_EQ(col.GetCount(), 1);
}

TEST(ObjectCollection, ADyingCollectionReleasesWithoutEvents)
{
    CRecordingSink sink;
    const CSmartPtr<CAttribute> pKept(Thing());
    {
        CThingCol col;
        for (CAttribute* pThing : {pKept.GetPtr(), Thing(), pKept.GetPtr()})
            col.AppendItem(pThing);
        col.AddEventListener(&sink);
    }
    EXPECT_EQ(sink.TakeHeard(), "");
    EXPECT_TRUE(IsHeldOnce(*pKept));
}

TEST(ObjectCollection, EveryPlaceIsReachedFromEveryOther)
{
    // The look-up goes on from the last place, so all orders and all kinds of change in between
    // have to lead to the place that is counted from the head.
    CThingCol col;
    std::string strModel;
    for (unsigned n = 0; n < 300; ++n) {
        const std::size_t nPlace = n * 7 % (strModel.size() + 1);
        const char cName = static_cast<char>('a' + n % 26);
        if (n % 5 == 4 && nPlace < strModel.size()) {
            col.Remove(static_cast<int>(nPlace));
            strModel.erase(nPlace, 1);
        }
        else {
            col.AddItemAt(static_cast<int>(nPlace), Thing(std::string(1, cName)));
            strModel.insert(nPlace, 1, cName);
        }
        for (std::size_t i = 0; i < strModel.size(); ++i) {
            const std::size_t nAsked = (i * (n % 13 + 1) + n) % strModel.size();
            ASSERT_EQ(col.Item(static_cast<int>(nAsked))->GetName()[0], strModel[nAsked]) << n;
        }
        ASSERT_EQ(col.Names(), strModel);
    }
}

TEST(ObjectCollection, AWalkByIndexIsLinear)
{
    const int nItems = 200000; // from the head each time, this is a matter of minutes
    CThingCol col;
    const CSmartPtr<CAttribute> pThing(Thing());
    for (int n = 0; n < nItems; ++n)
        col.AppendItem(pThing.GetPtr());
    for (int n = 0; n < nItems; ++n)
        ASSERT_EQ(col.GetNodeAtIndex(n)->GetItem(), pThing.GetPtr());
    for (int n = nItems; n-- > 0;)
        ASSERT_EQ(col.GetNodeAtIndex(n)->GetItem(), pThing.GetPtr());
}

} // namespace
