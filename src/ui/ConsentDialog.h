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

/// Asks in plain words whether vellumo may read selected text: a small ordinary window that blocks
/// nothing. Its window exists only while the question is open.
class ConsentDialog final : public QObject, public ConsentPrompting {
    Q_OBJECT

public:
    /// The engine and the texts must outlive the dialog. The engine needs the import path of
    /// prepareEngine().
    ConsentDialog(QQmlEngine &engine, BilingualText &texts, QObject *parent = nullptr);
    ~ConsentDialog() override;

    void ask(std::function<void(bool allowed)> answered) override;

    /// Keeps the question off the screen while another dialog is shown.
    void hold();
    /// What was asked is shown after all, or is dropped without an answer.
    void release(bool isStillWanted);

    /// The window while the question is open, otherwise null.
    [[nodiscard]] QQuickWindow *window() const { return window_; }

private Q_SLOTS:
    void onAnswered(bool allowed);

private:
    void show();
    void closeWindow();

    QQmlEngine &engine_;
    BilingualText &texts_;
    QPointer<QQuickWindow> window_;
    std::function<void(bool)> answered_;
    bool isHeld_ = false;
};

} // namespace vellumo
