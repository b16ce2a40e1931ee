#include "app/desktop/command_output.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <system_error>

#include "screens/texts/texts.h"

namespace ostrel {
namespace {

bool& isClosed() {
    static bool closed = false;
    return closed;
}

}  // namespace

void surviveClosedPipes() {
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

int print(const std::string& text) {
    const bool isWritten =
        std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    if (isWritten) {
        return ExitStatus::kDone;
    }
    const int error = errno;
    isClosed() = true;
    return error == EPIPE
               ? ExitStatus::kDone
               : complain({"cli.error.output %@", {std::generic_category().message(error)}},
                          ExitStatus::kFailed);
}

bool isOutputOpen() {
    return !isClosed();
}

int complain(const LocalizedText& text, int status) {
    return passOn(Texts::of(text).toStdString(), status);
}

int passOn(const std::string& words, int status) {
    std::fprintf(stderr, "ostrel: %s\n", words.c_str());
    return status;
}

}  // namespace ostrel
