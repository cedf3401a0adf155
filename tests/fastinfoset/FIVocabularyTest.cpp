#include "QnXmlLib16/fastinfoset/FIVocabulary.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

using namespace QnXmlLib16;

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
