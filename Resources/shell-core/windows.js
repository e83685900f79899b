/** Whether its program may still have to answer the first request for its frame. Windows of X11 answer none. */
const isNew = ({window, shownAt}) => window.get_client_type() !== Meta.WindowClientType.X11 &&
    shownAt !== undefined && GLib.get_monotonic_time() - shownAt < 1000 * KeptPlace.MILLISECONDS;

/** Follows the windows and the screens, and places windows. */
class Windows {
    constructor(send) {
        this._send = send;
        this._known = new Map();
        this._placements = new Map();
        this._kept = new Map();
        this._isMoveSent = false;
        this._handlers = new Handlers();
        // A closing window counts as gone already: no later signal would report its end.
        for (const {metaWindow} of global.get_window_actors().filter(actor => !actor.is_destroyed()))
            this._follow(metaWindow, metaWindow.get_frame_rect().width > 0);
        this._handlers.add(global.display, {
            'window-created': (_display, window) => this._follow(window, false),
            'notify::focus-window': () => this._send('Focused', '(t)', [this.focused() ?? 0]),
            'workareas-changed': () => this._sendOutputs(),
        });
        this._handlers.add(Main.layoutManager, {'monitors-changed': () => this._sendOutputs()});
        // Windows of X11 programs send no signal when they are shown.
        this._handlers.add(global.window_manager, {
            'map': (_manager, {metaWindow}) => this._known.get(metaWindow.get_id())?.becomesReady?.(),
        });
    }

    destroy() {
        this._handlers.endAll();
        for (const id of this._known.keys())
            this._endPlacement(id);
        this._known.clear();
    }

    /** All windows that a person could place, oldest first. */
    all() {
        return [...this._known.values()]
            .filter(entry => this._isPlaceable(entry))
            .map(({window}) => window)
            .sort((a, b) => a.get_stable_sequence() - b.get_stable_sequence());
    }

    _isPlaceable({window, isShown}) {
        return isShown && kindOf(window) !== 'ignored';
    }

    focused() {
        return global.display.focus_window?.get_id() ?? null;
    }

    frames() {
        this._isMoveSent = false;
        return this.all().map(window => [window.get_id(), ...rectangle(window.get_frame_rect()), window.is_fullscreen()]);
    }

    /**
     * Calls `settled` with the final frame of the window, or with nothing if the window vanishes meanwhile or is placed
     * again.
     */
    place(id, wanted, settled) {
        const entry = this._known.get(id);
        if (!entry || !this._isPlaceable(entry))
            throw new Refusal('NoSuchWindow', `There is no window ${id}`);
        const {window} = entry;
        if (window.is_fullscreen())
            throw new Refusal('Fullscreen', 'A fullscreen window is left alone');
        const pending = this._placements.get(id);
        if (pending?.placement.waitsFor(wanted)) {
            // The former caller no longer waits. A new placement would forget what the window has done since.
            pending.caller.settled(null);
            pending.caller.settled = settled;
            pending.placement.repeat();
            return;
        }
        this._endPlacement(id);
        const caller = {settled};
        let isSettled = false;
        const placement = new Placement(window, wanted, () => {
            isSettled = true;
            this._placements.delete(id);
            if (host.returnsToFirstPlace && isNew(entry))
                this._kept.set(id, new KeptPlace(window));
            caller.settled(rectangle(window.get_frame_rect()));
        });
        if (!isSettled)
            this._placements.set(id, {placement, caller});
    }

    _endPlacement(id) {
        const pending = this._placements.get(id);
        this._placements.delete(id);
        this._kept.get(id)?.end();
        this._kept.delete(id);
        pending?.placement.cancel();
        pending?.caller.settled(null);
    }

    _follow(window, isShown) {
        const entry = {window, isShown};
        const id = window.get_id();
        this._known.set(id, entry);
        const send = () => this._sendWindow(entry);
        const moved = () => this._sendMove(id, entry);
        this._handlers.add(window, {
            'unmanaged': () => this._forget(id),
            'notify::wm-class': send, 'notify::gtk-application-id': send, 'notify::window-type': send,
            'notify::fullscreen': send, 'notify::skip-taskbar': send,
            'size-changed': moved, 'position-changed': moved,
        });
        if (!isShown) {
            // Only now are all its properties known.
            entry.becomesReady = () => {
                entry.becomesReady = null;
                entry.isShown = true;
                entry.shownAt = GLib.get_monotonic_time();
                send();
            };
            this._handlers.add(window, {
                'shown': () => entry.becomesReady?.(), 'workspace-changed': () => this._lookElsewhere(entry),
            });
            this._lookElsewhere(entry);
        }
    }

    /** A window that opens on a hidden workspace is not shown, but has its position there. */
    _lookElsewhere(entry) {
        if (!entry.becomesReady || entry.isLookedFor)
            return;
        entry.isLookedFor = true;
        // The shell decides before the next frame which windows are shown, and thereby their position.
        const look = () => {
            entry.isLookedFor = false;
            const {window} = entry;
            if (this._known.get(window.get_id()) === entry && window.is_hidden() && window.get_frame_rect().width > 0 &&
                !window.located_on_workspace(global.workspace_manager.get_active_workspace()))
                entry.becomesReady?.();
            return GLib.SOURCE_REMOVE;
        };
        host.addLater(Meta.LaterType.BEFORE_REDRAW, look);
    }

    _forget(id) {
        const {window} = this._known.get(id);
        this._handlers.end(window);
        this._endPlacement(id);
        this._known.delete(id);
        this._send('WindowGone', '(t)', [id]);
    }

    _sendWindow(entry) {
        if (this._isPlaceable(entry))
            this._send('WindowChanged', '(s)', [JSON.stringify(factsOf(entry.window))]);
    }

    /** Sent once; a reader requests the positions when it needs them. */
    _sendMove(id, entry) {
        this._lookElsewhere(entry);
        if (!entry.isShown || this._isMoveSent || this._placements.has(id))
            return;
        this._isMoveSent = true;
        this._send('Moved', null, null);
    }

    _sendOutputs() {
        this._send('OutputsChanged', '(s)', [JSON.stringify(outputs())]);
    }
}
