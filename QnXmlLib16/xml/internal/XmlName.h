#pragma once

#include "QnXmlLib16/support/SmartPtr.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace QnXmlLib16 {

// A namespace URI, made once for all names in it, however long it is and however many there are.
// Never changes. Counted without synchronisation, since a tree belongs to one thread.
class CXmlNamespace
{
public:
    explicit CXmlNamespace(std::string_view uri) : m_strURI(uri) {}
    CXmlNamespace(const CXmlNamespace&) = delete;
    CXmlNamespace& operator=(const CXmlNamespace&) = delete;

    const std::string& GetURI() const { return m_strURI; }

    void AddRef() const { ++m_nRefs; }
    void Release() const
    {
        if (--m_nRefs == 0)
            delete this;
    }

private:
    ~CXmlNamespace() = default;

    const std::string m_strURI;
    mutable std::size_t m_nRefs = 0;
};

// A local name with its namespace, made once for all nodes that bear it. Never changes. Counted as
// its namespace is.
class CXmlName
{
public:
    CXmlName(std::string_view localName, CSmartPtr<const CXmlNamespace> pNamespace);
    CXmlName(const CXmlName&) = delete;
    CXmlName& operator=(const CXmlName&) = delete;

    const std::string& GetLocalName() const { return m_strLocalName; }
    const std::string& GetNamespaceURI() const { return m_pNamespace->GetURI(); }
    bool IsNamespaceAttribute() const { return m_bNamespaceAttribute; }
    bool IsNilAttribute() const { return m_bNilAttribute; }

    void AddRef() const { ++m_nRefs; }
    void Release() const
    {
        if (--m_nRefs == 0)
            delete this;
    }

private:
    ~CXmlName() = default;

    const std::string m_strLocalName;
    const CSmartPtr<const CXmlNamespace> m_pNamespace; // never null
    bool m_bNamespaceAttribute;
    bool m_bNilAttribute;
    mutable std::size_t m_nRefs = 0;
};

// Finds names by a text that stands for them: a hash table with linear probing. Looking up a known
// text allocates nothing; where it follows the text that it followed the last time, as names in a
// document mostly do, it is not even hashed. The hash depends on the table's address, so that a
// document can't be made to collide.
class CXmlNameTable
{
public:
    CXmlNameTable();

    // Null if the key is unknown. The first form is for tables whose keys hold no zero bytes.
    const CXmlName* Find(const char* pszKey);
    const CXmlName* Find(std::string_view key);

    // Enters a key that is not in the table yet.
    void Add(std::string_view key, const CSmartPtr<const CXmlName>& pName);

    void Clear();

private:
    struct CSlot
    {
        std::uint64_t hash = 0;
        CSmartPtr<const CXmlName> pName; // null: the slot is free
        std::string strKey;
        std::size_t nFollower = 0; // where the key lay that was looked up next
    };

    std::uint64_t Hash(std::string_view key) const;
    std::size_t FreeSlot(std::uint64_t hash) const;
    void Grow();

    // Invariant: the number of slots is 0 or a power of two, and at most half of them are taken.
    std::vector<CSlot> m_vecSlots;
    std::size_t m_nTaken = 0;
    std::size_t m_nLastFound = 0;
    std::uint64_t m_seed;
};

} // namespace QnXmlLib16
