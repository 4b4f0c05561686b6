<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="cs">
<context>
    <name>Morvex</name>
    <message>
        <source>Otevřít nastavení</source>
        <translation>Open Settings</translation>
    </message>
    <message>
        <source>Připojuji… (%1. pokus)</source>
        <translation>Connecting… (attempt %1)</translation>
    </message>
    <message>
        <source>Telefon spí (%1 min)</source>
        <translation>Phone is asleep (%1 min)</translation>
    </message>
    <message>
        <source>Pracuje: %1</source>
        <translation>Busy: %1</translation>
    </message>
    <message>
        <source>Párování neplatí — %1</source>
        <translation>Pairing is not valid — %1</translation>
    </message>
    <message>
        <source>Zrušeno.</source>
        <translation>Cancelled.</translation>
    </message>
    <message>
        <source>Stav se nepodařilo odeslat: %1</source>
        <translation>The status could not be sent: %1</translation>
    </message>
</context>
</TS>
