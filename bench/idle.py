"""What a program that waits in the tray holds and how often it wakes."""

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


def memory(pid):
    """Megabytes, summed over the program's processes: all that is mapped and there; that with
    shared pages divided among the machine's processes that map them; of it what is no file's
    (heap, stacks, relocated tables)."""
    sums = {"Rss": 0, "Pss": 0, "Pss_Anon": 0}
    for process in processes_of(pid):
        with contextlib.suppress(OSError), \
                open(f"/proc/{process}/smaps_rollup", encoding="ascii") as f:
            for line in f:
                name, _, value = line.partition(":")
                if name in sums:
                    sums[name] += int(value.split()[0]) * 1024
    return {"resident": sums["Rss"] / MB, "proportional": sums["Pss"] / MB,
            "anonymous": sums["Pss_Anon"] / MB, "processes": len(processes_of(pid))}


def own_memory(pid):
    """Megabytes of the process alone that are no file's."""
    with open(f"/proc/{pid}/smaps_rollup", encoding="ascii") as f:
        return next(int(line.split()[1]) for line in f if line.startswith("Pss_Anon:")) / 1024


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
