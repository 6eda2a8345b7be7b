// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/TapProtocol.h"
#include "platform/TapSource.h"
#include <QFileSystemWatcher>
#include <QList>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <memory>

class QSocketNotifier;

namespace vellumo {

/// Hears taps of a lone Alt in every window from the service `vellumo-taps`, where it is installed
/// and turned on.
///
/// The first press of two is reported when it is known to be a tap, with its time: at its release.
/// The press after a tap is reported at once.
class HelperTaps : public TapSource {
    Q_OBJECT

public:
    /// `altKeys` returns the bits of the keys that are Alt; it runs for each connection.
    HelperTaps(QString socket, std::function<std::uint8_t()> altKeys);
    ~HelperTaps() override;
    Q_DISABLE_COPY_MOVE(HelperTaps)

    /// Connects to the service as soon as there is one, or disconnects.
    void setListening(bool isListening);

    bool waitForRelease(QDeadlineTimer deadline) override;
    [[nodiscard]] bool hearsEveryWindow() const override { return isHearing_; }

private:
    struct Arrived {
        tapProtocol::Report report;
        Time at;
    };

    void open();
    void close();
    void onLost();
    void onReadable();
    [[nodiscard]] bool receive();
    void deliver();
    void handle(const Arrived &arrived);
    void endPress(Time at);
    void setHearing(bool isHearing);

    QString path_;
    std::function<std::uint8_t()> altKeys_;
    std::unique_ptr<QFileSystemWatcher> folder_; ///< of the socket; null while not listening
    QTimer retry_;
    int retries_ = 0;
    int socket_ = -1;
    std::unique_ptr<QSocketNotifier> readable_;
    QList<Arrived> arrived_; ///< and not delivered
    bool isHearing_ = false; ///< the service reads keyboards for this user
    bool isHeld_ = false; ///< by what has arrived
    std::optional<Time> pressedAt_; ///< of the press that has not ended, by what was delivered
    bool isReported_ = false; ///< that press was reported
    bool wasTap_ = false; ///< the press before it was
};

} // namespace vellumo
