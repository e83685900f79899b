<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it" sourcelanguage="en">
<context>
    <name>Tessel</name>
    <message>
        <source>Paused</source>
        <translation>In pausa</translation>
    </message>
    <message>
        <source>Waiting for permission</source>
        <translation>In attesa del permesso</translation>
    </message>
    <message>
        <source>Some shortcuts are taken</source>
        <translation>Alcune scorciatoie sono già in uso</translation>
    </message>
    <message>
        <source>Active · %lld shortcuts · %lld apps</source>
        <translation>Attivo · %1 · %2</translation>
    </message>
    <message numerus="yes">
        <source>%n shortcuts</source>
        <translation>
            <numerusform>%n scorciatoia</numerusform>
            <numerusform>%n scorciatoie</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n apps</source>
        <translation>
            <numerusform>%n applicazione</numerusform>
            <numerusform>%n applicazioni</numerusform>
        </translation>
    </message>
    <message>
        <source>Turn off</source>
        <translation>Disattiva</translation>
    </message>
    <message>
        <source>Turn on</source>
        <translation>Attiva</translation>
    </message>
    <message>
        <source>Open Tessel</source>
        <translation>Apri Tessel</translation>
    </message>
    <message>
        <source>Tessel was updated</source>
        <translation>Tessel è stato aggiornato</translation>
    </message>
    <message>
        <source>Restart Tessel</source>
        <translation>Riavvia Tessel</translation>
    </message>
    <message>
        <source>This is still the former version. Restart Tessel to use the new one.</source>
        <translation>È ancora in esecuzione la versione precedente. Riavviare Tessel per usare quella nuova.</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <translation>Consenti l’accesso ad Accessibilità</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>X11</comment>
        <translation>Nessun gestore di finestre</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>compositor</comment>
        <translation>Il desktop non risponde</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-off</comment>
        <translation>L’estensione della shell è disattivata</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-login</comment>
        <translation>Terminare e riaprire la sessione</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-refused</comment>
        <translation>L’estensione della shell non funziona</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>code-refused</comment>
        <translation>Cinnamon non esegue il codice di Tessel</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>plugins-missing</comment>
        <translation>Manca un plugin del compositor</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>unsupported</comment>
        <translation>Desktop non supportato</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <translation>macOS richiede questo permesso perché un’applicazione possa spostare e ridimensionare le finestre delle altre. Se Tessel è già attivo nell’elenco, selezionarlo, fare clic su − e riaprire l’applicazione.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>X11</comment>
        <translation>Tessel chiede al gestore di finestre di spostare le finestre, ma non ne è in esecuzione nessuno che lo consenta ai programmi, oppure non risponde. Avviarne uno: Tessel riprenderà da solo.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>compositor</comment>
        <translation>Tessel chiede al desktop di spostare le finestre e non riceve risposta. Quando il desktop risponderà di nuovo, Tessel riprenderà da solo.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-off</comment>
        <translation>GNOME consente ai programmi di spostare le finestre solo tramite un’estensione. Quella di Tessel è installata, ma disattivata.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-login</comment>
        <translation>GNOME consente ai programmi di spostare le finestre solo tramite un’estensione. Quella di Tessel è installata e sarà caricata al prossimo accesso.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-refused</comment>
        <translation>GNOME consente ai programmi di spostare le finestre solo tramite un’estensione e rifiuta quella di Tessel. Forse non è adatta a questa versione di GNOME.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>code-refused</comment>
        <translation>Cinnamon consente ai programmi di spostare le finestre solo tramite codice che esegue per loro, e non esegue quello di Tessel. Il comando «tessel --status» ne indica il motivo. Tessel riprova da solo.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>plugins-missing</comment>
        <translation>Wayfire consente ai programmi di spostare le finestre solo tramite i suoi plugin ipc, ipc-rules e command. Aggiungili alla riga «plugins» della sezione «core» di wayfire.ini e Tessel prosegue da solo.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>unsupported</comment>
        <translation>Tessel non conosce un modo per spostare le finestre su questo desktop. Funziona con KDE Plasma, GNOME, Cinnamon, sway, Hyprland e Wayfire, e ovunque ci sia un gestore di finestre X11.</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Scorciatoie</translation>
    </message>
    <message>
        <source>Apps</source>
        <translation>Applicazioni</translation>
    </message>
    <message>
        <source>Left half</source>
        <translation>Metà sinistra</translation>
    </message>
    <message>
        <source>Right half</source>
        <translation>Metà destra</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>Centra</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>Massimizza</translation>
    </message>
    <message>
        <source>Almost maximize</source>
        <translation>Massimizza quasi del tutto</translation>
    </message>
    <message>
        <source>Maximize height</source>
        <translation>Massimizza in altezza</translation>
    </message>
    <message>
        <source>Another app is already using this shortcut</source>
        <translation>Un’altra applicazione usa già questa scorciatoia</translation>
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
        <translation>%1 appartiene a %3</translation>
    </message>
    <message>
        <source>switches to the workspace on the left</source>
        <translation>passa allo spazio di lavoro a sinistra</translation>
    </message>
    <message>
        <source>switches to the workspace on the right</source>
        <translation>passa allo spazio di lavoro a destra</translation>
    </message>
    <message>
        <source>switches to the workspace above</source>
        <translation>passa allo spazio di lavoro sopra</translation>
    </message>
    <message>
        <source>switches to the workspace below</source>
        <translation>passa allo spazio di lavoro sotto</translation>
    </message>
    <message>
        <source>shows the desktop</source>
        <translation>mostra la scrivania</translation>
    </message>
    <message>
        <source>shows all workspaces</source>
        <translation>mostra tutti gli spazi di lavoro</translation>
    </message>
    <message>
        <source>shows all windows</source>
        <translation>mostra tutte le finestre</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is held in both ways that X11 offers</source>
        <translation>Tessel non può prenderla in prestito: è occupata in entrambi i modi previsti da X11</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: an app, an extension or a part of the desktop has reserved it</source>
        <translation>Tessel non può prenderla in prestito: è riservata da un’applicazione, un’estensione o una parte del desktop</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it could not be given back to the desktop</source>
        <translation>Tessel non può prenderla in prestito: non si potrebbe restituire al desktop</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it from this version of the desktop</source>
        <translation>Tessel non può prenderla in prestito da questa versione del desktop</translation>
    </message>
    <message>
        <source>Tessel can borrow it after you log out and in again</source>
        <translation>Tessel potrà prenderla in prestito dopo aver terminato e riaperto la sessione</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: its line is for one keyboard or one layout only</source>
        <translation>Tessel non può prenderla in prestito: la sua riga vale solo per una tastiera o una disposizione</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is part of a sequence of keys</source>
        <translation>Tessel non può prenderla in prestito: fa parte di una sequenza di tasti</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the note on whose it is cannot be saved</source>
        <translation>Tessel non può prenderla in prestito: non si può salvare la nota su di chi è</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the desktop does not release it</source>
        <translation>Tessel non può prenderla in prestito: il desktop non la rilascia</translation>
    </message>
    <message>
        <source>When these apps open</source>
        <translation>All’apertura di queste applicazioni</translation>
    </message>
    <message>
        <source>Their first window is maximized or centered on the screen it opens on.</source>
        <translation>La prima finestra viene massimizzata o centrata sullo schermo in cui si apre.</translation>
    </message>
    <message>
        <source>No apps yet</source>
        <translation>Ancora nessuna applicazione</translation>
    </message>
    <message>
        <source>Add app</source>
        <translation>Aggiungi applicazione</translation>
    </message>
    <message>
        <source>Open apps</source>
        <translation>Applicazioni aperte</translation>
    </message>
    <message>
        <source>Choose from Applications…</source>
        <translation>Scegli tra le applicazioni…</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Rimuovi</translation>
    </message>
    <message>
        <source>Action for %1</source>
        <translation>Azione per %1</translation>
    </message>
    <message>
        <source>No internet connection, no data collected</source>
        <translation>Niente Internet, nessun dato raccolto</translation>
    </message>
    <message>
        <source>Only moves windows, never reads them</source>
        <translation>Sposta solo le finestre, non le legge mai</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Aggiungi</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>Choose Applications</source>
        <translation>Scegli le applicazioni</translation>
    </message>
    <message>
        <source>Search applications</source>
        <translation>Cerca applicazioni</translation>
    </message>
    <message>
        <source>No matching applications</source>
        <translation>Nessuna applicazione corrispondente</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Musica</translation>
    </message>
    <message>
        <source>Mail</source>
        <translation>Posta</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Note</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>Calendario</translation>
    </message>
    <message>
        <source>Maps</source>
        <translation>Mappe</translation>
    </message>
    <message>
        <source>Software</source>
        <translation>Software</translation>
    </message>
    <message>
        <source>Terminal</source>
        <translation>Terminale</translation>
    </message>
    <message>
        <source>Calculator</source>
        <translation>Calcolatrice</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Impostazioni</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; no setting is changed.</source>
        <translation>%1 usa %2. Tessel può usarle mentre è aperto; nessuna impostazione viene modificata.</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; no setting is changed.</source>
        <translation>Un’altra applicazione usa %1. Tessel può usarle mentre è aperto; nessuna impostazione viene modificata.</translation>
    </message>
    <message>
        <source>Other keys for the same keep working: %1.</source>
        <translation>Altri tasti per la stessa cosa restano attivi: %1.</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>%1 usa %2. Tessel può usarle mentre è aperto; nel frattempo le impostazioni di sistema vengono modificate.</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>Un’altra applicazione usa %1. Tessel può usarle mentre è aperto; nel frattempo le impostazioni di sistema vengono modificate.</translation>
    </message>
    <message>
        <source>Use for Tessel</source>
        <translation>Usa per Tessel</translation>
    </message>
    <message>
        <source>Borrowed shortcuts: %1</source>
        <translation>Scorciatoie in prestito: %1</translation>
    </message>
    <message>
        <source>Give back</source>
        <translation>Restituisci</translation>
    </message>
    <message>
        <source>Tessel is ready</source>
        <translation>Tessel è pronto</translation>
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
        <translation>Maiusc</translation>
    </message>
    <message>
        <source>Super</source>
        <translation>Super</translation>
    </message>
</context>
</TS>
