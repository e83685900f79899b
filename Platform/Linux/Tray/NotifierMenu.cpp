#include "Platform/Linux/Tray/NotifierMenu.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace platform::linux {

namespace {

constexpr const char* menuInterface = "com.canonical.dbusmenu";
constexpr std::int32_t rootId = 0;

/// The properties that are wanted; none named: all.
using Wanted = std::set<std::string, std::less<>>;

bool isWanted(const Wanted& wanted, std::string_view name) {
    return wanted.empty() || wanted.contains(name);
}

/// An underscore marks the letter after it, unless it is doubled.
std::string label(std::string_view title) {
    std::string result;
    for (const char letter : title) {
        result.append(letter == '_' ? 2 : 1, letter);
    }
    return result;
}

struct Property {
    const char* name;
    std::variant<std::string, bool, std::int32_t> value;
};

/// The properties that differ from the protocol's defaults.
std::vector<Property> propertiesOfRoot() {
    return {{.name = "children-display", .value = "submenu"}};
}

std::vector<Property> propertiesOf(const StatusMenuLine& line) {
    if (line.title.empty()) {
        return {{.name = "type", .value = "separator"}};
    }
    std::vector<Property> result{{.name = "label", .value = label(line.title)}};
    if (!line.isEnabled) {
        result.push_back({.name = "enabled", .value = false});
    }
    if (line.isChecked) {
        result.push_back({.name = "toggle-type", .value = "checkmark"});
        result.push_back({.name = "toggle-state", .value = std::int32_t{*line.isChecked ? 1 : 0}});
    }
    return result;
}

int appendValue(sd_bus_message* message, const Property& property) {
    if (const auto* text = std::get_if<std::string>(&property.value)) {
        return sd_bus_message_append(message, "v", "s", text->c_str());
    }
    if (const auto* flag = std::get_if<bool>(&property.value)) {
        return sd_bus_message_append(message, "v", "b", static_cast<int>(*flag));
    }
    return sd_bus_message_append(message, "v", "i", std::get<std::int32_t>(property.value));
}

int appendProperties(sd_bus_message* message, const std::vector<Property>& properties, const Wanted& wanted) {
    int result = sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "{sv}");
    for (const Property& property : properties) {
        if (result < 0 || !isWanted(wanted, property.name)) {
            continue;
        }
        sd_bus_message_open_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv");
        sd_bus_message_append(message, "s", property.name);
        appendValue(message, property);
        result = sd_bus_message_close_container(message);
    }
    return result < 0 ? result : sd_bus_message_close_container(message);
}

int readNames(sd_bus_message* message, Wanted& names) {
    int result = sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "s");
    const char* name = nullptr;
    while (result >= 0 && (result = sd_bus_message_read(message, "s", &name)) > 0) {
        names.insert(name);
    }
    return result < 0 ? result : sd_bus_message_exit_container(message);
}

int readIds(sd_bus_message* message, std::vector<std::int32_t>& ids) {
    int result = sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "i");
    std::int32_t id = 0;
    while (result >= 0 && (result = sd_bus_message_read(message, "i", &id)) > 0) {
        ids.push_back(id);
    }
    return result < 0 ? result : sd_bus_message_exit_container(message);
}

int refuseId(sd_bus_error* error, std::int32_t id) {
    return sd_bus_error_setf(error, SD_BUS_ERROR_INVALID_ARGS, "there is no line %d", static_cast<int>(id));
}

} // namespace

struct NotifierMenu::Methods {
    static NotifierMenu& self(void* data) { return *static_cast<NotifierMenu*>(data); }

    [[nodiscard]] static const StatusMenuLine* lineOf(const NotifierMenu& menu, std::int32_t id) {
        const auto index = static_cast<std::size_t>(id) - 1;
        return id > rootId && index < menu.lines.size() ? &menu.lines[index] : nullptr;
    }

    [[nodiscard]] static std::optional<std::vector<Property>> find(const NotifierMenu& menu, std::int32_t id) {
        if (id == rootId) {
            return propertiesOfRoot();
        }
        const StatusMenuLine* line = lineOf(menu, id);
        return line == nullptr ? std::nullopt : std::optional(propertiesOf(*line));
    }

    static int appendNode(sd_bus_message* reply, std::int32_t id, const std::vector<Property>& properties,
                          const Wanted& wanted, const std::function<void()>& appendChildren) {
        sd_bus_message_open_container(reply, SD_BUS_TYPE_STRUCT, "ia{sv}av");
        sd_bus_message_append(reply, "i", id);
        appendProperties(reply, properties, wanted);
        sd_bus_message_open_container(reply, SD_BUS_TYPE_ARRAY, "v");
        appendChildren();
        sd_bus_message_close_container(reply);
        return sd_bus_message_close_container(reply);
    }

    static int getLayout(sd_bus_message* call, void* data, sd_bus_error* error) {
        const NotifierMenu& menu = self(data);
        std::int32_t parent = 0;
        std::int32_t depth = 0;
        Wanted wanted;
        int result = sd_bus_message_read(call, "ii", &parent, &depth);
        result = result < 0 ? result : readNames(call, wanted);
        if (result < 0) {
            return result;
        }
        const auto properties = find(menu, parent);
        if (!properties) {
            return refuseId(error, parent);
        }
        sd_bus_message* raw = nullptr;
        result = sd_bus_message_new_method_return(call, &raw);
        if (result < 0) {
            return result;
        }
        const OwnedMessage reply(raw);
        sd_bus_message_append(raw, "u", menu.revision);
        result = appendNode(raw, parent, *properties, wanted, [&] {
            // A depth of nought is the line alone; a negative one has no end.
            const std::size_t count = parent == rootId && depth != 0 ? menu.lines.size() : 0;
            for (std::size_t index = 0; index < count; ++index) {
                sd_bus_message_open_container(raw, SD_BUS_TYPE_VARIANT, "(ia{sv}av)");
                appendNode(raw, static_cast<std::int32_t>(index + 1), propertiesOf(menu.lines[index]), wanted, [] {});
                sd_bus_message_close_container(raw);
            }
        });
        return result < 0 ? result : sd_bus_message_send(raw);
    }

    static int getGroupProperties(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
        const NotifierMenu& menu = self(data);
        std::vector<std::int32_t> named;
        Wanted wanted;
        int result = readIds(call, named);
        result = result < 0 ? result : readNames(call, wanted);
        if (result < 0) {
            return result;
        }
        const std::set<std::int32_t> ids(named.begin(), named.end());
        sd_bus_message* raw = nullptr;
        result = sd_bus_message_new_method_return(call, &raw);
        if (result < 0) {
            return result;
        }
        const OwnedMessage reply(raw);
        sd_bus_message_open_container(raw, SD_BUS_TYPE_ARRAY, "(ia{sv})");
        for (std::int32_t id = rootId; id <= static_cast<std::int32_t>(menu.lines.size()); ++id) {
            if (!ids.empty() && !ids.contains(id)) {
                continue;
            }
            sd_bus_message_open_container(raw, SD_BUS_TYPE_STRUCT, "ia{sv}");
            sd_bus_message_append(raw, "i", id);
            appendProperties(raw, *find(menu, id), wanted);
            sd_bus_message_close_container(raw);
        }
        result = sd_bus_message_close_container(raw);
        return result < 0 ? result : sd_bus_message_send(raw);
    }

    static int getProperty(sd_bus_message* call, void* data, sd_bus_error* error) {
        std::int32_t id = 0;
        const char* name = nullptr;
        int result = sd_bus_message_read(call, "is", &id, &name);
        if (result < 0) {
            return result;
        }
        const auto properties = find(self(data), id);
        if (!properties) {
            return refuseId(error, id);
        }
        for (const Property& property : *properties) {
            if (std::string_view(name) == property.name) {
                sd_bus_message* raw = nullptr;
                result = sd_bus_message_new_method_return(call, &raw);
                if (result < 0) {
                    return result;
                }
                const OwnedMessage reply(raw);
                result = appendValue(raw, property);
                return result < 0 ? result : sd_bus_message_send(raw);
            }
        }
        return sd_bus_error_set(error, SD_BUS_ERROR_INVALID_ARGS, "the line has no such property");
    }

    /// False where there is no such line.
    static bool takeEvent(const NotifierMenu& menu, std::int32_t id, std::string_view event) {
        if (id == rootId) {
            return true;
        }
        const StatusMenuLine* line = lineOf(menu, id);
        if (line != nullptr && event == "clicked" && line->isEnabled && line->action) {
            menu.mainActor.post(line->action);
        }
        return line != nullptr;
    }

    static int readEvent(sd_bus_message* call, std::int32_t& id, std::string& event) {
        const char* name = nullptr;
        int result = sd_bus_message_read(call, "is", &id, &name);
        if (result <= 0) {
            return result;
        }
        event = name;
        result = sd_bus_message_skip(call, "v");
        std::uint32_t time = 0;
        return result < 0 ? result : sd_bus_message_read(call, "u", &time);
    }

    static int takeOneEvent(sd_bus_message* call, void* data, sd_bus_error* error) {
        std::int32_t id = 0;
        std::string event;
        const int result = readEvent(call, id, event);
        if (result < 0) {
            return result;
        }
        return takeEvent(self(data), id, event) ? sd_bus_reply_method_return(call, nullptr) : refuseId(error, id);
    }

    static int takeEvents(sd_bus_message* call, void* data, sd_bus_error* error) {
        std::vector<std::pair<std::int32_t, std::string>> events;
        int result = sd_bus_message_enter_container(call, SD_BUS_TYPE_ARRAY, "(isvu)");
        while (result >= 0 && (result = sd_bus_message_enter_container(call, SD_BUS_TYPE_STRUCT, "isvu")) > 0) {
            std::int32_t id = 0;
            std::string event;
            result = readEvent(call, id, event);
            if (result >= 0) {
                events.emplace_back(id, std::move(event));
                result = sd_bus_message_exit_container(call);
            }
        }
        if (result < 0) {
            return result;
        }
        std::vector<std::int32_t> unknown;
        for (const auto& [id, event] : events) {
            if (!takeEvent(self(data), id, event)) {
                unknown.push_back(id);
            }
        }
        if (!events.empty() && unknown.size() == events.size()) {
            return sd_bus_error_set(error, SD_BUS_ERROR_INVALID_ARGS, "none of the lines is there");
        }
        return replyWithIds(call, {unknown});
    }

    static int replyWithIds(sd_bus_message* call, const std::vector<std::vector<std::int32_t>>& lists) {
        sd_bus_message* raw = nullptr;
        int result = sd_bus_message_new_method_return(call, &raw);
        if (result < 0) {
            return result;
        }
        const OwnedMessage reply(raw);
        for (const std::vector<std::int32_t>& ids : lists) {
            result = sd_bus_message_append_array(raw, 'i', ids.data(), ids.size() * sizeof ids[0]);
        }
        return result < 0 ? result : sd_bus_message_send(raw);
    }

    static int aboutToShow(sd_bus_message* call, void* data, sd_bus_error* error) {
        std::int32_t id = 0;
        const int result = sd_bus_message_read(call, "i", &id);
        if (result < 0) {
            return result;
        }
        // Changes were announced when they happened.
        return find(self(data), id) ? sd_bus_reply_method_return(call, "b", 0) : refuseId(error, id);
    }

    static int aboutToShowGroup(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
        std::vector<std::int32_t> ids;
        const int result = readIds(call, ids);
        std::erase_if(ids, [data](std::int32_t id) { return find(self(data), id).has_value(); });
        return result < 0 ? result : replyWithIds(call, {{}, ids});
    }

    static int property(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/, const char* name,
                        sd_bus_message* reply, void* /*data*/, sd_bus_error* /*error*/) {
        constexpr std::uint32_t protocolVersion = 3;
        const std::string_view wanted = name;
        if (wanted == "Version") {
            return sd_bus_message_append(reply, "u", protocolVersion);
        }
        if (wanted == "IconThemePath") {
            return sd_bus_message_append(reply, "as", 0);
        }
        return sd_bus_message_append(reply, "s", wanted == "Status" ? "normal" : "ltr");
    }

    // The bus is the user's own.
    static constexpr std::uint64_t flags = SD_BUS_VTABLE_UNPRIVILEGED;

    static constexpr std::array<sd_bus_vtable, 15> table{{
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("GetLayout", "iias", "u(ia{sv}av)", &getLayout, flags),
        SD_BUS_METHOD("GetGroupProperties", "aias", "a(ia{sv})", &getGroupProperties, flags),
        SD_BUS_METHOD("GetProperty", "is", "v", &getProperty, flags),
        SD_BUS_METHOD("Event", "isvu", "", &takeOneEvent, flags),
        SD_BUS_METHOD("EventGroup", "a(isvu)", "ai", &takeEvents, flags),
        SD_BUS_METHOD("AboutToShow", "i", "b", &aboutToShow, flags),
        SD_BUS_METHOD("AboutToShowGroup", "ai", "aiai", &aboutToShowGroup, flags),
        SD_BUS_SIGNAL("LayoutUpdated", "ui", 0),
        SD_BUS_SIGNAL("ItemsPropertiesUpdated", "a(ia{sv})a(ias)", 0),
        SD_BUS_PROPERTY("Version", "u", &property, 0, 0),
        SD_BUS_PROPERTY("Status", "s", &property, 0, 0),
        SD_BUS_PROPERTY("TextDirection", "s", &property, 0, 0),
        SD_BUS_PROPERTY("IconThemePath", "as", &property, 0, 0),
        SD_BUS_VTABLE_END,
    }};
};

bool NotifierMenu::offer(sd_bus* newBus) {
    sd_bus_slot* slot = nullptr;
    if (sd_bus_add_object_vtable(newBus, &slot, objectPath, menuInterface, Methods::table.data(), this) < 0) {
        return false;
    }
    object.reset(slot);
    bus = newBus;
    return true;
}

void NotifierMenu::withdraw() {
    object.reset();
    bus = nullptr;
}

void NotifierMenu::setLines(std::vector<StatusMenuLine> newLines) {
    lines = std::move(newLines);
    ++revision;
    if (bus != nullptr) {
        sd_bus_emit_signal(bus, objectPath, menuInterface, "LayoutUpdated", "ui", revision, rootId);
    }
}

} // namespace platform::linux
