// Reads a form of the extension as the shell does, without running it: readable.js FOLDER. Fails where the script is no
// script, uses a name that nobody gives it, or where the description lacks what the shell asks for.

const {GLib} = imports.gi;
const System = imports.system;

const read = file => new TextDecoder().decode(GLib.file_get_contents(GLib.build_filenamev([ARGV[0], file]))[1]);

const metadata = JSON.parse(read('metadata.json'));
for (const key of ['uuid', 'name', 'description', 'shell-version']) {
    if (!metadata[key]?.length)
        throw new Error(`metadata.json lacks ${key}`);
}
if (!metadata['shell-version'].every(version => /^\d+$/.test(version)))
    throw new Error('metadata.json names a version of the shell that is none');

const source = read('extension.js');
if (/@\w+@/.test(source))
    throw new Error('extension.js has a place that was not filled');
const isModule = /^export default /m.test(source);
const script = source.replace(/^import .*;$/mg, '').replace(/^export default /m, '');
const names = [...source.matchAll(/^import (?:\* as )?\{?(\w+)\}?/mg)].map(match => match[1]);
// Nothing is done by reading it, so it can be called; what it builds on is not there, and not touched.
const stubs = names.map(name => name === 'Extension' ? class {} : null);
const door = isModule
    ? new Function(...names, `${script}; return new TesselExtension();`)(...stubs)
    : new Function('imports', `${script}; return init();`)({gi: {}, ui: {}});
for (const method of ['enable', 'disable']) {
    if (typeof door[method] !== 'function')
        throw new Error(`the extension has no ${method}()`);
}
System.exit(0);
