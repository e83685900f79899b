#pragma once

#include <string>
#include <vector>

/// Layouts as sway reports them, without the members that the tests ignore.
namespace layouts {

struct Rect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

struct Window {
    int number = 0;
    Rect rect = {};
    int titleBar = 0;
    bool isFloating = false;
    bool isFocused = false;
    int process = 100;
    std::string title = "A window";
    std::string more = {};
};

inline std::string text(const Rect& rect) {
    return R"({"x":)" + std::to_string(rect.x) + R"(,"y":)" + std::to_string(rect.y) + R"(,"width":)" +
           std::to_string(rect.width) + R"(,"height":)" + std::to_string(rect.height) + "}";
}

inline std::string text(const Window& window) {
    const Rect bar{window.rect.x, 0, window.rect.width, window.titleBar};
    return R"({"id":)" + std::to_string(window.number) + R"(,"type":")" + (window.isFloating ? "floating_con" : "con") +
           R"(","name":")" + window.title + R"(","pid":)" + std::to_string(window.process) +
           R"(,"app_id":"org.example.Editor","focused":)" + (window.isFocused ? "true" : "false") +
           R"(,"fullscreen_mode":0,"rect":)" + text(window.rect) + R"(,"deco_rect":)" + text(bar) +
           R"(,"nodes":[],"floating_nodes":[])" + window.more + "}";
}

/// A workspace that fills the output except for a bar of 23 points at the top.
struct Workspace {
    int number = 0;
    std::string name = {};
    std::vector<Window> windows = {};
};

struct Output {
    std::string name = {};
    Rect rect = {};
    /// The first is shown.
    std::vector<Workspace> workspaces = {};
    bool isActive = false;
};

inline std::string text(const Workspace& workspace, const Rect& output) {
    std::string tiled;
    std::string floating;
    for (const Window& window : workspace.windows) {
        std::string& list = window.isFloating ? floating : tiled;
        list += (list.empty() ? "" : ",") + text(window);
    }
    const Rect rect{output.x, output.y + 23, output.width, output.height - 23};
    return R"({"id":)" + std::to_string(workspace.number) + R"(,"type":"workspace","name":")" + workspace.name +
           R"(","focused":false,"rect":)" + text(rect) + R"(,"nodes":[)" + tiled + R"(],"floating_nodes":[)" +
           floating + "]}";
}

inline std::string text(const std::vector<Output>& outputs) {
    std::string list =
        R"({"id":2147483647,"type":"output","name":"__i3","rect":{"x":0,"y":0,"width":3200,"height":1080},"nodes":[],)"
        R"("floating_nodes":[],"focus":[]})";
    int number = 1000;
    std::string active;
    for (const Output& output : outputs) {
        std::string workspaces;
        for (const Workspace& workspace : output.workspaces) {
            workspaces += (workspaces.empty() ? "" : ",") + text(workspace, output.rect);
        }
        const std::string focus = output.workspaces.empty() ? "" : std::to_string(output.workspaces.front().number);
        ++number;
        active = output.isActive ? std::to_string(number) : active;
        list += R"(,{"id":)" + std::to_string(number) + R"(,"type":"output","name":")" + output.name + R"(","rect":)" +
                text(output.rect) + R"(,"focus":[)" + focus + R"(],"nodes":[)" + workspaces +
                R"(],"floating_nodes":[]})";
    }
    return R"({"id":1,"type":"root","name":"root","focus":[)" + active + R"(],"nodes":[)" + list +
           R"(],"floating_nodes":[]})";
}

/// One output of 1920 by 1080 with a workspace "1" of these windows.
inline std::string oneOutput(std::vector<Window> windows) {
    return text(std::vector<Output>{{"A", {0, 0, 1920, 1080}, {{11, "1", std::move(windows)}}}});
}

} // namespace layouts
