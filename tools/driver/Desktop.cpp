// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "driver/Desktop.h"

#include "driver/Waiting.h"
#include <QDeadlineTimer>
#include <QHash>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <xcb/xcb.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace vellumo::test {

using namespace std::chrono_literals;

namespace {

template <typename T> struct FreeDeleter {
    void operator()(T *pointer) const { std::free(pointer); }
};
template <typename T> using Reply = std::unique_ptr<T, FreeDeleter<T>>;

template <typename T> Reply<T> own(T *pointer)
{
    return Reply<T>(pointer);
}

constexpr auto betweenMotions = 15ms;
constexpr auto holdTime = 40ms;

} // namespace

struct Desktop::Private {
    xcb_connection_t *connection = nullptr;
    xcb_screen_t *screen = nullptr;
    mutable QHash<QByteArray, xcb_atom_t> atoms;
    mutable QHash<quint8, quint32> pressTimes;

    [[nodiscard]] xcb_atom_t atom(const QByteArray &name) const
    {
        auto known = atoms.constFind(name);
        if (known == atoms.constEnd()) {
            const auto cookie = xcb_intern_atom(
                connection, false, static_cast<quint16>(name.size()), name.constData());
            const auto reply = own(xcb_intern_atom_reply(connection, cookie, nullptr));
            known = atoms.insert(name, reply ? reply->atom : quint32{XCB_ATOM_NONE});
        }
        return *known;
    }

    [[nodiscard]] QByteArray property(xcb_window_t window, const QByteArray &name) const
    {
        const auto cookie = xcb_get_property(connection, false, window, atom(name),
                                             XCB_GET_PROPERTY_TYPE_ANY, 0, 4096);
        const auto reply = own(xcb_get_property_reply(connection, cookie, nullptr));
        if (!reply)
            return {};
        return {static_cast<const char *>(xcb_get_property_value(reply.get())),
                xcb_get_property_value_length(reply.get())};
    }

    [[nodiscard]] WindowId windowProperty(xcb_window_t window, const QByteArray &name) const
    {
        const QByteArray value = property(window, name);
        WindowId result = XCB_WINDOW_NONE;
        if (value.size() >= qsizetype{sizeof result})
            std::memcpy(&result, value.constData(), sizeof result);
        return result;
    }

    [[nodiscard]] QList<xcb_window_t> children(xcb_window_t window) const
    {
        const auto reply =
            own(xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
        if (!reply)
            return {};
        const auto *first = xcb_query_tree_children(reply.get());
        return {first, first + xcb_query_tree_children_length(reply.get())};
    }

    void collectClients(xcb_window_t window, int depth, QList<WindowId> &found) const
    {
        for (const xcb_window_t child : children(window)) {
            // newer versions of Mutter have frames with a separate class
            const bool isFrame = !property(child, "_MUTTER_FRAME_FOR").isEmpty();
            if (!isFrame && !property(child, "WM_CLASS").isEmpty())
                found.append(child);
            else if (depth > 0)
                collectClients(child, depth - 1, found);
        }
    }

    /// Sends an event in the name of a window to the window manager.
    void clientMessage(xcb_window_t window, const QByteArray &type,
                       std::array<quint32, 5> data) const
    {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = atom(type);
        std::copy(data.begin(), data.end(), std::begin(event.data.data32));
        xcb_send_event(connection, false, screen->root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char *>(&event));
        xcb_flush(connection);
    }

    void fake(quint8 type, quint8 detail, quint32 delayMs = 0, QPoint point = {}) const
    {
        xcb_test_fake_input(connection, type, detail, delayMs, screen->root,
                            static_cast<qint16>(point.x()), static_cast<qint16>(point.y()), 0);
        xcb_flush(connection);
    }

    void readEvents() const
    {
        const auto *extension = xcb_get_extension_data(connection, &xcb_input_id);
        while (const auto event = own(xcb_poll_for_event(connection))) {
            const auto *generic = reinterpret_cast<const xcb_ge_generic_event_t *>(event.get());
            if ((event->response_type & 0x7f) != XCB_GE_GENERIC
                || generic->extension != extension->major_opcode
                || generic->event_type != XCB_INPUT_RAW_KEY_PRESS) {
                continue;
            }
            const auto *press =
                reinterpret_cast<const xcb_input_raw_key_press_event_t *>(event.get());
            pressTimes.insert(static_cast<quint8>(press->detail), press->time);
        }
    }
};

Desktop::Desktop() : d_(std::make_unique<Private>())
{
    int number = 0;
    d_->connection = xcb_connect(nullptr, &number);
    if (xcb_connection_has_error(d_->connection) != 0)
        return;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(d_->connection));
    for (; number > 0; --number)
        xcb_screen_next(&screens);
    d_->screen = screens.data;

    // raw key presses carry the server's time
    std::free(xcb_input_xi_query_version_reply(
        d_->connection, xcb_input_xi_query_version(d_->connection, 2, 2), nullptr));
    struct {
        xcb_input_event_mask_t head;
        quint32 mask;
    } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS};
    xcb_input_xi_select_events(d_->connection, d_->screen->root, 1, &selection.head);
    sync();
}

Desktop::~Desktop()
{
    xcb_disconnect(d_->connection);
}

bool Desktop::isOpen() const
{
    return d_->screen != nullptr;
}

QList<WindowId> Desktop::windows(const QString &part, const QString &title) const
{
    QList<WindowId> found;
    if (!isOpen())
        return found;
    QList<WindowId> clients;
    d_->collectClients(d_->screen->root, 2, clients);
    for (const WindowId window : std::as_const(clients)) {
        const QString name = QString::fromUtf8(d_->property(window, "WM_CLASS"));
        if (name.contains(part, Qt::CaseInsensitive) && isVisible(window)
            && (title.isEmpty() || this->title(window).contains(title))) {
            found.append(window);
        }
    }
    return found;
}

std::optional<WindowId> Desktop::waitForWindow(const QString &part, const QString &title,
                                               std::chrono::milliseconds time) const
{
    QList<WindowId> found;
    const auto appeared = [&] {
        found = windows(part, title);
        found.removeIf([this](WindowId window) { return geometry(window).width() < 50; });
        return !found.isEmpty();
    };
    if (!waitUntil(appeared, time))
        return std::nullopt;
    return found.last();
}

bool Desktop::isVisible(WindowId window) const
{
    const auto reply = own(xcb_get_window_attributes_reply(
        d_->connection, xcb_get_window_attributes(d_->connection, window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

QRect Desktop::geometry(WindowId window) const
{
    const auto sizeCookie = xcb_get_geometry(d_->connection, window);
    const auto placeCookie =
        xcb_translate_coordinates(d_->connection, window, d_->screen->root, 0, 0);
    const auto size = own(xcb_get_geometry_reply(d_->connection, sizeCookie, nullptr));
    const auto place = own(xcb_translate_coordinates_reply(d_->connection, placeCookie, nullptr));
    if (!size || !place)
        return {};
    return {place->dst_x, place->dst_y, size->width, size->height};
}

QString Desktop::title(WindowId window) const
{
    const QByteArray name = d_->property(window, "_NET_WM_NAME");
    return QString::fromUtf8(name.isEmpty() ? d_->property(window, "WM_NAME") : name);
}

WindowId Desktop::activeWindow() const
{
    return d_->windowProperty(d_->screen->root, "_NET_ACTIVE_WINDOW");
}

WindowId Desktop::focusWindow() const
{
    const auto reply = own(
        xcb_get_input_focus_reply(d_->connection, xcb_get_input_focus(d_->connection), nullptr));
    return reply ? reply->focus : WindowId{XCB_WINDOW_NONE};
}

bool Desktop::activate(WindowId window) const
{
    const bool managed = d_->windowProperty(d_->screen->root, "_NET_SUPPORTING_WM_CHECK") != 0;
    if (managed) {
        // Again, since a window manager ignores it for a window that it does not manage yet.
        QDeadlineTimer pause;
        return waitUntil([&] {
            if (pause.hasExpired()) {
                d_->clientMessage(window, "_NET_ACTIVE_WINDOW", {2, XCB_CURRENT_TIME, 0, 0, 0});
                pause.setRemainingTime(1000);
            }
            return activeWindow() == window && focusWindow() != XCB_NONE;
        });
    }
    return waitUntil([&] { // fails before the window is visible
        xcb_set_input_focus(d_->connection, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
        sync();
        return focusWindow() == window;
    });
}

void Desktop::setFullScreen(WindowId window, bool fullScreen) const
{
    d_->clientMessage(window, "_NET_WM_STATE",
                      {fullScreen ? 1U : 0U, d_->atom("_NET_WM_STATE_FULLSCREEN"), 0, 2, 0});
}

WindowId Desktop::windowAt(QPoint point) const
{
    WindowId found = XCB_WINDOW_NONE;
    xcb_window_t window = d_->screen->root;
    while (window != XCB_WINDOW_NONE) {
        if (!d_->property(window, "WM_CLASS").isEmpty())
            found = window;
        const auto cookie = xcb_translate_coordinates(d_->connection, d_->screen->root, window,
                                                      static_cast<qint16>(point.x()),
                                                      static_cast<qint16>(point.y()));
        const auto reply = own(xcb_translate_coordinates_reply(d_->connection, cookie, nullptr));
        window = reply ? reply->child : xcb_window_t{XCB_WINDOW_NONE};
    }
    return found;
}

QImage Desktop::pixels(QRect area) const
{
    const QRect whole(0, 0, d_->screen->width_in_pixels, d_->screen->height_in_pixels);
    area = area.isNull() ? whole : area.intersected(whole);
    const auto cookie =
        xcb_get_image(d_->connection, XCB_IMAGE_FORMAT_Z_PIXMAP, d_->screen->root,
                      static_cast<qint16>(area.x()), static_cast<qint16>(area.y()),
                      static_cast<quint16>(area.width()), static_cast<quint16>(area.height()), ~0U);
    const auto reply = own(xcb_get_image_reply(d_->connection, cookie, nullptr));
    if (!reply)
        return {};
    const QImage borrowed(xcb_get_image_data(reply.get()), area.width(), area.height(),
                          qsizetype{4} * area.width(), QImage::Format_RGB32);
    return borrowed.copy();
}

QRect Desktop::firstLineOfPrint(QRect area) const
{
    const QImage image = pixels(area);
    QRect line;
    for (int y = 0; y < image.height(); ++y) {
        QRect inked;
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 128)
                inked = inked.united(QRect(x, y, 1, 1));
        }
        if (inked.isNull() && !line.isNull())
            break;
        line = line.united(inked);
    }
    return line.isNull() ? line : line.translated(area.topLeft());
}

void Desktop::press(quint8 keycode) const
{
    d_->fake(XCB_KEY_PRESS, keycode);
}

void Desktop::release(quint8 keycode) const
{
    d_->fake(XCB_KEY_RELEASE, keycode);
}

void Desktop::tap(quint8 keycode) const
{
    press(keycode);
    release(keycode);
    sync();
}

void Desktop::pressForAMoment(quint8 keycode) const
{
    d_->fake(XCB_KEY_PRESS, keycode);
    d_->fake(XCB_KEY_RELEASE, keycode, static_cast<quint32>(holdTime.count()));
}

void Desktop::chord(quint8 modifier, quint8 keycode, int times) const
{
    press(modifier);
    for (int i = 0; i < times; ++i)
        tap(keycode);
    release(modifier);
    sync();
}

void Desktop::type(const QString &text) const
{
    // keycodes of the keys on a standard PC keyboard, row by row
    static const QByteArray rows[] = {"qwertyuiop", "asdfghjkl;", "zxcvbnm,./", "1234567890-"};
    static const quint8 firstCodes[] = {24, 38, 52, 10};
    for (const QChar character : text) {
        const bool isColon = character == u':';
        const char plain = isColon ? ';' : character.toLower().toLatin1();
        quint8 keycode = plain == ' ' ? 65 : 0;
        for (size_t row = 0; row < std::size(rows); ++row) {
            const qsizetype column = rows[row].indexOf(plain);
            if (column >= 0)
                keycode = static_cast<quint8>(firstCodes[row] + column);
        }
        Q_ASSERT(keycode != 0);
        if (character.isUpper() || isColon)
            chord(Key::ShiftLeft, keycode);
        else
            tap(keycode);
    }
}

void Desktop::moveTo(QPoint point) const
{
    d_->fake(XCB_MOTION_NOTIFY, 0, 0, point);
    sync();
}

void Desktop::click(QPoint point, int times, quint8 button) const
{
    moveTo(point);
    for (int i = 0; i < times; ++i) {
        d_->fake(XCB_BUTTON_PRESS, button);
        d_->fake(XCB_BUTTON_RELEASE, button, 10);
    }
    sync();
}

void Desktop::drag(QPoint from, QPoint to) const
{
    constexpr int steps = 8;
    const auto pause = static_cast<quint32>(betweenMotions.count());
    moveTo(from);
    d_->fake(XCB_BUTTON_PRESS, 1, pause);
    for (int step = 1; step <= steps; ++step)
        d_->fake(XCB_MOTION_NOTIFY, 0, pause, from + ((to - from) * step / steps));
    d_->fake(XCB_BUTTON_RELEASE, 1, pause);
    sync();
}

void Desktop::doubleTap() const
{
    constexpr auto longestGap = 360ms; // that still makes a pair
    constexpr int attempts = 5;
    for (int i = 0; i < attempts && doubleTap(150ms) > longestGap; ++i)
        std::this_thread::sleep_for(longestGap); // else the next press makes a pair with the last
}

std::chrono::milliseconds Desktop::doubleTap(std::chrono::milliseconds gap, quint8 first,
                                             quint8 second) const
{
    const auto wait = [](std::chrono::milliseconds time) {
        return static_cast<quint32>(time.count());
    };
    sync();
    d_->fake(XCB_KEY_PRESS, first);
    d_->fake(XCB_KEY_RELEASE, first, wait(holdTime));
    sync();
    const quint32 firstTime = timeOfPress(first).value_or(0);
    d_->fake(XCB_KEY_PRESS, second, wait(std::max(gap - holdTime, 0ms)));
    sync();
    const quint32 secondTime = timeOfPress(second).value_or(0);
    d_->fake(XCB_KEY_RELEASE, second, wait(holdTime));
    sync();
    return std::chrono::milliseconds(secondTime - firstTime);
}

std::optional<quint32> Desktop::timeOfPress(quint8 keycode) const
{
    d_->readEvents();
    const auto found = d_->pressTimes.constFind(keycode);
    if (found == d_->pressTimes.constEnd())
        return std::nullopt;
    return *found;
}

void Desktop::sync() const
{
    std::free(
        xcb_get_input_focus_reply(d_->connection, xcb_get_input_focus(d_->connection), nullptr));
}

} // namespace vellumo::test
