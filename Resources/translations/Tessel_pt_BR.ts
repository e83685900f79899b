<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt_BR" sourcelanguage="en">
<context>
    <name>Tessel</name>
    <message>
        <source>Paused</source>
        <translation>Pausado</translation>
    </message>
    <message>
        <source>Waiting for permission</source>
        <translation>Aguardando permissão</translation>
    </message>
    <message>
        <source>Some shortcuts are taken</source>
        <translation>Alguns atalhos já estão em uso</translation>
    </message>
    <message>
        <source>Active · %lld shortcuts · %lld apps</source>
        <translation>Ativo · %1 · %2</translation>
    </message>
    <message numerus="yes">
        <source>%n shortcuts</source>
        <translation>
            <numerusform>%n atalho</numerusform>
            <numerusform>%n atalhos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n apps</source>
        <translation>
            <numerusform>%n aplicativo</numerusform>
            <numerusform>%n aplicativos</numerusform>
        </translation>
    </message>
    <message>
        <source>Turn off</source>
        <translation>Desativar</translation>
    </message>
    <message>
        <source>Turn on</source>
        <translation>Ativar</translation>
    </message>
    <message>
        <source>Open Tessel</source>
        <translation>Abrir o Tessel</translation>
    </message>
    <message>
        <source>Tessel was updated</source>
        <translation>O Tessel foi atualizado</translation>
    </message>
    <message>
        <source>Restart Tessel</source>
        <translation>Reiniciar o Tessel</translation>
    </message>
    <message>
        <source>This is still the former version. Restart Tessel to use the new one.</source>
        <translation>A versão anterior ainda está em execução. Reinicie o Tessel para usar a nova.</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <translation>Permitir o acesso à Acessibilidade</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>X11</comment>
        <translation>Nenhum gerenciador de janelas</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>compositor</comment>
        <translation>A área de trabalho não responde</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-off</comment>
        <translation>A extensão do shell está desativada</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-login</comment>
        <translation>Encerre a sessão e entre de novo</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-refused</comment>
        <translation>A extensão do shell não funciona</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>code-refused</comment>
        <translation>O Cinnamon não executa o código do Tessel</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>plugins-missing</comment>
        <translation>Falta um plugin do compositor</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>unsupported</comment>
        <translation>Área de trabalho não suportada</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <translation>O macOS exige essa permissão para que um aplicativo mova e redimensione as janelas de outros. Se o Tessel já estiver ativado na lista, selecione-o, clique em − e abra o aplicativo novamente.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>X11</comment>
        <translation>O Tessel pede ao gerenciador de janelas que mova as janelas, mas nenhum que permita isso aos programas está em execução, ou ele não responde. Inicie um e o Tessel continuará sozinho.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>compositor</comment>
        <translation>O Tessel pede à área de trabalho que mova as janelas e não recebe resposta. Quando ela voltar a responder, o Tessel continuará sozinho.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-off</comment>
        <translation>O GNOME só permite que programas movam janelas por meio de uma extensão. A do Tessel está instalada, mas desativada.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-login</comment>
        <translation>O GNOME só permite que programas movam janelas por meio de uma extensão. A do Tessel está instalada e será carregada no próximo início de sessão.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-refused</comment>
        <translation>O GNOME só permite que programas movam janelas por meio de uma extensão e não executa a do Tessel. Talvez ela não seja compatível com esta versão do GNOME.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>code-refused</comment>
        <translation>O Cinnamon só permite que programas movam janelas por meio de código que ele executa para eles, e não executa o do Tessel. O comando “tessel --status” informa o motivo. O Tessel tenta novamente sozinho.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>plugins-missing</comment>
        <translation>O Wayfire só permite que programas movam janelas por meio dos plugins ipc, ipc-rules e command. Adicione-os à linha “plugins” da seção “core” do wayfire.ini, e o Tessel continua sozinho.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>unsupported</comment>
        <translation>O Tessel não conhece um modo de mover janelas nesta área de trabalho. Ele funciona no KDE Plasma, GNOME, Cinnamon, sway, Hyprland e Wayfire, e onde houver um gerenciador de janelas X11.</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Atalhos</translation>
    </message>
    <message>
        <source>Apps</source>
        <translation>Aplicativos</translation>
    </message>
    <message>
        <source>Left half</source>
        <translation>Metade esquerda</translation>
    </message>
    <message>
        <source>Right half</source>
        <translation>Metade direita</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>Centralizar</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>Maximizar</translation>
    </message>
    <message>
        <source>Almost maximize</source>
        <translation>Quase maximizar</translation>
    </message>
    <message>
        <source>Maximize height</source>
        <translation>Maximizar a altura</translation>
    </message>
    <message>
        <source>Another app is already using this shortcut</source>
        <translation>Outro aplicativo já usa este atalho</translation>
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
        <translation>%1 pertence a %3</translation>
    </message>
    <message>
        <source>switches to the workspace on the left</source>
        <translation>alterna para o espaço de trabalho à esquerda</translation>
    </message>
    <message>
        <source>switches to the workspace on the right</source>
        <translation>alterna para o espaço de trabalho à direita</translation>
    </message>
    <message>
        <source>switches to the workspace above</source>
        <translation>alterna para o espaço de trabalho acima</translation>
    </message>
    <message>
        <source>switches to the workspace below</source>
        <translation>alterna para o espaço de trabalho abaixo</translation>
    </message>
    <message>
        <source>shows the desktop</source>
        <translation>mostra a área de trabalho</translation>
    </message>
    <message>
        <source>shows all workspaces</source>
        <translation>mostra todos os espaços de trabalho</translation>
    </message>
    <message>
        <source>shows all windows</source>
        <translation>mostra todas as janelas</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is held in both ways that X11 offers</source>
        <translation>O Tessel não pode tomá-lo emprestado: está em uso das duas formas que o X11 oferece</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: an app, an extension or a part of the desktop has reserved it</source>
        <translation>O Tessel não pode tomá-lo emprestado: um aplicativo, uma extensão ou uma parte da área de trabalho o reservou</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it could not be given back to the desktop</source>
        <translation>O Tessel não pode tomá-lo emprestado: não seria possível devolvê-lo à área de trabalho</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it from this version of the desktop</source>
        <translation>O Tessel não pode tomá-lo emprestado desta versão da área de trabalho</translation>
    </message>
    <message>
        <source>Tessel can borrow it after you log out and in again</source>
        <translation>O Tessel poderá tomá-lo emprestado quando você encerrar a sessão e entrar de novo</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: its line is for one keyboard or one layout only</source>
        <translation>O Tessel não pode tomá-lo emprestado: a linha dele vale só para um teclado ou um layout</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is part of a sequence of keys</source>
        <translation>O Tessel não pode tomá-lo emprestado: ele faz parte de uma sequência de teclas</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the note on whose it is cannot be saved</source>
        <translation>O Tessel não pode tomá-lo emprestado: não é possível salvar a nota de quem ele é</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the desktop does not release it</source>
        <translation>O Tessel não pode tomá-lo emprestado: a área de trabalho não o libera</translation>
    </message>
    <message>
        <source>When these apps open</source>
        <translation>Ao abrir estes aplicativos</translation>
    </message>
    <message>
        <source>Their first window is maximized or centered on the screen it opens on.</source>
        <translation>A primeira janela é maximizada ou centralizada na tela em que é aberta.</translation>
    </message>
    <message>
        <source>No apps yet</source>
        <translation>Nenhum aplicativo ainda</translation>
    </message>
    <message>
        <source>Add app</source>
        <translation>Adicionar aplicativo</translation>
    </message>
    <message>
        <source>Open apps</source>
        <translation>Aplicativos abertos</translation>
    </message>
    <message>
        <source>Choose from Applications…</source>
        <translation>Escolher entre os aplicativos…</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Remover</translation>
    </message>
    <message>
        <source>Action for %1</source>
        <translation>Ação para %1</translation>
    </message>
    <message>
        <source>No internet connection, no data collected</source>
        <translation>Sem acesso à Internet, sem coleta de dados</translation>
    </message>
    <message>
        <source>Only moves windows, never reads them</source>
        <translation>Apenas move as janelas, nunca as lê</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Adicionar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Choose Applications</source>
        <translation>Escolher aplicativos</translation>
    </message>
    <message>
        <source>Search applications</source>
        <translation>Pesquisar aplicativos</translation>
    </message>
    <message>
        <source>No matching applications</source>
        <translation>Nenhum aplicativo correspondente</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Música</translation>
    </message>
    <message>
        <source>Mail</source>
        <translation>E-mail</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Notas</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>Agenda</translation>
    </message>
    <message>
        <source>Maps</source>
        <translation>Mapas</translation>
    </message>
    <message>
        <source>Software</source>
        <translation>Programas</translation>
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
        <translation>Configurações</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; no setting is changed.</source>
        <translation>%1 usa %2. O Tessel pode usá-los enquanto está aberto; nenhuma configuração é alterada.</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; no setting is changed.</source>
        <translation>Outro app usa %1. O Tessel pode usá-los enquanto está aberto; nenhuma configuração é alterada.</translation>
    </message>
    <message>
        <source>Other keys for the same keep working: %1.</source>
        <translation>Outras teclas para o mesmo continuam funcionando: %1.</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>%1 usa %2. O Tessel pode usá-los enquanto está aberto; as configurações do sistema são alteradas durante esse tempo.</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>Outro app usa %1. O Tessel pode usá-los enquanto está aberto; as configurações do sistema são alteradas durante esse tempo.</translation>
    </message>
    <message>
        <source>Use for Tessel</source>
        <translation>Usar no Tessel</translation>
    </message>
    <message>
        <source>Borrowed shortcuts: %1</source>
        <translation>Atalhos emprestados: %1</translation>
    </message>
    <message>
        <source>Give back</source>
        <translation>Devolver</translation>
    </message>
    <message>
        <source>Tessel is ready</source>
        <translation>O Tessel está pronto</translation>
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
