// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "update/UpdateFeed.h"
#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>
#include <optional>

class QQmlEngine;

namespace vellumo {

class BilingualText;

/// Shows the progress of a check for updates in a small window, which is created when shown and
/// deleted when closed. The QML file of the same name draws it. Everything it shows is plain text
/// of bounded length.
class UpdateWindow final : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(UpdateReport)
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(State state READ state NOTIFY changed)
    Q_PROPERTY(QString heading READ heading NOTIFY changed)
    Q_PROPERTY(QString detail READ detail NOTIFY changed)
    Q_PROPERTY(QString notes READ notes NOTIFY changed)
    Q_PROPERTY(QString hint READ hint NOTIFY changed)

public:
    enum class State : quint8 { Checking, NothingNew, SomethingNew, Failed };
    Q_ENUM(State)

    enum class Failure : quint8 {
        Unreachable, ///< no network, unknown host, or connection refused
        Insecure, ///< the host's certificate is not trusted
        TimedOut,
        Refused, ///< the host's answer is not a feed
        Untrusted, ///< the answer is not signed for this program
        Unreadable,
        Expired,
        Incomplete, ///< this installation cannot check signatures
    };
    Q_ENUM(Failure)

    /// The engine and the texts must outlive the window. The engine needs the import path of
    /// prepareEngine().
    UpdateWindow(QQmlEngine &engine, BilingualText &texts, QString runningVersion,
                 QObject *parent = nullptr);
    ~UpdateWindow() override;

    // Each opens the window in front, over the one that is shown, or updates an open one without
    // raising it. showChecking() also gives it the keyboard.
    void showChecking();
    void showNothingNew();
    void showOffer(const UpdateFeed &offer);
    void showFailure(Failure failure);

    /// Raises the window and gives it the keyboard. Returns false when there is none.
    bool raise();
    /// Shows in an open window that the page of the offer could not be opened.
    void showUnopenedPage();
    /// Closes the window without emitting closedByUser().
    void close();

    /// Returns the window while it is shown; otherwise null.
    [[nodiscard]] QQuickWindow *window() const { return window_; }

    // called by the view

    [[nodiscard]] State state() const { return state_; }
    [[nodiscard]] QString heading() const;
    /// Returns the sentences below the heading; empty during a check.
    [[nodiscard]] QString detail() const;
    /// Returns the release notes of the offer; empty without one.
    [[nodiscard]] QString notes() const;
    /// Returns where the offer is downloaded, with the whole address after it could not be opened;
    /// empty without an offer.
    [[nodiscard]] QString hint() const;

    Q_INVOKABLE void download();
    Q_INVOKABLE void tryAgain();
    Q_INVOKABLE void userClosed();

Q_SIGNALS:
    void changed();
    /// Emitted when the content of the window has changed.
    void stateShown();

    void downloadRequested();
    void retryRequested();
    /// Emitted after the user closed the window, which is already deleted.
    void closedByUser();

private:
    void show(State state);
    [[nodiscard]] bool create();
    [[nodiscard]] QString releaseDate() const;
    [[nodiscard]] QString failureText() const;

    QQmlEngine &engine_;
    BilingualText &texts_;
    QString runningVersion_;
    QPointer<QQuickWindow> window_;
    State state_ = State::Checking;
    Failure failure_ = Failure::Unreachable;
    std::optional<UpdateFeed> offer_;
    bool isPageUnopened_ = false;
};

} // namespace vellumo
