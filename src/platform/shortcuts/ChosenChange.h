// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopChange.h"
#include <QList>

namespace vellumo {

/// One change that desktops offer in different ways: the first way that is available here.
class ChosenChange final : public DesktopChange {
    Q_OBJECT

public:
    /// The changes must outlive this object. There is at least one.
    explicit ChosenChange(QList<DesktopChange *> ways);

    [[nodiscard]] State state() const override { return chosen().state(); }
    [[nodiscard]] QString keys() const override { return chosen().keys(); }
    void refresh() override;
    void make() override { chosen().make(); }
    void undo() override { chosen().undo(); }

private:
    [[nodiscard]] DesktopChange &chosen() const;

    QList<DesktopChange *> ways_;
};

} // namespace vellumo
