#include "platform/linux/crash_reports.h"

#include <QByteArray>
#include <QDir>
#include <algorithm>
#include <sstream>
#include <system_error>
#include <utility>

#include "platform/linux/durable_files.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

// The names of the reports that were there when they were asked for, a line each.
constexpr const char* kSeenFile = "crash-seen";

bool isSeen(const std::string& seen, const std::string& name) {
    std::istringstream lines(seen);
    for (std::string line; std::getline(lines, line);) {
        if (line == name) {
            return true;
        }
    }
    return false;
}

}  // namespace

CrashReports::CrashReports(fs::path folder) : folder_(std::move(folder)) {}

// From the oldest to the newest, as far as the clock was right.
std::vector<std::string> CrashReports::names() const {
    std::vector<std::string> found;
    std::error_code ignored;
    for (fs::directory_iterator entry(folder_, ignored), end; entry != end;
         entry.increment(ignored)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with("crash-") && name.ends_with(".txt")) {
            found.push_back(name);
        }
    }
    std::ranges::sort(found);
    return found;
}

void CrashReports::prune() const {
    const auto all = names();
    for (std::size_t i = 0; i + kMostKept < all.size(); ++i) {
        static_cast<void>(removeFile(folder_ / all[i]));
    }
}

std::optional<fs::path> CrashReports::newest() const {
    const auto all = names();
    return all.empty() ? std::nullopt : std::optional(folder_ / all.back());
}

std::optional<fs::path> CrashReports::takeUnseen() const {
    const auto all = names();
    const std::string seen = readFile(folder_ / kSeenFile).bytes;
    if (all.empty() || isSeen(seen, all.back())) {
        return std::nullopt;
    }
    std::string seenFromNow;
    for (const std::string& name : all) {
        seenFromNow += name + '\n';
    }
    static_cast<void>(replaceFile(folder_ / kSeenFile, seenFromNow));
    return folder_ / all.back();
}

fs::path defaultStateFolder() {
    const QByteArray configured = qgetenv("XDG_STATE_HOME");
    if (configured.startsWith('/')) {
        return fs::path(configured.toStdString()) / "ostrel";
    }
    return fs::path(QDir::homePath().toStdString()) / ".local" / "state" / "ostrel";
}

}  // namespace ostrel
