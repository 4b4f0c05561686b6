<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="cs">
<context>
    <name>Morvex</name>
    <message><source>Otevřít nastavení</source><translation>Open Settings</translation></message>
</context>
</TS>
