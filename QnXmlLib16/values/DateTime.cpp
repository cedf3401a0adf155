#include "QnXmlLib16/values/DateTime.h"

#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/values/DateTimeSpan.h"
#include "QnXmlLib16/values/internal/DateDigits.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <ctime>

namespace QnXmlLib16 {

namespace {

constexpr unsigned int kYear = 1;
constexpr unsigned int kMonth = 2;
constexpr unsigned int kDay = 4;
constexpr unsigned int kTime = 8;
constexpr unsigned int kFullDate = kYear | kMonth | kDay;

struct Kind
{
    const char* text;
    unsigned int fields;
};

constexpr Kind kKinds[] = {
    {"yearZero", 0},
    {"dateTime", kFullDate | kTime},
    {"date", kFullDate},
    {"gYearMonth", kYear | kMonth},
    {"gYear", kYear},
    {"time", kTime},
    {"gDay", kDay},
    {"gMonth", kMonth},
    {"gMonthDay", kMonth | kDay},
};
static_assert(sizeof(kKinds) / sizeof(kKinds[0]) == dt_gMonthDay + 1, "one row for each kind");

// An application can cast any number to a kind; one that is none has no fields and no text.
bool IsKnown(DTType kind)
{
    return kind >= dt_yearZero && kind <= dt_gMonthDay;
}

unsigned int FieldsOf(DTType kind)
{
    return IsKnown(kind) ? kKinds[kind].fields : 0;
}

const char* TextOf(DTType kind)
{
    return IsKnown(kind) ? kKinds[kind].text : "";
}

[[noreturn]] void ThrowBadYear(long year)
{
    // Deliberate order of the limits: callers match on message texts. Pinned by
    // DateValidation.NamesTheFirstFieldThatIsOutOfRange.
    throw CQnInvalidValueException(
        FormatString("Invalid Year [%ld] (%d <= year <= %d && year != 0)", year,
                     static_cast<int>(MAX_YEAR), static_cast<int>(MIN_YEAR)));
}

[[noreturn]] void ThrowBadMonth(int month)
{
    throw CQnInvalidValueException(FormatString("Invalid Month [%d] (1 <= month <= 12)", month));
}

[[noreturn]] void ThrowBadField(const char* format, int value)
{
    throw CQnInvalidValueException(FormatString(format, value));
}

// name is the field as it stands in the messages.
void NeedZero(const char* name, int value, DTType kind)
{
    if (value != 0)
        throw CQnInvalidValueException(
            FormatString("Invalid %s [%d] for type %s", name, value, TextOf(kind)));
}

[[noreturn]] void ThrowBadDate(const char* text, std::size_t length)
{
    throw CQnInvalidValueException(
        FormatString("Invalid XSD Date [%s] expected CCYY-MM-DD[Z|[+|-]hh:mm]",
                     std::string(text, length).c_str()));
}

bool ReadFour(const char* text, int& value)
{
    int high = 0;
    int low = 0;
    if (!DateDigits::ReadTwo(text, high) || !DateDigits::ReadTwo(text + 2, low))
        return false;
    value = high * 100 + low;
    return true;
}

double RealSecond(unsigned int second, unsigned int milli, unsigned int micro, unsigned int nano)
{
    return milli / 1000.0 + second + micro / 1e6 + nano / 1e9;
}

int OrderOf(int a, int b)
{
    return a < b ? 1 : (a > b ? 2 : 0);
}

// A field below the year. 0 when it decides nothing; a field that one side lacks decides by itself.
int CompareField(bool inA, int a, bool inB, int b)
{
    if (inA && inB)
        return OrderOf(a, b);
    if (inA)
        return a == 0 ? 2 : 3;
    if (inB)
        return b == 0 ? 1 : 3;
    return 0;
}

// Sums wrap at 64 bits: a span carries any 64-bit magnitude.
long long WrappingAdd(long long a, long long b)
{
    return static_cast<long long>(static_cast<unsigned long long>(a) +
                                  static_cast<unsigned long long>(b));
}

long long Signed(unsigned long long magnitude, bool negative)
{
    return static_cast<long long>(negative ? 0ULL - magnitude : magnitude);
}

// Leaves value modulo base in the field and returns the quotient, the carry for the next field.
//
// Deliberate: quotient and modulo are those of single precision, which rounds a value above
// 24 bits, so the field can come out below 0 or above the base. It is stored in the field's width
// as it is: 1000000007 seconds leave 243, that is -13, in the second. Pinned by
// DateArithmetic.LargeSpansCarryInSinglePrecision.
template <class TField>
int CarryOver(TField& field, long long value, int base)
{
    if (value >= 0 && value < base) {
        field = static_cast<TField>(value);
        return 0;
    }
    field = static_cast<TField>(GetModulo(value, base));
    return GetQuotient(value, base);
}

// A place in the calendar while days are counted. The month may lie outside 1 to 12, and the day
// outside the month, when a sum left them there.
struct CalendarDay
{
    short year;
    unsigned char month;
    unsigned char day;

    bool IsMonthKnown() const { return month >= 1 && month <= 12; }

    int MonthLength() const
    {
        if (!IsMonthKnown())
            return 31;
        return month == 2 && !IsLeapYear(year) ? 28 : g_monthMax[month - 1];
    }
};

constexpr long long kDaysOf400Years = 146097;
// The years from -32768 to 32767, after which a 16-bit year is back where it was.
constexpr long long kDaysOfAllYears = 65536LL * 365 + 15892;

short YearBeside(short year, int step)
{
    return static_cast<short>(static_cast<unsigned short>(year + step));
}

// Walks whole years, as many as days holds, and returns the days that remain. Forward (step 1) at
// stands on the first of a month, back (step -1) on the last day of one, which the caller sets
// afterwards; the month-wise walk would meet the same place with the same remainder. Whole cycles
// are skipped, so that a span of 2^31 days takes no longer than some hundred steps.
long long SkipYears(CalendarDay& at, long long days, int step)
{
    days %= kDaysOfAllYears;
    for (;;) {
        // A cycle must not cross the wrap: 65536 years are no multiple of 400.
        const int room = step > 0 ? SHRT_MAX - at.year : at.year - SHRT_MIN;
        const long long cycles = std::min<long long>(days / kDaysOf400Years, room / 400);
        at.year = static_cast<short>(at.year + step * static_cast<int>(cycles) * 400);
        days -= cycles * kDaysOf400Years;

        const short next = YearBeside(at.year, step);
        const bool ownFebruary = step > 0 ? at.month <= 2 : at.month >= 2;
        const int length = IsLeapYear(ownFebruary ? at.year : next) ? 366 : 365;
        if (days < length)
            return days;
        days -= length;
        at.year = next;
    }
}

void MoveForward(CalendarDay& at, long long days)
{
    while (days > 0) {
        const int length = at.MonthLength();
        if (at.day + days <= length) {
            at.day = static_cast<unsigned char>(at.day + days);
            return;
        }
        days -= length + 1 - at.day;
        at.day = 1;
        if (at.month >= 12) {
            at.month = 1;
            at.year = YearBeside(at.year, 1);
        }
        else {
            ++at.month;
        }
        days = SkipYears(at, days, 1);
    }
}

void MoveBack(CalendarDay& at, long long days)
{
    while (days > 0) {
        if (at.day > days) {
            at.day = static_cast<unsigned char>(at.day - days);
            return;
        }
        days -= at.day;
        if (at.month <= 1) {
            at.month = 12;
            at.year = YearBeside(at.year, -1);
        }
        else {
            --at.month;
        }
        if (at.IsMonthKnown())
            days = SkipYears(at, days, -1);
        // Only now: the February of another year may be shorter.
        at.day = static_cast<unsigned char>(at.MonthLength());
    }
}

} // namespace

CDateTime::CDateTime() = default;

CDateTime::CDateTime(DTType kind) : m_type(kind) {}

CDateTime::CDateTime(short year, unsigned char month, unsigned char day)
{
    try {
        SetDate(year, month, day);
    }
    catch (const CQnException&) {
        Clear();
    }
}

CDateTime::CDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
                     unsigned char minute, unsigned char second)
    : CDateTime(year, month, day, hour, minute, second, 0, 0, 0)
{}

CDateTime::CDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
                     unsigned char minute, unsigned char second, unsigned short milli,
                     unsigned short micro, unsigned short nano)
{
    try {
        SetDateTime(year, month, day, hour, minute, second, milli, micro, nano);
    }
    catch (const CQnException&) {
        Clear();
    }
}

CDateTime::CDateTime(const long& time)
{
    try {
        *this = time;
    }
    catch (const CQnException&) {
        Clear();
    }
}

CDateTime::CDateTime(const char* text)
{
    ParseXSDDateTime(text);
}

CDateTime::~CDateTime() = default;

CDateTime& CDateTime::operator=(const long& time)
{
    const std::time_t instant = time;
    std::tm parts;
    if (gmtime_r(&instant, &parts) == nullptr)
        ThrowBadYear(0);
    const long year = 1900L + parts.tm_year;
    if (year < SHRT_MIN || year > SHRT_MAX)
        ThrowBadYear(year);
    SetDateTime(static_cast<short>(year), static_cast<unsigned char>(parts.tm_mon + 1),
                static_cast<unsigned char>(parts.tm_mday),
                static_cast<unsigned char>(parts.tm_hour), static_cast<unsigned char>(parts.tm_min),
                static_cast<unsigned char>(parts.tm_sec));
    return *this;
}

CDateTime CDateTime::GetCurrentTime()
{
    const long now = std::time(nullptr);
    return CDateTime(now);
}

void CDateTime::Clear()
{
    *this = CDateTime();
}

void CDateTime::SetDateTime(DTType kind, short year, unsigned char month, unsigned char day,
                            unsigned char hour, unsigned char minute, unsigned char second,
                            unsigned short milli, unsigned short micro, unsigned short nano)
{
    if (m_type != dt_yearZero && m_type != kind)
        throw CQnInvalidValueException(
            FormatString("Failed to copy CDateTime. Invalid Date Type: %s, expected: %s.",
                         TextOf(kind), TextOf(m_type)));
    Clear();
    m_type = kind;
    m_nYear = year;
    m_nMonth = month;
    m_nDay = day;
    m_nHour = hour;
    m_nMinute = minute;
    m_nSecond = second;
    m_nMilliSecond = milli;
    m_nMicroSecond = micro;
    m_nNanoSecond = nano;
    Validate();
}

void CDateTime::SetDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
                            unsigned char minute, unsigned char second)
{
    SetDateTime(dt_dateTime, year, month, day, hour, minute, second, 0, 0, 0);
}

void CDateTime::SetDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
                            unsigned char minute, unsigned char second, unsigned short milli,
                            unsigned short micro, unsigned short nano)
{
    SetDateTime(dt_dateTime, year, month, day, hour, minute, second, milli, micro, nano);
}

void CDateTime::SetDate(short year, unsigned char month, unsigned char day)
{
    SetDateTime(dt_date, year, month, day, 0, 0, 0, 0, 0, 0);
}

void CDateTime::SetGYearMonth(short year, unsigned char month)
{
    SetDateTime(dt_gYearMonth, year, month, 0, 0, 0, 0, 0, 0, 0);
}

void CDateTime::SetGYear(short year)
{
    SetDateTime(dt_gYear, year, 0, 0, 0, 0, 0, 0, 0, 0);
}

void CDateTime::SetGMonth(unsigned char month)
{
    SetDateTime(dt_gMonth, 0, month, 0, 0, 0, 0, 0, 0, 0);
}

void CDateTime::SetGMonthDay(unsigned char month, unsigned char day)
{
    SetDateTime(dt_gMonthDay, 0, month, day, 0, 0, 0, 0, 0, 0);
}

void CDateTime::SetGDay(unsigned char day)
{
    SetDateTime(dt_gDay, 0, 0, day, 0, 0, 0, 0, 0, 0);
}

void CDateTime::SetTime(unsigned char hour, unsigned char minute, unsigned char second)
{
    SetDateTime(dt_time, 0, 0, 0, hour, minute, second, 0, 0, 0);
}

void CDateTime::SetTime(unsigned char hour, unsigned char minute, unsigned char second,
                        unsigned short milli, unsigned short micro, unsigned short nano)
{
    SetDateTime(dt_time, 0, 0, 0, hour, minute, second, milli, micro, nano);
}

void CDateTime::SetFracTime(unsigned short milli, unsigned short micro, unsigned short nano)
{
    SetDateTime(dt_time, 0, 0, 0, 0, 0, 0, milli, micro, nano);
}

void CDateTime::CheckConversion(DTType from, DTType to)
{
    if (from == to || to == dt_yearZero)
        return;
    if (from > dt_gMonthDay)
        throw CQnInvalidValueException(
            FormatString("Unknown date type %d.", static_cast<int>(from)));
    if (from == dt_dateTime)
        return;
    if (!IsKnown(to) || (FieldsOf(to) & ~FieldsOf(from)) != 0)
        // Deliberate spelling: callers match on message texts.
        throw CQnInvalidValueException(FormatString(
            "Attempting to set a CDateTime of type %s using an XmlDateTime of type %s. The source "
            "CDateTime does not contian enough data to allow the conversion.",
            TextOf(to), TextOf(from)));
}

void CDateTime::SetDateTime(const CDateTime& source, DTType kind)
{
    CheckConversion(source.m_type, kind);
    // Deliberate: fields that the kind lacks are kept, unseen, and nothing is validated: a date made
    // from a dateTime still holds the hour, and Validate refuses it. Pinned by
    // DateConversion.NeedsTheFieldsOfTheNewKindAndKeepsTheOthers.
    *this = source;
    m_type = kind;
}

void CDateTime::NeedFields(unsigned int fields, const char* operation) const
{
    if ((FieldsOf(m_type) & fields) != fields)
        throw CQnInvalidStateException(
            FormatString("Failed to %s. Invalid Date Type: %s.", operation, TextOf(m_type)));
}

short CDateTime::GetYear() const
{
    NeedFields(kYear, "GetYear");
    return m_nYear;
}

// Deliberate: a setter that is refused says "Get" as its getter does. Callers match on message
// texts. Pinned by DateFields.BelongToTheirKindsOnly.
void CDateTime::SetYear(short year)
{
    NeedFields(kYear, "GetYear");
    m_nYear = year;
}

unsigned char CDateTime::GetMonth() const
{
    NeedFields(kMonth, "GetMonth");
    return m_nMonth;
}

void CDateTime::SetMonth(unsigned char month)
{
    NeedFields(kMonth, "GetMonth");
    m_nMonth = month;
}

unsigned char CDateTime::GetDay() const
{
    NeedFields(kDay, "GetDay");
    return m_nDay;
}

void CDateTime::SetDay(unsigned char day)
{
    NeedFields(kDay, "GetDay");
    m_nDay = day;
}

unsigned char CDateTime::GetHour() const
{
    NeedFields(kTime, "GetHour");
    return m_nHour;
}

void CDateTime::SetHour(unsigned char hour)
{
    NeedFields(kTime, "GetHour");
    m_nHour = hour;
}

unsigned char CDateTime::GetMinute() const
{
    NeedFields(kTime, "GetMinute");
    return m_nMinute;
}

void CDateTime::SetMinute(unsigned char minute)
{
    NeedFields(kTime, "GetMinute");
    m_nMinute = minute;
}

unsigned char CDateTime::GetSecond() const
{
    NeedFields(kTime, "GetSecond");
    return m_nSecond;
}

void CDateTime::SetSecond(unsigned char second)
{
    NeedFields(kTime, "GetSecond");
    m_nSecond = second;
}

unsigned short CDateTime::GetMilliSecond() const
{
    NeedFields(kTime, "GetMilliSecond");
    return m_nMilliSecond;
}

void CDateTime::SetMilliSecond(unsigned short milli)
{
    NeedFields(kTime, "GetMilliSecond");
    m_nMilliSecond = milli;
}

unsigned short CDateTime::GetMicroSecond() const
{
    NeedFields(kTime, "GetMicroSecond");
    return m_nMicroSecond;
}

void CDateTime::SetMicroSecond(unsigned short micro)
{
    NeedFields(kTime, "GetMicroSecond");
    m_nMicroSecond = micro;
}

unsigned short CDateTime::GetNanoSecond() const
{
    NeedFields(kTime, "GetNanoSecond");
    return m_nNanoSecond;
}

void CDateTime::SetNanoSecond(unsigned short nano)
{
    NeedFields(kTime, "GetNanoSecond");
    m_nNanoSecond = nano;
}

double CDateTime::GetRealSecond() const
{
    NeedFields(kTime, "GetRealSecond");
    return RealSecond(m_nSecond, m_nMilliSecond, m_nMicroSecond, m_nNanoSecond);
}

void CDateTime::SetUTC()
{
    m_bZonePresent = true;
    m_bZoneIsOffset = false;
    m_nZoneHour = 0;
    m_nZoneMinute = 0;
}

void CDateTime::SetTimeZone(short hour, unsigned char minute)
{
    if (hour < -23 || hour > 23 || minute > 59)
        throw CQnInvalidValueException(FormatString(
            "Invalid TimeZone [%d:%d]", static_cast<int>(hour), static_cast<int>(minute)));
    m_bZonePresent = true;
    m_bZoneIsOffset = true;
    m_nZoneHour = hour;
    m_nZoneMinute = minute;
}

short CDateTime::GetZoneHour() const
{
    if (!m_bZoneIsOffset)
        throw CQnInvalidStateException("TimeZone is not been used");
    return m_nZoneHour;
}

unsigned char CDateTime::GetZoneMinute() const
{
    if (!m_bZoneIsOffset)
        throw CQnInvalidStateException("TimeZone is not been used");
    return m_nZoneMinute;
}

std::string CDateTime::GetTypeAsString() const
{
    return TextOf(m_type);
}

std::string CDateTime::GetTypeAsString(DTType kind)
{
    return TextOf(kind);
}

void CDateTime::Validate() const
{
    if (m_type == dt_yearZero)
        throw CQnInvalidValueException("Invalid Year Zero");
    const unsigned int fields = FieldsOf(m_type);

    if ((fields & kMonth) == 0)
        NeedZero("Month", m_nMonth, m_type);
    else if (m_nMonth < 1 || m_nMonth > 12)
        ThrowBadMonth(m_nMonth);

    if ((fields & kYear) == 0)
        NeedZero("Year", m_nYear, m_type);
    else if (m_nYear == 0 || m_nYear < MIN_YEAR || m_nYear > MAX_YEAR)
        ThrowBadYear(m_nYear);

    if (m_type == dt_gDay) {
        // Deliberate: a day on its own has no upper limit, "---45" is valid. Pinned by
        // DateValidation.NamesTheFirstFieldThatIsOutOfRange.
        if (m_nDay == 0)
            ThrowBadField("Invalid Day [%d] (1 <= day <= 31)", m_nDay);
    }
    else if ((fields & kDay) == 0) {
        NeedZero("Day", m_nDay, m_type);
    }
    else if (m_nDay < 1 || m_nDay > g_monthMax[m_nMonth - 1] ||
             ((fields & kYear) != 0 && m_nMonth == 2 && m_nDay == 29 && !IsLeapYear(m_nYear))) {
        // Deliberate: the bracket is missing where there is a year. Callers match on message texts.
        ThrowBadField((fields & kYear) != 0 ? "Invalid Day [%d] (1 <= day <= days in month"
                                            : "Invalid Day [%d] (1 <= day <= days in month)",
                      m_nDay);
    }

    if ((fields & kTime) == 0) {
        NeedZero("Hour", m_nHour, m_type);
        NeedZero("Minute", m_nMinute, m_type);
        NeedZero("Second", m_nSecond, m_type);
        NeedZero("Milli-Second", m_nMilliSecond, m_type);
        NeedZero("Micro-Second", m_nMicroSecond, m_type);
        NeedZero("Nano-Second", m_nNanoSecond, m_type);
        return;
    }
    if (m_nHour > 23)
        ThrowBadField("Invalid Hour [%d] (0 <= hour <= 23)", m_nHour);
    if (m_nMinute > 59)
        ThrowBadField("Invalid Minute [%d] (0 <= minute <= 59)", m_nMinute);
    if (m_nSecond > 59)
        ThrowBadField("Invalid Second [%d] (0 <= second <= 59)", m_nSecond);
    if (m_nMilliSecond > 999)
        ThrowBadField("Invalid Milli-Second [%d] (0 <= milli <= 999)", m_nMilliSecond);
    if (m_nMicroSecond > 999)
        ThrowBadField("Invalid Micro-Second [%d] (0 <= micro <= 999)", m_nMicroSecond);
    if (m_nNanoSecond > 999)
        ThrowBadField("Invalid Nano-Second [%d] (0 <= nano <= 999)", m_nNanoSecond);
}

void CDateTime::ParseXSDDate(const char* text)
{
    // Deliberate: the kind the value had goes with the rest, and the text alone gives the new one; a
    // caller that wants a certain kind asks GetType. Pinned by
    // DateParsing.TheShapeOfTheTextDecidesTheKind.
    Clear();
    if (text == nullptr)
        throw CQnInvalidValueException("Invalid Date (Null String)");
    SetXSDDate(text, std::strlen(text));
    Validate();
}

void CDateTime::ParseXSDTime(const char* text)
{
    Clear();
    if (text == nullptr)
        throw CQnInvalidValueException("Invalid Time (Null String)");
    SetXSDTime(text);
    Validate();
}

void CDateTime::ParseXSDDateTime(const char* text)
{
    if (text == nullptr)
        throw CQnInvalidValueException("Invalid DateTime (Null String)");
    const char* separator = std::strchr(text, 'T');
    if (separator == nullptr)
        throw CQnInvalidValueException(FormatString("Invalid XSD DateTime [%s].", text));

    Clear();
    // Deliberate: the date part goes through the date parser whole, so that a zone in front of the
    // "T" is taken; one behind the time replaces it. Pinned by DateParsing.TakesAZoneOnEitherSide.
    SetXSDDate(text, static_cast<std::size_t>(separator - text));
    if (m_type != dt_date)
        throw CQnInvalidValueException(
            FormatString("Invalid XSD DateTime [%s] expected CCYY-MM-DDThh:mm:ss[.ff]", text));
    SetXSDTime(separator + 1);
    m_type = dt_dateTime;
    Validate();
}

void CDateTime::SetXSDDate(const char* text, std::size_t length)
{
    if (length == 0)
        throw CQnInvalidValueException("Invalid Date (Empty String)");
    if (std::memchr(text, 'T', length) != nullptr)
        throw CQnInvalidValueException("Invalid Date ('T' not allowed)");

    const bool hasZ = text[length - 1] == 'Z';
    const bool hasColon = std::memchr(text, ':', length) != nullptr;
    if (hasZ && hasColon)
        throw CQnInvalidValueException("Invalid Date (Bad Zone value)");
    const std::size_t zoneLength = hasZ ? 1 : (hasColon ? 6 : 0);
    if (length < zoneLength)
        ThrowBadDate(text, length);
    const std::size_t bodyLength = length - zoneLength;

    DTType kind = dt_yearZero;
    int year = 0;
    int month = 0;
    int day = 0;
    bool isValid = false;
    if (length >= 2 && text[0] == '-' && text[1] == '-') {
        switch (bodyLength) {
        case 4:
        case 6:
            // Deliberate: "--MM--" is the older form of the month, but any two characters may
            // stand there: "--05xx" is May. Pinned by DateParsing.TheShapeOfTheTextDecidesTheKind.
            kind = dt_gMonth;
            isValid = DateDigits::ReadTwo(text + 2, month);
            break;
        case 5:
            kind = dt_gDay;
            isValid = text[2] == '-' && DateDigits::ReadTwo(text + 3, day);
            break;
        case 7:
            kind = dt_gMonthDay;
            isValid = DateDigits::ReadTwo(text + 2, month) && text[4] == '-' &&
                      DateDigits::ReadTwo(text + 5, day);
            break;
        default:
            break;
        }
    }
    else {
        const bool isNegative = text[0] == '-';
        const char* body = isNegative ? text + 1 : text;
        switch (isNegative && bodyLength > 0 ? bodyLength - 1 : bodyLength) {
        case 4:
            kind = dt_gYear;
            isValid = ReadFour(body, year);
            break;
        case 7:
            kind = dt_gYearMonth;
            isValid =
                ReadFour(body, year) && body[4] == '-' && DateDigits::ReadTwo(body + 5, month);
            break;
        case 10:
            kind = dt_date;
            isValid = ReadFour(body, year) && body[4] == '-' &&
                      DateDigits::ReadTwo(body + 5, month) && body[7] == '-' &&
                      DateDigits::ReadTwo(body + 8, day);
            break;
        default:
            break;
        }
        if (isNegative)
            year = -year;
    }
    if (!isValid)
        ThrowBadDate(text, length);

    m_nYear = static_cast<short>(year);
    m_nMonth = static_cast<unsigned char>(month);
    m_nDay = static_cast<unsigned char>(day);
    m_type = kind;
    if (zoneLength != 0)
        SetZone(text + bodyLength, zoneLength);
}

void CDateTime::SetXSDTime(const char* text)
{
    if (*text == '\0')
        throw CQnInvalidValueException("Invalid XSD Time (Empty String)");
    int hour = 0;
    int minute = 0;
    int second = 0;
    // In order and no further than the first misfit: the terminator stops it too.
    if (!DateDigits::ReadTwo(text, hour) || text[2] != ':' ||
        !DateDigits::ReadTwo(text + 3, minute) || text[5] != ':' ||
        !DateDigits::ReadTwo(text + 6, second) || hour > 23 || minute > 59 || second > 59)
        throw CQnInvalidValueException(
            FormatString("Invalid XSD Time [%s] expected hh:mm:ss[.ff]", text));
    m_nHour = static_cast<unsigned char>(hour);
    m_nMinute = static_cast<unsigned char>(minute);
    m_nSecond = static_cast<unsigned char>(second);

    const char* rest = text + 8;
    if (*rest == '.') {
        ++rest;
        unsigned short* const groups[3] = {&m_nMilliSecond, &m_nMicroSecond, &m_nNanoSecond};
        static constexpr int kWeight[3] = {100, 10, 1};
        for (int digit = 0; DateDigits::IsDigit(*rest); ++digit, ++rest) {
            if (digit == 9)
                throw CQnInvalidValueException(
                    FormatString("Invalid XSD Time [%s] Fraction part too long", text));
            unsigned short& group = *groups[digit / 3];
            group = static_cast<unsigned short>(group + (*rest - '0') * kWeight[digit % 3]);
        }
    }
    m_type = dt_time;
    if (*rest != '\0')
        SetZone(rest, std::strlen(rest));
}

void CDateTime::SetZone(const char* zone, std::size_t length)
{
    if (zone[0] == 'Z') {
        SetUTC();
        return;
    }
    // Deliberate: what starts no zone is ignored, and so is what stands behind a "Z": "12:00:00abc"
    // is noon without a zone. Pinned by DateParsing.TakesAZoneOnEitherSide.
    if (zone[0] != '+' && zone[0] != '-')
        return;

    int hour = 0;
    int minute = 0;
    if (length != 6 || !DateDigits::ReadTwo(zone + 1, hour) || zone[3] != ':' ||
        !DateDigits::ReadTwo(zone + 4, minute))
        throw CQnInvalidValueException(
            FormatString("Invalid XSD Time Zone [%s].", std::string(zone, length).c_str()));
    // Deliberate: an hour of 24 is none at all. The sign goes to the hour, and an hour of 0 has none,
    // so "-00:30" is half an hour east. Pinned by DateParsing.TakesAZoneOnEitherSide.
    if (hour == 24)
        hour = 0;
    SetTimeZone(static_cast<short>(zone[0] == '-' ? -hour : hour),
                static_cast<unsigned char>(minute));
}

std::string CDateTime::ToString(const char* format) const
{
    // Deliberate: an unset value prints as words, whatever the format; only midnight is a value with
    // all fields 0. Pinned by DatePrinting.TheFormatIsTheLexicalFormOrNothing.
    if (m_type == dt_yearZero || (m_type != dt_time && m_nYear == 0 && m_nMonth == 0 &&
                                  m_nDay == 0 && m_nHour == 0 && m_nMinute == 0 && m_nSecond == 0 &&
                                  m_nMilliSecond == 0 && m_nMicroSecond == 0 && m_nNanoSecond == 0))
        return "Error: Date Not Set";
    if (format == nullptr || std::strcmp(format, "G") == 0)
        return std::string();
    // Deliberate: an empty format is unknown like any other; only a null one gives no text. Pinned
    // by DatePrinting.TheFormatIsTheLexicalFormOrNothing.
    if (std::strcmp(format, "s") != 0)
        return std::string("Unknown Format: ") + format;

    // A sign, a year of 5 digits, five fields of 3, three fraction groups of 5, the marks between
    // them and the zone.
    char buffer[64];
    char* out = buffer;
    const auto putYear = [this, &out] {
        if (m_nYear < 0)
            *out++ = '-';
        out = DateDigits::PutPadded(out,
                                    static_cast<unsigned int>(m_nYear < 0 ? -m_nYear : m_nYear), 4);
    };
    const auto putNext = [&out](char mark, unsigned int value) {
        *out++ = mark;
        out = DateDigits::PutTwo(out, value);
    };

    const unsigned int fields = FieldsOf(m_type);
    if ((fields & kYear) != 0) {
        putYear();
        if ((fields & kMonth) != 0)
            putNext('-', m_nMonth);
        if ((fields & kDay) != 0)
            putNext('-', m_nDay);
        if ((fields & kTime) != 0)
            *out++ = 'T';
    }
    else if ((fields & (kMonth | kDay)) != 0) {
        // A hyphen stands for each of the fields that are missing in front.
        *out++ = '-';
        if ((fields & kMonth) != 0)
            putNext('-', m_nMonth);
        else
            *out++ = '-';
        if ((fields & kDay) != 0)
            putNext('-', m_nDay);
    }
    if ((fields & kTime) != 0) {
        out = DateDigits::PutTwo(out, m_nHour);
        putNext(':', m_nMinute);
        putNext(':', m_nSecond);
        out = DateDigits::PutFraction(out, m_nMilliSecond, m_nMicroSecond, m_nNanoSecond);
    }

    if (m_bZoneIsOffset) {
        putNext(m_nZoneHour < 0 ? '-' : '+',
                static_cast<unsigned int>(m_nZoneHour < 0 ? -m_nZoneHour : m_nZoneHour));
        putNext(':', m_nZoneMinute);
    }
    else if (m_bZonePresent) {
        *out++ = 'Z';
    }
    return std::string(buffer, out);
}

std::string CDateTime::ToString() const
{
    return ToString("s");
}

int CDateTime::GetDayOfYear() const
{
    NeedFields(kFullDate, "GetDayOfYear");
    // A sum can leave a month of 13, for which the table has a row; other months have none.
    if (m_nMonth < 1 || m_nMonth > 13)
        ThrowBadMonth(m_nMonth);
    // Deliberate: the leap day is counted before March and not after February. Pinned by
    // DateFields.DayOfYearCountsTheLeapDayEarly.
    const int leapDay = m_nMonth < 3 && IsLeapYear(m_nYear) ? 1 : 0;
    return g_monthDayInYear[m_nMonth - 1] + m_nDay + leapDay;
}

long CDateTime::GetTime() const
{
    const CDateTime normalized = GetNormalized();
    normalized.NeedFields(kFullDate, "GetTime, Date Status must be dateTime or date");
    std::tm parts = {};
    parts.tm_year = normalized.m_nYear - 1900;
    parts.tm_mon = normalized.m_nMonth - 1;
    parts.tm_mday = normalized.m_nDay;
    if (m_type == dt_dateTime) {
        parts.tm_hour = normalized.m_nHour;
        parts.tm_min = normalized.m_nMinute;
        parts.tm_sec = normalized.m_nSecond;
    }
    const std::time_t instant = std::mktime(&parts);

    // mktime takes local time; the distance of the local zone turns that into UTC.
    std::tm local = {};
    std::tm utc = {};
    localtime_r(&instant, &local);
    gmtime_r(&instant, &utc);
    return instant + static_cast<long>(std::difftime(std::mktime(&local), std::mktime(&utc)));
}

int CDateTime::GetDayOfWeek() const
{
    NeedFields(kFullDate, "GetDayOfWeek");
    const std::time_t instant = GetTime();
    std::tm local = {};
    localtime_r(&instant, &local);
    return local.tm_wday + 1;
}

void CDateTime::AddDateTimeSpan(const CDateTimeSpan& span)
{
    // Deliberate: no kind is asked for, so fields that the kind lacks take part: the month 0 of a
    // dt_gYear counts as the December before, and 2001 plus an empty span is 2000. Pinned by
    // DateArithmetic.TakesAnyKindAndValidatesNothing.
    const bool negative = span.IsNegative();
    const long long months = WrappingAdd(m_nMonth - 1LL, Signed(span.GetMonths(), negative));
    unsigned char monthIndex = 0;
    const int years = CarryOver(monthIndex, months, 12);
    m_nMonth = static_cast<unsigned char>(monthIndex + 1);
    m_nYear = static_cast<short>(static_cast<unsigned short>(
        WrappingAdd(m_nYear + static_cast<long long>(years), Signed(span.GetYears(), negative))));

    const auto sum = [negative](int field, int carry, unsigned long long magnitude) {
        return WrappingAdd(field + static_cast<long long>(carry), Signed(magnitude, negative));
    };
    int carry = CarryOver(m_nNanoSecond, sum(m_nNanoSecond, 0, span.GetNanoSeconds()), 1000);
    carry = CarryOver(m_nMicroSecond, sum(m_nMicroSecond, carry, span.GetMicroSeconds()), 1000);
    carry = CarryOver(m_nMilliSecond, sum(m_nMilliSecond, carry, span.GetMilliSeconds()), 1000);
    carry = CarryOver(m_nSecond, sum(m_nSecond, carry, span.GetSeconds()), 60);
    carry = CarryOver(m_nMinute, sum(m_nMinute, carry, span.GetMinutes()), 60);
    carry = CarryOver(m_nHour, sum(m_nHour, carry, span.GetHours()), 24);

    // Days keep 32 bits. From here on 64 are used, so that a sum near the limit does not wrap.
    const long long days = static_cast<int>(
        static_cast<unsigned int>(static_cast<unsigned long long>(sum(0, carry, span.GetDays()))));

    // Deliberate: without days to move the day stays as it is, also where the new month is too
    // short for it: 2001-01-31 plus P1M is 2001-02-31. Pinned by
    // DateArithmetic.TakesAnyKindAndValidatesNothing.
    CalendarDay at = {m_nYear, m_nMonth, m_nDay};
    if (days > 0)
        MoveForward(at, days);
    else if (days < 0)
        MoveBack(at, -days);
    m_nYear = at.year;
    m_nMonth = at.month;
    m_nDay = at.day;
}

CDateTime CDateTime::operator+(const CDateTimeSpan& span) const
{
    CDateTime sum(*this);
    sum.AddDateTimeSpan(span);
    return sum;
}

CDateTime& CDateTime::operator+=(const CDateTimeSpan& span)
{
    AddDateTimeSpan(span);
    return *this;
}

CDateTime CDateTime::operator-(const CDateTimeSpan& span) const
{
    return *this + span.GetAsNegative();
}

CDateTime& CDateTime::operator-=(const CDateTimeSpan& span)
{
    AddDateTimeSpan(span.GetAsNegative());
    return *this;
}

CDateTimeSpan CDateTime::operator-(const CDateTime& /*other*/) const
{
    // Deliberate: a difference of dates is always the empty span. Pinned by
    // DateArithmetic.TakesAnyKindAndValidatesNothing.
    return CDateTimeSpan();
}

CDateTime CDateTime::GetNormalized() const
{
    CDateTime normalized(*this);
    if (!m_bZoneIsOffset)
        return normalized;
    const bool isWest = m_nZoneHour < 0;
    const CDateTimeSpan offset(static_cast<unsigned long>(isWest ? -m_nZoneHour : m_nZoneHour),
                               m_nZoneMinute, 0);
    if (isWest)
        normalized += offset;
    else
        normalized -= offset;
    normalized.SetTimeZone(0, 0);
    return normalized;
}

int Compare(const CDateTime& a, const CDateTime& b)
{
    const unsigned int inA = FieldsOf(a.m_type);
    const unsigned int inB = FieldsOf(b.m_type);
    int order = 0;

    if (((inA | inB) & kYear) != 0) {
        // Deliberate: a year that is missing counts as -1, and years of unlike sign are not
        // comparable, BC and AD included. Pinned by DateOrder.GoesByFieldsFromTheYearDown.
        const int yearA = (inA & kYear) != 0 ? a.m_nYear : -1;
        const int yearB = (inB & kYear) != 0 ? b.m_nYear : -1;
        if (yearA * yearB < 0)
            return 3;
        order = OrderOf(yearA, yearB);
        if (order != 0)
            return order;
    }

    const auto field = [inA, inB](unsigned int which, int valueA, int valueB) {
        return CompareField((inA & which) != 0, valueA, (inB & which) != 0, valueB);
    };
    order = field(kMonth, a.m_nMonth, b.m_nMonth);
    if (order != 0)
        return order;
    order = field(kDay, a.m_nDay, b.m_nDay);
    if (order != 0)
        return order;
    order = field(kTime, a.m_nHour, b.m_nHour);
    if (order != 0)
        return order;
    order = field(kTime, a.m_nMinute, b.m_nMinute);
    if (order != 0)
        return order;

    // Where one side only has a time its hour has decided, so both have seconds here or neither.
    if ((inA & kTime) == 0)
        return 0;
    const double secondA =
        RealSecond(a.m_nSecond, a.m_nMilliSecond, a.m_nMicroSecond, a.m_nNanoSecond);
    const double secondB =
        RealSecond(b.m_nSecond, b.m_nMilliSecond, b.m_nMicroSecond, b.m_nNanoSecond);
    return secondA < secondB ? 1 : (secondA > secondB ? 2 : 0);
}

int CDateTime::CompareTo(const CDateTime& other) const
{
    CDateTime a = GetNormalized();
    CDateTime b = other.GetNormalized();
    if (a.m_bZonePresent == b.m_bZonePresent)
        return Compare(a, b);

    // The side without a zone is tried 14 hours earlier, where the other must lie before it, and
    // then where it must lie behind.
    //
    // Deliberate: the second trial shifts the value that the first one shifted, so it stands where
    // it stood at first and not 14 hours later. A zoned value behind an unzoned one by a second is
    // after it, one before it by up to 14 hours is not comparable. Pinned by
    // DateOrder.GoesByFieldsFromTheYearDown.
    CDateTime& unzoned = a.m_bZonePresent ? b : a;
    const int early = a.m_bZonePresent ? 1 : 2;
    const int late = a.m_bZonePresent ? 2 : 1;
    unzoned.SetTimeZone(14, 0);
    unzoned = unzoned.GetNormalized();
    if (Compare(a, b) == early)
        return early;
    unzoned.SetTimeZone(-14, 0);
    unzoned = unzoned.GetNormalized();
    return Compare(a, b) == late ? late : 3;
}

bool CDateTime::operator==(const CDateTime& other) const
{
    return CompareTo(other) == 0;
}

bool CDateTime::operator!=(const CDateTime& other) const
{
    return CompareTo(other) != 0;
}

bool CDateTime::operator<(const CDateTime& other) const
{
    return CompareTo(other) == 1;
}

bool CDateTime::operator<=(const CDateTime& other) const
{
    const int order = CompareTo(other);
    return order == 0 || order == 1;
}

bool CDateTime::operator>(const CDateTime& other) const
{
    return CompareTo(other) == 2;
}

bool CDateTime::operator>=(const CDateTime& other) const
{
    const int order = CompareTo(other);
    return order == 0 || order == 2;
}

} // namespace QnXmlLib16
