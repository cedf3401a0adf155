#include "QnXmlLib16/support/internal/StackLeft.h"

#include <cstdint>
#include <pthread.h>

namespace QnXmlLib16 {

namespace {

struct Bounds
{
    std::uintptr_t low = 0;
    std::uintptr_t high = 0;

    Bounds()
    {
        pthread_attr_t attr;
        if (pthread_getattr_np(pthread_self(), &attr) != 0)
            return;
        void* pLow = nullptr;
        std::size_t uSize = 0;
        if (pthread_attr_getstack(&attr, &pLow, &uSize) == 0) {
            low = reinterpret_cast<std::uintptr_t>(pLow);
            high = low + uSize;
        }
        pthread_attr_destroy(&attr);
    }
};

} // namespace

std::size_t StackLeft()
{
    static thread_local const Bounds s_bounds;
    const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    return here > s_bounds.low && here < s_bounds.high ? here - s_bounds.low : 0;
}

} // namespace QnXmlLib16
