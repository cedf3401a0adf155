#pragma once

#include "QnXmlLib16/xml/internal/XmlName.h"

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace QnXmlLib16 {

class CXmlDocument;

// What the nodes of one document share: memory, names and the way to the document. The document,
// its elements and every block of memory keep the store alive, so a node that was taken out of the
// tree may outlive all else. Belongs to the thread of its document.
class CXmlNodeStore
{
public:
    static constexpr std::size_t kLargestNode = 160; // nodes must be smaller

    explicit CXmlNodeStore(const CXmlDocument* pDocument) : m_pDocument(pDocument) {}
    CXmlNodeStore(const CXmlNodeStore&) = delete;
    CXmlNodeStore& operator=(const CXmlNodeStore&) = delete;

    void AddRef() { ++m_nRefs; }
    void Release()
    {
        --m_nRefs;
        DeleteIfUnused();
    }

    // Null once the document has died.
    const CXmlDocument* GetDocument() const { return m_pDocument; }
    void ForgetDocument() { m_pDocument = nullptr; }

    // The one name of this store with these two parts. The result lives as long as the table holds
    // it, that is, until Trim, or as long as it is counted.
    const CXmlName* GetName(std::string_view localName, std::string_view namespaceURI);

    // Forgets the names, and frees the memory if no node lies in it.
    void Trim();

    // Memory of a node: freshly from the heap, or from pStore. Behind both stands the same
    // FreeNode, which finds out where the memory came from; nSize is that of a node of a store,
    // the same for each kind of node.
    static void* NewNode(std::size_t nSize);
    static void* NewNode(std::size_t nSize, CXmlNodeStore* pStore);
    static void FreeNode(void* pNode, std::size_t nSize) noexcept;

private:
    // Stands in front of every node.
    union Header
    {
        CXmlNodeStore* pStore; // null: from the heap
        Header* pNextFree;     // while the block is free
    };

    struct Chunk
    {
        Chunk* pNext;
    };

    static constexpr std::size_t kFirstChunk = 4096;
    static constexpr std::size_t kLargestChunk = std::size_t{16} << 20;

    ~CXmlNodeStore() { FreeChunks(); }
    void DeleteIfUnused()
    {
        if (m_nRefs == 0 && m_nBlocks == 0)
            delete this;
    }
    const CXmlNamespace* GetNamespace(std::string_view uri);
    void AddChunk();
    void FreeChunks();

    const CXmlDocument* m_pDocument; // not owned
    std::size_t m_nRefs = 0;
    std::size_t m_nBlocks = 0; // nodes in the chunks
    char* m_pUnused = nullptr; // the unused rest of the newest chunk
    char* m_pEnd = nullptr;
    Chunk* m_pChunks = nullptr; // owned, newest first
    std::size_t m_nSize = 0;    // of all chunks
    std::array<Header*, kLargestNode / sizeof(Header)> m_freeBySize{};
    std::map<std::string_view, CSmartPtr<const CXmlNamespace>> m_namespaces; // keys lie in values
    CSmartPtr<const CXmlNamespace> m_pLastNamespace;
    CXmlNameTable m_names;
    std::string m_strKey; // scratch of GetName; keeps its capacity
};

} // namespace QnXmlLib16
