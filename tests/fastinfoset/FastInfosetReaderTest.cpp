// What ForeignDocumentsTest, which goes by the forms of a document, and DamagedDocumentsTest leave
// aside: the reader beside the writer, the locale and the tree.

#include "tests/fastinfoset/FiTools.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

using namespace Fi;

TEST(FastInfosetReader, TheWritersLastBandIsReadAsTheNextName)
{
    CFastInfosetContext context;
    context.SetUseGeneratedVocabulary(true);
    for (unsigned int u = 1; u <= 526371; ++u)
        context.GetVocabulary()->AddElement("", "", std::to_string(u));
    const auto written = [&](const char* pszName) {
        std::string strFailure;
        return Written(
            [pszName](CFastInfosetWriter& w) {
                w.WriteStartDocument(FInfoDecl_None);
                w.WriteStartElement(pszName, "");
                w.WriteEndElement();
                w.WriteEndDocument();
            },
            context, strFailure);
    };
    EXPECT_EQ(Read(written("526368"), context), "526368");
    EXPECT_EQ(Read(written("526369"), context), "526370");
}

TEST(FastInfosetReader, TextGoesFromUtf8ToTheLocale)
{
    const std::string strDocument =
        Bytes("E0 00 00 01 00 7C 01 C3 A9 78 00 'k' 42 E2 82 AC F0 92 00 E2 82 AC A0 80 FF FF");
    EXPECT_EQ(Read(strDocument), "?[k='?'] '?"
                                 "?'");
    if (std::setlocale(LC_CTYPE, "C.UTF-8")) {
        EXPECT_EQ(Read(strDocument), "\xC3\xA9[k='\xE2\x82\xAC'] '\xE2\x82\xAC\xE2\x82\xAC'");
        std::setlocale(LC_CTYPE, "C");
    }
}

TEST(FastInfosetReader, AFailureLeavesTheTreeBuiltUntilThen)
{
    CDocument document(Bytes("E0 00 00 01 00 3C 00 'r' 3C 00 'b' C0"));
    const CFastInfosetContext context;
    CFastInfosetReader reader(context, document);
    EXPECT_THROW(reader.Parse(), CQnException);
    ASSERT_NE(document.GetDocumentElement(), nullptr);
    EXPECT_EQ(Tree(*document.GetDocumentElement()), "r (b)");
}

TEST(FastInfosetReader, AnElementWithManyAttributesMakesNoOtherLarge)
{
    std::string strBytes = Bytes("E0 00 00 01 00 7C 00 'r' 78 00 'k' FF");
    for (int i = 0; i < 100000; ++i)
        strBytes += Bytes("00 FF");
    strBytes += Bytes("F0");
    for (int i = 0; i < 100000; ++i)
        strBytes += Bytes("40 00 FF FF");
    CDocument document(strBytes + Bytes("FF"));
    ASSERT_TRUE(CFastInfosetReader(CFastInfosetContext(), document).Parse());
    const CXmlElement* pRoot = document.GetDocumentElement();
    EXPECT_EQ(pRoot->GetAttributes().size(), 100001u);
    EXPECT_LE(pRoot->GetFirstElement()->GetAttributes().capacity(), 16u);
}
