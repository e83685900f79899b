#include "Platform/Linux/Holders/SettingsHolders.h"

#include "Platform/Linux/Holders/Accelerator.h"
#include "Platform/Linux/Holders/CommonPurpose.h"
#include "Platform/Linux/Holders/SettingLines.h"
#include "Platform/Linux/Processes/ProgramOutput.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <utility>

namespace platform::linux {

namespace {

bool holds(const SettingLine& setting, const corvid::Shortcut& shortcut) {
    return std::ranges::any_of(setting.texts(), [&](const std::string& text) {
        const auto accelerator = readAccelerator(text);
        return accelerator && isSame(*accelerator, shortcut);
    });
}

std::string withoutLineEnd(std::string text) {
    text.resize(std::min(text.find('\n'), text.size()));
    return text;
}

class SettingsSearch final : public HolderSearch {
public:
    SettingsSearch(MainLoop& mainLoop, std::string heldBy, const SettingsFamily& family,
                   const std::vector<corvid::Shortcut>& shortcuts, ShortcutHolders::Found found)
        : mainLoop(mainLoop)
        , heldBy(std::move(heldBy))
        , family(family)
        , shortcuts(shortcuts)
        , found(std::move(found))
        , answers(shortcuts.size()) {}

    [[nodiscard]] bool begin() {
        return run({.arguments = {"list-recursively"}, .take = [this](const std::string& printed) { look(printed); }});
    }

private:
    /// A run of the tool, and the handler of its output.
    struct Step {
        std::vector<std::string> arguments;
        std::function<void(const std::string& printed)> take;
    };

    [[nodiscard]] bool run(const Step& step) {
        running = ProgramOutput::of(mainLoop, "gsettings", step.arguments,
                                    [this, take = step.take](const std::optional<std::string>& printed) {
                                        // The results from the other settings are reported all the same.
                                        take(printed.value_or(""));
                                        goOn();
                                    });
        return running != nullptr;
    }

    void goOn() {
        while (!steps.empty()) {
            const Step step = std::move(steps.front());
            steps.pop_front();
            if (run(step)) {
                return;
            }
        }
        // The callback may drop this.
        const ShortcutHolders::Found reply = std::move(found);
        const ShortcutHolders::Answers given = std::move(answers);
        reply(given);
    }

    void look(const std::string& printed) {
        const std::vector<SettingLine> settings = readSettingLines(printed);
        for (const std::string_view schema : family.schemas) {
            for (const SettingLine& setting : settings) {
                if (setting.schema == schema) {
                    lookAt(setting);
                }
            }
        }
        const auto list = std::ranges::find_if(settings, [&](const SettingLine& setting) {
            return setting.schema == family.listSchema && setting.key == family.listKey;
        });
        if (list != settings.end()) {
            lookAtOwn(list->texts());
        }
    }

    void lookAt(const SettingLine& setting) {
        for (std::size_t place = 0; place < shortcuts.size(); ++place) {
            if (!answers[place] && holds(setting, shortcuts[place])) {
                answers[place] = ShortcutHolder{
                    .heldBy = heldBy, .purpose = setting.key, .otherKeys = otherKeys(setting.texts(), shortcuts)};
                if (const auto common = commonPurpose(setting.schema, setting.key)) {
                    answers[place]->purpose = *common;
                } else {
                    steps.push_back({.arguments = {"describe", setting.schema, setting.key},
                                     .take = [this, place](const std::string& text) { describe(place, text); }});
                }
            }
        }
    }

    void describe(std::size_t place, const std::string& text) {
        if (std::string words = withoutLineEnd(text); !words.empty()) {
            answers[place]->purpose = std::move(words);
        }
    }

    void lookAtOwn(const std::vector<std::string>& paths) {
        for (const std::string& path : paths) {
            const std::string whole = path.starts_with('/') ? path : std::string(family.ownPath) + path + "/";
            steps.push_back({.arguments = {"list-recursively", std::string(family.ownSchema) + ":" + whole},
                             .take = [this](const std::string& printed) { lookAtOne(printed); }});
        }
    }

    /// One of the user's own: a "binding", and a "name" that the user has given it.
    void lookAtOne(const std::string& printed) {
        std::string name;
        const std::vector<SettingLine> settings = readSettingLines(printed);
        for (const SettingLine& setting : settings) {
            if (const auto texts = setting.texts(); setting.key == "name" && !texts.empty()) {
                name = texts.front();
            }
        }
        for (std::size_t place = 0; place < shortcuts.size(); ++place) {
            const bool isIt = std::ranges::any_of(settings, [&](const SettingLine& setting) {
                return setting.key == "binding" && holds(setting, shortcuts[place]);
            });
            if (!answers[place] && isIt) {
                answers[place] = ShortcutHolder{.heldBy = heldBy, .purpose = name};
            }
        }
    }

    MainLoop& mainLoop;
    std::string heldBy;
    SettingsFamily family;
    std::vector<corvid::Shortcut> shortcuts;
    ShortcutHolders::Found found;
    ShortcutHolders::Answers answers;
    std::deque<Step> steps;
    std::unique_ptr<ProgramOutput> running;
};

} // namespace

std::unique_ptr<HolderSearch> SettingsHolders::find(const std::vector<corvid::Shortcut>& shortcuts, Found found) {
    auto search = std::make_unique<SettingsSearch>(mainLoop, heldBy, family, shortcuts, std::move(found));
    return search->begin() ? std::move(search) : nullptr;
}

} // namespace platform::linux
