#include "app/desktop/command_client.h"

#include <QCoreApplication>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <optional>

#include "app/control/control_report.h"
#include "app/control/control_status.h"
#include "app/control/pause_argument.h"
#include "app/control/setting_values.h"
#include "app/desktop/command_output.h"
#include "app/desktop/known_languages.h"
#include "app/desktop/running_instance.h"
#include "app/desktop/status_text.h"
#include "app/desktop/status_watch.h"
#include "app/desktop/stored_documents.h"
#include "app/simulator/input_text.h"
#include "core/settings/settings_store.h"

namespace ostrel {
namespace {

using Id = Command::Id;
using Answer = RunningInstance::Answer;

template <class Record>
std::optional<Record> decoded(const std::string& text) {
    const std::optional<Json> json = parseJson(text);
    return json ? JsonCodec<Record>::decode(*json) : std::nullopt;
}

int exitStatusOf(const ControlOutcome& outcome) {
    return outcome.kind == ControlOutcome::Kind::invalid ? ExitStatus::kUsage : ExitStatus::kFailed;
}

class Client {
  public:
    Client(const CommandLine& line, const StoredDocuments& documents)
        : line_(line), documents_(documents) {}

    [[nodiscard]] int run() const;

  private:
    // What to do with the text of the answer.
    using Use = std::function<int(const std::string& text)>;
    using Stored = std::function<ControlOutcome()>;

    [[nodiscard]] std::string argument(std::size_t index, const char* otherwise = "") const {
        return index < line_.arguments.size() ? line_.arguments[index] : otherwise;
    }

    [[nodiscard]] int fail(const Answer& answer) const;
    [[nodiscard]] int perform(const char* method, const QVariantList& arguments = {}) const;
    // From the documents where nothing runs.
    [[nodiscard]] int fetch(const char* method, const QVariantList& arguments, const Stored& stored,
                            const Use& use) const;
    [[nodiscard]] int status() const;
    [[nodiscard]] int report() const;
    [[nodiscard]] int getSettings(const Use& use) const;
    [[nodiscard]] int showSettings(const std::string& document) const;
    [[nodiscard]] int setSetting() const;
    [[nodiscard]] int importSettings() const;

    const CommandLine& line_;
    const StoredDocuments& documents_;
    RunningInstance instance_;
};

QString qt(const std::string& text) {
    return QString::fromStdString(text);
}

int Client::fail(const Answer& answer) const {
    switch (answer.kind) {
        case Answer::Kind::invalid:
            return passOn(answer.text, ExitStatus::kUsage);
        case Answer::Kind::silent:
            return complain({"cli.error.no_answer", {}}, ExitStatus::kUnreachable);
        case Answer::Kind::noBus:
            return complain({"cli.error.no_bus", {}}, ExitStatus::kUnreachable);
        case Answer::Kind::absent:
            return documents_.areInUse()
                       ? complain({"cli.error.no_answer", {}}, ExitStatus::kUnreachable)
                       : complain({"cli.error.not_running", {}}, ExitStatus::kNotRunning);
        case Answer::Kind::refused:
        case Answer::Kind::done:
            break;
    }
    return passOn(answer.text, ExitStatus::kFailed);
}

int Client::perform(const char* method, const QVariantList& arguments) const {
    const Answer answer = instance_.ask(QString::fromLatin1(method), arguments);
    return answer.isDone() ? ExitStatus::kDone : fail(answer);
}

int Client::fetch(const char* method, const QVariantList& arguments, const Stored& stored,
                  const Use& use) const {
    const Answer answer = instance_.ask(QString::fromLatin1(method), arguments);
    if (answer.isDone()) {
        return use(answer.text);
    }
    const bool isNobodyThere =
        answer.kind == Answer::Kind::absent || answer.kind == Answer::Kind::noBus;
    if (!isNobodyThere || documents_.areInUse()) {
        return fail(answer);
    }
    const ControlOutcome outcome = stored();
    return outcome.isDone() ? use(outcome.text) : complain(outcome.reason, exitStatusOf(outcome));
}

int Client::status() const {
    const auto told = [this](const std::string& json, auto tell) {
        const auto status = decoded<ControlStatus>(json);
        return line_.has("--json") || !status ? json : tell(*status);
    };
    const bool isCompact = line_.has("--compact");
    const auto shortly = [&](const std::string& json) {
        return told(json, isCompact ? StatusText::compact : StatusText::line);
    };
    if (line_.has("--watch")) {
        StatusWatch watch(instance_, shortly);
        const StatusWatch::End end = watch.run();
        return end.begun.isDone() ? end.status : fail(end.begun);
    }
    const Answer answer = instance_.ask(QStringLiteral("Status"));
    if (!answer.isDone()) {
        return fail(answer);
    }
    if (isCompact || line_.has("--json")) {
        return print(shortly(answer.text) + '\n');
    }
    return print(
        told(answer.text, [](const ControlStatus& status) { return StatusText::lines(status); }));
}

int Client::report() const {
    const bool isCsv = line_.has("--csv");
    const std::string range = line_.has("--range") ? line_.options.at("--range") : "weekly";
    const std::string format = isCsv ? "csv" : "json";
    return fetch(
        "Report", {qt(range), qt(format)}, [&] { return documents_.report(range, format); },
        [&](const std::string& text) {
            if (isCsv) {
                return print(text);
            }
            const auto report = decoded<ControlReport>(text);
            return print(line_.has("--json") || !report ? text + '\n' : StatusText::lines(*report));
        });
}

int Client::getSettings(const Use& use) const {
    return fetch(
        "GetSettings", {},
        [this] { return ControlOutcome::done(SettingValues::document(documents_.settings())); },
        use);
}

int Client::showSettings(const std::string& document) const {
    const auto settings = SettingsStore::parse(document);
    if (!settings) {
        return complain({"cli.error.document", {}}, ExitStatus::kFailed);
    }
    const auto valueOf = [&settings](std::string_view name) {
        return SettingValues::valueOf(*settings, name).value_or(std::string());
    };
    if (!line_.arguments.empty()) {
        return print(valueOf(argument(0)) + '\n');
    }
    std::string all;
    for (const std::string_view name : SettingValues::names()) {
        all += std::string(name) + '=' + valueOf(name) + '\n';
    }
    return print(all);
}

int Client::setSetting() const {
    const std::string name = argument(0);
    const std::string value = argument(1);
    const auto change = [&](SettingsStore& store) {
        const auto changed =
            SettingValues::change(*store.settings(), name, value, knownLanguages());
        if (!changed.settings) {
            return ControlOutcome::invalid(changed.problem);
        }
        store.update([&](SettingsModel& settings) { settings = *changed.settings; });
        return ControlOutcome::done();
    };
    return fetch(
        "SetSetting", {qt(name), qt(value)}, [&] { return documents_.change(change); },
        [](const std::string&) { return ExitStatus::kDone; });
}

int Client::importSettings() const {
    const auto document = readInput(argument(0));
    if (!document) {
        return complain({"cli.error.read %@", {argument(0)}}, ExitStatus::kFailed);
    }
    if (!SettingsStore::merged(SettingsModel(), *document)) {
        return complain({"cli.error.document", {}}, ExitStatus::kUsage);
    }
    const auto change = [&](SettingsStore& store) {
        store.update([&](SettingsModel& settings) {
            settings = SettingsStore::merged(settings, *document).value_or(settings);
        });
        return ControlOutcome::done();
    };
    return fetch(
        "ImportSettings", {qt(*document)}, [&] { return documents_.change(change); },
        [](const std::string&) { return ExitStatus::kDone; });
}

int Client::run() const {
    switch (line_.command->id) {
        case Id::status:
            return status();
        case Id::pause:
            return perform("Pause", {qt(argument(0, "indefinite"))});
        case Id::resume:
            return perform("Resume");
        case Id::startBreak:
            return perform("Break", {qt(argument(0))});
        case Id::skip:
            return perform("Skip");
        case Id::postpone:
            return perform("Postpone");
        case Id::report:
            return report();
        case Id::settingsGet:
            return getSettings([this](const std::string& text) { return showSettings(text); });
        case Id::settingsSet:
            return setSetting();
        case Id::settingsExport:
            return getSettings([](const std::string& text) { return print(text); });
        case Id::settingsImport:
            return importSettings();
        default:
            return ExitStatus::kUsage;  // not ours
    }
}

// What is wrong with the words themselves, whether anything runs or not; without a key nothing is.
LocalizedText problemOf(const CommandLine& line, const StoredDocuments& documents) {
    const auto word = [&line](std::size_t index) { return line.arguments[index]; };
    switch (line.command->id) {
        case Id::pause:
            return line.arguments.empty() || parsePause(word(0))
                       ? LocalizedText{}
                       : LocalizedText{"cli.error.pause %@", {word(0)}};
        case Id::startBreak:
            return enumFrom<BreakKind>(word(0)) ? LocalizedText{}
                                                : LocalizedText{"cli.error.kind %@", {word(0)}};
        case Id::report: {
            const auto range = line.options.find("--range");
            return range == line.options.end() || enumFrom<ReportSummaryView::Range>(range->second)
                       ? LocalizedText{}
                       : LocalizedText{"cli.error.range %@", {range->second}};
        }
        case Id::settingsGet:
            return line.arguments.empty() || SettingValues::valueOf({}, word(0))
                       ? LocalizedText{}
                       : LocalizedText{"cli.setting.unknown %@", {word(0)}};
        case Id::settingsSet:
            return SettingValues::change(documents.settings(), word(0), word(1), knownLanguages())
                .problem;
        default:
            return {};
    }
}

}  // namespace

int runClientCommand(int& argc, char** argv, const CommandLine& line,
                     const StoredDocuments& documents) {
    if (const LocalizedText problem = problemOf(line, documents); !problem.key.empty()) {
        return complain(problem, ExitStatus::kUsage);
    }
    const QCoreApplication application(argc, argv);
    return Client(line, documents).run();
}

}  // namespace ostrel
