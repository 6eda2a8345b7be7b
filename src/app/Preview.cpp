// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/Preview.h"

#include "app/SampleReading.h"
#include "app/Snapshot.h"

#include <QGuiApplication>
#include <QTimer>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

NotesEntranceController::Collaborators withTexts(NotesEntranceController::Collaborators with,
                                                 BilingualText &texts)
{
    return {.windows = with.windows,
            .screens = with.screens,
            .monitors = with.monitors,
            .defaults = with.defaults,
            .clock = with.clock,
            .texts = texts};
}

} // namespace

Preview::Preview(const NotesEntranceController::Collaborators &collaborators)
    : previewResultPanel_(collaborators.windows, collaborators.screens, collaborators.monitors,
                          texts_)
    , previewNotesEntrance_(withTexts(collaborators, texts_))
{
}

Preview::~Preview() = default;

QPointer<QQuickWindow> Preview::windowShownBy(const std::function<void()> &action) const
{
    const auto visible = [] {
        QWindowList windows = QGuiApplication::topLevelWindows();
        windows.removeIf([](const QWindow *window) { return !window->isVisible(); });
        return windows;
    };
    const QWindowList before = visible();
    action();
    QWindowList shown = visible();
    shown.removeIf([&before](QWindow *window) { return before.contains(window); });
    return qobject_cast<QQuickWindow *>(shown.value(0));
}

void Preview::show(bool english)
{
    english_ = english;
    texts_.refresh();
    const SampleReading sample = sampleReading(english);
    const auto present = [&] {
        const ThreadItem row{sample.followUp.question, sample.followUp.answer};
        previewResultPanel_.present(IslandContent::result(sample.result, sample.selection, {row}),
                                    sample.context, {});
    };
    const auto showPill = [&] {
        previewNotesEntrance_.show(static_cast<int>(sample.notes.size()),
                                   [this] { showNotesList(); });
    };
    const auto panel = windowShownBy(present);
    panel_ = panel ? panel : panel_;
    const auto pill = windowShownBy(showPill);
    pill_ = pill ? pill : pill_;
}

void Preview::showNotesList()
{
    previewNotesEntrance_.showNotesList(sampleReading(english_).notes, [](const ReadingNote &) {});
}

void Preview::writeSnapshots(const QString &folder, std::function<void()> done)
{
    QTimer::singleShot(snapshotDelay, this, [this, folder, done = std::move(done)] {
        writeSnapshot(panel_, folder, u"panel"_s, english_);
        writeSnapshot(pill_, folder, u"pill"_s, english_);
        showNotesList();
        QTimer::singleShot(snapshotDelay, this, [this, folder, done] {
            writeSnapshot(pill_, folder, u"list"_s, english_);
            previewNotesEntrance_.collapse();
            previewResultPanel_.dismiss();
            if (!english_) {
                done();
                return;
            }
            QTimer::singleShot(snapshotDelay, this, [this, folder, done] {
                show(false);
                writeSnapshots(folder, done);
            });
        });
    });
}

} // namespace vellumo
