<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>SwitchButton</name>
    <message>
        <source>开启</source>
        <translation>Enabled</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Disabled</translation>
    </message>
</context>
</TS>
