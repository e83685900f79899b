#include "Tessel/CommandLine.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Treats the bytes as arguments, one a line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    std::vector<std::string> arguments{"tessel"};
    std::string_view rest(reinterpret_cast<const char*>(bytes), size);
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n');
        arguments.emplace_back(rest.substr(0, end));
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    static_cast<void>(tessel::CommandLine::parse(arguments, "1.2"));
    return 0;
}
