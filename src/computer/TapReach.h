// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopChange.h"
#include <QList>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

class BilingualText;
class DefaultsStore;
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
    Q_PROPERTY(bool hasFailed READ hasFailed NOTIFY changed)
    Q_PROPERTY(QString question READ question NOTIFY changed)

public:
    /// All must outlive this object.
    TapReach(DesktopReporting &desktop, const BilingualText &texts, DefaultsStore &defaults);

    /// Returns whether vellumo is reached from every window, by a double tap or a shortcut.
    [[nodiscard]] bool isEverywhere() const;
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString text() const;
    /// Returns the text of the button that makes or undoes the change; empty when none is offered.
    [[nodiscard]] QString actionText() const;
    [[nodiscard]] bool isUndo() const { return made() != nullptr; }
    [[nodiscard]] bool isBusy() const { return isBusy_; }
    /// Returns whether the last change could not be made.
    [[nodiscard]] bool hasFailed() const { return hasFailed_; }

    /// Makes or undoes the change that is offered.
    Q_INVOKABLE void act();

    /// Returns the question whether to make the change, or that it failed after the answer; empty
    /// when none is offered, and once it was answered on this computer.
    [[nodiscard]] QString question() const;
    /// Answers the question: makes the change, or leaves the desktop as it is.
    Q_INVOKABLE void answer(bool accepts);

    void refresh();

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] DesktopChange *firstWith(DesktopChange::State state) const;
    [[nodiscard]] DesktopChange *made() const;
    [[nodiscard]] DesktopChange *offered() const;
    [[nodiscard]] QString failureText() const;
    void follow();

    DesktopReporting &desktop_;
    const BilingualText &texts_;
    DefaultsStore &defaults_;
    QList<DesktopChange *> followed_;
    bool isBusy_ = false;
    bool hasFailed_ = false;
    bool isAnswered_ = false; ///< the question, with an outcome that is not acknowledged yet
};

} // namespace vellumo
