#pragma once

#include "QnXmlLib16/binding/AttributeInfo.h"
#include "QnXmlLib16/binding/ElementInfo.h"

namespace Gpx {

// A simple type of the schema: carrier, white space and facets.
struct CSimpleType
{
    QnXmlLib16::ItemType m_itemType;
    QnXmlLib16::CWhitespaceUtils::WhitespaceRule m_whitespace;
    QnXmlLib16::CPrimitiveRestrictions m_facets;
};

// Those of XML Schema that the schema uses.
CSimpleType StringType();
CSimpleType AnyUriType();
CSimpleType DecimalType();
CSimpleType DateTimeType();
CSimpleType GYearType();
CSimpleType NonNegativeIntegerType();

// Its own.
CSimpleType LatitudeType();    // -90 to 90
CSimpleType LongitudeType();   // -180 to below 180
CSimpleType DegreesType();     // 0 to below 360
CSimpleType DgpsStationType(); // 0 to 1023

// fixType: how a receiver got its position.
enum FixType : int
{
    FixType_None,
    FixType_2d,
    FixType_3d,
    FixType_Dgps,
    FixType_Pps
};

// Null for a number that is no fix.
const char* FixTypeToString(int nFix);
// Throws CQnInvalidValueException for a text that is none of the enumeration.
int FixTypeFromString(const char* pszText);

// Metadata of an optional element and a required attribute of such a type; the caller owns it.
QnXmlLib16Data::CElementInfo* OptionalElement(const char* pszName, int nProperty,
                                              const CSimpleType& type);
QnXmlLib16Data::CAttributeInfo* RequiredAttribute(const char* pszName, int nProperty,
                                                  const CSimpleType& type);

} // namespace Gpx
