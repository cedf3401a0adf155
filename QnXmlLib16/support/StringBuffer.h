#pragma once

#include "QnXmlLib16/support/InstanceMonitor.h"

#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace QnXmlLib16 {

// Growing text in blocks of fixed size: appending never moves what is there. A null text counts
// as empty. Text from this buffer itself may be given as an argument.
// If memory runs out, what was appended up to then stays and the buffer remains usable.
class QNXML_API CStringBuffer : public CInstanceMonitor
{
public:
    CStringBuffer();
    // Blocks hold ulBlockSize - 1 characters and a terminator, and at least one character.
    explicit CStringBuffer(unsigned long ulBlockSize);
    ~CStringBuffer() override;
    CStringBuffer(const CStringBuffer&) = delete;
    CStringBuffer& operator=(const CStringBuffer&) = delete;

    unsigned long GetLength() const { return m_ulTotalLength; }

    // Frees all blocks.
    void Clear();

    // As Clear, but keeps and zeroes a block that is the only one.
    void Empty();

    // The whole text, never null. Joins the blocks into one, so the cost is paid once; valid until
    // the buffer grows or is emptied.
    const char* GetText();

    // The text up to its first zero byte, without joining the blocks.
    std::string CopyText() const;

    void SetText(const char* pszText);

    // The first two stop at the first zero byte.
    void Append(const char* pszText)
    {
        if (pszText)
            Append(pszText, std::strlen(pszText));
    }
    void Append(const std::string& strText) { Append(strText.c_str()); }
    void Append(char c)
    {
        if (m_ulUsed == m_ulCurrentSize)
            AddNewBlock();
        m_pCurrent[m_ulUsed++] = c;
        ++m_ulTotalLength;
    }

    // A counted run, which holds no zero byte.
    void Append(const char* pText, std::size_t uLength)
    {
        if (uLength <= m_ulCurrentSize - m_ulUsed && uLength != 0) {
            std::memcpy(m_pCurrent + m_ulUsed, pText, uLength);
            m_ulUsed += uLength;
            m_ulTotalLength += uLength;
        }
        else {
            AppendAcrossBlocks(pText, uLength);
        }
    }

private:
    struct Block
    {
        std::unique_ptr<char[]> pText; // one byte longer than ulSize, for a terminator
        unsigned long ulSize;
    };

    unsigned long UsedOf(const Block& block) const
    {
        return block.pText.get() == m_pCurrent ? m_ulUsed : block.ulSize;
    }
    void AddNewBlock();
    void AppendAcrossBlocks(const char* pText, std::size_t uLength);

    // Invariant: m_pCurrent is the text of the last block, null without one. All blocks ahead of
    // the last are full; the last holds m_ulUsed of m_ulCurrentSize bytes, zeroes after them.
    std::vector<Block> m_vecBlocks;
    unsigned long m_ulBlockSize;
    unsigned long m_ulUsed = 0;
    unsigned long m_ulCurrentSize = 0;
    char* m_pCurrent = nullptr;
    unsigned long m_ulTotalLength = 0;
};

} // namespace QnXmlLib16
