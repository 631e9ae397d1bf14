<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>PortConfigWidget</name>
    <message>
        <source>&lt;h1&gt;端口配置&lt;/h1&gt;</source>
        <translation>&lt;h1&gt;Port Configuration&lt;/h1&gt;</translation>
    </message>
    <message>
        <source>序号</source>
        <translation>Num</translation>
    </message>
    <message>
        <source>类别</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>IO分配</source>
        <translation>IO Distribution</translation>
    </message>
    <message>
        <source>是否启用</source>
        <translation>Enabled Or Not</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>输入</source>
        <translation>Input</translation>
    </message>
    <message>
        <source>输出</source>
        <translation>Output</translation>
    </message>
    <message>
        <source>模拟量输出</source>
        <translation>Analog Output</translation>
    </message>
    <message>
        <source>启用</source>
        <translation>Enable</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Tips</translation>
    </message>
    <message>
        <source>保存成功</source>
        <translation>Saved successfully.</translation>
    </message>
</context>
</TS>
