#include "QnXmlLib16/collections/XmlCollection.h"

#include "QnXmlLib16/binding/SerializationContext.h"
#include "Recorders.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;

namespace {

class CThing : public CXmlObjectBase
{
public:
    explicit CThing(std::string strName = "") : m_strName(std::move(strName)) { ++s_nLiving; }
    ~CThing() override { --s_nLiving; }

    CXmlObjectBase* GetBase() override { return this; }
    std::string GetTargetNamespace() const override { return ""; }
    std::string GetNamespace() const override { return ""; }

    const std::string m_strName;
    static int s_nLiving;

protected:
    void AttributesToXml_Int(CXmlWriter* pWriter, const CSerializationContext&) const override
    {
        pWriter->WriteAttributeString(m_strName, "", "", it_string);
    }
    void ToXml_Int(CXmlWriter*, bool, const char*, const CSerializationContext&,
                   bool) const override
    {}
    CXmlElement* FromXml_Int(CXmlElement*, CXmlElement* pCursor, const CSerializationContext&,
                             bool) override
    {
        return pCursor;
    }
};

int CThing::s_nLiving = 0;

class CThingCol : public CXmlCollection
{
public:
    explicit CThingCol(int iMinOccurs = 0, int iMaxOccurs = -1)
        : CXmlCollection("thing", "urn:thing", iMinOccurs, iMaxOccurs)
    {}

    using CXmlCollection::AddAfterItem;
    using CXmlCollection::AddBeforeItem;
    using CXmlCollection::AddItemAt;
    using CXmlCollection::AppendItem;
    using CXmlCollection::GetNodeAtIndex;
    using CXmlCollection::GetNodeForItem;
    using CXmlCollection::PrependItem;
    using CXmlCollection::RemoveNode;

    CXmlObjectBase* ItemAt(int iIndex) { return GetNodeAtIndex(iIndex)->GetItem(); }

    // The names forward, and a "!" if the list read backward is not its mirror.
    std::string Names()
    {
        std::string strForward;
        std::string strBackward;
        const CNode* pTail = nullptr;
        for (const CNode* p = GetHeadNode(); p; pTail = p, p = p->GetNext())
            strForward += NameOf(*p);
        for (const CNode* p = pTail; p; p = p->GetPrevious())
            strBackward = NameOf(*p) + strBackward;
        return strForward + (strForward == strBackward ? "" : "!");
    }

protected:
    void ToXml_Int(CXmlWriter*, bool, const char*, const CSerializationContext&,
                   bool) const override
    {}
    CXmlElement* FromXml_Int(CXmlElement*, CXmlElement* pCursor, const CSerializationContext&,
                             bool) override
    {
        return pCursor;
    }

private:
    static std::string NameOf(const CNode& node)
    {
        return node.GetItem() ? static_cast<CThing*>(node.GetItem())->m_strName : "-";
    }
};

TEST(CollectionBounds, AreComparedWithTheCount)
{
    struct Row
    {
        int iMinOccurs, iMaxOccurs, nItems;
        const char* pszFailure;
    };
    const char* const pszTooMany =
        "Validation: The Maximum number of [thing] elements allowed in this collection is ";
    const char* const pszTooFew =
        "Validation: The Minimum number of [thing] elements allowed in this collection is ";
    const Row rows[] = {
        {0, -1, 0, nullptr},    {0, -1, 3, nullptr},   {1, 2, 0, pszTooFew}, {1, 2, 1, nullptr},
        {1, 2, 2, nullptr},     {1, 2, 3, pszTooMany}, {0, 0, 0, nullptr},   {0, 0, 1, pszTooMany},
        {0, -2, 0, pszTooMany}, {4, 2, 3, pszTooMany}, // the maximum is tested first
    };
    CSerializationContext strict;
    CSerializationContext lax;
    lax.SetIgnoreInvalidCollectionCounts(true);
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message()
                     << row.iMinOccurs << " " << row.iMaxOccurs << " " << row.nItems);
        CThingCol col(row.iMinOccurs, row.iMaxOccurs);
        for (int n = 0; n < row.nItems; ++n)
            col.AppendItem(new CThing);
        const std::string strFailure =
            row.pszFailure
                ? row.pszFailure +
                      std::to_string(row.pszFailure == pszTooMany ? row.iMaxOccurs : row.iMinOccurs)
                : "none";
        EXPECT_EQ(FailureOf([&] { col.ValidateCount(strict); }), strFailure);
        EXPECT_EQ(col.IsValidCount(strict), !row.pszFailure);
        EXPECT_EQ(FailureOf([&] { col.ValidateCount(lax); }), "none");
        EXPECT_TRUE(col.IsValidCount(lax));
    }
}

TEST(CollectionBase, HasANamespaceButNoElementOfItsOwn)
{
    CThingCol col;
    EXPECT_EQ(col.GetElementName(), "thing");
    EXPECT_EQ(col.GetNamespace(), "urn:thing");
    EXPECT_EQ(FailureOf([&] { col.GetTargetNamespace(); }),
              "Qn: CXmlCollectionBase::GetTargetNamespace Should not be used from within a "
              "Collection (program logic error)");
}

TEST(CollectionListeners, HearAsOftenAsTheyAreRegistered)
{
    CRecordingSink once;
    CRecordingSink twice;
    CThingCol col;
    col.AddEventListener(&twice);
    col.AddEventListener(&once);
    col.AddEventListener(&twice);
    col.FireOnCollectionChange();
    EXPECT_EQ(once.TakeHeard(), "0 ");
    EXPECT_EQ(twice.TakeHeard(), "0 0 ");
    EXPECT_EQ(once.m_pSender, &col);

    col.RemoveEventListener(&twice);
    col.RemoveEventListener(&twice);
    col.FireOnCollectionRemove(7);
    EXPECT_EQ(once.TakeHeard(), "3:7 ");
    EXPECT_EQ(twice.TakeHeard(), "");
    EXPECT_EQ(FailureOf([&] { col.AddEventListener(nullptr); }),
              "Param: The event listener may not be NULL");
}

TEST(ObjectCollection, ListenersHearEachStepInOrder)
{
    CThingCol col;
    CRecordingSink sink([&] { return col.GetCount(); });
    col.AddEventListener(&sink);
    CSmartPtr<CThing> pThing(new CThing("a"));
    CXmlObjectBase* const pItem = pThing.GetPtr();

    col.AppendItem(pItem);
    EXPECT_EQ(sink.m_vecData, (std::vector<void*>{pItem, pItem, nullptr}));
    col.PrependItem(pItem);
    col.AddItemAt(1, pItem);
    col.AddItemAt(3, pItem);
    col.AddAfterItem(pItem, pItem);
    col.AddBeforeItem(pItem, pItem);
    EXPECT_EQ(sink.TakeHeard(), "1(0) 2(1) 0(1) 1(1) 2(2) 0(2) 1(2) 2(3) 0(3) "
                                "1(3) 2(4) 0(4) 1(4) 2(5) 0(5) 1(5) 2(6) 0(6) ");

    col.Remove(3);
    EXPECT_EQ(sink.TakeHeard(), "3:null(6) 4:null(5) 0(5) ");
    col.Clear();
    EXPECT_EQ(sink.TakeHeard(), "3:null(5) 4:null(4) 0(4) 3:null(4) 4:null(3) 0(3) "
                                "3:null(3) 4:null(2) 0(2) 3:null(2) 4:null(1) 0(1) "
                                "3:null(1) 4:null(0) 0(0) ");
    col.Clear();
    EXPECT_EQ(sink.TakeHeard(), "");
}

TEST(ObjectCollection, NewItemsGoBesideTheItemNamed)
{
    CThingCol col;
    CThing* const pB = new CThing("b");
    col.AppendItem(pB);
    col.PrependItem(new CThing("a"));
    EXPECT_EQ(col.Names(), "ab");
    col.AddAfterItem(pB, new CThing("d"));
    col.AddAfterItem(pB, new CThing("c"));
    col.AddBeforeItem(pB, new CThing("A"));
    EXPECT_EQ(col.Names(), "aAbcd");
    col.AddAfterItem(nullptr, new CThing("0"));
    col.AddBeforeItem(nullptr, new CThing("z"));
    EXPECT_EQ(col.Names(), "0aAbcdz");
    col.AddItemAt(0, new CThing("-1"));
    col.AddItemAt(8, new CThing("end"));
    col.AddItemAt(2, new CThing("two"));
    EXPECT_EQ(col.Names(), "-10twoaAbcdzend");
    col.Remove(9);
    col.Remove(0);
    col.RemoveNode(col.GetNodeForItem(pB));
    EXPECT_EQ(col.Names(), "0twoaAcdz");
    EXPECT_EQ(col.GetCount(), 7);
    EXPECT_EQ(CThing::s_nLiving, 7);
}

TEST(ObjectCollection, AnAddBesideAStrangerNeverCompletes)
{
    CThingCol col;
    CThing* const pInside = new CThing("a");
    col.AppendItem(pInside);
    CRecordingSink sink;
    col.AddEventListener(&sink);
    const CSmartPtr<CThing> pStranger(new CThing("a"));
    const CSmartPtr<CThing> pHeld(new CThing("held"));
    const std::string strFailure = "Param: The object was not found in the collection";

    EXPECT_EQ(FailureOf([&] { col.AddAfterItem(pStranger.GetPtr(), pHeld.GetPtr()); }), strFailure);
    EXPECT_EQ(FailureOf([&] { col.AddBeforeItem(pStranger.GetPtr(), pHeld.GetPtr()); }),
              strFailure);
    EXPECT_EQ(FailureOf([&] { col.GetNodeForItem(nullptr); }), strFailure);
    EXPECT_EQ(FailureOf([&] { col.RemoveNode(nullptr); }), strFailure);
    EXPECT_EQ(sink.TakeHeard(), "1 1 ");
    EXPECT_EQ(col.Names(), "a");
    EXPECT_EQ(CThing::s_nLiving, 3);

    EXPECT_EQ(FailureOf([&] { col.AddAfterItem(pStranger.GetPtr(), new CThing); }), strFailure);
    EXPECT_EQ(CThing::s_nLiving, 3) << "an item that nobody holds goes with the failed node";
}

TEST(ObjectCollection, AListenerMayRefuseAnItemAndCountIt)
{
    class CRefusingSink : public IEventSink
    {
    public:
        void OnEvent(CXmlObjectBase*, MsgType message, void* pData) override
        {
            if (message != MsgType_Add)
                return;
            CSmartPtr<CXmlObjectBase>{static_cast<CXmlObjectBase*>(pData)}.Reset();
            if (m_bRefuse)
                throw CQnException("Refused.");
        }
        CXmlObjectBase* GetBase() override { return nullptr; }
        bool m_bRefuse = false;
    } sink;
    CThingCol col;
    CThing* const pInside = new CThing("a");
    col.AddEventListener(&sink);
    col.AppendItem(pInside);
    EXPECT_EQ(col.Names(), "a") << "the listener's reference was not the last one";

    sink.m_bRefuse = true;
    const std::function<void()> adds[] = {
        [&] { col.AppendItem(new CThing); },
        [&] { col.PrependItem(new CThing); },
        [&] { col.AddItemAt(0, new CThing); },
        [&] { col.AddAfterItem(pInside, new CThing); },
        [&] { col.AddBeforeItem(pInside, new CThing); },
    };
    for (const auto& add : adds)
        EXPECT_EQ(FailureOf(add), "Qn: Refused.");
    EXPECT_EQ(col.Names(), "a");
    EXPECT_EQ(CThing::s_nLiving, 1);
}

TEST(ObjectCollection, PlacesOutsideTheListAreRefused)
{
    CThingCol col;
    CRecordingSink sink;
    col.AddEventListener(&sink);
    EXPECT_EQ(FailureOf([&] { col.Remove(0); }), "Param: Index 0 is out of range, use 0 - 0");
    col.AppendItem(new CThing);
    col.AppendItem(new CThing);
    sink.TakeHeard();
    const CSmartPtr<CThing> pThing(new CThing);

    EXPECT_EQ(FailureOf([&] { col.Remove(-1); }), "Param: Index -1 is out of range, use 0 - 2");
    EXPECT_EQ(FailureOf([&] { col.Remove(2); }), "Param: Index 2 is out of range, use 0 - 2");
    EXPECT_EQ(FailureOf([&] { col.GetNodeAtIndex(2); }),
              "Param: Index 2 is out of range, use 0 - 2");
    EXPECT_EQ(FailureOf([&] { col.AddItemAt(-1, pThing.GetPtr()); }), "Param: Index out of range");
    EXPECT_EQ(FailureOf([&] { col.AddItemAt(3, pThing.GetPtr()); }), "Param: Index out of range");
    EXPECT_EQ(sink.TakeHeard(), "");
    EXPECT_EQ(col.GetCount(), 2);
}

TEST(ObjectCollection, NullItemsAreStoredAndPassedOver)
{
    CThingCol col;
    CThing* const pThing = new CThing("a");
    col.AppendItem(nullptr);
    col.AppendItem(pThing);
    col.AddAfterItem(pThing, nullptr);
    EXPECT_EQ(col.Names(), "-a-");
    EXPECT_EQ(col.GetNodeForItem(pThing), col.GetNodeAtIndex(1));

    CRecordingWriter writer;
    CXmlObjectBase::AttributesToXml_Int(&col, &writer, CSerializationContext::m_defaultContext);
    EXPECT_EQ(writer.m_strLines, "@a {}  23\n");
}

TEST(ObjectCollection, ADyingCollectionReleasesWithoutEvents)
{
    CRecordingSink sink;
    const CSmartPtr<CThing> pKept(new CThing);
    {
        CSmartPtr<CThingCol> pCol(new CThingCol);
        pCol->AppendItem(pKept.GetPtr());
        pCol->AppendItem(pKept.GetPtr());
        pCol->AppendItem(new CThing);
        pCol->AppendItem(nullptr);
        pCol->AddEventListener(&sink);
    }
    EXPECT_EQ(sink.TakeHeard(), "");
    EXPECT_EQ(CThing::s_nLiving, 1);
    EXPECT_EQ(pKept->AddRef(), 2);
    pKept->Release();
}

TEST(ObjectCollection, EveryPlaceIsReachedFromEveryOther)
{
    // The look-up goes on from the last place, so all orders and all kinds of change in between
    // have to lead to the place that is counted from the head.
    CThingCol col;
    for (int n = 0; n < 12; ++n)
        col.AppendItem(new CThing(std::string(1, static_cast<char>('a' + n))));
    const auto NameAt = [&](int iIndex) {
        return static_cast<CThing*>(col.ItemAt(iIndex))->m_strName;
    };
    for (int iFrom = 0; iFrom < 12; ++iFrom) {
        for (int iTo = 0; iTo < 12; ++iTo) {
            NameAt(iFrom);
            EXPECT_EQ(NameAt(iTo), std::string(1, static_cast<char>('a' + iTo)));
        }
    }
    EXPECT_EQ(NameAt(8), "i");
    col.Remove(3);
    EXPECT_EQ(NameAt(8), "j");
    col.AddItemAt(2, new CThing("new"));
    EXPECT_EQ(NameAt(9), "j");
    EXPECT_EQ(NameAt(2), "new");
    col.PrependItem(new CThing("first"));
    EXPECT_EQ(NameAt(3), "new");
    col.AppendItem(new CThing("last"));
    EXPECT_EQ(NameAt(3), "new");
    EXPECT_EQ(NameAt(13), "last");
    col.Clear();
    col.AppendItem(new CThing("again"));
    EXPECT_EQ(NameAt(0), "again");
}

TEST(ObjectCollection, AWalkByIndexIsLinear)
{
    const int nItems = 200000; // from the head each time, this is a matter of minutes
    CThingCol col;
    for (int n = 0; n < nItems; ++n)
        col.AppendItem(new CThing);
    int nFound = 0;
    for (int n = 0; n < nItems; ++n)
        nFound += col.ItemAt(n) != nullptr;
    for (int n = nItems; n-- > 0;)
        nFound += col.ItemAt(n) != nullptr;
    EXPECT_EQ(nFound, 2 * nItems);
}

} // namespace
