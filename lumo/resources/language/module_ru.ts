<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="zh_CN">
<context>
    <name>QObject</name>
    <message>
        <source>激光焊接</source>
        <translation>Лазерная сварка</translation>
    </message>
</context>
<context>
    <name>lumo::Driver</name>
    <message>
        <source>运行错误</source>
        <translation>Ошибка выполнения</translation>
    </message>
    <message>
        <source>当前不是空闲状态</source>
        <translation>Робот занят</translation>
    </message>
    <message>
        <source>未选中启动行</source>
        <translation>Выберите строку запуска</translation>
    </message>
    <message>
        <source>机器人未上电</source>
        <translation>Приводы робота выключены.</translation>
    </message>
    <message>
        <source>机器人正在运行中</source>
        <translation>Робот движется</translation>
    </message>
    <message>
        <source>单步只能运行运动指令</source>
        <translation>В пошаговом режиме выполняются только команды движения</translation>
    </message>
    <message>
        <source>机器人运动错误：-0x%1</source>
        <translation>Ошибка движения робота: -0x%1</translation>
    </message>
    <message>
        <source>第 %1 行：整圆的三个点共线，无法确定圆</source>
        <translation>Строка %1: три точки полной окружности лежат на одной прямой и не задают окружность</translation>
    </message>
    <message>
        <source>第 %1 行：整圆的点重合，无法确定圆</source>
        <translation>Строка %1: точки полной окружности совпадают и не задают окружность</translation>
    </message>
    <message>
        <source>停止后的收尾尚未完成。</source>
        <translation>Останов ещё завершает шов.</translation>
    </message>
    <message>
        <source>第 %1 行正在执行。</source>
        <translation>Выполняется строка %1.</translation>
    </message>
    <message>
        <source>工位程序的第 %1 行正在执行。</source>
        <translation>Выполняется строка %1 программы поста.</translation>
    </message>
    <message>
        <source>请等待其结束，或先按“停止”，然后再试。</source>
        <translation>Дождитесь окончания или нажмите «Стоп», затем повторите.</translation>
    </message>
    <message>
        <source>程序没有任何行。</source>
        <translation>В программе нет строк.</translation>
    </message>
    <message>
        <source>请先添加指令。</source>
        <translation>Сначала добавьте команды.</translation>
    </message>
    <message>
        <source>请在程序中选中要开始的行，或要移动到的行。</source>
        <translation>Выберите строку программы, с которой начать или к точке которой двигаться.</translation>
    </message>
    <message>
        <source>无法连接控制器或输入输出设备。</source>
        <translation>Нет связи с контроллером или устройством ввода-вывода.</translation>
    </message>
    <message>
        <source>请等连接恢复，打开驱动电源，然后再试。</source>
        <translation>Дождитесь связи, включите приводы и повторите.</translation>
    </message>
    <message>
        <source>请松开急停，打开驱动电源，然后再试。</source>
        <translation>Отпустите аварийный останов, включите приводы и повторите.</translation>
    </message>
    <message>
        <source>机器人正在运动，例如正在点动。</source>
        <translation>Робот движется, например его перемещают вручную.</translation>
    </message>
    <message>
        <source>请等机器人停下，然后再试。</source>
        <translation>Дождитесь остановки робота и повторите.</translation>
    </message>
    <message>
        <source>第 %1 行不是运动指令。</source>
        <translation>Строка %1 — не движение.</translation>
    </message>
    <message>
        <source>请选中有点位的行。</source>
        <translation>Выберите строку с точкой.</translation>
    </message>
    <message>
        <source>请重新示教该行的点，使三个点分布在圆周上。</source>
        <translation>Обучите точки строки заново, разнеся их по окружности.</translation>
    </message>
    <message>
        <source>在返回中断点的途中：%1。</source>
        <translation>На пути назад к месту останова: %1.</translation>
    </message>
    <message>
        <source>第 %1 行：%2。</source>
        <translation>Строка %1: %2.</translation>
    </message>
    <message>
        <source>工位程序的第 %1 行：%2。</source>
        <translation>Программа поста, строка %1: %2.</translation>
    </message>
    <message>
        <source>处理方法：%1。</source>
        <translation>Что делать: %1.</translation>
    </message>
    <message>
        <source>机器人报告已返回，但焊枪距中断点仍有 %1 mm。</source>
        <translation>Робот сообщает, что вернулся, но горелка ещё в %1 мм от места останова.</translation>
    </message>
    <message>
        <source>请检查返回路径，然后再按“开始”。</source>
        <translation>Проверьте путь назад и снова нажмите «Пуск».</translation>
    </message>
</context>
</TS>
