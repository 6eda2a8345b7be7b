// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "library/NotesExporter.h"

#include "library/NotesLibrary.h"
#include "library/PageHosting.h"
#include "ui/BilingualText.h"
#include "ui/PlainText.h"

#include <QDate>
#include <QFileInfo>
#include <QPointer>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr qsizetype longestFileName = 120;
constexpr qsizetype longestDetail = 300;

NotesExporter::State stateAfter(NotesExport::Outcome outcome)
{
    using State = NotesExporter::State;
    switch (outcome) {
    case NotesExport::Outcome::Written:
        return State::Written;
    case NotesExport::Outcome::Cancelled:
        return State::Cancelled;
    case NotesExport::Outcome::NoSpace:
        return State::NoSpace;
    case NotesExport::Outcome::NotAllowed:
        return State::NotAllowed;
    case NotesExport::Outcome::NoFolder:
        return State::NoFolder;
    case NotesExport::Outcome::NotAFile:
        return State::NotAFile;
    case NotesExport::Outcome::Failed:
        break;
    }
    return State::Failed;
}

} // namespace

NotesExporter::NotesExporter(NotesLibrary &library, PageHosting &host, BilingualText &texts,
                             QObject *parent)
    : QObject(parent)
    , library_(library)
    , host_(host)
    , texts_(texts)
{
    connect(&job_, &NotesExport::progressed, this, [this](qsizetype written) {
        written_ = static_cast<int>(written);
        Q_EMIT changed();
    });
    connect(&job_, &NotesExport::finished, this, &NotesExporter::done);
}

void NotesExporter::setOpen(bool open)
{
    if (open == isOpen_ || (open && job_.isRunning())) {
        return;
    }
    isOpen_ = open;
    asksToReplace_ = false;
    if (open) {
        scope_ = library_.selection()->count() > 0 ? Scope::Selected
            : library_.hasFound()                  ? Scope::Found
                                                   : Scope::All;
        state_ = State::Idle;
    } else {
        ++question_;
        plan_ = {};
        host_.closeFileDialog();
    }
    Q_EMIT changed();
}

void NotesExporter::setScope(Scope scope)
{
    scope_ = scope;
    Q_EMIT changed();
}

void NotesExporter::setFormat(Format format)
{
    format_ = static_cast<ExportFormat>(format);
    Q_EMIT changed();
}

void NotesExporter::chooseFile()
{
    asksToReplace_ = false;
    Q_EMIT changed();
    plan_ = plan();
    const QString suffix = fileSuffix(format_);
    const QString name =
        u"vellumo-notes-%1.%2"_s.arg(library_.today().toString(Qt::ISODate), suffix);
    host_.chooseFile(
        {name, suffix,
         [guard = QPointer<NotesExporter>(this), question = ++question_](const QString &path) {
             if (guard && guard->question_ == question) {
                 guard->chosen(path);
             }
         }});
}

void NotesExporter::chosen(const QString &path)
{
    if (path.isEmpty() || job_.isRunning()) {
        return;
    }
    path_ = path;
    if (QFileInfo(path).isFile()) {
        asksToReplace_ = true;
        Q_EMIT changed();
    } else {
        write();
    }
}

void NotesExporter::replace()
{
    if (isOpen_ && asksToReplace_) {
        write();
    }
}

NotesExporter::Plan NotesExporter::plan() const
{
    const bool isOfMarked = scope_ == Scope::Selected;
    NotesLibrary::Excerpt excerpt = isOfMarked ? library_.selectedNotes()
        : scope_ == Scope::Found               ? library_.foundNotes()
                                               : library_.allNotes();
    Plan plan;
    plan.order.notes = std::move(excerpt.notes);
    plan.order.chosen = std::move(excerpt.chosen);
    plan.order.format = format_;
    if (isOfMarked) {
        plan.marks = library_.selection()->marked();
    }
    return plan;
}

void NotesExporter::write()
{
    Plan plan = std::exchange(plan_, {});
    isOpen_ = false;
    asksToReplace_ = false;
    state_ = State::Writing;
    written_ = 0;
    total_ = static_cast<int>(plan.order.chosen.size());
    writtenMarks_ = std::move(plan.marks);
    plan.order.isEnglish = texts_.isEnglish();
    plan.order.at = QDateTime::currentDateTime();
    plan.order.path = path_;
    job_.start(std::move(plan.order));
    Q_EMIT changed();
}

void NotesExporter::done(const NotesExport::Result &result)
{
    state_ = stateAfter(result.outcome);
    detail_ = presentableLine(result.detail, longestDetail);
    if (state_ == State::Written) {
        written_ = total_;
        if (writtenMarks_ == library_.selection()->marked()) {
            library_.selection()->setActive(false);
        }
    }
    Q_EMIT changed();
}

QString NotesExporter::fileName() const
{
    return presentableLine(QFileInfo(path_).fileName(), longestFileName);
}

void NotesExporter::dismiss()
{
    if (!job_.isRunning()) {
        state_ = State::Idle;
        Q_EMIT changed();
    }
}

bool NotesExporter::openFolder()
{
    return host_.openFolder(QFileInfo(path_).absolutePath());
}

} // namespace vellumo
