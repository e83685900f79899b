#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace platform {

/// The choices of a panel.
struct OpenPanelOptions {
    /// Uniform types; an item of any other type cannot be chosen.
    std::vector<std::string> allowedContentTypes;
    /// The panel's initial folder. A desktop whose applications are in no folder shows them all.
    std::filesystem::path directory;
    bool allowsMultipleSelection = false;
    /// The text of the button that confirms, before translation.
    std::string prompt;

    friend bool operator==(const OpenPanelOptions&, const OpenPanelOptions&) = default;
};

/// Any application; the only content type that the program uses.
inline constexpr const char* applicationContentType = "com.apple.application";

/// Lets the user choose among items on this machine. Main thread only.
class OpenPanel {
public:
    /// The chosen items, in the panel's order; empty if the user cancelled.
    using Completion = std::move_only_function<void(std::vector<std::filesystem::path> chosen)>;

    OpenPanel() = default;
    OpenPanel(const OpenPanel&) = delete;
    OpenPanel& operator=(const OpenPanel&) = delete;
    virtual ~OpenPanel() = default;

    /// Brings this program to the front, regardless of the focus.
    virtual void activateIgnoringOtherApps() = 0;

    /// Shows the panel above everything else of the program. `completion` is called once, on the main thread, unless
    /// the program ends first.
    virtual void runModal(const OpenPanelOptions& options, Completion completion) = 0;
};

} // namespace platform
