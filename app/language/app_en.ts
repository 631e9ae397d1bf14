<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>ExampleShelf</name>
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
        <source>文件或文件夹不存在</source>
        <translation>no such file or folder</translation>
    </message>
    <message>
        <source>这是文件夹，不是文件</source>
        <translation>this is a folder, not a file</translation>
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
        <source>字符串没有结束</source>
        <translation>a string is not closed</translation>
    </message>
    <message>
        <source>名称后缺少冒号</source>
        <translation>a colon is missing after a name</translation>
    </message>
    <message>
        <source>两个值之间缺少逗号</source>
        <translation>a comma is missing between two values</translation>
    </message>
    <message>
        <source>逗号后缺少内容</source>
        <translation>nothing follows a comma</translation>
    </message>
    <message>
        <source>无效的值</source>
        <translation>this is no value</translation>
    </message>
    <message>
        <source>无效的数字</source>
        <translation>this is no number</translation>
    </message>
    <message>
        <source>文件以数字结束</source>
        <translation>the file ends with a number</translation>
    </message>
    <message>
        <source>字符串中有无效的转义字符</source>
        <translation>a string holds an invalid escape</translation>
    </message>
    <message>
        <source>文字编码不是UTF-8</source>
        <translation>the text is not UTF-8</translation>
    </message>
    <message>
        <source>嵌套层数过多</source>
        <translation>nested too deeply</translation>
    </message>
    <message>
        <source>文件末尾有多余内容</source>
        <translation>something follows the end of the document</translation>
    </message>
    <message>
        <source>%1；另有%2条记录有错误</source>
        <translation>%1; faults in %2 more records</translation>
    </message>
    <message>
        <source>文件内容不是记录列表</source>
        <translation>the file holds no list of records</translation>
    </message>
    <message>
        <source>共有%1行，应为%2个端口</source>
        <translation>there are %1 rows for %2 ports</translation>
    </message>
    <message>
        <source>这不是记录</source>
        <translation>this is no record</translation>
    </message>
    <message>
        <source>%1不是数字</source>
        <translation>%1 is no number</translation>
    </message>
    <message>
        <source>%1不是文字</source>
        <translation>%1 is no text</translation>
    </message>
    <message>
        <source>%1不是对象</source>
        <translation>%1 is no object</translation>
    </message>
    <message>
        <source>%1既不是true也不是false</source>
        <translation>%1 is neither true nor false</translation>
    </message>
    <message>
        <source>'type'不是%1</source>
        <translation>'type' is not %1</translation>
    </message>
    <message>
        <source>原文件已损坏，且无法保留副本</source>
        <translation>the file in its place is damaged and cannot be kept</translation>
    </message>
    <message>
        <source>没有此文件</source>
        <translation>there is no such file</translation>
    </message>
    <message>
        <source>文件内容不是工程</source>
        <translation>the file holds no project</translation>
    </message>
    <message>
        <source>文件内容是设置，不是工程</source>
        <translation>the file holds settings, no project</translation>
    </message>
    <message>
        <source>原文件是其他内容，且无法保留副本</source>
        <translation>the file in its place holds something else and cannot be kept</translation>
    </message>
    <message>
        <source>文件受写保护</source>
        <translation>the file is write-protected</translation>
    </message>
    <message>
        <source>无法确认已写入磁盘：%1</source>
        <translation>the folder could not be synced: %1</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 第%2行第%3列：%4</source>
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
</context>
<context>
    <name>app::CellStrip</name>
    <message>
        <source>机器人</source>
        <translation>Robot</translation>
    </message>
    <message>
        <source>输入</source>
        <translation>Inputs</translation>
    </message>
    <message>
        <source>输出</source>
        <translation>Outputs</translation>
    </message>
</context>
<context>
    <name>app::DriveBox</name>
    <message>
        <source>关</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>开</source>
        <translation>On</translation>
    </message>
    <message>
        <source>自动</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>手动</source>
        <translation>Manual</translation>
    </message>
    <message>
        <source>电源</source>
        <translation>Drives</translation>
    </message>
    <message>
        <source>模式</source>
        <translation>Mode</translation>
    </message>
    <message>
        <source>机器人</source>
        <translation>Robot</translation>
    </message>
    <message>
        <source>程序</source>
        <translation>Program</translation>
    </message>
    <message>
        <source>运动中</source>
        <translation>Moving</translation>
    </message>
    <message>
        <source>静止</source>
        <translation>At rest</translation>
    </message>
    <message>
        <source>运行中</source>
        <translation>Running</translation>
    </message>
    <message>
        <source>空闲</source>
        <translation>Idle</translation>
    </message>
</context>
<context>
    <name>app::JogBox</name>
    <message>
        <source>点动</source>
        <translation>Jog</translation>
    </message>
    <message>
        <source>步长 mm/°</source>
        <translation>Step mm/°</translation>
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
        <translation>Beyond a joint limit</translation>
    </message>
    <message>
        <source>程序正在运行</source>
        <translation>A program is running</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
</context>
<context>
    <name>app::KeyBox</name>
    <message>
        <source>手柄按键</source>
        <translation>Pendant keys</translation>
    </message>
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
    <name>app::PanelWindow</name>
    <message>
        <source>激光焊接操作面板</source>
        <translation>Laser welding panel</translation>
    </message>
    <message>
        <source>模拟单元</source>
        <translation>Simulated cell</translation>
    </message>
</context>
</TS>
