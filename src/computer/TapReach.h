// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

class BilingualText;
class DesktopChange;
class DesktopReporting;

/// Describes in which windows a double tap works, and offers the change to the desktop's settings
/// by which vellumo is reached from the others.
class TapReach : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isEverywhere READ isEverywhere NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QString actionText READ actionText NOTIFY changed)
    Q_PROPERTY(bool isUndo READ isUndo NOTIFY changed)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY changed)

public:
    /// Both must outlive this object.
    TapReach(DesktopReporting &desktop, const BilingualText &texts);

    /// Returns whether vellumo is reached from every window, by a double tap or a shortcut.
    [[nodiscard]] bool isEverywhere() const;
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString text() const;
    /// Returns the text of the button that makes or undoes the change; empty when none is offered.
    [[nodiscard]] QString actionText() const;
    [[nodiscard]] bool isUndo() const { return made() != nullptr; }
    [[nodiscard]] bool isBusy() const { return isBusy_; }

    /// Makes or undoes the change that is offered.
    Q_INVOKABLE void act();

    void refresh();

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] DesktopChange *made() const;
    [[nodiscard]] DesktopChange *offered() const;
    void follow();

    DesktopReporting &desktop_;
    const BilingualText &texts_;
    QList<DesktopChange *> followed_;
    bool isBusy_ = false;
    bool hasFailed_ = false;
};

} // namespace vellumo
