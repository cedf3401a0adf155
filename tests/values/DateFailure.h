#pragma once

#include "QnXmlLib16/support/Exceptions.h"

#include <string>
#include <typeinfo>

// The message of the failure of call, which must be of exactly the class TError.
template <class TError, class TCall>
std::string FailureOf(TCall call)
{
    try {
        call();
    }
    catch (const QnXmlLib16::CQnException& e) {
        if (typeid(e) == typeid(TError))
            return e.GetMessage();
        return "of another class: " + e.GetMessage();
    }
    return "no failure";
}
