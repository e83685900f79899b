/** The differences of Cinnamon. */
const host = {
    title: 'Tessel does nothing in this Cinnamon, which',
    // The schemas of the bindings of Muffin and Cinnamon: their settings are named after its actions.
    bindingSchemas: [
        'org.cinnamon.desktop.keybindings.wm', 'org.cinnamon.muffin.keybindings',
        'org.cinnamon.desktop.keybindings.media-keys', 'org.cinnamon.desktop.keybindings',
    ],

    modules: () => ({Shell}),
    needed: [['Main', 'layoutManager'], ['Meta', 'later_add Window.prototype.get_client_pid']],
    neededSignals: [],
    neededToBorrow: [
        ['Meta', 'get_backend'],
        ['Main', 'expo modalCount overview wm._moveWindowToWorkspaceLeft wm._moveWindowToWorkspaceRight'],
    ],

    returnsToFirstPlace: true,

    // The other function knows no process of a Wayland program.
    processOf: window => window.get_client_pid(),

    /** Cinnamon passes on all keys that it holds for others. */
    setAllowed() {},

    /** Whether keys go to the windows, and not to an overview, a menu or a dialog of Cinnamon. */
    isOnDesktop: () => Main.modalCount === 0 && !Main.overview.visible && !Main.expo.visible,

    /** Cinnamon's own handler of one of Muffin's bindings (windowManager.js); null for Muffin's. */
    handlerOf(binding) {
        const name = {
            'switch-to-workspace-left': '_showWorkspaceSwitcher', 'switch-to-workspace-right': '_showWorkspaceSwitcher',
            'switch-to-workspace-up': '_showWorkspaceSwitcher', 'switch-to-workspace-down': '_showWorkspaceSwitcher',
            'move-to-workspace-left': '_moveWindowToWorkspaceLeft',
            'move-to-workspace-right': '_moveWindowToWorkspaceRight',
        }[binding];
        return name ? Main.wm[name].bind(Main.wm) : null;
    },

    backend: () => Meta.get_backend(),
    addLater: (when, work) => Meta.later_add(when, work),

    /** No effect keeps a window of Cinnamon from its place. */
    skipNextEffect() {},

    newItem() {
        throw new Refusal('NoItem', 'Cinnamon shows status items by itself');
    },
};
