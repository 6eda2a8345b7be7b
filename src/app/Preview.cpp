// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/Preview.h"

#include "app/SampleReading.h"
#include "platform/Diagnostics.h"

#include <QDir>
#include <QGuiApplication>
#include <QTimer>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto settleTime = 800ms; // longer than any animation

NotesEntranceController::Collaborators withTexts(NotesEntranceController::Collaborators with,
                                                 BilingualText &texts)
{
    return {with.windows, with.screens, with.monitors, with.defaults, with.clock, texts};
}

void save(QQuickWindow *window, const QString &path)
{
    if (!window || !window->grabWindow().save(path)) {
        printDiagnostic(u"could not write a picture"_s);
    }
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
        const ThreadItem row{sample.followUp.question, sample.followUp.answer, false};
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
    QDir().mkpath(folder);
    const auto path = [this, folder](const QString &name) {
        return folder + u'/' + name + (english_ ? u"-en.png"_s : u"-zh.png"_s);
    };
    QTimer::singleShot(settleTime, this, [this, folder, path, done = std::move(done)] {
        save(panel_, path(u"panel"_s));
        save(pill_, path(u"pill"_s));
        showNotesList();
        QTimer::singleShot(settleTime, this, [this, folder, path, done] {
            save(pill_, path(u"list"_s));
            previewNotesEntrance_.collapse();
            previewResultPanel_.dismiss();
            if (!english_) {
                done();
                return;
            }
            QTimer::singleShot(settleTime, this, [this, folder, done] {
                show(false);
                writeSnapshots(folder, done);
            });
        });
    });
}

} // namespace vellumo
