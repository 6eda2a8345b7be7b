// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/MenuWiring.h"

#include "app/BuiltInUpdates.h"
#include "app/Foundation.h"
#include "ui/OrdinaryWindow.h"

#include <QGuiApplication>
#include <QMenu>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace vellumo {

MenuWiring::MenuWiring(Foundation &foundation) : updaterManager_(foundation.engine)
{
    configureMainMenu(foundation);
    configureStatusItem();
    createUpdateController(foundation);
}

void MenuWiring::configureMainMenu(Foundation &foundation)
{
    const auto hide = [] {
        const auto windows = QGuiApplication::topLevelWindows();
        for (QWindow *window : windows) {
            if (window->isVisible() && !window->flags().testFlag(Qt::FramelessWindowHint)) {
                window->showMinimized();
            }
        }
        return true;
    };
    const auto checkForUpdates = [this] {
        updaterManager_.checkForUpdates();
        return true;
    };
    const auto quit = [this] {
        Q_EMIT quitRequested();
        return true;
    };
    const auto edit = MainMenu::editItem;
    mainMenu_ = std::make_unique<MainMenu>(
        QList<MainMenu::Menu>{{u"vellumo"_s,
                               {{u"Check for Updates…"_s, {}, checkForUpdates},
                                {u"Hide vellumo"_s, Qt::CTRL | Qt::Key_H, hide},
                                {u"Quit vellumo"_s, Qt::CTRL | Qt::Key_Q, quit}}},
                              {u"Edit"_s,
                               {edit(u"Undo"_s, Qt::CTRL | Qt::Key_Z, "undo"),
                                edit(u"Redo"_s, Qt::CTRL | Qt::SHIFT | Qt::Key_Z, "redo"),
                                edit(u"Cut"_s, Qt::CTRL | Qt::Key_X, "cut"),
                                edit(u"Copy"_s, Qt::CTRL | Qt::Key_C, "copy"),
                                edit(u"Paste"_s, Qt::CTRL | Qt::Key_V, "paste"),
                                edit(u"Select All"_s, Qt::CTRL | Qt::Key_A, "selectAll")}}});
    connect(&OrdinaryWindows::of(foundation.engine), &OrdinaryWindows::made, mainMenu_.get(),
            &MainMenu::attachTo);
}

void MenuWiring::configureStatusItem()
{
    connect(&statusItem_, &StatusItem::activated, this, &MenuWiring::openRequested);
    QMenu &menu = statusItem_.menu();
    menu.addAction(u"vellumo is running"_s)->setEnabled(false);
    menu.addSeparator();
    menu.addAction(u"Check for Updates…"_s, this, [this] { updaterManager_.checkForUpdates(); });
    menu.addSeparator();
    menu.addAction(u"Quit vellumo"_s, Qt::CTRL | Qt::Key_Q, this, &MenuWiring::quitRequested);
}

void MenuWiring::createUpdateController(Foundation &foundation)
{
    auto controller = makeUpdateController(foundation.config,
                                           {.http = foundation.http,
                                            .workspace = foundation.platform.workspace(),
                                            .clock = foundation.clock,
                                            .engine = foundation.engine,
                                            .texts = foundation.texts});
    if (controller) {
        dailyUpdates_ =
            std::make_unique<DailyUpdates>(*controller, foundation.defaults, foundation.clock);
        updaterManager_.controller = std::move(controller);
    }
}

} // namespace vellumo
