// Every member of both shells that the core uses: its path, and the names. Of names with a bar between them one is
// enough, because versions of the shells differ there. `host` names those that only its own shell has.
const NEEDED = [
    ['global', 'get_pointer get_window_actors'],
    ['global.display', 'focus_window get_monitor_geometry get_n_monitors get_primary_monitor ' +
        'get_sound_player grab_accelerator ungrab_accelerator'],
    ['global', 'window_manager'],
    ['global.workspace_manager', 'get_active_workspace'],
    ['Main', 'activateWindow'],
    ['Meta', 'KeyBindingAction.NONE KeyBindingFlags.IGNORE_AUTOREPEAT LaterType.BEFORE_REDRAW MaximizeFlags.BOTH ' +
        'WindowClientType.X11'],
    ['Meta.SoundPlayer.prototype', 'play_from_theme'],
    ['Meta.WindowType', 'NORMAL DIALOG MODAL_DIALOG UTILITY SPLASHSCREEN'],
    ['Meta.Window.prototype', 'allows_resize get_client_type get_compositor_private get_frame_rect ' +
        'get_gtk_application_id get_id get_sandboxed_app_id get_stable_sequence get_title get_transient_for ' +
        'get_window_type get_wm_class get_wm_class_instance is_fullscreen is_hidden is_override_redirect ' +
        'is_skip_taskbar located_on_workspace make_above move_frame move_resize_frame stick ' +
        'get_maximize_flags|get_maximized set_unmaximize_flags|unmaximize'],
    ['Meta.WindowActor.prototype', 'is_destroyed metaWindow visible'],
    ['Meta.Workspace.prototype', 'get_work_area_for_monitor'],
];
const NEEDED_SIGNALS = [
    ['Meta.Display', 'accelerator-activated window-created workareas-changed'],
    ['Meta.Window', 'position-changed shown size-changed unmanaged workspace-changed'],
    ['Shell.WM', 'map'],
];

// Functions that borrowing the shell's own keys needs in addition. A shell that lacks one lends no key; the rest works.
const NEEDED_TO_BORROW = [
    ['Clutter', 'get_current_event EventFlags.FLAG_REPEATED Event.prototype.get_flags Event.prototype.get_key_code'],
    ['global', 'display.get_keybinding_action'],
    ['Main', 'wm._showWorkspaceSwitcher'],
    ['Meta', 'keybindings_set_custom_handler KeyBinding.prototype.get_mask KeyBinding.prototype.get_name'],
];
const NEEDED_SIGNALS_TO_BORROW = [
    ['Meta.Backend', 'keymap-changed keymap-layout-group-changed'],
    ['Shell.WM', 'filter-keybinding'],
];

const missingOfTheShell = () =>
    missingOf([...NEEDED, ...host.needed], [...NEEDED_SIGNALS, ...host.neededSignals]);
const missingToBorrow = () =>
    missingOf([...NEEDED_TO_BORROW, ...host.neededToBorrow], NEEDED_SIGNALS_TO_BORROW);

/** The names of needed members that the shell lacks; none in the versions that the core was tested on. */
function missingOf(needed, neededSignals) {
    const roots = {...host.modules(), Clutter, Main, Meta, global};
    const find = path => path.split('.').reduce((owner, name) => owner?.[name], roots);
    // The getter of a property would fail on a prototype, so this checks for it without a call.
    const has = path => {
        const end = path.lastIndexOf('.');
        const owner = find(path.slice(0, end));
        return owner !== undefined && owner !== null && path.slice(end + 1) in Object(owner);
    };
    const each = list => list.flatMap(([owner, names]) =>
        names.split(' ').map(name => name.split('|').map(one => owner ? `${owner}.${one}` : one)));
    const emits = (type, signal) => Boolean(type) && GObject.signal_lookup(signal, type.$gtype) !== 0;
    const functions = each(needed).filter(choice => !choice.some(has)).map(choice => choice.join(' or '));
    const signals = neededSignals.flatMap(([owner, names]) => names.split(' ')
        .filter(signal => !emits(find(owner), signal)).map(signal => `${owner}::${signal}`));
    return [...functions, ...signals].map(name => name.replaceAll('.prototype', ''));
}
