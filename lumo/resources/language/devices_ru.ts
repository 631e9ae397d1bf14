<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="zh_CN">
<context>
    <name>lumo::DeviceCard</name>
    <message>
        <source>转到端口页</source>
        <translation>К портам</translation>
    </message>
</context>
<context>
    <name>lumo::DeviceState</name>
    <message>
        <source>端口未启用</source>
        <translation>Порт отключён</translation>
    </message>
    <message>
        <source>已解锁，再按即锁定</source>
        <translation>Снята. Нажмите, чтобы закрыть</translation>
    </message>
    <message>
        <source>保护已锁定</source>
        <translation>Закрыта</translation>
    </message>
    <message>
        <source>已锁定</source>
        <translation>Заблокировано</translation>
    </message>
    <message>
        <source>已打开，再按即关闭</source>
        <translation>Включено. Нажмите, чтобы выключить</translation>
    </message>
    <message>
        <source>关</source>
        <translation>Выключено</translation>
    </message>
</context>
<context>
    <name>lumo::SetPoint</name>
    <message>
        <source>端口未启用</source>
        <translation>Порт отключён</translation>
    </message>
    <message>
        <source>当前输出 %1 %</source>
        <translation>На выходе %1 %</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>关闭</source>
        <translation>Отключено</translation>
    </message>
    <message>
        <source>正常</source>
        <translation>В норме</translation>
    </message>
    <message>
        <source>异常</source>
        <translation>Не в норме</translation>
    </message>
</context>
<context>
    <name>StatusMonitorWidget</name>
    <message>
        <source>设备状态</source>
        <translation>Состояние оборудования</translation>
    </message>
    <message>
        <source>激光器状态：</source>
        <translation>Лазер:</translation>
    </message>
    <message>
        <source>激光头状态：</source>
        <translation>Лазерная головка:</translation>
    </message>
    <message>
        <source>水冷箱状态：</source>
        <translation>Чиллер:</translation>
    </message>
    <message>
        <source>气压状态：</source>
        <translation>Давление газа:</translation>
    </message>
    <message>
        <source>温度状态：</source>
        <translation>Температура:</translation>
    </message>
    <message>
        <source>焊接状态：</source>
        <translation>Сварка:</translation>
    </message>
    <message>
        <source>加工统计</source>
        <translation>Статистика обработки</translation>
    </message>
    <message>
        <source>加工时长：</source>
        <translation>Время обработки:</translation>
    </message>
    <message>
        <source>秒</source>
        <translation>с</translation>
    </message>
    <message>
        <source>加工个数：</source>
        <translation>Выполнено программ:</translation>
    </message>
    <message>
        <source>清零</source>
        <translation>Сбросить</translation>
    </message>
    <message>
        <source>激光状态</source>
        <translation>Параметры лазера</translation>
    </message>
    <message>
        <source>激光频率（%）：</source>
        <translation>Частота импульсов (%):</translation>
    </message>
    <message>
        <source>占空比（%）：</source>
        <translation>Коэффициент заполнения (%):</translation>
    </message>
    <message>
        <source>激光功率（%）：</source>
        <translation>Мощность лазера (%):</translation>
    </message>
</context>
<context>
    <name>DeviceControlWidget</name>
    <message>
        <source>激光控制</source>
        <translation>Лазер</translation>
    </message>
    <message>
        <source>激光频率：</source>
        <translation>Частота импульсов:</translation>
    </message>
    <message>
        <source>占空比：</source>
        <translation>Коэффициент заполнения:</translation>
    </message>
    <message>
        <source>激光功率：</source>
        <translation>Мощность лазера:</translation>
    </message>
    <message>
        <source>激光保护</source>
        <translation>Блокировка лазера</translation>
    </message>
    <message>
        <source>激光测试</source>
        <translation>Включение лазера</translation>
    </message>
    <message>
        <source>红光</source>
        <translation>Красный указатель</translation>
    </message>
    <message>
        <source>气体控制</source>
        <translation>Защитный газ</translation>
    </message>
    <message>
        <source>给气保护</source>
        <translation>Блокировка газа</translation>
    </message>
    <message>
        <source>给气测试</source>
        <translation>Подача газа</translation>
    </message>
    <message>
        <source>送丝控制</source>
        <translation>Подача проволоки</translation>
    </message>
    <message>
        <source>送丝速度：</source>
        <translation>Скорость подачи проволоки:</translation>
    </message>
    <message>
        <source>送丝保护</source>
        <translation>Блокировка подачи проволоки</translation>
    </message>
    <message>
        <source>送丝测试</source>
        <translation>Включение подачи проволоки</translation>
    </message>
    <message>
        <source>输入错误</source>
        <translation>Ошибка ввода</translation>
    </message>
    <message>
        <source>请先更正红框中的数值。</source>
        <translation>Сначала исправьте значение в красной рамке.</translation>
    </message>
    <message>
        <source>端口“%1”未启用。</source>
        <translation>Порт «%1» отключён.</translation>
    </message>
    <message>
        <source>激光已打开</source>
        <translation>ЛАЗЕР ВКЛЮЧЁН</translation>
    </message>
    <message>
        <source>已打开</source>
        <translation>Включено</translation>
    </message>
    <message>
        <source>未启用</source>
        <translation>Отключено</translation>
    </message>
    <message>
        <source>指示红光已打开</source>
        <translation>Указатель включён</translation>
    </message>
    <message>
        <source>关</source>
        <translation>Выключено</translation>
    </message>
    <message>
        <source>已锁定</source>
        <translation>Закрыто</translation>
    </message>
    <message>
        <source>手动打开，已 %1</source>
        <translation>включён вручную, %1</translation>
    </message>
    <message>
        <source>已打开 %1</source>
        <translation>включён %1</translation>
    </message>
</context>
</TS>
