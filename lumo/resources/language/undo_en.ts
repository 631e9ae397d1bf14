<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>lumo::History</name>
    <message>
        <source>提示</source>
        <translation>Tips</translation>
    </message>
    <message>
        <source>内容已在别处更改，之前的步骤不能再撤销。</source>
        <translation>The content was changed elsewhere. The earlier steps can no longer be undone.</translation>
    </message>
</context>
<context>
    <name>lumo::UndoBar</name>
    <message>
        <source>撤销</source>
        <translation>Undo</translation>
    </message>
    <message>
        <source>重做</source>
        <translation>Redo</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
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
        <source>请先关闭当前页面</source>
        <translation>Close this page first: OK or Cancel</translation>
    </message>
    <message>
        <source>机器人上电时不能编辑程序</source>
        <translation>The program cannot be edited while the drives have power</translation>
    </message>
    <message>
        <source>再按一次将撤销：%1</source>
        <translation>Press again to undo: %1</translation>
    </message>
    <message>
        <source>再按一次将重做：%1</source>
        <translation>Press again to redo: %1</translation>
    </message>
    <message>
        <source>该步骤所在的页面已锁定：%1</source>
        <translation>The page of this step is locked: %1</translation>
    </message>
    <message>
        <source>已撤销：%1</source>
        <translation>Undone: %1</translation>
    </message>
    <message>
        <source>已重做：%1</source>
        <translation>Redone: %1</translation>
    </message>
</context>
<context>
    <name>lumo::steptext</name>
    <message>
        <source>插入第 %1 行：%2</source>
        <translation>Insert line %1: %2</translation>
    </message>
    <message>
        <source>删除第 %1 行：%2</source>
        <translation>Delete line %1: %2</translation>
    </message>
    <message>
        <source>粘贴第 %1 行：%2</source>
        <translation>Paste line %1: %2</translation>
    </message>
    <message>
        <source>移动第 %1 行到第 %2 行</source>
        <translation>Move line %1 to line %2</translation>
    </message>
    <message>
        <source>编辑第 %1 行：%2</source>
        <translation>Edit line %1: %2</translation>
    </message>
    <message>
        <source>示教第 %1 行：%2</source>
        <translation>Teach line %1: %2</translation>
    </message>
    <message>
        <source>第 %1 行：运行/不运行</source>
        <translation>Line %1: run / do not run</translation>
    </message>
    <message>
        <source>运行/不运行（%1 行）</source>
        <translation>Run / do not run (%1 lines)</translation>
    </message>
    <message>
        <source>修改速度（%1 行）</source>
        <translation>Change the speed (%1 lines)</translation>
    </message>
    <message>
        <source>修改转弯区（%1 行）</source>
        <translation>Change the radius (%1 lines)</translation>
    </message>
    <message>
        <source>新建参数组 %1</source>
        <translation>Add parameter set %1</translation>
    </message>
    <message>
        <source>删除参数组 %1</source>
        <translation>Delete parameter set %1</translation>
    </message>
    <message>
        <source>参数组 %1 改名为 %2</source>
        <translation>Rename parameter set %1 to %2</translation>
    </message>
    <message>
        <source>编辑参数组 %1</source>
        <translation>Edit parameter set %1</translation>
    </message>
    <message>
        <source>端口配置</source>
        <translation>Port assignment</translation>
    </message>
    <message>
        <source>新建工位 %1</source>
        <translation>Add station %1</translation>
    </message>
    <message>
        <source>删除工位 %1</source>
        <translation>Delete station %1</translation>
    </message>
    <message>
        <source>编辑工位 %1</source>
        <translation>Edit station %1</translation>
    </message>
    <message>
        <source>移动参数组 %1</source>
        <translation>Move parameter set %1</translation>
    </message>
    <message>
        <source>导入参数组（%1 组）</source>
        <translation>Import parameter sets (%1)</translation>
    </message>
</context>
</TS>
