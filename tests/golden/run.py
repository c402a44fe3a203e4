#!/usr/bin/env python3
"""Runs whole dialogues on a program and compares everything that it leaves, byte for byte.

    run.py BINARY [CASE...]         all cases, or those of these names or patterns
    run.py --rewrite [CASE...]      write the expected files anew from the twin, never from the program; review the diff

Cases stand in files THEME/NAME.case; cases.py tells how to read and write one. Exit status 0 when every run passes,
1 when one fails, 2 on wrong use.
"""
import argparse
import fnmatch
import os
import shutil
import sys
import tempfile

sys.dont_write_bytecode = True
import cases                                                                    # noqa: E402
import jobs                                                                     # noqa: E402

HERE = os.path.dirname(os.path.abspath(__file__))
TWIN = os.path.join(os.path.dirname(HERE), "twin", "twin.py")
TWIN_RUN_TIME = {"TWIN_RUN_TIME": "0.0123456789"}       # shows its notation plainly: 0.0123457 or 0.012346


def parse():
    parser = argparse.ArgumentParser(description="Run whole dialogues and compare everything that they leave.")
    parser.add_argument("binary", nargs="?", help="the program (not with --rewrite)")
    parser.add_argument("cases", nargs="*", metavar="CASE", help="names or patterns of cases (all)")
    parser.add_argument("--threads", default="1,3", metavar="N,N", help="thread counts of the answers (1,3)")
    parser.add_argument("--shake", action="store_true", help="the stand-ins of the outside tools wait at random")
    parser.add_argument("--overlap", action="store_true", help="the stand-ins bear several calls at once")
    parser.add_argument("--limit", type=float, default=20.0, metavar="S", help="time limit of one run (20)")
    parser.add_argument("--rewrite", action="store_true", help="write the expected files anew from the twin")
    parser.add_argument("--list", action="store_true", help="print the names of the cases and end")
    parser.add_argument("--table", action="store_true", help="print file, name and pins of the cases and end")
    args = parser.parse_intermixed_args()
    if args.rewrite or args.list or args.table:
        args.cases = [name for name in [args.binary] if name] + args.cases
    elif not args.binary or not os.access(args.binary, os.X_OK) or os.path.isdir(args.binary):
        parser.error("no such program: %s" % args.binary)
    args.groups = cases.all_cases()
    known = list(args.groups)
    patterns = args.cases or ["*"]
    args.chosen = [name for name in known if any(fnmatch.fnmatchcase(name, pattern) for pattern in patterns)]
    for pattern in patterns:
        if not fnmatch.filter(known, pattern):
            parser.error("no case of the name " + pattern)
    return args


def run_case(program, group, case, place, threads, limit, extra=(), may_overlap=False):
    job = os.path.join(place, "case")
    shutil.rmtree(job, ignore_errors=True)
    group.lay_out(case, job)
    return jobs.run_job(program, job, os.path.join(place, "run"), threads, limit, extra, may_overlap)


def rewrite(group, place, limit):
    lefts = {}
    for row in group.rows:
        left = run_case(TWIN, group, row["case"], place, 1, limit, TWIN_RUN_TIME)
        if b"Traceback" in left.get("stderr", b""):
            sys.exit("%s: the twin failed\n%s" % (row["case"], left["stderr"].decode("latin-1")))
        lefts[row["case"]] = left
    group.rewrite(lefts)
    print("wrote " + os.path.relpath(group.path), flush=True)


def check(args, case, threads, place):
    """Run one case with one thread count; True when all is as expected."""
    binary, group = os.path.abspath(args.binary), args.groups[case]
    left = run_case(binary, group, case, place, threads, args.limit, {"STAND_IN_SHAKE": "1"} if args.shake else {},
                    args.overlap)
    wanted = group.expected(case)
    names = jobs.differences(wanted, left)
    print("%s %s, threads %d" % ("FAIL" if names else "pass", case, threads), flush=True)
    if not names:
        return True
    kept = os.path.join(place, "%s-%d" % (case, threads))
    jobs.keep(os.path.join(kept, "expected"), wanted)
    jobs.keep(os.path.join(kept, "found"), left)
    print("pins: %s (%s)\n%s\nfiles: %s (expected, found)\nagain: python3 %s %s %s --threads %d%s\n"
          % (group.pins(case), os.path.relpath(group.path), jobs.describe(wanted, left, names), kept,
             os.path.join(HERE, "run.py"), binary, case, threads,
             " --shake" * args.shake + " --overlap" * args.overlap))
    return False


def main():
    args = parse()
    if args.list:
        print("\n".join(args.chosen))
        return 0
    if args.table:
        for case in args.chosen:
            group = args.groups[case]
            print("%-44s %-34s %s" % (os.path.relpath(group.path, HERE), case, group.pins(case)))
        return 0
    place = os.path.realpath(tempfile.mkdtemp(prefix="golden-"))
    failed = 0
    try:
        if args.rewrite:
            for group in {args.groups[case].path: args.groups[case] for case in args.chosen}.values():
                rewrite(group, place, args.limit)
            return 0
        results = [check(args, case, int(threads), place)
                   for case in args.chosen for threads in args.threads.split(",")]
        failed = results.count(False)
        print("%d passed, %d failed" % (len(results) - failed, failed))
    finally:
        for rest in [os.path.join(place, "run"), os.path.join(place, "case")] if failed else [place]:
            shutil.rmtree(rest, ignore_errors=True)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
