/** All that is done for the program while it is there. */
class Service {
    constructor(client) {
        this.client = client;
        this._name = GLib.uuid_string_random();
        const tell = (signal, types, values) => this.tell(signal, types && new GLib.Variant(types, values));
        this._windows = new Windows(tell);
        this._keys = new Keys(tell);
        this._ownWindow = new OwnWindow();
        this._item = null;
        this._newItem = () => new Item(tell);
        tell('Opened', '(s)', [this._name]);
    }

    destroy() {
        this.tell('Closed', null);
        this.hideItem();
        this._ownWindow.destroy();
        this._keys.destroy();
        this._windows.destroy();
    }

    tell(signal, parameters) {
        Gio.DBus.session.emit_signal(this.client, OBJECT_PATH, INTERFACE_NAME, signal, parameters);
    }

    hello() {
        return JSON.stringify({
            version: INTERFACE_VERSION,
            session: this._name,
            windows: this._windows.all().map(factsOf),
            focused: this._windows.focused(),
            outputs: outputs(),
        });
    }

    frames() {
        return JSON.stringify(this._windows.frames());
    }

    place(id, wanted, settled) {
        this._windows.place(id, wanted, settled);
    }

    grab(number, accelerator) {
        return this._keys.grab(number, accelerator);
    }

    ungrab(number) {
        this._keys.ungrab(number);
    }

    placeOwn(process, title, x, y) {
        this._ownWindow.place(process, title, x, y);
    }

    showItem(description) {
        this._item ??= this._newItem();
        this._item.set(JSON.parse(description));
    }

    hideItem() {
        this._item?.destroy();
        this._item = null;
    }

    itemFrame() {
        if (!this._item)
            throw new Refusal('NoItem', 'There is no item in the top bar');
        return this._item.frame();
    }
}

/** The object on the session bus. It answers whoever owns the program's name, and nobody else. */
class Door {
    enable() {
        this._service = null;
        this._object = Gio.DBusExportedObject.wrapJSObject(INTERFACE, this);
        this._object.export(Gio.DBus.session, OBJECT_PATH);
        this._watch = Gio.bus_watch_name_on_connection(
            Gio.DBus.session, BUS_NAME, Gio.BusNameWatcherFlags.NONE,
            (_bus, _name, owner) => this._serve(owner), () => this._serve(null));
    }

    disable() {
        Gio.bus_unwatch_name(this._watch);
        this._serve(null);
        this._object.unexport();
        this._object = null;
    }

    _serve(client) {
        if (this._service?.client === client)
            return;
        this._service?.destroy();
        this._service = client ? new Service(client) : null;
    }

    /** Lets the caller have its work done, if it is the program. */
    _admit(invocation, work) {
        try {
            if (invocation.get_sender() !== this._service?.client)
                throw new Refusal('Denied', 'This object serves Tessel only');
            work(this._service);
        } catch (error) {
            this._refuse(invocation, error);
        }
    }

    /** Answers a call with what `work` gives. */
    _answer(invocation, types, work) {
        this._admit(invocation, service => {
            const values = work(service);
            invocation.return_value(types && new GLib.Variant(types, values));
        });
    }

    _refuse(invocation, error) {
        invocation.return_dbus_error(error.busName ?? `${INTERFACE_NAME}.Failed`, error.message);
    }

    HelloAsync(_parameters, invocation) {
        const answer = () => this._answer(invocation, '(s)', service => [service.hello()]);
        const sender = invocation.get_sender();
        if (sender === this._service?.client) {
            answer();
            return;
        }
        // It may have got its name so recently that this has not been told.
        Gio.DBus.session.call(
            'org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus', 'GetNameOwner',
            new GLib.Variant('(s)', [BUS_NAME]), new GLib.VariantType('(s)'), Gio.DBusCallFlags.NONE, -1, null,
            (bus, result) => {
                try {
                    const [owner] = bus.call_finish(result).deepUnpack();
                    if (owner === sender && this._object)
                        this._serve(owner);
                } catch (error) {
                    // Nobody owns the name: the answer says so.
                }
                answer();
            });
    }

    FramesAsync(_parameters, invocation) {
        this._answer(invocation, '(s)', service => [service.frames()]);
    }

    PlaceAsync([id, ...wanted], invocation) {
        this._admit(invocation, service => service.place(id, wanted, frame => {
            if (frame)
                invocation.return_value(new GLib.Variant('(iiii)', frame));
            else
                this._refuse(invocation, new Refusal('NoSuchWindow', 'The window was left alone'));
        }));
    }

    GrabAsync([number, accelerator], invocation) {
        this._answer(invocation, '(b)', service => [service.grab(number, accelerator)]);
    }

    UngrabAsync([number], invocation) {
        this._answer(invocation, null, service => service.ungrab(number));
    }

    HoldersAsync([combinations], invocation) {
        this._answer(invocation, '(s)', () => [JSON.stringify(holdersOf(combinations))]);
    }

    PointerAsync(_parameters, invocation) {
        this._answer(invocation, '(ii)', () => global.get_pointer().slice(0, 2));
    }

    PlaceOwnAsync([process, title, x, y], invocation) {
        this._answer(invocation, null, service => service.placeOwn(process, title, x, y));
    }

    BeepAsync(_parameters, invocation) {
        this._answer(invocation, null, () =>
            global.display.get_sound_player().play_from_theme('bell-window-system', 'Tessel', null));
    }

    ShowItemAsync([description], invocation) {
        this._answer(invocation, null, service => service.showItem(description));
    }

    HideItemAsync(_parameters, invocation) {
        this._answer(invocation, null, service => service.hideItem());
    }

    ItemFrameAsync(_parameters, invocation) {
        this._answer(invocation, '(iiii)', service => service.itemFrame());
    }
}
