<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="zh_CN">
<context>
    <name>QObject</name>
    <message>
        <source>激光焊接</source>
        <translation>Лазерная сварка</translation>
    </message>
</context>
<context>
    <name>lumo::Driver</name>
    <message>
        <source>运行错误</source>
        <translation>Ошибка выполнения</translation>
    </message>
    <message>
        <source>当前不是空闲状态</source>
        <translation>Робот занят</translation>
    </message>
    <message>
        <source>未选中启动行</source>
        <translation>Выберите строку запуска</translation>
    </message>
    <message>
        <source>机器人未上电</source>
        <translation>Приводы робота выключены.</translation>
    </message>
    <message>
        <source>机器人正在运行中</source>
        <translation>Робот движется</translation>
    </message>
    <message>
        <source>单步只能运行运动指令</source>
        <translation>В пошаговом режиме выполняются только команды движения</translation>
    </message>
    <message>
        <source>机器人运动错误：-0x%1</source>
        <translation>Ошибка движения робота: -0x%1</translation>
    </message>
    <message>
        <source>第 %1 行：整圆的三个点共线，无法确定圆</source>
        <translation>Строка %1: три точки полной окружности лежат на одной прямой и не задают окружность</translation>
    </message>
    <message>
        <source>第 %1 行：整圆的点重合，无法确定圆</source>
        <translation>Строка %1: точки полной окружности совпадают и не задают окружность</translation>
    </message>
</context>
</TS>
