"""Prints the figures of a benchmark run as ratios to their peers.

    ratios.py RESULTS.json

Figures are medians of the repetitions, in nanoseconds: of processor time, or of real time where
another process does the work that is compared. A row is left out where the run has not measured
one of its two sides.
"""

import json
import sys

# What is measured, its peer, the ratio to be reached, and nanoseconds that may come on top.
ROWS = (
    ("conversion_ours", "conversion_string", "<= 1.25", 0),
    ("conversion_standard", "conversion_ours", ">= 12", 0),
    ("conversion_scripts_ours", "conversion_scripts_iconv", "<= 1.15", 40),
    ("native_form_clean", "native_form_copy", "<= 1.35", 0),
    ("native_form_dirty", "native_form_copy", "<= 1.9", 0),
    ("parent_ours", "parent_find_last_of", "<= 1", 0),
    ("filename_ours", "filename_find_last_of", "<= 1", 0),
    ("walk_iterator", "walk_find", "<= 1.05", 0),
    ("walk_strings_ours", "walk_strings_find", "<= 1.05", 0),
    ("exists_path/1", "bare_stat/1", "<= 1", 60),
    ("exists_path/0", "bare_stat/0", "<= 1", 60),
    ("exists_string/1", "bare_stat/1", "<= 1", 60),
    ("exists_string/0", "bare_stat/0", "<= 1", 60),
    ("status_path/1", "bare_stat/1", "<= 1", 60),
    ("status_path/0", "bare_stat/0", "<= 1", 60),
    ("status_string/1", "bare_stat/1", "<= 1", 60),
    ("status_string/0", "bare_stat/0", "<= 1", 60),
    ("hash_ours/8", "hash_llvm/8", "<= 1.1", 0),
    ("hash_ours/16", "hash_llvm/16", "<= 1.1", 0),
    ("hash_ours/32", "hash_llvm/32", "<= 1.1", 0),
    ("hash_ours/65", "hash_llvm/65", "<= 1.1", 0),
    ("hash_ours/250", "hash_llvm/250", "<= 1.1", 0),
    ("canonical_ours", "canonical_bare", "<= 1.05", 0),
    ("weakly_canonical_standard/1", "weakly_canonical_ours/1", ">= 2.2", 0),
    ("weakly_canonical_standard/10", "weakly_canonical_ours/10", ">= 2.2", 0),
    ("remove_all_flat_ours", "remove_all_flat_standard", "<= 1.5", 0),
    ("remove_all_chain_ours", "remove_all_chain_standard", "<= 1", 0),
    ("remove_all_flat_rm", "remove_all_flat_standard", "", 0),
    ("remove_all_chain_rm", "remove_all_chain_standard", "", 0),
)


def medians(runs):
    """The median of each benchmark of `runs` by its name, in nanoseconds."""
    scale = {"ns": 1, "us": 1e3, "ms": 1e6}
    return {run["run_name"].split("/iterations:")[0].removesuffix("/real_time"):
            run["real_time" if "/real_time" in run["run_name"] else "cpu_time"] *
            scale[run["time_unit"]]
            for run in runs if run.get("aggregate_name") == "median"}


def main(results):
    with open(results, encoding="utf-8") as file:
        median = medians(json.load(file)["benchmarks"])
    print(f"{'measured':30} {'ns':>11}   {'peer':28} {'ns':>11} {'ratio':>7}  target")
    for name, peer, target, allowance in ROWS:
        if name not in median or peer not in median:
            continue
        ratio = median[name] / median[peer]
        reached = ""
        if target:
            relation, bound = target.split()
            left = (median[name] - allowance) / median[peer]
            hit = left <= float(bound) if relation == "<=" else ratio >= float(bound)
            reached = target + (f" + {allowance} ns" if allowance else "")
            reached += "" if hit else "   MISSED"
        print(f"{name:30} {median[name]:11.1f}   {peer:28} {median[peer]:11.1f} {ratio:7.2f}  "
              f"{reached}")


if __name__ == "__main__":
    main(sys.argv[1])
