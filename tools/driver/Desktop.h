// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QtGlobal>
#include <chrono>
#include <memory>
#include <optional>

namespace vellumo::test {

using WindowId = quint32;

/// Key codes of a standard PC keyboard.
namespace Key {
constexpr quint8 Escape = 9;
constexpr quint8 Tab = 23;
constexpr quint8 Return = 36;
constexpr quint8 ControlLeft = 37;
constexpr quint8 ShiftLeft = 50;
constexpr quint8 AltLeft = 64;
constexpr quint8 CapsLock = 66;
constexpr quint8 NumLock = 77;
constexpr quint8 AltRight = 108;
constexpr quint8 Home = 110;
constexpr quint8 PageUp = 112;
constexpr quint8 PageDown = 117;
constexpr quint8 End = 115;
constexpr quint8 ArrowRight = 114;
constexpr quint8 ArrowDown = 116;
constexpr quint8 A = 38;
constexpr quint8 H = 43;
constexpr quint8 Q = 24;
constexpr quint8 W = 25;
} // namespace Key

/// The display as a user sees it: windows by class and title, pixels, and input.
/// Asks only the X server, never the program under test.
class Desktop {
public:
    Desktop();
    ~Desktop();
    Desktop(const Desktop &) = delete;
    Desktop &operator=(const Desktop &) = delete;
    Desktop(Desktop &&) = delete;
    Desktop &operator=(Desktop &&) = delete;

    /// Returns false without an X server.
    [[nodiscard]] bool isOpen() const;

    // Windows -------------------------------------------------------------------------------------

    /// Returns visible windows whose WM_CLASS has `part` in one of its halves, in any case, and
    /// whose title contains `title`.
    [[nodiscard]] QList<WindowId> windows(const QString &part, const QString &title = {}) const;
    [[nodiscard]] std::optional<WindowId>
    waitForWindow(const QString &part, const QString &title = {},
                  std::chrono::milliseconds time = std::chrono::seconds(30)) const;
    [[nodiscard]] bool isVisible(WindowId window) const;
    [[nodiscard]] QRect geometry(WindowId window) const;
    [[nodiscard]] QString title(WindowId window) const;
    [[nodiscard]] WindowId activeWindow() const;
    [[nodiscard]] WindowId focusWindow() const;

    /// Asks the window manager to activate the window, or without one gives it the input focus.
    /// Returns whether it has the keyboard in the end.
    bool activate(WindowId window) const;
    void setFullScreen(WindowId window, bool fullScreen) const;

    /// Returns the topmost window with a WM_CLASS at a point of the screen.
    [[nodiscard]] WindowId windowAt(QPoint point) const;

    [[nodiscard]] QImage pixels(QRect area = {}) const; ///< of the whole screen without an area

    /// Finds the topmost line of dark pixels in a light area, such as a line of print.
    [[nodiscard]] QRect firstLineOfPrint(QRect area) const;

    // Input ---------------------------------------------------------------------------------------

    void press(quint8 keycode) const;
    void release(quint8 keycode) const;
    void tap(quint8 keycode) const;
    /// Presses now and releases after 40 ms. Returns at once; the server keeps the time.
    void pressForAMoment(quint8 keycode) const;
    /// Holds `modifier` while tapping `keycode` `times` times.
    void chord(quint8 modifier, quint8 keycode, int times = 1) const;
    /// Types ASCII letters, digits, blanks and -,./;: on the layout that the server starts with.
    void type(const QString &text) const;
    void moveTo(QPoint point) const;
    void click(QPoint point, int times = 1, quint8 button = 1) const;
    /// Presses at one point and moves to another with several motions, as toolkits expect.
    void drag(QPoint from, QPoint to) const;

    /// Presses Alt twice, as quickly as a user. Repeats if the machine was too busy for that.
    void doubleTap() const;
    /// Presses twice. The server itself waits between the presses, so that the events' times do not
    /// depend on how busy this process is. Returns the distance of the presses by the server's
    /// clock.
    std::chrono::milliseconds doubleTap(std::chrono::milliseconds gap, quint8 first = Key::AltLeft,
                                        quint8 second = Key::AltLeft) const;
    /// Returns the time of the last press of a key, on the server's clock.
    [[nodiscard]] std::optional<quint32> timeOfPress(quint8 keycode) const;

    /// Returns when the server has handled everything that was sent.
    void sync() const;

private:
    struct Private;
    std::unique_ptr<Private> d_;
};

} // namespace vellumo::test
