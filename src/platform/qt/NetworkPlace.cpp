// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/qt/NetworkPlace.h"

#include <QNetworkInterface>
#include <algorithm>
#include <ctime>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto minSleep = 1s; // the two clocks are not read at the same instant

std::chrono::nanoseconds now(clockid_t clock)
{
    timespec time{};
    ::clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

NetworkPlace NetworkPlace::current()
{
    NetworkPlace place;
    place.slept = std::chrono::duration_cast<std::chrono::milliseconds>(now(CLOCK_BOOTTIME)
                                                                        - now(CLOCK_MONOTONIC));
    place.addresses = QNetworkInterface::allAddresses();
    place.addresses.removeIf(
        [](const QHostAddress &address) { return address.isLoopback() || address.isLinkLocal(); });
    std::ranges::sort(place.addresses, {}, &QHostAddress::toString);
    return place;
}

bool NetworkPlace::isLeft(const NetworkPlace &now) const
{
    return now.slept - slept >= minSleep || now.addresses != addresses;
}

} // namespace vellumo
