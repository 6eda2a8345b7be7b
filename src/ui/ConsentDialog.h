// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ConsentPrompting.h"
#include <QObject>
#include <QPointer>
#include <QQuickWindow>

class QQmlEngine;

namespace vellumo {

class BilingualText;

/// Asks whether vellumo may read selected text, in a small modeless window that exists only while
/// the question is open. It stays above the ordinary window that was brought to the front last.
class ConsentDialog final : public QObject, public ConsentPrompting {
    Q_OBJECT

public:
    /// The engine and the texts must outlive the dialog. The engine needs the import path of
    /// prepareEngine().
    ConsentDialog(QQmlEngine &engine, BilingualText &texts, QObject *parent = nullptr);
    ~ConsentDialog() override;

    void ask(std::function<void(bool allowed)> answered) override;

    /// Defers the question while another dialog is shown.
    void hold();
    /// Ends hold(): shows a deferred question, or drops it without an answer.
    void release(bool isStillWanted);

    /// Returns the window while the question is open; otherwise null.
    [[nodiscard]] QQuickWindow *window() const { return window_; }

private Q_SLOTS:
    void onAnswered(bool allowed);

private:
    void show();
    void stayAbove(QWindow &window);
    void closeWindow();

    QQmlEngine &engine_;
    BilingualText &texts_;
    QPointer<QQuickWindow> window_;
    std::function<void(bool)> answered_;
    bool isHeld_ = false;
};

} // namespace vellumo
