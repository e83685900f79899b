// Where the shell's own bindings are: their settings go by the names of its actions.
const BINDING_SCHEMAS = [
    'org.gnome.desktop.wm.keybindings', 'org.gnome.shell.keybindings', 'org.gnome.mutter.keybindings',
    'org.gnome.mutter.wayland.keybindings',
];

/** The setting of one of the shell's own actions: WORKSPACE_LEFT is "switch-to-workspace-left". */
function bindingOf(action) {
    const name = Object.keys(Meta.KeyBindingAction).find(each => Meta.KeyBindingAction[each] === action) ?? '';
    return name.toLowerCase().replaceAll('_', '-').replace(/^workspace-/, 'switch-to-workspace-');
}

/** The summary of a binding in the shell's settings, in the user's language; empty where they do not have it. */
function summaryOf(binding) {
    for (const id of BINDING_SCHEMAS) {
        const schema = Gio.SettingsSchemaSource.get_default().lookup(id, true);
        if (binding && schema?.has_key(binding))
            return schema.get_key(binding).get_summary() ?? '';
    }
    return '';
}

/**
 * The holders of combinations of keys, each a number of XKB's and a mask of X's: nothing for those that the shell has
 * no use for; names without letters for those that it keeps for somebody else. The bindings in force count, whatever
 * settings say. A shell that cannot be asked has said of all that it keeps them for others.
 */
function holdersOf(combinations) {
    return combinations.map(([key, modifiers]) => {
        const action = global.display.get_keybinding_action?.(key, modifiers);
        if (action === Meta.KeyBindingAction.NONE)
            return null;
        const binding = bindingOf(action);
        const summary = summaryOf(binding);
        return {binding: summary ? binding : '', summary};
    });
}
