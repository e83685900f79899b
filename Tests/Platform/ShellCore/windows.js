// The windows that the core follows, and who gets the result of a placement, over a simulated shell: windows.js FOLDER,
// below which are the parts of the core. Exits with an error at the first wrong result.

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
        this.frame = [0, 0, 640, 480];
    }

    get_id() { return this.id; }
    get_window_type() { return Meta.WindowType.NORMAL; }
    get_transient_for() { return null; }
    is_override_redirect() { return false; }
    get_stable_sequence() { return this.id; }
    get_frame_rect() {
        const [x, y, width, height] = this.frame;
        return {x, y, width, height};
    }
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
const host = {returnsToFirstPlace: false};
/** A placement that settles when the test says so. */
class Placement {
    constructor(_window, wanted, settled) {
        Object.assign(this, {wanted, settled, repetitions: 0, isCancelled: false});
        placements.push(this);
    }

    waitsFor(wanted) { return JSON.stringify(wanted) === JSON.stringify(this.wanted); }
    repeat() { this.repetitions++; }
    cancel() { this.isCancelled = true; }
}
const placements = [];
const Windows = new Function('global', 'Main', 'Meta', 'host', 'Placement',
    `${read('protocol.js')}${read('windows.js')}; return Windows;`)(global, Main, Meta, host, Placement);

function expect(actual, wanted, what) {
    if (JSON.stringify(actual) !== JSON.stringify(wanted))
        throw new Error(`${what}: ${JSON.stringify(actual)}, not ${JSON.stringify(wanted)}`);
}

const windows = new Windows(() => {});
expect(windows.all().map(window => window.get_id()), [1], 'the open window alone is followed');

const answers = [];
const place = (name, wanted) => windows.place(1, wanted, frame => answers.push([name, frame]));
const half = [0, 0, 800, 900];
place('first', half);
place('again', half);
expect(answers, [['first', null]], 'the former caller of the same frame gets nothing');
expect([placements.length, placements[0].repetitions], [1, 1], 'the same frame is requested again, and waited for once');
place('other', [800, 0, 800, 900]);
expect(answers.slice(1), [['again', null]], 'the caller of another frame replaces the one that waits');
expect([placements.length, placements[0].isCancelled], [2, true], 'another frame is another placement');
placements[1].settled();
expect(answers.slice(2), [['other', open.metaWindow.frame]], 'the caller that waits gets the frame');
place('later', [800, 0, 800, 900]);
expect(placements.length, 3, 'a frame that was settled is placed anew');

System.exit(0);
