// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FrontWindows.h"
#include <QList>

namespace vellumo {

/// The window in front by the best source that knows it now. A source that has no answer yet, or
/// whose compositor has gone, reports no window.
class ChosenFrontWindows : public FrontWindows {
    Q_OBJECT

public:
    /// `sources` are in the order of preference and must outlive this object.
    explicit ChosenFrontWindows(QList<FrontWindows *> sources);

    [[nodiscard]] std::optional<FrontWindow> frontWindow() override;
    [[nodiscard]] std::optional<QString> windowTitle(qint64 processIdentifier) override;

private:
    void onChanged(qsizetype source);

    QList<FrontWindows *> sources_;
    qsizetype chosen_; ///< the source that was announced last
};

} // namespace vellumo
