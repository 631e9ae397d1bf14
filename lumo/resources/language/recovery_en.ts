<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>lumo::ProjectDialogs</name>
    <message>
        <source>程序有未保存的更改。</source>
        <translation>The program has unsaved changes.</translation>
    </message>
    <message>
        <source>工程“%1”有未保存的更改。</source>
        <translation>The project "%1" has unsaved changes.</translation>
    </message>
    <message>
        <source>未保存的更改</source>
        <translation>Unsaved changes</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>不保存</source>
        <translation>Discard</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>lumo::Recovery</name>
    <message>
        <source>提示</source>
        <translation>Tips</translation>
    </message>
    <message>
        <source>恢复文件已损坏，不能使用：%1</source>
        <translation>The recovery file is damaged and cannot be used: %1</translation>
    </message>
    <message>
        <source>无文件的程序</source>
        <translation>A program without a file</translation>
    </message>
    <message>
        <source>%1 有未保存的更改：%2，更改了 %3 行。</source>
        <translation>%1 has unsaved changes: %2, lines changed: %3.</translation>
    </message>
    <message>
        <source>工程文件在那之后又被更改，恢复将放弃那些更改。</source>
        <translation>The project file was changed after that. Restoring drops what was changed there.</translation>
    </message>
    <message>
        <source>要恢复吗？</source>
        <translation>Restore them?</translation>
    </message>
    <message>
        <source>恢复未保存的更改</source>
        <translation>Restore unsaved changes</translation>
    </message>
    <message>
        <source>恢复</source>
        <translation>Restore</translation>
    </message>
    <message>
        <source>放弃</source>
        <translation>Discard</translation>
    </message>
    <message>
        <source>以后再说</source>
        <translation>Later</translation>
    </message>
</context>
</TS>
