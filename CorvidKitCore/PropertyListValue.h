#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace corvid {

/// A byte buffer.
using Data = std::vector<std::byte>;

/// One value of a property list: a boolean, a signed 64-bit integer, a 64-bit float, a text, a byte buffer or a
/// dictionary keyed by text.
///
/// The kinds never mix: what was made from an integer is an integer, and a boolean is not the integer 0 or 1. Building
/// from an unsigned 64-bit integer or from any pointer but a text does not compile, so that nothing turns into another
/// kind on its way in. A plain value: copied whole, safe to pass between threads.
class PropertyListValue {
public:
    using Dictionary = std::map<std::string, PropertyListValue, std::less<>>;
    using Storage = std::variant<bool, std::int64_t, double, std::string, Data, Dictionary>;

    template <std::same_as<bool> Boolean>
    PropertyListValue(Boolean value)
        : storage{std::in_place_type<bool>, value} {}

    template <std::integral Integer>
        requires(!std::same_as<Integer, bool> && (std::signed_integral<Integer> || sizeof(Integer) < 8))
    PropertyListValue(Integer value)
        : storage{std::in_place_type<std::int64_t>, value} {}

    template <std::floating_point Real>
        requires(sizeof(Real) <= sizeof(double))
    PropertyListValue(Real value)
        : storage{std::in_place_type<double>, value} {}

    PropertyListValue(const char* text)
        : storage{std::in_place_type<std::string>, text} {}

    PropertyListValue(std::string_view text)
        : storage{std::in_place_type<std::string>, text} {}

    PropertyListValue(std::string text)
        : storage{std::move(text)} {}

    PropertyListValue(Data bytes)
        : storage{std::move(bytes)} {}

    PropertyListValue(Dictionary entries)
        : storage{std::move(entries)} {}

    /// The value when it is of that very kind, nothing otherwise.
    [[nodiscard]] std::optional<bool> boolean() const { return copy<bool>(); }

    [[nodiscard]] std::optional<std::int64_t> integer() const { return copy<std::int64_t>(); }

    [[nodiscard]] std::optional<double> real() const { return copy<double>(); }

    /// The value when it is of that very kind, null otherwise. Points into this value.
    [[nodiscard]] const std::string* text() const { return std::get_if<std::string>(&storage); }

    [[nodiscard]] const Data* data() const { return std::get_if<Data>(&storage); }

    [[nodiscard]] const Dictionary* dictionary() const { return std::get_if<Dictionary>(&storage); }

    /// Calls the visitor with the value as the type of its kind.
    template <typename Visitor>
    decltype(auto) visit(Visitor&& visitor) const {
        return std::visit(std::forward<Visitor>(visitor), storage);
    }

    friend bool operator==(const PropertyListValue&, const PropertyListValue&) = default;

private:
    template <typename Kind>
    [[nodiscard]] std::optional<Kind> copy() const {
        const Kind* value = std::get_if<Kind>(&storage);
        return value != nullptr ? std::optional<Kind>{*value} : std::nullopt;
    }

    Storage storage;
};

} // namespace corvid
