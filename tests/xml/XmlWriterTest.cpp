#include "tests/collections/Recorders.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>

using namespace QnXmlLib16;

namespace {

using Context = CXmlWriter::CXmlWriterContext;

// bRecycle chooses between the two ways a writer may keep its contexts: with the steps of the base
// class, or with new and delete of its own.
class CScopeWriter : public CRecordingWriter
{
public:
    explicit CScopeWriter(bool bRecycle) : m_bRecycle(bRecycle) {}

    void WriteStartElement(const std::string& strName, const std::string& strNamespace) override
    {
        if (m_bRecycle)
            m_pContext = NewContext(strName, strNamespace).release();
        else
            m_pContext = m_pContext ? new Context(strName, strNamespace, m_pContext)
                                    : new Context(strName, strNamespace, m_strDefaultNamespace,
                                                  m_mapNamespaces, nullptr);
    }
    void WriteEndElement() override
    {
        if (m_bRecycle)
            return PopContext();
        const std::unique_ptr<Context> pEnded(m_pContext);
        m_pContext = std::exchange(pEnded->m_pParent, nullptr);
    }

    Context& Top() const { return *m_pContext; }
    void Start() { WriteStartElement("e", ""); }
    std::size_t CountInDocument(const char* pszUri) const { return m_mapNamespaces.count(pszUri); }
    bool Obtain(const char* pszNamespace)
    {
        bool bNew;
        EXPECT_EQ(ObtainPrefix(*m_pContext, pszNamespace, bNew), "AA");
        return bNew;
    }

private:
    bool m_bRecycle;
};

// Both ways of keeping contexts meet the same contract.
class WriterScope : public testing::TestWithParam<bool>
{
protected:
    CScopeWriter m_writer{GetParam()};

    // Prefix of a namespace in the innermost scope, "-" for none.
    std::string PrefixOf(const char* pszNamespace) const
    {
        const std::string* pPrefix = m_writer.Top().FindPrefix(pszNamespace);
        EXPECT_EQ(m_writer.Top().GetNamespaceMap().count(pszNamespace), pPrefix ? 1u : 0u);
        return pPrefix ? *pPrefix : "-";
    }
};
INSTANTIATE_TEST_SUITE_P(, WriterScope, testing::Bool());

} // namespace

TEST(WriterPrefixes, TheFirstPrefixThatNoRowHoldsIsTaken)
{
    EXPECT_EQ(CXmlWriter::GetUniquePrefix({{"u", "AA"}, {"v", "AC"}, {"w", "AB"}}), "AD");
    EXPECT_EQ(CXmlWriter::GetUniquePrefix(
                  {{"u", "aa"}, {"v", "A"}, {"w", "AAA"}, {"x", ""}, {"y", "A@"}, {"z", "@A"}}),
              "AA");
}

TEST(WriterPrefixes, RunOutWithAFailureAfterTheLastCharacter)
{
    CXmlWriter::NamespaceMap map;
    std::vector<std::string> vecPrefixes;
    try {
        while (map.size() < 100000) {
            vecPrefixes.push_back(CXmlWriter::GetUniquePrefix(map));
            map["urn:" + std::to_string(map.size())] = vecPrefixes.back();
        }
    }
    catch (const CQnException& e) {
        EXPECT_EQ(e.GetMessage(), "No namespace prefix is left.");
    }
    ASSERT_EQ(vecPrefixes.size(), (256u - 'A') * 26u);
    EXPECT_EQ(std::set<std::string>(vecPrefixes.begin(), vecPrefixes.end()).size(), map.size());
    for (const auto& [nNumber, pszPrefix] : std::vector<std::pair<std::size_t, const char*>>{
             {0, "AA"}, {25, "AZ"}, {26, "BA"}, {675, "ZZ"}, {676, "[A"}})
        EXPECT_EQ(vecPrefixes[nNumber], pszPrefix);
}

TEST_P(WriterScope, ADeclarationReachesNeitherSiblingsNorParents)
{
    m_writer.AddNamespace("p", "urn:p");
    m_writer.AddNamespace("q", "urn:p"); // in place of the first
    m_writer.SetDefaultNamespace("urn:d");
    m_writer.Start();
    EXPECT_EQ(PrefixOf(CXmlWriter::XML_NAMESPACE), "xml");
    for (const char* pszNew : {"urn:a", "urn:b", "urn:a"}) {
        m_writer.Start();
        EXPECT_TRUE(m_writer.Top().m_bInheritsScope);
        EXPECT_EQ(PrefixOf("urn:a") + PrefixOf("urn:b") + PrefixOf("urn:p"), "--q");
        EXPECT_TRUE(m_writer.Obtain(pszNew));
        EXPECT_FALSE(m_writer.Obtain(pszNew));
        EXPECT_FALSE(m_writer.Top().m_bInheritsScope);
        EXPECT_EQ(m_writer.Top().GetDefaultNamespace(), "urn:d");
        m_writer.SetDefaultNamespace("urn:e");
        m_writer.AddNamespace("long", "urn:a name that no short string holds in itself");

        m_writer.Start();
        EXPECT_EQ(PrefixOf(pszNew), "AA");
        EXPECT_EQ(m_writer.Top().GetDefaultNamespace(), "urn:e");
        EXPECT_EQ(m_writer.Top().GetNamespaceMap().size(), 4u);
        m_writer.WriteEndElement();
        m_writer.WriteEndElement();
    }
    EXPECT_EQ(m_writer.Top().GetNamespaceMap().size(), 2u);
}

TEST_P(WriterScope, AskingForAnUnknownNamespaceLeavesARowWithTheOwner)
{
    m_writer.Start();
    m_writer.Start();
    EXPECT_EQ(m_writer.Top().GetNamespaceMapValue("urn:x"), "");
    m_writer.WriteEndElement();
    EXPECT_EQ(PrefixOf("urn:x"), "");
    EXPECT_EQ(m_writer.CountInDocument("urn:x"), 0u);
}

TEST_P(WriterScope, AnElementAroundOpenOnesMayStillTakeAScopeOfItsOwn)
{
    m_writer.AddNamespace("old", "urn:p");
    m_writer.Start();
    m_writer.Start();
    Context& middle = m_writer.Top();
    m_writer.Start();
    m_writer.Start();
    middle.SetNamespaceMapValue("urn:p", "new");
    middle.m_pParent->SetDefaultNamespace("urn:d"); // of the root: no news for the middle
    EXPECT_EQ(m_writer.Top().GetDefaultNamespace(), "");
    m_writer.Start();
    EXPECT_EQ(PrefixOf("urn:p"), "new");
    for (int i = 0; i < 4; ++i)
        m_writer.WriteEndElement();
    EXPECT_EQ(PrefixOf("urn:p"), "old");
}

TEST(WriterContext, DetachedFromItsParentItMayOutliveIt)
{
    EXPECT_THROW(Context("a", "", nullptr), CQnInvalidParamException);
    const CXmlWriter::NamespaceMap map;
    auto pRoot = std::make_unique<Context>("r", "", "urn:d", map, nullptr);
    const auto pChild = std::make_unique<Context>("c", "", pRoot.get());
    pChild->SetNamespaceMapValue("urn:p", "p");
    pChild->m_pParent = nullptr;
    pRoot.reset();
    EXPECT_EQ(pChild->GetDefaultNamespace(), "urn:d");
    EXPECT_EQ(pChild->GetNamespaceMapValue("urn:p"), "p");
}
