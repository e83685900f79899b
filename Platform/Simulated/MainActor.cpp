#include "Platform/Simulated/MainActor.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

namespace platform::simulated {

struct MainActor::Schedule {
    struct Entry {
        std::uint64_t number;
        Waiting waiting;
        Work work;
    };

    std::vector<Entry> entries;
    std::uint64_t lastNumber = 0;
    bool exhaustsTolerance = false;

    [[nodiscard]] Instant due(const Entry& entry) const {
        return exhaustsTolerance ? entry.waiting.deadline + entry.waiting.tolerance : entry.waiting.deadline;
    }

    /// Removes the entry with the earliest time, if that is not after `end`; of several with the same time, the oldest.
    std::optional<std::pair<Instant, Work>> takeFirst(Instant end) {
        const auto first = std::ranges::min_element(entries, {}, [this](const Entry& entry) { return due(entry); });
        if (first == entries.end() || due(*first) > end) {
            return std::nullopt;
        }
        std::pair<Instant, Work> taken{due(*first), std::move(first->work)};
        entries.erase(first);
        return taken;
    }

    void remove(std::uint64_t number) {
        const auto found = std::ranges::find(entries, number, &Entry::number);
        if (found == entries.end()) {
            return;
        }
        // Destroyed only after the list is consistent again, because destroying the work may cancel other work.
        const Work dropped = std::move(found->work);
        entries.erase(found);
    }
};

class MainActor::Handle final : public ScheduledWork {
public:
    Handle(std::weak_ptr<Schedule> schedule, std::uint64_t number)
        : schedule(std::move(schedule))
        , number(number) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    ~Handle() override {
        if (const auto alive = schedule.lock()) {
            alive->remove(number);
        }
    }

private:
    std::weak_ptr<Schedule> schedule;
    std::uint64_t number;
};

MainActor::MainActor()
    : scheduled(std::make_shared<Schedule>()) {
}

MainActor::~MainActor() = default;

// The thread first: only the main thread may read `elsewhere`.
bool MainActor::isCurrent() const {
    return std::this_thread::get_id() == thread && elsewhere == 0;
}

Instant MainActor::now() const {
    return Instant(Duration(clock.load()));
}

void MainActor::post(Work work) {
    const std::scoped_lock lock(postedMutex);
    posted.push_back(std::move(work));
}

std::unique_ptr<ScheduledWork> MainActor::schedule(Instant deadline, Duration tolerance, Work work) {
    const std::uint64_t number = ++scheduled->lastNumber;
    scheduled->entries.push_back({number, {deadline, tolerance}, std::move(work)});
    return std::make_unique<Handle>(scheduled, number);
}

void MainActor::runLater(Instant deadline, Duration tolerance, Work work) {
    scheduled->entries.push_back({++scheduled->lastNumber, {deadline, tolerance}, std::move(work)});
}

std::size_t MainActor::run() {
    std::size_t count = 0;
    while (true) {
        Work next;
        {
            const std::scoped_lock lock(postedMutex);
            if (posted.empty()) {
                return count;
            }
            next = std::move(posted.front());
            posted.pop_front();
        }
        next();
        ++count;
    }
}

void MainActor::advance(Duration duration) {
    const Instant end = now() + duration;
    run();
    while (auto next = scheduled->takeFirst(end)) {
        clock = std::max(now(), next->first).time_since_epoch().count();
        next->second();
        run();
    }
    clock = std::max(now(), end).time_since_epoch().count();
}

void MainActor::pass(Duration duration) {
    clock += duration.count();
}

void MainActor::setExhaustsTolerance(bool exhausts) {
    scheduled->exhaustsTolerance = exhausts;
}

std::vector<MainActor::Waiting> MainActor::waiting() const {
    std::vector<Waiting> result;
    for (const Schedule::Entry& entry : scheduled->entries) {
        result.push_back(entry.waiting);
    }
    return result;
}

} // namespace platform::simulated
