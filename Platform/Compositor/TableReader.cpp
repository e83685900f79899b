#include "Platform/Compositor/TableReader.h"

#include <utility>

namespace platform::compositor {

namespace {

constexpr std::chrono::milliseconds retryLeeway{100};

} // namespace

TableReader::TableReader(MainActor& mainActor, linux::TurnDeadline& limit, WindowTable& table, Read read)
    : mainActor(mainActor)
    , limit(limit)
    , table(table)
    , read(std::move(read)) {
}

void TableReader::begin() {
    if (auto contents = read(limit.end())) {
        table.open(*std::move(contents));
    } else {
        tryLater();
    }
}

void TableReader::end() {
    retry.reset();
    isStale = false;
    table.close();
}

void TableReader::catchUp() {
    if (isStale && !update(limit.end())) {
        tryLater();
    }
}

bool TableReader::update(Instant deadline) {
    auto contents = table.isOpen() ? read(deadline) : std::nullopt;
    if (!contents) {
        return false;
    }
    isStale = false;
    table.update(*std::move(contents));
    return true;
}

void TableReader::tryLater() {
    retry = mainActor.schedule(mainActor.now() + untilRetry, retryLeeway, [this] {
        if (!table.isOpen()) {
            begin();
        } else if (!update(limit.end())) {
            tryLater();
        }
    });
}

} // namespace platform::compositor
