#include "Platform/Linux/Control/SingleInstance.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

namespace platform::linux {
namespace {

/// A session that no other test and no other run of this one has.
std::string sessionOfThisTest(const std::string& name) {
    return name + "." + std::to_string(getpid());
}

TEST(SingleInstance, OnlyOneHoldsASession) {
    const std::string session = sessionOfThisTest("one");
    const auto first = SingleInstance::acquire(session);
    EXPECT_TRUE(first);
    EXPECT_FALSE(SingleInstance::acquire(session));
    EXPECT_TRUE(SingleInstance::acquire(sessionOfThisTest("another")));
}

TEST(SingleInstance, ASessionIsFreeAgainWhenItsHolderIsDropped) {
    const std::string session = sessionOfThisTest("dropped");
    SingleInstance::acquire(session).reset();
    EXPECT_TRUE(SingleInstance::acquire(session));
}

TEST(SingleInstance, ASessionIsFreeAgainWhenItsHoldersProcessIsKilled) {
    const std::string session = sessionOfThisTest("killed");
    const pid_t child = fork();
    if (child == 0) {
        const auto held = SingleInstance::acquire(session);
        _exit(held && kill(getpid(), SIGKILL) == 0 ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the child could not take the session";
    EXPECT_TRUE(SingleInstance::acquire(session));
}

TEST(SingleInstance, LongSessionNamesAreToldApartByTheirEnds) {
    const std::string path = "/" + std::string(500, 'x') + "/" + sessionOfThisTest("wayland");
    const auto first = SingleInstance::acquire(path + "-0");
    EXPECT_TRUE(first);
    EXPECT_TRUE(SingleInstance::acquire(path + "-1"));
}

TEST(SingleInstance, ALongSessionNameIsCutOffRatherThanRefused) {
    const std::string session = sessionOfThisTest("long") + std::string(500, 'x');
    const auto first = SingleInstance::acquire(session);
    EXPECT_TRUE(first);
    EXPECT_FALSE(SingleInstance::acquire(session));
}

} // namespace
} // namespace platform::linux
