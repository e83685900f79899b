#pragma once

#include "CorvidKit/Publisher.h"

#include <utility>

namespace corvid {

/// A value that others follow. Main thread only.
template <typename Value>
class Published {
public:
    explicit Published(Value initial)
        : value(std::move(initial)) {}

    [[nodiscard]] const Value& get() const { return value; }

    /// Notifies of the new value, then takes it; also if it is the same as before.
    void set(Value next) {
        changes.send(next);
        value = std::move(next);
    }

    /// Calls `handler` with the present value at once and then with each new one before it is taken.
    [[nodiscard]] Subscription subscribe(Publisher<Value>::Handler handler) {
        handler(value);
        return changes.subscribe(std::move(handler));
    }

private:
    Value value;
    Publisher<Value> changes;
};

} // namespace corvid
