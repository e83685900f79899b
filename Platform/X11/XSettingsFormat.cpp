#include "Platform/X11/XSettingsFormat.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace platform::x11 {

namespace {

enum class ByteOrder : std::uint8_t {
    leastFirst = 0,
    mostFirst = 1,
};

enum class Kind : std::uint8_t {
    integer = 0,
    string = 1,
    color = 2,
};

/// Reads values from the front of a byte sequence. A read fails if too few bytes are left.
class Reader {
public:
    explicit Reader(std::span<const std::byte> bytes)
        : rest(bytes) {}

    void setOrder(ByteOrder newOrder) { order = newOrder; }

    /// A number of that many bytes.
    [[nodiscard]] std::optional<std::uint32_t> number(std::size_t width) {
        const auto bytes = take(width);
        if (!bytes) {
            return std::nullopt;
        }
        constexpr unsigned bitsOfAByte = 8;
        std::uint32_t value = 0;
        for (std::size_t index = 0; index < width; ++index) {
            const std::size_t place = order == ByteOrder::mostFirst ? index : width - 1 - index;
            value = value << bitsOfAByte | std::to_integer<std::uint32_t>((*bytes)[place]);
        }
        return value;
    }

    /// A text of that many bytes, and the padding up to the next multiple of four.
    [[nodiscard]] std::optional<std::string> text(std::size_t length) {
        constexpr std::size_t unit = 4;
        const auto bytes = take(length);
        if (!bytes || !skip((unit - length % unit) % unit)) {
            return std::nullopt;
        }
        return std::string(reinterpret_cast<const char*>(bytes->data()), length);
    }

    [[nodiscard]] bool skip(std::size_t length) { return take(length).has_value(); }

private:
    [[nodiscard]] std::optional<std::span<const std::byte>> take(std::size_t length) {
        if (rest.size() < length) {
            return std::nullopt;
        }
        const std::span<const std::byte> taken = rest.first(length);
        rest = rest.subspan(length);
        return taken;
    }

    std::span<const std::byte> rest;
    ByteOrder order = ByteOrder::leastFirst;
};

/// Reads a setting into `settings`; false if it is malformed.
bool readSetting(Reader& reader, XSettings& settings) {
    constexpr std::size_t sizeOfColor = 8;
    const auto kind = reader.number(1);
    if (!kind || !reader.skip(1)) {
        return false;
    }
    const auto nameLength = reader.number(2);
    auto name = nameLength ? reader.text(*nameLength) : std::nullopt;
    constexpr std::size_t sizeOfSerial = 4;
    if (!name || !reader.skip(sizeOfSerial)) {
        return false;
    }
    switch (static_cast<Kind>(*kind)) {
    case Kind::integer:
        if (const auto value = reader.number(4)) {
            settings.insert_or_assign(*std::move(name), static_cast<std::int32_t>(*value));
            return true;
        }
        return false;
    case Kind::string: {
        const auto length = reader.number(4);
        auto value = length ? reader.text(*length) : std::nullopt;
        if (!value) {
            return false;
        }
        settings.insert_or_assign(*std::move(name), *std::move(value));
        return true;
    }
    case Kind::color:
        return reader.skip(sizeOfColor);
    }
    return false;
}

} // namespace

XSettings readXSettings(std::span<const std::byte> property) {
    Reader reader(property);
    XSettings settings;
    constexpr std::size_t fillAndSerial = 7;
    const auto order = reader.number(1);
    if (!order || *order > static_cast<std::uint32_t>(ByteOrder::mostFirst) || !reader.skip(fillAndSerial)) {
        return settings;
    }
    reader.setOrder(static_cast<ByteOrder>(*order));
    const auto count = reader.number(4);
    for (std::uint32_t left = count.value_or(0); left > 0; --left) {
        if (!readSetting(reader, settings)) {
            break;
        }
    }
    return settings;
}

} // namespace platform::x11
