"""Tests examples/fleet.py with an independent computation, bad logs and a cluster.

  fleet_test.py FLEET BUILD FLATC SCHEMA

BUILD has lumo-profile-export. The workers run fleet_export.sh.
"""

import csv, io, itertools, json, math, os, random, re, signal
import stat, subprocess, sys, tempfile, time, unittest

import log_model
import random_logs

FLEET, BUILD, FLATC, SCHEMA = (os.path.realpath(path) for path in sys.argv[1:])
HERE, PATH = os.path.dirname(os.path.realpath(__file__)), os.environ["PATH"]
EXPORT = "lumo-profile-export"
COLUMNS = ["group", *log_model.COLUMNS[2:8], *"logs mean stdev min min_log max max_log".split()]
ILL_FORMATTED = "Verify Profiling Log Buffer failed. The buffer might be ill-formatted"
BAD = {  # log: reason
    "killer": "each worker that read it died",
    "sleeper": f"{EXPORT} took longer than 3 seconds",
    "silent": f"{EXPORT} exited with status 1",
    "crash": f"{EXPORT} was ended by signal 11",
    "status": f"{EXPORT} exited with status 3: one reason",
    "garbage": f"{EXPORT} did not print the expected table",
    "cut": f"{EXPORT} did not print the expected table",
    "mute": f"{EXPORT} exited with status 1",
    "link": "cannot be opened: No such file or directory",
    "pipe": "is a pipe, not a log",
    "empty": ILL_FORMATTED,
    "truncated": ILL_FORMATTED,
    "kind": "the log has no execute run",
    "background": f"{EXPORT} took longer than 3 seconds"}


def make_logs(paths, **shape):
    for i, _ in enumerate(paths):
        random_logs.write(f"new/{i}.json", random_logs.log(**shape or {
            "graphs": random.choice([[0], [0, 1], [2**32, 1, 2]]),
            "runs": random.choice([1, 2, 3, 9]), "speed": random.gauss(1, 0.1)}))
    random_logs.convert(FLATC, SCHEMA, "new")
    for i, path in enumerate(paths):
        os.renames(f"new/{i}.bin", path)
    return paths


class Fleet(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        os.chdir(folder.name)
        os.mkdir("bin")
        os.symlink(f"{HERE}/fleet_export.sh", f"bin/{EXPORT}")
        os.environ.update(PATH=f"{folder.name}/bin:{PATH}", EXPORT=f"{BUILD}/{EXPORT}",
                          FOLDER=folder.name)
        random.seed(15)

    def cluster(self):
        """Starts a scheduler and two workers. Returns the options of fleet.py for them."""
        def start(*command):
            process = subprocess.Popen(
                ["dask", *command, "--scheduler-file", os.path.abspath("scheduler.json")], cwd="/",
                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)
            self.addCleanup(process.wait)
            self.addCleanup(os.killpg, process.pid, signal.SIGKILL)
        start("scheduler", "--host", "127.0.0.1", "--port", "0", "--no-dashboard")
        for _ in range(2):
            start("worker", "--nthreads=1", "--no-dashboard", "--local-directory", os.getcwd())
        while not (os.path.exists("scheduler.json") and os.path.getsize("scheduler.json")):
            time.sleep(0.5)
        with open("scheduler.json", encoding="utf-8") as file:
            return ["--scheduler", json.load(file)["address"]]

    def fleet(self, *arguments, status=0, **streams):
        """Returns standard output and the messages, without host names and this folder."""
        done = subprocess.run([FLEET, *arguments], check=False, timeout=300, **{
            "stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **streams})
        lines = os.fsdecode(done.stderr or b"").replace(os.getcwd() + "/", "").splitlines()
        self.assertEqual(done.returncode, status, lines)
        return done.stdout, [re.sub(r"^fleet.py: | \(on .*\)$", "", line) for line in lines]

    def check_table(self, table, wanted):
        rows = list(csv.reader(io.StringIO(table.decode("latin-1"), newline="")))
        self.assertEqual(rows.pop(0), COLUMNS)
        for row, want in itertools.zip_longest(rows, wanted):
            self.assertEqual(row[:8] + row[10:], want[:8] + want[10:])
            for text, value in zip(row[8:10], want[8:10]):
                self.assertTrue(text == "" if value is None else math.isclose(
                    float(text), value, rel_tol=1e-9, abs_tol=2e-16 * want[8]), (row, want))

    def test_bad_logs(self):
        good = make_logs([f"logs/{i % 7}/{i}.bin" for i in range(60)] + ["logs/x/chatty.bin"])
        bad = {f"logs/{'x' if name == 'kind' else i % 7}/{name}.bin": name
               for i, name in enumerate(BAD)}
        for path, name in bad.items():
            with open(good[0], "rb") as log, open(path, "wb") as copy:
                copy.write(log.read({"empty": 0, "truncated": 999}.get(name, -1)))
            if name in ("link", "pipe"):
                os.unlink(path)
        os.symlink("nowhere", "logs/1/link.bin")
        os.mkfifo("logs/2/pipe.bin")
        make_logs(["logs/x/kind.bin"], runs=0)
        os.mkdir(empty := "no\t\r\x85\u202e\udc9b")
        for scheduler in [], self.cluster():
            table, lines = self.fleet(
                *scheduler, "--timeout=3", "--parts", "logs", empty, status=1)
            missing = [line for line in lines if line.startswith("means missing")]
            self.assertEqual(lines, [
                "no\\t\\x0d\\u0085\\u202e\\x9b: the folder has no logs (files named *.bin)",
                *(f"{path}: {BAD[name]}" for path, name in sorted(bad.items())), *missing,
                f"logs that could not be read: {len(bad)} of {len(good) + len(bad)}"])
            self.check_table(table, log_model.fleet_rows(good, parts=True))

    def test_groups_and_a_killed_worker(self):
        logs = make_logs([f"logs/{'a,β' if i % 3 else 'b'}/{i}.bin" for i in range(60)] +
                         ["logs/b/killer_once.bin", "logs/top.bin"])
        wanted = list(log_model.fleet_rows(logs, lambda path: (path + "//").split("/")[1].replace(
            "top.bin", ""), 2))
        arguments = ["--group", "logs/(.*)/", "--num_warmup", "2", "logs"]
        table, lines = self.fleet(*self.cluster(), *arguments)
        self.assertTrue(os.path.exists("reached"))
        self.check_table(table, wanted)
        self.assertRegex("\n".join(lines), "^logs that do not match .*: 1\nmeans missing .*: [1-9]")
        self.assertEqual(self.fleet(*arguments)[0], table)

    def test_files(self):
        logs = make_logs(["logs/.x/b.bin", "logs/a\n\\.bin", f"logs/{'ö' * 120}.bin"])
        os.link(logs[0], "logs/z.bin")
        os.symlink("b.bin", "logs/.x/c.bin")
        os.symlink("..", "logs/.x/d.bin")
        for name in "logs/.hidden.bin", "logs/log.bin.old", "older":
            with open(name, "w", encoding="utf-8"):
                os.chmod(name, 0o604)
        os.symlink("older", "link")
        if os.getuid() == 0:
            os.chown("older", 1, 1)
        table, _ = self.fleet("logs", "logs/z.bin")
        self.check_table(table, log_model.fleet_rows(logs))
        before = os.stat("older")
        for name in "link", "new":
            self.fleet("--output", name, "logs")
            with open(name, "rb") as file:
                self.assertEqual(file.read(), table)
        self.assertEqual([os.stat("older")[i] for i in (0, 4, 5)], [before[i] for i in (0, 4, 5)])
        self.assertEqual(os.readlink("link"), "older")
        own = "logs/.x/b.bin: the table would be written to the log itself"
        for name in "logs/z.bin", "./logs/../logs/.x/c.bin":
            self.assertEqual(self.fleet("--output", name, "logs", status=1), (b"", [own]))
        with open("logs/z.bin", "ab") as stream:
            self.assertEqual(self.fleet("logs", stdout=stream, status=1)[1], [own])
        os.mkdir("empty")
        self.fleet("logs", "empty", status=1)
        os.truncate(logs[0], 99)
        self.assertEqual(len(self.fleet("logs", status=1)[1]), 2)
        for path in logs:
            os.truncate(path, 99)
        _, lines = self.fleet("logs", status=1)
        self.assertEqual([line[:13] for line in lines], [
            "logs/.x/b.bin", "logs/a\\n\\\\.bi", "logs/öööööööö", "no log could "])

    def test_streams_and_wrong_arguments(self):
        make_logs(["a.bin"])
        try:
            os.mknod("full", 0o20666, os.makedev(1, 7))
        except PermissionError:
            os.symlink("/dev/full", "full")
        for arguments, status, last in (
                ("a.bin >&-", 1, "standard output: Bad file descriptor"),
                ("a.bin >full", 1, "standard output: No space left on device"),
                ("a.bin --output full", 1, "full: No space left on device"),
                ("a.bin --output none/new", 1, "none: No such file or directory"),
                ("a.bin --group 'a.*' 2>&-", 2, None), ("a.bin | cat 2>&-", 0, None),
                ("a.bin --group '('", 2, "--group: missing ), unterminated subpattern"),
                ("a.bin --num_warmup -1", 2, "--num_warmup or --timeout is out of range"),
                ("a.bin --scheduler tcp://127.0.0.1:9", 1, "Timed out"), ("b.bin 2>&-", 1, None)):
            done = subprocess.run(["sh", "-c", f"{FLEET} {arguments}"], capture_output=True)
            lines = done.stderr.decode().splitlines()
            self.assertEqual(done.returncode, status, arguments)
            self.assertTrue(last in lines[-1] if last else not lines, (arguments, lines))
            self.assertTrue(status == 2 or len(lines) < 2, lines)
        self.assertTrue(stat.S_ISCHR(os.stat("full").st_mode))

    def test_termination_leaves_no_process(self):
        make_logs(["a.bin", "sleeper.bin"])

        def session():  # its processes; init may not have collected all dead ones
            ps = ["ps", "-o", "args=", "-s", str(fleet.pid)]
            return re.findall(".*[^>]\n", subprocess.run(ps, capture_output=True, text=True).stdout)
        for number, send in (signal.SIGTERM, os.kill), (signal.SIGINT, os.killpg):  # as Ctrl-C
            fleet = subprocess.Popen([FLEET, "."], stdout=subprocess.PIPE,
                                     stderr=subprocess.PIPE, start_new_session=True)
            while "sleep 66\n" not in session():
                time.sleep(0.1)
            send(fleet.pid, number)
            self.assertEqual(fleet.communicate(timeout=60), (b"", b""))
            self.assertEqual((fleet.returncode, session()), (128 + number, []))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
