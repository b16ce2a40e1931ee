#pragma once

#include <unistd.h>

#include <array>
#include <csignal>
#include <map>
#include <string>
#include <utility>

namespace ostrel {

// Names the case that a test with random input has in hand when the process dies of it, also of an
// overflow of the stack, or hangs.
class CaseInHand {
  public:
    explicit CaseInHand(std::string description) {
        state().description = std::move(description);
        for (auto& [signal, before] : state().before) {
            struct sigaction action {};
            action.sa_handler = CaseInHand::tell;
            action.sa_flags = SA_ONSTACK;
            sigaction(signal, &action, &before);
        }
        alarm(kLongestSec);
    }
    CaseInHand(const CaseInHand&) = delete;
    CaseInHand& operator=(const CaseInHand&) = delete;
    ~CaseInHand() {
        alarm(0);
        restore();
    }

  private:
    static constexpr unsigned kLongestSec = 120;

    struct State {
        State() {
            stack_t current{};
            sigaltstack(nullptr, &current);
            if ((current.ss_flags & SS_DISABLE) != 0) {
                current = {stack.data(), 0, stack.size()};
                sigaltstack(&current, nullptr);
            }
        }

        std::string description;
        std::map<int, struct sigaction> before{{SIGABRT, {}}, {SIGALRM, {}}, {SIGSEGV, {}}};
        std::array<char, 65'536> stack{};
    };
    static State& state() {
        static State state;
        return state;
    }
    static void restore() {
        for (const auto& [signal, before] : state().before) {
            sigaction(signal, &before, nullptr);
        }
    }
    // What was wrong happens once more on return, to whoever was there before.
    static void tell(int signal) {
        const std::string& text = state().description;
        [[maybe_unused]] const auto told = write(STDERR_FILENO, text.data(), text.size());
        restore();
        if (signal == SIGALRM) {
            std::raise(signal);
        }
    }
};

}  // namespace ostrel
