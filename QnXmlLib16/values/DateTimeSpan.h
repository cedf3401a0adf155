#pragma once

#include "QnXmlLib16/support/Export.h"

#include <string>

namespace QnXmlLib16 {

// A duration as xs:duration (XML Schema Part 2, 3.2.6) writes it: nine magnitudes and one sign.
// The fields stay as they were given. Nothing is carried between them, so 90 seconds are not a
// minute and a half, and print as "PT90S".
//
// A value: copies share nothing. One object, one thread at a time.
class QNXML_API CDateTimeSpan
{
public:
    // All fields 0, not negative.
    CDateTimeSpan();
    // Positive spans with the fields given, the others 0.
    CDateTimeSpan(unsigned short years, unsigned long months, unsigned long days,
                  unsigned long hours, unsigned long long minutes, unsigned long long seconds,
                  unsigned short milli, unsigned short micro, unsigned short nano);
    CDateTimeSpan(unsigned short years, unsigned long months, unsigned long days,
                  unsigned long hours, unsigned long long minutes, unsigned long long seconds);
    CDateTimeSpan(unsigned long hours, unsigned long long minutes, unsigned long long seconds);
    CDateTimeSpan(const CDateTimeSpan& other) = default;
    CDateTimeSpan& operator=(const CDateTimeSpan& other) = default;
    virtual ~CDateTimeSpan();

    // Back to all fields 0, not negative.
    void Clear();

    // Replace the whole value; the span is positive afterwards, whatever it was. No range check:
    // 90 minutes or 5000 milliseconds are kept as they are.
    void SetDateTimeSpan(unsigned short years, unsigned long months, unsigned long days,
                         unsigned long hours, unsigned long long minutes,
                         unsigned long long seconds, unsigned short milli, unsigned short micro,
                         unsigned short nano);
    void SetDateTimeSpan(unsigned short years, unsigned long months, unsigned long days,
                         unsigned long hours, unsigned long long minutes,
                         unsigned long long seconds);
    void SetDateTimeSpan(unsigned long hours, unsigned long long minutes,
                         unsigned long long seconds);

    // Magnitudes, without sign and without range checks. The three fraction fields are the first,
    // second and third group of three digits behind the point of the seconds.
    unsigned short GetYears() const { return m_nYears; }
    void SetYears(unsigned short years) { m_nYears = years; }
    unsigned long GetMonths() const { return m_lMonths; }
    void SetMonths(unsigned long months) { m_lMonths = months; }
    unsigned long GetDays() const { return m_lDays; }
    void SetDays(unsigned long days) { m_lDays = days; }
    unsigned long GetHours() const { return m_lHours; }
    void SetHours(unsigned long hours) { m_lHours = hours; }
    unsigned long long GetMinutes() const { return m_llMinutes; }
    void SetMinutes(unsigned long long minutes) { m_llMinutes = minutes; }
    unsigned long long GetSeconds() const { return m_llSeconds; }
    void SetSeconds(unsigned long long seconds) { m_llSeconds = seconds; }
    unsigned short GetMilliSeconds() const { return m_nMilliSeconds; }
    void SetMilliSeconds(unsigned short milli) { m_nMilliSeconds = milli; }
    unsigned short GetMicroSeconds() const { return m_nMicroSeconds; }
    void SetMicroSeconds(unsigned short micro) { m_nMicroSeconds = micro; }
    unsigned short GetNanoSeconds() const { return m_nNanoSeconds; }
    void SetNanoSeconds(unsigned short nano) { m_nNanoSeconds = nano; }

    bool IsNegative() const { return m_bNegative; }
    // Flips the sign.
    void Negate() { m_bNegative = !m_bNegative; }
    // A copy that is negative whatever this span is: a negative span comes back as it stands, so
    // subtracting it from a date still moves the date back.
    CDateTimeSpan GetAsNegative() const;

    // Reads [-]P[nY][nM][nD][T[nH][nM][nS.ff]]. Throws CQnInvalidValueException:
    // "Invalid XSD Duration (Null String)", "Invalid XSD Duration (Empty String)",
    // "Invalid XSD Duration [<text>] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]", or for a tenth
    // fraction digit "Invalid XSD Duration [<text>] Fraction part too long". The span then holds
    // what was read up to there and counts as lost.
    // Wider than the lexical form of the schema: a designator may lack its digits ("PY" is an
    // empty span), digits in front of "T" are dropped ("P5T1H" is one hour), "Y" may stand behind
    // any other ("PT1H2Y"), and "PT1." passes. A number above 64 bits wraps, years keep their low
    // 16 bits. Of the seventh to ninth fraction digits only the last one read counts, as that many
    // nanoseconds.
    void ParseXSDDuration(const char* text);

    // The lexical form, without the fields that are 0. An empty span gives "P", which
    // ParseXSDDuration refuses.
    std::string ToString() const;

    // The partial order of XML Schema Part 2, 3.2.6.2: both spans are added to four reference
    // dates. 0 equal, 1 before, 2 after, 3 not comparable, as P1M and P31D are.
    int CompareTo(const CDateTimeSpan& other) const;

    // Read CompareTo: spans that are not comparable are != and neither < nor >.
    bool operator==(const CDateTimeSpan& other) const;
    bool operator!=(const CDateTimeSpan& other) const;
    bool operator<(const CDateTimeSpan& other) const;
    bool operator>(const CDateTimeSpan& other) const;

private:
    unsigned short m_nYears = 0;
    unsigned long m_lMonths = 0;
    unsigned long m_lDays = 0;
    unsigned long m_lHours = 0;
    unsigned long long m_llMinutes = 0;
    unsigned long long m_llSeconds = 0;
    unsigned short m_nMilliSeconds = 0;
    unsigned short m_nMicroSeconds = 0;
    unsigned short m_nNanoSeconds = 0;
    bool m_bNegative = false;
};

} // namespace QnXmlLib16
