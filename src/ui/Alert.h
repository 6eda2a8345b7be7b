// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickWindow>

class QQmlEngine;

namespace vellumo {

/// A modal alert with one button, or a question with two. While it is shown, it blocks the window
/// that it is shown over, or all windows of the program. Only ask() runs an event loop. Its window
/// exists only while it is shown.
class Alert final : public QObject {
    Q_OBJECT

public:
    struct Text {
        QString message;
        QString informativeText;
        QString button = QStringLiteral("OK");
        QString refusal = {}; ///< text of the second button; empty for none
        bool returnAgrees = false; ///< to a question; otherwise only the focused button does
    };

    /// The engine must outlive the alert and needs the import path of prepareEngine().
    explicit Alert(QQmlEngine &engine, QObject *parent = nullptr);
    ~Alert() override;

    /// Shows the alert and returns at once. An alert that is already shown is raised unchanged.
    /// Blocks `over`, or all windows of the program if it is null.
    void show(const Text &text, QWindow *over = nullptr);

    /// As show(), above the windows of all programs.
    void showAboveAll(const Text &text);

    /// Shows the alert in a nested event loop and returns the answer; false also if it could not be
    /// shown. Only for a start that cannot continue.
    bool ask(const Text &text);

    /// Closes the alert without an answer.
    void close();

    /// Returns the window while the alert is shown; otherwise null.
    [[nodiscard]] QQuickWindow *window() const { return window_; }

Q_SIGNALS:
    /// Emitted when the user has closed the alert; true for the first button. Escape and the
    /// window's close button refuse a question.
    void answered(bool isAgreed);

private Q_SLOTS:
    void onDismissed();
    void onAgreed();

private:
    [[nodiscard]] bool create(const Text &text);
    void answer(bool isAgreed);

    QQmlEngine &engine_;
    QPointer<QQuickWindow> window_;
};

} // namespace vellumo
