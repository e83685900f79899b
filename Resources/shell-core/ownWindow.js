/** The position of the program's own next window: that of a process with the title. */
class OwnWindow {
    constructor() {
        this._plan = null;
        this._kept = null;
        this._handlers = new Handlers();
        this._handlers.add(global.display, {'window-created': (_display, window) => this._await(window)});
    }

    destroy() {
        this._stopAwaiting();
        this._kept?.end();
        this._handlers.endAll();
    }

    place(process, title, x, y) {
        this._plan = {process, title, x, y};
        const own = global.get_window_actors()
            .filter(actor => !actor.is_destroyed() && host.processOf(actor.metaWindow) === process);
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
        return host.processOf(window) === this._plan?.process && window.get_title() === this._plan.title;
    }

    _await(window) {
        if (this._plan?.process !== host.processOf(window))
            return;
        this._stopAwaiting();
        this._awaited = window;
        // It is on no screen yet, so it never appears at another place.
        this._handlers.add(window, {
            'shown': () => {
                this._stopAwaiting();
                if (this._isMeant(window))
                    this._carryOut(window);
            },
            'unmanaged': () => this._stopAwaiting(),
        });
    }

    _stopAwaiting() {
        this._handlers.end(this._awaited);
        this._awaited = null;
    }

    _carryOut(window) {
        const {x, y} = this._plan;
        this._plan = null;
        const actor = window.get_compositor_private();
        if (actor)
            host.skipNextEffect(actor);
        window.make_above();
        window.stick();
        // GNOME 49 and later.
        window.hide_from_window_list?.();
        window.move_frame(true, x, y);
        this._kept?.end();
        this._kept = host.returnsToFirstPlace ? new KeptPlace(window) : null;
        Main.activateWindow(window);
    }
}
