#pragma once

#include <glib.h>

#include <memory>

namespace platform::linux {

/// Frees memory that GLib allocated.
struct GLibFree {
    void operator()(char* text) const { g_free(text); }

    void operator()(char** texts) const { g_strfreev(texts); }

    void operator()(GError* error) const { g_error_free(error); }
};

using GLibText = std::unique_ptr<char, GLibFree>;
/// A list of texts, ended by a null pointer.
using GLibTexts = std::unique_ptr<char*, GLibFree>;
using GLibError = std::unique_ptr<GError, GLibFree>;

} // namespace platform::linux
