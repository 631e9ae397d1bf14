<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>SignalsBindWidget</name>
    <message>
        <source>工程列表</source>
        <translation>Projects List</translation>
    </message>
    <message>
        <source>开关监听</source>
        <translation>Start Listening</translation>
    </message>
    <message>
        <source>序号</source>
        <translation>Num</translation>
    </message>
    <message>
        <source>工位名称</source>
        <translation>Station Name</translation>
    </message>
    <message>
        <source>工程名</source>
        <translation>Project Name</translation>
    </message>
    <message>
        <source>DI类型</source>
        <translation>DI Type</translation>
    </message>
    <message>
        <source>DI信号</source>
        <translation>DI</translation>
    </message>
    <message>
        <source>触发类型</source>
        <translation>Trigger Type</translation>
    </message>
    <message>
        <source>有效时间(ms)</source>
        <translation>Signal Duration(ms)</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>State</translation>
    </message>
    <message>
        <source>DO类型</source>
        <translation>DO Type</translation>
    </message>
    <message>
        <source>DO信号</source>
        <translation>DO</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>New</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>已触发</source>
        <translation>Triggered</translation>
    </message>
    <message>
        <source>正在运行</source>
        <translation>Running</translation>
    </message>
    <message>
        <source>未触发</source>
        <translation>Untriggerd</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Tips</translation>
    </message>
    <message>
        <source>请先选中行</source>
        <translation>Please select a row.</translation>
    </message>
    <message>
        <source>默认行禁止删除</source>
        <translation>The default line cannot be deleted</translation>
    </message>
    <message>
        <source>%1：工程 %2 有错误，未启动。</source>
        <translation>%1: the project %2 has errors and was not started.</translation>
    </message>
    <message>
        <source>若不使用该工位，请编辑它并清空其启动信号。</source>
        <translation>If the station is not used, edit it and leave its start signal empty.</translation>
    </message>
    <message>
        <source>下一个</source>
        <translation>next</translation>
    </message>
    <message>
        <source>第 %1 个</source>
        <translation>number %1</translation>
    </message>
</context>
<context>
    <name>SignalsBindingParamWidget</name>
    <message>
        <source>上升沿</source>
        <translation>Rising Edge</translation>
    </message>
    <message>
        <source>下降沿</source>
        <translation>Falling Edge</translation>
    </message>
    <message>
        <source>寄存器</source>
        <translation>Register</translation>
    </message>
    <message>
        <source> 信号绑定参数配置</source>
        <translation>Signal Binding Configuration</translation>
    </message>
    <message>
        <source>编辑名称</source>
        <translation>Edit Name</translation>
    </message>
    <message>
        <source>固定名称</source>
        <translation>Fixed Name</translation>
    </message>
    <message>
        <source>工位名称</source>
        <translation>Station Name</translation>
    </message>
    <message>
        <source>选择工程</source>
        <translation>Select Project</translation>
    </message>
    <message>
        <source>清除工程</source>
        <translation>Clear Project</translation>
    </message>
    <message>
        <source>工程名</source>
        <translation>Project Name</translation>
    </message>
    <message>
        <source>输入信号</source>
        <translation>Input Signal</translation>
    </message>
    <message>
        <source>输出信号</source>
        <translation>Output Signal</translation>
    </message>
    <message>
        <source>启动设置</source>
        <translation>Start Setting</translation>
    </message>
    <message>
        <source>停止设置</source>
        <translation>Stop Setting</translation>
    </message>
    <message>
        <source>信号名称：</source>
        <translation>Signal Name:</translation>
    </message>
    <message>
        <source>触发类型：</source>
        <translation>Trigger Type:</translation>
    </message>
    <message>
        <source>信号生效时间(ms)：</source>
        <translation>Signal Duration(ms):</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Tips</translation>
    </message>
    <message>
        <source>该文件不能用作工位的工程：%1</source>
        <translation>This file cannot be a station&#x27;s project: %1</translation>
    </message>
    <message>
        <source>工位名称不能为空!</source>
        <translation>The station name cannot be empty!</translation>
    </message>
    <message>
        <source>启动: </source>
        <translation>Start: </translation>
    </message>
    <message>
        <source>停止: </source>
        <translation>Stop: </translation>
    </message>
    <message>
        <source>工程 %1 有错误，不能用于工位。</source>
        <translation>The project %1 has errors and cannot be used for a station.</translation>
    </message>
</context>
<context>
    <name>lumo::StationCards</name>
    <message>
        <source>当前运行</source>
        <translation>Runs now</translation>
    </message>
    <message>
        <source>没有运行</source>
        <translation>Nothing runs.</translation>
    </message>
    <message>
        <source>焊缝 %1 / %2，第 %3 行</source>
        <translation>Seam %1 of %2, line %3</translation>
    </message>
    <message>
        <source>第 %1 行</source>
        <translation>Line %1</translation>
    </message>
    <message>
        <source>等待</source>
        <translation>Waits</translation>
    </message>
    <message>
        <source>没有等待的工位</source>
        <translation>No station waits.</translation>
    </message>
    <message>
        <source>已等 %1</source>
        <translation>for %1</translation>
    </message>
    <message>
        <source>已等 %1，在 %2 之后</source>
        <translation>for %1, after %2</translation>
    </message>
    <message>
        <source>另有 %1 个</source>
        <translation>%1 more</translation>
    </message>
    <message>
        <source>运行完成</source>
        <translation>Runs to their end</translation>
    </message>
    <message>
        <source>中途停止</source>
        <translation>Stopped</translation>
    </message>
    <message>
        <source>未能启动</source>
        <translation>Refused</translation>
    </message>
    <message>
        <source>未监听</source>
        <translation>Not listening</translation>
    </message>
    <message>
        <source>自 %1 起监听</source>
        <translation>Listening since %1</translation>
    </message>
    <message>
        <source>已等 %1，停止信号有效</source>
        <translation>for %1, a stop input is on</translation>
    </message>
</context>
</TS>
