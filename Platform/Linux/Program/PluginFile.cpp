#include "Platform/Linux/Program/PluginFile.h"

#include "Platform/Linux/Program/ElfNote.h"
#include "Platform/Linux/Program/ProgramFile.h"

#include <dlfcn.h>
#include <fcntl.h>

#include <cerrno>
#include <optional>
#include <system_error>
#include <utility>

namespace platform::linux {

namespace {

constexpr const char* noteOwner = "Tessel";
constexpr std::uint32_t programNote = 1;

FileDescriptor openPlugin(const std::filesystem::path& path) {
    return FileDescriptor{::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
}

std::string lastProblem() {
    // One thread loads plugins.
    const char* problem = dlerror(); // NOLINT(concurrency-mt-unsafe)
    return problem == nullptr ? "unknown problem" : problem;
}

} // namespace

PluginFile::PluginFile(std::filesystem::path path)
    : path(std::move(path))
    , file(openPlugin(this->path)) {
}

std::expected<void*, std::string> PluginFile::function(const char* name) {
    std::expected<void, std::string> examined = examine(file);
    if (!examined) {
        // The right file may have been put there meanwhile.
        FileDescriptor present = openPlugin(path);
        if (examined = examine(present); !examined) {
            return std::unexpected(std::move(examined.error()));
        }
        file = std::move(present);
    }
    // The very file that was checked, even if another one has its name now. All symbols are resolved at once, so that a
    // missing one shows now and not in the middle of an operation.
    const std::string opened = "/proc/self/fd/" + std::to_string(file.get());
    void* library = dlopen(opened.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    void* function = library == nullptr ? nullptr : dlsym(library, name);
    if (function == nullptr) {
        return std::unexpected(path.string() + ": " + lastProblem());
    }
    return function;
}

std::expected<void, std::string> PluginFile::examine(const FileDescriptor& candidate) const {
    if (!candidate) {
        return std::unexpected(path.string() + ": " + std::generic_category().message(ENOENT));
    }
    const std::optional<std::string> own = buildIdentity(openProgram());
    if (!own || own != elfNote(candidate, noteOwner, programNote)) {
        return std::unexpected(path.string() + " belongs to another build of Tessel");
    }
    return {};
}

} // namespace platform::linux
