"""The parts of docs/performance.md that are counted and not timed. Each takes the lines so far and the folder of
the measurements, and adds nothing if its measurement did not run."""
import json


def lines_of(folder, name):
    file = folder / name
    return [line.split() for line in file.read_text().splitlines()] if file.exists() else []


def add_table(out, head, rows):
    out.append("| " + " | ".join(head) + " |")
    out.append("|" + "---|" * len(head))
    out.extend("| " + " | ".join(row) + " |" for row in rows)


def write_covering(out, folder):
    file = folder / "covering.json"
    if not file.exists():
        return
    run = next(r for r in json.loads(file.read_text())["benchmarks"] if "copies" in r)
    out.append(f"\nOf the add-in: {run['copies']:g} `CopyFileW` (to reach: 1) and {run['other_calls']:g} other calls on files "
               f"(to reach: at most 12); {run['read']:.3f} times the file's bytes are read and {run['written']:.3f} times "
               "written.")


JOBS = {
    "receive": ("a frame to the answer's text", "RapidJSON's bare parse of the message"),
    "read": ("an answer's text to its paths", "RapidJSON's bare parse"),
    "write": ("`ToJson`", "RapidJSON's bare writer"),
    "encode": ("UTF-16 to UTF-8", "iconv"),
    "decode": ("UTF-8 to UTF-16", "iconv"),
}


def write_instructions(out, folder):
    counted = {(job, script, variant): int(instructions) / int(size)
               for job, script, variant, size, instructions in lines_of(folder, "instructions.txt")}
    if not counted:
        return
    out.append("\n## Instructions for a megabyte of UTF-8\n\n"
               "Counted by callgrind in the same code built for Linux, so that a busy machine changes nothing. RapidJSON and "
               "its writer convert no text, which the first three rows do.\n")
    rows = []
    for job, (title, peer) in JOBS.items():
        for script in ("Chinese", "Latin"):
            ours, theirs = counted[job, script, "ours"], counted[job, script, "peer"]
            rows.append([title, script, f"{ours:.1f} million", f"**{ours / theirs:.2f}** to {peer}"])
    add_table(out, ["what", "input", "ours", "ratio"], rows)


def write_calls(out, folder):
    rows = lines_of(folder, "calls.txt")
    if not rows:
        return
    names = {"overlapped": "a bare overlapped exchange", "blocking": "a bare blocking exchange"}
    out.append("\n## Calls of Wine's server for a command\n\nThey are what a command's time is made of here.\n")
    add_table(out, ["", "calls", "of them"], [[names.get(kind, kind), total, " ".join(of)] for kind, total, *of in rows])


COUNTS = {
    "objects": "system objects made by a command (to reach: 0)",
    "host_calls": "calls of the host by a command that opens a panel (to reach: 0)",
    "allocations": "allocations by a command",
    "bytes_taken": "bytes taken from the heap for each byte of an answer of 1 MB",
    "bytes_copied": "bytes copied by `memcpy` and `memmove` for each byte of such an answer",
    "host_calls_of_connect": "calls of the host by `ConnectToSW`, 14 items",
}

STATES = {
    "before": "before the DLL is loaded",
    "connected": "connected",
    "1": "after a command",
    "10": "after 10",
    "10000": "after 10,000",
}


def write_counts(out, folder):
    counts, states = {}, {}
    for kind, name, *values in lines_of(folder, "counts.txt"):
        (counts if kind == "count" else states)[name] = values
    if not counts:
        return
    out.append("\n## What the DLL takes\n\nCounted at the functions that the DLL imports, and by the simulated host.\n")
    add_table(out, ["what", "number"], [[title, f"{float(counts[name][0]):.3g}"] for name, title in COUNTS.items()])
    out.append("\n## What commands leave behind\n\n"
               "To reach: after 10,000 commands what was there after 10, and no thread. The process is the simulated host with "
               "a bare pipe server, which has a thread. Its own memory is `RssAnon` of Linux.\n")
    rows = []
    for name, title in STATES.items():
        threads, handles, *memory = states[name]
        rows.append([title, threads, handles] + [f"{int(size):,}" for size in memory])
    add_table(out, ["", "threads", "handles", "bytes in heaps", "own memory of the process",
                    "bytes held by the DLL since it connected"], rows)


def write_memory(out, folder):
    lines = lines_of(folder, "memory.txt")
    if not lines:
        return
    out.append("\n## Memory of an answer of 64 MiB\n\n"
               "To reach: at the peak at most RapidJSON's own for the same text and 4 times the answer's bytes; afterwards "
               "at most RapidJSON's own document.\n")
    rows = []
    for name, size, peak, kept, peer_peak, peer_kept in lines:
        allowed = int(peer_peak) + 4 * int(size)
        rows.append([name] + [f"{int(n) / 2 ** 20:.0f} MiB" for n in (peak, allowed, kept, peer_kept)])
    add_table(out, ["answer", "peak", "allowed", "kept", "RapidJSON keeps"], rows)
