#pragma once

#include <QQmlEngine>
#include <QQuickItem>
#include <QUrl>
#include <QVariantMap>
#include <memory>

namespace corvid::toolkit {

/// Makes the item that a file describes, with these properties. Null, and a line in the log for each fault, where that
/// cannot be done.
[[nodiscard]] std::unique_ptr<QQuickItem> itemFromFile(QQmlEngine& engine, const QUrl& file,
                                                       const QVariantMap& properties = {});

} // namespace corvid::toolkit
