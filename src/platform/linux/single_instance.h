#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "base/signal.h"
#include "platform/linux/file_descriptor.h"

class QSocketNotifier;

namespace ostrel {

// One process per preferences folder and user. The first holds a lock on a file in the folder until
// it ends, however it ends; the others can ask it to come forward.
//
// Where the folder cannot hold a lock (it is read-only), every process is the first.
class SingleInstance {
  public:
    enum class Role { first, second };

    // How long a second process waits for the first, in all.
    static constexpr std::chrono::seconds kPatience{2};

    explicit SingleInstance(const std::filesystem::path& folder);
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;
    ~SingleInstance();

    [[nodiscard]] Role role() const { return role_; }

    // Whether a process is the first there, for those who are none themselves. Makes nothing.
    [[nodiscard]] static bool isTaken(const std::filesystem::path& folder);

    // Asks the first process to come forward; whether it answered. Blocks up to kPatience.
    [[nodiscard]] bool activateFirst() const;

    // In the first process: the user launched another one.
    Signal<> activated;

  private:
    struct Caller;

    void listen();
    void accept();
    void hear(const Caller& caller);

    std::string address_;  // of the socket, in Linux's abstract namespace
    Role role_ = Role::first;
    FileDescriptor lock_;
    FileDescriptor listener_;
    std::unique_ptr<QSocketNotifier> notifier_;
    std::vector<std::unique_ptr<Caller>> callers_;
};

}  // namespace ostrel
