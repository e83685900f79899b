#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <system_error>

namespace filesystem = std::filesystem;

TemporaryFolder::TemporaryFolder()
    : path{filesystem::temp_directory_path() / "tessel-test-XXXXXX"} {
    if (::mkdtemp(path.data()) == nullptr) {
        throw std::system_error{errno, std::generic_category(), path};
    }
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    for (const auto& entry : filesystem::recursive_directory_iterator{path, ignored}) {
        if (entry.symlink_status(ignored).type() == filesystem::file_type::directory) {
            filesystem::permissions(entry, filesystem::perms::owner_all, ignored);
        }
    }
    filesystem::remove_all(path, ignored);
}

std::string contentsOf(const std::string& file) {
    std::ifstream stream{file, std::ios::binary};
    EXPECT_TRUE(stream.is_open()) << file;
    return {std::istreambuf_iterator<char>{stream}, {}};
}

void write(const std::string& file, std::string_view contents) {
    std::ofstream stream{file, std::ios::binary};
    stream << contents;
    ASSERT_TRUE(stream.flush().good()) << file;
}

std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : filesystem::directory_iterator{folder}) {
        names.push_back(entry.path().filename());
    }
    std::ranges::sort(names);
    return names;
}

mode_t modeOf(const std::string& path) {
    struct stat file{};
    EXPECT_EQ(::lstat(path.c_str(), &file), 0) << path;
    return file.st_mode & 07777U;
}

void inChildProcess(const std::function<void()>& body) {
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        body();
        std::cout.flush();
        std::_Exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "the body failed, status " << status;
}

void asOrdinaryUser(const TemporaryFolder& folder, const std::function<void()>& body) {
    constexpr uid_t nobody = 65534;
    const bool isSuperuser = ::geteuid() == 0;
    if (isSuperuser) {
        ASSERT_EQ(::chown(folder.path.c_str(), nobody, nobody), 0);
    }
    inChildProcess([&] {
        if (isSuperuser) {
            ASSERT_EQ(::setresgid(nobody, nobody, nobody), 0);
            ASSERT_EQ(::setresuid(nobody, nobody, nobody), 0);
        }
        body();
    });
}
