#!/usr/bin/env python3
"""Writes docs/performance.md from what the measurements left in a folder.

usage: report.py FOLDER FILE

Each measurement ran several times, in turns with its peers. A row gives the median of the turns' ratios, ours to the
peer's, and the smallest and largest of them: how much the machine changes them.
"""
import collections
import datetime
import json
import os
import pathlib
import platform
import re
import statistics
import sys

from report_counts import write_calls, write_counts, write_covering, write_instructions, write_memory

# Row: first part of the benchmarks' names, what it is, peer to compare with, what to reach, further peers.
ROWS = [
    ("enable", "an enable method by name: `GetIDsOfNames` and `Invoke`", "system", "at most 0.02", []),
    ("read", "an answer read: text to `CJsonObject` to the paths that a command reads", "system", "at most 0.9",
     ["rapidjson", "nlohmann"]),
    ("write", "`ToJson` of an object", "system", "at most 0.9", ["rapidjson"]),
    ("encode", "UTF-16 to UTF-8", "system", "below 1", []),
    ("decode", "UTF-8 to UTF-16", "system", "below 1", []),
    ("native_encode", "UTF-16 to UTF-8, the same code built for Linux", "iconv", "below 1", []),
    ("native_decode", "UTF-8 to UTF-16, the same code built for Linux", "iconv", "below 1", []),
    ("large", "a frame of 64 MiB over the pipe, received and parsed", "bare", "at most 1.5", []),
    ("command", "a command over the pipe", "overlapped", "at most 1.3", ["blocking"]),
    ("properties", "custom properties", "bare", "at most 1.3", []),
    ("connect", "`CoCreateInstance` to the end of `ConnectToSW`, 14 items", "bare", "warm 1.5, cold 2", []),
    ("covering", "covering a component's file with a download, which is copied once", "copy", "at most 1.05", []),
]

PEERS = {
    "system": "the system's functions",
    "rapidjson": "RapidJSON without conversion",
    "nlohmann": "nlohmann/json without conversion",
    "iconv": "iconv of the GNU C library",
    "bare": "the bare calls",
    "copy": "one `CopyFileW` of the file",
    "overlapped": "a bare overlapped exchange",
    "blocking": "a bare blocking exchange",
}


def measured(folder):
    """(row, input) -> variant -> nanoseconds of each turn; and bytes per second of ours."""
    times = collections.defaultdict(lambda: collections.defaultdict(list))
    for file in sorted(folder.glob("*.json")):
        for run in json.loads(file.read_text())["benchmarks"]:
            if run["run_type"] != "iteration" or run.get("error_occurred"):
                continue
            parts = run["name"].split("/")
            while parts[-1] in ("real_time", "manual_time") or parts[-1].startswith(("iterations:", "repeats:")):
                parts.pop()
            row, *middle, variant = parts
            factor = {"ns": 1, "us": 1e3, "ms": 1e6}[run["time_unit"]]
            entry = times[row, "/".join(middle)][variant]
            entry.append((run["repetition_index"], run["real_time"] * factor, run.get("bytes_per_second")))
    return times


def natural(name):
    """Sorts 1KB, 100KB, 10MB, and 10, 1000, by size."""
    units = {"": 1, "KB": 1e3, "MB": 1e6}
    sizes = [re.fullmatch(r"(\d+)(KB|MB|)", part) for part in name.split("/")]
    return [(1, int(size[1]) * units[size[2]], "") if size else (0, 0, part)
            for size, part in zip(sizes, name.split("/"))]


def in_turns(entry):
    return [time for _, time, _ in sorted(entry, key=lambda turn: turn[0])]


def ratio(ours, peer):
    ratios = [a / b for a, b in zip(in_turns(ours), in_turns(peer))]
    return statistics.median(ratios), min(ratios), max(ratios), len(ratios)


def shown(nanoseconds):
    for unit, factor in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= factor:
            return f"{nanoseconds / factor:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def write_row(out, times, row, title, peer, goal, others):
    inputs = sorted((name for r, name in times if r == row), key=natural)
    if not inputs:
        out.append(f"\n## {title}\n\nNot measured in this run.\n")
        return
    out.append(f"\n## {title}\n\nAgainst {PEERS[peer]}; to reach: {goal}.\n")
    head = ["input", "ours", f"ratio to {PEERS[peer]} (smallest to largest)"] + [f"to {PEERS[o]}" for o in others]
    out.append("| " + " | ".join(head) + " |")
    out.append("|" + "---|" * len(head))
    for name in inputs:
        variants = times[row, name]
        cells = [name or "–", shown(statistics.median(in_turns(variants["ours"])))]
        rate = [r for _, _, r in variants["ours"] if r]
        if rate and row.endswith(("encode", "decode")):
            cells[1] += f", {statistics.median(rate) / 1e9:.2f} GB/s"
        for other in [peer] + others:
            if other not in variants:
                cells.append("–")
                continue
            middle, low, high, turns = ratio(variants["ours"], variants[other])
            cells.append(f"**{middle:.3g}** ({low:.3g} to {high:.3g}, {turns} turns)" if other == peer
                         else f"{middle:.3g} ({low:.3g} to {high:.3g})")
        out.append("| " + " | ".join(cells) + " |")


def plot(times, row, peers, target):
    """Ratios over sizes, as SVG: one line for each script and peer."""
    sizes = ["1KB", "100KB", "10MB"]
    lines = []
    for script in ("Latin", "Chinese"):
        for peer in peers:
            points = []
            for size in sizes:
                variants = times.get((row, f"{script}/{size}"), {})
                if "ours" in variants and peer in variants:
                    points.append(ratio(variants["ours"], variants[peer])[:3])
            if len(points) == len(sizes):
                lines.append((script, peer, points))
    if not lines:
        return False
    width, height, left, bottom, top = 640, 360, 60, 50, 30
    highest = max(high for _, _, points in lines for _, _, high in points) * 1.1
    x = lambda index: left + 60 + index * (width - left - 220) / (len(sizes) - 1)
    y = lambda value: height - bottom - value / highest * (height - bottom - top)
    colours = ["#1b6ca8", "#c0392b", "#2e8b57", "#8e44ad", "#d68910", "#555555"]
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" font-family="sans-serif" font-size="12">',
             f'<rect width="{width}" height="{height}" fill="white"/>']
    step = 0.5 if highest > 1.5 else 0.25
    for tick in range(int(highest / step) + 1):
        value = tick * step
        parts.append(f'<line x1="{left}" x2="{width - 150}" y1="{y(value):.1f}" y2="{y(value):.1f}" stroke="#dddddd"/>'
                     f'<text x="{left - 8}" y="{y(value) + 4:.1f}" text-anchor="end">{value:g}</text>')
    parts.append(f'<line x1="{left}" x2="{width - 150}" y1="{y(1):.1f}" y2="{y(1):.1f}" stroke="#888888" stroke-dasharray="4 3"/>')
    for index, size in enumerate(sizes):
        parts.append(f'<text x="{x(index):.1f}" y="{height - bottom + 20}" text-anchor="middle">{size}</text>')
    for number, (script, peer, points) in enumerate(lines):
        colour = colours[number % len(colours)]
        path = " ".join(f"{x(index):.1f},{y(point[0]):.1f}" for index, point in enumerate(points))
        parts.append(f'<polyline points="{path}" fill="none" stroke="{colour}" stroke-width="2"/>')
        for index, (middle, low, high) in enumerate(points):
            parts.append(f'<line x1="{x(index):.1f}" x2="{x(index):.1f}" y1="{y(low):.1f}" y2="{y(high):.1f}" stroke="{colour}"/>'
                         f'<circle cx="{x(index):.1f}" cy="{y(middle):.1f}" r="3" fill="{colour}"/>')
        parts.append(f'<text x="{width - 140}" y="{top + 16 * number + 10}" fill="{colour}">{script}, {peer}</text>')
    parts.append(f'<text x="{left}" y="18">time, ours to the peer\'s</text></svg>')
    target.parent.mkdir(parents=True, exist_ok=True)
    target.write_text("\n".join(parts) + "\n")
    return True


def machine():
    cpu = next((line.split(":")[1].strip() for line in open("/proc/cpuinfo") if line.startswith("model name")), "unknown")
    return f"{os.cpu_count()} cores of {cpu}, {platform.system()} {platform.release().split('-')[0]}, Wine"


def main():
    folder, target = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    times = measured(folder)
    date = datetime.date.fromtimestamp(max((f.stat().st_mtime for f in folder.glob("*.json")), default=0))
    out = ["# Performance", "",
           "Written by `./dev bench`. Every figure is a ratio to something that does the same job, measured in the same run "
           "on the same input; ours and its peers took turns. Real Windows was not there to measure on.", "",
           f"Machine: {machine()}. Date: {date}.", "",
           "Ratios are medians of the turns, with the smallest and the largest in brackets. Below 1 is faster than the peer."]
    for row in ROWS:
        write_row(out, times, *row)
        if row[0] in ("read", "write"):
            picture = target.parent / "pictures" / f"performance-{row[0]}.svg"
            if plot(times, row[0], [row[2]] + row[4], picture):
                out.append(f"\n![ratios over sizes](pictures/{picture.name})")
        if row[0] == "covering":
            write_covering(out, folder)
    write_instructions(out, folder)
    write_calls(out, folder)
    write_counts(out, folder)
    write_memory(out, folder)
    size = pathlib.Path(sys.argv[3]).stat().st_size
    out.append(f"\n## The DLL\n\n{size:,} bytes; its debug information is in a file beside it. To keep: under 1.5 MB.")
    out.append("\n" + (pathlib.Path(__file__).parent / "notes.md").read_text(encoding="utf-8").strip())
    target.write_text("\n".join(out) + "\n", encoding="utf-8")


main()
