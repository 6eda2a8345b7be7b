// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// Preloaded into a program. Its X server then seems to lack the keyboard extension, which no server
// can switch off.
#include <cstring>
#include <dlfcn.h>
#include <xcb/xcbext.h>

extern "C" __attribute__((visibility("default"))) const xcb_query_extension_reply_t *
xcb_get_extension_data(xcb_connection_t *connection, xcb_extension_t *extension)
{
    using Function = decltype(&xcb_get_extension_data);
    static const auto original =
        reinterpret_cast<Function>(dlsym(RTLD_NEXT, "xcb_get_extension_data"));
    static const xcb_query_extension_reply_t absent{};
    return std::strcmp(extension->name, "XKEYBOARD") == 0 ? &absent
                                                          : original(connection, extension);
}
