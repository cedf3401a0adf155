#include "QnXmlLib16/support/StringBuffer.h"

#include <algorithm>

namespace QnXmlLib16 {

CStringBuffer::CStringBuffer() : CInstanceMonitor("CStringBuffer"), m_ulBlockSize(4095) {}

CStringBuffer::CStringBuffer(unsigned long ulBlockSize)
    : CInstanceMonitor("CStringBuffer"), m_ulBlockSize(ulBlockSize > 2 ? ulBlockSize - 1 : 1)
{}

CStringBuffer::~CStringBuffer() = default;

void CStringBuffer::Clear()
{
    m_vecBlocks.clear();
    m_ulUsed = 0;
    m_ulCurrentSize = 0;
    m_pCurrent = nullptr;
    m_ulTotalLength = 0;
}

void CStringBuffer::Empty()
{
    if (m_vecBlocks.size() != 1) {
        Clear();
        return;
    }
    std::memset(m_pCurrent, 0, m_ulUsed);
    m_ulUsed = 0;
    m_ulTotalLength = 0;
}

const char* CStringBuffer::GetText()
{
    if (m_vecBlocks.empty())
        return "";
    if (m_vecBlocks.size() > 1) {
        Block whole{std::unique_ptr<char[]>(new char[m_ulTotalLength + 1]), m_ulTotalLength};
        char* pEnd = whole.pText.get();
        for (const Block& block : m_vecBlocks) {
            std::memcpy(pEnd, block.pText.get(), UsedOf(block));
            pEnd += UsedOf(block);
        }
        *pEnd = '\0';
        m_vecBlocks.erase(m_vecBlocks.begin() + 1, m_vecBlocks.end());
        m_vecBlocks.front() = std::move(whole);
        m_pCurrent = m_vecBlocks.front().pText.get();
        m_ulUsed = m_ulCurrentSize = m_ulTotalLength;
    }
    return m_pCurrent;
}

std::string CStringBuffer::CopyText() const
{
    std::string strText;
    strText.reserve(m_ulTotalLength);
    for (const Block& block : m_vecBlocks)
        strText.append(block.pText.get(), UsedOf(block));
    strText.resize(std::min(strText.size(), strText.find('\0')));
    return strText;
}

void CStringBuffer::SetText(const char* pszText)
{
    // The text may lie in the old blocks: these go last.
    std::vector<Block> vecOld;
    vecOld.swap(m_vecBlocks);
    Clear();
    Append(pszText);
}

void CStringBuffer::AddNewBlock()
{
    m_vecBlocks.push_back(
        Block{std::unique_ptr<char[]>(new char[m_ulBlockSize + 1]()), m_ulBlockSize});
    m_pCurrent = m_vecBlocks.back().pText.get();
    m_ulCurrentSize = m_ulBlockSize;
    m_ulUsed = 0;
}

void CStringBuffer::AppendAcrossBlocks(const char* pText, std::size_t uLength)
{
    while (uLength != 0) {
        if (m_ulUsed == m_ulCurrentSize)
            AddNewBlock();
        const std::size_t uPiece = std::min<std::size_t>(uLength, m_ulCurrentSize - m_ulUsed);
        std::memcpy(m_pCurrent + m_ulUsed, pText, uPiece);
        m_ulUsed += uPiece;
        m_ulTotalLength += uPiece;
        pText += uPiece;
        uLength -= uPiece;
    }
}

} // namespace QnXmlLib16
