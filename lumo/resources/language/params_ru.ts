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
        <translation>Наборы параметров</translation>
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
    <message>
        <source>复制</source>
        <translation>Копия</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Вверх</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Вниз</translation>
    </message>
    <message>
        <source>导入</source>
        <translation>Импорт</translation>
    </message>
    <message>
        <source>导出</source>
        <translation>Экспорт</translation>
    </message>
    <message>
        <source>功率
%</source>
        <translation>Мощность
%</translation>
    </message>
    <message>
        <source>占空比
%</source>
        <translation>Заполнение
%</translation>
    </message>
    <message>
        <source>送丝
%</source>
        <translation>Проволока
%</translation>
    </message>
    <message>
        <source>备注</source>
        <translation>Прим.</translation>
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
        <source>其他工程按序号使用参数组，不会随之改变，请检查。</source>
        <translation>Другие проекты используют наборы по номерам и не изменятся: проверьте их.</translation>
    </message>
    <message>
        <source>第 %1 行使用这组参数，删除后须为其另选参数。</source>
        <translation>Этот набор используют строки: %1. После удаления выберите для них другой.</translation>
    </message>
    <message>
        <source>频率
%</source>
        <translation>Частота
%</translation>
    </message>
    <message>
        <source>缓升
ms</source>
        <translation>Рост
мс</translation>
    </message>
    <message>
        <source>缓降
ms</source>
        <translation>Спад
мс</translation>
    </message>
    <message>
        <source>前吹气
ms</source>
        <translation>Газ до
мс</translation>
    </message>
    <message>
        <source>后吹气
ms</source>
        <translation>Газ после
мс</translation>
    </message>
    <message>
        <source>使用
行</source>
        <translation>В
строках</translation>
    </message>
    <message>
        <source>开始、焊缝与结束按此执行；点按时间即可修改</source>
        <translation>так пройдут начало, шов и окончание; коснитесь времени, чтобы изменить его</translation>
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
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>lumo::SetExchange</name>
    <message>
        <source>没有可导出的参数组。</source>
        <translation>Нет наборов для экспорта.</translation>
    </message>
    <message>
        <source>导出参数组</source>
        <translation>Экспорт наборов</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Сохранить</translation>
    </message>
    <message>
        <source>参数</source>
        <translation>параметры</translation>
    </message>
    <message>
        <source>%1 是本程序自己的文件，请换一个名称。</source>
        <translation>%1 — собственный файл программы. Выберите другое имя.</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Сообщение</translation>
    </message>
    <message>
        <source>文件 %1 已存在，是否覆盖？</source>
        <translation>Файл %1 существует. Перезаписать его?</translation>
    </message>
    <message>
        <source>覆盖</source>
        <translation>Перезаписать</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>已导出 %1 组参数到 %2。</source>
        <translation>Экспортировано наборов в %2: %1.</translation>
    </message>
    <message>
        <source>无法写入文件：%1</source>
        <translation>Не удалось записать файл: %1</translation>
    </message>
    <message>
        <source>导入参数组</source>
        <translation>Импорт наборов</translation>
    </message>
    <message>
        <source>导入</source>
        <translation>Импортировать</translation>
    </message>
    <message>
        <source>没有导入 %1：</source>
        <translation>%1 не импортирован:</translation>
    </message>
    <message>
        <source>文件无法读取。</source>
        <translation>Файл не читается.</translation>
    </message>
    <message>
        <source>文件中没有参数组。</source>
        <translation>В файле нет наборов параметров.</translation>
    </message>
    <message>
        <source>第 %1 组参数没有名称。</source>
        <translation>У набора %1 нет имени.</translation>
    </message>
    <message>
        <source>仍要导入？</source>
        <translation>Всё равно импортировать?</translation>
    </message>
    <message>
        <source>已有同名的参数组：%1</source>
        <translation>Наборы с такими именами уже есть: %1</translation>
    </message>
    <message>
        <source>替换其数值</source>
        <translation>Заменить значения</translation>
    </message>
    <message>
        <source>两者都保留</source>
        <translation>Оставить оба</translation>
    </message>
    <message>
        <source>已导入 %1 组参数。</source>
        <translation>Импортировано наборов: %1.</translation>
    </message>
</context>
<context>
    <name>lumo::TimingPicture</name>
    <message>
        <source>选中一组参数，这里显示其时序。</source>
        <translation>Выберите набор, чтобы увидеть его работу во времени.</translation>
    </message>
    <message>
        <source>前吹气 %1</source>
        <translation>Газ до %1</translation>
    </message>
    <message>
        <source>出光 %1</source>
        <translation>Импульс %1</translation>
    </message>
    <message>
        <source>间隔 %1</source>
        <translation>Пауза %1</translation>
    </message>
    <message>
        <source>关光延迟 %1</source>
        <translation>Задержка %1</translation>
    </message>
    <message>
        <source>缓升 %1</source>
        <translation>Рост %1</translation>
    </message>
    <message>
        <source>缓降 %1</source>
        <translation>Спад %1</translation>
    </message>
    <message>
        <source>后吹气 %1</source>
        <translation>Газ после %1</translation>
    </message>
    <message>
        <source>补丝自 %1</source>
        <translation>доподача с %1</translation>
    </message>
    <message>
        <source>至 %1</source>
        <translation>до %1</translation>
    </message>
    <message>
        <source>抽丝至 %1</source>
        <translation>Откат до %1</translation>
    </message>
    <message>
        <source>停留 %1</source>
        <translation>Выдержка %1</translation>
    </message>
    <message>
        <source>机器人</source>
        <translation>Робот</translation>
    </message>
    <message>
        <source>时间，ms</source>
        <translation>Время, мс</translation>
    </message>
    <message>
        <source>开始</source>
        <translation>начало</translation>
    </message>
    <message>
        <source>结束</source>
        <translation>окончание</translation>
    </message>
</context>
</TS>
