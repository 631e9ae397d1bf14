<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>lumo::DeviceCard</name>
    <message>
        <source>转到端口页</source>
        <translation>Go to Port</translation>
    </message>
</context>
<context>
    <name>lumo::DeviceState</name>
    <message>
        <source>端口未启用</source>
        <translation>The port is out of use</translation>
    </message>
    <message>
        <source>已解锁，再按即锁定</source>
        <translation>Armed. Tap to lock</translation>
    </message>
    <message>
        <source>保护已锁定</source>
        <translation>Locked</translation>
    </message>
    <message>
        <source>已锁定</source>
        <translation>Locked</translation>
    </message>
    <message>
        <source>已打开，再按即关闭</source>
        <translation>On. Tap to switch it off</translation>
    </message>
    <message>
        <source>关</source>
        <translation>Off</translation>
    </message>
</context>
<context>
    <name>lumo::SetPoint</name>
    <message>
        <source>端口未启用</source>
        <translation>The port is out of use</translation>
    </message>
    <message>
        <source>当前输出 %1 %</source>
        <translation>Output now %1 %</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>关闭</source>
        <translation>Shut down</translation>
    </message>
    <message>
        <source>正常</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>异常</source>
        <translation>Abnormal</translation>
    </message>
</context>
<context>
    <name>StatusMonitorWidget</name>
    <message>
        <source>设备状态</source>
        <translation>Device State</translation>
    </message>
    <message>
        <source>激光器状态：</source>
        <translation>Laser State:</translation>
    </message>
    <message>
        <source>激光头状态：</source>
        <translation>Laser Head State:</translation>
    </message>
    <message>
        <source>水冷箱状态：</source>
        <translation>Water Cooling State:</translation>
    </message>
    <message>
        <source>气压状态：</source>
        <translation>Air Pressure State:</translation>
    </message>
    <message>
        <source>温度状态：</source>
        <translation>Temperature State:</translation>
    </message>
    <message>
        <source>焊接状态：</source>
        <translation>Welding State:</translation>
    </message>
    <message>
        <source>加工统计</source>
        <translation>Processing Information</translation>
    </message>
    <message>
        <source>加工时长：</source>
        <translation>Sigle Processing Time:</translation>
    </message>
    <message>
        <source>秒</source>
        <translation>s</translation>
    </message>
    <message>
        <source>加工个数：</source>
        <translation>Number of process:</translation>
    </message>
    <message>
        <source>清零</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>激光状态</source>
        <translation>Laser State</translation>
    </message>
    <message>
        <source>激光频率（%）：</source>
        <translation>Laser Frequency(%):</translation>
    </message>
    <message>
        <source>占空比（%）：</source>
        <translation>Laser Dual Cycle(%):</translation>
    </message>
    <message>
        <source>激光功率（%）：</source>
        <translation>Laser Power(%):</translation>
    </message>
</context>
<context>
    <name>DeviceControlWidget</name>
    <message>
        <source>激光控制</source>
        <translation>Laser Control</translation>
    </message>
    <message>
        <source>激光频率：</source>
        <translation>Laser Frequency</translation>
    </message>
    <message>
        <source>占空比：</source>
        <translation>Laser Duty Cycle</translation>
    </message>
    <message>
        <source>激光功率：</source>
        <translation>Laser Power</translation>
    </message>
    <message>
        <source>激光保护</source>
        <translation>Laser Safety Lock</translation>
    </message>
    <message>
        <source>激光测试</source>
        <translation>Laser Enable</translation>
    </message>
    <message>
        <source>红光</source>
        <translation>Red Light</translation>
    </message>
    <message>
        <source>气体控制</source>
        <translation>Gas Control</translation>
    </message>
    <message>
        <source>给气保护</source>
        <translation>Gas Safety Lock</translation>
    </message>
    <message>
        <source>给气测试</source>
        <translation>Gas Enable</translation>
    </message>
    <message>
        <source>送丝控制</source>
        <translation>Wire Control</translation>
    </message>
    <message>
        <source>送丝速度：</source>
        <translation>Wire Speed</translation>
    </message>
    <message>
        <source>送丝保护</source>
        <translation>Wire Safety Lock</translation>
    </message>
    <message>
        <source>送丝测试</source>
        <translation>Wire Enable</translation>
    </message>
    <message>
        <source>输入错误</source>
        <translation>Input Error</translation>
    </message>
    <message>
        <source>请先更正红框中的数值。</source>
        <translation>Correct the value in the red frame first.</translation>
    </message>
    <message>
        <source>端口“%1”未启用。</source>
        <translation>The port "%1" is out of use.</translation>
    </message>
    <message>
        <source>激光已打开</source>
        <translation>LASER ON</translation>
    </message>
    <message>
        <source>已打开</source>
        <translation>On</translation>
    </message>
    <message>
        <source>未启用</source>
        <translation>Out of use</translation>
    </message>
    <message>
        <source>指示红光已打开</source>
        <translation>Pilot light on</translation>
    </message>
    <message>
        <source>关</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>已锁定</source>
        <translation>Locked</translation>
    </message>
    <message>
        <source>手动打开，已 %1</source>
        <translation>lit by hand for %1</translation>
    </message>
    <message>
        <source>已打开 %1</source>
        <translation>on for %1</translation>
    </message>
</context>
</TS>
