#include "Platform/Linux/Processes/StartEnvironment.h"

#include "Platform/Linux/Files/RegularFile.h"

#include <linux/close_range.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstddef>

namespace platform::linux {

std::vector<std::string> startEnvironment() {
    constexpr std::size_t most = std::size_t{8} << 20U;
    const std::string kept = readRegularFile("/proc/self/environ", most, Excess::refused).value_or("");
    std::vector<std::string> variables;
    for (std::size_t place = 0; place < kept.size();) {
        const std::size_t end = std::min(kept.find('\0', place), kept.size());
        variables.push_back(kept.substr(place, end - place));
        place = end + 1;
    }
    return variables;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

void becomeProgram(const std::string& path) {
    std::vector<std::string> words{path};
    std::vector<std::string> environment = startEnvironment();
    // The loop handles some signals in its own way, and a write without a reader must not end this program; both
    // settings are inherited.
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr); // NOLINT(concurrency-mt-unsafe)
    std::signal(SIGPIPE, SIG_DFL);
    ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    ::execve(path.c_str(), pointersTo(words).data(), pointersTo(environment).data());
}

} // namespace platform::linux
