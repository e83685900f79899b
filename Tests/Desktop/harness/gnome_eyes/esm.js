// For GNOME Shell 45 and later, whose extensions are modules.

import Clutter from 'gi://Clutter';
import Gio from 'gi://Gio';
import GLib from 'gi://GLib';
import Meta from 'gi://Meta';
import Shell from 'gi://Shell';
import St from 'gi://St';

import {Extension} from 'resource:///org/gnome/shell/extensions/extension.js';
import * as Main from 'resource:///org/gnome/shell/ui/main.js';

@CORE@
export default class EyesExtension extends Extension {
    enable() {
        this._eyes = new Eyes();
        this._eyes.enable();
    }

    disable() {
        this._eyes.disable();
    }
}
