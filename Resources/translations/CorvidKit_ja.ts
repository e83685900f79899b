<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>CorvidKit</name>
    <message>
        <source>Open System Settings</source>
        <translation>システム設定を開く</translation>
    </message>
    <message>
        <source>Open at login</source>
        <translation>ログイン時に開く</translation>
    </message>
    <message>
        <source>Private by design</source>
        <translation>プライバシーを守る設計</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>バージョン %1</translation>
    </message>
    <message>
        <source>Check for Updates</source>
        <translation>アップデートを確認</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>A new version may be out</source>
        <translation>新しいバージョンがあるかもしれません</translation>
    </message>
    <message>
        <source>This app never goes online, so it can&apos;t check by itself. Checking on the website takes one click.</source>
        <translation>このアプリはインターネットに接続しないため、自分では確認できません。ウェブサイトではワンクリックで確認できます。</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>確認</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>今はしない</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
</context>
</TS>
