#pragma once

#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/validation/WhitespaceUtils.h"

#include <string>

namespace QnXmlLib16 {

class CBigInteger;
class CBinaryData;
class CDateTime;
class CDateTimeSpan;
class CDecimal;

// The one place where a schema primitive turns into its lexical form and back (XML Schema Part 2).
// The short codes name the carriers: `i4` and `ui4` are `long`, so they hold and accept 64 bits on
// this target. Numbers carry a point whatever LC_NUMERIC the application has set. Static functions
// without state; facets are not looked at here.
//
// Every ...FromString applies the white space rule first. Its failures are
// CQnInvalidValueException, in the words given below; those of the value types' own parsers pass
// through.
class QNXML_API CConversions
{
public:
    CConversions() = delete;

    // Integers: decimal digits.
    static std::string i1ToString(char value);
    static std::string i2ToString(short value);
    static std::string i4ToString(long value);
    static std::string i8ToString(long long value);
    static std::string ui1ToString(unsigned char value);
    static std::string ui2ToString(unsigned short value);
    static std::string ui4ToString(unsigned long value);
    static std::string ui8ToString(unsigned long long value);

    // "NaN", "INF", "-INF", or what snprintf prints with "%.7g" and "%.16g". A format that is not
    // empty takes the place of these: it has to be a printf format with one conversion for a
    // double, as nothing here checks it. Its result is cut at 31 characters for r4 and 47 for r8.
    static std::string r4ToString(float value);
    static std::string r4ToString(float value, const std::string& format);
    static std::string r8ToString(double value);
    static std::string r8ToString(double value, const std::string& format);

    // A format that is not empty is the number of fraction digits, read by strtol and given to
    // CDecimal::ToString(int), which says how it rounds.
    static std::string decimalToString(const CDecimal& value);
    static std::string decimalToString(const CDecimal& value, const std::string& format);

    static std::string integerToString(const CBigInteger& value);
    static std::string durationToString(const CDateTimeSpan& value);

    // All five are one: the kind held in the value decides the form, not the function's name.
    static std::string yearMonthToString(const CDateTime& value);
    static std::string monthDayToString(const CDateTime& value);
    static std::string dateToString(const CDateTime& value);
    static std::string datetimeToString(const CDateTime& value);
    static std::string timeToString(const CDateTime& value);

    static std::string yearToString(unsigned short value); // unpadded: year 33 gives "33"
    static std::string monthToString(unsigned char value); // "--05"
    static std::string dayToString(unsigned char value);   // "---05"
    static std::string charToString(char value);           // the character 0 gives ""
    static std::string stringToString(const std::string& value);
    static std::string booleanToString(bool value); // "true" or "false"
    static std::string hexBinaryToString(const CBinaryData& value);
    static std::string base64BinaryToString(const CBinaryData& value);

    // Integers in base 10, as strtol and its kin read them: leading white space and a sign are
    // accepted under every rule, and a "-" before an unsigned number wraps, so that "-1" has all
    // bits set. Failures: "The value [%s] can not be converted to a i4", "The value [%s] is to
    // large to fit in a i4" (too small as well), with the code of the function.
    static long i4FromString(const std::string& value, CWhitespaceUtils::WhitespaceRule rule);
    static long long i8FromString(const std::string& value, CWhitespaceUtils::WhitespaceRule rule);
    static unsigned long ui4FromString(const std::string& value,
                                       CWhitespaceUtils::WhitespaceRule rule);
    static unsigned long long ui8FromString(const std::string& value,
                                            CWhitespaceUtils::WhitespaceRule rule);

    // Read as i4 or ui4, whose words a text that is no number fails with; then the range of 8 or
    // 16 bits is checked: "The value [%s] is to large to fit in a i1", with the code of the
    // function and the text as it was given.
    static char i1FromString(const std::string& value, CWhitespaceUtils::WhitespaceRule rule);
    static short i2FromString(const std::string& value, CWhitespaceUtils::WhitespaceRule rule);
    static unsigned char ui1FromString(const std::string& value,
                                       CWhitespaceUtils::WhitespaceRule rule);
    static unsigned short ui2FromString(const std::string& value,
                                        CWhitespaceUtils::WhitespaceRule rule);

    // "NaN", "INF", "-INF", and all that strtod reads in the "C" locale, hexadecimal forms, "+INF"
    // and "nan" included. Too large a number gives an infinity, too small a one zero; there is no
    // failure for either. r4 is the double narrowed.
    static float r4FromString(const std::string& value, CWhitespaceUtils::WhitespaceRule rule);
    static double r8FromString(const std::string& value, CWhitespaceUtils::WhitespaceRule rule);

    static CDateTimeSpan durationFromString(const std::string& value,
                                            CWhitespaceUtils::WhitespaceRule rule);

    // The shape of the text decides the kind of the result, not the function's name: dateFromString
    // of "2001" gives a dt_gYear. dateTime and time need their own forms.
    static CDateTime yearMonthFromString(const std::string& value,
                                         CWhitespaceUtils::WhitespaceRule rule);
    static CDateTime monthDayFromString(const std::string& value,
                                        CWhitespaceUtils::WhitespaceRule rule);
    static CDateTime dateFromString(const std::string& value,
                                    CWhitespaceUtils::WhitespaceRule rule);
    static CDateTime datetimeFromString(const std::string& value,
                                        CWhitespaceUtils::WhitespaceRule rule);
    static CDateTime timeFromString(const std::string& value,
                                    CWhitespaceUtils::WhitespaceRule rule);

    // One field of the date that the text holds, its zone dropped; a date without that field
    // throws CQnInvalidStateException. A year before 1 wraps to 16 bits.
    static unsigned short yearFromString(const std::string& value,
                                         CWhitespaceUtils::WhitespaceRule rule);
    static unsigned char monthFromString(const std::string& value,
                                         CWhitespaceUtils::WhitespaceRule rule);
    static unsigned char dayFromString(const std::string& value,
                                       CWhitespaceUtils::WhitespaceRule rule);

    // Exactly one byte is left by the rule, else "The value [%s] can not be a char as it is either
    // empty of greater than 1 char long". A character of two bytes is refused.
    static char charFromString(const std::string& value, CWhitespaceUtils::WhitespaceRule rule);
    static std::string stringFromString(const std::string& value,
                                        CWhitespaceUtils::WhitespaceRule rule);

    // "true", "1", "false" and "0" in any case, else "A Boolean Value read from an XML document
    // was invalid [%s]. Valid values are 'true', 'false', '1', or '0'" with the text as given.
    static bool booleanFromString(const std::string& value, CWhitespaceUtils::WhitespaceRule rule);

    static CDecimal decimalFromString(const std::string& value,
                                      CWhitespaceUtils::WhitespaceRule rule);
    static CBigInteger integerFromString(const std::string& value,
                                         CWhitespaceUtils::WhitespaceRule rule);
    static CBinaryData hexBinaryFromString(const std::string& value,
                                           CWhitespaceUtils::WhitespaceRule rule);
    static CBinaryData base64BinaryFromString(const std::string& value,
                                              CWhitespaceUtils::WhitespaceRule rule);
};

} // namespace QnXmlLib16
