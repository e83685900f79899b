#pragma once

#include "Platform/Seam/Desktop/Log.h"
#include "Platform/Simulated/Trace.h"

#include <string>
#include <string_view>

namespace platform::simulated {

/// Trace: "log error org.corvid.Tessel login-item: message".
class Log final : public platform::Log {
public:
    explicit Log(Trace& trace)
        : trace(trace) {}

    void error(std::string_view subsystem, std::string_view category, std::string_view message) override {
        trace.record("log error " + std::string(subsystem) + " " + std::string(category) + ": " + std::string(message));
    }

private:
    Trace& trace;
};

} // namespace platform::simulated
