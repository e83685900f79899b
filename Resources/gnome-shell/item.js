/** The program's item in the top bar. */
class Item {
    constructor(send) {
        this._send = send;
        this._button = new PanelMenu.Button(0.5, '', true);
        this._icon = new St.Icon({style_class: 'system-status-icon'});
        this._button.add_child(this._icon);
        this._button.connect('button-press-event', (_button, event) =>
            this._pressed(event.get_button() === Clutter.BUTTON_PRIMARY));
        this._button.connect('touch-event', (_button, event) => event.type() === Clutter.EventType.TOUCH_BEGIN
            ? this._pressed(true) : Clutter.EVENT_PROPAGATE);
        this._menu = new PopupMenu.PopupMenu(this._button, 0.5, St.Side.TOP);
        this._menu.actor.add_style_class_name('panel-menu');
        this._menu.actor.hide();
        this._menu.connect('open-state-changed', (_menu, isOpen) => {
            if (isOpen)
                this._button.add_style_pseudo_class('active');
            else
                this._button.remove_style_pseudo_class('active');
        });
        Main.layoutManager.uiGroup.add_child(this._menu.actor);
        this._menus = new PopupMenu.PopupMenuManager(this._button);
        this._menus.addMenu(this._menu);
        Main.panel.addToStatusArea('tessel', this._button);
    }

    destroy() {
        this._menu.destroy();
        this._button.destroy();
    }

    set({icon, title, menu}) {
        this._icon.gicon = Gio.icon_new_for_string(icon);
        this._button.accessible_name = title;
        this._menu.removeAll();
        menu.forEach((line, number) => this._menu.addMenuItem(this._menuItem(line, number)));
    }

    frame() {
        const {origin, size} = this._button.get_transformed_extents();
        return [origin.x, origin.y, size.width, size.height].map(Math.round);
    }

    _menuItem({title, isEnabled, isChecked}, number) {
        if (title === '')
            return new PopupMenu.PopupSeparatorMenuItem();
        const item = new PopupMenu.PopupMenuItem(title, {reactive: isEnabled});
        if (isChecked !== undefined)
            item.setOrnament(isChecked ? PopupMenu.Ornament.CHECK : PopupMenu.Ornament.NONE);
        item.connect('activate', () => this._send('ItemChosen', '(u)', [number]));
        return item;
    }

    _pressed(isPrimary) {
        if (isPrimary && !this._menu.isOpen)
            this._send('ItemClicked', '(iiii)', this.frame());
        else
            this._menu.toggle();
        return Clutter.EVENT_STOP;
    }
}
