// The windows that the core follows, over a simulated shell: windows.js FOLDER, below which are the parts of the core.
// Exits with an error at the first wrong result.

const {GLib} = imports.gi;
const System = imports.system;

const read = file => new TextDecoder().decode(GLib.file_get_contents(GLib.build_filenamev([ARGV[0], 'shell-core', file]))[1]);

/** Has every function that is connected to, without effect. */
class Played {
    connect() { return 1; }
    disconnect() {}
}

class PlayedWindow extends Played {
    constructor(id) {
        super();
        this.id = id;
    }

    get_id() { return this.id; }
    get_window_type() { return Meta.WindowType.NORMAL; }
    get_transient_for() { return null; }
    is_override_redirect() { return false; }
    get_stable_sequence() { return this.id; }
    get_frame_rect() { return {x: 0, y: 0, width: 640, height: 480}; }
    is_fullscreen() { return false; }
}

const open = {metaWindow: new PlayedWindow(1), is_destroyed: () => false};
// Its picture is fading; the window counts as closed, and its events are ignored.
const closing = {metaWindow: new PlayedWindow(2), is_destroyed: () => true};
const global = {
    display: new Played(), window_manager: new Played(), get_window_actors: () => [open, closing],
};
const Main = {layoutManager: new Played()};
const Meta = {WindowType: {NORMAL: 0}};
const Windows = new Function('global', 'Main', 'Meta', `${read('protocol.js')}${read('windows.js')}; return Windows;`)(
    global, Main, Meta);

const followed = new Windows(() => {}).all().map(window => window.get_id());
if (JSON.stringify(followed) !== '[1]')
    throw new Error(`followed are ${JSON.stringify(followed)}, not the open window alone`);

System.exit(0);
