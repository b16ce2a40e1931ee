#pragma once

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "platform/linux/event_loop.h"
#include "platform/linux/file_descriptor.h"
#include "platform/linux/temporary_folder.h"

namespace ostrel {

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
        server_.start("pulseaudio",
                      "-n --daemonize=no --exit-idle-time=-1 --use-pid-file=no".split(u' ') +
                          QStringList{"-L", modules[0], "-L", modules[1]});
        if (!runUntil([this] { return answers(); })) {
            return false;
        }
        recorder_.start("parec",
                        "--device=out.monitor --latency-msec=20 --raw --rate=48000 "
                        "--channels=1 --format=s16le".split(u' '));
        recorded_.clear();
        heard_.clear();
        return runUntil([this] { return !heard().empty(); });
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
        recorded_ += recorder_.readAllStandardOutput();
        const std::size_t before = heard_.size();
        const auto more = static_cast<std::size_t>(recorded_.size()) / sizeof(std::int16_t);
        heard_.resize(before + more);
        std::memcpy(heard_.data() + before, recorded_.data(), more * sizeof(std::int16_t));
        recorded_ = recorded_.last(recorded_.size() % 2);
        return heard_;
    }

    // Where something was heard first, at or behind `from`; the end when there was nothing.
    [[nodiscard]] std::size_t firstSound(std::size_t from = 0) {
        const Samples& all = heard();
        const auto found = std::find_if(all.begin() + static_cast<std::ptrdiff_t>(from), all.end(),
                                        [](std::int16_t sample) { return sample != 0; });
        return static_cast<std::size_t>(found - all.begin());
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
    [[nodiscard]] bool answers() const {
        const FileDescriptor client(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string name = socket_.toStdString();
        name.copy(address.sun_path, sizeof address.sun_path - 1);
        const void* generic = &address;
        return connect(client.get(), static_cast<const sockaddr*>(generic), sizeof address) == 0;
    }

    TemporaryFolder folder_;
    QString socket_ = path() + "/socket";
    QByteArray recorded_;  // what is not yet a whole sample
    Samples heard_;
    QProcess server_;
    QProcess recorder_;
};

}  // namespace ostrel
