#include "tests/model/Entries.h"

#include "QnXmlLib16/QnXmlLib16.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

constexpr auto kSequence = XmlElementGroupType_Sequence;
const std::string kNotRead = "CQnValidationException: Failed to process the element. @/r < ";
const std::string kUnexpected = "CQnException: Unexpected Attribute found. @/r/";
const std::string kNotWritten =
    "CQnValidationException: Failed to convert the element [r] to XML < CQnException: Failed to "
    "convert attributes to XML < ";

CHeld HeldAttributes(int nProperty, const char* pszRestriction)
{
    return HeldItems(nProperty,
                     [pszRestriction] { return new CAttributeCol("", pszRestriction, "urn:t"); });
}

// The properties of <r attributes/>, or the failure.
std::string ReadAttributes(const CTables& tables, const std::string& strAttributes,
                           const char* pszFlags = "")
{
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    const std::string strFailure = Failure(
        [&] { pSheet->FromXml(("<r " + strAttributes + "/>").c_str(), MakeContext(pszFlags)); });
    return strFailure.empty() ? pSheet->Dump() : strFailure;
}

// What stands between "<r" and "/>", or the failure.
std::string WriteAttributes(const CSheet& sheet, bool bNoDefaults = false)
{
    CSerializationContext context;
    context.SetNoOptionalAttributeDefaultOutput(bNoDefaults);
    std::string strText;
    const std::string strFailure = Failure([&] { strText = ToText(sheet, context); });
    return strFailure.empty() ? strText.substr(2, strText.size() - 4) : strFailure;
}

} // namespace

TEST(AttributeMetadata, EveryClassReadsWhatItWrites)
{
    const CTables tables(kSequence, kReal, {},
                         {Attribute("id", 0, false, it_i4), Attribute("price", 1, true, it_decimal),
                          Attribute("share", 2, true, it_r8, nullptr, {}, "%.2f"),
                          EnumAttribute("finish", 3, false), EnumAttribute("inside", 4, true),
                          new CAttributeInfoAny("any", "", 5, true, nullptr, "##local", "urn:t")},
                         {HeldAttributes(5, "##local")});
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    pSheet->FromXml(
        "<r b='2' inside='raw' id=' 7 ' price='1.5' finish='oiled' share='0.251' a='1'/>",
        CSerializationContext());
    EXPECT_EQ(pSheet->Dump(), "0:7 1:1.5 2:0.251 3:1 4:0 5:[b=2|a=1]");
    EXPECT_EQ(WriteAttributes(*pSheet), " id=\"7\" price=\"1.5\" share=\"0.25\" finish=\"oiled\" "
                                        "inside=\"raw\" b=\"2\" a=\"1\"");
}

TEST(AttributeReading, ARequiredAttributeIsMissedWhateverTheContext)
{
    const std::string strMissed = kNotRead + "CQnValidationException: Failed to find the required "
                                             "Attribute [";
    const CTables tables(
        kSequence, kReal, {},
        {Attribute("a", 0, false, it_i4, "5"), EnumAttribute("b", 1, false, "raw")});
    for (const char* pszFlags : {"", "m", "u"}) {
        EXPECT_EQ(ReadAttributes(tables, "b='raw'", pszFlags), strMissed + "a].");
        EXPECT_EQ(ReadAttributes(tables, "a='1'", pszFlags), strMissed + "b].");
    }
    EXPECT_EQ(ReadAttributes(tables, "b='rough' a='1'"),
              kNotRead + "CQnInvalidValueException: No finish [rough]");
}

TEST(AttributeReading, OnlyEnumerationsIgnoreNamespaces)
{
    const CTables tables(kSequence, kReal, {},
                         {Attribute("a", 0, true, it_i4), EnumAttribute("b", 1, true)});
    const std::string strNamespace = "xmlns:x='urn:x' ";
    EXPECT_EQ(ReadAttributes(tables, strNamespace + "x:b='oiled'", "n"), "1:1");
    EXPECT_EQ(ReadAttributes(tables, strNamespace + "x:b='oiled'"), kUnexpected + "x:@b");
    EXPECT_EQ(ReadAttributes(tables, strNamespace + "x:a='1'", "n"), kUnexpected + "x:@a");
}

TEST(AttributeReading, AWildcardTakesWhatItsListAdmits)
{
    const CTables tables(kSequence, kReal, {},
                         {Attribute("a", 0, true, it_i4),
                          new CAttributeInfoAny("any", "", 1, true, nullptr, "##other", "urn:t")},
                         {HeldAttributes(1, "##any")});
    EXPECT_EQ(ReadAttributes(tables, "x='1' a='2' b='3'"), "0:2 1:[x=1|b=3]");
    EXPECT_EQ(ReadAttributes(tables, "xmlns:t='urn:t' t:a='1'"), kUnexpected + "t:@a");

    // The collection has the last word on what goes in.
    const CTables narrow(kSequence, kReal, {},
                         {new CAttributeInfoAny("any", "", 1, false, nullptr, "##any", "urn:t")},
                         {HeldAttributes(1, "##targetNamespace")});
    EXPECT_EQ(ReadAttributes(narrow, "a='1'"),
              kNotRead + "CQnInvalidNamespaceException: Invalid namespace []. The namespace must "
                         "be one of [##targetNamespace] where the target namespace is [urn:t].");

    const std::string strWrong = "CQnException: Serialization Data Error : The collection should "
                                 "be a CAttributeCol, it was not!";
    const CTables wrong(kSequence, kReal, {},
                        {new CAttributeInfoAny("any", "", 1, true, nullptr, "##any", "")},
                        {HeldItems(1, [] { return MakeTexts("a"); })});
    EXPECT_EQ(ReadAttributes(wrong, "a='1'"), kNotRead + strWrong);
    EXPECT_EQ(WriteAttributes(*CSmartPtr<CSheet>(new CSheet(wrong))), "");
}

TEST(AttributeWriting, LeavesOutWhatIsAbsentOrADefaultOrHasNoText)
{
    struct Row
    {
        CAttributeInfo* attribute;
        std::string value;      // nil, a number, or the empty text
        std::string text;       // what is written
        std::string noDefaults; // where the context leaves optional defaults out
    };
    const std::string strNoType = kNotWritten + "CQnException: Invalid Type 0 to convert to string";
    const std::string strFacet = kNotWritten + "CQnException: Invalid Value for a [5]";
    const Row rows[] = {
        {Attribute("a", 0, true, it_i4, "5"), "5", " a=\"5\"", ""},
        {Attribute("a", 0, true, it_i4, "6"), "5", " a=\"5\"", " a=\"5\""},
        {Attribute("a", 0, false, it_i4, "5"), "5", " a=\"5\"", " a=\"5\""},
        {Attribute("a", 0, true, it_string, ""), "", " a=\"\"", " a=\"\""},
        {Attribute("a", 0, true, it_i4), "nil", "", ""},
        {Attribute("a", 0, false, it_i4), "nil", strNoType, strNoType},
        // A default that is written has to keep to the facets as any value does.
        {Attribute("a", 0, true, it_i4, "5", AtMost("4")), "5", strFacet, ""},
        {EnumAttribute("a", 0, true, "oiled"), "1", " a=\"oiled\"", ""},
        {EnumAttribute("a", 0, true), "nil", "", ""},
        {EnumAttribute("a", 0, false), "2", "", ""}, // which has no text
        // No value is 0 for an enumeration.
        {EnumAttribute("a", 0, false), "nil", " a=\"raw\"", " a=\"raw\""},
    };
    int nRow = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(nRow++);
        const CTables tables(kSequence, kReal, {}, {row.attribute});
        const CSmartPtr<CSheet> pSheet(new CSheet(tables));
        QnVariant& value = pSheet->m_values[0];
        if (row.value == "nil")
            value.SetNil();
        else if (row.value.empty())
            value.SetString("");
        else
            value.SetI4(std::stol(row.value));
        EXPECT_EQ(WriteAttributes(*pSheet), row.text);
        EXPECT_EQ(WriteAttributes(*pSheet, true), row.noDefaults);
    }
}

TEST(AttributeWriting, NamesThePropertyThatFails)
{
    const CTables tables(kSequence, kReal, {}, {Attribute("a", 0, true, it_i4)});
    const CSmartPtr<CSheet> pSheet(new CSheet(tables));
    pSheet->m_before = [](int, bool) { throw CQnInvalidStateException("not now"); };
    EXPECT_EQ(WriteAttributes(*pSheet),
              kNotWritten + "CQnValidationException: Failed to get the property value for [a]. < "
                            "CQnInvalidStateException: not now");
}
