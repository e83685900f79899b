// Placement of a window by the core, over a simulated window: placement.js FOLDER, below which are the parts of the
// core. Exits with an error at the first wrong result.

const {GLib} = imports.gi;
const System = imports.system;

const read = file => new TextDecoder().decode(GLib.file_get_contents(GLib.build_filenamev([ARGV[0], 'shell-core', file]))[1]);

const Meta = {WindowClientType: {WAYLAND: 0, X11: 1}, MaximizeFlags: {BOTH: 3}};
// The intervals, in milliseconds, for which the core has waited.
const waits = [];
const recording = {
    PRIORITY_DEFAULT: GLib.PRIORITY_DEFAULT,
    SOURCE_REMOVE: GLib.SOURCE_REMOVE,
    source_remove: source => GLib.source_remove(source),
    timeout_add(priority, milliseconds, work) {
        waits.push(milliseconds);
        return GLib.timeout_add(priority, milliseconds, work);
    },
};
const Placement = new Function('Meta', 'GLib', `${read('protocol.js')}${read('placement.js')}; return Placement;`)(
    Meta, recording);

/**
 * A window as the shell sees it: `rounded` and `held` are its immediate effects, its program's reaction comes later.
 */
class PlayedWindow {
    /**
     * `restored`: the frame that the window gets at once when it is released; without it, it keeps the frame of its
     * tile.
     */
    constructor({type, rounded = size => size, held = null, frame = [0, 0, 640, 480], isTiled = false, restored = null}) {
        Object.assign(this, {type, rounded, held, frame, isTiled: isTiled || restored !== null, restored, asked: [],
            listeners: new Map()});
    }

    get_client_type() { return this.type; }
    get_maximized() { return this.isTiled ? Meta.MaximizeFlags.BOTH : 0; }
    unmaximize() {
        this.isTiled = false;
        if (this.restored)
            this.becomes(this.restored);
    }
    allows_resize() { return true; }
    connect(signal, handler) {
        this.listeners.set(signal, handler);
        return signal;
    }
    disconnect(signal) { this.listeners.delete(signal); }
    get_frame_rect() {
        const [x, y, width, height] = this.frame;
        return {x, y, width, height};
    }
    move_frame(_isUsers, x, y) {
        this.becomes([...this.held ?? [x, y], ...this.frame.slice(2)]);
    }
    move_resize_frame(_isUsers, x, y, width, height) {
        this.asked.push([x, y, width, height]);
        const isOwnSize = String([width, height]) === String(this.frame.slice(2));
        if (this.type === Meta.WindowClientType.X11 || isOwnSize)
            this.becomes([...this.held ?? [x, y], ...this.rounded([width, height])]);
    }
    becomes(frame) {
        const isMoved = String(frame.slice(0, 2)) !== String(this.frame.slice(0, 2));
        const isSized = String(frame.slice(2)) !== String(this.frame.slice(2));
        this.frame = frame;
        if (isMoved)
            this.listeners.get('position-changed')?.();
        if (isSized)
            this.listeners.get('size-changed')?.();
    }
}

function expect(actual, wanted, what) {
    if (JSON.stringify(actual) !== JSON.stringify(wanted))
        throw new Error(`${what}: ${JSON.stringify(actual)}, not ${JSON.stringify(wanted)}`);
}

function place(window, wanted) {
    const frames = [];
    new Placement(window, wanted, () => frames.push(window.frame));
    return frames;
}

function until(condition) {
    let isLate = false;
    const deadline = GLib.timeout_add(GLib.PRIORITY_DEFAULT, 10000, () => {
        isLate = true;
        return GLib.SOURCE_CONTINUE;
    });
    while (!condition() && !isLate)
        GLib.MainContext.default().iteration(true);
    GLib.source_remove(deadline);
}

const X11 = Meta.WindowClientType.X11;
const wanted = [100, 50, 805, 607];
const inSteps = size => size.map(length => length - length % 10);

const exact = new PlayedWindow({type: X11});
expect(place(exact, wanted), [wanted], 'a window that takes what it is given is settled at once, and once');

const rounding = new PlayedWindow({type: X11, rounded: inSteps});
expect(place(rounding, wanted), [[100, 50, 800, 600]], 'a window with steps is settled at once, at its place');
expect(rounding.asked, [wanted], 'what a window with steps is asked for');

const held = new PlayedWindow({type: X11, held: [7, 9]});
const heldFrames = place(held, wanted);
expect(heldFrames, [], 'a window that the shell holds elsewhere has time to come');
until(() => heldFrames.length > 0);
expect(heldFrames, [[7, 9, 805, 607]], 'a window that the shell holds elsewhere is settled there');

const wayland = new PlayedWindow({type: Meta.WindowClientType.WAYLAND});
const waylandFrames = place(wayland, wanted);
expect(waylandFrames, [], 'a program of Wayland has yet to answer');
wayland.becomes(wanted);
expect(waylandFrames, [wanted], 'a program of Wayland has answered');
expect(wayland.listeners.size, 0, 'nobody listens to a window that is settled');

// The program waits for a placement that long.
const PATIENCE = 250;
const refusing = new PlayedWindow({type: Meta.WindowClientType.WAYLAND});
const refusingFrames = place(refusing, wanted);
expect(waits.at(-1) > PATIENCE, true, 'a program that has not answered is waited for');
const refused = [100, 50, 900, 607];
refusing.becomes(refused);
until(() => refusingFrames.length > 0);
expect(refusingFrames, [refused], 'a program of Wayland has taken another size');
const repeatedFrames = place(refusing, wanted);
expect(waits.at(-1) < PATIENCE, true, 'a size that was refused before may be refused without a signal');
until(() => repeatedFrames.length > 0);
expect(repeatedFrames, [refused], 'a window that refuses the same size again is settled as it is');
place(refusing, [300, 80, ...refused.slice(2)]);
place(refusing, wanted);
expect(waits.at(-1) < PATIENCE, true, 'a refused size is remembered while the window only moves');
place(refusing, [100, 50, 700, 607]);
expect(waits.at(-1) > PATIENCE, true, 'another size may be taken');
place(refusing, wanted);
refusing.becomes(wanted);
refusing.becomes(refused);
place(refusing, wanted);
expect(waits.at(-1) > PATIENCE, true, 'a size that was taken since is not taken for refused');

const drawing = new PlayedWindow({type: Meta.WindowClientType.WAYLAND});
const drawingFrames = place(drawing, wanted);
const undrawn = [...wanted.slice(0, 2), 640, 480];
drawing.becomes(undrawn);
expect(waits.at(-1) > PATIENCE, true, 'a program that has acknowledged has time to draw its size');
drawing.becomes(wanted);
expect(drawingFrames, [wanted], 'a program that draws its size late is settled with it');

const keeping = new PlayedWindow({type: Meta.WindowClientType.WAYLAND});
const keepingFrames = place(keeping, wanted);
keeping.becomes(undrawn);
until(() => keepingFrames.length > 0);
expect(keepingFrames, [undrawn], 'a program that keeps its size is settled with that');
const keptFrames = place(keeping, wanted);
expect(waits.at(-1) < PATIENCE, true, 'a program that has kept its size may do so again');
until(() => keptFrames.length > 0);
expect(keptFrames, [undrawn], 'a program that keeps its size again is settled with that');

const moved = new PlayedWindow({type: Meta.WindowClientType.WAYLAND, frame: [0, 0, ...wanted.slice(2)], held: [7, 9]});
const movedFrames = [];
const pending = new Placement(moved, wanted, () => movedFrames.push(moved.frame));
expect([pending.waitsFor(wanted), pending.waitsFor(undrawn)], [true, false], 'which frame is waited for');
moved.held = null;
pending.repeat();
expect(moved.asked, [wanted, wanted], 'what a window is asked for that was moved meanwhile');
expect(movedFrames, [wanted], 'a window that was moved meanwhile is settled where it belongs, once');

for (const type of Object.values(Meta.WindowClientType)) {
    const maximized = new PlayedWindow({type, restored: wanted});
    expect(place(maximized, wanted), [wanted], 'a window that is released to where it is to be is settled once');
    expect(maximized.listeners.size, 0, 'nobody listens to a window that was released to where it is to be');
}

const tile = [0, 0, ...wanted.slice(2)];
const slow = new PlayedWindow({type: Meta.WindowClientType.WAYLAND, frame: tile, isTiled: true});
const slowFrames = place(slow, wanted);
until(() => slow.asked.length === 1);
expect(slow.frame, wanted, 'a tiled window that is slow to leave its size is put where it belongs with it');
slow.becomes([30, 40, 640, 480]);
expect(slow.asked, [wanted, wanted], 'what a window is asked for that leaves its size late');
slow.becomes(wanted);
expect(slowFrames, [wanted], 'a window that leaves its size late is settled where it belongs');

const lasting = new PlayedWindow({type: Meta.WindowClientType.WAYLAND, frame: tile, isTiled: true});
const lastingFrames = place(lasting, wanted);
until(() => lastingFrames.length > 0);
expect(lastingFrames, [wanted], 'a window that has the same size without its tile is settled');
expect(lasting.asked, [wanted], 'what a window is asked for that keeps its size');

System.exit(0);
