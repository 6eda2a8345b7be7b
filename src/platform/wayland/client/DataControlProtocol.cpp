// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/DataControlProtocol.h"

#include <wayland-client-protocol.h>

namespace vellumo {

namespace {

std::array<const wl_interface *, 2> noTypes{nullptr, nullptr};

template <std::size_t Requests>
wl_interface describe(const char *name, int version, std::array<wl_message, Requests> &requests,
                      wl_message *events, int eventCount)
{
    return {name, version, static_cast<int>(Requests), requests.data(), eventCount, events};
}

} // namespace

DataControlProtocol::DataControlProtocol(const char *managerName, const char *deviceName,
                                         const char *sourceName, const char *offerName, int version)
    : manager(describe(managerName, version, managerRequests_, nullptr, 0))
    , device(describe(deviceName, version, deviceRequests_, deviceEvents_.data(), 4))
    , source(describe(sourceName, version, sourceRequests_, sourceEvents_.data(), 2))
    , offer(describe(offerName, version, offerRequests_, offerEvents_.data(), 1))
    , sourceType_{&source, nullptr}
    , deviceTypes_{&device, &wl_seat_interface}
    , offerType_{&offer, nullptr}
    , managerRequests_{{{"create_data_source", "n", sourceType_.data()},
                        {"get_data_device", "no", deviceTypes_.data()},
                        {"destroy", "", noTypes.data()}}}
    , deviceRequests_{{{"set_selection", "?o", sourceType_.data()},
                       {"destroy", "", noTypes.data()},
                       {"set_primary_selection", "?o", sourceType_.data()}}}
    , deviceEvents_{{{"data_offer", "n", offerType_.data()},
                     {"selection", "?o", offerType_.data()},
                     {"finished", "", noTypes.data()},
                     {"primary_selection", "?o", offerType_.data()}}}
    , sourceRequests_{{{"offer", "s", noTypes.data()}, {"destroy", "", noTypes.data()}}}
    , sourceEvents_{{{"send", "sh", noTypes.data()}, {"cancelled", "", noTypes.data()}}}
    , offerRequests_{{{"receive", "sh", noTypes.data()}, {"destroy", "", noTypes.data()}}}
    , offerEvents_{{{"offer", "s", noTypes.data()}}}
{
}

} // namespace vellumo
