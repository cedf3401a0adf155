#pragma once

#include "QnXmlLib16/support/Export.h"
#include "QnXmlLib16/validation/PrimitiveRestrictions.h"
#include "QnXmlLib16/values/ItemType.h"

#include <string>

namespace QnXmlLib16 {

class CBigInteger;
class CBinaryData;
class CDateTime;
class CDateTimeSpan;
class CDecimal;
class CSerializationContext;
class CXmlElement;
class QnVariant;

// The tests that the metadata, the collections and the wildcard content share: which namespace and
// name an element may have, and whether a value keeps to its facets. Static functions without
// state.
class QNXML_API CXmlObjectHelper
{
public:
    CXmlObjectHelper() = delete;

    // Whether a wildcard's namespace list admits `ns`. The list is separated by single blanks;
    // true at the first token that admits it:
    //   "##any"              always
    //   "##other"            ns differs from targetNamespace
    //   "##local"            ns is empty
    //   "##targetNamespace"  ns equals targetNamespace
    //   anything else        ns is empty, or equals the whole list
    static bool IsNamespaceValid(const std::string& ns, const std::string& namespaces,
                                 const std::string& targetNamespace);

    // Throws CQnInvalidNamespaceException "Invalid namespace [%s]. The namespace must be one of
    // [%s] where the target namespace is [%s]." unless IsNamespaceValid().
    static void TestNamespace(const std::string& ns, const std::string& namespaces,
                              const std::string& targetNamespace);

    // Compares the local name, and the namespace too unless the context ignores namespaces or
    // names SchemaType_NoNamespaces.
    static bool DoesElementNameMatch(const CSerializationContext& context,
                                     const CXmlElement* pElement, const std::string& name,
                                     const std::string& ns);

    // Checks the value against the facets that its type reads; the others are not looked at. The
    // first facet that it breaks ends the check with CQnException "Invalid Value for %s [...]",
    // whose %s is pszName, the element's or attribute's name; null counts as empty. A bound or
    // digit facet set on a string, a length set on a number and so on have no effect.
    //
    // A bound that can't be parsed throws what CConversions throws for it. Numbers are compared
    // in their own carrier type, where a NaN on either side breaks every bound; dates and
    // durations by CompareTo, where a value that is not comparable with a bound keeps to it.
    //
    // `type` decides which getter of the variant is used. Types without facets (none, char, and
    // above it_integer) throw CQnInvalidValueException "Unknown type [%s].", or what GetType()
    // throws for a variant without a type text.
    static void CheckRestriction(const char* pszName, const QnVariant& value, ItemType type,
                                 const CPrimitiveRestrictions& restrictions);

    // Integers: the bounds, then totalDigits against the length of the printed value, its minus
    // sign included.
    static void CheckRestrictionFori1(const char* pszName, char value,
                                      const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionFori2(const char* pszName, short value,
                                      const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionFori4(const char* pszName, long value,
                                      const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionFori8(const char* pszName, long long value,
                                      const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionForui1(const char* pszName, unsigned char value,
                                       const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionForui2(const char* pszName, unsigned short value,
                                       const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionForui4(const char* pszName, unsigned long value,
                                       const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionForui8(const char* pszName, unsigned long long value,
                                       const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionForinteger(const char* pszName, const CBigInteger& value,
                                           const CPrimitiveRestrictions& restrictions);

    // The bounds, then totalDigits, then fractionDigits.
    static void CheckRestrictionFordecimal(const char* pszName, const CDecimal& value,
                                           const CPrimitiveRestrictions& restrictions);

    // The bounds only.
    static void CheckRestrictionForr4(const char* pszName, float value,
                                      const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionForr8(const char* pszName, double value,
                                      const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionForyear(const char* pszName, unsigned short value,
                                        const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionFormonth(const char* pszName, unsigned char value,
                                         const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionForday(const char* pszName, unsigned char value,
                                       const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionForduration(const char* pszName, const CDateTimeSpan& value,
                                            const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionForyearMonth(const char* pszName, const CDateTime& value,
                                             const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionFormonthDay(const char* pszName, const CDateTime& value,
                                            const CPrimitiveRestrictions& restrictions);
    // Another name of CheckRestrictionForyearMonth.
    static void CheckRestrictionFormonthYear(const char* pszName, const CDateTime& value,
                                             const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionFordate(const char* pszName, const CDateTime& value,
                                        const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionFordatetime(const char* pszName, const CDateTime& value,
                                            const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionFortime(const char* pszName, const CDateTime& value,
                                        const CPrimitiveRestrictions& restrictions);

    // No facet applies.
    static void CheckRestrictionForboolean(const char* pszName, bool value,
                                           const CPrimitiveRestrictions& restrictions);

    // minLength, maxLength and length in bytes, then the pattern. A pattern that can't be compiled
    // throws CQnException with the words of TestRegEx, a line feed, and the usual words.
    static void CheckRestrictionForstring(const char* pszName, std::string value,
                                          const CPrimitiveRestrictions& restrictions);
    // The same without a copy of the value.
    static void CheckStringRestriction(const char* pszName, const std::string& value,
                                       const CPrimitiveRestrictions& restrictions);

    // minLength, maxLength and length in bytes of the decoded data.
    static void CheckRestrictionForhexBinary(const char* pszName, const CBinaryData& value,
                                             const CPrimitiveRestrictions& restrictions);
    static void CheckRestrictionForbase64Binary(const char* pszName, const CBinaryData& value,
                                                const CPrimitiveRestrictions& restrictions);

    // Digits before the point without the sign; 0 if the integer part is 0.
    static int GetDecimalIntegerPartLen(const CDecimal& value);

    // Digits behind the point, leading zeros included; 0 if the fraction is 0.
    static int GetDecimalFractionPartLen(const CDecimal& value);
};

} // namespace QnXmlLib16
