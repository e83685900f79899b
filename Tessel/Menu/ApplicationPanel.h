#pragma once

#include "CorvidKit/Toolkit/PopoverWindow.h"
#include "Platform/OpenPanel.h"
#include "Tessel/Menu/ApplicationList.h"

#include <QObject>
#include <QQmlEngine>
#include <QQuickWindow>
#include <memory>

namespace tessel {

/// A window that lists the installed applications. They are in no folder that a user knows, so the directory that the
/// panel is to begin in is not used. Another request while it is open cancels the one before. The popover closes while
/// the panel is open, and comes back to show what was added.
class ApplicationPanel final : public QObject, public platform::OpenPanel {
    Q_OBJECT

public:
    /// Both must outlive the panel.
    ApplicationPanel(QQmlEngine& engine, corvid::toolkit::PopoverWindow& popover);
    ~ApplicationPanel() override;

    void activateIgnoringOtherApps() override {}

    void runModal(const platform::OpenPanelOptions& options, Completion completion) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void confirm();
    void cancel();

private: // NOLINT(readability-redundant-access-specifiers): those before are slots.
    void finish(std::vector<std::filesystem::path> chosen);

    QQmlEngine& engine;
    corvid::toolkit::PopoverWindow& popover;
    std::unique_ptr<QQuickWindow> window;
    std::unique_ptr<ApplicationList> list;
    std::unique_ptr<QQuickItem> content;
    Completion waiting;
};

} // namespace tessel
