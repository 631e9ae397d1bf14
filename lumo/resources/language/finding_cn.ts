<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en_US">
<context>
    <name>Finding</name>
    <message>
        <source>this is no statement</source>
        <translation>这不是语句</translation>
    </message>
    <message>
        <source>delete it</source>
        <translation>请将其删除</translation>
    </message>
    <message>
        <source>the statement has no type</source>
        <translation>该语句没有类型</translation>
    </message>
    <message>
        <source>name its type, or delete it</source>
        <translation>请指定类型，或删除该行</translation>
    </message>
    <message>
        <source>the statement&apos;s type is no text</source>
        <translation>该语句的类型不是文本</translation>
    </message>
    <message>
        <source>the statement&apos;s type is empty</source>
        <translation>该语句的类型为空</translation>
    </message>
    <message>
        <source>unknown statement type &quot;%1&quot;</source>
        <translation>未知的语句类型“%1”</translation>
    </message>
    <message>
        <source>delete the line, or correct its type</source>
        <translation>请删除该行，或更正类型</translation>
    </message>
    <message>
        <source>this is no record</source>
        <translation>这不是有效记录</translation>
    </message>
    <message>
        <source>missing: %1</source>
        <translation>缺少：%1</translation>
    </message>
    <message>
        <source>edit the line and confirm it</source>
        <translation>请编辑该行并确认</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %3, it should be %2</source>
        <translation>“%1”为%3，应为%2</translation>
    </message>
    <message>
        <source>enter the value again</source>
        <translation>请重新输入该值</translation>
    </message>
    <message>
        <source>unknown field &quot;%1&quot;</source>
        <translation>未知字段“%1”</translation>
    </message>
    <message>
        <source>delete the field, or correct its name</source>
        <translation>请删除该字段，或更正名称</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands here more than once, the last one counts</source>
        <translation>“%1”重复出现，以最后一个为准</translation>
    </message>
    <message>
        <source>delete all but one</source>
        <translation>请只保留一个</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is negative (%2)</source>
        <translation>“%1”为负数（%2）</translation>
    </message>
    <message>
        <source>enter a value from 0</source>
        <translation>请输入不小于 0 的值</translation>
    </message>
    <message>
        <source>%1</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>correct the entry</source>
        <translation>请更正该项</translation>
    </message>
    <message>
        <source>choose another input</source>
        <translation>请选择其他输入</translation>
    </message>
    <message>
        <source>the data tree has nothing at &quot;%1&quot;</source>
        <translation>数据树中没有“%1”</translation>
    </message>
    <message>
        <source>correct the path</source>
        <translation>请更正路径</translation>
    </message>
    <message>
        <source>there is no file %1</source>
        <translation>没有文件 %1</translation>
    </message>
    <message>
        <source>correct the name</source>
        <translation>请更正名称</translation>
    </message>
    <message>
        <source>mend or replace the file</source>
        <translation>请修复或更换文件</translation>
    </message>
    <message>
        <source>the weld is not closed: the laser stays on in lines %1</source>
        <translation>焊接未停止：激光在第 %1 行一直打开</translation>
    </message>
    <message>
        <source>add the stop of welding</source>
        <translation>请添加“停止焊接”</translation>
    </message>
    <message>
        <source>the weld is not closed before the next one begins in line %1: the laser stays on in lines %2</source>
        <translation>在第 %1 行再次开始焊接之前没有停止焊接：激光在第 %2 行一直打开</translation>
    </message>
    <message>
        <source>no weld is open here</source>
        <translation>此处没有正在进行的焊接</translation>
    </message>
    <message>
        <source>delete the stop of welding, or add its start</source>
        <translation>请删除该“停止焊接”，或添加“开始焊接”</translation>
    </message>
    <message>
        <source>the line is switched off and has no partner</source>
        <translation>该行不运行，且没有配对的行</translation>
    </message>
    <message>
        <source>switch it on, or delete it</source>
        <translation>请将其设为运行，或删除</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing</source>
        <translation>缺少“%1”</translation>
    </message>
    <message>
        <source>teach the point</source>
        <translation>请更新点位</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not taught</source>
        <translation>“%1”未示教</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is incomplete: %2</source>
        <translation>“%1”不完整：%2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has %2 joint angles, the robot has %3 axes</source>
        <translation>“%1”有 %2 个轴角度，机器人有 %3 个轴</translation>
    </message>
    <message>
        <source>teach the point on this robot</source>
        <translation>请在这台机器人上更新点位</translation>
    </message>
    <message>
        <source>the speed is missing</source>
        <translation>缺少速度</translation>
    </message>
    <message>
        <source>enter a speed above 0</source>
        <translation>请输入大于 0 的速度</translation>
    </message>
    <message>
        <source>the speed is %1 mm/s</source>
        <translation>速度为 %1 mm/s</translation>
    </message>
    <message>
        <source>the speed is %1 mm/s, the cell allows %2 mm/s</source>
        <translation>速度为 %1 mm/s，超过允许的 %2 mm/s</translation>
    </message>
    <message>
        <source>enter a lower speed</source>
        <translation>请输入较低的速度</translation>
    </message>
    <message>
        <source>the welding speed is missing</source>
        <translation>缺少焊接速度</translation>
    </message>
    <message>
        <source>enter a welding speed above 0</source>
        <translation>请输入大于 0 的焊接速度</translation>
    </message>
    <message>
        <source>the welding speed is %1 mm/s</source>
        <translation>焊接速度为 %1 mm/s</translation>
    </message>
    <message>
        <source>the welding speed is %1 mm/s, the cell allows %2 mm/s</source>
        <translation>焊接速度为 %1 mm/s，超过允许的 %2 mm/s</translation>
    </message>
    <message>
        <source>enter a lower welding speed</source>
        <translation>请输入较低的焊接速度</translation>
    </message>
    <message>
        <source>the zone is negative (%1 mm)</source>
        <translation>转弯区为负数（%1 mm）</translation>
    </message>
    <message>
        <source>enter a zone from 0</source>
        <translation>请输入不小于 0 的转弯区</translation>
    </message>
    <message>
        <source>in the zone of %1 mm the laser is switched off too early: the last %2 mm of the seam stay dark</source>
        <translation>转弯区为 %1 mm，激光提前关闭：焊缝最后 %2 mm 不出光</translation>
    </message>
    <message>
        <source>enter a smaller zone</source>
        <translation>请输入较小的转弯区</translation>
    </message>
    <message>
        <source>two points of the arc are the same</source>
        <translation>圆弧的两个点重合</translation>
    </message>
    <message>
        <source>teach the points anew</source>
        <translation>请更新各点位</translation>
    </message>
    <message>
        <source>the points of the arc lie on a line</source>
        <translation>圆弧的各点在一条直线上</translation>
    </message>
    <message>
        <source>teach the points anew, or use a line</source>
        <translation>请更新各点位，或改用直线</translation>
    </message>
    <message>
        <source>two points of the circle are the same</source>
        <translation>全圆的两个点重合</translation>
    </message>
    <message>
        <source>the points of the circle lie on a line</source>
        <translation>全圆的各点在一条直线上</translation>
    </message>
    <message>
        <source>the robot cannot get there: out of reach %1 mm after the line begins</source>
        <translation>机器人无法到达：该行开始 %1 mm 后超出工作范围</translation>
    </message>
    <message>
        <source>teach the point anew, or move the part</source>
        <translation>请更新点位，或移动工件</translation>
    </message>
    <message>
        <source>the robot cannot get there: a joint is at its limit %1 mm after the line begins</source>
        <translation>机器人无法到达：该行开始 %1 mm 后有轴到达限位</translation>
    </message>
    <message>
        <source>teach the point anew with another posture</source>
        <translation>请用另一种姿态更新点位</translation>
    </message>
    <message>
        <source>axis %1 would have to turn at %2 °/s, it can turn at %3 °/s</source>
        <translation>轴 %1 需要达到 %2 °/s，最高为 %3 °/s</translation>
    </message>
    <message>
        <source>enter a lower speed, or teach another posture</source>
        <translation>请输入较低的速度，或用另一种姿态更新点位</translation>
    </message>
    <message>
        <source>no parameter set is chosen</source>
        <translation>未选择参数组</translation>
    </message>
    <message>
        <source>there is no parameter set %1 (there are %2)</source>
        <translation>没有第 %1 组参数（共 %2 组）</translation>
    </message>
    <message>
        <source>choose a parameter set</source>
        <translation>请选择参数组</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %2, outside %3 to %4</source>
        <translation>“%1”为 %2，超出范围 %3 至 %4</translation>
    </message>
    <message>
        <source>enter a value in this range</source>
        <translation>请输入该范围内的值</translation>
    </message>
    <message>
        <source>nothing moves before the weld is closed in line %1</source>
        <translation>在第 %1 行停止焊接之前没有任何运动</translation>
    </message>
    <message>
        <source>delete both lines, or add the seam</source>
        <translation>请删除这两行，或添加焊缝</translation>
    </message>
    <message>
        <source>the laser is on for %1 ms before the tool moves</source>
        <translation>激光打开 %1 ms 后焊枪才开始运动</translation>
    </message>
    <message>
        <source>shorten the early start of the laser in the parameter set</source>
        <translation>请在参数组中缩短出光停留时间</translation>
    </message>
    <message>
        <source>the laser is on for %1 ms while the tool stands</source>
        <translation>激光打开时焊枪停留 %1 ms</translation>
    </message>
    <message>
        <source>put the delay outside the weld</source>
        <translation>请将延时移到焊接之外</translation>
    </message>
    <message>
        <source>the laser is on while the tool stands and waits for %1</source>
        <translation>激光打开时焊枪停留并等待 %1</translation>
    </message>
    <message>
        <source>wait outside the weld</source>
        <translation>请将等待移到焊接之外</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is out of use, the weld in line %2 needs it</source>
        <translation>端口“%1”未启用，第 %2 行的焊接需要它</translation>
    </message>
    <message>
        <source>take the port into use</source>
        <translation>请启用该端口</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is in use and assigned to nothing</source>
        <translation>端口“%1”已启用但未分配</translation>
    </message>
    <message>
        <source>assign the port, or take it out of use</source>
        <translation>请分配该端口，或停用</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is assigned to %2, which the controller does not have</source>
        <translation>端口“%1”分配到不存在的 %2</translation>
    </message>
    <message>
        <source>assign the port anew</source>
        <translation>请重新分配该端口</translation>
    </message>
    <message>
        <source>&quot;%1&quot; and &quot;%2&quot; are both assigned to %3</source>
        <translation>端口“%1”和“%2”都分配到 %3</translation>
    </message>
    <message>
        <source>assign one of them anew</source>
        <translation>请重新分配其中一个</translation>
    </message>
    <message>
        <source>there are %1 rows for %2 ports: no port is in use</source>
        <translation>端口文件有 %1 行，应为 %2 行：所有端口未启用</translation>
    </message>
    <message>
        <source>replace the file</source>
        <translation>请更换文件</translation>
    </message>
    <message>
        <source>the row of &quot;%1&quot; is not of the type %2: no port is in use</source>
        <translation>端口“%1”的行不是 %2 类型：所有端口未启用</translation>
    </message>
    <message>
        <source>%1 belongs to the welding equipment (&quot;%2&quot;)</source>
        <translation>%1 属于焊接设备（“%2”）</translation>
    </message>
    <message>
        <source>choose another output</source>
        <translation>请选择其他输出</translation>
    </message>
    <message>
        <source>the controller has no output %1</source>
        <translation>控制器没有输出 %1</translation>
    </message>
    <message>
        <source>no output is chosen</source>
        <translation>未选择输出</translation>
    </message>
    <message>
        <source>choose an output</source>
        <translation>请选择输出</translation>
    </message>
    <message>
        <source>the controller has no input %1</source>
        <translation>控制器没有输入 %1</translation>
    </message>
    <message>
        <source>no input is chosen</source>
        <translation>未选择输入</translation>
    </message>
    <message>
        <source>choose an input</source>
        <translation>请选择输入</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no edge: the input does nothing</source>
        <translation>“%1”不是触发类型：该输入不起作用</translation>
    </message>
    <message>
        <source>choose the edge</source>
        <translation>请选择触发类型</translation>
    </message>
    <message>
        <source>no start input is chosen</source>
        <translation>未选择启动输入</translation>
    </message>
    <message>
        <source>choose a start input</source>
        <translation>请选择启动输入</translation>
    </message>
    <message>
        <source>%1 starts &quot;%2&quot; as well</source>
        <translation>%1 同时启动“%2”</translation>
    </message>
    <message>
        <source>choose another start input</source>
        <translation>请选择其他启动输入</translation>
    </message>
    <message>
        <source>the station has no project</source>
        <translation>该工位没有工程</translation>
    </message>
    <message>
        <source>choose a project</source>
        <translation>请选择工程</translation>
    </message>
    <message>
        <source>the project %1 is missing</source>
        <translation>工程 %1 不存在</translation>
    </message>
    <message>
        <source>choose another project</source>
        <translation>请选择其他工程</translation>
    </message>
    <message>
        <source>the project %1 cannot be read: %2</source>
        <translation>无法读取工程 %1：%2</translation>
    </message>
    <message>
        <source>the project %1 has errors (%2)</source>
        <translation>工程 %1 有错误（%2 个）</translation>
    </message>
    <message>
        <source>open the project and mend it</source>
        <translation>请打开该工程并更正</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %2 in the line and %3 in the parameter set</source>
        <translation>“%1”在该行中为 %2，在参数组中为 %3</translation>
    </message>
    <message>
        <source>a text</source>
        <translation>文本</translation>
    </message>
    <message>
        <source>true or false</source>
        <translation>true 或 false</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>数字</translation>
    </message>
    <message>
        <source>a whole number</source>
        <translation>整数</translation>
    </message>
    <message>
        <source>&quot;true&quot;, &quot;false&quot; or empty</source>
        <translation>“true”、“false”或空</translation>
    </message>
    <message>
        <source>a list of three numbers</source>
        <translation>三个数字的列表</translation>
    </message>
    <message>
        <source>a list of joint angles</source>
        <translation>轴角度的列表</translation>
    </message>
    <message>
        <source>an object</source>
        <translation>对象</translation>
    </message>
    <message>
        <source>the text &quot;%1&quot;</source>
        <translation>文本“%1”</translation>
    </message>
    <message>
        <source>a list</source>
        <translation>列表</translation>
    </message>
</context>
<context>
    <name>MotionError</name>
    <message>
        <source>a point of the path is out of the robot&apos;s reach</source>
        <translation>路径上的点超出机器人的可达范围</translation>
    </message>
    <message>
        <source>teach the point closer to the robot, or move the part</source>
        <translation>在离机器人更近处示教该点，或移动工件</translation>
    </message>
    <message>
        <source>an axis would pass its limit on the way</source>
        <translation>途中有轴会超出限位</translation>
    </message>
    <message>
        <source>teach the point with the arm in another posture, or go there with a joint line first</source>
        <translation>换一种姿态示教该点，或先用“空走”到达</translation>
    </message>
    <message>
        <source>the points of the arc coincide or lie on one line</source>
        <translation>圆弧的点重合或共线</translation>
    </message>
    <message>
        <source>teach the points of the line again</source>
        <translation>重新示教该行的点</translation>
    </message>
    <message>
        <source>the drives were off when the motion began</source>
        <translation>运动开始时驱动未上电</translation>
    </message>
    <message>
        <source>switch the drives on, then start the program again</source>
        <translation>打开驱动电源，然后重新启动程序</translation>
    </message>
    <message>
        <source>the motion has no speed</source>
        <translation>运动没有速度</translation>
    </message>
    <message>
        <source>enter a speed above 0 in the line</source>
        <translation>在该行输入大于 0 的速度</translation>
    </message>
    <message>
        <source>the target is missing or is not one of this robot</source>
        <translation>缺少目标点，或目标点不属于此机器人</translation>
    </message>
    <message>
        <source>an axis would have to turn faster than it can</source>
        <translation>某个轴需要超过其最高转速</translation>
    </message>
    <message>
        <source>enter a lower speed, or teach another posture</source>
        <translation>请输入较低的速度，或换一种姿态示教该点</translation>
    </message>
    <message>
        <source>teach the point of the line again</source>
        <translation>重新示教该行的点位</translation>
    </message>
    <message>
        <source>the robot reached the target and reported a fault there</source>
        <translation>机器人到达目标点后报告故障</translation>
    </message>
    <message>
        <source>clear the fault at the robot&apos;s controller, then start the program again</source>
        <translation>在机器人控制器上清除故障，然后重新启动程序</translation>
    </message>
    <message>
        <source>the robot&apos;s controller reports a fault of its own</source>
        <translation>机器人控制器报告自身故障</translation>
    </message>
    <message>
        <source>look up the number in the controller&apos;s manual and clear the fault there</source>
        <translation>按编号查阅控制器手册，并在控制器上清除故障</translation>
    </message>
</context>
</TS>
