<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru" sourcelanguage="zh_CN">
<context>
    <name>ExampleLibrary</name>
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
        <source>文件夹不存在</source>
        <translation>нет такой папки</translation>
    </message>
    <message>
        <source>这是文件夹，不是文件</source>
        <translation>это папка, а не файл</translation>
    </message>
    <message>
        <source>这不是普通文件</source>
        <translation>это не обычный файл</translation>
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
        <source>文件格式错误：%1</source>
        <translation>это не правильный JSON: %1</translation>
    </message>
    <message>
        <source>此处应为值</source>
        <translation>здесь должно быть значение</translation>
    </message>
    <message>
        <source>此处应为数字</source>
        <translation>здесь должна быть цифра</translation>
    </message>
    <message>
        <source>此处应为带引号的名称</source>
        <translation>здесь должно быть имя в кавычках</translation>
    </message>
    <message>
        <source>文件内容既不是数组也不是对象</source>
        <translation>в файле нет ни массива, ни объекта</translation>
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
        <source>无效的值</source>
        <translation>недопустимое значение</translation>
    </message>
    <message>
        <source>无效的数字</source>
        <translation>недопустимое число</translation>
    </message>
    <message>
        <source>字符串中有无效的转义字符</source>
        <translation>в строке неверная escape-последовательность</translation>
    </message>
    <message>
        <source>文字编码不是 UTF-8</source>
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
        <source>另有 %1 条记录有错误</source>
        <translation>ошибки и в других записях: %1</translation>
    </message>
    <message>
        <source>文件内容不是记录列表</source>
        <translation>в файле нет списка записей</translation>
    </message>
    <message>
        <source>共有 %1 行，应为 %2 个端口</source>
        <translation>строк: %1, а портов: %2</translation>
    </message>
    <message>
        <source>这不是记录</source>
        <translation>это не запись</translation>
    </message>
    <message>
        <source>'%1' 不是数字</source>
        <translation>'%1': не число</translation>
    </message>
    <message>
        <source>'%1' 不是文字</source>
        <translation>'%1': не текст</translation>
    </message>
    <message>
        <source>'%1' 不是对象</source>
        <translation>'%1': не объект</translation>
    </message>
    <message>
        <source>'%1' 既不是 true 也不是 false</source>
        <translation>'%1': не true и не false</translation>
    </message>
    <message>
        <source>所有端口均未启用</source>
        <translation>все порты отключены</translation>
    </message>
    <message>
        <source>缺少 '%1'</source>
        <translation>нет '%1'</translation>
    </message>
    <message>
        <source>'%1' 不是 %2</source>
        <translation>'%1': не %2</translation>
    </message>
    <message>
        <source>无法保留原文件的副本</source>
        <translation>прежний файл нельзя сохранить</translation>
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
        <source>此处没有名为 '%1' 的项</source>
        <translation>поле «%1» здесь неизвестно</translation>
    </message>
    <message>
        <source>'%1' 的 min 大于 max</source>
        <translation>в «%1» min больше, чем max</translation>
    </message>
    <message>
        <source>未知的语句类型“%1”</source>
        <translation>неизвестный тип команды «%1»</translation>
    </message>
    <message>
        <source>文件内容是设置，不是工程</source>
        <translation>это файл настроек, а не проекта</translation>
    </message>
    <message>
        <source>；</source>
        <translation>; </translation>
    </message>
    <message>
        <source>文件内容不是数组</source>
        <translation>в файле нет массива</translation>
    </message>
    <message>
        <source>无法确认已写入磁盘</source>
        <translation>не удалось подтвердить запись на диск</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 第 %2 行第 %3 列：%4</source>
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
    <message>
        <source>请选择另一个文件，或检查名称。</source>
        <translation>Выберите другой файл или проверьте имя.</translation>
    </message>
    <message>
        <source>请恢复该文件夹，或用 --settings 指定另一个文件夹。</source>
        <translation>Восстановите папку или укажите другую ключом --settings.</translation>
    </message>
    <message>
        <source>请移走它，并选择普通文件。</source>
        <translation>Уберите это и выберите обычный файл.</translation>
    </message>
    <message>
        <source>请给予当前用户读写此文件及其文件夹的权限，然后再保存。</source>
        <translation>Дайте пользователю права на чтение и запись файла и его папки, затем сохраните снова.</translation>
    </message>
    <message>
        <source>请腾出磁盘空间，然后再保存；在此之前更改只保存在面板中。</source>
        <translation>Освободите место на диске и сохраните снова; до этого изменения есть только в панели.</translation>
    </message>
    <message>
        <source>请换一个可写的磁盘，或解除写保护，然后再保存。</source>
        <translation>Возьмите диск с правом записи или снимите защиту, затем сохраните снова.</translation>
    </message>
    <message>
        <source>请检查磁盘，并另存到其他磁盘。</source>
        <translation>Проверьте диск и сохраните на другой.</translation>
    </message>
    <message>
        <source>请把它分成较小的文件。</source>
        <translation>Разделите его на меньшие файлы.</translation>
    </message>
    <message>
        <source>请再试一次；若仍失败，请检查磁盘和权限。</source>
        <translation>Повторите; если не поможет, проверьте диск и права.</translation>
    </message>
    <message>
        <source>原文件未被覆盖。请检查文件夹的权限和空间，然后再保存。</source>
        <translation>Прежний файл не перезаписан. Проверьте права и место в папке и сохраните снова.</translation>
    </message>
    <message>
        <source>请在文本编辑器中改正此处，或恢复备份；在此之前不使用此文件。</source>
        <translation>Исправьте это место в текстовом редакторе или восстановите копию; до этого файл не используется.</translation>
    </message>
    <message>
        <source>请选择正确的文件，或恢复备份。</source>
        <translation>Выберите нужный файл или восстановите копию.</translation>
    </message>
    <message>
        <source>请改正此项，或在面板的页面上重新输入并保存。</source>
        <translation>Исправьте в файле или введите заново на странице и сохраните.</translation>
    </message>
    <message>
        <source>请在端口页分配端口并确认：文件将重新写入，原文件会保留。</source>
        <translation>Назначьте порты на странице «Порты» и подтвердите: файл будет записан заново, прежний сохранится.</translation>
    </message>
    <message>
        <source>请删除此行或改正其类型；此工程可能来自更新的版本。</source>
        <translation>Удалите строку или исправьте её тип; проект может быть от более новой версии.</translation>
    </message>
    <message>
        <source>请改正限值文件，下次运行时生效。</source>
        <translation>Исправьте файл пределов; он действует со следующего запуска.</translation>
    </message>
</context>
<context>
    <name>ScopeRow</name>
    <message>
        <source>程序运行</source>
        <translation>Программа идёт</translation>
    </message>
    <message>
        <source>激光出光</source>
        <translation>Лазер включён</translation>
    </message>
</context>
<context>
    <name>app::Archive</name>
    <message>
        <source>压缩包已损坏</source>
        <translation>архив повреждён</translation>
    </message>
    <message>
        <source>压缩包含有不允许的名称：%1</source>
        <translation>в архиве недопустимое имя: %1</translation>
    </message>
    <message>
        <source>压缩包已加密</source>
        <translation>архив зашифрован</translation>
    </message>
    <message>
        <source>压缩包过大</source>
        <translation>архив слишком велик</translation>
    </message>
    <message>
        <source>压缩包中的 %1 已损坏</source>
        <translation>файл %1 в архиве повреждён</translation>
    </message>
    <message>
        <source>这不是压缩包，或压缩包已损坏</source>
        <translation>это не архив, или он повреждён</translation>
    </message>
    <message>
        <source>压缩包无法写入</source>
        <translation>Не удалось записать архив</translation>
    </message>
</context>
<context>
    <name>app::Backup</name>
    <message>
        <source>这不是备份文件</source>
        <translation>это не резервная копия</translation>
    </message>
    <message>
        <source>备份来自更新的版本</source>
        <translation>копия от более новой версии</translation>
    </message>
    <message>
        <source>备份中的 %1 已被更改</source>
        <translation>файл %1 в копии изменён</translation>
    </message>
    <message>
        <source>备份不完整</source>
        <translation>копия неполна</translation>
    </message>
    <message>
        <source>无法读取 %1</source>
        <translation>не удаётся прочитать %1</translation>
    </message>
    <message>
        <source>无法写入 %1</source>
        <translation>не удаётся записать %1</translation>
    </message>
</context>
<context>
    <name>app::BackupTools</name>
    <message>
        <source>已保存：%1</source>
        <translation>Сохранено: %1</translation>
    </message>
    <message>
        <source>程序运行时不能恢复备份。请等待其结束，或先按“停止”。</source>
        <translation>Во время работы программы восстановление невозможно. Дождитесь окончания или нажмите «Стоп».</translation>
    </message>
    <message>
        <source>恢复备份</source>
        <translation>Восстановление копии</translation>
    </message>
    <message>
        <source>文件过大</source>
        <translation>файл слишком велик</translation>
    </message>
    <message>
        <source>无法恢复 %1：%2。未作任何更改。</source>
        <translation>%1 не восстановить: %2. Ничего не изменено.</translation>
    </message>
    <message>
        <source>无法恢复备份：%1。所有文件保持原样。</source>
        <translation>Копию не восстановить: %1. Все файлы остались прежними.</translation>
    </message>
</context>
<context>
    <name>app::BandPicture</name>
    <message>
        <source>出光</source>
        <translation>Лазер включён</translation>
    </message>
    <message>
        <source>功率 %</source>
        <translation>Мощность, %</translation>
    </message>
    <message>
        <source>保护气</source>
        <translation>Защитный газ</translation>
    </message>
    <message>
        <source>速度 mm/s</source>
        <translation>Скорость, мм/с</translation>
    </message>
</context>
<context>
    <name>app::CellPage</name>
    <message>
        <source>输入</source>
        <translation>Входы</translation>
    </message>
    <message>
        <source>输出</source>
        <translation>Выходы</translation>
    </message>
    <message>
        <source>故障</source>
        <translation>Сбои</translation>
    </message>
    <message>
        <source>设备的输入只显示，不能在此切换；时间不能加快。</source>
        <translation>Входы устройства только показываются, переключать их здесь нельзя. Ускорить время нельзя.</translation>
    </message>
    <message>
        <source>运动故障和控制器异常只能在模拟控制器上产生；时间不能加快。</source>
        <translation>Ошибки движения и сбои контроллера можно вызвать только на имитируемом контроллере. Ускорить время нельзя.</translation>
    </message>
    <message>
        <source>焊接设备的故障由输入报告，不能在此模拟。</source>
        <translation> О неисправностях сварочного оборудования сообщают его входы, вызвать их здесь нельзя.</translation>
    </message>
    <message>
        <source>连接</source>
        <translation>Связь</translation>
    </message>
</context>
<context>
    <name>app::CodeSheet</name>
    <message>
        <source>调试员密码</source>
        <translation>Код наладчика</translation>
    </message>
    <message>
        <source>端口、工位和手动控制设备仅供调试员使用。</source>
        <translation>Порты, посты и ручное управление устройствами доступны наладчику.</translation>
    </message>
    <message>
        <source>“%1”仅供调试员使用，请输入调试员密码。</source>
        <translation>«%1» доступно наладчику. Введите код наладчика.</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>ОК</translation>
    </message>
    <message>
        <source>密码错误次数过多，请等待 %1 秒</source>
        <translation>Слишком много неверных кодов: подождите %1 с</translation>
    </message>
    <message>
        <source>密码错误</source>
        <translation>Неверный код</translation>
    </message>
</context>
<context>
    <name>app::Dock</name>
    <message>
        <source>关闭</source>
        <translation>Закрыть</translation>
    </message>
</context>
<context>
    <name>app::EventList</name>
    <message>
        <source>时间</source>
        <translation>Время</translation>
    </message>
    <message>
        <source>事件</source>
        <translation>Событие</translation>
    </message>
    <message>
        <source>启动者</source>
        <translation>Кем</translation>
    </message>
    <message>
        <source>工程</source>
        <translation>Проект</translation>
    </message>
    <message>
        <source>行</source>
        <translation>Строка</translation>
    </message>
    <message>
        <source>说明</source>
        <translation>Подробности</translation>
    </message>
</context>
<context>
    <name>app::EventPage</name>
    <message>
        <source>CSV</source>
        <translation>CSV</translation>
    </message>
    <message>
        <source>已保存：%1</source>
        <translation>Сохранено: %1</translation>
    </message>
    <message>
        <source>查找</source>
        <translation>Поиск</translation>
    </message>
    <message>
        <source>全部事件</source>
        <translation>Все события</translation>
    </message>
    <message>
        <source>前一天</source>
        <translation>Предыдущий день</translation>
    </message>
    <message>
        <source>后一天</source>
        <translation>Следующий день</translation>
    </message>
    <message>
        <source>将找到的所有事件写入文件</source>
        <translation>Сохраняет все найденные события в файл</translation>
    </message>
    <message>
        <source>最新的 %1 个事件</source>
        <translation>Последние события: %1</translation>
    </message>
    <message>
        <source>%1 个事件</source>
        <translation>Событий: %1</translation>
    </message>
    <message>
        <source>所有日期</source>
        <translation>Все дни</translation>
    </message>
</context>
<context>
    <name>app::EventStore</name>
    <message>
        <source>缺少 SQLite 驱动</source>
        <translation>нет драйвера SQLite</translation>
    </message>
    <message>
        <source>事件日志无法写入：%1（%2）</source>
        <translation>Журнал событий не записывается: %1 (%2)</translation>
    </message>
    <message>
        <source>事件日志已损坏，保存为 %1，并新建日志</source>
        <translation>Журнал событий повреждён. Он сохранён как %1, начат новый</translation>
    </message>
    <message>
        <source>事件日志已损坏：%1</source>
        <translation>Журнал событий повреждён: %1</translation>
    </message>
</context>
<context>
    <name>app::EventText</name>
    <message>
        <source>启动</source>
        <translation>Пуск</translation>
    </message>
    <message>
        <source>完成</source>
        <translation>Завершено</translation>
    </message>
    <message>
        <source>暂停</source>
        <translation>Пауза</translation>
    </message>
    <message>
        <source>停机</source>
        <translation>Останов</translation>
    </message>
    <message>
        <source>故障</source>
        <translation>Отказ</translation>
    </message>
    <message>
        <source>错误</source>
        <translation>Ошибка</translation>
    </message>
    <message>
        <source>激光</source>
        <translation>Лазер</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Сохранено</translation>
    </message>
    <message>
        <source>打开</source>
        <translation>Открыто</translation>
    </message>
    <message>
        <source>权限</source>
        <translation>Доступ</translation>
    </message>
    <message>
        <source>面板</source>
        <translation>Панель</translation>
    </message>
    <message>
        <source>手动</source>
        <translation>вручную</translation>
    </message>
    <message>
        <source>单步</source>
        <translation>шаг</translation>
    </message>
    <message>
        <source>工位</source>
        <translation>пост</translation>
    </message>
    <message>
        <source>急停已按下</source>
        <translation>Аварийный останов нажат</translation>
    </message>
    <message>
        <source>急停已复位</source>
        <translation>Аварийный останов отпущен</translation>
    </message>
    <message>
        <source>运行中驱动断电</source>
        <translation>Питание приводов пропало во время работы</translation>
    </message>
    <message>
        <source>机器人运动错误 -0x%1</source>
        <translation>Ошибка движения робота -0x%1</translation>
    </message>
    <message>
        <source>文件：%1</source>
        <translation>Файл: %1</translation>
    </message>
    <message>
        <source>%1：异常</source>
        <translation>%1: не в порядке</translation>
    </message>
    <message>
        <source>%1：恢复正常</source>
        <translation>%1: снова в порядке</translation>
    </message>
    <message>
        <source>%1：激光打开时出现故障</source>
        <translation>%1: отказ при включённом лазере</translation>
    </message>
    <message>
        <source>手动打开</source>
        <translation>Включён вручную</translation>
    </message>
    <message>
        <source>已关闭</source>
        <translation>Выключен</translation>
    </message>
    <message>
        <source>面板已启动，版本 %1</source>
        <translation>Панель запущена, версия %1</translation>
    </message>
    <message>
        <source>面板已关闭</source>
        <translation>Панель закрыта</translation>
    </message>
    <message>
        <source>调试员已登录</source>
        <translation>Вход наладчика</translation>
    </message>
    <message>
        <source>调试员已退出</source>
        <translation>Выход наладчика</translation>
    </message>
    <message>
        <source>密码错误</source>
        <translation>Неверный код</translation>
    </message>
    <message>
        <source>密码已设置</source>
        <translation>Код задан</translation>
    </message>
    <message>
        <source>密码已取消</source>
        <translation>Код снят</translation>
    </message>
    <message>
        <source>连接断开：%1</source>
        <translation>Связь потеряна: %1</translation>
    </message>
    <message>
        <source>连接恢复：%1</source>
        <translation>Связь восстановлена: %1</translation>
    </message>
    <message>
        <source>控制器违反规则：%1</source>
        <translation>Контроллер нарушил правило: %1</translation>
    </message>
</context>
<context>
    <name>app::FaultList</name>
    <message>
        <source>设备故障</source>
        <translation>Оборудование</translation>
    </message>
    <message>
        <source>运动故障</source>
        <translation>Движение</translation>
    </message>
    <message>
        <source>当前或下一个运动出错
错误码 %1</source>
        <translation>Ошибка этого или следующего
движения, код %1</translation>
    </message>
    <message>
        <source>控制器异常</source>
        <translation>Сбои контроллера</translation>
    </message>
    <message>
        <source>全部恢复正常</source>
        <translation>Вернуть всё в норму</translation>
    </message>
    <message>
        <source>激光器未就绪</source>
        <translation>Лазер не готов</translation>
    </message>
    <message>
        <source>激光头故障</source>
        <translation>Неисправна головка</translation>
    </message>
    <message>
        <source>水冷故障</source>
        <translation>Неисправен чиллер</translation>
    </message>
    <message>
        <source>气压不足</source>
        <translation>Низкое давление газа</translation>
    </message>
    <message>
        <source>温度过高</source>
        <translation>Перегрев</translation>
    </message>
    <message>
        <source>运动结果成批返回</source>
        <translation>Ответы пачками</translation>
    </message>
    <message>
        <source>运动结果立即返回</source>
        <translation>Ответ сразу при команде</translation>
    </message>
    <message>
        <source>停止 300 ms 后返回结果</source>
        <translation>Ответ 300 мс после стопа</translation>
    </message>
    <message>
        <source>每个结果返回两次</source>
        <translation>Каждый ответ дважды</translation>
    </message>
    <message>
        <source>结果写到别的指令</source>
        <translation>Ответ не той команды</translation>
    </message>
    <message>
        <source>机器人状态延迟 50 ms</source>
        <translation>Состояние с задержкой 50 мс</translation>
    </message>
</context>
<context>
    <name>app::FlightKeeper</name>
    <message>
        <source>运行记录器无法写入 %1：%2</source>
        <translation>Бортовой самописец не может писать в %1: %2</translation>
    </message>
    <message>
        <source>另一个程序正在写入此文件</source>
        <translation>в этот файл пишет другая программа</translation>
    </message>
    <message>
        <source>这是另一个文件，不是运行记录</source>
        <translation>это другой файл, не запись самописца</translation>
    </message>
</context>
<context>
    <name>app::HelpPage</name>
    <message>
        <source>查找</source>
        <translation>Поиск</translation>
    </message>
    <message>
        <source>目录</source>
        <translation>Содержание</translation>
    </message>
    <message>
        <source>上一处</source>
        <translation>Предыдущее</translation>
    </message>
    <message>
        <source>下一处</source>
        <translation>Следующее</translation>
    </message>
    <message>
        <source>手册中没有“%1”</source>
        <translation>В руководстве нет «%1»</translation>
    </message>
</context>
<context>
    <name>app::JogBox</name>
    <message>
        <source>基座</source>
        <translation>База</translation>
    </message>
    <message>
        <source>工具</source>
        <translation>Инструмент</translation>
    </message>
    <message>
        <source>关节</source>
        <translation>Оси</translation>
    </message>
    <message>
        <source>连续</source>
        <translation>Непр.</translation>
    </message>
    <message>
        <source>步长，mm 或 °；连续：按住时运动</source>
        <translation>Шаг в мм или °; «Непр.»: движется, пока нажата кнопка</translation>
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
        <source>此控制器不支持点动</source>
        <translation>Этот контроллер не поддерживает ручное перемещение с панели</translation>
    </message>
    <message>
        <source>程序正在运行</source>
        <translation>Программа выполняется</translation>
    </message>
    <message>
        <source>速度，mm/s 或 °/s</source>
        <translation>Скорость, мм/с или °/с</translation>
    </message>
    <message>
        <source>关节会转得过快，请降低速度</source>
        <translation>Ось вращалась бы слишком быстро: уменьшите скорость</translation>
    </message>
</context>
<context>
    <name>app::KeyBox</name>
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
    <message>
        <source>短按：选择和插入；按住 3 秒：拖动示教</source>
        <translation>Коротко: выбор и вставка. Удержание 3&#xa0;с: ведение рукой</translation>
    </message>
</context>
<context>
    <name>app::Keyboard</name>
    <message>
        <source>键盘</source>
        <translation>Клавиатура</translation>
    </message>
    <message>
        <source>不再使用键盘</source>
        <translation>Больше не открывать клавиатуру</translation>
    </message>
    <message>
        <source>大写</source>
        <translation>Прописные</translation>
    </message>
    <message>
        <source>退格</source>
        <translation>Удалить букву слева</translation>
    </message>
    <message>
        <source>回车</source>
        <translation>Ввод</translation>
    </message>
    <message>
        <source>语言</source>
        <translation>Язык</translation>
    </message>
    <message>
        <source>空格</source>
        <translation>Пробел</translation>
    </message>
    <message>
        <source>光标左移</source>
        <translation>Курсор влево</translation>
    </message>
    <message>
        <source>光标右移</source>
        <translation>Курсор вправо</translation>
    </message>
    <message>
        <source>收起</source>
        <translation>Скрыть</translation>
    </message>
    <message>
        <source>没有拼音词库，字母直接输入</source>
        <translation>Нет словаря пиньиня: пишутся буквы</translation>
    </message>
</context>
<context>
    <name>app::LinkPage</name>
    <message>
        <source>机器人控制器</source>
        <translation>Контроллер робота</translation>
    </message>
    <message>
        <source>模拟控制器</source>
        <translation>имитируется</translation>
    </message>
    <message>
        <source>输入输出设备</source>
        <translation>Устройство ввода-вывода</translation>
    </message>
    <message>
        <source>控制器违反的规则</source>
        <translation>Нарушенные контроллером правила</translation>
    </message>
    <message>
        <source>%1：%2 次，最近 %3</source>
        <translation>%1: раз — %2, последний в %3</translation>
    </message>
    <message>
        <source>没有</source>
        <translation>Нет</translation>
    </message>
    <message>
        <source>已连接</source>
        <translation>Подключено</translation>
    </message>
    <message>
        <source>尚未连接</source>
        <translation>Ещё не подключено</translation>
    </message>
    <message>
        <source>无法连接：%1</source>
        <translation>Нет связи: %1</translation>
    </message>
    <message>
        <source>启动以来没有断开过</source>
        <translation>С запуска панели не терялась</translation>
    </message>
    <message numerus="yes">
        <source>断开 %n 次，最近 %1：%2</source>
        <translation>
            <numerusform>Терялась %n раз, последний в %1: %2</numerusform>
            <numerusform>Терялась %n раза, последний в %1: %2</numerusform>
            <numerusform>Терялась %n раз, последний в %1: %2</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>app::LinkText</name>
    <message>
        <source>返回了没有指令的运动结果</source>
        <translation>результат движения, которое не заказывали</translation>
    </message>
    <message>
        <source>同一运动返回了两个结果</source>
        <translation>второй результат одного движения</translation>
    </message>
    <message>
        <source>已停止的运动返回了结果</source>
        <translation>результат остановленного движения</translation>
    </message>
    <message>
        <source>运动开始前返回了结果</source>
        <translation>результат раньше начала движения</translation>
    </message>
    <message>
        <source>运动结果的顺序错误</source>
        <translation>результаты не в порядке движений</translation>
    </message>
    <message>
        <source>同一毫秒内返回了两个结果</source>
        <translation>два результата в одну миллисекунду</translation>
    </message>
    <message>
        <source>两个结果之间没有位置</source>
        <translation>нет положения между двумя результатами</translation>
    </message>
    <message>
        <source>最后一个结果返回时机器人仍在运动</source>
        <translation>последний результат, когда робот ещё движется</translation>
    </message>
    <message>
        <source>无法连接 %1（%2）</source>
        <translation>нет соединения с %1 (%2)</translation>
    </message>
    <message>
        <source>网络中找不到 %1</source>
        <translation>в сети нет %1</translation>
    </message>
    <message>
        <source>%1 断开了连接</source>
        <translation>%1 закрыл соединение</translation>
    </message>
    <message>
        <source>与 %1 的连接中断（%2）</source>
        <translation>соединение с %1 прервалось (%2)</translation>
    </message>
    <message>
        <source>%1 没有应答</source>
        <translation>%1 не отвечает</translation>
    </message>
    <message>
        <source>%1 应答太慢，写入已等待 %2 ms</source>
        <translation>%1 отвечает слишком медленно, запись ждала %2 мс</translation>
    </message>
    <message>
        <source>%1 在 %2 ms 内没有收到心跳，已关闭输出</source>
        <translation>%1 не получал сигнала жизни %2 мс и отключил выходы</translation>
    </message>
    <message>
        <source>%1 没有关闭输出 %2</source>
        <translation>%1 не отключает выход %2</translation>
    </message>
    <message>
        <source>电缆断开</source>
        <translation>кабель оборван</translation>
    </message>
    <message>
        <source>无法连接控制器</source>
        <translation>Нет связи с контроллером</translation>
    </message>
    <message>
        <source>无法连接输入输出设备</source>
        <translation>Нет связи с устройством ввода-вывода</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 拒绝连接：没有运行，或地址不对</source>
        <translation>%1 не принимает соединение: не запущен или неверный адрес</translation>
    </message>
</context>
<context>
    <name>app::MenuSheet</name>
    <message>
        <source>菜单</source>
        <translation>Меню</translation>
    </message>
    <message>
        <source>程序运行时，示例、语言和恢复不可用。</source>
        <translation>Во время работы программы примеры, язык и восстановление недоступны.</translation>
    </message>
    <message>
        <source>手册（F1）</source>
        <translation>Руководство (F1)</translation>
    </message>
    <message>
        <source>首次设置</source>
        <translation>Первая настройка</translation>
    </message>
    <message>
        <source>备份工程和设置…</source>
        <translation>Резервная копия…</translation>
    </message>
    <message>
        <source>恢复备份…</source>
        <translation>Восстановить копию…</translation>
    </message>
    <message>
        <source>示例</source>
        <translation>Примеры</translation>
    </message>
    <message>
        <source>语言（面板将重新启动）</source>
        <translation>Язык (панель перезапустится)</translation>
    </message>
    <message>
        <source>密码和角色</source>
        <translation>Код и роли</translation>
    </message>
    <message>
        <source>结果（F8）</source>
        <translation>Результаты (F8)</translation>
    </message>
    <message>
        <source>事件日志（F10）</source>
        <translation>Журнал событий (F10)</translation>
    </message>
    <message>
        <source>字号和按钮的大小</source>
        <translation>Размер шрифта и кнопок</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Автоматически</translation>
    </message>
    <message>
        <source>技术支持文件包…</source>
        <translation>Архив для поддержки…</translation>
    </message>
    <message>
        <source>点按输入框时打开</source>
        <translation>Открывать при касании поля</translation>
    </message>
    <message>
        <source>数字键盘</source>
        <translation>Цифровые клавиши</translation>
    </message>
    <message>
        <source>字母键盘</source>
        <translation>Клавиатура</translation>
    </message>
    <message>
        <source>遥测（MQTT）</source>
        <translation>Телеметрия (MQTT)</translation>
    </message>
</context>
<context>
    <name>app::MenuTools</name>
    <message>
        <source>菜单</source>
        <translation>Меню</translation>
    </message>
</context>
<context>
    <name>app::ModeBox</name>
    <message>
        <source>模式</source>
        <translation>Режим</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Авто</translation>
    </message>
    <message>
        <source>手动</source>
        <translation>Ручной</translation>
    </message>
</context>
<context>
    <name>app::NewCodeSheet</name>
    <message>
        <source>设置调试员密码</source>
        <translation>Задать код наладчика</translation>
    </message>
    <message>
        <source>设置密码后，端口、工位和手动控制设备只对调试员开放。忘记密码时，由计算机管理员删除密码文件。</source>
        <translation>С кодом порты, посты и ручное управление устройствами открыты только наладчику. Если код забыт, администратор компьютера удаляет его файл.</translation>
    </message>
    <message>
        <source>新密码（%1 至 %2 位数字）</source>
        <translation>Новый код (от %1 до %2 цифр)</translation>
    </message>
    <message>
        <source>再次输入</source>
        <translation>Ещё раз</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Задать</translation>
    </message>
    <message>
        <source>无法保存密码</source>
        <translation>Код не сохраняется</translation>
    </message>
    <message>
        <source>密码太短</source>
        <translation>Код слишком короткий</translation>
    </message>
    <message>
        <source>两次输入不一致</source>
        <translation>Коды не совпадают</translation>
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
    <name>app::NumberKeys</name>
    <message>
        <source>删除一位</source>
        <translation>Удалить цифру</translation>
    </message>
</context>
<context>
    <name>app::NumberPad</name>
    <message>
        <source>数字键盘</source>
        <translation>Цифры</translation>
    </message>
    <message>
        <source>不再使用数字键盘</source>
        <translation>Больше не открывать цифровые клавиши</translation>
    </message>
    <message>
        <source>删除一位</source>
        <translation>Удалить цифру</translation>
    </message>
    <message>
        <source>清空</source>
        <translation>Стереть</translation>
    </message>
    <message>
        <source>原值</source>
        <translation>было</translation>
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
        <source>允许：%1</source>
        <translation>Допустимо: %1</translation>
    </message>
    <message>
        <source>%1 至 %2</source>
        <translation>от %1 до %2</translation>
    </message>
</context>
<context>
    <name>app::Panel</name>
    <message>
        <source>正在启动</source>
        <translation>ЗАПУСК</translation>
    </message>
    <message>
        <source>路径</source>
        <translation>Траектория</translation>
    </message>
    <message>
        <source>信号</source>
        <translation>Сигналы</translation>
    </message>
    <message>
        <source>出光时设备故障：%1，第 %2 行</source>
        <translation>Неисправность при включённом лазере: %1, строка %2</translation>
    </message>
    <message>
        <source>出光时设备故障：%1</source>
        <translation>Неисправность при включённом лазере: %1</translation>
    </message>
    <message>
        <source>目标已达到：%1，%2 件</source>
        <translation>Цель достигнута: %1, деталей: %2</translation>
    </message>
    <message>
        <source>日志</source>
        <translation>Журнал</translation>
    </message>
    <message>
        <source>恢复备份</source>
        <translation>Восстановление копии</translation>
    </message>
    <message>
        <source>上一件 %1  ·  平均 %2</source>
        <translation>Последняя деталь %1  ·  средняя %2</translation>
    </message>
    <message>
        <source>手册</source>
        <translation>Руководство</translation>
    </message>
    <message>
        <source>单元</source>
        <translation>Ячейка</translation>
    </message>
    <message>
        <source>点动</source>
        <translation>Движение</translation>
    </message>
    <message>
        <source>末端按键</source>
        <translation>Кнопки инструмента</translation>
    </message>
    <message>
        <source>按键</source>
        <translation>Кнопки</translation>
    </message>
    <message>
        <source>遥测（MQTT）</source>
        <translation>Телеметрия (MQTT)</translation>
    </message>
</context>
<context>
    <name>app::PanelWindow</name>
    <message>
        <source>激光焊接操作面板</source>
        <translation>Панель лазерной сварки</translation>
    </message>
</context>
<context>
    <name>app::PartsBlock</name>
    <message>
        <source>零件</source>
        <translation>Детали</translation>
    </message>
</context>
<context>
    <name>app::PartsSheet</name>
    <message>
        <source>零件：%1</source>
        <translation>Детали: %1</translation>
    </message>
    <message>
        <source>目标（空：无目标）</source>
        <translation>Цель (пусто: нет)</translation>
    </message>
    <message>
        <source>计数清零</source>
        <translation>Сбросить счётчик</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>ОК</translation>
    </message>
    <message>
        <source>已完成 %1</source>
        <translation>Готово: %1</translation>
    </message>
    <message>
        <source>确认清零（%1）</source>
        <translation>Сбросить %1: точно?</translation>
    </message>
    <message>
        <source>上一件 %1
平均 %2</source>
        <translation>Последняя деталь %1
в среднем %2</translation>
    </message>
</context>
<context>
    <name>app::Passport</name>
    <message>
        <source>没有工程文件</source>
        <translation>нет файла проекта</translation>
    </message>
    <message>
        <source>工位</source>
        <translation>постом</translation>
    </message>
    <message>
        <source>手动启动</source>
        <translation>вручную</translation>
    </message>
    <message>
        <source>工程</source>
        <translation>Проект</translation>
    </message>
    <message>
        <source>开始</source>
        <translation>Начало</translation>
    </message>
    <message>
        <source>启动方式</source>
        <translation>Чем запущено</translation>
    </message>
    <message>
        <source>结束</source>
        <translation>Окончание</translation>
    </message>
    <message>
        <source>运行时间</source>
        <translation>Длительность</translation>
    </message>
    <message>
        <source>焊缝</source>
        <translation>Швы</translation>
    </message>
    <message>
        <source>焊接</source>
        <translation>Сварено</translation>
    </message>
    <message>
        <source>路径 mm</source>
        <translation>Путь, мм</translation>
    </message>
    <message>
        <source>出光 / 送气 / 送丝 s</source>
        <translation>Лазер / газ / проволока, с</translation>
    </message>
    <message>
        <source>限值</source>
        <translation>Пределы</translation>
    </message>
    <message>
        <source>俯视</source>
        <translation>Вид сверху</translation>
    </message>
    <message>
        <source>侧视</source>
        <translation>Вид сбоку</translation>
    </message>
    <message>
        <source>编程焊缝</source>
        <translation>Шов по программе</translation>
    </message>
    <message>
        <source>空程</source>
        <translation>Переход</translation>
    </message>
    <message>
        <source>已焊</source>
        <translation>Сварено</translation>
    </message>
    <message>
        <source>未焊</source>
        <translation>Пропуск</translation>
    </message>
    <message>
        <source>无法运动</source>
        <translation>Невозможно</translation>
    </message>
    <message>
        <source>路径</source>
        <translation>Траектория</translation>
    </message>
    <message>
        <source>信号</source>
        <translation>Сигналы</translation>
    </message>
    <message>
        <source>参数组</source>
        <translation>Наборы параметров</translation>
    </message>
    <message>
        <source>参数</source>
        <translation>Параметр</translation>
    </message>
    <message>
        <source>程序</source>
        <translation>Программа</translation>
    </message>
    <message>
        <source>程序有未保存的更改：工程文件与运行的程序不同</source>
        <translation>Программа имела несохранённые изменения: файл проекта отличается от выполненной программы</translation>
    </message>
    <message>
        <source>行</source>
        <translation>Строка</translation>
    </message>
    <message>
        <source>指令</source>
        <translation>Команда</translation>
    </message>
    <message>
        <source>目标 mm</source>
        <translation>Цель, мм</translation>
    </message>
    <message>
        <source>速度 mm/s</source>
        <translation>Скорость, мм/с</translation>
    </message>
    <message>
        <source>转弯区 mm</source>
        <translation>Радиус, мм</translation>
    </message>
    <message>
        <source>内容</source>
        <translation>Подробности</translation>
    </message>
    <message>
        <source>%1（跳过）</source>
        <translation>%1 (пропущена)</translation>
    </message>
    <message>
        <source>其余行数：%1</source>
        <translation>Остальных строк: %1</translation>
    </message>
    <message>
        <source>文件和校验和（SHA-256）</source>
        <translation>Файлы и контрольные суммы (SHA-256)</translation>
    </message>
    <message>
        <source>没有此文件</source>
        <translation>нет такого файла</translation>
    </message>
    <message>
        <source>软件</source>
        <translation>Программное обеспечение</translation>
    </message>
    <message>
        <source>操作员</source>
        <translation>Оператор</translation>
    </message>
    <message>
        <source>检验员</source>
        <translation>Контролёр</translation>
    </message>
    <message>
        <source>日期、签名</source>
        <translation>Дата, подпись</translation>
    </message>
    <message>
        <source>焊缝档案：%1</source>
        <translation>Паспорт шва: %1</translation>
    </message>
    <message>
        <source>%1 mm</source>
        <translation>%1 мм</translation>
    </message>
</context>
<context>
    <name>app::PathFoot</name>
    <message>
        <source>无法运动</source>
        <translation>Движение невозможно</translation>
    </message>
    <message>
        <source>路径起点</source>
        <translation>Начало траектории</translation>
    </message>
    <message>
        <source>焊接，%1 mm</source>
        <translation>Сварка, %1 мм</translation>
    </message>
    <message>
        <source>空程，%1 mm</source>
        <translation>Переход, %1 мм</translation>
    </message>
    <message>
        <source>清除焊缝</source>
        <translation>Стереть шов</translation>
    </message>
    <message>
        <source>速度 mm/s</source>
        <translation>Скорость, мм/с</translation>
    </message>
    <message>
        <source>功率 %</source>
        <translation>Мощность, %</translation>
    </message>
    <message>
        <source>气体</source>
        <translation>Газ</translation>
    </message>
    <message>
        <source>送丝</source>
        <translation>Проволока</translation>
    </message>
    <message>
        <source>焊缝 %1 / %2</source>
        <translation>Шов %1 из %2</translation>
    </message>
    <message>
        <source>已焊 %1 / %2 mm</source>
        <translation>Сварено %1 из %2 мм</translation>
    </message>
    <message>
        <source>已焊 %1 mm</source>
        <translation>Сварено %1 мм</translation>
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
        <source>清除</source>
        <translation>Стереть</translation>
    </message>
</context>
<context>
    <name>app::PathPage</name>
    <message>
        <source>放大</source>
        <translation>Крупнее</translation>
    </message>
    <message>
        <source>缩小</source>
        <translation>Мельче</translation>
    </message>
    <message>
        <source>工位程序</source>
        <translation>Программа поста</translation>
    </message>
    <message>
        <source>立体</source>
        <translation>3D</translation>
    </message>
    <message>
        <source>俯视</source>
        <translation>Сверху</translation>
    </message>
    <message>
        <source>侧视</source>
        <translation>Сбоку</translation>
    </message>
    <message>
        <source>并列</source>
        <translation>Оба</translation>
    </message>
    <message>
        <source>全部</source>
        <translation>Всё</translation>
    </message>
    <message>
        <source>焊缝</source>
        <translation>Шов</translation>
    </message>
    <message>
        <source>行</source>
        <translation>Строка</translation>
    </message>
</context>
<context>
    <name>app::PathView</name>
    <message>
        <source>路径视图</source>
        <translation>Вид траектории</translation>
    </message>
    <message>
        <source>俯视</source>
        <translation>Вид сверху</translation>
    </message>
    <message>
        <source>侧视</source>
        <translation>Вид сбоку</translation>
    </message>
    <message>
        <source>%1 mm</source>
        <translation>%1 мм</translation>
    </message>
</context>
<context>
    <name>app::PostureTable</name>
    <message>
        <source>mm</source>
        <translation>мм</translation>
    </message>
</context>
<context>
    <name>app::ProgressView</name>
    <message>
        <source>等待输入，之后 %1</source>
        <translation>ждёт вход, затем %1</translation>
    </message>
    <message>
        <source>剩余 %1 + 等待输入</source>
        <translation>осталось %1 + входы</translation>
    </message>
    <message>
        <source>剩余 %1</source>
        <translation>осталось %1</translation>
    </message>
</context>
<context>
    <name>app::RestoreSheet</name>
    <message>
        <source>恢复备份</source>
        <translation>Восстановление копии</translation>
    </message>
    <message>
        <source>备份时间：%1</source>
        <translation>Копия от %1</translation>
    </message>
    <message>
        <source>将被替换：</source>
        <translation>Будут заменены:</translation>
    </message>
    <message>
        <source>将新增：</source>
        <translation>Будут добавлены:</translation>
    </message>
    <message>
        <source>内容相同：</source>
        <translation>Совпадают:</translation>
    </message>
    <message>
        <source>不在备份中，保持不变：</source>
        <translation>Нет в копии, останутся:</translation>
    </message>
    <message>
        <source>现有文件会先保存在同一文件夹的 before-restore-….zip 中。随后面板将重新启动。</source>
        <translation>Прежние файлы сначала сохраняются в той же папке как before-restore-….zip. Затем панель перезапустится.</translation>
    </message>
    <message>
        <source>恢复</source>
        <translation>Восстановить</translation>
    </message>
</context>
<context>
    <name>app::ResultExport</name>
    <message>
        <source>导出</source>
        <translation>Экспорт</translation>
    </message>
    <message>
        <source>文件 %1 已存在，是否覆盖？</source>
        <translation>Файл %1 уже есть. Перезаписать?</translation>
    </message>
    <message>
        <source>无法写入文件：%1
%2</source>
        <translation>Не удалось записать файл: %1
%2</translation>
    </message>
</context>
<context>
    <name>app::ResultFigures</name>
    <message>
        <source>已焊</source>
        <translation>Сварено</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Время</translation>
    </message>
    <message>
        <source>出光</source>
        <translation>Лазер включён</translation>
    </message>
    <message>
        <source>气体</source>
        <translation>Газ</translation>
    </message>
    <message>
        <source>限值</source>
        <translation>Пределы</translation>
    </message>
    <message>
        <source>/ %1 mm</source>
        <translation>из %1 мм</translation>
    </message>
    <message>
        <source>秒</source>
        <translation>с</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>мм</translation>
    </message>
</context>
<context>
    <name>app::ResultText</name>
    <message>
        <source>已完成</source>
        <translation>Завершено</translation>
    </message>
    <message>
        <source>已暂停</source>
        <translation>Пауза</translation>
    </message>
    <message>
        <source>运动错误</source>
        <translation>Ошибка движения</translation>
    </message>
    <message>
        <source>驱动断电</source>
        <translation>Приводы отключены</translation>
    </message>
    <message>
        <source>面板已关闭</source>
        <translation>Панель закрыта</translation>
    </message>
    <message>
        <source>激光器</source>
        <translation>источник лазера</translation>
    </message>
    <message>
        <source>激光头</source>
        <translation>лазерная головка</translation>
    </message>
    <message>
        <source>水冷机</source>
        <translation>чиллер</translation>
    </message>
    <message>
        <source>气压</source>
        <translation>давление газа</translation>
    </message>
    <message>
        <source>温度</source>
        <translation>температура</translation>
    </message>
    <message>
        <source>编程长度 mm</source>
        <translation>По программе, мм</translation>
    </message>
    <message>
        <source>焊接长度 mm</source>
        <translation>Сварено, мм</translation>
    </message>
    <message>
        <source>焊接/编程长度</source>
        <translation>Сварено / программа</translation>
    </message>
    <message>
        <source>满功率长度 mm</source>
        <translation>На полной мощности, мм</translation>
    </message>
    <message>
        <source>平均速度 mm/s</source>
        <translation>Средняя скорость, мм/с</translation>
    </message>
    <message>
        <source>前吹气 s</source>
        <translation>Газ до шва, с</translation>
    </message>
    <message>
        <source>后吹气 s</source>
        <translation>Газ после шва, с</translation>
    </message>
    <message>
        <source>出光时间 s</source>
        <translation>Лазер включён, с</translation>
    </message>
    <message>
        <source>静止出光 s</source>
        <translation>Лазер при остановке, с</translation>
    </message>
    <message>
        <source>能量 %·s</source>
        <translation>Энергия, %·с</translation>
    </message>
    <message>
        <source>热输入 J/mm</source>
        <translation>Погонная энергия, Дж/мм</translation>
    </message>
    <message>
        <source>运行时间 s</source>
        <translation>Длительность, с</translation>
    </message>
    <message>
        <source>未测得</source>
        <translation>не измерено</translation>
    </message>
    <message>
        <source>%1：%2，允许 %3</source>
        <translation>%1: %2, допустимо %3</translation>
    </message>
    <message>
        <source>焊缝 %1，%2</source>
        <translation>Шов %1 – %2</translation>
    </message>
    <message>
        <source>程序行</source>
        <translation>Строки</translation>
    </message>
    <message>
        <source>参数组</source>
        <translation>Набор параметров</translation>
    </message>
    <message>
        <source>未焊段 mm</source>
        <translation>Пропуски, мм</translation>
    </message>
    <message>
        <source>设备故障</source>
        <translation>Неисправности</translation>
    </message>
    <message>
        <source>没有焊接</source>
        <translation>сварки не было</translation>
    </message>
    <message>
        <source>已焊 %1 / %2 mm</source>
        <translation>сварено %1 из %2 мм</translation>
    </message>
    <message>
        <source>已焊 %1 mm</source>
        <translation>сварено %1 мм</translation>
    </message>
    <message>
        <source>没有限值</source>
        <translation>Для проекта нет пределов</translation>
    </message>
    <message>
        <source>限值文件 %1 有错误，没有评定</source>
        <translation>Файл пределов %1 с ошибками: оценки нет</translation>
    </message>
    <message>
        <source>符合全部限值</source>
        <translation>Все пределы соблюдены</translation>
    </message>
    <message>
        <source>超出限值：%1</source>
        <translation>Нарушено пределов: %1</translation>
    </message>
    <message>
        <source>出光时设备故障：%1，第 %2 行，%3 秒</source>
        <translation>Неисправность при включённом лазере: %1, строка %2, %3 с</translation>
    </message>
    <message>
        <source>出光时设备故障：%1，%2 秒</source>
        <translation>Неисправность при включённом лазере: %1, %2 с</translation>
    </message>
    <message>
        <source>空运行：没有出光，没有焊接</source>
        <translation>Проход без луча: сварки не было</translation>
    </message>
    <message>
        <source>第 %1 行的焊接未获允许</source>
        <translation>Строка %1: сварка не была разрешена</translation>
    </message>
    <message>
        <source>控制器拒绝写入 %1，次数 %2</source>
        <translation>Контроллер отклонил записи в %1: %2</translation>
    </message>
    <message>
        <source>行</source>
        <translation>Строки</translation>
    </message>
    <message>
        <source>长度
mm</source>
        <translation>Длина
мм</translation>
    </message>
    <message>
        <source>速度
mm/s</source>
        <translation>Скорость
мм/с</translation>
    </message>
    <message>
        <source>功率
%</source>
        <translation>Мощность
%</translation>
    </message>
    <message>
        <source>前吹气
ms</source>
        <translation>Газ до шва
мс</translation>
    </message>
    <message>
        <source>未焊
mm</source>
        <translation>Пропуски
мм</translation>
    </message>
    <message>
        <source>能量
J/mm</source>
        <translation>Энергия
Дж/мм</translation>
    </message>
    <message>
        <source>能量
%·s</source>
        <translation>Энергия
%·с</translation>
    </message>
    <message>
        <source>合格</source>
        <translation>Годен</translation>
    </message>
    <message>
        <source>没有焊缝</source>
        <translation>Нет швов</translation>
    </message>
    <message>
        <source>要检查的焊缝：%1</source>
        <translation>Проверить швов: %1</translation>
    </message>
    <message>
        <source>合格焊缝：%1</source>
        <translation>Годных швов: %1</translation>
    </message>
</context>
<context>
    <name>app::ResultsPage</name>
    <message>
        <source>CSV</source>
        <translation>CSV</translation>
    </message>
    <message>
        <source>还没有运行记录。程序运行结束后，焊缝和限值显示在这里。</source>
        <translation>Записанных запусков пока нет. После выполнения программы здесь появятся швы и пределы.</translation>
    </message>
    <message>
        <source>已保存：%1</source>
        <translation>Сохранено: %1</translation>
    </message>
    <message>
        <source>全部 CSV</source>
        <translation>Все запуски CSV</translation>
    </message>
    <message>
        <source>今天 %1</source>
        <translation>сегодня в %1</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Назад</translation>
    </message>
    <message>
        <source>较早的零件</source>
        <translation>Прежние детали</translation>
    </message>
    <message>
        <source>焊缝档案</source>
        <translation>Паспорт шва</translation>
    </message>
    <message>
        <source>回到下一件</source>
        <translation>К следующей детали</translation>
    </message>
    <message>
        <source>已与程序、参数和信号一起保存</source>
        <translation>Сохранено с программой, параметрами и сигналами</translation>
    </message>
    <message>
        <source>结果</source>
        <translation>Результаты</translation>
    </message>
    <message>
        <source>文件已损坏，无法读取</source>
        <translation>Файл повреждён и не читается</translation>
    </message>
    <message>
        <source>没有工程文件</source>
        <translation>Нет файла проекта</translation>
    </message>
    <message>
        <source>焊缝 %1，全长 %2 mm</source>
        <translation>Шов %1 по длине %2 мм</translation>
    </message>
</context>
<context>
    <name>app::RoleButton</name>
    <message>
        <source>调试员</source>
        <translation>Наладчик</translation>
    </message>
    <message>
        <source>操作员</source>
        <translation>Оператор</translation>
    </message>
</context>
<context>
    <name>app::RunList</name>
    <message>
        <source>无法读取</source>
        <translation>не читается</translation>
    </message>
    <message>
        <source>开始</source>
        <translation>Начало</translation>
    </message>
    <message>
        <source>工程</source>
        <translation>Проект</translation>
    </message>
    <message>
        <source>结束</source>
        <translation>Итог</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Время</translation>
    </message>
    <message>
        <source>焊缝</source>
        <translation>Швы</translation>
    </message>
    <message>
        <source>限值</source>
        <translation>Пределы</translation>
    </message>
</context>
<context>
    <name>app::RunStop</name>
    <message>
        <source>没有可停止的程序</source>
        <translation>Останавливать нечего: программа не выполняется</translation>
    </message>
    <message>
        <source>没有可停止的程序；激光已打开：在设备页面关闭，或按急停</source>
        <translation>Программа не выполняется. Лазер включён: выключите его на странице «Устройства» или нажмите аварийный останов</translation>
    </message>
</context>
<context>
    <name>app::RunStopButton</name>
    <message>
        <source>停止</source>
        <translation>Стоп</translation>
    </message>
    <message>
        <source>停止运行</source>
        <translation>Остановить работу</translation>
    </message>
    <message>
        <source>停止正在运行的程序、工位或单步，与工程页面的停止相同</source>
        <translation>Останавливает программу, пост или шаг, как «Стоп» на странице проекта</translation>
    </message>
</context>
<context>
    <name>app::ScopePage</name>
    <message>
        <source>保持</source>
        <translation>Удержать</translation>
    </message>
    <message>
        <source>标记</source>
        <translation>Метка</translation>
    </message>
    <message>
        <source>显示更长时间</source>
        <translation>Показать больше времени</translation>
    </message>
    <message>
        <source>显示更短时间</source>
        <translation>Показать меньше времени</translation>
    </message>
    <message>
        <source>光标到上一个变化</source>
        <translation>Курсор к предыдущему изменению</translation>
    </message>
    <message>
        <source>光标到下一个变化</source>
        <translation>Курсор к следующему изменению</translation>
    </message>
    <message>
        <source>显示的时段</source>
        <translation>Показанное</translation>
    </message>
    <message>
        <source>上次运行</source>
        <translation>Последний запуск</translation>
    </message>
    <message>
        <source>全部记录</source>
        <translation>Вся запись</translation>
    </message>
    <message>
        <source>导出</source>
        <translation>Экспорт</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 с</translation>
    </message>
    <message>
        <source>点击曲线放置光标；右侧为当前值</source>
        <translation>Коснитесь кривых, чтобы поставить курсор; справа текущие значения</translation>
    </message>
    <message>
        <source>光标 %1</source>
        <translation>Курсор %1</translation>
    </message>
    <message>
        <source>还没有运行过</source>
        <translation>Запусков ещё не было</translation>
    </message>
    <message>
        <source>已保存：%1</source>
        <translation>Сохранено: %1</translation>
    </message>
    <message>
        <source>无法写入文件：%1
%2</source>
        <translation>Не удалось записать файл: %1
%2</translation>
    </message>
    <message>
        <source>Δ %1 s</source>
        <translation>Δ %1 с</translation>
    </message>
    <message>
        <source>文件 %1 已存在，是否覆盖？</source>
        <translation>Файл %1 уже есть. Перезаписать?</translation>
    </message>
</context>
<context>
    <name>app::SeamLanes</name>
    <message>
        <source>限值 %1 至 %2</source>
        <translation>пределы от %1 до %2</translation>
    </message>
    <message>
        <source>限值，最小 %1</source>
        <translation>предел, не менее %1</translation>
    </message>
    <message>
        <source>限值，最大 %1</source>
        <translation>предел, не более %1</translation>
    </message>
    <message>
        <source>速度</source>
        <translation>Скорость</translation>
    </message>
    <message>
        <source>激光功率</source>
        <translation>Мощность</translation>
    </message>
    <message>
        <source>这次运行没有记录沿焊缝的数值</source>
        <translation>Вдоль этого шва записей нет</translation>
    </message>
    <message>
        <source>第 %1 行</source>
        <translation>Строка %1</translation>
    </message>
    <message>
        <source>mm/s</source>
        <translation>мм/с</translation>
    </message>
    <message>
        <source>%1 mm</source>
        <translation>%1 мм</translation>
    </message>
</context>
<context>
    <name>app::SeamList</name>
    <message>
        <source>焊缝</source>
        <translation>Шов</translation>
    </message>
</context>
<context>
    <name>app::SessionSheet</name>
    <message>
        <source>调试员</source>
        <translation>Наладчик</translation>
    </message>
    <message>
        <source>端口、工位和手动控制设备已开放。%1 分钟没有操作后自动退出。</source>
        <translation>Порты, посты и ручное управление устройствами открыты. Сеанс закончится через %1 мин без действий.</translation>
    </message>
    <message>
        <source>更改密码</source>
        <translation>Сменить код</translation>
    </message>
    <message>
        <source>取消密码</source>
        <translation>Снять код</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>Выйти</translation>
    </message>
</context>
<context>
    <name>app::SetupSheet</name>
    <message>
        <source>首次设置</source>
        <translation>Первая настройка</translation>
    </message>
    <message>
        <source>前往</source>
        <translation>Перейти</translation>
    </message>
    <message>
        <source>此列表可随时从菜单打开。</source>
        <translation>Список всегда доступен в меню.</translation>
    </message>
    <message>
        <source>不再自动显示</source>
        <translation>Больше не показывать</translation>
    </message>
</context>
<context>
    <name>app::SetupSteps</name>
    <message>
        <source>端口</source>
        <translation>Порты</translation>
    </message>
    <message>
        <source>分配激光、气体和设备输入的信号，并逐一测试</source>
        <translation>назначьте сигналы лазера, газа и оборудования и проверьте каждый</translation>
    </message>
    <message>
        <source>参数组</source>
        <translation>Набор параметров</translation>
    </message>
    <message>
        <source>建立第一组参数</source>
        <translation>создайте первый набор</translation>
    </message>
    <message>
        <source>工具</source>
        <translation>Инструмент</translation>
    </message>
    <message>
        <source>在工程页上方选择已标定的焊枪</source>
        <translation>выберите откалиброванную горелку вверху страницы проекта</translation>
    </message>
    <message>
        <source>第一个点</source>
        <translation>Первая точка</translation>
    </message>
    <message>
        <source>新建工程，点动到焊缝起点，按“直线”</source>
        <translation>создайте проект, подведите к началу шва, нажмите «Прямая»</translation>
    </message>
    <message>
        <source>第一条焊缝</source>
        <translation>Первый шов</translation>
    </message>
    <message>
        <source>在焊缝前后添加开始焊接和停止焊接，打开驱动电源，按“开始”</source>
        <translation>добавьте начало и конец сварки, включите приводы, нажмите «Пуск»</translation>
    </message>
</context>
<context>
    <name>app::Sheet</name>
    <message>
        <source>关闭</source>
        <translation>Закрыть</translation>
    </message>
</context>
<context>
    <name>app::SignalList</name>
    <message>
        <source>没有连接：这是最后的值</source>
        <translation>Нет связи: показаны последние значения</translation>
    </message>
</context>
<context>
    <name>app::SpeedBox</name>
    <message>
        <source>单元的时间：快速运行时，焊接中的一切比例不变</source>
        <translation>Ход времени ячейки: при ускорении пропорции сварки не меняются</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Время</translation>
    </message>
</context>
<context>
    <name>app::StateSheet</name>
    <message>
        <source>查看监控页面</source>
        <translation>Показать состояние</translation>
    </message>
    <message>
        <source>查看设备页面</source>
        <translation>Показать устройства</translation>
    </message>
    <message>
        <source>查看工位页面</source>
        <translation>Показать посты</translation>
    </message>
    <message>
        <source>查看结果</source>
        <translation>Показать результат</translation>
    </message>
    <message>
        <source>查看程序</source>
        <translation>Показать программу</translation>
    </message>
    <message>
        <source>查看第 %1 行</source>
        <translation>Показать строку %1</translation>
    </message>
    <message>
        <source>转到右侧按键</source>
        <translation>К кнопкам справа</translation>
    </message>
</context>
<context>
    <name>app::StateText</name>
    <message>
        <source>第 %1 行</source>
        <translation>строка %1</translation>
    </message>
    <message>
        <source>没有打开的工程</source>
        <translation>проект не открыт</translation>
    </message>
    <message>
        <source>由程序打开</source>
        <translation>программой</translation>
    </message>
    <message>
        <source>由工位打开</source>
        <translation>постом</translation>
    </message>
    <message>
        <source>手动打开</source>
        <translation>вручную</translation>
    </message>
    <message>
        <source>没有程序在运行</source>
        <translation>программа не выполняется</translation>
    </message>
    <message>
        <source>急停</source>
        <translation>АВАРИЙНЫЙ ОСТАНОВ</translation>
    </message>
    <message>
        <source>故障</source>
        <translation>НЕИСПРАВНОСТЬ</translation>
    </message>
    <message>
        <source>激光打开</source>
        <translation>ЛАЗЕР ВКЛЮЧЁН</translation>
    </message>
    <message>
        <source>运行中</source>
        <translation>РАБОТА</translation>
    </message>
    <message>
        <source>监听中</source>
        <translation>ОПРОС ПОСТОВ</translation>
    </message>
    <message>
        <source>已完成</source>
        <translation>ЗАВЕРШЕНО</translation>
    </message>
    <message>
        <source>驱动未上电</source>
        <translation>ПРИВОДЫ ВЫКЛ.</translation>
    </message>
    <message>
        <source>就绪</source>
        <translation>ГОТОВО</translation>
    </message>
    <message>
        <source>、</source>
        <translation>, </translation>
    </message>
    <message>
        <source>机器人运动错误 -0x%1</source>
        <translation>ошибка движения -0x%1</translation>
    </message>
    <message>
        <source>工位</source>
        <translation>пост</translation>
    </message>
    <message>
        <source>单步</source>
        <translation>шаг</translation>
    </message>
    <message>
        <source>焊缝未完成</source>
        <translation>шов не закончен</translation>
    </message>
    <message>
        <source>空运行</source>
        <translation>без луча</translation>
    </message>
    <message>
        <source>，</source>
        <translation>, </translation>
    </message>
    <message>
        <source>第 %1 行，共 %2 行</source>
        <translation>строка %1 из %2</translation>
    </message>
    <message>
        <source>暂停</source>
        <translation>ПАУЗА</translation>
    </message>
    <message numerus="yes">
        <source>%n 行</source>
        <translation>
            <numerusform>%n строка</numerusform>
            <numerusform>%n строки</numerusform>
            <numerusform>%n строк</numerusform>
        </translation>
    </message>
    <message>
        <source>先复位急停，再上电</source>
        <translation>Отпустите и включите приводы</translation>
    </message>
    <message>
        <source>%1 个工位等待</source>
        <translation>ожидают: %1</translation>
    </message>
    <message>
        <source>没有工位等待</source>
        <translation>ни один пост не ждёт</translation>
    </message>
    <message>
        <source>激光可能仍打开</source>
        <translation>лазер может быть включён</translation>
    </message>
</context>
<context>
    <name>app::StatusText</name>
    <message>
        <source>机器人正在运动</source>
        <translation>робот движется</translation>
    </message>
    <message>
        <source>机器人正在运动到焊缝终点</source>
        <translation>робот движется к концу шва</translation>
    </message>
    <message>
        <source>前吹气，剩余 %1</source>
        <translation>газ до шва, осталось %1</translation>
    </message>
    <message>
        <source>激光已打开，机器人停留，剩余 %1</source>
        <translation>лазер включён, робот стоит, осталось %1</translation>
    </message>
    <message>
        <source>激光功率正在下降，剩余 %1</source>
        <translation>мощность лазера снижается, осталось %1</translation>
    </message>
    <message>
        <source>激光已关闭，延时结束，剩余 %1</source>
        <translation>лазер выключен, задержка окончания, осталось %1</translation>
    </message>
    <message>
        <source>后吹气，剩余 %1</source>
        <translation>газ после шва, осталось %1</translation>
    </message>
    <message>
        <source>延时，剩余 %1</source>
        <translation>пауза, осталось %1</translation>
    </message>
    <message>
        <source>工位程序第 %1 行：%2</source>
        <translation>Пост, строка %1: %2</translation>
    </message>
    <message>
        <source>第 %1 行：%2</source>
        <translation>Строка %1: %2</translation>
    </message>
    <message>
        <source>工位程序第 %1 行：等待 %2，已等待 %3</source>
        <translation>Пост, строка %1 ждёт %2, %3</translation>
    </message>
    <message>
        <source>第 %1 行：等待 %2，已等待 %3</source>
        <translation>Строка %1 ждёт %2, %3</translation>
    </message>
    <message>
        <source>正在执行</source>
        <translation>выполняется</translation>
    </message>
    <message>
        <source>正在关闭激光、气体和送丝</source>
        <translation>Лазер, газ и проволока отключаются</translation>
    </message>
    <message>
        <source>没有程序在运行</source>
        <translation>Программа не выполняется</translation>
    </message>
    <message>
        <source>驱动未上电</source>
        <translation>приводы выключены</translation>
    </message>
    <message>
        <source>焊接开关已关闭</source>
        <translation>переключатель «Сварка» выключен</translation>
    </message>
    <message>
        <source>手动模式下手动焊接开关已关闭</source>
        <translation>ручной режим, а переключатель «Ручная сварка» выключен</translation>
    </message>
    <message>
        <source>端口“%1”未启用</source>
        <translation>порт «%1» отключён</translation>
    </message>
    <message>
        <source>空运行：激光、气体和送丝保持关闭</source>
        <translation>Без луча: лазер, газ и проволока выключены</translation>
    </message>
    <message>
        <source>允许焊接</source>
        <translation>Сварка разрешена</translation>
    </message>
    <message>
        <source>不能焊接：%1</source>
        <translation>Сварка невозможна: %1</translation>
    </message>
    <message>
        <source>、</source>
        <translation>, </translation>
    </message>
    <message>
        <source>急停已按下</source>
        <translation>Аварийный останов нажат</translation>
    </message>
    <message>
        <source>激光已由程序打开</source>
        <translation>Лазер включён программой</translation>
    </message>
    <message>
        <source>激光已由工位程序打开</source>
        <translation>Лазер включён программой поста</translation>
    </message>
    <message>
        <source>激光已手动打开</source>
        <translation>Лазер включён вручную</translation>
    </message>
    <message>
        <source>激光已打开，但没有程序在运行</source>
        <translation>Лазер включён, хотя программа не выполняется</translation>
    </message>
    <message>
        <source>设备异常：%1</source>
        <translation>Оборудование не в порядке: %1</translation>
    </message>
    <message>
        <source>在第 %1 行暂停</source>
        <translation>Пауза на строке %1</translation>
    </message>
    <message>
        <source>在第 %1 行暂停，焊缝未完成</source>
        <translation>Пауза на строке %1, шов не закончен</translation>
    </message>
    <message>
        <source>端口“%1”未分配</source>
        <translation>порт «%1» не назначен</translation>
    </message>
    <message>
        <source>端口“%1”分配到不存在的 %2</source>
        <translation>порт «%1» назначен на %2, которого нет</translation>
    </message>
    <message>
        <source>焊接没有保护气：%1</source>
        <translation>Сварка без газа: %1</translation>
    </message>
    <message>
        <source>正在监听工位</source>
        <translation>Опрос постов включён</translation>
    </message>
    <message>
        <source>正在监听工位，%1 个等待启动</source>
        <translation>Опрос постов включён, ждут: %1</translation>
    </message>
    <message>
        <source>编辑已锁定：没有打开的工程</source>
        <translation>Правка заблокирована: проект не открыт</translation>
    </message>
    <message>
        <source>编辑已锁定：程序正在运行</source>
        <translation>Правка заблокирована: программа выполняется</translation>
    </message>
    <message>
        <source>编辑已锁定：驱动已上电</source>
        <translation>Правка заблокирована: приводы включены</translation>
    </message>
    <message>
        <source>%1 毫秒</source>
        <translation>%1 мс</translation>
    </message>
    <message>
        <source>%1 秒</source>
        <translation>%1 с</translation>
    </message>
    <message>
        <source>%1 分</source>
        <translation>%1 мин</translation>
    </message>
    <message>
        <source>程序：%1</source>
        <translation>Программа: %1</translation>
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
        <source>超出限值：%1</source>
        <translation>нарушено пределов:&#xa0;%1</translation>
    </message>
    <message>
        <source>，</source>
        <translation>, </translation>
    </message>
    <message>
        <source>上次运行失败：机器人运动错误 -0x%1（%2）</source>
        <translation>Прошлый запуск не удался: ошибка движения робота -0x%1 (%2)</translation>
    </message>
    <message>
        <source>激光可能仍打开：看不到它的输出</source>
        <translation>Лазер может быть включён: его выход не виден</translation>
    </message>
</context>
<context>
    <name>app::StopBox</name>
    <message>
        <source>关</source>
        <translation>Выкл</translation>
    </message>
    <message>
        <source>开</source>
        <translation>Вкл</translation>
    </message>
    <message>
        <source>驱动电源</source>
        <translation>Приводы</translation>
    </message>
    <message>
        <source>复位急停</source>
        <translation>Отпустить</translation>
    </message>
</context>
<context>
    <name>app::StopButton</name>
    <message>
        <source>急停</source>
        <translation>СТОП</translation>
    </message>
    <message>
        <source>紧急停止：F12 或 Pause，在任何窗口中有效</source>
        <translation>Аварийный останов: F12 или Pause, в любом окне</translation>
    </message>
    <message>
        <source>已按下</source>
        <translation>Нажат</translation>
    </message>
</context>
<context>
    <name>app::TelemetrySheet</name>
    <message>
        <source>遥测（MQTT）</source>
        <translation>Телеметрия (MQTT)</translation>
    </message>
    <message>
        <source>关</source>
        <translation>Выкл.</translation>
    </message>
    <message>
        <source>开</source>
        <translation>Вкл.</translation>
    </message>
    <message>
        <source>不加密</source>
        <translation>Без шифрования</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Сохранить</translation>
    </message>
    <message>
        <source>向 MQTT 服务器报告单元状态</source>
        <translation>Сообщать брокеру MQTT о работе ячейки</translation>
    </message>
    <message>
        <source>连接</source>
        <translation>Соединение</translation>
    </message>
    <message>
        <source>服务器地址</source>
        <translation>Адрес брокера</translation>
    </message>
    <message>
        <source>端口</source>
        <translation>Порт</translation>
    </message>
    <message>
        <source>单元名称</source>
        <translation>Имя этой ячейки</translation>
    </message>
    <message>
        <source>CA 证书文件（空：系统信任的机构）</source>
        <translation>Файл ЦС (пусто: доверенные системой)</translation>
    </message>
    <message>
        <source>用户（空：不登录）</source>
        <translation>Пользователь (пусто: без входа)</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Пароль</translation>
    </message>
    <message>
        <source>客户端证书文件（可空）</source>
        <translation>Сертификат клиента (может быть пуст)</translation>
    </message>
    <message>
        <source>客户端私钥文件（可空）</source>
        <translation>Ключ клиента (может быть пуст)</translation>
    </message>
    <message>
        <source>连接已更改，请重新输入密码</source>
        <translation>Соединение изменено: введите пароль ещё раз</translation>
    </message>
    <message>
        <source>已设置，留空不变</source>
        <translation>Задан; пусто: без изменений</translation>
    </message>
    <message>
        <source>主题：%1…</source>
        <translation>Темы: %1…</translation>
    </message>
    <message>
        <source>密码将以明文通过网络传输。请使用 TLS。</source>
        <translation>Пароль пойдёт по сети открытым текстом. Используйте TLS.</translation>
    </message>
    <message>
        <source>%1  ·  已发送 %2，已被更新内容取代 %3</source>
        <translation>%1  ·  отправлено %2, заменено более новыми %3</translation>
    </message>
</context>
<context>
    <name>app::TelemetryText</name>
    <message>
        <source>缺少程序库 libmosquitto.so.1，请安装软件包 libmosquitto1</source>
        <translation>нет библиотеки libmosquitto.so.1: установите пакет libmosquitto1</translation>
    </message>
    <message>
        <source>找不到该地址</source>
        <translation>адрес не найден</translation>
    </message>
    <message>
        <source>连接被拒绝</source>
        <translation>в соединении отказано</translation>
    </message>
    <message>
        <source>服务器没有应答</source>
        <translation>брокер не отвечает</translation>
    </message>
    <message>
        <source>服务器断开了连接</source>
        <translation>брокер закрыл соединение</translation>
    </message>
    <message>
        <source>用户或密码错误</source>
        <translation>неверный пользователь или пароль</translation>
    </message>
    <message>
        <source>服务器不允许此客户端</source>
        <translation>брокер не допускает этого клиента</translation>
    </message>
    <message>
        <source>证书不被信任</source>
        <translation>сертификатам нет доверия</translation>
    </message>
    <message>
        <source>已关闭</source>
        <translation>Выключено</translation>
    </message>
    <message>
        <source>正在连接</source>
        <translation>Соединение…</translation>
    </message>
    <message>
        <source>已连接</source>
        <translation>Соединено</translation>
    </message>
    <message>
        <source>无法连接：%1</source>
        <translation>Нет связи: %1</translation>
    </message>
    <message>
        <source>请输入服务器地址</source>
        <translation>Введите адрес брокера</translation>
    </message>
    <message>
        <source>端口应为 1 至 65535</source>
        <translation>Порт: от 1 до 65535</translation>
    </message>
    <message>
        <source>请输入单元名称，不含 / + #</source>
        <translation>Введите имя ячейки без / + #</translation>
    </message>
    <message>
        <source>设置文件中的主题前缀无效</source>
        <translation>Префикс тем в файле настроек недопустим</translation>
    </message>
    <message>
        <source>有密码但没有用户</source>
        <translation>Есть пароль, но нет пользователя</translation>
    </message>
    <message>
        <source>证书只用于 TLS 连接</source>
        <translation>Сертификаты нужны только для TLS</translation>
    </message>
    <message>
        <source>客户端证书和私钥必须同时填写</source>
        <translation>Сертификат и ключ клиента указываются вместе</translation>
    </message>
    <message>
        <source>无法读取文件 %1</source>
        <translation>Не удаётся прочитать %1</translation>
    </message>
</context>
<context>
    <name>app::TouchInput</name>
    <message>
        <source>数字键盘已关闭，可在菜单中重新打开。</source>
        <translation>Цифровые клавиши отключены. Вернуть их можно в меню.</translation>
    </message>
    <message>
        <source>字母键盘已关闭，可在菜单中重新打开。</source>
        <translation>Клавиатура отключена. Вернуть её можно в меню.</translation>
    </message>
</context>
<context>
    <name>app::WeldPicture</name>
    <message>
        <source>%1 mm</source>
        <translation>%1 мм</translation>
    </message>
</context>
</TS>
