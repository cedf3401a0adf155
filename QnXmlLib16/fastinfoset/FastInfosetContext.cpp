#include "QnXmlLib16/fastinfoset/FastInfosetContext.h"

#include "QnXmlLib16/values/ItemType.h"

namespace QnXmlLib16 {

namespace {

using Encoding = CFastInfosetContext::EncodedCharacterString;

struct SuggestedRow
{
    ItemType eType;
    Encoding encoding;
};

constexpr Encoding kText = {CFastInfosetContext::EncodingKind_Literal, 0};
constexpr Encoding kNumeric = {CFastInfosetContext::EncodingKind_RestrictedAlphabet, 1};
constexpr Encoding kDateTime = {CFastInfosetContext::EncodingKind_RestrictedAlphabet, 2};

constexpr Encoding Algorithm(unsigned long iNumber)
{
    return {CFastInfosetContext::EncodingKind_Algorithm, iNumber};
}

constexpr Encoding kShort = Algorithm(3);
constexpr Encoding kInt = Algorithm(4);
constexpr Encoding kLong = Algorithm(5);

constexpr SuggestedRow kSuggested[] = {
    {it_hexBinary, Algorithm(1)},
    {it_base64Binary, Algorithm(2)},
    {it_i1, kShort},
    {it_i2, kShort},
    {it_i4, kInt},
    {it_i8, kLong},
    {it_ui1, kShort},
    {it_ui2, kInt},
    {it_ui4, kLong},
    {it_ui8, kLong},
    {it_r4, Algorithm(7)},
    {it_r8, Algorithm(8)},
    {it_duration, kText},
    {it_yearMonth, kDateTime},
    {it_monthDay, kDateTime},
    {it_year, kDateTime},
    {it_month, kDateTime},
    {it_day, kDateTime},
    {it_date, kDateTime},
    {it_datetime, kDateTime},
    {it_time, kDateTime},
    {it_boolean, Algorithm(6)},
    {it_decimal, kNumeric},
    {it_integer, kNumeric},
};

} // namespace

CFastInfosetContext::CFastInfosetContext()
    : m_uDefaultStringEncoding(0),
      m_aEncodings{},
      m_iAttributeMaxAddLength(6),
      m_iElementMaxAddLength(6),
      m_bUseGeneratedVocabulary(false)
{}

CFastInfosetContext::~CFastInfosetContext() = default;

void CFastInfosetContext::SetSuggestedValues()
{
    for (const SuggestedRow& row : kSuggested)
        SetEncoding(static_cast<unsigned long>(row.eType), row.encoding);
}

} // namespace QnXmlLib16
