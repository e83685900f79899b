#include "Platform/Linux/Localization.h"

#include <libintl.h>

#include <clocale>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <utility>

// The C library remembers what it has looked up; counting this up makes it forget (GNU gettext manual, "Being a
// `gettext` grok").
extern "C" int _nl_msg_cat_cntr; // NOLINT(bugprone-reserved-identifier,readability-identifier-naming)

namespace platform::linux {

namespace {

/// A locale in which the C library translates. In "C" it does not, since glibc 2.41 neither in "C.UTF-8", and a system
/// need not have others. So this is "C" in all but its name.
__locale_struct translatingLocale() {
    // This one is the library's own, there for good (newlocale(3)).
    __locale_struct result = *newlocale(LC_ALL_MASK, "C", nullptr);
    result.__names[LC_MESSAGES] = "en";
    return result;
}

/// Has the C library look for messages in other languages than locale and environment say, in this thread.
class InLanguages {
public:
    explicit InLanguages(const std::string& languages)
        : localeBefore(uselocale(&locale)) {
        if (const char* value = std::getenv(variable)) { // NOLINT(concurrency-mt-unsafe)
            before = value;
        }
        set(languages);
    }
    InLanguages(const InLanguages&) = delete;
    InLanguages& operator=(const InLanguages&) = delete;
    ~InLanguages() {
        if (before) {
            set(*before);
        } else {
            unsetenv(variable); // NOLINT(concurrency-mt-unsafe)
            ++_nl_msg_cat_cntr;
        }
        uselocale(localeBefore);
    }

private:
    static constexpr const char* variable = "LANGUAGE";

    static void set(const std::string& languages) {
        setenv(variable, languages.c_str(), 1); // NOLINT(concurrency-mt-unsafe)
        ++_nl_msg_cat_cntr;
    }

    __locale_struct locale = translatingLocale();
    locale_t localeBefore;
    std::optional<std::string> before;
};

/// How a catalogue names a message with a context (GNU gettext manual, "Contexts").
std::string identifier(std::string_view table, std::string_view key) {
    std::string result(table);
    result += '\004';
    result += key;
    return result;
}

} // namespace

Localization::Localization(std::string domain, const std::filesystem::path& folder,
                           std::span<const std::string> languages)
    : domain(std::move(domain)) {
    for (const std::string& language : languages) {
        this->languages += language + ":";
    }
    this->languages += "en";
    bindtextdomain(this->domain.c_str(), folder.c_str());
    bind_textdomain_codeset(this->domain.c_str(), "UTF-8");
}

std::string Localization::text(std::string_view table, std::string_view key) const {
    const InLanguages inLanguages(languages);
    const std::string message = identifier(table, key);
    const char* translation = dgettext(domain.c_str(), message.c_str());
    return translation == message.c_str() ? std::string(key) : std::string(translation);
}

std::string Localization::text(std::string_view table, std::string_view key, std::uint64_t count) const {
    const InLanguages inLanguages(languages);
    const std::string message = identifier(table, key);
    const char* translation = dngettext(domain.c_str(), message.c_str(), message.c_str(), count);
    std::string result = translation == message.c_str() ? std::string(key) : std::string(translation);
    constexpr std::string_view placeholder = "%n";
    if (const std::size_t place = result.find(placeholder); place != std::string::npos) {
        result.replace(place, placeholder.size(), std::to_string(count));
    }
    return result;
}

} // namespace platform::linux
