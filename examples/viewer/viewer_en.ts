<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>ViewerWindow</name>
    <message numerus="yes">
        <source>%n article(s) found.</source>
        <translation>
            <numerusform>%n article found.</numerusform>
            <numerusform>%n articles found.</numerusform>
        </translation>
    </message>
</context>
</TS>
