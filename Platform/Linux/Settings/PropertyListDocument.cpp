#include "Platform/Linux/Settings/PropertyListDocument.h"

#include <plist/plist.h>

#include <clocale>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <type_traits>
#include <utility>

namespace platform::linux {
namespace {

using corvid::Data;
using corvid::PropertyListValue;

// The functions of the library that do the same have other names in each version.
struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};

template <typename Memory>
using Allocated = std::unique_ptr<Memory, FreeMemory>;

/// libplist reads and writes numbers by the C locale of the thread; a file must not depend on the user's decimal point.
class PlainNumbers {
public:
    PlainNumbers()
        : previous{::uselocale(plain())} {}

    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;

    ~PlainNumbers() { ::uselocale(previous); }

private:
    static locale_t plain() {
        static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t previous;
};

std::string xmlOf(plist_t node) {
    const PlainNumbers numbers;
    char* text = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(node, &text, &length);
    const Allocated<char> owned{text};
    return text != nullptr ? std::string{text, length} : std::string{};
}

plist_t parseXml(std::string_view text) {
    const PlainNumbers numbers;
    plist_t node = nullptr;
    plist_from_xml(text.data(), static_cast<std::uint32_t>(text.size()), &node);
    return node;
}

// libplist keeps the bits of an integer and its sign, but its older versions give out the bits alone. Its XML has both
// in every version. So the rare integer whose highest bit is set goes through the XML, in and out.

std::optional<PropertyListValue> integer(plist_t node) {
    std::uint64_t bits = 0;
    plist_get_uint_val(node, &bits);
    const bool ambiguous = bits > std::uint64_t{std::numeric_limits<std::int64_t>::max()};
    if (ambiguous && xmlOf(node).find("<integer>-") == std::string::npos) {
        return std::nullopt;
    }
    return PropertyListValue{static_cast<std::int64_t>(bits)};
}

plist_t integerNode(std::int64_t value) {
    if (value >= 0) {
        return plist_new_uint(static_cast<std::uint64_t>(value));
    }
    return parseXml("<plist version=\"1.0\"><integer>" + std::to_string(value) + "</integer></plist>");
}

std::optional<PropertyListValue> valueOf(plist_t node);

PropertyListValue dictionary(plist_t node) {
    PropertyListValue::Dictionary entries;
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(node, &position);
    const Allocated<void> owned{position};
    while (true) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, position, &key, &item);
        const Allocated<char> ownedKey{key};
        if (item == nullptr || key == nullptr) {
            return PropertyListValue{std::move(entries)};
        }
        if (std::optional<PropertyListValue> value = valueOf(item)) {
            entries.insert_or_assign(key, *std::move(value));
        }
    }
}

std::optional<PropertyListValue> valueOf(plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return PropertyListValue{value != 0};
    }
    case PLIST_UINT:
        return integer(node);
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return PropertyListValue{value};
    }
    case PLIST_STRING: {
        std::uint64_t length = 0;
        const char* text = plist_get_string_ptr(node, &length);
        return PropertyListValue{std::string(text != nullptr ? text : "", text != nullptr ? length : 0)};
    }
    case PLIST_DATA: {
        std::uint64_t length = 0;
        const char* bytes = plist_get_data_ptr(node, &length);
        const auto* first = reinterpret_cast<const std::byte*>(bytes);
        return PropertyListValue{bytes != nullptr ? Data{first, first + length} : Data{}};
    }
    case PLIST_DICT:
        return dictionary(node);
    default:
        return std::nullopt;
    }
}

plist_t nodeOf(const PropertyListValue& value) {
    return value.visit([]<typename Kind>(const Kind& content) -> plist_t {
        if constexpr (std::is_same_v<Kind, bool>) {
            return plist_new_bool(content ? 1 : 0);
        } else if constexpr (std::is_same_v<Kind, std::int64_t>) {
            return integerNode(content);
        } else if constexpr (std::is_same_v<Kind, double>) {
            return plist_new_real(content);
        } else if constexpr (std::is_same_v<Kind, std::string>) {
            return plist_new_string(content.c_str());
        } else if constexpr (std::is_same_v<Kind, Data>) {
            return plist_new_data(reinterpret_cast<const char*>(content.data()), content.size());
        } else {
            static_assert(std::is_same_v<Kind, PropertyListValue::Dictionary>);
            plist_t node = plist_new_dict();
            for (const auto& [key, entry] : content) {
                plist_dict_set_item(node, key.c_str(), nodeOf(entry));
            }
            return node;
        }
    });
}

} // namespace

void PropertyListDocument::Free::operator()(void* node) const {
    plist_free(node);
}

PropertyListDocument::PropertyListDocument()
    : root{plist_new_dict()} {
}

PropertyListDocument::PropertyListDocument(Node dictionary)
    : root{std::move(dictionary)} {
}

std::optional<PropertyListDocument> PropertyListDocument::parse(std::string_view contents) {
    Node node;
    if (plist_is_binary(contents.data(), static_cast<std::uint32_t>(contents.size())) != 0) {
        plist_t binary = nullptr;
        plist_from_bin(contents.data(), static_cast<std::uint32_t>(contents.size()), &binary);
        node.reset(binary);
    } else {
        node.reset(parseXml(contents));
    }
    if (!node || plist_get_node_type(node.get()) != PLIST_DICT) {
        return std::nullopt;
    }
    return PropertyListDocument{std::move(node)};
}

std::string PropertyListDocument::xml() const {
    return xmlOf(root.get());
}

std::optional<PropertyListValue> PropertyListDocument::value(std::string_view key) const {
    plist_t item = plist_dict_get_item(root.get(), std::string{key}.c_str());
    return item != nullptr ? valueOf(item) : std::nullopt;
}

bool PropertyListDocument::contains(std::string_view key) const {
    return plist_dict_get_item(root.get(), std::string{key}.c_str()) != nullptr;
}

void PropertyListDocument::set(const PropertyListValue& value, std::string_view key) {
    plist_dict_set_item(root.get(), std::string{key}.c_str(), nodeOf(value));
}

void PropertyListDocument::remove(std::string_view key) {
    plist_dict_remove_item(root.get(), std::string{key}.c_str());
}

void PropertyListDocument::setEntry(const PropertyListValue& value, std::string_view key, std::string_view entry) {
    plist_dict_set_item(dictionaryUnder(key), std::string{entry}.c_str(), nodeOf(value));
}

void PropertyListDocument::removeEntry(std::string_view key, std::string_view entry) {
    plist_dict_remove_item(dictionaryUnder(key), std::string{entry}.c_str());
}

void* PropertyListDocument::dictionaryUnder(std::string_view key) {
    const std::string name{key};
    plist_t found = plist_dict_get_item(root.get(), name.c_str());
    if (found == nullptr || plist_get_node_type(found) != PLIST_DICT) {
        found = plist_new_dict();
        plist_dict_set_item(root.get(), name.c_str(), found);
    }
    return found;
}

} // namespace platform::linux
