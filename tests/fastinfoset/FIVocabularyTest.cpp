#include "QnXmlLib16/fastinfoset/FIVocabulary.h"

#include "QnXmlLib16/fastinfoset/FastInfosetContext.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

using namespace QnXmlLib16;

namespace {

// The entries of a table, each with a blank behind it.
std::string Texts(const CFIVocabulary::CFIStringTable& table)
{
    std::string str;
    for (const std::string& strText : table)
        str += strText + ' ';
    return str;
}

// The same of names: prefix, namespace and local name.
template <class TNames>
std::string Names(const TNames& names)
{
    std::string str;
    for (const CFIVocabulary::CQNameParts& parts : names)
        str += std::to_string(parts.m_iPrefix) + ',' + std::to_string(parts.m_iNamespace) + ',' +
               std::to_string(parts.m_iLocalName) + ' ';
    return str;
}

} // namespace

TEST(Vocabulary, TextsAreNumberedInTheOrderTheyEnterAndCopiesShareNothing)
{
    CFIVocabulary vocabulary;
    for (const char* const psz : {"a", "b", "a"}) { // what is there doesn't enter again
        vocabulary.AddPrefixName(psz);
        vocabulary.AddNamespaceName(psz);
        vocabulary.AddLocalName(psz);
        vocabulary.AddAttributeValue(psz);
        vocabulary.AddElementValue(psz);
    }
    CFIVocabulary copy(vocabulary);
    copy.AddLocalName("c");
    EXPECT_EQ(Texts(vocabulary.GetPrefixNamesTable()), "xml a b ");
    EXPECT_EQ(Texts(vocabulary.GetNamespaceNamesTable()),
              "http://www.w3.org/XML/1998/namespace a b ");
    EXPECT_EQ(Texts(vocabulary.GetLocalNamesTable()), "a b ");
    EXPECT_EQ(Texts(vocabulary.GetAttributeValuesTable()), "a b ");
    EXPECT_EQ(Texts(vocabulary.GetCharacterChunksTable()), "a b ");
    unsigned long iIndex = 7;
    EXPECT_FALSE(vocabulary.FindLocalNameIndex("c", iIndex));
    EXPECT_EQ(iIndex, 7u);
    EXPECT_TRUE(copy.FindLocalNameIndex("c", iIndex));
    EXPECT_EQ(iIndex, 3u);
    EXPECT_TRUE(vocabulary.FindPrefixNameIndex("xml", iIndex));
    EXPECT_EQ(iIndex, 1u);
    EXPECT_TRUE(vocabulary.FindNamespaceNameIndex("b", iIndex));
    EXPECT_EQ(iIndex, 3u);
}

TEST(Vocabulary, NamesShareTheirPartsAndEnterOnce)
{
    CFIVocabulary vocabulary;
    vocabulary.AddElement("", "", "a");
    vocabulary.AddElement("", "", "a");
    vocabulary.AddElement("", "urn:n", "a");
    vocabulary.AddElement("p", "urn:n", "a");
    vocabulary.AddElement("p", "urn:n", "b");
    vocabulary.AddAttribute("p", "urn:n", "a");
    EXPECT_EQ(Names(vocabulary.GetElementNamesTable()), "0,0,1 0,2,1 2,2,1 2,2,2 ");
    EXPECT_EQ(Names(vocabulary.GetAttributeNamesTable()), "2,2,1 ");
    EXPECT_EQ(Texts(vocabulary.GetLocalNamesTable()), "a b ");

    // The map and the vector of a caller.
    std::map<std::string, unsigned long> map;
    std::vector<CFIVocabulary::CQNameParts> vecNames;
    for (int i = 0; i < 2; ++i) {
        vocabulary.AddQName("p", "urn:n", "c", map, vecNames);
        vocabulary.AddValueToMap("b", map);
    }
    EXPECT_EQ(map, (std::map<std::string, unsigned long>{{"c\1urn:n\1p", 1}, {"b", 2}}));
    EXPECT_EQ(Names(vecNames), "2,2,3 ");
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
    EXPECT_EQ(Names(vocabulary.GetElementNamesTable()), "0,0,1048576 ");

    std::vector<std::string> vecTexts(kFull);
    std::vector<CFIVocabulary::CQNameParts> vecNames(kFull);
    vocabulary.AddValueToVector("late", vecTexts);
    vocabulary.AddQNameToVector(1, 1, 1, vecNames);
    EXPECT_EQ(map.size(), kFull);
    EXPECT_EQ(vecTexts.size(), kFull);
    EXPECT_EQ(vecNames.size(), kFull);
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
        EXPECT_EQ(context.GetEncoding(i).m_eKind, aExpected[i][0]) << i;
        EXPECT_EQ(context.GetEncoding(i).m_iIndex, static_cast<unsigned long>(aExpected[i][1]));
    }
}
