#pragma once

#include "Platform/Seam/Desktop/Beep.h"
#include "Platform/Simulated/Trace.h"

namespace platform::simulated {

class Beep final : public platform::Beep {
public:
    explicit Beep(Trace& trace)
        : trace(trace) {}

    void beep() override {
        trace.record("beep");
        ++beeps;
    }

    [[nodiscard]] int count() const { return beeps; }

private:
    Trace& trace;
    int beeps = 0;
};

} // namespace platform::simulated
