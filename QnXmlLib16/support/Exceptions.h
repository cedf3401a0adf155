#pragma once

#include "QnXmlLib16/support/Export.h"

#include <memory>
#include <string>

// The failures that the library reports: one family, thrown by value, caught by reference. It
// derives from no standard exception class. Where a failure gets a context on its way up, a new
// exception is thrown with the caught one as inner; an exception itself is never changed.

namespace QnXmlLib16 {

// Root of the family: a message, the place in the document (path, empty if not known), and a
// private copy of the exception that caused this one. Chains of any depth are copied, printed
// and destroyed in constant stack. One thread at a time.
class QNXML_API CQnException
{
public:
    CQnException();
    explicit CQnException(std::string strMessage);
    CQnException(std::string strMessage, const CQnException& inner);
    // A path that isn't empty is kept and also appended to the message, after "\nPath: ".
    CQnException(std::string strMessage, std::string strPath);
    CQnException(std::string strMessage, std::string strPath, const CQnException& inner);
    CQnException(const CQnException& other);

    virtual ~CQnException();

    // A deep copy of the same dynamic class, which the caller owns.
    virtual CQnException* Clone() const;

    // Takes over the message and a copy of the inner exception, not the path. The inner
    // exception held before is let go and not freed: who got it from GetInnerException() owns it.
    CQnException& operator=(const CQnException& other);

    // The message, with the path appended where one was given.
    std::string GetMessage() const;

    // The messages of the whole chain, outermost first, one line feed between them.
    std::string GetFullMessage() const;

    // The path alone; empty when none was given.
    std::string GetPath() const;

    // Stays owned by this exception; null at the end of a chain.
    CQnException* GetInnerException() const;

private:
    static std::unique_ptr<CQnException> CopyChain(const CQnException& outer);

    std::string m_strMessage;
    std::string m_strPath;
    std::unique_ptr<CQnException> m_pInnerException;
};

// A document or an object that does not meet its schema; the path tells where.
class QNXML_API CQnValidationException : public CQnException
{
public:
    CQnValidationException();
    CQnValidationException(std::string strMessage, std::string strPath);
    CQnValidationException(std::string strMessage, std::string strPath, const CQnException& inner);
    CQnValidationException(const CQnException& other);
    ~CQnValidationException() override;

    CQnValidationException* Clone() const override;

protected:
    // Room for a derived class: empty after every constructor, copied between objects of this
    // class, read by nothing in the library.
    std::string m_strExtra;
};

// A text or value that its type does not admit.
class QNXML_API CQnInvalidValueException : public CQnValidationException
{
public:
    CQnInvalidValueException();
    explicit CQnInvalidValueException(std::string strMessage);
    CQnInvalidValueException(std::string strMessage, const CQnException& inner);
    CQnInvalidValueException(const CQnException& other);
    ~CQnInvalidValueException() override;

    CQnInvalidValueException* Clone() const override;
};

// A name from a namespace that its place does not admit.
class QNXML_API CQnInvalidNamespaceException : public CQnValidationException
{
public:
    CQnInvalidNamespaceException();
    CQnInvalidNamespaceException(std::string strMessage, std::string strPath);
    CQnInvalidNamespaceException(std::string strMessage, std::string strPath,
                                 const CQnException& inner);
    CQnInvalidNamespaceException(const CQnException& other);
    ~CQnInvalidNamespaceException() override;

    CQnInvalidNamespaceException* Clone() const override;
};

// An operation that the object's present state does not admit.
class QNXML_API CQnInvalidStateException : public CQnException
{
public:
    CQnInvalidStateException();
    explicit CQnInvalidStateException(std::string strMessage);
    CQnInvalidStateException(std::string strMessage, const CQnException& inner);
    CQnInvalidStateException(const CQnException& other);
    ~CQnInvalidStateException() override;

    CQnInvalidStateException* Clone() const override;
};

// An argument that an operation can't take.
class QNXML_API CQnInvalidParamException : public CQnException
{
public:
    CQnInvalidParamException();
    explicit CQnInvalidParamException(std::string strMessage);
    CQnInvalidParamException(std::string strMessage, const CQnException& inner);
    CQnInvalidParamException(const CQnException& other);
    ~CQnInvalidParamException() override;

    CQnInvalidParamException* Clone() const override;
};

// A number that its target type can't hold.
class QNXML_API CQnOverFlowException : public CQnException
{
public:
    CQnOverFlowException();
    explicit CQnOverFlowException(std::string strMessage);
    CQnOverFlowException(std::string strMessage, const CQnException& inner);
    CQnOverFlowException(const CQnException& other);
    ~CQnOverFlowException() override;

    CQnOverFlowException* Clone() const override;
};

} // namespace QnXmlLib16
