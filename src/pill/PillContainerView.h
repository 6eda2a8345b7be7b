// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointF>
#include <QtQml/qqmlregistration.h>
#include <functional>
#include <optional>

namespace vellumo {

/// Distinguishes a click from a drag on the collapsed pill. The view passes events of the left
/// button and the pointer; while the list is open, all but leave events go to the list instead.
/// Main thread only.
class PillContainerView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the entrance's controller")
    Q_PROPERTY(Mode mode READ mode NOTIFY modeChanged)

public:
    enum class Mode : quint8 { Pill, List };
    Q_ENUM(Mode)

    using QObject::QObject;

    std::function<void()> onClick;
    std::function<void(bool isInside)> onHover;

    [[nodiscard]] Mode mode() const { return mode_; }
    void setMode(Mode mode);

    /// Points are in window coordinates.
    Q_INVOKABLE void mouseDown(QPointF point);
    Q_INVOKABLE void mouseDragged(QPointF point);
    Q_INVOKABLE void mouseUp();
    /// Ends a press without a release.
    Q_INVOKABLE void mouseCanceled();
    Q_INVOKABLE void mouseEntered();
    Q_INVOKABLE void mouseExited();
    Q_INVOKABLE void askForMenu();
    /// Clicks without a mouse, for assistive technologies and keys.
    Q_INVOKABLE void press();

Q_SIGNALS:
    void modeChanged();
    /// Emitted when a press becomes a drag of the window.
    void dragStarted();
    void cursorChanged(bool isHand);
    /// Emitted when the user clicks the pill with the other button.
    void menuRequested();

private:
    Mode mode_ = Mode::Pill;
    std::optional<QPointF> pressStart_;
    bool dragging_ = false;
};

} // namespace vellumo
