#pragma once

#include "QnXmlLib16/values/QnVariant.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

inline QnXmlLib16::ItemType TypeNamed(const std::string& name)
{
    // With blanks, so that no name is found within another one.
    const std::string names = " hexBinary base64Binary i1 i2 i4 i8 ui1 ui2 ui4 ui8 r4 r8 duration "
                              "yearMonth monthDay year month day date datetime time char string "
                              "boolean decimal integer ";
    const auto found = static_cast<std::ptrdiff_t>(names.find(" " + name + " "));
    EXPECT_GE(found, 0) << name;
    return static_cast<QnXmlLib16::ItemType>(
        std::count(names.begin(), names.begin() + found + 1, ' '));
}

// The text as a value of the type, printed.
inline std::string Reprint(const std::string& type, const std::string& text,
                           QnXmlLib16::CWhitespaceUtils::WhitespaceRule rule =
                               QnXmlLib16::CWhitespaceUtils::WhitespaceRule_None)
{
    QnXmlLib16::QnVariant value;
    value.FromString(text, TypeNamed(type), rule);
    return value.ToString(nullptr);
}
