#pragma once

#include <cstddef>

namespace QnXmlLib16 {

// Asks the system to back the whole huge pages within a block by such. In a large document one
// fault then does the work of 512; what the faults cost is otherwise near to what parsing costs.
// A wish: nothing else changes, whether it is granted or not.
void PreferHugePages(void* pBlock, std::size_t nSize) noexcept;

} // namespace QnXmlLib16
