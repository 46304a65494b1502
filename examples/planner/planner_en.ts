<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>Texts</name>
    <message numerus="yes">
        <source>Packed and checked %n file(s).</source>
        <translation>
            <numerusform>Packed and checked %n file.</numerusform>
            <numerusform>Packed and checked %n files.</numerusform>
        </translation>
    </message>
</context>
</TS>
