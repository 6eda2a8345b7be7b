// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "HeldResources.h"

#include "ProcessUsage.h"
#include <QDir>
#include <cstdlib>
#include <memory>
#include <xcb/res.h>
#include <xcb/xcb.h>

using namespace Qt::StringLiterals;

namespace {

template <typename Reply> using ReplyPtr = std::unique_ptr<Reply, decltype(&std::free)>;

qsizetype entriesOf(const QString &folder)
{
    return QDir(folder)
        .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot)
        .size();
}

void addOfClient(xcb_connection_t *connection, quint32 client, HeldResources &held)
{
    const ReplyPtr<xcb_res_query_client_resources_reply_t> resources(
        xcb_res_query_client_resources_reply(
            connection, xcb_res_query_client_resources(connection, client), nullptr),
        std::free);
    if (resources) {
        const auto *types = xcb_res_query_client_resources_types(resources.get());
        const int count = xcb_res_query_client_resources_types_length(resources.get());
        for (int i = 0; i < count; ++i) {
            held.xResources += types[i].count;
        }
    }
    const ReplyPtr<xcb_res_query_client_pixmap_bytes_reply_t> pixmaps(
        xcb_res_query_client_pixmap_bytes_reply(
            connection, xcb_res_query_client_pixmap_bytes(connection, client), nullptr),
        std::free);
    if (pixmaps) {
        held.xPixmapMegabytes += pixmaps->bytes / 1048576.0 + pixmaps->bytes_overflow * 4096.0;
    }
}

void addOfServer(xcb_connection_t *connection, qint64 process, HeldResources &held)
{
    const xcb_res_client_id_spec_t everyone{XCB_NONE, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const ReplyPtr<xcb_res_query_client_ids_reply_t> clients(
        xcb_res_query_client_ids_reply(connection,
                                       xcb_res_query_client_ids(connection, 1, &everyone), nullptr),
        std::free);
    if (!clients) {
        return;
    }
    for (auto each = xcb_res_query_client_ids_ids_iterator(clients.get()); each.rem > 0;
         xcb_res_client_id_value_next(&each)) {
        if (xcb_res_client_id_value_value_length(each.data) > 0
            && *xcb_res_client_id_value_value(each.data) == process) {
            addOfClient(connection, each.data->spec.client, held);
        }
    }
}

} // namespace

HeldResources heldResources(qint64 process)
{
    const vellumo::bench::Memory memory = vellumo::bench::memoryOf(process);
    const QString folder = u"/proc/%1/"_s.arg(process);
    HeldResources held{.residentMegabytes = memory.resident,
                       .privateDirtyMegabytes = memory.privateDirty,
                       .threads = entriesOf(folder + u"task"_s),
                       .fileDescriptors = entriesOf(folder + u"fd"_s)};
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(nullptr, nullptr), &xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) == 0) {
        addOfServer(connection.get(), process, held);
    }
    return held;
}
