<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>CorvidKit</name>
    <message>
        <source>Open System Settings</source>
        <translation>打开系统设置</translation>
    </message>
    <message>
        <source>Open at login</source>
        <translation>登录时打开</translation>
    </message>
    <message>
        <source>Private by design</source>
        <translation>为隐私而设计</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>版本 %1</translation>
    </message>
    <message>
        <source>Check for Updates</source>
        <translation>检查更新</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>A new version may be out</source>
        <translation>可能有新版本</translation>
    </message>
    <message>
        <source>This app never goes online, so it can&apos;t check by itself. Checking on the website takes one click.</source>
        <translation>此应用从不联网，因此无法自行检查。在网站上查看只需点击一下。</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>检查</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>暂不</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
</context>
</TS>
