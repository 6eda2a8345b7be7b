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

/// Shows the progress of a check for updates in a small ordinary window, created when shown and
/// deleted when closed.
/// The QML file of the same name draws it. Everything it shows is plain text of bounded length.
class UpdateWindow final : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(UpdateReport)
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(State state READ state NOTIFY changed)
    Q_PROPERTY(Failure failure READ failure NOTIFY changed)
    Q_PROPERTY(QString runningVersion READ runningVersion CONSTANT)
    Q_PROPERTY(QString version READ version NOTIFY changed)
    Q_PROPERTY(QString released READ released NOTIFY changed)
    Q_PROPERTY(QString notes READ notes NOTIFY changed)
    Q_PROPERTY(QString site READ site NOTIFY changed)
    Q_PROPERTY(QString unopenedPage READ unopenedPage NOTIFY changed)

public:
    enum class State : quint8 { Checking, NothingNew, SomethingNew, Failed };
    Q_ENUM(State)

    enum class Failure : quint8 {
        Unreachable, ///< no network, no such host, connection refused
        Insecure, ///< the host could not prove who it is
        TimedOut,
        Refused, ///< the host answered, but not with a feed
        Untrusted, ///< what it answered is not signed for this program
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

    // Each opens the window in front, or changes the open one where it lies.
    void showChecking();
    void showNothingNew();
    void showOffer(const UpdateFeed &offer);
    void showFailure(Failure failure);

    /// Brings the window to the front as it is; false when there is none.
    bool raise();
    /// Changes the open window only: the page of the offer could not be opened.
    void showUnopenedPage();
    /// Closes it without a signal.
    void close();

    /// The window while it is shown, otherwise null.
    [[nodiscard]] QQuickWindow *window() const { return window_; }

    // for the drawing

    [[nodiscard]] State state() const { return state_; }
    [[nodiscard]] Failure failure() const { return failure_; }
    [[nodiscard]] QString runningVersion() const { return runningVersion_; }
    [[nodiscard]] QString version() const;
    [[nodiscard]] QString released() const;
    [[nodiscard]] QString notes() const;
    /// The host that the download leads to.
    [[nodiscard]] QString site() const;
    /// The whole address, once it turned out that nothing opens it; else empty.
    [[nodiscard]] QString unopenedPage() const { return unopenedPage_; }

    Q_INVOKABLE void download();
    Q_INVOKABLE void tryAgain();
    Q_INVOKABLE void userClosed();

Q_SIGNALS:
    void changed();
    /// The open window shows something else now.
    void stateShown();

    void downloadRequested();
    void retryRequested();
    /// The user closed the window. It is deleted already.
    void closedByUser();

private:
    void show(State state);
    [[nodiscard]] bool create();

    QQmlEngine &engine_;
    BilingualText &texts_;
    QString runningVersion_;
    QPointer<QQuickWindow> window_;
    State state_ = State::Checking;
    Failure failure_ = Failure::Unreachable;
    std::optional<UpdateFeed> offer_;
    QString unopenedPage_;
};

} // namespace vellumo
