<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>FindingsButton</name>
    <message>
        <source>已检查</source>
        <translation>Checked</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>空走</source>
        <translation>Joint</translation>
    </message>
    <message>
        <source>直线</source>
        <translation>Line</translation>
    </message>
    <message>
        <source>全圆</source>
        <translation>Circle</translation>
    </message>
    <message>
        <source>圆弧</source>
        <translation>Arc</translation>
    </message>
    <message>
        <source>开始焊接</source>
        <translation>Start Welding</translation>
    </message>
    <message>
        <source>停止焊接</source>
        <translation>Stop Welding</translation>
    </message>
    <message>
        <source>工艺参数</source>
        <translation>Welding Parameters</translation>
    </message>
    <message>
        <source>延时</source>
        <translation>delay</translation>
    </message>
    <message>
        <source>轴角度：</source>
        <translation>Joint Angle:</translation>
    </message>
    <message>
        <source>°；</source>
        <translation>.;</translation>
    </message>
    <message>
        <source>点位：</source>
        <translation>Point:</translation>
    </message>
    <message>
        <source>速度：</source>
        <translation>Speed:</translation>
    </message>
    <message>
        <source>mm/s；</source>
        <translation>mm/s;</translation>
    </message>
    <message>
        <source>转弯区：</source>
        <translation>Radius: </translation>
    </message>
    <message>
        <source>mm；</source>
        <translation>mm;</translation>
    </message>
    <message>
        <source>mm;</source>
        <translation>mm;</translation>
    </message>
    <message>
        <source>ms</source>
        <translation>ms</translation>
    </message>
    <message>
        <source>工具：</source>
        <translation>Tool:</translation>
    </message>
    <message>
        <source>工件：</source>
        <translation>Wobj:</translation>
    </message>
    <message>
        <source>坐标：</source>
        <translation>Coord:</translation>
    </message>
    <message>
        <source>参数名称：</source>
        <translation>Param Name:</translation>
    </message>
    <message>
        <source>激光功率：</source>
        <translation>Laser Power:</translation>
    </message>
    <message>
        <source>激光占空比：</source>
        <translation>Laser Ratio:</translation>
    </message>
    <message>
        <source>送丝使能：</source>
        <translation>Wire Enable:</translation>
    </message>
    <message>
        <source>焊接速度：</source>
        <translation>Weld Speed:</translation>
    </message>
    <message>
        <source>DO名称：</source>
        <translation>DO Name:</translation>
    </message>
    <message>
        <source>DI名称：</source>
        <translation>DI Name:</translation>
    </message>
    <message>
        <source>设置为：</source>
        <translation>Set To: </translation>
    </message>
    <message>
        <source>等待该信号变为：</source>
        <translation>Waiting for signal become to</translation>
    </message>
    <message>
        <source>延时时间为：</source>
        <translation>Delay Time is:</translation>
    </message>
</context>
<context>
    <name>ProgramTable</name>
    <message>
        <source>未示教</source>
        <translation>Not taught</translation>
    </message>
    <message>
        <source>点击输入备注</source>
        <translation>Tap to write a remark</translation>
    </message>
    <message>
        <source>输入错误</source>
        <translation>Input Error</translation>
    </message>
    <message>
        <source>输入的内容未采用：%1</source>
        <translation>What was typed is not taken: %1</translation>
    </message>
</context>
<context>
    <name>ProgramWidget</name>
    <message>
        <source>指针</source>
        <translation>Pointer</translation>
    </message>
    <message>
        <source>行数</source>
        <translation>Row</translation>
    </message>
    <message>
        <source>指令</source>
        <translation>Command</translation>
    </message>
    <message>
        <source>参数</source>
        <translation>Parameters</translation>
    </message>
    <message>
        <source>备注</source>
        <translation>Remark</translation>
    </message>
    <message>
        <source>是否运行</source>
        <translation>Enabled or not</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>粘贴</source>
        <translation>Paste</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Up</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Down</translation>
    </message>
    <message>
        <source>运行/不运行</source>
        <translation>Enabled or not</translation>
    </message>
    <message>
        <source>多选</source>
        <translation>Multiple</translation>
    </message>
    <message>
        <source>单选</source>
        <translation>Single Select</translation>
    </message>
    <message>
        <source>修改速度</source>
        <translation>Velocity</translation>
    </message>
    <message>
        <source>修改转弯区</source>
        <translation>Radius</translation>
    </message>
    <message>
        <source>空走</source>
        <translation>Joint</translation>
    </message>
    <message>
        <source>直线</source>
        <translation>Line</translation>
    </message>
    <message>
        <source>全圆</source>
        <translation>Circle</translation>
    </message>
    <message>
        <source>圆弧</source>
        <translation>Arc</translation>
    </message>
    <message>
        <source>开始焊接</source>
        <translation>Start Welding</translation>
    </message>
    <message>
        <source>停止焊接</source>
        <translation>Stop Welding</translation>
    </message>
    <message>
        <source>工艺参数</source>
        <translation>Welding Parameters</translation>
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
        <translation>DELAY</translation>
    </message>
    <message>
        <source>步跳转</source>
        <translation>StepToJump</translation>
    </message>
    <message>
        <source>Goto</source>
        <translation>Goto</translation>
    </message>
    <message>
        <source>焊接</source>
        <translation>Weld</translation>
    </message>
    <message>
        <source>手动焊接</source>
        <translation>Hand Weld</translation>
    </message>
    <message>
        <source>开始</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>移动点位</source>
        <translation>Move Point</translation>
    </message>
    <message>
        <source>停止</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>复位</source>
        <translation>Reset</translation>
    </message>
    <message>
        <source>运行</source>
        <translation>Enabled</translation>
    </message>
    <message>
        <source>不运行</source>
        <translation>Disabled</translation>
    </message>
    <message>
        <source>运行错误</source>
        <translation>Running Error</translation>
    </message>
    <message>
        <source>输入错误</source>
        <translation>Input Error</translation>
    </message>
    <message>
        <source>跳转行数大于当前程序行数!</source>
        <translation>The number of jump lines is greater than the number of current program lines!</translation>
    </message>
    <message>
        <source>程序错误</source>
        <translation>Program Error</translation>
    </message>
    <message>
        <source>当前程序中的&quot;开始焊接&quot;和&quot;停止焊接&quot;个数或者顺序不匹配!</source>
        <translation>The number or order of &quot;start welding&quot; and &quot;stop welding&quot; in the current program does not match!</translation>
    </message>
    <message>
        <source>选中行警告</source>
        <translation>Selected Row Warning</translation>
    </message>
    <message>
        <source>焊枪距中断点 %1 mm，先不出光回到中断点，再继续焊接？</source>
        <translation>The tool is %1 mm away from where the program was stopped. Go back there without laser first, then go on welding?</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>Warning</translation>
    </message>
    <message>
        <source>是否跳转到当前行并开始执行!</source>
        <translation>Whether to jump to the current line and start execution!</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>否</source>
        <translation>No</translation>
    </message>
    <message>
        <source>工位程序正在运行</source>
        <translation>A station&#x27;s program is running</translation>
    </message>
    <message>
        <source>工位程序正在运行：%1，工程 %2</source>
        <translation>A station&#x27;s program is running: %1, project %2</translation>
    </message>
    <message>
        <source>正在执行第 %1 行</source>
        <translation>Running line %1</translation>
    </message>
    <message>
        <source>开始：从第 %1 行继续，激光将重新打开</source>
        <translation>Start continues at line %1, the laser reopens</translation>
    </message>
    <message>
        <source>开始：从第 %1 行继续，激光将重新打开，重叠 %2 mm</source>
        <translation>Start continues at line %1, the laser reopens, overlap %2 mm</translation>
    </message>
    <message>
        <source>开始：再次从第 1 行执行</source>
        <translation>Start begins again at line 1</translation>
    </message>
    <message>
        <source>空运行。%1</source>
        <translation>Dry run. %1</translation>
    </message>
    <message>
        <source>空运行：正在执行第 %1 行</source>
        <translation>Dry run: running line %1</translation>
    </message>
    <message>
        <source>继续焊接…</source>
        <translation>Continue…</translation>
    </message>
    <message>
        <source>开始：从第 %1 行继续，激光不会打开</source>
        <translation>Start continues at line %1, the laser stays off</translation>
    </message>
    <message>
        <source>开始：从第 %1 行执行</source>
        <translation>Start begins at line %1</translation>
    </message>
    <message>
        <source>开始：从第 %1 行继续</source>
        <translation>Start continues at line %1</translation>
    </message>
    <message>
        <source>请先新建或打开工程</source>
        <translation>Create or open a project first</translation>
    </message>
    <message>
        <source>程序为空</source>
        <translation>The program is empty</translation>
    </message>
    <message>
        <source>开始：确认后从选中的第 %1 行执行</source>
        <translation>Start asks, then begins at the selected line %1</translation>
    </message>
    <message>
        <source>第 %1 行已不存在：请复位或选择一行</source>
        <translation>Line %1 no longer exists: reset or select a line</translation>
    </message>
    <message>
        <source>%1。</source>
        <translation>%1.</translation>
    </message>
    <message>
        <source>处理方法：%1。</source>
        <translation>What to do: %1.</translation>
    </message>
    <message>
        <source>程序有 %1 行。</source>
        <translation>The program has %1 lines.</translation>
    </message>
    <message>
        <source>当前不是空闲状态</source>
        <translation>Robot is not idle</translation>
    </message>
    <message>
        <source>按住：上一点</source>
        <translation>Hold: previous point</translation>
    </message>
    <message>
        <source>按住：下一点</source>
        <translation>Hold: next point</translation>
    </message>
    <message>
        <source>按住移到上一点，松开停止</source>
        <translation>Moves to the previous point while held; letting go stops</translation>
    </message>
    <message>
        <source>按住移到下一点，松开停止</source>
        <translation>Moves to the next point while held; letting go stops</translation>
    </message>
    <message>
        <source>未选中：插入到最前</source>
        <translation>Insert at the top</translation>
    </message>
    <message>
        <source>插入到第 %1 行之后</source>
        <translation>Insert below line %1</translation>
    </message>
    <message>
        <source>完整文本</source>
        <translation>Full text</translation>
    </message>
    <message>
        <source>插入</source>
        <translation>Insert</translation>
    </message>
    <message>
        <source>复位</source>
        <comment>on the button</comment>
        <translation>Reset</translation>
    </message>
    <message>
        <source>未选中行</source>
        <translation>No line selected</translation>
    </message>
    <message>
        <source>第 %1 行</source>
        <translation>Line %1</translation>
    </message>
    <message>
        <source>未打开工程</source>
        <translation>no project open</translation>
    </message>
    <message>
        <source>程序为空</source>
        <comment>on the button</comment>
        <translation>program is empty</translation>
    </message>
    <message>
        <source>程序有错误</source>
        <translation>program has errors</translation>
    </message>
    <message>
        <source>驱动未上电</source>
        <translation>drives are off</translation>
    </message>
    <message>
        <source>第 %1 行已不存在</source>
        <comment>on the button</comment>
        <translation>line %1 is gone</translation>
    </message>
    <message>
        <source>从第 %1 行，先确认</source>
        <translation>at line %1, asks first</translation>
    </message>
    <message>
        <source>再次从第 1 行</source>
        <translation>again from line 1</translation>
    </message>
    <message>
        <source>第 %1 行，继续出光</source>
        <translation>line %1, laser on</translation>
    </message>
    <message>
        <source>第 %1 行，不出光</source>
        <translation>line %1, laser off</translation>
    </message>
    <message>
        <source>从第 %1 行</source>
        <translation>from line %1</translation>
    </message>
    <message>
        <source>从第 %1 行继续</source>
        <translation>goes on at line %1</translation>
    </message>
    <message>
        <source>工位正在运行</source>
        <translation>a station runs</translation>
    </message>
    <message>
        <source>正在执行第 %1 行</source>
        <comment>on the button</comment>
        <translation>running line %1</translation>
    </message>
    <message>
        <source>行</source>
        <translation>line</translation>
    </message>
</context>
<context>
    <name>lumo::DryRunRow</name>
    <message>
        <source>空运行</source>
        <translation>Dry run</translation>
    </message>
    <message>
        <source>整个程序运动，不出光、不送气、不送丝，红光指示焊缝</source>
        <translation>The whole program moves without laser, gas and wire; the pilot light shows the seams</translation>
    </message>
    <message>
        <source>焊缝的运动速度，占焊接速度的百分比</source>
        <translation>Speed along the seams, as a share of the weld speed</translation>
    </message>
    <message>
        <source>运动速度</source>
        <translation>Travel</translation>
    </message>
</context>
<context>
    <name>lumo::FindingText</name>
    <message>
        <source>点位</source>
        <translation>Point</translation>
    </message>
    <message>
        <source>第二个点位</source>
        <translation>Second point</translation>
    </message>
    <message>
        <source>速度</source>
        <translation>Velocity</translation>
    </message>
    <message>
        <source>转弯区</source>
        <translation>Radius</translation>
    </message>
    <message>
        <source>焊接速度</source>
        <translation>Welding speed</translation>
    </message>
    <message>
        <source>工艺参数</source>
        <translation>Welding parameters</translation>
    </message>
    <message>
        <source>激光功率</source>
        <translation>Laser power</translation>
    </message>
    <message>
        <source>激光占空比</source>
        <translation>Laser duty cycle</translation>
    </message>
    <message>
        <source>延时</source>
        <translation>Delay</translation>
    </message>
    <message>
        <source>是否运行</source>
        <translation>Enabled or not</translation>
    </message>
    <message>
        <source>备注</source>
        <translation>Remark</translation>
    </message>
    <message>
        <source>%1；%2</source>
        <translation>%1; %2</translation>
    </message>
    <message>
        <source>第 %1 行：%2</source>
        <translation>Line %1: %2</translation>
    </message>
    <message>
        <source>%1。</source>
        <translation>%1.</translation>
    </message>
    <message numerus="yes">
        <source>另有 %n 个错误。</source>
        <translation>
            <numerusform>%n more error.</numerusform>
            <numerusform>%n more errors.</numerusform>
        </translation>
    </message>
    <message>
        <source>错误</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>Warning</translation>
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
        <source>，</source>
        <translation>, </translation>
    </message>
</context>
<context>
    <name>lumo::FindingList</name>
    <message numerus="yes">
        <source>另有 %n 项</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>lumo::Inspector</name>
    <message>
        <source>已选 %1 行</source>
        <translation>%1 lines selected</translation>
    </message>
    <message>
        <source>焊缝 %1 / %2</source>
        <translation>Seam %1 of %2</translation>
    </message>
</context>
<context>
    <name>lumo::LineEntry</name>
    <message>
        <source>速度</source>
        <translation>Speed</translation>
    </message>
    <message>
        <source>转弯区</source>
        <translation>Radius</translation>
    </message>
    <message>
        <source>备注</source>
        <translation>Remark</translation>
    </message>
</context>
<context>
    <name>lumo::ResumeDialog</name>
    <message>
        <source>继续焊接</source>
        <translation>Continue welding</translation>
    </message>
    <message>
        <source>回到中断点，继续焊接</source>
        <translation>Back and weld on</translation>
    </message>
    <message>
        <source>回到中断点，重叠一段后继续焊接</source>
        <translation>Back and weld on with overlap</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>中断后继续焊接</source>
        <translation>Weld on after the stop</translation>
    </message>
    <message>
        <source>第 %1 行，第 %2 条焊缝，共 %3 条</source>
        <translation>Line %1, seam %2 of %3</translation>
    </message>
    <message>
        <source>焊枪不出光退回 %1 mm，激光在 %2 mm 处打开。</source>
        <translation>The tool goes back %1 mm without laser; the laser opens at %2 mm.</translation>
    </message>
    <message>
        <source>激光在 %1 mm 处打开。</source>
        <translation>The laser opens at %1 mm.</translation>
    </message>
    <message>
        <source>激光在 %1 mm 处打开，再焊一段已焊部分。</source>
        <translation>The laser opens at %1 mm, on what is welded.</translation>
    </message>
    <message>
        <source>剩余 %1 mm 焊缝不焊接，焊接开关将关闭。</source>
        <translation>%1 mm of the seam stay unwelded; the switch Weld goes off.</translation>
    </message>
    <message>
        <source>选择之前不会有任何动作。</source>
        <translation>Nothing moves before a choice.</translation>
    </message>
    <message>
        <source>从这里不出光继续</source>
        <translation>Go on dark from here</translation>
    </message>
    <message>
        <source>减少重叠</source>
        <translation>Less overlap</translation>
    </message>
    <message>
        <source>增加重叠</source>
        <translation>More overlap</translation>
    </message>
    <message>
        <source>重叠</source>
        <translation>Overlap</translation>
    </message>
</context>
<context>
    <name>lumo::SeamPicture</name>
    <message>
        <source>焊枪，距中断点 %1</source>
        <translation>The tool, %1 from the stop</translation>
    </message>
    <message>
        <source>焊枪在中断点。</source>
        <translation>The tool is at the stop</translation>
    </message>
    <message>
        <source>中断于 %1</source>
        <translation>Stopped at %1</translation>
    </message>
    <message>
        <source>剩余 %1</source>
        <translation>%1 left</translation>
    </message>
</context>
<context>
    <name>lumo::RowSummary</name>
    <message>
        <source>送丝 ON</source>
        <translation>wire ON</translation>
    </message>
</context>
<context>
    <name>lumo::RunPanel</name>
    <message>
        <source>焊缝 %1 / %2</source>
        <translation>Seam %1 of %2</translation>
    </message>
    <message>
        <source> / %1 mm，不出光</source>
        <translation> of %1 mm, laser off</translation>
    </message>
    <message>
        <source> / %1 mm 已焊</source>
        <translation> of %1 mm welded</translation>
    </message>
    <message>
        <source>程序没有焊缝</source>
        <translation>The program has no seam</translation>
    </message>
    <message>
        <source>焊缝已全部走完</source>
        <translation>All seams are done</translation>
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
        <source>速度</source>
        <translation>Speed</translation>
    </message>
    <message>
        <source> mm/s</source>
        <translation> mm/s</translation>
    </message>
    <message>
        <source>激光功率</source>
        <translation>Laser power</translation>
    </message>
    <message>
        <source>激光占空比</source>
        <translation>Duty cycle</translation>
    </message>
    <message>
        <source>保护气</source>
        <translation>Gas</translation>
    </message>
    <message>
        <source>送丝速度</source>
        <translation>Wire speed</translation>
    </message>
    <message>
        <source>第 %1 至 %2 行</source>
        <translation>Lines %1 to %2</translation>
    </message>
    <message>
        <source>%1 mm</source>
        <translation>%1 mm</translation>
    </message>
    <message>
        <source>本件的焊缝</source>
        <translation>Seams of this part</translation>
    </message>
    <message>
        <source>程序正在运行，不能编辑</source>
        <translation>Editing is locked: a program is running</translation>
    </message>
    <message>
        <source>驱动已上电，不能编辑</source>
        <translation>Editing is locked: the drives are on</translation>
    </message>
</context>
</TS>
