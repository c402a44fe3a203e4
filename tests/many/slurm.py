"""A Slurm of one node for tests: its daemons run as this user, in a folder of their own, on ports of their own."""
import os
import pwd
import shutil
import socket
import subprocess
import tempfile
import time

TOOLS = ("munged", "slurmctld", "slurmd", "sbatch", "squeue", "scontrol")
SYSTEM = "/usr/sbin:/usr/bin:/sbin:/bin"
PATIENCE = 60                   # seconds for a daemon to come up


def missing():
    """The names of the tools that are not installed."""
    return [tool for tool in TOOLS if shutil.which(tool, path=os.environ["PATH"] + ":" + SYSTEM) is None]


def free_port():
    with socket.socket() as asked:
        asked.bind(("127.0.0.1", 0))
        return asked.getsockname()[1]


class Slurm:
    """A cluster with one node. `env` is what its clients need."""

    def __init__(self):
        # A short path: sockets have no long ones. Munge wants no folder above its own that others may write to.
        self.top = tempfile.mkdtemp(prefix="vs", dir="/run" if os.access("/run", os.W_OK) else None)
        self.daemons = []
        self.env = {"SLURM_CONF": os.path.join(self.top, "slurm.conf"), "PATH": os.environ["PATH"] + ":" + SYSTEM}

    def start(self):
        os.chmod(self.top, 0o755)
        for name in ("state", "spool", "munge"):
            os.mkdir(os.path.join(self.top, name))
        key, munge = os.path.join(self.top, "munge", "key"), os.path.join(self.top, "munge", "socket")
        with open(key, "wb") as file:
            file.write(os.urandom(1024))
        os.chmod(key, 0o600)
        memory = os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") // 2 ** 20
        node = socket.gethostname().split(".")[0]
        user = pwd.getpwuid(os.getuid()).pw_name
        with open(self.env["SLURM_CONF"], "w", encoding="utf-8") as file:
            file.write(f"""ClusterName=test
SlurmctldHost=localhost(127.0.0.1)
SlurmUser={user}
SlurmdUser={user}
SlurmctldPort={free_port()}
SlurmdPort={free_port()}
AuthType=auth/munge
AuthInfo=socket={munge}
CredType=cred/munge
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
SchedulerParameters=batch_sched_delay=0
MpiDefault=none
ReturnToService=2
MailProg=/bin/true
StateSaveLocation={self.top}/state
SlurmdSpoolDir={self.top}/spool
SlurmctldPidFile={self.top}/slurmctld.pid
SlurmdPidFile={self.top}/slurmd.pid
SlurmctldLogFile={self.top}/slurmctld.log
SlurmdLogFile={self.top}/slurmd.log
NodeName=localhost NodeHostname={node} NodeAddr=127.0.0.1 CPUs={os.cpu_count()} RealMemory={memory} State=UNKNOWN
PartitionName=all Nodes=localhost Default=YES MaxTime=INFINITE State=UP
""".replace("SchedulerParameters=batch_sched_delay=0,defer_batch\n", "SchedulerParameters=batch_sched_delay=0\n"))
        self.daemon("munged", "-F", "--force", "--key-file", key, "--socket", munge,
                    "--pid-file", os.path.join(self.top, "munge", "pid"),
                    "--log-file", os.path.join(self.top, "munge", "log"),
                    "--seed-file", os.path.join(self.top, "munge", "seed"))
        self.wait_for(lambda: os.path.exists(munge), "munged")
        self.daemon("slurmctld", "-D")
        self.daemon("slurmd", "-D", "-N", "localhost")
        self.wait_for(lambda: b" idle" in self.run("sinfo", "-h", "-o", " %t"), "the node")

    def daemon(self, *command):
        with open(os.path.join(self.top, command[0] + ".out"), "wb") as out:
            self.daemons.append(subprocess.Popen(command, env={**os.environ, **self.env}, stdin=subprocess.DEVNULL,
                                                 stdout=out, stderr=subprocess.STDOUT, start_new_session=True))

    def run(self, *command):
        """What a client prints."""
        return subprocess.run(command, env={**os.environ, **self.env}, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, timeout=PATIENCE, check=False).stdout

    def wait_for(self, condition, what):
        limit = time.monotonic() + PATIENCE
        while not condition():
            if time.monotonic() > limit or any(daemon.poll() is not None for daemon in self.daemons):
                raise RuntimeError(f"{what} did not come up:\n{self.logs()}")
            time.sleep(0.1)

    def logs(self):
        text = ""
        for folder, _, names in os.walk(self.top):
            for name in names:
                if name.endswith(("log", ".out")):
                    with open(os.path.join(folder, name), encoding="utf-8", errors="replace") as file:
                        text += f"== {name}\n" + file.read()[-4000:]
        return text

    def stop(self):
        """Ends the daemons, the last one first, and removes their folder."""
        self.run("scancel", "--user", str(os.getuid()))
        for daemon in reversed(self.daemons):
            daemon.terminate()
            try:
                daemon.wait(timeout=20)
            except subprocess.TimeoutExpired:
                daemon.kill()
                daemon.wait()
        shutil.rmtree(self.top)
