<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Tessel</name>
    <message>
        <source>Paused</source>
        <translation>Pausiert</translation>
    </message>
    <message>
        <source>Waiting for permission</source>
        <translation>Wartet auf Berechtigung</translation>
    </message>
    <message>
        <source>Some shortcuts are taken</source>
        <translation>Einige Tastenkürzel sind belegt</translation>
    </message>
    <message>
        <source>Active · %lld shortcuts · %lld apps</source>
        <translation>Aktiv · %1 · %2</translation>
    </message>
    <message numerus="yes">
        <source>%n shortcuts</source>
        <translation>
            <numerusform>%n Tastenkürzel</numerusform>
            <numerusform>%n Tastenkürzel</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n apps</source>
        <translation>
            <numerusform>%n App</numerusform>
            <numerusform>%n Apps</numerusform>
        </translation>
    </message>
    <message>
        <source>Turn off</source>
        <translation>Ausschalten</translation>
    </message>
    <message>
        <source>Turn on</source>
        <translation>Einschalten</translation>
    </message>
    <message>
        <source>Open Tessel</source>
        <translation>Tessel öffnen</translation>
    </message>
    <message>
        <source>Tessel was updated</source>
        <translation>Tessel wurde aktualisiert</translation>
    </message>
    <message>
        <source>Restart Tessel</source>
        <translation>Tessel neu starten</translation>
    </message>
    <message>
        <source>This is still the former version. Restart Tessel to use the new one.</source>
        <translation>Noch läuft die bisherige Version. Starten Sie Tessel neu, um die neue zu verwenden.</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <translation>Zugriff auf Bedienungshilfen erlauben</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>X11</comment>
        <translation>Keine Fensterverwaltung gefunden</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>compositor</comment>
        <translation>Die Arbeitsumgebung antwortet nicht</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-off</comment>
        <translation>Die Shell-Erweiterung ist aus</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-login</comment>
        <translation>Einmal ab- und anmelden</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-refused</comment>
        <translation>Die Shell-Erweiterung läuft nicht</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>code-refused</comment>
        <translation>Cinnamon führt den Code von Tessel nicht aus</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>plugins-missing</comment>
        <translation>Dem Compositor fehlt ein Plugin</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>unsupported</comment>
        <translation>Arbeitsumgebung nicht unterstützt</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <translation>macOS verlangt diese Berechtigung, damit eine App die Fenster anderer Apps verschieben und in der Größe ändern kann. Ist Tessel in der Liste bereits eingeschaltet, wählen Sie es aus, klicken Sie auf − und öffnen Sie die App erneut.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>X11</comment>
        <translation>Tessel lässt Fenster von der Fensterverwaltung verschieben. Es läuft aber keine, die Programmen das erlaubt, oder sie antwortet nicht. Starten Sie eine, dann macht Tessel von selbst weiter.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>compositor</comment>
        <translation>Tessel bittet die Arbeitsumgebung, Fenster zu verschieben, und bekommt keine Antwort. Sobald sie wieder antwortet, macht Tessel von selbst weiter.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-off</comment>
        <translation>GNOME lässt Programme Fenster nur über eine Erweiterung verschieben. Die von Tessel ist installiert, aber ausgeschaltet.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-login</comment>
        <translation>GNOME lässt Programme Fenster nur über eine Erweiterung verschieben. Die von Tessel ist installiert und wird bei der nächsten Anmeldung geladen.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-refused</comment>
        <translation>GNOME lässt Programme Fenster nur über eine Erweiterung verschieben und führt die von Tessel nicht aus. Vielleicht passt sie nicht zu dieser Version von GNOME.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>code-refused</comment>
        <translation>Cinnamon lässt Programme Fenster nur über Code verschieben, den es für sie ausführt, und führt den von Tessel nicht aus. Der Befehl „tessel --status“ nennt den Grund. Tessel versucht es von selbst erneut.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>plugins-missing</comment>
        <translation>Wayfire lässt Programme Fenster nur über seine Plugins ipc, ipc-rules und command verschieben. Fügen Sie diese in wayfire.ini der Zeile „plugins“ im Abschnitt „core“ hinzu, dann macht Tessel von selbst weiter.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>unsupported</comment>
        <translation>Tessel kennt keinen Weg, in dieser Arbeitsumgebung Fenster zu verschieben. Es läuft unter KDE Plasma, GNOME, Cinnamon, sway, Hyprland und Wayfire und überall, wo Fenster unter X11 verwaltet werden.</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Apps</source>
        <translation>Apps</translation>
    </message>
    <message>
        <source>Left half</source>
        <translation>Linke Hälfte</translation>
    </message>
    <message>
        <source>Right half</source>
        <translation>Rechte Hälfte</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>Zentrieren</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>Maximieren</translation>
    </message>
    <message>
        <source>Almost maximize</source>
        <translation>Fast maximieren</translation>
    </message>
    <message>
        <source>Maximize height</source>
        <translation>Höhe maximieren</translation>
    </message>
    <message>
        <source>Another app is already using this shortcut</source>
        <translation>Eine andere App verwendet dieses Tastenkürzel bereits</translation>
    </message>
    <message>
        <source>%1 %2 (%3)</source>
        <translation>%1 %2 (%3)</translation>
    </message>
    <message>
        <source>%1: %2 (%3)</source>
        <translation>%1: %2 (%3)</translation>
    </message>
    <message>
        <source>%1 belongs to %3</source>
        <translation>%1 gehört %3</translation>
    </message>
    <message>
        <source>switches to the workspace on the left</source>
        <translation>wechselt zur linken Arbeitsfläche</translation>
    </message>
    <message>
        <source>switches to the workspace on the right</source>
        <translation>wechselt zur rechten Arbeitsfläche</translation>
    </message>
    <message>
        <source>switches to the workspace above</source>
        <translation>wechselt zur Arbeitsfläche darüber</translation>
    </message>
    <message>
        <source>switches to the workspace below</source>
        <translation>wechselt zur Arbeitsfläche darunter</translation>
    </message>
    <message>
        <source>shows the desktop</source>
        <translation>zeigt den Schreibtisch</translation>
    </message>
    <message>
        <source>shows all workspaces</source>
        <translation>zeigt alle Arbeitsflächen</translation>
    </message>
    <message>
        <source>shows all windows</source>
        <translation>zeigt alle Fenster</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is held in both ways that X11 offers</source>
        <translation>Tessel kann es nicht leihen: Es ist auf beide Arten belegt, die X11 bietet</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: an app, an extension or a part of the desktop has reserved it</source>
        <translation>Tessel kann es nicht leihen: Eine App, eine Erweiterung oder ein Teil der Arbeitsumgebung hat es reserviert</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it could not be given back to the desktop</source>
        <translation>Tessel kann es nicht leihen: Es ließe sich der Arbeitsumgebung nicht zurückgeben</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it from this version of the desktop</source>
        <translation>Tessel kann es von dieser Version der Arbeitsumgebung nicht leihen</translation>
    </message>
    <message>
        <source>Tessel can borrow it after you log out and in again</source>
        <translation>Tessel kann es leihen, sobald Sie sich ab- und wieder angemeldet haben</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: its line is for one keyboard or one layout only</source>
        <translation>Tessel kann es nicht leihen: Seine Zeile gilt nur für eine Tastatur oder eine Belegung</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is part of a sequence of keys</source>
        <translation>Tessel kann es nicht leihen: Es ist Teil einer Tastenfolge</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the note on whose it is cannot be saved</source>
        <translation>Tessel kann es nicht leihen: Die Notiz, wem es gehört, lässt sich nicht speichern</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the desktop does not release it</source>
        <translation>Tessel kann es nicht leihen: Die Arbeitsumgebung gibt es nicht frei</translation>
    </message>
    <message>
        <source>When these apps open</source>
        <translation>Beim Öffnen dieser Apps</translation>
    </message>
    <message>
        <source>Their first window is maximized or centered on the screen it opens on.</source>
        <translation>Ihr erstes Fenster wird auf dem Bildschirm, auf dem es erscheint, maximiert oder zentriert.</translation>
    </message>
    <message>
        <source>No apps yet</source>
        <translation>Noch keine Apps</translation>
    </message>
    <message>
        <source>Add app</source>
        <translation>App hinzufügen</translation>
    </message>
    <message>
        <source>Open apps</source>
        <translation>Geöffnete Apps</translation>
    </message>
    <message>
        <source>Choose from Applications…</source>
        <translation>Aus Anwendungen auswählen&#xa0;…</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Action for %1</source>
        <translation>Aktion für %1</translation>
    </message>
    <message>
        <source>No internet connection, no data collected</source>
        <translation>Kein Internet, keine Datenerfassung</translation>
    </message>
    <message>
        <source>Only moves windows, never reads them</source>
        <translation>Verschiebt Fenster nur, liest nie ihren Inhalt</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Choose Applications</source>
        <translation>Anwendungen auswählen</translation>
    </message>
    <message>
        <source>Search applications</source>
        <translation>Anwendungen suchen</translation>
    </message>
    <message>
        <source>No matching applications</source>
        <translation>Keine passenden Anwendungen</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Musik</translation>
    </message>
    <message>
        <source>Mail</source>
        <translation>E-Mail</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Notizen</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>Kalender</translation>
    </message>
    <message>
        <source>Maps</source>
        <translation>Karten</translation>
    </message>
    <message>
        <source>Software</source>
        <translation>Software</translation>
    </message>
    <message>
        <source>Terminal</source>
        <translation>Terminal</translation>
    </message>
    <message>
        <source>Calculator</source>
        <translation>Taschenrechner</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; no setting is changed.</source>
        <translation>%1 verwendet %2. Tessel kann sie haben, solange es läuft; keine Einstellung wird geändert.</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; no setting is changed.</source>
        <translation>Eine andere App verwendet %1. Tessel kann sie haben, solange es läuft; keine Einstellung wird geändert.</translation>
    </message>
    <message>
        <source>Other keys for the same keep working: %1.</source>
        <translation>Andere Tasten für dasselbe funktionieren weiter: %1.</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>%1 verwendet %2. Tessel kann sie haben, solange es läuft; die Systemeinstellungen werden für diese Zeit geändert.</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>Eine andere App verwendet %1. Tessel kann sie haben, solange es läuft; die Systemeinstellungen werden für diese Zeit geändert.</translation>
    </message>
    <message>
        <source>Use for Tessel</source>
        <translation>Für Tessel verwenden</translation>
    </message>
    <message>
        <source>Borrowed shortcuts: %1</source>
        <translation>Geliehene Tastenkürzel: %1</translation>
    </message>
    <message>
        <source>Give back</source>
        <translation>Zurückgeben</translation>
    </message>
    <message>
        <source>Tessel is ready</source>
        <translation>Tessel ist bereit</translation>
    </message>
    <message>
        <source>Ctrl</source>
        <translation>Strg</translation>
    </message>
    <message>
        <source>Alt</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Umschalt</translation>
    </message>
    <message>
        <source>Super</source>
        <translation>Super</translation>
    </message>
</context>
</TS>
