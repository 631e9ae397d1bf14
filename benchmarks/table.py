"""Prints the figures of Google Benchmark's JSON files as a Markdown table; exits with 1 when a target is missed.

A figure is a benchmark with a counter "ratio" or "value" and, optionally, a "target", which is an upper bound unless
"at_least" is 1. For a figure with several runs, the median run is shown.
"""
import json
import re
import sys

SUFFIX = re.compile(r"(/(iterations:\d+|manual_time|real_time|process_time))*$")


def number(value):
    return f"{value:,.0f}" if abs(value) >= 100 else f"{value:.3g}"


def row(figure):
    """The cells of a figure's row, and whether the target is met."""
    name = SUFFIX.sub("", figure["name"])
    if figure.get("error_occurred"):
        return [name, "failed: " + figure.get("error_message", ""), "", "no"], False
    if "ratio" in figure:
        value = figure["ratio"]
        measured = f"{value:.2f} ({figure['lower']:.2f} to {figure['upper']:.2f})"
    else:
        value = figure["value"]
        measured = number(value)
    unit = figure.get("label", "")
    if unit:
        measured += " " + unit
    if "target" not in figure:
        return [name, measured, "", ""], True
    lower_bound = figure.get("at_least", 0) == 1
    met = value >= figure["target"] if lower_bound else value <= figure["target"]
    target = ("≥ " if lower_bound else "≤ ") + number(figure["target"])
    return [name, measured, target, "yes" if met else "no"], met


def figures_of(file_name):
    with open(file_name, encoding="utf-8") as file:
        text = file.read()
    figures = json.loads(text)["benchmarks"] if text.strip() else []  # empty when no name matches the filter
    return [figure for figure in figures if figure.get("error_occurred") or {"ratio", "value"} & figure.keys()]


def median_run(runs):
    return sorted(runs, key=lambda figure: figure.get("ratio", figure.get("value", float("inf"))))[len(runs) // 2]


def main(file_names):
    figures = {}
    for file_name in file_names:
        for figure in figures_of(file_name):
            figures.setdefault(figure["name"], []).append(figure)
    rows = [row(median_run(runs)) for runs in figures.values()]
    print("| Figure | Measured | Target | Met |")
    print("|---|---|---|---|")
    for cells, _ in rows:
        print("| " + " | ".join(cells) + " |")
    return 0 if all(met for _, met in rows) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
