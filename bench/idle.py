"""What a program that waits in the tray holds and how often it wakes."""

import collections
import contextlib
import os
import time

MB = 1024 * 1024


def processes_of(pid):
    """The process and its descendants."""
    found = [pid]
    for parent in found:
        with contextlib.suppress(OSError):
            for task in os.listdir(f"/proc/{parent}/task"):
                with open(f"/proc/{parent}/task/{task}/children", encoding="ascii") as f:
                    found += [int(child) for child in f.read().split()]
    return found


def _rollup(pid):
    """What the kernel counts of a process's memory, in bytes."""
    with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as f:
        next(f)  # the range of its addresses
        return {name: int(value.split()[0]) * 1024
                for name, _, value in (line.partition(":") for line in f)}


def memory(pid):
    """Megabytes, summed over the program's processes: all that is mapped and there; that with
    shared pages divided among the machine's processes that map them; of it what is no file's
    (heap, stacks, relocated tables)."""
    sums = collections.Counter()
    for process in processes_of(pid):
        with contextlib.suppress(OSError):
            sums.update(_rollup(process))
    return {"resident": sums["Rss"] / MB, "proportional": sums["Pss"] / MB,
            "anonymous": sums["Pss_Anon"] / MB, "processes": len(processes_of(pid))}


def own_memory(pid):
    """Megabytes of the process alone that are no file's."""
    return _rollup(pid)["Pss_Anon"] / MB


def _switches(pid):
    """For each thread: how often it went to sleep of itself, and how often it was put aside."""
    counts = {}
    for process in processes_of(pid):
        with contextlib.suppress(OSError):
            for task in os.listdir(f"/proc/{process}/task"):
                with open(f"/proc/{process}/task/{task}/status", encoding="utf-8") as f:
                    fields = dict(line.rstrip("\n").split(":\t", 1) for line in f if ":\t" in line)
                counts[task] = (int(fields["voluntary_ctxt_switches"]),
                                int(fields["nonvoluntary_ctxt_switches"]), fields["Name"])
    return counts


def watch(programs, settle, seconds):
    """`programs` are names with process numbers. After `settle` seconds of rest watches them all
    for `seconds`; a wake-up is a sleep that ended, so each voluntary switch is one."""
    time.sleep(settle)
    before = {name: _switches(pid) for name, pid in programs.items()}
    time.sleep(seconds)
    result = {}
    for name, pid in programs.items():
        wakeups, aside, threads = 0, 0, {}
        for task, (voluntary, involuntary, thread) in _switches(pid).items():
            old = before[name].get(task, (0, 0, thread))
            wakeups += voluntary - old[0]
            aside += involuntary - old[1]
            if voluntary > old[0]:
                threads[f"{thread} {task}"] = voluntary - old[0]
        result[name] = {**memory(pid), "wakeups": wakeups, "switches": wakeups + aside,
                        "threads": threads}
    return result
