#include "platform/linux/single_instance.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

#include "platform/linux/event_loop.h"
#include "platform/linux/temporary_folder.h"

namespace ostrel {
namespace {

using namespace std::chrono_literals;
using Role = SingleInstance::Role;

struct SingleInstanceTest : ::testing::Test {
    TemporaryFolder folder;
    int activations = 0;

    // Whether a second process, while this one runs its event loop, could wake the first.
    [[nodiscard]] bool secondIsHeard() const {
        const pid_t child = fork();
        if (child == 0) {
            const SingleInstance second(folder.path());
            _exit(second.role() == Role::second && second.activateFirst() ? 0 : 1);
        }
        int status = -1;
        EXPECT_TRUE(runUntil([&] { return waitpid(child, &status, WNOHANG) == child; }));
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
};

TEST_F(SingleInstanceTest, ASecondProcessBringsTheFirstForward) {
    SingleInstance first(folder.path());
    ASSERT_EQ(first.role(), Role::first);
    const Subscription watch = first.activated.subscribe([this] { ++activations; });
    for (int launch = 1; launch <= 3; ++launch) {
        EXPECT_TRUE(secondIsHeard());
        EXPECT_EQ(activations, launch);
    }
    const TemporaryFolder other;
    EXPECT_EQ(SingleInstance(other.path()).role(), Role::first);
    EXPECT_EQ(SingleInstance("/proc/self").role(), Role::first) << "which can hold no lock";
}

TEST_F(SingleInstanceTest, AFirstProcessThatHangsDoesNotHangTheSecond) {
    const SingleInstance first(folder.path());
    const SingleInstance second(folder.path());
    const auto began = std::chrono::steady_clock::now();
    EXPECT_FALSE(second.activateFirst());  // nobody runs the event loop
    const auto took = std::chrono::steady_clock::now() - began;
    EXPECT_GE(took, 1s);
    EXPECT_LE(took, 4s);
}

}  // namespace
}  // namespace ostrel
