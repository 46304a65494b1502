<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>Panel</name>
    <message numerus="yes">
        <source>Packed and checked %n file(s), %1.</source>
        <translation>
            <numerusform>Packed and checked %n file, %1.</numerusform>
            <numerusform>Packed and checked %n files, %1.</numerusform>
        </translation>
    </message>
</context>
</TS>
