<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es">
<context>
    <name>zelkam.mobile.ZelkamMobileContents</name>
    <message>
        <source>FILE_DOWNLOAD_TOAST_MESSAGE</source>
        <translation>se ha descargado.</translation>
    </message>
</context>
</TS>
