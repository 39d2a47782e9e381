"""Measures rows of operations and tells how they stand."""

import collections
import copy
import pickle
import re

import quarna

import report
import values
from rows import SIZES
from timing import compared

TOLD = 12  # of each side, in the summary

# One peer of one case: seconds that we take, the ratios ours / peer and the goals, each by size.
Result = collections.namedtuple("Result", "operation case against seconds ratios goals")


def names_for(new, size, given):
    """What the statements of one contender see, after what its case gives has run."""
    m, n = SIZES[size]
    i, j = m // 4, m - m // 4
    names = dict(vars(values), quarna=quarna, copy=copy, pickle=pickle, new=new)
    names.update(m=m, n=n, i=i, j=j, k=(j - i) // 4, l=(j - i) // 2, v=0.5)
    exec(given, names)
    return {name: value for name, value in names.items() if not name.startswith("__")}


def comparisons(case):
    """For each size the peers that have a goal there, and the comparison with them."""
    for size, (m, n) in SIZES.items():
        peers = [peer for peer in case.peers if size in peer.goals]
        if peers:
            contenders = [(one.statement, names_for(one.new, size, case.given)) for one in [case] + peers]
            yield size, peers, compared(contenders, size_in_bytes=8 * m * n)


def results_of(row, case):
    results = [Result(row.words, case.words, peer.words, {}, {}, peer.goals) for peer in case.peers]
    for size, peers, comparison in comparisons(case):
        for peer, ratio in zip(peers, comparison.ratios):
            result = results[case.peers.index(peer)]
            result.seconds[size] = comparison.seconds
            result.ratios[size] = ratio
    return results


def by_size(figures, goals, show=report.shown):
    """One figure, or one for each of the three sizes."""
    sizes = goals if "any" in goals else ("small", "medium", "large")
    return " / ".join(show(figures[size]) if size in goals else "–" for size in sizes)


def add(table, result, before):
    """A line of the table, which leaves out what the one before says already."""
    says_more = before is None or before[:2] != result[:2]
    goals = result.goals
    table.add(
        result.operation if before is None or before.operation != result.operation else "",
        result.case if says_more else "",
        result.against,
        by_size({size: 1e6 * seconds for size, seconds in result.seconds.items()}, goals),
        by_size(result.ratios, goals),
        by_size(goals, goals, "{:g}".format),
        by_size({size: table.verdict(result.ratios[size], goal) for size, goal in goals.items()}, goals, str),
    )


def measure(rows, is_wanted):
    """Prints the table; returns it with its results."""
    table = report.Table(
        ("Operation", 52),
        ("Case", 21),
        ("Against", 27),
        ("Microseconds", -25),
        ("Ratio", -22),
        ("Goal", -18),
        ("Verdict", 24),
    )
    results = []
    for row in rows:
        for case in row.cases:
            for result in results_of(row, case) if is_wanted(row.words + " " + case.words) else ():
                add(table, result, results[-1] if results else None)
                results.append(result)
    table.close()
    return table, results


def told(size, result):
    words = ": ".join(filter(None, (result.operation, result.case)))
    return "- {} times: {}{}, against {}".format(
        report.shown(result.ratios[size]), words, "" if size == "any" else ", " + size, result.against
    )


def standing(results):
    """Lines that tell where we are faster than others, and where slower: the furthest of each side."""
    peers = [one for one in results if not re.search(r"floor|bare", one.against)]
    ratios = [(one.ratios[size], size, one) for one in peers for size in one.goals]
    ratios.sort(key=lambda ratio: ratio[0])
    slower = [told(size, one) for ratio, size, one in reversed(ratios) if ratio > 1]
    faster = [told(size, one) for ratio, size, one in ratios if ratio < 1]
    lines = ["Of {} ratios to a peer {} are below 1.".format(len(ratios), len(faster)), ""]
    for head, told_ones in (("Slower, the furthest first:", slower), ("Faster, the furthest first:", faster)):
        lines += [head, ""] + told_ones[:TOLD] + [""]
    return lines[:-1]
