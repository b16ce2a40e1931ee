#include "platform/linux/single_instance.h"

#include <gtest/gtest.h>

#include <chrono>

#include "platform/linux/event_loop.h"
#include "platform/linux/temporary_folder.h"

namespace ostrel {

using namespace std::chrono_literals;

TEST(SingleInstanceTest, AFirstProcessThatHangsDoesNotHangTheSecond) {
    using Role = SingleInstance::Role;
    const TemporaryFolder folder;
    const SingleInstance first(folder.path());
    EXPECT_EQ(first.role(), Role::first);
    const SingleInstance second(folder.path());
    EXPECT_EQ(second.role(), Role::second);
    const auto began = std::chrono::steady_clock::now();
    EXPECT_FALSE(second.activateFirst());  // nobody runs the event loop
    const auto took = std::chrono::steady_clock::now() - began;
    EXPECT_GE(took, 1s);
    EXPECT_LE(took, 4s);
    EXPECT_EQ(SingleInstance(TemporaryFolder().path()).role(), Role::first);
    EXPECT_EQ(SingleInstance("/proc/self").role(), Role::first) << "which can hold no lock";
}

}  // namespace ostrel
