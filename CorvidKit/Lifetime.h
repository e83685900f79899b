#pragma once

#include <memory>
#include <utility>

namespace corvid {

/// A member by which delayed work can tell whether the object that it is for is still there: keep `watch()` and ask it
/// before touching the object. Main thread only.
class Lifetime {
public:
    Lifetime() = default;
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;
    ~Lifetime() = default;

    class Watch {
    public:
        [[nodiscard]] bool isOver() const { return token.expired(); }

    private:
        friend class Lifetime;

        explicit Watch(std::weak_ptr<const char> token)
            : token(std::move(token)) {}

        std::weak_ptr<const char> token;
    };

    [[nodiscard]] Watch watch() const { return Watch(token); }

private:
    std::shared_ptr<const char> token = std::make_shared<const char>();
};

} // namespace corvid
