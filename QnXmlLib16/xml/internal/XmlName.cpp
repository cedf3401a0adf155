#include "QnXmlLib16/xml/internal/XmlName.h"

#include "QnXmlLib16/support/internal/ShortText.h"

#include <cstring>
#include <utility>

namespace QnXmlLib16 {

namespace {

constexpr std::string_view kInstanceNamespace = "http://www.w3.org/2001/XMLSchema-instance";
constexpr std::string_view kXmlnsNamespace = "http://www.w3.org/2000/xmlns/";

bool SpeaksOfTheDocument(std::string_view namespaceURI)
{
    return namespaceURI == kInstanceNamespace || namespaceURI == kXmlnsNamespace;
}

} // namespace

CXmlName::CXmlName(std::string_view localName, CSmartPtr<const CXmlNamespace> pNamespace)
    : m_strLocalName(localName),
      m_pNamespace(std::move(pNamespace)),
      m_bNamespaceAttribute(SpeaksOfTheDocument(GetNamespaceURI()) &&
                            (localName == "xmlns" || localName == "type" ||
                             localName == "schemaLocation" ||
                             localName == "noNamespaceSchemaLocation")),
      m_bNilAttribute(SpeaksOfTheDocument(GetNamespaceURI()) && localName == "nil")
{}

CXmlNameTable::CXmlNameTable() : m_seed(reinterpret_cast<std::uintptr_t>(this) * 0x9E3779B97F4A7C15)
{}

std::uint64_t CXmlNameTable::Hash(std::string_view key) const
{
    return HashText(key, m_seed);
}

const CXmlName* CXmlNameTable::Find(const char* pszKey)
{
    if (m_vecSlots.empty())
        return nullptr;
    const std::size_t nExpected = m_vecSlots[m_nLastFound].nFollower;
    const CSlot& slot = m_vecSlots[nExpected];
    if (!slot.pName || std::strcmp(slot.strKey.c_str(), pszKey) != 0)
        return Find(std::string_view(pszKey));
    m_nLastFound = nExpected;
    return slot.pName.GetPtr();
}

const CXmlName* CXmlNameTable::Find(std::string_view key)
{
    if (m_vecSlots.empty())
        return nullptr;
    const std::uint64_t hash = Hash(key);
    const std::size_t nMask = m_vecSlots.size() - 1;
    for (std::size_t n = hash & nMask;; n = (n + 1) & nMask) {
        const CSlot& slot = m_vecSlots[n];
        if (!slot.pName)
            return nullptr;
        if (slot.hash == hash && slot.strKey == key) {
            m_vecSlots[m_nLastFound].nFollower = n;
            m_nLastFound = n;
            return slot.pName.GetPtr();
        }
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
    m_nLastFound = 0;
    for (CSlot& slot : vecOld) {
        if (!slot.pName)
            continue;
        slot.nFollower = 0; // the keys move
        m_vecSlots[FreeSlot(slot.hash)] = std::move(slot);
    }
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
    m_nLastFound = 0;
}

} // namespace QnXmlLib16
