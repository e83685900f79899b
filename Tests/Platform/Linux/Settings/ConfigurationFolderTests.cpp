#include "Platform/Linux/Settings/ConfigurationFolder.h"
#include "Platform/Linux/Settings/UserDefaults.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace {

using platform::linux::configurationFolder;
using platform::linux::UserDefaults;

/// Sets or unsets a variable of the environment and puts it back afterwards.
class Variable {
public:
    Variable(const char* variableName, std::optional<std::string> value)
        : name{variableName} {
        if (const char* now = std::getenv(name)) {
            previous = now;
        }
        set(value);
    }

    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

    ~Variable() { set(previous); }

private:
    void set(const std::optional<std::string>& value) {
        if (value) {
            ::setenv(name, value->c_str(), 1);
        } else {
            ::unsetenv(name);
        }
    }

    const char* name;
    std::optional<std::string> previous;
};

std::string homeOfPasswordEntry() {
    return ::getpwuid(::getuid())->pw_dir;
}

TEST(ConfigurationFolder, IsTheOneThatTheEnvironmentNames) {
    const Variable home{"HOME", "/home/somebody"};
    const Variable folder{"XDG_CONFIG_HOME", "/somewhere/else"};
    EXPECT_EQ(configurationFolder(), "/somewhere/else");
    EXPECT_EQ(UserDefaults::standardPath(), "/somewhere/else/tessel/preferences.plist");
}

TEST(ConfigurationFolder, IsInTheHomeFolderByDefault) {
    const Variable home{"HOME", "/home/somebody"};
    const Variable folder{"XDG_CONFIG_HOME", std::nullopt};
    EXPECT_EQ(configurationFolder(), "/home/somebody/.config");
    EXPECT_EQ(UserDefaults::standardPath(), "/home/somebody/.config/tessel/preferences.plist");
}

TEST(ConfigurationFolder, IsNotOneWithARelativeOrEmptyPath) {
    const Variable home{"HOME", "/home/somebody"};
    for (const char* path : {"", "config", "./config", "~/config"}) {
        const Variable folder{"XDG_CONFIG_HOME", path};
        EXPECT_EQ(configurationFolder(), "/home/somebody/.config") << path;
    }
}

TEST(ConfigurationFolder, IsFoundInThePasswordDatabaseWithoutAHomeInTheEnvironment) {
    const Variable folder{"XDG_CONFIG_HOME", std::nullopt};
    for (const std::optional<std::string>& path :
         {std::optional<std::string>{}, std::optional<std::string>{""}, std::optional<std::string>{"relative"}}) {
        const Variable home{"HOME", path};
        EXPECT_EQ(configurationFolder(), homeOfPasswordEntry() + "/.config");
    }
}

} // namespace
