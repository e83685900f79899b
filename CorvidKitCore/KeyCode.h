#pragma once

#include <cstdint>

/// The virtual key codes that code names directly. They say where a key sits on the keyboard, not which letter its
/// layout prints, in the numbering of the Carbon event headers (`kVK_…`).
namespace corvid::KeyCode {

inline constexpr std::uint32_t escape = 53;
/// The key that deletes backwards; `delete` is a reserved word.
inline constexpr std::uint32_t deleteKey = 51;
inline constexpr std::uint32_t leftArrow = 123;
inline constexpr std::uint32_t rightArrow = 124;
inline constexpr std::uint32_t downArrow = 125;
inline constexpr std::uint32_t upArrow = 126;
inline constexpr std::uint32_t c = 8;
inline constexpr std::uint32_t d = 2;

} // namespace corvid::KeyCode
