// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QWindow>
#include <optional>

namespace vellumo {

/// The pointer under Wayland, where a program is told of it only over its own windows, and only
/// relative to them. Listens to the events of all windows; an event filter that asks for the
/// position must be installed before this object is made. Main thread only.
class OwnPointer : public QObject {
    Q_OBJECT

public:
    OwnPointer();

    /// Returns the position in Qt's coordinates while the pointer is over a window whose position
    /// is known, which is that of a layer surface.
    [[nodiscard]] std::optional<QPoint> position() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPointer<QWindow> window_; ///< below the pointer
    QPoint inside_; ///< position in it
};

} // namespace vellumo
