#pragma once

#include "CorvidKit/LoginItem.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>

namespace corvid {

/// Opening at login, for views.
class LoginItemAccess final : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(LoginItem)
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE [[nodiscard]] bool isEnabled() const { return LoginItem::isEnabled(); }

    /// Returns the state that holds afterwards.
    Q_INVOKABLE bool setEnabled(bool enabled) { return LoginItem::setEnabled(enabled); }
};

} // namespace corvid
