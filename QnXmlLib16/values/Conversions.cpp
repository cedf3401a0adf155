#include "QnXmlLib16/values/Conversions.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/values/BigInteger.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/values/DateTime.h"
#include "QnXmlLib16/values/DateTimeSpan.h"
#include "QnXmlLib16/values/Decimal.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <locale.h>
#include <strings.h>

namespace QnXmlLib16 {

namespace {

using Rule = CWhitespaceUtils::WhitespaceRule;

// The "C" locale for the calls that would otherwise follow LC_NUMERIC. It lives as long as the
// process, since values are converted in static destructors too.
locale_t PointLocale()
{
    static const locale_t loc = newlocale(LC_ALL_MASK, "C", nullptr);
    return loc;
}

// This thread uses the point while it lives; no other thread is touched and no lock is taken.
class CPointScope
{
public:
    CPointScope() : m_old(uselocale(PointLocale())) {}
    CPointScope(const CPointScope&) = delete;
    CPointScope& operator=(const CPointScope&) = delete;
    ~CPointScope() { uselocale(m_old); }

private:
    locale_t m_old;
};

[[noreturn]] void ThrowNotConvertible(const std::string& text, const char* pszCode)
{
    throw CQnInvalidValueException(
        FormatString("The value [%s] can not be converted to a %s", text.c_str(), pszCode));
}

// Deliberate spelling: callers match on message texts.
[[noreturn]] void ThrowTooLarge(const std::string& text, const char* pszCode)
{
    throw CQnInvalidValueException(
        FormatString("The value [%s] is to large to fit in a %s", text.c_str(), pszCode));
}

bool IsRule(Rule rule)
{
    return rule >= CWhitespaceUtils::WhitespaceRule_None &&
           rule <= CWhitespaceUtils::WhitespaceRule_Collapse;
}

// What a white space rule makes of a text, without a copy where it changes nothing: the text has to
// outlive this.
class CProcessed
{
public:
    CProcessed(const std::string& value, Rule rule)
        : m_text(CWhitespaceUtils::ApplyRule(rule, value, m_buffer))
    {}
    CProcessed(const CProcessed&) = delete;
    CProcessed& operator=(const CProcessed&) = delete;

    const std::string& Text() const { return m_text; }
    const char* c_str() const { return m_text.c_str(); }

private:
    std::string m_buffer;
    const std::string& m_text;
};

// Reads texts that are nothing but a sign and few enough digits not to overflow: no white space
// rule changes them, and the C function reads the same from them.
template <class T>
bool TryPlainInteger(const std::string& text, T& result)
{
    const char* p = text.data();
    const char* const pEnd = p + text.size();
    const bool bNegative = p != pEnd && *p == '-';
    if (p != pEnd && (*p == '-' || *p == '+'))
        ++p;
    if (p == pEnd || pEnd - p > std::numeric_limits<T>::digits10)
        return false;
    unsigned long long nSum = 0;
    do {
        const unsigned int nDigit = static_cast<unsigned char>(*p) - static_cast<unsigned int>('0');
        if (nDigit > 9)
            return false;
        nSum = nSum * 10 + nDigit;
    } while (++p != pEnd);
    result = static_cast<T>(bNegative ? 0 - nSum : nSum);
    return true;
}

template <class T>
T ParseInteger(const std::string& value, Rule rule, const char* pszCode,
               T (*fnParse)(const char*, char**, int))
{
    T result = 0;
    if (IsRule(rule) && TryPlainInteger(value, result))
        return result;

    const CProcessed text(value, rule);
    if (text.Text().empty())
        ThrowNotConvertible(text.Text(), pszCode);
    errno = 0;
    char* pStop = nullptr;
    result = fnParse(text.c_str(), &pStop, 10);
    if (errno == ERANGE)
        ThrowTooLarge(text.Text(), pszCode);
    if (*pStop != '\0')
        ThrowNotConvertible(text.Text(), pszCode);
    return result;
}

template <class TNarrow, class TWide>
TNarrow Narrow(TWide wide, const std::string& value, const char* pszCode)
{
    if (wide < std::numeric_limits<TNarrow>::min() || wide > std::numeric_limits<TNarrow>::max())
        ThrowTooLarge(value, pszCode);
    return static_cast<TNarrow>(wide);
}

template <class T>
std::string PrintInteger(T value)
{
    char buffer[32];
    const std::to_chars_result end = std::to_chars(buffer, buffer + sizeof(buffer), value);
    return std::string(buffer, end.ptr);
}

// As TryPlainInteger, for texts that strtod reads to the end without a failure of its own.
bool TryPlainDouble(const std::string& text, double& result)
{
    const char* const pEnd = text.data() + text.size();
    const char* pFirst = text.data();
    if (pFirst != pEnd && *pFirst == '-')
        ++pFirst;
    if (pFirst == pEnd || (*pFirst != '.' && (*pFirst < '0' || *pFirst > '9')))
        return false;
    const std::from_chars_result end = std::from_chars(text.data(), pEnd, result);
    return end.ec == std::errc() && end.ptr == pEnd;
}

// Gives T itself for the named values and the double for all else, so that the sign and bits of
// a NaN are those of the target type.
template <class T>
T ParseFloating(const std::string& value, Rule rule, const char* pszCode)
{
    static_assert(std::numeric_limits<T>::is_iec559, "narrowing yields infinities");
    double dResult = 0;
    if (IsRule(rule) && TryPlainDouble(value, dResult))
        return static_cast<T>(dResult);

    const CProcessed processed(value, rule);
    const std::string& text = processed.Text();
    if (text.empty())
        ThrowNotConvertible(text, pszCode);
    if (text == "NaN" || text == "1.#QNAN" || text == "-NAN")
        return std::numeric_limits<T>::quiet_NaN();
    if (text == "-INF")
        return -std::numeric_limits<T>::infinity();
    if (text == "INF")
        return std::numeric_limits<T>::infinity();
    char* pStop = nullptr;
    dResult = strtod_l(text.c_str(), &pStop, PointLocale());
    if (*pStop != '\0')
        ThrowNotConvertible(text, pszCode);
    return static_cast<T>(dResult);
}

template <class T, std::size_t nBufferSize>
std::string PrintFloating(T value, const std::string& format, int nDigits)
{
    if (std::isnan(value))
        return "NaN";
    if (value < std::numeric_limits<T>::lowest())
        return "-INF";
    if (value > std::numeric_limits<T>::max())
        return "INF";

    char buffer[nBufferSize];
    if (format.empty()) {
        // Prints what "%.*g" does, without a look at the locale.
        const std::to_chars_result end =
            std::to_chars(buffer, buffer + nBufferSize, static_cast<double>(value),
                          std::chars_format::general, nDigits);
        return std::string(buffer, end.ptr);
    }
    // Deliberate: a format that asks for more than the buffer holds is cut, without a failure.
    // Pinned by Conversions.FloatingPrintsAsPrintfDoes.
    const CPointScope scope;
    const int nLength =
        std::snprintf(buffer, nBufferSize, format.c_str(), static_cast<double>(value));
    return nLength < 0 ? std::string() : std::string(buffer);
}

CDateTime ParseDate(const std::string& value, Rule rule, DTType kind)
{
    CDateTime result(kind);
    result.ParseXSDDate(CProcessed(value, rule).c_str());
    return result;
}

} // namespace

std::string CConversions::i1ToString(char value)
{
    return PrintInteger(static_cast<int>(value));
}

std::string CConversions::i2ToString(short value)
{
    return PrintInteger(value);
}

std::string CConversions::i4ToString(long value)
{
    return PrintInteger(value);
}

std::string CConversions::i8ToString(long long value)
{
    return PrintInteger(value);
}

std::string CConversions::ui1ToString(unsigned char value)
{
    return PrintInteger(static_cast<unsigned int>(value));
}

std::string CConversions::ui2ToString(unsigned short value)
{
    return PrintInteger(value);
}

std::string CConversions::ui4ToString(unsigned long value)
{
    return PrintInteger(value);
}

std::string CConversions::ui8ToString(unsigned long long value)
{
    return PrintInteger(value);
}

std::string CConversions::r4ToString(float value)
{
    return r4ToString(value, std::string());
}

std::string CConversions::r4ToString(float value, const std::string& format)
{
    return PrintFloating<float, 32>(value, format, 7);
}

std::string CConversions::r8ToString(double value)
{
    return r8ToString(value, std::string());
}

std::string CConversions::r8ToString(double value, const std::string& format)
{
    return PrintFloating<double, 48>(value, format, 16);
}

std::string CConversions::decimalToString(const CDecimal& value)
{
    return value.ToString();
}

std::string CConversions::decimalToString(const CDecimal& value, const std::string& format)
{
    if (format.empty())
        return value.ToString();
    return value.ToString(static_cast<int>(std::strtol(format.c_str(), nullptr, 10)));
}

std::string CConversions::integerToString(const CBigInteger& value)
{
    return value.ToString();
}

std::string CConversions::durationToString(const CDateTimeSpan& value)
{
    return value.ToString();
}

// Deliberate: none of the five looks at the kind, so a time given to dateToString prints as a
// time. Pinned by Conversions.PartsOfADateAreNumbers.
std::string CConversions::yearMonthToString(const CDateTime& value)
{
    return value.ToString("s");
}

std::string CConversions::monthDayToString(const CDateTime& value)
{
    return value.ToString("s");
}

std::string CConversions::dateToString(const CDateTime& value)
{
    return value.ToString("s");
}

std::string CConversions::datetimeToString(const CDateTime& value)
{
    return value.ToString("s");
}

std::string CConversions::timeToString(const CDateTime& value)
{
    return value.ToString("s");
}

// Deliberate: the year is not padded, so what this prints below 1000 is no gYear that
// yearFromString reads. Pinned by Conversions.PartsOfADateAreNumbers.
std::string CConversions::yearToString(unsigned short value)
{
    return PrintInteger(value);
}

std::string CConversions::monthToString(unsigned char value)
{
    const std::string digits = PrintInteger(static_cast<unsigned int>(value));
    return (value < 10 ? "--0" : "--") + digits;
}

std::string CConversions::dayToString(unsigned char value)
{
    const std::string digits = PrintInteger(static_cast<unsigned int>(value));
    return (value < 10 ? "---0" : "---") + digits;
}

std::string CConversions::charToString(char value)
{
    return value == '\0' ? std::string() : std::string(1, value);
}

std::string CConversions::stringToString(const std::string& value)
{
    return value;
}

std::string CConversions::booleanToString(bool value)
{
    return value ? "true" : "false";
}

std::string CConversions::hexBinaryToString(const CBinaryData& value)
{
    return value.GetAsHexString();
}

std::string CConversions::base64BinaryToString(const CBinaryData& value)
{
    return value.GetAsBase64();
}

// Deliberate: i4 and ui4 have the width of long, so "3000000000" is a valid i4.
// Pinned by Conversions.IntegersReadAsTheirCarrier.
long CConversions::i4FromString(const std::string& value, CWhitespaceUtils::WhitespaceRule rule)
{
    return ParseInteger(value, rule, "i4", &std::strtol);
}

long long CConversions::i8FromString(const std::string& value,
                                     CWhitespaceUtils::WhitespaceRule rule)
{
    return ParseInteger(value, rule, "i8", &std::strtoll);
}

// Deliberate: a minus sign wraps, so "-1" is the greatest value of ui4 and ui8, and too large for
// ui1 and ui2. Pinned by Conversions.IntegersReadAsTheirCarrier.
unsigned long CConversions::ui4FromString(const std::string& value,
                                          CWhitespaceUtils::WhitespaceRule rule)
{
    return ParseInteger(value, rule, "ui4", &std::strtoul);
}

unsigned long long CConversions::ui8FromString(const std::string& value,
                                               CWhitespaceUtils::WhitespaceRule rule)
{
    return ParseInteger(value, rule, "ui8", &std::strtoull);
}

// Deliberate: a text that is no number fails in the words of the wider code, and one that is out
// of range with the text as given. Pinned by Conversions.IntegersFailInTheWordsOfTheirCode.
char CConversions::i1FromString(const std::string& value, CWhitespaceUtils::WhitespaceRule rule)
{
    return Narrow<char>(i4FromString(value, rule), value, "i1");
}

short CConversions::i2FromString(const std::string& value, CWhitespaceUtils::WhitespaceRule rule)
{
    return Narrow<short>(i4FromString(value, rule), value, "i2");
}

unsigned char CConversions::ui1FromString(const std::string& value,
                                          CWhitespaceUtils::WhitespaceRule rule)
{
    return Narrow<unsigned char>(ui4FromString(value, rule), value, "ui1");
}

unsigned short CConversions::ui2FromString(const std::string& value,
                                           CWhitespaceUtils::WhitespaceRule rule)
{
    return Narrow<unsigned short>(ui4FromString(value, rule), value, "ui2");
}

// Deliberate: neither an overflow nor an underflow is a failure, and a float is the double
// narrowed, so "1e39" is an infinity. Pinned by Conversions.FloatingTextIsWhatStrtodReads.
float CConversions::r4FromString(const std::string& value, CWhitespaceUtils::WhitespaceRule rule)
{
    return ParseFloating<float>(value, rule, "r4");
}

double CConversions::r8FromString(const std::string& value, CWhitespaceUtils::WhitespaceRule rule)
{
    return ParseFloating<double>(value, rule, "r8");
}

CDateTimeSpan CConversions::durationFromString(const std::string& value,
                                               CWhitespaceUtils::WhitespaceRule rule)
{
    CDateTimeSpan result;
    result.ParseXSDDuration(CProcessed(value, rule).c_str());
    return result;
}

CDateTime CConversions::yearMonthFromString(const std::string& value,
                                            CWhitespaceUtils::WhitespaceRule rule)
{
    return ParseDate(value, rule, dt_gYearMonth);
}

CDateTime CConversions::monthDayFromString(const std::string& value,
                                           CWhitespaceUtils::WhitespaceRule rule)
{
    return ParseDate(value, rule, dt_gMonthDay);
}

CDateTime CConversions::dateFromString(const std::string& value,
                                       CWhitespaceUtils::WhitespaceRule rule)
{
    return ParseDate(value, rule, dt_date);
}

CDateTime CConversions::datetimeFromString(const std::string& value,
                                           CWhitespaceUtils::WhitespaceRule rule)
{
    CDateTime result(dt_dateTime);
    result.ParseXSDDateTime(CProcessed(value, rule).c_str());
    return result;
}

CDateTime CConversions::timeFromString(const std::string& value,
                                       CWhitespaceUtils::WhitespaceRule rule)
{
    CDateTime result(dt_time);
    result.ParseXSDTime(CProcessed(value, rule).c_str());
    return result;
}

unsigned short CConversions::yearFromString(const std::string& value,
                                            CWhitespaceUtils::WhitespaceRule rule)
{
    return static_cast<unsigned short>(ParseDate(value, rule, dt_gYear).GetYear());
}

unsigned char CConversions::monthFromString(const std::string& value,
                                            CWhitespaceUtils::WhitespaceRule rule)
{
    return ParseDate(value, rule, dt_gMonth).GetMonth();
}

unsigned char CConversions::dayFromString(const std::string& value,
                                          CWhitespaceUtils::WhitespaceRule rule)
{
    return ParseDate(value, rule, dt_gDay).GetDay();
}

char CConversions::charFromString(const std::string& value, CWhitespaceUtils::WhitespaceRule rule)
{
    const CProcessed text(value, rule);
    // Deliberate spelling: callers match on message texts.
    if (text.Text().size() != 1)
        throw CQnInvalidValueException(FormatString("The value [%s] can not be a char as it is "
                                                    "either empty of greater than 1 char long",
                                                    text.c_str()));
    return text.Text()[0];
}

std::string CConversions::stringFromString(const std::string& value,
                                           CWhitespaceUtils::WhitespaceRule rule)
{
    return CWhitespaceUtils::ApplyRule(rule, value);
}

bool CConversions::booleanFromString(const std::string& value,
                                     CWhitespaceUtils::WhitespaceRule rule)
{
    const CProcessed text(value, rule);
    // Deliberate: any case is read, beyond the schema's own forms. Pinned by
    // Conversions.BooleansAreReadInAnyCase.
    const char* const pszText = text.c_str();
    if (strcasecmp(pszText, "true") == 0 || strcasecmp(pszText, "1") == 0)
        return true;
    if (strcasecmp(pszText, "false") == 0 || strcasecmp(pszText, "0") == 0)
        return false;
    throw CQnInvalidValueException(
        FormatString("A Boolean Value read from an XML document was invalid [%s]. Valid values are "
                     "'true', 'false', '1', or '0'",
                     value.c_str()));
}

CDecimal CConversions::decimalFromString(const std::string& value,
                                         CWhitespaceUtils::WhitespaceRule rule)
{
    return CDecimal(CProcessed(value, rule).c_str());
}

CBigInteger CConversions::integerFromString(const std::string& value,
                                            CWhitespaceUtils::WhitespaceRule rule)
{
    return CBigInteger(CProcessed(value, rule).c_str());
}

CBinaryData CConversions::hexBinaryFromString(const std::string& value,
                                              CWhitespaceUtils::WhitespaceRule rule)
{
    CBinaryData result;
    result.SetAsHexString(CProcessed(value, rule).c_str());
    return result;
}

CBinaryData CConversions::base64BinaryFromString(const std::string& value,
                                                 CWhitespaceUtils::WhitespaceRule rule)
{
    CBinaryData result;
    result.SetAsBase64(CProcessed(value, rule).c_str());
    return result;
}

} // namespace QnXmlLib16
