<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>Tessel</name>
    <message>
        <source>Paused</source>
        <translation>En pause</translation>
    </message>
    <message>
        <source>Waiting for permission</source>
        <translation>En attente d’autorisation</translation>
    </message>
    <message>
        <source>Some shortcuts are taken</source>
        <translation>Certains raccourcis sont déjà pris</translation>
    </message>
    <message>
        <source>Active · %lld shortcuts · %lld apps</source>
        <translation>Actif · %1 · %2</translation>
    </message>
    <message numerus="yes">
        <source>%n shortcuts</source>
        <translation>
            <numerusform>%n raccourci</numerusform>
            <numerusform>%n raccourcis</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n apps</source>
        <translation>
            <numerusform>%n application</numerusform>
            <numerusform>%n applications</numerusform>
        </translation>
    </message>
    <message>
        <source>Turn off</source>
        <translation>Désactiver</translation>
    </message>
    <message>
        <source>Turn on</source>
        <translation>Activer</translation>
    </message>
    <message>
        <source>Open Tessel</source>
        <translation>Ouvrir Tessel</translation>
    </message>
    <message>
        <source>Tessel was updated</source>
        <translation>Tessel a été mis à jour</translation>
    </message>
    <message>
        <source>Restart Tessel</source>
        <translation>Redémarrer Tessel</translation>
    </message>
    <message>
        <source>This is still the former version. Restart Tessel to use the new one.</source>
        <translation>L’ancienne version est encore en marche. Redémarrez Tessel pour utiliser la nouvelle.</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <translation>Autoriser l’accès à Accessibilité</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>X11</comment>
        <translation>Aucun gestionnaire de fenêtres</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>compositor</comment>
        <translation>Le bureau ne répond pas</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-off</comment>
        <translation>L’extension du shell est désactivée</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-login</comment>
        <translation>Fermez puis rouvrez la session</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-refused</comment>
        <translation>L’extension du shell ne marche pas</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>code-refused</comment>
        <translation>Cinnamon n’exécute pas le code de Tessel</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>plugins-missing</comment>
        <translation>Il manque un greffon au compositeur</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>unsupported</comment>
        <translation>Bureau non pris en charge</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <translation>macOS exige cette autorisation pour qu’une application puisse déplacer et redimensionner les fenêtres des autres. Si Tessel est déjà activé dans la liste, sélectionnez-le, cliquez sur − et ouvrez de nouveau l’application.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>X11</comment>
        <translation>Tessel demande au gestionnaire de fenêtres de déplacer les fenêtres, mais aucun n’est lancé qui le permette aux programmes, ou il ne répond pas. Lancez-en un&#xa0;: Tessel reprendra de lui-même.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>compositor</comment>
        <translation>Tessel demande au bureau de déplacer les fenêtres et n’obtient pas de réponse. Dès que le bureau répondra, Tessel reprendra de lui-même.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-off</comment>
        <translation>GNOME ne laisse les programmes déplacer les fenêtres qu’au moyen d’une extension. Celle de Tessel est installée, mais désactivée.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-login</comment>
        <translation>GNOME ne laisse les programmes déplacer les fenêtres qu’au moyen d’une extension. Celle de Tessel est installée et sera chargée à la prochaine connexion.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-refused</comment>
        <translation>GNOME ne laisse les programmes déplacer les fenêtres qu’au moyen d’une extension et refuse celle de Tessel. Elle n’est peut-être pas compatible avec cette version de GNOME.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>code-refused</comment>
        <translation>Cinnamon ne laisse les programmes déplacer les fenêtres qu’au moyen de code qu’il exécute pour eux, et n’exécute pas celui de Tessel. La commande « tessel --status » en donne la raison. Tessel réessaie de lui-même.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>plugins-missing</comment>
        <translation>Wayfire ne laisse les programmes déplacer les fenêtres que par ses greffons ipc, ipc-rules et command. Ajoutez-les à la ligne « plugins » de la section « core » de wayfire.ini, et Tessel reprend de lui-même.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>unsupported</comment>
        <translation>Tessel ne connaît aucun moyen de déplacer les fenêtres sur ce bureau. Il fonctionne avec KDE Plasma, GNOME, Cinnamon, sway, Hyprland et Wayfire, et partout où un gestionnaire de fenêtres X11 est lancé.</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Raccourcis</translation>
    </message>
    <message>
        <source>Apps</source>
        <translation>Applications</translation>
    </message>
    <message>
        <source>Left half</source>
        <translation>Moitié gauche</translation>
    </message>
    <message>
        <source>Right half</source>
        <translation>Moitié droite</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>Centrer</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>Maximiser</translation>
    </message>
    <message>
        <source>Almost maximize</source>
        <translation>Presque maximiser</translation>
    </message>
    <message>
        <source>Maximize height</source>
        <translation>Maximiser la hauteur</translation>
    </message>
    <message>
        <source>Another app is already using this shortcut</source>
        <translation>Une autre application utilise déjà ce raccourci</translation>
    </message>
    <message>
        <source>%1 %2 (%3)</source>
        <translation>%1 %2 (%3)</translation>
    </message>
    <message>
        <source>%1: %2 (%3)</source>
        <translation>%1 : %2 (%3)</translation>
    </message>
    <message>
        <source>%1 belongs to %3</source>
        <translation>%1 appartient à %3</translation>
    </message>
    <message>
        <source>switches to the workspace on the left</source>
        <translation>passe à l’espace de travail de gauche</translation>
    </message>
    <message>
        <source>switches to the workspace on the right</source>
        <translation>passe à l’espace de travail de droite</translation>
    </message>
    <message>
        <source>switches to the workspace above</source>
        <translation>passe à l’espace de travail du dessus</translation>
    </message>
    <message>
        <source>switches to the workspace below</source>
        <translation>passe à l’espace de travail du dessous</translation>
    </message>
    <message>
        <source>shows the desktop</source>
        <translation>affiche le bureau</translation>
    </message>
    <message>
        <source>shows all workspaces</source>
        <translation>affiche tous les espaces de travail</translation>
    </message>
    <message>
        <source>shows all windows</source>
        <translation>affiche toutes les fenêtres</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is held in both ways that X11 offers</source>
        <translation>Tessel ne peut pas l’emprunter : il est pris des deux façons que X11 permet</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: an app, an extension or a part of the desktop has reserved it</source>
        <translation>Tessel ne peut pas l’emprunter : une application, une extension ou une partie du bureau l’a réservé</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it could not be given back to the desktop</source>
        <translation>Tessel ne peut pas l’emprunter : il ne pourrait pas être rendu au bureau</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it from this version of the desktop</source>
        <translation>Tessel ne peut pas l’emprunter à cette version du bureau</translation>
    </message>
    <message>
        <source>Tessel can borrow it after you log out and in again</source>
        <translation>Tessel pourra l’emprunter quand vous aurez fermé puis rouvert la session</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: its line is for one keyboard or one layout only</source>
        <translation>Tessel ne peut pas l’emprunter : sa ligne ne vaut que pour un clavier ou une disposition</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is part of a sequence of keys</source>
        <translation>Tessel ne peut pas l’emprunter : il fait partie d’une suite de touches</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the note on whose it is cannot be saved</source>
        <translation>Tessel ne peut pas l’emprunter : la note disant à qui il est ne peut pas être enregistrée</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the desktop does not release it</source>
        <translation>Tessel ne peut pas l’emprunter : le bureau ne le libère pas</translation>
    </message>
    <message>
        <source>When these apps open</source>
        <translation>À l’ouverture de ces applications</translation>
    </message>
    <message>
        <source>Their first window is maximized or centered on the screen it opens on.</source>
        <translation>Leur première fenêtre est maximisée ou centrée sur l’écran où elle s’ouvre.</translation>
    </message>
    <message>
        <source>No apps yet</source>
        <translation>Aucune application pour l’instant</translation>
    </message>
    <message>
        <source>Add app</source>
        <translation>Ajouter une application</translation>
    </message>
    <message>
        <source>Open apps</source>
        <translation>Applications ouvertes</translation>
    </message>
    <message>
        <source>Choose from Applications…</source>
        <translation>Choisir parmi les applications…</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Retirer</translation>
    </message>
    <message>
        <source>Action for %1</source>
        <translation>Action pour %1</translation>
    </message>
    <message>
        <source>No internet connection, no data collected</source>
        <translation>Ni connexion Internet, ni collecte de données</translation>
    </message>
    <message>
        <source>Only moves windows, never reads them</source>
        <translation>Déplace seulement les fenêtres, ne les lit pas</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Ajouter</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Choose Applications</source>
        <translation>Choisir des applications</translation>
    </message>
    <message>
        <source>Search applications</source>
        <translation>Rechercher des applications</translation>
    </message>
    <message>
        <source>No matching applications</source>
        <translation>Aucune application correspondante</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Musique</translation>
    </message>
    <message>
        <source>Mail</source>
        <translation>Courriel</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Notes</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>Agenda</translation>
    </message>
    <message>
        <source>Maps</source>
        <translation>Cartes</translation>
    </message>
    <message>
        <source>Software</source>
        <translation>Logiciels</translation>
    </message>
    <message>
        <source>Terminal</source>
        <translation>Terminal</translation>
    </message>
    <message>
        <source>Calculator</source>
        <translation>Calculatrice</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; no setting is changed.</source>
        <translation>%1 utilise %2. Tessel peut s’en servir tant qu’il est ouvert ; aucun réglage n’est modifié.</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; no setting is changed.</source>
        <translation>Une autre app utilise %1. Tessel peut s’en servir tant qu’il est ouvert ; aucun réglage n’est modifié.</translation>
    </message>
    <message>
        <source>Other keys for the same keep working: %1.</source>
        <translation>D’autres touches pour la même chose restent actives : %1.</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>%1 utilise %2. Tessel peut s’en servir tant qu’il est ouvert ; les réglages du système sont modifiés pendant ce temps.</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>Une autre app utilise %1. Tessel peut s’en servir tant qu’il est ouvert ; les réglages du système sont modifiés pendant ce temps.</translation>
    </message>
    <message>
        <source>Use for Tessel</source>
        <translation>Utiliser pour Tessel</translation>
    </message>
    <message>
        <source>Borrowed shortcuts: %1</source>
        <translation>Raccourcis empruntés : %1</translation>
    </message>
    <message>
        <source>Give back</source>
        <translation>Rendre</translation>
    </message>
    <message>
        <source>Tessel is ready</source>
        <translation>Tessel est prêt</translation>
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
        <translation>Maj</translation>
    </message>
    <message>
        <source>Super</source>
        <translation>Super</translation>
    </message>
</context>
</TS>
