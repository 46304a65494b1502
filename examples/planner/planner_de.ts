<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>Texts</name>
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
        <source>Hei&amp;ght</source>
        <translation>Höh&amp;e</translation>
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
        <source>This is the first start.</source>
        <translation>Das ist der erste Start.</translation>
    </message>
    <message>
        <source>Last run: closed cleanly</source>
        <translation>Letzter Lauf: ordentlich beendet</translation>
    </message>
    <message>
        <source>Last run: closed for a restart</source>
        <translation>Letzter Lauf: für einen Neustart beendet</translation>
    </message>
    <message>
        <source>Last run: the update was interrupted</source>
        <translation>Letzter Lauf: Aktualisierung unterbrochen</translation>
    </message>
    <message>
        <source>Open in another window, too</source>
        <translation>Auch in einem anderen Fenster offen</translation>
    </message>
    <message>
        <source>&quot;presets.dat&quot; is damaged; the built-in presets are in force.</source>
        <translation>„presets.dat“ ist beschädigt; es gelten die eingebauten Voreinstellungen.</translation>
    </message>
    <message>
        <source>The settings are not saved.</source>
        <translation>Die Einstellungen sind nicht gespeichert.</translation>
    </message>
    <message>
        <source>Last run: crashed, last alive at %1</source>
        <translation>Letzter Lauf: abgestürzt, letztes Lebenszeichen %1</translation>
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
        <source>Packing</source>
        <translation>Packen</translation>
    </message>
    <message numerus="yes">
        <source>Packed and checked %n file(s).</source>
        <translation>
            <numerusform>%n Datei gepackt und geprüft.</numerusform>
            <numerusform>%n Dateien gepackt und geprüft.</numerusform>
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
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Settings...</source>
        <translation>&amp;Einstellungen ...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;Über dieses Programm</translation>
    </message>
    <message>
        <source>Version %1. A room planner in small, and an example for libglobals.</source>
        <translation>Version %1. Ein kleiner Raumplaner, als Beispiel für libglobals.</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;Sprache</translation>
    </message>
    <message>
        <source>Unit for &amp;constructing</source>
        <translation>Einheit beim &amp;Konstruieren</translation>
    </message>
    <message>
        <source>Unit for &amp;arranging</source>
        <translation>Einheit beim &amp;Einrichten</translation>
    </message>
    <message>
        <source>Clos&amp;e</source>
        <translation>Schl&amp;ießen</translation>
    </message>
    <message>
        <source>Units: %1, %2</source>
        <translation>Einheiten: %1, %2</translation>
    </message>
</context>
</TS>
