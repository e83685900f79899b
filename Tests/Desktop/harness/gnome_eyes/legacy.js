// For GNOME Shell 43 and 44, whose extensions are no modules.
/* exported init */

const {Clutter, Gio, GLib, Meta, Shell, St} = imports.gi;
const Main = imports.ui.main;

@CORE@
function init() {
    return new Eyes();
}
