#include "tests/collections/Recorders.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>

using namespace QnXmlLib16;

namespace {

using Context = CXmlWriter::CXmlWriterContext;

// Keeps contexts with new and delete of its own; the writers of this library recycle them.
class CScopeWriter : public CRecordingWriter
{
public:
    void WriteStartElement(const std::string& strName, const std::string& strNamespace) override
    {
        m_pContext = m_pContext ? new Context(strName, strNamespace, m_pContext)
                                : new Context(strName, strNamespace, m_strDefaultNamespace,
                                              m_mapNamespaces, nullptr);
    }
    void WriteEndElement() override
    {
        const std::unique_ptr<Context> pEnded(m_pContext);
        m_pContext = std::exchange(pEnded->m_pParent, nullptr);
    }

    Context& Top() const { return *m_pContext; }
    std::string PrefixOf(const char* pszUri) const
    {
        const std::string* const pPrefix = m_pContext->FindPrefix(pszUri);
        return pPrefix ? *pPrefix : "none";
    }
    void Start() { WriteStartElement("e", ""); }
    std::size_t CountInDocument(const char* pszUri) const { return m_mapNamespaces.count(pszUri); }
};

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
    std::map<std::size_t, std::string> mapExpected = {
        {0, "AA"}, {25, "AZ"}, {26, "BA"}, {675, "ZZ"}, {676, "[A"}};
    std::set<std::string> setPrefixes;
    for (std::size_t n = 0; n < (256u - 'A') * 26u; ++n) {
        const std::string strPrefix = CXmlWriter::GetUniquePrefix(map);
        EXPECT_TRUE(setPrefixes.insert(strPrefix).second);
        EXPECT_TRUE(mapExpected.count(n) == 0 || mapExpected[n] == strPrefix) << strPrefix;
        map["urn:" + std::to_string(n)] = strPrefix;
    }
    EXPECT_EQ(FailureOf([&] { CXmlWriter::GetUniquePrefix(map); }),
              "Qn: No namespace prefix is left.");
}

TEST(WriterScope, AskingForAnUnknownNamespaceLeavesARowWithTheOwner)
{
    CScopeWriter writer;
    writer.Start();
    writer.Start();
    EXPECT_EQ(writer.Top().GetNamespaceMapValue("urn:x"), "");
    writer.WriteEndElement();
    EXPECT_EQ(writer.PrefixOf("urn:x"), "");
    EXPECT_EQ(writer.CountInDocument("urn:x"), 0u);
}

TEST(WriterScope, AnElementAroundOpenOnesMayStillTakeAScopeOfItsOwn)
{
    CScopeWriter writer;
    writer.AddNamespace("old", "urn:p");
    writer.Start();
    writer.Start();
    Context& middle = writer.Top();
    writer.Start();
    writer.Start();
    middle.SetNamespaceMapValue("urn:p", "new");
    middle.m_pParent->SetDefaultNamespace("urn:d"); // of the root: no news for the middle
    EXPECT_EQ(writer.Top().GetDefaultNamespace(), "");
    writer.Start();
    EXPECT_EQ(writer.PrefixOf("urn:p"), "new");
    for (int i = 0; i < 4; ++i)
        writer.WriteEndElement();
    EXPECT_EQ(writer.PrefixOf("urn:p"), "old");
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
