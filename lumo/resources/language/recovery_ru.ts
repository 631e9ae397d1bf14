<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="zh_CN">
<context>
    <name>lumo::ProjectDialogs</name>
    <message>
        <source>程序有未保存的更改。</source>
        <translation>В программе есть несохранённые изменения.</translation>
    </message>
    <message>
        <source>工程“%1”有未保存的更改。</source>
        <translation>В проекте «%1» есть несохранённые изменения.</translation>
    </message>
    <message>
        <source>未保存的更改</source>
        <translation>Несохранённые изменения</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Сохранить</translation>
    </message>
    <message>
        <source>不保存</source>
        <translation>Не сохранять</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Отмена</translation>
    </message>
</context>
<context>
    <name>lumo::Recovery</name>
    <message>
        <source>提示</source>
        <translation>Сообщение</translation>
    </message>
    <message>
        <source>恢复文件已损坏，不能使用：%1</source>
        <translation>Файл восстановления повреждён и не может быть использован: %1</translation>
    </message>
    <message>
        <source>无文件的程序</source>
        <translation>Программа без файла</translation>
    </message>
    <message>
        <source>%1 有未保存的更改：%2，更改了 %3 行。</source>
        <translation>%1: есть несохранённые изменения от %2, изменено строк: %3.</translation>
    </message>
    <message>
        <source>工程文件在那之后又被更改，恢复将放弃那些更改。</source>
        <translation>Файл проекта с тех пор изменён. При восстановлении те изменения не учитываются.</translation>
    </message>
    <message>
        <source>要恢复吗？</source>
        <translation>Восстановить?</translation>
    </message>
    <message>
        <source>恢复未保存的更改</source>
        <translation>Восстановление изменений</translation>
    </message>
    <message>
        <source>恢复</source>
        <translation>Восстановить</translation>
    </message>
    <message>
        <source>放弃</source>
        <translation>Отбросить</translation>
    </message>
    <message>
        <source>以后再说</source>
        <translation>Позже</translation>
    </message>
</context>
</TS>
