#include "CorvidKitCore/Address.h"

#include <gtest/gtest.h>

namespace corvid {
namespace {

TEST(Address, IsASchemeAColonAndWhatTheSchemeNames) {
    for (const char* text : {"https://tessel.example/updates/?app=tessel&version=1.2", "mailto:a@b.example", "a:b",
                             "x-apple.systempreferences:com.apple.preference.keyboard?Shortcuts", "http://[::1]/%7e"}) {
        EXPECT_TRUE(isAddress(text)) << text;
    }
}

TEST(Address, IsNothingElse) {
    for (const char* text : {"", ":", "https:", "tessel.example", "/updates/", "1http://a", "ht tp://a", "http://a b",
                             "http://a/%", "http://a/%2", "http://a/%zz", "http://a/\"", "http://a/\n", "http://ä"}) {
        EXPECT_FALSE(isAddress(text)) << text;
    }
}

} // namespace
} // namespace corvid
