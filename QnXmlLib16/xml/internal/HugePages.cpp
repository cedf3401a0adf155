#include "QnXmlLib16/xml/internal/HugePages.h"

#include <cstdint>

#include <sys/mman.h>

namespace QnXmlLib16 {

constexpr std::size_t kHugePage = std::size_t{2} << 20;

void PreferHugePages(void* pBlock, std::size_t nSize) noexcept
{
    const std::uintptr_t begin = reinterpret_cast<std::uintptr_t>(pBlock);
    const std::size_t nSkip = (kHugePage - begin % kHugePage) % kHugePage;
    if (nSize < nSkip + kHugePage)
        return;
    madvise(static_cast<char*>(pBlock) + nSkip, (nSize - nSkip) / kHugePage * kHugePage,
            MADV_HUGEPAGE);
}

} // namespace QnXmlLib16
