#!/usr/bin/python

# Copyright: the IP Configurator developers
# GNU General Public License v3.0+ (see https://www.gnu.org/licenses/gpl-3.0.txt)
# SPDX-License-Identifier: Apache-2.0 OR GPL-3.0-or-later

from __future__ import absolute_import, division, print_function

__metaclass__ = type

DOCUMENTATION = r"""
module: cameras_info
short_description: Lists the GigE Vision cameras of a station
version_added: 0.1.0
description:
  - Lists every GigE Vision camera that answers on the networks of the station, whatever address it has.
  - Sends nothing but questions.
author:
  - IP Configurator developers (@ip_configurator)
options:
  executable:
    description:
      - The command that finds the cameras, by its name in C(PATH) or by its file.
    type: path
    default: ip-configurator-cli
requirements:
  - ip-configurator-cli on the station
attributes:
  check_mode:
    description: Can run in check mode, and does the same there.
    support: full
seealso:
  - module: ip_configurator.gigevision.cameras
"""

EXAMPLES = r"""
- name: Look for the cameras
  ip_configurator.gigevision.cameras_info:
  register: found

- name: Name those that are out of reach
  ansible.builtin.debug:
    msg: "{{ found.cameras | selectattr('Status', 'equalto', 'Unreachable') | map(attribute='GevMACAddress') }}"
"""

RETURN = r"""
cameras:
  description:
    - What C(ip-configurator-cli list --json) prints, a dictionary for each camera.
    - Of a failure, such as a network that could not be searched, what was found nevertheless.
  returned: always
  type: list
  elements: dict
  sample:
    - DeviceModelName: FC-2400M
      DeviceUserID: left
      DeviceSerialNumber: "24010017"
      GevMACAddress: 02:1A:2B:00:00:01
      GevIPConfigurationStatus: PersistentIP
      GevCurrentIPAddress: 192.168.10.21
      GevCurrentSubnetMask: 255.255.255.0
      GevCurrentDefaultGateway: 0.0.0.0
      Status: Free
      AdapterName: line0
      Conflicts: []
"""

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.ip_configurator.gigevision.plugins.module_utils.command import EXECUTABLE, run_command


def main():
    module = AnsibleModule(argument_spec={"executable": EXECUTABLE}, supports_check_mode=True)
    status, cameras, errors = run_command(module, ["list", "--json"])
    if status != 0 or cameras is None:
        why = "\n".join(errors) or "the command ended with status %d and without a list" % status
        module.fail_json(msg=why, rc=status, cameras=cameras or [])
    module.exit_json(changed=False, cameras=cameras)


if __name__ == "__main__":
    main()
