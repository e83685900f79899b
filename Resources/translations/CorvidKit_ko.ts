<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko" sourcelanguage="en">
<context>
    <name>CorvidKit</name>
    <message>
        <source>Open System Settings</source>
        <translation>시스템 설정 열기</translation>
    </message>
    <message>
        <source>Open at login</source>
        <translation>로그인할 때 열기</translation>
    </message>
    <message>
        <source>Private by design</source>
        <translation>개인 정보를 지키는 설계</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>버전 %1</translation>
    </message>
    <message>
        <source>Check for Updates</source>
        <translation>업데이트 확인</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>끝내기</translation>
    </message>
    <message>
        <source>A new version may be out</source>
        <translation>새 버전이 나왔을 수 있음</translation>
    </message>
    <message>
        <source>This app never goes online, so it can&apos;t check by itself. Checking on the website takes one click.</source>
        <translation>이 앱은 인터넷에 연결하지 않아 직접 확인할 수 없습니다. 웹사이트에서 클릭 한 번이면 됩니다.</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>확인</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>나중에</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
</context>
</TS>
