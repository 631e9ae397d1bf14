<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru" sourcelanguage="zh_CN">
<context>
    <name>ExampleShelf</name>
    <message>
        <source>搭接直焊缝</source>
        <translation>Нахлёсточный шов</translation>
    </message>
    <message>
        <source>管与法兰环焊缝</source>
        <translation>Труба во фланце</translation>
    </message>
    <message>
        <source>箱盖断续焊</source>
        <translation>Прерывистый шов на коробе</translation>
    </message>
    <message>
        <source>四个工位</source>
        <translation>Четыре поста</translation>
    </message>
</context>
<context>
    <name>FileProblem</name>
    <message>
        <source>没有权限</source>
        <translation>нет прав доступа</translation>
    </message>
    <message>
        <source>磁盘已满</source>
        <translation>диск заполнен</translation>
    </message>
    <message>
        <source>磁盘只读</source>
        <translation>диск доступен только для чтения</translation>
    </message>
    <message>
        <source>文件或文件夹不存在</source>
        <translation>файл или папка не существует</translation>
    </message>
    <message>
        <source>这是文件夹，不是文件</source>
        <translation>это папка, а не файл</translation>
    </message>
    <message>
        <source>磁盘配额已用完</source>
        <translation>исчерпана дисковая квота</translation>
    </message>
    <message>
        <source>磁盘读写错误</source>
        <translation>ошибка чтения или записи диска</translation>
    </message>
    <message>
        <source>文件过大</source>
        <translation>файл слишком велик</translation>
    </message>
    <message>
        <source>字符串没有结束</source>
        <translation>строка не закрыта</translation>
    </message>
    <message>
        <source>名称后缺少冒号</source>
        <translation>нет двоеточия после имени</translation>
    </message>
    <message>
        <source>两个值之间缺少逗号</source>
        <translation>нет запятой между значениями</translation>
    </message>
    <message>
        <source>逗号后缺少内容</source>
        <translation>после запятой ничего нет</translation>
    </message>
    <message>
        <source>无效的值</source>
        <translation>недопустимое значение</translation>
    </message>
    <message>
        <source>无效的数字</source>
        <translation>недопустимое число</translation>
    </message>
    <message>
        <source>文件以数字结束</source>
        <translation>файл обрывается на числе</translation>
    </message>
    <message>
        <source>字符串中有无效的转义字符</source>
        <translation>в строке неверная escape-последовательность</translation>
    </message>
    <message>
        <source>文字编码不是UTF-8</source>
        <translation>текст не в кодировке UTF-8</translation>
    </message>
    <message>
        <source>嵌套层数过多</source>
        <translation>слишком большая вложенность</translation>
    </message>
    <message>
        <source>文件末尾有多余内容</source>
        <translation>лишние данные в конце файла</translation>
    </message>
    <message>
        <source>%1；另有%2条记录有错误</source>
        <translation>%1; ошибки и в других записях: %2</translation>
    </message>
    <message>
        <source>文件内容不是记录列表</source>
        <translation>в файле нет списка записей</translation>
    </message>
    <message>
        <source>共有%1行，应为%2个端口</source>
        <translation>строк: %1, а портов: %2</translation>
    </message>
    <message>
        <source>这不是记录</source>
        <translation>это не запись</translation>
    </message>
    <message>
        <source>%1不是数字</source>
        <translation>%1: не число</translation>
    </message>
    <message>
        <source>%1不是文字</source>
        <translation>%1: не текст</translation>
    </message>
    <message>
        <source>%1不是对象</source>
        <translation>%1: не объект</translation>
    </message>
    <message>
        <source>%1既不是true也不是false</source>
        <translation>%1: не true и не false</translation>
    </message>
    <message>
        <source>'type'不是%1</source>
        <translation>'type': не %1</translation>
    </message>
    <message>
        <source>原文件已损坏，且无法保留副本</source>
        <translation>прежний файл повреждён, и его нельзя сохранить</translation>
    </message>
    <message>
        <source>没有此文件</source>
        <translation>нет такого файла</translation>
    </message>
    <message>
        <source>文件内容不是工程</source>
        <translation>это не файл проекта</translation>
    </message>
    <message>
        <source>文件内容是设置，不是工程</source>
        <translation>это файл настроек, а не проекта</translation>
    </message>
    <message>
        <source>原文件是其他内容，且无法保留副本</source>
        <translation>в прежнем файле другое содержимое, и его нельзя сохранить</translation>
    </message>
    <message>
        <source>文件受写保护</source>
        <translation>файл защищён от записи</translation>
    </message>
    <message>
        <source>无法确认已写入磁盘：%1</source>
        <translation>не удалось подтвердить запись на диск: %1</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 第%2行第%3列：%4</source>
        <translation>%1, строка %2, столбец %3: %4</translation>
    </message>
    <message>
        <source>对象没有结束，或缺少逗号</source>
        <translation>объект не закрыт или пропущена запятая</translation>
    </message>
    <message>
        <source>数组没有结束，或缺少逗号</source>
        <translation>массив не закрыт или пропущена запятая</translation>
    </message>
</context>
<context>
    <name>app::CellStrip</name>
    <message>
        <source>机器人</source>
        <translation>Робот</translation>
    </message>
    <message>
        <source>输入</source>
        <translation>Входы</translation>
    </message>
    <message>
        <source>输出</source>
        <translation>Выходы</translation>
    </message>
</context>
<context>
    <name>app::DriveBox</name>
    <message>
        <source>关</source>
        <translation>Откл.</translation>
    </message>
    <message>
        <source>开</source>
        <translation>Вкл.</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Авто</translation>
    </message>
    <message>
        <source>手动</source>
        <translation>Ручной</translation>
    </message>
    <message>
        <source>电源</source>
        <translation>Приводы</translation>
    </message>
    <message>
        <source>模式</source>
        <translation>Режим</translation>
    </message>
    <message>
        <source>机器人</source>
        <translation>Робот</translation>
    </message>
    <message>
        <source>程序</source>
        <translation>Программа</translation>
    </message>
    <message>
        <source>运动中</source>
        <translation>Движется</translation>
    </message>
    <message>
        <source>静止</source>
        <translation>Стоит</translation>
    </message>
    <message>
        <source>运行中</source>
        <translation>Выполняется</translation>
    </message>
    <message>
        <source>空闲</source>
        <translation>Ожидание</translation>
    </message>
</context>
<context>
    <name>app::JogBox</name>
    <message>
        <source>点动</source>
        <translation>Перемещение</translation>
    </message>
    <message>
        <source>步长 mm/°</source>
        <translation>Шаг, мм/°</translation>
    </message>
    <message>
        <source>机器人未上电</source>
        <translation>Приводы выключены</translation>
    </message>
    <message>
        <source>机器人正在运动</source>
        <translation>Робот движется</translation>
    </message>
    <message>
        <source>超出工作范围</source>
        <translation>Вне рабочей зоны</translation>
    </message>
    <message>
        <source>超出关节限位</source>
        <translation>Предел хода оси</translation>
    </message>
    <message>
        <source>程序正在运行</source>
        <translation>Программа выполняется</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>мм</translation>
    </message>
</context>
<context>
    <name>app::KeyBox</name>
    <message>
        <source>手柄按键</source>
        <translation>Клавиши пульта</translation>
    </message>
    <message>
        <source>上一个</source>
        <translation>Назад</translation>
    </message>
    <message>
        <source>下一个</source>
        <translation>Далее</translation>
    </message>
    <message>
        <source>中间</source>
        <translation>Центр</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>Ввод</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Удалить</translation>
    </message>
</context>
<context>
    <name>app::NoticeBar</name>
    <message>
        <source>关闭提示</source>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>全部（%1）</source>
        <translation>Все (%1)</translation>
    </message>
</context>
<context>
    <name>app::PanelWindow</name>
    <message>
        <source>激光焊接操作面板</source>
        <translation>Панель лазерной сварки</translation>
    </message>
    <message>
        <source>模拟单元</source>
        <translation>Модель ячейки</translation>
    </message>
</context>
</TS>
