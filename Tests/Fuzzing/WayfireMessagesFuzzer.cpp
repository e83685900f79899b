#include "Platform/Wayfire/BindingOptions.h"
#include "Platform/Wayfire/Configuration.h"
#include "Platform/Wayfire/Message.h"
#include "Platform/Wayfire/Views.h"
#include "Tests/Fuzzing/Requirements.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace {

using platform::wayfire::Json;

/// Two outputs side by side, on the second of three workspaces.
const std::vector<platform::wayfire::OutputFacts> knownOutputs{
    {.number = 1,
     .frame = {{0, 0}, {1920, 1080}},
     .workArea = {{0, 30}, {1920, 1050}},
     .workspace = {1, 0},
     .grid = {3, 1}},
    {.number = 2, .frame = {{1920, 0}, {1280, 1024}}, .workArea = {{1920, 0}, {1280, 1024}}, .workspace = {}},
};

/// Treats the text as an answer: every value read from it is within bounds, and a view can be asked to stay.
void readAsAnswer(std::string_view text) {
    const auto json = platform::compositor::parsedJson(text);
    if (!json) {
        return;
    }
    const auto outputs = platform::wayfire::readOutputs(*json);
    for (const auto& output : outputs) {
        require(output.workArea.minX() >= output.frame.minX() && output.workArea.maxX() <= output.frame.maxX());
        require(output.workArea.minY() >= output.frame.minY() && output.workArea.maxY() <= output.frame.maxY());
    }
    for (const auto& view : platform::wayfire::readViews(*json, knownOutputs)) {
        require(!view.identifier.empty() && view.window.clues.process >= 0);
        require(view.window.frame.size.width >= 0 && view.window.frame.size.height >= 0);
        const auto goal = platform::wayfire::goalFor(view.window.frame, view.facts, knownOutputs);
        require(goal && goal->geometry.size.width >= 1 && goal->geometry.size.height >= 1);
        static_cast<void>(textOf(platform::wayfire::placingRequest(view.identifier, *goal)));
    }
    const platform::wayfire::BindingOption option{.section = "command", .name = "bindings", .prefix = {}, .title = {}};
    for (const auto& each : platform::wayfire::configuredKeys(option, *json)) {
        require(!each.keys.key.empty() && !each.holder.heldBy.empty());
    }
}

/// A combination's text reads back as the combination.
void readAsKeys(std::string_view text) {
    for (const auto& keys : platform::wayfire::keyPressesIn(text)) {
        require(platform::wayfire::keyPressesIn(keys.text()) == std::vector{keys});
    }
}

} // namespace

/// Treats the bytes as a stream of messages, in pieces as long as the first byte says, and as any other text that comes
/// from Wayfire.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes are characters.
    const std::string_view input(reinterpret_cast<const char*>(bytes) + 1, size - 1);
    const std::size_t piece = std::size_t{bytes[0]} + 1;
    platform::wayfire::MessageReader reader;
    std::size_t read = 0;
    for (std::size_t place = 0; place < input.size(); place += piece) {
        reader.add(input.substr(place, piece));
        while (const auto text = reader.next()) {
            read += text->size();
            readAsAnswer(*text);
        }
    }
    require(read <= input.size());
    readAsAnswer(input);
    readAsKeys(input);
    for (const auto& option : platform::wayfire::readMetadata(input)) {
        require(!option.name.empty() && option.title.size() <= input.size() + 2);
    }
    require(platform::wayfire::missingPluginsIn(input).size() <= 3);
    return 0;
}
