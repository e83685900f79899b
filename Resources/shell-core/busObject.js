/** Everything that the core does for a connected program. `process` is the process of the connection. */
class Service {
    constructor(send, session, process) {
        this._session = session;
        this._process = process;
        this._windows = new Windows(send);
        this._keys = new Keys(send);
        this._ownWindow = new OwnWindow();
        this._item = null;
        this._newItem = () => host.newItem(send);
    }

    destroy() {
        this.hideItem();
        this._ownWindow.destroy();
        this._keys.destroy();
        this._windows.destroy();
    }

    hello() {
        return JSON.stringify({
            version: INTERFACE_VERSION,
            session: this._session,
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

    borrow(number, accelerator) {
        return this._keys.borrow(number, accelerator);
    }

    ungrab(number) {
        this._keys.ungrab(number);
    }

    placeOwn(process, title, x, y) {
        if (process !== this._process)
            throw new Refusal('Denied', 'A window of another process is not put in front');
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

/**
 * The object on the session bus. It serves only the connection that owns the program's name, from its call of Hello on.
 * Before that, and after the name is lost, it follows, holds and shows nothing for any client.
 */
class BusObject {
    enable() {
        this._missing = missingOfTheShell();
        if (this._missing.length > 0)
            console.warn(`${host.title} lacks ${this._missing.join(', ')}`);
        this._client = null;
        this._service = null;
        this._object = Gio.DBusExportedObject.wrapJSObject(INTERFACE, this);
        this._object.export(Gio.DBus.session, OBJECT_PATH);
        this._watch = Gio.bus_watch_name_on_connection(
            Gio.DBus.session, BUS_NAME, Gio.BusNameWatcherFlags.NONE,
            (_bus, _name, owner) => this._expect(owner), () => this._expect(null));
    }

    disable() {
        Gio.bus_unwatch_name(this._watch);
        this._expect(null);
        this._object.unexport();
        this._object = null;
    }

    /** Drops all state of the former owner of the name, and signals the new one to call Hello. */
    _expect(client) {
        if (this._client === client)
            return;
        this._service?.destroy();
        this._service = null;
        if (this._client)
            this._send(this._client, 'Closed', null);
        this._client = client;
        this._session = client && GLib.uuid_string_random();
        if (client)
            this._send(client, 'Opened', new GLib.Variant('(s)', [this._session]));
    }

    _send(client, signal, parameters) {
        Gio.DBus.session.emit_signal(client, OBJECT_PATH, INTERFACE_NAME, signal, parameters);
    }

    /** Runs `work` for the caller if the caller is the program. */
    _admit(invocation, work) {
        try {
            if (!this._service || invocation.get_sender() !== this._client)
                throw new Refusal('Denied', 'This object serves Tessel only, once it has said Hello');
            work(this._service);
        } catch (error) {
            this._refuse(invocation, error);
        }
    }

    /** Replies to a call with the result of `work`. */
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
        const sender = invocation.get_sender();
        if (sender === this._client) {
            this._welcome(sender, invocation);
            return;
        }
        // The name may be so new that its signal has not arrived.
        this._askBus('GetNameOwner', BUS_NAME, '(s)', owner => {
            if (owner === sender && this._object)
                this._expect(owner);
            this._welcome(sender, invocation);
        });
    }

    /** Starts to serve the owner of the name, unless it is served already. */
    _welcome(sender, invocation) {
        const answer = () => this._answer(invocation, '(s)', service => [service.hello()]);
        if (sender !== this._client || this._service) {
            answer();
        } else if (this._missing.length > 0) {
            this._refuse(invocation, new Refusal('Unusable', this._missing.join(', ')));
        } else {
            this._askBus('GetConnectionUnixProcessID', sender, '(u)', process => {
                // Another client may own the name by now, and Hello may have been called twice.
                if (sender === this._client)
                    this._begin(process);
                answer();
            });
        }
    }

    _begin(process) {
        const client = this._client;
        const send = (signal, types, values) => this._send(client, signal, types && new GLib.Variant(types, values));
        this._service ??= new Service(send, this._session, process);
    }

    /** Asks the bus about a name, and passes the reply on; nothing if the bus reports an error. */
    _askBus(method, name, types, then) {
        Gio.DBus.session.call(
            'org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus', method,
            new GLib.Variant('(s)', [name]), new GLib.VariantType(types), Gio.DBusCallFlags.NONE, -1, null,
            (bus, result) => {
                let known = null;
                try {
                    [known] = bus.call_finish(result).deepUnpack();
                } catch (error) {
                    // The bus no longer has the name.
                }
                then(known);
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

    BorrowAsync([number, accelerator], invocation) {
        this._answer(invocation, '(bb)', service => service.borrow(number, accelerator));
    }

    LoanObstacleAsync([accelerator], invocation) {
        this._answer(invocation, '(s)', () => [loanObstacle(keyOf(accelerator))]);
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
