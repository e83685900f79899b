#include "Platform/I3/ConfigurationHolders.h"

#include "Platform/Linux/BaseFolders.h"
#include "Platform/Linux/ProgramOutput.h"
#include "Platform/Sway/Configuration.h"
#include "Platform/Sway/LineHolder.h"
#include "Platform/Sway/Nodes.h"

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
        return ask("get_version", [this](const sway::Json& version) {
            path = sway::textOf(version, "loaded_config_file_name");
            const bool isAsked = ask("get_config", [this](const sway::Json& configuration) {
                tell(std::string(sway::textOf(configuration, "config")));
            });
            if (!isAsked) {
                tell({});
            }
        });
    }

private:
    [[nodiscard]] bool ask(const char* question, std::function<void(const sway::Json&)> take) {
        running =
            linux::ProgramOutput::of(mainLoop, "i3-msg", {"--raw", "-t", question},
                                     [take = std::move(take)](const std::optional<std::string>& printed) {
                                         take(sway::parsedJson(printed.value_or("")).value_or(sway::Json::object()));
                                     });
        return running != nullptr;
    }

    void tell(const std::string& text) {
        const sway::ConfiguredBindings bindings =
            sway::configuredBindings({.path = path, .text = text}, sway::includedFiles);
        const std::string home = linux::environmentVariable("HOME").value_or("");
        ShortcutHolders::Answers answers;
        for (const corvid::Shortcut& shortcut : shortcuts) {
            const auto combination = sway::HotKeyCombination::of(shortcut.keyCode, shortcut.modifiers);
            const auto* binding = combination ? bindingOf(bindings, *combination) : nullptr;
            answers.push_back(binding == nullptr ? std::nullopt
                                                 : std::optional(sway::lineHolder("i3", *binding, home)));
        }
        // The callback may drop this.
        const ShortcutHolders::Found told = std::move(found);
        told(answers);
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
