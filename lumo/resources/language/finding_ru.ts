<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru_RU" sourcelanguage="en_US">
<context>
    <name>Finding</name>
    <message>
        <source>this is no statement</source>
        <translation>это не команда</translation>
    </message>
    <message>
        <source>delete it</source>
        <translation>удалите её</translation>
    </message>
    <message>
        <source>the statement has no type</source>
        <translation>у команды нет типа</translation>
    </message>
    <message>
        <source>name its type, or delete it</source>
        <translation>укажите тип или удалите строку</translation>
    </message>
    <message>
        <source>the statement&apos;s type is no text</source>
        <translation>тип команды — не текст</translation>
    </message>
    <message>
        <source>the statement&apos;s type is empty</source>
        <translation>тип команды пуст</translation>
    </message>
    <message>
        <source>unknown statement type &quot;%1&quot;</source>
        <translation>неизвестный тип команды «%1»</translation>
    </message>
    <message>
        <source>delete the line, or correct its type</source>
        <translation>удалите строку или исправьте тип</translation>
    </message>
    <message>
        <source>this is no record</source>
        <translation>это не запись</translation>
    </message>
    <message>
        <source>missing: %1</source>
        <translation>не хватает: %1</translation>
    </message>
    <message>
        <source>edit the line and confirm it</source>
        <translation>откройте строку и подтвердите</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %3, it should be %2</source>
        <translation>«%1»: %3, а нужно: %2</translation>
    </message>
    <message>
        <source>enter the value again</source>
        <translation>введите значение заново</translation>
    </message>
    <message>
        <source>unknown field &quot;%1&quot;</source>
        <translation>неизвестное поле «%1»</translation>
    </message>
    <message>
        <source>delete the field, or correct its name</source>
        <translation>удалите поле или исправьте имя</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands here more than once, the last one counts</source>
        <translation>«%1» указано несколько раз, действует последнее</translation>
    </message>
    <message>
        <source>delete all but one</source>
        <translation>оставьте только одно</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is negative (%2)</source>
        <translation>«%1» меньше нуля (%2)</translation>
    </message>
    <message>
        <source>enter a value from 0</source>
        <translation>введите значение не меньше 0</translation>
    </message>
    <message>
        <source>%1</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>correct the entry</source>
        <translation>исправьте запись</translation>
    </message>
    <message>
        <source>choose another input</source>
        <translation>выберите другой вход</translation>
    </message>
    <message>
        <source>the data tree has nothing at &quot;%1&quot;</source>
        <translation>в дереве данных нет «%1»</translation>
    </message>
    <message>
        <source>correct the path</source>
        <translation>исправьте путь</translation>
    </message>
    <message>
        <source>there is no file %1</source>
        <translation>файла %1 нет</translation>
    </message>
    <message>
        <source>correct the name</source>
        <translation>исправьте имя</translation>
    </message>
    <message>
        <source>mend or replace the file</source>
        <translation>исправьте или замените файл</translation>
    </message>
    <message>
        <source>the weld is not closed: the laser stays on in lines %1</source>
        <translation>сварка не завершена: лазер остаётся включённым в строках %1</translation>
    </message>
    <message>
        <source>add the stop of welding</source>
        <translation>добавьте «Конец сварки»</translation>
    </message>
    <message>
        <source>the weld is not closed before the next one begins in line %1: the laser stays on in lines %2</source>
        <translation>сварка не завершена до начала следующей в строке %1: лазер остаётся включённым в строках %2</translation>
    </message>
    <message>
        <source>no weld is open here</source>
        <translation>здесь сварка не начата</translation>
    </message>
    <message>
        <source>delete the stop of welding, or add its start</source>
        <translation>удалите «Конец сварки» или добавьте «Начало сварки»</translation>
    </message>
    <message>
        <source>the line is switched off and has no partner</source>
        <translation>строка выключена, и пары у неё нет</translation>
    </message>
    <message>
        <source>switch it on, or delete it</source>
        <translation>включите строку или удалите её</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing</source>
        <translation>нет данных «%1»</translation>
    </message>
    <message>
        <source>teach the point</source>
        <translation>обучите точку</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not taught</source>
        <translation>«%1» не обучена</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is incomplete: %2</source>
        <translation>«%1» неполная: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has %2 joint angles, the robot has %3 axes</source>
        <translation>«%1»: углов осей %2, а осей у робота %3</translation>
    </message>
    <message>
        <source>teach the point on this robot</source>
        <translation>обучите точку на этом роботе</translation>
    </message>
    <message>
        <source>the speed is missing</source>
        <translation>скорость не указана</translation>
    </message>
    <message>
        <source>enter a speed above 0</source>
        <translation>введите скорость больше 0</translation>
    </message>
    <message>
        <source>the speed is %1 mm/s</source>
        <translation>скорость равна %1 мм/с</translation>
    </message>
    <message>
        <source>the speed is %1 mm/s, the cell allows %2 mm/s</source>
        <translation>скорость равна %1 мм/с, допустимо %2 мм/с</translation>
    </message>
    <message>
        <source>enter a lower speed</source>
        <translation>введите меньшую скорость</translation>
    </message>
    <message>
        <source>the welding speed is missing</source>
        <translation>скорость сварки не указана</translation>
    </message>
    <message>
        <source>enter a welding speed above 0</source>
        <translation>введите скорость сварки больше 0</translation>
    </message>
    <message>
        <source>the welding speed is %1 mm/s</source>
        <translation>скорость сварки равна %1 мм/с</translation>
    </message>
    <message>
        <source>the welding speed is %1 mm/s, the cell allows %2 mm/s</source>
        <translation>скорость сварки равна %1 мм/с, допустимо %2 мм/с</translation>
    </message>
    <message>
        <source>enter a lower welding speed</source>
        <translation>введите меньшую скорость сварки</translation>
    </message>
    <message>
        <source>the zone is negative (%1 mm)</source>
        <translation>радиус сглаживания меньше нуля (%1 мм)</translation>
    </message>
    <message>
        <source>enter a zone from 0</source>
        <translation>введите радиус не меньше 0</translation>
    </message>
    <message>
        <source>in the zone of %1 mm the laser is switched off too early: the last %2 mm of the seam stay dark</source>
        <translation>при радиусе %1 мм лазер выключится рано: последние %2 мм шва останутся без сварки</translation>
    </message>
    <message>
        <source>enter a smaller zone</source>
        <translation>введите меньший радиус</translation>
    </message>
    <message>
        <source>two points of the arc are the same</source>
        <translation>две точки дуги совпадают</translation>
    </message>
    <message>
        <source>teach the points anew</source>
        <translation>обучите точки заново</translation>
    </message>
    <message>
        <source>the points of the arc lie on a line</source>
        <translation>точки дуги лежат на одной прямой</translation>
    </message>
    <message>
        <source>teach the points anew, or use a line</source>
        <translation>обучите точки заново или используйте прямую</translation>
    </message>
    <message>
        <source>two points of the circle are the same</source>
        <translation>две точки окружности совпадают</translation>
    </message>
    <message>
        <source>the points of the circle lie on a line</source>
        <translation>точки окружности лежат на одной прямой</translation>
    </message>
    <message>
        <source>the robot cannot get there: out of reach %1 mm after the line begins</source>
        <translation>робот не достаёт: через %1 мм от начала строки точка вне зоны досягаемости</translation>
    </message>
    <message>
        <source>teach the point anew, or move the part</source>
        <translation>обучите точку заново или переставьте деталь</translation>
    </message>
    <message>
        <source>the robot cannot get there: a joint is at its limit %1 mm after the line begins</source>
        <translation>робот не достаёт: через %1 мм от начала строки ось доходит до предела</translation>
    </message>
    <message>
        <source>teach the point anew with another posture</source>
        <translation>обучите точку в другом положении осей</translation>
    </message>
    <message>
        <source>axis %1 would have to turn at %2 °/s, it can turn at %3 °/s</source>
        <translation>ось %1 должна вращаться со скоростью %2 °/с, а может — %3 °/с</translation>
    </message>
    <message>
        <source>enter a lower speed, or teach another posture</source>
        <translation>введите меньшую скорость или обучите точку в другом положении осей</translation>
    </message>
    <message>
        <source>no parameter set is chosen</source>
        <translation>набор параметров не выбран</translation>
    </message>
    <message>
        <source>there is no parameter set %1 (there are %2)</source>
        <translation>набора параметров %1 нет (всего %2)</translation>
    </message>
    <message>
        <source>choose a parameter set</source>
        <translation>выберите набор параметров</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %2, outside %3 to %4</source>
        <translation>«%1» равно %2, а должно быть от %3 до %4</translation>
    </message>
    <message>
        <source>enter a value in this range</source>
        <translation>введите значение из этого диапазона</translation>
    </message>
    <message>
        <source>nothing moves before the weld is closed in line %1</source>
        <translation>до конца сварки в строке %1 нет движения</translation>
    </message>
    <message>
        <source>delete both lines, or add the seam</source>
        <translation>удалите обе строки или добавьте шов</translation>
    </message>
    <message>
        <source>the laser is on for %1 ms before the tool moves</source>
        <translation>лазер включён %1 мс до начала движения</translation>
    </message>
    <message>
        <source>shorten the early start of the laser in the parameter set</source>
        <translation>уменьшите в наборе параметров время до начала движения</translation>
    </message>
    <message>
        <source>the laser is on for %1 ms while the tool stands</source>
        <translation>лазер включён %1 мс, а горелка стоит</translation>
    </message>
    <message>
        <source>put the delay outside the weld</source>
        <translation>вынесите задержку за пределы сварки</translation>
    </message>
    <message>
        <source>the laser is on while the tool stands and waits for %1</source>
        <translation>лазер включён, а горелка стоит и ждёт %1</translation>
    </message>
    <message>
        <source>wait outside the weld</source>
        <translation>вынесите ожидание за пределы сварки</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is out of use, the weld in line %2 needs it</source>
        <translation>порт «%1» отключён, а он нужен для сварки в строке %2</translation>
    </message>
    <message>
        <source>take the port into use</source>
        <translation>включите порт</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is in use and assigned to nothing</source>
        <translation>порт «%1» включён, но не назначен</translation>
    </message>
    <message>
        <source>assign the port, or take it out of use</source>
        <translation>назначьте порт или отключите его</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is assigned to %2, which the controller does not have</source>
        <translation>порт «%1» назначен на %2, которого у контроллера нет</translation>
    </message>
    <message>
        <source>assign the port anew</source>
        <translation>назначьте порт заново</translation>
    </message>
    <message>
        <source>&quot;%1&quot; and &quot;%2&quot; are both assigned to %3</source>
        <translation>порты «%1» и «%2» назначены на один %3</translation>
    </message>
    <message>
        <source>assign one of them anew</source>
        <translation>назначьте один из них заново</translation>
    </message>
    <message>
        <source>there are %1 rows for %2 ports: no port is in use</source>
        <translation>строк %1, а портов %2: все порты отключены</translation>
    </message>
    <message>
        <source>replace the file</source>
        <translation>замените файл</translation>
    </message>
    <message>
        <source>the row of &quot;%1&quot; is not of the type %2: no port is in use</source>
        <translation>строка «%1» не типа %2: все порты отключены</translation>
    </message>
    <message>
        <source>%1 belongs to the welding equipment (&quot;%2&quot;)</source>
        <translation>%1 относится к сварочному оборудованию («%2»)</translation>
    </message>
    <message>
        <source>choose another output</source>
        <translation>выберите другой выход</translation>
    </message>
    <message>
        <source>the controller has no output %1</source>
        <translation>у контроллера нет выхода %1</translation>
    </message>
    <message>
        <source>no output is chosen</source>
        <translation>выход не выбран</translation>
    </message>
    <message>
        <source>choose an output</source>
        <translation>выберите выход</translation>
    </message>
    <message>
        <source>the controller has no input %1</source>
        <translation>у контроллера нет входа %1</translation>
    </message>
    <message>
        <source>no input is chosen</source>
        <translation>вход не выбран</translation>
    </message>
    <message>
        <source>choose an input</source>
        <translation>выберите вход</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no edge: the input does nothing</source>
        <translation>«%1» — не фронт и не спад: вход не действует</translation>
    </message>
    <message>
        <source>choose the edge</source>
        <translation>выберите фронт или спад</translation>
    </message>
    <message>
        <source>no start input is chosen</source>
        <translation>вход пуска не выбран</translation>
    </message>
    <message>
        <source>choose a start input</source>
        <translation>выберите вход пуска</translation>
    </message>
    <message>
        <source>%1 starts &quot;%2&quot; as well</source>
        <translation>%1 запускает и «%2»</translation>
    </message>
    <message>
        <source>choose another start input</source>
        <translation>выберите другой вход пуска</translation>
    </message>
    <message>
        <source>the station has no project</source>
        <translation>у поста нет проекта</translation>
    </message>
    <message>
        <source>choose a project</source>
        <translation>выберите проект</translation>
    </message>
    <message>
        <source>the project %1 is missing</source>
        <translation>проекта %1 нет</translation>
    </message>
    <message>
        <source>choose another project</source>
        <translation>выберите другой проект</translation>
    </message>
    <message>
        <source>the project %1 cannot be read: %2</source>
        <translation>проект %1 не читается: %2</translation>
    </message>
    <message>
        <source>the project %1 has errors (%2)</source>
        <translation>в проекте %1 есть ошибки (%2)</translation>
    </message>
    <message>
        <source>open the project and mend it</source>
        <translation>откройте проект и исправьте его</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %2 in the line and %3 in the parameter set</source>
        <translation>«%1» в строке равно %2, а в наборе параметров — %3</translation>
    </message>
    <message>
        <source>a text</source>
        <translation>текст</translation>
    </message>
    <message>
        <source>true or false</source>
        <translation>true или false</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>число</translation>
    </message>
    <message>
        <source>a whole number</source>
        <translation>целое число</translation>
    </message>
    <message>
        <source>&quot;true&quot;, &quot;false&quot; or empty</source>
        <translation>«true», «false» или пусто</translation>
    </message>
    <message>
        <source>a list of three numbers</source>
        <translation>список из трёх чисел</translation>
    </message>
    <message>
        <source>a list of joint angles</source>
        <translation>список углов осей</translation>
    </message>
    <message>
        <source>an object</source>
        <translation>объект</translation>
    </message>
    <message>
        <source>the text &quot;%1&quot;</source>
        <translation>текст «%1»</translation>
    </message>
    <message>
        <source>a list</source>
        <translation>список</translation>
    </message>
</context>
<context>
    <name>MotionError</name>
    <message>
        <source>a point of the path is out of the robot&apos;s reach</source>
        <translation>точка пути вне досягаемости робота</translation>
    </message>
    <message>
        <source>teach the point closer to the robot, or move the part</source>
        <translation>обучите точку ближе к роботу или переставьте деталь</translation>
    </message>
    <message>
        <source>an axis would pass its limit on the way</source>
        <translation>по пути ось вышла бы за свой предел</translation>
    </message>
    <message>
        <source>teach the point with the arm in another posture, or go there with a joint line first</source>
        <translation>обучите точку в другом положении осей или сначала подойдите командой «По осям»</translation>
    </message>
    <message>
        <source>the points of the arc coincide or lie on one line</source>
        <translation>точки дуги совпадают или лежат на одной прямой</translation>
    </message>
    <message>
        <source>teach the points of the line again</source>
        <translation>обучите точки строки заново</translation>
    </message>
    <message>
        <source>the drives were off when the motion began</source>
        <translation>в начале движения приводы были выключены</translation>
    </message>
    <message>
        <source>switch the drives on, then start the program again</source>
        <translation>включите приводы и снова запустите программу</translation>
    </message>
    <message>
        <source>the motion has no speed</source>
        <translation>у движения нет скорости</translation>
    </message>
    <message>
        <source>enter a speed above 0 in the line</source>
        <translation>введите в строке скорость больше 0</translation>
    </message>
    <message>
        <source>the target is missing or is not one of this robot</source>
        <translation>цель не задана или не от этого робота</translation>
    </message>
    <message>
        <source>an axis would have to turn faster than it can</source>
        <translation>ось должна вращаться быстрее, чем может</translation>
    </message>
    <message>
        <source>enter a lower speed, or teach another posture</source>
        <translation>введите меньшую скорость или обучите точку в другом положении осей</translation>
    </message>
    <message>
        <source>teach the point of the line again</source>
        <translation>обучите точку строки заново</translation>
    </message>
    <message>
        <source>the robot reached the target and reported a fault there</source>
        <translation>робот дошёл до цели и сообщил там о сбое</translation>
    </message>
    <message>
        <source>clear the fault at the robot&apos;s controller, then start the program again</source>
        <translation>устраните сбой на контроллере робота и снова запустите программу</translation>
    </message>
    <message>
        <source>the robot&apos;s controller reports a fault of its own</source>
        <translation>контроллер робота сообщает о собственном сбое</translation>
    </message>
    <message>
        <source>look up the number in the controller&apos;s manual and clear the fault there</source>
        <translation>найдите номер в руководстве контроллера и устраните сбой на нём</translation>
    </message>
</context>
</TS>
