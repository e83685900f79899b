#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"
#include "Platform/Simulated/Applications.h"
#include "Platform/Simulated/Trace.h"

#include <cstddef>
#include <expected>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace platform::simulated {

/// Reads and writes the windows of `Applications`, and fails on request.
///
/// Trace: "read window 1 AXPosition", "read application 10 AXFocusedWindow", "read window 1 process",
/// "write window 1 AXSize (960, 1080)", "write application 10 AXEnhancedUserInterface false", "read trust",
/// "request trust". Every one of the reads and writes of an element is an operation, counted from 0.
class Accessibility final : public platform::Accessibility {
public:
    Accessibility(Trace& trace, Applications& applications)
        : trace(trace)
        , applications(applications) {}

    [[nodiscard]] AXUIElement applicationElement(ProcessIdentifier process) override;
    [[nodiscard]] std::expected<AXValue, AXError> copyAttributeValue(const AXUIElement& element,
                                                                     std::string_view attribute) override;
    AXError setAttributeValue(const AXUIElement& element, std::string_view attribute, const AXValue& value) override;
    [[nodiscard]] std::expected<ProcessIdentifier, AXError> processIdentifier(const AXUIElement& element) override;
    [[nodiscard]] std::optional<AXValue> createValue(corvid::CGPoint point) override;
    [[nodiscard]] std::optional<AXValue> createValue(corvid::CGSize size) override;
    [[nodiscard]] std::optional<AccessObstacle> obstacle() const override;
    bool isProcessTrustedWithPrompt() override;

    /// Whether the user lets us. While not, every operation fails with `apiDisabled`.
    bool isTrusted = true;

    /// The reason while the user does not.
    AccessObstacle reason{.kind = AccessObstacle::Kind::windowManager};

    /// Notifies observers that trust or its reason has changed.
    void announceChange();

    /// The number of prompts.
    [[nodiscard]] int promptCount() const { return prompts; }

    /// The number of operations so far.
    [[nodiscard]] std::size_t operationCount() const { return operations; }

    /// Runs `change` just before operation number `operation`.
    void interrupt(std::size_t operation, std::function<void()> interruption);

    /// Makes operation number `operation` fail.
    void failOperation(std::size_t operation, AXError error);

    /// Makes the boxing of points or sizes fail from now on.
    bool failsToBoxPoints = false;
    bool failsToBoxSizes = false;

    /// Makes one boxing fail, counted from 0 over points and sizes.
    void failBoxing(std::size_t boxing) { failingBoxings.insert(boxing); }

private:
    /// Counts an operation and interrupts it as asked for. Gives the error that stops it (`success` if none does).
    AXError begin();

    Trace& trace;
    Applications& applications;
    int prompts = 0;
    std::size_t operations = 0;
    std::size_t boxings = 0;
    std::multimap<std::size_t, std::function<void()>> interruptions;
    std::map<std::size_t, AXError> failures;
    std::set<std::size_t> failingBoxings;
};

} // namespace platform::simulated
