<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="zh_CN">
<context>
    <name>PortConfigWidget</name>
    <message>
        <source>&lt;h1&gt;端口配置&lt;/h1&gt;</source>
        <translation>&lt;h1&gt;Назначение сигналов&lt;/h1&gt;</translation>
    </message>
    <message>
        <source>序号</source>
        <translation>№ п/п</translation>
    </message>
    <message>
        <source>类别</source>
        <translation>Группа</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Сигнал</translation>
    </message>
    <message>
        <source>IO分配</source>
        <translation>Назначение</translation>
    </message>
    <message>
        <source>是否启用</source>
        <translation>Использование</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>ОК</translation>
    </message>
    <message>
        <source>输入</source>
        <translation>Входы </translation>
    </message>
    <message>
        <source>输出</source>
        <translation>Выходы </translation>
    </message>
    <message>
        <source>模拟量输出</source>
        <translation>Аналоговые выходы </translation>
    </message>
    <message>
        <source>启用</source>
        <translation>Включён</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Сообщение</translation>
    </message>
    <message>
        <source>保存成功</source>
        <translation>Назначение сохранено.</translation>
    </message>
</context>
</TS>
