#pragma once

#include "CorvidKitCore/PropertyListValue.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform::linux {

/// The dictionary of a property-list file as libplist holds it, so that values that the program does not use (dates,
/// arrays, integers beyond the signed 64-bit range) are written back unchanged.
class PropertyListDocument {
public:
    /// A document without entries.
    PropertyListDocument();

    /// Reads a property list, XML or binary. Nothing when it is malformed or its root is no dictionary.
    [[nodiscard]] static std::optional<PropertyListDocument> parse(std::string_view contents);

    /// The document as an XML property list, version 1.0.
    [[nodiscard]] std::string xml() const;

    /// The value under a key; nothing without one, or where it is of a kind that `PropertyListValue` does not have.
    /// Within a dictionary, entries of such a kind are left out.
    [[nodiscard]] std::optional<corvid::PropertyListValue> value(std::string_view key) const;

    /// Whether there is a value of any kind under a key.
    [[nodiscard]] bool contains(std::string_view key) const;

    /// Sets the value of a key, replacing the former one. A text or key ends at its first NUL: the format has none.
    void set(const corvid::PropertyListValue& value, std::string_view key);

    void remove(std::string_view key);

    /// Does the same to one entry of the dictionary under a key; a value of another kind there is replaced by a
    /// dictionary.
    void setEntry(const corvid::PropertyListValue& value, std::string_view key, std::string_view entry);
    void removeEntry(std::string_view key, std::string_view entry);

private:
    struct Free {
        void operator()(void* node) const;
    };

    using Node = std::unique_ptr<void, Free>;

    explicit PropertyListDocument(Node dictionary);

    [[nodiscard]] void* dictionaryUnder(std::string_view key);

    Node root;
};

} // namespace platform::linux
