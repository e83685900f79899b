<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>Tessel</name>
    <message>
        <source>Paused</source>
        <translation>En pausa</translation>
    </message>
    <message>
        <source>Waiting for permission</source>
        <translation>Esperando permiso</translation>
    </message>
    <message>
        <source>Some shortcuts are taken</source>
        <translation>Algunos atajos ya están ocupados</translation>
    </message>
    <message>
        <source>Active · %lld shortcuts · %lld apps</source>
        <translation>Activo · %1 · %2</translation>
    </message>
    <message numerus="yes">
        <source>%n shortcuts</source>
        <translation>
            <numerusform>%n atajo</numerusform>
            <numerusform>%n atajos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n apps</source>
        <translation>
            <numerusform>%n aplicación</numerusform>
            <numerusform>%n aplicaciones</numerusform>
        </translation>
    </message>
    <message>
        <source>Turn off</source>
        <translation>Desactivar</translation>
    </message>
    <message>
        <source>Turn on</source>
        <translation>Activar</translation>
    </message>
    <message>
        <source>Open Tessel</source>
        <translation>Abrir Tessel</translation>
    </message>
    <message>
        <source>Tessel was updated</source>
        <translation>Tessel se ha actualizado</translation>
    </message>
    <message>
        <source>Restart Tessel</source>
        <translation>Reiniciar Tessel</translation>
    </message>
    <message>
        <source>This is still the former version. Restart Tessel to use the new one.</source>
        <translation>Todavía se ejecuta la versión anterior. Reinicie Tessel para usar la nueva.</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <translation>Permitir el acceso a Accesibilidad</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>X11</comment>
        <translation>No hay gestor de ventanas</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>compositor</comment>
        <translation>El escritorio no responde</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-off</comment>
        <translation>La extensión está desactivada</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-login</comment>
        <translation>Cierre la sesión y vuelva a entrar</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-refused</comment>
        <translation>La extensión no funciona</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>code-refused</comment>
        <translation>Cinnamon no ejecuta el código de Tessel</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>plugins-missing</comment>
        <translation>Falta un complemento del compositor</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>unsupported</comment>
        <translation>Escritorio no compatible</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <translation>macOS exige este permiso para que una aplicación pueda mover y redimensionar las ventanas de otras. Si Tessel ya está activado en la lista, selecciónelo, pulse − y vuelva a abrir la aplicación.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>X11</comment>
        <translation>Tessel pide al gestor de ventanas que mueva las ventanas, pero no hay ninguno en marcha que se lo permita a los programas, o no responde. Inicie uno y Tessel continuará por sí solo.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>compositor</comment>
        <translation>Tessel pide al escritorio que mueva las ventanas y no recibe respuesta. Cuando el escritorio vuelva a responder, Tessel continuará por sí solo.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-off</comment>
        <translation>GNOME solo permite a los programas mover ventanas mediante una extensión. La de Tessel está instalada, pero desactivada.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-login</comment>
        <translation>GNOME solo permite a los programas mover ventanas mediante una extensión. La de Tessel está instalada y se cargará cuando vuelva a iniciar sesión.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-refused</comment>
        <translation>GNOME solo permite a los programas mover ventanas mediante una extensión y se niega a ejecutar la de Tessel. Quizá no sea compatible con esta versión de GNOME.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>code-refused</comment>
        <translation>Cinnamon solo permite a los programas mover ventanas mediante código que ejecuta para ellos, y no ejecuta el de Tessel. La orden «tessel --status» indica el motivo. Tessel lo intenta de nuevo por sí solo.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>plugins-missing</comment>
        <translation>Wayfire solo permite que los programas muevan ventanas a través de sus complementos ipc, ipc-rules y command. Añádelos a la línea «plugins» de la sección «core» de wayfire.ini y Tessel seguirá por sí solo.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>unsupported</comment>
        <translation>Tessel no conoce ningún modo de mover ventanas en este escritorio. Funciona en KDE Plasma, GNOME, Cinnamon, sway, Hyprland y Wayfire, y donde haya un gestor de ventanas X11.</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Atajos</translation>
    </message>
    <message>
        <source>Apps</source>
        <translation>Aplicaciones</translation>
    </message>
    <message>
        <source>Left half</source>
        <translation>Mitad izquierda</translation>
    </message>
    <message>
        <source>Right half</source>
        <translation>Mitad derecha</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>Centrar</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>Maximizar</translation>
    </message>
    <message>
        <source>Almost maximize</source>
        <translation>Casi maximizar</translation>
    </message>
    <message>
        <source>Maximize height</source>
        <translation>Maximizar la altura</translation>
    </message>
    <message>
        <source>Another app is already using this shortcut</source>
        <translation>Otra aplicación ya usa este atajo</translation>
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
        <translation>%1 pertenece a %3</translation>
    </message>
    <message>
        <source>switches to the workspace on the left</source>
        <translation>cambia al área de trabajo de la izquierda</translation>
    </message>
    <message>
        <source>switches to the workspace on the right</source>
        <translation>cambia al área de trabajo de la derecha</translation>
    </message>
    <message>
        <source>switches to the workspace above</source>
        <translation>cambia al área de trabajo de arriba</translation>
    </message>
    <message>
        <source>switches to the workspace below</source>
        <translation>cambia al área de trabajo de abajo</translation>
    </message>
    <message>
        <source>shows the desktop</source>
        <translation>muestra el escritorio</translation>
    </message>
    <message>
        <source>shows all workspaces</source>
        <translation>muestra todas las áreas de trabajo</translation>
    </message>
    <message>
        <source>shows all windows</source>
        <translation>muestra todas las ventanas</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is held in both ways that X11 offers</source>
        <translation>Tessel no puede tomarlo prestado: está ocupado de las dos formas que ofrece X11</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: an app, an extension or a part of the desktop has reserved it</source>
        <translation>Tessel no puede tomarlo prestado: lo ha reservado una aplicación, una extensión o una parte del escritorio</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it could not be given back to the desktop</source>
        <translation>Tessel no puede tomarlo prestado: no se podría devolver al escritorio</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it from this version of the desktop</source>
        <translation>Tessel no puede tomarlo prestado de esta versión del escritorio</translation>
    </message>
    <message>
        <source>Tessel can borrow it after you log out and in again</source>
        <translation>Tessel podrá tomarlo prestado cuando cierre la sesión y vuelva a entrar</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: its line is for one keyboard or one layout only</source>
        <translation>Tessel no puede tomarlo prestado: su línea es solo para un teclado o una distribución</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is part of a sequence of keys</source>
        <translation>Tessel no puede tomarlo prestado: es parte de una secuencia de teclas</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the note on whose it is cannot be saved</source>
        <translation>Tessel no puede tomarlo prestado: no se puede guardar la nota de quién es</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the desktop does not release it</source>
        <translation>Tessel no puede tomarlo prestado: el escritorio no lo libera</translation>
    </message>
    <message>
        <source>When these apps open</source>
        <translation>Al abrir estas aplicaciones</translation>
    </message>
    <message>
        <source>Their first window is maximized or centered on the screen it opens on.</source>
        <translation>Su primera ventana se maximiza o se centra en la pantalla en la que se abre.</translation>
    </message>
    <message>
        <source>No apps yet</source>
        <translation>Aún no hay aplicaciones</translation>
    </message>
    <message>
        <source>Add app</source>
        <translation>Añadir aplicación</translation>
    </message>
    <message>
        <source>Open apps</source>
        <translation>Aplicaciones abiertas</translation>
    </message>
    <message>
        <source>Choose from Applications…</source>
        <translation>Elegir entre las aplicaciones…</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Quitar</translation>
    </message>
    <message>
        <source>Action for %1</source>
        <translation>Acción para %1</translation>
    </message>
    <message>
        <source>No internet connection, no data collected</source>
        <translation>Sin conexión a Internet, sin recopilar datos</translation>
    </message>
    <message>
        <source>Only moves windows, never reads them</source>
        <translation>Solo mueve las ventanas, nunca las lee</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Añadir</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Choose Applications</source>
        <translation>Elegir aplicaciones</translation>
    </message>
    <message>
        <source>Search applications</source>
        <translation>Buscar aplicaciones</translation>
    </message>
    <message>
        <source>No matching applications</source>
        <translation>Ninguna aplicación coincide</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Música</translation>
    </message>
    <message>
        <source>Mail</source>
        <translation>Correo</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Notas</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>Calendario</translation>
    </message>
    <message>
        <source>Maps</source>
        <translation>Mapas</translation>
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
        <translation>Calculadora</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Configuración</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; no setting is changed.</source>
        <translation>%1 usa %2. Tessel puede usarlos mientras está abierto; no se cambia ningún ajuste.</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; no setting is changed.</source>
        <translation>Otra app usa %1. Tessel puede usarlos mientras está abierto; no se cambia ningún ajuste.</translation>
    </message>
    <message>
        <source>Other keys for the same keep working: %1.</source>
        <translation>Otras teclas para lo mismo siguen funcionando: %1.</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>%1 usa %2. Tessel puede usarlos mientras está abierto; los ajustes del sistema se cambian durante ese tiempo.</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>Otra app usa %1. Tessel puede usarlos mientras está abierto; los ajustes del sistema se cambian durante ese tiempo.</translation>
    </message>
    <message>
        <source>Use for Tessel</source>
        <translation>Usar para Tessel</translation>
    </message>
    <message>
        <source>Borrowed shortcuts: %1</source>
        <translation>Atajos prestados: %1</translation>
    </message>
    <message>
        <source>Give back</source>
        <translation>Devolver</translation>
    </message>
    <message>
        <source>Tessel is ready</source>
        <translation>Tessel está listo</translation>
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
        <translation>Mayús</translation>
    </message>
    <message>
        <source>Super</source>
        <translation>Super</translation>
    </message>
</context>
</TS>
