"""The command-line client, from outside: nura_fs_test.py PATH_TO_NURA_FS"""
import json
import os
import pty
import subprocess
import sys
import tempfile
import unittest

CLIENT = os.path.abspath(sys.argv.pop())


class Client(unittest.TestCase):
    def setUp(self):
        self.root = self.enterContext(tempfile.TemporaryDirectory())
        os.makedirs(self.at("été/文"))
        for name in ("++", "=", "-x", "été/文/x.tar.gz"):
            with open(self.at(name), "w") as file:
                file.write("12345")
        for name, target in (("link", "été"), ("dangling", "gone"), ("loop", "loop")):
            os.symlink(target, self.at(name))
        self.environment = {**os.environ, "HOME": self.root, "TERM": "xterm"}
        self.environment.pop("NO_COLOR", None)

    def at(self, name):
        return os.path.join(self.root, name)

    def run_client(self, *arguments, given=b"", **options):
        done = subprocess.run([CLIENT, *arguments], cwd=self.root, env=self.environment, timeout=60,
                              **(options or {"capture_output": True, "input": given}))
        return done.returncode, (done.stdout or b"").decode(), (done.stderr or b"").decode()

    def objects(self, *arguments, given=b""):
        return [json.loads(line) for line in self.run_client(*arguments, given=given)[1].splitlines()]

    def run_in_terminal(self, *arguments, answer=b""):
        try:
            master, terminal = pty.openpty()
        except OSError as failure:
            self.skipTest(f"no terminal to be had: {failure}")
        os.write(master, answer)
        done = self.run_client(*arguments, stdin=terminal, stdout=terminal, stderr=terminal)
        os.close(terminal)
        shown = os.read(master, 9999)
        os.close(master)
        return done[0], shown

    def test_steps(self):
        other = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
        away = self.enterContext(tempfile.TemporaryDirectory(dir=other))
        for step in (
                "0 create-directory d; 0 create-directories p/q/r; 18 create-directories ++/q; "
                "0 permissions 640 ++; 0 permissions --add 4001 ++; 0 permissions --remove 40 ++; "
                "2 permissions 64x =; 0 create-symlink ++ p/l; 2 create-symlink --type x a b; "
                "0 copy-symlink p/l p/m; 12 create-shortcut a b; 11 copy --update --overwrite p c; "
                "0 copy --recursive --copy-symlinks p c; 0 copy-file ++ y; 21 copy-file ++ y; "
                "0 copy-file --overwrite = y; 0 copy-directory été e; "
                f"0 rename --preserve-times p {away}/p; 0 read-symlink {away}/p/m > ++; "
                "18 remove --type directory ++; 0 remove y; 20 remove-file e; 0 remove-directory e; "
                "0 remove-symlink c/l; 19 remove-directory c; 0 access --read ++ > yes  ++; "
                "0 equivalent link été > yes  link -> été; 1 exists link gone > yes  link\nno   gone; "
                f"2 completion x; 17 space no; 0 cwd link > {self.root}/été; 0 unc -0 \n > \n\0; "
                f"0 canonical link/文 > {self.root}/été/文; 0 relative link --base été/文 > ..; "
                "0 absolute --base /b ../x > /b/../x; 2 exists --frob link; 2 frob; 2 exists; "
                f"0 weakly-canonical link/../z/../w > {self.root}/w; 23 status ++/x loop \udce9; "
                "1 status-light link/文 ~").split("; "):
            command, _, answer = step.partition(" > ")
            status, *arguments = command.split(" ")
            done = self.run_client(*arguments)
            self.assertEqual(int(status), done[0], (step, done))
            if answer:
                self.assertEqual(answer + ("" if "\0" in answer else "\n"), done[1])
        self.assertEqual(0o4601, os.stat(self.at("++")).st_mode & 0o7777)
        self.assertEqual("nura-fs create-symlink: '++' -> 'link': file exists [FileExistsError]\n",
                         self.run_client("create-symlink", "++", "link")[2])

    def test_names(self):
        for options, given, names in (
                (["--", "--", "-x"], b"", ["--", "-x"]), (["-"], b"a\n\n++", ["a", "", "++"]),
                (["-0", "-"], b"a\nb\0link\0", ["a\nb", "link"]), (["-"], b"\xe9\n", [None])):
            found = self.objects("exists", "--json", "gone", *options, given=given)
            self.assertEqual(["gone", *names], [each["path"] for each in found])
        self.assertIn(r"1: '\xE9'", found[1]["error"]["description"])

    def test_answers(self):
        os.chmod(self.at("++"), 0o5640)
        os.utime(self.at("++"), ns=(0, -2_000))
        for command, name, expected in (
                ("symlink-status", "++", {
                    "type": "regular file", "permissions": "5640", "size": 5,
                    "permission_letters": "rwSr----T", "access_time": "1970-01-01T00:00:00.000000Z",
                    "modification_time": "1969-12-31T23:59:59.999998Z"}),
                ("explain", "link/文", {"elements": [
                    {"element": "link", "found": "symbolic link", "target": "été",
                     "leads_to": "directory"}, {"element": "文", "found": "directory"}]}),
                ("status-light", "loop", {"error": {
                    "type": "SystemError", "kind": 13, "message_id": "nura:filesystem:SystemError",
                    "pathname": "loop", "other_pathnames": [""], "error_number": 40,
                    "description": "'loop': too many levels of symbolic links [SystemError 40]"}})):
            (found,) = self.objects(command, "--json", name)
            self.assertEqual(expected, {key: found[key] for key in expected})

    def test_remove_all(self):
        # Without --yes nothing happens to the root should the guard fail.
        for names in (["/", "..", "."], ["--yes", "~", "été/文/../..", "/proc/self/cwd"]):
            status, _, err = self.run_client("remove-all", *names)
            self.assertEqual((2, 3), (status, err.count("never removed")), names)
        for answer, status in ((b"no\n", 2), (b"y\n", 0), (b"y\n", 17)):
            self.assertEqual(status, self.run_in_terminal("remove-all", "été", answer=answer)[0])
            self.assertEqual(status == 2, os.path.exists(self.at("été")))

    def test_completion_and_suggestions(self):
        script = self.run_client("completion", "bash")[1] + (
            'COMP_CWORD=$(($# - 1)) COMP_WORDS=("$@")\n_nura_fs nura-fs "${@: -1}" "${@: -2:1}"\n'
            'echo "${COMPREPLY[@]}"')
        done = subprocess.run(["bash", "-c", script, "bash", "nura-fs", "remove", "--type", ""],
                              capture_output=True, text=True)
        self.assertEqual(("file directory\n", ""), (done.stdout, done.stderr))
        self.assertIn("'exsits': did you mean 'exists'?\n", self.run_client("exsits", "x")[2])

    def test_lost_output(self):
        for arguments in (["exists", "/"], ["--version"]):
            with open("/dev/full", "wb") as full:
                status, _, err = self.run_client(*arguments, stdout=full, stderr=subprocess.PIPE)
            self.assertEqual((3, True), (status, "No space left" in err))

    def test_colour_on_terminals_only(self):
        for option, variable, coloured in (("-0", "A", True), ("--json", "A", False),
                                           ("-0", "NO_COLOR", False)):
            self.environment[variable] = ""
            shown = self.run_in_terminal("status", option, "/", "/dev/null/x")[1]
            self.assertEqual(coloured, b"\033[" in shown)


unittest.main()
