<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>lumo::Guide</name>
    <message>
        <source>显示该行</source>
        <translation>Show Line</translation>
    </message>
    <message>
        <source>端口配置</source>
        <translation>Ports</translation>
    </message>
    <message>
        <source>设备控制</source>
        <translation>Devices</translation>
    </message>
</context>
<context>
    <name>SetDODialog</name>
    <message>
        <source>寄存器</source>
        <translation>Register</translation>
    </message>
    <message>
        <source>DO名称：</source>
        <translation>DO Name:</translation>
    </message>
    <message>
        <source>值：</source>
        <translation>Value: </translation>
    </message>
    <message>
        <source>确定</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>WaitDIDialog</name>
    <message>
        <source>寄存器</source>
        <translation>Register</translation>
    </message>
    <message>
        <source>DI名称：</source>
        <translation>DI Name:</translation>
    </message>
    <message>
        <source>值：</source>
        <translation>Value: </translation>
    </message>
    <message>
        <source>确定</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>SelectParamDialog</name>
    <message>
        <source>&lt;h1&gt;开始焊接&lt;/h1&gt;</source>
        <translation>&lt;h1&gt;Start Welding&lt;/h1&gt;</translation>
    </message>
    <message>
        <source>&lt;h1&gt;工艺参数&lt;/h1&gt;</source>
        <translation>&lt;h1&gt;Welding Parameters&lt;/h1&gt;</translation>
    </message>
    <message>
        <source>工艺参数：</source>
        <translation>Welding Parameters</translation>
    </message>
    <message>
        <source> 速度 (mm/s)</source>
        <translation>Velocity(mm/s)</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>请先在参数配置中增加参数</source>
        <translation>Add a parameter set first</translation>
    </message>
    <message>
        <source>请选择工艺参数</source>
        <translation>Select a parameter set</translation>
    </message>
</context>
<context>
    <name>DelayDialog</name>
    <message>
        <source>&lt;h1&gt;DELAY&lt;/h1&gt;</source>
        <translation>&lt;h1&gt;DELAY&lt;/h1&gt;</translation>
    </message>
    <message>
        <source>延时：</source>
        <translation>delay:</translation>
    </message>
    <message>
        <source>ms</source>
        <translation>ms</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>UpdateSpeedDialog</name>
    <message>
        <source>&lt;h1&gt;速度批量修改&lt;/h1&gt;</source>
        <translation>&lt;h1&gt;Modifying Velocity&lt;/h1&gt;</translation>
    </message>
    <message>
        <source> 速度 (mm/s)</source>
        <translation>Velocity(mm/s)</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>UpdateTurningParamDialog</name>
    <message>
        <source>&lt;h1&gt;转弯区批量修改&lt;/h1&gt;</source>
        <translation>&lt;h1&gt;Modifying Turning Radius&lt;/h1&gt;</translation>
    </message>
    <message>
        <source>转弯区(mm)</source>
        <translation>Turning Radius(mm)</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>PointWidget</name>
    <message>
        <source>直线</source>
        <translation>Line</translation>
    </message>
    <message>
        <source>点位</source>
        <translation>Point</translation>
    </message>
    <message>
        <source>更新点位</source>
        <translation>Update</translation>
    </message>
    <message>
        <source>速度与转弯区</source>
        <translation>Velocity and Turning radius</translation>
    </message>
    <message>
        <source>速度(mm/s):</source>
        <translation>Velocity(mm/s)</translation>
    </message>
    <message>
        <source>转弯区(mm)：</source>
        <translation>Turning Radius(mm)</translation>
    </message>
    <message>
        <source>备注</source>
        <translation>Remark</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancle</translation>
    </message>
    <message>
        <source>空走参数设置</source>
        <translation>Joint movement parameter setting</translation>
    </message>
    <message>
        <source>直线参数设置</source>
        <translation>Line movement parameter setting</translation>
    </message>
    <message>
        <source>全圆/圆弧参数设置</source>
        <translation>Circle/Arc Parameter Setting</translation>
    </message>
    <message>
        <source>移到此点</source>
        <translation>Move there</translation>
    </message>
    <message>
        <source>先确认更改，再移动机器人。</source>
        <translation>Confirm the changes first, then move the robot.</translation>
    </message>
    <message>
        <source>（途经点）</source>
        <translation>(Via)</translation>
    </message>
    <message>
        <source>（终点）</source>
        <translation>(End)</translation>
    </message>
    <message>
        <source>（圆上第 2 点）</source>
        <translation>(2nd point of the circle)</translation>
    </message>
    <message>
        <source>（圆上第 3 点）</source>
        <translation>(3rd point of the circle)</translation>
    </message>
    <message>
        <source>未示教</source>
        <translation>Not taught</translation>
    </message>
    <message>
        <source>第 %1 行，共 %2 行</source>
        <translation>Line %1 of %2</translation>
    </message>
    <message>
        <source>请更正：%1</source>
        <translation>Correct: %1</translation>
    </message>
    <message>
        <source>“移到此点”不出光移动机器人，“更新点位”记录其当前位置。</source>
        <translation>“Move there” moves the robot without laser. “Update” takes its present position.</translation>
    </message>
</context>
<context>
    <name>lumo::FieldAnswer</name>
    <message>
        <source>请输入数字</source>
        <translation>Enter a number</translation>
    </message>
    <message>
        <source>允许：%1%2 及以上，最多 %3 位</source>
        <translation>Allowed: from %1%2, up to %3 digits</translation>
    </message>
    <message>
        <source>允许：%1 至 %2%3</source>
        <translation>Allowed: %1 to %2%3</translation>
    </message>
    <message>
        <source>，整数</source>
        <translation>, whole numbers</translation>
    </message>
    <message>
        <source>mm/s</source>
        <translation>mm/s</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>ms</source>
        <translation>ms</translation>
    </message>
    <message>
        <source>%1 至 %2</source>
        <translation>%1 to %2</translation>
    </message>
    <message>
        <source>%1 及以上</source>
        <translation>from %1</translation>
    </message>
</context>
</TS>
