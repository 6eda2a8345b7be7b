// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/AppDelegate.h"
#include "app/Doctor.h"
#include "app/Startup.h"
#include "platform/FreedMemory.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    vellumo::returnFreedMemory();
    vellumo::Startup startup(argc, argv);
    if (const auto status = startup.exitStatus()) {
        return *status;
    }
    QApplication application(argc, argv);
    if (const auto status = startup.becomeTheOnlyInstance()) {
        return *status;
    }
    if (startup.isForReport()) {
        return vellumo::printSessionReport();
    }
    vellumo::AppDelegate delegate(application);
    return delegate.run(startup.takeRequest());
}
