#!/usr/bin/python

# Copyright: the IP Configurator developers
# GNU General Public License v3.0+ (see https://www.gnu.org/licenses/gpl-3.0.txt)
# SPDX-License-Identifier: Apache-2.0 OR GPL-3.0-or-later

from __future__ import absolute_import, division, print_function

__metaclass__ = type

DOCUMENTATION = r"""
module: cameras
short_description: Gives the GigE Vision cameras of a station the addresses that a site file says
version_added: 0.1.0
description:
  - Finds the camera of each place, and gives it the address, the way to obtain it, and the name that the place has.
  - What is so already is not touched. Each camera is asked afterwards what it has; one that fails is put back as it was.
  - Fails before anything is sent when a camera that needs a change is in use or missing, when a place has two
    candidates, when an address is somebody else's, or when an adapter is not as said.
author:
  - IP Configurator developers (@ip_configurator)
options:
  src:
    description:
      - A site file on the station.
      - Excludes its members, of which I(cameras) is required without it.
    type: path
  version:
    description:
      - The version of the format of the site.
      - Is C(1) where it is not given.
    type: int
    choices: [1]
  defaults:
    description:
      - What holds for each place that does not say otherwise.
    type: dict
    suboptions:
      mode:
        description:
          - How a camera obtains its address.
        type: str
        choices: [static, dhcp, lla]
      mask:
        description:
          - The subnet mask of static addresses.
        type: str
      gateway:
        description:
          - The gateway of static addresses, or C(none).
        type: str
  adapters:
    description:
      - Network adapters of the station by name, each a dictionary of C(address), such as C(192.168.10.1/24), and
        C(mtu), such as C(9000), both optional.
      - They have to be so. They are never changed.
    type: dict
  cameras:
    description:
      - The places by name, each a dictionary of C(match), C(model), C(mode), C(address), C(mask), C(gateway) and C(name).
      - C(match) says by what the camera of the place is known, a dictionary of C(adapter), C(serial), C(mac) and
        C(name). At least one is given; all that are given have to hold.
      - C(model) refuses any other camera there.
      - C(mode), C(mask) and C(gateway) are as in I(defaults). C(address) is for the mode C(static) alone.
      - C(name) is the user name of the camera. It is the name of the place where it is not given. C(keep) leaves it alone.
      - Quote serial numbers and MAC addresses. YAML reads C(007) as the number 7.
    type: dict
  unlisted:
    description:
      - What to think of cameras that belong to no place.
      - With C(warn), which is what happens where it is not given, the task warns of them.
    type: str
    choices: [ignore, warn, fail]
  only:
    description:
      - Changes these places alone. The others are looked at as far as addresses clash.
    type: list
    elements: str
    default: []
  keep_going:
    description:
      - Goes on with the other cameras when one is missing or fails. The task fails nevertheless.
    type: bool
    default: false
  executable:
    description:
      - The command that does it, by its name in C(PATH) or by its file.
    type: path
    default: ip-configurator-cli
requirements:
  - ip-configurator-cli on the station
attributes:
  check_mode:
    description: Can run in check mode, says what it would change, and sends nothing but questions.
    support: full
  diff_mode:
    description: Says of each place what its camera has before and after.
    support: full
seealso:
  - module: ip_configurator.gigevision.cameras_info
"""

EXAMPLES = r"""
- name: Make the cameras as a file on the station says
  ip_configurator.gigevision.cameras:
    src: /etc/ip-configurator/line.yaml

- name: Make them as the task says
  ip_configurator.gigevision.cameras:
    version: 1
    defaults:
      mode: static
      mask: 255.255.255.0
      gateway: none
    adapters:
      line0:
        address: 192.168.10.1/24
    cameras:
      left:
        match:
          adapter: line0
        model: FC-2400M
        address: 192.168.10.21
      right:
        match:
          serial: "24010018"
        mode: dhcp
    unlisted: warn

- name: One camera was swapped, make that place alone
  ip_configurator.gigevision.cameras:
    src: /etc/ip-configurator/line.yaml
    only: [left]
"""

RETURN = r"""
cameras:
  description:
    - What C(ip-configurator-cli apply --json) prints, a dictionary for each place. Empty when the site is wrong.
    - C(Result) is C(ok), C(changed), C(would-change), C(failed), C(put-back), C(missing) or C(not-begun).
    - C(Before) is null of a camera that is missing, C(After) also of one that cannot be asked any more.
  returned: always
  type: list
  elements: dict
  sample:
    - Place: left
      GevMACAddress: 02:1A:2B:00:00:01
      DeviceSerialNumber: "24010017"
      Before: {Mode: dhcp, Address: 192.168.10.104, Mask: 255.255.255.0, Gateway: 0.0.0.0, Name: ""}
      After: {Mode: static, Address: 192.168.10.21, Mask: 255.255.255.0, Gateway: 0.0.0.0, Name: left}
      Changed: true
      Actions: [force, store, configure, name, restart]
      Result: changed
      Reason: ""
diff:
  description: What the cameras had, and what they have or would have, as YAML by place.
  returned: in diff mode
  type: dict
  sample:
    before_header: cameras before
    after_header: cameras after
    before: "left:\n  mode: static\n  address: 192.168.10.20\n"
    after: "left:\n  mode: static\n  address: 192.168.10.21\n"
rc:
  description:
    - The exit status of the command. 1 refused or failed, 2 a wrong site, 3 a camera is missing, 130 interrupted.
  returned: when it failed
  type: int
  sample: 3
"""

import json

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.ip_configurator.gigevision.plugins.module_utils.command import EXECUTABLE, run_command
from ansible_collections.ip_configurator.gigevision.plugins.module_utils.site_file import (
    MEMBERS,
    WrongSite,
    site_of,
    write_site,
)

# Exit statuses of the command.
DONE = 0
SOMETHING_TO_DO = 4  # Of --check alone.

# Results that need no reason.
FINE = ("ok", "changed", "would-change")

SETTINGS = ("Mode", "Address", "Mask", "Gateway", "Name")


def arguments_of(module, path):
    words = ["apply", path, "--json"]
    for place in module.params["only"]:
        words += ["--only", place]
    if module.params["keep_going"]:
        words.append("--keep-going")
    if module.check_mode:
        words.append("--check")
    return words


def yaml_of(cameras, member):
    """What they have as YAML, written here: a station need not have a library for it. JSON texts are YAML texts."""
    lines = []
    for each in cameras:
        settings = each[member]
        lines.append("%s:%s" % (quoted(each["Place"]), "" if settings else " null"))
        for name in SETTINGS if settings else ():
            value = settings[name]
            plain = value if name in ("Mode", "Address", "Mask", "Gateway") else quoted(value)
            lines.append("  %s: %s" % (name.lower(), "null" if value is None else plain))
    return "".join(line + "\n" for line in lines)


def quoted(text):
    return json.dumps(text, ensure_ascii=False)


def diff_of(cameras):
    return {
        "before_header": "cameras before",
        "after_header": "cameras after",
        "before": yaml_of(cameras, "Before"),
        "after": yaml_of(cameras, "After"),
    }


def why_of(cameras, status, errors):
    """Why it failed: of each camera, and then what the command says of all. Its standard error tells of its progress too;
    a command that cannot even begin says why in words of the system's."""
    lines = [
        ": ".join([each["Place"], each["Result"]] + ([each["Reason"]] if each["Reason"] else []))
        for each in cameras
        if each["Reason"] or each["Result"] not in FINE
    ]
    said = [line for line in errors if line.startswith(("error: ", "ip-configurator-cli: "))] or errors
    return "\n".join(lines + said) or "the command ended with status %d and does not say why" % status


def main():
    module = AnsibleModule(
        argument_spec=dict(
            MEMBERS,
            src={"type": "path"},
            only={"type": "list", "elements": "str", "default": []},
            keep_going={"type": "bool", "default": False},
            executable=EXECUTABLE,
        ),
        mutually_exclusive=[("src", name) for name in sorted(MEMBERS)],
        required_one_of=[("src", "cameras")],
        supports_check_mode=True,
    )
    path = module.params["src"]
    if path is None:
        try:
            path = write_site(module, site_of(module.params))
        except WrongSite as wrong:
            module.fail_json(msg=str(wrong), cameras=[])

    status, printed, errors = run_command(module, arguments_of(module, path))
    cameras = printed or []
    for line in errors:
        if line.startswith("warning: "):
            module.warn(line[len("warning: "):])
    result = {"changed": any(each["Changed"] for each in cameras), "cameras": cameras}
    if module._diff:
        result["diff"] = diff_of(cameras)
    if printed is None or status not in ((DONE, SOMETHING_TO_DO) if module.check_mode else (DONE,)):
        module.fail_json(msg=why_of(cameras, status, errors), rc=status, **result)
    module.exit_json(**result)


if __name__ == "__main__":
    main()
