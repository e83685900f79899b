#pragma once

#include "Platform/Seam/Desktop/Workspace.h"
#include "Platform/Simulated/Applications.h"
#include "Platform/Simulated/Trace.h"

#include <optional>

namespace platform::simulated {

class Workspace final : public platform::Workspace {
public:
    Workspace(Trace& trace, const Applications& applications)
        : trace(trace)
        , applications(applications) {}

    [[nodiscard]] std::optional<ProcessIdentifier> frontmostApplication() override {
        trace.record("read frontmost application");
        if (applications.frontmost == nullptr) {
            return std::nullopt;
        }
        return applications.frontmost->processIdentifier();
    }

private:
    Trace& trace;
    const Applications& applications;
};

} // namespace platform::simulated
