// Parses a form of the extension as the shell does, without running it: readable.js FOLDER. Fails if the script is no
// valid script, uses an undefined name, or if the description lacks a field that the shell requires.

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
// Reading it has no effect, so it can be called; the shell's modules are missing, and not used.
const stubs = names.map(name => name === 'Extension' ? class {} : null);
const busObject = isModule
    ? new Function(...names, `${script}; return new TesselExtension();`)(...stubs)
    : new Function('imports', `${script}; return init();`)({gi: {}, ui: {}});
for (const method of ['enable', 'disable']) {
    if (typeof busObject[method] !== 'function')
        throw new Error(`the extension has no ${method}()`);
}
System.exit(0);
