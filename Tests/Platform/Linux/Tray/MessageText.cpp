#include "Tests/Platform/Linux/Tray/MessageText.h"

#include <cstdint>
#include <string_view>

namespace {

std::string valueText(sd_bus_message* message, char type, const char* contents);

/// The values up to the end of the message's current container.
std::string valuesText(sd_bus_message* message, std::string_view separator) {
    std::string text;
    char type = 0;
    const char* contents = nullptr;
    for (bool isFirst = true; sd_bus_message_peek_type(message, &type, &contents) > 0; isFirst = false) {
        text += isFirst ? "" : separator;
        text += valueText(message, type, contents);
    }
    return text;
}

std::string containerText(sd_bus_message* message, char type, const char* contents, std::string_view open,
                          std::string_view separator, std::string_view close) {
    sd_bus_message_enter_container(message, type, contents);
    const std::string inside = valuesText(message, separator);
    sd_bus_message_exit_container(message);
    return std::string(open) + inside + std::string(close);
}

template <typename Value>
Value basic(sd_bus_message* message, char type) {
    Value value{};
    sd_bus_message_read_basic(message, type, &value);
    return value;
}

std::string valueText(sd_bus_message* message, char type, const char* contents) {
    switch (type) {
    case SD_BUS_TYPE_STRING:
    case SD_BUS_TYPE_OBJECT_PATH:
        return std::string(basic<const char*>(message, type));
    case SD_BUS_TYPE_BOOLEAN:
        return basic<int>(message, type) != 0 ? "true" : "false";
    case SD_BUS_TYPE_INT32:
        return std::to_string(basic<std::int32_t>(message, type));
    case SD_BUS_TYPE_UINT32:
        return std::to_string(basic<std::uint32_t>(message, type));
    case SD_BUS_TYPE_UINT64:
        return std::to_string(basic<std::uint64_t>(message, type));
    case SD_BUS_TYPE_VARIANT:
        return containerText(message, type, contents, "", "", "");
    case SD_BUS_TYPE_STRUCT:
        return containerText(message, type, contents, "(", ", ", ")");
    case SD_BUS_TYPE_DICT_ENTRY:
        return containerText(message, type, contents, "", ": ", "");
    case SD_BUS_TYPE_ARRAY:
        if (std::string_view(contents) == "y") {
            const void* bytes = nullptr;
            std::size_t count = 0;
            sd_bus_message_read_array(message, 'y', &bytes, &count);
            return std::to_string(count) + " bytes";
        }
        return *contents == '{' ? containerText(message, type, contents, "{", ", ", "}")
                                : containerText(message, type, contents, "[", ", ", "]");
    default:
        sd_bus_message_skip(message, nullptr);
        return std::string("unexpected type ") + type;
    }
}

} // namespace

std::string messageText(sd_bus_message* message) {
    sd_bus_message_rewind(message, 1);
    return valuesText(message, " ");
}
