// The code that Cinnamon evaluates, over a simulated Cinnamon and bus: core.js FILE. Exits with an error at the first
// wrong result.

const {GLib} = imports.gi;
imports.searchPath.unshift(GLib.build_filenamev(
    [GLib.path_get_dirname(imports.system.programInvocationName), '..', 'ShellCore']));
const {PlayedBus, PlayedShell, equal} = imports.playedShell;
const System = imports.system;

const PROGRAM = ':1.7';
const BUS_NAME = 'org.corvid.Tessel.Windows';
const SOURCE = new TextDecoder().decode(GLib.file_get_contents(ARGV[0])[1]);
if (/@\w+@/.test(SOURCE))
    throw new Error('the code has a place that was not filled');

/** A bus that also knows whether the program is connected, whatever names it has. */
class Scene {
    constructor() {
        this.shell = new PlayedShell('cinnamon');
        this.bus = new PlayedBus(BUS_NAME);
        this.bus.processes.set(PROGRAM, 4242);
        this.unwatched = [];
        const {Gio} = this.bus;
        const watchName = Gio.bus_watch_name_on_connection;
        Gio.bus_watch_name_on_connection = (bus, name, flags, appeared, vanished) => {
            if (name === BUS_NAME)
                return watchName(bus, name, flags, appeared, vanished);
            equal(name, PROGRAM, 'the name that the life of the code depends on');
            this.programVanishes = vanished;
            return 'program';
        };
        Gio.bus_unwatch_name = watch => this.unwatched.push(watch);
    }

    evaluate() {
        const {modules} = this.shell;
        const gi = {
            Clutter: modules.Clutter, Cinnamon: modules.Shell, Gio: this.bus.Gio, GLib, GObject: this.shell.GObject,
            Meta: modules.Meta,
        };
        const imported = {gi, ui: {main: modules.Main}};
        const names = {imports: imported, global: modules.global, console: {warn: text => this.bus.log.push(text)}};
        return new Function(...Object.keys(names), 'program', SOURCE)(...Object.values(names), PROGRAM);
    }
}

{
    const scene = new Scene();
    scene.shell.addWindow({process: 42, frame: [10, 20, 300, 200]});
    scene.bus.give(PROGRAM);
    equal(scene.evaluate(), '', 'the result in a Cinnamon that has everything');
    equal(scene.bus.reported.map(([to, signal]) => [to, signal]), [[PROGRAM, 'Opened']], 'signals to the program');
    const hello = JSON.parse(scene.bus.call(PROGRAM, 'Hello').values[0]);
    equal(hello.windows.map(each => [each.pid, each.frame]), [[42, [10, 20, 300, 200]]], 'the windows');
    scene.programVanishes();
    equal(scene.bus.object, null, 'the object when the program is gone');
    equal(scene.shell.listeners(), 0, 'who listens to Cinnamon when the program is gone');
    equal(scene.unwatched.length, 2, 'the names that are no longer watched');
}
{
    // A program that was killed, and started again before Cinnamon knows of its end.
    const scene = new Scene();
    scene.bus.give(PROGRAM);
    scene.evaluate();
    const former = scene.bus.object;
    const listeners = scene.shell.listeners();
    const ends = scene.programVanishes;
    equal(scene.evaluate(), 'Error: an object is exported already', 'the result beside the code of the former run');
    equal([scene.bus.object === former, scene.shell.listeners()], [true, listeners], 'what that has left behind');
    ends();
    equal(scene.evaluate(), '', 'the result after the end of the former run');
    equal(scene.bus.call(PROGRAM, 'Hello').error, undefined, 'the reply of the code of the new run');
}
{
    const scene = new Scene();
    scene.bus.Gio.DBusExportedObject.wrapJSObject = () => ({export() { throw new Error('there is one already'); }});
    equal(scene.evaluate(), 'Error: there is one already', 'the result where it cannot work');
    equal(scene.programVanishes, undefined, 'whether it waits for the end of the program');
}
{
    const scene = new Scene();
    scene.shell.lose('Main.activateWindow');
    scene.bus.give(PROGRAM);
    equal(scene.evaluate(), '', 'the result in a Cinnamon that lacks a function');
    equal(scene.bus.call(PROGRAM, 'Hello').message, 'Main.activateWindow', 'what the program is reported of it');
    equal(scene.bus.log, ['Tessel does nothing in this Cinnamon, which lacks Main.activateWindow'], 'what is logged');
}
System.exit(0);
