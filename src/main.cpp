// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/AppDelegate.h"
#include "app/CommandLine.h"
#include "app/Startup.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    if (const auto status = vellumo::CommandLine::handle(argc, argv)) {
        return *status;
    }
    vellumo::prepareProcess();
    QApplication application(argc, argv);
    vellumo::AppDelegate delegate(application);
    return delegate.run();
}
