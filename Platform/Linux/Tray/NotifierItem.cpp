#include "Platform/Linux/Tray/NotifierItem.h"

#include "Platform/Linux/Tray/NotifierMenu.h"
#include "Platform/Linux/Tray/SymbolPicture.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace platform::linux {

namespace {

constexpr const char* itemInterface = "org.kde.StatusNotifierItem";

/// For a panel that takes the pixels and says nothing of its background: the grey that stands out as much from black as
/// from white (a contrast of 4.6 each way).
constexpr std::uint8_t middleGrey = 0x75;

/// Pixels in the format of panels (StatusNotifierItem specification, Icons): alpha, red, green and blue, each a byte,
/// on any processor.
int appendPixels(sd_bus_message* message, const SymbolPicture& picture) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(picture.alpha.size() * 4);
    for (const std::uint8_t alpha : picture.alpha) {
        bytes.insert(bytes.end(), {alpha, middleGrey, middleGrey, middleGrey});
    }
    sd_bus_message_open_container(message, SD_BUS_TYPE_STRUCT, "iiay");
    sd_bus_message_append(message, "ii", static_cast<std::int32_t>(picture.size),
                          static_cast<std::int32_t>(picture.size));
    sd_bus_message_append_array(message, 'y', bytes.data(), bytes.size());
    return sd_bus_message_close_container(message);
}

int appendPictures(sd_bus_message* message, const std::vector<SymbolPicture>& pictures) {
    sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "(iiay)");
    for (const SymbolPicture& picture : pictures) {
        appendPixels(message, picture);
    }
    return sd_bus_message_close_container(message);
}

int appendToolTip(sd_bus_message* message, const TrayContents& contents) {
    sd_bus_message_open_container(message, SD_BUS_TYPE_STRUCT, "sa(iiay)ss");
    sd_bus_message_append(message, "s", "");
    appendPictures(message, {});
    sd_bus_message_append(message, "ss", contents.title.c_str(), contents.toolTip.c_str());
    return sd_bus_message_close_container(message);
}

} // namespace

struct NotifierItem::Methods {
    static const NotifierItem& self(void* data) { return *static_cast<const NotifierItem*>(data); }

    static int text(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/, const char* name,
                    sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        const NotifierItem& item = self(data);
        const TrayContents& contents = *item.contents;
        const std::string_view wanted = name;
        std::string value;
        if (wanted == "Category") {
            value = "ApplicationStatus";
        } else if (wanted == "Status") {
            value = "Active";
        } else if (wanted == "Id") {
            value = contents.identifier;
        } else if (wanted == "Title") {
            value = contents.title;
        } else if (wanted == "IconThemePath") {
            value = item.iconThemePath;
        } else if (wanted == "IconName" && contents.image) {
            value = symbolicIconName(contents.image->description());
        }
        return sd_bus_message_append(reply, "s", value.c_str());
    }

    static int pixels(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/, const char* name,
                      sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        const TrayContents& contents = *self(data).contents;
        const bool hasSome = std::string_view(name) == "IconPixmap" && contents.image;
        return appendPictures(reply, hasSome ? pictures(contents.image->description()) : std::vector<SymbolPicture>());
    }

    static int toolTip(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/, const char* /*name*/,
                       sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
        return appendToolTip(reply, *self(data).contents);
    }

    static int itemIsMenu(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/, const char* /*name*/,
                          sd_bus_message* reply, void* /*data*/, sd_bus_error* /*error*/) {
        return sd_bus_message_append(reply, "b", 0);
    }

    static int windowId(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/, const char* /*name*/,
                        sd_bus_message* reply, void* /*data*/, sd_bus_error* /*error*/) {
        return sd_bus_message_append(reply, "i", 0);
    }

    static int menu(sd_bus* /*bus*/, const char* /*path*/, const char* /*interface*/, const char* /*name*/,
                    sd_bus_message* reply, void* /*data*/, sd_bus_error* /*error*/) {
        return sd_bus_message_append(reply, "o", NotifierMenu::objectPath);
    }

    /// A click; also a request for a menu, from a panel that cannot show ours.
    static int activate(sd_bus_message* call, void* data, sd_bus_error* /*error*/) {
        std::int32_t x = 0;
        std::int32_t y = 0;
        const int result = sd_bus_message_read(call, "ii", &x, &y);
        if (result < 0) {
            return result;
        }
        self(data).click(x, y);
        return sd_bus_reply_method_return(call, nullptr);
    }

    static int scroll(sd_bus_message* call, void* /*data*/, sd_bus_error* /*error*/) {
        return sd_bus_reply_method_return(call, nullptr);
    }

    // The bus is the user's own.
    static constexpr std::uint64_t flags = SD_BUS_VTABLE_UNPRIVILEGED;

    static constexpr std::array<sd_bus_vtable, 27> table{{
        SD_BUS_VTABLE_START(0),
        SD_BUS_PROPERTY("Category", "s", &text, 0, 0),
        SD_BUS_PROPERTY("Id", "s", &text, 0, 0),
        SD_BUS_PROPERTY("Title", "s", &text, 0, 0),
        SD_BUS_PROPERTY("Status", "s", &text, 0, 0),
        SD_BUS_PROPERTY("WindowId", "i", &windowId, 0, 0),
        SD_BUS_PROPERTY("IconThemePath", "s", &text, 0, 0),
        SD_BUS_PROPERTY("IconName", "s", &text, 0, 0),
        SD_BUS_PROPERTY("IconPixmap", "a(iiay)", &pixels, 0, 0),
        SD_BUS_PROPERTY("OverlayIconName", "s", &text, 0, 0),
        SD_BUS_PROPERTY("OverlayIconPixmap", "a(iiay)", &pixels, 0, 0),
        SD_BUS_PROPERTY("AttentionIconName", "s", &text, 0, 0),
        SD_BUS_PROPERTY("AttentionIconPixmap", "a(iiay)", &pixels, 0, 0),
        SD_BUS_PROPERTY("AttentionMovieName", "s", &text, 0, 0),
        SD_BUS_PROPERTY("ToolTip", "(sa(iiay)ss)", &toolTip, 0, 0),
        SD_BUS_PROPERTY("ItemIsMenu", "b", &itemIsMenu, 0, 0),
        SD_BUS_PROPERTY("Menu", "o", &menu, 0, 0),
        SD_BUS_METHOD("Activate", "ii", "", &activate, flags),
        SD_BUS_METHOD("SecondaryActivate", "ii", "", &activate, flags),
        SD_BUS_METHOD("ContextMenu", "ii", "", &activate, flags),
        SD_BUS_METHOD("Scroll", "is", "", &scroll, flags),
        SD_BUS_SIGNAL("NewTitle", "", 0),
        SD_BUS_SIGNAL("NewIcon", "", 0),
        SD_BUS_SIGNAL("NewToolTip", "", 0),
        SD_BUS_SIGNAL("NewStatus", "s", 0),
        SD_BUS_VTABLE_END,
    }};
};

NotifierItem::NotifierItem(std::string iconThemePath, Click click)
    : iconThemePath(std::move(iconThemePath))
    , click(std::move(click)) {
}

bool NotifierItem::offer(sd_bus* newBus, const TrayContents& newContents) {
    sd_bus_slot* slot = nullptr;
    if (sd_bus_add_object_vtable(newBus, &slot, objectPath, itemInterface, Methods::table.data(), this) < 0) {
        return false;
    }
    object.reset(slot);
    bus = newBus;
    contents = &newContents;
    return true;
}

void NotifierItem::withdraw() {
    object.reset();
    bus = nullptr;
    contents = nullptr;
}

void NotifierItem::announce(TrayPlace::Change change) const {
    if (bus == nullptr) {
        return;
    }
    const auto emit = [this](const char* signal) {
        sd_bus_emit_signal(bus, objectPath, itemInterface, signal, nullptr);
    };
    switch (change) {
    case TrayPlace::Change::image:
        emit("NewIcon");
        return;
    case TrayPlace::Change::title:
        emit("NewTitle");
        // It is the heading of the tool tip as well.
        emit("NewToolTip");
        return;
    case TrayPlace::Change::toolTip:
        emit("NewToolTip");
        return;
    case TrayPlace::Change::menu:
        return;
    }
}

} // namespace platform::linux
