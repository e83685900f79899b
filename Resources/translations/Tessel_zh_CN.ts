<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>Tessel</name>
    <message>
        <source>Paused</source>
        <translation>已暂停</translation>
    </message>
    <message>
        <source>Waiting for permission</source>
        <translation>正在等待授权</translation>
    </message>
    <message>
        <source>Some shortcuts are taken</source>
        <translation>部分快捷键已被占用</translation>
    </message>
    <message>
        <source>Active · %lld shortcuts · %lld apps</source>
        <translation>已启用 · %1 · %2</translation>
    </message>
    <message numerus="yes">
        <source>%n shortcuts</source>
        <translation>
            <numerusform>%n 个快捷键</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n apps</source>
        <translation>
            <numerusform>%n 个应用</numerusform>
        </translation>
    </message>
    <message>
        <source>Turn off</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Turn on</source>
        <translation>开启</translation>
    </message>
    <message>
        <source>Open Tessel</source>
        <translation>打开 Tessel</translation>
    </message>
    <message>
        <source>Tessel was updated</source>
        <translation>Tessel 已更新</translation>
    </message>
    <message>
        <source>Restart Tessel</source>
        <translation>重新启动 Tessel</translation>
    </message>
    <message>
        <source>This is still the former version. Restart Tessel to use the new one.</source>
        <translation>仍在运行旧版本，重启 Tessel 即可使用新版本。</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <translation>允许辅助功能访问</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>X11</comment>
        <translation>未找到窗口管理器</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>compositor</comment>
        <translation>桌面没有响应</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-off</comment>
        <translation>Shell 扩展已关闭</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-login</comment>
        <translation>请注销后重新登录</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-refused</comment>
        <translation>Shell 扩展无法运行</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>code-refused</comment>
        <translation>Cinnamon 未运行 Tessel 的代码</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>plugins-missing</comment>
        <translation>缺少合成器的插件</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>unsupported</comment>
        <translation>不支持此桌面</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <translation>macOS 要求授予此权限，应用才能移动其他应用的窗口并调整其大小。如果 Tessel 在列表中已开启，请选中它，点击 −，然后重新打开应用。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>X11</comment>
        <translation>Tessel 通过窗口管理器移动窗口，但没有允许程序这样做的窗口管理器在运行，或者它没有响应。启动一个窗口管理器后，Tessel 会自动继续。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>compositor</comment>
        <translation>Tessel 请求桌面移动窗口，但没有得到响应。桌面恢复响应后，Tessel 会自动继续。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-off</comment>
        <translation>GNOME 只允许程序通过扩展移动窗口。Tessel 的扩展已安装，但处于关闭状态。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-login</comment>
        <translation>GNOME 只允许程序通过扩展移动窗口。Tessel 的扩展已安装，将在下次登录时加载。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-refused</comment>
        <translation>GNOME 只允许程序通过扩展移动窗口，但拒绝运行 Tessel 的扩展。它可能不适用于此版本的 GNOME。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>code-refused</comment>
        <translation>Cinnamon 只允许程序通过由它运行的代码移动窗口，但没有运行 Tessel 的代码。命令“tessel --status”会说明原因。Tessel 会自动重试。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>plugins-missing</comment>
        <translation>Wayfire 只允许程序通过其插件 ipc、ipc-rules 和 command 移动窗口。请将它们添加到 wayfire.ini 的“core”部分的“plugins”一行，Tessel 会自动继续。</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>unsupported</comment>
        <translation>Tessel 无法在此桌面上移动窗口。它可在 KDE Plasma、GNOME、Cinnamon、sway、Hyprland、Wayfire 以及有窗口管理器的 X11 桌面上使用。</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>快捷键</translation>
    </message>
    <message>
        <source>Apps</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Left half</source>
        <translation>左半屏</translation>
    </message>
    <message>
        <source>Right half</source>
        <translation>右半屏</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>居中</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>最大化</translation>
    </message>
    <message>
        <source>Almost maximize</source>
        <translation>接近最大化</translation>
    </message>
    <message>
        <source>Maximize height</source>
        <translation>最大化高度</translation>
    </message>
    <message>
        <source>Another app is already using this shortcut</source>
        <translation>其他应用已在使用此快捷键</translation>
    </message>
    <message>
        <source>%1 %2 (%3)</source>
        <translation>%1：%2（%3）</translation>
    </message>
    <message>
        <source>%1: %2 (%3)</source>
        <translation>%1：%2（%3）</translation>
    </message>
    <message>
        <source>%1 belongs to %3</source>
        <translation>%1 已被 %3 占用</translation>
    </message>
    <message>
        <source>switches to the workspace on the left</source>
        <translation>切换到左侧的工作区</translation>
    </message>
    <message>
        <source>switches to the workspace on the right</source>
        <translation>切换到右侧的工作区</translation>
    </message>
    <message>
        <source>switches to the workspace above</source>
        <translation>切换到上方的工作区</translation>
    </message>
    <message>
        <source>switches to the workspace below</source>
        <translation>切换到下方的工作区</translation>
    </message>
    <message>
        <source>shows the desktop</source>
        <translation>显示桌面</translation>
    </message>
    <message>
        <source>shows all workspaces</source>
        <translation>显示所有工作区</translation>
    </message>
    <message>
        <source>shows all windows</source>
        <translation>显示所有窗口</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is held in both ways that X11 offers</source>
        <translation>Tessel 无法借用：X11 的两种占用方式都已被使用</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: an app, an extension or a part of the desktop has reserved it</source>
        <translation>Tessel 无法借用：某个应用、扩展或 桌面的一部分已将其保留</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it could not be given back to the desktop</source>
        <translation>Tessel 无法借用：无法再归还给桌面</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it from this version of the desktop</source>
        <translation>Tessel 无法从此版本的桌面借用</translation>
    </message>
    <message>
        <source>Tessel can borrow it after you log out and in again</source>
        <translation>注销并重新登录后，Tessel 可以借用</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: its line is for one keyboard or one layout only</source>
        <translation>Tessel 无法借用：该行只用于某个键盘或某个布局</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is part of a sequence of keys</source>
        <translation>Tessel 无法借用：它是一串按键的一部分</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the note on whose it is cannot be saved</source>
        <translation>Tessel 无法借用：无法保存其归属的记录</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the desktop does not release it</source>
        <translation>Tessel 无法借用：桌面没有释放它</translation>
    </message>
    <message>
        <source>When these apps open</source>
        <translation>打开这些应用时</translation>
    </message>
    <message>
        <source>Their first window is maximized or centered on the screen it opens on.</source>
        <translation>其首个窗口会在打开时所在的屏幕上最大化或居中。</translation>
    </message>
    <message>
        <source>No apps yet</source>
        <translation>尚无应用</translation>
    </message>
    <message>
        <source>Add app</source>
        <translation>添加应用</translation>
    </message>
    <message>
        <source>Open apps</source>
        <translation>已打开的应用</translation>
    </message>
    <message>
        <source>Choose from Applications…</source>
        <translation>从应用列表中选择…</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>移除</translation>
    </message>
    <message>
        <source>Action for %1</source>
        <translation>%1 的操作</translation>
    </message>
    <message>
        <source>No internet connection, no data collected</source>
        <translation>不连接互联网，不收集数据</translation>
    </message>
    <message>
        <source>Only moves windows, never reads them</source>
        <translation>只移动窗口，绝不读取内容</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Choose Applications</source>
        <translation>选择应用</translation>
    </message>
    <message>
        <source>Search applications</source>
        <translation>搜索应用</translation>
    </message>
    <message>
        <source>No matching applications</source>
        <translation>没有匹配的应用</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>音乐</translation>
    </message>
    <message>
        <source>Mail</source>
        <translation>邮件</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>笔记</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>日历</translation>
    </message>
    <message>
        <source>Maps</source>
        <translation>地图</translation>
    </message>
    <message>
        <source>Software</source>
        <translation>软件</translation>
    </message>
    <message>
        <source>Terminal</source>
        <translation>终端</translation>
    </message>
    <message>
        <source>Calculator</source>
        <translation>计算器</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; no setting is changed.</source>
        <translation>%1 正在使用 %2。Tessel 运行时可以使用它们，不会更改任何设置。</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; no setting is changed.</source>
        <translation>其他应用正在使用 %1。Tessel 运行时可以使用它们，不会更改任何设置。</translation>
    </message>
    <message>
        <source>Other keys for the same keep working: %1.</source>
        <translation>执行相同操作的其他按键仍然可用：%1。</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>%1 正在使用 %2。Tessel 运行时可以使用它们，其间会更改系统设置。</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>其他应用正在使用 %1。Tessel 运行时可以使用它们，其间会更改系统设置。</translation>
    </message>
    <message>
        <source>Use for Tessel</source>
        <translation>用于 Tessel</translation>
    </message>
    <message>
        <source>Borrowed shortcuts: %1</source>
        <translation>已借用的快捷键：%1</translation>
    </message>
    <message>
        <source>Give back</source>
        <translation>归还</translation>
    </message>
    <message>
        <source>Tessel is ready</source>
        <translation>Tessel 已就绪</translation>
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
