// The tests' own access to the shell: evaluates an expression and replies in JSON. It works in every version of the
// shell: the harness inserts it at @CORE@ in the form that this version loads.

const INTERFACE = `<node><interface name="org.example.Eyes">
    <method name="Evaluate"><arg type="s" direction="in"/><arg type="s" direction="out"/></method>
</interface></node>`;

class Eyes {
    enable() {
        this._object = Gio.DBusExportedObject.wrapJSObject(INTERFACE, this);
        this._object.export(Gio.DBus.session, '/org/example/Eyes');
        this._name = Gio.bus_own_name_on_connection(
            Gio.DBus.session, 'org.example.Eyes', Gio.BusNameOwnerFlags.NONE, null, null);
    }

    disable() {
        Gio.bus_unown_name(this._name);
        this._object.unexport();
    }

    Evaluate(expression) {
        const names = {Clutter, GLib, Meta, Shell, St, Main, Gio};
        const windows = () => global.get_window_actors().map(actor => actor.meta_window);
        const one = id => windows().find(window => window.get_id() === id);
        const rect = r => [r.x, r.y, r.width, r.height];
        // The first function of each pair is that of GNOME 49 and later, which lack the second.
        const isMaximized = window => (window.get_maximize_flags?.() ?? window.get_maximized()) !== 0;
        const maximize = (window, flags) => window.set_maximize_flags
            ? window.set_maximize_flags(flags) : window.maximize(flags);
        const known = {windows, one, rect, isMaximized, maximize, ...names};
        const work = new Function(...Object.keys(known), `return (${expression});`);
        return JSON.stringify(work(...Object.values(known)) ?? null);
    }
}
