#include "QnXmlLib16/xml/internal/XmlName.h"

#include <cstring>

namespace QnXmlLib16 {

namespace {

constexpr std::string_view kInstanceNamespace = "http://www.w3.org/2001/XMLSchema-instance";
constexpr std::string_view kXmlnsNamespace = "http://www.w3.org/2000/xmlns/";

bool SpeaksOfTheDocument(std::string_view namespaceURI)
{
    return namespaceURI == kInstanceNamespace || namespaceURI == kXmlnsNamespace;
}

std::uint64_t Load(const char* p)
{
    std::uint64_t value;
    std::memcpy(&value, p, sizeof value);
    return value;
}

std::uint64_t LoadShort(const char* p, std::size_t nLength)
{
    std::uint64_t value = 0;
    std::memcpy(&value, p, nLength);
    return value;
}

// The two halves of the full product, folded.
std::uint64_t Mix(std::uint64_t a, std::uint64_t b)
{
    const unsigned __int128 product = static_cast<unsigned __int128>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

constexpr std::uint64_t kOdd1 = 0x9E3779B97F4A7C15; // bits of the golden ratio
constexpr std::uint64_t kOdd2 = 0xC2B2AE3D27D4EB4F;

} // namespace

CXmlName::CXmlName(std::string_view localName, std::string_view namespaceURI)
    : m_strLocalName(localName),
      m_strNamespaceURI(namespaceURI),
      m_bNamespaceAttribute(SpeaksOfTheDocument(namespaceURI) &&
                            (localName == "xmlns" || localName == "type" ||
                             localName == "schemaLocation" ||
                             localName == "noNamespaceSchemaLocation")),
      m_bNilAttribute(SpeaksOfTheDocument(namespaceURI) && localName == "nil")
{}

CXmlNameTable::CXmlNameTable() : m_seed(reinterpret_cast<std::uintptr_t>(this) * kOdd1) {}

std::uint64_t CXmlNameTable::Hash(std::string_view key) const
{
    const char* p = key.data();
    std::size_t nLeft = key.size();
    std::uint64_t hash = m_seed ^ nLeft;
    for (; nLeft > 16; p += 16, nLeft -= 16)
        hash = Mix(Load(p) ^ kOdd1 ^ hash, Load(p + 8) ^ kOdd2 ^ m_seed);
    const bool bLong = nLeft >= 8;
    const std::uint64_t first = bLong ? Load(p) : LoadShort(p, nLeft);
    const std::uint64_t last = bLong ? Load(p + nLeft - 8) : 0;
    return Mix(first ^ kOdd1 ^ hash, last ^ kOdd2 ^ m_seed);
}

const CXmlName* CXmlNameTable::Find(std::string_view key) const
{
    if (m_vecSlots.empty())
        return nullptr;
    const std::uint64_t hash = Hash(key);
    const std::size_t nMask = m_vecSlots.size() - 1;
    for (std::size_t n = hash & nMask;; n = (n + 1) & nMask) {
        const CSlot& slot = m_vecSlots[n];
        if (!slot.pName || (slot.hash == hash && slot.strKey == key))
            return slot.pName.GetPtr();
    }
}

std::size_t CXmlNameTable::FreeSlot(std::uint64_t hash) const
{
    const std::size_t nMask = m_vecSlots.size() - 1;
    std::size_t n = hash & nMask;
    while (m_vecSlots[n].pName)
        n = (n + 1) & nMask;
    return n;
}

void CXmlNameTable::Grow()
{
    constexpr std::size_t kFirstSize = 16;
    std::vector<CSlot> vecOld(m_vecSlots.empty() ? kFirstSize : m_vecSlots.size() * 2);
    vecOld.swap(m_vecSlots);
    for (CSlot& slot : vecOld)
        if (slot.pName)
            m_vecSlots[FreeSlot(slot.hash)] = std::move(slot);
}

void CXmlNameTable::Add(std::string_view key, const CSmartPtr<const CXmlName>& pName)
{
    if (m_nTaken * 2 >= m_vecSlots.size())
        Grow();
    std::string strKey(key);
    const std::uint64_t hash = Hash(key);
    CSlot& slot = m_vecSlots[FreeSlot(hash)];
    slot.hash = hash;
    slot.strKey = std::move(strKey);
    slot.pName = pName;
    ++m_nTaken;
}

void CXmlNameTable::Clear()
{
    m_vecSlots = std::vector<CSlot>();
    m_nTaken = 0;
}

} // namespace QnXmlLib16
