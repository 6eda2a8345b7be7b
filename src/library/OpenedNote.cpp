// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "library/OpenedNote.h"

#include "library/NotePlace.h"
#include "library/NotesLibrary.h"
#include "library/PageHosting.h"
#include "notes/NoteDates.h"
#include "notes/PageAddress.h"
#include "ui/BilingualText.h"
#include "ui/PlainText.h"

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {
constexpr qsizetype maxText = 20000;
constexpr qsizetype maxAddress = 300;
} // namespace

OpenedNote::OpenedNote(NotesLibrary &library, PageHosting &host, BilingualText &texts,
                       QObject *parent)
    : QObject(parent)
    , library_(library)
    , host_(host)
    , texts_(texts)
{
    connect(&library_, &NotesLibrary::notesChanged, this, &OpenedNote::follow);
    connect(&texts_, &BilingualText::languageChanged, this, &OpenedNote::changed);
}

void OpenedNote::openRow(int row)
{
    open(library_.noteAt(row));
}

void OpenedNote::openLatest(int row)
{
    open(library_.latestAt(row));
}

void OpenedNote::openNote(const QUuid &id)
{
    open(library_.find(id));
}

void OpenedNote::open(const NoteWithContext *entry)
{
    if (entry == nullptr) {
        return;
    }
    entry_ = *entry;
    isPageUnopened_ = false;
    exchanges_.setExchanges(entry->note.followUps);
    Q_EMIT changed();
    Q_EMIT opened();
}

void OpenedNote::close()
{
    if (entry_) {
        entry_.reset();
        exchanges_.setExchanges({});
        Q_EMIT changed();
    }
}

void OpenedNote::step(int by)
{
    const int direction = by < 0 ? -1 : 1;
    const int last = library_.rows()->rowCount() - 1;
    int row = library_.rowOf(noteId());
    int left = std::abs(by);
    while (row >= 0 && left > 0) {
        row += direction;
        if (row < 0 || row > last) {
            return;
        }
        left -= library_.isHeading(row) ? 0 : 1;
    }
    openRow(row);
}

const NoteWithContext *OpenedNote::find(const QString &id) const
{
    return library_.find(QUuid::fromString(id));
}

void OpenedNote::copyNote(const QString &id)
{
    if (const NoteWithContext *entry = find(id)) {
        host_.copyText(asText(*entry));
    }
}

bool OpenedNote::hasPageOf(const QString &id) const
{
    const NoteWithContext *entry = find(id);
    return entry != nullptr && !pageOf(entry->context).isEmpty();
}

void OpenedNote::openPageOf(const QString &id)
{
    const NoteWithContext *entry = find(id);
    if (entry == nullptr || host_.openPage(pageOf(entry->context))) {
        return;
    }
    open(entry);
    isPageUnopened_ = true;
    Q_EMIT changed();
}

void OpenedNote::follow()
{
    if (!entry_) {
        return;
    }
    if (const NoteWithContext *latest = library_.find(entry_->note.id)) {
        entry_ = *latest;
        exchanges_.setExchanges(entry_->note.followUps);
        Q_EMIT changed();
    }
}

QString OpenedNote::sourceText() const
{
    return entry_ ? presentableText(entry_->note.sourceText, maxText).trimmed() : QString();
}

QString OpenedNote::translation() const
{
    return entry_ ? presentableText(entry_->note.translation, maxText).trimmed() : QString();
}

QString OpenedNote::explanation() const
{
    return entry_ ? presentableText(entry_->note.explanation, maxText).trimmed() : QString();
}

QString OpenedNote::origin() const
{
    if (!entry_) {
        return {};
    }
    const bool english = texts_.isEnglish();
    const QString when =
        NoteDates::full(NoteDates::localTime(entry_->note.createdAt), library_.today(), english);
    const QString place = placeOf(entry_->context, english);
    return place.isEmpty() ? when : place + u" · "_s + when;
}

bool OpenedNote::hasPage() const
{
    return entry_ && !pageOf(entry_->context).isEmpty();
}

QString OpenedNote::pageError() const
{
    return !entry_ || !isPageUnopened_
        ? QString()
        : texts_
              .pick(u"No browser could be opened. The address is %1"_s,
                    u"无法打开浏览器。网址是 %1"_s)
              .arg(presentableLine(pageOf(entry_->context).toDisplayString(), maxAddress));
}

bool OpenedNote::isShortened() const
{
    return entry_
        && (entry_->note.sourceText.size() > maxText || entry_->note.translation.size() > maxText
            || entry_->note.explanation.size() > maxText);
}

void OpenedNote::askFurther()
{
    if (entry_) {
        host_.askFurther(entry_->note.id);
    }
}

void OpenedNote::copy()
{
    if (entry_) {
        host_.copyText(asText(*entry_));
    }
}

void OpenedNote::openPage()
{
    const QUrl page = entry_ ? pageOf(entry_->context) : QUrl();
    isPageUnopened_ = page.isEmpty() || !host_.openPage(page);
    Q_EMIT changed();
}

QString OpenedNote::asText(const NoteWithContext &entry)
{
    const ReadingNote &note = entry.note;
    QStringList parts{note.sourceText, note.translation, note.explanation};
    for (const FollowUpExchange &exchange : note.followUps) {
        parts << u"> "_s + exchange.question << exchange.answer;
    }
    const QUrl page = pageOf(entry.context);
    parts << (page.isEmpty() ? entry.context.displayName : QString::fromLatin1(page.toEncoded()));
    parts.removeIf([](const QString &part) { return part.trimmed().isEmpty(); });
    return parts.join(u"\n\n"_s) + u'\n';
}

} // namespace vellumo
