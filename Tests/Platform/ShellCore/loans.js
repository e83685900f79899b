// The keys that the core borrows, over a simulated shell: loans.js FOLDER KIND. Below the folder are the parts of the
// core; the kind of shell is gnome-shell or cinnamon. Exits with an error at the first wrong result.

imports.searchPath.unshift(imports.gi.GLib.path_get_dirname(imports.system.programInvocationName));
const {PlayedBus, PlayedShell, equal, coreFrom} = imports.playedShell;
const System = imports.system;

const [FOLDER, KIND] = ARGV;

const PROGRAM = ':1.7';
const [LEFT_KEY, RIGHT_KEY, UP_KEY, DOWN_KEY, C_KEY, D_KEY, PAGE_UP_KEY] = [0x71, 0x72, 0x6f, 0x74, 0x36, 0x28, 0x70];
const [LEFT, RIGHT, UP, DOWN, C, D] = [LEFT_KEY, RIGHT_KEY, UP_KEY, DOWN_KEY, C_KEY, D_KEY].map(key => `<Control><Alt>0x${key.toString(16)}`);
const [CONTROL_ALT, SUPER] = [12, 64];
const REPEATED = 4;

/** A shell that switches workspaces by the arrows, and shows the desktop by D; the program is connected. */
class Scene {
    constructor() {
        this.shell = new PlayedShell(KIND);
        this.shell.bind('switch-to-workspace-left', LEFT_KEY, CONTROL_ALT);
        this.shell.bind('switch-to-workspace-left', PAGE_UP_KEY, SUPER);
        this.shell.bind('switch-to-workspace-left', PAGE_UP_KEY, CONTROL_ALT);
        this.shell.bind('switch-to-workspace-right', RIGHT_KEY, CONTROL_ALT);
        this.shell.bind('show-desktop', D_KEY, CONTROL_ALT);
        this.shell.bind('show-desktop', D_KEY, SUPER);
        this.bus = new PlayedBus('org.corvid.Tessel.Windows');
        this.bus.processes.set(PROGRAM, 4242);
        const {BusObject} = coreFrom(FOLDER, this.shell, this.bus, ['BusObject']);
        this.busObject = new BusObject();
        this.busObject.enable();
        this.bus.give(PROGRAM);
        this.bus.call(PROGRAM, 'Hello');
        this.listeners = this.shell.listeners();
    }

    ask(...call) {
        const answer = this.bus.call(PROGRAM, ...call);
        return answer.error ?? answer.values;
    }

    /** The signals that the program got since the last call. */
    reported() {
        return this.bus.reported.splice(0).map(([, ...what]) => what).filter(([signal]) => signal !== 'Opened');
    }

    changeSettings(change) {
        change(this.shell.display);
        this.bus.settings.get(this.shell.schemas[0]).emit('changed');
        this.shell.catchUp();
    }

    isTheShells(what) {
        for (const [key, modifiers, wanted] of [
            [LEFT_KEY, CONTROL_ALT, 'of the shell'], [PAGE_UP_KEY, SUPER, 'of the shell'], [RIGHT_KEY, CONTROL_ALT, 'of the shell'],
            [D_KEY, CONTROL_ALT, 'of Mutter'], [D_KEY, SUPER, 'of Mutter']])
            equal(this.shell.press(key, modifiers), wanted, `${what}: key ${key} with ${modifiers}`);
        equal(this.reported(), [], `${what}: what the program is reported`);
        equal(this.shell.listeners(), this.listeners, `${what}: who listens to the shell`);
        equal([...this.bus.settings.values()].flatMap(each => each.handlers), [], `${what}: who listens to settings`);
    }
}

const remove = key => display => {
    display.bindings = display.bindings.filter(each => each.key !== key || each.modifiers !== CONTROL_ALT);
};

{
    const scene = new Scene();
    scene.shell.bind('switch-windows', UP_KEY, CONTROL_ALT);
    scene.shell.bind('of an extension', DOWN_KEY, CONTROL_ALT);
    scene.shell.display.bindings.at(-1).action = 2001;
    equal([LEFT, RIGHT, D, UP, DOWN, C].map(each => scene.ask('LoanObstacle', each)),
        [[''], [''], [''], ['own'], ['others'], ['others']], 'what is in the way of borrowing');
    equal(scene.ask('Grab', 1, LEFT), [false], 'a held key without consent');
    scene.isTheShells('without consent');
}
{
    const scene = new Scene();
    equal([LEFT, D, C].map((each, number) => scene.ask('Borrow', number, each)), [[true, true], [true, true], [true, false]],
        'keys with consent');
    equal(scene.shell.display.grabbed, [C], 'the keys that are grabbed');
    equal(scene.ask('Borrow', 7, LEFT), [false, false], 'a key that is borrowed already');
    const {handlers} = scene.shell;
    const former = handlers.get('switch-to-workspace-left');
    equal(scene.shell.press(LEFT_KEY, CONTROL_ALT), 'ours', 'a borrowed key');
    equal(scene.shell.press(LEFT_KEY, CONTROL_ALT, REPEATED), 'ours', 'a borrowed key that is held');
    equal(scene.reported(), [['Activated', 0]], 'signals for a borrowed key');
    equal(scene.shell.press(PAGE_UP_KEY, SUPER), 'of the shell', 'another key of the binding');
    equal(scene.shell.press(LEFT_KEY, CONTROL_ALT), 'ours', 'the borrowed key again');
    equal(scene.shell.press(PAGE_UP_KEY, CONTROL_ALT), 'of the shell', 'another key of the binding with the same modifiers');
    equal(scene.shell.press(RIGHT_KEY, CONTROL_ALT), 'of the shell', 'a key that was not asked for');
    equal(scene.shell.press(D_KEY, CONTROL_ALT), 'ours', 'a borrowed key of a binding of Mutter');
    equal(scene.shell.press(D_KEY, SUPER), 'of Mutter', 'another key of a binding of Mutter');
    equal(scene.reported(), [['Activated', 0], ['Activated', 1]], 'signals for all these');
    scene.shell.setOverview(true);
    equal(scene.shell.press(LEFT_KEY, CONTROL_ALT), 'of the shell', 'a borrowed key in the overview');
    scene.shell.setOverview(false);
    scene.shell.press(LEFT_KEY, CONTROL_ALT);
    scene.shell.press(D_KEY, CONTROL_ALT);
    scene.shell.catchUp();
    equal(handlers.get('show-desktop'), 'of Mutter', 'the handler of Mutter some time after the press');
    equal(handlers.get('switch-to-workspace-left')(), former(), 'the handler of the shell some time after the press');
    scene.reported();
    [0, 1, 2].forEach(number => scene.ask('Ungrab', number));
    scene.isTheShells('given back');
}
for (const end of [scene => scene.busObject.disable(), scene => scene.bus.give(null), scene => scene.bus.give(':1.66')]) {
    const scene = new Scene();
    scene.ask('Borrow', 1, LEFT);
    scene.ask('Borrow', 2, D);
    scene.ask('Borrow', 3, C);
    // The end comes before the press is over.
    scene.shell.press(D_KEY, CONTROL_ALT);
    end(scene);
    equal(scene.shell.handlers.get('show-desktop'), 'of Mutter', 'the handler when the end comes');
    equal(scene.shell.display.grabbed.filter(Boolean), [], 'the keys when the end comes');
    scene.reported();
    scene.listeners = 0;
    scene.isTheShells('the end has come');
}
{
    const scene = new Scene();
    scene.ask('Borrow', 1, LEFT);
    scene.ask('Borrow', 2, C);
    scene.changeSettings(remove(LEFT_KEY));
    equal(scene.reported(), [['KeyHeld', 1, false]], 'signals when a binding was removed');
    equal(scene.shell.display.grabbed.filter(Boolean).sort(), [C, LEFT], 'the keys when a binding was removed');
    scene.changeSettings(() => scene.shell.bind('show-desktop', LEFT_KEY, CONTROL_ALT));
    equal(scene.reported(), [['KeyHeld', 1, true]], 'signals when a binding was added');
    equal(scene.shell.press(LEFT_KEY, CONTROL_ALT), 'ours', 'the key of a binding that was added');
    scene.reported();
    scene.changeSettings(() => {
        remove(LEFT_KEY)(scene.shell.display);
        scene.shell.bind('switch-to-workspace-right', LEFT_KEY, CONTROL_ALT);
    });
    equal(scene.reported(), [], 'signals when another binding has the key');
    equal(scene.shell.press(LEFT_KEY, CONTROL_ALT), 'ours', 'the key that another binding has');
    scene.reported();
    remove(LEFT_KEY)(scene.shell.display);
    scene.shell.bind('switch-windows', LEFT_KEY, CONTROL_ALT);
    equal(scene.shell.press(LEFT_KEY, CONTROL_ALT), 'of the shell', 'the key that was lent, before that is looked at');
    scene.changeSettings(() => {});
    equal(scene.reported(), [['KeyLost', 1]], 'signals when the key is no longer lent');
    equal(scene.shell.press(LEFT_KEY, CONTROL_ALT), 'of the shell', 'the key that is not lent any more');
    equal(scene.ask('LoanObstacle', LEFT), ['own'], 'what is in the way of borrowing it');
    equal(scene.ask('Borrow', 1, LEFT), [false, false], 'whether it is borrowed');
}
{
    // A key that is grabbed while the shell reads a binding hides the binding from then on.
    const scene = new Scene();
    scene.ask('Borrow', 1, C);
    scene.bus.settings.get(scene.shell.schemas[1]).emit('changed');
    equal(scene.shell.display.grabbed.filter(Boolean), [], 'the keys until the shell has read its settings');
    scene.shell.bind('show-desktop', C_KEY, CONTROL_ALT);
    scene.shell.catchUp();
    equal(scene.reported(), [['KeyHeld', 1, true]], 'what is reported of a free key that the shell has a use for now');
    remove(C_KEY)(scene.shell.display);
    scene.shell.backend.emit('keymap-layout-group-changed');
    scene.shell.catchUp();
    equal(scene.reported(), [['KeyHeld', 1, false]], 'what is reported when another layout has its keys elsewhere');
    const grabs = scene.shell.display.grabbed.length;
    scene.shell.backend.emit('keymap-changed');
    equal(scene.shell.display.grabbed.filter(Boolean), [C], 'a free key when the layout changes');
    scene.shell.catchUp();
    equal([scene.reported(), scene.shell.display.grabbed.length], [[], grabs], 'a free key when the layout has changed');
    scene.bus.settings.get(scene.shell.schemas[1]).emit('changed');
    scene.busObject.disable();
    scene.shell.catchUp();
    equal(scene.shell.display.grabbed.filter(Boolean), [], 'the keys when the end comes while the shell reads');
}
System.exit(0);
