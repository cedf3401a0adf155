#include "QnXmlLib16/values/BinaryData.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/values/Base64.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace QnXmlLib16 {

namespace {

using Bytes = std::unique_ptr<unsigned char[]>;

constexpr unsigned long kLeastCapacity = 8192;

// Twice the length is taken in 32 bits: copies of a gigabyte and more reserve little or nothing
// ahead. The capacity is never below the length.
unsigned long CapacityForCopy(unsigned long ulLength)
{
    const int iTwice = static_cast<int>(static_cast<unsigned int>(2 * ulLength));
    const unsigned long ulReserve = iTwice > 0 ? static_cast<unsigned long>(iTwice) : 0;
    return std::max({kLeastCapacity, ulReserve, ulLength});
}

const unsigned char* AsBytes(const char* psz)
{
    return reinterpret_cast<const unsigned char*>(psz);
}

// -1 for all but a hexadecimal digit.
int HexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

int HexDigit(char c)
{
    const int iValue = HexValue(c);
    if (iValue < 0)
        throw CQnException(FormatString("Invalid char in hex string [%c]", c));
    return iValue;
}

} // namespace

// ---- CDataHolder ----

CBinaryData::CDataHolder::CDataHolder(unsigned char* pData, unsigned long ulLength, bool bAdopt)
    : m_pData(pData), m_ulLength(ulLength), m_ulCapacity(ulLength), m_bHasSpareByte(!bAdopt)
{
    if (bAdopt)
        return;
    m_ulCapacity = CapacityForCopy(ulLength);
    m_pData = new unsigned char[m_ulCapacity + 1];
    if (ulLength != 0)
        std::memcpy(m_pData, pData, ulLength);
    m_pData[ulLength] = 0;
}

CBinaryData::CDataHolder::~CDataHolder()
{
    delete[] m_pData;
}

void CBinaryData::CDataHolder::Release(bool bKeepData)
{
    const long lLeft = m_lRefCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (bKeepData) {
        if (lLeft > 0)
            throw CQnException(
                FormatString("Failed to release data. [RefCount=%d]", static_cast<int>(lLeft)));
        m_pData = nullptr;
    }
    else if (lLeft != 0) {
        return;
    }
    delete this;
}

void CBinaryData::CDataHolder::Append(const unsigned char* pData, unsigned long ulLength)
{
    const CQNCriticalSectionGuard guard(m_section);
    if (!IsExclusive())
        throw CQnException(
            FormatString("Failed to append. [RefCount=%d]", static_cast<int>(m_lRefCount.load())));
    if (ulLength != 0)
        AppendExclusive(pData, ulLength);
}

CBinaryData::CDataHolder* CBinaryData::CDataHolder::GetExclusiveCopy()
{
    // The bytes of a shared holder do not change, so they are copied without a lock. If the other
    // holders let go meanwhile, the copy is one too many and nothing else.
    if (IsExclusive())
        return this;
    CDataHolder* pCopy = new CDataHolder(m_pData, m_ulLength, false);
    Release(false);
    return pCopy;
}

void CBinaryData::CDataHolder::AppendExclusive(const unsigned char* pData, unsigned long ulLength)
{
    const unsigned long ulTotal = m_ulLength + ulLength;
    if (m_ulCapacity < ulTotal) {
        MoveToBlock(2 * ulTotal, pData, ulLength);
        return;
    }
    std::memcpy(m_pData + m_ulLength, pData, ulLength);
    m_ulLength = ulTotal;
    m_pData[m_ulLength] = 0;
}

// The extra bytes may lie in the old block, which goes last.
void CBinaryData::CDataHolder::MoveToBlock(unsigned long ulCapacity, const unsigned char* pExtra,
                                           unsigned long ulExtra)
{
    unsigned char* pBlock = new unsigned char[ulCapacity + 1];
    if (m_ulLength != 0)
        std::memcpy(pBlock, m_pData, m_ulLength);
    if (ulExtra != 0)
        std::memcpy(pBlock + m_ulLength, pExtra, ulExtra);
    delete[] m_pData;
    m_pData = pBlock;
    m_ulLength += ulExtra;
    m_ulCapacity = ulCapacity;
    m_bHasSpareByte = true;
    m_pData[m_ulLength] = 0;
}

unsigned char& CBinaryData::CDataHolder::GetSpareByte()
{
    if (!m_bHasSpareByte)
        MoveToBlock(m_ulCapacity, nullptr, 0);
    return m_pData[m_ulLength];
}

// ---- CBinaryData ----

CBinaryData::CBinaryData(unsigned char* pData, unsigned long ulLength, bool bTakeOwnership)
{
    Bytes pOwned(bTakeOwnership ? pData : nullptr);
    if (!pData || ulLength == 0)
        return;
    m_pHolder = new CDataHolder(pData, ulLength, bTakeOwnership);
    static_cast<void>(pOwned.release());
}

CBinaryData::CBinaryData(const char* pszText)
{
    SetBuffer(pszText);
}

CBinaryData::CBinaryData(const CBinaryData& other) : m_pHolder(other.m_pHolder)
{
    if (m_pHolder)
        m_pHolder->AddRef();
}

CBinaryData::~CBinaryData()
{
    Clear();
}

CBinaryData& CBinaryData::operator=(const CBinaryData& other)
{
    Clear();
    m_pHolder = other.m_pHolder;
    if (m_pHolder)
        m_pHolder->AddRef();
    return *this;
}

void CBinaryData::Clear()
{
    if (m_pHolder) {
        m_pHolder->Release(false);
        m_pHolder = nullptr;
    }
}

bool CBinaryData::operator==(const CBinaryData& other) const
{
    if (!m_pHolder || !other.m_pHolder)
        return m_pHolder == other.m_pHolder;
    const unsigned long ulLength = GetLength();
    return ulLength == other.GetLength() &&
           (ulLength == 0 || std::memcmp(GetData(), other.GetData(), ulLength) == 0);
}

const unsigned char& CBinaryData::operator[](unsigned long ulIndex) const
{
    CheckIndex(ulIndex);
    // Reading must not move bytes that others may be looking at.
    static const unsigned char s_uNone = 0;
    if (ulIndex == m_pHolder->m_ulLength && !m_pHolder->m_bHasSpareByte)
        return s_uNone;
    return m_pHolder->m_pData[ulIndex];
}

unsigned char& CBinaryData::operator[](unsigned long ulIndex)
{
    CheckIndex(ulIndex);
    m_pHolder = m_pHolder->GetExclusiveCopy();
    if (ulIndex == m_pHolder->m_ulLength)
        return m_pHolder->GetSpareByte();
    return m_pHolder->m_pData[ulIndex];
}

// The setters keep the old bytes alive until they are done: the argument may lie in them.

void CBinaryData::SetBuffer(const unsigned char* pData, unsigned long ulLength)
{
    const CBinaryData old(*this);
    Clear();
    Append(pData, ulLength);
}

void CBinaryData::SetBuffer(const char* pszText)
{
    SetBuffer(AsBytes(pszText), pszText ? std::strlen(pszText) : 0);
}

void CBinaryData::SetAsBase64(const char* pszText)
{
    const CBinaryData old(*this);
    Clear();
    if (!pszText || *pszText == '\0')
        return;
    Bytes pBytes(new unsigned char[std::strlen(pszText) + 1]);
    const unsigned long ulLength = CBase64().Decode(pszText, pBytes.get());
    m_pHolder = new CDataHolder(pBytes.get(), ulLength, true);
    static_cast<void>(pBytes.release());
}

void CBinaryData::SetAsHexString(const char* pszText)
{
    const CBinaryData old(*this);
    Clear();
    unsigned char* pBytes = nullptr;
    const unsigned long ulLength = ConvertToHexData(pszText, &pBytes);
    *this = CBinaryData(pBytes, ulLength, true);
}

std::string CBinaryData::GetAsBase64() const
{
    // An encoder takes an int: longer values go in pieces of whole groups, which join seamlessly.
    constexpr unsigned long kPiece = 3UL << 28;
    std::string strResult;
    const unsigned char* pData = GetData();
    unsigned long ulLeft = GetLength();
    for (; ulLeft > kPiece; pData += kPiece, ulLeft -= kPiece)
        strResult += CBase64().Encode(pData, static_cast<int>(kPiece));
    if (strResult.empty())
        return CBase64().Encode(pData, static_cast<int>(ulLeft));
    return strResult += CBase64().Encode(pData, static_cast<int>(ulLeft));
}

std::string CBinaryData::GetAsHexString() const
{
    return GetAsHexString(GetData(), GetLength());
}

std::string CBinaryData::GetAsHexString(const unsigned char* pData, unsigned long ulLength)
{
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string strResult;
    if (!pData)
        return strResult;
    strResult.resize(2 * ulLength);
    for (unsigned long i = 0; i < ulLength; ++i) {
        strResult[2 * i] = kDigits[pData[i] >> 4];
        strResult[2 * i + 1] = kDigits[pData[i] & 0x0F];
    }
    return strResult;
}

unsigned long CBinaryData::ConvertToHexData(const char* pszText, unsigned char** ppData)
{
    const unsigned long ulDigits = pszText ? std::strlen(pszText) : 0;
    if (ulDigits % 2 != 0)
        throw CQnException("Invalid length in hex string");
    Bytes pBytes(new unsigned char[ulDigits / 2]);
    for (unsigned long i = 0; i < ulDigits; i += 2) {
        const int iHigh = HexDigit(pszText[i]);
        pBytes[i / 2] = static_cast<unsigned char>(iHigh << 4 | HexDigit(pszText[i + 1]));
    }
    *ppData = pBytes.release();
    return ulDigits / 2;
}

void CBinaryData::Append(const unsigned char* pData, unsigned long ulLength)
{
    if (!pData || ulLength == 0)
        return;
    if (!m_pHolder) {
        m_pHolder = new CDataHolder(const_cast<unsigned char*>(pData), ulLength, false);
    }
    else if (m_pHolder->IsExclusive()) {
        m_pHolder->AppendExclusive(pData, ulLength);
    }
    else {
        const CBinaryData old(*this); // pData may lie in the bytes that are let go
        m_pHolder = m_pHolder->GetExclusiveCopy();
        m_pHolder->AppendExclusive(pData, ulLength);
    }
}

void CBinaryData::Append(const char* pszText)
{
    if (pszText)
        Append(AsBytes(pszText), std::strlen(pszText));
}

void CBinaryData::Append(const CBinaryData& data)
{
    Append(data.GetData(), data.GetLength());
}

unsigned char* CBinaryData::ReleaseData()
{
    if (!m_pHolder)
        return nullptr;
    m_pHolder = m_pHolder->GetExclusiveCopy();
    unsigned char* pData = m_pHolder->GetData();
    m_pHolder->Release(true);
    m_pHolder = nullptr;
    return pData;
}

void CBinaryData::CheckIndex(unsigned long ulIndex) const
{
    if (!m_pHolder || ulIndex > m_pHolder->m_ulLength)
        throw CQnException(FormatString("Index Out of range [%d]", static_cast<int>(ulIndex)));
}

} // namespace QnXmlLib16
