// JSON to the byte.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "cli/Json.h"

namespace zu {
namespace {

TEST(Json, IndentsByTwo) {
    JsonWriter json;
    json.BeginObject();
    json.Integer("a", 1);
    json.Key("b");
    json.BeginArray();
    json.Integer(2);
    json.Boolean(true);
    json.Null();
    json.EndArray();
    json.Key("c");
    json.BeginObject();
    json.EndObject();
    json.Key("d");
    json.BeginArray();
    json.EndArray();
    json.EndObject();
    EXPECT_EQ(
        json.Text(),
        "{\n  \"a\": 1,\n  \"b\": [\n    2,\n    true,\n    null\n  ],\n  \"c\": {},\n  \"d\": []\n}\n");
}

TEST(Json, EscapesWhatMustBeEscaped) {
    JsonWriter json;
    json.String("\"\\/\b\f\n\r\t\x01\x1F\x7F");
    EXPECT_EQ(json.Text(), "\"\\\"\\\\/\\b\\f\\n\\r\\t\\u0001\\u001f\x7F\"\n");
}

TEST(Json, CarriesEveryByteOfAText) {
    std::string latin1;
    std::u32string expected;
    for (unsigned c = 0; c < 256; ++c) latin1 += static_cast<char>(c);
    JsonWriter json;
    json.String(latin1);
    const auto back = nlohmann::json::parse(json.Text()).get<std::string>();
    std::string utf8;
    for (unsigned c = 0; c < 256; ++c) {
        if (c >= 0x80) utf8 += static_cast<char>(0xC0 + c / 64);
        utf8 += static_cast<char>(c < 0x80 ? c : 0x80 + c % 64);
    }
    EXPECT_EQ(back, utf8);
}

TEST(Json, KeepsAPathThatIsUtf8AndConvertsAnyOther) {
    JsonWriter json;
    json.BeginArray();
    json.Path("M\xC3\xBCller.zu");
    json.Path("M\xFCller.zu");
    json.EndArray();
    const auto back = nlohmann::json::parse(json.Text());
    EXPECT_EQ(back[0], "M\xC3\xBCller.zu");
    EXPECT_EQ(back[1], "M\xC3\xBCller.zu");
}

TEST(Json, WritesNumbersInTheirShortestForm) {
    JsonWriter json;
    json.BeginArray();
    json.Number(2.5);
    json.Number(10);
    json.Number(1e9);
    json.Integer(INT64_MIN);
    json.EndArray();
    EXPECT_EQ(json.Text(), "[\n  2.5,\n  10,\n  1e+09,\n  -9223372036854775808\n]\n");
    EXPECT_EQ(nlohmann::json::parse(json.Text())[2], 1000000000.0);
}

}  // namespace
}  // namespace zu
