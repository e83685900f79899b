#pragma once

#include "CorvidKit/Lifetime.h"
#include "CorvidKit/Publisher.h"
#include "Tessel/AppState.h"
#include "Tessel/Menu/RuleAppModel.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QVariantList>
#include <QVariantMap>

namespace tessel {

/// Shows the program's state to views: what they may read, and what they may ask for. Holds nothing of its own but what
/// it last told. Main thread only.
class MenuState final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by whoever makes the view")
    Q_PROPERTY(Status status READ status NOTIFY changed)
    Q_PROPERTY(QString statusText READ statusText NOTIFY changed)
    Q_PROPERTY(bool isEnabled READ isEnabled WRITE setEnabled NOTIFY changed)
    Q_PROPERTY(bool hasAccessibility READ hasAccessibility NOTIFY changed)
    Q_PROPERTY(bool updateReminderDue READ updateReminderDue NOTIFY changed)
    Q_PROPERTY(bool isReplaced READ isReplaced NOTIFY changed)
    Q_PROPERTY(QVariantMap takenShortcuts READ takenShortcuts NOTIFY changed)
    Q_PROPERTY(QString lendableShortcuts READ lendableShortcuts NOTIFY changed)
    Q_PROPERTY(int borrowedCount READ borrowedCount NOTIFY changed)
    Q_PROPERTY(QAbstractItemModel* ruleApps READ ruleApps CONSTANT)
    Q_PROPERTY(QVariantList actions READ actions CONSTANT)
    Q_PROPERTY(QVariantList ruleActions READ ruleActions CONSTANT)
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString permissionTitle READ permissionTitle NOTIFY changed)
    Q_PROPERTY(QString permissionMessage READ permissionMessage NOTIFY changed)
    Q_PROPERTY(QString permissionButton READ permissionButton NOTIFY changed)

public:
    // Views find only names that begin with a capital.
    enum Status { Paused, WaitingForPermission, ShortcutsTaken, Active }; // NOLINT(readability-identifier-naming)
    Q_ENUM(Status)

    /// `state` must outlive this.
    explicit MenuState(AppState& state, QObject* parent = nullptr);

    [[nodiscard]] Status status() const;
    [[nodiscard]] QString statusText() const;
    [[nodiscard]] bool isEnabled() const;
    void setEnabled(bool enabled);
    [[nodiscard]] bool hasAccessibility() const;
    [[nodiscard]] bool updateReminderDue() const;

    /// Whether another build of the program has taken its place on the disk.
    [[nodiscard]] bool isReplaced() const;

    /// The text for each shortcut that is taken, by the raw value of its action.
    [[nodiscard]] QVariantMap takenShortcuts() const;

    /// The text for the shortcuts that are taken and could be borrowed; empty where there is none.
    [[nodiscard]] QString lendableShortcuts() const;

    /// How many shortcuts are borrowed.
    [[nodiscard]] int borrowedCount() const;

    [[nodiscard]] QAbstractItemModel* ruleApps() { return &rows; }

    /// The actions in the order of the menu, each with `id`, `title`, `symbol`, `keys` and `spokenKeys`.
    [[nodiscard]] QVariantList actions() const;

    /// Those that a rule may hold.
    [[nodiscard]] QVariantList ruleActions() const;

    [[nodiscard]] QString version() const;

    /// The reason why the desktop does not let the program move windows, and what to do about it.
    [[nodiscard]] QString permissionTitle() const;
    [[nodiscard]] QString permissionMessage() const;

    /// The title of the button that does something about it; empty where only the user can.
    [[nodiscard]] QString permissionButton() const;

    /// The running applications that could be given a rule, each with `bundleID`, `title` and `icon`.
    Q_INVOKABLE [[nodiscard]] QVariantList addableRunningApps() const;

    Q_INVOKABLE void addRunningApp(const QString& bundleID);
    Q_INVOKABLE void setRule(const QString& bundleID, const QString& action);
    Q_INVOKABLE void removeRule(const QString& bundleID);
    Q_INVOKABLE void setBorrowsShortcuts(bool borrows);
    Q_INVOKABLE void chooseApp();
    Q_INVOKABLE void checkForUpdates();
    Q_INVOKABLE void dismissUpdateReminder();
    Q_INVOKABLE void openAccessibilitySettings();

    /// Tells what may have changed unnoticed while nothing was shown.
    Q_INVOKABLE void lookAgain();
    Q_INVOKABLE void restart();
    Q_INVOKABLE void quit();

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] platform::AccessObstacle obstacle() const;
    void refreshSoon();
    void refresh();

    AppState& state;
    RuleAppModel rows;
    bool refreshIsPending = false;
    corvid::Subscription stateChanges;
    corvid::Subscription reminderChanges;
    corvid::Lifetime lifetime;
};

} // namespace tessel
