"""The figures as pictures. Text stays text in them, and the same figures give the same file."""

import os

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams.update(
    {"svg.fonttype": "none", "svg.hashsalt": "quarna", "font.size": 8, "axes.axisbelow": True}
)

from matplotlib import pyplot  # noqa: E402

import report  # noqa: E402

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, "docs", "pictures")
MET, MISSED, OTHER, GOAL = "#2a7f9e", "#d9822b", "#b8bec4", "black"


def save(figure, name):
    os.makedirs(FOLDER, exist_ok=True)
    figure.savefig(os.path.join(FOLDER, name + ".svg"), bbox_inches="tight", metadata={"Date": None})
    pyplot.close(figure)


def goal_mark(axes, goal, place):
    axes.plot([goal, goal], [place - 0.4, place + 0.4], color=GOAL, linewidth=1.5)


def ratio_bar(axes, place, ratio, goal):
    """From the line at 1 to the left where we are faster, to the right where the other is."""
    axes.barh(place, ratio - 1, left=1, color=MET if report.is_met(ratio, goal) else MISSED)
    goal_mark(axes, goal, place)


def ratios(results):
    """A line for each case beside its first peer, a column for each size."""
    firsts = list({(one.operation, one.case): one for one in reversed(results)}.values())
    labels = ["{}  /  {}".format(one.case or one.operation, one.against).replace("`", "") for one in firsts]
    figure, columns = pyplot.subplots(1, 3, sharey=True, figsize=(12, 0.17 * len(firsts) + 1))
    for axes, size in zip(columns, ("small", "medium", "large")):
        for place, one in enumerate(firsts):
            shown = "any" if "any" in one.goals and size == "small" else size
            if shown in one.goals:
                ratio_bar(axes, place, one.ratios[shown], one.goals[shown])
        axes.set(title=size, xscale="log", xlim=(1e-4, 100), ylim=(-1, len(firsts)))
        axes.axvline(1, color=GOAL, linewidth=0.8)
        axes.grid(axis="x", linewidth=0.3)
    columns[0].set_yticks(range(len(firsts)))
    columns[0].set_yticklabels(labels)
    figure.tight_layout()
    save(figure, "ratios")


def cost_panel(axes, title, results, x_label):
    for one in results:
        axes.plot(one.xs, one.seconds, marker="o", markersize=3, label=one.series.words.replace("`", ""))
    axes.set(title=title, xscale="log", yscale="log", xlabel=x_label, ylabel="seconds")
    axes.grid(linewidth=0.3)
    axes.legend(fontsize=7)


def growth(panels):
    """Cost against size: a panel for each (title, results, what grows)."""
    figure, columns = pyplot.subplots(1, len(panels), figsize=(4.5 * len(panels), 4.5))
    for axes, (title, results, x_label) in zip(columns, panels):
        cost_panel(axes, title, results, x_label)
    figure.tight_layout()
    save(figure, "growth")


def memory_panel(axes, title, results):
    """Two bars for each figure, and a mark at the goal."""
    for place, one in enumerate(reversed(results)):
        axes.barh(
            place + 0.2, one.quarna, height=0.4, color=MET if report.is_met(one.quarna, one.goal) else MISSED
        )
        axes.barh(place - 0.2, one.numpy, height=0.4, color=OTHER)
        goal_mark(axes, one.goal, place)
    axes.set_yticks(range(len(results)))
    axes.set_yticklabels(
        ["{}: {}".format(one.words, one.figure.split(",")[0]).replace("`", "") for one in reversed(results)]
    )
    axes.set(title=title)
    axes.grid(axis="x", linewidth=0.3)


def memory(results):
    units = {"bytes an element": "bytes an element", "bytes in all": "bytes an object"}
    figure, columns = pyplot.subplots(1, len(units), figsize=(12, 4))
    for axes, (unit, title) in zip(columns, units.items()):
        memory_panel(axes, title, [one for one in results if one.figure.endswith(unit)])
    columns[1].set_xscale("log")
    figure.tight_layout()
    save(figure, "memory")
