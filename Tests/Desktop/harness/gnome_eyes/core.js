// The tests' own eyes and hands in the shell: evaluates an expression and answers in JSON. It serves every version of the
// shell: the harness puts it into the form that this one reads, in place of @CORE@.

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
        const work = new Function('windows', 'one', 'rect', ...Object.keys(names), `return (${expression});`);
        return JSON.stringify(work(windows, one, rect, ...Object.values(names)) ?? null);
    }
}
