#pragma once

#include <cstddef>

namespace QnXmlLib16 {

// What recursion leaves alone for the callers' and the library's other frames, and for the guard
// page.
constexpr std::size_t kStackReserve = 64 * 1024;

// Bytes of this thread's stack below the caller; 0 if it runs on a stack that the thread library
// doesn't know.
std::size_t StackLeft();

} // namespace QnXmlLib16
