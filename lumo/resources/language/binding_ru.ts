<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="zh_CN">
<context>
    <name>SignalsBindWidget</name>
    <message>
        <source>工程列表</source>
        <translation>Список проектов</translation>
    </message>
    <message>
        <source>开关监听</source>
        <translation>Опрос</translation>
    </message>
    <message>
        <source>序号</source>
        <translation>№ поста</translation>
    </message>
    <message>
        <source>工位名称</source>
        <translation>Имя поста</translation>
    </message>
    <message>
        <source>工程名</source>
        <translation>Проект</translation>
    </message>
    <message>
        <source>DI类型</source>
        <translation>Тип DI</translation>
    </message>
    <message>
        <source>DI信号</source>
        <translation>Сигнал DI</translation>
    </message>
    <message>
        <source>触发类型</source>
        <translation>Фронт / спад</translation>
    </message>
    <message>
        <source>有效时间(ms)</source>
        <translation>Время (мс)</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>Состояние</translation>
    </message>
    <message>
        <source>DO类型</source>
        <translation>Тип DO</translation>
    </message>
    <message>
        <source>DO信号</source>
        <translation>Сигнал DO</translation>
    </message>
    <message>
        <source>添加</source>
        <translation>Добавить</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Изменить</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>已触发</source>
        <translation>Сработал</translation>
    </message>
    <message>
        <source>正在运行</source>
        <translation>Выполняется</translation>
    </message>
    <message>
        <source>未触发</source>
        <translation>Не сработал</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Сообщение</translation>
    </message>
    <message>
        <source>请先选中行</source>
        <translation>Сначала выберите строку.</translation>
    </message>
    <message>
        <source>默认行禁止删除</source>
        <translation>Стандартную строку удалить нельзя</translation>
    </message>
    <message>
        <source>%1：工程 %2 有错误，未启动。</source>
        <translation>%1: в проекте %2 есть ошибки, он не запущен.</translation>
    </message>
    <message>
        <source>若不使用该工位，请编辑它并清空其启动信号。</source>
        <translation>Если пост не нужен, откройте его и оставьте сигнал пуска пустым.</translation>
    </message>
    <message>
        <source>下一个</source>
        <translation>следующий</translation>
    </message>
    <message>
        <source>第 %1 个</source>
        <translation>%1-й</translation>
    </message>
</context>
<context>
    <name>SignalsBindingParamWidget</name>
    <message>
        <source>上升沿</source>
        <translation>По фронту</translation>
    </message>
    <message>
        <source>下降沿</source>
        <translation>По спаду</translation>
    </message>
    <message>
        <source>寄存器</source>
        <translation>Регистр</translation>
    </message>
    <message>
        <source> 信号绑定参数配置</source>
        <translation>Настройка сигналов поста</translation>
    </message>
    <message>
        <source>编辑名称</source>
        <translation>Имя</translation>
    </message>
    <message>
        <source>固定名称</source>
        <translation>Имя (неизменное)</translation>
    </message>
    <message>
        <source>工位名称</source>
        <translation>Пост</translation>
    </message>
    <message>
        <source>选择工程</source>
        <translation>Выбрать проект</translation>
    </message>
    <message>
        <source>清除工程</source>
        <translation>Убрать проект</translation>
    </message>
    <message>
        <source>工程名</source>
        <translation>Проект</translation>
    </message>
    <message>
        <source>输入信号</source>
        <translation>Входной сигнал</translation>
    </message>
    <message>
        <source>输出信号</source>
        <translation>Выходной сигнал</translation>
    </message>
    <message>
        <source>启动设置</source>
        <translation>Пуск</translation>
    </message>
    <message>
        <source>停止设置</source>
        <translation>Стоп</translation>
    </message>
    <message>
        <source>信号名称：</source>
        <translation>Сигнал:</translation>
    </message>
    <message>
        <source>触发类型：</source>
        <translation>Фронт / спад:</translation>
    </message>
    <message>
        <source>信号生效时间(ms)：</source>
        <translation>Длительность (мс):</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>ОК</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Сообщение</translation>
    </message>
    <message>
        <source>该文件不能用作工位的工程：%1</source>
        <translation>Этот файл не может быть проектом поста: %1</translation>
    </message>
    <message>
        <source>工位名称不能为空!</source>
        <translation>Имя поста не может быть пустым!</translation>
    </message>
    <message>
        <source>启动: </source>
        <translation>Пуск: </translation>
    </message>
    <message>
        <source>停止: </source>
        <translation>Стоп: </translation>
    </message>
    <message>
        <source>工程 %1 有错误，不能用于工位。</source>
        <translation>В проекте %1 есть ошибки, для поста его выбрать нельзя.</translation>
    </message>
</context>
<context>
    <name>lumo::StationCards</name>
    <message>
        <source>当前运行</source>
        <translation>Выполняется</translation>
    </message>
    <message>
        <source>没有运行</source>
        <translation>Ничего не выполняется.</translation>
    </message>
    <message>
        <source>焊缝 %1 / %2，第 %3 行</source>
        <translation>Шов %1 из %2, строка %3</translation>
    </message>
    <message>
        <source>第 %1 行</source>
        <translation>Строка %1</translation>
    </message>
    <message>
        <source>等待</source>
        <translation>Ожидает</translation>
    </message>
    <message>
        <source>没有等待的工位</source>
        <translation>Ни один пост не ждёт.</translation>
    </message>
    <message>
        <source>已等 %1</source>
        <translation>уже %1</translation>
    </message>
    <message>
        <source>已等 %1，在 %2 之后</source>
        <translation>уже %1, после «%2»</translation>
    </message>
    <message>
        <source>另有 %1 个</source>
        <translation>ещё %1</translation>
    </message>
    <message>
        <source>运行完成</source>
        <translation>Выполнено</translation>
    </message>
    <message>
        <source>中途停止</source>
        <translation>Остановлено</translation>
    </message>
    <message>
        <source>未能启动</source>
        <translation>Не запущено</translation>
    </message>
    <message>
        <source>未监听</source>
        <translation>Опрос выключен</translation>
    </message>
    <message>
        <source>自 %1 起监听</source>
        <translation>Опрос с %1</translation>
    </message>
    <message>
        <source>已等 %1，停止信号有效</source>
        <translation>уже %1, включён вход «Стоп»</translation>
    </message>
</context>
</TS>
