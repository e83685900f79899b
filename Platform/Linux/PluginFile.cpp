#include "Platform/Linux/PluginFile.h"

#include <dlfcn.h>

namespace platform::linux {

namespace {

std::string lastProblem() {
    // One thread loads plugins.
    const char* problem = dlerror(); // NOLINT(concurrency-mt-unsafe)
    return problem == nullptr ? "unknown problem" : problem;
}

} // namespace

std::expected<void*, std::string> functionOfPlugin(const std::filesystem::path& file, const char* name) {
    // Everything is resolved at once, so that what is missing shows now and not in the middle of something.
    void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (library == nullptr) {
        return std::unexpected(lastProblem());
    }
    void* function = dlsym(library, name);
    if (function == nullptr) {
        return std::unexpected(lastProblem());
    }
    return function;
}

} // namespace platform::linux
