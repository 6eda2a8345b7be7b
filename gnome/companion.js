// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Reports to vellumo the window with the keyboard and taps of Alt alone. Nothing is reported before
// vellumo asks for it, and only the owner of vellumo's name on the session bus may ask. This text
// becomes part of both entry files.

const vellumoName = 'app.vellumo.Vellumo';
const objectPath = '/app/vellumo/Companion';
const interfaceName = 'app.vellumo.Companion';
const interfaceXml = `<node><interface name="${interfaceName}">
  <method name="Follow"/>
  <method name="Unfollow"/>
  <signal name="Available"/>
  <signal name="Ended"/>
  <signal name="Window">
    <arg name="window" type="t"/>
    <arg name="process" type="i"/>
    <arg name="application" type="s"/>
    <arg name="class" type="s"/>
    <arg name="title" type="s"/>
  </signal>
  <signal name="Tapped">
    <arg name="time" type="x"/>
  </signal>
</interface></node>`;

/** Reports the window with the keyboard, its application and title. Forwards its presses. */
class WindowReports {
    constructor(report, taps) {
        this._report = report;
        this._taps = taps;
        this._window = null;
        this._handlers = [];
        this._focusHandler = global.display.connect('notify::focus-window', () => this._follow());
        this._follow();
    }

    destroy() {
        global.display.disconnect(this._focusHandler);
        this._release();
    }

    _release() {
        this._handlers.forEach(handler => this._window.disconnect(handler));
        this._handlers = [];
        this._window = null;
    }

    _follow() {
        this._release();
        this._taps.cancel();
        const window = global.display.focus_window;
        if (window) {
            this._window = window;
            this._handlers = [
                window.connect('notify::title', () => this._send()),
                window.connect('notify::wm-class', () => this._send()),
                // changes with each press of a key or button in the window
                window.connect('notify::user-time', () => this._taps.onPress()),
                window.connect('unmanaging', () => this._release()),
            ];
        }
        this._send();
    }

    _send() {
        const window = this._window;
        if (!window) {
            this._report(0, 0, '', '', '');
            return;
        }
        const application = Shell.WindowTracker.get_default().get_window_app(window);
        this._report(window.get_id(), window.get_pid(),
            application && !application.is_window_backed() ? application.get_id() : '',
            window.get_wm_class() ?? '', window.get_title() ?? '');
    }
}

/**
 * Recognises presses of Alt without another key or button in between. Of an event it asks for the
 * kind, the time, and the modifiers that were held before it, not for the key. A press before which
 * nothing was held may be one of Alt: if so, Alt is held before the next event.
 */
class TapReports {
    constructor(report) {
        this._report = report;
        this._activity = global.backend.get_core_idle_monitor();
        this._watch = 0;
        this._pressedAt = null;
    }

    destroy() {
        this.cancel();
        if (this._watch)
            this._activity.remove_watch(this._watch);
        this._watch = 0;
    }

    /** To be called for each press of a key or button, while its event is handled. */
    onPress() {
        const event = Clutter.get_current_event();
        if (event?.type() !== Clutter.EventType.KEY_PRESS)
            return;
        this._pressedAt = this._heldBefore(event) === 0 ? event.get_time() : null;
        if (this._pressedAt !== null)
            this._watchActivity();
    }

    /** What is pressed now does not count. */
    cancel() {
        this._pressedAt = null;
    }

    /** Returns the modifiers, less the locks, and the buttons. */
    _heldBefore(event) {
        return event.get_state() & ~(Clutter.ModifierType.LOCK_MASK | Clutter.ModifierType.MOD2_MASK);
    }

    _watchActivity() {
        // called once, for the next event
        this._watch ||= this._activity.add_user_active_watch(() => {
            this._watch = 0;
            const event = Clutter.get_current_event();
            if (event && this._pressedAt !== null)
                this._onEvent(event);
        });
    }

    _onEvent(event) {
        const type = event.type();
        const isAltHeld = this._heldBefore(event) === Clutter.ModifierType.MOD1_MASK;
        if (isAltHeld && type === Clutter.EventType.MOTION) {
            this._watchActivity();
            return;
        }
        const pressedAt = this._pressedAt;
        const time = event.get_time();
        this.cancel();
        if (isAltHeld && type === Clutter.EventType.KEY_RELEASE && since(pressedAt, time) < maxHold)
            this._report(time);
    }
}

/** Returns the milliseconds between two times of events, which are 32 bits long. */
function since(earlier, later) {
    return (later - earlier) >>> 0;
}

/** A key that is held longer is not tapped. In milliseconds. */
const maxHold = 1000;

/** The extension's object on the session bus. */
class Companion {
    enable() {
        this._vellumo = null; // the unique name of its connection
        this._windows = null;
        this._taps = null;
        this._object = Gio.DBusExportedObject.wrapJSObject(interfaceXml, this);
        this._object.export(Gio.DBus.session, objectPath);
        this._nameWatch = Gio.bus_watch_name(Gio.BusType.SESSION, vellumoName,
            Gio.BusNameWatcherFlags.NONE,
            (connection, name, owner) => {
                this._stop();
                this._vellumo = owner;
                this._send('Available', null);
            },
            () => {
                this._stop();
                this._vellumo = null;
            });
    }

    disable() {
        Gio.bus_unwatch_name(this._nameWatch);
        this._stop();
        this._send('Ended', null);
        this._object.unexport();
        this._object = null;
        this._vellumo = null;
    }

    FollowAsync(parameters, invocation) {
        if (this._answers(invocation))
            this._start();
    }

    UnfollowAsync(parameters, invocation) {
        if (this._answers(invocation))
            this._stop();
    }

    _answers(invocation) {
        const isVellumo = invocation.get_sender() === this._vellumo;
        if (isVellumo) {
            invocation.return_value(null);
        } else {
            invocation.return_dbus_error('org.freedesktop.DBus.Error.AccessDenied',
                'Only vellumo is answered');
        }
        return isVellumo;
    }

    _start() {
        this._stop();
        this._taps = new TapReports(time => {
            const now = GLib.get_monotonic_time();
            const age = since(time, Math.floor(now / 1000));
            this._send('Tapped', new GLib.Variant('(x)', [now - age * 1000]));
        });
        this._windows = new WindowReports(
            (...window) => this._send('Window', new GLib.Variant('(tisss)', window)), this._taps);
    }

    _stop() {
        this._windows?.destroy();
        this._windows = null;
        this._taps?.destroy();
        this._taps = null;
    }

    /** Sends a signal to vellumo alone. */
    _send(signal, parameters) {
        if (this._vellumo)
            Gio.DBus.session.emit_signal(this._vellumo, objectPath, interfaceName, signal, parameters);
    }
}
