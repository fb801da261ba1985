#!/usr/bin/env python3
"""Prints quorel's throughput relative to its peers from one text benchmark run.

Usage:
    quorel_text_bench --benchmark_format=json > run.json
    python3 bench/compare_text.py [--best] run.json

Benchmark names are "<operation>/<implementation>/<text>/<size>".  For every
operation, text and size the table shows quorel's throughput (UTF-8 bytes per
second) and the ratio quorel / peer for ICU, iconv and Qt: above 1.00 quorel is
faster.  A ratio below 1.00 is marked with '*'.

With --benchmark_repetitions=N each benchmark's throughput is the median of
its repetitions, or with --best the highest, which is the steadier figure on a
machine that is busy with other work (add
--benchmark_enable_random_interleaving=true so that such work hits all
candidates alike).  Aggregate rows in the output are ignored.
"""

import json
import statistics
import sys

PEERS = ("icu", "iconv", "qt")
OPERATIONS = ("UTF8to16", "UTF16to8", "UpperCase", "FoldCase")
TEXTS = ("ascii", "latin", "cjk", "mixed")


def load(path, best):
    with open(path, encoding="utf-8") as stream:
        data = json.load(stream)
    samples = {}
    for entry in data["benchmarks"]:
        if entry.get("run_type", "iteration") != "iteration":
            continue
        parts = entry.get("run_name", entry["name"]).split("/")
        if len(parts) != 4 or "bytes_per_second" not in entry:
            continue
        operation, implementation, text, size = parts
        key = ((operation, text, int(size)), implementation)
        samples.setdefault(key, []).append(entry["bytes_per_second"])
    return {key: (max(values) if best else statistics.median(values)) for key, values in samples.items()}


def size_name(size):
    if size >= 1 << 20:
        return "%dMiB" % (size >> 20)
    if size >= 1 << 10:
        return "%dKiB" % (size >> 10)
    return "%dB" % size


def main(argv):
    arguments = argv[1:]
    best = "--best" in arguments
    paths = [argument for argument in arguments if argument != "--best"]
    if len(paths) != 1:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    rates = load(paths[0], best)
    keys = sorted({key for key, _ in rates},
                  key=lambda k: (OPERATIONS.index(k[0]) if k[0] in OPERATIONS else 99,
                                 TEXTS.index(k[1]) if k[1] in TEXTS else 99, k[2]))
    header = "%-10s %-6s %-6s %10s" % ("operation", "text", "size", "quorel MB/s")
    header += "".join(" %9s" % ("/" + peer) for peer in PEERS)
    print(header)
    print("-" * len(header))
    below = 0
    for key in keys:
        own = rates.get((key, "quorel"))
        if own is None:
            continue
        line = "%-10s %-6s %-6s %10.0f" % (key[0], key[1], size_name(key[2]), own / 1e6)
        for peer in PEERS:
            other = rates.get((key, peer))
            if other is None:
                line += " %9s" % "-"
                continue
            ratio = own / other
            mark = "*" if ratio < 1.0 else " "
            below += ratio < 1.0 and peer == "icu"
            line += " %8.2f%s" % (ratio, mark)
        print(line)
    print("\nquorel below ICU in %d of %d cases" % (below, len(keys)))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
