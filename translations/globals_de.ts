<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="de">
<context>
    <name>QObject</name>
    <message>
        <source>mm - Millimeter</source>
        <translation>mm - Millimeter</translation>
    </message>
    <message>
        <source>cm - Zentimeter</source>
        <translation>cm - Zentimeter</translation>
    </message>
    <message>
        <source>m - Meter</source>
        <translation>m - Meter</translation>
    </message>
    <message>
        <source>in - Zoll (US/GB)</source>
        <translation>in - Zoll (US/GB)</translation>
    </message>
</context>
<context>
    <name>TEKLUVA::ConfigManager</name>
    <message>
        <source>Die Datei %1 existiert bereits. Soll sie überschrieben werden?</source>
        <translation>Die Datei %1 existiert bereits. Soll sie überschrieben werden?</translation>
    </message>
    <message>
        <source>Datei überschreiben</source>
        <translation>Datei überschreiben</translation>
    </message>
    <message>
        <source>In %1 kann nichts gespeichert werden: %2</source>
        <translation>In %1 kann nichts gespeichert werden: %2</translation>
    </message>
    <message>
        <source>neues Projekt</source>
        <translation>neues Projekt</translation>
    </message>
    <message>
        <source>Bei &quot;Nein&quot; bleibt sie, und die andere Datei wird nicht kopiert.</source>
        <translation>Bei &quot;Nein&quot; bleibt sie, und die andere Datei wird nicht kopiert.</translation>
    </message>
</context>
<context>
    <name>TEKLUVA::LogDock</name>
    <message>
        <source>Alle Meldungen</source>
        <translation>Alle Meldungen</translation>
    </message>
    <message>
        <source>Ab Information</source>
        <translation>Ab Information</translation>
    </message>
    <message>
        <source>Ab Warnung</source>
        <translation>Ab Warnung</translation>
    </message>
    <message>
        <source>Nur Fehler</source>
        <translation>Nur Fehler</translation>
    </message>
    <message>
        <source>Protokoll</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Welche Meldungen gezeigt werden</source>
        <translation>Welche Meldungen gezeigt werden</translation>
    </message>
</context>
<context>
    <name>TEKLUVA::LogModel</name>
    <message>
        <source>Fehler</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Warnung</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>Diagnose</source>
        <translation>Diagnose</translation>
    </message>
    <message>
        <source>Zeit</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Stufe</source>
        <translation>Stufe</translation>
    </message>
    <message>
        <source>Meldung</source>
        <translation>Meldung</translation>
    </message>
</context>
<context>
    <name>TEKLUVA::MeasurementManager</name>
    <message>
        <source>Millimeter</source>
        <translation>Millimeter</translation>
    </message>
    <message>
        <source>Zentimeter</source>
        <translation>Zentimeter</translation>
    </message>
    <message>
        <source>Meter</source>
        <translation>Meter</translation>
    </message>
    <message>
        <source>Inch</source>
        <translation>Zoll</translation>
    </message>
    <message>
        <source>Fuß</source>
        <translation>Fuß</translation>
    </message>
    <message>
        <source>Quadratfuß</source>
        <translation>Quadratfuß</translation>
    </message>
    <message>
        <source>Quadratmeter</source>
        <translation>Quadratmeter</translation>
    </message>
    <message>
        <source>Kubikfuß</source>
        <translation>Kubikfuß</translation>
    </message>
    <message>
        <source>Kubikmeter</source>
        <translation>Kubikmeter</translation>
    </message>
</context>
<context>
    <name>TEKLUVA::PresetTable</name>
    <message>
        <source>Schlüssel</source>
        <translation>Schlüssel</translation>
    </message>
    <message>
        <source>Typ</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Wert</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Grenzen</source>
        <translation>Grenzen</translation>
    </message>
    <message>
        <source>Voreinstellungen</source>
        <translation>Voreinstellungen</translation>
    </message>
</context>
<context>
    <name>TEKLUVA::ProgressDialog</name>
    <message>
        <source>Gesamt</source>
        <translation>Gesamt</translation>
    </message>
    <message>
        <source>&amp;Abbrechen</source>
        <translation>&amp;Abbrechen</translation>
    </message>
</context>
<context>
    <name>TEKLUVA::ProgressStep</name>
    <message>
        <source>Abgeschlossen</source>
        <translation>Abgeschlossen</translation>
    </message>
    <message>
        <source>%1 (%2 kB)</source>
        <translation>%1 (%2 kB)</translation>
    </message>
</context>
</TS>
