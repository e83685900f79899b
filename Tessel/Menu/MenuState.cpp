#include "Tessel/Menu/MenuState.h"

#include "CorvidKit/AccessibilityAccess.h"
#include "CorvidKit/AppInfo.h"
#include "CorvidKit/Snapshot.h"
#include "CorvidKit/SystemSettings.h"
#include "Platform/Seam/Desktop/ApplicationCatalogue.h"
#include "Platform/Seam/Desktop/Localization.h"
#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/Seam/Desktop/ThisApplication.h"
#include "Platform/Seam/Platform.h"
#include "Tessel/AccessText.h"
#include "Tessel/HolderText.h"
#include "Tessel/Menu/ImageSource.h"
#include "Tessel/ObstacleText.h"
#include "Tessel/ShortcutText.h"
#include "Tessel/StatusText.h"

#include <QCoreApplication>

namespace tessel {

namespace {

using platform::AccessObstacle;

QString translated(std::string_view key, const char* variant = nullptr) {
    return QCoreApplication::translate("Tessel", std::string(key).c_str(), variant);
}

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8);
}

QVariantMap description(WindowAction action) {
    const platform::Localization& localization = platform::current().localization;
    const corvid::Shortcut shortcut = action.shortcut();
    QStringList keys;
    // Pictures show the shortcut's own signs; the popover what is printed on the user's keys.
    for (const std::string& key :
         corvid::Snapshot::isActive ? shortcut.symbols() : keysAsPrinted(shortcut, localization)) {
        keys.append(QString::fromStdString(key));
    }
    return {{"id", text(action.rawValue())},
            {"title", translated(action.title())},
            {"symbol", text(action.symbol())},
            {"keys", keys},
            {"spokenKeys", QString::fromStdString(shortcutText(shortcut, localization))}};
}

template <typename Actions>
QVariantList descriptions(const Actions& actions) {
    QVariantList list;
    for (const WindowAction action : actions) {
        list.append(description(action));
    }
    return list;
}

QString offerToBorrow(const QStringList& holders, const QString& keys) {
    const bool isHolderKnown = !holders.contains(QString());
    if (platform::current().desktop.hotKeyEvents.borrowingChangesSettings()) {
        return isHolderKnown ? translated("%1 uses %2. Tessel can have them while it runs; the system settings are "
                                          "changed for that time.")
                                   .arg(holders.join(", "), keys)
                             : translated("Another app uses %1. Tessel can have them while it runs; the system "
                                          "settings are changed for that time.")
                                   .arg(keys);
    }
    return isHolderKnown ? translated("%1 uses %2. Tessel can have them while it runs; no setting is changed.")
                               .arg(holders.join(", "), keys)
                         : translated("Another app uses %1. Tessel can have them while it runs; no setting is changed.")
                               .arg(keys);
}

/// The shortcuts in a row; no line ends within one.
QString unbroken(const QStringList& shortcuts) {
    QStringList whole;
    for (const QString& shortcut : shortcuts) {
        whole.append(QString(shortcut).replace(QLatin1Char(' '), QChar::Nbsp));
    }
    return whole.join(", ");
}

} // namespace

MenuState::MenuState(AppState& state, platform::OpenPanel* panel)
    : state(state)
    , panel(panel) {
    stateChanges = state.objectWillChange().subscribe([this] { refreshSoon(); });
    reminderChanges = state.updates().updateReminderDueFlag().subscribe([this](bool /*due*/) { refreshSoon(); });
    rows.show(state.ruleApps());
}

void MenuState::refreshSoon() {
    if (refreshIsPending) {
        return;
    }
    // Sent before the change; the new value is there in the next turn.
    refreshIsPending = true;
    platform::current().mainActor.post([this, watch = lifetime.watch()] {
        if (!watch.isOver()) {
            refreshIsPending = false;
            refresh();
        }
    });
}

void MenuState::refresh() {
    rows.show(state.ruleApps());
    Q_EMIT changed();
}

MenuState::Status MenuState::status() const {
    switch (state.status()) {
    case AppStatus::paused:
        return Paused;
    case AppStatus::waitingForPermission:
        return WaitingForPermission;
    case AppStatus::shortcutsTaken:
        return ShortcutsTaken;
    case AppStatus::active:
        return Active;
    }
    std::unreachable();
}

QString MenuState::statusText() const {
    const platform::Localization& localization = platform::current().localization;
    return QString::fromStdString(tessel::statusText(state.status(), state.rules().size(), localization));
}

bool MenuState::isEnabled() const {
    return state.isEnabled();
}

void MenuState::setEnabled(bool enabled) {
    state.setEnabled(enabled);
}

bool MenuState::hasAccessibility() const {
    return state.hasAccessibility();
}

bool MenuState::updateReminderDue() const {
    return state.updates().updateReminderDue();
}

bool MenuState::isReplaced() const {
    return platform::current().thisApplication.isReplaced();
}

QVariantMap MenuState::takenShortcuts() const {
    const platform::Localization& localization = platform::current().localization;
    QVariantMap taken;
    for (const WindowAction action : state.failedShortcuts()) {
        const auto holder = state.shortcutHolders().find(action);
        QString tip = holder == state.shortcutHolders().end()
                          ? translated("Another app is already using this shortcut")
                          : QString::fromStdString(holderText(action.shortcut(), holder->second, localization));
        if (const auto obstacle = state.loanObstacles().find(action); obstacle != state.loanObstacles().end()) {
            tip += "\n" + QString::fromStdString(obstacleText(obstacle->second, localization));
        }
        taken.insert(text(action.rawValue()), tip);
    }
    return taken;
}

QString MenuState::lendableShortcuts() const {
    const platform::Localization& localization = platform::current().localization;
    QStringList holders;
    QStringList shortcuts;
    QStringList otherKeys;
    for (const WindowAction action : state.shortcutsOnLoan(platform::HotKeyLoan::possible)) {
        shortcuts.append(QString::fromStdString(shortcutText(action.shortcut(), localization)));
        const auto holder = state.shortcutHolders().find(action);
        // Each line of a configuration is a holder of its own, and the card is short.
        const QString name = holder == state.shortcutHolders().end()
                                 ? QString()
                                 : QString::fromStdString(holder->second.heldBy).section(", ", 0, 0);
        if (!holders.contains(name)) {
            holders.append(name);
        }
        if (holder == state.shortcutHolders().end() || !holder->second.otherKeys) {
            continue;
        }
        const auto& [modifiers, key] = *holder->second.otherKeys;
        const QString kept = QString::fromStdString(shortcutText(modifiers, key, localization));
        if (!otherKeys.contains(kept)) {
            otherKeys.append(kept);
        }
    }
    if (shortcuts.isEmpty()) {
        return {};
    }
    QString offer = offerToBorrow(holders, unbroken(shortcuts));
    if (otherKeys.isEmpty()) {
        return offer;
    }
    // The full stop of Chinese and Japanese is as wide as a stop and a space.
    const bool hasWideStop = offer.endsWith(QStringLiteral("。"));
    return offer + (hasWideStop ? "" : " ") +
           translated("Other keys for the same keep working: %1.").arg(unbroken(otherKeys));
}

int MenuState::borrowedCount() const {
    return static_cast<int>(state.shortcutsOnLoan(platform::HotKeyLoan::made).size());
}

QVariantList MenuState::actions() const {
    return descriptions(WindowAction::menuOrder);
}

QVariantList MenuState::ruleActions() const {
    return descriptions(WindowAction::ruleActions);
}

QString MenuState::version() const {
    return QString::fromStdString(corvid::AppInfo::version());
}

AccessObstacle MenuState::obstacle() const {
    return state.obstacle().value_or(AccessObstacle{});
}

QString MenuState::permissionTitle() const {
    return translated("Allow Accessibility access", accessVariant(obstacle()));
}

QString MenuState::permissionMessage() const {
    return translated("macOS requires this permission for an app to move and resize other apps' windows. If Tessel is "
                      "already turned on in the list, select it, click − and open the app again.",
                      accessVariant(obstacle()));
}

QString MenuState::permissionButton() const {
    switch (obstacle().kind) {
    case AccessObstacle::Kind::permission:
        return QCoreApplication::translate("CorvidKit", "Open System Settings");
    case AccessObstacle::Kind::extensionOff:
        return translated("Turn on");
    default:
        // Nothing else can be put right from here.
        return {};
    }
}

QVariantList MenuState::addableRunningApps() const {
    platform::ApplicationCatalogue& catalogue = platform::current().applicationCatalogue;
    QVariantList list;
    for (const platform::RunningApplicationReference& application : state.addableRunningApps()) {
        const std::string identifier = application->bundleIdentifier().value_or("");
        const auto location = catalogue.location(identifier);
        list.append(QVariantMap{{"bundleID", QString::fromStdString(identifier)},
                                {"title", QString::fromStdString(application->localizedName().value_or(identifier))},
                                {"icon", location ? imageSource(catalogue.icon(*location)) : QString()}});
    }
    return list;
}

void MenuState::addRunningApp(const QString& bundleID) {
    if (!bundleID.isEmpty()) {
        state.setRule(bundleID.toStdString(), WindowAction::maximize);
    }
}

void MenuState::setRule(const QString& bundleID, const QString& action) {
    if (const auto wanted = WindowAction::fromRawValue(action.toStdString())) {
        state.setRule(bundleID.toStdString(), wanted);
    }
}

void MenuState::removeRule(const QString& bundleID) {
    state.setRule(bundleID.toStdString(), std::nullopt);
}

void MenuState::setBorrowsShortcuts(bool borrows) {
    state.setBorrowsShortcuts(borrows);
}

void MenuState::chooseApp() {
    if (panel != nullptr) {
        state.chooseApp(WindowAction::maximize, *panel);
    }
}

void MenuState::checkForUpdates() {
    state.updates().checkForUpdates();
}

void MenuState::dismissUpdateReminder() {
    state.updates().dismissUpdateReminder();
}

void MenuState::openAccessibilitySettings() {
    if (obstacle().kind == AccessObstacle::Kind::extensionOff) {
        corvid::AccessibilityAccess::requestIfNeeded();
    } else {
        corvid::SystemSettings::open(corvid::SystemSettings::Pane::accessibility);
    }
}

void MenuState::lookAgain() {
    Q_EMIT changed();
}

void MenuState::restart() {
    platform::current().thisApplication.restart();
}

void MenuState::quit() {
    platform::current().thisApplication.terminate();
}

} // namespace tessel
