#pragma once

#include "CorvidKit/Components/Environment.h"

#include <QQmlEngine>

namespace corvid::toolkit {

/// What surrounds the views of that engine; made if need be, and the engine's.
[[nodiscard]] inline Environment& environmentOf(QQmlEngine& engine) {
    auto* environment =
        engine.singletonInstance<Environment*>(qmlTypeId("CorvidKit", 1, 0, "Environment"));
    Q_ASSERT(environment != nullptr);
    return *environment;
}

} // namespace corvid::toolkit
