<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>Panel</name>
    <message>
        <source>Light</source>
        <translation>Licht</translation>
    </message>
    <message>
        <source>Colour &amp;temperature</source>
        <translation>Farb&amp;temperatur</translation>
    </message>
    <message>
        <source>The presets were read.</source>
        <translation>Die Voreinstellungen wurden gelesen.</translation>
    </message>
    <message>
        <source>&quot;presets.dat&quot; is missing; the built-in presets are in force.</source>
        <translation>„presets.dat“ fehlt; es gelten die eingebauten Voreinstellungen.</translation>
    </message>
    <message>
        <source>Presets</source>
        <translation>Voreinstellungen</translation>
    </message>
    <message>
        <source>&amp;Length</source>
        <translation>&amp;Länge</translation>
    </message>
    <message>
        <source>&amp;Width</source>
        <translation>&amp;Breite</translation>
    </message>
    <message>
        <source>&amp;Height</source>
        <translation>&amp;Höhe</translation>
    </message>
    <message>
        <source>&amp;Construction</source>
        <translation>&amp;Konstruieren</translation>
    </message>
    <message>
        <source>&amp;Arrangement</source>
        <translation>&amp;Einrichten</translation>
    </message>
    <message>
        <source>Floor area</source>
        <translation>Grundfläche</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>Rauminhalt</translation>
    </message>
    <message>
        <source>Room</source>
        <translation>Raum</translation>
    </message>
    <message>
        <source>Values are shown in %1 now.</source>
        <translation>Die Werte stehen jetzt in %1 da.</translation>
    </message>
    <message>
        <source>This is the first start.</source>
        <translation>Das ist der erste Start.</translation>
    </message>
    <message>
        <source>The application was closed cleanly.</source>
        <translation>Die Anwendung wurde ordentlich beendet.</translation>
    </message>
    <message>
        <source>The application was closed for a restart.</source>
        <translation>Die Anwendung wurde für einen Neustart beendet.</translation>
    </message>
    <message>
        <source>The update was interrupted.</source>
        <translation>Die Aktualisierung wurde unterbrochen.</translation>
    </message>
    <message>
        <source>The application is open in another window.</source>
        <translation>Das Programm ist in einem anderen Fenster offen.</translation>
    </message>
    <message>
        <source>&quot;presets.dat&quot; is damaged; the built-in presets are in force.</source>
        <translation>„presets.dat“ ist beschädigt; die eingebauten Vorgaben gelten.</translation>
    </message>
    <message>
        <source>The settings are not saved.</source>
        <translation>Die Einstellungen sind nicht gespeichert.</translation>
    </message>
    <message>
        <source>The application crashed; it was last alive at %1.</source>
        <translation>Die Anwendung ist abgestürzt; ihr letztes Lebenszeichen war %1.</translation>
    </message>
    <message>
        <source>Last run</source>
        <translation>Letzter Lauf</translation>
    </message>
    <message>
        <source>La&amp;nguage</source>
        <translation>&amp;Sprache</translation>
    </message>
    <message>
        <source>Write files</source>
        <translation>Dateien schreiben</translation>
    </message>
    <message>
        <source>Pack archive</source>
        <translation>Archiv packen</translation>
    </message>
    <message>
        <source>Check archive</source>
        <translation>Archiv prüfen</translation>
    </message>
    <message>
        <source>Work</source>
        <translation>Arbeit</translation>
    </message>
    <message>
        <source>Packing</source>
        <translation>Packen</translation>
    </message>
    <message numerus="yes">
        <source>Packed and checked %n file(s), %1.</source>
        <translation>
            <numerusform>%n Datei gepackt und geprüft, %1.</numerusform>
            <numerusform>%n Dateien gepackt und geprüft, %1.</numerusform>
        </translation>
    </message>
    <message>
        <source>The work was aborted.</source>
        <translation>Die Arbeit wurde abgebrochen.</translation>
    </message>
    <message>
        <source>The work failed.</source>
        <translation>Die Arbeit ist misslungen.</translation>
    </message>
    <message>
        <source>Wall</source>
        <translation>Wand</translation>
    </message>
    <message>
        <source>&amp;Pack and check files</source>
        <translation>Dateien &amp;packen und prüfen</translation>
    </message>
</context>
</TS>
