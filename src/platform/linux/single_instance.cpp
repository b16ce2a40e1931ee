#include "platform/linux/single_instance.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <thread>

#include "platform/linux/durable_files.h"

namespace ostrel {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr const char* kLockFile = "ostrel.lock";
constexpr std::string_view kActivate = "activate";
constexpr std::string_view kAnswer = "activated";
constexpr std::size_t kMostCallers = 8;
// Between two attempts to reach a first process that holds the lock but does not listen yet.
constexpr milliseconds kRetryAfter{20};

struct Address {
    sockaddr_un name{};
    socklen_t length = 0;
};

// A leading zero byte makes the name abstract: no file, gone with its process.
Address abstractAddress(std::string_view text) {
    Address address;
    address.name.sun_family = AF_UNIX;
    std::copy(text.begin(), text.end(), address.name.sun_path + 1);
    address.length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + text.size());
    return address;
}

const sockaddr* generic(const Address& address) {
    return reinterpret_cast<const sockaddr*>(&address.name);
}

FileDescriptor newSocket() {
    return FileDescriptor(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

// Any user may use any abstract name.
bool isSameUser(int socket) {
    ucred peer{};
    socklen_t length = sizeof peer;
    return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &length) == 0 &&
           peer.uid == geteuid();
}

// The folder itself, by whatever path it is reached.
std::string addressFor(const std::filesystem::path& folder) {
    struct stat status {};
    static_cast<void>(stat(folder.c_str(), &status));
    return "ostrel-" + std::to_string(geteuid()) + "-" + std::to_string(status.st_dev) + "-" +
           std::to_string(status.st_ino);
}

bool tell(int socket, std::string_view text) {
    return send(socket, text.data(), text.size(), MSG_NOSIGNAL) ==
           static_cast<ssize_t>(text.size());
}

std::string hearOn(int socket) {
    std::array<char, 32> text{};
    const ssize_t length = recv(socket, text.data(), text.size(), 0);
    return {text.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

bool waitFor(int socket, short event, steady_clock::time_point end) {
    while (true) {
        const auto left = std::chrono::ceil<milliseconds>(end - steady_clock::now()).count();
        pollfd wanted{.fd = socket, .events = event, .revents = 0};
        const int ready = poll(&wanted, 1, static_cast<int>(std::max<std::int64_t>(left, 0)));
        if (ready >= 0 || errno != EINTR) {
            return ready > 0;
        }
    }
}

}  // namespace

struct SingleInstance::Caller {
    explicit Caller(FileDescriptor accepted)
        : socket(std::move(accepted)),
          notifier(new QSocketNotifier(socket.get(), QSocketNotifier::Read)) {}
    Caller(const Caller&) = delete;
    Caller& operator=(const Caller&) = delete;
    // It may be the notifier that is telling right now.
    ~Caller() {
        notifier->setEnabled(false);
        notifier->deleteLater();
    }
    FileDescriptor socket;
    QSocketNotifier* notifier;
};

SingleInstance::SingleInstance(const std::filesystem::path& folder) {
    static_cast<void>(makeFolder(folder));
    address_ = addressFor(folder);
    const std::filesystem::path file = folder / kLockFile;
    lock_ = FileDescriptor(
        open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (lock_ && flock(lock_.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        role_ = Role::second;
    } else {
        listen();
    }
}

SingleInstance::~SingleInstance() = default;

// A shared lock, so that two that look at once do not see each other.
bool SingleInstance::isTaken(const std::filesystem::path& folder) {
    const std::filesystem::path file = folder / kLockFile;
    const FileDescriptor lock(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    return lock && flock(lock.get(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

void SingleInstance::listen() {
    const Address address = abstractAddress(address_);
    listener_ = newSocket();
    if (!listener_ || bind(listener_.get(), generic(address), address.length) != 0 ||
        ::listen(listener_.get(), kMostCallers) != 0) {
        listener_.close();
        return;
    }
    notifier_ = std::make_unique<QSocketNotifier>(listener_.get(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { accept(); });
}

void SingleInstance::accept() {
    FileDescriptor socket(accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!socket || !isSameUser(socket.get())) {
        return;
    }
    if (callers_.size() == kMostCallers) {
        callers_.erase(callers_.begin());  // it had its time
    }
    const auto& caller = callers_.emplace_back(std::make_unique<Caller>(std::move(socket)));
    QObject::connect(caller->notifier, &QSocketNotifier::activated, caller->notifier,
                     [this, from = caller.get()] { hear(*from); });
}

void SingleInstance::hear(const Caller& caller) {
    const bool asks = hearOn(caller.socket.get()) == kActivate;
    if (asks) {
        static_cast<void>(tell(caller.socket.get(), kAnswer));
    }
    std::erase_if(callers_, [&caller](const auto& known) { return known.get() == &caller; });
    if (asks) {
        activated.send();
    }
}

bool SingleInstance::activateFirst() const {
    const Address address = abstractAddress(address_);
    const auto end = steady_clock::now() + kPatience;
    const FileDescriptor socket = newSocket();
    if (!socket) {
        return false;
    }
    while (connect(socket.get(), generic(address), address.length) != 0) {
        if (steady_clock::now() + kRetryAfter > end) {
            return false;
        }
        std::this_thread::sleep_for(kRetryAfter);
    }
    return isSameUser(socket.get()) && tell(socket.get(), kActivate) &&
           waitFor(socket.get(), POLLIN, end) && hearOn(socket.get()) == kAnswer;
}

}  // namespace ostrel
