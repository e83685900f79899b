#include "CorvidKitCore/PropertyListCoding.h"

#include <utility>

namespace corvid {

void PropertyListEncoder::encode(std::uint32_t number, std::string_view key) {
    PropertyListValue::Dictionary entries;
    if (encoded && encoded->dictionary() != nullptr) {
        entries = *encoded->dictionary();
    }
    entries.insert_or_assign(std::string{key}, PropertyListValue{number});
    encoded = std::move(entries);
}

void PropertyListEncoder::encode(std::string_view text) {
    encoded = text;
}

std::expected<std::uint32_t, DecodingError> PropertyListDecoder::decodeUnsigned32(std::string_view key) const {
    using enum DecodingError::Kind;
    const PropertyListValue::Dictionary* entries = encoded.dictionary();
    if (entries == nullptr) {
        return std::unexpected(DecodingError{typeMismatch, {}, "not a dictionary"});
    }
    const auto entry = entries->find(key);
    if (entry == entries->end()) {
        return std::unexpected(DecodingError{keyNotFound, std::string{key}, "no such entry"});
    }
    const std::optional<std::int64_t> number = entry->second.integer();
    if (!number) {
        return std::unexpected(DecodingError{typeMismatch, std::string{key}, "not an integer"});
    }
    if (!std::in_range<std::uint32_t>(*number)) {
        return std::unexpected(DecodingError{dataCorrupted, std::string{key}, "not within 32 bits"});
    }
    return static_cast<std::uint32_t>(*number);
}

std::expected<std::string, DecodingError> PropertyListDecoder::decodeText() const {
    const std::string* text = encoded.text();
    if (text == nullptr) {
        return std::unexpected(DecodingError{DecodingError::Kind::typeMismatch, {}, "not a text"});
    }
    return *text;
}

DecodingError PropertyListDecoder::dataCorrupted(std::string_view reason) const {
    return DecodingError{DecodingError::Kind::dataCorrupted, {}, std::string{reason}};
}

} // namespace corvid
