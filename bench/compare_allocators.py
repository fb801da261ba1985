#!/usr/bin/env python3
"""Turns one JSON run of quorel_allocator_bench into tables.

    quorel_allocator_bench --benchmark_out=alloc.json --benchmark_out_format=json \
        --benchmark_repetitions=3
    bench/compare_allocators.py alloc.json [--stat median|min|mean] [--markdown]

Benchmark names are scenario/allocator/size (the floor is floor/atomics/0).
Every figure is nanoseconds per operation (wall-clock time): per
allocation-plus-release pair, or per 4 KiB string in the string scenario.  In
the two-thread scenario the figure is the time per pair as each thread sees
it.  With repetitions (run without --benchmark_report_aggregates_only) the
statistic of the repetitions is taken, the median by default; on a machine
that other work shares, the minimum is the steadier estimate.  When the file
holds only aggregates, their median is used.

For each scenario one table: a row per size, a column per allocator, then the
ratios quorel/peer (above 1: quorel is slower) and quorel/floor, the floor
being the ten atomic read-modify-writes that quorel's fast path costs at the
least for one pair.
"""

import argparse
import json
import statistics
import sys
from collections import defaultdict

SCENARIOS = [
    ("pair", "one thread, alloc/free pairs"),
    ("pairheld", "one thread, alloc/free pairs, one other block of the class held (fast path from an existing chunk)"),
    ("batch", "one thread, 10,000 allocations then 10,000 frees (ns per pair)"),
    ("twothr", "two threads, pairs on the same size class (ns per pair per thread)"),
    ("prodcons", "producer allocates, consumer frees through an SPSC ring (ns per block)"),
    ("string", "std::basic_string grown char by char to 4096 chars (ns per string)"),
]
PEERS = ["glibc", "mimalloc", "jemalloc", "tcmalloc"]
UNIT_TO_NS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


def ns_per_op(entry):
    time_ns = entry["real_time"] * UNIT_TO_NS[entry.get("time_unit", "ns")]
    pairs = entry.get("pairs_per_iter", 1.0) or 1.0
    return time_ns / pairs


def load(path, statistic):
    with open(path) as handle:
        data = json.load(handle)
    medians = {}
    samples = defaultdict(list)
    for entry in data["benchmarks"]:
        if entry.get("error_occurred"):
            continue
        parts = entry.get("run_name", entry["name"]).split("/")
        if len(parts) < 3:
            continue
        key = (parts[0], parts[1], int(parts[2]))
        if entry.get("run_type") == "aggregate":
            if entry.get("aggregate_name") == "median":
                medians[key] = ns_per_op(entry)
        else:
            samples[key].append(ns_per_op(entry))
    reduce = {"median": statistics.median, "min": min, "mean": statistics.mean}[statistic]
    results = dict(medians)
    results.update({key: reduce(values) for key, values in samples.items()})
    return data.get("context", {}), results


def fmt(value):
    if value is None:
        return "-"
    if value >= 100:
        return f"{value:.0f}"
    if value >= 10:
        return f"{value:.1f}"
    return f"{value:.2f}"


def ratio(numerator, denominator):
    if numerator is None or denominator is None or denominator == 0:
        return "-"
    return f"{numerator / denominator:.2f}x"


def render(rows, markdown):
    widths = [max(len(row[i]) for row in rows) for i in range(len(rows[0]))]
    lines = []
    for index, row in enumerate(rows):
        cells = [cell.rjust(widths[i]) if i else cell.ljust(widths[i]) for i, cell in enumerate(row)]
        lines.append(("| " + " | ".join(cells) + " |") if markdown else "  ".join(cells))
        if index == 0:
            if markdown:
                lines.append("|" + "|".join("-" * (w + 2) for w in widths) + "|")
            else:
                lines.append("  ".join("-" * w for w in widths))
    return "\n".join(lines)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("json", help="output of --benchmark_out=FILE --benchmark_out_format=json")
    parser.add_argument("--stat", choices=["median", "min", "mean"], default="median",
                        help="statistic over the repetitions of a benchmark (default: median)")
    parser.add_argument("--markdown", action="store_true", help="print Markdown tables")
    arguments = parser.parse_args()

    context, results = load(arguments.json, arguments.stat)
    floor = results.get(("floor", "atomics", 0))
    allocators = ["quorel"] + [peer for peer in PEERS if any(key[1] == peer for key in results)]
    peers = allocators[1:]

    print(f"host: {context.get('host_name', '?')}, {context.get('num_cpus', '?')} CPUs, "
          f"{context.get('mhz_per_cpu', '?')} MHz, load {context.get('load_avg', '?')}")
    if floor is not None:
        print(f"floor (10 atomic RMWs on private cache lines, one pair): {fmt(floor)} ns")
    print(f"figures: ns per operation ({arguments.stat} of the repetitions); "
          "ratios quorel/other, above 1 means quorel is slower")

    for scenario, title in SCENARIOS:
        sizes = sorted({key[2] for key in results if key[0] == scenario})
        if not sizes:
            continue
        header = ["size"] + allocators + [f"q/{peer}" for peer in peers]
        if scenario != "string":
            header.append("q/floor")
        rows = [header]
        for size in sizes:
            values = {name: results.get((scenario, name, size)) for name in allocators}
            row = [str(size)] + [fmt(values[name]) for name in allocators]
            row += [ratio(values["quorel"], values[peer]) for peer in peers]
            if scenario != "string":
                row.append(ratio(values["quorel"], floor))
            rows.append(row)
        print()
        print(f"{scenario}: {title}")
        print(render(rows, arguments.markdown))
    return 0


if __name__ == "__main__":
    sys.exit(main())
