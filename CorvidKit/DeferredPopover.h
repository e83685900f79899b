#pragma once

#include "CorvidKit/DeferredToolkit.h"
#include "Platform/Seam/Toolkit/Popover.h"

#include <memory>
#include <optional>

namespace corvid {

/// Stands in for the popover until the toolkit is loaded: keeps its state, and starts the toolkit when it is first
/// shown. Must not outlive the toolkit.
class DeferredPopover final : public platform::Popover {
public:
    explicit DeferredPopover(DeferredToolkit& toolkit)
        : toolkit(toolkit) {}

    void setContentView(std::shared_ptr<const platform::View> newView) override;

    [[nodiscard]] bool hasContentView() const override { return view != nullptr; }

    void setBehavior(Behavior newBehavior) override;
    void setAnimates(bool newAnimates) override;
    [[nodiscard]] bool isShown() const override;
    void show(const Anchor& anchor, Edge preferredEdge) override;
    void makeKey() override;
    void performClose() override;

private:
    struct Request {
        Anchor anchor;
        Edge preferredEdge;
        bool isKey = false;
    };

    [[nodiscard]] platform::Popover* real() const;
    void appear(platform::Popover& popover);

    DeferredToolkit& toolkit;
    std::shared_ptr<const platform::View> view;
    Behavior behavior = Behavior::applicationDefined;
    bool animates = false;
    /// While the toolkit starts.
    std::optional<Request> requested;
    bool isConfigured = false;
};

} // namespace corvid
