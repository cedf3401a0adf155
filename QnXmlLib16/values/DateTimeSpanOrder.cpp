// The order of durations. It goes by way of dates, which stand above durations, and so has a source
// of its own.
#include "QnXmlLib16/values/DateTimeSpan.h"

#include "QnXmlLib16/values/DateTime.h"

namespace QnXmlLib16 {

int CDateTimeSpan::CompareTo(const CDateTimeSpan& other) const
{
    // XML Schema Part 2, 3.2.6.2: each reference is followed by another run of month lengths, so
    // the four agree only where the order holds from any date. They are dateTimes, since the hours
    // of a span would not be seen in dates.
    struct Reference
    {
        short year;
        unsigned char month;
    };
    static constexpr Reference kReferences[4] = {{1696, 9}, {1697, 2}, {1903, 3}, {1903, 7}};

    int first = 3;
    for (const Reference& reference : kReferences) {
        CDateTime start(reference.year, reference.month, 1, 0, 0, 0);
        start.SetUTC();
        const int order = (start + *this).CompareTo(start + other);
        if (&reference == kReferences)
            first = order;
        if (order == 3 || order != first)
            return 3;
    }
    return first;
}

bool CDateTimeSpan::operator==(const CDateTimeSpan& other) const
{
    return CompareTo(other) == 0;
}

bool CDateTimeSpan::operator!=(const CDateTimeSpan& other) const
{
    return CompareTo(other) != 0;
}

bool CDateTimeSpan::operator<(const CDateTimeSpan& other) const
{
    return CompareTo(other) == 1;
}

bool CDateTimeSpan::operator>(const CDateTimeSpan& other) const
{
    return CompareTo(other) == 2;
}

} // namespace QnXmlLib16
