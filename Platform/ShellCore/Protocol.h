#pragma once

/// The interface between the program and its core in the shell; the other side is Resources/shell-core.
namespace platform::shellcore::Protocol {

/// The core serves the owner of this name.
inline constexpr const char* busName = "org.corvid.Tessel.Windows";
inline constexpr const char* objectPath = "/org/corvid/Tessel/Windows";
inline constexpr const char* interface = "org.corvid.Tessel.Windows1";
/// Increases with every change of the interface that concerns this program.
inline constexpr int version = 1;

inline constexpr const char* noSuchWindow = "org.corvid.Tessel.Windows1.NoSuchWindow";
/// The reply to a client that does not own the name, or has not called Hello.
inline constexpr const char* denied = "org.corvid.Tessel.Windows1.Denied";
/// The reply to Hello in a shell that lacks a function; the message has the names, separated by commas.
inline constexpr const char* unusable = "org.corvid.Tessel.Windows1.Unusable";

} // namespace platform::shellcore::Protocol
