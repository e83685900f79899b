#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace platform {

/// What the user may choose.
struct OpenPanelOptions {
    /// Uniform types; what is of none of them cannot be chosen.
    std::vector<std::string> allowedContentTypes;
    /// Where the panel begins. A desktop whose applications are in no folder shows them all.
    std::filesystem::path directory;
    bool allowsMultipleSelection = false;
    /// The text of the button that confirms, before translation.
    std::string prompt;

    friend bool operator==(const OpenPanelOptions&, const OpenPanelOptions&) = default;
};

/// Any application; the one content type that the program asks for.
inline constexpr const char* applicationContentType = "com.apple.application";

/// Lets the user choose among what is on this machine. Main thread only.
class OpenPanel {
public:
    /// What was chosen, in the order of the panel; nothing where the user cancelled.
    using Completion = std::move_only_function<void(std::vector<std::filesystem::path> chosen)>;

    OpenPanel() = default;
    OpenPanel(const OpenPanel&) = delete;
    OpenPanel& operator=(const OpenPanel&) = delete;
    virtual ~OpenPanel() = default;

    /// Brings this program to the front, whatever has the focus.
    virtual void activateIgnoringOtherApps() = 0;

    /// Shows the panel above everything else of the program. `completion` is called once, on the main thread, unless
    /// the program ends first.
    virtual void runModal(const OpenPanelOptions& options, Completion completion) = 0;
};

} // namespace platform
