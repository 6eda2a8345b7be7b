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
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr qsizetype maxFileName = 120;
constexpr qsizetype maxDetail = 300;

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
    connect(&job_, &NotesExport::finished, this, &NotesExporter::finish);
    connect(&texts_, &BilingualText::languageChanged, this, &NotesExporter::changed);
    connect(&library_, &NotesLibrary::changed, this, &NotesExporter::changed);
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
        if (std::exchange(hasSelected_, false)) {
            library_.selection()->setActive(false);
        }
    }
    Q_EMIT changed();
}

void NotesExporter::openFor(const QString &id)
{
    const QUuid note = QUuid::fromString(id);
    if (isOpen_ || job_.isRunning() || library_.find(note) == nullptr) {
        return;
    }
    hasSelected_ = !library_.selection()->contains(note);
    if (hasSelected_) {
        library_.selection()->selectOnly(note);
    }
    setOpen(true);
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

QString NotesExporter::scopeText() const
{
    const int count = scope_ == Scope::Selected ? library_.selection()->count()
        : scope_ == Scope::Found                ? library_.found()
                                                : library_.total();
    return texts_.pick(count == 1 ? u"One note"_s : u"%1 notes"_s, u"%1 条笔记"_s)
        .replace(u"%1"_s, QString::number(count));
}

QString NotesExporter::formatText() const
{
    switch (format_) {
    case ExportFormat::Markdown:
        return texts_.pick(u"A document to read and print, day by day."_s,
                           u"按日期排列的文档，适合阅读和打印。"_s);
    case ExportFormat::Csv:
        return texts_.pick(u"A table for spreadsheets and flash-card programs."_s,
                           u"表格，可用于电子表格和记忆卡片软件。"_s);
    case ExportFormat::Json:
        break;
    }
    return texts_.pick(u"Everything about each note, for other programs."_s,
                       u"笔记的全部数据，供其他程序使用。"_s);
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
                 guard->useFile(path);
             }
         }});
}

void NotesExporter::useFile(const QString &path)
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

QString NotesExporter::replaceText() const
{
    return texts_.pick(u"“%1” already exists. Replace it?"_s, u"“%1”已存在，要替换吗？"_s)
        .arg(fileName());
}

void NotesExporter::replace()
{
    if (isOpen_ && asksToReplace_) {
        write();
    }
}

NotesExporter::Plan NotesExporter::plan() const
{
    const bool isSelection = scope_ == Scope::Selected;
    NotesLibrary::Excerpt excerpt = isSelection ? library_.selectedNotes()
        : scope_ == Scope::Found                ? library_.foundNotes()
                                                : library_.allNotes();
    Plan plan;
    plan.order.notes = std::move(excerpt.notes);
    plan.order.chosen = std::move(excerpt.chosen);
    plan.order.format = format_;
    if (isSelection) {
        plan.selection = library_.selection()->ids();
    }
    return plan;
}

void NotesExporter::write()
{
    Plan plan = std::exchange(plan_, {});
    isOpen_ = false;
    hasSelected_ = false;
    asksToReplace_ = false;
    state_ = State::Writing;
    isFolderUnopened_ = false;
    written_ = 0;
    total_ = static_cast<int>(plan.order.chosen.size());
    writtenSelection_ = std::move(plan.selection);
    plan.order.isEnglish = texts_.isEnglish();
    plan.order.at = QDateTime::currentDateTime();
    plan.order.path = path_;
    job_.start(std::move(plan.order));
    Q_EMIT changed();
}

void NotesExporter::finish(const NotesExport::Result &result)
{
    state_ = stateAfter(result.outcome);
    detail_ = presentableLine(result.detail, maxDetail);
    if (state_ == State::Written) {
        written_ = total_;
        if (writtenSelection_ == library_.selection()->ids()) {
            library_.selection()->setActive(false);
        }
    }
    Q_EMIT changed();
}

QString NotesExporter::fileName() const
{
    return presentableLine(QFileInfo(path_).fileName(), maxFileName);
}

void NotesExporter::dismiss()
{
    if (!job_.isRunning()) {
        state_ = State::Idle;
        Q_EMIT changed();
    }
}

void NotesExporter::openFolder()
{
    isFolderUnopened_ = !host_.openFolder(QFileInfo(path_).absolutePath());
    Q_EMIT changed();
}

qreal NotesExporter::progress() const
{
    return static_cast<qreal>(written_) / std::max(1, total_);
}

QString NotesExporter::outcome() const
{
    switch (state_) {
    case State::Idle:
        break;
    case State::Writing:
        return texts_.pick(u"Exporting… %1 of %2"_s, u"正在导出… %1 / %2"_s)
            .arg(written_)
            .arg(total_);
    case State::Written:
        return writtenText();
    case State::Cancelled:
        return texts_.pick(u"Export cancelled. No file was written."_s,
                           u"已取消导出，没有写入文件。"_s);
    case State::NoSpace:
        return texts_.pick(u"Not enough disk space. Nothing was written."_s,
                           u"空间不足，没有写入文件。"_s);
    case State::NotAllowed:
        return texts_.pick(u"vellumo may not write there. Choose another folder."_s,
                           u"没有写入该位置的权限，请选择其他文件夹。"_s);
    case State::NoFolder:
        return texts_.pick(u"The folder no longer exists. Choose another one."_s,
                           u"该文件夹已不存在，请选择其他文件夹。"_s);
    case State::NotAFile:
        return texts_.pick(u"A folder has that name. Choose another name."_s,
                           u"这个名称已被占用，请换一个名称。"_s);
    case State::Failed:
        return texts_.pick(u"The file could not be written: %1"_s, u"无法写入文件：%1"_s)
            .arg(detail_);
    }
    return {};
}

QString NotesExporter::writtenText() const
{
    if (isFolderUnopened_) {
        return texts_
            .pick(u"No file manager could be opened. The file is %1"_s,
                  u"无法打开文件管理器。文件在 %1"_s)
            .arg(path_);
    }
    if (total_ == 1) {
        return texts_.pick(u"Exported one note to “%1”"_s, u"1 条笔记已导出到“%1”"_s)
            .arg(fileName());
    }
    return texts_.pick(u"Exported %1 notes to “%2”"_s, u"%1 条笔记已导出到“%2”"_s)
        .arg(QString::number(total_), fileName());
}

} // namespace vellumo
