#include "platform/linux/linux_capabilities.h"

#include <xcb/xcb.h>

#include <QFileInfo>
#include <QTimer>
#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

#include "platform/linux/dbus_questions.h"
#include "platform/linux/qt_x11.h"

namespace ostrel {
namespace {

using State = Capability::State;
using Topic = Capability::Topic;

constexpr int kPatienceMs = 1000;
const QString kNotifications = QStringLiteral("org.freedesktop.Notifications");

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name) {
    const auto cookie =
        xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(name.size()), name.data());
    const XcbReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

bool hasExtension(xcb_connection_t* connection, std::string_view name) {
    const auto cookie =
        xcb_query_extension(connection, static_cast<std::uint16_t>(name.size()), name.data());
    const XcbReply<xcb_query_extension_reply_t> reply(
        xcb_query_extension_reply(connection, cookie, nullptr));
    return reply && reply->present != 0;
}

bool hasRootProperty(xcb_connection_t* connection, std::string_view name) {
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto cookie = xcb_get_property(connection, 0, root, atom(connection, name),
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, 0);
    const XcbReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection, cookie, nullptr));
    return reply && reply->type != XCB_ATOM_NONE;
}

bool hasOwner(xcb_connection_t* connection, std::string_view selection) {
    const auto cookie = xcb_get_selection_owner(connection, atom(connection, selection));
    const XcbReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection, cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

void lookAtX(DesktopFacts& facts) {
    const std::unique_ptr<xcb_connection_t, Disconnect> connection(xcb_connect(nullptr, nullptr));
    xcb_connection_t* server = connection.get();
    facts.hasX = xcb_connection_has_error(server) == 0;
    if (facts.hasX) {
        facts.isXwayland = isXInsideWayland(server);
        facts.hasIdleTime = hasExtension(server, "MIT-SCREEN-SAVER");
        facts.hasActiveWindow = hasRootProperty(server, "_NET_SUPPORTING_WM_CHECK");
        facts.hasTray = hasOwner(server, "_NET_SYSTEM_TRAY_S0");
    }
}

// PipeWire has it for the programs of PulseAudio.
bool hasSoundServer() {
    return qEnvironmentVariableIsSet("PULSE_SERVER") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") +
                             QStringLiteral("/pulse/native"));
}

Capability inXSession(Topic topic, const DesktopFacts& facts, bool works,
                      std::string_view otherwise) {
    if (!facts.hasX || facts.isXwayland) {
        return {topic, State::missing, "capability.reason.x11"};
    }
    return works ? Capability{topic} : Capability{topic, State::missing, otherwise};
}

bool hasLoginManager(const DesktopFacts& facts) {
    return facts.names.contains(kLoginService);
}

Capability films(const DesktopFacts& facts) {
    const Capability windows =
        inXSession(Topic::films, facts, facts.hasActiveWindow, "capability.reason.window_manager");
    const bool tells = hasLoginManager(facts) ||
                       facts.names.contains(QStringLiteral("org.gnome.SessionManager")) ||
                       facts.names.contains(QStringLiteral("org.freedesktop.ScreenSaver"));
    return windows.state != State::works || tells
               ? windows
               : Capability{Topic::films, State::partly, "capability.reason.power_services"};
}

Capability doNotDisturb(const DesktopFacts& facts) {
    if (!facts.names.contains(kNotifications)) {
        return facts.canStartNotifications ? Capability{Topic::doNotDisturb, State::partly,
                                                        "capability.reason.no_server_yet"}
                                           : Capability{Topic::doNotDisturb, State::missing,
                                                        "capability.reason.notification_server"};
    }
    const bool isKnown = facts.notificationServer == QLatin1String("dunst") ||
                         facts.notificationServer == QLatin1String("gnome-shell") ||
                         facts.notificationVendor == QLatin1String("Xfce") ||
                         facts.notificationVendor == QLatin1String("KDE");
    return isKnown ? Capability{Topic::doNotDisturb}
                   : Capability{Topic::doNotDisturb, State::missing, "capability.reason.no_switch"};
}

// The lockers of the desktops tell; many that stand alone do not.
Capability lock(const DesktopFacts& facts) {
    const bool tells = std::ranges::any_of(facts.names, [](const QString& name) {
        return name.endsWith(QLatin1String(".ScreenSaver"));
    });
    if (hasLoginManager(facts) && tells) {
        return {Topic::lock};
    }
    return {Topic::lock, State::partly,
            hasLoginManager(facts) ? "capability.reason.locker"
                                   : "capability.reason.login_manager_lock"};
}

Capability when(Topic topic, bool works, State otherwise, std::string_view reason) {
    return works ? Capability{topic} : Capability{topic, otherwise, reason};
}

// What is asked of the desktop, until all has been answered or has taken too long.
class Question : public QObject {
  public:
    Question(QObject* receiver, std::function<void(std::vector<Capability>)> tell)
        : QObject(receiver), tell_(std::move(tell)) {
        QTimer::singleShot(kPatienceMs, this, [this] { answer(); });
    }

    DesktopFacts facts;

    void askForNames(const QDBusConnection& bus) {
        waitFor(bus, questionToBus(QStringLiteral("ListNames")), [this](const QVariantList& reply) {
            const QStringList names = reply.value(0).toStringList();
            facts.names.unite(QSet<QString>(names.begin(), names.end()));
        });
    }
    void askForServices(const QDBusConnection& bus) {
        waitFor(bus, questionToBus(QStringLiteral("ListActivatableNames")),
                [this](const QVariantList& reply) {
                    facts.canStartNotifications =
                        reply.value(0).toStringList().contains(kNotifications);
                });
    }
    void askForServer(const QDBusConnection& bus) {
        waitFor(bus,
                questionTo(kNotifications, QStringLiteral("/org/freedesktop/Notifications"),
                           kNotifications, QStringLiteral("GetServerInformation")),
                [this](const QVariantList& reply) {
                    facts.notificationServer = reply.value(0).toString();
                    facts.notificationVendor = reply.value(1).toString();
                });
    }

    void answerWhenAllIsKnown() {
        isAsked_ = true;
        if (open_ == 0) {
            QTimer::singleShot(0, this, [this] { answer(); });
        }
    }

  private:
    void waitFor(const QDBusConnection& bus, const QDBusMessage& question,
                 std::function<void(const QVariantList&)> take) {
        if (!bus.isConnected()) {
            return;
        }
        ++open_;
        ask(bus, question, this, [this, take = std::move(take)](const QDBusMessage& reply) {
            if (reply.type() == QDBusMessage::ReplyMessage) {
                take(reply.arguments());
            }
            if (--open_ == 0 && isAsked_) {
                answer();
            }
        });
    }
    void answer() {
        if (const auto tell = std::exchange(tell_, {})) {
            tell(capabilitiesWith(facts));
            deleteLater();
        }
    }

    std::function<void(std::vector<Capability>)> tell_;
    int open_ = 0;
    bool isAsked_ = false;
};

}  // namespace

std::vector<Capability> capabilitiesWith(const DesktopFacts& facts) {
    const bool hasStatusHost =
        facts.hasTray || facts.names.contains(QStringLiteral("org.kde.StatusNotifierWatcher"));
    return {
        inXSession(Topic::away, facts, facts.hasIdleTime, "capability.reason.idle_time"),
        inXSession(Topic::calls, facts, facts.hasActiveWindow, "capability.reason.window_manager"),
        films(facts),
        doNotDisturb(facts),
        when(Topic::sleep, hasLoginManager(facts), State::partly,
             "capability.reason.login_manager_sleep"),
        lock(facts),
        inXSession(Topic::hotkeys, facts, true, {}),
        when(Topic::notifications,
             facts.names.contains(kNotifications) || facts.canStartNotifications, State::missing,
             "capability.reason.notification_server"),
        when(Topic::statusItem, hasStatusHost, State::missing, "capability.reason.status_area"),
        when(Topic::chimes, facts.hasSoundServer, State::missing, "capability.reason.sound_server"),
    };
}

void findCapabilities(const QDBusConnection& session, const QDBusConnection& system,
                      QObject* receiver, std::function<void(std::vector<Capability>)> tell) {
    auto* question = new Question(receiver, std::move(tell));
    lookAtX(question->facts);
    question->facts.hasSoundServer = hasSoundServer();
    question->askForNames(session);
    question->askForServices(session);
    question->askForServer(session);
    question->askForNames(system);
    question->answerWhenAllIsKnown();
}

}  // namespace ostrel
