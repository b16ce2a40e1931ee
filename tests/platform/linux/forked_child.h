#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

namespace ostrel {

// Runs `body` in a child process, where it may change what holds for a whole process. Its failed
// expectations fail this test too; a body that returns false could not be set up.
template <class Body>
bool passesInChild(Body body) {
    constexpr int kSkipped = 77;
    const pid_t child = fork();
    if (child == 0) {
        const bool ran = body();
        std::fflush(nullptr);
        _exit(::testing::Test::HasFailure() ? 1 : ran ? 0 : kSkipped);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && (WEXITSTATUS(status) == 0 || WEXITSTATUS(status) == kSkipped))
        << "the child failed, status " << status;
    return !(WIFEXITED(status) && WEXITSTATUS(status) == kSkipped);
}

}  // namespace ostrel
