#include "platform/linux/x11_windows.h"

#include <xcb/res.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <string_view>

#include "platform/linux/qt_x11.h"
#include "platform/linux/x11_process.h"

namespace ostrel {
namespace {

using Property = XcbReply<xcb_get_property_reply_t>;

constexpr std::uint32_t kOnAllDesktops = 0xFFFFFFFF;
// In units of four bytes; what a program writes beyond that is of no use to us.
constexpr std::uint32_t kLongestText = 256;
constexpr std::uint32_t kMostAtoms = 64;
constexpr std::uint32_t kMostWindows = 4096;

Property take(xcb_connection_t* connection, xcb_get_property_cookie_t cookie) {
    return Property(xcb_get_property_reply(connection, cookie, nullptr));
}

std::vector<std::uint32_t> numbersIn(const Property& property) {
    if (!property || property->format != 32) {
        return {};
    }
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(property.get()));
    return {first, first + property->value_len};
}

std::optional<std::uint32_t> numberIn(const Property& property) {
    const auto numbers = numbersIn(property);
    return numbers.empty() ? std::nullopt : std::optional(numbers.front());
}

std::string_view textIn(const Property& property) {
    if (!property || property->format != 8) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(property.get())), property->value_len};
}

std::string upToNull(std::string_view text) {
    return std::string(text.substr(0, text.find('\0')));
}

// Less the shadow around the window, which some programs draw themselves: its widths are those at
// the left, the right, the top and the bottom.
QRect withoutShadow(const QRect& frame, const std::vector<std::uint32_t>& widths) {
    if (widths.size() != 4) {
        return frame;
    }
    const std::int64_t width = frame.width() - std::int64_t{widths[0]} - widths[1];
    const std::int64_t height = frame.height() - std::int64_t{widths[2]} - widths[3];
    if (width <= 0 || height <= 0) {
        return frame;
    }
    return {frame.x() + static_cast<int>(widths[0]), frame.y() + static_cast<int>(widths[2]),
            static_cast<int>(width), static_cast<int>(height)};
}

bool contains(const std::vector<std::uint32_t>& numbers, std::uint32_t number) {
    return std::ranges::find(numbers, number) != numbers.end();
}

}  // namespace

// What has been asked about one window.
struct X11Windows::Questions {
    Window window;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t size;
    xcb_translate_coordinates_cookie_t place;
    xcb_get_property_cookie_t state;
    xcb_get_property_cookie_t type;
    xcb_get_property_cookie_t desktop;
    xcb_get_property_cookie_t namedProcess;
    xcb_get_property_cookie_t shadow;
    std::optional<xcb_res_query_client_ids_cookie_t> process;
};

X11Windows::X11Windows() {
    xcb_connection_t* connection = qtX11Connection();
    if (connection == nullptr) {
        return;
    }
    constexpr std::array<std::string_view, static_cast<std::size_t>(Atom::count)> kNames{
        "_NET_ACTIVE_WINDOW",
        "_NET_CLIENT_LIST_STACKING",
        "_NET_CLIENT_LIST",
        "_NET_CURRENT_DESKTOP",
        "_NET_WM_DESKTOP",
        "_NET_WM_STATE",
        "_NET_WM_STATE_HIDDEN",
        "_NET_WM_WINDOW_TYPE",
        "_NET_WM_WINDOW_TYPE_DESKTOP",
        "_NET_WM_WINDOW_TYPE_DOCK",
        "_NET_WM_PID",
        "_GTK_APPLICATION_ID",
        "_KDE_NET_WM_DESKTOP_FILE",
        "_GTK_FRAME_EXTENTS",
        "UTF8_STRING"};
    std::array<xcb_intern_atom_cookie_t, kNames.size()> cookies{};
    std::ranges::transform(kNames, cookies.begin(), [connection](std::string_view name) {
        return xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    });
    std::ranges::transform(cookies, atoms_.begin(), [connection](xcb_intern_atom_cookie_t cookie) {
        const XcbReply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection, cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    });
    const xcb_query_extension_reply_t* resources = xcb_get_extension_data(connection, &xcb_res_id);
    tellsProcesses_ = resources != nullptr && resources->present != 0;
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

std::uint32_t X11Windows::atom(Atom name) const {
    return atoms_[static_cast<std::size_t>(name)];
}

std::optional<X11Windows::Window> X11Windows::active() const {
    xcb_connection_t* connection = root_ == 0 ? nullptr : qtX11Connection();
    if (connection == nullptr) {
        return std::nullopt;
    }
    const auto window =
        numberIn(take(connection, xcb_get_property(connection, 0, root_, atom(Atom::activeWindow),
                                                   XCB_ATOM_WINDOW, 0, 1)));
    if (!window || *window == XCB_WINDOW_NONE) {
        return std::nullopt;
    }
    // Some window managers go on telling of a window that is gone, whose number may be in use by
    // another program.
    const XcbReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection, xcb_get_window_attributes(connection, *window), nullptr));
    return attributes ? window : std::nullopt;
}

X11Windows::Names X11Windows::namesOf(Window window) const {
    xcb_connection_t* connection = root_ == 0 ? nullptr : qtX11Connection();
    if (connection == nullptr) {
        return {};
    }
    const auto ask = [&](xcb_atom_t property, xcb_atom_t type) {
        return xcb_get_property(connection, 0, window, property, type, 0, kLongestText);
    };
    const auto gtk = ask(atom(Atom::gtkApplicationId), atom(Atom::utf8String));
    const auto kde = ask(atom(Atom::kdeDesktopFile), XCB_GET_PROPERTY_TYPE_ANY);
    const auto both = ask(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
    Names names;
    names.gtkApplication = upToNull(textIn(take(connection, gtk)));
    names.desktopFile = upToNull(textIn(take(connection, kde)));
    const Property windowClass = take(connection, both);
    const std::string_view text = textIn(windowClass);
    names.instance = upToNull(text);
    if (names.instance.size() < text.size()) {
        names.windowClass = upToNull(text.substr(names.instance.size() + 1));
    }
    return names;
}

std::optional<std::int64_t> X11Windows::processOf(Window window) const {
    xcb_connection_t* connection = root_ == 0 ? nullptr : qtX11Connection();
    if (connection == nullptr) {
        return std::nullopt;
    }
    if (tellsProcesses_) {
        if (const auto process = x11ProcessOf(connection, window)) {
            return process;
        }
    }
    return numberIn(take(connection, xcb_get_property(connection, 0, window, atom(Atom::pid),
                                                      XCB_ATOM_CARDINAL, 0, 1)));
}

std::optional<std::vector<X11Windows::Window>> X11Windows::allClients(
    xcb_connection_t* connection) const {
    for (const Atom list : {Atom::clientListStacking, Atom::clientList}) {
        const Property property = take(
            connection,
            xcb_get_property(connection, 0, root_, atom(list), XCB_ATOM_WINDOW, 0, kMostWindows));
        if (property && property->format == 32) {
            return numbersIn(property);
        }
    }
    return std::nullopt;
}

X11Windows::Questions X11Windows::ask(xcb_connection_t* connection, Window window) const {
    const auto askFor = [&](Atom property, xcb_atom_t type, std::uint32_t most) {
        return xcb_get_property(connection, 0, window, atom(property), type, 0, most);
    };
    return {window,
            xcb_get_window_attributes(connection, window),
            xcb_get_geometry(connection, window),
            xcb_translate_coordinates(connection, window, root_, 0, 0),
            askFor(Atom::state, XCB_ATOM_ATOM, kMostAtoms),
            askFor(Atom::type, XCB_ATOM_ATOM, kMostAtoms),
            askFor(Atom::desktop, XCB_ATOM_CARDINAL, 1),
            askFor(Atom::pid, XCB_ATOM_CARDINAL, 1),
            askFor(Atom::gtkFrameExtents, XCB_ATOM_CARDINAL, 4),
            tellsProcesses_ ? std::optional(askForX11Process(connection, window)) : std::nullopt};
}

// Takes every answer, wanted or not: one that is left lying would stay in memory.
std::optional<X11Windows::Client> X11Windows::answer(
    xcb_connection_t* connection, const Questions& questions,
    std::optional<std::uint32_t> currentDesktop) const {
    const XcbReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection, questions.attributes, nullptr));
    const XcbReply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection, questions.size, nullptr));
    const XcbReply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection, questions.place, nullptr));
    const auto states = numbersIn(take(connection, questions.state));
    const auto types = numbersIn(take(connection, questions.type));
    const auto desktop = numberIn(take(connection, questions.desktop));
    const auto named = numberIn(take(connection, questions.namedProcess));
    const auto shadow = numbersIn(take(connection, questions.shadow));
    Client client{questions.window, {}, {}};
    if (questions.process) {
        client.process = takeX11Process(connection, *questions.process);
    }
    if (!client.process && named) {
        client.process = *named;
    }
    if (size && place) {
        client.frame =
            withoutShadow({place->dst_x, place->dst_y, size->width, size->height}, shadow);
    }
    const bool isMapped = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    const bool isElsewhere =
        desktop && currentDesktop && desktop != kOnAllDesktops && desktop != currentDesktop;
    const bool isOfTheDesktop =
        contains(types, atom(Atom::typeDesktop)) || contains(types, atom(Atom::typeDock));
    const bool isShown =
        isMapped && !isElsewhere && !isOfTheDesktop && !contains(states, atom(Atom::stateHidden));
    return isShown ? std::optional(client) : std::nullopt;
}

std::optional<std::vector<X11Windows::Client>> X11Windows::onScreen() const {
    xcb_connection_t* connection = root_ == 0 ? nullptr : qtX11Connection();
    const auto windows = connection == nullptr ? std::nullopt : allClients(connection);
    if (!windows) {
        return std::nullopt;
    }
    const auto desktop =
        xcb_get_property(connection, 0, root_, atom(Atom::currentDesktop), XCB_ATOM_CARDINAL, 0, 1);
    std::vector<Questions> questions;
    questions.reserve(windows->size());
    for (const Window window : *windows) {
        questions.push_back(ask(connection, window));
    }
    const auto currentDesktop = numberIn(take(connection, desktop));
    std::vector<Client> clients;
    for (const Questions& asked : questions) {
        if (const auto client = answer(connection, asked, currentDesktop)) {
            clients.push_back(*client);
        }
    }
    return clients;
}

}  // namespace ostrel
