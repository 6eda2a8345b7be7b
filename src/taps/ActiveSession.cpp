// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "taps/ActiveSession.h"

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <string_view>

namespace vellumo::taps {

namespace {

using namespace std::chrono_literals;

/// Until then, what was known before holds.
constexpr std::chrono::microseconds answerTimeout = 5s;

constexpr auto service = "org.freedesktop.login1";
constexpr auto seatPath = "/org/freedesktop/login1/seat/seat0";
constexpr auto seatInterface = "org.freedesktop.login1.Seat";
constexpr auto sessionInterface = "org.freedesktop.login1.Session";
constexpr auto properties = "org.freedesktop.DBus.Properties";

constexpr auto changed = "type='signal',sender='org.freedesktop.login1',"
                         "path_namespace='/org/freedesktop/login1',"
                         "interface='org.freedesktop.DBus.Properties',member='PropertiesChanged'";
constexpr auto ownerChanged = "type='signal',sender='org.freedesktop.DBus',"
                              "interface='org.freedesktop.DBus',member='NameOwnerChanged',"
                              "arg0='org.freedesktop.login1'";

/// What is asked of a session. A property that is missing leaves the value that forbids reports.
struct Session {
    std::optional<uid_t> user;
    bool isLocked = true;
    bool isActive = false;
    bool isOfUser = false; ///< not a login screen
};

bool readFlag(sd_bus_message *reply, bool otherwise)
{
    int flag = 0;
    return sd_bus_message_read(reply, "v", "b", &flag) < 0 ? otherwise : flag != 0;
}

void readProperty(sd_bus_message *reply, std::string_view name, Session &session)
{
    if (name == "LockedHint") {
        session.isLocked = readFlag(reply, true);
    } else if (name == "Active") {
        session.isActive = readFlag(reply, false);
    } else if (name == "Class") {
        const char *kind = "";
        session.isOfUser = sd_bus_message_read(reply, "v", "s", &kind) >= 0
            && std::string_view(kind).starts_with("user");
    } else if (name == "User") {
        std::uint32_t user = 0;
        const char *path = nullptr;
        if (sd_bus_message_read(reply, "v", "(uo)", &user, &path) >= 0) {
            session.user = user;
        }
    } else {
        sd_bus_message_skip(reply, "v");
    }
}

} // namespace

ActiveSession::ActiveSession(sd_bus *bus, std::function<void()> onChange)
    : bus_(bus)
    , onChange_(std::move(onChange))
{
}

int ActiveSession::start()
{
    const auto listen = [this](const char *match, Owned<sd_bus_slot> &slot) {
        sd_bus_slot *added = nullptr;
        const int result = sd_bus_add_match_async(
            bus_, &added, match,
            [](sd_bus_message *, void *self, sd_bus_error *) {
                static_cast<ActiveSession *>(self)->ask();
                return 0;
            },
            nullptr, this);
        slot.reset(added);
        return result;
    };
    int result = listen(changed, changes_);
    if (result >= 0) {
        result = listen(ownerChanged, owners_);
    }
    if (result >= 0) {
        ask();
    }
    return result;
}

void ActiveSession::ask()
{
    sd_bus_message *question = nullptr;
    sd_bus_message_new_method_call(bus_, &question, service, seatPath, properties, "Get");
    if (question != nullptr) {
        sd_bus_message_append(question, "ss", seatInterface, "ActiveSession");
    }
    send(question, [](sd_bus_message *reply, void *self, sd_bus_error *) {
        static_cast<ActiveSession *>(self)->handleSeat(reply);
        return 0;
    });
}

void ActiveSession::askSession(const char *path)
{
    sd_bus_message *question = nullptr;
    sd_bus_message_new_method_call(bus_, &question, service, path, properties, "GetAll");
    if (question != nullptr) {
        sd_bus_message_append(question, "s", sessionInterface);
    }
    send(question, [](sd_bus_message *reply, void *self, sd_bus_error *) {
        static_cast<ActiveSession *>(self)->handleSession(reply);
        return 0;
    });
}

/// Takes ownership of the question. An earlier one is not answered any more.
void ActiveSession::send(sd_bus_message *question, sd_bus_message_handler_t onReply)
{
    sd_bus_slot *sent = nullptr;
    const int result = question == nullptr
        ? -ENOMEM
        : sd_bus_call_async(bus_, &sent, question, onReply, this,
                            static_cast<std::uint64_t>(answerTimeout.count()));
    sd_bus_message_unref(question);
    question_.reset(sent);
    if (result < 0) {
        answer(std::nullopt);
    }
}

/// Handles a question without an answer. One that was only late is asked again.
void ActiveSession::handleError(sd_bus_message *reply)
{
    answer(std::nullopt);
    if (sd_bus_message_is_method_error(reply, SD_BUS_ERROR_NO_REPLY) > 0) {
        ask();
    }
}

void ActiveSession::handleSeat(sd_bus_message *reply)
{
    const char *name = "";
    const char *path = nullptr;
    if (sd_bus_message_is_method_error(reply, nullptr) != 0) {
        handleError(reply);
    } else if (sd_bus_message_read(reply, "v", "(so)", &name, &path) < 0
               || std::string_view(name).empty()) {
        answer(std::nullopt);
    } else {
        askSession(path);
    }
}

void ActiveSession::handleSession(sd_bus_message *reply)
{
    if (sd_bus_message_is_method_error(reply, nullptr) != 0) {
        handleError(reply);
        return;
    }
    Session session;
    if (sd_bus_message_enter_container(reply, SD_BUS_TYPE_ARRAY, "{sv}") >= 0) {
        while (sd_bus_message_enter_container(reply, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
            const char *name = "";
            sd_bus_message_read(reply, "s", &name);
            readProperty(reply, name, session);
            sd_bus_message_exit_container(reply);
        }
    }
    const bool mayHear = session.isActive && session.isOfUser && !session.isLocked;
    answer(mayHear ? session.user : std::nullopt);
}

void ActiveSession::answer(std::optional<uid_t> user)
{
    user_ = user;
    onChange_();
}

} // namespace vellumo::taps
