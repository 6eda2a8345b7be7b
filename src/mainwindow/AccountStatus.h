// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

class AuthService;
class BilingualText;
class SyncReporting;

/// Composes the texts about the account and its sync.
class AccountStatus : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(QString account READ account NOTIFY changed)
    Q_PROPERTY(bool syncs READ syncs NOTIFY changed)
    Q_PROPERTY(Light light READ light NOTIFY changed)
    Q_PROPERTY(QString syncText READ syncText NOTIFY changed)
    Q_PROPERTY(QString uploadText READ uploadText NOTIFY changed)
    Q_PROPERTY(QString advice READ advice NOTIFY changed)

public:
    enum class Light : quint8 { Neutral, Good, Trouble };
    Q_ENUM(Light)

    /// All must outlive the status. `sync` is null in builds without sync.
    AccountStatus(AuthService &auth, SyncReporting *sync, BilingualText &texts,
                  QObject *parent = nullptr);

    /// Returns the address of the account, or where notes are kept without one.
    [[nodiscard]] QString account() const;
    /// Returns whether a user is signed in and notes are synced.
    [[nodiscard]] bool syncs() const;
    [[nodiscard]] Light light() const;
    /// Returns a text about the progress or the problem of the sync; empty without a sync.
    [[nodiscard]] QString syncText() const;
    /// Returns the question whether to upload the pending notes to this account.
    [[nodiscard]] QString uploadText() const;
    /// Returns advice about the sync's problem; empty without one.
    [[nodiscard]] QString advice() const;

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] QString countText(int count, const QString &one, const QString &many,
                                    const QString &chinese) const;
    [[nodiscard]] QString upToDateText() const;
    [[nodiscard]] QString problemText() const;

    AuthService &auth_;
    SyncReporting *sync_;
    BilingualText &texts_;
};

} // namespace vellumo
