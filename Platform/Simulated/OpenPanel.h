#pragma once

#include "Platform/Seam/Toolkit/OpenPanel.h"
#include "Platform/Simulated/Trace.h"

#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

namespace platform::simulated {

/// A panel that waits for its test to choose.
///
/// Trace: "activate this program", "show open panel".
class OpenPanel final : public platform::OpenPanel {
public:
    explicit OpenPanel(Trace& trace)
        : trace(trace) {}

    void activateIgnoringOtherApps() override { trace.record("activate this program"); }

    void runModal(const OpenPanelOptions& options, Completion completion) override {
        trace.record("show open panel");
        shown = options;
        waiting = std::move(completion);
    }

    /// Confirms the choice of these, or cancels with none.
    void choose(std::vector<std::filesystem::path> chosen) { std::exchange(waiting, nullptr)(std::move(chosen)); }

    /// The arguments of the panel's last showing.
    std::optional<OpenPanelOptions> shown;

private:
    Trace& trace;
    Completion waiting;
};

} // namespace platform::simulated
