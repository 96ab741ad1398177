# SPDX-License-Identifier: Apache-2.0
"""Three stations, each a network of its own with an SSH server and cameras, set up by ansible-playbook from a controller.

stations_test.py PROGRAMS: the folder with ip-configurator-cli and camera-farm. All of it is in namespaces that this makes,
and ends with them. Runs in with-collection.
"""

import json
import os
import re
import socket
import subprocess
import sys
import time
import unittest

HOME = os.environ["HOME"]  # Nobody else's, and gone afterwards.
PROGRAMS = os.path.abspath(sys.argv.pop(1)) if len(sys.argv) > 1 else ""

SITE = """version: 1
defaults: {mode: static, mask: 255.255.255.0, gateway: none}
adapters:
  line0: {address: 192.168.10.1/24}
cameras:
  left:
    match: {serial: "0017"}
    address: 192.168.10.21
  right:
    match: {serial: "0018"}  # Swapped now and then.
    address: 192.168.10.22
"""

PLAYBOOK = """
- hosts: all
  gather_facts: false
  tasks:
    - name: Make the cameras as the file says
      ip_configurator.gigevision.cameras:
        src: "{{ site }}"
        keep_going: true
        executable: "{{ command }}"
"""


def run(*words, status=0):
    ended = subprocess.run(words, capture_output=True, text=True, timeout=60)
    if ended.returncode != status:
        raise RuntimeError("%s ended with %d: %s" % (words, ended.returncode, ended.stdout + ended.stderr))
    return ended.stdout


def enter_namespaces():
    """The rest happens on a network, with mounts and with processes of its own, which end with the first of them."""
    if os.environ.get("INSIDE_STATIONS") == "1":
        return
    os.environ["INSIDE_STATIONS"] = "1"
    identity = [] if os.geteuid() == 0 else ["--map-root-user"]
    os.execvp("unshare", ["unshare"] + identity + ["--net", "--mount", "--pid", "--fork", "--kill-child",
                                                  "--mount-proc", "/usr/bin/python3", __file__, PROGRAMS])


def in_home(name):
    return os.path.join(HOME, name)


def write(name, text):
    with open(in_home(name), "w") as file:
        file.write(text)
    return in_home(name)


class Station:
    """A computer that the controller reaches at 10.77.0.<number>, with two cameras at line0 and a third in the drawer."""

    def __init__(self, name, number):
        self.name = name
        self.address = "10.77.0.%d" % number
        self.control = in_home(name + ".control")
        self.macs = ["02:00:00:00:%02d:%02d" % (number, i) for i in range(3)]
        self.site = write(name + ".yaml", SITE)
        plant = name + "-plant"
        for space in (name, plant):
            run("ip", "netns", "add", space)
        run("ip", "link", "add", "to-" + name, "type", "veth", "peer", "name", "lan0", "netns", name)
        run("ip", "link", "set", "to-" + name, "master", "lan", "up")
        run("ip", "-netns", name, "link", "add", "line0", "type", "veth", "peer", "name", "cameras", "netns", plant)
        for adapter, address in (("lan0", self.address), ("line0", "192.168.10.1")):
            run("ip", "-netns", name, "addr", "add", address + "/24", "brd", "+", "dev", adapter)
            run("ip", "-netns", name, "link", "set", adapter, "up")
        run("ip", "-netns", name, "link", "set", "lo", "up")
        run("ip", "-netns", plant, "link", "set", "cameras", "up")
        cameras = [{"mac": mac, "serial": serial, "ipConfiguration": "persistent", "address": address,
                    "plugged": serial != "0031"}
                   for mac, serial, address in zip(self.macs, ("0017", "0018", "0031"),
                                                   ("192.168.10.71", "10.9.9.9", "192.168.10.73"))]
        config = write(name + ".json", json.dumps({"cameras": cameras}))
        farm = subprocess.Popen(
            ["ip", "netns", "exec", plant, os.path.join(PROGRAMS, "camera-farm"), "--interface", "cameras",
             "--config", config, "--control", self.control], stdout=subprocess.PIPE, text=True)
        farm.stdout.readline()  # It says that it is ready.
        self.serve_ssh()
        self.processes = [farm, self.server]

    def serve_ssh(self):
        """With a key of its own, which the controller knows."""
        key = in_home(self.name + ".key")
        run("ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", key)
        with open(key + ".pub") as public, open(in_home("known_hosts"), "a") as known:
            known.write("%s %s" % (self.address, public.read()))
        config = write(self.name + ".sshd", "HostKey %s\nAuthorizedKeysFile %s\nListenAddress %s\nStrictModes no\n"
                       "UsePAM no\nPermitRootLogin prohibit-password\nPasswordAuthentication no\nPidFile none\n"
                       "Subsystem sftp internal-sftp\n" % (key, in_home("user.pub"), self.address))
        self.server = subprocess.Popen(["ip", "netns", "exec", self.name, "/usr/sbin/sshd", "-D", "-e", "-f", config],
                                       stderr=subprocess.DEVNULL)
        deadline = time.monotonic() + 30
        while True:
            try:
                return socket.create_connection((self.address, 22), timeout=5).close()
            except OSError:
                if time.monotonic() > deadline:
                    raise
                time.sleep(0.05)

    def send(self, *words):
        return run(os.path.join(PROGRAMS, "camera-farm"), "--control", self.control, "send", *words)

    def camera(self, number):
        return json.loads(self.send("show", self.macs[number]))

    def orders(self):
        """How many of each kind that can change a camera have reached the cameras."""
        return [[self.camera(i)["received"][kind] for kind in ("FORCEIP", "WRITEREG", "WRITEMEM")] for i in range(3)]


class Play:
    """One run of the playbook on all stations: its output, its recap, and what the module gave for each station."""

    number = 0

    def __init__(self, *words):
        Play.number += 1
        results = in_home("results-%d" % Play.number)
        ssh = ("-F none -i %s -o UserKnownHostsFile=%s -o StrictHostKeyChecking=yes -o ConnectTimeout=5 -o ControlMaster=no"
               % (in_home("user"), in_home("known_hosts")))
        environment = dict(os.environ, ANSIBLE_FORKS="3", ANSIBLE_SSH_ARGS=ssh, ANSIBLE_REMOTE_USER="root",
                           ANSIBLE_REMOTE_TEMP=in_home("remote"), ANSIBLE_NOCOLOR="1",
                           ANSIBLE_CALLBACKS_ENABLED="ansible.builtin.tree", ANSIBLE_CALLBACK_TREE_DIR=results)
        command = os.path.join(PROGRAMS, "ip-configurator-cli")
        ended = subprocess.run(["/usr/bin/ansible-playbook", "-i", in_home("inventory"), "--extra-vars",
                                json.dumps({"command": command}), in_home("playbook.yml")] + list(words),
                               env=environment, capture_output=True, text=True, timeout=240)
        self.status = ended.returncode
        self.output = ended.stdout + ended.stderr
        self.recap = {name: {key: int(value) for key, value in re.findall(r"(\w+)=(\d+)", counts)}
                      for name, counts in re.findall(r"^(\w+) +: (ok=.*)$", self.output, re.MULTILINE)}
        self.results = {}
        for name in os.listdir(results):
            with open(os.path.join(results, name)) as file:
                self.results[name] = json.load(file)

    def count(self, what):
        return {name: counts[what] for name, counts in self.recap.items()}

    def outcomes(self, name):
        return [each["Result"] for each in self.results[name]["cameras"]]


class StationsTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        run("mount", "-t", "tmpfs", "tmpfs", "/run")
        os.makedirs("/run/sshd", 0o755)
        # A user without a password is let in by his key; one whose account is locked is not.
        run("mount", "--bind", write("shadow", "root:*:19000:0:99999:7:::\nsshd:*:19000:0:99999:7:::\n"), "/etc/shadow")
        run("ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", in_home("user"))
        run("ip", "link", "set", "lo", "up")
        run("ip", "link", "add", "lan", "type", "bridge", "stp_state", "0", "forward_delay", "0")
        run("ip", "addr", "add", "10.77.0.1/24", "dev", "lan")
        run("ip", "link", "set", "lan", "up")
        self.stations = [Station(name, 11 + i) for i, name in enumerate(("north", "south", "west"))]
        write("playbook.yml", PLAYBOOK)
        write("inventory", "".join("%s ansible_host=%s site=%s\n" % (each.name, each.address, each.site)
                                   for each in self.stations))

    def tearDown(self):
        for station in self.stations:
            for process in station.processes:
                process.terminate()
                process.wait()
            station.processes[0].stdout.close()

    def orders(self):
        return [station.orders() for station in self.stations]

    def test_a_fleet_is_set_up_stays_so_and_each_station_tells_what_fails(self):
        north, south, west = self.stations

        # Check mode with diff says what would change, and sends nothing but questions.
        play = Play("--check", "--diff")
        self.assertEqual(play.status, 0, play.output)
        self.assertEqual(play.count("changed"), {"north": 1, "south": 1, "west": 1})
        self.assertEqual(play.outcomes("south"), ["would-change"] * 2)
        self.assertEqual(play.output.count("-  address: 192.168.10.71\n"), 3, play.output)
        self.assertEqual(play.output.count("+  address: 192.168.10.21\n"), 3, play.output)
        self.assertEqual(self.orders(), [[[0, 0, 0]] * 3] * 3)

        # What was said is done.
        foreseen = {name: [each["After"] for each in result["cameras"]] for name, result in play.results.items()}
        play = Play()
        self.assertEqual(play.status, 0, play.output)
        self.assertEqual(play.count("changed"), {"north": 1, "south": 1, "west": 1})
        self.assertEqual({name: [each["After"] for each in result["cameras"]] for name, result in play.results.items()},
                         foreseen)
        for station in self.stations:
            self.assertEqual([(station.camera(i)["persistent"]["address"], station.camera(i)["userName"]) for i in (0, 1)],
                             [("192.168.10.21", "left"), ("192.168.10.22", "right")])

        # The second time there is nothing to do, and nothing is sent but questions.
        before = self.orders()
        play = Play()
        self.assertEqual(play.status, 0, play.output)
        self.assertEqual(play.count("changed"), {"north": 0, "south": 0, "west": 0})
        self.assertEqual(self.orders(), before)

        # In the north a camera is swapped, in the south one is in use that is to change, the west is to change too.
        north.send("unplug", north.macs[1])
        north.send("plug", north.macs[2])
        south.send("hold", south.macs[0])
        for station in (south, west):
            write(station.name + ".yaml", SITE.replace("192.168.10.21", "192.168.10.31"))
        play = Play()
        self.assertEqual(play.status, 2, play.output)
        self.assertEqual(play.count("failed"), {"north": 1, "south": 1, "west": 0})
        self.assertEqual((play.results["north"]["rc"], play.outcomes("north")), (3, ["ok", "missing"]))
        self.assertIn("right: missing\n", play.results["north"]["msg"])
        self.assertEqual((play.results["south"]["rc"], play.outcomes("south")), (1, ["not-begun", "ok"]))
        self.assertIn("left: not-begun: The camera %s" % south.macs[0], play.results["south"]["msg"])
        self.assertIn("in use", play.results["south"]["msg"])
        self.assertEqual(south.camera(0)["address"], "192.168.10.21")
        self.assertEqual(west.camera(0)["address"], "192.168.10.31")

        # The newcomer is given the place, the other camera is let go, and the west is down.
        run("ip", "netns", "exec", north.name, os.path.join(PROGRAMS, "ip-configurator-cli"), "replace", "right", north.site,
            "--yes")
        south.send("release", south.macs[0])
        run("ip", "link", "set", "to-west", "down")
        play = Play()
        self.assertEqual(play.status, 4, play.output)
        self.assertEqual(play.count("unreachable"), {"north": 0, "south": 0, "west": 1})
        self.assertEqual(play.count("failed"), {"north": 0, "south": 0, "west": 0})
        self.assertEqual(play.outcomes("north"), ["ok", "ok"])
        with open(north.site) as file:
            self.assertEqual(file.read(), SITE.replace("0018", "0031"))
        self.assertEqual((north.camera(2)["address"], north.camera(2)["userName"]), ("192.168.10.22", "right"))
        self.assertEqual(south.camera(0)["address"], "192.168.10.31")


if __name__ == "__main__":
    enter_namespaces()
    unittest.main()
