# Copyright: the IP Configurator developers
# GNU General Public License v3.0+ (see https://www.gnu.org/licenses/gpl-3.0.txt)
# SPDX-License-Identifier: Apache-2.0 OR GPL-3.0-or-later

"""How the modules run ip-configurator-cli, and what they read from it."""

from __future__ import absolute_import, division, print_function

__metaclass__ = type

import json

EXECUTABLE = {"type": "path", "default": "ip-configurator-cli"}


def run_command(module, words):
    """Runs it with these words, without a shell: its exit status, the list that it printed as JSON (None when it
    printed none), and the lines that it wrote to standard error. Ends the module when there is no such command."""
    command = module.get_bin_path(module.params["executable"], required=True)
    status, output, errors = module.run_command(
        [command] + words, environ_update={"LANG": "C.UTF-8", "LC_ALL": "C.UTF-8"}
    )
    try:
        printed = json.loads(output)
    except ValueError:
        printed = None
    lines = [line for line in errors.splitlines() if line.strip()]
    return status, printed if isinstance(printed, list) else None, lines
