#include "CorvidKit/Toolkit/OpenPanelWindow.h"

#include <utility>

namespace corvid::toolkit {

OpenPanelWindow::OpenPanelWindow(const Surroundings& surroundings, QQmlEngine& engine)
    : surroundings(surroundings)
    , engine(engine) {
}

OpenPanelWindow::~OpenPanelWindow() = default;

void OpenPanelWindow::runModal(const platform::OpenPanelOptions& /*options*/, Completion completion) {
    waiting = std::move(completion);
    cancel();
}

void OpenPanelWindow::choose(const QStringList& locations) {
    std::vector<std::filesystem::path> chosen;
    for (const QString& location : locations) {
        chosen.emplace_back(location.toStdString());
    }
    if (Completion completion = std::exchange(waiting, nullptr)) {
        completion(std::move(chosen));
    }
}

void OpenPanelWindow::cancel() {
    choose({});
}

} // namespace corvid::toolkit
