// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "panel/IslandContent.h"
#include <QAbstractListModel>

namespace vellumo {

/// The follow-up rows of the view. Setting rows that extend the current ones changes only the
/// differences, so that unchanged rows keep their selection.
class ThreadModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void setRows(const QList<ThreadItem> &rows);
    [[nodiscard]] bool hasPendingRow() const;
    /// Returns the last row's answer; empty while it is pending.
    [[nodiscard]] QString latestAnswer() const;
    /// Returns why the last row has no answer; absent unless it failed.
    [[nodiscard]] std::optional<ExplanationFailure> latestFailure() const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    enum Role { Question = Qt::UserRole, Answer, Pending, Failed, Kept };

    QList<ThreadItem> rows_;
};

} // namespace vellumo
