#pragma once

#include "Platform/Linux/MainLoop.h"

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {

/// Starts programs that go their own way (see `startProgram`), writing nothing. They are waited for, so that none
/// becomes a zombie. Main thread only.
class DetachedPrograms {
public:
    /// The loop must outlive this. Programs still running when this is dropped run on.
    explicit DetachedPrograms(MainLoop& mainLoop);
    DetachedPrograms(const DetachedPrograms&) = delete;
    DetachedPrograms& operator=(const DetachedPrograms&) = delete;
    ~DetachedPrograms();

    /// Starts the program (see `findProgram`) with arguments. It reads from `input`, or nothing where that is negative.
    /// False where there is none or it cannot be started; what becomes of it then is its own affair.
    bool start(std::string_view program, const std::vector<std::string>& arguments, int input = -1);

private:
    class Child;

    void collectSoon();
    void collect();

    MainLoop& mainLoop;
    std::list<Child> children;
    std::unique_ptr<ScheduledWork> collection;
};

} // namespace platform::linux
