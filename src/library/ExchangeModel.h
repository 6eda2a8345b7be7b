// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QAbstractListModel>

namespace vellumo {

/// List model of a note's follow-up questions and answers, as plain text of bounded length.
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
