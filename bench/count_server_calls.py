#!/usr/bin/env python3
"""Prints how often a thread called Wine's server for each of COUNT commands, by name of the call.

usage: count_server_calls.py KIND COUNT THREAD TRACE

TRACE is the server's trace (WINEDEBUG=+server) of a program that creates the events bench-begin and bench-end around
its commands. Each call is there twice, as request and as reply.
"""
import collections
import re
import sys

kind, count, thread, trace = sys.argv[1], int(sys.argv[2]), sys.argv[3], sys.argv[4]
calls = collections.Counter()
inside = False
with open(trace, errors="replace") as lines:
    for line in lines:
        if 'name=L"bench-begin"' in line:
            inside = True
        elif 'name=L"bench-end"' in line:
            break
        elif inside and (call := re.match(rf"{thread}: (\w+)\(", line)):
            calls[call[1]] += 1
per_command = {name: round(number / 2 / count, 1) for name, number in calls.most_common() if number > count}
total = sum(calls.values()) / 2 / count
print(f"{kind} {total:.1f} " + ", ".join(f"{name} {number:g}" for name, number in per_command.items()))
