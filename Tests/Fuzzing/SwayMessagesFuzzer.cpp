#include "Platform/I3Ipc/Message.h"
#include "Platform/I3Ipc/Nodes.h"
#include "Platform/Sway/Tree.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// Treats the text as a layout: every value read from it is within bounds.
void readAsTree(std::string_view text) {
    const auto json = platform::i3ipc::parsedJson(text);
    const auto tree = json ? platform::sway::readTree(*json) : std::nullopt;
    if (!tree) {
        return;
    }
    for (const platform::sway::TreeWindow& each : tree->windows) {
        require(!each.identifier.empty() && each.window.clues.process >= 0);
        require(each.window.frame.size.width >= 0 && each.window.frame.size.height >= 0);
        require(each.title.size() <= text.size() && each.window.clues.applicationId.size() <= text.size());
    }
    for (const platform::compositor::Output& output : tree->outputs) {
        require(output.workArea.minX() >= output.frame.minX() && output.workArea.maxX() <= output.frame.maxX());
        require(output.workArea.minY() >= output.frame.minY() && output.workArea.maxY() <= output.frame.maxY());
    }
}

} // namespace

/// Treats the bytes as a stream of messages, in pieces as long as the first byte says, and as a layout.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes are characters.
    const std::string_view input(reinterpret_cast<const char*>(bytes) + 1, size - 1);
    const std::size_t piece = std::size_t{bytes[0]} + 1;
    platform::i3ipc::MessageReader reader;
    std::size_t read = 0;
    for (std::size_t place = 0; place < input.size(); place += piece) {
        reader.add(input.substr(place, piece));
        while (const auto message = reader.next()) {
            read += message->payload.size();
            readAsTree(message->payload);
        }
    }
    require(read <= input.size());
    readAsTree(input);
    return 0;
}
