#include "Platform/Linux/Program/ProgramFolder.h"

#include <system_error>

namespace platform::linux {

std::filesystem::path programFolder() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path() : program.parent_path();
}

} // namespace platform::linux
