# SPDX-License-Identifier: Apache-2.0
"""The modules, on a command that says what each test has it say."""

import json
import os
import subprocess
import sys
import tempfile
import unittest

MODULES = os.path.join(os.environ["COLLECTION"], "plugins", "modules")

# Notes how it is called and what is in the site file, and says what it is told to.
COMMAND = """#!/usr/bin/python3
import json, os, sys
folder = os.path.dirname(os.path.abspath(__file__))
noted = {"words": sys.argv[1:]}
if sys.argv[1] == "apply":
    noted["site"] = open(sys.argv[2], encoding="utf-8").read()
    noted["mode"] = oct(os.stat(sys.argv[2]).st_mode & 0o777)
with open(folder + "/noted", "w") as file:
    json.dump(noted, file)
with open(folder + "/told") as file:
    told = json.load(file)
print(told["output"])
print(told["errors"], file=sys.stderr)
sys.exit(told["status"])
"""


def settings(address, mode="static", name="left"):
    mask = "255.255.255.0" if address else None
    return {"Mode": mode, "Address": address, "Mask": mask, "Gateway": address and "0.0.0.0", "Name": name}


def outcome(place, result, reason="", before=settings("192.168.10.20"), after=settings("192.168.10.21")):
    return {"Place": place, "GevMACAddress": "02:00:00:00:00:01", "DeviceSerialNumber": "0017",
            "Before": before, "After": after, "Changed": result in ("changed", "would-change", "failed"),
            "Actions": [], "Result": result, "Reason": reason}


class ModuleCase(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.command = os.path.join(self.folder, "command")
        with open(self.command, "w") as file:
            file.write(COMMAND)
        os.chmod(self.command, 0o755)
        self.tell([])

    def tell(self, output, status=0, errors=""):
        """What the command is to say."""
        output = output if isinstance(output, str) else json.dumps(output)
        with open(os.path.join(self.folder, "told"), "w") as file:
            json.dump({"output": output, "status": status, "errors": errors}, file)

    def run_module(self, name, check=False, diff=False, path=None, **options):
        options.setdefault("executable", self.command)
        options.update(_ansible_check_mode=check, _ansible_diff=diff, _ansible_tmpdir=self.folder)
        environment = dict(os.environ, PATH=path or os.environ["PATH"])
        ended = subprocess.run(["/usr/bin/python3", os.path.join(MODULES, name + ".py")], env=environment,
                               input=json.dumps({"ANSIBLE_MODULE_ARGS": options}),
                               capture_output=True, text=True, timeout=60)
        self.assertEqual(ended.stderr, "")
        return json.loads(ended.stdout)

    def noted(self):
        with open(os.path.join(self.folder, "noted")) as file:
            return json.load(file)


class CamerasTest(ModuleCase):
    def refused(self, **options):
        """What the module says of wrong options; the command was not run."""
        result = self.run_module("cameras", **options)
        self.assertTrue(result["failed"])
        self.assertFalse(os.path.exists(os.path.join(self.folder, "noted")))
        return result["msg"]

    def test_a_file_on_the_station_is_named_to_the_command_word_by_word(self):
        self.tell([outcome("left", "changed"), outcome("right", "ok")])
        path = self.folder + "/a file; $(false) `x`.yaml"
        with open(path, "w") as file:
            file.write("version: 1\n")
        result = self.run_module("cameras", src=path, only=["left", "; rm *"], keep_going=True)
        self.assertEqual(self.noted()["words"],
                         ["apply", path, "--json", "--only", "left", "--only", "; rm *", "--keep-going"])
        self.assertTrue(result["changed"])
        self.assertEqual([each["Place"] for each in result["cameras"]], ["left", "right"])
        self.assertNotIn("diff", result)
        self.assertTrue(os.path.exists(path))

    def test_members_become_a_file_for_this_user_alone_that_is_gone_afterwards(self):
        for status in (0, 1):
            self.tell([outcome("links ü", "ok")], status=status)
            result = self.run_module(
                "cameras", defaults={"mode": "static", "mask": "255.255.255.0", "gateway": "none"},
                adapters={"line0": {"address": "192.168.10.1/24", "mtu": "9000"}},
                cameras={"links ü": {"match": {"adapter": "line0"}, "address": "192.168.10.21"}}, unlisted="fail")
            self.assertEqual("failed" in result, status == 1)
            noted = self.noted()
            self.assertEqual(json.loads(noted["site"]), {
                "version": 1,
                "defaults": {"mode": "static", "mask": "255.255.255.0", "gateway": "none"},
                "adapters": {"line0": {"address": "192.168.10.1/24", "mtu": 9000}},
                "cameras": {"links ü": {"match": {"adapter": "line0"}, "address": "192.168.10.21"}},
                "unlisted": "fail"})
            self.assertIn("links ü", noted["site"])  # Not as JSON's halves of characters, which YAML does not know.
            self.assertEqual(noted["mode"], "0o600")
            self.assertFalse(os.path.exists(noted["words"][1]))

    def test_a_serial_number_that_templating_made_a_number_is_a_text(self):
        self.run_module("cameras", cameras={"left": {"match": {"serial": 24010018}, "mode": "dhcp"}})
        self.assertIn('"serial": "24010018"', self.noted()["site"])

    def test_what_yaml_made_of_words_is_refused(self):
        self.assertEqual(self.refused(cameras={"left": {"match": {"name": False}}}),
                         "cameras.left.match.name: YAML takes this for a boolean; put it in quotes")
        self.assertEqual(self.refused(cameras={"left": {"match": {"mac": 7812345678}}}),
                         "cameras.left.match.mac: YAML takes this for a number; put it in quotes")

    def test_a_member_of_a_place_or_adapter_that_there_is_not_is_refused(self):
        self.assertRegex(self.refused(cameras={"left": {"match": {"serial": "1"}, "adress": "10.0.0.1"}}),
                         r"^cameras\.left: adress\. Supported parameters include: address,")
        self.assertRegex(self.refused(cameras={"left": {"match": {"port": "1"}}}), r"^cameras\.left: match\.port\.")
        self.assertEqual(self.refused(cameras={"left": {"mode": "dhcp"}}),
                         "cameras.left: missing required arguments: match")
        self.assertRegex(self.refused(cameras={"left": {"match": {"serial": "1"}, "mode": "bootp"}}),
                         r"^cameras\.left: value of mode must be one of: static, dhcp, lla")
        self.assertRegex(self.refused(cameras={}, adapters={"line0": {"speed": 1}}), r"^adapters\.line0: speed\.")
        self.assertEqual(self.refused(cameras={"left": "10.0.0.1"}), "cameras.left: has to be a dictionary")

    def test_check_mode_asks_only_and_says_what_would_change(self):
        self.tell([outcome("left", "would-change"),
                   outcome("right", "ok", before=settings("192.168.10.22"), after=settings("192.168.10.22"))],
                  status=4, errors="error: 1 camera would change.")
        result = self.run_module("cameras", check=True, diff=True, cameras={})
        self.assertEqual(self.noted()["words"][2:], ["--json", "--check"])
        self.assertTrue(result["changed"])
        self.assertNotIn("failed", result)
        self.assertEqual(result["diff"]["before"].splitlines()[:6],
                         ['"left":', "  mode: static", "  address: 192.168.10.20", "  mask: 255.255.255.0",
                          "  gateway: 0.0.0.0", '  name: "left"'])
        self.assertEqual(result["diff"]["before"].replace("192.168.10.20", "192.168.10.21"), result["diff"]["after"])
        self.assertEqual(result["diff"]["before_header"], "cameras before")

    def test_check_mode_of_what_is_right_changes_nothing(self):
        self.tell([outcome("left", "ok")])
        result = self.run_module("cameras", check=True, cameras={})
        self.assertFalse(result["changed"])
        self.assertNotIn("failed", result)

    def test_a_diff_shows_cameras_that_are_missing_and_addresses_that_are_not_known(self):
        self.tell([outcome("left", "missing", "No camera.", before=None, after=None),
                   outcome("right", "would-change", after=settings(None, "dhcp", "right"))], status=3)
        diff = self.run_module("cameras", check=True, diff=True, cameras={})["diff"]
        self.assertEqual(diff["after"], '"left": null\n"right":\n  mode: dhcp\n  address: null\n  mask: null\n'
                                        '  gateway: null\n  name: "right"\n')

    def test_something_to_do_is_a_failure_unless_it_was_only_asked(self):
        self.tell([outcome("left", "would-change")], status=4)
        self.assertTrue(self.run_module("cameras", cameras={})["failed"])

    def test_a_failure_says_of_each_camera_why_and_what_became_of_it(self):
        for status in (1, 3, 130):
            for check in (False, True):
                self.tell([outcome("left", "put-back", "Writing 0x064C: write protected."), outcome("right", "not-begun")],
                          status=status, errors="note: a hint\nleft: put back\nip-configurator-cli: Put back: 1 of 2.")
                result = self.run_module("cameras", check=check, cameras={})
                self.assertTrue(result["failed"])
                self.assertEqual(result["rc"], status)
                self.assertFalse(result["changed"])
                self.assertEqual(result["msg"], "left: put-back: Writing 0x064C: write protected.\nright: not-begun\n"
                                                "ip-configurator-cli: Put back: 1 of 2.")
                self.assertEqual([each["Result"] for each in result["cameras"]], ["put-back", "not-begun"])

    def test_a_failure_that_changed_a_camera_says_so(self):
        self.tell([outcome("left", "changed"), outcome("right", "put-back", "It refused.")], status=1)
        self.assertTrue(self.run_module("cameras", cameras={})["changed"])

    def test_a_wrong_file_is_told_with_line_and_column(self):
        self.tell("", status=2, errors="error: line.yaml:3:5: unknown member")
        result = self.run_module("cameras", src="/dev/null")
        self.assertEqual((result["failed"], result["rc"], result["cameras"], result["msg"]),
                         (True, 2, [], "error: line.yaml:3:5: unknown member"))

    def test_a_command_that_prints_no_list_has_failed(self):
        for output in ("", "no JSON", '{"Place": "left"}'):
            self.tell(output)
            result = self.run_module("cameras", cameras={})
            self.assertTrue(result["failed"])
            self.assertEqual(result["msg"], "the command ended with status 0 and does not say why")
        self.tell("", status=127, errors="librzcamera.so: cannot open shared object file")
        self.assertEqual(self.run_module("cameras", cameras={})["msg"],
                         "librzcamera.so: cannot open shared object file")

    def test_warnings_of_the_command_are_warnings_of_the_task(self):
        self.tell([outcome("left", "ok")], errors="warning: 02:00:00:00:00:09 belongs to no place\nnote: a hint")
        self.assertEqual(self.run_module("cameras", cameras={})["warnings"], ["02:00:00:00:00:09 belongs to no place"])

    def test_a_file_and_members_exclude_each_other_and_one_has_to_be_given(self):
        self.assertIn("mutually exclusive: src|cameras", self.refused(src="/x", cameras={}))
        self.assertIn("mutually exclusive: src|version", self.refused(src="/x", version=1))
        self.assertIn("one of the following is required: src, cameras", self.refused())

    def test_the_command_is_found_by_path_and_named_where_it_is_missing(self):
        os.rename(self.command, os.path.join(self.folder, "ip-configurator-cli"))
        self.run_module("cameras", path=self.folder + ":/usr/bin:/bin", executable="ip-configurator-cli", src="/dev/null")
        self.assertEqual(self.noted()["words"], ["apply", "/dev/null", "--json"])
        os.remove(os.path.join(self.folder, "noted"))
        self.assertIn("/nowhere/command", self.refused(cameras={}, executable="/nowhere/command"))


class CamerasInfoTest(ModuleCase):
    def test_it_gives_the_list_and_changes_nothing_in_check_mode_either(self):
        cameras = [{"GevMACAddress": "02:00:00:00:00:01", "DeviceSerialNumber": "0017"}]
        for check in (False, True):
            self.tell(cameras)
            result = self.run_module("cameras_info", check=check)
            self.assertEqual(self.noted()["words"], ["list", "--json"])
            self.assertEqual((result["changed"], result["cameras"]), (False, cameras))

    def test_a_list_of_some_networks_only_is_a_failure_that_has_it(self):
        self.tell([{"GevMACAddress": "02:00:00:00:00:01"}], status=1, errors="error: line1 could not be searched")
        result = self.run_module("cameras_info")
        self.assertEqual((result["failed"], result["rc"], result["msg"], len(result["cameras"])),
                         (True, 1, "error: line1 could not be searched", 1))


if __name__ == "__main__":
    unittest.main()
