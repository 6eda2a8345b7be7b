// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/TapSource.h"
#include <memory>

class QThread;

namespace vellumo {

class AltKeyListener;
class AtspiBus;

/// Hears the Alt keys of applications that report keys to the accessibility bus, such as GTK 3 and
/// Firefox. Only the two Alt keys are requested; no other key is reported.
///
/// An application waits for the answer of every listener before it handles the key. The listener
/// therefore uses a separate connection and thread, and answers at once.
class AltKeys : public TapSource {
    Q_OBJECT

public:
    /// `bus` must outlive this object, which listens while the bus is open.
    explicit AltKeys(AtspiBus &bus);
    ~AltKeys() override;
    Q_DISABLE_COPY_MOVE(AltKeys)

    bool waitForRelease(QDeadlineTimer deadline) override;

private:
    void listen(const QString &address);
    void stop();

    std::shared_ptr<AltKeyListener> listener_; ///< lives in the thread; null while not listening
    QThread *thread_ = nullptr; ///< deletes itself when it ends
};

} // namespace vellumo
