#pragma once

// One row for each primitive: X(code, Name, Carrier) or X(code, Name, Class, Form). it_<code> is
// the item type, the conversions are CConversions::<code>ToString and <code>FromString, the
// variant has Set<Name> and Get<Name>. Work that goes by item type expands these rows in its
// source file and adds what differs.

// Held in the variant in place, with one lexical form.
#define QNXML_NUMBER_TYPES(X)                                                                      \
    X(i1, I1, char)                                                                                \
    X(i2, I2, short)                                                                               \
    X(i4, I4, long)                                                                                \
    X(i8, I8, long long)                                                                           \
    X(ui1, UI1, unsigned char)                                                                     \
    X(ui2, UI2, unsigned short)                                                                    \
    X(ui4, UI4, unsigned long)                                                                     \
    X(ui8, UI8, unsigned long long)                                                                \
    X(year, Year, unsigned short)                                                                  \
    X(month, Month, unsigned char)                                                                 \
    X(day, Day, unsigned char)                                                                     \
    X(boolean, Boolean, bool)

// The same, but no facet applies and none may be asked for.
#define QNXML_CHAR_TYPE(X) X(char, Char, char)

// Numbers printed through the caller's format.
#define QNXML_FLOAT_TYPES(X)                                                                       \
    X(r4, R4, float)                                                                               \
    X(r8, R8, double)

// Objects, shown in place by the variant's Peek<Form>.
#define QNXML_CLASS_TYPES(X)                                                                       \
    X(hexBinary, HexBinary, CBinaryData, Binary)                                                   \
    X(base64Binary, Base64Binary, CBinaryData, Binary)                                             \
    X(duration, Duration, CDateTimeSpan, Duration)                                                 \
    X(yearMonth, YearMonth, CDateTime, DateTime)                                                   \
    X(monthDay, MonthDay, CDateTime, DateTime)                                                     \
    X(date, Date, CDateTime, DateTime)                                                             \
    X(datetime, DateTime, CDateTime, DateTime)                                                     \
    X(time, Time, CDateTime, DateTime)                                                             \
    X(integer, Integer, CBigInteger, Integer)

// The same, printed through the caller's format.
#define QNXML_DECIMAL_TYPE(X) X(decimal, Decimal, CDecimal, Decimal)

#define QNXML_STRING_TYPE(X) X(string, String, std::string, String)
