#include "Platform/Wayfire/BindingOptions.h"

#include "Platform/Linux/Applications/GLibMemory.h"
#include "Platform/Linux/Files/BaseFolders.h"
#include "Platform/Linux/Files/RegularFile.h"
#include "Platform/Linux/Holders/CommonPurpose.h"

#include <glib.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>
#include <system_error>
#include <utility>

namespace platform::wayfire {

namespace {

struct FreeMarkupContext {
    void operator()(GMarkupParseContext* context) const { g_markup_parse_context_free(context); }
};

/// Follows the elements of a description.
class MetadataReader {
public:
    static void begin(GMarkupParseContext* /*context*/, const char* name, const char** names, const char** values,
                      void* data, GError** /*error*/) {
        auto& self = *static_cast<MetadataReader*>(data);
        const std::string_view element = name;
        self.path.emplace_back(element);
        if (element == "plugin") {
            self.plugin = attribute("name", names, values);
            self.pluginTitle.clear();
        } else if (element == "option") {
            self.option = {.section = self.plugin, .name = attribute("name", names, values), .prefix = {}, .title = {}};
            const std::string type = attribute("type", names, values);
            self.isList = type == "dynamic-list";
            self.binds = isBinding(type);
        } else if (element == "entry" && self.isList && isBinding(attribute("type", names, values))) {
            self.option.prefix = attribute("prefix", names, values);
            self.binds = true;
        }
    }

    static void end(GMarkupParseContext* /*context*/, const char* name, void* data, GError** /*error*/) {
        auto& self = *static_cast<MetadataReader*>(data);
        if (std::string_view(name) == "option" && self.binds && !self.option.name.empty()) {
            self.option.title =
                self.pluginTitle.empty() ? self.option.title : self.pluginTitle + ": " + self.option.title;
            self.options.push_back(self.option);
        }
        self.path.pop_back();
    }

    static void text(GMarkupParseContext* /*context*/, const char* text, std::size_t size, void* data,
                     GError** /*error*/) {
        auto& self = *static_cast<MetadataReader*>(data);
        if (self.path.size() < 2 || self.path.back() != "_short") {
            return;
        }
        const std::string& owner = self.path[self.path.size() - 2];
        if (owner == "plugin") {
            self.pluginTitle.append(text, size);
        } else if (owner == "option") {
            self.option.title.append(text, size);
        }
    }

    std::vector<BindingOption> options;

private:
    static bool isBinding(std::string_view type) { return type == "activator" || type == "key"; }

    static std::string attribute(std::string_view wanted, const char** names, const char** values) {
        for (std::size_t place = 0; std::span(names, place + 1).back() != nullptr; ++place) {
            if (std::span(names, place + 1).back() == wanted) {
                return std::span(values, place + 1).back();
            }
        }
        return {};
    }

    /// The elements around the text that comes next.
    std::vector<std::string> path;
    std::string plugin;
    std::string pluginTitle;
    BindingOption option;
    bool isList = false;
    bool binds = false;
};

ShortcutHolder holderOf(const BindingOption& option, const std::string& line, const std::string& command) {
    ShortcutHolder holder{.heldBy = "Wayfire, wayfire.ini [" + option.section + "] " + line, .purpose = option.title};
    if (const auto common = linux::commonPurpose("wayfire", option.path())) {
        holder.purpose = *common;
    } else if (!command.empty()) {
        holder.purpose = command;
    }
    return holder;
}

/// An entry of a list: its name, then the values of its lines. The line of the keys is the one that reads as keys.
void addEntry(std::vector<ConfiguredKey>& keys, const BindingOption& option, const Json& entry) {
    if (!entry.is_array() || entry.empty() || !entry.front().is_string()) {
        return;
    }
    std::string command;
    std::vector<KeyPress> presses;
    for (std::size_t place = 1; place < entry.size(); ++place) {
        const auto* text = entry[place].get_ptr<const std::string*>();
        auto found = text == nullptr ? std::vector<KeyPress>() : keyPressesIn(*text);
        if (!found.empty()) {
            presses = std::move(found);
        } else if (text != nullptr && command.empty()) {
            command = *text;
        }
    }
    for (KeyPress& each : presses) {
        keys.push_back({.keys = std::move(each),
                        .holder = holderOf(option, option.prefix + entry.front().get<std::string>(), command)});
    }
}

} // namespace

std::vector<BindingOption> readMetadata(std::string_view xml) {
    MetadataReader reader;
    constexpr GMarkupParser functions{.start_element = &MetadataReader::begin,
                                      .end_element = &MetadataReader::end,
                                      .text = &MetadataReader::text,
                                      .passthrough = nullptr,
                                      .error = nullptr};
    const std::unique_ptr<GMarkupParseContext, FreeMarkupContext> context(
        g_markup_parse_context_new(&functions, GMarkupParseFlags{}, &reader, nullptr));
    g_markup_parse_context_parse(context.get(), xml.data(), static_cast<gssize>(xml.size()), nullptr);
    return std::move(reader.options);
}

std::vector<std::string> metadataTexts(const std::string& folder) {
    constexpr std::size_t longest = std::size_t{1} << 20U;
    std::vector<std::string> folders{folder};
    for (std::string& more :
         linux::partsBetweenColons(linux::environmentVariable("WAYFIRE_PLUGIN_XML_PATH").value_or(""))) {
        folders.push_back(std::move(more));
    }
    if (const auto data = linux::BaseFolders::ofThisProcess().data; !data.empty()) {
        folders.push_back(data.front() + "/wayfire/metadata");
    }
    std::vector<std::string> texts;
    for (const std::string& each : folders) {
        std::error_code failure;
        std::filesystem::directory_iterator entry(each, failure);
        for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
            auto text = entry->path().extension() == ".xml"
                            ? linux::readRegularFile(entry->path().string(), longest, linux::Excess::cutOff)
                            : std::nullopt;
            if (text) {
                texts.push_back(*std::move(text));
            }
        }
    }
    return texts;
}

std::vector<ConfiguredKey> configuredKeys(const BindingOption& option, const Json& answer) {
    std::vector<ConfiguredKey> keys;
    const Json* value = compositor::member(answer, "value");
    if (value == nullptr) {
        return keys;
    }
    if (const auto* text = value->get_ptr<const std::string*>()) {
        for (KeyPress& each : keyPressesIn(*text)) {
            keys.push_back({.keys = std::move(each), .holder = holderOf(option, option.name, "")});
        }
    } else if (value->is_array()) {
        for (const Json& entry : *value) {
            addEntry(keys, option, entry);
        }
    }
    return keys;
}

} // namespace platform::wayfire
