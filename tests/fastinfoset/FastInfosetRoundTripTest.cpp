#include "QnXmlLib16/binding/SerializationContext.h"
#include "QnXmlLib16/support/QnZip.h"
#include "tests/fastinfoset/FiTools.h"
#include "tests/model/Failure.h"

#include <gtest/gtest.h>

#include <vector>

using namespace Fi;

namespace {

std::string WrittenDocument(const Steps& steps, const CFastInfosetContext& context)
{
    std::string strFailure;
    const std::string strDocument = Written(
        [&](CFastInfosetWriter& w) {
            w.WriteStartDocument(FInfoDecl_Version10);
            w.WriteStartElement("r", "");
            steps(w);
            w.WriteEndElement();
            w.WriteEndDocument();
        },
        context, strFailure);
    EXPECT_EQ(strFailure, "");
    return strDocument;
}

std::string RoundTrip(const Steps& steps,
                      const CFastInfosetContext& context = CFastInfosetContext())
{
    return Read(WrittenDocument(steps, context), context);
}

void Leaf(CFastInfosetWriter& w, const char* pszName, const std::string& strText)
{
    w.WriteStartElement(pszName, "");
    w.WriteString(strText, it_string, false);
    w.WriteEndElement();
}

// What a load makes of the bytes.
std::string Loaded(const CBinaryData& data)
{
    CSerializationContext context;
    CXmlDocument document(context);
    document.LoadXmlStream(data.GetData(), data.GetLength());
    return Tree(*document.GetDocumentElement());
}

} // namespace

TEST(FastInfosetRoundTrip, SuggestedEncodingsKeepAllButNegativeInts)
{
    CFastInfosetContext context;
    context.SetSuggestedValues();
    struct Row
    {
        ItemType eType;
        const char* pszText;
        const char* pszBack; // null: as pszText
    };
    const Row rows[] = {
        {it_hexBinary, "00AB", nullptr},
        {it_base64Binary, "AQI=", nullptr},
        {it_i1, "-128", nullptr},
        {it_i2, "-32768", nullptr},
        {it_i4, "2147483647", nullptr},
        {it_i4, "-1", "4294967295"},
        {it_i8, "-9223372036854775808", nullptr},
        {it_ui1, "255", nullptr},
        {it_ui2, "65535", nullptr},
        {it_ui4, "4294967295", nullptr},
        {it_ui8, "9223372036854775807", nullptr},
        {it_r4, "-1.5", nullptr},
        {it_r8, "1e+300", nullptr},
        {it_duration, "P1DT2H", nullptr},
        {it_yearMonth, "2001-05", nullptr},
        {it_date, "2001-05-09Z", nullptr},
        {it_datetime, "2001-05-09T12:00:00Z", nullptr},
        {it_char, "x", nullptr},
        {it_string, "any text", nullptr},
        {it_boolean, "true", nullptr},
        {it_decimal, "-12.50", nullptr},
        {it_integer, "123456789012345678901234567890", nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pszText);
        const std::string strBack = row.pszBack ? row.pszBack : row.pszText;
        EXPECT_EQ(RoundTrip(
                      [&](auto& w) {
                          w.WriteAttributeString("k", "", row.pszText, row.eType);
                          w.WriteString(row.pszText, row.eType, false);
                      },
                      context),
                  "r[k='" + strBack + "'] '" + strBack + "'");
    }
    std::string strFailure;
    Written(
        [](auto& w) {
            w.WriteStartElement("r", "");
            w.WriteString("18446744073709551615", it_ui8, false);
        },
        context, strFailure);
    EXPECT_EQ(strFailure, "The value [18446744073709551615] is to large to fit in a i8");
}

TEST(FastInfosetRoundTrip, TextBehindAChildIsReadAsTextOfTheChild)
{
    EXPECT_EQ(RoundTrip([](auto& w) {
                  w.WriteString("1", it_string, false);
                  Leaf(w, "a", "2");
                  w.WriteString("3", it_string, false);
                  Leaf(w, "b", "4");
              }),
              "r '1' (a '23' b '4')");
}

TEST(FastInfosetRoundTrip, TheTypeAttributeIsReadAsItWasWritten)
{
    EXPECT_EQ(RoundTrip([](auto& w) {
                  w.WriteAttributeType("urn:t", "T", it_string);
                  w.WriteAttributeType("urn:t", "T", it_string);
              }),
              "r[{urn:t}T='AA:T'][{http://www.w3.org/2001/XMLSchema-instance}type='AA:T']");
}

TEST(FastInfosetRoundTrip, ManyNamesAndValuesKeepTheirNumbers)
{
    std::string strExpected;
    const Steps steps = [&](CFastInfosetWriter& w) {
        strExpected = "r (";
        for (int i = 0; i < 9000; ++i) {
            const std::string strName = 'n' + std::to_string(i % 4500);
            const std::string strNamespace = i % 3 ? "urn:" + std::to_string(i % 4500 % 70) : "";
            const std::string strValue = std::to_string(i % 4500);
            w.WriteStartElement(strName, strNamespace);
            w.WriteAttributeString(strName, "", strValue, it_string);
            w.WriteAttributeString("k", strNamespace, strName, it_string);
            w.WriteString(strValue, it_string, false);
            w.WriteEndElement();
            const std::string strPrefix = i % 3 ? '{' + strNamespace + '}' : "";
            strExpected += strPrefix + strName + '[' + strName + "='" + strValue + "'][" +
                           strPrefix + "k='" + strName + "'] '" + strValue + "' ";
        }
        strExpected.back() = ')';
    };
    const std::string strRead = RoundTrip(steps);
    EXPECT_EQ(strRead, strExpected);
}

TEST(FastInfosetRoundTrip, ALoadFindsTheFormatFromTheData)
{
    const std::string strDocument = WrittenDocument(
        [](auto& w) { Leaf(w, "a", std::string(500, 'y')); }, CFastInfosetContext());
    const std::string strTree = "r (a '" + std::string(500, 'y') + "')";
    CBinaryData data;
    data.SetBuffer(reinterpret_cast<const unsigned char*>(strDocument.data()), strDocument.size());
    EXPECT_EQ(Loaded(data), strTree);
    for (const CompressionType eType : {CompressionType_GZip, CompressionType_ZLib}) {
        CBinaryData packed(data);
        CQnZip::CompressData(packed, eType);
        EXPECT_LT(packed.GetLength(), data.GetLength());
        EXPECT_EQ(Loaded(packed), strTree);
    }
    EXPECT_EQ(Loaded(CBinaryData("<r>text</r>")), "r 'text'");
    // A string is XML text, whatever it looks like.
    CXmlDocument document;
    EXPECT_THROW(document.LoadXml(strDocument.c_str()), CQnException);
    // Damaged Fast Infoset is not tried as XML text.
    Model::ExpectFailure<CQnException>(
        [] {
            const std::string strBytes = Bytes("E0 00 00 01 00 '<r/>'");
            CBinaryData damaged;
            damaged.SetBuffer(reinterpret_cast<const unsigned char*>(strBytes.data()),
                              strBytes.size());
            Loaded(damaged);
        },
        "Failed to parse FastInfoset. Invalid NonEmptyOctetString type  on the second bit of an "
        "octet.");
}
