#include "QnXmlLib16/xml/XmlWriter.h"

#include "QnXmlLib16/support/Exceptions.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <chrono>
#include <functional>
#include <memory>
#include <set>

using namespace QnXmlLib16;

namespace {

using Context = CXmlWriter::CXmlWriterContext;

template <class Call>
std::string MessageOf(Call call)
{
    try {
        call();
    }
    catch (const CQnException& e) {
        return e.GetMessage();
    }
    return "no failure";
}

// Puts nothing out. bRecycle chooses between the two ways a writer may keep its contexts: with
// the steps of the base class, or with new and delete of its own.
class CSilentWriter : public CXmlWriter
{
public:
    explicit CSilentWriter(bool bRecycle) : CXmlWriter("CSilentWriter"), m_bRecycle(bRecycle) {}

    void WriteComment(const std::string&) override {}
    void WritePI(const std::string&) override {}
    void WriteInlineSchema(const std::string&) override {}
    void WriteStartElement(const std::string& strName, const std::string& strNamespace) override
    {
        if (m_bRecycle) {
            m_pContext = NewContext(strName, strNamespace).release();
            return;
        }
        m_pContext = m_pContext ? new Context(strName, strNamespace, m_pContext)
                                : new Context(strName, strNamespace, m_strDefaultNamespace,
                                              m_mapNamespaces, nullptr);
    }
    void WriteString(const std::string&, ItemType, bool) override {}
    void WriteEndElement() override
    {
        if (m_bRecycle) {
            PopContext();
            return;
        }
        Context* pParent = m_pContext->m_pParent;
        m_pContext->m_pParent = nullptr;
        delete m_pContext;
        m_pContext = pParent;
    }
    void WriteAttributeString(const std::string&, const std::string&, const std::string&,
                              ItemType) override
    {}
    void WriteAttributeType(const std::string&, const std::string&, ItemType) override {}
    void WriteAttributeNil() override {}

    Context* Top() const { return m_pContext; }
    void Start(const char* pszName = "e") { WriteStartElement(pszName, ""); }
    const NamespaceMap& DocumentMap() const { return m_mapNamespaces; }
    bool Obtain(const char* pszNamespace, std::string& strPrefix)
    {
        bool bNew;
        strPrefix = ObtainPrefix(*m_pContext, pszNamespace, bNew);
        return bNew;
    }

private:
    bool m_bRecycle;
};

// Both ways of keeping contexts meet the same contract.
class WriterScope : public testing::TestWithParam<bool>
{
protected:
    CSilentWriter m_writer{GetParam()};

    // Prefix of a namespace in the innermost scope, "-" for none.
    std::string PrefixOf(const char* pszNamespace) const
    {
        const auto& map = m_writer.Top()->GetNamespaceMap();
        const auto it = map.find(pszNamespace);
        const std::string* pPrefix = m_writer.Top()->FindPrefix(pszNamespace);
        EXPECT_EQ(pPrefix != nullptr, it != map.end());
        if (!pPrefix)
            return "-";
        EXPECT_EQ(*pPrefix, it->second);
        return *pPrefix;
    }
};
INSTANTIATE_TEST_SUITE_P(, WriterScope, testing::Bool());

// Runs a body on a stack of 512 KiB, where recursion over a deep document can't hide.
void OnSmallStack(std::function<void()> body)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 512 * 1024);
    pthread_t thread;
    const int iError = pthread_create(
        &thread, &attributes,
        [](void* p) -> void* {
            (*static_cast<std::function<void()>*>(p))();
            return nullptr;
        },
        &body);
    pthread_attr_destroy(&attributes);
    ASSERT_EQ(iError, 0);
    pthread_join(thread, nullptr);
}

} // namespace

TEST(WriterPrefixes, NumbersBecomeTwoCharacters)
{
    struct Row
    {
        int iNumber;
        const char* pszPrefix;
    };
    const Row rows[] = {
        {0, "AA"}, {1, "AB"}, {25, "AZ"}, {26, "BA"}, {675, "ZZ"}, {676, "[A"}, {702, "\\A"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(CXmlWriter::NsIntToString(row.iNumber), row.pszPrefix) << row.iNumber;
}

TEST(WriterPrefixes, TheFirstPrefixThatNoRowHoldsIsTaken)
{
    struct Row
    {
        CXmlWriter::NamespaceMap map;
        const char* pszPrefix;
    };
    const Row rows[] = {
        {{}, "AA"},
        {{{"u", "AA"}}, "AB"},
        {{{"u", "AB"}}, "AA"},
        {{{"u", "AA"}, {"v", "AC"}, {"w", "AB"}}, "AD"},
        {{{"u", "aa"}, {"v", "A"}, {"w", "AAA"}, {"x", ""}, {"y", "A@"}, {"z", "@A"}}, "AA"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(CXmlWriter::GetUniquePrefix(row.map), row.pszPrefix);
}

TEST(WriterPrefixes, RunOutWithAFailureAfterTheLastCharacter)
{
    CXmlWriter::NamespaceMap map;
    std::set<std::string> setPrefixes;
    const std::string strFailure = MessageOf([&] {
        for (int i = 0; i < 100000; ++i) {
            const std::string strPrefix = CXmlWriter::GetUniquePrefix(map);
            EXPECT_TRUE(setPrefixes.insert(strPrefix).second);
            map["urn:" + std::to_string(i)] = strPrefix;
        }
    });
    EXPECT_EQ(strFailure, "No namespace prefix is left.");
    EXPECT_EQ(map.size(), (256u - 'A') * 26u);
}

TEST_P(WriterScope, TheRootTakesTheDocumentsDeclarationsOnce)
{
    m_writer.AddNamespace("p", "urn:p");
    m_writer.AddNamespace("q", "urn:p"); // in place of the first
    m_writer.SetDefaultNamespace("urn:d");
    m_writer.Start();
    m_writer.Start();
    EXPECT_EQ(PrefixOf("urn:p"), "q");
    EXPECT_EQ(PrefixOf(CXmlWriter::XML_NAMESPACE), "xml");
    EXPECT_EQ(m_writer.Top()->GetDefaultNamespace(), "urn:d");

    m_writer.AddNamespace("r", "urn:r"); // of the element that is open now
    EXPECT_EQ(m_writer.DocumentMap().count("urn:r"), 0u);
    m_writer.WriteEndElement();
    EXPECT_EQ(PrefixOf("urn:r"), "-");
}

TEST_P(WriterScope, ADeclarationReachesNeitherSiblingsNorParents)
{
    m_writer.SetDefaultNamespace("urn:d");
    m_writer.Start();
    for (int i = 0; i < 3; ++i) {
        m_writer.Start();
        EXPECT_TRUE(m_writer.Top()->m_bInheritsScope);
        EXPECT_FALSE(m_writer.Top()->m_bOwnsMap);
        EXPECT_EQ(PrefixOf("urn:a"), "-");
        EXPECT_EQ(PrefixOf("urn:b"), "-");
        EXPECT_EQ(m_writer.Top()->GetDefaultNamespace(), "urn:d");

        std::string strPrefix;
        const char* const pszNew = i == 1 ? "urn:b" : "urn:a";
        EXPECT_TRUE(m_writer.Obtain(pszNew, strPrefix));
        EXPECT_EQ(strPrefix, "AA");
        EXPECT_FALSE(m_writer.Obtain(pszNew, strPrefix));
        EXPECT_FALSE(m_writer.Top()->m_bInheritsScope);
        EXPECT_TRUE(m_writer.Top()->m_bOwnsMap);
        EXPECT_EQ(m_writer.Top()->GetDefaultNamespace(), "urn:d");
        m_writer.SetDefaultNamespace("urn:e");
        if (i == 0)
            m_writer.AddNamespace("long", "urn:a name that no short string holds in itself");

        m_writer.Start();
        EXPECT_EQ(PrefixOf(pszNew), "AA");
        EXPECT_EQ(m_writer.Top()->GetDefaultNamespace(), "urn:e");
        EXPECT_EQ(m_writer.Top()->GetNamespaceMap().size(), i == 0 ? 3u : 2u);
        m_writer.WriteEndElement();
        m_writer.WriteEndElement();
    }
    EXPECT_EQ(m_writer.Top()->GetNamespaceMap().size(), 1u);
}

TEST_P(WriterScope, AskingForAnUnknownNamespaceLeavesARowWithTheOwner)
{
    m_writer.Start();
    m_writer.Start();
    EXPECT_EQ(m_writer.Top()->GetNamespaceMapValue(std::string("urn:x")), "");
    EXPECT_EQ(m_writer.Top()->GetNamespaceMapValue("urn:y"), "");
    EXPECT_TRUE(m_writer.Top()->m_bInheritsScope);
    m_writer.WriteEndElement();
    EXPECT_EQ(PrefixOf("urn:x"), "");
    EXPECT_EQ(PrefixOf("urn:y"), "");
    EXPECT_EQ(m_writer.DocumentMap().count("urn:x"), 0u);
}

TEST_P(WriterScope, AnElementAroundOpenOnesMayStillTakeAScopeOfItsOwn)
{
    m_writer.AddNamespace("old", "urn:p");
    m_writer.Start();
    m_writer.Start();
    Context* pMiddle = m_writer.Top();
    m_writer.Start();
    m_writer.Start();
    pMiddle->SetNamespaceMapValue("urn:p", "new");
    EXPECT_EQ(PrefixOf("urn:p"), "new");
    pMiddle->m_pParent->SetDefaultNamespace("urn:d"); // of the root: no news for the middle
    EXPECT_EQ(m_writer.Top()->GetDefaultNamespace(), "");
    m_writer.Start();
    EXPECT_EQ(PrefixOf("urn:p"), "new");
    for (int i = 0; i < 4; ++i)
        m_writer.WriteEndElement();
    EXPECT_EQ(PrefixOf("urn:p"), "old");
}

TEST_P(WriterScope, ANewContextStartsFromTheSameValuesEachTime)
{
    m_writer.Start("root");
    EXPECT_EQ(m_writer.Top()->m_iDepth, 0);
    EXPECT_EQ(m_writer.Top()->m_pParent, nullptr);
    for (int i = 0; i < 2; ++i) {
        m_writer.WriteStartElement("name", "urn:n");
        Context& context = *m_writer.Top();
        EXPECT_EQ(context.m_strName, "name");
        EXPECT_EQ(context.m_strNamespace, "urn:n");
        EXPECT_EQ(context.m_iChildCount, 0u);
        EXPECT_EQ(context.m_iDepth, 1);
        EXPECT_TRUE(context.m_bStartTagOpen);
        EXPECT_FALSE(context.m_bHasAttributes);
        EXPECT_EQ(context.m_eState, 0);
        context.m_iChildCount = 7;
        context.m_bStartTagOpen = false;
        context.m_bHasAttributes = true;
        context.m_eState = CXmlWriter::ContextState_AfterItems;
        m_writer.WriteEndElement();
    }
}

TEST_P(WriterScope, CloseRefusesAnOpenElementAndDestructionFreesIt)
{
    m_writer.SetContextState(CXmlWriter::ContextState_BeforeItems); // nothing is open
    m_writer.Start();
    m_writer.Start();
    m_writer.SetContextState(CXmlWriter::ContextState_BeforeItems);
    EXPECT_EQ(m_writer.Top()->m_eState, 1);
    EXPECT_EQ(m_writer.Top()->m_pParent->m_eState, 0);
    EXPECT_EQ(MessageOf([&] { m_writer.Close(); }), "An Element has not been closed.");
}

TEST_P(WriterScope, DepthCostsNeitherStackNorTimePerLookUp)
{
    OnSmallStack([this] {
        using Clock = std::chrono::steady_clock;
        const Clock::time_point start = Clock::now();
        m_writer.SetDefaultNamespace("urn:d");
        for (int i = 0; i < 200000; ++i) {
            m_writer.Start();
            EXPECT_EQ(m_writer.Top()->GetDefaultNamespace().size(), 5u);
            EXPECT_EQ(m_writer.Top()->GetNamespaceMap().size(), 1u);
        }
        for (int i = 0; i < 100000; ++i) {
            std::string strPrefix;
            m_writer.Start();
            m_writer.Obtain("urn:x", strPrefix);
            m_writer.WriteEndElement();
            m_writer.WriteEndElement();
        }
        // Going up step by step takes minutes.
        EXPECT_LT(Clock::now() - start, std::chrono::seconds(20));
        EXPECT_EQ(m_writer.Top()->m_iDepth, 99999);
        CSilentWriter unfinished(GetParam());
        for (int i = 0; i < 200000; ++i)
            unfinished.Start();
    });
}

TEST(WriterContext, NeedsAParentBelowTheRoot)
{
    EXPECT_THROW(Context("a", "", nullptr), CQnInvalidParamException);
}

TEST(WriterContext, DetachedFromItsParentItMayOutliveIt)
{
    const CXmlWriter::NamespaceMap map;
    auto pRoot = std::make_unique<Context>("r", "", "urn:d", map, nullptr);
    auto pChild = std::make_unique<Context>("c", "", pRoot.get());
    pChild->SetNamespaceMapValue("urn:p", "p");
    pChild->m_pParent = nullptr;
    pRoot.reset();
    EXPECT_EQ(pChild->GetDefaultNamespace(), "urn:d");
    EXPECT_EQ(pChild->GetNamespaceMapValue("urn:p"), "p");
}
