#include "Platform/Linux/Settings/PropertyListDocument.h"
#include "Tests/CorvidKitCore/Printing.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <langinfo.h>
#include <locale.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using corvid::Data;
using corvid::PropertyListValue;
using platform::linux::PropertyListDocument;
using Dictionary = PropertyListValue::Dictionary;

std::string document(std::string_view entries) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + std::string{entries} +
           "</dict></plist>\n";
}

std::optional<PropertyListValue> parsed(std::string_view entry) {
    const auto read = PropertyListDocument::parse(document("<key>key</key>" + std::string{entry}));
    return read ? read->value("key") : std::nullopt;
}

/// A value after a write to a file and a read.
std::optional<PropertyListValue> returned(const PropertyListValue& value) {
    PropertyListDocument written;
    written.set(value, "key");
    const auto read = PropertyListDocument::parse(written.xml());
    return read ? read->value("key") : std::nullopt;
}

TEST(PropertyListDocument, ReadsEveryKind) {
    EXPECT_EQ(parsed("<true/>"), PropertyListValue{true});
    EXPECT_EQ(parsed("<false/>"), PropertyListValue{false});
    EXPECT_EQ(parsed("<integer>1</integer>"), PropertyListValue{1});
    EXPECT_EQ(parsed("<integer>-1</integer>"), PropertyListValue{-1});
    EXPECT_EQ(parsed("<real>1</real>"), PropertyListValue{1.0});
    EXPECT_EQ(parsed("<real>-2.5e-3</real>"), PropertyListValue{-2.5e-3});
    EXPECT_EQ(parsed("<string>a &lt; b &amp; c</string>"), PropertyListValue{"a < b & c"});
    EXPECT_EQ(parsed("<string/>"), PropertyListValue{""});
    EXPECT_EQ(parsed("<data>AP8=</data>"), (PropertyListValue{Data{std::byte{0}, std::byte{255}}}));
    EXPECT_EQ(parsed("<dict><key>a</key><true/></dict>"), (PropertyListValue{Dictionary{{"a", true}}}));
    EXPECT_EQ(parsed("<dict/>"), PropertyListValue{Dictionary{}});
}

TEST(PropertyListDocument, ReadsNothingForAKindThatValuesDoNotHave) {
    EXPECT_EQ(parsed("<array><true/></array>"), std::nullopt);
    EXPECT_EQ(parsed("<date>2024-02-29T12:00:00Z</date>"), std::nullopt);
    EXPECT_EQ(parsed("<dict><key>a</key><array/><key>b</key><true/></dict>"),
              (PropertyListValue{Dictionary{{"b", true}}}));
}

TEST(PropertyListDocument, KeepsIntegersExactUpToTheEndsOfTheirRange) {
    using Limits = std::numeric_limits<std::int64_t>;
    for (const std::int64_t number : {Limits::min(), Limits::min() + 1, std::int64_t{-4294967296}, std::int64_t{-1},
                                      std::int64_t{0}, std::int64_t{1}, Limits::max() - 1, Limits::max()}) {
        EXPECT_EQ(returned(number), PropertyListValue{number}) << number;
    }
}

TEST(PropertyListDocument, DoesNotTakeAnIntegerBeyondTheRangeForANegativeOne) {
    EXPECT_EQ(parsed("<integer>9223372036854775807</integer>"),
              PropertyListValue{std::numeric_limits<std::int64_t>::max()});
    EXPECT_EQ(parsed("<integer>9223372036854775808</integer>"), std::nullopt);
    EXPECT_EQ(parsed("<integer>18446744073709551615</integer>"), std::nullopt);
}

TEST(PropertyListDocument, KeepsFloatsExact) {
    using Limits = std::numeric_limits<double>;
    for (const double number :
         {0.1, 1.0 / 3.0, 1.0, -1.0, 1e300, 1e-300, 1700000000.123456, Limits::max(), Limits::lowest(), Limits::min(),
          Limits::denorm_min(), Limits::infinity(), -Limits::infinity()}) {
        EXPECT_EQ(returned(number), PropertyListValue{number}) << number;
    }
    const std::optional<PropertyListValue> nan = returned(Limits::quiet_NaN());
    ASSERT_TRUE(nan && nan->real());
    EXPECT_TRUE(std::isnan(*nan->real()));
}

/// Makes a locale with a decimal comma in the folder, because few build machines have one installed. Returns whether it
/// worked.
bool makeDecimalCommaLocale(const TemporaryFolder& folder) {
    write(folder / "source", "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \"\"\ngrouping -1\nEND LC_NUMERIC\n");
    std::string program = "localedef";
    std::string force = "--force";
    std::string quiet = "--quiet";
    std::string input = "--inputfile=" + folder / "source";
    std::string output = folder / "comma";
    std::array<char*, 6> arguments{program.data(), force.data(), quiet.data(), input.data(), output.data(), nullptr};
    pid_t child = 0;
    int status = 0;
    return ::posix_spawnp(&child, program.c_str(), nullptr, nullptr, arguments.data(), environ) == 0 &&
           ::waitpid(child, &status, 0) == child && std::filesystem::exists(folder / "comma/LC_NUMERIC");
}

TEST(PropertyListDocument, WritesNumbersTheSameWhateverTheDecimalPointOfTheLocale) {
    const TemporaryFolder folder;
    if (!makeDecimalCommaLocale(folder)) {
        GTEST_SKIP() << "there is no localedef to make a locale with a decimal comma";
    }
    inChildProcess([&] {
        ::setenv("LOCPATH", folder.path.c_str(), 1);
        const locale_t comma = ::newlocale(LC_ALL_MASK, "comma", nullptr);
        ASSERT_NE(comma, nullptr);
        ::uselocale(comma);
        ASSERT_STREQ(::nl_langinfo(RADIXCHAR), ",");
        PropertyListDocument written;
        written.set(0.5, "key");
        EXPECT_NE(written.xml().find("<real>0.5</real>"), std::string::npos) << written.xml();
        EXPECT_EQ(returned(0.5), PropertyListValue{0.5});
        EXPECT_STREQ(::nl_langinfo(RADIXCHAR), ",") << "the program's own locale was not put back";
    });
}

TEST(PropertyListDocument, WritesBackWhatItCannotRead) {
    const std::string unknown =
        document("<key>array</key><array><integer>1</integer><string>two</string></array>"
                 "<key>date</key><date>2024-02-29T12:00:00Z</date>"
                 "<key>huge</key><integer>18446744073709551615</integer>"
                 "<key>inner</key><dict><key>date</key><date>2001-01-01T00:00:00Z</date></dict>");
    std::optional<PropertyListDocument> read = PropertyListDocument::parse(unknown);
    ASSERT_TRUE(read);
    read->set(true, "enabled");
    std::string written = read->xml();
    std::erase_if(written, [](char character) { return character == '\n' || character == '\t'; });
    for (const char* part : {"<array><integer>1</integer><string>two</string></array>",
                             "<date>2024-02-29T12:00:00Z</date>", "<integer>18446744073709551615</integer>",
                             "<dict><key>date</key><date>2001-01-01T00:00:00Z</date></dict>", "<true/>"}) {
        EXPECT_NE(written.find(part), std::string::npos) << part << " in " << written;
    }
}

TEST(PropertyListDocument, KnowsWhatItContainsWhateverTheKind) {
    std::optional<PropertyListDocument> read = PropertyListDocument::parse(document("<key>array</key><array/>"));
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->contains("array"));
    EXPECT_FALSE(read->contains("arra"));
    read->remove("array");
    EXPECT_FALSE(read->contains("array"));
    read->remove("array");
}

TEST(PropertyListDocument, ReadsTheBinaryFormToo) {
    using namespace std::string_view_literals;
    constexpr std::string_view contents = "bplist00"         // the signature
                                          "\xd1\x01\x02"     // a dictionary: object 1 is its key, object 2 the value
                                          "\x51k"            // a text of one character
                                          "\x09"             // true
                                          "\x08\x0b\x0d"     // where the objects start
                                          "\0\0\0\0\0\0\1\1" // the sizes of an offset and of a reference
                                          "\0\0\0\0\0\0\0\3" // how many objects
                                          "\0\0\0\0\0\0\0\0" // which one is the root
                                          "\0\0\0\0\0\0\0\x0e"sv; // where the offsets start
    const std::optional<PropertyListDocument> read = PropertyListDocument::parse(contents);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->value("k"), PropertyListValue{true});
}

TEST(PropertyListDocument, RefusesWhatIsNoPropertyListWithADictionary) {
    for (const char* contents :
         {"", " ", "\n", "hello", "<", "<plist", "<plist version=\"1.0\"></plist>",
          "<plist version=\"1.0\"><array/></plist>", "<plist version=\"1.0\"><string>text</string></plist>",
          "<plist version=\"1.0\"><dict><key>a</key><true/></plist>",
          "<plist version=\"1.0\"><dict><true/></dict></plist>",
          "<plist version=\"1.0\"><dict><key>a</key><what/></dict></plist>", "{\"enabled\": true}", "bplist00",
          "bplist00\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff"
          "\xff\xff\xff\xff\xff\xff\xff\xff\xff\xff"}) {
        EXPECT_FALSE(PropertyListDocument::parse(contents)) << contents;
    }
}

TEST(PropertyListDocument, RefusesAFileThatWasCutAnywhere) {
    PropertyListDocument whole;
    whole.set(true, "enabled");
    whole.set(Dictionary{{"org.example.app", "maximize"}, {"org.example.other", "center"}}, "rules");
    whole.set(-12, "number");
    whole.set(Data{std::byte{1}, std::byte{2}}, "data");
    const std::string xml = whole.xml();
    const std::size_t end = xml.rfind("</dict>") + std::string_view{"</dict>"}.size();
    for (std::size_t length = 0; length < end; ++length) {
        EXPECT_FALSE(PropertyListDocument::parse(std::string_view{xml}.substr(0, length))) << xml.substr(0, length);
    }
    EXPECT_TRUE(PropertyListDocument::parse(xml));
}

rc::Gen<std::string> anyText() {
    return rc::gen::map(
        rc::gen::container<std::string>(
            rc::gen::oneOf(rc::gen::inRange<char>(1, 127), rc::gen::element('<', '&', '>', '"', '\n', ' ', '\t', '\r'),
                           rc::gen::map(rc::gen::inRange(128, 256), [](int byte) { return static_cast<char>(byte); }))),
        [](std::string text) { return text; });
}

rc::Gen<PropertyListValue> anyValue(int depth) {
    using Value = PropertyListValue;
    const auto leaf = rc::gen::oneOf(
        rc::gen::map(rc::gen::arbitrary<bool>(), [](bool value) { return Value{value}; }),
        rc::gen::map(rc::gen::arbitrary<std::int64_t>(), [](std::int64_t value) { return Value{value}; }),
        rc::gen::map(rc::gen::arbitrary<double>(), [](double value) { return Value{value}; }),
        rc::gen::map(anyText(), [](const std::string& value) { return Value{value}; }),
        rc::gen::map(rc::gen::arbitrary<std::vector<std::uint8_t>>(), [](const std::vector<std::uint8_t>& bytes) {
            Data data;
            for (const std::uint8_t byte : bytes) {
                data.push_back(std::byte{byte});
            }
            return Value{std::move(data)};
        }));
    if (depth == 0) {
        return leaf;
    }
    const auto entries = rc::gen::container<std::map<std::string, Value>>(anyText(), anyValue(depth - 1));
    return rc::gen::oneOf(leaf, rc::gen::map(rc::gen::resize(6, entries), [](const std::map<std::string, Value>& map) {
                              return Value{Dictionary{map.begin(), map.end()}};
                          }));
}

RC_GTEST_PROP(PropertyListDocument, EveryValueComesBackAsItWas, ()) {
    const PropertyListValue value = *anyValue(2);
    RC_ASSERT(returned(value) == value);
}

RC_GTEST_PROP(PropertyListDocument, EveryKeyComesBackAsItWas, ()) {
    const std::string key = *anyText();
    PropertyListDocument written;
    written.set(true, key);
    const auto read = PropertyListDocument::parse(written.xml());
    RC_ASSERT(read.has_value());
    RC_ASSERT(read->value(key) == PropertyListValue{true});
}

} // namespace
