<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>KyQAttributeModel</name>
    <message numerus="yes">
        <source>%n value(s)</source>
        <translation>
            <numerusform>%n value</numerusform>
            <numerusform>%n values</numerusform>
        </translation>
    </message>
</context>
</TS>
