#include "QnXmlLib16/fastinfoset/FIVocabulary.h"

#include "QnXmlLib16/fastinfoset/internal/NameKey.h"
#include "QnXmlLib16/support/internal/ShortText.h"

#include <algorithm>

namespace QnXmlLib16 {

namespace {

constexpr std::size_t kMaxEntries = 1048576; // of a map and of a table

const char* const kXmlPrefix = "xml";
const char* const kXmlNamespace = "http://www.w3.org/XML/1998/namespace";

} // namespace

CFIVocabulary::CIndexMap::CIndexMap()
    : m_uSeed(reinterpret_cast<std::uintptr_t>(this) * 0x9E3779B97F4A7C15)
{}

CFIVocabulary::CIndexMap::CIndexMap(const CIndexMap& other) = default;

CFIVocabulary::CIndexMap& CFIVocabulary::CIndexMap::operator=(const CIndexMap& other) = default;

CFIVocabulary::CIndexMap::~CIndexMap() = default;

std::uint32_t CFIVocabulary::CIndexMap::Hash(std::string_view key) const
{
    return static_cast<std::uint32_t>(HashText(key, m_uSeed));
}

unsigned long CFIVocabulary::CIndexMap::Find(std::string_view key) const
{
    if (m_vecSlots.empty())
        return 0;
    const std::uint32_t uHash = Hash(key);
    const std::size_t nMask = m_vecSlots.size() - 1;
    for (std::size_t n = uHash & nMask;; n = (n + 1) & nMask) {
        const Slot slot = m_vecSlots[n];
        if (slot.uIndex == 0 || (slot.uHash == uHash && EqualText(GetKey(slot.uIndex), key)))
            return slot.uIndex;
    }
}

void CFIVocabulary::CIndexMap::Enter(const Slot& slot)
{
    const std::size_t nMask = m_vecSlots.size() - 1;
    std::size_t n = slot.uHash & nMask;
    while (m_vecSlots[n].uIndex != 0)
        n = (n + 1) & nMask;
    m_vecSlots[n] = slot;
}

void CFIVocabulary::CIndexMap::Add(std::string_view key)
{
    constexpr std::size_t kFirstSize = 16;
    if (m_vecKeys.size() * 2 >= m_vecSlots.size()) {
        std::vector<Slot> vecOld(std::max(kFirstSize, m_vecSlots.size() * 2));
        vecOld.swap(m_vecSlots);
        for (const Slot& slot : vecOld)
            if (slot.uIndex != 0)
                Enter(slot);
    }
    m_vecKeys.emplace_back(key);
    Enter({Hash(key), static_cast<std::uint32_t>(m_vecKeys.size())});
}

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
    const unsigned long iFound = map.Find(strKey);
    if (iFound == 0)
        return false;
    iIndex = iFound;
    return true;
}

bool CFIVocabulary::FindIndex(const CTextMap& map, const std::string& strKey,
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
    if (map.size() < kMaxEntries && map.Find(strKey) == 0)
        map.Add(strKey);
}

void CFIVocabulary::AddValueToMap(const std::string& strKey, CTextMap& map) const
{
    if (map.size() < kMaxEntries)
        map.try_emplace(strKey, map.size() + 1);
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
    if (map.Find(strValue) != 0)
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

// A qualified name on its way into a map, of either kind, and a vector.
struct CFIVocabulary::NameEntry
{
    const std::string& strPrefix;
    const std::string& strNamespace;
    const std::string& strLocalName;

    template <class TMap>
    void AddTo(CFIVocabulary& vocabulary, TMap& map, std::vector<CQNameParts>& vec) const
    {
        std::string strKey;
        MakeNameKey(strKey, strPrefix, strNamespace, strLocalName);
        unsigned long iKnown = 0;
        if (vocabulary.FindIndex(map, strKey, iKnown))
            return;
        unsigned long iPrefix = 0;
        if (!strPrefix.empty())
            iPrefix = vocabulary.ObtainIndex(strPrefix, vocabulary.m_mapPrefixNames,
                                             vocabulary.m_tabPrefixNames);
        unsigned long iNamespace = 0;
        if (!strNamespace.empty())
            iNamespace = vocabulary.ObtainIndex(strNamespace, vocabulary.m_mapNamespaceNames,
                                                vocabulary.m_tabNamespaceNames);
        const unsigned long iLocalName = vocabulary.ObtainIndex(
            strLocalName, vocabulary.m_mapLocalNames, vocabulary.m_tabLocalNames);
        vocabulary.AddValueToMap(strKey, map);
        vocabulary.AddQNameToVector(iPrefix, iNamespace, iLocalName, vec);
    }
};

void CFIVocabulary::AddAttribute(const std::string& strPrefix, const std::string& strNamespace,
                                 const std::string& strLocalName)
{
    NameEntry{strPrefix, strNamespace, strLocalName}.AddTo(*this, m_mapAttributeNames,
                                                           m_tabAttributeNames.m_vecNames);
}

void CFIVocabulary::AddElement(const std::string& strPrefix, const std::string& strNamespace,
                               const std::string& strLocalName)
{
    NameEntry{strPrefix, strNamespace, strLocalName}.AddTo(*this, m_mapElementNames,
                                                           m_tabElementNames.m_vecNames);
}

void CFIVocabulary::AddQName(const std::string& strPrefix, const std::string& strNamespace,
                             const std::string& strLocalName, CTextMap& map,
                             std::vector<CQNameParts>& vec)
{
    NameEntry{strPrefix, strNamespace, strLocalName}.AddTo(*this, map, vec);
}

} // namespace QnXmlLib16
