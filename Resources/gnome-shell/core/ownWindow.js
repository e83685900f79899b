/** The position of the program's own next window: that of a process with the title. */
class OwnWindow {
    constructor() {
        this._plan = null;
        global.display.connectObject('window-created', (_display, window) => this._await(window), this);
    }

    destroy() {
        global.display.disconnectObject(this);
        this._stopAwaiting();
    }

    place(process, title, x, y) {
        this._plan = {process, title, x, y};
        const own = global.get_window_actors()
            .filter(actor => !actor.is_destroyed() && actor.metaWindow.get_pid() === process);
        const shown = own.find(actor => actor.visible && this._isMeant(actor.metaWindow));
        if (shown) {
            this._carryOut(shown.metaWindow);
            return;
        }
        // It may exist already, and be about to be shown. Before that, the shell still has to choose a position for it,
        // which would override this one; having a size does not mean that the shell has done so.
        const made = own.find(actor => !actor.visible);
        if (made)
            this._await(made.metaWindow);
    }

    _isMeant(window) {
        return window.get_pid() === this._plan?.process && window.get_title() === this._plan.title;
    }

    _await(window) {
        if (this._plan?.process !== window.get_pid())
            return;
        this._stopAwaiting();
        this._awaited = window;
        // It is on no screen yet, so it never appears at another place.
        this._shown = window.connect('shown', () => {
            this._stopAwaiting();
            if (this._isMeant(window))
                this._carryOut(window);
        });
        this._gone = window.connect('unmanaged', () => this._stopAwaiting());
    }

    _stopAwaiting() {
        this._awaited?.disconnect(this._shown);
        this._awaited?.disconnect(this._gone);
        this._awaited = null;
    }

    _carryOut(window) {
        const {x, y} = this._plan;
        this._plan = null;
        const actor = window.get_compositor_private();
        if (actor)
            Main.wm.skipNextEffect(actor);
        window.make_above();
        window.stick();
        // GNOME 49 and later.
        window.hide_from_window_list?.();
        window.move_frame(true, x, y);
        Main.activateWindow(window);
    }
}
