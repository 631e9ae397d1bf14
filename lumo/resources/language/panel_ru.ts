<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="zh_CN">
<context>
    <name>LumoWidget</name>
    <message>
        <source>工位</source>
        <translation>Пост</translation>
    </message>
    <message>
        <source>工程编辑</source>
        <translation>Проект</translation>
    </message>
    <message>
        <source>端口配置</source>
        <translation>Порты</translation>
    </message>
    <message>
        <source>参数配置</source>
        <translation>Параметры</translation>
    </message>
    <message>
        <source>状态监控</source>
        <translation>Состояние</translation>
    </message>
    <message>
        <source>设备控制</source>
        <translation>Устройства</translation>
    </message>
    <message>
        <source>触发信号绑定</source>
        <translation>Сигналы</translation>
    </message>
    <message>
        <source>焊接工具</source>
        <translation>Инструмент</translation>
    </message>
    <message>
        <source>焊接工件</source>
        <translation>Деталь</translation>
    </message>
    <message>
        <source>工程名</source>
        <translation>Проект</translation>
    </message>
    <message>
        <source>新建</source>
        <translation>Создать</translation>
    </message>
    <message>
        <source>打开</source>
        <translation>Открыть</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Сохранить</translation>
    </message>
    <message>
        <source>另存为</source>
        <translation>Сохранить как</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>新建工程</source>
        <translation>Новый проект</translation>
    </message>
    <message>
        <source>另存为工程</source>
        <translation>Сохранить проект как</translation>
    </message>
    <message>
        <source>打开工程</source>
        <translation>Открыть проект</translation>
    </message>
    <message>
        <source>请输入新建工程名称</source>
        <translation>Введите имя нового проекта</translation>
    </message>
    <message>
        <source>请输入另存为工程名称</source>
        <translation>Введите имя, под которым сохранить проект</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Сообщение</translation>
    </message>
    <message>
        <source>输入工程名过长，限制长度为20</source>
        <translation>Имя проекта слишком длинное: не более 19 символов</translation>
    </message>
    <message>
        <source>该工程名已存在</source>
        <translation>Проект с таким именем уже существует</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>Предупреждение</translation>
    </message>
    <message>
        <source>当前没有已打开工程</source>
        <translation>Нет открытого проекта</translation>
    </message>
    <message>
        <source>保存成功</source>
        <translation>Сохранено.</translation>
    </message>
    <message>
        <source>文件夹：</source>
        <translation>Папка:</translation>
    </message>
    <message>
        <source>文件名：</source>
        <translation>Имя файла:</translation>
    </message>
    <message>
        <source>文件类型：</source>
        <translation>Тип файла:</translation>
    </message>
    <message>
        <source>无法打开工程：%1</source>
        <translation>Не удаётся открыть проект: %1</translation>
    </message>
    <message>
        <source>请输入不超过19个字符的名称。</source>
        <translation>Введите имя не длиннее 19 символов.</translation>
    </message>
    <message>
        <source>请换一个名称：同名文件已存在，或名称不能用作文件名。</source>
        <translation>Выберите другое имя: оно уже занято или не годится для файла.</translation>
    </message>
    <message>
        <source>窗口底部的提示说明原因和位置。当前工程保持打开。</source>
        <translation>Сообщение внизу окна говорит, почему и где. Открытый проект остаётся открытым.</translation>
    </message>
    <message>
        <source>请先新建或打开工程。</source>
        <translation>Сначала создайте или откройте проект.</translation>
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
        <source>已保存</source>
        <translation>Сохранено</translation>
    </message>
    <message>
        <source>未保存</source>
        <translation>Не сохранено</translation>
    </message>
</context>
</TS>
