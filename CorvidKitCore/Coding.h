#pragma once

#include <concepts>
#include <cstdint>
#include <expected>
#include <string>
#include <string_view>

/// Coding: a value describes itself to an encoder and is rebuilt from a decoder, and neither knows the other's format.
/// A value coded by entries uses the keyed pair, one coded as a lone text the single-value pair. `PropertyListCoding.h`
/// holds coders for property-list values; a coder for any other format only has to offer the same functions.
namespace corvid {

template <typename Encoder>
concept KeyedEncoder =
    requires(Encoder& encoder, std::uint32_t number, std::string_view key) { encoder.encode(number, key); };

template <typename Decoder>
concept KeyedDecoder = requires(const Decoder& decoder, std::string_view key) {
    typename Decoder::Error;
    { decoder.decodeUnsigned32(key) } -> std::same_as<std::expected<std::uint32_t, typename Decoder::Error>>;
};

template <typename Encoder>
concept SingleValueEncoder = requires(Encoder& encoder, std::string_view text) { encoder.encode(text); };

/// A single-value decoder also makes the error for a text that it could read but the value cannot be built from.
template <typename Decoder>
concept SingleValueDecoder = requires(const Decoder& decoder, std::string_view reason) {
    typename Decoder::Error;
    { decoder.decodeText() } -> std::same_as<std::expected<std::string, typename Decoder::Error>>;
    { decoder.dataCorrupted(reason) } -> std::same_as<typename Decoder::Error>;
};

} // namespace corvid
