// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HttpSession.h"
#include "update/DebianVersion.h"
#include "update/Ed25519PublicKey.h"
#include "update/SignatureCheck.h"
#include "update/UpdateControlling.h"
#include "update/UpdateWindow.h"
#include <QObject>
#include <QUrl>
#include <memory>
#include <optional>

class QQmlEngine;

namespace vellumo {

class BilingualText;
class Clock;
class Workspace;

/// The address of the feed, and the key that signs it.
struct UpdateSource {
    QUrl feed; ///< https
    Ed25519PublicKey key;

    /// Parses both; absent unless the feed is an https URL and the key the base64 of an Ed25519
    /// key.
    [[nodiscard]] static std::optional<UpdateSource> from(const QString &feed, const QString &key);
};

/// Checks for updates on request and shows the result in its own window. Downloads and installs
/// nothing: it opens the page of a release. Idle until it is called.
class UpdateController final : public QObject, public UpdateControlling {
    Q_OBJECT

public:
    struct Collaborators {
        HttpSession &http;
        Workspace &workspace;
        Clock &clock;
        QQmlEngine &engine; ///< with the import path of prepareEngine()
        BilingualText &texts;
    };

    /// All must outlive the controller.
    UpdateController(UpdateSource source, DebianVersion running, SignatureCheck signatures,
                     const Collaborators &collaborators);
    ~UpdateController() override;
    Q_DISABLE_COPY_MOVE(UpdateController)

    /// Starts a check and shows its progress. During a check, or while an update is offered, raises
    /// the window instead.
    void checkForUpdates() override;
    void checkInBackground() override;

    /// Returns the window while it is shown; otherwise null.
    [[nodiscard]] QQuickWindow *window() const { return window_.window(); }

private:
    void check();
    void send();
    void take(const Result<HttpResponse, HttpError> &answer);
    void take(const Result<UpdateFeed, FeedFault> &feed);
    void fail(UpdateWindow::Failure failure, const QString &reason);
    void openPage();

    UpdateSource source_;
    DebianVersion running_;
    SignatureCheck signatures_;
    Collaborators with_;
    UpdateWindow window_;
    QUrl page_; ///< page of the offered update
    bool isQuiet_ = false; ///< the running check was not requested by the user
    /// Context of the running request, which its deletion aborts.
    std::unique_ptr<QObject> request_;
};

} // namespace vellumo
