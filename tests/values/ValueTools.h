#pragma once

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/values/DateTime.h"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <typeinfo>
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

// Each case, "what is given -> what comes out" of which either may be empty, through the call,
// which takes a text and returns one or fails with a TError.
template <class TError = QnXmlLib16::CQnInvalidValueException, class TCall>
void ExpectEach(TCall call, std::initializer_list<std::string> cases)
{
    for (const std::string& text : cases) {
        SCOPED_TRACE(text);
        const std::size_t arrow = text.find(" -> ");
        const std::string given = text.substr(0, arrow);
        EXPECT_EQ(ResultOf<TError>([&] { return call(given.c_str()); }), text.substr(arrow + 4));
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

inline std::vector<std::string> Words(const std::string& text)
{
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

// A date, time or dateTime, whichever the text looks like.
inline QnXmlLib16::CDateTime DateOf(const std::string& text)
{
    QnXmlLib16::CDateTime value(QnXmlLib16::dt_gMonthDay);
    if (text.find('T') != std::string::npos)
        value.ParseXSDDateTime(text.c_str());
    else if (text.size() > 2 && text[2] == ':')
        value.ParseXSDTime(text.c_str());
    else
        value.ParseXSDDate(text.c_str());
    return value;
}

// How many of the beginnings of a text, the whole among them, the call takes; it refuses the
// others. Each stands in a block of its exact size, so that a sanitizer sees a read beyond the end.
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
