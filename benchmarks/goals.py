"""Measures rows of operations, one after the other."""

import collections
import copy
import pickle

import quarna

import values
from operations import SIZES
from timing import compared

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
            yield size, peers, compared(contenders, 8 * m * n)


def results_of(row, case):
    results = [Result(row.words, case.words, peer.words, {}, {}, peer.goals) for peer in case.peers]
    for size, peers, comparison in comparisons(case):
        for peer, ratio in zip(peers, comparison.ratios):
            result = results[case.peers.index(peer)]
            result.seconds[size] = comparison.seconds
            result.ratios[size] = ratio
    return results


def measure(rows, is_wanted):
    """The results, each as soon as it is there."""
    for row in rows:
        for case in row.cases:
            if is_wanted(row.words + " " + case.words):
                yield from results_of(row, case)
