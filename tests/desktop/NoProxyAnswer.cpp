// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// Preloaded into a program. The system then never answers which proxies to use, as when the script
// for it is on a host that does not answer.
#include <unistd.h>

extern "C" __attribute__((visibility("default"))) char **
px_proxy_factory_get_proxies(void * /*factory*/, const char * /*url*/)
{
    for (;;)
        pause();
}
