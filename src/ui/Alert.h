// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <functional>

class QQmlEngine;

namespace vellumo {

/// A modal alert with one button: while it stands, the program's other windows take no input. It
/// runs no event loop. Its window exists only while it stands.
class Alert final : public QObject {
    Q_OBJECT

public:
    struct Text {
        QString message;
        QString informativeText;
        QString button = QStringLiteral("OK");
    };

    /// The engine must outlive the alert and needs the import path of prepareEngine().
    explicit Alert(QQmlEngine &engine, QObject *parent = nullptr);
    ~Alert() override;

    /// Called with each new window before it is shown.
    std::function<void(QWindow &window)> onWindowMade;

    /// One that stands already comes to the front as it is.
    void show(const Text &text);

    /// The window while the alert stands, otherwise null.
    [[nodiscard]] QQuickWindow *window() const { return window_; }

private Q_SLOTS:
    void onDismissed();

private:
    QQmlEngine &engine_;
    QPointer<QQuickWindow> window_;
};

} // namespace vellumo
