/** The differences of GNOME Shell. */
const host = {
    title: 'The extension Tessel does nothing: this GNOME Shell',
    // The schemas of the shell's own bindings: their settings are named after its actions.
    bindingSchemas: [
        'org.gnome.desktop.wm.keybindings', 'org.gnome.shell.keybindings', 'org.gnome.mutter.keybindings',
        'org.gnome.mutter.wayland.keybindings',
    ],

    modules: () => ({PanelMenu, PopupMenu, Shell, St}),
    needed: [
        ['', 'global.compositor.get_laters|Meta.later_add'],
        ['Main.layoutManager', 'uiGroup.add_child'],
        ['Main.panel', 'addToStatusArea'],
        ['Main.wm', 'allowKeybinding skipNextEffect'],
        ['Meta', 'external_binding_name_for_action Window.prototype.get_pid'],
        ['Shell.ActionMode', 'NONE NORMAL'],
        ['St', 'Side.TOP Icon.prototype.gicon Widget.prototype.add_style_class_name'],
        ['Clutter', 'BUTTON_PRIMARY EVENT_PROPAGATE EVENT_STOP EventType.TOUCH_BEGIN Actor.prototype.hide'],
        ['Clutter.Event.prototype', 'get_button type'],
        ['PanelMenu.Button.prototype',
            'add_child add_style_pseudo_class remove_style_pseudo_class get_transformed_extents'],
        ['PopupMenu', 'Ornament.CHECK Ornament.NONE PopupMenuManager.prototype.addMenu PopupSeparatorMenuItem'],
        ['PopupMenu.PopupMenu.prototype', 'addMenuItem destroy removeAll toggle'],
        ['PopupMenu.PopupMenuItem.prototype', 'setOrnament'],
    ],
    neededSignals: [['Clutter.Actor', 'button-press-event touch-event']],
    neededToBorrow: [['global', 'backend'], ['Main', 'actionMode']],

    returnsToFirstPlace: false,
    processOf: window => window.get_pid(),

    /** Whether the shell passes on presses of a key that it holds for others. */
    setAllowed(action, isAllowed) {
        const modes = isAllowed ? Shell.ActionMode.NORMAL : Shell.ActionMode.NONE;
        Main.wm.allowKeybinding(Meta.external_binding_name_for_action(action), modes);
    },

    /** Whether keys go to the windows, and not to the overview or a dialog of the shell. */
    isOnDesktop: () => Main.actionMode === Shell.ActionMode.NORMAL,

    /** The shell's own handler of one of Mutter's bindings; null for Mutter's. */
    handlerOf: binding => /^(?:switch|move)-to-workspace-(?:left|right|up|down|last|\d+)$/.test(binding)
        ? Main.wm._showWorkspaceSwitcher.bind(Main.wm) : null,

    backend: () => global.backend,

    addLater(when, work) {
        // GNOME 44 and later.
        if (global.compositor?.get_laters)
            global.compositor.get_laters().add(when, work);
        else
            Meta.later_add(when, work);
    },

    skipNextEffect: actor => Main.wm.skipNextEffect(actor),
    newItem: send => new Item(send),
};
