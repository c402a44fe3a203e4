"""Jobs that call outside tools: the answers, and stand-ins that write what the real ones would."""
import os
import random
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "golden"))
import jobs                                                                     # noqa: E402  pylint: disable=C0413


def answers(folder, names, output_format, output_type="All", threads=2):
    """The dialogue for these files: three best matches, no collection, tree and merging."""
    files = "".join(f"{name}\n10\n" for name in names)
    return (f"{len(names)}\n3\n3\n0.75\n{threads}\n{folder}/motifs/\n{files}14\nY\nY\n{output_type}\n{output_format}\n"
            f"{folder}/result/\n")


def motif_text(count):
    """So many motifs that match one another here and there."""
    chance = random.Random(count)
    return "".join(f">m{number}\n{''.join(chance.choices('ACGT', k=8))}\n\n" for number in range(count)).encode()


def install_tools(folder, weblogo=jobs.WEBLOGO, php5=jobs.PHP5, rscript=jobs.RSCRIPT, may_overlap=True):
    """Puts these stand-ins where a job in the folder finds them, with the promise that their calls may overlap."""
    jobs.write(os.path.join(folder, "motifs/weblogo-3.4/weblogo"), weblogo.encode(), 0o755)
    jobs.write(os.path.join(folder, "bin/php5"), php5.encode(), 0o755)
    jobs.write(os.path.join(folder, "bin/Rscript"), rscript.encode(), 0o755)
    for name in ("motifs/weblogo-3.4/calls-may-overlap", "prince-calls-may-overlap") if may_overlap else ():
        jobs.write(os.path.join(folder, name), b"")


def tool_environment(folder):
    """The environment in which the stand-ins are found and leave a list of their calls."""
    return dict(os.environ, PATH=os.path.join(folder, "bin") + os.pathsep + os.environ.get("PATH", os.defpath),
                STAND_IN_CALLS=os.path.join(folder, "calls"), STAND_IN_PDF="1", OMP_WAIT_POLICY="passive",
                OMP_NUM_THREADS="8")
