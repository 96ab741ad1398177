# Copyright: the IP Configurator developers
# GNU General Public License v3.0+ (see https://www.gnu.org/licenses/gpl-3.0.txt)
# SPDX-License-Identifier: Apache-2.0 OR GPL-3.0-or-later

"""A site file from the options of a task."""

from __future__ import absolute_import, division, print_function

__metaclass__ = type

import io
import json
import os
import tempfile

from ansible.module_utils.common.arg_spec import ArgumentSpecValidator
from ansible.module_utils.common.text.converters import to_text

MODES = ["static", "dhcp", "lla"]
MEMBERS = {
    "version": {"type": "int", "choices": [1]},
    "defaults": {
        "type": "dict",
        "options": {
            "mode": {"type": "str", "choices": MODES},
            "mask": {"type": "str"},
            "gateway": {"type": "str"},
        },
    },
    "adapters": {"type": "dict"},
    "cameras": {"type": "dict"},
    "unlisted": {"type": "str", "choices": ["ignore", "warn", "fail"]},
}
# What stands under a name of the user's own, which no argument_spec can tell.
ADAPTER = {"address": {"type": "str"}, "mtu": {"type": "int"}}
PLACE = {
    "match": {
        "type": "dict",
        "required": True,
        "options": {
            "adapter": {"type": "str"},
            "serial": {"type": "str"},
            "mac": {"type": "str"},
            "name": {"type": "str"},
        },
    },
    "model": {"type": "str"},
    "mode": {"type": "str", "choices": MODES},
    "address": {"type": "str"},
    "mask": {"type": "str"},
    "gateway": {"type": "str"},
    "name": {"type": "str"},
}


class WrongSite(Exception):
    """Says which member is wrong, and why."""


def refuse_what_yaml_made_of_words(value, path):
    """A name such as no has become a boolean, and a MAC address of decimal digits a number, before a module sees them:
    what was written is lost."""
    if isinstance(value, dict):
        for key, each in value.items():
            refuse_what_yaml_made_of_words(each, path + [key])
    elif isinstance(value, bool):
        raise WrongSite("%s: YAML takes this for a boolean; put it in quotes" % ".".join(path))
    elif path[-1] == "mac" and not isinstance(value, type(u"")):
        raise WrongSite("%s: YAML takes this for a number; put it in quotes" % ".".join(path))


def without_none(value):
    """Without the options that were not given."""
    if not isinstance(value, dict):
        return value
    return dict((key, without_none(each)) for key, each in value.items() if each is not None)


def checked(group, members, spec):
    """The members of each name in it, of the types that the spec says."""
    result = {}
    for name, value in members.items():
        path = "%s.%s" % (group, name)
        if not isinstance(value, dict):
            raise WrongSite("%s: has to be a dictionary" % path)
        refuse_what_yaml_made_of_words(value, [path])
        validated = ArgumentSpecValidator(spec).validate(value)
        if validated.error_messages:
            raise WrongSite("%s: %s" % (path, "; ".join(validated.error_messages)))
        # A serial number that templating has made a number is a text again.
        result[to_text(name)] = validated.validated_parameters
    return result


def site_of(params):
    """The site that the options of the task say."""
    site = dict((name, params[name]) for name in MEMBERS if params[name] is not None)
    site.setdefault("version", 1)
    for group, spec in (("adapters", ADAPTER), ("cameras", PLACE)):
        if group in site:
            site[group] = checked(group, site[group], spec)
    return without_none(site)


def write_site(module, site):
    """Writes it where only this user can read it, until the module ends. JSON is YAML."""
    handle, path = tempfile.mkstemp(prefix="site-", suffix=".yaml", dir=module.tmpdir)
    module.add_cleanup_file(path)
    with io.open(handle, "w", encoding="utf-8") as file:
        file.write(to_text(json.dumps(site, ensure_ascii=False, indent=2, sort_keys=True)))
    return path
