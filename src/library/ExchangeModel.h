// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QAbstractListModel>

namespace vellumo {

/// The questions that were asked about a note, with their answers. Plain and of bounded length.
class ExchangeModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void setExchanges(const QList<FollowUpExchange> &exchanges);

    enum Role { Question = Qt::UserRole, Answer };

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    QList<FollowUpExchange> exchanges_;
};

} // namespace vellumo
