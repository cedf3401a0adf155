#include "tests/model/Entries.h"

#include "QnXmlLib16/QnXmlLib16.h"

#include <array>
#include <gtest/gtest.h>

using namespace QnXmlLib16;
using namespace QnXmlLib16Data;
using namespace Model;

namespace {

constexpr auto kSequence = XmlElementGroupType_Sequence;
const std::string kXsi = "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:";

// The number a and the finish b, which may be nil and have defaults.
const CTables& Defaults()
{
    static const CTables tables(kSequence, kReal,
                                {Prim<CElementInfoSeqPrimOpt>("a", 0, it_i4, "100", AtMost("50")),
                                 Enum<CElementInfoSeqEnumOpt>("b", 1, "oiled")},
                                {}, {{0, [](QnVariant& value) { value.SetI4(5); }}});
    return tables;
}

// What is written for a property of Defaults() that is set so, behind the root's start tag.
std::string Written(int nProperty, const std::function<void(QnVariant&)>& set, bool bDefaults)
{
    const CSmartPtr<CSheet> pSheet(new CSheet(Defaults()));
    pSheet->m_values.clear();
    set(pSheet->m_values[nProperty]);
    CSerializationContext context;
    context.SetWriteDefaultElementValues(bDefaults);
    const std::string strText = ToText(*pSheet, context);
    return strText.substr(std::min(strText.size(), strText.find('>') + 1));
}

} // namespace

TEST(PrimitiveElement, AValueEqualToTheDefaultIsNotChecked)
{
    const auto number = [](int n) { return [n](QnVariant& value) { value.SetI4(n); }; };
    const auto unset = [](QnVariant&) {};
    const auto nil = [](QnVariant& value) { value.SetNil(); };
    for (const bool bDefaults : {false, true}) {
        const auto written = [&](int n, int nValue) {
            return Written(n, number(nValue), bDefaults);
        };
        EXPECT_EQ(written(0, 50), "<a>50</a></r>");
        EXPECT_EQ(written(0, 100), bDefaults ? "<a>100</a></r>" : "<a/></r>");
        EXPECT_EQ(Failure([&] { written(0, 51); }),
                  "CQnValidationException: Failed to convert the element [r] to XML < "
                  "CQnException: Invalid Value for a [51]");
        EXPECT_EQ(written(1, 1), bDefaults ? "<b>oiled</b></r>" : "<b/></r>");
        EXPECT_EQ(written(1, 2), "<b/></r>"); // there is no text for it
        for (const int n : {0, 1}) {
            EXPECT_EQ(Written(n, unset, bDefaults), "");
            const std::string strNil = Written(n, nil, bDefaults);
            EXPECT_NE(strNil.find(":nil=\"true\"/></r>"), std::string::npos) << strNil;
        }
    }
}

TEST(PrimitiveElement, ANilElementLeavesThePropertyAsItIs)
{
    const auto nil = [](const char* pszName, const char* pszNil, const char* pszText) {
        return std::string("<") + pszName + " " + kXsi + "nil='" + pszNil + "'>" + pszText + "</" +
               pszName + ">";
    };
    ExpectReads(Defaults(), {{"", "<a/><b/>", "0:100 1:1"},
                             {"", "<a> 7 </a><b>raw</b>", "0:7 1:0"},
                             {"", nil("a", "true", "7") + nil("b", "1", "raw"), "0:5"},
                             {"", nil("a", "True", "7"), "0:5"},
                             {"", nil("a", "FALSE", "7") + nil("b", "0", "raw"), "0:7 1:0"}});
    // Without a default, an empty element is a value of its type or fails.
    const CTables plain(kSequence, kReal, {Prim<CElementInfoSeqPrimOpt>("a", 0, it_i4)});
    EXPECT_EQ(Read(plain, "<a/>")
                  .find("CQnValidationException: Failed to process the element. "
                        "@/r < CQnInvalidValueException: "),
              0u);
}

TEST(PrimitiveElement, TakesNoAttributeButNil)
{
    CElementInfo* const pPlain =
        new CElementInfoSeqPrimOpt("b", "", 1, false, it_i4, nullptr, kCollapse, {}, nullptr);
    const CTables tables(kSequence, kReal, {Prim<CElementInfoSeqPrimOpt>("a", 0, it_i4), pPlain});
    const std::string strNotNillable =
        "CQnException: Invalid use of 'nil' attribute in non-nillable element. @/r/b";
    const std::string strUnexpected = "CQnException: Unexpected Attribute found. @/r/";
    ExpectReads(tables,
                {{"a", "<a c='1'>7</a>", "0:7"},
                 {"", "<b " + kXsi + "nil='false'>7</b>", "1:7"},
                 {"", "<b " + kXsi + "nil='true'>7</b>", strNotNillable},
                 {"", "<a " + kXsi + "nil='x'>7</a>",
                  "CQnException: Unexpected Value [x] for 'nil' Attribute found. @/r/a/xsi:@nil"},
                 {"", "<a c='1'>7</a>", strUnexpected + "a/@c"},
                 {"", "<b " + kXsi + "type='x'>7</b>", strUnexpected + "b/xsi:@type"}});
}

TEST(WildcardNamespace, GoesByTheFirstTokenIfThatIsAKeyword)
{
    // Opens the shared steps to the test.
    struct CSteps : CElementInfoSeqPrimCol
    {
        using CElementInfo::CheckRestriction;
        using CElementInfo::GetAnyDefaultNamespace;
        using CElementInfoSeqPrimCol::CElementInfoSeqPrimCol;
    };
    // The list, the namespace asked for, and what comes out.
    const std::array<const char*, 3> rows[] = {
        {"##any", "urn:n", "urn:n"},
        {"##other", "", "DefaultNamespace"},
        {"##other", nullptr, "DefaultNamespace"},
        {"##other", "urn:n", ""},
        {"##targetNamespace ##any", "urn:n", "urn:t"},
        {"##any urn:x", "urn:n", "urn:n"},
        {"urn:x ##any", "urn:n", ""},
        {nullptr, "urn:n", ""},
    };
    for (const auto& [pszList, pszNamespace, pszResult] : rows)
        EXPECT_EQ(CSteps::GetAnyDefaultNamespace(pszList, pszNamespace, "urn:t"), pszResult);
    QnVariant value;
    value.SetString("x");
    EXPECT_EQ(Failure([&] { CSteps("a", "", 0).CheckRestriction(value); }),
              "CQnException: Cannot CheckRestriction for type: string");
}
