// The facet checks of CXmlObjectHelper. They stand apart from its namespace tests, since they need
// the value types and the variant.
#include "QnXmlLib16/binding/XmlObjectHelper.h"

#include "QnXmlLib16/support/Encoder.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "QnXmlLib16/support/Functions.h"
#include "QnXmlLib16/support/internal/TextOrEmpty.h"
#include "QnXmlLib16/validation/PrimitiveRestrictions.h"
#include "QnXmlLib16/validation/RegEx.h"
#include "QnXmlLib16/values/BigInteger.h"
#include "QnXmlLib16/values/BinaryData.h"
#include "QnXmlLib16/values/Conversions.h"
#include "QnXmlLib16/values/DateTime.h"
#include "QnXmlLib16/values/DateTimeSpan.h"
#include "QnXmlLib16/values/Decimal.h"
#include "QnXmlLib16/values/QnVariant.h"
#include "QnXmlLib16/values/internal/PrimitiveTypes.h"

#include <type_traits>
#include <utility>

namespace QnXmlLib16 {

namespace {

constexpr CWhitespaceUtils::WhitespaceRule kBoundRule = CWhitespaceUtils::WhitespaceRule_Collapse;

// Deliberate: facet failures are the root class, not CQnValidationException. Pinned by
// Restrictions.AFacetFailureIsTheRootClass.
[[noreturn]] void Refuse(const char* pszName, int iValue)
{
    throw CQnException(FormatString("Invalid Value for %s [%d]", OrEmpty(pszName), iValue));
}

[[noreturn]] void Refuse(const char* pszName, double dValue)
{
    throw CQnException(FormatString("Invalid Value for %s [%f]", OrEmpty(pszName), dValue));
}

[[noreturn]] void Refuse(const char* pszName, const std::string& strValue)
{
    throw CQnException(
        FormatString("Invalid Value for %s [%s].", OrEmpty(pszName), strValue.c_str()));
}

// Every test is written so that a NaN on either side fails it.
template <class T, class TParse>
bool IsWithinBounds(const T& value, const CPrimitiveRestrictions& facets, TParse fnParse)
{
    if (!facets.GetMinInclusive().empty() &&
        !(value >= fnParse(facets.GetMinInclusive(), kBoundRule)))
        return false;
    if (!facets.GetMaxInclusive().empty() &&
        !(value <= fnParse(facets.GetMaxInclusive(), kBoundRule)))
        return false;
    if (!facets.GetMinExclusive().empty() &&
        !(value > fnParse(facets.GetMinExclusive(), kBoundRule)))
        return false;
    return facets.GetMaxExclusive().empty() ||
           value < fnParse(facets.GetMaxExclusive(), kBoundRule);
}

// Deliberate: a value that is not comparable with a bound keeps to it.
// Pinned by Restrictions.DatesAndDurationsAreComparedPartially.
template <class T, class TParse>
bool IsWithinOrder(const T& value, const CPrimitiveRestrictions& facets, TParse fnParse)
{
    constexpr int kEqual = 0, kBefore = 1, kAfter = 2;
    const auto compare = [&](const std::string& strBound) {
        return value.CompareTo(fnParse(strBound, kBoundRule));
    };
    if (!facets.GetMinInclusive().empty() && compare(facets.GetMinInclusive()) == kBefore)
        return false;
    if (!facets.GetMaxInclusive().empty() && compare(facets.GetMaxInclusive()) == kAfter)
        return false;
    if (!facets.GetMinExclusive().empty()) {
        const int iOrder = compare(facets.GetMinExclusive());
        if (iOrder == kEqual || iOrder == kBefore)
            return false;
    }
    if (!facets.GetMaxExclusive().empty()) {
        const int iOrder = compare(facets.GetMaxExclusive());
        if (iOrder == kEqual || iOrder == kAfter)
            return false;
    }
    return true;
}

// Deliberate: the length of the printed value counts, so a minus sign is a digit and -99 has
// three. Pinned by Restrictions.TotalDigitsCountTheMinusSign.
template <class T, class TPrint>
bool HasDigits(const T& value, const CPrimitiveRestrictions& facets, TPrint fnPrint)
{
    return facets.GetTotalDigits() < 0 ||
           static_cast<long>(fnPrint(value).size()) <= facets.GetTotalDigits();
}

bool HasLength(unsigned long uLength, const CPrimitiveRestrictions& facets)
{
    const long lLength = static_cast<long>(uLength);
    return (facets.GetMinLength() < 0 || lLength >= facets.GetMinLength()) &&
           (facets.GetMaxLength() < 0 || lLength <= facets.GetMaxLength()) &&
           (facets.GetLength() < 0 || lLength == facets.GetLength());
}

template <class T, class TParse, class TPrint>
void CheckInteger(const char* pszName, T value, const CPrimitiveRestrictions& facets,
                  TParse fnParse, TPrint fnPrint)
{
    if (IsWithinBounds(value, facets, fnParse) && HasDigits(value, facets, fnPrint))
        return;
    // Deliberate: a long is cut to 32 bits in the message, a long long is told in full.
    // Pinned by Restrictions.BoundsOfIntegers.
    if constexpr (std::is_same_v<T, long long> || std::is_same_v<T, unsigned long long>)
        Refuse(pszName, fnPrint(value));
    else
        Refuse(pszName, static_cast<int>(value));
}

template <class T, class TParse>
void CheckDate(const char* pszName, const T& value, const CPrimitiveRestrictions& facets,
               TParse fnParse)
{
    if (!IsWithinOrder(value, facets, fnParse))
        Refuse(pszName, value.ToString());
}

} // namespace

void CXmlObjectHelper::CheckRestriction(const char* pszName, const QnVariant& value, ItemType type,
                                        const CPrimitiveRestrictions& restrictions)
{
    switch (type) {
#define QNXML_NUMBER(code, Name, Carrier)                                                          \
    case it_##code:                                                                                \
        CheckRestrictionFor##code(pszName, value.Get##Name(), restrictions);                       \
        return;
#define QNXML_CLASS(code, Name, Class, FormName)                                                   \
    case it_##code:                                                                                \
        if (const Class* const pValue = value.Peek##FormName())                                    \
            CheckRestrictionFor##code(pszName, *pValue, restrictions);                             \
        else                                                                                       \
            CheckRestrictionFor##code(pszName, Class(), restrictions);                             \
        return;
        QNXML_NUMBER_TYPES(QNXML_NUMBER)
        QNXML_FLOAT_TYPES(QNXML_NUMBER)
        QNXML_CLASS_TYPES(QNXML_CLASS)
        QNXML_DECIMAL_TYPE(QNXML_CLASS)
#undef QNXML_NUMBER
#undef QNXML_CLASS
    case it_string:
        if (const std::string* const pValue = value.PeekString())
            CheckStringRestriction(pszName, *pValue, restrictions);
        else
            CheckStringRestriction(pszName, std::string(), restrictions);
        return;
    default:
        throw CQnInvalidValueException("Unknown type [" + value.GetType() + "].");
    }
}

#define QNXML_CHECK_INTEGER(code, Carrier)                                                         \
    void CXmlObjectHelper::CheckRestrictionFor##code(const char* pszName, Carrier value,           \
                                                     const CPrimitiveRestrictions& restrictions)   \
    {                                                                                              \
        CheckInteger(pszName, value, restrictions, CConversions::code##FromString,                 \
                     CConversions::code##ToString);                                                \
    }
QNXML_CHECK_INTEGER(i1, char)
QNXML_CHECK_INTEGER(i2, short)
QNXML_CHECK_INTEGER(i4, long)
QNXML_CHECK_INTEGER(i8, long long)
QNXML_CHECK_INTEGER(ui1, unsigned char)
QNXML_CHECK_INTEGER(ui2, unsigned short)
QNXML_CHECK_INTEGER(ui4, unsigned long)
QNXML_CHECK_INTEGER(ui8, unsigned long long)
#undef QNXML_CHECK_INTEGER

void CXmlObjectHelper::CheckRestrictionForinteger(const char* pszName, const CBigInteger& value,
                                                  const CPrimitiveRestrictions& restrictions)
{
    if (!IsWithinBounds(value, restrictions, CConversions::integerFromString) ||
        !HasDigits(value, restrictions, CConversions::integerToString))
        Refuse(pszName, value.ToString());
}

void CXmlObjectHelper::CheckRestrictionFordecimal(const char* pszName, const CDecimal& value,
                                                  const CPrimitiveRestrictions& restrictions)
{
    if (!IsWithinBounds(value, restrictions, CConversions::decimalFromString))
        Refuse(pszName, value.ToString());
    const long lTotalMax = restrictions.GetTotalDigits();
    const long lFractionMax = restrictions.GetFractionDigits();
    if (lTotalMax < 0 && lFractionMax < 0)
        return;
    const long lFraction = GetDecimalFractionPartLen(value);
    const long lTotal = GetDecimalIntegerPartLen(value) + lFraction;
    if ((lTotalMax >= 0 && lTotal > lTotalMax) || (lFractionMax >= 0 && lFraction > lFractionMax))
        Refuse(pszName, value.ToString());
}

#define QNXML_CHECK_BOUNDS(code, Carrier, Printed)                                                 \
    void CXmlObjectHelper::CheckRestrictionFor##code(const char* pszName, Carrier value,           \
                                                     const CPrimitiveRestrictions& restrictions)   \
    {                                                                                              \
        if (!IsWithinBounds(value, restrictions, CConversions::code##FromString))                  \
            Refuse(pszName, static_cast<Printed>(value));                                          \
    }
QNXML_CHECK_BOUNDS(r4, float, double)
QNXML_CHECK_BOUNDS(r8, double, double)
QNXML_CHECK_BOUNDS(year, unsigned short, int)
QNXML_CHECK_BOUNDS(month, unsigned char, int)
QNXML_CHECK_BOUNDS(day, unsigned char, int)
#undef QNXML_CHECK_BOUNDS

#define QNXML_CHECK_DATE(code, Class)                                                              \
    void CXmlObjectHelper::CheckRestrictionFor##code(const char* pszName, const Class& value,      \
                                                     const CPrimitiveRestrictions& restrictions)   \
    {                                                                                              \
        CheckDate(pszName, value, restrictions, CConversions::code##FromString);                   \
    }
QNXML_CHECK_DATE(duration, CDateTimeSpan)
QNXML_CHECK_DATE(yearMonth, CDateTime)
QNXML_CHECK_DATE(monthDay, CDateTime)
QNXML_CHECK_DATE(date, CDateTime)
QNXML_CHECK_DATE(datetime, CDateTime)
QNXML_CHECK_DATE(time, CDateTime)
#undef QNXML_CHECK_DATE

void CXmlObjectHelper::CheckRestrictionFormonthYear(const char* pszName, const CDateTime& value,
                                                    const CPrimitiveRestrictions& restrictions)
{
    CheckRestrictionForyearMonth(pszName, value, restrictions);
}

void CXmlObjectHelper::CheckRestrictionForboolean(const char* /*pszName*/, bool /*value*/,
                                                  const CPrimitiveRestrictions& /*restrictions*/)
{}

void CXmlObjectHelper::CheckRestrictionForstring(const char* pszName, std::string value,
                                                 const CPrimitiveRestrictions& restrictions)
{
    CheckStringRestriction(pszName, value, restrictions);
}

// Deliberate: lengths count bytes, so a character of two bytes breaks a maxLength of 1. Pinned by
// Restrictions.LengthsCountBytes.
void CXmlObjectHelper::CheckStringRestriction(const char* pszName, const std::string& value,
                                              const CPrimitiveRestrictions& restrictions)
{
    if (!HasLength(value.size(), restrictions))
        Refuse(pszName, value);
    if (restrictions.GetPattern().empty())
        return;
    const CBinaryData pattern =
        CEncoder::LocalCodePageToUtf8Binary(restrictions.GetPattern().c_str());
    std::string strPattern;
    if (pattern.GetLength() != 0)
        strPattern.assign(reinterpret_cast<const char*>(pattern.GetData()), pattern.GetLength());
    bool bMatch = false;
    try {
        bMatch = TestRegEx(std::move(strPattern), value);
    }
    catch (const CQnException& e) {
        throw CQnException(FormatString("%s\nInvalid Value for %s [%s].",
                                        e.GetFullMessage().c_str(), OrEmpty(pszName),
                                        value.c_str()));
    }
    if (!bMatch)
        Refuse(pszName, value);
}

void CXmlObjectHelper::CheckRestrictionForhexBinary(const char* pszName, const CBinaryData& value,
                                                    const CPrimitiveRestrictions& restrictions)
{
    if (!HasLength(value.GetLength(), restrictions))
        Refuse(pszName, value.GetAsHexString());
}

void CXmlObjectHelper::CheckRestrictionForbase64Binary(const char* pszName,
                                                       const CBinaryData& value,
                                                       const CPrimitiveRestrictions& restrictions)
{
    if (!HasLength(value.GetLength(), restrictions))
        Refuse(pszName, value.GetAsBase64());
}

int CXmlObjectHelper::GetDecimalIntegerPartLen(const CDecimal& value)
{
    const CBigInteger& part = value.GetIntegerPart();
    return part.IsZero() ? 0 : static_cast<int>(part.GetDigitCount());
}

int CXmlObjectHelper::GetDecimalFractionPartLen(const CDecimal& value)
{
    return value.GetFractionPart().IsZero() ? 0 : value.GetFractionalDivider();
}

} // namespace QnXmlLib16
