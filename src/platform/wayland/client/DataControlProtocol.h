// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <wayland-client-core.h>

namespace vellumo {

/// The protocol for clipboard managers, which has two names with the same messages:
/// zwlr_data_control_manager_v1 (wlr-data-control-unstable-v1.xml of wlr-protocols) and
/// ext_data_control_manager_v1 (ext-data-control-v1.xml of wayland-protocols).
class DataControlProtocol {
public:
    /// `version` is that of all four interfaces. PRIMARY came with version 2 of the first name.
    DataControlProtocol(const char *manager, const char *device, const char *source,
                        const char *offer, int version);
    DataControlProtocol(const DataControlProtocol &) = delete;
    DataControlProtocol &operator=(const DataControlProtocol &) = delete;
    DataControlProtocol(DataControlProtocol &&) = delete;
    DataControlProtocol &operator=(DataControlProtocol &&) = delete;
    ~DataControlProtocol() = default;

    wl_interface manager;
    wl_interface device;
    wl_interface source;
    wl_interface offer;

    /// Numbers of the requests that are used.
    enum ManagerRequest { CreateDataSource = 0, GetDataDevice = 1 };
    enum DeviceRequest { SetSelection = 0 };
    enum SourceRequest { OfferType = 0, DestroySource = 1 };
    enum OfferRequest { Receive = 0, DestroyOffer = 1 };

private:
    std::array<const wl_interface *, 2> sourceType_;
    std::array<const wl_interface *, 2> deviceTypes_;
    std::array<const wl_interface *, 2> offerType_;
    std::array<wl_message, 3> managerRequests_;
    std::array<wl_message, 3> deviceRequests_;
    std::array<wl_message, 4> deviceEvents_;
    std::array<wl_message, 2> sourceRequests_;
    std::array<wl_message, 2> sourceEvents_;
    std::array<wl_message, 2> offerRequests_;
    std::array<wl_message, 1> offerEvents_;
};

} // namespace vellumo
