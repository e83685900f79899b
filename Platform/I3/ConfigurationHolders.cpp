#include "Platform/I3/ConfigurationHolders.h"

#include "Platform/I3Ipc/Configuration.h"
#include "Platform/I3Ipc/LineHolder.h"
#include "Platform/I3Ipc/Nodes.h"
#include "Platform/Linux/Files/BaseFolders.h"
#include "Platform/Linux/Processes/ProgramOutput.h"

#include <string>
#include <utility>

namespace platform::i3 {

namespace {

class ConfigurationSearch final : public HolderSearch {
public:
    ConfigurationSearch(linux::MainLoop& mainLoop, const std::vector<corvid::Shortcut>& shortcuts,
                        ShortcutHolders::Found found)
        : mainLoop(mainLoop)
        , shortcuts(shortcuts)
        , found(std::move(found)) {}

    /// Requests the file's path, and then its contents.
    [[nodiscard]] bool begin() {
        return ask("get_version", [this](const i3ipc::Json& version) {
            path = i3ipc::textOf(version, "loaded_config_file_name");
            const bool isAsked = ask("get_config", [this](const i3ipc::Json& configuration) {
                sendReply(std::string(i3ipc::textOf(configuration, "config")));
            });
            if (!isAsked) {
                sendReply({});
            }
        });
    }

private:
    [[nodiscard]] bool ask(const char* question, std::function<void(const i3ipc::Json&)> take) {
        running =
            linux::ProgramOutput::of(mainLoop, "i3-msg", {"--raw", "-t", question},
                                     [take = std::move(take)](const std::optional<std::string>& printed) {
                                         take(i3ipc::parsedJson(printed.value_or("")).value_or(i3ipc::Json::object()));
                                     });
        return running != nullptr;
    }

    void sendReply(const std::string& text) {
        const i3ipc::ConfiguredBindings bindings =
            i3ipc::configuredBindings({.path = path, .text = text}, i3ipc::includedFiles);
        const std::string home = linux::environmentVariable("HOME").value_or("");
        ShortcutHolders::Answers answers;
        for (const corvid::Shortcut& shortcut : shortcuts) {
            const auto combination = i3ipc::HotKeyCombination::of(shortcut.keyCode, shortcut.modifiers);
            const auto* binding = combination ? bindingOf(bindings, *combination) : nullptr;
            answers.push_back(binding == nullptr ? std::nullopt
                                                 : std::optional(i3ipc::lineHolder("i3", *binding, home)));
        }
        // The callback may drop this.
        const ShortcutHolders::Found reply = std::move(found);
        reply(answers);
    }

    linux::MainLoop& mainLoop;
    std::vector<corvid::Shortcut> shortcuts;
    ShortcutHolders::Found found;
    std::string path;
    std::unique_ptr<linux::ProgramOutput> running;
};

} // namespace

std::unique_ptr<HolderSearch> ConfigurationHolders::find(const std::vector<corvid::Shortcut>& shortcuts, Found found) {
    auto search = std::make_unique<ConfigurationSearch>(mainLoop, shortcuts, std::move(found));
    return search->begin() ? std::move(search) : nullptr;
}

} // namespace platform::i3
