#include "Platform/I3Ipc/Message.h"
#include "Tests/Platform/I3Ipc/FakeSway.h"

#include <gtest/gtest.h>

namespace platform::i3ipc {
namespace {

TEST(SwayMessage, IsWrittenAsSwayReadsIt) {
    EXPECT_EQ(encodedMessage(MessageType::getTree, ""), FakeSway::message(4, ""));
    EXPECT_EQ(encodedMessage(MessageType::runCommand, "nop"), FakeSway::message(0, "nop"));
}

TEST(SwayMessage, IsReadHoweverTheStreamIsCut) {
    const std::string stream =
        FakeSway::message(4, "{}") + FakeSway::message(0x80000003, R"({"change":"new"})") + FakeSway::message(7, "");
    const std::vector<Message> expected{{4, "{}"}, {0x80000003, R"({"change":"new"})"}, {7, ""}};
    for (const std::size_t size : {std::size_t{1}, std::size_t{3}, std::size_t{14}, stream.size()}) {
        MessageReader reader;
        std::vector<Message> messages;
        for (std::size_t place = 0; place < stream.size(); place += size) {
            reader.add(std::string_view(stream).substr(place, size));
            while (const auto message = reader.next()) {
                messages.push_back(*message);
            }
        }
        EXPECT_EQ(messages, expected) << "in pieces of " << size;
        EXPECT_FALSE(reader.isBroken());
    }
}

TEST(SwayMessage, AnythingElseBreaksTheStreamForGood) {
    for (const std::string_view bytes : {"HTTP", "i3-ipd", "I3-ipc\0\0\0\0\0\0\0\0"}) {
        MessageReader reader;
        reader.add(bytes);
        EXPECT_EQ(reader.next(), std::nullopt) << bytes;
        EXPECT_TRUE(reader.isBroken()) << bytes;
        reader.add(FakeSway::message(4, "{}"));
        EXPECT_EQ(reader.next(), std::nullopt) << bytes;
    }
}

TEST(SwayMessage, OneThatIsTooLongIsNotWaitedFor) {
    const auto header = [](std::uint32_t length) {
        std::string bytes = FakeSway::message(4, "");
        return bytes.replace(6, 4, std::string(reinterpret_cast<const char*>(&length), 4));
    };
    MessageReader longest;
    longest.add(header(MessageReader::longestPayload));
    EXPECT_EQ(longest.next(), std::nullopt);
    EXPECT_FALSE(longest.isBroken());
    longest.add(std::string(MessageReader::longestPayload, ' '));
    EXPECT_TRUE(longest.next().has_value());

    MessageReader longer;
    longer.add(header(MessageReader::longestPayload + 1));
    EXPECT_EQ(longer.next(), std::nullopt);
    EXPECT_TRUE(longer.isBroken());
}

} // namespace
} // namespace platform::i3ipc
