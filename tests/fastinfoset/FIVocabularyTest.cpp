#include "QnXmlLib16/fastinfoset/FIVocabulary.h"

#include "QnXmlLib16/fastinfoset/FastInfosetContext.h"
#include "QnXmlLib16/values/ItemType.h"

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <string>
#include <vector>

using namespace QnXmlLib16;

namespace {

constexpr const char* kXmlNamespace = "http://www.w3.org/XML/1998/namespace";

template <class TTable>
long Count(const TTable& table)
{
    return std::distance(table.begin(), table.end());
}

// "1,0,2 2,0,1": prefix, namespace and local name of each entry.
std::string Names(const CFIVocabulary::CFIQNameTable& table)
{
    std::string str;
    for (const CFIVocabulary::CQNameParts& parts : table)
        str += (str.empty() ? "" : " ") + std::to_string(parts.m_iPrefix) + ',' +
               std::to_string(parts.m_iNamespace) + ',' + std::to_string(parts.m_iLocalName);
    return str;
}

} // namespace

TEST(Vocabulary, ANewOneHoldsTheXmlPrefixAndNamespaceOnly)
{
    const CFIVocabulary vocabulary;
    unsigned long iIndex = 7;
    EXPECT_TRUE(vocabulary.FindPrefixNameIndex("xml", iIndex));
    EXPECT_EQ(iIndex, 1u);
    iIndex = 7;
    EXPECT_TRUE(vocabulary.FindNamespaceNameIndex(kXmlNamespace, iIndex));
    EXPECT_EQ(iIndex, 1u);
    EXPECT_EQ(*vocabulary.GetPrefixNamesTable().begin(), "xml");
    EXPECT_EQ(*vocabulary.GetNamespaceNamesTable().begin(), kXmlNamespace);
    EXPECT_EQ(Count(vocabulary.GetPrefixNamesTable()), 1);
    EXPECT_EQ(Count(vocabulary.GetNamespaceNamesTable()), 1);
    EXPECT_EQ(Count(vocabulary.GetLocalNamesTable()), 0);
    iIndex = 7;
    EXPECT_FALSE(vocabulary.FindLocalNameIndex("xml", iIndex));
    EXPECT_EQ(iIndex, 7u);
}

TEST(Vocabulary, TextsAreNumberedInTheOrderTheyEnter)
{
    using Add = void (CFIVocabulary::*)(const std::string&);
    using Table = const CFIVocabulary::CFIStringTable& (CFIVocabulary::*)() const;
    struct Row
    {
        Add pfnAdd;
        Table pfnTable;
        long iBuiltIn;
    };
    const Row rows[] = {
        {&CFIVocabulary::AddPrefixName, &CFIVocabulary::GetPrefixNamesTable, 1},
        {&CFIVocabulary::AddNamespaceName, &CFIVocabulary::GetNamespaceNamesTable, 1},
        {&CFIVocabulary::AddLocalName, &CFIVocabulary::GetLocalNamesTable, 0},
        {&CFIVocabulary::AddAttributeValue, &CFIVocabulary::GetAttributeValuesTable, 0},
        {&CFIVocabulary::AddElementValue, &CFIVocabulary::GetCharacterChunksTable, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        CFIVocabulary vocabulary;
        (vocabulary.*row.pfnAdd)("a");
        (vocabulary.*row.pfnAdd)("b");
        (vocabulary.*row.pfnAdd)("a"); // is there: the table does not grow without the map
        const auto& table = (vocabulary.*row.pfnTable)();
        EXPECT_EQ(std::vector<std::string>(table.begin() + row.iBuiltIn, table.end()),
                  (std::vector<std::string>{"a", "b"}));
    }
    CFIVocabulary vocabulary;
    vocabulary.AddPrefixName("p");
    unsigned long iIndex = 0;
    EXPECT_TRUE(vocabulary.FindPrefixNameIndex("p", iIndex));
    EXPECT_EQ(iIndex, 2u);
}

TEST(Vocabulary, NamesShareTheirPartsAndEnterOnce)
{
    CFIVocabulary vocabulary;
    vocabulary.AddElement("", "", "a");
    EXPECT_EQ(Names(vocabulary.GetElementNamesTable()), "0,0,1");
    vocabulary.AddElement("", "", "a");
    vocabulary.AddElement("", "urn:n", "a");
    vocabulary.AddElement("p", "urn:n", "a");
    vocabulary.AddElement("p", "urn:n", "b");
    EXPECT_EQ(Names(vocabulary.GetElementNamesTable()), "0,0,1 0,2,1 2,2,1 2,2,2");
    EXPECT_EQ(Names(vocabulary.GetAttributeNamesTable()), "");
    vocabulary.AddAttribute("p", "urn:n", "a");
    EXPECT_EQ(Names(vocabulary.GetAttributeNamesTable()), "2,2,1");
    EXPECT_EQ(Count(vocabulary.GetLocalNamesTable()), 2);
}

TEST(Vocabulary, NamesEnterTheMapAndVectorOfACaller)
{
    CFIVocabulary vocabulary;
    std::map<std::string, unsigned long> map;
    std::vector<CFIVocabulary::CQNameParts> vecNames;
    for (int i = 0; i < 2; ++i)
        vocabulary.AddQName("p", "urn:n", "a", map, vecNames);
    EXPECT_EQ(map, (std::map<std::string, unsigned long>{{"a\1urn:n\1p", 1}}));
    ASSERT_EQ(vecNames.size(), 1u);
    EXPECT_EQ(vecNames[0].m_iPrefix, 2u);
    EXPECT_EQ(vecNames[0].m_iNamespace, 2u);
    EXPECT_EQ(vecNames[0].m_iLocalName, 1u);
    EXPECT_EQ(Names(vocabulary.GetElementNamesTable()), "");
    vocabulary.AddValueToMap("b", map);
    vocabulary.AddValueToMap("b", map);
    unsigned long iIndex = 7;
    EXPECT_FALSE(vocabulary.FindIndex(map, "c", iIndex));
    EXPECT_EQ(iIndex, 7u);
    EXPECT_TRUE(vocabulary.FindIndex(map, "b", iIndex));
    EXPECT_EQ(iIndex, 2u);
}

TEST(Vocabulary, ACopySharesNothing)
{
    CFIVocabulary vocabulary;
    vocabulary.AddElement("", "", "a");
    CFIVocabulary copy(vocabulary);
    vocabulary.AddElement("", "", "b");
    copy.AddElement("", "", "c");
    EXPECT_EQ(Names(copy.GetElementNamesTable()), "0,0,1 0,0,2");
    unsigned long iIndex = 0;
    EXPECT_TRUE(copy.FindLocalNameIndex("c", iIndex));
    EXPECT_EQ(iIndex, 2u);
    EXPECT_FALSE(vocabulary.FindLocalNameIndex("c", iIndex));
}

TEST(Vocabulary, AFullTableLendsItsLastIndexToANewName)
{
    constexpr long kFull = 1048576;
    CFIVocabulary vocabulary;
    for (long i = 0; i < kFull + 1; ++i)
        vocabulary.AddLocalName(std::to_string(i));
    EXPECT_EQ(Count(vocabulary.GetLocalNamesTable()), kFull);
    unsigned long iIndex = 0;
    EXPECT_FALSE(vocabulary.FindLocalNameIndex(std::to_string(kFull), iIndex));
    EXPECT_TRUE(vocabulary.FindLocalNameIndex(std::to_string(kFull - 1), iIndex));
    EXPECT_EQ(iIndex, 1048576u);
    vocabulary.AddElement("", "", "late");
    EXPECT_EQ(Names(vocabulary.GetElementNamesTable()), "0,0,1048576");

    std::map<std::string, unsigned long> map;
    std::vector<std::string> vecTexts(kFull);
    std::vector<CFIVocabulary::CQNameParts> vecNames(kFull);
    for (long i = 0; i < kFull + 1; ++i)
        vocabulary.AddValueToMap(std::to_string(i), map);
    vocabulary.AddValueToVector("late", vecTexts);
    vocabulary.AddQNameToVector(1, 1, 1, vecNames);
    EXPECT_EQ(map.size(), static_cast<std::size_t>(kFull));
    EXPECT_EQ(vecTexts.size(), static_cast<std::size_t>(kFull));
    EXPECT_EQ(vecNames.size(), static_cast<std::size_t>(kFull));
}

TEST(FastInfosetSettings, StartAsLiteralsWithShortValuesInTheVocabulary)
{
    CFastInfosetContext context;
    for (unsigned long i = 0; i < 29; ++i) {
        EXPECT_EQ(context.GetEncoding(i).m_eKind, 0);
        EXPECT_EQ(context.GetEncoding(i).m_iIndex, 0u);
    }
    EXPECT_EQ(context.GetDefaultStringEncoding(), 0);
    EXPECT_EQ(context.GetAttributeMaxAddLength(), 6u);
    EXPECT_EQ(context.GetElementMaxAddLength(), 6u);
    EXPECT_FALSE(context.GetUseGeneratedVocabulary());
    EXPECT_EQ(context.GetExternalVocabularyURI(), "");
    EXPECT_EQ(Count(context.GetVocabulary()->GetLocalNamesTable()), 0);

    context.GetVocabulary()->AddLocalName("a");
    const CFastInfosetContext copy(context);
    context.GetVocabulary()->AddLocalName("b");
    EXPECT_EQ(Count(copy.GetVocabulary()->GetLocalNamesTable()), 1);
}

TEST(FastInfosetSettings, SuggestedValuesLeaveTextsAlone)
{
    // Kind and index by ItemType.
    const int aExpected[29][2] = {{9, 9}, {2, 1}, {2, 2}, {2, 3}, {2, 3}, {2, 4}, {2, 5}, {2, 3},
                                  {2, 4}, {2, 5}, {2, 5}, {2, 7}, {2, 8}, {0, 0}, {1, 2}, {1, 2},
                                  {1, 2}, {1, 2}, {1, 2}, {1, 2}, {1, 2}, {1, 2}, {9, 9}, {9, 9},
                                  {2, 6}, {1, 1}, {1, 1}, {9, 9}, {9, 9}};
    CFastInfosetContext context;
    for (unsigned long i = 0; i < 29; ++i)
        context.SetEncoding(i, {9, 9});
    context.SetSuggestedValues();
    for (unsigned long i = 0; i < 29; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(context.GetEncoding(i).m_eKind, aExpected[i][0]);
        EXPECT_EQ(context.GetEncoding(i).m_iIndex, static_cast<unsigned long>(aExpected[i][1]));
    }
}
