#pragma once

#include "Platform/Seam/Requests/ControlRequests.h"

#include <systemd/sd-bus.h>

#include <optional>
#include <string_view>

/// How `ControlRequests` travels over D-Bus: names, the status dictionary, and the errors.
namespace platform::linux::ControlMessages {

inline constexpr const char* busName = "org.corvid.Tessel";
inline constexpr const char* objectPath = "/org/corvid/Tessel";
inline constexpr const char* interfaceName = "org.corvid.Tessel1";

/// Appends a status as a{sv}. Negative: an errno.
[[nodiscard]] int append(sd_bus_message* message, const ControlStatus& status);

/// Reads a status from a{sv}; entries of unknown names are skipped. Empty if the message has other contents.
[[nodiscard]] std::optional<ControlStatus> readStatus(sd_bus_message* message);

/// The D-Bus error that stands for a refusal.
[[nodiscard]] const char* errorName(ControlRefusal::Kind kind);

/// The refusal that an error stands for, the bus's own errors included.
[[nodiscard]] ControlRefusal refusal(const sd_bus_error& error);

} // namespace platform::linux::ControlMessages
