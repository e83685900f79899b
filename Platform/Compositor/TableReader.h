#pragma once

#include "Platform/Compositor/WindowTable.h"
#include "Platform/Linux/Loop/TurnDeadline.h"
#include "Platform/Seam/Desktop/MainActor.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace platform::compositor {

/// Fills the table of a compositor whose state is read as a whole, because its events do not report everything. A
/// change that an event reports is read once the events that came with it are delivered. A compositor that does not
/// answer is asked again after a pause. Main thread only.
class TableReader {
public:
    /// Reads the present state; empty if the compositor does not answer by the deadline.
    using Read = std::function<std::optional<WindowTable::Contents>(Instant deadline)>;

    static constexpr std::chrono::seconds untilRetry{1};

    /// All must outlive this.
    TableReader(MainActor& mainActor, linux::TurnDeadline& limit, WindowTable& table, Read read);

    /// The compositor is connected. Opens the table, now or as soon as it answers.
    void begin();

    /// The connection is lost. Closes the table.
    void end();

    /// An event says that windows or outputs have changed.
    void expectChange() { isStale = true; }

    /// The events of the moment are told: reads a change that they said.
    void catchUp();

    /// Reads the state into the table. False if the compositor does not answer, or the table is not open.
    bool update(Instant deadline);

private:
    void tryLater();

    MainActor& mainActor;
    linux::TurnDeadline& limit;
    WindowTable& table;
    Read read;
    bool isStale = false;
    std::unique_ptr<ScheduledWork> retry;
};

} // namespace platform::compositor
