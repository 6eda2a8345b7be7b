// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "taps/EventDevices.h"

#include <array>
#include <climits>
#include <linux/input.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

namespace vellumo::taps {

namespace {

constexpr unsigned wordBits = sizeof(unsigned long) * CHAR_BIT;

/// A bit for each code of a key, in the form of the kernel.
using KeyBits = std::array<unsigned long, (KEY_CNT + wordBits - 1) / wordBits>;

bool has(const KeyBits &bits, unsigned code)
{
    return (bits[code / wordBits] >> (code % wordBits) & 1) != 0;
}

} // namespace

bool KernelDevices::isKeyboard(int descriptor) const
{
    KeyBits keys{};
    return ::ioctl(descriptor, EVIOCGBIT(EV_KEY, sizeof(keys)), keys.data()) >= 0
        && has(keys, KEY_LEFTALT);
}

std::vector<std::uint16_t> KernelDevices::heldKeys(int descriptor) const
{
    KeyBits bits{};
    std::vector<std::uint16_t> held;
    if (::ioctl(descriptor, EVIOCGKEY(sizeof(bits)), bits.data()) >= 0) {
        for (unsigned code = 0; code < KEY_CNT; ++code) {
            if (has(bits, code)) {
                held.push_back(static_cast<std::uint16_t>(code));
            }
        }
    }
    return held;
}

bool PipedDevices::isKeyboard(int descriptor) const
{
    struct stat status { };
    return ::fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode);
}

} // namespace vellumo::taps
