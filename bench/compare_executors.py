#!/usr/bin/env python3
"""Turns one JSON run of quorel_executor_bench into tables of ratios.

    quorel_executor_bench --benchmark_out=exec.json --benchmark_out_format=json \
        --benchmark_repetitions=3
    bench/compare_executors.py exec.json [--markdown]

Throughput is calls per second (items_per_second); the ratio quorel/peer is
above 1 where quorel takes more calls per second.  Round trips are
microseconds per call; the ratio peer/quorel is above 1 where quorel answers
sooner.  With repetitions the median is taken.
"""

import argparse
import json
import re
import statistics
from collections import defaultdict

PEERS = ["AsioPool", "TbbPool", "MutexQueuePool"]
UNIT_TO_US = {"ns": 1e-3, "us": 1.0, "ms": 1e3, "s": 1e6}


def load(path):
    with open(path) as handle:
        entries = json.load(handle)["benchmarks"]
    samples = defaultdict(list)
    for entry in entries:
        if entry.get("run_type") == "aggregate":
            continue
        match = re.match(r"(\w+)<(\w+)>(?:/workers:(\d+)/producers:(\d+))?", entry["name"])
        if not match:
            continue
        kind, peer, workers, producers = match.groups()
        if kind == "Throughput":
            samples[(kind, peer, int(workers), int(producers))].append(entry["items_per_second"])
        else:
            samples[(kind, peer, 0, 0)].append(entry["real_time"] * UNIT_TO_US[entry.get("time_unit", "ns")])
    return {key: statistics.median(values) for key, values in samples.items()}


def table(rows, header, markdown):
    if markdown:
        print("| " + " | ".join(header) + " |")
        print("|" + "---|" * len(header))
        for row in rows:
            print("| " + " | ".join(row) + " |")
    else:
        widths = [max(len(str(cell)) for cell in column) for column in zip(header, *rows)]
        for row in [header] + rows:
            print("  ".join(str(cell).rjust(width) for cell, width in zip(row, widths)))
    print()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("json")
    parser.add_argument("--markdown", action="store_true")
    args = parser.parse_args()
    figures = load(args.json)

    print("Throughput of immediate calls (million calls/s; ratio quorel/peer)\n")
    rows = []
    shapes = sorted({(w, p) for kind, _, w, p in figures if kind == "Throughput"})
    for workers, producers in shapes:
        quorel = figures.get(("Throughput", "QuorelPool", workers, producers))
        row = [f"{workers} worker(s), {producers} producer(s)", f"{quorel / 1e6:.2f}"]
        for peer in PEERS:
            value = figures.get(("Throughput", peer, workers, producers))
            row.append(f"{value / 1e6:.2f} ({quorel / value:.2f}x)" if value and quorel else "-")
        rows.append(row)
    table(rows, ["shape", "quorel"] + PEERS, args.markdown)

    print("Round trip of one call to a single thread (us; ratio peer/quorel event loop)\n")
    loop = figures.get(("RoundTrip", "QuorelEventLoop", 0, 0))
    rows = []
    for peer in ["QuorelEventLoop", "QuorelPool"] + PEERS:
        value = figures.get(("RoundTrip", peer, 0, 0))
        if value is not None:
            rows.append([peer, f"{value:.2f}", f"{value / loop:.2f}" if loop else "-"])
    table(rows, ["executor", "us per call", "ratio"], args.markdown)


if __name__ == "__main__":
    main()
