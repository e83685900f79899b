/** The setting of one of the shell's own actions: WORKSPACE_LEFT is "switch-to-workspace-left". */
function bindingOf(action) {
    const name = Object.keys(Meta.KeyBindingAction).find(each => Meta.KeyBindingAction[each] === action) ?? '';
    return name.toLowerCase().replaceAll('_', '-').replace(/^workspace-/, 'switch-to-workspace-');
}

/** The summary of a binding in the user's language, and its keys, from the shell's settings; empty without it. */
function settingOf(binding) {
    for (const id of host.bindingSchemas) {
        const schema = Gio.SettingsSchemaSource.get_default().lookup(id, true);
        if (binding && schema?.has_key(binding)) {
            const value = new Gio.Settings({schema_id: id}).get_value(binding);
            return {
                summary: schema.get_key(binding).get_summary() ?? '',
                keys: value.get_type_string() === 'as' ? value.deepUnpack() : [],
            };
        }
    }
    return {summary: '', keys: []};
}

/**
 * The holders of combinations of keys, each an XKB key code and a mask of X's: nothing for those that the shell does
 * not use; names without letters for those that it keeps for other programs. The bindings in force count, not the
 * settings. A shell that offers no such query is taken to keep all keys for others.
 */
function holdersOf(combinations) {
    return combinations.map(([key, modifiers]) => {
        const action = global.display.get_keybinding_action?.(key, modifiers);
        if (action === Meta.KeyBindingAction.NONE)
            return null;
        const binding = bindingOf(action);
        const {summary, keys} = settingOf(binding);
        return {binding: summary ? binding : '', summary, keys};
    });
}
