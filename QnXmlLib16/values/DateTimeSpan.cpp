#include "QnXmlLib16/values/DateTimeSpan.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/values/internal/DateDigits.h"

namespace QnXmlLib16 {

namespace {

[[noreturn]] void ThrowBadDuration(const char* text)
{
    throw CQnInvalidValueException(FormatString(
        "Invalid XSD Duration [%s] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]", text));
}

} // namespace

CDateTimeSpan::CDateTimeSpan() = default;

CDateTimeSpan::CDateTimeSpan(unsigned short years, unsigned long months, unsigned long days,
                             unsigned long hours, unsigned long long minutes,
                             unsigned long long seconds, unsigned short milli, unsigned short micro,
                             unsigned short nano)
{
    SetDateTimeSpan(years, months, days, hours, minutes, seconds, milli, micro, nano);
}

CDateTimeSpan::CDateTimeSpan(unsigned short years, unsigned long months, unsigned long days,
                             unsigned long hours, unsigned long long minutes,
                             unsigned long long seconds)
{
    SetDateTimeSpan(years, months, days, hours, minutes, seconds, 0, 0, 0);
}

CDateTimeSpan::CDateTimeSpan(unsigned long hours, unsigned long long minutes,
                             unsigned long long seconds)
{
    SetDateTimeSpan(0, 0, 0, hours, minutes, seconds, 0, 0, 0);
}

CDateTimeSpan::~CDateTimeSpan() = default;

void CDateTimeSpan::Clear()
{
    *this = CDateTimeSpan();
}

void CDateTimeSpan::SetDateTimeSpan(unsigned short years, unsigned long months, unsigned long days,
                                    unsigned long hours, unsigned long long minutes,
                                    unsigned long long seconds, unsigned short milli,
                                    unsigned short micro, unsigned short nano)
{
    m_nYears = years;
    m_lMonths = months;
    m_lDays = days;
    m_lHours = hours;
    m_llMinutes = minutes;
    m_llSeconds = seconds;
    m_nMilliSeconds = milli;
    m_nMicroSeconds = micro;
    m_nNanoSeconds = nano;
    m_bNegative = false;
}

void CDateTimeSpan::SetDateTimeSpan(unsigned short years, unsigned long months, unsigned long days,
                                    unsigned long hours, unsigned long long minutes,
                                    unsigned long long seconds)
{
    SetDateTimeSpan(years, months, days, hours, minutes, seconds, 0, 0, 0);
}

void CDateTimeSpan::SetDateTimeSpan(unsigned long hours, unsigned long long minutes,
                                    unsigned long long seconds)
{
    SetDateTimeSpan(0, 0, 0, hours, minutes, seconds, 0, 0, 0);
}

CDateTimeSpan CDateTimeSpan::GetAsNegative() const
{
    // Deliberate: sets the sign and does not flip it, so taking a negative span from a date moves
    // the date back as well. Pinned by DateArithmetic.TakesAnyKindAndValidatesNothing.
    CDateTimeSpan span(*this);
    span.m_bNegative = true;
    return span;
}

void CDateTimeSpan::ParseXSDDuration(const char* text)
{
    Clear();
    if (text == nullptr)
        throw CQnInvalidValueException("Invalid XSD Duration (Null String)");
    if (*text == '\0')
        throw CQnInvalidValueException("Invalid XSD Duration (Empty String)");

    const char* p = text;
    if (*p == '-') {
        m_bNegative = true;
        ++p;
    }
    if (*p++ != 'P')
        ThrowBadDuration(text);

    // 1 to 3 stand behind years, months and days, 4 behind "T", 5 to 7 behind hours, minutes and
    // seconds, 8 behind seconds with a point.
    int state = 0;
    while (*p != '\0') {
        unsigned long long number = 0;
        for (; DateDigits::IsDigit(*p); ++p)
            number = number * 10 + static_cast<unsigned long long>(*p - '0');

        // The terminator falls to the default as a designator that is missing.
        const char designator = *p;
        if (designator != '\0')
            ++p;
        switch (designator) {
        case 'Y':
            // Deliberate: years may stand anywhere and start the order over, so "P1M1Y" and
            // "PT1H2Y" pass. They keep 16 bits, so 65537 is 1. Pinned by
            // DurationParsing.ReadsEachFieldAndWritesItBack.
            m_nYears = static_cast<unsigned short>(number);
            state = 1;
            break;
        case 'M':
            if (state <= 1) {
                m_lMonths = number;
                state = 2;
            }
            else if (state == 4 || state == 5) {
                m_llMinutes = number;
                state = 6;
            }
            else {
                ThrowBadDuration(text);
            }
            break;
        case 'D':
            if (state > 2)
                ThrowBadDuration(text);
            m_lDays = number;
            state = 3;
            break;
        case 'T':
            // Deliberate: a number in front of it belongs to no field and is dropped. Pinned by
            // DurationParsing.ReadsEachFieldAndWritesItBack.
            if (state > 3)
                ThrowBadDuration(text);
            state = 4;
            break;
        case 'H':
            if (state != 4)
                ThrowBadDuration(text);
            m_lHours = number;
            state = 5;
            break;
        case 'S':
            if (state < 4 || state > 6)
                ThrowBadDuration(text);
            m_llSeconds = number;
            state = 7;
            break;
        case '.':
            if (state < 4 || state > 6)
                ThrowBadDuration(text);
            m_llSeconds = number;
            state = 7;
            // Deliberate: a text that ends with the point is complete: "PT1." passes, "PT1.5"
            // lacks its "S". Pinned by DurationParsing.ReadsEachFieldAndWritesItBack.
            if (*p == '\0')
                break;
            for (int digit = 1; DateDigits::IsDigit(*p); ++digit, ++p) {
                static constexpr unsigned short kWeight[3] = {100, 10, 1};
                const auto value = static_cast<unsigned short>(*p - '0');
                const auto weighted = static_cast<unsigned short>(value * kWeight[(digit - 1) % 3]);
                if (digit <= 3)
                    m_nMilliSeconds = static_cast<unsigned short>(m_nMilliSeconds + weighted);
                else if (digit <= 6)
                    m_nMicroSeconds = static_cast<unsigned short>(m_nMicroSeconds + weighted);
                // Deliberate: each of the last three digits replaces the one before, so
                // ".123456789" carries 9 nanoseconds and prints as ".123456009". Pinned by
                // DurationParsing.ReadsEachFieldAndWritesItBack.
                else if (digit <= 9)
                    m_nNanoSeconds = value;
                else
                    throw CQnInvalidValueException(
                        FormatString("Invalid XSD Duration [%s] Fraction part too long", text));
            }
            if (*p != 'S')
                ThrowBadDuration(text);
            ++p;
            state = 8;
            break;
        default:
            ThrowBadDuration(text);
        }
    }
    if (state == 0 || state == 4)
        ThrowBadDuration(text);
}

std::string CDateTimeSpan::ToString() const
{
    // Five numbers of 20 digits at most, a year of 5, three fraction groups of 5, and the letters.
    char buffer[160];
    char* out = buffer;
    const auto putField = [&out](unsigned long long value, char designator) {
        if (value != 0) {
            out = DateDigits::PutNumber(out, value);
            *out++ = designator;
        }
    };

    if (m_bNegative)
        *out++ = '-';
    *out++ = 'P';
    putField(m_nYears, 'Y');
    putField(m_lMonths, 'M');
    putField(m_lDays, 'D');

    const bool hasSeconds =
        m_llSeconds != 0 || m_nMilliSeconds != 0 || m_nMicroSeconds != 0 || m_nNanoSeconds != 0;
    if (m_lHours != 0 || m_llMinutes != 0 || hasSeconds) {
        *out++ = 'T';
        putField(m_lHours, 'H');
        putField(m_llMinutes, 'M');
        if (hasSeconds) {
            out = DateDigits::PutNumber(out, m_llSeconds);
            out = DateDigits::PutFraction(out, m_nMilliSeconds, m_nMicroSeconds, m_nNanoSeconds);
            *out++ = 'S';
        }
    }
    // Deliberate: an empty span is left at "P", which ParseXSDDuration refuses. Pinned by
    // DurationFields.AreMagnitudesUnderOneSign.
    return std::string(buffer, out);
}

} // namespace QnXmlLib16
