#include "Platform/Linux/Settings/UserDefaults.h"
#include "Tests/CorvidKitCore/Printing.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

using corvid::PropertyListValue;
using platform::linux::UserDefaults;
using Dictionary = PropertyListValue::Dictionary;

/// A value that reveals a mixture of two writes: every entry is the same number.
PropertyListValue generation(std::int64_t number) {
    Dictionary entries;
    for (int index = 0; index < 200; ++index) {
        entries.emplace("entry " + std::to_string(index), number);
    }
    return PropertyListValue{entries};
}

/// The number of the write that a stored value comes from; empty for an incomplete one.
std::optional<std::int64_t> generationOf(const std::optional<PropertyListValue>& value) {
    if (!value || value->dictionary() == nullptr || value->dictionary()->empty()) {
        return std::nullopt;
    }
    const std::optional<std::int64_t> number = value->dictionary()->begin()->second.integer();
    return number && *value == generation(*number) ? number : std::nullopt;
}

class UserDefaultsCrash : public testing::Test {
protected:
    [[nodiscard]] UserDefaults open() { return UserDefaults{path, log.sink()}; }

    TemporaryFolder folder;
    std::string path = folder / "preferences.plist";
    LogRecord log;
};

constexpr int cannotFilter = 77;

/// A step of a write by its first system call, distinguished from other uses by a bit of an argument.
struct Step {
    const char* name;
    std::uint32_t call;
    std::uint32_t argument = 0;
    std::uint32_t bit = 0;
    std::int64_t survivor = 1;
};

/// From here on, the first call of that kind ends the process before the kernel executes it.
void dieAt(const Step& step) {
    const rlimit noCore{.rlim_cur = 0, .rlim_max = 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    const auto argument = static_cast<std::uint32_t>(offsetof(seccomp_data, args) + (8 * step.argument));
    const std::uint8_t unlessSet = step.bit == 0 ? 0 : 1;
    std::array<sock_filter, 6> instructions{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, step.call, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, argument),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, step.bit, 0, unlessSet),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog program{.len = instructions.size(), .filter = instructions.data()};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0) {
        std::_Exit(cannotFilter);
    }
}

class UserDefaultsKilledAt : public UserDefaultsCrash, public testing::WithParamInterface<Step> {};

TEST_P(UserDefaultsKilledAt, LeaveOneFileWholeAndCanBeWrittenAgain) {
    open().set(generation(1), "key");
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        UserDefaults defaults = open();
        dieAt(GetParam());
        defaults.set(generation(2), "key");
        std::_Exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    if (WIFEXITED(status) && WEXITSTATUS(status) == cannotFilter) {
        GTEST_SKIP() << "system calls cannot be filtered here";
    }
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGSYS) << "the write never came to this step";

    EXPECT_EQ(generationOf(open().object("key")), GetParam().survivor);
    open().set(generation(3), "key");
    EXPECT_EQ(generationOf(open().object("key")), 3);
    EXPECT_EQ(namesIn(folder.path), std::vector<std::string>{"preferences.plist"});
    EXPECT_TRUE(log.lines.empty());
}

#ifdef SYS_rename
constexpr std::uint32_t renameCall = SYS_rename;
#else
constexpr std::uint32_t renameCall = SYS_renameat;
#endif

INSTANTIATE_TEST_SUITE_P(
    Steps, UserDefaultsKilledAt,
    testing::Values(
        Step{.name = "Locking", .call = SYS_flock}, Step{.name = "Emptying", .call = SYS_ftruncate},
        Step{.name = "Writing", .call = SYS_write}, Step{.name = "Syncing", .call = SYS_fsync},
        Step{.name = "Renaming", .call = renameCall},
        Step{.name = "SyncingTheFolder", .call = SYS_openat, .argument = 2, .bit = O_DIRECTORY, .survivor = 2}),
    [](const auto& step) { return std::string{step.param.name}; });

using WholeUserDefaultsCrash = UserDefaultsCrash;

TEST_F(WholeUserDefaultsCrash, LeaveAWholeFileWithEveryFinishedWriteWhereverTheProcessIsKilled) {
    constexpr int rounds = 100;
    constexpr std::int64_t writes = 500;
    std::mt19937 random{std::random_device{}()};
    std::uniform_int_distribution<int> microseconds{0, 3000};
    std::int64_t last = 0;
    open().set(generation(last), "key");
    for (int round = 0; round < rounds || last < writes; ++round) {
        std::array<int, 2> finished{};
        ASSERT_EQ(::pipe2(finished.data(), O_CLOEXEC), 0);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            UserDefaults defaults = open();
            for (std::int64_t number = last + 1;; ++number) {
                defaults.set(generation(number), "key");
                if (::write(finished[1], &number, sizeof number) != sizeof number) {
                    std::_Exit(1);
                }
            }
        }
        ::close(finished[1]);
        std::int64_t number = 0;
        // The kill comes at a random moment after the first write: this delay is the experiment and replaces no
        // condition.
        ASSERT_EQ(::read(finished[0], &number, sizeof number), static_cast<ssize_t>(sizeof number));
        std::this_thread::sleep_for(std::chrono::microseconds{microseconds(random)});
        ::kill(child, SIGKILL);
        ASSERT_EQ(::waitpid(child, nullptr, 0), child);
        last = number;
        while (::read(finished[0], &number, sizeof number) == static_cast<ssize_t>(sizeof number)) {
            last = number;
        }
        ::close(finished[0]);

        const std::optional<std::int64_t> stored = generationOf(open().object("key"));
        ASSERT_TRUE(stored) << "round " << round;
        // The process may have died between the end of a write and its report.
        ASSERT_TRUE(*stored == last || *stored == last + 1) << "round " << round << ": " << *stored << ", " << last;
        last = *stored;
    }
    open().set(generation(-1), "key");
    EXPECT_EQ(generationOf(open().object("key")), -1);
    EXPECT_EQ(namesIn(folder.path), std::vector<std::string>{"preferences.plist"});
    EXPECT_TRUE(log.lines.empty());
}

} // namespace
