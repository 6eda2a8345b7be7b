// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include <QCoreApplication>

#include <sanitizer/lsan_interface.h>

// Looks for leaks when the application object is destroyed, and not at exit. At exit Qt D-Bus ends
// its thread without waiting for the thread's own clean-up, and the data of a thread that is not
// scanned any more counts as leaked.
static void checkLeaksEarly()
{
    qAddPostRoutine(__lsan_do_leak_check);
}

Q_COREAPP_STARTUP_FUNCTION(checkLeaksEarly)

// Fonts are still in use then, and fontconfig refers to its patterns by relative addresses, which
// the check does not follow.
extern "C" Q_DECL_EXPORT const char *__lsan_default_suppressions()
{
    return "leak:libfontconfig\n";
}
