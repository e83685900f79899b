#pragma once

#include <string>

/// Layouts as i3 reports them, without the members that the tests ignore.
namespace layouts {

inline std::string rect(int x, int y, int width, int height) {
    return R"({"x":)" + std::to_string(x) + R"(,"y":)" + std::to_string(y) + R"(,"width":)" + std::to_string(width) +
           R"(,"height":)" + std::to_string(height) + "}";
}

/// The container of a window, with that border style and width, and the height of the title or the tab.
inline std::string decorated(int number, const std::string& rect, const std::string& border, int width, int title) {
    return R"({"id":)" + std::to_string(90000 + number) + R"(,"type":"con","window":)" + std::to_string(number) +
           R"(,"window_properties":{"class":"XTerm"},"border":")" + border + R"(","current_border_width":)" +
           std::to_string(width) + R"(,"deco_rect":)" + layouts::rect(0, 0, 300, title) + R"(,"rect":)" + rect +
           R"(,"nodes":[],"floating_nodes":[]})";
}

/// The container of a window with i3's default decoration.
inline std::string window(int number, const std::string& rect) {
    return decorated(number, rect, "normal", 2, 18);
}

/// A container around others, of that type.
inline std::string around(const std::string& type, const std::string& rect, const std::string& nodes) {
    return R"({"id":80000,"type":")" + type + R"(","window":null,"rect":)" + rect + R"(,"nodes":[)" + nodes +
           R"(],"floating_nodes":[]})";
}

inline std::string workspace(int number, const std::string& rect, const std::string& tiled,
                             const std::string& floating = {}) {
    return R"({"id":)" + std::to_string(number) + R"(,"type":"workspace","name":")" + std::to_string(number) +
           R"(","rect":)" + rect + R"(,"nodes":[)" + tiled + R"(],"floating_nodes":[)" + floating + "]}";
}

/// An output with a bar at the top, which shows the workspace of that number.
inline std::string output(const std::string& name, const std::string& rect, int shown, const std::string& workspaces) {
    const std::string bar = R"({"id":70001,"type":"dockarea","name":"topdock","focus":[70002],"nodes":[)" +
                            window(17, R"({"x":0,"y":0,"width":800,"height":20})") + R"(],"floating_nodes":[]})";
    return R"({"id":70000,"type":"output","name":")" + name + R"(","rect":)" + rect + R"(,"focus":[70001,70003],)" +
           R"("nodes":[)" + bar + R"(,{"id":70003,"type":"con","name":"content","focus":[)" + std::to_string(shown) +
           R"(],"nodes":[)" + workspaces + R"(],"floating_nodes":[]}],"floating_nodes":[]})";
}

inline std::string root(const std::string& outputs) {
    return R"({"id":1,"type":"root","nodes":[)" + outputs + R"(],"floating_nodes":[]})";
}

} // namespace layouts
