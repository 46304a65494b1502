<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_GB" sourcelanguage="de">
<context>
    <name>QObject</name>
    <message>
        <source>mm - Millimeter</source>
        <translation>mm - Millimetre</translation>
    </message>
    <message>
        <source>cm - Zentimeter</source>
        <translation>cm - Centimetre</translation>
    </message>
    <message>
        <source>m - Meter</source>
        <translation>m - Metre</translation>
    </message>
    <message>
        <source>in - Zoll (US/GB)</source>
        <translation>in - Inch (US/GB)</translation>
    </message>
</context>
<context>
    <name>TEKLUVA::ConfigManager</name>
    <message>
        <source>Die Datei %1 existiert bereits. Soll sie überschrieben werden?</source>
        <translation>The file %1 exists already. Should it be overwritten?</translation>
    </message>
    <message>
        <source>Datei überschreiben</source>
        <translation>Overwrite file</translation>
    </message>
    <message>
        <source>In %1 kann nichts gespeichert werden: %2</source>
        <translation>Nothing can be saved in %1: %2</translation>
    </message>
    <message>
        <source>neues Projekt</source>
        <translation>new project</translation>
    </message>
    <message>
        <source>Bei &quot;Nein&quot; bleibt sie, und die andere Datei wird nicht kopiert.</source>
        <translation>With &quot;No&quot; it stays, and the other file is not copied.</translation>
    </message>
</context>
<context>
    <name>TEKLUVA::LogDock</name>
    <message>
        <source>Alle Meldungen</source>
        <translation>All messages</translation>
    </message>
    <message>
        <source>Ab Information</source>
        <translation>From information on</translation>
    </message>
    <message>
        <source>Ab Warnung</source>
        <translation>From warnings on</translation>
    </message>
    <message>
        <source>Nur Fehler</source>
        <translation>Errors only</translation>
    </message>
    <message>
        <source>Protokoll</source>
        <translation>Log</translation>
    </message>
    <message>
        <source>Welche Meldungen gezeigt werden</source>
        <translation>Which messages are shown</translation>
    </message>
</context>
<context>
    <name>TEKLUVA::LogModel</name>
    <message>
        <source>Fehler</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Warnung</source>
        <translation>Warning</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>Diagnose</source>
        <translation>Debug</translation>
    </message>
    <message>
        <source>Zeit</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>Stufe</source>
        <translation>Level</translation>
    </message>
    <message>
        <source>Meldung</source>
        <translation>Message</translation>
    </message>
</context>
<context>
    <name>TEKLUVA::MeasurementManager</name>
    <message>
        <source>Millimeter</source>
        <translation>Millimetre</translation>
    </message>
    <message>
        <source>Zentimeter</source>
        <translation>Centimetre</translation>
    </message>
    <message>
        <source>Meter</source>
        <translation>Metre</translation>
    </message>
    <message>
        <source>Inch</source>
        <translation>Inch</translation>
    </message>
    <message>
        <source>Fuß</source>
        <translation>Foot</translation>
    </message>
    <message>
        <source>Quadratfuß</source>
        <translation>Square foot</translation>
    </message>
    <message>
        <source>Quadratmeter</source>
        <translation>Square metre</translation>
    </message>
    <message>
        <source>Kubikfuß</source>
        <translation>Cubic foot</translation>
    </message>
    <message>
        <source>Kubikmeter</source>
        <translation>Cubic metre</translation>
    </message>
</context>
<context>
    <name>TEKLUVA::PresetTable</name>
    <message>
        <source>Schlüssel</source>
        <translation>Key</translation>
    </message>
    <message>
        <source>Typ</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>Wert</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>Grenzen</source>
        <translation>Bounds</translation>
    </message>
    <message>
        <source>Voreinstellungen</source>
        <translation>Presets</translation>
    </message>
</context>
<context>
    <name>TEKLUVA::ProgressDialog</name>
    <message>
        <source>Gesamt</source>
        <translation>Total</translation>
    </message>
    <message>
        <source>&amp;Abbrechen</source>
        <translation>A&amp;bort</translation>
    </message>
</context>
<context>
    <name>TEKLUVA::ProgressStep</name>
    <message>
        <source>Abgeschlossen</source>
        <translation>Completed</translation>
    </message>
    <message>
        <source>%1 (%2 kB)</source>
        <translation>%1 (%2 kB)</translation>
    </message>
</context>
</TS>
