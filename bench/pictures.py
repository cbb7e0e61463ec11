"""The pictures of the performance page."""
import matplotlib

matplotlib.use("svg")
matplotlib.rcParams.update({
    "svg.fonttype": "none",  # text stays text
    "svg.hashsalt": "qx",  # the same figures make the same file
    "font.family": "sans-serif",
    "font.size": 9,
    "axes.spines.top": False,
    "axes.spines.right": False,
})
from matplotlib import pyplot  # noqa: E402  (the settings come first)

OURS, OTHERS = "#1f6fb2", "#9aa5b1"
WIDTH = 7.6  # inches


def bars(path, title, rows, line):
    """`rows` of (label, ratio, colour), from the top; `line` is the ratio that one looks for."""
    figure, axes = pyplot.subplots(figsize=(WIDTH, 0.9 + 0.26 * len(rows)), layout="constrained")
    drawn = axes.barh([row[0] for row in rows], [row[1] for row in rows], height=0.7, color=[row[2] for row in rows])
    axes.bar_label(drawn, fmt="%.2f", padding=4)
    axes.axvline(line, color="black", linestyle="--", linewidth=0.8)
    axes.invert_yaxis()
    axes.margins(x=0.08)
    _save(figure, axes, path, title)


def timeline(path, title, rows, spans):
    """`rows` of (phase, label), from the top; `spans` of (phase, from, to) in seconds."""
    figure, axes = pyplot.subplots(figsize=(WIDTH, 2.6), layout="constrained")
    for place, (phase, _) in enumerate(rows):
        stretches = [(start, end - start) for each, start, end in spans if each == phase]
        axes.broken_barh(stretches, (place - 0.35, 0.7), color=OURS)
    axes.set_yticks(range(len(rows)), [label for _, label in rows])
    axes.invert_yaxis()
    axes.set_xlabel("seconds")
    _save(figure, axes, path, title)


def _save(figure, axes, path, title):
    figure.suptitle(title, fontsize=10)
    axes.grid(axis="x", linewidth=0.4)
    axes.set_axisbelow(True)
    figure.savefig(path, metadata={"Date": None})
    pyplot.close(figure)
