#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"

#include <expected>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace platform::simulated {

/// The faults in the attributes of one element.
class AttributeFaults {
public:
    using Answer = std::expected<AXValue, AXError>;

    /// The name for the query of an element's process, here and in the trace.
    static constexpr std::string_view process = "process";

    /// From now on the attribute reads as this error.
    void failReads(std::string_view attribute, AXError error) {
        answers.insert_or_assign(std::string(attribute), Answer(std::unexpected(error)));
    }

    /// From now on the attribute reads as this value, of any type.
    void answer(std::string_view attribute, AXValue value) {
        answers.insert_or_assign(std::string(attribute), Answer(std::move(value)));
    }

    /// From now on a write of the attribute has no effect and returns this error.
    void failWrites(std::string_view attribute, AXError error) {
        refusals.insert_or_assign(std::string(attribute), error);
    }

    /// Everything works again.
    void clear() {
        answers.clear();
        refusals.clear();
    }

    [[nodiscard]] std::optional<Answer> read(std::string_view attribute) const {
        const auto found = answers.find(attribute);
        return found == answers.end() ? std::nullopt : std::optional(found->second);
    }

    [[nodiscard]] std::optional<AXError> write(std::string_view attribute) const {
        const auto found = refusals.find(attribute);
        return found == refusals.end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::map<std::string, Answer, std::less<>> answers;
    std::map<std::string, AXError, std::less<>> refusals;
};

} // namespace platform::simulated
