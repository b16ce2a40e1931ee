#include "app/desktop/command_output.h"

#include <QString>
#include <algorithm>
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

bool isControl(QChar letter) {
    const QChar::Category category = letter.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

// Nothing that ends a line or that a terminal obeys.
std::string onOneLine(const std::string& words) {
    QString line = QString::fromStdString(words);
    std::ranges::replace_if(line, isControl, QChar(u'?'));
    return line.toStdString();
}

std::string visible(const std::string& word) {
    std::string shown = onOneLine(word);
    return word.empty() || shown != word ? '"' + shown + '"' : word;
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
    LocalizedText shown = text;
    for (std::string& word : shown.args) {
        word = visible(word);
    }
    return passOn(Texts::of(shown).toStdString(), status);
}

int passOn(const std::string& words, int status) {
    return complainOf("ostrel", words, status);
}

int complainOf(const std::string& file, const std::string& problem, int status) {
    std::fprintf(stderr, "%s: %s\n", visible(file).c_str(), onOneLine(problem).c_str());
    return status;
}

}  // namespace ostrel
