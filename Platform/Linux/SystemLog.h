#pragma once

#include "Platform/Log.h"

#include <string>
#include <string_view>

namespace platform::linux {

/// The user's journal, with the fields `TESSEL_SUBSYSTEM` and `TESSEL_CATEGORY`. Where there is no journal, or where
/// standard error is a terminal, standard error gets the message as "tessel: [category] message". Never blocks: a line
/// that cannot be written at once is lost. Any thread.
class SystemLog final : public platform::Log {
public:
    void error(std::string_view subsystem, std::string_view category, std::string_view message) override;

    /// The line for standard error: without control characters, and cut to a length that is written in one piece.
    [[nodiscard]] static std::string line(std::string_view category, std::string_view message);
};

} // namespace platform::linux
