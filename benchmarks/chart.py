"""Draws the figures of a benchmark run as an SVG chart: chart.py RESULTS.json >CHART

Each bar is the time that the library takes, as a share of what its peer takes in the same run; the
line is where both take the same.
"""

import json
import sys

from ratios import medians

# What is said of a bar, what is measured, and its peer.
BARS = (
    ("name to UTF-8, beside std::filesystem::path", "conversion_ours", "conversion_standard"),
    ("parent_path, beside find_last_of by hand", "parent_ours", "parent_find_last_of"),
    ("all elements, beside find by hand", "walk_iterator", "walk_find"),
    ("hash of 65 units, beside libc++", "hash_ours/65", "hash_llvm/65"),
    ("exists, beside bare stat", "exists_path/1", "bare_stat/1"),
    ("status, beside bare stat", "status_path/1", "bare_stat/1"),
    ("canonical, beside bare realpath", "canonical_ours", "canonical_bare"),
    ("weakly_canonical, beside std::filesystem", "weakly_canonical_ours/10",
     "weakly_canonical_standard/10"),
    ("remove_all, flat, beside std::filesystem", "remove_all_flat_ours",
     "remove_all_flat_standard"),
    ("remove_all, 500 deep, beside std::filesystem", "remove_all_chain_ours",
     "remove_all_chain_standard"),
)
LEFT, UNIT, ROW, TOP = 330, 220, 26, 16
STYLE = """\
text { font: 14px system-ui, "Segoe UI", "Noto Sans", "DejaVu Sans", sans-serif; fill: #1c2430; }
.bar { fill: #0b5e8a; }
.same { stroke: #5a6675; stroke-dasharray: 3 3; }
@media (prefers-color-scheme: dark) {
text { fill: #dde3ea; }
.bar { fill: #74b9e2; }
.same { stroke: #98a4b2; }
}"""


def main(results):
    with open(results, encoding="utf-8") as file:
        median = medians(json.load(file)["benchmarks"])
    bars = [(text, median[ours] / median[peer]) for text, ours, peer in BARS]
    width = LEFT + UNIT * max(ratio for _, ratio in bars) + 60
    bottom = TOP + ROW * len(bars)
    print(f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width:.0f} {bottom + 26}" '
          f'width="{width:.0f}" height="{bottom + 26}" role="img" '
          'aria-label="Time taken, as a share of the time of the peer">')
    print(f"<style>\n{STYLE}\n</style>")
    for number, (text, ratio) in enumerate(bars):
        y = TOP + ROW * number
        print(f'<text x="{LEFT - 10}" y="{y + 14}" text-anchor="end">{text}</text>')
        print(f'<rect class="bar" x="{LEFT}" y="{y + 2}" width="{UNIT * ratio:.1f}" height="16"/>')
        print(f'<text x="{LEFT + UNIT * ratio + 6:.1f}" y="{y + 14}">{ratio:.2f}</text>')
    print(f'<path class="same" d="M{LEFT + UNIT} {TOP - 8}V{bottom + 2}"/>')
    print(f'<text x="{LEFT + UNIT}" y="{bottom + 18}" text-anchor="middle">as long as the peer</text>')
    print("</svg>")


main(sys.argv[1])
