#include "Platform/I3Ipc/Configuration.h"
#include "Platform/Linux/RegularFile.h"

#include <wordexp.h>

#include <span>
#include <string_view>

namespace platform::i3ipc {

namespace {

struct Expansion {
    Expansion() = default;
    Expansion(const Expansion&) = delete;
    Expansion& operator=(const Expansion&) = delete;

    ~Expansion() { wordfree(&words); }

    wordexp_t words{};
};

/// A pattern may match files that are no configuration.
constexpr std::size_t longestFile = std::size_t{1} << 20U;

bool isRelative(std::string_view pattern) {
    constexpr std::string_view absolute = "/~$\"'`";
    return !pattern.empty() && absolute.find(pattern.front()) == std::string_view::npos;
}

} // namespace

std::vector<ConfigurationFile> includedFiles(const std::string& pattern, const std::string& folder) {
    std::vector<ConfigurationFile> files;
    const std::string whole = isRelative(pattern) ? folder + "/" + pattern : pattern;
    Expansion expansion;
    // It reads the environment, which stays as it was at the start.
    // NOLINTNEXTLINE(concurrency-mt-unsafe)
    if (wordexp(whole.c_str(), &expansion.words, WRDE_NOCMD) != 0) {
        return files;
    }
    for (const char* path : std::span(expansion.words.we_wordv, expansion.words.we_wordc)) {
        if (auto text = linux::readRegularFile(path, longestFile, linux::Excess::cutOff)) {
            files.push_back({.path = path, .text = *std::move(text)});
        }
    }
    return files;
}

} // namespace platform::i3ipc
