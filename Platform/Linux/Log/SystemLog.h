#pragma once

#include "Platform/Linux/Log/ErrorLog.h"
#include "Platform/Seam/Desktop/Log.h"

namespace platform::linux {

/// The user's journal, or standard error where there is none.
class SystemLog final : public platform::Log {
public:
    void error(std::string_view subsystem, std::string_view category, std::string_view message) override {
        logError(subsystem, category, message);
    }
};

} // namespace platform::linux
