#pragma once

namespace platform::linux {

/// The kind of a window, as far as placing it is concerned.
enum class WindowKind {
    standard,
    /// A dialog, utility or splash window, or one that belongs to another: can be placed, but is not a document window.
    auxiliary,
    /// A desktop background, panel, menu, tooltip: nothing that a person would call a window.
    ignored,
};

} // namespace platform::linux
