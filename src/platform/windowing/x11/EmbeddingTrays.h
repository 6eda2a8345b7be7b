// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace vellumo {

/// Reports whether the display has an XEmbed tray, and when one appears. There is none without an X
/// server. Main thread only.
class EmbeddingTrays final : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    explicit EmbeddingTrays(QObject *parent = nullptr);
    ~EmbeddingTrays() override;

    /// Queries the X server.
    [[nodiscard]] bool isPresent() const;

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

Q_SIGNALS:
    void appeared();
};

} // namespace vellumo
