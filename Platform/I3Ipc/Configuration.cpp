#include "Platform/I3Ipc/Configuration.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

namespace platform::i3ipc {

namespace {

constexpr std::string_view blanks = " \t\r";
/// A variable that holds another one twice doubles a line with each such variable.
constexpr std::size_t longestLine = 4096;
/// Each "$" is compared with the variables once for each length of a name.
constexpr std::size_t longestName = 64;
/// A folder with a link to itself gives one file ever new names.
constexpr std::size_t mostFiles = 256;

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Takes the first word off a text. Quotation marks around it do not count.
std::string_view takeWord(std::string_view& text) {
    text = trimmed(text);
    std::string_view word = text.substr(0, std::min(text.find_first_of(blanks), text.size()));
    text = trimmed(text.substr(word.size()));
    if (word.size() > 1 && (word.front() == '"' || word.front() == '\'') && word.back() == word.front()) {
        word = word.substr(1, word.size() - 2);
    }
    return word;
}

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

class Reader {
public:
    explicit Reader(const Includes& includes)
        : includes(includes) {}

    void read(const ConfigurationFile& file) {
        if (files.size() >= mostFiles || !files.insert(file.path).second) {
            return;
        }
        const std::string folder = folderOf(file.path);
        // A block ends with its file.
        std::vector<Block> blocks;
        std::string whole;
        std::string_view rest = file.text;
        std::size_t number = 0;
        std::size_t first = 1;
        while (!rest.empty()) {
            ++number;
            const std::size_t end = std::min(rest.find('\n'), rest.size());
            const std::string_view line = rest.substr(0, end);
            rest.remove_prefix(std::min(end + 1, rest.size()));
            const bool goesOn = line.ends_with('\\');
            whole += goesOn ? line.substr(0, line.size() - 1) : line;
            if (!goesOn || rest.empty()) {
                if (whole.size() <= longestLine) {
                    place = {.path = file.path, .line = first};
                    readLine(trimmed(whole), blocks, folder);
                }
                whole.clear();
                first = number + 1;
            }
        }
    }

    ConfiguredBindings bound;

private:
    struct Place {
        std::string path;
        std::size_t line = 0;
    };

    struct Block {
        std::string opening;
        /// Whether its lines may bind: neither it nor one around it is another mode's, a bar's or a device's.
        bool binds = false;
    };

    void readLine(std::string_view line, std::vector<Block>& blocks, const std::string& folder) {
        if (line.empty() || line.front() == '#') {
            return;
        }
        if (line == "}") {
            if (!blocks.empty()) {
                blocks.pop_back();
            }
        } else if (line.back() == '{') {
            // It may stand on a line of its own.
            const std::string_view opening = trimmed(line.substr(0, line.size() - 1));
            std::string whole = replaced(opening.empty() ? std::string_view(former) : opening);
            const bool binds = (blocks.empty() || blocks.back().binds) && bindsInDefaultMode(whole);
            blocks.push_back({.opening = std::move(whole), .binds = binds});
        } else if (blocks.empty()) {
            carryOut(std::string(line), folder);
        } else if (blocks.back().binds) {
            carryOut(blocks.back().opening + " " + std::string(line), folder);
        }
        former = line;
    }

    /// Whether the lines of a block mean what they mean with the block's beginning before them, and may bind. Those of
    /// other modes, of bars and devices do not.
    [[nodiscard]] static bool bindsInDefaultMode(std::string_view block) {
        const std::string_view command = takeWord(block);
        return command == "bindsym" || command == "bindcode" || (command == "mode" && takeDefaultMode(block));
    }

    [[nodiscard]] static bool takeDefaultMode(std::string_view& arguments) {
        std::string_view name = takeWord(arguments);
        while (name.starts_with("--")) {
            name = takeWord(arguments);
        }
        return name == "default";
    }

    void carryOut(const std::string& line, const std::string& folder) {
        std::string_view rest = line;
        const std::string_view command = takeWord(rest);
        if (command == "set") {
            const std::string_view name = takeWord(rest);
            const std::string value = replaced(rest);
            const bool isName = name.starts_with('$') && name.size() > 1 && name.size() <= longestName;
            if (isName) {
                variables.insert_or_assign(std::string(name), value);
            }
        } else if (command == "mode") {
            if (takeDefaultMode(rest)) {
                carryOut(std::string(rest), folder);
            }
        } else if (command == "include") {
            const std::string pattern = replaced(rest);
            for (const ConfigurationFile& file : includes(pattern, folder)) {
                read(file);
            }
        } else if (command == "bindsym" || command == "bindcode") {
            const std::string arguments = replaced(rest);
            std::string_view behind = arguments;
            auto key = takeKey(behind, command == "bindcode");
            if (key) {
                bound.insert_or_assign(*std::move(key),
                                       ConfiguredBinding{.command = std::string(behind),
                                                         .definition = std::string(command) + " " + arguments,
                                                         .path = place.path,
                                                         .line = place.line});
            }
        } else if (command == "unbindsym" || command == "unbindcode") {
            const std::string arguments = replaced(rest);
            std::string_view behind = arguments;
            if (const auto key = takeKey(behind, command == "unbindcode")) {
                bound.erase(*key);
            }
        }
    }

    /// Takes the options and the combination off the arguments of a binding.
    [[nodiscard]] static std::optional<BindingKey> takeKey(std::string_view& arguments, bool isNumber) {
        BindingKey key;
        std::string_view word = takeWord(arguments);
        while (word.starts_with("--")) {
            takeOption(word, isNumber, key);
            word = takeWord(arguments);
        }
        auto combination = readCombination(word, isNumber);
        if (!combination) {
            return std::nullopt;
        }
        key.combination = *std::move(combination);
        return key;
    }

    /// Options that are not named here make no other binding of it.
    static void takeOption(std::string_view option, bool isNumber, BindingKey& key) {
        constexpr std::string_view device = "--input-device=";
        if (option == "--release") {
            key.isOnRelease = true;
        } else if (option == "--locked") {
            key.isWhileLocked = true;
        } else if (option == "--inhibited") {
            key.isWhileInhibited = true;
        } else if (option == "--to-code") {
            key.isByPlace = !isNumber;
        } else if (option.starts_with(device)) {
            std::string_view name = option.substr(device.size());
            name = takeWord(name);
            key.device = name == "*" ? std::string_view() : name;
        }
    }

    /// The text with its variables replaced, the longest name that fits first.
    [[nodiscard]] std::string replaced(std::string_view text) const {
        std::string result;
        while (!text.empty() && result.size() <= longestLine) {
            const auto variable = variableAt(text);
            if (variable != variables.end()) {
                result += variable->second;
                text.remove_prefix(variable->first.size());
            } else {
                result += text.front();
                text.remove_prefix(1);
            }
        }
        result.resize(std::min(result.size(), longestLine));
        return result;
    }

    using Variables = std::map<std::string, std::string, std::less<>>;

    [[nodiscard]] Variables::const_iterator variableAt(std::string_view text) const {
        if (text.starts_with('$')) {
            for (std::size_t length = std::min(text.size(), longestName); length > 1; --length) {
                if (const auto found = variables.find(text.substr(0, length)); found != variables.end()) {
                    return found;
                }
            }
        }
        return variables.end();
    }

    const Includes& includes;
    std::set<std::string> files;
    Variables variables;
    std::string former;
    /// Of the line that is read.
    Place place;
};

} // namespace

ConfiguredBindings configuredBindings(const ConfigurationFile& main, const Includes& includes) {
    Reader reader(includes);
    reader.read(main);
    return std::move(reader.bound);
}

KeyUse useOf(const ConfiguredBindings& bindings, const HotKeyCombination& combination) {
    KeyUse use;
    for (const auto& [key, binding] : bindings) {
        if (!combination.isSame(key.combination)) {
            continue;
        }
        const bool isParticular = !key.device.empty() || key.combination.group != 0;
        use.line = use.line == nullptr ? &binding : use.line;
        use.particular = use.particular == nullptr && isParticular ? &binding : use.particular;
        use.isOnRelease = use.isOnRelease || key.isOnRelease;
    }
    return use;
}

const ConfiguredBinding* bindingOf(const ConfiguredBindings& bindings, const HotKeyCombination& combination) {
    return useOf(bindings, combination).line;
}

} // namespace platform::i3ipc
