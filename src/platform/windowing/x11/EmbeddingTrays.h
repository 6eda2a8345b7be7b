// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace vellumo {

/// Watches whether the display has a tray of the older kind, which embeds icons as windows, and
/// when one comes. There is none without an X server. Main thread only.
class EmbeddingTrays final : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    explicit EmbeddingTrays(QObject *parent = nullptr);
    ~EmbeddingTrays() override;

    /// Asks the X server.
    [[nodiscard]] bool isPresent() const;

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

Q_SIGNALS:
    void appeared();
};

} // namespace vellumo
