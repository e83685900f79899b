<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it" sourcelanguage="en">
<context>
    <name>CorvidKit</name>
    <message>
        <source>Open System Settings</source>
        <translation>Apri le impostazioni di sistema</translation>
    </message>
    <message>
        <source>Open at login</source>
        <translation>Apri all’accesso</translation>
    </message>
    <message>
        <source>Private by design</source>
        <translation>Riservato per natura</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Versione %1</translation>
    </message>
    <message>
        <source>Check for Updates</source>
        <translation>Controlla aggiornamenti</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Esci</translation>
    </message>
    <message>
        <source>A new version may be out</source>
        <translation>Potrebbe esserci una nuova versione</translation>
    </message>
    <message>
        <source>This app never goes online, so it can&apos;t check by itself. Checking on the website takes one click.</source>
        <translation>Questa applicazione non va mai online, quindi non può controllare da sola. Sul sito web basta un clic.</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Controlla</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>Non ora</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
</context>
</TS>
