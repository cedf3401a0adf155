#include "QnXmlLib16/json/JsonReaderHandler.h"

#include <gtest/gtest.h>

using namespace QnXmlLib16;

TEST(JsonPath, TheInnermostNameComesFirst)
{
    CJsonReaderDefaultHandler handler;
    handler.ReadStartDocument();
    EXPECT_EQ(handler.GetPath(), "$");
    handler.ReadStartObject();
    EXPECT_EQ(handler.GetPath(), "$"); // the outermost object has no item
    handler.ReadName("a");
    handler.ReadStartObject();
    EXPECT_EQ(handler.GetPath(), "$.a");
    handler.ReadName("b");
    EXPECT_EQ(handler.GetPath(), "$.b.a");
    handler.ReadString("x");
    handler.ReadName("c"); // takes the place of b
    EXPECT_EQ(handler.GetPath(), "$.c.a");
    handler.ReadEndObject();
    EXPECT_EQ(handler.GetPath(), "$");
    handler.ReadName("d");
    EXPECT_EQ(handler.GetPath(), "$.d");
    handler.ReadStartDocument();
    EXPECT_EQ(handler.GetPath(), "$");
}

TEST(JsonPath, AnObjectInAnArrayBearsItsIndexAsAByte)
{
    CJsonReaderDefaultHandler handler;
    handler.ReadStartDocument();
    handler.ReadStartObject();
    handler.ReadName("a");
    handler.ReadStartArray();
    EXPECT_EQ(handler.GetPath(), "$"); // arrays and the names they took over are left out
    for (char c = 0; c < 3; ++c) {
        handler.ReadStartObject();
        handler.ReadName("b");
        EXPECT_EQ(handler.GetPath(), std::string("$.b.a[") + c + "]");
        handler.ReadEndObject();
    }
    handler.ReadStartArray(); // in an array: has no name to give on
    handler.ReadStartObject();
    EXPECT_EQ(handler.GetPath(), std::string("$.[\0]", 5));
    handler.ReadStartObject(); // in an object: unnamed
    EXPECT_EQ(handler.GetPath(), std::string("$..[\0]", 6));
    handler.ReadEndArray(); // takes the objects with it
    handler.ReadEndArray();
    EXPECT_EQ(handler.GetPath(), "$");
    handler.ReadEndArray(); // nothing is left to end
    handler.ReadEndObject();
    EXPECT_EQ(handler.GetPath(), "$");
}
