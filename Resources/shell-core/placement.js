/** For each window that took another size than it was asked for: the last such pair. */
const refusals = new WeakMap();

/** One window on its way to a frame. Calls `settled` once, unless it is cancelled before. */
class Placement {
    constructor(window, wanted, settled) {
        this._window = window;
        this._wanted = wanted;
        this._settled = settled;
        this._timeout = 0;
        this._former = rectangle(window.get_frame_rect());
        this._isDecided = false;
        this._isAsking = false;
        this._triesLeft = 1;
        this._isX11 = window.get_client_type() === Meta.WindowClientType.X11;
        const refusal = refusals.get(window);
        this._expected = refusal && isEqual(refusal.asked, wanted.slice(2)) ? refusal.taken : null;
        this._handlers = new Handlers();
        this._handlers.add(window, {'size-changed': () => this._changed(), 'position-changed': () => this._changed()});
        const {width, height} = window.get_frame_rect();
        const isOwnSize = wanted[2] === width && wanted[3] === height;
        // The release changes the frame, too. The request for the wanted frame comes after it.
        this._isAsking = true;
        const isComing = this._release();
        this._isAsking = false;
        if (isComing && isOwnSize) {
            // If the window is about to leave the wanted size, the request waits until it has left it.
            this._isReleasing = true;
            this._wait(80, () => this._ask());
        } else {
            this._ask();
        }
    }

    cancel() {
        this._handlers.endAll();
        this._wait(0, null);
    }

    /** Whether the program has yet to take that frame. */
    waitsFor(wanted) {
        return !this._isX11 && isEqual(this._wanted, wanted);
    }

    /** Requests the frame again, because the window may have been moved meanwhile, and waits on. */
    repeat() {
        if (this._isReleasing)
            return;
        this._isAsking = true;
        this._window.move_resize_frame(true, ...this._wanted);
        this._isAsking = false;
        if (isEqual(this._wanted, rectangle(this._window.get_frame_rect())))
            this._finish();
    }

    /**
     * A maximized or tiled window would keep its size, so it is released. Returns whether its new size is still
     * pending.
     */
    _release() {
        const window = this._window;
        const flags = window.get_maximize_flags ? window.get_maximize_flags() : window.get_maximized();
        if (!flags)
            return false;
        this._triesLeft = 2;
        const before = rectangle(window.get_frame_rect());
        if (window.set_unmaximize_flags)
            window.set_unmaximize_flags(Meta.MaximizeFlags.BOTH);
        else
            window.unmaximize(Meta.MaximizeFlags.BOTH);
        return isEqual(before, rectangle(window.get_frame_rect()));
    }

    _ask() {
        this._isAsking = true;
        this._triesLeft--;
        this._wait(0, null);
        // A window of an X11 program would keep its position if it rounds the size.
        if (this._isX11)
            this._window.move_frame(true, this._wanted[0], this._wanted[1]);
        const before = rectangle(this._window.get_frame_rect());
        this._window.move_resize_frame(true, ...this._wanted);
        // An immediate change of the shell happens without the application, whose limits allow no other size.
        this._isDecided = !this._window.allows_resize() || !isEqual(before, rectangle(this._window.get_frame_rect()));
        this._isAsking = false;
        this._look();
    }

    _changed() {
        if (this._isAsking)
            return;
        if (this._isReleasing) {
            this._isReleasing = false;
            this._ask();
        } else {
            this._look();
        }
    }

    _look() {
        const frame = rectangle(this._window.get_frame_rect());
        const size = frame.slice(2);
        if (isEqual(this._wanted.slice(2), size) && isEqual(size, refusals.get(this._window)?.asked ?? []))
            refusals.delete(this._window);
        if (isEqual(this._wanted, frame) && this._isReleasing)
            // The request went out before the window had left its size. A late reply to the release still moves the
            // window elsewhere.
            this._wait(2000, () => this._finish());
        else if (isEqual(this._wanted, frame))
            this._finish();
        else if (this._isX11 && this._triesLeft === 0 && isEqual(this._wanted.slice(0, 2), frame.slice(0, 2)))
            // The shell has rounded the size by the program's hints. A busy shell would take long to check again.
            this._finish();
        else if (this._isX11 || this._isDecided || !isEqual(this._former.slice(2), frame.slice(2)))
            // It has taken another size, which becomes final a little later.
            this._wait(50, () => this._settle());
        else if (this._expected && isEqual(this._expected, frame.slice(2)))
            // It has refused this size before. If it does so again, there is no signal, because nothing changes.
            this._wait(150, () => this._settle());
        else if (!isEqual(this._former, frame))
            // Some programs acknowledge before they have drawn their new size, on a busy machine long before. The
            // shell's signal of a change is not sufficient: it also comes for an earlier request. The caller does not
            // wait that long, but requests the same frame again.
            this._wait(400, () => this._settle());
        else
            // The application has not replied yet. The caller does not wait that long.
            this._wait(2000, () => this._finish());
    }

    _settle() {
        if (this._triesLeft === 0) {
            const taken = rectangle(this._window.get_frame_rect()).slice(2);
            const asked = this._wanted.slice(2);
            if (!isEqual(asked, taken))
                refusals.set(this._window, {asked, taken});
            this._finish();
            return;
        }
        const before = rectangle(this._window.get_frame_rect());
        this._ask();
        // The shell knows the size of an X11 program's window at once: a repeated request would get the same result.
        if (this._timeout && this._isX11 && isEqual(before, rectangle(this._window.get_frame_rect())))
            this._finish();
    }

    _finish() {
        this.cancel();
        this._settled();
    }

    _wait(milliseconds, then) {
        if (this._timeout)
            GLib.source_remove(this._timeout);
        this._timeout = 0;
        if (then) {
            this._timeout = GLib.timeout_add(GLib.PRIORITY_DEFAULT, milliseconds, () => {
                this._timeout = 0;
                then();
                return GLib.SOURCE_REMOVE;
            });
        }
    }
}

/**
 * Keeps a new window at its place for a while, once. In Cinnamon a program's first picture, which may come after the
 * window is shown and was moved, takes the window back to the place that Cinnamon had chosen for it.
 */
class KeptPlace {
    constructor(window) {
        const {x, y} = window.get_frame_rect();
        this._handlers = new Handlers();
        this._handlers.add(window, {
            'position-changed': () => {
                const frame = window.get_frame_rect();
                if (frame.x === x && frame.y === y)
                    return;
                this.end();
                window.move_frame(true, x, y);
            },
            'unmanaged': () => this.end(),
        });
        this._timeout = GLib.timeout_add(GLib.PRIORITY_DEFAULT, KeptPlace.MILLISECONDS, () => {
            this._timeout = 0;
            this.end();
            return GLib.SOURCE_REMOVE;
        });
    }

    end() {
        if (this._timeout)
            GLib.source_remove(this._timeout);
        this._timeout = 0;
        this._handlers.endAll();
    }
}
KeptPlace.MILLISECONDS = 2000;
