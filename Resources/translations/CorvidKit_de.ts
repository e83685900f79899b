<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>CorvidKit</name>
    <message>
        <source>Open System Settings</source>
        <translation>Systemeinstellungen öffnen</translation>
    </message>
    <message>
        <source>Open at login</source>
        <translation>Beim Anmelden öffnen</translation>
    </message>
    <message>
        <source>Private by design</source>
        <translation>Von Grund auf privat</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Check for Updates</source>
        <translation>Nach Updates suchen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>A new version may be out</source>
        <translation>Es könnte eine neue Version geben</translation>
    </message>
    <message>
        <source>This app never goes online, so it can&apos;t check by itself. Checking on the website takes one click.</source>
        <translation>Diese App geht nie online und kann deshalb nicht selbst nachsehen. Ein Klick führt zur Website.</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Nachsehen</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>Nicht jetzt</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Strg+Q</translation>
    </message>
</context>
</TS>
