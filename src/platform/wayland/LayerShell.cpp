// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/LayerShell.h"

#include "platform/wayland/client/WaylandClientModule.h"
#include <QGuiApplication>
#include <QLibrary>

using namespace Qt::StringLiterals;

namespace vellumo {

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
    const auto make = reinterpret_cast<waylandClientModule::MakeLayerShell>(
        QLibrary::resolve(clientModule, waylandClientModule::makeLayerShell));
    return std::unique_ptr<LayerShell>(make != nullptr ? make() : nullptr);
}

} // namespace vellumo
