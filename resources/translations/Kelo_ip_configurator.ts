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
</TS>
