#include "platform/linux/single_instance.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <fstream>
#include <functional>
#include <string>

#include "platform/linux/event_loop.h"
#include "platform/linux/temporary_folder.h"

namespace ostrel {
namespace {

using namespace std::chrono_literals;
using Role = SingleInstance::Role;

// Runs `body` in another process while this one runs its event loop; what it returned.
int inOtherProcess(const std::function<int()>& body) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(body());
    }
    int status = -1;
    EXPECT_TRUE(runUntil([&] { return waitpid(child, &status, WNOHANG) == child; }));
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

struct SingleInstanceTest : ::testing::Test {
    TemporaryFolder folder;
    int activations = 0;

    int launchSecond() const {
        return inOtherProcess([&] {
            const SingleInstance second(folder.path());
            return second.role() == Role::second && second.activateFirst() ? 0 : 1;
        });
    }

    // The name of the socket that belongs to the folder, from the system's list.
    std::string socketName() const {
        struct stat status {};
        EXPECT_EQ(stat(folder.path().c_str(), &status), 0);
        std::ifstream list("/proc/net/unix");
        for (std::string word; list >> word;) {
            if (word.starts_with("@") && word.ends_with("-" + std::to_string(status.st_ino))) {
                return word.substr(1);
            }
        }
        return {};
    }
};

int connectTo(const std::string& name) {
    const int caller = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    name.copy(address.sun_path + 1, sizeof address.sun_path - 1);
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
    EXPECT_EQ(connect(caller, reinterpret_cast<sockaddr*>(&address), length), 0);
    return caller;
}

TEST_F(SingleInstanceTest, ASecondProcessBringsTheFirstForward) {
    SingleInstance first(folder.path());
    ASSERT_EQ(first.role(), Role::first);
    const Subscription watch = first.activated.subscribe([this] { ++activations; });
    for (int launch = 1; launch <= 3; ++launch) {
        EXPECT_EQ(launchSecond(), 0);
        EXPECT_EQ(activations, launch);
    }
    const TemporaryFolder other;
    EXPECT_EQ(SingleInstance(other.path()).role(), Role::first);
    EXPECT_EQ(SingleInstance("/proc/self").role(), Role::first) << "which can hold no lock";
}

TEST_F(SingleInstanceTest, TheLockGoesWithAProcessThatIsKilled) {
    std::array<int, 2> ready{};
    ASSERT_EQ(pipe2(ready.data(), O_CLOEXEC), 0);
    const pid_t first = fork();
    if (first == 0) {
        const SingleInstance instance(folder.path());
        static_cast<void>(write(ready[1], "", 1));
        pause();
        _exit(0);
    }
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    EXPECT_EQ(SingleInstance(folder.path()).role(), Role::second);
    kill(first, SIGKILL);
    waitpid(first, nullptr, 0);
    EXPECT_EQ(SingleInstance(folder.path()).role(), Role::first);
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

TEST_F(SingleInstanceTest, CallersWithNothingToSayDoNotShutOthersOut) {
    SingleInstance first(folder.path());
    const Subscription watch = first.activated.subscribe([this] { ++activations; });
    const std::string name = socketName();
    for (int i = 0; i < 20; ++i) {
        const int caller = connectTo(name);
        if (i % 2 == 0) {
            EXPECT_EQ(send(caller, "nonsense", 8, 0), 8);
            close(caller);
        }
        runFor(2ms);
    }
    EXPECT_EQ(activations, 0);
    EXPECT_EQ(launchSecond(), 0);
    EXPECT_EQ(activations, 1);
}

TEST_F(SingleInstanceTest, AnotherUserIsNotHeard) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can become another user";
    }
    SingleInstance first(folder.path());
    const Subscription watch = first.activated.subscribe([this] { ++activations; });
    const std::string name = socketName();
    const int heard = inOtherProcess([&] {
        if (setuid(65534) != 0) {
            return 1;
        }
        const int caller = connectTo(name);
        char answer = 0;
        static_cast<void>(send(caller, "activate", 8, MSG_NOSIGNAL));
        return recv(caller, &answer, 1, 0) > 0 ? 2 : 0;
    });
    EXPECT_EQ(heard, 0);
    EXPECT_EQ(activations, 0);
}

}  // namespace
}  // namespace ostrel
