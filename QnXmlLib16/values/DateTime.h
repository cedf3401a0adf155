#pragma once

#include "QnXmlLib16/support/Export.h"

#include <cstddef>
#include <string>

namespace QnXmlLib16 {

class CDateTimeSpan;

// The kinds of a CDateTime: the nine date and time primitives of XML Schema Part 2, less the
// duration, plus the unset value. The numbers are fixed.
enum DTType : int
{
    dt_yearZero = 0,   // unset, no field in use
    dt_dateTime = 1,   // year to nanosecond
    dt_date = 2,       // year, month, day
    dt_gYearMonth = 3, // year, month
    dt_gYear = 4,      // year
    dt_time = 5,       // hour to nanosecond
    dt_gDay = 6,       // day
    dt_gMonth = 7,     // month
    dt_gMonthDay = 8   // month, day
};

constexpr short MIN_YEAR = -9999;
constexpr short MAX_YEAR = 9999;

// Days of each month, February at its leap length.
inline constexpr int g_monthMax[12] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
// Days before each month of a common year; the thirteenth entry is the whole year.
inline constexpr int g_monthDayInYear[13] = {0,   31,  59,  90,  120, 151, 181,
                                             212, 243, 273, 304, 334, 365};

// A date or time of any of the kinds above. Only the fields of the kind carry meaning; accessors
// of the others throw.
//
// Failures: bad text, a field out of range and a conversion that lacks data throw
// CQnInvalidValueException; a field that the kind does not have throws CQnInvalidStateException
// "Failed to Get<Field>. Invalid Date Type: <kind>.".
//
// A value: copies share nothing. One object, one thread at a time.
class QNXML_API CDateTime
{
public:
    // Unset: dt_yearZero, all fields 0.
    CDateTime();
    // All fields 0. Not validated: month and day of a date stay 0 until they are set.
    CDateTime(DTType kind);
    // A dt_date, or a dt_dateTime. These never throw: an impossible date gives an unset value,
    // so ask GetType() for dt_yearZero to find out.
    CDateTime(short year, unsigned char month, unsigned char day);
    CDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
              unsigned char minute, unsigned char second);
    CDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
              unsigned char minute, unsigned char second, unsigned short milli,
              unsigned short micro, unsigned short nano);
    // The dt_dateTime in UTC, without a zone, of a time_t. Never throws: a time outside
    // MIN_YEAR to MAX_YEAR gives an unset value.
    CDateTime(const long& time);
    // ParseXSDDateTime, whose failures reach the caller.
    CDateTime(const char* text);
    CDateTime(const CDateTime& other) = default;
    CDateTime& operator=(const CDateTime& other) = default;
    virtual ~CDateTime();

    // As CDateTime(time), but throws: for a value that has another kind, as SetDateTime does, and
    // "Invalid Year [...]" for a time without a year that fits, 0 standing for one that the C
    // library cannot break down.
    CDateTime& operator=(const long& time);
    // Now, as a dt_dateTime in UTC without a zone, to the second.
    static CDateTime GetCurrentTime();

    // Unset, without a zone.
    void Clear();

    // The setters below give the value their kind, store the fields, remove the zone and call
    // Validate. A value of another kind than theirs is refused untouched with "Failed to copy
    // CDateTime. Invalid Date Type: <theirs>, expected: <current>."; Clear it first. When
    // Validate throws the refused fields stay stored.
    void SetDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
                     unsigned char minute, unsigned char second);
    void SetDateTime(short year, unsigned char month, unsigned char day, unsigned char hour,
                     unsigned char minute, unsigned char second, unsigned short milli,
                     unsigned short micro, unsigned short nano);
    void SetDate(short year, unsigned char month, unsigned char day);
    void SetGYearMonth(short year, unsigned char month);
    void SetGYear(short year);
    void SetGMonth(unsigned char month);
    void SetGMonthDay(unsigned char month, unsigned char day);
    void SetGDay(unsigned char day);
    void SetTime(unsigned char hour, unsigned char minute, unsigned char second);
    void SetTime(unsigned char hour, unsigned char minute, unsigned char second,
                 unsigned short milli, unsigned short micro, unsigned short nano);
    // A dt_time within the first second of the day.
    void SetFracTime(unsigned short milli, unsigned short micro, unsigned short nano);

    // Copies all fields and the zone of source as they are and takes the given kind. Fields that
    // the new kind lacks stay stored, unseen, and nothing is validated. Throws, leaving this value
    // untouched, where source lacks a field that the kind needs: "Attempting to set a CDateTime
    // of type <kind> using an XmlDateTime of type <source>. The source CDateTime does not contian
    // enough data to allow the conversion.", or "Unknown date type <number>.".
    void SetDateTime(const CDateTime& source, DTType kind);

    // Single fields. The getters and setters throw, with "Get" in the message of both, unless the
    // kind has the field. Setters check no range: call Validate when done.
    short GetYear() const;
    void SetYear(short year);
    unsigned char GetMonth() const;
    void SetMonth(unsigned char month);
    unsigned char GetDay() const;
    void SetDay(unsigned char day);
    unsigned char GetHour() const;
    void SetHour(unsigned char hour);
    unsigned char GetMinute() const;
    void SetMinute(unsigned char minute);
    unsigned char GetSecond() const;
    void SetSecond(unsigned char second);
    // First, second and third group of three digits of the fraction of a second.
    unsigned short GetMilliSecond() const;
    void SetMilliSecond(unsigned short milli);
    unsigned short GetMicroSecond() const;
    void SetMicroSecond(unsigned short micro);
    unsigned short GetNanoSecond() const;
    void SetNanoSecond(unsigned short nano);
    // Seconds with their fraction.
    double GetRealSecond() const;

    // True of any value with a zone, also of "+01:00".
    bool IsUTC() const { return m_bZonePresent; }
    // True of a numeric offset, not of "Z".
    bool HasTimeZone() const { return m_bZoneIsOffset; }
    // Makes the zone "Z".
    void SetUTC();
    // Makes the zone an offset: hour -23 to 23, east of UTC positive, minute 0 to 59 in the
    // direction of the hour. Throws CQnInvalidValueException "Invalid TimeZone [<h>:<m>]".
    void SetTimeZone(short hour, unsigned char minute);
    // Throw CQnInvalidStateException "TimeZone is not been used" unless HasTimeZone().
    short GetZoneHour() const;
    unsigned char GetZoneMinute() const;

    DTType GetType() const { return m_type; }
    // "dateTime", "gYearMonth" and so on, "yearZero" for an unset value; "" for a number that is
    // no kind.
    std::string GetTypeAsString() const;
    static std::string GetTypeAsString(DTType kind);

    // Throws CQnInvalidValueException for the first field that is out of range or, where the kind
    // lacks the field, not 0. The zone is not looked at.
    void Validate() const;

    // These read a text and take the kind that its shape tells, whatever kind the value had:
    // "2001" is a dt_gYear, "--05" a dt_gMonth. Throw CQnInvalidValueException; after that the
    // value holds what was read so far and counts as lost.
    //
    // ParseXSDDate: [-]CCYY-MM-DD, [-]CCYY-MM, [-]CCYY, --MM-DD, --MM, --MM--, ---DD, with an
    // optional zone: Z, +hh:mm or -hh:mm. An hour of 24 in it reads as 0, and -00:mm as +00:mm.
    // ParseXSDTime: hh:mm:ss, up to nine fraction digits, an optional zone. Text behind the time
    // that cannot start a zone is ignored.
    // ParseXSDDateTime: a date, "T" and a time.
    void ParseXSDDate(const char* text);
    void ParseXSDTime(const char* text);
    void ParseXSDDateTime(const char* text);

    // The lexical form of the kind, with the zone; "Error: Date Not Set" for an unset value and
    // for any but a dt_time whose fields all are 0. Format "s" is the lexical form, a null format
    // and "G" give "", any other "Unknown Format: <format>".
    std::string ToString(const char* format) const;
    std::string ToString() const;

    // Day within the year of a dt_dateTime or dt_date, by a table that counts January and February
    // of a leap year one day high and knows no leap day later on: 2000-01-01 is 2, 2000-03-01 is
    // 60. Throws CQnInvalidStateException "Failed to GetDayOfYear. Invalid Date Type: <kind>." for
    // other kinds, CQnInvalidValueException for a month that is outside 1 to 13.
    int GetDayOfYear() const;
    // The time_t of a dt_dateTime or dt_date, an offset taken into account and the fields then
    // read as UTC. Throws CQnInvalidStateException for other kinds.
    long GetTime() const;
    // 1 Sunday to 7 Saturday, of GetTime() as the local zone of the machine sees it. Throws
    // CQnInvalidStateException "Failed to GetDayOfWeek. Invalid Date Type: <kind>.".
    int GetDayOfWeek() const;

    // Adds a span field by field, months first, and moves on over the calendar by what the time
    // fields carry into days. Takes any kind and validates nothing: 2001-01-31 plus a month is
    // 2001-02-31, and year 0 is not skipped. The zone stays. Years wrap at 16 bits. Carries go
    // through single-precision division and are exact below 16,777,216 units only.
    void AddDateTimeSpan(const CDateTimeSpan& span);
    CDateTime operator+(const CDateTimeSpan& span) const;
    CDateTime& operator+=(const CDateTimeSpan& span);
    // Minus moves back by the magnitude of the span, also by that of a negative one.
    CDateTime operator-(const CDateTimeSpan& span) const;
    CDateTime& operator-=(const CDateTimeSpan& span);
    // An empty span, whatever the operands.
    CDateTimeSpan operator-(const CDateTime& other) const;

    // The same instant with the offset +00:00; a value without an offset comes back as it is.
    CDateTime GetNormalized() const;

    // The partial order of XML Schema Part 2, 3.2.7.4: 0 equal, 1 before, 2 after, 3 not
    // comparable. Where one side only has a zone the other may stand 14 hours either way.
    int CompareTo(const CDateTime& other) const;

    // Read CompareTo: values that are not comparable are !=, and all other operators are false.
    bool operator==(const CDateTime& other) const;
    bool operator!=(const CDateTime& other) const;
    bool operator<(const CDateTime& other) const;
    bool operator<=(const CDateTime& other) const;
    bool operator>(const CDateTime& other) const;
    bool operator>=(const CDateTime& other) const;

    // The order of the fields as they stand, zones not looked at: 0, 1, 2 or 3 as CompareTo. A
    // negative year and a positive one are not comparable.
    friend QNXML_API int Compare(const CDateTime& a, const CDateTime& b);

private:
    void SetDateTime(DTType kind, short year, unsigned char month, unsigned char day,
                     unsigned char hour, unsigned char minute, unsigned char second,
                     unsigned short milli, unsigned short micro, unsigned short nano);
    // Throws unless a value of the kind from holds all that the kind to needs.
    static void CheckConversion(DTType from, DTType to);
    // Text without its terminator: a dateTime is parsed in place.
    void SetXSDDate(const char* text, std::size_t length);
    void SetXSDTime(const char* text);
    void SetZone(const char* zone, std::size_t length);
    // Throws "Failed to <operation>. ..." unless the kind has all of the fields.
    void NeedFields(unsigned int fields, const char* operation) const;

    DTType m_type = dt_yearZero;
    short m_nYear = 0;
    unsigned char m_nMonth = 0;
    unsigned char m_nDay = 0;
    unsigned char m_nHour = 0;
    unsigned char m_nMinute = 0;
    unsigned char m_nSecond = 0;
    unsigned short m_nMilliSecond = 0;
    unsigned short m_nMicroSecond = 0;
    unsigned short m_nNanoSecond = 0;
    bool m_bZonePresent = false;
    bool m_bZoneIsOffset = false;
    short m_nZoneHour = 0;
    unsigned char m_nZoneMinute = 0;
};

QNXML_API int Compare(const CDateTime& a, const CDateTime& b);

} // namespace QnXmlLib16
