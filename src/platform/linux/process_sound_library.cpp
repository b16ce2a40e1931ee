#include "platform/linux/process_sound_library.h"

#include <unistd.h>

#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <array>
#include <fstream>
#include <string_view>
#include <utility>

namespace ostrel {
namespace {

// A killed process ends as soon as the system gets to it.
constexpr int kKillPatienceMs = 1000;

bool beginsAsAiff(const std::filesystem::path& file) {
    std::array<char, 12> head{};
    std::ifstream(file, std::ios::binary).read(head.data(), head.size());
    const std::string_view text(head.data(), head.size());
    return text.substr(0, 4) == "FORM" && text.substr(8) == "AIFF";
}

class ProcessSound : public Sound {
  public:
    ProcessSound(QString player, QString file)
        : player_(std::move(player)), file_(std::move(file)) {}
    ProcessSound(const ProcessSound&) = delete;
    ProcessSound& operator=(const ProcessSound&) = delete;
    ~ProcessSound() override { stop(); }

    [[nodiscard]] bool isPlaying() const override {
        return process_ && process_->state() != QProcess::NotRunning;
    }
    void rewind() override {
        if (isPlaying()) {
            stop();
            start();
        }
    }
    void play() override {
        if (!isPlaying()) {
            start();
        }
    }

  private:
    void start() {
        process_ = std::make_unique<QProcess>();
        process_->setStandardInputFile(QProcess::nullDevice());
        process_->setStandardOutputFile(QProcess::nullDevice());
        process_->setStandardErrorFile(QProcess::nullDevice());
        process_->start(player_, {file_}, QIODevice::NotOpen);
    }
    void stop() {
        if (process_) {
            process_->kill();
            process_->waitForFinished(kKillPatienceMs);
        }
    }

    QString player_;
    QString file_;
    std::unique_ptr<QProcess> process_;
};

std::filesystem::path firstThatExists(const std::filesystem::path& one,
                                      const std::filesystem::path& other) {
    std::error_code unreadable;
    return std::filesystem::exists(one, unreadable) ? one : other;
}

}  // namespace

ProcessSoundLibrary::ProcessSoundLibrary(const std::filesystem::path& programFolder)
    : soundFolder_(
          firstThatExists(programFolder / "sounds", programFolder / "../share/ostrel/sounds")),
      player_(firstThatExists(programFolder / "ostrel-play",
                              programFolder / "../libexec/ostrel/ostrel-play")) {}

std::unique_ptr<Sound> ProcessSoundLibrary::load(const std::string& name) {
    const std::filesystem::path file = soundFolder_ / (name + ".aiff");
    if (!beginsAsAiff(file) || access(player_.c_str(), X_OK) != 0) {
        return nullptr;
    }
    return std::make_unique<ProcessSound>(QFile::decodeName(player_.c_str()),
                                          QFile::decodeName(file.c_str()));
}

}  // namespace ostrel
