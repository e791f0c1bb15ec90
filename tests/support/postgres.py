"""A PostgreSQL server of one's own: started by a test or a benchmark, gone with it.

usage: postgres.py COMMAND…   runs the command beside a server, which it finds in PGHOST and PGPORT"""

import contextlib
import os
import pathlib
import pwd
import shutil
import signal
import socket
import subprocess
import sys
import tempfile


class Postgres:
    """On a socket in `folder` everybody is who they say; over TCP a password is asked for."""

    def __init__(self, stack):
        binaries = sorted(pathlib.Path("/usr/lib/postgresql").glob("*/bin"))[-1]
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="brimlo-postgres-"))
        stack.callback(shutil.rmtree, self.folder, ignore_errors=True)
        # The server refuses to run as root.
        self.become = ([], ["runuser", "-u", "postgres", "--"])[os.getuid() == 0]
        if self.become:
            os.chown(self.folder, pwd.getpwnam("postgres").pw_uid, -1)
        self.folder.chmod(0o755)
        data = self.folder / "data"
        subprocess.run([*self.become, binaries / "initdb", "-D", data, "-U", "postgres",
                        "--auth-local=trust", "--auth-host=scram-sha-256", "--no-sync",
                        "--locale=C.UTF-8"],
                       check=True, stdout=subprocess.DEVNULL)
        control = [*self.become, binaries / "pg_ctl", "-D", data, "-w"]
        stack.callback(subprocess.run, [*control, "-m", "immediate", "stop"],
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        for attempts_left in reversed(range(5)):
            with socket.socket() as probe:
                probe.bind(("127.0.0.1", 0))
                self.port = probe.getsockname()[1]
            started = subprocess.run([*control, "-l", self.folder / "log", "-o",
                                      f"-p {self.port} -k {self.folder} -h 127.0.0.1 -F", "start"],
                                     stdout=subprocess.DEVNULL, check=not attempts_left)
            if started.returncode == 0:
                break  # or else another program took the port meanwhile
        self.env = dict(os.environ, PGHOST=str(self.folder), PGPORT=str(self.port),
                        PGUSER="postgres")
        self.sql("ALTER ROLE postgres PASSWORD 'postgres'")

    def sql(self, statement, *options, database="postgres"):
        return subprocess.run(["psql", "-qAtX", "-v", "ON_ERROR_STOP=1", "-d", database, *options,
                               "-c", statement],
                              env=self.env, check=True, capture_output=True).stdout.decode().strip()


def main():
    # Ended from outside, the server is to be stopped all the same.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    with contextlib.ExitStack() as stack:
        server = Postgres(stack)
        return subprocess.run(sys.argv[1:], env=server.env).returncode


if __name__ == "__main__":
    sys.exit(main())
