#include "Tessel/FilledText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessel {
namespace {

TEST(FilledText, HasItsValuesWhereItWantsThem) {
    struct Row {
        std::string text;
        std::vector<std::string> values;
        std::string expected;
    };
    const std::vector<Row> rows{
        {"%1 and %2", {"a", "b"}, "a and b"},
        {"%2%1%2", {"a", "b"}, "bab"},
        {"%lld, %lld", {"1", "2"}, "1, 2"},
        {"%lld %lld", {"1"}, "1 %lld"},
        {"%1", {"%2%1%lld"}, "%2%1%lld"},
        {"%3 %0 %", {"a", "b"}, "%3 %0 %"},
        {"%", {"a"}, "%"},
        {"100%1", {"a"}, "100a"},
        {"", {"a"}, ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(filled(row.text, row.values), row.expected) << row.text;
    }
}

} // namespace
} // namespace tessel
