#include "CorvidKitCore/Keys.h"
#include "Platform/Wayfire/BindingOptions.h"
#include "Platform/Wayfire/Configuration.h"
#include "Platform/Wayfire/KeyPress.h"
#include "Platform/Wayfire/Message.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <linux/input-event-codes.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace platform::wayfire {
namespace {

using corvid::Shortcut;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(WayfireMessage, HasItsLengthInFrontTheLowestByteFirst) {
    using namespace std::string_literals;
    EXPECT_EQ(encodedMessage("{}"), "\2\0\0\0{}"s);
    EXPECT_EQ(encodedMessage(std::string(258, 'x')).substr(0, 5), "\2\1\0\0x"s);
}

TEST(WayfireMessage, IsCutFromAStreamInAnyPieces) {
    const std::string stream = encodedMessage("one") + encodedMessage("") + encodedMessage("three");
    for (std::size_t piece = 1; piece <= stream.size(); ++piece) {
        MessageReader reader;
        std::vector<std::string> read;
        for (std::size_t place = 0; place < stream.size(); place += piece) {
            reader.add(std::string_view(stream).substr(place, piece));
            while (const auto text = reader.next()) {
                read.push_back(*text);
            }
        }
        EXPECT_THAT(read, ElementsAre("one", "", "three")) << "in pieces of " << piece;
        EXPECT_FALSE(reader.isBroken());
    }
}

TEST(WayfireMessage, OneThatIsTooLongBreaksTheStream) {
    MessageReader reader;
    reader.add("\xff\xff\xff\x7f{}");
    EXPECT_EQ(reader.next(), std::nullopt);
    EXPECT_TRUE(reader.isBroken());
}

TEST(WayfireKeyPress, HasTheKernelsNameOfEachKey) {
    // The others are named after the letter, the digit or the number on the key.
    const std::map<std::uint32_t, std::string> named{
        {KEY_ESC, "KEY_ESC"},
        {KEY_GRAVE, "KEY_GRAVE"},
        {KEY_MINUS, "KEY_MINUS"},
        {KEY_EQUAL, "KEY_EQUAL"},
        {KEY_BACKSPACE, "KEY_BACKSPACE"},
        {KEY_TAB, "KEY_TAB"},
        {KEY_LEFTBRACE, "KEY_LEFTBRACE"},
        {KEY_RIGHTBRACE, "KEY_RIGHTBRACE"},
        {KEY_BACKSLASH, "KEY_BACKSLASH"},
        {KEY_SEMICOLON, "KEY_SEMICOLON"},
        {KEY_APOSTROPHE, "KEY_APOSTROPHE"},
        {KEY_ENTER, "KEY_ENTER"},
        {KEY_COMMA, "KEY_COMMA"},
        {KEY_DOT, "KEY_DOT"},
        {KEY_SLASH, "KEY_SLASH"},
        {KEY_SPACE, "KEY_SPACE"},
        {KEY_LEFT, "KEY_LEFT"},
        {KEY_RIGHT, "KEY_RIGHT"},
        {KEY_DOWN, "KEY_DOWN"},
        {KEY_UP, "KEY_UP"},
    };
    std::size_t found = 0;
    for (const corvid::Key& key : corvid::allKeys()) {
        const auto press = KeyPress::of(key.code, Shortcut::control);
        ASSERT_TRUE(press.has_value());
        const auto name = named.find(key.kernelCode);
        found += name == named.end() ? 0U : 1U;
        EXPECT_EQ(press->key, name == named.end() ? "KEY_" + std::string(key.cap) : name->second);
    }
    EXPECT_EQ(found, named.size());
}

TEST(WayfireKeyPress, IsWrittenAsWayfireReadsIt) {
    EXPECT_EQ(KeyPress::of(123, Shortcut::control | Shortcut::option)->text(), "<ctrl> <alt> KEY_LEFT");
    EXPECT_EQ(KeyPress::of(8, Shortcut::command | Shortcut::shift)->text(), "<super> <shift> KEY_C");
    EXPECT_EQ(KeyPress::of(200, Shortcut::control), std::nullopt);
    EXPECT_EQ(KeyPress::of(123, 1), std::nullopt);
}

TEST(WayfireKeyPress, IsReadFromEachAlternativeOfAnOption) {
    const KeyPress left{.modifiers = Shortcut::control | Shortcut::option, .key = "KEY_LEFT"};
    const KeyPress plain{.modifiers = 0, .key = "KEY_PRINT"};
    EXPECT_THAT(keyPressesIn("<ctrl> <alt> KEY_LEFT"), ElementsAre(left));
    EXPECT_THAT(keyPressesIn("<alt><ctrl>KEY_LEFT|KEY_PRINT"), ElementsAre(left, plain));
    EXPECT_THAT(keyPressesIn("  KEY_PRINT\t| swipe left 3 | <ctrl> <alt> BTN_LEFT | <super>"), ElementsAre(plain));
    for (const char* none : {"", "|", "none", "<ctrl", "<ctrl> <alt", "KEY_A KEY_B", "<hyper> KEY_A", "exec KEY_Q"}) {
        EXPECT_THAT(keyPressesIn(none), IsEmpty()) << none;
    }
}

TEST(WayfireOptions, AreThoseThatBindKeys) {
    const auto options = readMetadata(R"(<?xml version="1.0"?>
<wayfire><plugin name="vswitch"><_short>Viewport Switcher</_short><_long>Switches</_long>
<option name="binding_left" type="activator"><_short>Left</_short><default>&lt;super&gt; KEY_LEFT</default></option>
<option name="duration" type="int"><_short>Duration</_short></option>
<group><_short>More</_short><option name="toggle" type="key"><_short>Toggle</_short></option></group>
<option name="workspace_bindings" type="dynamic-list"><_short>Go</_short><entry prefix="binding_" type="activator">
<_short>N</_short></entry></option>
<option name="names" type="dynamic-list"><_short>Names</_short><entry prefix="name_" type="string"/></option>
</plugin></wayfire>)");
    EXPECT_THAT(options,
                ElementsAre(BindingOption{"vswitch", "binding_left", "", "Viewport Switcher: Left"},
                            BindingOption{"vswitch", "toggle", "", "Viewport Switcher: Toggle"},
                            BindingOption{"vswitch", "workspace_bindings", "binding_", "Viewport Switcher: Go"}));
}

TEST(WayfireOptions, OfATextThatIsNoDescriptionAreNone) {
    for (const char* text : {"", "plain", "<wayfire><plugin", "<a></b>", "<option type='key'/>", "\xff\xfe"}) {
        EXPECT_THAT(readMetadata(text), IsEmpty()) << text;
    }
}

TEST(WayfireOptions, ValuesOfAnotherKindBindNothing) {
    const BindingOption option{.section = "command", .name = "bindings", .prefix = "binding_", .title = "Bindings"};
    for (const char* answer : {"null", "[]", R"({"error":"Option not found!"})", R"({"value":17})", R"({"value":{}})",
                               R"({"value":[[]]})", R"({"value":[["x"]]})", R"({"value":[[1,"<ctrl> KEY_A"]]})",
                               R"({"value":[["x",["<ctrl> KEY_A"]]]})", R"({"value":["<ctrl> KEY_A"]})"}) {
        EXPECT_THAT(configuredKeys(option, Json::parse(answer)), IsEmpty()) << answer;
    }
}

TEST(WayfireConfiguration, IsTheFileThatTheCompositorReads) {
    struct Row {
        std::vector<std::string> words;
        std::vector<std::string> variables;
        std::set<std::string> files;
        std::string path;
    };

    for (const Row& row : std::vector<Row>{
             {{"wayfire", "-c", "/a.ini"}, {"WAYFIRE_CONFIG_FILE=/b.ini"}, {}, "/a.ini"},
             {{"wayfire", "--config", "/a.ini"}, {}, {}, "/a.ini"},
             {{"wayfire", "--config=/a.ini"}, {}, {}, "/a.ini"},
             {{"wayfire", "-c/a.ini"}, {}, {}, "/a.ini"},
             {{"wayfire", "-c"}, {"HOME=/home/u"}, {}, "/home/u/.config/wayfire.ini"},
             {{"wayfire"}, {"WAYFIRE_CONFIG_FILE=/b.ini", "HOME=/home/u"}, {}, "/b.ini"},
             {{"wayfire"},
              {"HOME=/home/u"},
              {"/home/u/.config/wayfire/wayfire.ini"},
              "/home/u/.config/wayfire/wayfire.ini"},
             {{"wayfire"}, {"HOME=/home/u", "XDG_CONFIG_HOME=/c"}, {}, "/c/wayfire.ini"},
             {{"wayfire"}, {"HOMER=/home/u"}, {}, ""},
             {{}, {}, {}, ""},
         }) {
        EXPECT_EQ(configurationPath({.words = row.words, .variables = row.variables},
                                    [&](const std::string& path) { return row.files.contains(path); }),
                  row.path);
    }
}

TEST(WayfireConfiguration, TellsThePluginsThatAreMissing) {
    EXPECT_THAT(missingPluginsIn("[core]\nplugins = command ipc ipc-rules\n"), IsEmpty());
    EXPECT_THAT(missingPluginsIn("[core]\nplugins=\\\n  command \\\n ipc \\\n  ipc-rules\n[x]\n"), IsEmpty());
    EXPECT_THAT(missingPluginsIn("[core]\nplugins = command ipc-rules # ipc\n"), ElementsAre("ipc"));
    EXPECT_THAT(missingPluginsIn("[other]\nplugins = ipc ipc-rules\n"), ElementsAre("ipc", "ipc-rules"));
    EXPECT_THAT(missingPluginsIn("[core]\nplugins = command\nplugins = ipc\n"), ElementsAre("ipc-rules", "command"));
    EXPECT_THAT(missingPluginsIn(""), ElementsAre("ipc", "ipc-rules")) << "those that Wayfire has by itself";
}

} // namespace
} // namespace platform::wayfire
