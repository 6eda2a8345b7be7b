// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/DeletedNotes.h"

#include "files/AtomicFile.h"
#include "notes/StrictUuid.h"

#include <QFile>

namespace vellumo {

DeletedNotes::DeletedNotes(QString path) : path_(std::move(path))
{
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly)) {
        return;
    }
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (const auto id = strictUuid({line.constData(), static_cast<size_t>(line.size())})) {
            ids_.insert(*id);
        }
    }
}

void DeletedNotes::insert(const QUuid &id)
{
    isSaved_ = isSaved_ && ids_.contains(id);
    ids_.insert(id);
}

void DeletedNotes::remove(const QUuid &id)
{
    isSaved_ = !ids_.remove(id) && isSaved_;
}

std::optional<QString> DeletedNotes::save()
{
    if (isSaved_) {
        return std::nullopt;
    }
    AtomicFile file(path_, {.durability = Durability::Synced});
    for (const QUuid &id : std::as_const(ids_)) {
        file.write(id.toByteArray(QUuid::WithoutBraces) + '\n');
    }
    isSaved_ = file.commit();
    return file.error() ? std::optional(file.error()->text()) : std::nullopt;
}

} // namespace vellumo
