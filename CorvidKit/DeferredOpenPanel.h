#pragma once

#include "CorvidKit/DeferredToolkit.h"
#include "Platform/Seam/Toolkit/OpenPanel.h"

#include <memory>
#include <utility>

namespace corvid {

/// The toolkit's open panel, which starts the toolkit if need be. Without a toolkit it is as if the user had cancelled.
class DeferredOpenPanel final : public platform::OpenPanel {
public:
    explicit DeferredOpenPanel(DeferredToolkit& toolkit)
        : toolkit(toolkit) {}

    void activateIgnoringOtherApps() override {}

    void runModal(const platform::OpenPanelOptions& options, Completion completion) override {
        const auto shared = std::make_shared<Completion>(std::move(completion));
        toolkit.use([options,
                     shared](platform::Toolkit& started) { started.openPanel().runModal(options, std::move(*shared)); },
                    [shared] { (*shared)({}); });
    }

private:
    DeferredToolkit& toolkit;
};

} // namespace corvid
