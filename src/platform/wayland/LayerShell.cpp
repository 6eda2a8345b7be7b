// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/LayerShell.h"

#include "platform/wayland/client/WaylandClientModule.h"
#include <QGuiApplication>
#include <QLibrary>
#include <QLoggingCategory>
#include <QOpenGLContext>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// Lets Qt find out now that it is to use no graphics driver, of which it would warn at the first
/// window.
void settleOnSoftware()
{
    QLoggingCategory::setFilterRules(u"qt.qpa.wayland.warning=false"_s);
    static_cast<void>(QOpenGLContext::supportsThreadedOpenGL());
    QLoggingCategory::setFilterRules({});
}

} // namespace

bool LayerShell::isOffered(const QString &clientModule)
{
    const auto ask = reinterpret_cast<waylandClientModule::OffersLayerShell>(
        QLibrary::resolve(clientModule, waylandClientModule::offersLayerShell));
    return ask != nullptr && ask();
}

std::unique_ptr<LayerShell> LayerShell::make(const QString &clientModule)
{
    if (QGuiApplication::platformName() != "wayland"_L1) {
        return nullptr;
    }
    settleOnSoftware();
    const auto make = reinterpret_cast<waylandClientModule::MakeLayerShell>(
        QLibrary::resolve(clientModule, waylandClientModule::makeLayerShell));
    return std::unique_ptr<LayerShell>(make != nullptr ? make() : nullptr);
}

} // namespace vellumo
