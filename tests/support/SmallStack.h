#pragma once

#include <cstddef>
#include <functional>
#include <gtest/gtest.h>
#include <pthread.h>

// Runs the action on a thread with the given stack and waits for it: what recurses with the depth
// of a document overruns it.
inline void RunOnSmallStack(std::function<void()> action, std::size_t nStack = 512 * 1024)
{
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    EXPECT_EQ(pthread_attr_setstacksize(&attributes, nStack), 0);
    pthread_t thread{};
    const int iStarted = pthread_create(
        &thread, &attributes,
        [](void* pAction) -> void* {
            (*static_cast<std::function<void()>*>(pAction))();
            return nullptr;
        },
        &action);
    pthread_attr_destroy(&attributes);
    ASSERT_EQ(iStarted, 0);
    pthread_join(thread, nullptr);
}
