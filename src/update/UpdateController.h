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

/// Where updates are announced, and whose word on them counts.
struct UpdateSource {
    QUrl feed; ///< https
    Ed25519PublicKey key;

    /// Absent when either is missing or is not what it should be. The key is the base64 of its
    /// bytes.
    [[nodiscard]] static std::optional<UpdateSource> from(const QString &feed, const QString &key);
};

/// Looks for updates on request and shows the result in its own window. Downloads and
/// installs nothing: it opens the page of a release. Does nothing at all before it is called.
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

    /// The collaborators must outlive the controller.
    UpdateController(UpdateSource source, DebianVersion running, SignatureCheck signatures,
                     const Collaborators &collaborators);
    ~UpdateController() override;
    Q_DISABLE_COPY_MOVE(UpdateController)

    /// Starts a check and shows how it goes. While one is under way, or an update is on offer, its
    /// window comes to the front instead.
    void checkForUpdates() override;
    void lookQuietly() override;

    /// Its window while it is shown, otherwise null.
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
    QUrl page_; ///< of the update on offer
    bool isQuiet_ = false; ///< the check under way was not asked for by the user
    std::unique_ptr<QObject> request_; ///< the request under way ends with it
};

} // namespace vellumo
