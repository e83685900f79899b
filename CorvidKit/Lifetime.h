#pragma once

#include <memory>
#include <utility>

namespace corvid {

/// Lets delayed work check whether its object still exists: make this a member, keep `watch()` in the work, and ask it
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
