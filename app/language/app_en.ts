<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>ExampleLibrary</name>
    <message>
        <source>搭接直焊缝</source>
        <translation>Lap seam</translation>
    </message>
    <message>
        <source>管与法兰环焊缝</source>
        <translation>Pipe in a flange</translation>
    </message>
    <message>
        <source>箱盖断续焊</source>
        <translation>Stitched box</translation>
    </message>
    <message>
        <source>四个工位</source>
        <translation>Four stations</translation>
    </message>
</context>
<context>
    <name>FileProblem</name>
    <message>
        <source>没有权限</source>
        <translation>permission denied</translation>
    </message>
    <message>
        <source>磁盘已满</source>
        <translation>the disk is full</translation>
    </message>
    <message>
        <source>磁盘只读</source>
        <translation>the disk is read-only</translation>
    </message>
    <message>
        <source>文件夹不存在</source>
        <translation>there is no such folder</translation>
    </message>
    <message>
        <source>这是文件夹，不是文件</source>
        <translation>this is a folder, not a file</translation>
    </message>
    <message>
        <source>这不是普通文件</source>
        <translation>this is not a regular file</translation>
    </message>
    <message>
        <source>磁盘配额已用完</source>
        <translation>the disk quota is used up</translation>
    </message>
    <message>
        <source>磁盘读写错误</source>
        <translation>the disk cannot be read or written</translation>
    </message>
    <message>
        <source>文件过大</source>
        <translation>the file is too large</translation>
    </message>
    <message>
        <source>文件格式错误：%1</source>
        <translation>this is not valid JSON: %1</translation>
    </message>
    <message>
        <source>此处应为值</source>
        <translation>a value is expected here</translation>
    </message>
    <message>
        <source>此处应为数字</source>
        <translation>a digit is expected here</translation>
    </message>
    <message>
        <source>此处应为带引号的名称</source>
        <translation>a name in quotes is expected here</translation>
    </message>
    <message>
        <source>文件内容既不是数组也不是对象</source>
        <translation>the file is neither an array nor an object</translation>
    </message>
    <message>
        <source>字符串没有结束</source>
        <translation>a string is not closed</translation>
    </message>
    <message>
        <source>名称后缺少冒号</source>
        <translation>a colon is missing after a name</translation>
    </message>
    <message>
        <source>无效的值</source>
        <translation>this is not a valid value</translation>
    </message>
    <message>
        <source>无效的数字</source>
        <translation>this is not a valid number</translation>
    </message>
    <message>
        <source>字符串中有无效的转义字符</source>
        <translation>a string holds an invalid escape</translation>
    </message>
    <message>
        <source>文字编码不是 UTF-8</source>
        <translation>the text is not UTF-8</translation>
    </message>
    <message>
        <source>嵌套层数过多</source>
        <translation>nested too deeply</translation>
    </message>
    <message>
        <source>文件末尾有多余内容</source>
        <translation>there is more text after the end</translation>
    </message>
    <message>
        <source>另有 %1 条记录有错误</source>
        <translation>faults in %1 more records</translation>
    </message>
    <message>
        <source>文件内容不是记录列表</source>
        <translation>the file is not a list of records</translation>
    </message>
    <message>
        <source>共有 %1 行，应为 %2 个端口</source>
        <translation>there are %1 rows for %2 ports</translation>
    </message>
    <message>
        <source>这不是记录</source>
        <translation>this is not a record</translation>
    </message>
    <message>
        <source>'%1' 不是数字</source>
        <translation>'%1' is not a number</translation>
    </message>
    <message>
        <source>'%1' 不是文字</source>
        <translation>'%1' is not a text</translation>
    </message>
    <message>
        <source>'%1' 不是对象</source>
        <translation>'%1' is not an object</translation>
    </message>
    <message>
        <source>'%1' 既不是 true 也不是 false</source>
        <translation>'%1' is neither true nor false</translation>
    </message>
    <message>
        <source>所有端口均未启用</source>
        <translation>no port is in use</translation>
    </message>
    <message>
        <source>缺少 '%1'</source>
        <translation>'%1' is missing</translation>
    </message>
    <message>
        <source>'%1' 不是 %2</source>
        <translation>'%1' is not %2</translation>
    </message>
    <message>
        <source>无法保留原文件的副本</source>
        <translation>the old file could not be kept as a copy</translation>
    </message>
    <message>
        <source>没有此文件</source>
        <translation>there is no such file</translation>
    </message>
    <message>
        <source>文件内容不是工程</source>
        <translation>the file is not a project</translation>
    </message>
    <message>
        <source>此处没有名为 '%1' 的项</source>
        <translation>'%1' is not known here</translation>
    </message>
    <message>
        <source>'%1' 的 min 大于 max</source>
        <translation>'min' of '%1' is greater than 'max'</translation>
    </message>
    <message>
        <source>未知的语句类型“%1”</source>
        <translation>unknown statement type "%1"</translation>
    </message>
    <message>
        <source>文件内容是设置，不是工程</source>
        <translation>the file holds settings, not a project</translation>
    </message>
    <message>
        <source>；</source>
        <translation>; </translation>
    </message>
    <message>
        <source>文件内容不是数组</source>
        <translation>the file is not an array</translation>
    </message>
    <message>
        <source>无法确认已写入磁盘</source>
        <translation>the folder could not be synced</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 第 %2 行第 %3 列：%4</source>
        <translation>%1, line %2, column %3: %4</translation>
    </message>
    <message>
        <source>对象没有结束，或缺少逗号</source>
        <translation>an object is not closed, or a comma is missing</translation>
    </message>
    <message>
        <source>数组没有结束，或缺少逗号</source>
        <translation>an array is not closed, or a comma is missing</translation>
    </message>
    <message>
        <source>请选择另一个文件，或检查名称。</source>
        <translation>Choose another file, or check the name.</translation>
    </message>
    <message>
        <source>请恢复该文件夹，或用 --settings 指定另一个文件夹。</source>
        <translation>Restore the folder, or give another one with --settings.</translation>
    </message>
    <message>
        <source>请移走它，并选择普通文件。</source>
        <translation>Move it away, and choose a regular file.</translation>
    </message>
    <message>
        <source>请给予当前用户读写此文件及其文件夹的权限，然后再保存。</source>
        <translation>Give this user permission to read and write the file and its folder, then save again.</translation>
    </message>
    <message>
        <source>请腾出磁盘空间，然后再保存；在此之前更改只保存在面板中。</source>
        <translation>Free some space on the disk, then save again; until then the changes are kept in the panel only.</translation>
    </message>
    <message>
        <source>请换一个可写的磁盘，或解除写保护，然后再保存。</source>
        <translation>Use a writable disk, or remove the write protection, then save again.</translation>
    </message>
    <message>
        <source>请检查磁盘，并另存到其他磁盘。</source>
        <translation>Check the disk, and save to another one.</translation>
    </message>
    <message>
        <source>请把它分成较小的文件。</source>
        <translation>Divide it into smaller files.</translation>
    </message>
    <message>
        <source>请再试一次；若仍失败，请检查磁盘和权限。</source>
        <translation>Try again; if it still fails, check the disk and the permissions.</translation>
    </message>
    <message>
        <source>原文件未被覆盖。请检查文件夹的权限和空间，然后再保存。</source>
        <translation>The old file was not overwritten. Check permissions and free space of the folder, then save again.</translation>
    </message>
    <message>
        <source>请在文本编辑器中改正此处，或恢复备份；在此之前不使用此文件。</source>
        <translation>Correct the place in a text editor, or restore a backup; until then the file is not used.</translation>
    </message>
    <message>
        <source>请选择正确的文件，或恢复备份。</source>
        <translation>Choose the right file, or restore a backup.</translation>
    </message>
    <message>
        <source>请改正此项，或在面板的页面上重新输入并保存。</source>
        <translation>Correct it in the file, or enter it again on its page and save.</translation>
    </message>
    <message>
        <source>请在端口页分配端口并确认：文件将重新写入，原文件会保留。</source>
        <translation>Assign the ports on the Port page and press OK: the file is written again, the old one is kept.</translation>
    </message>
    <message>
        <source>请删除此行或改正其类型；此工程可能来自更新的版本。</source>
        <translation>Delete the line or correct its type; the project may be from a newer version.</translation>
    </message>
    <message>
        <source>请改正限值文件，下次运行时生效。</source>
        <translation>Correct the limits file; it counts from the next run on.</translation>
    </message>
</context>
<context>
    <name>ScopeRow</name>
    <message>
        <source>程序运行</source>
        <translation>Program runs</translation>
    </message>
    <message>
        <source>激光出光</source>
        <translation>Laser on</translation>
    </message>
</context>
<context>
    <name>app::Archive</name>
    <message>
        <source>压缩包已损坏</source>
        <translation>the archive is damaged</translation>
    </message>
    <message>
        <source>压缩包含有不允许的名称：%1</source>
        <translation>the archive has a name that is not allowed: %1</translation>
    </message>
    <message>
        <source>压缩包已加密</source>
        <translation>the archive is encrypted</translation>
    </message>
    <message>
        <source>压缩包过大</source>
        <translation>the archive is too large</translation>
    </message>
    <message>
        <source>压缩包中的 %1 已损坏</source>
        <translation>%1 in the archive is damaged</translation>
    </message>
    <message>
        <source>这不是压缩包，或压缩包已损坏</source>
        <translation>this is not an archive, or it is damaged</translation>
    </message>
    <message>
        <source>压缩包无法写入</source>
        <translation>The archive cannot be written</translation>
    </message>
</context>
<context>
    <name>app::Backup</name>
    <message>
        <source>这不是备份文件</source>
        <translation>this is not a backup</translation>
    </message>
    <message>
        <source>备份来自更新的版本</source>
        <translation>the backup is from a newer version</translation>
    </message>
    <message>
        <source>备份中的 %1 已被更改</source>
        <translation>%1 in the backup has been changed</translation>
    </message>
    <message>
        <source>备份不完整</source>
        <translation>the backup is not complete</translation>
    </message>
    <message>
        <source>无法读取 %1</source>
        <translation>%1 cannot be read</translation>
    </message>
    <message>
        <source>无法写入 %1</source>
        <translation>%1 cannot be written</translation>
    </message>
</context>
<context>
    <name>app::BackupTools</name>
    <message>
        <source>已保存：%1</source>
        <translation>Saved: %1</translation>
    </message>
    <message>
        <source>程序运行时不能恢复备份。请等待其结束，或先按“停止”。</source>
        <translation>A backup cannot be restored while a program runs. Wait until it ends, or press Stop.</translation>
    </message>
    <message>
        <source>恢复备份</source>
        <translation>Restore a backup</translation>
    </message>
    <message>
        <source>文件过大</source>
        <translation>the file is too large</translation>
    </message>
    <message>
        <source>无法恢复 %1：%2。未作任何更改。</source>
        <translation>%1 cannot be restored: %2. Nothing was changed.</translation>
    </message>
    <message>
        <source>无法恢复备份：%1。所有文件保持原样。</source>
        <translation>The backup cannot be restored: %1. All files are as they were.</translation>
    </message>
</context>
<context>
    <name>app::BandPicture</name>
    <message>
        <source>出光</source>
        <translation>Laser on</translation>
    </message>
    <message>
        <source>功率 %</source>
        <translation>Power, %</translation>
    </message>
    <message>
        <source>保护气</source>
        <translation>Shielding gas</translation>
    </message>
    <message>
        <source>速度 mm/s</source>
        <translation>Speed, mm/s</translation>
    </message>
</context>
<context>
    <name>app::CellPage</name>
    <message>
        <source>输入</source>
        <translation>Inputs</translation>
    </message>
    <message>
        <source>输出</source>
        <translation>Outputs</translation>
    </message>
    <message>
        <source>故障</source>
        <translation>Faults</translation>
    </message>
    <message>
        <source>设备的输入只显示，不能在此切换；时间不能加快。</source>
        <translation>The device's inputs are only shown, they cannot be switched here. Time cannot run faster.</translation>
    </message>
    <message>
        <source>运动故障和控制器异常只能在模拟控制器上产生；时间不能加快。</source>
        <translation>Motion errors and controller faults can be tried on the simulated controller only. Time cannot run faster.</translation>
    </message>
    <message>
        <source>焊接设备的故障由输入报告，不能在此模拟。</source>
        <translation> Faults of the welding equipment come by its inputs, they cannot be made here.</translation>
    </message>
    <message>
        <source>连接</source>
        <translation>Link</translation>
    </message>
</context>
<context>
    <name>app::CodeSheet</name>
    <message>
        <source>调试员密码</source>
        <translation>Integrator's code</translation>
    </message>
    <message>
        <source>端口、工位和手动控制设备仅供调试员使用。</source>
        <translation>Ports, stations and manual device control are for the integrator.</translation>
    </message>
    <message>
        <source>“%1”仅供调试员使用，请输入调试员密码。</source>
        <translation>"%1" is for the integrator. Enter the integrator's code.</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>密码错误次数过多，请等待 %1 秒</source>
        <translation>Too many wrong codes: wait %1 s</translation>
    </message>
    <message>
        <source>密码错误</source>
        <translation>Wrong code</translation>
    </message>
</context>
<context>
    <name>app::Dock</name>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>app::EventList</name>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>事件</source>
        <translation>Event</translation>
    </message>
    <message>
        <source>启动者</source>
        <translation>By</translation>
    </message>
    <message>
        <source>工程</source>
        <translation>Project</translation>
    </message>
    <message>
        <source>行</source>
        <translation>Line</translation>
    </message>
    <message>
        <source>说明</source>
        <translation>Details</translation>
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
        <translation>Saved: %1</translation>
    </message>
    <message>
        <source>查找</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>全部事件</source>
        <translation>All events</translation>
    </message>
    <message>
        <source>前一天</source>
        <translation>Day before</translation>
    </message>
    <message>
        <source>后一天</source>
        <translation>Day after</translation>
    </message>
    <message>
        <source>将找到的所有事件写入文件</source>
        <translation>Saves all events found to a file</translation>
    </message>
    <message>
        <source>最新的 %1 个事件</source>
        <translation>The newest %1 events</translation>
    </message>
    <message>
        <source>%1 个事件</source>
        <translation>%1 events</translation>
    </message>
    <message>
        <source>所有日期</source>
        <translation>All days</translation>
    </message>
</context>
<context>
    <name>app::EventStore</name>
    <message>
        <source>缺少 SQLite 驱动</source>
        <translation>the SQLite driver is missing</translation>
    </message>
    <message>
        <source>事件日志无法写入：%1（%2）</source>
        <translation>The event log cannot be written: %1 (%2)</translation>
    </message>
    <message>
        <source>事件日志已损坏，保存为 %1，并新建日志</source>
        <translation>The event log was damaged. It is kept as %1, and a new log was started</translation>
    </message>
    <message>
        <source>事件日志已损坏：%1</source>
        <translation>The event log is damaged: %1</translation>
    </message>
</context>
<context>
    <name>app::EventText</name>
    <message>
        <source>启动</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>完成</source>
        <translation>Finished</translation>
    </message>
    <message>
        <source>暂停</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>停机</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>故障</source>
        <translation>Fault</translation>
    </message>
    <message>
        <source>错误</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>激光</source>
        <translation>Laser</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Saved</translation>
    </message>
    <message>
        <source>打开</source>
        <translation>Opened</translation>
    </message>
    <message>
        <source>权限</source>
        <translation>Role</translation>
    </message>
    <message>
        <source>面板</source>
        <translation>Panel</translation>
    </message>
    <message>
        <source>手动</source>
        <translation>by hand</translation>
    </message>
    <message>
        <source>单步</source>
        <translation>single step</translation>
    </message>
    <message>
        <source>工位</source>
        <translation>station</translation>
    </message>
    <message>
        <source>急停已按下</source>
        <translation>Emergency stop pressed</translation>
    </message>
    <message>
        <source>急停已复位</source>
        <translation>Emergency stop released</translation>
    </message>
    <message>
        <source>运行中驱动断电</source>
        <translation>Drive power lost in a run</translation>
    </message>
    <message>
        <source>机器人运动错误 -0x%1</source>
        <translation>Robot motion error -0x%1</translation>
    </message>
    <message>
        <source>文件：%1</source>
        <translation>File: %1</translation>
    </message>
    <message>
        <source>%1：异常</source>
        <translation>%1: not ready</translation>
    </message>
    <message>
        <source>%1：恢复正常</source>
        <translation>%1: ready again</translation>
    </message>
    <message>
        <source>%1：激光打开时出现故障</source>
        <translation>%1: fault while the laser was on</translation>
    </message>
    <message>
        <source>手动打开</source>
        <translation>On: by hand</translation>
    </message>
    <message>
        <source>已关闭</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>面板已启动，版本 %1</source>
        <translation>Panel started, version %1</translation>
    </message>
    <message>
        <source>面板已关闭</source>
        <translation>Panel closed</translation>
    </message>
    <message>
        <source>调试员已登录</source>
        <translation>Integrator logged in</translation>
    </message>
    <message>
        <source>调试员已退出</source>
        <translation>Integrator logged out</translation>
    </message>
    <message>
        <source>密码错误</source>
        <translation>Wrong code</translation>
    </message>
    <message>
        <source>密码已设置</source>
        <translation>Code set</translation>
    </message>
    <message>
        <source>密码已取消</source>
        <translation>Code removed</translation>
    </message>
    <message>
        <source>连接断开：%1</source>
        <translation>Link lost: %1</translation>
    </message>
    <message>
        <source>连接恢复：%1</source>
        <translation>Link is back: %1</translation>
    </message>
    <message>
        <source>控制器违反规则：%1</source>
        <translation>The controller broke a rule: %1</translation>
    </message>
</context>
<context>
    <name>app::FaultList</name>
    <message>
        <source>设备故障</source>
        <translation>Equipment</translation>
    </message>
    <message>
        <source>运动故障</source>
        <translation>Motion</translation>
    </message>
    <message>
        <source>当前或下一个运动出错
错误码 %1</source>
        <translation>Fail this or the next motion
with code %1</translation>
    </message>
    <message>
        <source>控制器异常</source>
        <translation>Controller misbehaves</translation>
    </message>
    <message>
        <source>全部恢复正常</source>
        <translation>Set all back to normal</translation>
    </message>
    <message>
        <source>激光器未就绪</source>
        <translation>Laser not ready</translation>
    </message>
    <message>
        <source>激光头故障</source>
        <translation>Laser head faulty</translation>
    </message>
    <message>
        <source>水冷故障</source>
        <translation>Chiller faulty</translation>
    </message>
    <message>
        <source>气压不足</source>
        <translation>Gas pressure low</translation>
    </message>
    <message>
        <source>温度过高</source>
        <translation>Temperature too high</translation>
    </message>
    <message>
        <source>运动结果成批返回</source>
        <translation>Results come in bunches</translation>
    </message>
    <message>
        <source>运动结果立即返回</source>
        <translation>Results come at once</translation>
    </message>
    <message>
        <source>停止 300 ms 后返回结果</source>
        <translation>Result 300 ms after a stop</translation>
    </message>
    <message>
        <source>每个结果返回两次</source>
        <translation>Every result twice</translation>
    </message>
    <message>
        <source>结果写到别的指令</source>
        <translation>Results of the wrong command</translation>
    </message>
    <message>
        <source>机器人状态延迟 50 ms</source>
        <translation>Robot state 50 ms late</translation>
    </message>
</context>
<context>
    <name>app::FlightKeeper</name>
    <message>
        <source>运行记录器无法写入 %1：%2</source>
        <translation>The flight recorder cannot write to %1: %2</translation>
    </message>
    <message>
        <source>另一个程序正在写入此文件</source>
        <translation>another program writes to this file</translation>
    </message>
    <message>
        <source>这是另一个文件，不是运行记录</source>
        <translation>this is another file, no flight recording</translation>
    </message>
</context>
<context>
    <name>app::HelpPage</name>
    <message>
        <source>查找</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>目录</source>
        <translation>Contents</translation>
    </message>
    <message>
        <source>上一处</source>
        <translation>Previous</translation>
    </message>
    <message>
        <source>下一处</source>
        <translation>Next</translation>
    </message>
    <message>
        <source>手册中没有“%1”</source>
        <translation>"%1" is not in the handbook</translation>
    </message>
</context>
<context>
    <name>app::JogBox</name>
    <message>
        <source>基座</source>
        <translation>Base</translation>
    </message>
    <message>
        <source>工具</source>
        <translation>Tool</translation>
    </message>
    <message>
        <source>关节</source>
        <translation>Joints</translation>
    </message>
    <message>
        <source>连续</source>
        <translation>Hold</translation>
    </message>
    <message>
        <source>步长，mm 或 °；连续：按住时运动</source>
        <translation>Step in mm or °; Hold: moves as long as a key is held</translation>
    </message>
    <message>
        <source>机器人未上电</source>
        <translation>The drives are off</translation>
    </message>
    <message>
        <source>机器人正在运动</source>
        <translation>The robot is moving</translation>
    </message>
    <message>
        <source>超出工作范围</source>
        <translation>Out of reach</translation>
    </message>
    <message>
        <source>超出关节限位</source>
        <translation>Joint limit</translation>
    </message>
    <message>
        <source>此控制器不支持点动</source>
        <translation>This controller cannot be jogged from here</translation>
    </message>
    <message>
        <source>程序正在运行</source>
        <translation>A program is running</translation>
    </message>
    <message>
        <source>速度，mm/s 或 °/s</source>
        <translation>Speed, mm/s or °/s</translation>
    </message>
    <message>
        <source>关节会转得过快，请降低速度</source>
        <translation>A joint would turn too fast: choose a lower speed</translation>
    </message>
</context>
<context>
    <name>app::KeyBox</name>
    <message>
        <source>上一个</source>
        <translation>Last</translation>
    </message>
    <message>
        <source>下一个</source>
        <translation>Next</translation>
    </message>
    <message>
        <source>中间</source>
        <translation>Center</translation>
    </message>
    <message>
        <source>确认</source>
        <translation>Enter</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>短按：选择和插入；按住 3 秒：拖动示教</source>
        <translation>Short press: select and insert. Held for 3&#xa0;s: hand guiding</translation>
    </message>
</context>
<context>
    <name>app::Keyboard</name>
    <message>
        <source>键盘</source>
        <translation>Keyboard</translation>
    </message>
    <message>
        <source>不再使用键盘</source>
        <translation>Do not open the keyboard any more</translation>
    </message>
    <message>
        <source>大写</source>
        <translation>Capitals</translation>
    </message>
    <message>
        <source>退格</source>
        <translation>Delete the letter before</translation>
    </message>
    <message>
        <source>回车</source>
        <translation>Enter</translation>
    </message>
    <message>
        <source>语言</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>空格</source>
        <translation>Space</translation>
    </message>
    <message>
        <source>光标左移</source>
        <translation>Cursor to the left</translation>
    </message>
    <message>
        <source>光标右移</source>
        <translation>Cursor to the right</translation>
    </message>
    <message>
        <source>收起</source>
        <translation>Hide</translation>
    </message>
    <message>
        <source>没有拼音词库，字母直接输入</source>
        <translation>No pinyin dictionary: letters are written as they are</translation>
    </message>
</context>
<context>
    <name>app::LinkPage</name>
    <message>
        <source>机器人控制器</source>
        <translation>Robot controller</translation>
    </message>
    <message>
        <source>模拟控制器</source>
        <translation>simulated</translation>
    </message>
    <message>
        <source>输入输出设备</source>
        <translation>I/O device</translation>
    </message>
    <message>
        <source>控制器违反的规则</source>
        <translation>Rules that the controller broke</translation>
    </message>
    <message>
        <source>%1：%2 次，最近 %3</source>
        <translation>%1: %2 times, last at %3</translation>
    </message>
    <message>
        <source>没有</source>
        <translation>None</translation>
    </message>
    <message>
        <source>已连接</source>
        <translation>Connected</translation>
    </message>
    <message>
        <source>尚未连接</source>
        <translation>Not connected yet</translation>
    </message>
    <message>
        <source>无法连接：%1</source>
        <translation>Not reachable: %1</translation>
    </message>
    <message>
        <source>启动以来没有断开过</source>
        <translation>Not lost since the panel's start</translation>
    </message>
    <message numerus="yes">
        <source>断开 %n 次，最近 %1：%2</source>
        <translation>
            <numerusform>Lost once, at %1: %2</numerusform>
            <numerusform>Lost %n times, last at %1: %2</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>app::LinkText</name>
    <message>
        <source>返回了没有指令的运动结果</source>
        <translation>a result of a motion that nobody ordered</translation>
    </message>
    <message>
        <source>同一运动返回了两个结果</source>
        <translation>a second result of one motion</translation>
    </message>
    <message>
        <source>已停止的运动返回了结果</source>
        <translation>a result of a stopped motion</translation>
    </message>
    <message>
        <source>运动开始前返回了结果</source>
        <translation>a result before the motion was released</translation>
    </message>
    <message>
        <source>运动结果的顺序错误</source>
        <translation>results in another order than the motions</translation>
    </message>
    <message>
        <source>同一毫秒内返回了两个结果</source>
        <translation>two results in one millisecond</translation>
    </message>
    <message>
        <source>两个结果之间没有位置</source>
        <translation>no position between two results</translation>
    </message>
    <message>
        <source>最后一个结果返回时机器人仍在运动</source>
        <translation>the last result while the robot still moves</translation>
    </message>
    <message>
        <source>无法连接 %1（%2）</source>
        <translation>no connection to %1 (%2)</translation>
    </message>
    <message>
        <source>网络中找不到 %1</source>
        <translation>the network does not know %1</translation>
    </message>
    <message>
        <source>%1 断开了连接</source>
        <translation>%1 has closed the connection</translation>
    </message>
    <message>
        <source>与 %1 的连接中断（%2）</source>
        <translation>the connection to %1 broke (%2)</translation>
    </message>
    <message>
        <source>%1 没有应答</source>
        <translation>%1 does not answer</translation>
    </message>
    <message>
        <source>%1 应答太慢，写入已等待 %2 ms</source>
        <translation>%1 answers too slowly, a write has waited %2 ms</translation>
    </message>
    <message>
        <source>%1 在 %2 ms 内没有收到心跳，已关闭输出</source>
        <translation>%1 got no heartbeat for %2 ms and has switched its outputs off</translation>
    </message>
    <message>
        <source>%1 没有关闭输出 %2</source>
        <translation>%1 does not switch off the output %2</translation>
    </message>
    <message>
        <source>电缆断开</source>
        <translation>the cable is cut</translation>
    </message>
    <message>
        <source>无法连接控制器</source>
        <translation>The controller cannot be reached</translation>
    </message>
    <message>
        <source>无法连接输入输出设备</source>
        <translation>The I/O device cannot be reached</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 拒绝连接：没有运行，或地址不对</source>
        <translation>%1 takes no connection: not running, or a wrong address</translation>
    </message>
</context>
<context>
    <name>app::MenuSheet</name>
    <message>
        <source>菜单</source>
        <translation>Menu</translation>
    </message>
    <message>
        <source>程序运行时，示例、语言和恢复不可用。</source>
        <translation>Examples, language and restoring are not available while a program runs.</translation>
    </message>
    <message>
        <source>手册（F1）</source>
        <translation>Handbook (F1)</translation>
    </message>
    <message>
        <source>首次设置</source>
        <translation>First setup</translation>
    </message>
    <message>
        <source>备份工程和设置…</source>
        <translation>Back up projects and settings…</translation>
    </message>
    <message>
        <source>恢复备份…</source>
        <translation>Restore a backup…</translation>
    </message>
    <message>
        <source>示例</source>
        <translation>Examples</translation>
    </message>
    <message>
        <source>语言（面板将重新启动）</source>
        <translation>Language (restarts the panel)</translation>
    </message>
    <message>
        <source>密码和角色</source>
        <translation>Code and roles</translation>
    </message>
    <message>
        <source>结果（F8）</source>
        <translation>Results (F8)</translation>
    </message>
    <message>
        <source>事件日志（F10）</source>
        <translation>Event log (F10)</translation>
    </message>
    <message>
        <source>字号和按钮的大小</source>
        <translation>Size of type and buttons</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Automatic</translation>
    </message>
    <message>
        <source>技术支持文件包…</source>
        <translation>Support archive…</translation>
    </message>
    <message>
        <source>点按输入框时打开</source>
        <translation>Opens at a tap on a field</translation>
    </message>
    <message>
        <source>数字键盘</source>
        <translation>Number pad</translation>
    </message>
    <message>
        <source>字母键盘</source>
        <translation>Keyboard</translation>
    </message>
    <message>
        <source>遥测（MQTT）</source>
        <translation>Telemetry (MQTT)</translation>
    </message>
</context>
<context>
    <name>app::MenuTools</name>
    <message>
        <source>菜单</source>
        <translation>Menu</translation>
    </message>
</context>
<context>
    <name>app::ModeBox</name>
    <message>
        <source>模式</source>
        <translation>Mode</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>手动</source>
        <translation>Manual</translation>
    </message>
</context>
<context>
    <name>app::NewCodeSheet</name>
    <message>
        <source>设置调试员密码</source>
        <translation>Set the integrator's code</translation>
    </message>
    <message>
        <source>设置密码后，端口、工位和手动控制设备只对调试员开放。忘记密码时，由计算机管理员删除密码文件。</source>
        <translation>With a code, ports, stations and manual device control are open to the integrator only. If the code is forgotten, the administrator of this computer deletes its file.</translation>
    </message>
    <message>
        <source>新密码（%1 至 %2 位数字）</source>
        <translation>New code (%1 to %2 digits)</translation>
    </message>
    <message>
        <source>再次输入</source>
        <translation>Again</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Set</translation>
    </message>
    <message>
        <source>无法保存密码</source>
        <translation>The code cannot be stored</translation>
    </message>
    <message>
        <source>密码太短</source>
        <translation>The code is too short</translation>
    </message>
    <message>
        <source>两次输入不一致</source>
        <translation>The two codes differ</translation>
    </message>
</context>
<context>
    <name>app::NoticeBar</name>
    <message>
        <source>关闭提示</source>
        <translation>Dismiss</translation>
    </message>
    <message>
        <source>全部（%1）</source>
        <translation>All (%1)</translation>
    </message>
</context>
<context>
    <name>app::NumberKeys</name>
    <message>
        <source>删除一位</source>
        <translation>Delete a digit</translation>
    </message>
</context>
<context>
    <name>app::NumberPad</name>
    <message>
        <source>数字键盘</source>
        <translation>Number pad</translation>
    </message>
    <message>
        <source>不再使用数字键盘</source>
        <translation>Do not open the number pad any more</translation>
    </message>
    <message>
        <source>删除一位</source>
        <translation>Delete a digit</translation>
    </message>
    <message>
        <source>清空</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>原值</source>
        <translation>before</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>允许：%1</source>
        <translation>Allowed: %1</translation>
    </message>
    <message>
        <source>%1 至 %2</source>
        <translation>%1 to %2</translation>
    </message>
</context>
<context>
    <name>app::Panel</name>
    <message>
        <source>正在启动</source>
        <translation>STARTING</translation>
    </message>
    <message>
        <source>路径</source>
        <translation>Path</translation>
    </message>
    <message>
        <source>信号</source>
        <translation>Signals</translation>
    </message>
    <message>
        <source>出光时设备故障：%1，第 %2 行</source>
        <translation>%1 fault while the laser is on, line %2</translation>
    </message>
    <message>
        <source>出光时设备故障：%1</source>
        <translation>%1 fault while the laser is on</translation>
    </message>
    <message>
        <source>目标已达到：%1，%2 件</source>
        <translation>Target reached: %1, %2 parts</translation>
    </message>
    <message>
        <source>日志</source>
        <translation>Log</translation>
    </message>
    <message>
        <source>恢复备份</source>
        <translation>Restore a backup</translation>
    </message>
    <message>
        <source>上一件 %1  ·  平均 %2</source>
        <translation>Last part %1  ·  mean %2</translation>
    </message>
    <message>
        <source>手册</source>
        <translation>Handbook</translation>
    </message>
    <message>
        <source>单元</source>
        <translation>Cell</translation>
    </message>
    <message>
        <source>点动</source>
        <translation>Jog</translation>
    </message>
    <message>
        <source>末端按键</source>
        <translation>Tool keys</translation>
    </message>
    <message>
        <source>按键</source>
        <translation>Tool keys</translation>
    </message>
    <message>
        <source>遥测（MQTT）</source>
        <translation>Telemetry (MQTT)</translation>
    </message>
</context>
<context>
    <name>app::PanelWindow</name>
    <message>
        <source>激光焊接操作面板</source>
        <translation>Laser welding panel</translation>
    </message>
</context>
<context>
    <name>app::PartsBlock</name>
    <message>
        <source>零件</source>
        <translation>Parts</translation>
    </message>
</context>
<context>
    <name>app::PartsSheet</name>
    <message>
        <source>零件：%1</source>
        <translation>Parts of %1</translation>
    </message>
    <message>
        <source>目标（空：无目标）</source>
        <translation>Target (empty: none)</translation>
    </message>
    <message>
        <source>计数清零</source>
        <translation>Reset the counter</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>已完成 %1</source>
        <translation>%1 made</translation>
    </message>
    <message>
        <source>确认清零（%1）</source>
        <translation>Reset %1: sure?</translation>
    </message>
    <message>
        <source>上一件 %1
平均 %2</source>
        <translation>Last part %1
mean %2</translation>
    </message>
</context>
<context>
    <name>app::Passport</name>
    <message>
        <source>没有工程文件</source>
        <translation>no project file</translation>
    </message>
    <message>
        <source>工位</source>
        <translation>a station</translation>
    </message>
    <message>
        <source>手动启动</source>
        <translation>hand</translation>
    </message>
    <message>
        <source>工程</source>
        <translation>Project</translation>
    </message>
    <message>
        <source>开始</source>
        <translation>Started</translation>
    </message>
    <message>
        <source>启动方式</source>
        <translation>Started by</translation>
    </message>
    <message>
        <source>结束</source>
        <translation>Ended</translation>
    </message>
    <message>
        <source>运行时间</source>
        <translation>Duration</translation>
    </message>
    <message>
        <source>焊缝</source>
        <translation>Seams</translation>
    </message>
    <message>
        <source>焊接</source>
        <translation>Welded</translation>
    </message>
    <message>
        <source>路径 mm</source>
        <translation>Path, mm</translation>
    </message>
    <message>
        <source>出光 / 送气 / 送丝 s</source>
        <translation>Laser / gas / wire on, s</translation>
    </message>
    <message>
        <source>限值</source>
        <translation>Limits</translation>
    </message>
    <message>
        <source>俯视</source>
        <translation>From above</translation>
    </message>
    <message>
        <source>侧视</source>
        <translation>From the side</translation>
    </message>
    <message>
        <source>编程焊缝</source>
        <translation>Programmed seam</translation>
    </message>
    <message>
        <source>空程</source>
        <translation>Move</translation>
    </message>
    <message>
        <source>已焊</source>
        <translation>Welded</translation>
    </message>
    <message>
        <source>未焊</source>
        <translation>Gap</translation>
    </message>
    <message>
        <source>无法运动</source>
        <translation>Impossible</translation>
    </message>
    <message>
        <source>路径</source>
        <translation>Path</translation>
    </message>
    <message>
        <source>信号</source>
        <translation>Signals</translation>
    </message>
    <message>
        <source>参数组</source>
        <translation>Parameter sets</translation>
    </message>
    <message>
        <source>参数</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <source>程序</source>
        <translation>Program</translation>
    </message>
    <message>
        <source>程序有未保存的更改：工程文件与运行的程序不同</source>
        <translation>The program had unsaved changes: the project file differs from what ran</translation>
    </message>
    <message>
        <source>行</source>
        <translation>Line</translation>
    </message>
    <message>
        <source>指令</source>
        <translation>Command</translation>
    </message>
    <message>
        <source>目标 mm</source>
        <translation>Target, mm</translation>
    </message>
    <message>
        <source>速度 mm/s</source>
        <translation>Speed, mm/s</translation>
    </message>
    <message>
        <source>转弯区 mm</source>
        <translation>Radius, mm</translation>
    </message>
    <message>
        <source>内容</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>%1（跳过）</source>
        <translation>%1 (skipped)</translation>
    </message>
    <message>
        <source>其余行数：%1</source>
        <translation>Further lines: %1</translation>
    </message>
    <message>
        <source>文件和校验和（SHA-256）</source>
        <translation>Files and checksums (SHA-256)</translation>
    </message>
    <message>
        <source>没有此文件</source>
        <translation>no such file</translation>
    </message>
    <message>
        <source>软件</source>
        <translation>Software</translation>
    </message>
    <message>
        <source>操作员</source>
        <translation>Operator</translation>
    </message>
    <message>
        <source>检验员</source>
        <translation>Inspector</translation>
    </message>
    <message>
        <source>日期、签名</source>
        <translation>Date, signature</translation>
    </message>
    <message>
        <source>焊缝档案：%1</source>
        <translation>Seam passport: %1</translation>
    </message>
    <message>
        <source>%1 mm</source>
        <translation>%1 mm</translation>
    </message>
</context>
<context>
    <name>app::PathFoot</name>
    <message>
        <source>无法运动</source>
        <translation>Cannot be moved</translation>
    </message>
    <message>
        <source>路径起点</source>
        <translation>The path begins here</translation>
    </message>
    <message>
        <source>焊接，%1 mm</source>
        <translation>Weld, %1 mm</translation>
    </message>
    <message>
        <source>空程，%1 mm</source>
        <translation>Move, %1 mm</translation>
    </message>
    <message>
        <source>清除焊缝</source>
        <translation>Clear seam</translation>
    </message>
    <message>
        <source>速度 mm/s</source>
        <translation>Speed, mm/s</translation>
    </message>
    <message>
        <source>功率 %</source>
        <translation>Power, %</translation>
    </message>
    <message>
        <source>气体</source>
        <translation>Gas</translation>
    </message>
    <message>
        <source>送丝</source>
        <translation>Wire</translation>
    </message>
    <message>
        <source>焊缝 %1 / %2</source>
        <translation>Seam %1 of %2</translation>
    </message>
    <message>
        <source>已焊 %1 / %2 mm</source>
        <translation>%1 of %2 mm welded</translation>
    </message>
    <message>
        <source>已焊 %1 mm</source>
        <translation>Welded %1 mm</translation>
    </message>
    <message>
        <source>开</source>
        <translation>on</translation>
    </message>
    <message>
        <source>关</source>
        <translation>off</translation>
    </message>
    <message>
        <source>清除</source>
        <translation>Clear</translation>
    </message>
</context>
<context>
    <name>app::PathPage</name>
    <message>
        <source>放大</source>
        <translation>Larger</translation>
    </message>
    <message>
        <source>缩小</source>
        <translation>Smaller</translation>
    </message>
    <message>
        <source>工位程序</source>
        <translation>Program of a station</translation>
    </message>
    <message>
        <source>立体</source>
        <translation>3-D</translation>
    </message>
    <message>
        <source>俯视</source>
        <translation>Above</translation>
    </message>
    <message>
        <source>侧视</source>
        <translation>Side</translation>
    </message>
    <message>
        <source>并列</source>
        <translation>Both</translation>
    </message>
    <message>
        <source>全部</source>
        <translation>All</translation>
    </message>
    <message>
        <source>焊缝</source>
        <translation>Seam</translation>
    </message>
    <message>
        <source>行</source>
        <translation>Line</translation>
    </message>
</context>
<context>
    <name>app::PathView</name>
    <message>
        <source>路径视图</source>
        <translation>Path view</translation>
    </message>
    <message>
        <source>俯视</source>
        <translation>From above</translation>
    </message>
    <message>
        <source>侧视</source>
        <translation>From the side</translation>
    </message>
    <message>
        <source>%1 mm</source>
        <translation>%1 mm</translation>
    </message>
</context>
<context>
    <name>app::PostureTable</name>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
</context>
<context>
    <name>app::ProgressView</name>
    <message>
        <source>等待输入，之后 %1</source>
        <translation>waits for an input, then %1</translation>
    </message>
    <message>
        <source>剩余 %1 + 等待输入</source>
        <translation>%1 left + inputs</translation>
    </message>
    <message>
        <source>剩余 %1</source>
        <translation>%1 left</translation>
    </message>
</context>
<context>
    <name>app::RestoreSheet</name>
    <message>
        <source>恢复备份</source>
        <translation>Restore a backup</translation>
    </message>
    <message>
        <source>备份时间：%1</source>
        <translation>Backup of %1</translation>
    </message>
    <message>
        <source>将被替换：</source>
        <translation>Will be replaced:</translation>
    </message>
    <message>
        <source>将新增：</source>
        <translation>Will be added:</translation>
    </message>
    <message>
        <source>内容相同：</source>
        <translation>Unchanged:</translation>
    </message>
    <message>
        <source>不在备份中，保持不变：</source>
        <translation>Not in the backup, kept:</translation>
    </message>
    <message>
        <source>现有文件会先保存在同一文件夹的 before-restore-….zip 中。随后面板将重新启动。</source>
        <translation>The present files are first saved in the same folder as before-restore-….zip. Then the panel restarts.</translation>
    </message>
    <message>
        <source>恢复</source>
        <translation>Restore</translation>
    </message>
</context>
<context>
    <name>app::ResultExport</name>
    <message>
        <source>导出</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>文件 %1 已存在，是否覆盖？</source>
        <translation>The file %1 exists. Write over it?</translation>
    </message>
    <message>
        <source>无法写入文件：%1
%2</source>
        <translation>The file cannot be written: %1
%2</translation>
    </message>
</context>
<context>
    <name>app::ResultFigures</name>
    <message>
        <source>已焊</source>
        <translation>Welded</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>出光</source>
        <translation>Laser on</translation>
    </message>
    <message>
        <source>气体</source>
        <translation>Gas</translation>
    </message>
    <message>
        <source>限值</source>
        <translation>Limits</translation>
    </message>
    <message>
        <source>/ %1 mm</source>
        <translation>of %1 mm</translation>
    </message>
    <message>
        <source>秒</source>
        <translation>s</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
</context>
<context>
    <name>app::ResultText</name>
    <message>
        <source>已完成</source>
        <translation>Finished</translation>
    </message>
    <message>
        <source>已暂停</source>
        <translation>Paused</translation>
    </message>
    <message>
        <source>运动错误</source>
        <translation>Motion error</translation>
    </message>
    <message>
        <source>驱动断电</source>
        <translation>Power lost</translation>
    </message>
    <message>
        <source>面板已关闭</source>
        <translation>Panel closed</translation>
    </message>
    <message>
        <source>激光器</source>
        <translation>Laser source</translation>
    </message>
    <message>
        <source>激光头</source>
        <translation>Laser head</translation>
    </message>
    <message>
        <source>水冷机</source>
        <translation>Chiller</translation>
    </message>
    <message>
        <source>气压</source>
        <translation>Gas pressure</translation>
    </message>
    <message>
        <source>温度</source>
        <translation>Temperature</translation>
    </message>
    <message>
        <source>编程长度 mm</source>
        <translation>Programmed, mm</translation>
    </message>
    <message>
        <source>焊接长度 mm</source>
        <translation>Welded, mm</translation>
    </message>
    <message>
        <source>焊接/编程长度</source>
        <translation>Welded / programmed</translation>
    </message>
    <message>
        <source>满功率长度 mm</source>
        <translation>At full power, mm</translation>
    </message>
    <message>
        <source>平均速度 mm/s</source>
        <translation>Mean speed, mm/s</translation>
    </message>
    <message>
        <source>前吹气 s</source>
        <translation>Gas pre-flow, s</translation>
    </message>
    <message>
        <source>后吹气 s</source>
        <translation>Gas post-flow, s</translation>
    </message>
    <message>
        <source>出光时间 s</source>
        <translation>Laser on, s</translation>
    </message>
    <message>
        <source>静止出光 s</source>
        <translation>Laser on at standstill, s</translation>
    </message>
    <message>
        <source>能量 %·s</source>
        <translation>Energy, %·s</translation>
    </message>
    <message>
        <source>热输入 J/mm</source>
        <translation>Heat input, J/mm</translation>
    </message>
    <message>
        <source>运行时间 s</source>
        <translation>Duration of the run, s</translation>
    </message>
    <message>
        <source>未测得</source>
        <translation>not measured</translation>
    </message>
    <message>
        <source>%1：%2，允许 %3</source>
        <translation>%1: %2, allowed %3</translation>
    </message>
    <message>
        <source>焊缝 %1，%2</source>
        <translation>Seam %1 – %2</translation>
    </message>
    <message>
        <source>程序行</source>
        <translation>Lines</translation>
    </message>
    <message>
        <source>参数组</source>
        <translation>Parameter set</translation>
    </message>
    <message>
        <source>未焊段 mm</source>
        <translation>Gaps, mm</translation>
    </message>
    <message>
        <source>设备故障</source>
        <translation>Equipment faults</translation>
    </message>
    <message>
        <source>没有焊接</source>
        <translation>nothing welded</translation>
    </message>
    <message>
        <source>已焊 %1 / %2 mm</source>
        <translation>%1 of %2 mm welded</translation>
    </message>
    <message>
        <source>已焊 %1 mm</source>
        <translation>%1 mm welded</translation>
    </message>
    <message>
        <source>没有限值</source>
        <translation>No limits for this project</translation>
    </message>
    <message>
        <source>限值文件 %1 有错误，没有评定</source>
        <translation>The limits file %1 has errors: no verdict</translation>
    </message>
    <message>
        <source>符合全部限值</source>
        <translation>Within all limits</translation>
    </message>
    <message>
        <source>超出限值：%1</source>
        <translation>Limits exceeded: %1</translation>
    </message>
    <message>
        <source>出光时设备故障：%1，第 %2 行，%3 秒</source>
        <translation>%1 fault while the laser was on, line %2, at %3 s</translation>
    </message>
    <message>
        <source>出光时设备故障：%1，%2 秒</source>
        <translation>%1 fault while the laser was on, at %2 s</translation>
    </message>
    <message>
        <source>空运行：没有出光，没有焊接</source>
        <translation>Dry run: the laser stayed off, nothing was welded</translation>
    </message>
    <message>
        <source>第 %1 行的焊接未获允许</source>
        <translation>Line %1: welding was not permitted</translation>
    </message>
    <message>
        <source>控制器拒绝写入 %1，次数 %2</source>
        <translation>The controller refused writes to %1: %2</translation>
    </message>
    <message>
        <source>行</source>
        <translation>Lines</translation>
    </message>
    <message>
        <source>长度
mm</source>
        <translation>Length
mm</translation>
    </message>
    <message>
        <source>速度
mm/s</source>
        <translation>Speed
mm/s</translation>
    </message>
    <message>
        <source>功率
%</source>
        <translation>Power
%</translation>
    </message>
    <message>
        <source>前吹气
ms</source>
        <translation>Pre-flow
ms</translation>
    </message>
    <message>
        <source>未焊
mm</source>
        <translation>Gaps
mm</translation>
    </message>
    <message>
        <source>能量
J/mm</source>
        <translation>Energy
J/mm</translation>
    </message>
    <message>
        <source>能量
%·s</source>
        <translation>Energy
%·s</translation>
    </message>
    <message>
        <source>合格</source>
        <translation>Good</translation>
    </message>
    <message>
        <source>没有焊缝</source>
        <translation>No seams</translation>
    </message>
    <message>
        <source>要检查的焊缝：%1</source>
        <translation>Seams to check: %1</translation>
    </message>
    <message>
        <source>合格焊缝：%1</source>
        <translation>Good seams: %1</translation>
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
        <translation>No run is recorded yet. When a program has run, its seams and their limits are shown here.</translation>
    </message>
    <message>
        <source>已保存：%1</source>
        <translation>Saved: %1</translation>
    </message>
    <message>
        <source>全部 CSV</source>
        <translation>All runs CSV</translation>
    </message>
    <message>
        <source>今天 %1</source>
        <translation>today at %1</translation>
    </message>
    <message>
        <source>返回</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>较早的零件</source>
        <translation>Earlier parts</translation>
    </message>
    <message>
        <source>焊缝档案</source>
        <translation>Seam passport</translation>
    </message>
    <message>
        <source>回到下一件</source>
        <translation>Back to the next part</translation>
    </message>
    <message>
        <source>已与程序、参数和信号一起保存</source>
        <translation>Kept with its program, parameters and signals</translation>
    </message>
    <message>
        <source>结果</source>
        <translation>Results</translation>
    </message>
    <message>
        <source>文件已损坏，无法读取</source>
        <translation>The file is damaged and cannot be read</translation>
    </message>
    <message>
        <source>没有工程文件</source>
        <translation>No project file</translation>
    </message>
    <message>
        <source>焊缝 %1，全长 %2 mm</source>
        <translation>Seam %1, along its %2 mm</translation>
    </message>
</context>
<context>
    <name>app::RoleButton</name>
    <message>
        <source>调试员</source>
        <translation>Integrator</translation>
    </message>
    <message>
        <source>操作员</source>
        <translation>Operator</translation>
    </message>
</context>
<context>
    <name>app::RunList</name>
    <message>
        <source>无法读取</source>
        <translation>cannot be read</translation>
    </message>
    <message>
        <source>开始</source>
        <translation>Started</translation>
    </message>
    <message>
        <source>工程</source>
        <translation>Project</translation>
    </message>
    <message>
        <source>结束</source>
        <translation>Ended</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>焊缝</source>
        <translation>Seams</translation>
    </message>
    <message>
        <source>限值</source>
        <translation>Limits</translation>
    </message>
</context>
<context>
    <name>app::RunStop</name>
    <message>
        <source>没有可停止的程序</source>
        <translation>Nothing to stop: no program runs</translation>
    </message>
    <message>
        <source>没有可停止的程序；激光已打开：在设备页面关闭，或按急停</source>
        <translation>No program runs. The laser is on: switch it off on the Device page, or press the emergency stop</translation>
    </message>
</context>
<context>
    <name>app::RunStopButton</name>
    <message>
        <source>停止</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>停止运行</source>
        <translation>Stop the run</translation>
    </message>
    <message>
        <source>停止正在运行的程序、工位或单步，与工程页面的停止相同</source>
        <translation>Stops the program, station or single step that is running, as Stop on the Project page does</translation>
    </message>
</context>
<context>
    <name>app::ScopePage</name>
    <message>
        <source>保持</source>
        <translation>Hold</translation>
    </message>
    <message>
        <source>标记</source>
        <translation>Mark</translation>
    </message>
    <message>
        <source>显示更长时间</source>
        <translation>Show a longer time</translation>
    </message>
    <message>
        <source>显示更短时间</source>
        <translation>Show a shorter time</translation>
    </message>
    <message>
        <source>光标到上一个变化</source>
        <translation>Cursor to the change before</translation>
    </message>
    <message>
        <source>光标到下一个变化</source>
        <translation>Cursor to the next change</translation>
    </message>
    <message>
        <source>显示的时段</source>
        <translation>What is shown</translation>
    </message>
    <message>
        <source>上次运行</source>
        <translation>Last run</translation>
    </message>
    <message>
        <source>全部记录</source>
        <translation>All recorded</translation>
    </message>
    <message>
        <source>导出</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>点击曲线放置光标；右侧为当前值</source>
        <translation>Tap the curves to place a cursor; values now on the right</translation>
    </message>
    <message>
        <source>光标 %1</source>
        <translation>Cursor %1</translation>
    </message>
    <message>
        <source>还没有运行过</source>
        <translation>Nothing has run yet</translation>
    </message>
    <message>
        <source>已保存：%1</source>
        <translation>Saved: %1</translation>
    </message>
    <message>
        <source>无法写入文件：%1
%2</source>
        <translation>The file cannot be written: %1
%2</translation>
    </message>
    <message>
        <source>Δ %1 s</source>
        <translation>Δ %1 s</translation>
    </message>
    <message>
        <source>文件 %1 已存在，是否覆盖？</source>
        <translation>The file %1 exists. Write over it?</translation>
    </message>
</context>
<context>
    <name>app::SeamLanes</name>
    <message>
        <source>限值 %1 至 %2</source>
        <translation>limits %1 to %2</translation>
    </message>
    <message>
        <source>限值，最小 %1</source>
        <translation>limit, at least %1</translation>
    </message>
    <message>
        <source>限值，最大 %1</source>
        <translation>limit, at most %1</translation>
    </message>
    <message>
        <source>速度</source>
        <translation>Speed</translation>
    </message>
    <message>
        <source>激光功率</source>
        <translation>Laser power</translation>
    </message>
    <message>
        <source>这次运行没有记录沿焊缝的数值</source>
        <translation>Nothing was recorded along this seam</translation>
    </message>
    <message>
        <source>第 %1 行</source>
        <translation>Line %1</translation>
    </message>
    <message>
        <source>mm/s</source>
        <translation>mm/s</translation>
    </message>
    <message>
        <source>%1 mm</source>
        <translation>%1 mm</translation>
    </message>
</context>
<context>
    <name>app::SeamList</name>
    <message>
        <source>焊缝</source>
        <translation>Seam</translation>
    </message>
</context>
<context>
    <name>app::SessionSheet</name>
    <message>
        <source>调试员</source>
        <translation>Integrator</translation>
    </message>
    <message>
        <source>端口、工位和手动控制设备已开放。%1 分钟没有操作后自动退出。</source>
        <translation>Ports, stations and manual device control are open. The session ends after %1 minutes without input.</translation>
    </message>
    <message>
        <source>更改密码</source>
        <translation>Change the code</translation>
    </message>
    <message>
        <source>取消密码</source>
        <translation>Remove the code</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>End the session</translation>
    </message>
</context>
<context>
    <name>app::SetupSheet</name>
    <message>
        <source>首次设置</source>
        <translation>First setup</translation>
    </message>
    <message>
        <source>前往</source>
        <translation>Go there</translation>
    </message>
    <message>
        <source>此列表可随时从菜单打开。</source>
        <translation>The menu opens this list at any time.</translation>
    </message>
    <message>
        <source>不再自动显示</source>
        <translation>Do not show by itself</translation>
    </message>
</context>
<context>
    <name>app::SetupSteps</name>
    <message>
        <source>端口</source>
        <translation>Ports</translation>
    </message>
    <message>
        <source>分配激光、气体和设备输入的信号，并逐一测试</source>
        <translation>assign the signals of laser, gas and equipment, and test each</translation>
    </message>
    <message>
        <source>参数组</source>
        <translation>Parameter set</translation>
    </message>
    <message>
        <source>建立第一组参数</source>
        <translation>make the first set</translation>
    </message>
    <message>
        <source>工具</source>
        <translation>Tool</translation>
    </message>
    <message>
        <source>在工程页上方选择已标定的焊枪</source>
        <translation>choose the measured welding head at the top of the project page</translation>
    </message>
    <message>
        <source>第一个点</source>
        <translation>First point</translation>
    </message>
    <message>
        <source>新建工程，点动到焊缝起点，按“直线”</source>
        <translation>make a project, jog to the beginning of the seam, press Line</translation>
    </message>
    <message>
        <source>第一条焊缝</source>
        <translation>First weld</translation>
    </message>
    <message>
        <source>在焊缝前后添加开始焊接和停止焊接，打开驱动电源，按“开始”</source>
        <translation>add Start and Stop Welding around the seam, switch the drives on, press Start</translation>
    </message>
</context>
<context>
    <name>app::Sheet</name>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>app::SignalList</name>
    <message>
        <source>没有连接：这是最后的值</source>
        <translation>No link: these are the last values</translation>
    </message>
</context>
<context>
    <name>app::SpeedBox</name>
    <message>
        <source>单元的时间：快速运行时，焊接中的一切比例不变</source>
        <translation>How fast the cell's time goes; faster, nothing in a weld changes its proportion</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
</context>
<context>
    <name>app::StateSheet</name>
    <message>
        <source>查看监控页面</source>
        <translation>Show the monitor</translation>
    </message>
    <message>
        <source>查看设备页面</source>
        <translation>Show the devices</translation>
    </message>
    <message>
        <source>查看工位页面</source>
        <translation>Show the stations</translation>
    </message>
    <message>
        <source>查看结果</source>
        <translation>Show the result</translation>
    </message>
    <message>
        <source>查看程序</source>
        <translation>Show the program</translation>
    </message>
    <message>
        <source>查看第 %1 行</source>
        <translation>Show line %1</translation>
    </message>
    <message>
        <source>转到右侧按键</source>
        <translation>To the keys at the right</translation>
    </message>
</context>
<context>
    <name>app::StateText</name>
    <message>
        <source>第 %1 行</source>
        <translation>line %1</translation>
    </message>
    <message>
        <source>没有打开的工程</source>
        <translation>no project is open</translation>
    </message>
    <message>
        <source>由程序打开</source>
        <translation>by the program</translation>
    </message>
    <message>
        <source>由工位打开</source>
        <translation>by a station</translation>
    </message>
    <message>
        <source>手动打开</source>
        <translation>by hand</translation>
    </message>
    <message>
        <source>没有程序在运行</source>
        <translation>no program runs</translation>
    </message>
    <message>
        <source>急停</source>
        <translation>EMERGENCY STOP</translation>
    </message>
    <message>
        <source>故障</source>
        <translation>FAULT</translation>
    </message>
    <message>
        <source>激光打开</source>
        <translation>LASER ON</translation>
    </message>
    <message>
        <source>运行中</source>
        <translation>RUNNING</translation>
    </message>
    <message>
        <source>监听中</source>
        <translation>LISTENING</translation>
    </message>
    <message>
        <source>已完成</source>
        <translation>FINISHED</translation>
    </message>
    <message>
        <source>驱动未上电</source>
        <translation>DRIVES OFF</translation>
    </message>
    <message>
        <source>就绪</source>
        <translation>READY</translation>
    </message>
    <message>
        <source>、</source>
        <translation>, </translation>
    </message>
    <message>
        <source>机器人运动错误 -0x%1</source>
        <translation>robot motion error -0x%1</translation>
    </message>
    <message>
        <source>工位</source>
        <translation>station</translation>
    </message>
    <message>
        <source>单步</source>
        <translation>single step</translation>
    </message>
    <message>
        <source>焊缝未完成</source>
        <translation>inside a weld</translation>
    </message>
    <message>
        <source>空运行</source>
        <translation>dry run</translation>
    </message>
    <message>
        <source>，</source>
        <translation>, </translation>
    </message>
    <message>
        <source>第 %1 行，共 %2 行</source>
        <translation>line %1 of %2</translation>
    </message>
    <message>
        <source>暂停</source>
        <translation>PAUSED</translation>
    </message>
    <message numerus="yes">
        <source>%n 行</source>
        <translation>
            <numerusform>%n line</numerusform>
            <numerusform>%n lines</numerusform>
        </translation>
    </message>
    <message>
        <source>先复位急停，再上电</source>
        <translation>Release it, then drives on</translation>
    </message>
    <message>
        <source>%1 个工位等待</source>
        <translation>%1 waiting</translation>
    </message>
    <message>
        <source>没有工位等待</source>
        <translation>no station waits</translation>
    </message>
    <message>
        <source>激光可能仍打开</source>
        <translation>the laser may be on</translation>
    </message>
</context>
<context>
    <name>app::StatusText</name>
    <message>
        <source>机器人正在运动</source>
        <translation>the robot moves</translation>
    </message>
    <message>
        <source>机器人正在运动到焊缝终点</source>
        <translation>the robot moves to the end of the seam</translation>
    </message>
    <message>
        <source>前吹气，剩余 %1</source>
        <translation>gas pre-flow, %1 left</translation>
    </message>
    <message>
        <source>激光已打开，机器人停留，剩余 %1</source>
        <translation>the laser is on, the robot dwells, %1 left</translation>
    </message>
    <message>
        <source>激光功率正在下降，剩余 %1</source>
        <translation>laser power ramps down, %1 left</translation>
    </message>
    <message>
        <source>激光已关闭，延时结束，剩余 %1</source>
        <translation>the laser is off, end delay, %1 left</translation>
    </message>
    <message>
        <source>后吹气，剩余 %1</source>
        <translation>gas post-flow, %1 left</translation>
    </message>
    <message>
        <source>延时，剩余 %1</source>
        <translation>delay, %1 left</translation>
    </message>
    <message>
        <source>工位程序第 %1 行：%2</source>
        <translation>Station, line %1: %2</translation>
    </message>
    <message>
        <source>第 %1 行：%2</source>
        <translation>Line %1: %2</translation>
    </message>
    <message>
        <source>工位程序第 %1 行：等待 %2，已等待 %3</source>
        <translation>Station, line %1 waits for %2, %3</translation>
    </message>
    <message>
        <source>第 %1 行：等待 %2，已等待 %3</source>
        <translation>Line %1 waits for %2, %3</translation>
    </message>
    <message>
        <source>正在执行</source>
        <translation>being executed</translation>
    </message>
    <message>
        <source>正在关闭激光、气体和送丝</source>
        <translation>Laser, gas and wire are being switched off</translation>
    </message>
    <message>
        <source>没有程序在运行</source>
        <translation>No program runs</translation>
    </message>
    <message>
        <source>驱动未上电</source>
        <translation>the drives are off</translation>
    </message>
    <message>
        <source>焊接开关已关闭</source>
        <translation>the Weld switch is off</translation>
    </message>
    <message>
        <source>手动模式下手动焊接开关已关闭</source>
        <translation>manual mode, and the Hand Weld switch is off</translation>
    </message>
    <message>
        <source>端口“%1”未启用</source>
        <translation>port "%1" is out of use</translation>
    </message>
    <message>
        <source>空运行：激光、气体和送丝保持关闭</source>
        <translation>Dry run: laser, gas and wire stay off</translation>
    </message>
    <message>
        <source>允许焊接</source>
        <translation>Welding is permitted</translation>
    </message>
    <message>
        <source>不能焊接：%1</source>
        <translation>No welding: %1</translation>
    </message>
    <message>
        <source>、</source>
        <translation>, </translation>
    </message>
    <message>
        <source>急停已按下</source>
        <translation>Emergency stop is pressed</translation>
    </message>
    <message>
        <source>激光已由程序打开</source>
        <translation>Laser on: by the program</translation>
    </message>
    <message>
        <source>激光已由工位程序打开</source>
        <translation>Laser on: by a station</translation>
    </message>
    <message>
        <source>激光已手动打开</source>
        <translation>Laser on: by hand</translation>
    </message>
    <message>
        <source>激光已打开，但没有程序在运行</source>
        <translation>Laser on, though no program runs</translation>
    </message>
    <message>
        <source>设备异常：%1</source>
        <translation>Equipment not ready: %1</translation>
    </message>
    <message>
        <source>在第 %1 行暂停</source>
        <translation>Paused at line %1</translation>
    </message>
    <message>
        <source>在第 %1 行暂停，焊缝未完成</source>
        <translation>Paused at line %1, inside a weld</translation>
    </message>
    <message>
        <source>端口“%1”未分配</source>
        <translation>port "%1" is not assigned</translation>
    </message>
    <message>
        <source>端口“%1”分配到不存在的 %2</source>
        <translation>port "%1" is assigned to %2, which does not exist</translation>
    </message>
    <message>
        <source>焊接没有保护气：%1</source>
        <translation>Welding without gas: %1</translation>
    </message>
    <message>
        <source>正在监听工位</source>
        <translation>Listening to the stations</translation>
    </message>
    <message>
        <source>正在监听工位，%1 个等待启动</source>
        <translation>Listening to the stations, %1 waiting</translation>
    </message>
    <message>
        <source>编辑已锁定：没有打开的工程</source>
        <translation>Editing is locked: no project is open</translation>
    </message>
    <message>
        <source>编辑已锁定：程序正在运行</source>
        <translation>Editing is locked: a program is running</translation>
    </message>
    <message>
        <source>编辑已锁定：驱动已上电</source>
        <translation>Editing is locked: the drives are on</translation>
    </message>
    <message>
        <source>%1 毫秒</source>
        <translation>%1 ms</translation>
    </message>
    <message>
        <source>%1 秒</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 分</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>程序：%1</source>
        <translation>Program: %1</translation>
    </message>
    <message numerus="yes">
        <source>%n 个错误</source>
        <translation>
            <numerusform>%n error</numerusform>
            <numerusform>%n errors</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n 个警告</source>
        <translation>
            <numerusform>%n warning</numerusform>
            <numerusform>%n warnings</numerusform>
        </translation>
    </message>
    <message>
        <source>超出限值：%1</source>
        <translation>limits exceeded: %1</translation>
    </message>
    <message>
        <source>，</source>
        <translation>, </translation>
    </message>
    <message>
        <source>上次运行失败：机器人运动错误 -0x%1（%2）</source>
        <translation>The last run failed: robot motion error -0x%1 (%2)</translation>
    </message>
    <message>
        <source>激光可能仍打开：看不到它的输出</source>
        <translation>The laser may be on: its output cannot be seen</translation>
    </message>
</context>
<context>
    <name>app::StopBox</name>
    <message>
        <source>关</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>开</source>
        <translation>On</translation>
    </message>
    <message>
        <source>驱动电源</source>
        <translation>Drive power</translation>
    </message>
    <message>
        <source>复位急停</source>
        <translation>Release</translation>
    </message>
</context>
<context>
    <name>app::StopButton</name>
    <message>
        <source>急停</source>
        <translation>STOP</translation>
    </message>
    <message>
        <source>紧急停止：F12 或 Pause，在任何窗口中有效</source>
        <translation>Emergency stop: F12 or Pause, in every window</translation>
    </message>
    <message>
        <source>已按下</source>
        <translation>Pressed</translation>
    </message>
</context>
<context>
    <name>app::TelemetrySheet</name>
    <message>
        <source>遥测（MQTT）</source>
        <translation>Telemetry (MQTT)</translation>
    </message>
    <message>
        <source>关</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>开</source>
        <translation>On</translation>
    </message>
    <message>
        <source>不加密</source>
        <translation>Plain</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>向 MQTT 服务器报告单元状态</source>
        <translation>Tell an MQTT broker what the cell does</translation>
    </message>
    <message>
        <source>连接</source>
        <translation>Connection</translation>
    </message>
    <message>
        <source>服务器地址</source>
        <translation>Broker's address</translation>
    </message>
    <message>
        <source>端口</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>单元名称</source>
        <translation>Name of this cell</translation>
    </message>
    <message>
        <source>CA 证书文件（空：系统信任的机构）</source>
        <translation>CA file (empty: those the system trusts)</translation>
    </message>
    <message>
        <source>用户（空：不登录）</source>
        <translation>User (empty: no login)</translation>
    </message>
    <message>
        <source>密码</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>客户端证书文件（可空）</source>
        <translation>Client certificate (may be empty)</translation>
    </message>
    <message>
        <source>客户端私钥文件（可空）</source>
        <translation>Client key (may be empty)</translation>
    </message>
    <message>
        <source>连接已更改，请重新输入密码</source>
        <translation>The connection has changed: enter the password again</translation>
    </message>
    <message>
        <source>已设置，留空不变</source>
        <translation>Set; empty keeps it</translation>
    </message>
    <message>
        <source>主题：%1…</source>
        <translation>Topics: %1…</translation>
    </message>
    <message>
        <source>密码将以明文通过网络传输。请使用 TLS。</source>
        <translation>The password would cross the network as plain text. Use TLS.</translation>
    </message>
    <message>
        <source>%1  ·  已发送 %2，已被更新内容取代 %3</source>
        <translation>%1  ·  %2 sent, %3 replaced by newer ones</translation>
    </message>
</context>
<context>
    <name>app::TelemetryText</name>
    <message>
        <source>缺少程序库 libmosquitto.so.1，请安装软件包 libmosquitto1</source>
        <translation>the library libmosquitto.so.1 is missing: install the package libmosquitto1</translation>
    </message>
    <message>
        <source>找不到该地址</source>
        <translation>the address is not known</translation>
    </message>
    <message>
        <source>连接被拒绝</source>
        <translation>the connection is refused</translation>
    </message>
    <message>
        <source>服务器没有应答</source>
        <translation>the broker does not answer</translation>
    </message>
    <message>
        <source>服务器断开了连接</source>
        <translation>the broker has closed the connection</translation>
    </message>
    <message>
        <source>用户或密码错误</source>
        <translation>user or password is wrong</translation>
    </message>
    <message>
        <source>服务器不允许此客户端</source>
        <translation>the broker does not let this client in</translation>
    </message>
    <message>
        <source>证书不被信任</source>
        <translation>the certificates are not trusted</translation>
    </message>
    <message>
        <source>已关闭</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>正在连接</source>
        <translation>Connecting</translation>
    </message>
    <message>
        <source>已连接</source>
        <translation>Connected</translation>
    </message>
    <message>
        <source>无法连接：%1</source>
        <translation>Not reachable: %1</translation>
    </message>
    <message>
        <source>请输入服务器地址</source>
        <translation>Enter the broker's address</translation>
    </message>
    <message>
        <source>端口应为 1 至 65535</source>
        <translation>The port is 1 to 65535</translation>
    </message>
    <message>
        <source>请输入单元名称，不含 / + #</source>
        <translation>Enter the cell's name, without / + #</translation>
    </message>
    <message>
        <source>设置文件中的主题前缀无效</source>
        <translation>The prefix of the topics in the settings file is not valid</translation>
    </message>
    <message>
        <source>有密码但没有用户</source>
        <translation>There is a password and no user</translation>
    </message>
    <message>
        <source>证书只用于 TLS 连接</source>
        <translation>Certificates are for TLS only</translation>
    </message>
    <message>
        <source>客户端证书和私钥必须同时填写</source>
        <translation>Certificate and key of the client belong together</translation>
    </message>
    <message>
        <source>无法读取文件 %1</source>
        <translation>%1 cannot be read</translation>
    </message>
</context>
<context>
    <name>app::TouchInput</name>
    <message>
        <source>数字键盘已关闭，可在菜单中重新打开。</source>
        <translation>The number pad is off. The menu brings it back.</translation>
    </message>
    <message>
        <source>字母键盘已关闭，可在菜单中重新打开。</source>
        <translation>The keyboard is off. The menu brings it back.</translation>
    </message>
</context>
<context>
    <name>app::WeldPicture</name>
    <message>
        <source>%1 mm</source>
        <translation>%1 mm</translation>
    </message>
</context>
</TS>
