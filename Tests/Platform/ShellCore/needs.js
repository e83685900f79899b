// The core in a shell that lacks a function, over a simulated shell: needs.js FOLDER KIND. Below the folder are the parts
// of the core; the kind of shell is gnome-shell or cinnamon. Exits with an error at the first wrong result.

imports.searchPath.unshift(imports.gi.GLib.path_get_dirname(imports.system.programInvocationName));
const {PlayedBus, PlayedShell, equal, coreFrom, coreSource} = imports.playedShell;
const System = imports.system;

const [FOLDER, KIND] = ARGV;

const PROGRAM = ':1.7';

/** Enables the core in the shell. Returns the bus, to which the program has connected. */
function switchedOn(shell) {
    const bus = new PlayedBus('org.corvid.Tessel.Windows');
    bus.processes.set(PROGRAM, 4242);
    const {BusObject} = coreFrom(FOLDER, shell, bus, ['BusObject']);
    bus.busObject = new BusObject();
    bus.busObject.enable();
    bus.give(PROGRAM);
    return bus;
}

const {NEEDED, NEEDED_SIGNALS, NEEDED_TO_BORROW, NEEDED_SIGNALS_TO_BORROW, host} = coreFrom(
    FOLDER, new PlayedShell(KIND), new PlayedBus('x'),
    ['NEEDED', 'NEEDED_SIGNALS', 'NEEDED_TO_BORROW', 'NEEDED_SIGNALS_TO_BORROW', 'host']);
const choicesIn = list => list.flatMap(([owner, names]) => names.split(' ').map(choice =>
    choice.split('|').map(name => owner ? `${owner}.${name}` : name)));
const needed = choicesIn([...NEEDED, ...host.needed]);
const neededToBorrow = choicesIn([...NEEDED_TO_BORROW, ...host.neededToBorrow]);

{
    const shell = new PlayedShell(KIND);
    shell.addWindow({});
    const bus = switchedOn(shell);
    equal(bus.log, [], 'what is logged where nothing is missing');
    equal(JSON.parse(bus.call(PROGRAM, 'Hello').values[0]).windows.length, 1, 'a shell that has everything is served');
}
for (const choice of needed) {
    const shell = new PlayedShell(KIND);
    shell.addWindow({});
    choice.forEach(path => shell.lose(path));
    const bus = switchedOn(shell);
    const name = choice.join(' or ').replaceAll('.prototype', '');
    const answer = bus.call(PROGRAM, 'Hello');
    equal([answer.error, answer.message], ['Unusable', name], `a shell without ${name}`);
    equal(bus.log.map(line => line.includes(name)), [true], `what is logged without ${name}`);
    equal(bus.call(PROGRAM, 'Frames').error, 'Denied', `a further call without ${name}`);
    equal(shell.listeners(), 0, `who listens to a shell without ${name}`);
    bus.busObject.disable();
}
for (const [type, names] of [...NEEDED_SIGNALS, ...host.neededSignals]) {
    for (const name of names.split(' ')) {
        const shell = new PlayedShell(KIND);
        for (const list of shell.signals.values())
            list.splice(0, list.length, ...list.filter(each => each !== name));
        const answer = switchedOn(shell).call(PROGRAM, 'Hello');
        equal([answer.error, answer.message], ['Unusable', `${type}::${name}`], `a shell without the signal ${name}`);
    }
}
{
    const shell = new PlayedShell(KIND);
    shell.lose('Meta.WindowType.DIALOG');
    shell.lose('Meta.KeyBindingFlags');
    equal(switchedOn(shell).call(PROGRAM, 'Hello').message,
        'Meta.KeyBindingFlags.IGNORE_AUTOREPEAT, Meta.WindowType.DIALOG', 'all that is missing is named');
}

// A shell that lacks a function for borrowing lends nothing. Everything else works.
const [LEFT, RIGHT] = ['<Control><Alt>0x71', '<Control><Alt>0x72'];
function lendsNothing(shell, what) {
    shell.bind('switch-to-workspace-left', 0x71, 12);
    const bus = switchedOn(shell);
    equal(typeof bus.call(PROGRAM, 'Hello').values, 'object', `a shell without ${what} is served`);
    const listeners = shell.listeners();
    equal(bus.call(PROGRAM, 'LoanObstacle', LEFT).values, ['shell'], `what is in the way of borrowing without ${what}`);
    equal(bus.call(PROGRAM, 'Borrow', 1, LEFT).values, [false, false], `what is borrowed without ${what}`);
    equal(bus.call(PROGRAM, 'Borrow', 2, RIGHT).values, [true, false], `a free key without ${what}`);
    equal(shell.listeners(), listeners, `who listens for loans without ${what}`);
    equal(bus.log, [], `what is logged without ${what}`);
    bus.busObject.disable();
}
for (const [path] of neededToBorrow) {
    const shell = new PlayedShell(KIND);
    shell.lose(path);
    lendsNothing(shell, path);
}
for (const [type, names] of NEEDED_SIGNALS_TO_BORROW) {
    for (const name of names.split(' ')) {
        const shell = new PlayedShell(KIND);
        for (const list of shell.signals.values())
            list.splice(0, list.length, ...list.filter(each => each !== name));
        lendsNothing(shell, `${type}::${name}`);
    }
}

// The core checks every member of the shell that its parts use.
const asked = [...needed, ...neededToBorrow].flat();
const isAsked = path => asked.some(each => each === path || each.startsWith(`${path}.`));
const lastNames = new Set(asked.map(path => path.split('.').pop()));
// GNOME 49 has it, and the core does not need it before.
lastNames.add('hide_from_window_list');
const unasked = [];
for (const [part, text] of coreSource(FOLDER, KIND)) {
    if (part.endsWith('/needs'))
        continue;
    const code = text.replace(/\/\/.*$/mg, '').replace(/\/\*[^]*?\*\//g, '');
    for (const [path] of code.matchAll(/\b(?:Clutter|Main|Meta|PanelMenu|PopupMenu|Shell|St|global)(?:\??\.\w+)+/g)) {
        const plain = path.replaceAll('?', '');
        // A constructor that is called by name needs only its name; a member is checked under its type.
        if (!isAsked(plain) && !asked.some(each => plain.startsWith(`${each}.`)))
            unasked.push(`${part}: ${plain}`);
    }
    for (const [, name] of code.matchAll(/\b(?:window|metaWindow|display|actor|workspace|_button|_menu|event)\??\.(\w+)\??\.?\(/g)) {
        if (!lastNames.has(name) && !['connect', 'disconnect', 'destroy', 'filter'].includes(name))
            unasked.push(`${part}: .${name}()`);
    }
}
equal(unasked, [], 'what is used of the shell and not asked for');
System.exit(0);
