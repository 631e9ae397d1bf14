<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="zh_CN">
<context>
    <name>lumo::Guide</name>
    <message>
        <source>显示该行</source>
        <translation>Показать строку</translation>
    </message>
    <message>
        <source>端口配置</source>
        <translation>Порты</translation>
    </message>
    <message>
        <source>设备控制</source>
        <translation>Устройства</translation>
    </message>
</context>
<context>
    <name>SetDODialog</name>
    <message>
        <source>寄存器</source>
        <translation>Регистр</translation>
    </message>
    <message>
        <source>DO名称：</source>
        <translation>Выход DO:</translation>
    </message>
    <message>
        <source>值：</source>
        <translation>Значение: </translation>
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
    <name>WaitDIDialog</name>
    <message>
        <source>寄存器</source>
        <translation>Регистр</translation>
    </message>
    <message>
        <source>DI名称：</source>
        <translation>Вход DI:</translation>
    </message>
    <message>
        <source>值：</source>
        <translation>Значение: </translation>
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
    <name>SelectParamDialog</name>
    <message>
        <source>&lt;h1&gt;开始焊接&lt;/h1&gt;</source>
        <translation>&lt;h1&gt;Начало сварки&lt;/h1&gt;</translation>
    </message>
    <message>
        <source>&lt;h1&gt;工艺参数&lt;/h1&gt;</source>
        <translation>&lt;h1&gt;Параметры сварки&lt;/h1&gt;</translation>
    </message>
    <message>
        <source>工艺参数：</source>
        <translation>Параметры сварки:</translation>
    </message>
    <message>
        <source> 速度 (mm/s)</source>
        <translation>Скорость (мм/с)</translation>
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
        <source>请先在参数配置中增加参数</source>
        <translation>Сначала добавьте набор параметров</translation>
    </message>
    <message>
        <source>请选择工艺参数</source>
        <translation>Выберите набор параметров</translation>
    </message>
</context>
<context>
    <name>DelayDialog</name>
    <message>
        <source>&lt;h1&gt;DELAY&lt;/h1&gt;</source>
        <translation>&lt;h1&gt;Задержка&lt;/h1&gt;</translation>
    </message>
    <message>
        <source>延时：</source>
        <translation>Задержка:</translation>
    </message>
    <message>
        <source>ms</source>
        <translation>мс</translation>
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
    <name>UpdateSpeedDialog</name>
    <message>
        <source>&lt;h1&gt;速度批量修改&lt;/h1&gt;</source>
        <translation>&lt;h1&gt;Изменение скорости&lt;/h1&gt;</translation>
    </message>
    <message>
        <source> 速度 (mm/s)</source>
        <translation>Скорость (мм/с)</translation>
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
    <name>UpdateTurningParamDialog</name>
    <message>
        <source>&lt;h1&gt;转弯区批量修改&lt;/h1&gt;</source>
        <translation>&lt;h1&gt;Изменение сглаживания&lt;/h1&gt;</translation>
    </message>
    <message>
        <source>转弯区(mm)</source>
        <translation>Радиус сглаживания (мм)</translation>
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
    <name>PointWidget</name>
    <message>
        <source>直线</source>
        <translation>Линейное движение</translation>
    </message>
    <message>
        <source>点位</source>
        <translation>Точка</translation>
    </message>
    <message>
        <source>更新点位</source>
        <translation>Обновить точку</translation>
    </message>
    <message>
        <source>速度与转弯区</source>
        <translation>Скорость и радиус сглаживания</translation>
    </message>
    <message>
        <source>速度(mm/s):</source>
        <translation>Скорость (мм/с):</translation>
    </message>
    <message>
        <source>转弯区(mm)：</source>
        <translation>Радиус сглаживания (мм):</translation>
    </message>
    <message>
        <source>备注</source>
        <translation>Примечание</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>ОК</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>空走参数设置</source>
        <translation>Параметры движения по осям</translation>
    </message>
    <message>
        <source>直线参数设置</source>
        <translation>Параметры линейного движения</translation>
    </message>
    <message>
        <source>全圆/圆弧参数设置</source>
        <translation>Параметры окружности/дуги</translation>
    </message>
    <message>
        <source>移到此点</source>
        <translation>К точке</translation>
    </message>
    <message>
        <source>先确认更改，再移动机器人。</source>
        <translation>Сначала подтвердите изменения, затем перемещайте робота.</translation>
    </message>
    <message>
        <source>（途经点）</source>
        <translation>(промежуточная)</translation>
    </message>
    <message>
        <source>（终点）</source>
        <translation>(конечная)</translation>
    </message>
    <message>
        <source>（圆上第 2 点）</source>
        <translation>(2-я точка окружности)</translation>
    </message>
    <message>
        <source>（圆上第 3 点）</source>
        <translation>(3-я точка окружности)</translation>
    </message>
    <message>
        <source>未示教</source>
        <translation>Не обучена</translation>
    </message>
    <message>
        <source>第 %1 行，共 %2 行</source>
        <translation>Строка %1 из %2</translation>
    </message>
    <message>
        <source>请更正：%1</source>
        <translation>Исправьте: %1</translation>
    </message>
    <message>
        <source>“移到此点”不出光移动机器人，“更新点位”记录其当前位置。</source>
        <translation>«К точке» — движение без лазера. «Обновить точку» — запомнить текущее положение робота.</translation>
    </message>
</context>
<context>
    <name>lumo::FieldAnswer</name>
    <message>
        <source>请输入数字</source>
        <translation>Введите число</translation>
    </message>
    <message>
        <source>允许：%1%2 及以上，最多 %3 位</source>
        <translation>Допустимо: от %1%2, до %3 цифр</translation>
    </message>
    <message>
        <source>允许：%1 至 %2%3</source>
        <translation>Допустимо: от %1 до %2%3</translation>
    </message>
    <message>
        <source>，整数</source>
        <translation>, целые числа</translation>
    </message>
    <message>
        <source>mm/s</source>
        <translation>мм/с</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>мм</translation>
    </message>
    <message>
        <source>ms</source>
        <translation>мс</translation>
    </message>
    <message>
        <source>%1 至 %2</source>
        <translation>от %1 до %2</translation>
    </message>
    <message>
        <source>%1 及以上</source>
        <translation>от %1</translation>
    </message>
</context>
</TS>
