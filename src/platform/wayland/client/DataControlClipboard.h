// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/wayland/client/DataControlServer.h"
#include "platform/wayland/client/ManagedClipboard.h"
#include <memory>

namespace vellumo {

class DataControlDevice;
class WaylandConnection;

/// CLIPBOARD of all windows.
class DataControlClipboard : public ManagedClipboard {
public:
    /// Both must outlive this object. The owner passes changes of CLIPBOARD to noteChange().
    DataControlClipboard(WaylandConnection &connection, DataControlDevice &device)
        : connection_(connection)
        , device_(device)
    {
    }

    void noteChange();

    [[nodiscard]] bool isAvailable() const override;
    [[nodiscard]] quint64 changeCount() override;
    [[nodiscard]] quint64 seenChangeCount() const override { return changeCount_; }
    [[nodiscard]] bool waitForChange(quint64 count, QDeadlineTimer deadline) override;
    [[nodiscard]] std::optional<QList<PasteboardItem>> items(QDeadlineTimer deadline) override;
    [[nodiscard]] std::optional<QString> string(QDeadlineTimer deadline) override;
    void clear() override;
    void write(const QList<PasteboardItem> &items) override;

private:
    WaylandConnection &connection_;
    DataControlDevice &device_;
    quint64 changeCount_ = 0;
    QObject context_; ///< context of queued calls
    std::unique_ptr<DataControlServer> server_; ///< null until the first write
};

} // namespace vellumo
