#pragma once

#include "CorvidKit/Toolkit/Surroundings.h"
#include "Platform/OpenPanel.h"

#include <QObject>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QStringList>
#include <memory>

namespace corvid::toolkit {

/// A window that lists the installed applications. Applications are in no folder that a user knows, so the directory is
/// not used.
class OpenPanelWindow final : public QObject, public platform::OpenPanel {
    Q_OBJECT

public:
    OpenPanelWindow(const Surroundings& surroundings, QQmlEngine& engine);
    ~OpenPanelWindow() override;

    void activateIgnoringOtherApps() override {}

    void runModal(const platform::OpenPanelOptions& options, Completion completion) override;

private Q_SLOTS:
    void choose(const QStringList& locations);
    void cancel();

private:
    Surroundings surroundings;
    QQmlEngine& engine;
    std::unique_ptr<QQuickWindow> window;
    Completion waiting;
};

} // namespace corvid::toolkit
