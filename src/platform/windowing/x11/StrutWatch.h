// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/windowing/x11/WorkArea.h"
#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>

namespace vellumo {

/// Reports the areas that desktop panels reserve on several screens; Qt's available geometry is
/// right for a single screen only. Without an X server, or with one screen, nothing is queried and
/// nothing is reserved. Main thread only.
class StrutWatch final : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    explicit StrutWatch(QObject *parent = nullptr);
    ~StrutWatch() override;

    /// Returns the margins of a screen with this geometry, in the X server's pixels.
    [[nodiscard]] QMargins margins(const QRect &screen) const;

    /// Queries again, which costs round trips; a change is reported by changed().
    void refresh();

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

Q_SIGNALS:
    void changed();

private:
    QList<QList<quint32>> numbers_; ///< struts of the windows that have one
    QList<Strut> struts_;
    QTimer settling_; ///< combines changes of several windows
};

} // namespace vellumo
