// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// vellumo-taps: reports to the user who works at this computer when Alt is pressed alone. Started
// by systemd for a connection to its socket.

#include "taps/Service.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <sys/socket.h>
#include <systemd/sd-daemon.h>

using namespace vellumo::taps;

namespace {

int fail(const char *what, int error)
{
    std::fprintf(stderr, "vellumo-taps: %s: %s\n", what, std::strerror(-error));
    return EXIT_FAILURE;
}

int run(const std::string &folder, const EventDevices &devices)
{
    if (sd_listen_fds(1) != 1
        || sd_is_socket(SD_LISTEN_FDS_START, AF_UNIX, SOCK_SEQPACKET, 1) <= 0) {
        return fail("is started by vellumo-taps.socket", -EINVAL);
    }
    Descriptor socket(SD_LISTEN_FDS_START);

    sd_event *newLoop = nullptr;
    int result = sd_event_new(&newLoop);
    const Owned<sd_event> loop(newLoop);
    if (result < 0) {
        return fail("event loop", result);
    }
    sd_bus *newBus = nullptr;
    result = sd_bus_open_system(&newBus);
    const Owned<sd_bus> bus(newBus);
    if (result >= 0) {
        result = sd_bus_attach_event(bus.get(), loop.get(), SD_EVENT_PRIORITY_IMPORTANT);
    }
    if (result < 0) {
        return fail("system bus", result);
    }
    sd_bus_set_exit_on_disconnect(bus.get(), 1);

    Service service(loop.get(), bus.get(), std::move(socket), folder, devices);
    result = service.start();
    if (result < 0) {
        return fail("start", result);
    }
    result = sd_event_loop(loop.get());
    return result == EXIT_SUCCESS ? result : fail("system bus", -ECONNRESET);
}

} // namespace

int main(int argc, char *argv[])
{
    // Tests give a folder of pipes instead of devices.
    if (argc == 3 && std::string_view(argv[1]) == "--pipes") {
        return run(argv[2], PipedDevices());
    }
    if (argc != 1) {
        std::fputs("vellumo-taps takes no arguments\n", stderr);
        return EXIT_FAILURE;
    }
    return run("/dev/input", KernelDevices());
}
