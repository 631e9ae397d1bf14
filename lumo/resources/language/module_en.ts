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
    <message>
        <source>停止后的收尾尚未完成。</source>
        <translation>A stop is still closing the weld.</translation>
    </message>
    <message>
        <source>第 %1 行正在执行。</source>
        <translation>Line %1 is being carried out.</translation>
    </message>
    <message>
        <source>工位程序的第 %1 行正在执行。</source>
        <translation>Line %1 of a station&apos;s program is being carried out.</translation>
    </message>
    <message>
        <source>请等待其结束，或先按“停止”，然后再试。</source>
        <translation>Wait until it ends, or press Stop, then try again.</translation>
    </message>
    <message>
        <source>程序没有任何行。</source>
        <translation>The program has no lines.</translation>
    </message>
    <message>
        <source>请先添加指令。</source>
        <translation>Add statements first.</translation>
    </message>
    <message>
        <source>请在程序中选中要开始的行，或要移动到的行。</source>
        <translation>Select the line of the program to begin at, or to move to.</translation>
    </message>
    <message>
        <source>无法连接控制器或输入输出设备。</source>
        <translation>The controller or the I/O device cannot be reached.</translation>
    </message>
    <message>
        <source>请等连接恢复，打开驱动电源，然后再试。</source>
        <translation>Wait until it is reached, switch the drives on, then try again.</translation>
    </message>
    <message>
        <source>请松开急停，打开驱动电源，然后再试。</source>
        <translation>Release the emergency stop, switch the drives on, then try again.</translation>
    </message>
    <message>
        <source>机器人正在运动，例如正在点动。</source>
        <translation>The robot is moving, for example because it is jogged.</translation>
    </message>
    <message>
        <source>请等机器人停下，然后再试。</source>
        <translation>Wait until the robot stands, then try again.</translation>
    </message>
    <message>
        <source>第 %1 行不是运动指令。</source>
        <translation>Line %1 is no motion.</translation>
    </message>
    <message>
        <source>请选中有点位的行。</source>
        <translation>Select a line with a point.</translation>
    </message>
    <message>
        <source>请重新示教该行的点，使三个点分布在圆周上。</source>
        <translation>Teach the points of the line again, spread over the circle.</translation>
    </message>
    <message>
        <source>在返回中断点的途中：%1。</source>
        <translation>On the way back to where the program stopped: %1.</translation>
    </message>
    <message>
        <source>第 %1 行：%2。</source>
        <translation>Line %1: %2.</translation>
    </message>
    <message>
        <source>工位程序的第 %1 行：%2。</source>
        <translation>Station&apos;s program, line %1: %2.</translation>
    </message>
    <message>
        <source>处理方法：%1。</source>
        <translation>What to do: %1.</translation>
    </message>
    <message>
        <source>机器人报告已返回，但焊枪距中断点仍有 %1 mm。</source>
        <translation>The robot reports that it is back, but the tool is still %1 mm from where the program stopped.</translation>
    </message>
    <message>
        <source>请检查返回路径，然后再按“开始”。</source>
        <translation>Check the way back, then press Start again.</translation>
    </message>
</context>
</TS>
