#include "QnXmlLib16/support/Functions.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <langinfo.h>
#include <locale.h>
#include <sys/stat.h>

namespace QnXmlLib16 {

namespace {

// Widths and precisions beyond what an int holds are as good as the largest int: vsnprintf
// refuses to print that much.
int ReadDecimal(const char** ppsz)
{
    char* pszEnd = nullptr;
    const long lValue = std::strtol(*ppsz, &pszEnd, 10);
    *ppsz = pszEnd;
    return static_cast<int>(std::clamp<long>(lValue, INT_MIN, INT_MAX));
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// The one walk over a format that bounds the length of what it prints. It reads the arguments in
// step with the format. What it can't know (a conversion or a prefix outside its list) consumes
// nothing and counts nothing; from there on the list may be out of step with the format, so the
// walk reads no argument more, and only plain characters count. Nothing is then followed that
// need not be a pointer.
// Deliberate: the print of such a format is cut ("%lld" prints one character), for "ll" and "z"
// are not in the list. Pinned by FormatString.CutsWhatTheWalkDoesNotKnow.
class FormatWalk
{
public:
    FormatWalk(const char* pszFormat, va_list args) : m_psz(pszFormat) { va_copy(m_args, args); }
    ~FormatWalk() { va_end(m_args); }
    FormatWalk(const FormatWalk&) = delete;
    FormatWalk& operator=(const FormatWalk&) = delete;

    std::size_t Measure()
    {
        while (*m_psz != '\0') {
            if (*m_psz != '%') {
                ++m_psz;
                ++m_uTotal;
            }
            else if (m_psz[1] == '%') {
                m_psz += 2;
                ++m_uTotal;
            }
            else {
                ++m_psz;
                MeasureItem();
            }
        }
        return m_uTotal;
    }

    bool HasFloat() const { return m_bHasFloat; }
    bool HasWide() const { return m_bHasWide; }

private:
    enum class Prefix
    {
        None,
        Short,
        Long,
        Int64,
        LongDouble
    };

    void MeasureItem()
    {
        m_iWidth = 0;
        m_iPrecision = 0;
        m_bCounts = m_bInStep;
        bool bHasWidth = false;
        for (;; ++m_psz) {
            if (*m_psz == '#') {
                Add(2);
            }
            else if (*m_psz == '*') {
                m_iWidth = NextInt();
                bHasWidth = true;
            }
            else if (*m_psz != '+' && *m_psz != '-' && *m_psz != ' ' && *m_psz != '0') {
                break;
            }
        }
        if (!bHasWidth && IsDigit(*m_psz))
            m_iWidth = ReadDecimal(&m_psz);
        if (*m_psz == '.') {
            ++m_psz;
            if (*m_psz == '*') {
                m_iPrecision = NextInt();
                ++m_psz;
            }
            else if (IsDigit(*m_psz)) {
                m_iPrecision = ReadDecimal(&m_psz);
            }
        }
        const Prefix ePrefix = ReadPrefix();
        if (*m_psz == '\0') // a format that ends within an item
            return;
        MeasureConversion(*m_psz++, ePrefix);
    }

    Prefix ReadPrefix()
    {
        if (std::strncmp(m_psz, "I64", 3) == 0) {
            m_psz += 3;
            return Prefix::Int64;
        }
        switch (*m_psz) {
        case 'h':
            ++m_psz;
            return Prefix::Short;
        case 'l':
            ++m_psz;
            return Prefix::Long;
        case 'L':
            ++m_psz;
            return Prefix::LongDouble;
        case 'F': // a conversion or nothing to vsnprintf
        case 'N':
            ++m_psz;
            m_bInStep = false;
            return Prefix::None;
        default:
            return Prefix::None;
        }
    }

    void MeasureConversion(char cConversion, Prefix ePrefix)
    {
        switch (cConversion) {
        case 's':
            if (ePrefix == Prefix::Long)
                AddText(WideLength());
            else
                AddText(NarrowLength());
            break;
        case 'S':
            AddText(WideLength());
            break;
        case 'c':
        case 'C':
            m_bHasWide |= cConversion == 'C' || ePrefix == Prefix::Long;
            NextInt();
            AddText(2);
            break;
        case 'd':
        case 'i':
        case 'u':
        case 'x':
        case 'X':
        case 'o':
        case 'p':
            SkipInteger(cConversion, ePrefix);
            Add(std::max(32LL, WidthAndPrecision()));
            break;
        case 'e':
        case 'g':
        case 'G':
            NextDouble(ePrefix);
            Add(std::max(128LL, WidthAndPrecision()));
            break;
        case 'f':
            AddPrinted(NextDouble(ePrefix));
            break;
        case 'n':
            if (m_bInStep)
                static_cast<void>(va_arg(m_args, void*));
            break;
        default:
            m_bInStep = false;
        }
    }

    int NextInt() { return m_bInStep ? va_arg(m_args, int) : 0; }

    void SkipInteger(char cConversion, Prefix ePrefix)
    {
        if (!m_bInStep)
            return;
        if (cConversion == 'p')
            static_cast<void>(va_arg(m_args, void*));
        else if (ePrefix == Prefix::Long)
            static_cast<void>(va_arg(m_args, long));
        else if (ePrefix == Prefix::Int64 || ePrefix == Prefix::LongDouble)
            static_cast<void>(va_arg(m_args, long long));
        else
            static_cast<void>(va_arg(m_args, int));
    }

    double NextDouble(Prefix ePrefix)
    {
        m_bHasFloat = true;
        if (!m_bInStep)
            return 0;
        return ePrefix == Prefix::LongDouble ? static_cast<double>(va_arg(m_args, long double))
                                             : va_arg(m_args, double);
    }

    // A precision bounds how far a text is read: it need not be terminated within that.
    std::size_t NarrowLength()
    {
        if (!m_bInStep)
            return 1;
        const char* psz = va_arg(m_args, const char*);
        if (!psz)
            return 6;
        return m_iPrecision > 0 ? strnlen(psz, static_cast<std::size_t>(m_iPrecision))
                                : std::strlen(psz);
    }

    std::size_t WideLength()
    {
        m_bHasWide = true;
        if (!m_bInStep)
            return 1;
        const wchar_t* psz = va_arg(m_args, const wchar_t*);
        if (!psz)
            return 6;
        return m_iPrecision > 0 ? wcsnlen(psz, static_cast<std::size_t>(m_iPrecision))
                                : std::wcslen(psz);
    }

    // Cut to the precision, also to a negative one that came by "*", and raised to the width.
    void AddText(std::size_t uLength)
    {
        long long iLength = std::max<long long>(static_cast<long long>(uLength), 1);
        if (m_iPrecision != 0)
            iLength = std::min<long long>(iLength, m_iPrecision);
        iLength = std::max<long long>(iLength, m_iWidth);
        Add(std::max(iLength, 0LL));
    }

    long long WidthAndPrecision() const { return static_cast<long long>(m_iWidth) + m_iPrecision; }

    void Add(long long iLength)
    {
        if (m_bCounts)
            m_uTotal += static_cast<std::size_t>(iLength);
    }

    void AddPrinted(double dValue)
    {
        if (!m_bCounts)
            return;
        const long long iPrecision = std::min<long long>(m_iPrecision + 6LL, INT_MAX);
        const int iLength =
            std::snprintf(nullptr, 0, "%*.*f", m_iWidth, static_cast<int>(iPrecision), dValue);
        if (iLength > 0)
            Add(iLength);
    }

    const char* m_psz;
    va_list m_args;
    std::size_t m_uTotal = 0;
    int m_iWidth = 0;
    int m_iPrecision = 0;
    bool m_bInStep = true; // with the arguments
    bool m_bCounts = true; // whether the item at hand adds to the total
    bool m_bHasFloat = false;
    bool m_bHasWide = false;
};

// While it lives, the calling thread prints numbers with a point. Switching a thread's locale
// takes no lock. Wide text needs the character type of the locale in force, which only a copy of
// that locale keeps; everything else gets by with the C locale.
class PointLocale
{
public:
    explicit PointLocale(bool bKeepCharacterType)
    {
        static const locale_t s_locC = newlocale(LC_ALL_MASK, "C", nullptr);
        locale_t loc = s_locC;
        if (bKeepCharacterType) {
            if (locale_t locCopy = duplocale(uselocale(nullptr))) {
                m_locOwned = newlocale(LC_NUMERIC_MASK, "C", locCopy);
                if (!m_locOwned)
                    freelocale(locCopy);
            }
            if (m_locOwned)
                loc = m_locOwned;
        }
        m_locBefore = uselocale(loc);
    }
    ~PointLocale()
    {
        uselocale(m_locBefore);
        if (m_locOwned)
            freelocale(m_locOwned);
    }
    PointLocale(const PointLocale&) = delete;
    PointLocale& operator=(const PointLocale&) = delete;

private:
    locale_t m_locOwned = nullptr;
    locale_t m_locBefore = nullptr;
};

bool IsPointTheRadix()
{
    return std::strcmp(nl_langinfo(RADIXCHAR), ".") == 0;
}

// Each search need not go back further than the first place where a text ending in the replacement
// can begin: an earlier one would have been found before.
template <class TString>
void ReplaceAll(TString& strText, const TString& strFind, const TString& strReplace)
{
    if (strFind.empty())
        return;
    // A replacement that contains the searched text is passed over, or there would be no end.
    const bool bOnePass = strReplace.find(strFind) != TString::npos;
    std::size_t uPosition = strText.find(strFind);
    while (uPosition != TString::npos) {
        strText.replace(uPosition, strFind.size(), strReplace);
        const std::size_t uNext = bOnePass ? uPosition + strReplace.size()
                                           : uPosition - std::min(uPosition, strFind.size() - 1);
        uPosition = strText.find(strFind, uNext);
    }
}

} // namespace

std::string FormatString(const char* pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    struct ListEnd
    {
        va_list& m_args;
        ~ListEnd() { va_end(m_args); }
    } const end{args};
    return FormatV(pszFormat, args);
}

std::string FormatV(const char* pszFormat, va_list args)
{
    if (!pszFormat)
        return std::string();
    FormatWalk walk(pszFormat, args);
    // Filled with "X" and cut at the terminator, which vsnprintf writes in any case.
    std::string strResult(walk.Measure() + 1, 'X');
    if (!walk.HasFloat() || IsPointTheRadix()) {
        vsnprintf(&strResult[0], strResult.size(), pszFormat, args);
    }
    else {
        const PointLocale locale(walk.HasWide());
        vsnprintf(&strResult[0], strResult.size(), pszFormat, args);
    }
    strResult.resize(std::strlen(strResult.c_str()));
    return strResult;
}

// Deliberate: what the replacements make up anew is replaced too. Pinned by
// FindReplace.TextMadeByAReplacementIsSearchedAgain.
void FindReplace(std::string& strText, const std::string& strFind, const std::string& strReplace)
{
    ReplaceAll(strText, strFind, strReplace);
}

void FindReplace(std::wstring& strText, const std::wstring& strFind, const std::wstring& strReplace)
{
    ReplaceAll(strText, strFind, strReplace);
}

std::string PadZero(int iValue, unsigned char uWidth)
{
    char szBuffer[256];
    const int iLength = std::snprintf(szBuffer, sizeof szBuffer, "%0*d", uWidth, iValue);
    return std::string(szBuffer, static_cast<std::size_t>(iLength));
}

std::string TrimTrainingZeros(std::string strText)
{
    while (strText.size() > 1 && strText.back() == '0')
        strText.pop_back();
    return strText;
}

std::string ToFracString(unsigned short uMilli, unsigned short uMicro, unsigned short uNano)
{
    if (uNano != 0)
        return "." + PadZero(uMilli, 3) + PadZero(uMicro, 3) + TrimTrainingZeros(PadZero(uNano, 3));
    if (uMicro != 0)
        return "." + PadZero(uMilli, 3) + TrimTrainingZeros(PadZero(uMicro, 3));
    if (uMilli != 0)
        return "." + TrimTrainingZeros(PadZero(uMilli, 3));
    return std::string();
}

bool IsLeapYear(int iYear)
{
    if (iYear % 4 != 0)
        return false;
    return iYear % 100 != 0 || iYear % 400 == 0;
}

// Deliberate: single precision, so that large values go by what a float can hold. Callers store
// the remainder that follows from it. Pinned by Quotient.RunsInSinglePrecision.
int GetQuotient(long long iValue, int iDivisor)
{
    float fQuotient = static_cast<float>(iValue) / static_cast<float>(iDivisor);
    if (std::fabs(fQuotient) < 8388608.0f) // from here on a float has no fraction
        fQuotient = std::floor(fQuotient);
    // Written so that the not-a-number of 0 / 0 fails the test too.
    if (!(fQuotient >= -2147483648.0f && fQuotient < 2147483648.0f))
        return INT_MIN;
    return static_cast<int>(fQuotient);
}

long long GetModulo(long long iValue, int iDivisor)
{
    const unsigned int uProduct = static_cast<unsigned int>(iDivisor) *
                                  static_cast<unsigned int>(GetQuotient(iValue, iDivisor));
    return static_cast<long long>(static_cast<unsigned long long>(iValue) -
                                  static_cast<unsigned long long>(static_cast<int>(uProduct)));
}

std::string UnicodeToMultiByte(const wchar_t* pszText)
{
    std::string strResult;
    if (!pszText)
        return strResult;
    char szCharacter[MB_LEN_MAX];
    std::mbstate_t state{};
    for (; *pszText != L'\0'; ++pszText) {
        const std::size_t uBytes = std::wcrtomb(szCharacter, *pszText, &state);
        if (uBytes == static_cast<std::size_t>(-1)) {
            strResult += '?';
            state = std::mbstate_t{};
        }
        else {
            strResult.append(szCharacter, uBytes);
        }
    }
    strResult.resize(std::strlen(strResult.c_str()));
    return strResult;
}

char* strupr(char* pszText)
{
    if (pszText) {
        for (char* p = pszText; *p != '\0'; ++p)
            *p = static_cast<char>(std::toupper(static_cast<unsigned char>(*p)));
    }
    return pszText;
}

long _filelength(FILE* pFile)
{
    if (!pFile)
        return -1;
    struct stat info;
    const int iDescriptor = fileno(pFile);
    if (iDescriptor >= 0 && (fstat(iDescriptor, &info) != 0 || !S_ISREG(info.st_mode)))
        return -1;
    const long lPosition = std::ftell(pFile);
    if (lPosition < 0 || std::fseek(pFile, 0, SEEK_END) != 0)
        return -1;
    const long lLength = std::ftell(pFile);
    if (lLength < 0 || std::fseek(pFile, lPosition, SEEK_SET) != 0)
        return -1;
    return lLength;
}

} // namespace QnXmlLib16
