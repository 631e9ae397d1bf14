<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>LumoWidget</name>
    <message>
        <source>工位</source>
        <translation>Station</translation>
    </message>
    <message>
        <source>工程编辑</source>
        <translation>Project</translation>
    </message>
    <message>
        <source>端口配置</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>参数配置</source>
        <translation>Paramters</translation>
    </message>
    <message>
        <source>状态监控</source>
        <translation>Monitor</translation>
    </message>
    <message>
        <source>设备控制</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>触发信号绑定</source>
        <translation>Signal</translation>
    </message>
    <message>
        <source>焊接工具</source>
        <translation>Welding Tool</translation>
    </message>
    <message>
        <source>焊接工件</source>
        <translation>Welding Wobj</translation>
    </message>
    <message>
        <source>工程名</source>
        <translation>Project Name</translation>
    </message>
    <message>
        <source>新建</source>
        <translation>New</translation>
    </message>
    <message>
        <source>打开</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>另存为</source>
        <translation>Save As</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>新建工程</source>
        <translation>New Project</translation>
    </message>
    <message>
        <source>另存为工程</source>
        <translation>Save As</translation>
    </message>
    <message>
        <source>打开工程</source>
        <translation>Open Project</translation>
    </message>
    <message>
        <source>请输入新建工程名称</source>
        <translation>Enter The Name of the New Project</translation>
    </message>
    <message>
        <source>请输入另存为工程名称</source>
        <translation>Enter Save as Project Name</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Tips</translation>
    </message>
    <message>
        <source>输入工程名过长，限制长度为20</source>
        <translation>Project name is too long,no longer than 20.</translation>
    </message>
    <message>
        <source>该工程名已存在</source>
        <translation>Project Name Already Exists</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>Warning</translation>
    </message>
    <message>
        <source>当前没有已打开工程</source>
        <translation>No opened project</translation>
    </message>
    <message>
        <source>保存成功</source>
        <translation>Saved successfully.</translation>
    </message>
    <message>
        <source>文件夹：</source>
        <translation>Folder:</translation>
    </message>
    <message>
        <source>文件名：</source>
        <translation>File name:</translation>
    </message>
    <message>
        <source>文件类型：</source>
        <translation>File type:</translation>
    </message>
    <message>
        <source>无法打开工程：%1</source>
        <translation>The project cannot be opened: %1</translation>
    </message>
    <message>
        <source>请输入不超过19个字符的名称。</source>
        <translation>Enter a name of up to 19 characters.</translation>
    </message>
    <message>
        <source>请换一个名称：同名文件已存在，或名称不能用作文件名。</source>
        <translation>Choose another name: a file has it, or it cannot be the name of a file.</translation>
    </message>
    <message>
        <source>窗口底部的提示说明原因和位置。当前工程保持打开。</source>
        <translation>The notice at the bottom of the window says why and where. The open project stays open.</translation>
    </message>
    <message>
        <source>请先新建或打开工程。</source>
        <translation>Create or open a project first.</translation>
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
        <source>已保存</source>
        <translation>Saved</translation>
    </message>
    <message>
        <source>未保存</source>
        <translation>Not saved</translation>
    </message>
</context>
</TS>
