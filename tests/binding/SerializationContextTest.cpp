#include "tests/model/Sheet.h"

#include "QnXmlLib16/QnXmlLib16.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;
using Model::Failure;

namespace {

// Constructed before main, when the default context has to be there already.
const std::string kEarlyIndent = CSerializationContext::m_defaultContext.GetIndentChars();

} // namespace

TEST(SerializationContext, OfTheDefaultIsThereBeforeMain)
{
    EXPECT_EQ(kEarlyIndent, "\t");
}

TEST(SerializationContext, TheTwoRelaxationsOfElementsExcludeEachOther)
{
    const std::string strBoth =
        "CQnInvalidStateException: The parser can only ignore additional elements, or ignore the "
        "fact that some required ones are missing, you can not ignore both\n"
        "Set IgnoreMissingMandatoryElements to false before setting IgnoreUnknownElements to true";
    CSerializationContext context;
    context.SetIgnoreMissingMandatoryElements(true);
    EXPECT_EQ(Failure([&] { context.SetIgnoreUnknownElements(true); }), strBoth);
    EXPECT_FALSE(context.GetIgnoreUnknownElements());
    context.SetIgnoreMissingMandatoryElements(false);
    context.SetIgnoreUnknownElements(true);
    EXPECT_EQ(Failure([&] { context.SetIgnoreMissingMandatoryElements(true); }), strBoth);
    EXPECT_FALSE(context.GetIgnoreMissingMandatoryElements());
}

TEST(SerializationContext, IgnoresNamespacesOfASchemaWithoutThem)
{
    CSerializationContext context;
    context.SetSchemaType(SchemaType_NoNamespaces);
    context.SetIgnoreNamespaces(false);
    EXPECT_TRUE(context.GetIgnoreNamespaces());
    context.SetSchemaType(SchemaType_Other);
    EXPECT_FALSE(context.GetIgnoreNamespaces());
}

TEST(SerializationContext, IndentsWithTabsAndBlanksOnly)
{
    CSerializationContext context;
    context.SetIndentChars("  \t");
    EXPECT_EQ(Failure([&] { context.SetIndentChars(" x"); }),
              "CQnInvalidParamException: IndentChars can only contain Whitespace characters, "
              "i.e. \\t or spaces");
    EXPECT_EQ(context.GetIndentChars(), "  \t");
    context.SetIndentChars(nullptr);
    EXPECT_EQ(context.GetIndentChars(), "");
}

TEST(SerializationContext, CopiesShareTheRootAttributesAndNothingElse)
{
    CSerializationContext original;
    original.SetIgnoreUnknownAttributes(true);
    original.GetNamespaceAliases().Add("a", "urn:a");
    original.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_None);
    original.GetAdditionalRootAttributes()->Add("x", "1");
    CSerializationContext assigned;
    assigned = original;
    for (CSerializationContext copy : {CSerializationContext(original), assigned}) {
        EXPECT_TRUE(copy.GetIgnoreUnknownAttributes());
        EXPECT_EQ(copy.GetAdditionalRootAttributes(), original.GetAdditionalRootAttributes());
        EXPECT_EQ(copy.GetJsonContext().GetSupportRoundtrip(), JsonRoundTrip_None);
        copy.GetJsonContext().SetSupportRoundtrip(JsonRoundTrip_Full);
        copy.GetNamespaceAliases().Add("b", "urn:b");
        EXPECT_EQ(copy.GetNamespaceAliases().GetNamespaceCount(), 2);
    }
    EXPECT_EQ(original.GetJsonContext().GetSupportRoundtrip(), JsonRoundTrip_None);
    EXPECT_EQ(original.GetNamespaceAliases().GetNamespaceCount(), 1);
}

TEST(NamespaceAliases, AreSortedByNamespaceAndReplaced)
{
    CNamespaceAliasMap map;
    map.Add("z", "urn:b");
    map.Add("y", "urn:a");
    map.Add("x", "urn:b");
    map.Add("y", "urn:c");
    const char* const sorted[] = {"", "urn:a", "urn:b", "urn:c", ""};
    for (int i = -1; i < 4; ++i)
        EXPECT_EQ(map.GetNamespaceAt(i), sorted[i + 1]);
    EXPECT_EQ(map.GetAliasFromNamespace("urn:b"), "x");
    EXPECT_EQ(map.GetNamespaceFromAlias("y"), "urn:a"); // the first in order
    map.RemoveNamespace("urn:b");
    EXPECT_FALSE(map.DoesNamespaceExist("urn:b"));
    EXPECT_FALSE(map.DoesAliasExist("x"));
    EXPECT_TRUE(map.DoesAliasExist("y"));
    EXPECT_EQ(Failure([&] { map.GetNamespaceFromAlias("x"); }),
              "CQnException: Namespace alias [x] not found");
}

TEST(NamespaceAliases, AskingForAnUnknownNamespaceAddsIt)
{
    const CNamespaceAliasMap map;
    EXPECT_EQ(map.GetNamespaceCount(), 0);
    EXPECT_EQ(map.GetAliasFromNamespace("urn:a"), "");
    EXPECT_TRUE(map.DoesNamespaceExist("urn:a"));
}
