#!/usr/bin/python3
"""start.py [--keep] [COMMAND…]: starts LinuxCNC with the welding arm, waits until it answers, runs the command and ends
LinuxCNC when that has ended. Without a command LinuxCNC runs until ctrl-C, SIGTERM or the end of the caller. The exit status is the command's.

LinuxCNC runs in a copy of the folder cell, which it writes to; --keep leaves the copy and its log there. There is one
LinuxCNC on a machine at a time. It must not run as root: started by root, it runs as LUMO_LINUXCNC_USER ("nobody")."""
import fcntl
import json
import os
import pathlib
import pwd
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
CELLS = [HERE / "cell", HERE.parent / "share/lumo/linuxcnc/cell"]  # in a checkout; installed
PROC = pathlib.Path("/proc")
LOCK = pathlib.Path("/tmp/lumo-linuxcnc.lock")
LINUXCNCS_LOCK = pathlib.Path("/tmp/linuxcnc.lock")
PORT = int(os.environ.get("LUMO_LINUXCNC_PORT", "5100"))
# Keys of LinuxCNC's shared memory: of HAL and RTAPI, of the buffers in arm.nml, of motion and its errors.
SEGMENTS = {0x48414C32, 0x48484C34, 0x48414C34, 0x00280A48, 0x90280A48, 1001, 1002, 1003, 1004, 1005, 100, 101}
START_LIMIT_S = 30
END_LIMIT_S = 5
CANNOT_START = 3


class Failure(Exception):
    pass


def hurry(priority, thread=0):
    """On a machine with other work the servo thread goes first, then LinuxCNC, then the command, where that is allowed
    (root, or a user with rtprio in limits.conf): else beats come late, and the outputs are switched off."""
    try:
        os.sched_setscheduler(thread, os.SCHED_RR, os.sched_param(priority))
    except OSError:
        pass


def take_lock():
    """The open lock file. It says which LinuxCNC was started last."""
    try:
        file = os.fdopen(os.open(LOCK, os.O_RDWR | os.O_CREAT | os.O_NOFOLLOW, 0o600), "r+")
        fcntl.flock(file, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except OSError as problem:
        raise Failure(f"LinuxCNC runs already: {LOCK} cannot be taken ({problem.strerror})") from problem
    return file


def is_ours(process, session, folder, user):
    """Whether a process belongs to the LinuxCNC of that session, folder and user. rtapi_app has a session of its own
    and no arguments that tell; its saved user is the one that started it."""
    fields = (process / "stat").read_text().rpartition(")")[2].split()
    if fields[0] == "Z":
        return False
    if int(fields[3]) == session or folder.encode() in (process / "cmdline").read_bytes():
        return True
    users = next(line for line in (process / "status").read_text().splitlines() if line.startswith("Uid:")).split()
    return (process / "comm").read_text().strip() == "rtapi_app" and int(users[3]) == user


def remains(last):
    for process in PROC.glob("[0-9]*"):
        try:
            if int(process.name) != os.getpid() and is_ours(process, last["session"], last["folder"], last["user"]):
                yield int(process.name)
        except OSError:
            continue  # ended meanwhile


def end_remains(last):
    """Ends what is left of a LinuxCNC: first asked to, then killed."""
    for word in (signal.SIGTERM, signal.SIGKILL):
        for process in remains(last):
            try:
                os.kill(process, word)
            except OSError:
                pass
        end = time.monotonic() + 1
        while any(remains(last)) and time.monotonic() < end:
            time.sleep(0.02)
    for line in pathlib.Path("/proc/sysvipc/shm").read_text().splitlines()[1:]:
        key, number, _, _, _, _, attached, owner, *_ = line.split()
        if int(key) in SEGMENTS and int(owner) == last["user"] and attached == "0":
            subprocess.run(["ipcrm", "-m", number], check=False)
    LINUXCNCS_LOCK.unlink(missing_ok=True)


def clean_up_after_crash(lock):
    recorded = lock.read()
    boot = pathlib.Path("/proc/sys/kernel/random/boot_id").read_text().strip()
    if recorded:
        last = json.loads(recorded)
        if last["boot"] == boot:
            end_remains(last)
            shutil.rmtree(last["folder"], ignore_errors=True)
    if LINUXCNCS_LOCK.exists():
        raise Failure(f"LinuxCNC runs already, or has left {LINUXCNCS_LOCK} behind: end it and remove that file")
    return boot


def record(lock, text):
    lock.seek(0)
    lock.truncate()
    lock.write(text)
    lock.flush()


class LinuxCnc:
    def __init__(self, lock):
        self.lock = lock
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lumo-linuxcnc-"))
        self.log = self.folder / "linuxcnc.log"
        self.process = None
        self.user = os.geteuid()
        self.recorded = {}

    def start(self, boot):
        shutil.copytree(next(cell for cell in CELLS if cell.is_dir()), self.folder, dirs_exist_ok=True)
        command = ["linuxcnc", "-r", str(self.folder / "cell.ini")]
        if os.geteuid() == 0:
            user = os.environ.get("LUMO_LINUXCNC_USER", "nobody")
            self.give_to(user)
            command = ["runuser", "-u", user, "--", "env", f"HOME={self.folder}", *command]
        environment = {**os.environ, "HOME": str(self.folder), "PYTHONDONTWRITEBYTECODE": "1",
                       "LUMO_LINUXCNC_PORT": str(PORT)}
        environment.pop("DISPLAY", None)
        hurry(2)
        with open(self.log, "w", encoding="utf-8") as log:
            self.process = subprocess.Popen(command, cwd=self.folder, env=environment, stdin=subprocess.DEVNULL,
                                            stdout=log, stderr=log, start_new_session=True)
        self.recorded = {"boot": boot, "session": self.process.pid, "folder": str(self.folder), "user": self.user}
        record(self.lock, json.dumps(self.recorded))
        self.wait_for_ports()

    def give_to(self, user):
        try:
            account = pwd.getpwnam(user)
        except KeyError:
            raise Failure(f"there is no user {user} to run LinuxCNC (LUMO_LINUXCNC_USER)") from None
        self.user = account.pw_uid
        for path in [self.folder, *self.folder.rglob("*")]:
            os.chown(path, account.pw_uid, account.pw_gid)

    def wait_for_ports(self):
        """Ends when both programs listen, when LinuxCNC ends, or after START_LIMIT_S."""
        end = time.monotonic() + START_LIMIT_S
        waiting = {PORT, PORT + 1, PORT + 2}
        while waiting:
            if self.process.poll() is not None or time.monotonic() > end:
                raise Failure(f"LinuxCNC did not start:\n{self.log_end()}")
            waiting -= listening(waiting)
            time.sleep(0.02)
        for process in remains(self.recorded):
            # Without a realtime kernel LinuxCNC makes its servo thread an ordinary one.
            if (PROC / str(process) / "comm").read_text().strip() == "rtapi_app":
                for thread in (PROC / str(process) / "task").iterdir():
                    hurry(3, int(thread.name))

    def log_end(self):
        return "\n".join(self.log.read_text(encoding="utf-8", errors="replace").splitlines()[-12:])

    def stop(self, keep):
        for word in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            signal.signal(word, signal.SIG_IGN)
        if self.process:
            try:
                os.kill(int((self.folder / "motion.pid").read_text()), signal.SIGTERM)
            except (OSError, ValueError):
                pass  # it has ended
            try:
                self.process.wait(END_LIMIT_S)
            except subprocess.TimeoutExpired:
                pass
            end_remains(self.recorded)
            self.process.wait()
            record(self.lock, "")
        if keep:
            print(f"kept {self.folder}", file=sys.stderr)
        else:
            shutil.rmtree(self.folder, ignore_errors=True)


def listening(ports):
    """Those of the ports of 127.0.0.1 that a program listens on. Connecting would take a client's place."""
    found = set()
    for line in pathlib.Path("/proc/net/tcp").read_text().splitlines()[1:]:
        _, local, _, state, *_ = line.split()
        address, port = local.split(":")
        if state == "0A" and address == f"{int.from_bytes(socket.inet_aton('127.0.0.1'), 'little'):08X}":
            found.add(int(port, 16))
    return found & ports


def run(command):
    """Runs the command and passes signals on; without one waits for a signal."""
    if not command:
        print(f"LinuxCNC answers on 127.0.0.1, ports {PORT} to {PORT + 2}", flush=True)
        parent = os.getppid()
        while os.getppid() == parent:
            time.sleep(0.1)
        return 0
    hurry(1)
    process = subprocess.Popen(command)
    for word in (signal.SIGTERM, signal.SIGHUP):
        signal.signal(word, lambda number, _: process.send_signal(number))
    signal.signal(signal.SIGINT, signal.SIG_IGN)  # the terminal sends it to the command, too
    status = process.wait()
    return status if status >= 0 else 128 - status


def main(arguments):
    keep = arguments[:1] == ["--keep"]
    if not shutil.which("linuxcnc"):
        raise Failure("LinuxCNC is not installed: apt-get install --no-install-recommends linuxcnc-uspace")
    for word in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(word, lambda number, _: sys.exit(128 + number))
    with take_lock() as lock:
        boot = clean_up_after_crash(lock)
        linuxcnc = LinuxCnc(lock)
        try:
            linuxcnc.start(boot)
            return run(arguments[keep:])
        finally:
            linuxcnc.stop(keep)


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv[1:]))
    except Failure as failure:
        print(f"linuxcnc: {failure}", file=sys.stderr)
        sys.exit(CANNOT_START)
