#pragma once

#include "QnXmlLib16/support/Exceptions.h"

#include <gtest/gtest.h>
#include <string>
#include <typeinfo>

namespace Model {

// Runs the action, expects it to fail with exactly this class, message (without the path that a
// message with a path ends in) and path, and returns the whole chain of messages.
template <class TException, class TAction>
std::string ExpectFailure(const TAction& action, const std::string& strMessage,
                          const std::string& strPath = "")
{
    try {
        action();
    }
    catch (const QnXmlLib16::CQnException& e) {
        EXPECT_EQ(typeid(e).name(), typeid(TException).name());
        EXPECT_EQ(e.GetMessage(), strPath.empty() ? strMessage : strMessage + "\nPath: " + strPath);
        EXPECT_EQ(e.GetPath(), strPath);
        return e.GetFullMessage();
    }
    ADD_FAILURE() << "nothing was thrown in place of: " << strMessage;
    return {};
}

} // namespace Model
