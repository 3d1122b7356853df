<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>zelkam.mobile.ZelkamMobileContents</name>
    <message>
        <source>FILE_DOWNLOAD_TOAST_MESSAGE</source>
        <translation>has been downloaded.</translation>
    </message>
</context>
</TS>
