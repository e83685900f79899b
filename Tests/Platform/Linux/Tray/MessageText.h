#pragma once

#include <systemd/sd-bus.h>

#include <string>

/// What a message holds, in one line: "text", numbers, true and false, [arrays], (structs), {dictionaries: ...};
/// variants as what is in them, and bytes by their number.
[[nodiscard]] std::string messageText(sd_bus_message* message);
