<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="zh_CN">
<context>
    <name>FindingsButton</name>
    <message>
        <source>已检查</source>
        <translation>Проверено</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>空走</source>
        <translation>По осям</translation>
    </message>
    <message>
        <source>直线</source>
        <translation>Прямая</translation>
    </message>
    <message>
        <source>全圆</source>
        <translation>Окружность</translation>
    </message>
    <message>
        <source>圆弧</source>
        <translation>Дуга</translation>
    </message>
    <message>
        <source>开始焊接</source>
        <translation>Начало сварки</translation>
    </message>
    <message>
        <source>停止焊接</source>
        <translation>Конец сварки</translation>
    </message>
    <message>
        <source>工艺参数</source>
        <translation>Параметры сварки</translation>
    </message>
    <message>
        <source>延时</source>
        <translation>Задержка</translation>
    </message>
    <message>
        <source>轴角度：</source>
        <translation>Углы осей: </translation>
    </message>
    <message>
        <source>°；</source>
        <translation>°;</translation>
    </message>
    <message>
        <source>点位：</source>
        <translation>Точка: </translation>
    </message>
    <message>
        <source>速度：</source>
        <translation>Скорость: </translation>
    </message>
    <message>
        <source>mm/s；</source>
        <translation>мм/с;</translation>
    </message>
    <message>
        <source>转弯区：</source>
        <translation>Радиус сглаживания: </translation>
    </message>
    <message>
        <source>mm；</source>
        <translation>мм;</translation>
    </message>
    <message>
        <source>mm;</source>
        <translation>мм;</translation>
    </message>
    <message>
        <source>ms</source>
        <translation>мс</translation>
    </message>
    <message>
        <source>工具：</source>
        <translation>Инструмент: </translation>
    </message>
    <message>
        <source>工件：</source>
        <translation>Деталь: </translation>
    </message>
    <message>
        <source>坐标：</source>
        <translation>Коорд.: </translation>
    </message>
    <message>
        <source>参数名称：</source>
        <translation>Набор параметров: </translation>
    </message>
    <message>
        <source>激光功率：</source>
        <translation>Мощность лазера: </translation>
    </message>
    <message>
        <source>激光占空比：</source>
        <translation>Коэффициент заполнения: </translation>
    </message>
    <message>
        <source>送丝使能：</source>
        <translation>Подача проволоки: </translation>
    </message>
    <message>
        <source>焊接速度：</source>
        <translation>Скорость сварки: </translation>
    </message>
    <message>
        <source>DO名称：</source>
        <translation>Выход DO: </translation>
    </message>
    <message>
        <source>DI名称：</source>
        <translation>Вход DI: </translation>
    </message>
    <message>
        <source>设置为：</source>
        <translation>Установить: </translation>
    </message>
    <message>
        <source>等待该信号变为：</source>
        <translation>Ждать состояния сигнала: </translation>
    </message>
    <message>
        <source>延时时间为：</source>
        <translation>Время задержки: </translation>
    </message>
</context>
<context>
    <name>ProgramTable</name>
    <message>
        <source>未示教</source>
        <translation>Не обучена</translation>
    </message>
    <message>
        <source>点击输入备注</source>
        <translation>Добавьте примечание</translation>
    </message>
    <message>
        <source>输入错误</source>
        <translation>Ошибка ввода</translation>
    </message>
    <message>
        <source>输入的内容未采用：%1</source>
        <translation>Введённое не принято: %1</translation>
    </message>
</context>
<context>
    <name>ProgramWidget</name>
    <message>
        <source>指针</source>
        <translation>Курсор</translation>
    </message>
    <message>
        <source>行数</source>
        <translation>Строка</translation>
    </message>
    <message>
        <source>指令</source>
        <translation>Команда</translation>
    </message>
    <message>
        <source>参数</source>
        <translation>Параметры</translation>
    </message>
    <message>
        <source>备注</source>
        <translation>Примеч.</translation>
    </message>
    <message>
        <source>是否运行</source>
        <translation>Вкл. / выкл.</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Правка</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Копия</translation>
    </message>
    <message>
        <source>粘贴</source>
        <translation>Вставка</translation>
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
        <source>运行/不运行</source>
        <translation>Вкл. / выкл.</translation>
    </message>
    <message>
        <source>多选</source>
        <translation>Выбор строк</translation>
    </message>
    <message>
        <source>单选</source>
        <translation>Одна строка</translation>
    </message>
    <message>
        <source>修改速度</source>
        <translation>Скорость</translation>
    </message>
    <message>
        <source>修改转弯区</source>
        <translation>Радиус</translation>
    </message>
    <message>
        <source>空走</source>
        <translation>По осям</translation>
    </message>
    <message>
        <source>直线</source>
        <translation>Прямая</translation>
    </message>
    <message>
        <source>全圆</source>
        <translation>Окруж­ность</translation>
    </message>
    <message>
        <source>圆弧</source>
        <translation>Дуга</translation>
    </message>
    <message>
        <source>开始焊接</source>
        <translation>Начало сварки</translation>
    </message>
    <message>
        <source>停止焊接</source>
        <translation>Конец сварки</translation>
    </message>
    <message>
        <source>工艺参数</source>
        <translation>Параметры сварки</translation>
    </message>
    <message>
        <source>WAITDI</source>
        <translation>WAITDI</translation>
    </message>
    <message>
        <source>SETDO</source>
        <translation>SETDO</translation>
    </message>
    <message>
        <source>延时</source>
        <translation>За­дер­жка</translation>
    </message>
    <message>
        <source>步跳转</source>
        <translation>К строке</translation>
    </message>
    <message>
        <source>Goto</source>
        <translation>Перей­ти</translation>
    </message>
    <message>
        <source>焊接</source>
        <translation>Сварка</translation>
    </message>
    <message>
        <source>手动焊接</source>
        <translation>Ручная сварка</translation>
    </message>
    <message>
        <source>开始</source>
        <translation>Пуск</translation>
    </message>
    <message>
        <source>移动点位</source>
        <translation>Переход в точку</translation>
    </message>
    <message>
        <source>停止</source>
        <translation>Стоп</translation>
    </message>
    <message>
        <source>复位</source>
        <translation>Сброс</translation>
    </message>
    <message>
        <source>运行</source>
        <translation>Вкл.</translation>
    </message>
    <message>
        <source>不运行</source>
        <translation>Выкл.</translation>
    </message>
    <message>
        <source>运行错误</source>
        <translation>Ошибка выполнения</translation>
    </message>
    <message>
        <source>输入错误</source>
        <translation>Ошибка ввода</translation>
    </message>
    <message>
        <source>跳转行数大于当前程序行数!</source>
        <translation>Номер строки перехода больше числа строк программы!</translation>
    </message>
    <message>
        <source>程序错误</source>
        <translation>Ошибка программы</translation>
    </message>
    <message>
        <source>当前程序中的&quot;开始焊接&quot;和&quot;停止焊接&quot;个数或者顺序不匹配!</source>
        <translation>Количество или порядок команд «Начало сварки» и «Конец сварки» в программе не совпадает!</translation>
    </message>
    <message>
        <source>选中行警告</source>
        <translation>Выбрана другая строка</translation>
    </message>
    <message>
        <source>焊枪距中断点 %1 mm，先不出光回到中断点，再继续焊接？</source>
        <translation>Горелка в %1 мм от точки остановки. Сначала вернуться к ней без лазера, затем продолжить сварку?</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>Предупреждение</translation>
    </message>
    <message>
        <source>是否跳转到当前行并开始执行!</source>
        <translation>Перейти к выбранной строке и начать выполнение?</translation>
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
        <source>工位程序正在运行</source>
        <translation>Выполняется программа поста</translation>
    </message>
    <message>
        <source>工位程序正在运行：%1，工程 %2</source>
        <translation>Выполняется программа поста: %1, проект %2</translation>
    </message>
    <message>
        <source>正在执行第 %1 行</source>
        <translation>Выполняется строка %1</translation>
    </message>
    <message>
        <source>开始：从第 %1 行继续，激光将重新打开</source>
        <translation>Пуск продолжит со строки %1, лазер включится снова</translation>
    </message>
    <message>
        <source>开始：从第 %1 行继续，激光将重新打开，重叠 %2 mm</source>
        <translation>Пуск продолжит со строки %1, лазер включится снова, перекрытие %2 мм</translation>
    </message>
    <message>
        <source>开始：再次从第 1 行执行</source>
        <translation>Пуск начнёт снова со строки 1</translation>
    </message>
    <message>
        <source>空运行。%1</source>
        <translation>Без луча. %1</translation>
    </message>
    <message>
        <source>空运行：正在执行第 %1 行</source>
        <translation>Без луча: выполняется строка %1</translation>
    </message>
    <message>
        <source>继续焊接…</source>
        <translation>Продолжить…</translation>
    </message>
    <message>
        <source>开始：从第 %1 行继续，激光不会打开</source>
        <translation>Пуск продолжит со строки %1, лазер останется выключен</translation>
    </message>
    <message>
        <source>开始：从第 %1 行执行</source>
        <translation>Пуск начнёт со строки %1</translation>
    </message>
    <message>
        <source>开始：从第 %1 行继续</source>
        <translation>Пуск продолжит со строки %1</translation>
    </message>
    <message>
        <source>请先新建或打开工程</source>
        <translation>Сначала создайте или откройте проект</translation>
    </message>
    <message>
        <source>程序为空</source>
        <translation>Программа пуста</translation>
    </message>
    <message>
        <source>开始：确认后从选中的第 %1 行执行</source>
        <translation>Пуск спросит и начнёт с выбранной строки %1</translation>
    </message>
    <message>
        <source>第 %1 行已不存在：请复位或选择一行</source>
        <translation>Строки %1 больше нет: сделайте сброс или выберите строку</translation>
    </message>
    <message>
        <source>%1。</source>
        <translation>%1.</translation>
    </message>
    <message>
        <source>处理方法：%1。</source>
        <translation>Что делать: %1.</translation>
    </message>
    <message>
        <source>程序有 %1 行。</source>
        <translation>Строк в программе: %1.</translation>
    </message>
    <message>
        <source>当前不是空闲状态</source>
        <translation>Робот занят</translation>
    </message>
    <message>
        <source>按住：上一点</source>
        <translation>Удерживать: назад</translation>
    </message>
    <message>
        <source>按住：下一点</source>
        <translation>Удерживать: вперёд</translation>
    </message>
    <message>
        <source>按住移到上一点，松开停止</source>
        <translation>Перемещает к предыдущей точке, пока удерживается; отпускание останавливает</translation>
    </message>
    <message>
        <source>按住移到下一点，松开停止</source>
        <translation>Перемещает к следующей точке, пока удерживается; отпускание останавливает</translation>
    </message>
    <message>
        <source>未选中：插入到最前</source>
        <translation>Вставка в начало</translation>
    </message>
    <message>
        <source>插入到第 %1 行之后</source>
        <translation>Вставка после строки %1</translation>
    </message>
    <message>
        <source>完整文本</source>
        <translation>Весь текст</translation>
    </message>
    <message>
        <source>插入</source>
        <translation>Доба­вить</translation>
    </message>
    <message>
        <source>复位</source>
        <comment>on the button</comment>
        <translation>Сброс</translation>
    </message>
    <message>
        <source>未选中行</source>
        <translation>Строка не выбрана</translation>
    </message>
    <message>
        <source>第 %1 行</source>
        <translation>Строка %1</translation>
    </message>
    <message>
        <source>未打开工程</source>
        <translation>проект не открыт</translation>
    </message>
    <message>
        <source>程序为空</source>
        <comment>on the button</comment>
        <translation>программа пуста</translation>
    </message>
    <message>
        <source>程序有错误</source>
        <translation>в программе ошибки</translation>
    </message>
    <message>
        <source>驱动未上电</source>
        <translation>приводы выключены</translation>
    </message>
    <message>
        <source>第 %1 行已不存在</source>
        <comment>on the button</comment>
        <translation>строки %1 больше нет</translation>
    </message>
    <message>
        <source>从第 %1 行，先确认</source>
        <translation>строка %1, с вопросом</translation>
    </message>
    <message>
        <source>再次从第 1 行</source>
        <translation>снова со строки 1</translation>
    </message>
    <message>
        <source>第 %1 行，继续出光</source>
        <translation>строка %1, лазер вкл.</translation>
    </message>
    <message>
        <source>第 %1 行，不出光</source>
        <translation>строка %1, без лазера</translation>
    </message>
    <message>
        <source>从第 %1 行</source>
        <translation>со строки %1</translation>
    </message>
    <message>
        <source>从第 %1 行继续</source>
        <translation>далее со строки %1</translation>
    </message>
    <message>
        <source>工位正在运行</source>
        <translation>работает пост</translation>
    </message>
    <message>
        <source>正在执行第 %1 行</source>
        <comment>on the button</comment>
        <translation>строка %1</translation>
    </message>
    <message>
        <source>行</source>
        <translation>№</translation>
    </message>
</context>
<context>
    <name>lumo::DryRunRow</name>
    <message>
        <source>空运行</source>
        <translation>Без луча</translation>
    </message>
    <message>
        <source>整个程序运动，不出光、不送气、不送丝，红光指示焊缝</source>
        <translation>Вся программа выполняется без лазера, газа и проволоки; швы показывает красный указатель</translation>
    </message>
    <message>
        <source>焊缝的运动速度，占焊接速度的百分比</source>
        <translation>Скорость вдоль швов в доле от скорости сварки</translation>
    </message>
    <message>
        <source>运动速度</source>
        <translation>Ход</translation>
    </message>
</context>
<context>
    <name>lumo::FindingText</name>
    <message>
        <source>点位</source>
        <translation>Точка</translation>
    </message>
    <message>
        <source>第二个点位</source>
        <translation>Вторая точка</translation>
    </message>
    <message>
        <source>速度</source>
        <translation>Скорость</translation>
    </message>
    <message>
        <source>转弯区</source>
        <translation>Радиус сглаживания</translation>
    </message>
    <message>
        <source>焊接速度</source>
        <translation>Скорость сварки</translation>
    </message>
    <message>
        <source>工艺参数</source>
        <translation>Параметры сварки</translation>
    </message>
    <message>
        <source>激光功率</source>
        <translation>Мощность лазера</translation>
    </message>
    <message>
        <source>激光占空比</source>
        <translation>Коэффициент заполнения</translation>
    </message>
    <message>
        <source>延时</source>
        <translation>Задержка</translation>
    </message>
    <message>
        <source>是否运行</source>
        <translation>Вкл. / выкл.</translation>
    </message>
    <message>
        <source>备注</source>
        <translation>Примечание</translation>
    </message>
    <message>
        <source>%1；%2</source>
        <translation>%1; %2</translation>
    </message>
    <message>
        <source>第 %1 行：%2</source>
        <translation>Строка %1: %2</translation>
    </message>
    <message>
        <source>%1。</source>
        <translation>%1.</translation>
    </message>
    <message numerus="yes">
        <source>另有 %n 个错误。</source>
        <translation>
            <numerusform>Ещё %n ошибка.</numerusform>
            <numerusform>Ещё %n ошибки.</numerusform>
            <numerusform>Ещё %n ошибок.</numerusform>
        </translation>
    </message>
    <message>
        <source>错误</source>
        <translation>Ошибка</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>Предупреждение</translation>
    </message>
    <message numerus="yes">
        <source>%n 个错误</source>
        <translation>
            <numerusform>%n ошибка</numerusform>
            <numerusform>%n ошибки</numerusform>
            <numerusform>%n ошибок</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n 个警告</source>
        <translation>
            <numerusform>%n предупреждение</numerusform>
            <numerusform>%n предупреждения</numerusform>
            <numerusform>%n предупреждений</numerusform>
        </translation>
    </message>
    <message>
        <source>，</source>
        <translation>, </translation>
    </message>
</context>
<context>
    <name>lumo::FindingList</name>
    <message numerus="yes">
        <source>另有 %n 项</source>
        <translation>
            <numerusform>и ещё %n</numerusform>
            <numerusform>и ещё %n</numerusform>
            <numerusform>и ещё %n</numerusform>
        </translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Закрыть</translation>
    </message>
</context>
<context>
    <name>lumo::Inspector</name>
    <message>
        <source>已选 %1 行</source>
        <translation>Выбрано строк: %1</translation>
    </message>
    <message>
        <source>焊缝 %1 / %2</source>
        <translation>Шов %1 из %2</translation>
    </message>
</context>
<context>
    <name>lumo::LineEntry</name>
    <message>
        <source>速度</source>
        <translation>Скорость</translation>
    </message>
    <message>
        <source>转弯区</source>
        <translation>Радиус</translation>
    </message>
    <message>
        <source>备注</source>
        <translation>Примечание</translation>
    </message>
</context>
<context>
    <name>lumo::ResumeDialog</name>
    <message>
        <source>继续焊接</source>
        <translation>Продолжение сварки</translation>
    </message>
    <message>
        <source>回到中断点，继续焊接</source>
        <translation>Вернуться и продолжить шов</translation>
    </message>
    <message>
        <source>回到中断点，重叠一段后继续焊接</source>
        <translation>Вернуться с перекрытием</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Отмена</translation>
    </message>
    <message>
        <source>中断后继续焊接</source>
        <translation>Продолжение сварки</translation>
    </message>
    <message>
        <source>第 %1 行，第 %2 条焊缝，共 %3 条</source>
        <translation>Строка %1, шов %2 из %3</translation>
    </message>
    <message>
        <source>焊枪不出光退回 %1 mm，激光在 %2 mm 处打开。</source>
        <translation>Горелка вернётся на %1 мм без лазера; лазер включится на %2 мм.</translation>
    </message>
    <message>
        <source>激光在 %1 mm 处打开。</source>
        <translation>Лазер включится на %1 мм.</translation>
    </message>
    <message>
        <source>激光在 %1 mm 处打开，再焊一段已焊部分。</source>
        <translation>Лазер включится на %1 мм, на сваренной части.</translation>
    </message>
    <message>
        <source>剩余 %1 mm 焊缝不焊接，焊接开关将关闭。</source>
        <translation>%1 мм шва останутся без сварки; переключатель «Сварка» выключится.</translation>
    </message>
    <message>
        <source>选择之前不会有任何动作。</source>
        <translation>До выбора ничего не движется.</translation>
    </message>
    <message>
        <source>从这里不出光继续</source>
        <translation>Дальше отсюда без лазера</translation>
    </message>
    <message>
        <source>减少重叠</source>
        <translation>Меньше перекрытие</translation>
    </message>
    <message>
        <source>增加重叠</source>
        <translation>Больше перекрытие</translation>
    </message>
    <message>
        <source>重叠</source>
        <translation>Перекрытие</translation>
    </message>
</context>
<context>
    <name>lumo::SeamPicture</name>
    <message>
        <source>焊枪，距中断点 %1</source>
        <translation>Горелка, до места остановки %1</translation>
    </message>
    <message>
        <source>焊枪在中断点。</source>
        <translation>Горелка на месте остановки</translation>
    </message>
    <message>
        <source>中断于 %1</source>
        <translation>Остановка: %1</translation>
    </message>
    <message>
        <source>剩余 %1</source>
        <translation>осталось %1</translation>
    </message>
</context>
<context>
    <name>lumo::RowSummary</name>
    <message>
        <source>送丝 ON</source>
        <translation>проволока ON</translation>
    </message>
</context>
<context>
    <name>lumo::RunPanel</name>
    <message>
        <source>焊缝 %1 / %2</source>
        <translation>Шов %1 из %2</translation>
    </message>
    <message>
        <source> / %1 mm，不出光</source>
        <translation> из %1 мм, без лазера</translation>
    </message>
    <message>
        <source> / %1 mm 已焊</source>
        <translation> из %1 мм сварено</translation>
    </message>
    <message>
        <source>程序没有焊缝</source>
        <translation>В программе нет швов</translation>
    </message>
    <message>
        <source>焊缝已全部走完</source>
        <translation>Все швы пройдены</translation>
    </message>
    <message>
        <source>开</source>
        <translation>вкл.</translation>
    </message>
    <message>
        <source>关</source>
        <translation>выкл.</translation>
    </message>
    <message>
        <source>速度</source>
        <translation>Скорость</translation>
    </message>
    <message>
        <source> mm/s</source>
        <translation> мм/с</translation>
    </message>
    <message>
        <source>激光功率</source>
        <translation>Мощность</translation>
    </message>
    <message>
        <source>激光占空比</source>
        <translation>Заполнение</translation>
    </message>
    <message>
        <source>保护气</source>
        <translation>Газ</translation>
    </message>
    <message>
        <source>送丝速度</source>
        <translation>Проволока</translation>
    </message>
    <message>
        <source>第 %1 至 %2 行</source>
        <translation>Строки %1–%2</translation>
    </message>
    <message>
        <source>%1 mm</source>
        <translation>%1 мм</translation>
    </message>
    <message>
        <source>本件的焊缝</source>
        <translation>Швы этой детали</translation>
    </message>
    <message>
        <source>程序正在运行，不能编辑</source>
        <translation>Правка заблокирована: программа выполняется</translation>
    </message>
    <message>
        <source>驱动已上电，不能编辑</source>
        <translation>Правка заблокирована: приводы включены</translation>
    </message>
</context>
</TS>
