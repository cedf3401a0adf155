#include "examples/gpx/model/SimpleTypes.h"

#include "QnXmlLib16/binding/ElementInfoSeq.h"
#include "QnXmlLib16/support/Exceptions.h"
#include "examples/gpx/model/GpxClass.h"

#include <cstring>
#include <string>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;

namespace Gpx {

namespace {

constexpr const char* kFixes[] = {"none", "2d", "3d", "dgps", "pps"};
constexpr int kFixCount = sizeof(kFixes) / sizeof(*kFixes);

constexpr CWhitespaceUtils::WhitespaceRule kPreserve = CWhitespaceUtils::WhitespaceRule_Preserve;
constexpr CWhitespaceUtils::WhitespaceRule kCollapse = CWhitespaceUtils::WhitespaceRule_Collapse;

// A null bound is none.
CPrimitiveRestrictions Range(const char* pszMinInclusive, const char* pszMaxInclusive,
                             const char* pszMaxExclusive)
{
    return CPrimitiveRestrictions(nullptr, -1, -1, pszMinInclusive, pszMaxInclusive, nullptr,
                                  pszMaxExclusive, -1, -1, -1);
}

} // namespace

CSimpleType StringType()
{
    return {it_string, kPreserve, CPrimitiveRestrictions()};
}

CSimpleType AnyUriType()
{
    return {it_string, kCollapse, CPrimitiveRestrictions()};
}

CSimpleType DecimalType()
{
    return {it_decimal, kCollapse, CPrimitiveRestrictions()};
}

CSimpleType DateTimeType()
{
    return {it_datetime, kCollapse, CPrimitiveRestrictions()};
}

CSimpleType GYearType()
{
    return {it_year, kCollapse, CPrimitiveRestrictions()};
}

CSimpleType NonNegativeIntegerType()
{
    return {it_integer, kCollapse, Range("0", nullptr, nullptr)};
}

CSimpleType LatitudeType()
{
    return {it_decimal, kCollapse, Range("-90.0", "90.0", nullptr)};
}

CSimpleType LongitudeType()
{
    return {it_decimal, kCollapse, Range("-180.0", nullptr, "180.0")};
}

CSimpleType DegreesType()
{
    return {it_decimal, kCollapse, Range("0.0", nullptr, "360.0")};
}

CSimpleType DgpsStationType()
{
    return {it_integer, kCollapse, Range("0", "1023", nullptr)};
}

const char* FixTypeToString(int nFix)
{
    return nFix >= 0 && nFix < kFixCount ? kFixes[nFix] : nullptr;
}

int FixTypeFromString(const char* pszText)
{
    for (int nFix = 0; nFix < kFixCount; ++nFix) {
        if (std::strcmp(pszText, kFixes[nFix]) == 0)
            return nFix;
    }
    throw CQnInvalidValueException("Invalid Value for fixType [" + std::string(pszText) + "].");
}

CElementInfo* OptionalElement(const char* pszName, int nProperty, const CSimpleType& type)
{
    return new CElementInfoSeqPrimOpt(pszName, kNamespace, nProperty, false, type.m_itemType,
                                      nullptr, type.m_whitespace, type.m_facets, nullptr);
}

CAttributeInfo* RequiredAttribute(const char* pszName, int nProperty, const CSimpleType& type)
{
    return new CAttributeInfoPrimitive(pszName, "", nProperty, false, type.m_itemType, nullptr,
                                       type.m_whitespace, type.m_facets, nullptr);
}

} // namespace Gpx
