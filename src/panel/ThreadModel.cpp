// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "panel/ThreadModel.h"

#include "panel/PanelText.h"

namespace vellumo {

void ThreadModel::setRows(const QList<ThreadItem> &rows)
{
    qsizetype same = 0;
    while (same < rows.size() && same < rows_.size()
           && rows[same].question == rows_[same].question) {
        ++same;
    }
    if (same < rows_.size()) {
        beginRemoveRows({}, static_cast<int>(same), static_cast<int>(rows_.size() - 1));
        rows_.resize(same);
        endRemoveRows();
    }
    for (qsizetype i = 0; i < same; ++i) {
        if (rows_[i] != rows[i]) {
            rows_[i] = rows[i];
            const QModelIndex changed = index(static_cast<int>(i));
            Q_EMIT dataChanged(changed, changed);
        }
    }
    if (same < rows.size()) {
        beginInsertRows({}, static_cast<int>(same), static_cast<int>(rows.size() - 1));
        rows_ = rows;
        endInsertRows();
    }
}

bool ThreadModel::hasPendingRow() const
{
    return !rows_.isEmpty() && !rows_.constLast().answer;
}

std::optional<ExplanationFailure> ThreadModel::latestFailure() const
{
    return rows_.isEmpty() ? std::nullopt : rows_.constLast().failure;
}

QString ThreadModel::latestAnswer() const
{
    return rows_.isEmpty() ? QString()
                           : panelText::answer(rows_.constLast().answer.value_or(QString()));
}

int ThreadModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant ThreadModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rows_.size()) {
        return {};
    }
    const ThreadItem &row = rows_[index.row()];
    switch (role) {
    case Question:
        return panelText::question(row.question);
    case Answer:
        return panelText::answer(row.answer.value_or(QString()));
    case Pending:
        return !row.answer.has_value();
    case Failed:
        return row.failure.has_value();
    case Kept:
        return row.kept && !row.failure;
    default:
        return {};
    }
}

QHash<int, QByteArray> ThreadModel::roleNames() const
{
    return {{Question, "question"},
            {Answer, "answer"},
            {Pending, "pending"},
            {Failed, "failed"},
            {Kept, "kept"}};
}

} // namespace vellumo
