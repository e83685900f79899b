#pragma once

#include "CorvidKit/Toolkit/ImageRenderer.h"
#include "CorvidKit/Toolkit/LoopPump.h"
#include "CorvidKit/Toolkit/PopoverWindow.h"
#include "CorvidKit/Toolkit/Surroundings.h"
#include "CorvidKit/Toolkit/ViewBuilder.h"
#include "Platform/Toolkit.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QTranslator>
#include <memory>
#include <vector>

namespace corvid::toolkit {

/// Qt Quick, drawn by the processor: one application object and one engine for all windows. At most one at a time.
class QuickToolkit final : public platform::Toolkit {
public:
    /// Null where Qt cannot connect to the desktop.
    [[nodiscard]] static std::unique_ptr<QuickToolkit> start(const Surroundings& surroundings,
                                                             const ViewBuilder& build);

    QuickToolkit(const Surroundings& surroundings, const ViewBuilder& build);
    ~QuickToolkit() override;

    [[nodiscard]] platform::Popover& popover() override { return *hanging; }

    [[nodiscard]] platform::ImageRenderer& imageRenderer() override { return *renderer; }

    void run() override;

private:
    void followAppearance();

    Surroundings surroundings;
    std::unique_ptr<QGuiApplication> application;
    std::vector<std::unique_ptr<QTranslator>> translators;
    std::unique_ptr<QQmlEngine> engine;
    std::unique_ptr<PopoverWindow> hanging;
    std::unique_ptr<ImageRenderer> renderer;
};

} // namespace corvid::toolkit
