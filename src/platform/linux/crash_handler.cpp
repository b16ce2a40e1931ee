#include "platform/linux/crash_handler.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <string_view>
#include <typeinfo>

#include "base/fatal.h"
#include "platform/linux/durable_files.h"

namespace ostrel {
namespace {

struct NamedSignal {
    int number;
    std::string_view name;
};

constexpr NamedSignal kSignals[] = {{SIGSEGV, "SIGSEGV"},
                                    {SIGABRT, "SIGABRT"},
                                    {SIGBUS, "SIGBUS"},
                                    {SIGFPE, "SIGFPE"},
                                    {SIGILL, "SIGILL"}};

// A fault inside the handler may leave it waiting for ever.
constexpr unsigned kLongestSec = 3;
constexpr int kMostFrames = 64;
constexpr std::size_t kStackBytes = std::size_t{64} * 1024;

// Text that needs no memory but its own: all that a signal handler may make. What is too long for
// it is cut off.
class FixedText {
  public:
    void clear() { length_ = 0; }
    void put(std::string_view text) {
        const std::size_t count = std::min(text.size(), bytes_.size() - 1 - length_);
        std::copy_n(text.begin(), count, bytes_.begin() + static_cast<std::ptrdiff_t>(length_));
        length_ += count;
        bytes_[length_] = '\0';
    }
    // With leading zeros where it has fewer digits.
    void putNumber(std::uint64_t number, std::size_t leastDigits, unsigned base = 10) {
        std::array<char, 24> digits{};
        std::size_t first = digits.size();
        do {
            digits[--first] = "0123456789abcdef"[number % base];
            number /= base;
        } while (number != 0 || digits.size() - first < leastDigits);
        put({digits.data() + first, digits.size() - first});
    }
    [[nodiscard]] std::string_view text() const { return {bytes_.data(), length_}; }
    [[nodiscard]] const char* data() const { return bytes_.data(); }

  private:
    std::array<char, 4096> bytes_{};
    std::size_t length_ = 0;
};

// All that the handler reads was made before.
struct Prepared {
    FixedText folder;
    FixedText version;
    FixedText reason;
    std::terminate_handler previousTerminate = nullptr;
    volatile std::sig_atomic_t isWriting = 0;
    FixedText line;
    std::array<void*, kMostFrames> frames{};
};
Prepared prepared;
alignas(16) std::array<char, kStackBytes> stackOfItsOwn;

void writeLine(int file) {
    prepared.line.put("\n");
    std::string_view rest = prepared.line.text();
    while (!rest.empty()) {
        const ssize_t count = write(file, rest.data(), rest.size());
        if (count <= 0) {
            return;
        }
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
    prepared.line.clear();
}

// 20261121T203800Z. The library's functions for this are not for signal handlers.
void putTime(FixedText& text) {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const std::chrono::sys_seconds time{std::chrono::seconds{now.tv_sec}};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    text.putNumber(static_cast<std::uint64_t>(static_cast<int>(date.year())), 4);
    text.putNumber(static_cast<unsigned>(date.month()), 2);
    text.putNumber(static_cast<unsigned>(date.day()), 2);
    text.put("T");
    text.putNumber(static_cast<std::uint64_t>(clock.hours().count()), 2);
    text.putNumber(static_cast<std::uint64_t>(clock.minutes().count()), 2);
    text.putNumber(static_cast<std::uint64_t>(clock.seconds().count()), 2);
    text.put("Z");
}

int openReport() {
    FixedText& path = prepared.line;
    path.clear();
    path.put(prepared.folder.text());
    path.put("/crash-");
    putTime(path);
    path.put(".txt");
    const int file =
        open(path.data(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    path.clear();
    return file;
}

// "libQt6Gui.so.6+0x1f30 QWindow::event": the whole path of a file could tell who the user is.
void putPlace(FixedText& line, void* address) {
    Dl_info info{};
    if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) {
        line.put("?");
        return;
    }
    const std::string_view file = info.dli_fname;
    line.put(file.substr(file.rfind('/') + 1));  // without a slash the whole
    line.put("+0x");
    line.putNumber(reinterpret_cast<std::uintptr_t>(address) -
                       reinterpret_cast<std::uintptr_t>(info.dli_fbase),
                   1, 16);
    if (info.dli_sname != nullptr) {
        line.put(" ");
        line.put(info.dli_sname);
    }
}

void writeReport(int file, std::string_view signal) {
    FixedText& line = prepared.line;
    line.put("Ostrel ");
    line.put(prepared.version.text());
    writeLine(file);
    line.put("ended by ");
    line.put(signal);
    line.put(" at ");
    putTime(line);
    writeLine(file);
    if (!prepared.reason.text().empty()) {
        line.put("reason: ");
        line.put(prepared.reason.text());
        writeLine(file);
    }
    const int count = backtrace(prepared.frames.data(), kMostFrames);
    for (int i = 0; i < count; ++i) {
        line.put("  ");
        putPlace(line, prepared.frames[static_cast<std::size_t>(i)]);
        writeLine(file);
    }
}

void endAfter(unsigned seconds) {
    struct sigaction byDefault {};
    byDefault.sa_handler = SIG_DFL;
    sigaction(SIGALRM, &byDefault, nullptr);
    sigset_t alarms;
    sigemptyset(&alarms);
    sigaddset(&alarms, SIGALRM);
    sigprocmask(SIG_UNBLOCK, &alarms, nullptr);
    alarm(seconds);
}

void handle(int number) {
    const bool isFaultOfTheHandler = prepared.isWriting != 0;
    if (!isFaultOfTheHandler) {
        prepared.isWriting = 1;
        endAfter(kLongestSec);
        const int file = openReport();
        if (file >= 0) {
            const auto* const found = std::ranges::find(kSignals, number, &NamedSignal::number);
            writeReport(file, found->name);
            close(file);
        }
    }
    // It has its default action back, which comes as soon as this returns.
    raise(number);
}

void noteReason(std::string_view reason) {
    prepared.reason.clear();
    prepared.reason.put(reason);
}

[[noreturn]] void terminated() {
    const std::type_info* type = abi::__cxa_current_exception_type();
    noteReason(type != nullptr ? type->name() : "terminated");
    prepared.previousTerminate();
    std::abort();
}

}  // namespace

bool areFaultsSeenBySanitizer() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#else
    return false;
#endif
}

int installCrashHandler(const std::filesystem::path& folder, std::string_view version) {
    if (const int error = makeFolder(folder); error != 0) {
        return error;
    }
    prepared.folder.put(folder.native());
    prepared.version.put(version);
    // The first call loads what it needs.
    static_cast<void>(backtrace(prepared.frames.data(), 1));

    stack_t stack{};
    stack.ss_sp = stackOfItsOwn.data();
    stack.ss_size = stackOfItsOwn.size();
    sigaltstack(&stack, nullptr);
    struct sigaction action {};
    action.sa_handler = handle;
    action.sa_flags = SA_ONSTACK | static_cast<int>(SA_RESETHAND);
    for (const NamedSignal& signal : kSignals) {
        sigaction(signal.number, &action, nullptr);
    }
    prepared.previousTerminate = std::set_terminate(terminated);
    onFatal(noteReason);
    return 0;
}

}  // namespace ostrel
