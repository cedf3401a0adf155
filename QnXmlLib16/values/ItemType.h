#pragma once

namespace QnXmlLib16 {

// The primitive types of the library. Generated code holds the numbers in its tables, so they
// never change. The names are codes, not bit widths: it_i4 and it_ui4 carry 64 bits on this target.
enum ItemType : int
{
    it_none = 0,
    it_hexBinary = 1,
    it_base64Binary = 2,
    it_i1 = 3,
    it_i2 = 4,
    it_i4 = 5,
    it_i8 = 6,
    it_ui1 = 7,
    it_ui2 = 8,
    it_ui4 = 9,
    it_ui8 = 10,
    it_r4 = 11,
    it_r8 = 12,
    it_duration = 13,
    it_yearMonth = 14,
    it_monthDay = 15,
    it_year = 16,
    it_month = 17,
    it_day = 18,
    it_date = 19,
    it_datetime = 20,
    it_time = 21,
    it_char = 22,
    it_string = 23,
    it_boolean = 24,
    it_decimal = 25,
    it_integer = 26,
    it_xmlObject = 27,
    it_xmlCollection = 28
};

} // namespace QnXmlLib16

// Metadata classes live in QnXmlLib16Data and name the library's types without qualification;
// generated code does the same.
namespace QnXmlLib16Data {
using namespace QnXmlLib16;
}
