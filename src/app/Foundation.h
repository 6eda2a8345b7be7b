// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "app/LinuxPlatform.h"
#include "app/ModuleFile.h"
#include "platform/qt/QtHttpSession.h"
#include "platform/qt/SettingsDefaultsStore.h"
#include "platform/qt/SystemClock.h"
#include "platform/wayland/LayerShell.h"
#include "platform/windowing/OwnPointer.h"
#include "platform/windowing/QtFloatingWindows.h"
#include "platform/windowing/QtScreens.h"
#include "platform/windowing/x11/X11Hints.h"
#include "settings/AppConfig.h"
#include "settings/UserPreferences.h"
#include "ui/BilingualText.h"
#include "ui/ConsentDialog.h"
#include "ui/InterfaceLanguage.h"
#include "ui/OrdinaryWindow.h"
#include "ui/QmlEngine.h"
#include "ui/QtTranslation.h"
#include "ui/look/SystemLook.h"
#include <QQmlEngine>

namespace vellumo {

/// What everything else depends on: settings, time, languages, windows and the platform.
struct Foundation {
    AppConfig config = AppConfig::load();
    SettingsDefaultsStore defaults{SettingsDefaultsStore::defaultPath()};
    UserPreferences preferences{defaults};
    SystemClock clock;
    QtHttpSession http;

    struct Engine : QQmlEngine {
        Engine() { prepareEngine(*this); }
    } engine;
    BilingualText texts{[this] { return preferences.preferredOutputLanguage(); }};
    QtTranslation qtTexts{texts};
    ConsentDialog consent{engine, texts};
    QtScreens screens;
    std::unique_ptr<LayerShell> layerShell = LayerShell::make(moduleFile(waylandClientFile));
    QtFloatingWindows windows{engine, [this] { return look().isMotionReduced(); },
                              layerShell.get()};
    LinuxPlatform platform{defaults, consent};
    /// After the platform, whose event filters ask for the pointer. Null unless panels are layers.
    std::unique_ptr<OwnPointer> pointer = layerShell ? std::make_unique<OwnPointer>() : nullptr;

    Foundation()
    {
        texts.follow(defaults);
        InterfaceLanguage::of(engine).follow(texts);
        OrdinaryWindows::of(engine).onActivate = [](QWindow &window) {
            x11::isAvailable() ? x11::activate(window.winId()) : window.requestActivate();
        };
        if (pointer) {
            screens.followPointer(*pointer, *layerShell);
        }
    }
    SystemLook &look() { return *SystemLook::of(engine); }
};

} // namespace vellumo
