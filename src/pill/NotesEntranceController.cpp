// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "pill/NotesEntranceController.h"

#include "pill/PillGeometry.h"
#include "platform/Clock.h"
#include "platform/DefaultsStore.h"
#include "settings/SettingsKeys.h"
#include "ui/BilingualText.h"
#include <QPointer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr EventMask motionMask = maskOf(EventType::MouseMoved);

constexpr auto expansion = 280ms;
constexpr auto collapsing = 240ms;

// steps of the demonstration, each after the previous one
constexpr auto fingerGlide = 1000ms;
constexpr auto fingerTouches = 1150ms;
constexpr auto pillOpens = 300ms;
constexpr auto listCloses = 2200ms;
constexpr auto fingerFades = 400ms;

constexpr FloatingPanelStyle pillStyle{.title = "vellumo notes",
                                       .level = WindowLevel::Floating,
                                       .canBecomeKey = false,
                                       .hasShadow = true,
                                       .ignoresMouseEvents = false,
                                       .isMovable = true,
                                       .isDrawnAhead = false,
                                       .topCornerRadius = pillGeometry::cornerRadius,
                                       .bottomCornerRadius = pillGeometry::cornerRadius};
constexpr FloatingPanelStyle fingerStyle{.level = WindowLevel::Status,
                                         .canBecomeKey = false,
                                         .hasShadow = false,
                                         .ignoresMouseEvents = true,
                                         .isDrawnAhead = false,
                                         .isShapedByContent = true};

QUrl qmlFile(QLatin1StringView name)
{
    return QUrl(u"qrc:/qt/qml/Vellumo/Pill/"_s + name);
}

} // namespace

NotesEntranceController::NotesEntranceController(const Collaborators &collaborators,
                                                 QObject *parent)
    : QObject(parent)
    , with_(collaborators)
    , model_(std::make_unique<NotesPillModel>())
    , container_(std::make_unique<PillContainerView>())
    , collapseMonitors_(with_.monitors)
{
    model_->onSelect = [this](const ReadingNote &note) { selectNote(note); };
    container_->onClick = [this] {
        if (const auto open = onOpen_) { // the callback may replace it
            open();
        }
    };
    container_->onHover = [this](bool isInside) { model_->setPillHovered(isInside); };
    connect(container_.get(), &PillContainerView::dragStarted, this,
            [this] { panel_->performDrag(); });
    connect(container_.get(), &PillContainerView::cursorChanged, this,
            &NotesEntranceController::setHandCursor);
    connect(&with_.screens, &Screens::changed, this, &NotesEntranceController::adaptToScreens);
    connect(model_.get(), &NotesPillModel::windowRequested, this, [this] {
        collapse();
        Q_EMIT windowRequested();
    });
    connect(model_.get(), &NotesPillModel::hidingRequested, this,
            [this] { settings::showsPill.set(with_.defaults, false); });
    connect(model_.get(), &NotesPillModel::quitRequested, this, [this] {
        collapse();
        Q_EMIT quitRequested();
    });
    connect(container_.get(), &PillContainerView::menuRequested, this,
            &NotesEntranceController::openMenu);
    connect(&with_.defaults, &DefaultsStore::changed, this, [this](const QString &key) {
        if (key == settings::showsPill.name) {
            showOrHidePill();
        }
    });
}

NotesEntranceController::~NotesEntranceController() = default;

void NotesEntranceController::show(int count, std::function<void()> onOpen)
{
    onOpen_ = std::move(onOpen);
    model_->setCount(count);
    if (isPillWanted()) {
        ensurePanel();
    }
}

bool NotesEntranceController::isPillWanted() const
{
    return settings::showsPill.value(with_.defaults);
}

void NotesEntranceController::showOrHidePill()
{
    if (isPillWanted()) {
        if (onOpen_) {
            ensurePanel();
        }
    } else if (panel_ && container_->mode() == PillContainerView::Mode::Pill) {
        panel_->orderOut();
    } else {
        collapse();
    }
}

void NotesEntranceController::setHighlighted(bool highlighted)
{
    model_->setHighlighted(highlighted);
}

void NotesEntranceController::showNotesList(const QList<ReadingNote> &notes,
                                            std::function<void(const ReadingNote &)> onSelectNote)
{
    onSelectNote_ = std::move(onSelectNote);
    ensurePanel();
    model_->setNotes(notes);
    expand();
}

void NotesEntranceController::selectNote(const ReadingNote &note)
{
    collapse();
    if (const auto select = onSelectNote_) {
        select(note);
    }
}

void NotesEntranceController::ensurePanel()
{
    if (panel_) {
        if (!panel_->isVisible()) {
            panel_->orderFrontRegardless();
        }
        return;
    }
    panel_ = with_.windows.createPanel(pillStyle,
                                       {qmlFile("NotesPillRoot.qml"_L1),
                                        {{u"pill"_s, QVariant::fromValue(model_.get())},
                                         {u"container"_s, QVariant::fromValue(container_.get())},
                                         {u"texts"_s, QVariant::fromValue(&with_.texts)}}});
    panel_->setFrame(pillGeometry::pillAt(restoredPillOrigin()));
    panel_->orderFrontRegardless();
    connect(panel_.get(), &FloatingPanel::movedByUser, this,
            &NotesEntranceController::savePillOrigin);
    connect(panel_.get(), &FloatingPanel::appeared, this, &NotesEntranceController::appeared);
    installCursorWatcher();
}

Point NotesEntranceController::restoredPillOrigin() const
{
    const Rect visible = pillGeometry::visibleFrame(with_.screens.mainScreen());
    if (const auto stored =
            pillGeometry::storedOrigin(settings::notesPillOrigin.value(with_.defaults))) {
        const Rect pill = pillGeometry::clamped(pillGeometry::pillAt(*stored), visible);
        return {pill.x, pill.y};
    }
    return pillGeometry::defaultOrigin(visible);
}

void NotesEntranceController::savePillOrigin()
{
    // The container stays a list until the pill is back in its place.
    if (!model_->isExpanded() && container_->mode() == PillContainerView::Mode::Pill) {
        const Rect frame = panel_->frame();
        settings::notesPillOrigin.set(with_.defaults,
                                      pillGeometry::storableOrigin({frame.x, frame.y}));
    }
}

/// Moves a pill that no screen shows to the main screen, without storing the position: it moves
/// back when its screen returns. An open list folds into that place.
void NotesEntranceController::adaptToScreens()
{
    if (!panel_) {
        return;
    }
    const auto stored = pillGeometry::storedOrigin(settings::notesPillOrigin.value(with_.defaults));
    const bool canStay =
        stored && pillGeometry::isReachable(pillGeometry::pillAt(*stored), with_.screens.screens());
    const Rect pill = pillGeometry::pillAt(canStay ? *stored : restoredPillOrigin());
    if (container_->mode() == PillContainerView::Mode::Pill) {
        panel_->setFrame(pill);
    } else {
        fold(pill);
    }
}

void NotesEntranceController::expand()
{
    if (panel_) {
        expandInto(NotesPillModel::Face::List,
                   pillGeometry::listFrame(panel_->frame(), model_->listHeight(),
                                           pillGeometry::visibleFrame(with_.screens.mainScreen())));
    }
}

void NotesEntranceController::openMenu()
{
    if (panel_ && container_->mode() == PillContainerView::Mode::Pill) {
        expandInto(NotesPillModel::Face::Menu,
                   pillGeometry::menuFrame(panel_->frame(), model_->textScale(),
                                           pillGeometry::visibleFrame(with_.screens.mainScreen())));
    }
}

void NotesEntranceController::expandInto(NotesPillModel::Face face, const Rect &frame)
{
    if (model_->isExpanded()) {
        return;
    }
    folded_ = panel_->frame();
    container_->setMode(PillContainerView::Mode::List);
    model_->expandInto(face);
    panel_->animateFrame(frame, expansion, {});
    panel_->setCatchesClicks(true);
    collapseMonitors_.start({.escaped = [this] { collapse(); },
                             .acted = [this](EventType) { collapseIfPointerIsOutside(); }});
}

void NotesEntranceController::collapse()
{
    if (panel_ && model_->isExpanded()) {
        fold(folded_);
    }
}

/// May be called while the list is already folding into another place.
void NotesEntranceController::fold(const Rect &pill)
{
    collapseMonitors_.stop();
    model_->fold();
    panel_->setCatchesClicks(false);
    panel_->animateFrame(pill, collapsing, [this] { finishCollapse(); });
}

void NotesEntranceController::finishCollapse()
{
    if (model_->isExpanded()) {
        return; // the list was opened again
    }
    container_->setMode(PillContainerView::Mode::Pill);
    synchronizeCursor();
    if (!isPillWanted()) {
        panel_->orderOut();
    }
}

void NotesEntranceController::collapseIfPointerIsOutside()
{
    if (panel_ && model_->isExpanded()
        && !panel_->frame().contains(with_.screens.pointerLocation())) {
        collapse();
    }
}

void NotesEntranceController::installCursorWatcher()
{
    const QPointer<NotesEntranceController> self(this);
    cursorMonitors_.push_back(
        with_.monitors.addGlobalMonitor(motionMask, [self](const Event & /*event*/) {
            if (self) {
                self->synchronizeCursor();
            }
        }));
    cursorMonitors_.push_back(
        with_.monitors.addLocalMonitor(motionMask, [self](const Event & /*event*/) {
            if (self) {
                self->synchronizeCursor();
            }
            return true;
        }));
}

void NotesEntranceController::synchronizeCursor()
{
    const bool isInside = panel_->frame().contains(with_.screens.pointerLocation());
    if (!model_->isExpanded()) {
        model_->setPillHovered(isInside);
    }
    setHandCursor(isInside);
}

void NotesEntranceController::setHandCursor(bool isHand)
{
    if (isHand != cursorIsHand_) {
        cursorIsHand_ = isHand;
        panel_->setCursor(isHand ? PanelCursor::PointingHand : PanelCursor::Arrow);
    }
}

void NotesEntranceController::playOnboardingDemo(const ReadingNote &sampleNote,
                                                 std::function<void()> completion)
{
    if (demoRunning_ || !panel_) {
        if (completion) {
            completion();
        }
        return;
    }
    demoRunning_ = true;
    demoCompletion_ = std::move(completion);
    demoScript_ = std::make_unique<QObject>();
    sendFinger();
    QObject *script = demoScript_.get();
    with_.clock.after(fingerTouches, script, [this] { model_->setPillHovered(true); });
    with_.clock.after(fingerTouches + pillOpens, script,
                      [this, sampleNote] { openDemoList(sampleNote); });
    with_.clock.after(fingerTouches + pillOpens + listCloses, script,
                      [this] { endOnboardingDemo(); });
}

void NotesEntranceController::sendFinger()
{
    const auto path = pillGeometry::fingerPath(panel_->frame());
    fingerPanel_ = with_.windows.createPanel(fingerStyle, {qmlFile("DemoFinger.qml"_L1), {}});
    fingerPanel_->setFrame(path.from);
    fingerPanel_->orderFrontRegardless();
    fingerPanel_->animateFrame(path.to, fingerGlide, {});
}

void NotesEntranceController::openDemoList(const ReadingNote &sampleNote)
{
    model_->setPillHovered(false);
    ensurePanel();
    model_->setNotes({sampleNote});
    expand();
}

void NotesEntranceController::endOnboardingDemo()
{
    if (!demoScript_) {
        return;
    }
    demoScript_.reset();
    model_->setPillHovered(false);
    collapse();
    fingerPanel_->animateAlpha(0, fingerFades, [this] { finishDemo(); });
}

void NotesEntranceController::finishDemo()
{
    fingerPanel_->orderOut();
    fingerPanel_.release()->deleteLater(); // it is the caller
    demoRunning_ = false;
    if (const auto completion = std::exchange(demoCompletion_, nullptr)) {
        completion();
    }
}

} // namespace vellumo
