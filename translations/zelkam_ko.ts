<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko">
<context>
    <name>zelkam.mobile.ZelkamMobileContents</name>
    <message>
        <source>FILE_DOWNLOAD_TOAST_MESSAGE</source>
        <translation>다운로드가 완료되었습니다.</translation>
    </message>
</context>
</TS>
