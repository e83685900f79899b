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
        window.connectObject(
            'size-changed', () => this._changed(), 'position-changed', () => this._changed(), this);
        const {width, height} = window.get_frame_rect();
        const isOwnSize = wanted[2] === width && wanted[3] === height;
        // The release changes the frame, too. The request for the wanted frame comes after it.
        this._isAsking = true;
        const isComing = this._release();
        this._isAsking = false;
        if (isComing && isOwnSize) {
            // The size that it is about to leave is not asked for as long as it has it.
            this._isReleasing = true;
            this._wait(80, () => this._ask());
        } else {
            this._ask();
        }
    }

    cancel() {
        this._window.disconnectObject(this);
        this._wait(0, null);
    }

    /** Maximized or tiled it would keep its size. Whether its new size has yet to come. */
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
        // A window of an X11 program would keep its place if it rounds the size.
        if (this._isX11)
            this._window.move_frame(true, this._wanted[0], this._wanted[1]);
        const before = rectangle(this._window.get_frame_rect());
        this._window.move_resize_frame(true, ...this._wanted);
        // What the shell does at once it does without the application, whose limits allow no other size.
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
        if (isEqual(this._wanted, frame) && this._isReleasing)
            // It was asked without having left its size. The answer to the release takes it elsewhere if it still comes.
            this._wait(2000, () => this._finish());
        else if (isEqual(this._wanted, frame))
            this._finish();
        else if (this._isX11 && this._triesLeft === 0 && isEqual(this._wanted.slice(0, 2), frame.slice(0, 2)))
            // The shell has rounded the size as the program wishes. A busy shell would be long in coming back to it.
            this._finish();
        else if (this._isX11 || this._isDecided || !isEqual(this._former.slice(2), frame.slice(2)))
            // It has taken another size; a little later that is final.
            this._wait(50, () => this._settle());
        else if (!isEqual(this._former, frame))
            // Some programs say that they have heard before they have drawn their new size. The shell's word that
            // something has changed would not do: it is said as well when a former request is dealt with.
            this._wait(150, () => this._settle());
        else
            // The application has yet to answer. Whoever asked does not wait as long.
            this._wait(2000, () => this._finish());
    }

    _settle() {
        if (this._triesLeft === 0) {
            this._finish();
            return;
        }
        const before = rectangle(this._window.get_frame_rect());
        this._ask();
        // The shell knows at once what a window of an X11 program takes: another answer would be the same.
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
