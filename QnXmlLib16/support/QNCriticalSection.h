#pragma once

#include "QnXmlLib16/support/Export.h"

#include <pthread.h>

namespace QnXmlLib16 {

// A plain POSIX mutex. It is not recursive: a thread that enters twice waits for itself.
class QNXML_API CQNCriticalSection
{
public:
    CQNCriticalSection();
    ~CQNCriticalSection();
    CQNCriticalSection(const CQNCriticalSection&) = delete;
    CQNCriticalSection& operator=(const CQNCriticalSection&) = delete;

    void Enter();
    void Leave();

private:
    pthread_mutex_t m_mutex;
};

// Holds a critical section for the length of a block, so that whatever throws leaves it free.
class QNXML_API CQNCriticalSectionGuard
{
public:
    explicit CQNCriticalSectionGuard(CQNCriticalSection& section) : m_section(section)
    {
        m_section.Enter();
    }
    ~CQNCriticalSectionGuard() { m_section.Leave(); }
    CQNCriticalSectionGuard(const CQNCriticalSectionGuard&) = delete;
    CQNCriticalSectionGuard& operator=(const CQNCriticalSectionGuard&) = delete;

private:
    CQNCriticalSection& m_section;
};

} // namespace QnXmlLib16
