// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>

namespace vellumo {

/// Reports whether a compositor blends windows, and when one starts or stops. A compositor owns a
/// selection, but one that could not start rendering may still own it; therefore a window is also
/// tested for redirection. Without an X server windows count as blended.
class CompositorWatch final : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    explicit CompositorWatch(QObject *parent = nullptr);
    ~CompositorWatch() override;

    [[nodiscard]] bool isCompositing() const { return isCompositing_; }

    /// Queries again, which costs a round trip; a change is reported by changed().
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
    QTimer settling_; ///< a compositor acquires the selection before it starts to render
};

} // namespace vellumo
