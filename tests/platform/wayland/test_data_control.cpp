// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// PRIMARY through the test's compositor, whose applications misbehave.

#include "platform/Accessibility.h"
#include "platform/wayland/client/DataControlProtocol.h"
#include "platform/wayland/client/WaylandClientModule.h"
#include <QElapsedTimer>
#include <QLibrary>
#include <QTemporaryDir>
#include <QTest>
#include <atomic>
#include <csignal>
#include <thread>
#include <unistd.h>
#include <wayland-server.h>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

enum class Answer { Text, Nothing, Endless, Closed };

struct Behaviour {
    QByteArray type = "text/plain;charset=utf-8";
    QByteArray text = "selected"_ba;
    Answer answer = Answer::Text;
};

/// Publishes one text as soon as a client has a device. Runs in a thread.
class Compositor {
public:
    Compositor(const DataControlProtocol &protocol, Behaviour behaviour)
        : protocol_(protocol)
        , behaviour_(std::move(behaviour))
        , display_(wl_display_create())
    {
        wl_display_add_socket(display_, "test");
        wl_global_create(display_, &wl_seat_interface, 1, this, &bindSeat);
        wl_global_create(display_, &protocol_.manager, protocol_.manager.version, this,
                         &bindManager);
        thread_ = std::thread([this] {
            while (!isOver_) {
                wl_event_loop_dispatch(wl_display_get_event_loop(display_), 10);
                wl_display_flush_clients(display_);
            }
        });
    }
    ~Compositor()
    {
        isOver_ = true;
        thread_.join();
        wl_display_destroy_clients(display_);
        wl_display_destroy(display_);
        for (const int descriptor : held_) {
            ::close(descriptor);
        }
    }
    Q_DISABLE_COPY_MOVE(Compositor)

private:
    static Compositor &self(wl_resource *resource)
    {
        return *static_cast<Compositor *>(wl_resource_get_user_data(resource));
    }
    static void bindSeat(wl_client *client, void *data, uint32_t version, uint32_t id)
    {
        wl_resource *seat =
            wl_resource_create(client, &wl_seat_interface, static_cast<int>(version), id);
        wl_resource_set_implementation(seat, nullptr, data, nullptr);
    }
    static void bindManager(wl_client *client, void *data, uint32_t version, uint32_t id)
    {
        static const struct {
            void (*createSource)(wl_client *, wl_resource *, uint32_t);
            void (*getDevice)(wl_client *, wl_resource *, uint32_t, wl_resource *);
            void (*destroy)(wl_client *, wl_resource *);
        } requests{nullptr, &getDevice, nullptr};
        wl_resource *manager =
            wl_resource_create(client, &static_cast<Compositor *>(data)->protocol_.manager,
                               static_cast<int>(version), id);
        wl_resource_set_implementation(manager, &requests, data, nullptr);
    }
    static void getDevice(wl_client *client, wl_resource *manager, uint32_t id, wl_resource *)
    {
        static const struct {
            void (*receive)(wl_client *, wl_resource *, const char *, int);
            void (*destroy)(wl_client *, wl_resource *);
        } requests{&receive, [](wl_client *, wl_resource *offer) { wl_resource_destroy(offer); }};
        Compositor &compositor = self(manager);
        const int version = wl_resource_get_version(manager);
        wl_resource *device = wl_resource_create(client, &compositor.protocol_.device, version, id);
        wl_resource_set_implementation(device, nullptr, &compositor, nullptr);
        wl_resource *offer = wl_resource_create(client, &compositor.protocol_.offer, version, 0);
        wl_resource_set_implementation(offer, &requests, &compositor, nullptr);
        wl_resource_post_event(device, 0, offer);
        for (const QByteArray &type : compositor.behaviour_.type.split(' ')) {
            wl_resource_post_event(offer, 0, type.constData());
        }
        wl_resource_post_event(device, 3, offer);
    }
    static void receive(wl_client *, wl_resource *offer, const char *, int descriptor)
    {
        Compositor &compositor = self(offer);
        const Behaviour &behaviour = compositor.behaviour_;
        switch (behaviour.answer) {
        case Answer::Nothing:
            compositor.held_.append(descriptor);
            return;
        case Answer::Endless:
            while (::write(descriptor, "abcdefgh", 8) > 0) { }
            break;
        case Answer::Text:
            static_cast<void>(
                ::write(descriptor, behaviour.text.constData(), behaviour.text.size()));
            break;
        case Answer::Closed:
            break;
        }
        ::close(descriptor);
    }

    const DataControlProtocol &protocol_;
    Behaviour behaviour_;
    wl_display *display_;
    QList<int> held_;
    std::atomic<bool> isOver_ = false;
    std::thread thread_;
};

} // namespace

class TestDataControl : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        std::signal(SIGPIPE, SIG_IGN);
        QVERIFY(folder_.isValid());
        qputenv("XDG_RUNTIME_DIR", folder_.path().toLocal8Bit());
        qputenv("WAYLAND_DISPLAY", "test");
        make_ = reinterpret_cast<waylandClientModule::MakePrimarySelection>(QLibrary::resolve(
            QStringLiteral(VELLUMO_WAYLAND_CLIENT), waylandClientModule::makePrimarySelection));
        QVERIFY(make_ != nullptr);
    }

    void readsWhatApplicationsPublish()
    {
        const DataControlProtocol wlr("zwlr_data_control_manager_v1", "zwlr_data_control_device_v1",
                                      "zwlr_data_control_source_v1", "zwlr_data_control_offer_v1",
                                      2);
        const DataControlProtocol ext("ext_data_control_manager_v1", "ext_data_control_device_v1",
                                      "ext_data_control_source_v1", "ext_data_control_offer_v1", 1);
        constexpr qsizetype maxBytes = 4 * (maxSelectionLength + 1);
        const struct {
            const char *name;
            const DataControlProtocol &protocol;
            Behaviour behaviour;
            std::optional<qsizetype> length; ///< minimum; absent for no text
        } rows[] = {
            {"text", wlr, {}, 8},
            {"text, later protocol", ext, {}, 8},
            {"an old type", wlr, {"image/png STRING", "selected", Answer::Text}, 8},
            {"no text", wlr, {"image/png", "selected", Answer::Text}, {}},
            {"a secret", wlr, {"text/plain x-kde-passwordManagerHint", "x", Answer::Text}, {}},
            {"never writes", wlr, {"text/plain", {}, Answer::Nothing}, {}},
            {"never ends", ext, {"text/plain", {}, Answer::Endless}, maxBytes},
            {"closed at once", wlr, {"text/plain", {}, Answer::Closed}, 0},
        };
        for (const auto &row : rows) {
            const Compositor compositor(row.protocol, row.behaviour);
            const std::unique_ptr<PrimarySelection> primary(make_());
            QVERIFY2(primary, row.name);
            QTRY_VERIFY2(primary->publication(), row.name);
            QCOMPARE(primary->publication()->processIdentifier,
                     waylandClientModule::unknownProcess);
            QElapsedTimer timer;
            timer.start();
            const auto text = primary->string(QDeadlineTimer(150));
            QVERIFY2(timer.elapsed() < 600, row.name);
            QVERIFY2(text.has_value() == row.length.has_value(), row.name);
            QVERIFY2(!text || text->size() >= *row.length, row.name);
        }
    }

    void survivesTheCompositor()
    {
        const DataControlProtocol ext("ext_data_control_manager_v1", "ext_data_control_device_v1",
                                      "ext_data_control_source_v1", "ext_data_control_offer_v1", 1);
        std::unique_ptr<PrimarySelection> primary;
        {
            const Compositor compositor(ext, {});
            primary.reset(make_());
            QTRY_VERIFY(primary->publication());
        }
        QTRY_VERIFY(!primary->publication());
        QVERIFY(!primary->string(QDeadlineTimer(150)));
        QVERIFY(!std::unique_ptr<PrimarySelection>(make_()));
    }

private:
    QTemporaryDir folder_;
    waylandClientModule::MakePrimarySelection make_ = nullptr;
};

QTEST_GUILESS_MAIN(TestDataControl)
#include "test_data_control.moc"
