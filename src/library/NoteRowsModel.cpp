// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "library/NoteRowsModel.h"

#include "library/NotePlace.h"
#include "notes/NoteDates.h"
#include "notes/PageAddress.h"
#include "ui/PlainText.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {
/// Longer than one line in the narrowest letters.
constexpr qsizetype maxShown = 300;

QString joined(QStringList parts, const QString &separator)
{
    parts.removeAll(QString());
    return parts.join(separator);
}

} // namespace

NoteRowsModel::NoteRowsModel(std::function<TextContext()> textContext, QObject *parent)
    : QAbstractListModel(parent)
    , textContext_(std::move(textContext))
{
}

void NoteRowsModel::setNotes(const QList<NoteWithContext> &notes, const QList<int> &shown,
                             Arrangement arrangement)
{
    beginResetModel();
    notes_ = notes;
    const bool isByDay = arrangement.grouping == Grouping::ByDay;
    grouping_ = isByDay && arrangement.order == Order::MostFollowUps ? Grouping::None
                                                                     : arrangement.grouping;
    rows_.clear();
    groups_.clear();
    rows_.reserve(shown.size());
    const QList<int> inOrder = sorted(shown, arrangement.order);
    switch (grouping_) {
    case Grouping::None:
        for (const int note : inOrder) {
            rows_.push_back({note, -1});
        }
        break;
    case Grouping::ByDay:
        arrangeByDay(inOrder);
        break;
    case Grouping::ByPlace:
        arrangeByPlace(inOrder);
        break;
    }
    endResetModel();
}

QList<int> NoteRowsModel::sorted(QList<int> newestFirst, Order order) const
{
    switch (order) {
    case Order::NewestFirst:
        break;
    case Order::OldestFirst:
        std::ranges::reverse(newestFirst);
        break;
    case Order::MostFollowUps:
        std::ranges::stable_sort(newestFirst, std::ranges::greater(),
                                 [this](int note) { return notes_[note].note.followUps.size(); });
        break;
    }
    return newestFirst;
}

void NoteRowsModel::addGroup(const QString &key, const QList<int> &members, QDate day)
{
    const int group = static_cast<int>(groups_.size());
    groups_.push_back({key, members, day});
    rows_.push_back({-1, group});
    if (folded_.contains(key)) {
        return;
    }
    for (const int note : members) {
        rows_.push_back({note, group});
    }
}

int NoteRowsModel::groupOf(int row) const
{
    return row >= 0 && row < static_cast<int>(rows_.size()) ? rows_[row].group : -1;
}

bool NoteRowsModel::isFolded(int row) const
{
    return groupOf(row) >= 0 && rows_[row].note < 0 && groupOf(row + 1) != groupOf(row);
}

int NoteRowsModel::headingOf(int row) const
{
    if (groupOf(row) < 0) {
        return -1;
    }
    while (rows_[row].note >= 0) {
        --row;
    }
    return row;
}

void NoteRowsModel::setFolded(int row, bool folded)
{
    const int heading = headingOf(row);
    if (heading < 0 || folded == isFolded(heading)) {
        return;
    }
    const int number = rows_[heading].group;
    const Group &group = groups_[number];
    const auto first = rows_.begin() + heading + 1;
    const int count = static_cast<int>(group.members.size());
    if (folded) {
        folded_.insert(group.key);
        beginRemoveRows({}, heading + 1, heading + count);
        rows_.erase(first, first + count);
        endRemoveRows();
    } else {
        folded_.remove(group.key);
        std::vector<Row> unfolded;
        for (const int note : group.members) {
            unfolded.push_back({note, number});
        }
        beginInsertRows({}, heading + 1, heading + count);
        rows_.insert(first, unfolded.begin(), unfolded.end());
        endInsertRows();
    }
    Q_EMIT dataChanged(index(heading), index(heading), {IsFolded});
}

void NoteRowsModel::arrangeByDay(const QList<int> &shown)
{
    // Consecutive notes are mostly of one day, so its limits are computed once.
    QList<int> members;
    QDate day;
    double begin = std::numeric_limits<double>::infinity();
    double end = begin;
    for (const int note : shown) {
        const double time = notes_[note].note.createdAt;
        if (time < begin || time >= end) {
            if (!members.isEmpty()) {
                addGroup(day.toString(Qt::ISODate), members, day);
            }
            members.clear();
            day = NoteDates::localTime(time).date();
            begin = NoteDates::startOf(day);
            end = NoteDates::startOf(day.addDays(1));
        }
        members.append(note);
    }
    if (!members.isEmpty()) {
        addGroup(day.toString(Qt::ISODate), members, day);
    }
}

void NoteRowsModel::arrangeByPlace(const QList<int> &shown)
{
    // places in the order of their first notes
    QHash<QString, int> places;
    std::vector<QList<int>> members;
    for (const int note : shown) {
        const QString &key = notes_[note].context.key;
        auto place = places.constFind(key);
        if (place == places.constEnd()) {
            place = places.insert(key, static_cast<int>(members.size()));
            members.emplace_back();
        }
        members[*place].append(note);
    }
    for (const QList<int> &group : members) {
        addGroup(notes_[group.first()].context.key, group, {});
    }
}

void NoteRowsModel::refreshTexts()
{
    if (!rows_.empty()) {
        Q_EMIT dataChanged(index(0), index(static_cast<int>(rows_.size()) - 1));
    }
}

void NoteRowsModel::setSelected(std::function<bool(const QUuid &id)> selected)
{
    selected_ = std::move(selected);
}

void NoteRowsModel::refreshSelection()
{
    if (!rows_.empty()) {
        Q_EMIT dataChanged(index(0), index(static_cast<int>(rows_.size()) - 1), {IsSelected});
    }
}

const NoteWithContext *NoteRowsModel::noteAt(int row) const
{
    const bool isNote = row >= 0 && row < static_cast<int>(rows_.size()) && rows_[row].note >= 0;
    return isNote ? &notes_[rows_[row].note] : nullptr;
}

int NoteRowsModel::rowOf(const QUuid &id) const
{
    const auto row = std::find_if(rows_.begin(), rows_.end(), [&](const Row &candidate) {
        return candidate.note >= 0 && notes_[candidate.note].note.id == id;
    });
    return row != rows_.end() ? static_cast<int>(row - rows_.begin()) : -1;
}

int NoteRowsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant NoteRowsModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= static_cast<int>(rows_.size())) {
        return {};
    }
    const NoteWithContext *note = noteAt(index.row());
    if (role == IsHeading) {
        return note == nullptr;
    }
    if (role == IsFolded) {
        return note == nullptr && isFolded(index.row());
    }
    if (role == IsSelected) {
        return note != nullptr && selected_ && selected_(note->note.id);
    }
    return note != nullptr ? noteData(*note, role)
                           : headingData(groups_[rows_[index.row()].group], role);
}

QVariant NoteRowsModel::headingData(const Group &group, int role) const
{
    const TextContext textContext = textContext_();
    const ReadingContext &context = notes_[group.members.first()].context;
    switch (role) {
    case Title:
        return group.day.isValid()
            ? NoteDates::day(group.day, textContext.today, textContext.isEnglish)
            : placeOf(context, textContext.isEnglish);
    case Detail: {
        const QUrl page = group.day.isValid() ? QUrl() : pageOf(context);
        return page.isEmpty() ? QString() : presentableLine(page.path(), maxShown);
    }
    case FollowUps:
        return static_cast<int>(group.members.size());
    default:
        return QString();
    }
}

QVariant NoteRowsModel::noteData(const NoteWithContext &entry, int role) const
{
    switch (role) {
    case Title:
        return presentableLine(entry.note.sourceText, maxShown);
    case Detail:
        return detail(entry.note);
    case When:
        return time(entry.note);
    case Origin:
        return origin(entry);
    case Spoken:
        return spoken(entry);
    case FollowUps:
        return static_cast<int>(entry.note.followUps.size());
    default:
        return {};
    }
}

QString NoteRowsModel::detail(const ReadingNote &note) const
{
    return presentableLine(note.explanation.isEmpty() ? note.translation : note.explanation,
                           maxShown);
}

QString NoteRowsModel::time(const ReadingNote &note) const
{
    const TextContext textContext = textContext_();
    const QDateTime time = NoteDates::localTime(note.createdAt);
    return grouping_ == Grouping::ByDay
        ? NoteDates::clockTime(time)
        : NoteDates::moment(time, textContext.today, textContext.isEnglish);
}

QString NoteRowsModel::place(const ReadingContext &context) const
{
    return grouping_ == Grouping::ByPlace ? QString() : placeOf(context, textContext_().isEnglish);
}

QString NoteRowsModel::origin(const NoteWithContext &entry) const
{
    const qsizetype followUps = entry.note.followUps.size();
    return joined({followUps > 0 ? QString::number(followUps) : QString(), place(entry.context)},
                  u" · "_s);
}

QString NoteRowsModel::spoken(const NoteWithContext &entry) const
{
    const qsizetype followUps = entry.note.followUps.size();
    const QString asked = (!textContext_().isEnglish ? u"追问 %1 次"_s
                               : followUps == 1      ? u"%1 follow-up"_s
                                                     : u"%1 follow-ups"_s)
                              .arg(followUps);
    return joined({detail(entry.note), time(entry.note), place(entry.context),
                   followUps > 0 ? asked : QString()},
                  u", "_s);
}

QHash<int, QByteArray> NoteRowsModel::roleNames() const
{
    return {{IsHeading, "isHeading"}, {Title, "title"},           {Detail, "detail"},
            {When, "when"},           {Origin, "origin"},         {Spoken, "spoken"},
            {FollowUps, "followUps"}, {IsSelected, "isSelected"}, {IsFolded, "isFolded"}};
}

} // namespace vellumo
