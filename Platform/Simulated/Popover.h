#pragma once

#include "Platform/Popover.h"
#include "Platform/Simulated/Trace.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace platform::simulated {

/// A popover that opens at once.
///
/// Trace: "set popover content", "set popover behavior 1", "set popover animates 1", "show popover on edge 1",
/// "make popover key", "close popover".
class Popover final : public platform::Popover {
public:
    explicit Popover(Trace& trace)
        : trace(trace) {}

    void setContentView(std::shared_ptr<const View> view) override {
        trace.record("set popover content");
        content = std::move(view);
    }

    [[nodiscard]] bool hasContentView() const override { return content != nullptr; }

    void setBehavior(Behavior newBehavior) override {
        trace.record("set popover behavior " + std::to_string(static_cast<int>(newBehavior)));
        behavior = newBehavior;
    }

    void setAnimates(bool newAnimates) override {
        trace.record("set popover animates " + std::to_string(static_cast<int>(newAnimates)));
        animates = newAnimates;
    }

    [[nodiscard]] bool isShown() const override { return anchor.has_value(); }

    void show(const Anchor& newAnchor, Edge preferredEdge) override {
        trace.record("show popover on edge " + std::to_string(static_cast<int>(preferredEdge)));
        anchor = newAnchor;
        isKey = false;
    }

    void makeKey() override {
        trace.record("make popover key");
        isKey = isShown();
    }

    void performClose() override {
        trace.record("close popover");
        anchor.reset();
    }

    /// What its user does outside.
    void clickOutside() { anchor.reset(); }

    std::shared_ptr<const View> content;
    Behavior behavior = Behavior::applicationDefined;
    bool animates = false;
    /// Whether it has the keyboard since it was shown last.
    bool isKey = false;
    /// Where it is open; nothing while it is closed.
    std::optional<Anchor> anchor;

private:
    Trace& trace;
};

} // namespace platform::simulated
