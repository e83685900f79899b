#include "Platform/GnomeShell/Accelerator.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace platform::gnomeshell {
namespace {

struct Expected {
    std::uint32_t keyCode;
    std::uint32_t modifiers;
    std::optional<std::string> text;
};

TEST(ShellAccelerator, AKeyGoesByItsNumberAndModifiersByTheirNames) {
    // The numbers are those that xev shows on a PC keyboard.
    for (const auto& [keyCode, modifiers, text] : {
             Expected{123, 0x1800, "<Control><Alt>0x71"},
             Expected{124, 0x1800, "<Control><Alt>0x72"},
             Expected{126, 0x1800, "<Control><Alt>0x6f"},
             Expected{125, 0x1800, "<Control><Alt>0x74"},
             Expected{8, 0x1800, "<Control><Alt>0x36"},
             Expected{2, 0x1800, "<Control><Alt>0x28"},
             Expected{0, 0x1b00, "<Control><Alt><Shift><Super>0x26"},
             Expected{53, 0, "0x9"},
             Expected{0xffff, 0x1800, std::nullopt},
             Expected{8, 0x400, std::nullopt},
         }) {
        EXPECT_EQ(accelerator(keyCode, modifiers), text) << keyCode;
    }
}

} // namespace
} // namespace platform::gnomeshell
