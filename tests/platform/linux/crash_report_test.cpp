#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <regex>
#include <stdexcept>

#include "base/fatal.h"
#include "platform/linux/crash_handler.h"
#include "platform/linux/crash_reports.h"
#include "platform/linux/temporary_folder.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

// Not to be seen through by the optimiser.
volatile int depth = 0;
[[gnu::noinline]] int dive(int level) {
    volatile char room[512] = {};
    room[0] = static_cast<char>(level);
    return depth == 0 ? dive(level + 1) + room[0] : 0;
}

struct CrashReportTest : ::testing::Test {
    fs::path state() const { return folder.path() / "state" / "ostrel"; }

    // The signal that ends a process of its own, which writes reports and then does this.
    int signalThatEnds(const std::function<void()>& fault) const {
        const pid_t child = fork();
        if (child == 0) {
            const rlimit noCore{0, 0};
            setrlimit(RLIMIT_CORE, &noCore);
            static_cast<void>(freopen("/dev/null", "w", stderr));
            if (installCrashHandler(state(), "1.2.3") != 0) {
                _exit(1);
            }
            fault();
            _exit(2);
        }
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }
    std::string report() const {
        const auto newest = CrashReports(state()).newest();
        std::ifstream stream(newest.value_or("/nonexistent"));
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    TemporaryFolder folder;
};

TEST_F(CrashReportTest, EachKindOfFaultIsReportedAndEndsTheProcessAsItWouldHave) {
    const std::function<void()> throwOne = [] { throw std::runtime_error("private words"); };
    const struct {
        const char* what;
        std::function<void()> fault;
        int signal;
        const char* report;
    } cases[] = {
        {"segmentation", [] { raise(SIGSEGV); }, SIGSEGV, "ended by SIGSEGV at "},
        {"fatal", [] { fatal("a broken invariant"); }, SIGABRT, "reason: a broken invariant\n"},
        {"stack", [] { static_cast<void>(dive(0)); }, SIGSEGV, "ended by SIGSEGV at "},
        {"exception", [&]() noexcept { throwOne(); }, SIGABRT, "reason: St13runtime_error\n"},
    };
    for (const auto& [what, fault, signal, expected] : cases) {
        fs::remove_all(state());
        EXPECT_EQ(signalThatEnds(fault), signal) << what;
        EXPECT_NE(report().find(expected), std::string::npos) << what << ":\n" << report();
        EXPECT_EQ(report().find("private"), std::string::npos) << "a text may hold anything";
    }
}

TEST_F(CrashReportTest, SaysWhereInTheProgramAndNothingOfTheUser) {
    EXPECT_EQ(signalThatEnds([] { raise(SIGSEGV); }), SIGSEGV);
    const std::string text = report();
    EXPECT_TRUE(text.starts_with("Ostrel 1.2.3\n")) << text;
    EXPECT_TRUE(std::regex_search(text, std::regex("\n  test_platform_linux\\+0x[0-9a-f]+")))
        << text;
    EXPECT_TRUE(std::regex_search(text, std::regex("\n  libc\\.so\\.6\\+0x[0-9a-f]+ "))) << text;
    EXPECT_EQ(text.find('/'), std::string::npos) << "a path may tell who the user is:\n" << text;

    EXPECT_EQ(fs::status(*CrashReports(state()).newest()).permissions(), fs::perms(0600));
}

TEST_F(CrashReportTest, TheNewestFiveAreKeptAndEachIsToldOfOnce) {
    const CrashReports reports(state());
    EXPECT_FALSE(reports.takeUnseen()) << "no folder";
    fs::create_directories(state());
    std::ofstream(state() / "notes.txt") << "x";
    const auto crashOf = [this](int day) {
        return state() / ("crash-2026010" + std::to_string(day) + "T000000Z.txt");
    };
    for (int day = 1; day <= 6; ++day) {
        std::ofstream(crashOf(day)) << "Ostrel\n";
        EXPECT_EQ(reports.takeUnseen(), crashOf(day));
        EXPECT_FALSE(CrashReports(state()).takeUnseen()) << "nor at the start after that";
    }
    reports.prune();
    EXPECT_FALSE(fs::exists(crashOf(1)));
    EXPECT_TRUE(fs::exists(crashOf(2)) && fs::exists(state() / "notes.txt"));
}

}  // namespace
}  // namespace ostrel
