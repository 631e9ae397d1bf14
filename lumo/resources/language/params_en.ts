<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>AddParamDialog</name>
    <message>
        <source>新建参数配置</source>
        <translation>New Welding Parameters</translation>
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
    <name>ParamConfigWidget</name>
    <message>
        <source>参数配置</source>
        <translation>Parameter Configure</translation>
    </message>
    <message>
        <source>序号</source>
        <translation>Num</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>增加</source>
        <translation>New</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>新建参数配置</source>
        <translation>New Welding Parameters</translation>
    </message>
    <message>
        <source>请输入参数名称</source>
        <translation>Please input parameter name.</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Tips</translation>
    </message>
    <message>
        <source>该参数名称已存在</source>
        <translation>This parameter is already existed.</translation>
    </message>
    <message>
        <source>删除确认</source>
        <translation>DeletionConfirm</translation>
    </message>
    <message>
        <source>是否删除</source>
        <translation>Are you sure to delete?</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>否</source>
        <translation>No</translation>
    </message>
    <message>
        <source>请先选中行</source>
        <translation>Please select a row.</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Duplicate</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Up</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Down</translation>
    </message>
    <message>
        <source>导入</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>导出</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>功率
%</source>
        <translation>Power
%</translation>
    </message>
    <message>
        <source>占空比
%</source>
        <translation>Duty
%</translation>
    </message>
    <message>
        <source>送丝
%</source>
        <translation>Wire
%</translation>
    </message>
    <message>
        <source>备注</source>
        <translation>Remark</translation>
    </message>
    <message>
        <source>运行错误</source>
        <translation>Running Error</translation>
    </message>
    <message>
        <source>当前不是空闲状态</source>
        <translation>Robot is not idle</translation>
    </message>
    <message>
        <source>其他工程按序号使用参数组，不会随之改变，请检查。</source>
        <translation>Other projects use sets by their numbers and do not follow: check them.</translation>
    </message>
    <message>
        <source>第 %1 行使用这组参数，删除后须为其另选参数。</source>
        <translation>Used in lines: %1. They will have no set then: choose another one for them.</translation>
    </message>
    <message>
        <source>频率
%</source>
        <translation>Frequency
%</translation>
    </message>
    <message>
        <source>缓升
ms</source>
        <translation>Ramp Up
ms</translation>
    </message>
    <message>
        <source>缓降
ms</source>
        <translation>Ramp Down
ms</translation>
    </message>
    <message>
        <source>前吹气
ms</source>
        <translation>Pre-flow
ms</translation>
    </message>
    <message>
        <source>后吹气
ms</source>
        <translation>Post-flow
ms</translation>
    </message>
    <message>
        <source>使用
行</source>
        <translation>Used in
lines</translation>
    </message>
    <message>
        <source>开始、焊缝与结束按此执行；点按时间即可修改</source>
        <translation>opening, seam and closing as they will run; tap a time to change it</translation>
    </message>
</context>
<context>
    <name>ParamValuesDialog</name>
    <message>
        <source>&lt;h1&gt;参数编辑窗口&lt;/h1&gt;</source>
        <translation>&lt;h1&gt;Parameter Editor&lt;/h1&gt;</translation>
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
        <source>参数名称</source>
        <translation>Parameter Name</translation>
    </message>
    <message>
        <source>设定</source>
        <translation>Setting</translation>
    </message>
    <message>
        <source>范围</source>
        <translation>Range</translation>
    </message>
    <message>
        <source>功率参数</source>
        <translation>Power Parameters</translation>
    </message>
    <message>
        <source>过程参数</source>
        <translation>Procedure Parameters</translation>
    </message>
    <message>
        <source>送丝参数</source>
        <translation>Wire Parameters</translation>
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
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>lumo::SetExchange</name>
    <message>
        <source>没有可导出的参数组。</source>
        <translation>There are no sets to export.</translation>
    </message>
    <message>
        <source>导出参数组</source>
        <translation>Export Sets</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>参数</source>
        <translation>parameters</translation>
    </message>
    <message>
        <source>%1 是本程序自己的文件，请换一个名称。</source>
        <translation>%1 is a file of the program itself. Choose another name.</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Tips</translation>
    </message>
    <message>
        <source>文件 %1 已存在，是否覆盖？</source>
        <translation>The file %1 exists. Overwrite it?</translation>
    </message>
    <message>
        <source>覆盖</source>
        <translation>Overwrite</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>已导出 %1 组参数到 %2。</source>
        <translation>Sets exported to %2: %1.</translation>
    </message>
    <message>
        <source>无法写入文件：%1</source>
        <translation>The file cannot be written: %1</translation>
    </message>
    <message>
        <source>导入参数组</source>
        <translation>Import Sets</translation>
    </message>
    <message>
        <source>导入</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>没有导入 %1：</source>
        <translation>%1 was not imported:</translation>
    </message>
    <message>
        <source>文件无法读取。</source>
        <translation>The file cannot be read.</translation>
    </message>
    <message>
        <source>文件中没有参数组。</source>
        <translation>There are no parameter sets in the file.</translation>
    </message>
    <message>
        <source>第 %1 组参数没有名称。</source>
        <translation>Set %1 has no name.</translation>
    </message>
    <message>
        <source>仍要导入？</source>
        <translation>Import nevertheless?</translation>
    </message>
    <message>
        <source>已有同名的参数组：%1</source>
        <translation>Sets of these names exist: %1</translation>
    </message>
    <message>
        <source>替换其数值</source>
        <translation>Replace their values</translation>
    </message>
    <message>
        <source>两者都保留</source>
        <translation>Keep both</translation>
    </message>
    <message>
        <source>已导入 %1 组参数。</source>
        <translation>Sets imported: %1.</translation>
    </message>
</context>
<context>
    <name>lumo::TimingPicture</name>
    <message>
        <source>选中一组参数，这里显示其时序。</source>
        <translation>Select a set to see what it does over time.</translation>
    </message>
    <message>
        <source>前吹气 %1</source>
        <translation>Pre-flow %1</translation>
    </message>
    <message>
        <source>出光 %1</source>
        <translation>Pulse %1</translation>
    </message>
    <message>
        <source>间隔 %1</source>
        <translation>Interval %1</translation>
    </message>
    <message>
        <source>关光延迟 %1</source>
        <translation>Delay End %1</translation>
    </message>
    <message>
        <source>缓升 %1</source>
        <translation>Ramp Up %1</translation>
    </message>
    <message>
        <source>缓降 %1</source>
        <translation>Ramp Down %1</translation>
    </message>
    <message>
        <source>后吹气 %1</source>
        <translation>Post-flow %1</translation>
    </message>
    <message>
        <source>补丝自 %1</source>
        <translation>fed again from %1</translation>
    </message>
    <message>
        <source>至 %1</source>
        <translation>to %1</translation>
    </message>
    <message>
        <source>抽丝至 %1</source>
        <translation>Pullback to %1</translation>
    </message>
    <message>
        <source>停留 %1</source>
        <translation>Early Start %1</translation>
    </message>
    <message>
        <source>机器人</source>
        <translation>Robot</translation>
    </message>
    <message>
        <source>时间，ms</source>
        <translation>Time, ms</translation>
    </message>
    <message>
        <source>开始</source>
        <translation>opening</translation>
    </message>
    <message>
        <source>结束</source>
        <translation>closing</translation>
    </message>
</context>
</TS>
