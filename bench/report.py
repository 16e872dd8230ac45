"""The numbers, as a table and as JSON."""

import math
import os
import platform
import statistics
import subprocess

PACKAGES = ("libqt6core6", "at-spi2-core", "dbus", "xvfb", "openbox", "xfce4-panel", "mousepad",
            "xterm", "sxhkd", "xsel", "curl", "qt6-gtk-platformtheme",
            "xfce4-clipman", "copyq", "espeak-ng", "pulseaudio")


def median(values):
    return statistics.median(values)


def p95(values):
    return percentile(values, 95)


def p99(values):
    return percentile(values, 99)


def percentile(values, percent):
    """The smallest value that so many of 100 do not exceed."""
    return sorted(values)[math.ceil(percent / 100 * len(values)) - 1]


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as f:
        model = next((line.split(":", 1)[1].strip() for line in f
                      if line.startswith("model name")), platform.machine())
    with open("/etc/os-release", encoding="utf-8") as f:
        system = next(line.split("=", 1)[1].strip().strip('"') for line in f
                      if line.startswith("PRETTY_NAME="))
    listed = subprocess.run(["dpkg-query", "-W", "-f=${Package} ${Version}\n", *PACKAGES],
                            capture_output=True, text=True, check=False).stdout
    versions = dict(line.split(" ", 1) for line in listed.splitlines() if " " in line)
    return {"cpu": model, "cores": os.cpu_count(), "kernel": platform.release(), "system": system,
            "packages": versions}


def load():
    return os.getloadavg()[0]


def verdict(value, aim, unit, form="{:g}"):
    mark = "met" if value < aim else "SHORT"
    return f"aim below {form.format(aim)}{unit}: {mark}"


def row(name, values, note=""):
    """Values are seconds; printed as milliseconds."""
    print(f"  {name:<30}{median(values) * 1000:>9.1f}{p95(values) * 1000:>9.1f}  {note}".rstrip(),
          flush=True)


def head(title, *columns):
    print(f"\n{title:<32}" + "".join(f"{column:>9}" for column in columns), flush=True)


def column(samples, key):
    return [sample[key] for sample in samples]
