#include "QnXmlLib16/fastinfoset/FIVocabulary.h"

#include "QnXmlLib16/fastinfoset/internal/NameKey.h"

namespace QnXmlLib16 {

namespace {

constexpr std::size_t kMaxEntries = 1048576; // of a map and of a table

const char* const kXmlPrefix = "xml";
const char* const kXmlNamespace = "http://www.w3.org/XML/1998/namespace";

} // namespace

CFIVocabulary::CFIStringTable::~CFIStringTable() = default;

CFIVocabulary::CFIQNameTable::~CFIQNameTable() = default;

CFIVocabulary::CFIVocabulary() : m_vecRestrictedAlphabets{"0123456789-+.e ", "0123456789-:TZ "}
{
    AddPrefixName(kXmlPrefix);
    AddNamespaceName(kXmlNamespace);
}

CFIVocabulary::CFIVocabulary(const CFIVocabulary& other) = default;

CFIVocabulary& CFIVocabulary::operator=(const CFIVocabulary& other) = default;

CFIVocabulary::~CFIVocabulary() = default;

bool CFIVocabulary::FindIndex(const CIndexMap& map, const std::string& strKey,
                              unsigned long& iIndex) const
{
    const auto it = map.find(strKey);
    if (it == map.end())
        return false;
    iIndex = it->second;
    return true;
}

bool CFIVocabulary::FindPrefixNameIndex(const std::string& strPrefix, unsigned long& iIndex) const
{
    return FindIndex(m_mapPrefixNames, strPrefix, iIndex);
}

bool CFIVocabulary::FindNamespaceNameIndex(const std::string& strNamespace,
                                           unsigned long& iIndex) const
{
    return FindIndex(m_mapNamespaceNames, strNamespace, iIndex);
}

bool CFIVocabulary::FindLocalNameIndex(const std::string& strLocalName, unsigned long& iIndex) const
{
    return FindIndex(m_mapLocalNames, strLocalName, iIndex);
}

void CFIVocabulary::AddValueToMap(const std::string& strKey, CIndexMap& map) const
{
    if (map.size() < kMaxEntries)
        map.emplace(strKey, map.size() + 1);
}

void CFIVocabulary::AddValueToVector(const std::string& strValue,
                                     std::vector<std::string>& vec) const
{
    if (vec.size() < kMaxEntries)
        vec.push_back(strValue);
}

void CFIVocabulary::AddQNameToVector(unsigned long iPrefix, unsigned long iNamespace,
                                     unsigned long iLocalName, std::vector<CQNameParts>& vec) const
{
    if (vec.size() < kMaxEntries)
        vec.push_back({iPrefix, iNamespace, iLocalName});
}

void CFIVocabulary::AddValue(const std::string& strValue, CIndexMap& map, CFIStringTable& table)
{
    if (map.find(strValue) != map.end())
        return;
    AddValueToMap(strValue, map);
    AddValueToVector(strValue, table.m_vecStrings);
}

void CFIVocabulary::AddAttributeValue(const std::string& strValue)
{
    AddValue(strValue, m_mapAttributeValues, m_tabAttributeValues);
}

void CFIVocabulary::AddElementValue(const std::string& strValue)
{
    AddValue(strValue, m_mapCharacterChunks, m_tabCharacterChunks);
}

void CFIVocabulary::AddPrefixName(const std::string& strPrefix)
{
    AddValue(strPrefix, m_mapPrefixNames, m_tabPrefixNames);
}

void CFIVocabulary::AddNamespaceName(const std::string& strNamespace)
{
    AddValue(strNamespace, m_mapNamespaceNames, m_tabNamespaceNames);
}

void CFIVocabulary::AddLocalName(const std::string& strLocalName)
{
    AddValue(strLocalName, m_mapLocalNames, m_tabLocalNames);
}

void CFIVocabulary::AddAttribute(const std::string& strPrefix, const std::string& strNamespace,
                                 const std::string& strLocalName)
{
    AddQName(strPrefix, strNamespace, strLocalName, m_mapAttributeNames,
             m_tabAttributeNames.m_vecNames);
}

void CFIVocabulary::AddElement(const std::string& strPrefix, const std::string& strNamespace,
                               const std::string& strLocalName)
{
    AddQName(strPrefix, strNamespace, strLocalName, m_mapElementNames,
             m_tabElementNames.m_vecNames);
}

unsigned long CFIVocabulary::ObtainIndex(const std::string& strValue, CIndexMap& map,
                                         CFIStringTable& table)
{
    unsigned long iIndex = 0;
    if (!FindIndex(map, strValue, iIndex)) {
        AddValue(strValue, map, table);
        // Deliberate: a full table has not taken the text, and its last entry stands in for it.
        // Pinned by Vocabulary.AFullTableLendsItsLastIndexToANewName.
        iIndex = table.m_vecStrings.size();
    }
    return iIndex;
}

void CFIVocabulary::AddQName(const std::string& strPrefix, const std::string& strNamespace,
                             const std::string& strLocalName, CIndexMap& map,
                             std::vector<CQNameParts>& vec)
{
    std::string strKey;
    MakeNameKey(strKey, strPrefix, strNamespace, strLocalName);
    if (map.find(strKey) != map.end())
        return;
    unsigned long iPrefix = 0;
    if (!strPrefix.empty())
        iPrefix = ObtainIndex(strPrefix, m_mapPrefixNames, m_tabPrefixNames);
    unsigned long iNamespace = 0;
    if (!strNamespace.empty())
        iNamespace = ObtainIndex(strNamespace, m_mapNamespaceNames, m_tabNamespaceNames);
    const unsigned long iLocalName = ObtainIndex(strLocalName, m_mapLocalNames, m_tabLocalNames);
    AddValueToMap(strKey, map);
    AddQNameToVector(iPrefix, iNamespace, iLocalName, vec);
}

} // namespace QnXmlLib16
