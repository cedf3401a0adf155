#pragma once

#include "QnXmlLib16/values/ItemType.h"

namespace QnXmlLib16 {

// How the child elements of a class are arranged. Any other value is refused by the driver.
enum XmlElementGroupType : int
{
    XmlElementGroupType_Sequence = 0,
    XmlElementGroupType_Choice = 1,
    XmlElementGroupType_All = 2
};

// Whether a class has an element of its own. Non-zero values other than 1 act as pseudo elements
// on reading and lift no attributes.
enum XmlElementType : int
{
    XmlElementType_Element = 0,      // a start tag and an end tag of its own
    XmlElementType_PseudoElement = 1 // a group: its content and attributes belong to the parent
};

} // namespace QnXmlLib16
