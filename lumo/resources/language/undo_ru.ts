<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="zh_CN">
<context>
    <name>lumo::History</name>
    <message>
        <source>提示</source>
        <translation>Сообщение</translation>
    </message>
    <message>
        <source>内容已在别处更改，之前的步骤不能再撤销。</source>
        <translation>Содержимое изменено в другом месте. Прежние шаги больше нельзя отменить.</translation>
    </message>
</context>
<context>
    <name>lumo::UndoBar</name>
    <message>
        <source>撤销</source>
        <translation>Отменить</translation>
    </message>
    <message>
        <source>重做</source>
        <translation>Повторить</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>运行错误</source>
        <translation>Ошибка выполнения</translation>
    </message>
    <message>
        <source>当前不是空闲状态</source>
        <translation>Робот занят</translation>
    </message>
    <message>
        <source>请先关闭当前页面</source>
        <translation>Сначала закройте страницу: «ОК» или «Отмена»</translation>
    </message>
    <message>
        <source>机器人上电时不能编辑程序</source>
        <translation>Программу нельзя править при включённых приводах</translation>
    </message>
    <message>
        <source>再按一次将撤销：%1</source>
        <translation>Нажмите ещё раз, чтобы отменить: %1</translation>
    </message>
    <message>
        <source>再按一次将重做：%1</source>
        <translation>Нажмите ещё раз, чтобы повторить: %1</translation>
    </message>
    <message>
        <source>该步骤所在的页面已锁定：%1</source>
        <translation>Страница этого шага заблокирована: %1</translation>
    </message>
    <message>
        <source>已撤销：%1</source>
        <translation>Отменено: %1</translation>
    </message>
    <message>
        <source>已重做：%1</source>
        <translation>Повторено: %1</translation>
    </message>
</context>
<context>
    <name>lumo::steptext</name>
    <message>
        <source>插入第 %1 行：%2</source>
        <translation>Вставка строки %1: %2</translation>
    </message>
    <message>
        <source>删除第 %1 行：%2</source>
        <translation>Удаление строки %1: %2</translation>
    </message>
    <message>
        <source>粘贴第 %1 行：%2</source>
        <translation>Вставка копии, строка %1: %2</translation>
    </message>
    <message>
        <source>移动第 %1 行到第 %2 行</source>
        <translation>Перенос строки %1 на место %2</translation>
    </message>
    <message>
        <source>编辑第 %1 行：%2</source>
        <translation>Правка строки %1: %2</translation>
    </message>
    <message>
        <source>示教第 %1 行：%2</source>
        <translation>Обучение строки %1: %2</translation>
    </message>
    <message>
        <source>第 %1 行：运行/不运行</source>
        <translation>Строка %1: вкл. / выкл.</translation>
    </message>
    <message>
        <source>运行/不运行（%1 行）</source>
        <translation>Вкл. / выкл. (строк: %1)</translation>
    </message>
    <message>
        <source>修改速度（%1 行）</source>
        <translation>Изменение скорости (строк: %1)</translation>
    </message>
    <message>
        <source>修改转弯区（%1 行）</source>
        <translation>Изменение радиуса (строк: %1)</translation>
    </message>
    <message>
        <source>新建参数组 %1</source>
        <translation>Новый набор параметров %1</translation>
    </message>
    <message>
        <source>删除参数组 %1</source>
        <translation>Удаление набора параметров %1</translation>
    </message>
    <message>
        <source>参数组 %1 改名为 %2</source>
        <translation>Переименование набора параметров %1 в %2</translation>
    </message>
    <message>
        <source>编辑参数组 %1</source>
        <translation>Правка набора параметров %1</translation>
    </message>
    <message>
        <source>端口配置</source>
        <translation>Назначение портов</translation>
    </message>
    <message>
        <source>新建工位 %1</source>
        <translation>Новый пост %1</translation>
    </message>
    <message>
        <source>删除工位 %1</source>
        <translation>Удаление поста %1</translation>
    </message>
    <message>
        <source>编辑工位 %1</source>
        <translation>Правка поста %1</translation>
    </message>
    <message>
        <source>移动参数组 %1</source>
        <translation>Перенос набора параметров %1</translation>
    </message>
    <message>
        <source>导入参数组（%1 组）</source>
        <translation>Импорт наборов параметров (%1)</translation>
    </message>
</context>
</TS>
