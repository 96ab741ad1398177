<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>MainWidget</name>
    <message>
        <source>IP Configurator</source>
        <translation>IP 配置工具</translation>
    </message>
    <message>
        <source>Modify IP</source>
        <translation>修改 IP</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>刷新</translation>
    </message>
    <message>
        <source>Model Name:</source>
        <translation>型号：</translation>
    </message>
    <message>
        <source>Device User ID:</source>
        <translation>设备用户 ID：</translation>
    </message>
    <message>
        <source>Serial Number:</source>
        <translation>序列号：</translation>
    </message>
    <message>
        <source>MAC Address:</source>
        <translation>MAC 地址：</translation>
    </message>
    <message>
        <source>IP Configurator:</source>
        <translation>IP 配置：</translation>
    </message>
    <message>
        <source>IP Address:</source>
        <translation>IP 地址：</translation>
    </message>
    <message>
        <source>Subnet Mask:</source>
        <translation>子网掩码：</translation>
    </message>
    <message>
        <source>Default Gateway:</source>
        <translation>默认网关：</translation>
    </message>
    <message>
        <source>Model Name</source>
        <translation>型号</translation>
    </message>
    <message>
        <source>Device User ID</source>
        <translation>设备用户 ID</translation>
    </message>
    <message>
        <source>Serial Number</source>
        <translation>序列号</translation>
    </message>
    <message>
        <source>MAC Address</source>
        <translation>MAC 地址</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>IP Configuration</source>
        <translation>IP 配置</translation>
    </message>
    <message>
        <source>IP Address</source>
        <translation>IP 地址</translation>
    </message>
    <message>
        <source>Subnet Mask</source>
        <translation>子网掩码</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>相机</translation>
    </message>
    <message>
        <source>Static IP</source>
        <translation>静态 IP</translation>
    </message>
    <message>
        <source>DHCP</source>
        <translation>DHCP</translation>
    </message>
    <message>
        <source>LLA</source>
        <translation>LLA</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Diagnose</source>
        <translation>诊断</translation>
    </message>
    <message>
        <source>Plan</source>
        <translation>计划</translation>
    </message>
</context>
<context>
    <name>QDialogEx</name>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>QMessageBoxDlg</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Static IP</source>
        <translation>静态 IP</translation>
    </message>
    <message>
        <source>DHCP</source>
        <translation>DHCP</translation>
    </message>
    <message>
        <source>LLA</source>
        <translation>LLA</translation>
    </message>
    <message>
        <source>Free</source>
        <translation>可用</translation>
    </message>
    <message>
        <source>Unreachable</source>
        <translation>不可达</translation>
    </message>
    <message>
        <source>In Use</source>
        <translation>已占用</translation>
    </message>
</context>
<context>
    <name>QSetIpAddrDlg</name>
    <message>
        <source>Modify IP Address</source>
        <translation>修改 IP 地址</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>&lt;p style=&apos;margin:10px; margin-left: 35px&apos;&gt;If the camera IP is not static IP address,&lt;/p&gt;&lt;p style=&apos;margin:10px&apos;&gt; the subnet mask and default gateway cannot&lt;/p&gt;&lt;p style=&apos;margin:10px&apos;&gt;be modified.&lt;/p&gt;</source>
        <translation>&lt;p style=&apos;margin:10px; margin-left: 35px&apos;&gt;若相机当前使用的不是静态 IP，&lt;/p&gt;&lt;p style=&apos;margin:10px&apos;&gt;则不能修改子网掩码&lt;/p&gt;&lt;p style=&apos;margin:10px&apos;&gt;和默认网关。&lt;/p&gt;</translation>
    </message>
    <message>
        <source>IP Address:</source>
        <translation>IP 地址：</translation>
    </message>
    <message>
        <source>Subnet Mask:</source>
        <translation>子网掩码：</translation>
    </message>
    <message>
        <source>Default Gateway:</source>
        <translation>默认网关：</translation>
    </message>
    <message>
        <source>Valid Range:</source>
        <translation>有效范围：</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>消息</translation>
    </message>
    <message>
        <source>The IP address has been used by other devices.</source>
        <translation>该 IP 地址已被其他设备使用。</translation>
    </message>
</context>
<context>
    <name>QThread</name>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>Modified. The device will reboot automatically.</source>
        <translation>修改成功，设备将自动重启。</translation>
    </message>
    <message>
        <source>The IP address has been used by other devices.</source>
        <translation>该 IP 地址已被其他设备使用。</translation>
    </message>
    <message>
        <source>Failed to modify the IP address.The camera may be in use at present.</source>
        <translation>修改 IP 地址失败，相机当前可能被占用。</translation>
    </message>
    <message>
        <source>Failed to modify.</source>
        <translation>修改失败。</translation>
    </message>
    <message>
        <source>Static IP</source>
        <translation>静态 IP</translation>
    </message>
    <message>
        <source>DHCP</source>
        <translation>DHCP</translation>
    </message>
    <message>
        <source>LLA</source>
        <translation>LLA</translation>
    </message>
    <message>
        <source>Failed to change the IP configuration type.</source>
        <translation>修改 IP 配置方式失败。</translation>
    </message>
</context>
<context>
    <name>QTitleBar</name>
    <message>
        <source>Minimize</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>QDiagnosisWindow</name>
    <message>
        <source>Diagnosis</source>
        <translation>诊断结果</translation>
    </message>
    <message>
        <source>Look again</source>
        <translation>重新查看</translation>
    </message>
    <message>
        <source>Copy all</source>
        <translation>全部复制</translation>
    </message>
    <message>
        <source>As text for a mail, in English</source>
        <translation>作为邮件文本（英文）</translation>
    </message>
    <message>
        <source>Looking ... This takes a few seconds.</source>
        <translation>正在查看……需要几秒钟。</translation>
    </message>
    <message>
        <source>Nothing could be looked at: %1</source>
        <translation>无法查看：%1</translation>
    </message>
    <message>
        <source>Nothing wrong was found on this computer&apos;s networks.</source>
        <translation>未发现本机网络有任何问题。</translation>
    </message>
    <message>
        <source>1 finding</source>
        <translation>1 项结果</translation>
    </message>
    <message>
        <source>%1 findings, the worst first</source>
        <translation>%1 项结果，最严重的在前</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>已复制</translation>
    </message>
</context>
<context>
    <name>QFindingView</name>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>复制</translation>
    </message>
</context>
<context>
    <name>QPlanTable</name>
    <message>
        <source>%1, name &quot;%2&quot;</source>
        <translation>%1，名称“%2”</translation>
    </message>
    <message>
        <source>model %1</source>
        <translation>型号 %1</translation>
    </message>
    <message>
        <source>serial number %1</source>
        <translation>序列号 %1</translation>
    </message>
    <message>
        <source>MAC address %1</source>
        <translation>MAC 地址 %1</translation>
    </message>
    <message>
        <source>name &quot;%1&quot;</source>
        <translation>名称“%1”</translation>
    </message>
    <message>
        <source>on %1</source>
        <translation>在 %1 上</translation>
    </message>
    <message>
        <source>, </source>
        <translation>，</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>工位</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>相机</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>当前</translation>
    </message>
    <message>
        <source>Wanted</source>
        <translation>目标</translation>
    </message>
    <message>
        <source>What will be done</source>
        <translation>将执行的操作</translation>
    </message>
    <message>
        <source>State</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>Places</source>
        <translation>工位列表</translation>
    </message>
    <message>
        <source>%1 ...</source>
        <translation>正在%1……</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>%1: %2, MAC address %3, on %4</source>
        <translation>%1：%2，MAC 地址 %3，在 %4 上</translation>
    </message>
    <message>
        <source>%1: no camera</source>
        <translation>%1：没有相机</translation>
    </message>
    <message>
        <source>Wanted: %1</source>
        <translation>目标：%1</translation>
    </message>
    <message>
        <source>Now: %1; wanted: %2</source>
        <translation>当前：%1；目标：%2</translation>
    </message>
    <message>
        <source>What will be done: %1</source>
        <translation>将执行的操作：%1</translation>
    </message>
    <message>
        <source>This camera can take its place: %1, MAC address %2</source>
        <translation>可由这台相机接替：%1，MAC 地址 %2</translation>
    </message>
    <message>
        <source>Shall %1 get the camera that is new?
Old: %2
New: %3 (%4)
It gets: %5</source>
        <translation>是否将新相机用于 %1？
原相机：%2
新相机：%3（%4）
将设为：%5</translation>
    </message>
    <message>
        <source>The file will name the new one.</source>
        <translation>文件中将改为新相机。</translation>
    </message>
</context>
<context>
    <name>QPlanWindow</name>
    <message>
        <source>Plan</source>
        <translation>计划</translation>
    </message>
    <message>
        <source>Open...</source>
        <translation>打开...</translation>
    </message>
    <message>
        <source>Save as plan...</source>
        <translation>另存为计划...</translation>
    </message>
    <message>
        <source>What is there now, as a file. To apply it brings all of this back.</source>
        <translation>把当前状态写成文件；应用该文件即可恢复这一状态。</translation>
    </message>
    <message>
        <source>Replace...</source>
        <translation>更换...</translation>
    </message>
    <message>
        <source>Gives the selected place the camera that is new there</source>
        <translation>将那里的新相机用于所选工位</translation>
    </message>
    <message>
        <source>Look again</source>
        <translation>重新查看</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Begins no more cameras; those that are begun are finished or put back</source>
        <translation>不再开始更改其他相机；已开始的会完成或恢复原状</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Save as plan</source>
        <translation>另存为计划</translation>
    </message>
    <message>
        <source>Open a site file</source>
        <translation>打开站点文件</translation>
    </message>
    <message>
        <source>Site files (*.yaml *.yml)</source>
        <translation>站点文件 (*.yaml *.yml)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>所有文件 (*)</translation>
    </message>
    <message>
        <source>Cameras by MAC address</source>
        <translation>按 MAC 地址识别相机</translation>
    </message>
    <message>
        <source>Cameras by serial number</source>
        <translation>按序列号识别相机</translation>
    </message>
    <message>
        <source>Cameras by network adapter</source>
        <translation>按网卡识别相机</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>更换</translation>
    </message>
    <message>
        <source>Stopping: cameras that are begun are finished or put back ...</source>
        <translation>正在停止：已开始的相机会完成或恢复原状……</translation>
    </message>
    <message>
        <source>Applying: %1 of %2 done</source>
        <translation>正在应用：已完成 %1/%2</translation>
    </message>
    <message>
        <source>Looking ... This takes a few seconds.</source>
        <translation>正在查看……需要几秒钟。</translation>
    </message>
    <message>
        <source>Nothing could be looked at: %1</source>
        <translation>无法查看：%1</translation>
    </message>
    <message>
        <source>No file is open.</source>
        <translation>尚未打开文件。</translation>
    </message>
    <message>
        <source>This file is no plan.</source>
        <translation>此文件不是计划。</translation>
    </message>
    <message>
        <source>This plan cannot be applied: something stands in the way.</source>
        <translation>无法应用此计划：存在障碍。</translation>
    </message>
    <message>
        <source>A camera failed and could not be put back!</source>
        <translation>有相机更改失败，且未能恢复原状！</translation>
    </message>
    <message>
        <source>It is done.</source>
        <translation>已完成。</translation>
    </message>
    <message>
        <source>Not all of it was done.</source>
        <translation>未全部完成。</translation>
    </message>
</context>
<context>
    <name>Sentence</name>
    <message>
        <source>Two cameras have the address %1: %2</source>
        <translation>两台相机使用同一地址 %1：%2</translation>
    </message>
    <message>
        <source>%1 cameras have the address %2: %3</source>
        <translation>%1 台相机使用同一地址 %2：%3</translation>
    </message>
    <message>
        <source>Another camera has the same address: %1 (%2).</source>
        <translation>另一台相机使用相同的地址：%1（%2）。</translation>
    </message>
    <message>
        <source>Another device has the same address: %1.</source>
        <translation>另一台设备使用相同的地址：%1。</translation>
    </message>
    <message>
        <source>This computer has the same address.</source>
        <translation>本机使用相同的地址。</translation>
    </message>
    <message>
        <source>%1 and another device (%2) have the address %3</source>
        <translation>%1 与另一台设备（%2）使用同一地址 %3</translation>
    </message>
    <message>
        <source>%1 and this computer have the address %2</source>
        <translation>%1 与本机使用同一地址 %2</translation>
    </message>
    <message>
        <source>Searching ...</source>
        <translation>正在搜索……</translation>
    </message>
    <message>
        <source>Changing %1 ...</source>
        <translation>正在更改 %1……</translation>
    </message>
    <message>
        <source>%1 restarts; this can take a minute</source>
        <translation>%1 正在重启，可能需要一分钟</translation>
    </message>
    <message>
        <source>The change of %1 was not completed</source>
        <translation>对 %1 的更改未完成</translation>
    </message>
    <message>
        <source>F5 shows it as it is now</source>
        <translation>按 F5 显示其当前状态</translation>
    </message>
    <message>
        <source>%1 is heard again</source>
        <translation>已重新收到 %1 的应答</translation>
    </message>
    <message>
        <source>%1 was not heard again after its restart</source>
        <translation>%1 重启后再无应答</translation>
    </message>
    <message>
        <source>No camera has answered. Looking for the reason ...</source>
        <translation>没有相机应答。正在查找原因……</translation>
    </message>
    <message>
        <source>No camera has answered.</source>
        <translation>没有相机应答。</translation>
    </message>
    <message>
        <source>Nothing could be looked at: %1.</source>
        <translation>无法查看：%1。</translation>
    </message>
    <message>
        <source>Nothing wrong is seen on this computer: look whether the cameras have power and their cables are plugged in.</source>
        <translation>本机未发现任何问题：请检查相机是否通电、网线是否插好。</translation>
    </message>
    <message>
        <source>&quot;Diagnose&quot; tells more.</source>
        <translation>“诊断”可查看详情。</translation>
    </message>
    <message>
        <source>No camera</source>
        <translation>没有相机</translation>
    </message>
    <message>
        <source>1 camera</source>
        <translation>1 台相机</translation>
    </message>
    <message>
        <source>%1 cameras on 1 adapter</source>
        <translation>%1 台相机，1 个网卡</translation>
    </message>
    <message>
        <source>%1 cameras on %2 adapters</source>
        <translation>%1 台相机，%2 个网卡</translation>
    </message>
    <message>
        <source>%1 was not heard after the change</source>
        <translation>更改之后没有收到 %1 的应答</translation>
    </message>
    <message>
        <source>%1 is set to %2</source>
        <translation>%1 已设为 %2</translation>
    </message>
    <message>
        <source>%1 is not set to %2</source>
        <translation>%1 未设为 %2</translation>
    </message>
    <message>
        <source>%1 has the address %2</source>
        <translation>%1 的地址为 %2</translation>
    </message>
    <message>
        <source>%1 has not taken the address %2</source>
        <translation>%1 未采用地址 %2</translation>
    </message>
    <message>
        <source>%1 has the subnet mask %2</source>
        <translation>%1 的子网掩码为 %2</translation>
    </message>
    <message>
        <source>%1 has not taken the subnet mask %2</source>
        <translation>%1 未采用子网掩码 %2</translation>
    </message>
    <message>
        <source>%1 has the default gateway %2</source>
        <translation>%1 的默认网关为 %2</translation>
    </message>
    <message>
        <source>%1 has not taken the default gateway %2</source>
        <translation>%1 未采用默认网关 %2</translation>
    </message>
    <message>
        <source>%1 has its new name</source>
        <translation>%1 已使用新名称</translation>
    </message>
    <message>
        <source>%1 has not taken the name %2</source>
        <translation>%1 未采用名称 %2</translation>
    </message>
    <message>
        <source>%1 is as it was</source>
        <translation>%1 没有变化</translation>
    </message>
    <message>
        <source>What the command does holds until this computer restarts; to make it last, change its network settings.</source>
        <translation>该命令的效果保持到本机重启为止；若要长期有效，请更改本机的网络设置。</translation>
    </message>
    <message>
        <source>It has no IPv4 address.</source>
        <translation>它没有 IPv4 地址。</translation>
    </message>
    <message>
        <source>It has the address %1, so it is meant to be used.</source>
        <translation>它有地址 %1，可见是要使用的。</translation>
    </message>
    <message>
        <source>This program sees no network adapter of hardware: it runs in a container or in a network made by software, and hears only cameras on what is passed on to it.</source>
        <translation>本程序看不到任何硬件网卡：它运行在容器中或由软件构成的网络中，只能收到转发给它的相机的应答。</translation>
    </message>
    <message>
        <source>Should cameras be missing, run it on the computer itself, or in a container that has the computer&apos;s own network (docker run --network host).</source>
        <translation>如果缺少相机，请直接在本机上运行，或在使用本机网络的容器中运行（docker run --network host）。</translation>
    </message>
    <message>
        <source>It sees no network adapter at all.</source>
        <translation>它根本看不到网卡。</translation>
    </message>
    <message>
        <source>The kernel says that what it sees is made by software: %1.</source>
        <translation>内核表明它看到的网卡由软件构成：%1。</translation>
    </message>
    <message>
        <source>The network adapter %1 is switched off, so nothing behind it is heard.</source>
        <translation>网卡 %1 已关闭，因此收不到其后任何设备的应答。</translation>
    </message>
    <message>
        <source>The kernel says that it is not up.</source>
        <translation>内核表明它未启用。</translation>
    </message>
    <message>
        <source>The network adapter %1 has no link: its cable is out or broken, or what is at the cable&apos;s other end is switched off.</source>
        <translation>网卡 %1 没有连接：网线未插或损坏，或网线另一端的设备已关闭。</translation>
    </message>
    <message>
        <source>Check the plugs at both ends, the cable, and the power of the camera or switch at its other end.</source>
        <translation>请检查两端的插头、网线以及另一端相机或交换机的电源。</translation>
    </message>
    <message>
        <source>It is switched on, and the kernel says that it has no carrier.</source>
        <translation>它已启用，但内核表明没有载波。</translation>
    </message>
    <message>
        <source>The network adapter %1 has no IPv4 address, so programs cannot talk to cameras behind it.</source>
        <translation>网卡 %1 没有 IPv4 地址，因此程序无法与其后的相机通信。</translation>
    </message>
    <message>
        <source>It is switched on and has a link; no camera was heard there, though it was asked all the same.</source>
        <translation>它已启用并已连接；虽然也作了询问，但那里没有相机应答。</translation>
    </message>
    <message>
        <source>It is switched on and has a link, and these cameras were heard there: %1.</source>
        <translation>它已启用并已连接，并且那里有这些相机应答：%1。</translation>
    </message>
    <message>
        <source>Give it one, in this computer&apos;s network settings.</source>
        <translation>请在本机的网络设置中给它一个地址。</translation>
    </message>
    <message>
        <source>The network adapters %1 and %2 of this computer are in one subnet, so it may look for a camera behind the wrong one of them.</source>
        <translation>本机的网卡 %1 和 %2 在同一子网中，因此本机可能在错误的网卡后寻找相机。</translation>
    </message>
    <message>
        <source>%1 has %2 and %3 has %4. Cameras heard behind %1: %5; behind %3: %6.</source>
        <translation>%1 的地址是 %2，%3 的地址是 %4。在 %1 后面听到的相机数：%5；在 %3 后面：%6。</translation>
    </message>
    <message>
        <source>The commands move %1, behind which no camera was heard; whatever reaches this computer over it loses its connection.</source>
        <translation>这些命令会移动其后没有相机应答的 %1；经由它访问本机的连接都会中断。</translation>
    </message>
    <message>
        <source>In this computer&apos;s network settings, give one of them an address in another subnet, and then addresses of that subnet to its cameras.</source>
        <translation>请在本机的网络设置中给其中一个网卡另一子网的地址，再给它的相机该子网的地址。</translation>
    </message>
    <message>
        <source>As long as an application holds it, it takes no other address: close that application, then ask again.</source>
        <translation>只要有应用程序占用它，它就不会接受其他地址：请关闭该程序后重新诊断。</translation>
    </message>
    <message>
        <source>Give the network adapter %1 an address first, then ask again.</source>
        <translation>请先给网卡 %1 一个地址，然后重新诊断。</translation>
    </message>
    <message>
        <source>The camera obtains its address from the network: the one that the command gives it holds until its next restart.</source>
        <translation>该相机从网络获取地址：命令给它的地址只保持到它下次重启。</translation>
    </message>
    <message>
        <source>No address is free in the subnet of %1, %2: give that adapter a larger one, or an address in another subnet besides.</source>
        <translation>%1 的子网 %2 中没有空闲地址：请给该网卡更大的子网，或再给它一个另一子网的地址。</translation>
    </message>
    <message>
        <source>The camera %1 has the address %2, which is this computer&apos;s own, so no program can reach it.</source>
        <translation>相机 %1 的地址 %2 就是本机自己的地址，因此没有程序能访问它。</translation>
    </message>
    <message>
        <source>The camera answered on %1 with that address, which the network adapter %2 of this computer has.</source>
        <translation>该相机在 %1 上以此地址应答，而本机的网卡 %2 正使用此地址。</translation>
    </message>
    <message>
        <source>The cameras %1 and %2 have the same address, %3: which of them a program reaches is chance.</source>
        <translation>相机 %1 和 %2 使用同一地址 %3：程序访问到哪一台全凭偶然。</translation>
    </message>
    <message>
        <source>Both answered with it, %1 on %2 and %3 on %4.</source>
        <translation>两台都以此地址应答：%1 在 %2 上，%3 在 %4 上。</translation>
    </message>
    <message>
        <source>The camera %1 and another device have the same address, %2: which of them a program reaches is chance.</source>
        <translation>相机 %1 与另一台设备使用同一地址 %2：程序访问到哪一台全凭偶然。</translation>
    </message>
    <message>
        <source>By ARP, a device that is no camera has that address on %1 too: its MAC address is %2.</source>
        <translation>根据 ARP，%1 上有一台不是相机的设备也使用该地址，其 MAC 地址为 %2。</translation>
    </message>
    <message>
        <source>That MAC address belongs to the maker %1.</source>
        <translation>该 MAC 地址属于厂商 %1。</translation>
    </message>
    <message>
        <source>The camera %1 has the address %2, which lies outside the subnet of the network adapter %3, so programs cannot reach it.</source>
        <translation>相机 %1 的地址 %2 在网卡 %3 的子网之外，因此程序无法访问它。</translation>
    </message>
    <message>
        <source>The camera was heard on %1, which has %2; it says of itself: %3.</source>
        <translation>在有 %2 的 %1 上收到了该相机的应答；它自称：%3。</translation>
    </message>
    <message>
        <source>The camera %1 asks a DHCP server for its address, and none answers it.</source>
        <translation>相机 %1 向 DHCP 服务器请求地址，但没有服务器应答。</translation>
    </message>
    <message>
        <source>Either switch the DHCP server on, look after the cable to it and restart the camera; or give the camera a static address.</source>
        <translation>请打开 DHCP 服务器、检查通向它的网线并重启相机；或者给相机一个静态地址。</translation>
    </message>
    <message>
        <source>It is set to DHCP and has the link-local address %1, which a camera takes when no server answers.</source>
        <translation>它设为 DHCP，却使用链路本地地址 %1；没有服务器应答时相机就会这样。</translation>
    </message>
    <message>
        <source>The camera %1 has its present settings, address %2, only until it restarts: it has stored others.</source>
        <translation>相机 %1 当前的设置（地址 %2）只保持到它重启：它保存的是另外的设置。</translation>
    </message>
    <message>
        <source>It is static, so it starts with what it has stored. Now it has: %1. Stored is: %2.</source>
        <translation>它是静态的，启动时使用所保存的设置。现在是：%1。所保存的是：%2。</translation>
    </message>
    <message>
        <source>Its present address is somebody else&apos;s too; repair that first, and it stores the new one.</source>
        <translation>它当前的地址也被别的设备使用；请先解决该问题，之后它会保存新的地址。</translation>
    </message>
    <message>
        <source>The command has it store its present address; if the stored one is right, switch the camera off and on instead.</source>
        <translation>该命令让它保存当前地址；如果所保存的才是对的，请改为给相机断电再通电。</translation>
    </message>
    <message>
        <source>What the commands do holds until this computer restarts; to make it last, put the same settings into a file in /etc/sysctl.d.</source>
        <translation>这些命令的效果保持到本机重新启动为止；要长期有效，请把同样的设置写入 /etc/sysctl.d 中的文件。</translation>
    </message>
    <message>
        <source>What the commands do holds until this computer or its firewall restarts; to make it last, put the same rules into the firewall&apos;s own settings.</source>
        <translation>这些命令的效果保持到本机或其防火墙重新启动为止；要长期有效，请在防火墙自己的设置中加入同样的规则。</translation>
    </message>
    <message>
        <source>Check the cables and plugs on the way to it, and the switch; and whether images of other cameras fill the network.</source>
        <translation>请检查通向它的网线、插头和交换机，以及网络是否被其他相机的图像占满。</translation>
    </message>
    <message>
        <source>Cameras outside this computer&apos;s subnets may be missing, as the program that hears them all, the listener, does not work.</source>
        <translation>本机子网之外的相机可能会缺少，因为能收到所有相机应答的监听程序不工作。</translation>
    </message>
    <message>
        <source>Run this as root; if that does not help, install the program again.</source>
        <translation>请以 root 身份运行；如果无效，请重新安装本程序。</translation>
    </message>
    <message>
        <source>What the command does holds from the user&apos;s next login on.</source>
        <translation>该命令的效果从该用户下次登录时开始。</translation>
    </message>
    <message>
        <source>Other programs on this computer do not hear these cameras on %1, as its reverse-path filter drops their answers: %2.</source>
        <translation>本机的其他程序在 %1 上收不到这些相机的应答，因为其反向路径过滤丢弃了应答：%2。</translation>
    </message>
    <message>
        <source>Only the listener heard them; the reverse-path filter dropped %1 packets meanwhile.</source>
        <translation>只有监听程序收到了应答；其间反向路径过滤丢弃了 %1 个数据包。</translation>
    </message>
    <message>
        <source>On %1 it is set to %2; 1, strict, drops what does not come by the way by which this computer would answer it, and 2, loose, what it could not answer at all.</source>
        <translation>在 %1 上它设为 %2；1（严格）丢弃不是从本机回复时所走的路径到来的数据包，2（宽松）丢弃本机根本无法回复的数据包。</translation>
    </message>
    <message>
        <source>It is also switched on for all adapters, and the larger number counts.</source>
        <translation>它对所有网卡也已打开，以较大的数值为准。</translation>
    </message>
    <message>
        <source>Other programs on this computer do not hear these cameras on %1, as something on it drops their answers, such as its firewall: %2.</source>
        <translation>本机的其他程序在 %1 上收不到这些相机的应答，因为有东西（例如防火墙）丢弃了应答：%2。</translation>
    </message>
    <message>
        <source>Only the listener heard them, which hears before any firewall; the reverse-path filter did not drop them.</source>
        <translation>只有在防火墙之前接收的监听程序收到了应答；反向路径过滤没有丢弃它们。</translation>
    </message>
    <message>
        <source>These chains of nftables can drop what comes in: %1.</source>
        <translation>nftables 的这些链可能丢弃收到的数据包：%1。</translation>
    </message>
    <message>
        <source>Run this as root to be told which rules of the firewall do it, and how to let cameras through.</source>
        <translation>请以 root 身份运行，以得知是防火墙的哪些规则造成的，以及如何放行相机。</translation>
    </message>
    <message>
        <source>The rules cannot be read, as nft is not installed or does not work: let UDP packets from port 3956 through in the firewall&apos;s own settings.</source>
        <translation>无法读取规则，因为 nft 未安装或不工作：请在防火墙自己的设置中放行来自端口 3956 的 UDP 数据包。</translation>
    </message>
    <message>
        <source>nft shows no rule that could do it; perhaps it is one of iptables-legacy or of a security program: let UDP packets from port 3956 through in its own settings.</source>
        <translation>nft 中没有可能造成此问题的规则；也许是 iptables-legacy 或某个安全程序的规则：请在其设置中放行来自端口 3956 的 UDP 数据包。</translation>
    </message>
    <message>
        <source>The link of the camera %1 is slow: %2 Mbit/s.</source>
        <translation>相机 %1 的连接速度慢：%2 Mbit/s。</translation>
    </message>
    <message>
        <source>Check its cable, in which all eight wires have to be sound (Cat 5e or better), both plugs, and whether the port at its other end can do %1 Mbit/s.</source>
        <translation>请检查其网线（八根线都必须完好，Cat 5e 或更好）、两端插头，以及另一端的端口能否达到 %1 Mbit/s。</translation>
    </message>
    <message>
        <source>The camera itself says that its link runs at %1 Mbit/s; cameras of this kind can do %2, as a rule.</source>
        <translation>相机自称其连接速度为 %1 Mbit/s；这类相机通常可达 %2。</translation>
    </message>
    <message>
        <source>The network adapter %1 is slower than cameras behind it, so that images may get lost: %2.</source>
        <translation>网卡 %1 比其后的相机慢，因此图像可能丢失：%2。</translation>
    </message>
    <message>
        <source>Check the cable at the adapter, in which all eight wires have to be sound, and whether adapter and switch can do %1 Mbit/s.</source>
        <translation>请检查网卡处的网线（八根线都必须完好），以及网卡和交换机能否达到 %1 Mbit/s。</translation>
    </message>
    <message>
        <source>%1 runs at %2 Mbit/s, and of these cameras the fastest says of itself %3 Mbit/s.</source>
        <translation>%1 的速度为 %2 Mbit/s，而其中最快的相机自称 %3 Mbit/s。</translation>
    </message>
    <message>
        <source>Packets get lost between this computer and the camera %1: it answered %2 of %3 questions.</source>
        <translation>本机与相机 %1 之间有数据包丢失：它回答了 %3 个询问中的 %2 个。</translation>
    </message>
    <message>
        <source>%1 of %2 questions for its registers had no answer on %3; on a sound network nearly all have one.</source>
        <translation>在 %3 上，对其寄存器的 %2 个询问中有 %1 个没有回答；网络完好时几乎都有回答。</translation>
    </message>
    <message>
        <source>The camera %1 answers searches for cameras, but no other question of this computer.</source>
        <translation>相机 %1 应答对相机的搜索，但不回答本机的其他询问。</translation>
    </message>
    <message>
        <source>It answered %1 of %2 searches on %3, and none of the questions whether it is free, which were asked several times.</source>
        <translation>在 %3 上它应答了 %2 次搜索中的 %1 次，但多次询问它是否空闲都没有回答。</translation>
    </message>
    <message>
        <source>By its settings, %1, this computer&apos;s address %2 lies outside the camera&apos;s subnet: with the adapter&apos;s mask it could answer.</source>
        <translation>按照它的设置 %1，本机的地址 %2 在相机的子网之外：若使用网卡的掩码，它就能回答。</translation>
    </message>
    <message>
        <source>%1, which hears them all, is out of this user&apos;s reach.</source>
        <translation>能收到所有相机应答的 %1 不在该用户可及之处。</translation>
    </message>
    <message>
        <source>%1, which hears them all, may not be run.</source>
        <translation>能收到所有相机应答的 %1 不可运行。</translation>
    </message>
    <message>
        <source>To change it</source>
        <translation>若要更改</translation>
    </message>
    <message>
        <source>%1, which hears them all, is not for this user to run.</source>
        <translation>能收到所有相机应答的 %1 不允许该用户运行。</translation>
    </message>
    <message>
        <source>Only the group %1 may run %2, which hears them all.</source>
        <translation>只有组 %1 可以运行能收到所有相机应答的 %2。</translation>
    </message>
    <message>
        <source>To join it, from the next login on</source>
        <translation>若要加入该组（下次登录时生效）</translation>
    </message>
    <message>
        <source>%1, which hears them all, has the privilege for it and may not use it here: in a container without CAP_NET_RAW, on a file system that is mounted with nosuid, or under no_new_privs.</source>
        <translation>能收到所有相机应答的 %1 拥有所需的特权，但在此处不能使用：位于没有 CAP_NET_RAW 的容器中、以 nosuid 挂载的文件系统上，或处于 no_new_privs 之下。</translation>
    </message>
    <message>
        <source>The program lacks the privilege to hear them all.</source>
        <translation>该程序缺少接收所有相机应答的特权。</translation>
    </message>
    <message>
        <source>To give it</source>
        <translation>若要授予</translation>
    </message>
    <message>
        <source>%1, which hears them all, is not there. Install or build it again.</source>
        <translation>能收到所有相机应答的 %1 不存在。请重新安装或编译。</translation>
    </message>
    <message>
        <source>%1, which hears them all, did not start, or did not go on.</source>
        <translation>能收到所有相机应答的 %1 未能启动，或未能继续运行。</translation>
    </message>
    <message>
        <source>In %1 seconds it asked a DHCP server for an address %2 times.</source>
        <translation>它在 %1 秒内向 DHCP 服务器请求地址 %2 次。</translation>
    </message>
    <message>
        <source>In %1 seconds it asked %2 times by ARP whether somebody has the address that it would like: %3.</source>
        <translation>它在 %1 秒内用 ARP 询问了 %2 次是否有人使用它想要的地址：%3。</translation>
    </message>
    <message>
        <source>By ARP it says that it has the address %1.</source>
        <translation>它通过 ARP 表明自己的地址为 %1。</translation>
    </message>
    <message>
        <source>The device %1 on %2 asks for an address again and again, and does not answer searches for cameras.</source>
        <translation>%2 上的设备 %1 一再请求地址，并且不应答对相机的搜索。</translation>
    </message>
    <message>
        <source>The device %1 on %2 tells of itself, and does not answer searches for cameras.</source>
        <translation>%2 上的设备 %1 表明了自己的存在，但不应答对相机的搜索。</translation>
    </message>
    <message>
        <source>Its maker is %1.</source>
        <translation>其厂商为 %1。</translation>
    </message>
    <message>
        <source>If that is the camera you miss (its label shows the MAC address), give it a minute to start; then switch it off and on, and check that its power supply is strong enough.</source>
        <translation>如果那就是您缺少的相机（其标签上有 MAC 地址），请给它一分钟启动；然后断电再通电，并检查其电源功率是否足够。</translation>
    </message>
    <message>
        <source>%1 more devices tell of themselves and do not answer searches for cameras; to look at them, unplug the others meanwhile.</source>
        <translation>另有 %1 台设备表明了自己的存在，但不应答对相机的搜索；若要查看它们，请暂时拔掉其他设备。</translation>
    </message>
    <message>
        <source>They were heard by ARP, or as they asked a DHCP server.</source>
        <translation>是通过 ARP 或其 DHCP 请求得知的。</translation>
    </message>
    <message>
        <source>The camera %1 is in use by %2 on this computer, process %3 of the user %4.</source>
        <translation>相机 %1 正被本机上的 %2 使用，即用户 %4 的进程 %3。</translation>
    </message>
    <message>
        <source>The camera %1 is in use, perhaps by %2 on this computer, process %3 of the user %4.</source>
        <translation>相机 %1 正被使用，可能是本机上的 %2，即用户 %4 的进程 %3。</translation>
    </message>
    <message>
        <source>The camera %1 is in use by an application at %2.</source>
        <translation>相机 %1 正被 %2 处的应用程序使用。</translation>
    </message>
    <message>
        <source>The camera %1 is in use by some application.</source>
        <translation>相机 %1 正被某个应用程序使用。</translation>
    </message>
    <message>
        <source>It may never become free by itself: end that application in an orderly way; if it is gone already, switch the camera off and on.</source>
        <translation>它可能永远不会自行变为空闲：请正常结束该应用程序；如果它已不在，请给相机断电再通电。</translation>
    </message>
    <message>
        <source>The camera says that its heartbeat is switched off, so it does not notice when the application dies.</source>
        <translation>相机表明其心跳已关闭，因此应用程序异常终止时它不会察觉。</translation>
    </message>
    <message>
        <source>To change it, close that application first.</source>
        <translation>若要更改，请先关闭该应用程序。</translation>
    </message>
    <message>
        <source>An application has exclusive control of it, as the camera says.</source>
        <translation>相机表明有应用程序独占控制它。</translation>
    </message>
    <message>
        <source>An application has control of it, as the camera says; others may read.</source>
        <translation>相机表明有应用程序控制它；其他程序可以读取。</translation>
    </message>
    <message>
        <source>No application controls the camera.</source>
        <translation>没有应用程序控制该相机。</translation>
    </message>
    <message>
        <source>The camera cannot be asked whether an application holds it, as its address is outside the subnet of the adapter that hears it.</source>
        <translation>无法询问相机是否被应用程序占用，因为它的地址在收到其应答的网卡的子网之外。</translation>
    </message>
    <message>
        <source>The camera cannot be asked whether an application holds it, as another camera answers at its address; give one of the two another address first.</source>
        <translation>无法询问相机是否被应用程序占用，因为另一台相机在其地址上应答；请先给其中一台另外的地址。</translation>
    </message>
    <message>
        <source>The camera did not tell, when it was asked, whether an application holds it.</source>
        <translation>询问相机是否被应用程序占用时，它没有回答。</translation>
    </message>
    <message>
        <source>A socket of this computer is connected to the camera, which proves that somebody talks with it and not that it is held: %1.</source>
        <translation>本机有套接字与该相机连接，这只证明有程序与它通信，并不证明它被占用：%1。</translation>
    </message>
    <message>
        <source>The camera is held exclusively: others may not even read from it.</source>
        <translation>该相机被独占：其他程序甚至不能读取。</translation>
    </message>
    <message>
        <source>The camera&apos;s heartbeat is switched off: should the application end without giving it back, it stays held for ever. End the application properly; if it is gone, cut the camera&apos;s power.</source>
        <translation>该相机的心跳已关闭：如果应用程序结束时没有归还相机，它将永远被占用。请正常结束该应用程序；如果它已不在，请切断相机的电源。</translation>
    </message>
    <message>
        <source>It is held by an application on another computer, %1, port %2; which program that is, can be seen there only.</source>
        <translation>它被另一台计算机 %1（端口 %2）上的应用程序占用；是哪个程序只能在那里看到。</translation>
    </message>
    <message>
        <source>It is held by an application on another computer, %1 (MAC address %3), port %2; which program that is, can be seen there only.</source>
        <translation>它被另一台计算机 %1（MAC 地址 %3，端口 %2）上的应用程序占用；是哪个程序只能在那里看到。</translation>
    </message>
    <message>
        <source>The camera names this computer&apos;s %1, port %2, as its holder, and that is a socket of: %3.</source>
        <translation>相机称占用者为本机的 %1（端口 %2），该套接字属于：%3。</translation>
    </message>
    <message>
        <source>The camera names this computer&apos;s %1, port %2, as its holder, but no program has that socket now: it has ended without giving the camera back, or runs in a container or virtual machine of this computer.</source>
        <translation>相机称占用者为本机的 %1（端口 %2），但现在没有程序拥有该套接字：它结束时没有归还相机，或运行在本机的容器或虚拟机中。</translation>
    </message>
    <message>
        <source>If it has ended, the camera lets go %1 ms after it was last heard.</source>
        <translation>如果它已结束，相机会在最后一次收到它的消息 %1 毫秒之后释放。</translation>
    </message>
    <message>
        <source>By whom it is held, the camera does not tell.</source>
        <translation>被谁占用，相机没有说明。</translation>
    </message>
    <message>
        <source>No program of this computer has a socket that could be for it, so it is probably held by another computer.</source>
        <translation>本机没有程序拥有可能用于它的套接字，因此它可能被另一台计算机占用。</translation>
    </message>
    <message>
        <source>A guess: it may be %1, as that alone has a socket that could be for it; or a program of another computer.</source>
        <translation>推测：可能是 %1，因为只有它拥有可能用于相机的套接字；也可能是另一台计算机的程序。</translation>
    </message>
    <message>
        <source>These have sockets that could be for it: %1; or it is a program of another computer.</source>
        <translation>这些程序拥有可能用于它的套接字：%1；也可能是另一台计算机的程序。</translation>
    </message>
    <message>
        <source>A socket of this computer is connected to the camera: %1.</source>
        <translation>本机有套接字与该相机连接：%1。</translation>
    </message>
    <message>
        <source>Which program of another user that is, only root may see.</source>
        <translation>那是其他用户的哪个程序，只有 root 能看到。</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2.</source>
        <translation>无法读取 %1：%2。</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2.</source>
        <translation>无法写入 %1：%2。</translation>
    </message>
    <message>
        <source>The file is wrong:</source>
        <translation>文件有误：</translation>
    </message>
    <message>
        <source>The file is wrong in line %1, column %2:</source>
        <translation>文件第 %1 行第 %2 列有误：</translation>
    </message>
    <message>
        <source>putting it back</source>
        <translation>恢复原状</translation>
    </message>
    <message>
        <source>What is there has changed meanwhile, and nothing was done: this is the plan now.</source>
        <translation>其间情况已发生变化，未执行任何操作：现在显示的是新的计划。</translation>
    </message>
    <message>
        <source>What is there now is written to %1.</source>
        <translation>当前状态已写入 %1。</translation>
    </message>
    <message>
        <source>A plan was applied</source>
        <translation>已应用计划</translation>
    </message>
    <message>
        <source>A site file says which camera belongs where, and what address it is to have: &quot;Open&quot; one.</source>
        <translation>站点文件说明哪台相机属于哪个工位以及应有的地址：请“打开”一个。</translation>
    </message>
    <message>
        <source>&quot;Save as plan&quot; makes one of what is there now.</source>
        <translation>“另存为计划”可根据当前状态生成一个。</translation>
    </message>
    <message>
        <source>It could not be put back: %1.</source>
        <translation>未能恢复原状：%1。</translation>
    </message>
    <message>
        <source>It could not be changed: %1.</source>
        <translation>未能更改：%1。</translation>
    </message>
    <message>
        <source>No DHCP server gave it an address, so it took a link-local one.</source>
        <translation>没有 DHCP 服务器给它地址，因此它采用了链路本地地址。</translation>
    </message>
    <message>
        <source>Nothing was done to it.</source>
        <translation>未对它执行任何操作。</translation>
    </message>
    <message>
        <source>One of those with which it exchanges addresses could not be changed.</source>
        <translation>与它互换地址的相机中有一台未能更改。</translation>
    </message>
    <message>
        <source>It was left at %1, as another camera may have its address.</source>
        <translation>它留在 %1，因为它的地址可能已被另一台相机使用。</translation>
    </message>
    <message>
        <source>It is to get the address of %1, which was not changed.</source>
        <translation>它要使用 %1 的地址，而 %1 未被更改。</translation>
    </message>
    <message>
        <source>It was interrupted before this one was begun.</source>
        <translation>在开始更改它之前已被中断。</translation>
    </message>
    <message>
        <source>Another one failed before this one was begun.</source>
        <translation>在开始更改它之前另一台已失败。</translation>
    </message>
    <message>
        <source>Nothing is begun while something is in the way.</source>
        <translation>存在障碍时不会开始任何更改。</translation>
    </message>
    <message>
        <source>static</source>
        <translation>静态</translation>
    </message>
    <message>
        <source>static %1</source>
        <translation>静态 %1</translation>
    </message>
    <message>
        <source>static %1 via %2</source>
        <translation>静态 %1，网关 %2</translation>
    </message>
    <message>
        <source>DHCP</source>
        <translation>DHCP</translation>
    </message>
    <message>
        <source>DHCP %1</source>
        <translation>DHCP %1</translation>
    </message>
    <message>
        <source>DHCP %1 via %2</source>
        <translation>DHCP %1，网关 %2</translation>
    </message>
    <message>
        <source>LLA</source>
        <translation>LLA</translation>
    </message>
    <message>
        <source>LLA %1</source>
        <translation>LLA %1</translation>
    </message>
    <message>
        <source>LLA %1 via %2</source>
        <translation>LLA %1，网关 %2</translation>
    </message>
    <message>
        <source>switch to static</source>
        <translation>切换为静态</translation>
    </message>
    <message>
        <source>switch to DHCP</source>
        <translation>切换为 DHCP</translation>
    </message>
    <message>
        <source>switch to LLA</source>
        <translation>切换为 LLA</translation>
    </message>
    <message>
        <source>%1 (%2) was not put back; what it has now is not known.</source>
        <translation>%1（%2）未恢复原状；它现在的设置未知。</translation>
    </message>
    <message>
        <source>%1 (%2) was not put back; it has LLA now, %3, name &quot;%4&quot;.</source>
        <translation>%1（%2）未恢复原状；它现在为 LLA，%3，名称“%4”。</translation>
    </message>
    <message>
        <source>%1 (%2) was not put back; it is static now, %3, name &quot;%4&quot;.</source>
        <translation>%1（%2）未恢复原状；它现在为静态，%3，名称“%4”。</translation>
    </message>
    <message>
        <source>%1 (%2) was not put back; it has DHCP now, %3, name &quot;%4&quot;.</source>
        <translation>%1（%2）未恢复原状；它现在为 DHCP，%3，名称“%4”。</translation>
    </message>
    <message>
        <source>force %1</source>
        <translation>强制设置 %1</translation>
    </message>
    <message>
        <source>store the address</source>
        <translation>保存地址</translation>
    </message>
    <message>
        <source>remove the name</source>
        <translation>删除名称</translation>
    </message>
    <message>
        <source>rename to %1</source>
        <translation>重命名为 %1</translation>
    </message>
    <message>
        <source>restart</source>
        <translation>重启</translation>
    </message>
    <message>
        <source>as planned</source>
        <translation>符合计划</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>已更改</translation>
    </message>
    <message>
        <source>would change</source>
        <translation>将更改</translation>
    </message>
    <message>
        <source>FAILED</source>
        <translation>失败</translation>
    </message>
    <message>
        <source>put back</source>
        <translation>已恢复原状</translation>
    </message>
    <message>
        <source>missing</source>
        <translation>缺少</translation>
    </message>
    <message>
        <source>not begun</source>
        <translation>未开始</translation>
    </message>
    <message>
        <source>Failed: %1 of %2.</source>
        <translation>失败：%1/%2。</translation>
    </message>
    <message>
        <source>Put back: %1 of %2.</source>
        <translation>已恢复原状：%1/%2。</translation>
    </message>
    <message>
        <source>Missing: %1 of %2.</source>
        <translation>缺少：%1/%2。</translation>
    </message>
    <message>
        <source>Not begun: %1 of %2.</source>
        <translation>未开始：%1/%2。</translation>
    </message>
    <message>
        <source>Changed: %1 of %2.</source>
        <translation>已更改：%1/%2。</translation>
    </message>
    <message>
        <source>To be changed: %1 of %2.</source>
        <translation>待更改：%1/%2。</translation>
    </message>
    <message>
        <source>All is as planned (%1 of %1); nothing is to be done.</source>
        <translation>全部符合计划（%1/%1），无需任何操作。</translation>
    </message>
    <message>
        <source>The address %1 is that of the camera %2, which belongs to no place and keeps it. Give that camera a place or another address first, or choose another address here.</source>
        <translation>地址 %1 属于相机 %2，该相机不属于任何工位并会保留此地址。请先给该相机一个工位或另一地址，或在此选择另一地址。</translation>
    </message>
    <message>
        <source>The address %1 is that of the camera %2 at the place %3, which is not to leave it. Choose another address for one of the two places, and change both together.</source>
        <translation>地址 %1 属于工位 %3 的相机 %2，而该相机并不让出它。请为两个工位之一选择另一地址，并一起更改两者。</translation>
    </message>
    <message>
        <source>The address %1 is this computer&apos;s own, on its adapter %2. Choose another address here.</source>
        <translation>地址 %1 是本机自己的地址，在网卡 %2 上。请在此选择另一地址。</translation>
    </message>
    <message>
        <source>The address %1 is that of another machine, %2, which is no camera. Give that machine another one, or choose another address here. Of one that has just been taken away, this computer knows within a minute.</source>
        <translation>地址 %1 属于另一台设备 %2，它不是相机。请给该设备另一地址，或在此选择另一地址。若它刚被移走，本机会在一分钟内得知。</translation>
    </message>
    <message>
        <source>The cameras of %1 places exchange their addresses in a circle, for which one of them, %2, has to take a free address meanwhile; none is free. Give one of them an address that none of them has now.</source>
        <translation>%1 个工位的相机循环互换地址，为此其中的 %2 须临时使用一个空闲地址；但没有空闲地址。请给其中一台一个它们目前都未使用的地址。</translation>
    </message>
    <message>
        <source>The adapter %1 of the file is not there; this computer has: %2.</source>
        <translation>文件中的网卡 %1 不存在；本机的网卡有：%2。</translation>
    </message>
    <message>
        <source>The adapter %1 has not the address %2, as the file says; it has: %3. Correct the one or the other.</source>
        <translation>网卡 %1 没有文件中所说的地址 %2；它的地址是：%3。请更正其中之一。</translation>
    </message>
    <message>
        <source>The adapter %1 has an MTU of %2 bytes, not of %3, as the file says. Correct the one or the other.</source>
        <translation>网卡 %1 的 MTU 为 %2 字节，而不是文件中所说的 %3。请更正其中之一。</translation>
    </message>
    <message>
        <source>The camera %1 does not tell whether an application uses it. See what keeps it from answering: &quot;ip-configurator-cli who %2&quot; tells more.</source>
        <translation>相机 %1 没有说明是否被应用程序使用。请查明它为何不回答：“ip-configurator-cli who %2”可查看详情。</translation>
    </message>
    <message>
        <source>The camera %1 is in use by another application. End that; &quot;ip-configurator-cli who %2&quot; tells more.</source>
        <translation>相机 %1 正被另一应用程序使用。请结束该程序；“ip-configurator-cli who %2”可查看详情。</translation>
    </message>
    <message>
        <source>The camera %1 is in use by an application at %2, port %3. End that; &quot;ip-configurator-cli who %4&quot; tells more.</source>
        <translation>相机 %1 正被 %2（端口 %3）处的应用程序使用。请结束该程序；“ip-configurator-cli who %4”可查看详情。</translation>
    </message>
    <message>
        <source>The camera %1 cannot store an address, so it cannot be static: only DHCP or LLA can be planned for it.</source>
        <translation>相机 %1 不能保存地址，因此不能为静态：只能为它计划 DHCP 或 LLA。</translation>
    </message>
    <message>
        <source>The camera %1 cannot ask a DHCP server for its address: only static or LLA can be planned for it.</source>
        <translation>相机 %1 不能向 DHCP 服务器请求地址：只能为它计划静态或 LLA。</translation>
    </message>
    <message>
        <source>The camera %1 is not of the model %2, which belongs here. Put such a one in its place, or correct the file.</source>
        <translation>相机 %1 的型号不是这里应有的 %2。请换上该型号的相机，或更正文件。</translation>
    </message>
    <message>
        <source>The camera %1 is that of the place %2, too. Say more exactly, by mac or serial, which camera is at which of the two.</source>
        <translation>相机 %1 同时也属于工位 %2。请用 mac 或 serial 更准确地说明两个工位各是哪台相机。</translation>
    </message>
    <message>
        <source>%1 cameras can be the one of this place: %2. Say more exactly, by mac or serial, which it is.</source>
        <translation>有 %1 台相机都可能属于此工位：%2。请用 mac 或 serial 更准确地说明是哪一台。</translation>
    </message>
    <message>
        <source>The address %1 of the place %2 is outside the subnets of the adapter %3, which hears its camera: this computer will not reach it there.</source>
        <translation>工位 %2 的地址 %1 在收到其相机应答的网卡 %3 的子网之外：本机在那里将无法访问它。</translation>
    </message>
    <message>
        <source>The camera %1, address %2, on the adapter %3, belongs to no place.</source>
        <translation>网卡 %3 上的相机 %1（地址 %2）不属于任何工位。</translation>
    </message>
    <message>
        <source>Other cameras that belong to no place: %1.</source>
        <translation>其他不属于任何工位的相机：%1。</translation>
    </message>
    <message>
        <source>%1 has no members here; a mapping is needed, {} when it is to have none</source>
        <translation>%1 在此没有成员；需要一个映射，没有成员时写 {}</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is unknown here; allowed are %2</source>
        <translation>此处不认识“%1”；允许的有 %2</translation>
    </message>
    <message>
        <source>%1 is missing here; it is needed</source>
        <translation>此处缺少 %1；它是必需的</translation>
    </message>
    <message>
        <source>%1 has no text here; one is needed, in quotes when it is &quot;null&quot; or &quot;~&quot;</source>
        <translation>%1 在此没有文本；需要一个文本，若为“null”或“~”须加引号</translation>
    </message>
    <message>
        <source>%1 is an empty text; another one is needed</source>
        <translation>%1 是空文本；需要另一文本</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is unknown; allowed are %3</source>
        <translation>不认识 %1 的值“%2”；允许的有 %3</translation>
    </message>
    <message>
        <source>address &quot;%1&quot; is no address with the length of its prefix; an IPv4 address, a slash and 1 to 32 are allowed, such as 192.168.10.1/24</source>
        <translation>address 的值“%1”不是带前缀长度的地址；允许 IPv4 地址、斜杠和 1 到 32，例如 192.168.10.1/24</translation>
    </message>
    <message>
        <source>mtu is no number of bytes; 68 to 65535 are allowed</source>
        <translation>mtu 不是字节数；允许 68 到 65535</translation>
    </message>
    <message>
        <source>match has no members; one or more of adapter, serial, mac, name are needed</source>
        <translation>match 没有成员；需要 adapter、serial、mac、name 中的一个或多个</translation>
    </message>
    <message>
        <source>address is missing here, which mode static needs</source>
        <translation>此处缺少 mode static 所需的 address</translation>
    </message>
    <message>
        <source>mask is missing here and in defaults, which mode static needs</source>
        <translation>此处和 defaults 中都缺少 mode static 所需的 mask</translation>
    </message>
    <message>
        <source>place &quot;%1&quot; cannot be its camera&apos;s name, as only %2 bytes of UTF-8 without a NUL can; it needs name: such a text, or keep</source>
        <translation>工位“%1”不能作为其相机的名称，因为名称只能是不含 NUL 的 %2 字节 UTF-8；它需要 name：这样的文本，或 keep</translation>
    </message>
    <message>
        <source>%1 goes with mode static only; here the mode is %2, which takes none</source>
        <translation>%1 只能与 mode static 一起使用；此处的 mode 为 %2，不带该项</translation>
    </message>
    <message>
        <source>version is unknown; the number 1 is allowed</source>
        <translation>不认识该 version；允许数字 1</translation>
    </message>
    <message>
        <source>places &quot;%1&quot; (line %2) and &quot;%3&quot; (line %4) have one camera, of MAC %5; one place is allowed for each</source>
        <translation>工位“%1”（第 %2 行）和“%3”（第 %4 行）是同一台 MAC 为 %5 的相机；每台相机只允许一个工位</translation>
    </message>
    <message>
        <source>places &quot;%1&quot; (line %2) and &quot;%3&quot; (line %4) have one camera, of serial number &quot;%5&quot;; one place is allowed for each</source>
        <translation>工位“%1”（第 %2 行）和“%3”（第 %4 行）是同一台序列号为“%5”的相机；每台相机只允许一个工位</translation>
    </message>
    <message>
        <source>places &quot;%1&quot; (line %2) and &quot;%3&quot; (line %4) match the same cameras; each needs a match of its own</source>
        <translation>工位“%1”（第 %2 行）和“%3”（第 %4 行）匹配相同的相机；每个工位需要自己的 match</translation>
    </message>
    <message>
        <source>places &quot;%1&quot; (line %2) and &quot;%3&quot; (line %4) have one address, %5; each needs its own</source>
        <translation>工位“%1”（第 %2 行）和“%3”（第 %4 行）是同一地址 %5；每个工位需要自己的地址</translation>
    </message>
    <message>
        <source>address &quot;%1&quot; is that of adapter %2 (line %3); another one is allowed</source>
        <translation>地址“%1”是网卡 %2（第 %3 行）的地址；允许另一地址</translation>
    </message>
    <message>
        <source>The file is too long; a megabyte is allowed</source>
        <translation>文件太长；允许 1 兆字节</translation>
    </message>
    <message>
        <source>The file has a NUL in it; text is allowed</source>
        <translation>文件中有 NUL；只允许文本</translation>
    </message>
    <message>
        <source>What stands here is no UTF-8, which alone is allowed</source>
        <translation>此处不是 UTF-8；只允许 UTF-8</translation>
    </message>
    <message>
        <source>A control character stands here; an escape in a text in double quotes is allowed</source>
        <translation>此处有控制字符；允许在双引号文本中使用转义</translation>
    </message>
    <message>
        <source>An alias stands here; a value is allowed</source>
        <translation>此处是别名；允许的是值</translation>
    </message>
    <message>
        <source>This text is too long; %1 bytes are allowed</source>
        <translation>此文本太长；允许 %1 字节</translation>
    </message>
    <message>
        <source>A list stands here; members with their values are allowed</source>
        <translation>此处是列表；允许的是带值的成员</translation>
    </message>
    <message>
        <source>Too many mappings are inside each other; %1 are allowed</source>
        <translation>映射嵌套太深；允许 %1 层</translation>
    </message>
    <message>
        <source>A member has a mapping as its name; a text is allowed</source>
        <translation>成员的名称是映射；允许的是文本</translation>
    </message>
    <message>
        <source>An anchor stands here; a value is allowed</source>
        <translation>此处是锚点；允许的是值</translation>
    </message>
    <message>
        <source>A tag stands here; a value is allowed</source>
        <translation>此处是标签；允许的是值</translation>
    </message>
    <message>
        <source>The file has too many values; %1 are allowed</source>
        <translation>文件中的值太多；允许 %1 个</translation>
    </message>
    <message>
        <source>A member has no name; a text is allowed, in quotes when it is &quot;null&quot; or &quot;~&quot;</source>
        <translation>成员没有名称；允许文本，若为“null”或“~”须加引号</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is here twice, first in line %2; once is allowed</source>
        <translation>“%1”在此出现两次，首次在第 %2 行；只允许一次</translation>
    </message>
    <message>
        <source>A second document begins here; one is allowed</source>
        <translation>此处开始第二个文档；只允许一个</translation>
    </message>
    <message>
        <source>This is no YAML: %1</source>
        <translation>这不是 YAML：%1</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is no IPv4 address: four numbers from 0 to 255 without leading zeros, joined by dots, are allowed, such as 192.168.1.20</source>
        <translation>%1 的值“%2”不是 IPv4 地址：允许四个 0 到 255 之间、无前导零并以点连接的数字，例如 192.168.1.20</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is no subnet mask: only ones before zeros, in binary, are allowed, such as 255.255.255.0</source>
        <translation>%1 的值“%2”不是子网掩码：其二进制只允许先 1 后 0，例如 255.255.255.0</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; makes all addresses one subnet; 128.0.0.0 to 255.255.255.252 are allowed</source>
        <translation>%1 的值“%2”使所有地址成为一个子网；允许 128.0.0.0 到 255.255.255.252</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; leaves no room for a camera and a host in the subnet; 128.0.0.0 to 255.255.255.252 are allowed</source>
        <translation>%1 的值“%2”使子网容不下一台相机和一台主机；允许 128.0.0.0 到 255.255.255.252</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; begins with 0, which is no host&apos;s; 1 to 223 other than 127 are allowed there</source>
        <translation>%1 的值“%2”以 0 开头，不是主机地址；该处允许 1 到 223（127 除外）</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is a loopback address, which no camera can have; 1 to 223 other than 127 are allowed as the first number</source>
        <translation>%1 的值“%2”是环回地址，相机不能使用；首个数字允许 1 到 223（127 除外）</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is in the reserved range from 240.0.0.0; 1 to 223 other than 127 are allowed as the first number</source>
        <translation>%1 的值“%2”在从 240.0.0.0 开始的保留范围内；首个数字允许 1 到 223（127 除外）</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is a multicast address; 1 to 223 other than 127 are allowed as the first number</source>
        <translation>%1 的值“%2”是组播地址；首个数字允许 1 到 223（127 除外）</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is the address of the subnet itself with mask %3; %4 to %5 are allowed</source>
        <translation>在掩码 %3 下，%1 的值“%2”是子网本身的地址；允许 %4 到 %5</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is the broadcast address of its subnet with mask %3; %4 to %5 are allowed</source>
        <translation>在掩码 %3 下，%1 的值“%2”是其子网的广播地址；允许 %4 到 %5</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is not in the subnet of %3 %4 with %5 %6; an address of that subnet is allowed, or 0.0.0.0 for no gateway</source>
        <translation>%1 的值“%2”不在 %3 %4（%5 %6）的子网中；允许该子网的地址，或以 0.0.0.0 表示没有网关</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is the camera&apos;s own new address; another of its subnet is allowed, or 0.0.0.0 for no gateway</source>
        <translation>%1 的值“%2”是相机自己的新地址；允许其子网中的另一地址，或以 0.0.0.0 表示没有网关</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is no MAC address: twelve hexadecimal digits are allowed, the pairs separated by colons, dashes or nothing, such as 00:1A:2B:3C:4D:5E</source>
        <translation>%1 的值“%2”不是 MAC 地址：允许十二个十六进制数字，每两个之间以冒号、连字符分隔或不分隔，例如 00:1A:2B:3C:4D:5E</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is all zeros, which is no camera&apos;s; the list command shows the cameras&apos; own</source>
        <translation>%1 的值“%2”全为零，不是相机的地址；list 命令显示各相机自己的地址</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is the address of a group (its first pair is odd), which is no camera&apos;s; the list command shows the cameras&apos; own</source>
        <translation>%1 的值“%2”是组地址（第一对数字为奇数），不是相机的地址；list 命令显示各相机自己的地址</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is not UTF-8</source>
        <translation>%1 的值“%2”不是 UTF-8</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; has a NUL in it, which ends a camera&apos;s name</source>
        <translation>%1 的值“%2”中有 NUL，相机名称会在此结束</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; is too long with %3 bytes of UTF-8; %4 are allowed</source>
        <translation>%1 的值“%2”有 %3 字节 UTF-8，太长；允许 %4 字节</translation>
    </message>
    <message>
        <source>The camera %1 belongs to no place, but is not of the model %2, which belongs here. Put such a one in its place, or correct the file.</source>
        <translation>相机 %1 不属于任何工位，但其型号不是这里应有的 %2。请换上该型号的相机，或更正文件。</translation>
    </message>
    <message>
        <source>On the adapter %1 no camera answers that belongs to no place. Plug the new one in, and give it the time to start.</source>
        <translation>网卡 %1 上没有不属于任何工位的相机应答。请接上新相机，并等待其启动。</translation>
    </message>
    <message>
        <source>No camera answers that belongs to no place. Plug the new one in, and give it the time to start.</source>
        <translation>没有不属于任何工位的相机应答。请接上新相机，并等待其启动。</translation>
    </message>
    <message>
        <source>%1 cameras could be the new one: %2. Unplug all but that one, or say in the file where the others belong.</source>
        <translation>有 %1 台相机都可能是新相机：%2。请只连接新相机，或在文件中说明其他相机属于哪里。</translation>
    </message>
    <message>
        <source>this value cannot be replaced by &quot;%1&quot;; write it in one line, or replace it by hand</source>
        <translation>无法把此值替换为“%1”；请把它写在一行内，或手动替换</translation>
    </message>
    <message>
        <source>The camera %1 is at this place and answers; only one that is silent is replaced.</source>
        <translation>相机 %1 在此工位上并有应答；只更换没有应答的相机。</translation>
    </message>
    <message>
        <source>the file cannot be rewritten here; correct it by hand</source>
        <translation>无法在此处改写文件；请手动更正</translation>
    </message>
</context>
</TS>
