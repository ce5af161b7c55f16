#!/usr/bin/env python3
"""Runs a benchmark program and prints the medians as a Markdown table, each job beside its bare
work and the ratio of the two.

usage: ratios.py PROGRAM JOB/BARE:BUDGET ...      e.g.  ratios.py BenchTerrain Load/BareRead:3
"""
import json
import subprocess
import sys


def medians(program, job, bare):
    """The two take turns, and nothing else runs in between."""
    run = subprocess.run(
        [program, "--benchmark_format=json", "--benchmark_repetitions=15",
         "--benchmark_enable_random_interleaving=true", "--benchmark_min_time=0.1",
         f"--benchmark_filter=^({job}|{bare})/"],
        check=True, capture_output=True, text=True)
    found = {}
    for row in json.loads(run.stdout)["benchmarks"]:
        if row.get("aggregate_name") == "median":
            found[row["run_name"]] = row["real_time"]
    return found


def main():
    print("| job | size | bare work, ms | job, ms | ratio | budget |")
    print("|---|---|---|---|---|---|")
    for pair in sys.argv[2:]:
        names, budget = pair.split(":")
        job, bare = names.split("/")
        times = medians(sys.argv[1], job, bare)
        for name, time in times.items():
            head, _, argument = name.partition("/")
            if head != job:
                continue
            base = times.get(f"{bare}/{argument}") or times[f"{bare}/{argument.split('/')[0]}"]
            print(f"| {job} | {argument} | {base:.2f} | {time:.2f} | {time / base:.2f} "
                  f"| {budget} |")


main()
