#pragma once

#include <systemd/sd-bus.h>

#include <string>

/// The contents of a message, in one line: "text", numbers, true and false, [arrays], (structs), {dictionaries: ...};
/// variants as their contents, and bytes as numbers.
[[nodiscard]] std::string messageText(sd_bus_message* message);
