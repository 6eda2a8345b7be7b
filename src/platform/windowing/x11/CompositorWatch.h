// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>

namespace vellumo {

/// Reports whether a compositor blends windows, and when one starts or stops. The owner of the
/// screen's compositing-manager selection says that one runs; but one that could not start
/// rendering may still own it, so a window is asked as well whether it is drawn off screen.
/// Without an X server everything is taken to blend.
class CompositorWatch final : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    explicit CompositorWatch(QObject *parent = nullptr);
    ~CompositorWatch() override;

    [[nodiscard]] bool isCompositing() const { return isCompositing_; }

    /// Looks again, at the cost of a round trip; a difference arrives as changed().
    void refresh();

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

Q_SIGNALS:
    void changed();

private:
    void watch();

    quint32 window_ = 0; ///< receives the notifications
    quint32 selection_ = 0;
    quint8 firstEvent_ = 0;
    bool isOwned_ = false;
    bool isCompositing_ = true;
    QTimer settling_; ///< a compositor takes the selection before it starts to render
};

} // namespace vellumo
