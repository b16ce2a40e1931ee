#pragma once

#include <QRect>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct xcb_connection_t;

namespace ostrel {

// What the window manager (EWMH) and the X server tell about the windows of all programs, over Qt's
// own connection. Each question is one round trip however many windows it concerns.
//
// Where Qt does not run on X11, or no window manager tells, everything is absent. A window that
// closes in between is as one of which nothing is known.
class X11Windows {
  public:
    using Window = std::uint32_t;

    // How a program names the application that a window belongs to; what it does not say is empty.
    struct Names {
        std::string gtkApplication;  // _GTK_APPLICATION_ID
        std::string desktopFile;     // _KDE_NET_WM_DESKTOP_FILE
        std::string instance;        // the two parts of WM_CLASS
        std::string windowClass;

        bool operator==(const Names&) const = default;
    };

    struct Client {
        Window window = 0;
        std::optional<QRect> frame;           // on the X screen, in device pixels, no shadow
        std::optional<std::int64_t> process;  // as processOf()
    };

    // Needs a QGuiApplication.
    X11Windows();

    // The one with the user's attention.
    [[nodiscard]] std::optional<Window> active() const;

    [[nodiscard]] Names namesOf(Window window) const;

    // The process at the other end of the window's connection (X-Resource), else the one that the
    // window names (_NET_WM_PID): a program in a sandbox only knows its number in there.
    [[nodiscard]] std::optional<std::int64_t> processOf(Window window) const;

    // Those on the screen, from bottom to top: neither minimised nor on another workspace, and not
    // the desktop's own, which are its background, panels and docks.
    [[nodiscard]] std::optional<std::vector<Client>> onScreen() const;

  private:
    enum class Atom {
        activeWindow,
        clientListStacking,
        clientList,
        currentDesktop,
        desktop,
        state,
        stateHidden,
        type,
        typeDesktop,
        typeDock,
        pid,
        gtkApplicationId,
        kdeDesktopFile,
        gtkFrameExtents,
        utf8String,
        count
    };
    struct Questions;

    [[nodiscard]] std::uint32_t atom(Atom name) const;
    [[nodiscard]] std::optional<std::vector<Window>> allClients(xcb_connection_t* connection) const;
    [[nodiscard]] Questions ask(xcb_connection_t* connection, Window window) const;
    [[nodiscard]] std::optional<Client> answer(xcb_connection_t* connection,
                                               const Questions& questions,
                                               std::optional<std::uint32_t> currentDesktop) const;

    std::uint32_t root_ = 0;  // 0: there is no X server
    bool tellsProcesses_ = false;
    std::array<std::uint32_t, static_cast<std::size_t>(Atom::count)> atoms_{};
};

}  // namespace ostrel
