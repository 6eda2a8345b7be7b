// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/windowing/x11/WorkArea.h"
#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>

namespace vellumo {

/// What desktop panels reserve, where there are several screens: Qt knows their free parts only
/// where there is one. Without an X server, or with one screen, nothing is asked and nothing is
/// reserved. Main thread only.
class StrutWatch final : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    explicit StrutWatch(QObject *parent = nullptr);
    ~StrutWatch() override;

    /// The margins of a screen with this geometry, in the X server's pixels.
    [[nodiscard]] QMargins margins(const QRect &screen) const;

    /// Looks again, at the cost of round trips; a difference arrives as changed().
    void refresh();

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

Q_SIGNALS:
    void changed();

private:
    QList<QList<quint32>> numbers_; ///< of the windows that reserve something
    QList<Strut> struts_;
    QTimer settling_; ///< windows come and go in crowds
};

} // namespace vellumo
