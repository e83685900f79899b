#include "Platform/Linux/Holders/OpenboxBindings.h"

#include "Platform/Linux/Applications/GLibMemory.h"
#include "Platform/Linux/Holders/CommonPurpose.h"

#include <glib.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <utility>

namespace platform::linux {

namespace {

struct FreeContext {
    void operator()(GMarkupParseContext* context) const { g_markup_parse_context_free(context); }
};

std::string trimmedText(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string()
                                           : std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

/// Follows the elements of the configuration; takes the first action of each binding.
class BindingReader {
public:
    static void begin(GMarkupParseContext* /*context*/, const char* name, const char** names, const char** values,
                      void* data, GError** /*error*/) {
        auto& self = *static_cast<BindingReader*>(data);
        self.element = name;
        const std::string_view wanted = self.element == "keybind" ? "key" : "name";
        std::string value;
        for (std::size_t place = 0; std::span(names, place + 1).back() != nullptr; ++place) {
            if (std::span(names, place + 1).back() == wanted) {
                value = std::span(values, place + 1).back();
            }
        }
        if (self.element == "keybind" && self.depth++ == 0) {
            self.keys = std::move(value);
            self.action.clear();
            self.argument.clear();
        } else if (self.element == "action" && self.action.empty()) {
            self.action = std::move(value);
            self.isFirstAction = true;
        }
    }

    static void end(GMarkupParseContext* /*context*/, const char* name, void* data, GError** /*error*/) {
        auto& self = *static_cast<BindingReader*>(data);
        const std::string_view ended = name;
        self.element.clear();
        if (ended == "action") {
            self.isFirstAction = false;
        } else if (ended == "keybind" && --self.depth == 0) {
            self.add();
        }
    }

    static void text(GMarkupParseContext* /*context*/, const char* text, std::size_t size, void* data,
                     GError** /*error*/) {
        auto& self = *static_cast<BindingReader*>(data);
        const bool isArgument = self.element == "to" || self.element == "command" || self.element == "execute";
        if (self.isFirstAction && isArgument) {
            self.argument += trimmedText({text, size});
        }
    }

    std::vector<OpenboxBinding> bindings;

private:
    void add() {
        const auto accelerator = readOpenboxKey(keys);
        if (!accelerator) {
            return;
        }
        const auto common = commonPurpose("openbox", argument.empty() ? action : action + " " + argument);
        OpenboxBinding binding{.keys = *accelerator, .purpose = action};
        if (common) {
            binding.purpose = *common;
        } else if (!argument.empty() && action == "Execute") {
            binding.purpose = argument;
        }
        bindings.push_back(std::move(binding));
    }

    /// The element whose text comes next.
    std::string element;
    /// How many bindings are open: those of a chain lie in each other.
    int depth = 0;
    std::string keys;
    std::string action;
    std::string argument;
    bool isFirstAction = false;
};

} // namespace

std::vector<OpenboxBinding> readOpenboxBindings(std::string_view xml) {
    BindingReader reader;
    constexpr GMarkupParser functions{.start_element = &BindingReader::begin,
                                      .end_element = &BindingReader::end,
                                      .text = &BindingReader::text,
                                      .passthrough = nullptr,
                                      .error = nullptr};
    const std::unique_ptr<GMarkupParseContext, FreeContext> context(
        g_markup_parse_context_new(&functions, GMarkupParseFlags{}, &reader, nullptr));
    g_markup_parse_context_parse(context.get(), xml.data(), static_cast<gssize>(xml.size()), nullptr);
    std::ranges::reverse(reader.bindings);
    return std::move(reader.bindings);
}

} // namespace platform::linux
