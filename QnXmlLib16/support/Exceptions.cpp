#include "QnXmlLib16/support/Exceptions.h"

#include <utility>

namespace QnXmlLib16 {

namespace {

// The link that is being copied without the links behind it. Clone() is the only virtual way to
// copy a link, and it copies the whole chain: CopyChain() walks the chain and uses this to get
// one link at a time, so that the stack does not grow with the chain.
thread_local const CQnException* t_pAlone = nullptr;

class AloneGuard
{
public:
    explicit AloneGuard(const CQnException* pLink) : m_pBefore(std::exchange(t_pAlone, pLink)) {}
    ~AloneGuard() { t_pAlone = m_pBefore; }
    AloneGuard(const AloneGuard&) = delete;
    AloneGuard& operator=(const AloneGuard&) = delete;

private:
    const CQnException* const m_pBefore;
};

} // namespace

CQnException::CQnException() = default;

CQnException::CQnException(std::string strMessage) : m_strMessage(std::move(strMessage)) {}

CQnException::CQnException(std::string strMessage, const CQnException& inner)
    : m_strMessage(std::move(strMessage)), m_pInnerException(inner.Clone())
{}

CQnException::CQnException(std::string strMessage, std::string strPath)
    : m_strMessage(std::move(strMessage)), m_strPath(std::move(strPath))
{
    if (!m_strPath.empty())
        m_strMessage.append("\nPath: ").append(m_strPath);
}

CQnException::CQnException(std::string strMessage, std::string strPath, const CQnException& inner)
    : CQnException(std::move(strMessage), std::move(strPath))
{
    m_pInnerException.reset(inner.Clone());
}

CQnException::CQnException(const CQnException& other)
    : m_strMessage(other.m_strMessage),
      m_strPath(other.m_strPath),
      m_pInnerException(CopyChain(other))
{}

CQnException::~CQnException()
{
    // Each link is cut off ahead of its destruction: the stack does not grow with the chain.
    std::unique_ptr<CQnException> pLink = std::move(m_pInnerException);
    while (pLink)
        pLink = std::move(pLink->m_pInnerException);
}

CQnException* CQnException::Clone() const
{
    return new CQnException(*this);
}

CQnException& CQnException::operator=(const CQnException& other)
{
    std::string strMessage = other.m_strMessage;
    std::unique_ptr<CQnException> pInner = CopyChain(other);

    m_strMessage.swap(strMessage);
    // Deliberate: the path stays, and the inner exception held before is let go without being
    // freed. A pointer that GetInnerException() gave out thus outlives the assignment, and who
    // holds it owns it. Pinned by ExceptionAssignment.KeepsThePathAndLetsTheOldInnerExceptionGo.
    static_cast<void>(m_pInnerException.release());
    m_pInnerException = std::move(pInner);
    return *this;
}

std::string CQnException::GetMessage() const
{
    return m_strMessage;
}

std::string CQnException::GetFullMessage() const
{
    std::string strResult = m_strMessage;
    for (const CQnException* p = m_pInnerException.get(); p; p = p->m_pInnerException.get())
        strResult.append(1, '\n').append(p->m_strMessage);
    return strResult;
}

std::string CQnException::GetPath() const
{
    return m_strPath;
}

CQnException* CQnException::GetInnerException() const
{
    return m_pInnerException.get();
}

std::unique_ptr<CQnException> CQnException::CopyChain(const CQnException& outer)
{
    std::unique_ptr<CQnException> pHead;
    if (&outer == t_pAlone)
        return pHead;
    std::unique_ptr<CQnException>* ppEnd = &pHead;
    for (const CQnException* p = outer.m_pInnerException.get(); p; p = p->m_pInnerException.get()) {
        const AloneGuard guard(p);
        ppEnd->reset(p->Clone());
        ppEnd = &(*ppEnd)->m_pInnerException;
    }
    return pHead;
}

CQnValidationException::CQnValidationException() = default;

CQnValidationException::CQnValidationException(std::string strMessage, std::string strPath)
    : CQnException(std::move(strMessage), std::move(strPath))
{}

CQnValidationException::CQnValidationException(std::string strMessage, std::string strPath,
                                               const CQnException& inner)
    : CQnException(std::move(strMessage), std::move(strPath), inner)
{}

CQnValidationException::CQnValidationException(const CQnException& other) : CQnException(other) {}

CQnValidationException::~CQnValidationException() = default;

CQnValidationException* CQnValidationException::Clone() const
{
    return new CQnValidationException(*this);
}

CQnInvalidValueException::CQnInvalidValueException() = default;

CQnInvalidValueException::CQnInvalidValueException(std::string strMessage)
    : CQnValidationException(std::move(strMessage), std::string())
{}

CQnInvalidValueException::CQnInvalidValueException(std::string strMessage,
                                                   const CQnException& inner)
    : CQnValidationException(std::move(strMessage), std::string(), inner)
{}

CQnInvalidValueException::CQnInvalidValueException(const CQnException& other)
    : CQnValidationException(other)
{}

CQnInvalidValueException::~CQnInvalidValueException() = default;

CQnInvalidValueException* CQnInvalidValueException::Clone() const
{
    return new CQnInvalidValueException(*this);
}

CQnInvalidNamespaceException::CQnInvalidNamespaceException() = default;

CQnInvalidNamespaceException::CQnInvalidNamespaceException(std::string strMessage,
                                                           std::string strPath)
    : CQnValidationException(std::move(strMessage), std::move(strPath))
{}

CQnInvalidNamespaceException::CQnInvalidNamespaceException(std::string strMessage,
                                                           std::string strPath,
                                                           const CQnException& inner)
    : CQnValidationException(std::move(strMessage), std::move(strPath), inner)
{}

CQnInvalidNamespaceException::CQnInvalidNamespaceException(const CQnException& other)
    : CQnValidationException(other)
{}

CQnInvalidNamespaceException::~CQnInvalidNamespaceException() = default;

CQnInvalidNamespaceException* CQnInvalidNamespaceException::Clone() const
{
    return new CQnInvalidNamespaceException(*this);
}

CQnInvalidStateException::CQnInvalidStateException() = default;

CQnInvalidStateException::CQnInvalidStateException(std::string strMessage)
    : CQnException(std::move(strMessage))
{}

CQnInvalidStateException::CQnInvalidStateException(std::string strMessage,
                                                   const CQnException& inner)
    : CQnException(std::move(strMessage), inner)
{}

CQnInvalidStateException::CQnInvalidStateException(const CQnException& other) : CQnException(other)
{}

CQnInvalidStateException::~CQnInvalidStateException() = default;

CQnInvalidStateException* CQnInvalidStateException::Clone() const
{
    return new CQnInvalidStateException(*this);
}

CQnInvalidParamException::CQnInvalidParamException() = default;

CQnInvalidParamException::CQnInvalidParamException(std::string strMessage)
    : CQnException(std::move(strMessage))
{}

CQnInvalidParamException::CQnInvalidParamException(std::string strMessage,
                                                   const CQnException& inner)
    : CQnException(std::move(strMessage), inner)
{}

CQnInvalidParamException::CQnInvalidParamException(const CQnException& other) : CQnException(other)
{}

CQnInvalidParamException::~CQnInvalidParamException() = default;

CQnInvalidParamException* CQnInvalidParamException::Clone() const
{
    return new CQnInvalidParamException(*this);
}

CQnOverFlowException::CQnOverFlowException() = default;

CQnOverFlowException::CQnOverFlowException(std::string strMessage)
    : CQnException(std::move(strMessage))
{}

CQnOverFlowException::CQnOverFlowException(std::string strMessage, const CQnException& inner)
    : CQnException(std::move(strMessage), inner)
{}

CQnOverFlowException::CQnOverFlowException(const CQnException& other) : CQnException(other) {}

CQnOverFlowException::~CQnOverFlowException() = default;

CQnOverFlowException* CQnOverFlowException::Clone() const
{
    return new CQnOverFlowException(*this);
}

} // namespace QnXmlLib16
