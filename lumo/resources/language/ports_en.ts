<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>lumo::PortNameBox</name>
    <message>
        <source>未分配</source>
        <translation>not assigned</translation>
    </message>
</context>
<context>
    <name>lumo::PortState</name>
    <message>
        <source>未分配</source>
        <translation>not assigned</translation>
    </message>
    <message>
        <source>重复分配</source>
        <translation>used twice</translation>
    </message>
    <message>
        <source>信号不存在</source>
        <translation>missing</translation>
    </message>
    <message>
        <source>有错误</source>
        <translation>faulty</translation>
    </message>
    <message>
        <source>开</source>
        <translation>On</translation>
    </message>
    <message>
        <source>关</source>
        <translation>Off</translation>
    </message>
</context>
<context>
    <name>lumo::TestButton</name>
    <message>
        <source>测试</source>
        <translation>Test</translation>
    </message>
    <message>
        <source>激光只能在设备页上，在其保护之下打开。</source>
        <translation>The laser is switched on only at the Device page, under its lock.</translation>
    </message>
    <message>
        <source>端口未启用或未分配。</source>
        <translation>The port is out of use or not assigned.</translation>
    </message>
    <message>
        <source>请先按“确认”保存更改，然后再测试。</source>
        <translation>Press OK to store the change first, then test.</translation>
    </message>
    <message>
        <source>另一个输出也分配到同一信号，请先改正分配。</source>
        <translation>Another output is assigned to the same signal: correct that first.</translation>
    </message>
    <message>
        <source>程序运行时不能测试。</source>
        <translation>Nothing can be tested while a program runs.</translation>
    </message>
    <message>
        <source>保护已锁定，请先在设备页上解锁。</source>
        <translation>The safety lock is closed: open it at the Device page first.</translation>
    </message>
    <message>
        <source>输出已打开。</source>
        <translation>The output is already on.</translation>
    </message>
    <message>
        <source>按住时打开，松开即关闭。</source>
        <translation>On while it is held.</translation>
    </message>
    <message>
        <source>未启用</source>
        <translation>not in use</translation>
    </message>
    <message>
        <source>未保存</source>
        <translation>not stored</translation>
    </message>
    <message>
        <source>重复分配</source>
        <translation>used twice</translation>
    </message>
    <message>
        <source>运行中</source>
        <translation>running</translation>
    </message>
    <message>
        <source>已锁定</source>
        <translation>locked</translation>
    </message>
    <message>
        <source>已打开</source>
        <translation>already on</translation>
    </message>
</context>
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
    <message>
        <source>当前状态</source>
        <translation>Now</translation>
    </message>
    <message>
        <source>测试</source>
        <translation>Test</translation>
    </message>
    <message>
        <source>（另有 %1 处）</source>
        <translation> (%1 more)</translation>
    </message>
    <message>
        <source>共 %1 个端口 · 输入 %2，输出 %3，模拟量输出 %4</source>
        <translation>%1 ports · %2 inputs, %3 outputs, %4 analog outputs</translation>
    </message>
    <message>
        <source>未保存：%1</source>
        <translation>not stored: %1</translation>
    </message>
    <message>
        <source>按住“测试”时打开</source>
        <translation>Test: on while it is held</translation>
    </message>
</context>
</TS>
