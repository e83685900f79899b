<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>Tessel</name>
    <message>
        <source>Paused</source>
        <translation>Paused</translation>
    </message>
    <message>
        <source>Waiting for permission</source>
        <translation>Waiting for permission</translation>
    </message>
    <message>
        <source>Some shortcuts are taken</source>
        <translation>Some shortcuts are taken</translation>
    </message>
    <message>
        <source>Active · %lld shortcuts · %lld apps</source>
        <translation>Active · %1 · %2</translation>
    </message>
    <message numerus="yes">
        <source>%n shortcuts</source>
        <translation>
            <numerusform>%n shortcut</numerusform>
            <numerusform>%n shortcuts</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n apps</source>
        <translation>
            <numerusform>%n app</numerusform>
            <numerusform>%n apps</numerusform>
        </translation>
    </message>
    <message>
        <source>Turn off</source>
        <translation>Turn off</translation>
    </message>
    <message>
        <source>Turn on</source>
        <translation>Turn on</translation>
    </message>
    <message>
        <source>Open Tessel</source>
        <translation>Open Tessel</translation>
    </message>
    <message>
        <source>Tessel was updated</source>
        <translation>Tessel was updated</translation>
    </message>
    <message>
        <source>Restart Tessel</source>
        <translation>Restart Tessel</translation>
    </message>
    <message>
        <source>This is still the former version. Restart Tessel to use the new one.</source>
        <translation>This is still the former version. Restart Tessel to use the new one.</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <translation>Allow Accessibility access</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>X11</comment>
        <translation>No window manager found</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>compositor</comment>
        <translation>The desktop does not answer</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-off</comment>
        <translation>The shell extension is off</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-login</comment>
        <translation>Log out and in once</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-refused</comment>
        <translation>The shell extension does not run</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>code-refused</comment>
        <translation>Cinnamon does not run Tessel’s code</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>plugins-missing</comment>
        <translation>A plugin of the compositor is missing</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>unsupported</comment>
        <translation>This desktop is not supported</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <translation>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>X11</comment>
        <translation>Tessel asks the window manager to move windows, but none is running that lets programs do so, or it does not answer. Start one, and Tessel goes on by itself.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>compositor</comment>
        <translation>Tessel asks the desktop to move windows, and gets no answer. When the desktop answers again, Tessel goes on by itself.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-off</comment>
        <translation>GNOME lets programs move windows only through an extension. Tessel’s is installed, but switched off.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-login</comment>
        <translation>GNOME lets programs move windows only through an extension. Tessel’s is installed, and GNOME loads it at your next login.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-refused</comment>
        <translation>GNOME lets programs move windows only through an extension, and refuses to run Tessel’s. The installed version may not fit this version of GNOME.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>code-refused</comment>
        <translation>Cinnamon lets programs move windows only through code that it runs for them, and does not run Tessel’s. The command “tessel --status” says why. Tessel tries again by itself.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>plugins-missing</comment>
        <translation>Wayfire lets programs move windows only through its plugins ipc, ipc-rules and command. Add those to the line “plugins” in the section “core” of wayfire.ini, and Tessel goes on by itself.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>unsupported</comment>
        <translation>Tessel knows no way to move windows on this desktop. It works on KDE Plasma, GNOME, Cinnamon, sway, Hyprland and Wayfire, and wherever windows are managed on X11.</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Shortcuts</translation>
    </message>
    <message>
        <source>Apps</source>
        <translation>Apps</translation>
    </message>
    <message>
        <source>Left half</source>
        <translation>Left half</translation>
    </message>
    <message>
        <source>Right half</source>
        <translation>Right half</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>Center</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>Maximize</translation>
    </message>
    <message>
        <source>Almost maximize</source>
        <translation>Almost maximize</translation>
    </message>
    <message>
        <source>Maximize height</source>
        <translation>Maximize height</translation>
    </message>
    <message>
        <source>Another app is already using this shortcut</source>
        <translation>Another app is already using this shortcut</translation>
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
        <translation>%1 belongs to %3</translation>
    </message>
    <message>
        <source>switches to the workspace on the left</source>
        <translation>switches to the workspace on the left</translation>
    </message>
    <message>
        <source>switches to the workspace on the right</source>
        <translation>switches to the workspace on the right</translation>
    </message>
    <message>
        <source>switches to the workspace above</source>
        <translation>switches to the workspace above</translation>
    </message>
    <message>
        <source>switches to the workspace below</source>
        <translation>switches to the workspace below</translation>
    </message>
    <message>
        <source>shows the desktop</source>
        <translation>shows the desktop</translation>
    </message>
    <message>
        <source>shows all workspaces</source>
        <translation>shows all workspaces</translation>
    </message>
    <message>
        <source>shows all windows</source>
        <translation>shows all windows</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is held in both ways that X11 offers</source>
        <translation>Tessel cannot borrow it: it is held in both ways that X11 offers</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: an app, an extension or a part of the desktop has reserved it</source>
        <translation>Tessel cannot borrow it: an app, an extension or a part of the desktop has reserved it</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it could not be given back to the desktop</source>
        <translation>Tessel cannot borrow it: it could not be given back to the desktop</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it from this version of the desktop</source>
        <translation>Tessel cannot borrow it from this version of the desktop</translation>
    </message>
    <message>
        <source>Tessel can borrow it after you log out and in again</source>
        <translation>Tessel can borrow it after you log out and in again</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: its line is for one keyboard or one layout only</source>
        <translation>Tessel cannot borrow it: its line is for one keyboard or one layout only</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is part of a sequence of keys</source>
        <translation>Tessel cannot borrow it: it is part of a sequence of keys</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the note on whose it is cannot be saved</source>
        <translation>Tessel cannot borrow it: the note on whose it is cannot be saved</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the desktop does not release it</source>
        <translation>Tessel cannot borrow it: the desktop does not release it</translation>
    </message>
    <message>
        <source>When these apps open</source>
        <translation>When these apps open</translation>
    </message>
    <message>
        <source>Their first window is maximized or centered on the screen it opens on.</source>
        <translation>Their first window is maximized or centered on the screen it opens on.</translation>
    </message>
    <message>
        <source>No apps yet</source>
        <translation>No apps yet</translation>
    </message>
    <message>
        <source>Add app</source>
        <translation>Add app</translation>
    </message>
    <message>
        <source>Open apps</source>
        <translation>Open apps</translation>
    </message>
    <message>
        <source>Choose from Applications…</source>
        <translation>Choose from Applications…</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>Action for %1</source>
        <translation>Action for %1</translation>
    </message>
    <message>
        <source>No internet connection, no data collected</source>
        <translation>No internet connection, no data collected</translation>
    </message>
    <message>
        <source>Only moves windows, never reads them</source>
        <translation>Only moves windows, never reads them</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Choose Applications</source>
        <translation>Choose Applications</translation>
    </message>
    <message>
        <source>Search applications</source>
        <translation>Search applications</translation>
    </message>
    <message>
        <source>No matching applications</source>
        <translation>No matching applications</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Music</translation>
    </message>
    <message>
        <source>Mail</source>
        <translation>Mail</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Notes</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>Calendar</translation>
    </message>
    <message>
        <source>Maps</source>
        <translation>Maps</translation>
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
        <translation>Calculator</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; no setting is changed.</source>
        <translation>%1 uses %2. Tessel can have them while it runs; no setting is changed.</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; no setting is changed.</source>
        <translation>Another app uses %1. Tessel can have them while it runs; no setting is changed.</translation>
    </message>
    <message>
        <source>Other keys for the same keep working: %1.</source>
        <translation>Other keys for the same keep working: %1.</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>%1 uses %2. Tessel can have them while it runs; the system settings are changed for that time.</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>Another app uses %1. Tessel can have them while it runs; the system settings are changed for that time.</translation>
    </message>
    <message>
        <source>Use for Tessel</source>
        <translation>Use for Tessel</translation>
    </message>
    <message>
        <source>Borrowed shortcuts: %1</source>
        <translation>Borrowed shortcuts: %1</translation>
    </message>
    <message>
        <source>Give back</source>
        <translation>Give back</translation>
    </message>
    <message>
        <source>Tessel is ready</source>
        <translation>Tessel is ready</translation>
    </message>
    <message>
        <source>Ctrl</source>
        <translation>Ctrl</translation>
    </message>
    <message>
        <source>Alt</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Shift</translation>
    </message>
    <message>
        <source>Super</source>
        <translation>Super</translation>
    </message>
</context>
</TS>
