#pragma once

#include "QnXmlLib16/support/Encoder.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

// What a test changes in the process or leaves on the disk, put back at the end of its block.

namespace Scoped {

class Locale
{
public:
    Locale(int iCategory, const char* pszName)
        : m_iCategory(iCategory),
          m_strBefore(std::setlocale(iCategory, nullptr)),
          m_bSet(std::setlocale(iCategory, pszName) != nullptr)
    {}
    ~Locale() { std::setlocale(m_iCategory, m_strBefore.c_str()); }
    Locale(const Locale&) = delete;
    Locale& operator=(const Locale&) = delete;

    bool IsSet() const { return m_bSet; } // false: the machine lacks this locale

private:
    const int m_iCategory;
    const std::string m_strBefore;
    const bool m_bSet;
};

class AsciiOnly
{
public:
    AsciiOnly() { QnXmlLib16::ASCIIOnly(true); }
    ~AsciiOnly() { QnXmlLib16::ASCIIOnly(false); }
    AsciiOnly(const AsciiOnly&) = delete;
    AsciiOnly& operator=(const AsciiOnly&) = delete;
};

// A file of its own, empty at first.
class File
{
public:
    File()
    {
        char szPath[] = "/tmp/qnxml-test-XXXXXX";
        const int iDescriptor = mkstemp(szPath);
        if (iDescriptor >= 0)
            close(iDescriptor);
        m_strPath = szPath;
    }
    ~File() { std::remove(m_strPath.c_str()); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    const char* Path() const { return m_strPath.c_str(); }
    std::string Content() const
    {
        std::ifstream file(m_strPath, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

private:
    std::string m_strPath;
};

} // namespace Scoped
