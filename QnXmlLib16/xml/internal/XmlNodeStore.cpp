#include "QnXmlLib16/xml/internal/XmlNodeStore.h"

#include "QnXmlLib16/xml/internal/HugePages.h"

#include <algorithm>
#include <new>
#include <utility>

#include <sanitizer/asan_interface.h>

namespace QnXmlLib16 {

const CXmlName* CXmlNodeStore::GetName(std::string_view localName, std::string_view namespaceURI)
{
    const CXmlNamespace* const pNamespace = GetNamespace(namespaceURI);
    m_strKey.assign(reinterpret_cast<const char*>(&pNamespace), sizeof pNamespace);
    m_strKey.append(localName);
    if (const CXmlName* pKnown = m_names.Find(std::string_view(m_strKey)))
        return pKnown;
    const CSmartPtr<const CXmlName> pName = new CXmlName(localName, pNamespace);
    m_names.Add(m_strKey, pName);
    return pName.GetPtr();
}

const CXmlNamespace* CXmlNodeStore::GetNamespace(std::string_view uri)
{
    if (!m_pLastNamespace || m_pLastNamespace->GetURI() != uri) {
        auto it = m_namespaces.find(uri);
        if (it == m_namespaces.end()) {
            CSmartPtr<const CXmlNamespace> pNew = new CXmlNamespace(uri);
            const std::string_view key = pNew->GetURI();
            it = m_namespaces.emplace(key, std::move(pNew)).first;
        }
        m_pLastNamespace = it->second;
    }
    return m_pLastNamespace.GetPtr();
}

void CXmlNodeStore::Trim()
{
    m_names.Clear();
    m_pLastNamespace = nullptr;
    m_namespaces.clear();
    if (m_nBlocks == 0)
        FreeChunks();
}

// Each chunk doubles the store, up to the largest; what is not used of it is not resident. Only the
// largest get huge pages, so that these waste an eighth of the memory at most.
void CXmlNodeStore::AddChunk()
{
    const std::size_t nSize = std::clamp(m_nSize, kFirstChunk, kLargestChunk);
    void* pMemory = ::operator new(nSize);
    if (nSize == kLargestChunk)
        PreferHugePages(pMemory, nSize);
    m_pChunks = new (pMemory) Chunk{m_pChunks};
    m_nSize += nSize;
    m_pUnused = reinterpret_cast<char*>(m_pChunks + 1);
    m_pEnd = static_cast<char*>(pMemory) + nSize;
}

void CXmlNodeStore::FreeChunks()
{
    while (Chunk* pChunk = m_pChunks) {
        m_pChunks = pChunk->pNext;
        ::operator delete(pChunk);
    }
    m_pUnused = m_pEnd = nullptr;
    m_nSize = 0;
    m_freeBySize.fill(nullptr);
}

void* CXmlNodeStore::NewNode(std::size_t nSize)
{
    // 16 bytes keep the alignment that `new` promises.
    char* pNode = static_cast<char*>(::operator new(nSize + 16)) + 16;
    reinterpret_cast<Header*>(pNode)[-1].pStore = nullptr;
    return pNode;
}

void* CXmlNodeStore::NewNode(std::size_t nSize, CXmlNodeStore* pStore)
{
    Header*& pFree = pStore->m_freeBySize[nSize / sizeof(Header)];
    Header* pBlock = pFree;
    if (pBlock) {
        pFree = pBlock->pNextFree;
        ASAN_UNPOISON_MEMORY_REGION(pBlock + 1, nSize);
    }
    else {
        const std::size_t nBlock = sizeof(Header) + nSize;
        if (static_cast<std::size_t>(pStore->m_pEnd - pStore->m_pUnused) < nBlock)
            pStore->AddChunk();
        pBlock = reinterpret_cast<Header*>(pStore->m_pUnused);
        pStore->m_pUnused += nBlock;
    }
    pBlock->pStore = pStore;
    ++pStore->m_nBlocks;
    return pBlock + 1;
}

void CXmlNodeStore::FreeNode(void* pNode, std::size_t nSize) noexcept
{
    if (!pNode)
        return;
    Header* pBlock = static_cast<Header*>(pNode) - 1;
    CXmlNodeStore* pStore = pBlock->pStore;
    if (!pStore) {
        ::operator delete(static_cast<char*>(pNode) - 16);
        return;
    }
    ASAN_POISON_MEMORY_REGION(pNode, nSize);
    Header*& pFree = pStore->m_freeBySize[nSize / sizeof(Header)];
    pBlock->pNextFree = pFree;
    pFree = pBlock;
    --pStore->m_nBlocks;
    pStore->DeleteIfUnused();
}

} // namespace QnXmlLib16
