// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointF>
#include <QtQml/qqmlregistration.h>
#include <functional>
#include <optional>

namespace vellumo {

/// Distinguishes a click from a drag on the collapsed pill. The drawing hands it what the left
/// button and the pointer do; in list form everything but leaving goes to the list instead. Main
/// thread only.
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

    /// Points are those of the window.
    Q_INVOKABLE void mouseDown(QPointF point);
    Q_INVOKABLE void mouseDragged(QPointF point);
    Q_INVOKABLE void mouseUp();
    /// The press is over without a release.
    Q_INVOKABLE void mouseCanceled();
    Q_INVOKABLE void mouseEntered();
    Q_INVOKABLE void mouseExited();
    /// A click without a mouse.
    Q_INVOKABLE void press();

Q_SIGNALS:
    void modeChanged();
    /// The press has become a drag of the window.
    void dragStarted();
    void cursorChanged(bool isHand);

private:
    Mode mode_ = Mode::Pill;
    std::optional<QPointF> pressStart_;
    bool dragging_ = false;
};

} // namespace vellumo
