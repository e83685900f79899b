<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko" sourcelanguage="en">
<context>
    <name>Tessel</name>
    <message>
        <source>Paused</source>
        <translation>일시 중지됨</translation>
    </message>
    <message>
        <source>Waiting for permission</source>
        <translation>권한을 기다리는 중</translation>
    </message>
    <message>
        <source>Some shortcuts are taken</source>
        <translation>이미 사용 중인 단축키가 있음</translation>
    </message>
    <message>
        <source>Active · %lld shortcuts · %lld apps</source>
        <translation>켜짐 · %1 · %2</translation>
    </message>
    <message numerus="yes">
        <source>%n shortcuts</source>
        <translation>
            <numerusform>단축키 %n개</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n apps</source>
        <translation>
            <numerusform>앱 %n개</numerusform>
        </translation>
    </message>
    <message>
        <source>Turn off</source>
        <translation>끄기</translation>
    </message>
    <message>
        <source>Turn on</source>
        <translation>켜기</translation>
    </message>
    <message>
        <source>Open Tessel</source>
        <translation>Tessel 열기</translation>
    </message>
    <message>
        <source>Tessel was updated</source>
        <translation>Tessel이 업데이트됨</translation>
    </message>
    <message>
        <source>Restart Tessel</source>
        <translation>Tessel 다시 시작</translation>
    </message>
    <message>
        <source>This is still the former version. Restart Tessel to use the new one.</source>
        <translation>아직 이전 버전이 실행 중입니다. 새 버전을 사용하려면 Tessel을 다시 시작하세요.</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <translation>손쉬운 사용 접근 허용</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>X11</comment>
        <translation>창 관리자를 찾을 수 없음</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>compositor</comment>
        <translation>데스크톱이 응답하지 않음</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-off</comment>
        <translation>셸 확장이 꺼져 있음</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-login</comment>
        <translation>한 번 로그아웃하십시오</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>extension-refused</comment>
        <translation>셸 확장이 작동하지 않음</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>code-refused</comment>
        <translation>Cinnamon이 Tessel의 코드를 실행하지 않음</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>plugins-missing</comment>
        <translation>컴포지터의 플러그인이 없습니다</translation>
    </message>
    <message>
        <source>Allow Accessibility access</source>
        <comment>unsupported</comment>
        <translation>지원하지 않는 데스크톱</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <translation>앱이 다른 앱의 창을 옮기고 크기를 조절하려면 macOS에서 이 권한을 허용해야 합니다. 목록에서 Tessel이 이미 켜져 있으면 선택한 다음 −를 클릭하고 앱을 다시 여십시오.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>X11</comment>
        <translation>Tessel은 창 관리자에 요청하여 창을 옮깁니다. 프로그램의 요청을 받아들이는 창 관리자가 실행 중이 아니거나 응답하지 않습니다. 창 관리자를 시작하면 Tessel이 자동으로 다시 작동합니다.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>compositor</comment>
        <translation>Tessel이 데스크톱에 창을 옮기도록 요청했지만 응답이 없습니다. 데스크톱이 다시 응답하면 Tessel이 자동으로 다시 작동합니다.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-off</comment>
        <translation>GNOME에서는 프로그램이 확장을 통해서만 창을 옮길 수 있습니다. Tessel의 확장은 설치되어 있지만 꺼져 있습니다.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-login</comment>
        <translation>GNOME에서는 프로그램이 확장을 통해서만 창을 옮길 수 있습니다. Tessel의 확장이 설치되었으며 다음에 로그인할 때 로드됩니다.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>extension-refused</comment>
        <translation>GNOME에서는 프로그램이 확장을 통해서만 창을 옮길 수 있는데, Tessel의 확장을 실행하지 못했습니다. 이 GNOME 버전과 맞지 않을 수 있습니다.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>code-refused</comment>
        <translation>Cinnamon에서는 프로그램이 Cinnamon이 대신 실행하는 코드를 통해서만 창을 옮길 수 있는데, Tessel의 코드가 실행되지 않습니다. 이유는 “tessel --status” 명령으로 확인할 수 있습니다. Tessel은 자동으로 다시 시도합니다.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>plugins-missing</comment>
        <translation>Wayfire에서는 ipc, ipc-rules, command 플러그인이 있어야 프로그램이 창을 옮길 수 있습니다. wayfire.ini의 “core” 섹션에 있는 “plugins” 줄에 추가하면 Tessel이 저절로 계속합니다.</translation>
    </message>
    <message>
        <source>macOS requires this permission for an app to move and resize other apps&apos; windows. If Tessel is already turned on in the list, select it, click − and open the app again.</source>
        <comment>unsupported</comment>
        <translation>이 데스크톱에서 창을 옮기는 방법이 없습니다. Tessel은 KDE Plasma, GNOME, Cinnamon, sway, Hyprland, Wayfire와 창 관리자가 있는 X11에서 작동합니다.</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>단축키</translation>
    </message>
    <message>
        <source>Apps</source>
        <translation>앱</translation>
    </message>
    <message>
        <source>Left half</source>
        <translation>왼쪽 절반</translation>
    </message>
    <message>
        <source>Right half</source>
        <translation>오른쪽 절반</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>가운데로</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>최대화</translation>
    </message>
    <message>
        <source>Almost maximize</source>
        <translation>거의 최대화</translation>
    </message>
    <message>
        <source>Maximize height</source>
        <translation>높이 최대화</translation>
    </message>
    <message>
        <source>Another app is already using this shortcut</source>
        <translation>다른 앱에서 이미 이 단축키를 사용하고 있습니다</translation>
    </message>
    <message>
        <source>%1 %2 (%3)</source>
        <translation>%1: %2(%3)</translation>
    </message>
    <message>
        <source>%1: %2 (%3)</source>
        <translation>%1: %2(%3)</translation>
    </message>
    <message>
        <source>%1 belongs to %3</source>
        <translation>%1: %3에서 사용 중</translation>
    </message>
    <message>
        <source>switches to the workspace on the left</source>
        <translation>왼쪽 작업 공간으로 전환</translation>
    </message>
    <message>
        <source>switches to the workspace on the right</source>
        <translation>오른쪽 작업 공간으로 전환</translation>
    </message>
    <message>
        <source>switches to the workspace above</source>
        <translation>위쪽 작업 공간으로 전환</translation>
    </message>
    <message>
        <source>switches to the workspace below</source>
        <translation>아래쪽 작업 공간으로 전환</translation>
    </message>
    <message>
        <source>shows the desktop</source>
        <translation>바탕 화면 보기</translation>
    </message>
    <message>
        <source>shows all workspaces</source>
        <translation>모든 작업 공간 보기</translation>
    </message>
    <message>
        <source>shows all windows</source>
        <translation>모든 창 보기</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is held in both ways that X11 offers</source>
        <translation>Tessel이 빌릴 수 없습니다: X11의 두 가지 방식 모두로 사용 중입니다</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: an app, an extension or a part of the desktop has reserved it</source>
        <translation>Tessel이 빌릴 수 없습니다: 앱, 확장 또는 데스크톱의 일부가 예약했습니다</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it could not be given back to the desktop</source>
        <translation>Tessel이 빌릴 수 없습니다: 데스크톱에 돌려줄 수 없습니다</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it from this version of the desktop</source>
        <translation>이 버전의 데스크톱에서는 Tessel이 빌릴 수 없습니다</translation>
    </message>
    <message>
        <source>Tessel can borrow it after you log out and in again</source>
        <translation>로그아웃한 뒤 다시 로그인하면 Tessel이 빌릴 수 있습니다</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: its line is for one keyboard or one layout only</source>
        <translation>Tessel이 빌릴 수 없습니다: 해당 줄은 키보드 하나 또는 자판 배열 하나에만 적용됩니다</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: it is part of a sequence of keys</source>
        <translation>Tessel이 빌릴 수 없습니다: 연속된 키 입력의 일부입니다</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the note on whose it is cannot be saved</source>
        <translation>Tessel이 빌릴 수 없습니다: 누구의 것인지 적은 기록을 저장할 수 없습니다</translation>
    </message>
    <message>
        <source>Tessel cannot borrow it: the desktop does not release it</source>
        <translation>Tessel이 빌릴 수 없습니다: 데스크톱이 놓아주지 않습니다</translation>
    </message>
    <message>
        <source>When these apps open</source>
        <translation>다음 앱을 열 때</translation>
    </message>
    <message>
        <source>Their first window is maximized or centered on the screen it opens on.</source>
        <translation>첫 번째 창이 열린 화면에서 최대화되거나 가운데에 놓입니다.</translation>
    </message>
    <message>
        <source>No apps yet</source>
        <translation>아직 앱이 없음</translation>
    </message>
    <message>
        <source>Add app</source>
        <translation>앱 추가</translation>
    </message>
    <message>
        <source>Open apps</source>
        <translation>열려 있는 앱</translation>
    </message>
    <message>
        <source>Choose from Applications…</source>
        <translation>앱 목록에서 선택…</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>제거</translation>
    </message>
    <message>
        <source>Action for %1</source>
        <translation>%1에 대한 동작</translation>
    </message>
    <message>
        <source>No internet connection, no data collected</source>
        <translation>인터넷 연결 없음, 데이터 수집 없음</translation>
    </message>
    <message>
        <source>Only moves windows, never reads them</source>
        <translation>창을 옮기기만 하고 내용은 읽지 않음</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>추가</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>취소</translation>
    </message>
    <message>
        <source>Choose Applications</source>
        <translation>앱 선택</translation>
    </message>
    <message>
        <source>Search applications</source>
        <translation>앱 검색</translation>
    </message>
    <message>
        <source>No matching applications</source>
        <translation>일치하는 앱 없음</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>음악</translation>
    </message>
    <message>
        <source>Mail</source>
        <translation>메일</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>메모</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>달력</translation>
    </message>
    <message>
        <source>Maps</source>
        <translation>지도</translation>
    </message>
    <message>
        <source>Software</source>
        <translation>소프트웨어</translation>
    </message>
    <message>
        <source>Terminal</source>
        <translation>터미널</translation>
    </message>
    <message>
        <source>Calculator</source>
        <translation>계산기</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>설정</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; no setting is changed.</source>
        <translation>%1에서 %2을(를) 사용합니다. Tessel이 실행되는 동안 사용할 수 있으며, 설정은 변경되지 않습니다.</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; no setting is changed.</source>
        <translation>다른 앱에서 %1을(를) 사용합니다. Tessel이 실행되는 동안 사용할 수 있으며, 설정은 변경되지 않습니다.</translation>
    </message>
    <message>
        <source>Other keys for the same keep working: %1.</source>
        <translation>같은 동작을 하는 다른 키는 계속 쓸 수 있습니다: %1.</translation>
    </message>
    <message>
        <source>%1 uses %2. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>%1에서 %2을(를) 사용합니다. Tessel이 실행되는 동안 사용할 수 있으며, 그동안 시스템 설정이 변경됩니다.</translation>
    </message>
    <message>
        <source>Another app uses %1. Tessel can have them while it runs; the system settings are changed for that time.</source>
        <translation>다른 앱에서 %1을(를) 사용합니다. Tessel이 실행되는 동안 사용할 수 있으며, 그동안 시스템 설정이 변경됩니다.</translation>
    </message>
    <message>
        <source>Use for Tessel</source>
        <translation>Tessel에서 사용</translation>
    </message>
    <message>
        <source>Borrowed shortcuts: %1</source>
        <translation>빌린 단축키: %1</translation>
    </message>
    <message>
        <source>Give back</source>
        <translation>돌려주기</translation>
    </message>
    <message>
        <source>Tessel is ready</source>
        <translation>Tessel 준비 완료</translation>
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
