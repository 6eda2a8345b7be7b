// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/BilingualText.h"
#include <QQuickWindow>
#include <functional>
#include <memory>

class QQmlEngine;

namespace vellumo {

class AuthService;

/// For developers: pictures of the sign-in view in both languages, beside the real window.
class SignInPreview : public QObject {
    Q_OBJECT

public:
    /// Both must outlive the preview.
    SignInPreview(QQmlEngine &engine, AuthService &auth);
    ~SignInPreview() override;
    Q_DISABLE_COPY_MOVE(SignInPreview)

    /// Writes the pictures into the folder, then calls `done`.
    void writeSnapshots(const QString &folder, std::function<void()> done);

private:
    void writeView(bool english, const QString &folder, std::function<void()> done);

    bool english_ = true;
    BilingualText texts_{
        [this] { return english_ ? QStringLiteral("English") : QStringLiteral("Chinese"); }};
    std::unique_ptr<QQuickWindow> window_;
};

} // namespace vellumo
