#pragma once

#include "QnXmlLib16/support/Export.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace QnXmlLib16 {

// The string and name tables of a Fast Infoset document (ITU-T X.891): maps from text to index,
// which a writer searches, and tables from index to text, which a reader indexes. Indexes start at
// 1, 0 stands for absent and for the empty text, and entry n lies in vector slot n - 1.
//
// A map and a table hold 1048576 entries at most; what is added to a full one is dropped without a
// failure. A value: copies share nothing. No locks; one that nobody changes may be read by many.
class QNXML_API CFIVocabulary
{
public:
    // One entry of a name table; the indexes are those of the prefix, namespace name and local
    // name tables.
    struct CQNameParts
    {
        unsigned long m_iPrefix;    // 0: none
        unsigned long m_iNamespace; // 0: none
        unsigned long m_iLocalName;
    };

    // A map of a caller's own, from text to index.
    using CTextMap = std::map<std::string, unsigned long>;

    // What the maps in here are: from text to index, in the order of entry from 1 on. A hash table
    // with linear probing; looking up a text allocates nothing. A value.
    class QNXML_API CIndexMap
    {
    public:
        CIndexMap();
        CIndexMap(const CIndexMap& other);
        CIndexMap& operator=(const CIndexMap& other);
        ~CIndexMap();

        std::size_t size() const { return m_vecKeys.size(); }

        // 0 for a key that is not there.
        unsigned long Find(std::string_view key) const;

        // The key of an index that is in use.
        const std::string& GetKey(unsigned long iIndex) const { return m_vecKeys[iIndex - 1]; }

        // Enters a key that is not there yet.
        void Add(std::string_view key);

    private:
        struct Slot
        {
            std::uint32_t uHash;
            std::uint32_t uIndex; // 0: free
        };

        std::uint32_t Hash(std::string_view key) const;
        void Enter(const Slot& slot);

        // Invariant: the number of slots is 0 or a power of two, and at most half of them are
        // taken.
        std::vector<Slot> m_vecSlots;
        std::vector<std::string> m_vecKeys; // by index, less one
        std::uint64_t m_uSeed;
    };

    class QNXML_API CFIStringTable
    {
    public:
        CFIStringTable() = default;
        CFIStringTable(const CFIStringTable&) = default;
        CFIStringTable& operator=(const CFIStringTable&) = default;
        virtual ~CFIStringTable();

        std::vector<std::string>::const_iterator begin() const { return m_vecStrings.begin(); }
        std::vector<std::string>::const_iterator end() const { return m_vecStrings.end(); }

    private:
        friend class CFIVocabulary;
        friend class CFastInfosetReader;

        std::vector<std::string> m_vecStrings;
    };

    class QNXML_API CFIQNameTable
    {
    public:
        CFIQNameTable() = default;
        CFIQNameTable(const CFIQNameTable&) = default;
        CFIQNameTable& operator=(const CFIQNameTable&) = default;
        virtual ~CFIQNameTable();

        std::vector<CQNameParts>::const_iterator begin() const { return m_vecNames.begin(); }
        std::vector<CQNameParts>::const_iterator end() const { return m_vecNames.end(); }

    private:
        friend class CFIVocabulary;
        friend class CFastInfosetReader;

        std::vector<CQNameParts> m_vecNames;
    };

    // Holds what X.891 builds in: prefix "xml" and its namespace, each at index 1, and the
    // restricted alphabets 1 (numeric) and 2 (date and time).
    CFIVocabulary();
    CFIVocabulary(const CFIVocabulary& other);
    CFIVocabulary& operator=(const CFIVocabulary& other);
    virtual ~CFIVocabulary();

    const CFIQNameTable& GetAttributeNamesTable() const { return m_tabAttributeNames; }
    const CFIStringTable& GetAttributeValuesTable() const { return m_tabAttributeValues; }
    const CFIQNameTable& GetElementNamesTable() const { return m_tabElementNames; }
    const CFIStringTable& GetCharacterChunksTable() const { return m_tabCharacterChunks; }
    const CFIStringTable& GetLocalNamesTable() const { return m_tabLocalNames; }
    const CFIStringTable& GetNamespaceNamesTable() const { return m_tabNamespaceNames; }
    const CFIStringTable& GetPrefixNamesTable() const { return m_tabPrefixNames; }
    CFIQNameTable& GetAttributeNamesTable() { return m_tabAttributeNames; }
    CFIStringTable& GetAttributeValuesTable() { return m_tabAttributeValues; }
    CFIQNameTable& GetElementNamesTable() { return m_tabElementNames; }
    CFIStringTable& GetCharacterChunksTable() { return m_tabCharacterChunks; }
    CFIStringTable& GetLocalNamesTable() { return m_tabLocalNames; }
    CFIStringTable& GetNamespaceNamesTable() { return m_tabNamespaceNames; }
    CFIStringTable& GetPrefixNamesTable() { return m_tabPrefixNames; }

    // False, with iIndex untouched, for a key that the map doesn't hold.
    bool FindIndex(const CTextMap& map, const std::string& strKey, unsigned long& iIndex) const;
    bool FindPrefixNameIndex(const std::string& strPrefix, unsigned long& iIndex) const;
    bool FindNamespaceNameIndex(const std::string& strNamespace, unsigned long& iIndex) const;
    bool FindLocalNameIndex(const std::string& strLocalName, unsigned long& iIndex) const;

    // Enters the key under the next index. A key that is there keeps its index.
    void AddValueToMap(const std::string& strKey, CTextMap& map) const;

    // These append, whether or not the vector holds the entry already.
    void AddValueToVector(const std::string& strValue, std::vector<std::string>& vec) const;
    void AddQNameToVector(unsigned long iPrefix, unsigned long iNamespace, unsigned long iLocalName,
                          std::vector<CQNameParts>& vec) const;

    // Each enters a text in its map and in its table, unless the map holds it: the two keep one
    // numbering. Elements' values are the character chunks.
    void AddAttributeValue(const std::string& strValue);
    void AddElementValue(const std::string& strValue);
    void AddPrefixName(const std::string& strPrefix);
    void AddNamespaceName(const std::string& strNamespace);
    void AddLocalName(const std::string& strLocalName);

    // Each enters a qualified name, its parts first where they are new. Prefix and namespace may be
    // empty. Elements and attributes have name tables of their own.
    void AddAttribute(const std::string& strPrefix, const std::string& strNamespace,
                      const std::string& strLocalName);
    void AddElement(const std::string& strPrefix, const std::string& strNamespace,
                    const std::string& strLocalName);

    // Enters a qualified name in a map and a vector, unless the map holds it. A part that its own
    // full table doesn't take gets the index of that table's last entry.
    void AddQName(const std::string& strPrefix, const std::string& strNamespace,
                  const std::string& strLocalName, CTextMap& map, std::vector<CQNameParts>& vec);

private:
    friend class CFastInfosetReader;
    friend class CFastInfosetWriter;

    struct NameEntry;

    bool FindIndex(const CIndexMap& map, const std::string& strKey, unsigned long& iIndex) const;
    void AddValueToMap(const std::string& strKey, CIndexMap& map) const;
    void AddValue(const std::string& strValue, CIndexMap& map, CFIStringTable& table);
    unsigned long ObtainIndex(const std::string& strValue, CIndexMap& map, CFIStringTable& table);

    std::vector<std::string> m_vecRestrictedAlphabets; // number n in slot n - 1
    CIndexMap m_mapAttributeNames;                     // by MakeNameKey
    CIndexMap m_mapAttributeValues;
    CIndexMap m_mapElementNames; // by MakeNameKey
    CIndexMap m_mapCharacterChunks;
    CIndexMap m_mapLocalNames;
    CIndexMap m_mapNamespaceNames;
    CIndexMap m_mapPrefixNames;
    CFIQNameTable m_tabAttributeNames;
    CFIStringTable m_tabAttributeValues;
    CFIQNameTable m_tabElementNames;
    CFIStringTable m_tabCharacterChunks;
    CFIStringTable m_tabLocalNames;
    CFIStringTable m_tabNamespaceNames;
    CFIStringTable m_tabPrefixNames;
};

} // namespace QnXmlLib16
