<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>QObject</name>
    <message>
        <source>激光焊接</source>
        <translation>Laser Welding</translation>
    </message>
</context>
<context>
    <name>lumo::Driver</name>
    <message>
        <source>运行错误</source>
        <translation>Running Error</translation>
    </message>
    <message>
        <source>当前不是空闲状态</source>
        <translation>Robot is Not Idle</translation>
    </message>
    <message>
        <source>未选中启动行</source>
        <translation>Please select the starting row</translation>
    </message>
    <message>
        <source>机器人未上电</source>
        <translation>The robot is power off.</translation>
    </message>
    <message>
        <source>机器人正在运行中</source>
        <translation>The robot is running</translation>
    </message>
    <message>
        <source>单步只能运行运动指令</source>
        <translation>Single step can only support motion command</translation>
    </message>
    <message>
        <source>机器人运动错误：-0x%1</source>
        <translation>Robot motion error：-0x%1</translation>
    </message>
    <message>
        <source>第 %1 行：整圆的三个点共线，无法确定圆</source>
        <translation>Line %1: the three points of the full circle lie on one line and define no circle</translation>
    </message>
    <message>
        <source>第 %1 行：整圆的点重合，无法确定圆</source>
        <translation>Line %1: points of the full circle coincide and define no circle</translation>
    </message>
</context>
</TS>
