#pragma once

#include "CorvidKitCore/PropertyListValue.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>

namespace corvid {

/// Why a coded value could not be rebuilt.
struct DecodingError {
    enum class Kind : std::uint8_t {
        /// An entry that the value needs is not there.
        keyNotFound,
        /// The entry, or the whole, is of another kind.
        typeMismatch,
        /// The kind is right, but the value does not fit or means nothing.
        dataCorrupted,
    };

    Kind kind{};
    /// The entry concerned; empty when it is the whole.
    std::string key;
    /// The reason, for a log line.
    std::string reason;

    friend bool operator==(const DecodingError&, const DecodingError&) = default;
};

/// Codes one value as a property-list value: a dictionary for a value coded by entries, a text for a lone one.
class PropertyListEncoder {
public:
    void encode(std::uint32_t number, std::string_view key);
    void encode(std::string_view text);

    /// The encoded value; nothing when nothing was written.
    [[nodiscard]] const std::optional<PropertyListValue>& value() const { return encoded; }

private:
    std::optional<PropertyListValue> encoded;
};

/// Reads the output of `PropertyListEncoder`. Refers to the given value, which must outlive it.
class PropertyListDecoder {
public:
    using Error = DecodingError;

    explicit PropertyListDecoder(const PropertyListValue& encoded)
        : encoded{encoded} {}

    [[nodiscard]] std::expected<std::uint32_t, DecodingError> decodeUnsigned32(std::string_view key) const;
    [[nodiscard]] std::expected<std::string, DecodingError> decodeText() const;
    [[nodiscard]] DecodingError dataCorrupted(std::string_view reason) const;

private:
    const PropertyListValue& encoded;
};

} // namespace corvid
