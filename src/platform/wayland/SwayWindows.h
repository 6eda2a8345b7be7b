// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FrontWindows.h"
#include "platform/wayland/ReportedWindow.h"
#include <QJsonDocument>
#include <QJsonObject>

namespace vellumo {

class SwayConnection;

/// Finds the window in front by the events of sway, for native and X11 windows. Absent while the
/// connection is not open. Windows of this process are ignored.
class SwayWindows : public FrontWindows {
    Q_OBJECT

public:
    /// `sway` must outlive this object.
    explicit SwayWindows(SwayConnection &sway);

    [[nodiscard]] std::optional<FrontWindow> frontWindow() override;
    [[nodiscard]] std::optional<QString> windowTitle(qint64 processIdentifier) override;

private:
    void follow();
    void lookAtTree();
    void handleEvent(quint32 type, const QJsonDocument &content);
    void setFront(const QJsonObject &container);

    SwayConnection &sway_;
    bool isKnown_ = false; ///< sway has answered since the connection was opened
    ReportedWindow front_;
    QString title_;
};

} // namespace vellumo
