// The clients that the core serves, over a simulated bus and shell: busObject.js FOLDER KIND. Below the folder are the
// parts of the core; the kind of shell is gnome-shell or cinnamon. Exits with an error at the first wrong result.

imports.searchPath.unshift(imports.gi.GLib.path_get_dirname(imports.system.programInvocationName));
const {PlayedBus, PlayedShell, equal, coreFrom} = imports.playedShell;
const System = imports.system;

const [FOLDER, KIND] = ARGV;

const PROGRAM = ':1.7';
const STRANGER = ':1.66';
const LEFT = '<Control><Alt>0x71';
const PROCESS = 4242;

class Scene {
    constructor() {
        this.shell = new PlayedShell(KIND);
        this.window = this.shell.addWindow({frame: [10, 20, 300, 200]});
        this.bus = new PlayedBus('org.corvid.Tessel.Windows');
        this.bus.processes.set(PROGRAM, PROCESS).set(STRANGER, 13);
        const {BusObject} = coreFrom(FOLDER, this.shell, this.bus, ['BusObject']);
        this.busObject = new BusObject();
        this.busObject.enable();
    }

    /** The program is connected as usual. */
    static served() {
        const scene = new Scene();
        scene.bus.give(PROGRAM);
        scene.bus.call(PROGRAM, 'Hello');
        return scene;
    }

    /** Every call except the first, Hello. */
    askAll(sender) {
        const calls = [
            ['Frames'], ['Place', 1, 0, 0, 100, 100], ['Grab', 1, LEFT], ['Borrow', 1, LEFT], ['LoanObstacle', LEFT],
            ['Ungrab', 1], ['Pointer'], ['PlaceOwn', PROCESS, 'Title', 5, 6], ['Beep'],
            ['ShowItem', JSON.stringify({icon: '/icon.svg', title: 'Tessel', menu: []})], ['ItemFrame'], ['HideItem'],
        ];
        return calls.map(call => this.bus.call(sender, ...call).error ?? 'done');
    }

    isUntouched(what) {
        equal(this.window.frame, [10, 20, 300, 200], `${what}: where the window is`);
        equal(this.shell.display.grabbed.filter(Boolean), [], `${what}: the keys`);
        equal(this.shell.itemsShown(), 0, `${what}: the item`);
        equal(this.shell.listeners(), 0, `${what}: who listens to the shell`);
    }
}

// Cinnamon shows status items by itself.
const HAS_ITEM = KIND === 'gnome-shell';
const ALL_DONE = [...Array(9).fill('done'), ...HAS_ITEM ? ['done', 'done'] : ['NoItem', 'NoItem'], 'done'];

const denied = count => Array(count).fill('Denied');

const methods = new Scene().bus.interface.methods.map(method => method.name);
equal(methods.filter(name => typeof new Scene().busObject[`${name}Async`] !== 'function'), [], 'methods without a function');

{
    const scene = Scene.served();
    equal(scene.askAll(PROGRAM), ALL_DONE, 'the program is served');
    equal(scene.askAll(STRANGER), denied(12), 'a stranger beside the program');
    equal(scene.bus.call(STRANGER, 'Hello').error, 'Denied', 'a stranger that says Hello beside the program');
    equal(scene.bus.reported.filter(([to]) => to !== PROGRAM), [], 'signals to other clients');
}
{
    const scene = new Scene();
    equal(scene.askAll(STRANGER), denied(12), 'a stranger without a program');
    equal(scene.bus.call(STRANGER, 'Hello').error, 'Denied', 'a stranger that says Hello without a program');
    equal(scene.bus.reported, [], 'signals without a client');
    scene.isUntouched('nobody is there');
}
{
    const scene = new Scene();
    scene.bus.give(STRANGER);
    equal(scene.askAll(STRANGER), denied(12), 'the owner of the name before it has said Hello');
    scene.shell.display.emit('notify::focus-window');
    equal(scene.bus.reported.map(([to, signal]) => [to, signal]), [[STRANGER, 'Opened']],
        'signals to the owner of the name before its Hello');
    scene.isUntouched('nobody has said Hello');
}
{
    const scene = new Scene();
    scene.bus.give(PROGRAM, false);
    equal(scene.bus.call(PROGRAM, 'Hello').values.length, 1, 'an owner of the name that was not heard of yet');
    scene.bus.sendOwner();
    equal(scene.bus.call(PROGRAM, 'Grab', 1, LEFT).values, [true], 'the same, once it is heard of');
    equal(scene.bus.call(PROGRAM, 'Hello').values.length, 1, 'a second Hello');
    equal(scene.shell.display.grabbed, [LEFT], 'the keys after a second Hello');
}
{
    const scene = new Scene();
    scene.bus.give(STRANGER);
    scene.bus.held = [];
    const strangers = scene.bus.call(STRANGER, 'Hello');
    scene.bus.give(PROGRAM);
    scene.bus.answerHeld();
    equal(strangers.error, 'Denied', 'a Hello of somebody who has lost the name meanwhile');
    scene.isUntouched('only somebody who has lost the name has said Hello');
    const hellos = [scene.bus.call(PROGRAM, 'Hello'), scene.bus.call(PROGRAM, 'Hello')];
    scene.bus.answerHeld();
    equal(hellos.map(answer => answer.values?.length), [1, 1], 'two Hellos at once');
    const listeners = scene.shell.listeners();
    equal(listeners, Scene.served().shell.listeners(), 'who listens to the shell after two Hellos at once');
    scene.busObject.disable();
    scene.isUntouched('the extension is switched off after two Hellos at once');
}
for (const next of [null, STRANGER]) {
    const scene = Scene.served();
    scene.window.isStubborn = true;
    scene.bus.call(PROGRAM, 'Grab', 1, LEFT);
    scene.bus.call(PROGRAM, 'ShowItem', JSON.stringify({icon: '/icon.svg', title: 'Tessel', menu: []}));
    scene.bus.call(PROGRAM, 'PlaceOwn', PROCESS, 'Not there yet', 5, 6);
    const placed = scene.bus.call(PROGRAM, 'Place', 1, 0, 0, 100, 100);
    equal(placed, {}, 'a window that does not come to rest');
    scene.bus.give(next);
    equal(placed.error, 'NoSuchWindow', 'a placement that nobody waits for any more');
    scene.isUntouched('the name is gone');
    equal(scene.askAll(PROGRAM), denied(12), 'a program that has lost its name');
    equal(scene.askAll(STRANGER), denied(12), 'whoever has the name next, without Hello');
    equal(scene.bus.reported.at(next ? -2 : -1), [PROGRAM, 'Closed'], 'signals to the former owner');
    if (next) {
        equal(scene.bus.call(STRANGER, 'Hello').values.length, 1, 'the next owner says Hello');
        equal(scene.shell.display.grabbed.filter(Boolean), [], 'no key is handed on');
        equal(scene.shell.itemsShown(), 0, 'no item is handed on');
    }
}
{
    const scene = Scene.served();
    const combinations = [LEFT, '<Control><Alt>0x72', '<Control><Alt>0x6f', '<Control><Alt>0x74', '<Control><Alt>0x36',
        '<Control><Alt>0x28'];
    combinations.forEach((combination, number) =>
        equal(scene.bus.call(PROGRAM, 'Grab', number, combination).values, [true], combination));
    for (const other of ['<Control><Alt>0x26', '<Control>0x36', '<Super>0x71', 'Return', '0x26', '<Control><Alt>Left',
        '<Alt>Tab', '', '<Shift><Control><Alt>0x71', `${LEFT} `])
        equal(scene.bus.call(PROGRAM, 'Grab', 99, other).error, 'Denied', `the combination '${other}'`);
    equal(scene.shell.display.grabbed, combinations, 'the keys that are held');
}
{
    const scene = new Scene();
    const dock = scene.shell.addWindow({type: 2, frame: [0, 0, 800, 32]});
    scene.bus.give(PROGRAM);
    scene.bus.call(PROGRAM, 'Hello');
    equal(scene.bus.call(PROGRAM, 'Place', dock.id, 0, 0, 1, 1).error, 'NoSuchWindow', 'a panel is no window to place');
    equal(dock.frame, [0, 0, 800, 32], 'where the panel is');
    const own = scene.shell.addWindow({process: PROCESS});
    equal(scene.bus.call(PROGRAM, 'PlaceOwn', 1, 'Title', 5, 6).error, 'Denied', 'a window of another process');
    equal(scene.window.front, [], 'a window of another process is not put in front');
    equal(scene.bus.call(PROGRAM, 'PlaceOwn', PROCESS, 'Title', 5, 6).values, [], 'a window of its own');
    equal(own.front, ['above', 'sticky', 'active'], 'a window of its own is put in front');
    equal(own.frame, [5, 6, 640, 480], 'where it is');
    // In Cinnamon the late reply of its program to the shell's own choice moves it once.
    for (const wanted of [KIND === 'cinnamon' ? [5, 6, 640, 480] : [70, 80, 640, 480], [70, 80, 640, 480]]) {
        own.frame = [70, 80, 640, 480];
        own.emit('position-changed');
        equal(own.frame, wanted, 'where it is after a late reply, and then where a person has moved it');
    }
    scene.bus.call(PROGRAM, 'PlaceOwn', PROCESS, 'Title', 5, 6);
    scene.bus.give(null);
    equal(scene.shell.listeners(), 0, 'who listens when the program is gone while its window is kept');
}
{
    // The same for a window that has just been shown; one that was there before stays where it goes.
    const scene = Scene.served();
    const young = scene.shell.addWindow({frame: [0, 0, 300, 200]});
    young.get_client_type = () => 0;
    scene.shell.display.emit('window-created', young);
    young.emit('shown');
    for (const [window, isBack] of [[young, KIND === 'cinnamon'], [scene.window, false]]) {
        equal(scene.bus.call(PROGRAM, 'Place', window.id, 40, 50, 300, 200).values, [40, 50, 300, 200], 'a placement');
        window.frame = [0, 0, 300, 200];
        window.emit('position-changed');
        equal(window.frame.slice(0, 2), isBack ? [40, 50] : [0, 0], `after a late reply, window ${window.id}`);
    }
    scene.bus.call(PROGRAM, 'Place', young.id, 60, 70, 300, 200);
    scene.bus.give(null);
    equal(scene.shell.listeners(), 0, 'who listens when the program is gone while a window is kept');
}
{
    const scene = Scene.served();
    scene.bus.call(PROGRAM, 'Grab', 1, LEFT);
    scene.busObject.disable();
    scene.isUntouched('the extension is switched off');
    equal(scene.bus.object, null, 'the object of an extension that is switched off');
    scene.busObject.enable();
    equal(scene.bus.call(PROGRAM, 'Frames').error, 'Denied', 'after it is switched on again, without Hello');
    equal(scene.bus.call(PROGRAM, 'Hello').values.length, 1, 'after it is switched on again');
}
System.exit(0);
