#pragma once

#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/support/QNCriticalSection.h"

#include <atomic>
#include <string>

namespace QnXmlLib16 {

// The value type for bytes: a handle on a counted holder, or on none when empty. Copies share the
// bytes; a write makes a private copy first. Handles on one holder may be copied and dropped on
// different threads; one handle belongs to one thread at a time. A null text or null data counts
// as empty. Bytes of this value itself may be given as an argument.
class QNXML_API CBinaryData
{
public:
    // The bytes with their count of references, which starts at 1. Made with new; destroys itself.
    class QNXML_API CDataHolder
    {
    public:
        // Adopts pData (array new), or copies it into a block of at least 8192 bytes.
        CDataHolder(unsigned char* pData, unsigned long ulLength, bool bAdopt);
        CDataHolder(const CDataHolder&) = delete;
        CDataHolder& operator=(const CDataHolder&) = delete;

        void AddRef() { m_lRefCount.fetch_add(1, std::memory_order_relaxed); }

        // Gives one reference back; with the last one the holder goes, and its bytes too unless
        // bKeepData. Throws CQnException if bKeepData and references are left: the count has
        // dropped by one even so.
        void Release(bool bKeepData);

        unsigned char* GetData() const { return m_pData; }
        unsigned long GetLength() const { return m_ulLength; }

        // Throws CQnException while the holder is shared.
        void Append(const unsigned char* pData, unsigned long ulLength);

        // This holder if the caller has the only reference; otherwise a new one with a copy of
        // the bytes, and the caller's reference on this one is given back.
        CDataHolder* GetExclusiveCopy();

    private:
        friend class CBinaryData;

        ~CDataHolder();

        bool IsExclusive() const { return m_lRefCount.load(std::memory_order_acquire) < 2; }
        void AppendExclusive(const unsigned char* pData, unsigned long ulLength);
        void MoveToBlock(unsigned long ulCapacity, const unsigned char* pExtra,
                         unsigned long ulExtra);
        // The byte after the last one; gives the block room for it if there is none.
        unsigned char& GetSpareByte();

        unsigned char* m_pData;     // owned, array new
        unsigned long m_ulLength;   // in bytes
        unsigned long m_ulCapacity; // in bytes, never below m_ulLength
        std::atomic<long> m_lRefCount{1};
        CQNCriticalSection m_section; // serialises Append by way of a bare holder

        // Whether the block is one byte longer than its capacity. True of every block that the
        // holder allocates; the byte after the last one is 0 then until somebody writes it. An
        // adopted block is exactly full, so the first byte appended moves it.
        bool m_bHasSpareByte;
    };

    CBinaryData() = default;
    // bTakeOwnership: pData comes from array new, and is freed at once if ulLength is 0.
    CBinaryData(unsigned char* pData, unsigned long ulLength, bool bTakeOwnership);
    CBinaryData(const char* pszText); // the bytes ahead of the terminator
    CBinaryData(const CBinaryData& other);
    virtual ~CBinaryData();

    // Deliberate: clears first and reads the other handle after, so a = a empties a. Pinned by
    // BinaryData.CopiesShareUntilOneIsWritten.
    CBinaryData& operator=(const CBinaryData& other);

    void Clear();

    // Null and 0 when empty. The bytes may be shared: write by way of operator[].
    unsigned char* GetData() const { return m_pHolder ? m_pHolder->GetData() : nullptr; }
    unsigned long GetLength() const { return m_pHolder ? m_pHolder->GetLength() : 0; }

    // A value without a holder and one with a holder of no bytes differ: what
    // SetAsHexString("") and SetAsBase64("!") leave is not equal.
    bool operator==(const CBinaryData& other) const;
    bool operator!=(const CBinaryData& other) const { return !(*this == other); }

    // Deliberate: the index GetLength() is admitted and gives a spare byte. Any index beyond, and
    // any index on an empty value, throws CQnException "Index Out of range [%d]". The second form
    // makes the bytes private first. Pinned by BinaryData.TheIndexAfterTheLastByteIsAdmitted.
    const unsigned char& operator[](unsigned long ulIndex) const;
    unsigned char& operator[](unsigned long ulIndex);

    // Replace the value by a copy of the bytes.
    void SetBuffer(const unsigned char* pData, unsigned long ulLength);
    void SetBuffer(const char* pszText);

    // Base 64 (RFC 4648) by the lenient rules of CBase64::Decode. Bad text gives a value with a
    // holder of no bytes, and no exception.
    void SetAsBase64(const char* pszText);

    // Throws as ConvertToHexData; the value is empty then.
    void SetAsHexString(const char* pszText);

    std::string GetAsBase64() const;

    // Two upper-case hexadecimal digits a byte.
    std::string GetAsHexString() const;
    static std::string GetAsHexString(const unsigned char* pData, unsigned long ulLength);

    // Stores a new block (array new, the caller's) in *ppData and returns its count of bytes.
    // Throws CQnException "Invalid length in hex string" or "Invalid char in hex string [%c]";
    // *ppData stays as it was then.
    static unsigned long ConvertToHexData(const char* pszText, unsigned char** ppData);

    void Append(const unsigned char* pData, unsigned long ulLength);
    void Append(unsigned char uByte)
    {
        if (m_pHolder && m_pHolder->m_ulLength < m_pHolder->m_ulCapacity &&
            m_pHolder->IsExclusive()) {
            m_pHolder->m_pData[m_pHolder->m_ulLength++] = uByte;
            m_pHolder->m_pData[m_pHolder->m_ulLength] = 0;
        }
        else {
            Append(&uByte, 1);
        }
    }
    void Append(char c) { Append(static_cast<unsigned char>(c)); }
    void Append(const char* pszText);
    // Deliberate: goes by the terminator, so bytes from the first NUL on are lost. Pinned by
    // BinaryData.AppendingAStringStopsAtItsFirstNul.
    void Append(const std::string& strText) { Append(strText.c_str()); }
    void Append(const CBinaryData& data);

    // Empties the value and gives its bytes to the caller (array delete), a private copy if they
    // are shared; null when there is no holder.
    unsigned char* ReleaseData();

private:
    void CheckIndex(unsigned long ulIndex) const;

    CDataHolder* m_pHolder = nullptr; // one counted reference
};

} // namespace QnXmlLib16
