#pragma once

#include "QnXmlLib16/support/Exceptions.h"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

// What the call returns, or the message of its failure, which must be of exactly the class TError
// and without a path.
template <class TError = QnXmlLib16::CQnInvalidValueException, class TCall>
std::string ResultOf(TCall call)
{
    try {
        return call();
    }
    catch (const QnXmlLib16::CQnException& e) {
        EXPECT_EQ(typeid(e), typeid(TError));
        EXPECT_EQ(e.GetPath(), "");
        return e.GetMessage();
    }
}

// The same for a call whose result doesn't count, which is "no failure" then.
template <class TError = QnXmlLib16::CQnInvalidValueException, class TCall>
std::string FailureOf(TCall call)
{
    return ResultOf<TError>([&] {
        call();
        return std::string("no failure");
    });
}

// Cases are written "what is given -> what comes out"; either side may be empty.
inline std::vector<std::pair<std::string, std::string>>
Split(std::initializer_list<std::string> cases)
{
    std::vector<std::pair<std::string, std::string>> sides;
    for (const std::string& text : cases) {
        const std::size_t arrow = text.find(" -> ");
        sides.emplace_back(text.substr(0, arrow), text.substr(arrow + 4));
    }
    return sides;
}

// Each case through the call, which takes a text and returns one or fails with a TError.
template <class TError = QnXmlLib16::CQnInvalidValueException, class TCall>
void ExpectEach(TCall call, std::initializer_list<std::string> cases)
{
    for (const auto& [given, expected] : Split(cases)) {
        SCOPED_TRACE(given + " -> " + expected);
        EXPECT_EQ(ResultOf<TError>([&, &text = given] { return call(text.c_str()); }), expected);
    }
}

// Whether the six relations agree that left is '<', '=' or '>' right, or '?': not comparable to it.
template <class T>
bool AreRelated(const T& left, char order, const T& right)
{
    const bool equal = order == '=';
    return (left == right) == equal && (left != right) != equal &&
           (left < right) == (order == '<') && (left <= right) == (equal || order == '<') &&
           (left > right) == (order == '>') && (left >= right) == (equal || order == '>');
}

// How many of the beginnings of a text, the whole among them, the call takes; it refuses the others.
// Each stands in a block of its exact size, so that a sanitizer sees a read beyond the end.
template <class TCall>
int CountBeginningsTaken(const std::string& text, TCall call)
{
    int taken = 0;
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const std::unique_ptr<char, decltype(&std::free)> exact(strndup(text.c_str(), length),
                                                                std::free);
        taken += FailureOf([&] { call(exact.get()); }) == "no failure";
    }
    return taken;
}

template <class TStep>
double MillisecondsOf(TStep step)
{
    const auto start = std::chrono::steady_clock::now();
    step();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}
