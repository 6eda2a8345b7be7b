// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "library/ExchangeModel.h"

#include "ui/PlainText.h"

namespace vellumo {

namespace {
constexpr qsizetype maxQuestion = 20000;
constexpr qsizetype maxAnswer = 20000;
} // namespace

void ExchangeModel::setExchanges(const QList<FollowUpExchange> &exchanges)
{
    if (exchanges != exchanges_) {
        beginResetModel();
        exchanges_ = exchanges;
        endResetModel();
    }
}

int ExchangeModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(exchanges_.size());
}

QVariant ExchangeModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= exchanges_.size()) {
        return {};
    }
    const FollowUpExchange &exchange = exchanges_[index.row()];
    return role == Question ? presentableText(exchange.question, maxQuestion).trimmed()
                            : presentableText(exchange.answer, maxAnswer).trimmed();
}

QHash<int, QByteArray> ExchangeModel::roleNames() const
{
    return {{Question, "question"}, {Answer, "answer"}};
}

} // namespace vellumo
