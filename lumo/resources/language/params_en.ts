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
</context>
</TS>
