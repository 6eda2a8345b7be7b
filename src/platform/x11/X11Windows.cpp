// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11Windows.h"

#include "platform/x11/X11Connection.h"
#include <QSysInfo>
#include <algorithm>
#include <array>
#include <cstring>
#include <unistd.h>
#include <vector>
#include <xcb/res.h>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// Maximum length of a text property in units of four bytes; X does not limit window titles.
constexpr uint32_t maxPropertyLength = 16 * 1024;

/// Maximum number of top-level windows that are examined.
constexpr int maxTopLevels = 200;

/// Maximum depth of the focused window below the root.
constexpr int maxWindowDepth = 32;

/// Returns the id of the UTS namespace of a process, which determines its host name; empty when it
/// cannot be read.
QByteArray hostNamespace(const QByteArray &process)
{
    std::array<char, 64> target{};
    const QByteArray link = "/proc/" + process + "/ns/uts";
    const auto length = readlink(link.constData(), target.data(), target.size());
    return length > 0 ? QByteArray(target.data(), length) : QByteArray();
}

/// Containers may have their own host names.
bool hasOwnHostName(qint64 process)
{
    const QByteArray theirs = hostNamespace(QByteArray::number(process));
    return !theirs.isEmpty() && theirs != hostNamespace("self"_ba);
}

/// Some programs include the domain in the machine's name, some do not.
QByteArray firstLabel(const QByteArray &machine)
{
    return machine.split('.').constFirst().toLower();
}

} // namespace

QByteArray X11Windows::property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type)
{
    const auto answer = connection_.reply<xcb_get_property_reply_t>(
        xcb_get_property(connection_.xcb(), 0, window, name, type, 0, maxPropertyLength));
    if (!answer) {
        return {};
    }
    return {static_cast<const char *>(xcb_get_property_value(answer.get())),
            xcb_get_property_value_length(answer.get())};
}

namespace {

std::optional<uint32_t> firstNumber(const QByteArray &bytes)
{
    uint32_t number = 0;
    if (bytes.size() < static_cast<qsizetype>(sizeof number)) {
        return std::nullopt;
    }
    std::memcpy(&number, bytes.constData(), sizeof number);
    return number;
}

} // namespace

xcb_window_t X11Windows::activeWindow()
{
    const auto active = firstNumber(
        property(connection_.root(), connection_.atom("_NET_ACTIVE_WINDOW"_ba), XCB_ATOM_WINDOW));
    managed_ = active.has_value();
    return managed_ ? *active : focusedTopLevel();
}

xcb_window_t X11Windows::focusedTopLevel()
{
    auto *xcb = connection_.xcb();
    const auto focus = connection_.reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(xcb));
    if (!focus || focus->focus == XCB_WINDOW_NONE) {
        return XCB_WINDOW_NONE;
    }
    xcb_window_t window = focus->focus;
    if (window == XCB_INPUT_FOCUS_POINTER_ROOT || window == connection_.root()) {
        const auto pointer = connection_.reply<xcb_query_pointer_reply_t>(
            xcb_query_pointer(xcb, connection_.root()));
        window = pointer ? pointer->child : xcb_window_t{XCB_WINDOW_NONE};
    }
    xcb_window_t outermost = XCB_WINDOW_NONE;
    for (int depth = 0;
         depth < maxWindowDepth && window != XCB_WINDOW_NONE && window != connection_.root();
         ++depth) {
        // Since version 44, Mutter's frames belong to a separate process.
        const bool isFrame =
            firstNumber(property(window, connection_.atom("_MUTTER_FRAME_FOR"_ba), XCB_ATOM_WINDOW))
                .has_value();
        if (!isFrame && !property(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING).isEmpty()) {
            outermost = window;
        }
        const auto tree = connection_.reply<xcb_query_tree_reply_t>(xcb_query_tree(xcb, window));
        window = tree ? tree->parent : xcb_window_t{XCB_WINDOW_NONE};
    }
    return outermost;
}

std::optional<qint64> X11Windows::process(xcb_window_t window)
{
    const auto named = namedProcess(window);
    const auto connected = clientProcess(window);
    if (connected && named && *connected == *named) {
        return connected;
    }
    // A forwarded window is connected through a local process that is not its own.
    if (isOfAnotherMachine(window) && !(connected && hasOwnHostName(*connected))) {
        return std::nullopt;
    }
    return connected || !named || *named == 0 ? connected : named;
}

std::optional<qint64> X11Windows::namedProcess(xcb_window_t window)
{
    return firstNumber(property(window, connection_.atom("_NET_WM_PID"_ba), XCB_ATOM_CARDINAL));
}

bool X11Windows::exists(xcb_window_t window)
{
    return window != XCB_WINDOW_NONE
        && connection_.reply<xcb_get_window_attributes_reply_t>(
               xcb_get_window_attributes(connection_.xcb(), window))
        != nullptr;
}

bool X11Windows::isScreenCovered()
{
    auto *xcb = connection_.xcb();
    const auto root =
        connection_.reply<xcb_get_geometry_reply_t>(xcb_get_geometry(xcb, connection_.root()));
    const auto tree =
        connection_.reply<xcb_query_tree_reply_t>(xcb_query_tree(xcb, connection_.root()));
    if (!root || !tree) {
        return false;
    }
    const auto *windows = xcb_query_tree_children(tree.get());
    const int count = std::min(xcb_query_tree_children_length(tree.get()), maxTopLevels);
    const auto *topmost = windows + xcb_query_tree_children_length(tree.get());
    std::vector<xcb_get_window_attributes_cookie_t> questions;
    questions.reserve(static_cast<size_t>(count));
    for (int i = 1; i <= count; ++i) {
        questions.push_back(xcb_get_window_attributes(xcb, *(topmost - i)));
    }
    std::optional<xcb_window_t> unmanaged;
    for (int i = 1; i <= count; ++i) {
        const auto attributes = connection_.reply<xcb_get_window_attributes_reply_t>(
            questions[static_cast<size_t>(i - 1)]);
        if (unmanaged || !attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE
            || attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY) {
            continue;
        }
        const xcb_window_t window = *(topmost - i);
        // The compositor's overlay window belongs to the server.
        const auto process = clientProcess(window);
        if (process && process != getpid()) {
            unmanaged = attributes->override_redirect != 0 && process != managerProcess()
                ? window
                : xcb_window_t{XCB_WINDOW_NONE};
        }
    }
    const auto place = unmanaged.value_or(XCB_WINDOW_NONE) == XCB_WINDOW_NONE
        ? nullptr
        : connection_.reply<xcb_get_geometry_reply_t>(xcb_get_geometry(xcb, *unmanaged));
    return place && place->x <= 0 && place->y <= 0 && place->x + place->width >= root->width
        && place->y + place->height >= root->height;
}

std::optional<qint64> X11Windows::managerProcess()
{
    const auto window = firstNumber(property(
        connection_.root(), connection_.atom("_NET_SUPPORTING_WM_CHECK"_ba), XCB_ATOM_WINDOW));
    return window ? clientProcess(*window) : std::nullopt;
}

bool X11Windows::isOfAnotherMachine(xcb_window_t window)
{
    // some programs include the terminating zero
    const QByteArray machine =
        property(window, XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_STRING).split('\0').constFirst();
    return !machine.isEmpty() && firstLabel(machine) != "localhost"
        && firstLabel(machine) != firstLabel(QSysInfo::machineHostName().toLocal8Bit());
}

std::optional<qint64> X11Windows::clientProcess(xcb_window_t window)
{
    if (window == XCB_WINDOW_NONE || connection_.extension(&xcb_res_id) == nullptr) {
        return std::nullopt;
    }
    const xcb_res_client_id_spec_t question{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto answer = connection_.reply<xcb_res_query_client_ids_reply_t>(
        xcb_res_query_client_ids(connection_.xcb(), 1, &question));
    if (!answer) {
        return std::nullopt;
    }
    for (auto ids = xcb_res_query_client_ids_ids_iterator(answer.get()); ids.rem > 0;
         xcb_res_client_id_value_next(&ids)) {
        if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0
            && xcb_res_client_id_value_value_length(ids.data) > 0) {
            return *xcb_res_client_id_value_value(ids.data);
        }
    }
    return std::nullopt;
}

WindowClass X11Windows::windowClass(xcb_window_t window)
{
    const auto parts = property(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING).split('\0');
    return {parts.value(0), parts.value(1)};
}

QString X11Windows::title(xcb_window_t window)
{
    const QByteArray name =
        property(window, connection_.atom("_NET_WM_NAME"_ba), connection_.atom("UTF8_STRING"_ba));
    if (!name.isEmpty()) {
        return QString::fromUtf8(name);
    }
    return QString::fromLatin1(property(window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING));
}

QString X11Windows::gtkApplicationId(xcb_window_t window)
{
    return QString::fromUtf8(property(window, connection_.atom("_GTK_APPLICATION_ID"_ba),
                                      connection_.atom("UTF8_STRING"_ba)));
}

} // namespace vellumo
