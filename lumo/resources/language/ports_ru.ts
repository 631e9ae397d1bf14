<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="zh_CN">
<context>
    <name>lumo::PortNameBox</name>
    <message>
        <source>未分配</source>
        <translation>не назначен</translation>
    </message>
</context>
<context>
    <name>lumo::PortState</name>
    <message>
        <source>未分配</source>
        <translation>не назначен</translation>
    </message>
    <message>
        <source>重复分配</source>
        <translation>дважды</translation>
    </message>
    <message>
        <source>信号不存在</source>
        <translation>нет сигнала</translation>
    </message>
    <message>
        <source>有错误</source>
        <translation>ошибка</translation>
    </message>
    <message>
        <source>开</source>
        <translation>вкл.</translation>
    </message>
    <message>
        <source>关</source>
        <translation>выкл.</translation>
    </message>
</context>
<context>
    <name>lumo::TestButton</name>
    <message>
        <source>测试</source>
        <translation>Проверить</translation>
    </message>
    <message>
        <source>激光只能在设备页上，在其保护之下打开。</source>
        <translation>Лазер включается только на странице «Устройства», под своей блокировкой.</translation>
    </message>
    <message>
        <source>端口未启用或未分配。</source>
        <translation>Порт отключён или не назначен.</translation>
    </message>
    <message>
        <source>请先按“确认”保存更改，然后再测试。</source>
        <translation>Сначала сохраните изменение кнопкой «ОК», затем проверяйте.</translation>
    </message>
    <message>
        <source>另一个输出也分配到同一信号，请先改正分配。</source>
        <translation>На этот сигнал назначен и другой выход: сначала исправьте.</translation>
    </message>
    <message>
        <source>程序运行时不能测试。</source>
        <translation>Во время работы программы проверка невозможна.</translation>
    </message>
    <message>
        <source>保护已锁定，请先在设备页上解锁。</source>
        <translation>Блокировка закрыта: сначала снимите её на странице «Устройства».</translation>
    </message>
    <message>
        <source>输出已打开。</source>
        <translation>Выход уже включён.</translation>
    </message>
    <message>
        <source>按住时打开，松开即关闭。</source>
        <translation>Включён, пока кнопка нажата.</translation>
    </message>
    <message>
        <source>未启用</source>
        <translation>отключён</translation>
    </message>
    <message>
        <source>未保存</source>
        <translation>не сохранён</translation>
    </message>
    <message>
        <source>重复分配</source>
        <translation>дважды</translation>
    </message>
    <message>
        <source>运行中</source>
        <translation>работа</translation>
    </message>
    <message>
        <source>已锁定</source>
        <translation>закрыто</translation>
    </message>
    <message>
        <source>已打开</source>
        <translation>уже вкл.</translation>
    </message>
</context>
<context>
    <name>PortConfigWidget</name>
    <message>
        <source>&lt;h1&gt;端口配置&lt;/h1&gt;</source>
        <translation>&lt;h1&gt;Назначение портов&lt;/h1&gt;</translation>
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
        <source>名称</source>
        <translation>Сигнал</translation>
    </message>
    <message>
        <source>IO分配</source>
        <translation>Назначение</translation>
    </message>
    <message>
        <source>是否启用</source>
        <translation>Использование</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>ОК</translation>
    </message>
    <message>
        <source>输入</source>
        <translation>Входы </translation>
    </message>
    <message>
        <source>输出</source>
        <translation>Выходы </translation>
    </message>
    <message>
        <source>模拟量输出</source>
        <translation>Аналоговые выходы </translation>
    </message>
    <message>
        <source>启用</source>
        <translation>Включён</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Сообщение</translation>
    </message>
    <message>
        <source>保存成功</source>
        <translation>Сохранено.</translation>
    </message>
    <message>
        <source>当前状态</source>
        <translation>Сейчас</translation>
    </message>
    <message>
        <source>测试</source>
        <translation>Проверка</translation>
    </message>
    <message>
        <source>（另有 %1 处）</source>
        <translation> (ещё %1)</translation>
    </message>
    <message>
        <source>共 %1 个端口 · 输入 %2，输出 %3，模拟量输出 %4</source>
        <translation>Портов %1 · входов %2, выходов %3, аналоговых выходов %4</translation>
    </message>
    <message>
        <source>未保存：%1</source>
        <translation>не сохранено: %1</translation>
    </message>
    <message>
        <source>按住“测试”时打开</source>
        <translation>«Проверить»: включено, пока нажато</translation>
    </message>
</context>
</TS>
