#pragma once

#include "CorvidKitCore/Geometry.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform::simulated {

/// The requests to the desktop, in order: one line for every attempt, successful or not.
class Trace {
public:
    void record(std::string line) { recorded.push_back(std::move(line)); }

    [[nodiscard]] const std::vector<std::string>& lines() const { return recorded; }

    /// The lines so far; the next ones start a new trace.
    std::vector<std::string> take() { return std::exchange(recorded, {}); }

    /// Those of them with that beginning; the others are dropped.
    std::vector<std::string> take(std::string_view beginning) {
        std::erase_if(recorded, [beginning](const std::string& line) { return !line.starts_with(beginning); });
        return take();
    }

    void clear() { recorded.clear(); }

private:
    std::vector<std::string> recorded;
};

/// The shortest text that reads back as the same number: "960", "0.5".
[[nodiscard]] std::string text(double number);

/// "(x, y)" and "(width, height)".
[[nodiscard]] std::string text(corvid::CGPoint point);
[[nodiscard]] std::string text(corvid::CGSize size);

} // namespace platform::simulated
