#pragma once

#include "Platform/MainActor.h"
#include "Platform/Toolkit.h"

#include <functional>
#include <memory>
#include <vector>

namespace corvid {

/// The toolkit, started when it is first needed and then kept. From then on its event loop turns, with the main loop in
/// it. Main thread only.
class DeferredToolkit {
public:
    /// Null where the toolkit cannot be had.
    using Start = std::function<std::unique_ptr<platform::Toolkit>()>;
    /// Has the main loop call the function in place of waiting, once its present turn is over.
    using HandOver = std::function<void(std::function<void()>)>;
    using Work = std::function<void(platform::Toolkit& toolkit)>;

    /// `mainActor` outlives this.
    DeferredToolkit(platform::MainActor& mainActor, Start start, HandOver handOver)
        : mainActor(mainActor)
        , start(std::move(start))
        , handOver(std::move(handOver)) {}

    DeferredToolkit(const DeferredToolkit&) = delete;
    DeferredToolkit& operator=(const DeferredToolkit&) = delete;
    ~DeferredToolkit() = default;

    /// Null until it has been started.
    [[nodiscard]] platform::Toolkit* started() const { return toolkit.get(); }

    /// Starts the toolkit if it is not started yet, and gives it to `work`. Where it cannot be started, calls `failed`;
    /// the next call tries again.
    void use(Work work, std::function<void()> failed);

private:
    struct Waiting {
        Work work;
        std::function<void()> failed;
    };

    void enter();

    platform::MainActor& mainActor;
    Start start;
    HandOver handOver;
    std::vector<Waiting> waiting;
    std::unique_ptr<platform::Toolkit> toolkit;
};

} // namespace corvid
