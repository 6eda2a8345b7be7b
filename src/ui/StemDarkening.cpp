// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "ui/StemDarkening.h"

#include <dlfcn.h>

namespace vellumo {

namespace {

// Both are resolved in the loaded libraries, since Qt has no public function for this. The first is
// Qt's "FT_Library qt_getFreetype()", the second FreeType's FT_Property_Set().
using GetLibrary = void *(*)();
using SetProperty = int (*)(void *library, const char *module, const char *property,
                            const void *value);

template <typename Function> Function loaded(const char *symbol)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_DEFAULT, symbol));
}

} // namespace

void disableStemDarkening()
{
    const auto getLibrary = loaded<GetLibrary>("_Z14qt_getFreetypev");
    const auto setProperty = loaded<SetProperty>("FT_Property_Set");
    if (getLibrary == nullptr || setProperty == nullptr) {
        return;
    }
    constexpr unsigned char yes = 1; // an FT_Bool
    setProperty(getLibrary(), "cff", "no-stem-darkening", &yes);
}

} // namespace vellumo
