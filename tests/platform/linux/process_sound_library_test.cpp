#include "platform/linux/process_sound_library.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "platform/linux/event_loop.h"
#include "platform/linux/temporary_folder.h"
#include "platform/pulse/sound_file.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;
const fs::path kProgramFolder = OSTREL_PROGRAM_FOLDER;

// A PulseAudio server of the test's own, whose only output goes nowhere, and what is heard there.
// Programs started by the test find it and no other.
class SoundServer {
  public:
    using Samples = std::vector<std::int16_t>;

    static constexpr std::size_t kRate = 48000;  // the output's, in mono

    SoundServer() {
        qputenv("PULSE_SERVER", "unix:" + QFile::encodeName(socket_));
        bindToTest(server_);
        bindToTest(recorder_);
        recorder_.setStandardOutputFile(recording_);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "PULSE_SERVER"}) {
            environment.remove(name);
        }
        for (const char* name :
             {"HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "PULSE_RUNTIME_PATH"}) {
            environment.insert(name, path());
        }
        server_.setProcessEnvironment(environment);
    }
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;
    ~SoundServer() {
        die();
        qunsetenv("PULSE_SERVER");
    }

    static bool isInstalled() {
        return !QStandardPaths::findExecutable("pulseaudio").isEmpty() &&
               !QStandardPaths::findExecutable("parec").isEmpty();
    }

    // Until it answers and is being listened to.
    [[nodiscard]] bool start() {
        const QStringList modules{
            "module-null-sink sink_name=out rate=48000 channels=1 format=s16le norewinds=1",
            "module-native-protocol-unix auth-anonymous=1 auth-cookie-enabled=0 socket=" + socket_};
        server_.start(
            "pulseaudio",
            QString("-n --daemonize=no --exit-idle-time=-1 --use-pid-file=no").split(' ') +
                QStringList{"-L", modules[0], "-L", modules[1]});
        return runUntil([this] {
            if (recorder_.state() == QProcess::NotRunning) {  // the server was not there yet
                recorder_.start("parec", {"--device=out.monitor", "--latency-msec=20", "--raw",
                                          "--rate=48000", "--channels=1", "--format=s16le"});
            }
            return !heard().empty();
        });
    }
    void die() {
        for (QProcess* process : {&recorder_, &server_}) {
            process->kill();
            process->waitForFinished();
        }
    }
    void hang() const { kill(static_cast<pid_t>(server_.processId()), SIGSTOP); }
    void recover() const { kill(static_cast<pid_t>(server_.processId()), SIGCONT); }

    // All that was heard since the start.
    const Samples& heard() {
        QFile file(recording_);
        const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        heard_.resize(static_cast<std::size_t>(bytes.size()) / sizeof(std::int16_t));
        std::memcpy(heard_.data(), bytes.constData(), heard_.size() * sizeof(std::int16_t));
        return heard_;
    }

    // Where something was heard first, at or behind `from`; the end when there was nothing.
    [[nodiscard]] std::size_t firstSound(std::size_t from = 0) {
        const Samples& all = heard();
        while (from < all.size() && all[from] == 0) {
            ++from;
        }
        return from;
    }
    [[nodiscard]] bool hears(std::size_t from = 0) { return firstSound(from) < heard().size(); }

    // Listens for another `sec`.
    void listen(double sec) {
        const std::size_t end = heard().size() + static_cast<std::size_t>(sec * kRate);
        EXPECT_TRUE(runUntil([&] { return heard().size() >= end; })) << "the recorder stopped";
    }

  private:
    // Nothing that a test started is left behind, even when it crashes.
    static void bindToTest(QProcess& process) {
        process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        process.setStandardErrorFile(QProcess::nullDevice());
    }
    [[nodiscard]] QString path() const { return QFile::decodeName(folder_.path().c_str()); }

    TemporaryFolder folder_;
    QString socket_ = path() + "/socket";
    QString recording_ = path() + "/recording";
    Samples heard_;
    QProcess server_;
    QProcess recorder_;
};

using Samples = SoundServer::Samples;

struct ProcessSoundTest : ::testing::Test {
    SoundServer server;
    ProcessSoundLibrary library{kProgramFolder};
    std::unique_ptr<Sound> sound;
    Samples expected;

    void SetUp() override {
        if (!SoundServer::isInstalled()) {
            GTEST_SKIP() << "pulseaudio and parec are not installed";
        }
        ASSERT_TRUE(server.start());
        load("chime-start");
    }
    void load(const std::string& name) {
        const auto file = SoundFile::read(kProgramFolder / "sounds" / (name + ".aiff"));
        sound = library.load(name);
        ASSERT_TRUE(file && sound) << name;
        expected = file->samples;
        expected.erase(expected.begin(),
                       std::ranges::find_if(expected, [](auto sample) { return sample != 0; }));
    }

    // Whether the sound is heard whole, and nothing else, behind `from`.
    bool isHeardWhole(std::size_t from) {
        const bool ended = runUntil([&] { return !sound->isPlaying(); });
        server.listen(0.15);
        const std::size_t first = server.firstSound(from);
        const std::size_t end = first + expected.size();
        return ended && end <= server.heard().size() &&
               std::ranges::equal(std::span(server.heard()).subspan(first, expected.size()),
                                  expected) &&
               !server.hears(end);
    }
};

TEST_F(ProcessSoundTest, EachChimeIsHeardToTheLastSample) {
    for (const char* name : {"chime-start", "chime-end"}) {
        load(name);
        const std::size_t before = server.heard().size();
        sound->play();
        EXPECT_TRUE(isHeardWhole(before)) << name;
    }
}

TEST_F(ProcessSoundTest, AServerThatDiesOrIsAwayCostsOnlyTheChimesMeanwhile) {
    sound->play();
    ASSERT_TRUE(runUntil([&] { return server.hears(); }));
    EXPECT_TRUE(sound->isPlaying());
    server.die();
    EXPECT_TRUE(runUntil([&] { return !sound->isPlaying(); }));
    sound->play();
    EXPECT_TRUE(runUntil([&] { return !sound->isPlaying(); }));

    ASSERT_TRUE(server.start());
    sound->play();
    EXPECT_TRUE(isHeardWhole(0));
}

TEST_F(ProcessSoundTest, AChimeThatAHangingServerDoesNotTakeIsDroppedNotLate) {
    server.hang();
    sound->play();
    EXPECT_TRUE(sound->isPlaying());
    EXPECT_TRUE(runUntil([&] { return !sound->isPlaying(); }, std::chrono::seconds(4)));
    server.recover();
    server.listen(0.3);
    EXPECT_FALSE(server.hears());
}

}  // namespace
}  // namespace ostrel
