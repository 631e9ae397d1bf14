<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="zh_CN">
<context>
    <name>AddParamDialog</name>
    <message>
        <source>新建参数配置</source>
        <translation>Новый набор параметров</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>ОК</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Отмена</translation>
    </message>
</context>
<context>
    <name>ParamConfigWidget</name>
    <message>
        <source>参数配置</source>
        <translation>Наборы параметров сварки</translation>
    </message>
    <message>
        <source>序号</source>
        <translation>№ п/п</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Имя</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>增加</source>
        <translation>Добавить</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Изменить</translation>
    </message>
    <message>
        <source>新建参数配置</source>
        <translation>Новый набор параметров</translation>
    </message>
    <message>
        <source>请输入参数名称</source>
        <translation>Введите имя набора параметров.</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Сообщение</translation>
    </message>
    <message>
        <source>该参数名称已存在</source>
        <translation>Набор параметров с таким именем уже есть.</translation>
    </message>
    <message>
        <source>删除确认</source>
        <translation>Подтверждение удаления</translation>
    </message>
    <message>
        <source>是否删除</source>
        <translation>Удалить набор №</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Да</translation>
    </message>
    <message>
        <source>否</source>
        <translation>Нет</translation>
    </message>
    <message>
        <source>请先选中行</source>
        <translation>Сначала выберите строку.</translation>
    </message>
</context>
<context>
    <name>ParamValuesDialog</name>
    <message>
        <source>&lt;h1&gt;参数编辑窗口&lt;/h1&gt;</source>
        <translation>&lt;h1&gt;Изменение параметров&lt;/h1&gt;</translation>
    </message>
    <message>
        <source>序号</source>
        <translation>№ п/п</translation>
    </message>
    <message>
        <source>类别</source>
        <translation>Группа</translation>
    </message>
    <message>
        <source>参数名称</source>
        <translation>Параметр</translation>
    </message>
    <message>
        <source>设定</source>
        <translation>Значение</translation>
    </message>
    <message>
        <source>范围</source>
        <translation>Диапазон</translation>
    </message>
    <message>
        <source>功率参数</source>
        <translation>Мощность</translation>
    </message>
    <message>
        <source>过程参数</source>
        <translation>Процесс</translation>
    </message>
    <message>
        <source>送丝参数</source>
        <translation>Подача проволоки</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>ОК</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Отмена</translation>
    </message>
</context>
</TS>
