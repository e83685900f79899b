<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>CorvidKit</name>
    <message>
        <source>Open System Settings</source>
        <translation>Abrir la configuración del sistema</translation>
    </message>
    <message>
        <source>Open at login</source>
        <translation>Abrir al iniciar sesión</translation>
    </message>
    <message>
        <source>Private by design</source>
        <translation>Privado por diseño</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Versión %1</translation>
    </message>
    <message>
        <source>Check for Updates</source>
        <translation>Buscar actualizaciones</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>A new version may be out</source>
        <translation>Puede que haya una versión nueva</translation>
    </message>
    <message>
        <source>This app never goes online, so it can&apos;t check by itself. Checking on the website takes one click.</source>
        <translation>Esta aplicación nunca se conecta a Internet, así que no puede comprobarlo por sí misma. En el sitio web basta con un clic.</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Comprobar</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>Ahora no</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
</context>
</TS>
