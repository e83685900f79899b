<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>Tessel</name>
    <message>
        <source>Paused</source>
        <translation>一時停止中</translation>
    </message>
    <message>
        <source>Waiting for permission</source>
        <translation>許可を待っています</translation>
    </message>
    <message>
        <source>Some shortcuts are taken</source>
        <translation>使用中のショートカットがあります</translation>
    </message>
    <message>
        <source>Active · %lld shortcuts · %lld apps</source>
        <translation>有効 · %1 · %2</translation>
    </message>
    <message numerus="yes">
        <source>%n shortcuts</source>
        <translation>
            <numerusform>ショートカット %n 個</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n apps</source>
        <translation>
            <numerusform>アプリ %n 個</numerusform>
        </translation>
    </message>
    <message>
        <source>Turn off</source>
        <translation>オフにする</translation>
    </message>
    <message>
        <source>Turn on</source>
        <translation>オンにする</translation>
    </message>
    <message>
        <source>Open Tessel</source>
        <translation>Tessel を開く</translation>
    </message>
    <message>
        <source>Tessel was updated</source>
        <translation>Tessel がアップデートされました</translation>
    </message>
    <message>
        <source>Restart Tessel</source>
        <translation>Tessel を再起動</translation>
    </message>
    <message>
        <source>This is still the former version. Restart Tessel to use the new one.</source>
        <translation>まだ以前のバージョンが動作しています。新しいバージョンを使うには Tessel を再起動してください。</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <translation>アクセシビリティへのアクセスを許可</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>X11</comment>
        <translation>ウィンドウマネージャーがありません</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>compositor</comment>
        <translation>デスクトップの応答がありません</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-off</comment>
        <translation>シェルの拡張機能がオフです</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-login</comment>
        <translation>一度ログアウトしてください</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-refused</comment>
        <translation>シェルの拡張機能が動作しません</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>code-refused</comment>
        <translation>Cinnamon が Tessel のコードを実行しません</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>plugins-missing</comment>
        <translation>コンポジターのプラグインがありません</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>unsupported</comment>
        <translation>対応していないデスクトップです</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <translation>アプリがほかのアプリのウィンドウを移動したりサイズを変更したりするには、macOS のこの許可が必要です。リストで Tessel がすでにオンになっている場合は、選択して − をクリックし、アプリを開き直してください。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>X11</comment>
        <translation>Tessel はウィンドウマネージャーに依頼してウィンドウを動かします。プログラムからの操作を受け付けるものが動作していないか、応答がありません。ウィンドウマネージャーを起動すると、Tessel は自動的に再開します。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>compositor</comment>
        <translation>Tessel はデスクトップに依頼してウィンドウを動かしますが、応答がありません。応答が戻ると、Tessel は自動的に再開します。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-off</comment>
        <translation>GNOME では、プログラムは拡張機能を通してのみウィンドウを動かせます。Tessel の拡張機能はインストールされていますが、オフになっています。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-login</comment>
        <translation>GNOME では、プログラムは拡張機能を通してのみウィンドウを動かせます。Tessel の拡張機能はインストール済みで、次のログイン時に読み込まれます。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-refused</comment>
        <translation>GNOME では、プログラムは拡張機能を通してのみウィンドウを動かせますが、Tessel の拡張機能の実行が拒否されました。このバージョンの GNOME に対応していない可能性があります。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>code-refused</comment>
        <translation>Cinnamon では、プログラムは Cinnamon が実行するコードを通してのみウィンドウを動かせますが、Tessel のコードが実行されません。理由はコマンド「tessel --status」で表示されます。Tessel は自動的に再試行します。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>plugins-missing</comment>
        <translation>Wayfire では、プラグイン ipc、ipc-rules、command がないとプログラムからウィンドウを動かせません。wayfire.ini のセクション「core」の行「plugins」に追加すると、Tessel は自動的に続行します。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>unsupported</comment>
        <translation>このデスクトップでウィンドウを動かす方法がありません。Tessel は KDE Plasma、GNOME、Cinnamon、sway、Hyprland、Wayfire、およびウィンドウマネージャーのある X11 で動作します。</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>ショートカット</translation>
    </message>
    <message>
        <source>Apps</source>
        <translation>アプリ</translation>
    </message>
    <message>
        <source>Left half</source>
        <translation>左半分</translation>
    </message>
    <message>
        <source>Right half</source>
        <translation>右半分</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>中央に配置</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>最大化</translation>
    </message>
    <message>
        <source>Almost maximize</source>
        <translation>ほぼ最大化</translation>
    </message>
    <message>
        <source>Maximize height</source>
        <translation>高さを最大化</translation>
    </message>
    <message>
        <source>Another app is already using this shortcut</source>
        <translation>ほかのアプリがこのショートカットを使用しています</translation>
    </message>
    <message>
        <source>%1 %2 (%3)</source>
        <translation>%1: %2（%3）</translation>
    </message>
    <message>
        <source>%1: %2 (%3)</source>
        <translation>%1: %2（%3）</translation>
    </message>
    <message>
        <source>%1 belongs to %3</source>
        <translation>%1 は %3 が使用しています</translation>
    </message>
    <message>
        <source>switches to the workspace on the left</source>
        <translation>左のワークスペースに切り替えます</translation>
    </message>
    <message>
        <source>switches to the workspace on the right</source>
        <translation>右のワークスペースに切り替えます</translation>
    </message>
    <message>
        <source>switches to the workspace above</source>
        <translation>上のワークスペースに切り替えます</translation>
    </message>
    <message>
        <source>switches to the workspace below</source>
        <translation>下のワークスペースに切り替えます</translation>
    </message>
    <message>
        <source>shows the desktop</source>
        <translation>デスクトップを表示します</translation>
    </message>
    <message>
        <source>shows all workspaces</source>
        <translation>すべてのワークスペースを表示します</translation>
    </message>
    <message>
        <source>shows all windows</source>
        <translation>すべてのウィンドウを表示します</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is held in both ways that X11 offers</source>
        <translation>Tessel では借りられません：X11 の 2 つの方法の両方で使われています</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: an app, an extension or a part of the desktop has reserved it</source>
        <translation>Tessel では借りられません：アプリ、拡張機能またはデスクトップの一部が予約しています</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it could not be given back to the desktop</source>
        <translation>Tessel では借りられません：デスクトップに返すことができません</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it from this version of the desktop</source>
        <translation>このバージョンのデスクトップからは借りられません</translation>
    </message>
    <message>
        <source>Tessel can borrow it after you log out and in again</source>
        <translation>一度ログアウトして再びログインすると、Tessel で借りられます</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: its line is for one keyboard or one layout only</source>
        <translation>Tessel では借りられません：この行は 1 つのキーボードまたは 1 つのレイアウト専用です</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is part of a sequence of keys</source>
        <translation>Tessel では借りられません：連続するキー操作の一部です</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the note on whose it is cannot be saved</source>
        <translation>Tessel では借りられません：だれのものかの記録を保存できません</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the desktop does not release it</source>
        <translation>Tessel では借りられません：デスクトップが解放しません</translation>
    </message>
    <message>
        <source>When these apps open</source>
        <translation>これらのアプリを開いたとき</translation>
    </message>
    <message>
        <source>Their first window is maximized or centered on the screen it opens on.</source>
        <translation>最初のウィンドウを開いた画面で最大化か中央に配置</translation>
    </message>
    <message>
        <source>No apps yet</source>
        <translation>アプリはまだありません</translation>
    </message>
    <message>
        <source>Add app</source>
        <translation>アプリを追加</translation>
    </message>
    <message>
        <source>Open apps</source>
        <translation>開いているアプリ</translation>
    </message>
    <message>
        <source>Choose from Applications…</source>
        <translation>アプリケーションから選択…</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Action for %1</source>
        <translation>%1 の操作</translation>
    </message>
    <message>
        <source>No internet connection, no data collected</source>
        <translation>インターネット接続なし、データ収集なし</translation>
    </message>
    <message>
        <source>Only moves windows, never reads them</source>
        <translation>ウィンドウを動かすだけ、内容は読みません</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>追加</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Choose Applications</source>
        <translation>アプリケーションを選択</translation>
    </message>
    <message>
        <source>Search applications</source>
        <translation>アプリケーションを検索</translation>
    </message>
    <message>
        <source>No matching applications</source>
        <translation>一致するアプリケーションはありません</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>ミュージック</translation>
    </message>
    <message>
        <source>Mail</source>
        <translation>メール</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>メモ</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>カレンダー</translation>
    </message>
    <message>
        <source>Maps</source>
        <translation>地図</translation>
    </message>
    <message>
        <source>Software</source>
        <translation>ソフトウェア</translation>
    </message>
    <message>
        <source>Terminal</source>
        <translation>端末</translation>
    </message>
    <message>
        <source>Calculator</source>
        <translation>電卓</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; no setting is changed.</source>
        <translation>%1 が %2 を使っています。Tessel の動作中は Tessel で使えます。設定は変更されません。</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; no setting is changed.</source>
        <translation>別のアプリが %1 を使っています。Tessel の動作中は Tessel で使えます。設定は変更されません。</translation>
    </message>
    <message>
        <source>Other keys for the same keep working: %1.</source>
        <translation>同じ操作の別のキーは引き続き使えます：%1</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>%1 が %2 を使っています。Tessel の動作中は Tessel で使えます。その間、システムの設定が変更されます。</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>別のアプリが %1 を使っています。Tessel の動作中は Tessel で使えます。その間、システムの設定が変更されます。</translation>
    </message>
    <message>
        <source>Use for Tessel</source>
        <translation>Tessel で使う</translation>
    </message>
    <message>
        <source>Borrowed shortcuts: %1</source>
        <translation>借りているショートカット: %1</translation>
    </message>
    <message>
        <source>Give back</source>
        <translation>返す</translation>
    </message>
    <message>
        <source>Tessel is ready</source>
        <translation>Tessel の準備ができました</translation>
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
