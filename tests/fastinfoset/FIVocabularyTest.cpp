#include "QnXmlLib16/fastinfoset/FIVocabulary.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

using namespace QnXmlLib16;

namespace {

// Texts, and names as prefix, namespace and local name; each with a blank behind it.
std::string List(const CFIVocabulary::CFIStringTable& table)
{
    std::string str;
    for (const std::string& strText : table)
        str += strText + ' ';
    return str;
}

template <class TNames>
std::string List(const TNames& names)
{
    std::string str;
    for (const CFIVocabulary::CQNameParts& parts : names)
        str += std::to_string(parts.m_iPrefix) + ',' + std::to_string(parts.m_iNamespace) + ',' +
               std::to_string(parts.m_iLocalName) + ' ';
    return str;
}

} // namespace

TEST(Vocabulary, NumbersTextsAndNamesInTheOrderTheyEnter)
{
    CFIVocabulary vocabulary;
    for (const char* const psz : {"a", "b", "a"}) { // what is there doesn't enter again
        vocabulary.AddPrefixName(psz);
        vocabulary.AddNamespaceName(psz);
        vocabulary.AddAttributeValue(psz);
        vocabulary.AddElementValue(psz);
        vocabulary.AddElement("", "b", psz);
        vocabulary.AddAttribute("a", "c", psz);
    }
    CFIVocabulary copy(vocabulary);
    copy.AddLocalName("c");
    EXPECT_EQ(List(vocabulary.GetPrefixNamesTable()), "xml a b ");
    EXPECT_EQ(List(vocabulary.GetNamespaceNamesTable()),
              "http://www.w3.org/XML/1998/namespace a b c ");
    EXPECT_EQ(List(vocabulary.GetLocalNamesTable()), "a b ");
    EXPECT_EQ(List(vocabulary.GetAttributeValuesTable()), "a b ");
    EXPECT_EQ(List(vocabulary.GetCharacterChunksTable()), "a b ");
    EXPECT_EQ(List(vocabulary.GetElementNamesTable()), "0,3,1 0,3,2 ");
    EXPECT_EQ(List(vocabulary.GetAttributeNamesTable()), "2,4,1 2,4,2 ");
    unsigned long iIndex = 7;
    EXPECT_FALSE(vocabulary.FindLocalNameIndex("c", iIndex));
    EXPECT_EQ(iIndex, 7u);
    EXPECT_TRUE(copy.FindLocalNameIndex("c", iIndex));
    EXPECT_EQ(iIndex, 3u);

    // The map and the vector of a caller.
    std::map<std::string, unsigned long> map;
    std::vector<CFIVocabulary::CQNameParts> vecNames;
    for (int i = 0; i < 2; ++i) {
        vocabulary.AddQName("b", "a", "b", map, vecNames);
        vocabulary.AddValueToMap("b", map);
    }
    EXPECT_EQ(map, (std::map<std::string, unsigned long>{{"b\1a\1b", 1}, {"b", 2}}));
    EXPECT_EQ(List(vecNames), "3,2,2 ");
}

TEST(Vocabulary, AFullTableLendsItsLastIndexToANewName)
{
    constexpr std::size_t kFull = 1048576;
    CFIVocabulary vocabulary;
    std::map<std::string, unsigned long> map;
    for (std::size_t n = 0; n <= kFull; ++n) {
        vocabulary.AddLocalName(std::to_string(n));
        vocabulary.AddValueToMap(std::to_string(n), map);
    }
    unsigned long iIndex = 0;
    EXPECT_FALSE(vocabulary.FindLocalNameIndex(std::to_string(kFull), iIndex));
    EXPECT_TRUE(vocabulary.FindLocalNameIndex(std::to_string(kFull - 1), iIndex));
    EXPECT_EQ(iIndex, kFull);
    vocabulary.AddElement("", "", "late");
    const CFIVocabulary::CFIQNameTable& names = vocabulary.GetElementNamesTable();
    ASSERT_EQ(names.end() - names.begin(), 1);
    EXPECT_EQ(names.begin()->m_iPrefix + names.begin()->m_iNamespace, 0u);
    EXPECT_EQ(names.begin()->m_iLocalName, kFull);

    std::vector<std::string> vecTexts(kFull);
    std::vector<CFIVocabulary::CQNameParts> vecNames(kFull);
    vocabulary.AddValueToVector("late", vecTexts);
    vocabulary.AddQNameToVector(1, 1, 1, vecNames);
    EXPECT_EQ(map.size(), kFull);
    EXPECT_EQ(vecTexts.size(), kFull);
    EXPECT_EQ(vecNames.size(), kFull);
}
