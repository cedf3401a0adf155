#include "QnXmlLib16/support/QNCriticalSection.h"

namespace QnXmlLib16 {

// With default attributes and a live mutex none of these calls has a failure to report.
CQNCriticalSection::CQNCriticalSection()
{
    pthread_mutex_init(&m_mutex, nullptr);
}

CQNCriticalSection::~CQNCriticalSection()
{
    pthread_mutex_destroy(&m_mutex);
}

void CQNCriticalSection::Enter()
{
    pthread_mutex_lock(&m_mutex);
}

void CQNCriticalSection::Leave()
{
    pthread_mutex_unlock(&m_mutex);
}

} // namespace QnXmlLib16
